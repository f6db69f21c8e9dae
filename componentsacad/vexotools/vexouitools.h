#pragma once

#include "acadstrc.h"
#include "afx.h"
#include "windows.h"

class CWnd;

/// How the library speaks to the user in boxes.
class VEXOUITools {
public:
    /// A box for a host status: "ARX ERROR: <the status's name>, file: <file>", exclamation icon, one button,
    /// no owner. eOk shows nothing. The application calls it; the library does not.
    static void dlgErrorAlert(Acad::ErrorStatus status, const CString& file);

    /// A box with the text of that id in the project's string table (an unknown id gives an empty text). The
    /// caption is the product's name; the owner is the given window or, with none, the host's main window.
    /// `flags` and the result are those of the platform's MessageBoxW.
    static int MessageBoxW(unsigned int id, const wchar_t* project, unsigned int flags,
                           const CWnd* owner = nullptr);
    /// The same with a text of the caller's own.
    static int MessageBoxW(const CString& text, unsigned int flags, const CWnd* owner = nullptr);
};
