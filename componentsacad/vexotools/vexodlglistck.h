#pragma once

#include "afxwin.h"

#include <vector>

/// A list with marks, of which just one is set: the user chooses one element. DoModal gives 1, or 2 for the
/// refusal.
class VEXODlgListCk : public CDialog {
public:
    enum { IDD = 14021, IDC_LIST = 1001 };

    explicit VEXODlgListCk(CWnd* parent = nullptr);

    /// Both before DoModal.
    void SetTitle(const CString& title);
    void AddElement(const CString& element);
    /// The marked element, counted from 0: the first one until the user marks another; -1 before the dialog
    /// was shown, and where there is no element. It also counts after a refusal, so look at DoModal first.
    int GetCheckedElement() const { return m_checked; }

    DECLARE_MESSAGE_MAP()

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnCheckChange();

private:
    CString m_title;
    std::vector<CString> m_elements;
    CCheckListBox m_list;
    int m_checked = -1;
};
