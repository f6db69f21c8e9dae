#include "afxwin.h"

#include "desktop.h"

namespace {

CString& applicationName() {
    static CString name;
    return name;
}

} // namespace

const wchar_t* AfxGetAppName() { return applicationName(); }

void AfxSetAppName(const wchar_t* name) { applicationName() = name; }

int AfxMessageBox(const wchar_t* text, UINT type, UINT) {
    if ((type & MB_ICONMASK) == 0) type |= MB_ICONEXCLAMATION;
    return MessageBoxW(nullptr, text, AfxGetAppName(), type);
}

CWnd* AfxGetMainWnd() { return CWnd::FromHandle(hostkit::Desktop::current().mainWindow()); }
