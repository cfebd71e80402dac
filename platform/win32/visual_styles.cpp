#include "platform/win32/visual_styles.h"

#include "platform/win32/com/module.h"
#include "platform/win32/wide.h"

namespace talvix {

namespace {

/// Resource of the modules that ask for the newer common controls. With the number 2 the loader
/// would look for them whenever the module is loaded, wanted or not.
constexpr int kManifest = 101;

HANDLE MakeContext() {
    const std::u16string module = ModulePath();
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    context.lpSource = Wide(module);
    context.lpResourceName = MAKEINTRESOURCEW(kManifest);
    context.hModule = ModuleHandle();
    return CreateActCtxW(&context);
}

} // namespace

VisualStyles::VisualStyles() : context_(MakeContext()) {
    isActive_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
}

VisualStyles::~VisualStyles() {
    if (isActive_) {
        DeactivateActCtx(0, cookie_);
    }
    if (context_ != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(context_);
    }
}

} // namespace talvix
