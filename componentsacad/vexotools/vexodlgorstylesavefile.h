#pragma once

#include "afxwin.h"

/// Asks for the name of a style. Modal by DoModal: 1, or 2 for the refusal.
class VEXODlgORStyleSaveFile : public CDialog {
public:
    enum { IDD = 14065, IDC_LABEL = 1001, IDC_NAME = 1002 };

    explicit VEXODlgORStyleSaveFile(CWnd* parent = nullptr);

    /// As it was accepted by OK, without blanks around it; empty before.
    CString getStyleName() const { return m_styleName; }
    /// 1 for the text that stands in the edit now; 0 for one of blanks alone, and for one that holds any of
    /// " : ; , . ? =, which reading a style would take away.
    int isStyleNameValid();

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    /// A bad name is told in a box, and the edit has the focus again.
    void OnOK() override;

private:
    CString writtenName() const;

    CEdit m_edit;
    CString m_styleName;
};
