#pragma once

#include "afxwin.h"

/// Asks for a file's name, without folder and ending. Modal by DoModal (1, or 2 for the refusal), or modeless
/// by Create.
class VEXODlgSaveFile : public CDialog {
public:
    enum { IDD = 14066, IDC_LABEL = 1001, IDC_NAME = 1002 };

    explicit VEXODlgSaveFile(CWnd* parent = nullptr);

    /// Modeless: stays, hidden once it was answered, until DestroyWindow.
    BOOL Create(CWnd* parent);

    /// As it was accepted by OK; empty before.
    CString GetFileName() const { return m_fileName; }
    /// 1 for the text that stands in the edit now; 0 for an empty one, and for one that holds any of
    /// " : ; , . ? =  (a point too, so that no ending can be typed). Separators of folders pass.
    int IsFileNameValid();

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    /// A bad name is told in a box, and the edit has the focus again.
    void OnOK() override;

private:
    CEdit m_edit;
    CString m_fileName;
};
