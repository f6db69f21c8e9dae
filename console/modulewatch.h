#pragma once

#include "crashreport.h"
#include "dbid.h"
#include "host.h"

#include <memory>
#include <unordered_set>
#include <vector>

/// Looks after the commands of modules: says whose code ran when the program crashes, and which objects a
/// command has left open.
class ModuleWatch final : public hostkit::CommandWatch {
public:
    explicit ModuleWatch(hostkit::Host& host);
    ~ModuleWatch() override;
    ModuleWatch(const ModuleWatch&) = delete;
    ModuleWatch& operator=(const ModuleWatch&) = delete;

    /// What is open by now, as after a module was loaded, no command has left open.
    void acceptWhatIsOpen();

private:
    void starts(const AcEdCommand& command) override;
    void ended(const std::wstring& globalName) override;
    void tellLeftOpen(const std::wstring& name);

    struct Running {
        std::unique_ptr<crashreport::Scope> scope;
        bool isOfModule;
    };
    hostkit::Host& m_host;
    std::vector<Running> m_running;
    std::unordered_set<AcDbObjectId> m_known; ///< open, and told or accepted
};
