#pragma once

#include "afxwin.h"

/// Tells why the application is left, or asks whether: an icon, a message, two buttons. DoModal gives 1 for
/// OK and 2 for the refusal.
class VEXODlgExitApp : public CDialog {
public:
    enum { IDD = 14020, IDC_MESSAGE = 1001, IDC_SIDE_ICON = 1002 };

    explicit VEXODlgExitApp(CWnd* parent = nullptr);

    /// Before DoModal. The dialog grows with a long message.
    void setExitMsg(CString message);

    DECLARE_MESSAGE_MAP()

protected:
    BOOL OnInitDialog() override;
    void OnOk(); // NOLINT(bugprone-virtual-near-miss): the message map names it
    /// The arrow, over every part of the dialog.
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);

private:
    CString m_message;
    HCURSOR m_cursor = nullptr;
};
