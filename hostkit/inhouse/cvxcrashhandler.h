// Stand-in for the host's in-house crash handler. Covers the base class that a rescue derives from, and who builds one when the host fails; leaves out reports to the maker.
#pragma once

class CVxCrashHandler {
public:
    /// The arguments are the failure path's own: a text about the failure and its code. This base keeps
    /// neither.
    CVxCrashHandler(wchar_t* text, int code);
    virtual ~CVxCrashHandler();
    CVxCrashHandler(const CVxCrashHandler&) = default;
    CVxCrashHandler& operator=(const CVxCrashHandler&) = default;

    /// Always 0. Void tools call it as they close; nothing hangs on it.
    static int mov_rax_0();
};

namespace hostkit {

/// Makes the application's crash handler and lets it go again: making one is the rescue.
using CrashHandlerBuilder = void (*)(wchar_t* text, int code);

/// Whoever knows the application's handler says here how it is built; null for nobody. One for the process.
void setCrashHandlerBuilder(CrashHandlerBuilder builder);

/// What a failing host calls, on a thread that may use its drawings. False where nobody builds one. What the
/// handler throws, as for want of memory, goes on to the caller.
bool buildCrashHandler(wchar_t* text, int code);

} // namespace hostkit
