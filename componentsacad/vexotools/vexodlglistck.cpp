#include "vexodlglistck.h"

#include "cvxlogentry.h"
#include "vexotools.h"
#include "vxprompts.h"

BEGIN_MESSAGE_MAP(VEXODlgListCk, CDialog)
ON_CLBN_CHKCHANGE(IDC_LIST, &VEXODlgListCk::OnCheckChange)
END_MESSAGE_MAP()

VEXODlgListCk::VEXODlgListCk(CWnd* parent)
    : CDialog(IDD, parent) {}

void VEXODlgListCk::SetTitle(const CString& title) {
    CVxLogEntry entry(L"VEXODlgListCk::SetTitle");
    m_title = title;
}

void VEXODlgListCk::AddElement(const CString& element) {
    CVxLogEntry entry(L"VEXODlgListCk::AddElement");
    m_elements.push_back(element);
}

void VEXODlgListCk::DoDataExchange(CDataExchange* exchange) {
    CVxLogEntry entry(L"VEXODlgListCk::DoDataExchange");
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_LIST, m_list);
    if (exchange->m_bSaveAndValidate) return;
    for (int i = 0; i < m_list.GetCount(); ++i) m_list.SetCheck(i, i == m_checked);
}

BOOL VEXODlgListCk::OnInitDialog() {
    CVxLogEntry entry(L"VEXODlgListCk::OnInitDialog");
    CDialog::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, IDD, getModulePromptsProjectName());
    if (!m_title.IsEmpty()) SetWindowTextW(m_title);
    for (const CString& element : m_elements) m_list.AddString(element);
    m_checked = m_elements.empty() ? -1 : 0;
    m_list.SetCurSel(m_checked);
    UpdateData(FALSE);
    return TRUE;
}

void VEXODlgListCk::OnCheckChange() {
    CVxLogEntry entry(L"VEXODlgListCk::OnCheckChange");
    const int selected = m_list.GetCurSel();
    if (selected >= 0 && selected < m_list.GetCount()) m_checked = selected;
    UpdateData(FALSE);
}
