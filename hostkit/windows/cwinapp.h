// Stand-in for the host's application class. Covers its interface for programs; leaves out message loop, documents and profiles.
#pragma once

#include "unknwn.h"

class CWinApp {
public:
    virtual ~CWinApp() = default;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    /// The application's object for programs, with a further reference when that is asked for; null where
    /// the application has none.
    virtual IDispatch* GetIDispatch(BOOL addReference);

protected:
    CWinApp() = default;
};
