// Application object: its making, its life with the host and the count of references to it and its parts;
// leaves out being found from another process.
#pragma once

#include "cwinapp.h"

#include <memory>

namespace hostkit {

class Host;
struct ProgramState;

/// The application of one host. Its objects for programs know when the host has gone.
class HostApplication final : public CWinApp {
public:
    explicit HostApplication(Host& host);
    ~HostApplication() override;

    IDispatch* GetIDispatch(BOOL addReference) override;
    /// References that callers hold to the application's object and to all that it handed out: 0 when every
    /// interface was released.
    int referencesHeld() const;

private:
    std::shared_ptr<ProgramState> m_state;
    IDispatch* m_application;
};

} // namespace hostkit
