// Stand-in for the host's in-house crash handler. Covers the base class that a rescue derives from; leaves out the hook that decides when one is built.
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
