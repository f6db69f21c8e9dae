#pragma once

#include "afxwin.h"

/// A warning with a check box under it, such as "do not show this again". DoModal gives 1, or 2 for the
/// refusal.
class VEXODlgWarningCk : public CDialog {
public:
    enum { IDD = 14067, IDC_MESSAGE = 14029, IDC_CHECK = 1001 };

    /// An empty or null title or check text is the module's own. The dialog grows with a long message.
    VEXODlgWarningCk(const wchar_t* message, const wchar_t* title, const wchar_t* checkText, CWnd* parent);

    /// Whether the box was checked when the dialog ended by OK; it is unchecked at the start.
    int IsChecked() const { return m_isChecked; }

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

private:
    CButton m_check;
    CString m_message;
    CString m_title;
    CString m_checkText;
    int m_isChecked = 0;
};
