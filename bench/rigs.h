#pragma once

#include "bench/bench.h"
#include "core/main.h"
#include "platform/win32/trace.h"
#include "platform/win32/win32_platform.h"
#include "workbench/host/host.h"

#include <memory>

namespace talvix::bench {

/// A project of a host of ours on two grids of the registered control.
struct HostRig {
    explicit HostRig(const std::u16string& folder, std::vector<host::Document> documents = {});
    Late grid;
    Late actions;
    std::shared_ptr<host::Project> project = std::make_shared<host::Project>();
    std::unique_ptr<host::Host> host;
};

/// The registered component, attached to a project of ours.
struct ServerRig : HostRig {
    explicit ServerRig(const std::u16string& folder, std::vector<host::Document> documents = {});
    ServerRig(const ServerRig&) = delete;
    ServerRig& operator=(const ServerRig&) = delete;
    ~ServerRig() { main.Call(u"DereferenceLibraries"); }

    std::int32_t Rows() const;
    /// Seconds of reading the project folder in, without the host's own writing of the list.
    double Import() const;
    Late main;
};

/// Every question is answered with yes.
class YesMessages : public Messages {
public:
    std::int32_t Show(std::u16string_view, std::int32_t, std::u16string_view) override {
        return kAnswerYes;
    }
};

/// The component inside this program, on a grid of the registered control.
struct ComponentRig : HostRig {
    explicit ComponentRig(const std::u16string& folder);
    Win32Platform platform;
    YesMessages messages;
    Platform ports;
    Win32Trace trace{platform.registry};
    Forms forms{ports, trace};
    Main main{ports, trace, forms};
};

/// The bare walk through the folders.
void Walk(const std::u16string& folder);
/// The paths of all files of a folder and the folders beneath.
std::vector<std::u16string> FilesOf(const std::u16string& folder);

} // namespace talvix::bench
