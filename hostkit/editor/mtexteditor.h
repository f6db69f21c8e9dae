// In-place editor of paragraphs: a dialog with the contents as they are coded; leaves out formatting tools.
#pragma once

#include "afxwin.h"

namespace hostkit {

/// Shows a paragraph's contents, a new line for each \P. Escape and closing it leave them as they were.
class MTextEditor : public CDialog {
public:
    enum { IDC_CONTENTS = 1001 };
    explicit MTextEditor(CString contents);

    /// IDOK or IDCANCEL; -1 when the window cannot be made.
    int DoModal() override;
    /// With \P for each new line; as given until OK was pressed.
    const CString& contents() const { return m_contents; }

protected:
    void OnOK() override;

private:
    bool makeControls();

    CString m_contents;
    CEdit m_edit;
    CButton m_ok;
    CButton m_cancel;
};

} // namespace hostkit
