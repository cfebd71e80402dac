#pragma once

#include "automation/late.h"
#include "platform/win32/com/com_ptr.h"

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <vector>

namespace talvix {

/// Folder of the test program and the products, with a closing "\".
std::u16string ProductFolder();
/// An object of a registered class; Failure when it cannot be created.
Late CreateByName(std::u16string_view programId);
HRESULT CreateByName(std::u16string_view programId, ComPtr<IDispatch>& object);
/// Calls an export of a product without arguments.
HRESULT CallExport(std::u16string_view file, const char* name);

/// Keys and values below keys of the registry's classes, as lines.
std::vector<std::u16string> RegistrySnapshot(HKEY root, const std::vector<std::u16string>& keys);

/// A folder in the temporary folder that goes with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();
    const std::u16string& Path() const { return path_; }
    std::u16string Make(std::u16string_view name, std::size_t bytes) const;
    std::u16string MakeFolder(std::u16string_view name) const;

private:
    std::u16string path_;
};

} // namespace talvix
