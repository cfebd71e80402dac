#include "server/composition.h"

#include "core/main.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/critical_section.h"
#include "server/main_object.h"

#include <map>
#include <mutex>

namespace talvix {

namespace {

/// A `Main` that keeps what it is composed of.
struct ComposedMain {
    explicit ComposedMain(std::shared_ptr<Composition> parts)
        : composition(std::move(parts)),
          main(composition->platform.ports, composition->trace, composition->forms) {}
    std::shared_ptr<Composition> composition;
    Main main;
};

} // namespace

std::shared_ptr<Composition> Composition::OfThisThread() {
    static CriticalSection guard;
    static std::map<DWORD, std::weak_ptr<Composition>> compositions;
    const std::lock_guard lock(guard);
    std::erase_if(compositions, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<Composition>& own = compositions[GetCurrentThreadId()];
    std::shared_ptr<Composition> composition = own.lock();
    if (composition == nullptr) {
        composition = std::make_shared<Composition>();
        own = composition;
    }
    return composition;
}

ComPtr<IUnknown> MakeMain() {
    const auto composed = std::make_shared<ComposedMain>(Composition::OfThisThread());
    const std::shared_ptr<Main> main(composed, &composed->main);
    main->SetOwner(composed);
    return UnknownOf(std::make_shared<MainObject>(main));
}

} // namespace talvix
