#pragma once

#include <windows.h>

namespace talvix {

/// The system's visual styles for windows that are made within a block, whatever the host's own
/// program asks for; nothing where the system or this module has none.
class VisualStyles {
public:
    VisualStyles();
    VisualStyles(const VisualStyles&) = delete;
    VisualStyles& operator=(const VisualStyles&) = delete;
    ~VisualStyles();

private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
    bool isActive_ = false;
};

} // namespace talvix
