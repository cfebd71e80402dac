#pragma once

#include "core/main.h"
#include "grid/model/grid_objects.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_platform.h"

#include <memory>

namespace talvix {

/// A host with working defaults around a `Main` and the real grid model.
class MainRig {
public:
    MainRig();
    /// Attaches as a host does: libraries, grid set-up, Init.
    void Attach();
    void Reference();
    /// Adds a row as the host's loaded list has it.
    Late AddRow(const Value& objectType, std::u16string_view store,
                std::u16string_view description = u"") const;
    Late Row(std::int32_t number) const { return Late(gridObject)(u"Rows", number); }
    Value Cell(std::int32_t number, std::u16string_view key) const {
        return Row(number).Call(u"Value", key);
    }
    std::int32_t RowCount() const { return model->rows.Count(); }
    void SetFolder(std::u16string_view folder) { folderProperty->With(u"Value", folder); }
    std::u16string Folder() const;
    void SetProperty(std::u16string_view name, std::u16string_view value);
    const Lines& JournalLines() const { return fakes.journal.Lines(); }
    /// Lines of the journal that begin with one of the words.
    Lines LinesOf(std::initializer_list<std::u16string_view> words) const;
    /// The late-bound calls of the grid that a deed makes, with their keys; "=" marks those that
    /// put.
    Lines GridCalls(const std::function<void()>& deed);

    FakePlatform fakes;
    Forms forms{fakes.ports, fakes.trace};
    std::shared_ptr<grid::GridModel> model;
    std::shared_ptr<grid::GridObject> gridObject;
    std::shared_ptr<Expando> folderProperty;
    std::map<std::u16string, std::shared_ptr<Expando>> properties;
    std::map<std::u16string, Value> settings; ///< those of the common library
    std::shared_ptr<Expando> item;
    std::shared_ptr<Expando> page;
    std::shared_ptr<Expando> common;
    std::shared_ptr<Expando> managing;
    std::shared_ptr<Main> main;
    std::int32_t nextId = 100;
};

} // namespace talvix
