#include "vexodlgorstylesavefile.h"

#include "cvxlogentry.h"
#include "vexoorstyledata.h"
#include "vexotools.h"
#include "vexouitools.h"
#include "vxprompts.h"

namespace {
constexpr unsigned int invalidName = 14071;
} // namespace

VEXODlgORStyleSaveFile::VEXODlgORStyleSaveFile(CWnd* parent)
    : CDialog(IDD, parent) {}

BOOL VEXODlgORStyleSaveFile::OnInitDialog() {
    CVxLogEntry entry(L"VEXODlgORStyleSaveFile::OnInitDialog");
    CDialog::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, IDD, getModulePromptsProjectName());
    return TRUE;
}

void VEXODlgORStyleSaveFile::DoDataExchange(CDataExchange* exchange) {
    CVxLogEntry entry(L"VEXODlgORStyleSaveFile::DoDataExchange");
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_NAME, m_edit);
}

CString VEXODlgORStyleSaveFile::writtenName() const {
    CString text;
    m_edit.GetWindowTextW(text);
    return text.Trim();
}

int VEXODlgORStyleSaveFile::isStyleNameValid() {
    CVxLogEntry entry(L"VEXODlgORStyleSaveFile::isStyleNameValid");
    const CString name = writtenName();
    return !name.IsEmpty() && name.FindOneOf(VEXOORStyleData::punctuation) < 0;
}

void VEXODlgORStyleSaveFile::OnOK() {
    CVxLogEntry entry(L"VEXODlgORStyleSaveFile::OnOK");
    if (!isStyleNameValid()) {
        VEXOUITools::MessageBoxW(invalidName, getModulePromptsProjectName(), MB_ICONEXCLAMATION, this);
        m_edit.SetFocus();
        return;
    }
    m_styleName = writtenName();
    EndDialog(IDOK);
}
