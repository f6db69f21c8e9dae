#include "vexodlgsavefile.h"

#include "cvxlogentry.h"
#include "vexotools.h"
#include "vexouitools.h"
#include "vxprompts.h"

namespace {
constexpr unsigned int invalidName = 14110;
constexpr const wchar_t* refusedCharacters = L"\":;,.?=";
} // namespace

VEXODlgSaveFile::VEXODlgSaveFile(CWnd* parent)
    : CDialog(IDD, parent) {}

BOOL VEXODlgSaveFile::Create(CWnd* parent) {
    CVxLogEntry entry(L"VEXODlgSaveFile::Create");
    return CDialog::Create(IDD, parent);
}

BOOL VEXODlgSaveFile::OnInitDialog() {
    CVxLogEntry entry(L"VEXODlgSaveFile::OnInitDialog");
    CDialog::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, IDD, getModulePromptsProjectName());
    m_edit.SetWindowTextW(m_fileName);
    return TRUE;
}

void VEXODlgSaveFile::DoDataExchange(CDataExchange* exchange) {
    CVxLogEntry entry(L"VEXODlgSaveFile::DoDataExchange");
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_NAME, m_edit);
}

int VEXODlgSaveFile::IsFileNameValid() {
    CVxLogEntry entry(L"VEXODlgSaveFile::IsFileNameValid");
    CString text;
    m_edit.GetWindowTextW(text);
    return !text.IsEmpty() && text.FindOneOf(refusedCharacters) < 0;
}

void VEXODlgSaveFile::OnOK() {
    CVxLogEntry entry(L"VEXODlgSaveFile::OnOK");
    if (!IsFileNameValid()) {
        VEXOUITools::MessageBoxW(invalidName, getModulePromptsProjectName(), MB_ICONEXCLAMATION, this);
        m_edit.SetFocus();
        return;
    }
    m_edit.GetWindowTextW(m_fileName);
    EndDialog(IDOK);
}
