#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace talvix {

/// What the system tells of files, each question put to it anew.
class FileAnswers {
public:
    virtual ~FileAnswers() = default;

    /// Place of the file's small icon in the system image list, counted from 0; nothing when the
    /// system knows nothing of the path.
    virtual std::optional<std::int32_t> AskForIcon(std::u16string_view path) = 0;
    /// The system's name for the file's type; nothing when there is none.
    virtual std::optional<std::u16string> AskForTypeName(std::u16string_view path) = 0;
    /// True when files of this class carry icons of their own, so that one file's icon says nothing
    /// about another's.
    virtual bool CarriesOwnIcon(std::u16string_view path) = 0;
    /// True when classes, or what the user opens them with, may have changed since it was asked
    /// last.
    virtual bool HaveClassesChanged() = 0;
};

/// Icon and type name of files that are there. Files of one class, those of one extension, have
/// them in common, but for classes with icons of their own: what was answered for one file is kept
/// for the others as long as no class changes. Asking costs milliseconds, over a network far more.
class FileClasses {
public:
    explicit FileClasses(FileAnswers& answers) : answers_(answers) {}
    FileClasses(const FileClasses&) = delete;
    FileClasses& operator=(const FileClasses&) = delete;

    /// Place of the small icon in the system image list, counted from 0; 0 when there is none.
    std::int32_t IconIndex(std::u16string_view path);
    /// "" when there is none.
    std::u16string TypeName(std::u16string_view path);
    bool HasOwnIcon(std::u16string_view path);

private:
    struct FileClass {
        bool hasOwnIcon = true;
        std::optional<std::int32_t> icon{};
        std::optional<std::u16string> typeName{};
    };
    const FileClass& ClassOf(const std::u16string& extension, std::u16string_view path);
    template <typename Answer>
    Answer Find(std::u16string_view path, std::optional<Answer> FileClass::*kept,
                std::optional<Answer> (FileAnswers::*ask)(std::u16string_view));

    FileAnswers& answers_;
    std::map<std::u16string, FileClass> classes_; ///< by the extension in small ASCII letters
};

} // namespace talvix
