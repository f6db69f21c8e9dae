#include "vexodlgwarningck.h"

#include "cvxlogentry.h"
#include "dialogtext.h"
#include "vexotools.h"
#include "vxprompts.h"

VEXODlgWarningCk::VEXODlgWarningCk(const wchar_t* message, const wchar_t* title, const wchar_t* checkText,
                                   CWnd* parent)
    : CDialog(IDD, parent)
    , m_message(message)
    , m_title(title)
    , m_checkText(checkText) {}

void VEXODlgWarningCk::DoDataExchange(CDataExchange* exchange) {
    CVxLogEntry entry(L"VEXODlgWarningCk::DoDataExchange");
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_CHECK, m_check);
}

BOOL VEXODlgWarningCk::OnInitDialog() {
    CVxLogEntry entry(L"VEXODlgWarningCk::OnInitDialog");
    CDialog::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, IDD, getModulePromptsProjectName());
    if (!m_title.IsEmpty()) SetWindowTextW(m_title);
    if (!m_checkText.IsEmpty()) m_check.SetWindowTextW(m_checkText);
    SetDlgItemTextW(IDC_MESSAGE, m_message);
    vexo::growForText(*this, IDC_MESSAGE);
    m_isChecked = 0;
    m_check.SetCheck(0);
    return TRUE;
}

void VEXODlgWarningCk::OnOK() {
    CVxLogEntry entry(L"VEXODlgWarningCk::OnOK");
    m_isChecked = m_check.GetCheck();
    EndDialog(IDOK);
}
