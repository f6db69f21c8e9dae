// Stand-in for the host's application framework, windows. Covers the window handle and message boxes; leaves out painting, controls and dialogs.
#pragma once

#include "afx.h"

/// A window by its handle. The object does not own the window.
class CWnd {
public:
    CWnd() = default;
    explicit CWnd(HWND window)
        : m_hWnd(window) {}
    virtual ~CWnd() = default;

    /// The handle, also where there is no object: null then.
    HWND GetSafeHwnd() const { return m_hWnd; }

    HWND m_hWnd = nullptr;
};

/// The name that stands in the caption of AfxMessageBox.
const wchar_t* AfxGetAppName();
void AfxSetAppName(const wchar_t* name);
/// A box without an owner, captioned with the application's name; with no icon in type, an exclamation mark.
/// Returns the button's id.
int AfxMessageBox(const wchar_t* text, UINT type = 0, UINT helpId = 0);
