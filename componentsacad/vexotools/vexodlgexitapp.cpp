#include "vexodlgexitapp.h"

#include "cvxlogentry.h"
#include "cvxtoolsresoverride.h"
#include "dialogtext.h"
#include "vexotools.h"
#include "vxprompts.h"

namespace {
constexpr unsigned int exitIcon = 20922;
}

BEGIN_MESSAGE_MAP(VEXODlgExitApp, CDialog)
ON_BN_CLICKED(IDOK, &VEXODlgExitApp::OnOk)
ON_WM_SETCURSOR()
END_MESSAGE_MAP()

VEXODlgExitApp::VEXODlgExitApp(CWnd* parent)
    : CDialog(IDD, parent) {}

void VEXODlgExitApp::setExitMsg(CString message) {
    CVxLogEntry entry(L"VEXODlgExitApp::setExitMsg");
    m_message = std::move(message);
}

BOOL VEXODlgExitApp::OnInitDialog() {
    CVxLogEntry entry(L"VEXODlgExitApp::OnInitDialog");
    CDialog::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, IDD, getModulePromptsProjectName());
    {
        const CVxToolsResOverride resources{CString(L"Skeleton10-9")};
        const HICON icon = LoadIconW(AfxGetResourceHandle(), MAKEINTRESOURCEW(exitIcon));
        SetIcon(icon, TRUE);
        ::SendMessageW(::GetDlgItem(m_hWnd, IDC_SIDE_ICON), STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
    }
    m_cursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(IDC_ARROW));
    SetDlgItemTextW(IDC_MESSAGE, m_message);
    vexo::growForText(*this, IDC_MESSAGE);
    return TRUE;
}

void VEXODlgExitApp::OnOk() { // NOLINT(bugprone-virtual-near-miss)
    CVxLogEntry entry(L"VEXODlgExitApp::OnOk");
    EndDialog(1);
}

BOOL VEXODlgExitApp::OnSetCursor(CWnd* /*window*/, UINT /*hitTest*/, UINT /*message*/) {
    CVxLogEntry entry(L"VEXODlgExitApp::OnSetCursor");
    ::SetCursor(m_cursor);
    return TRUE;
}
