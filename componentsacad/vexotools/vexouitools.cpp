#include "vexouitools.h"

#include "aced.h"
#include "afxwin.h"
#include "cvxlogentry.h"
#include "cvxtoolsresoverride.h"
#include "vexotools.h"
#include "vxprompts.h"

namespace {

constexpr unsigned int captionPrompt = 14026;

int showBox(const CString& text, unsigned int flags, const CWnd* owner) {
    CString caption;
    VxPrompts::getPrompt(caption, captionPrompt, getModulePromptsProjectName(), 0);
    return ::MessageBoxW(owner ? owner->GetSafeHwnd() : adsw_acadMainWnd(), text, caption, flags);
}

} // namespace

void VEXOUITools::dlgErrorAlert(Acad::ErrorStatus status, const CString& file) {
    CVxLogEntry entry(L"VEXOUITools::dlgErrorAlert");
    if (status == Acad::eOk) return;
    CVxToolsResOverride resources(vexoModuleInstance());
    CString text;
    text.Format(L"ARX ERROR: %s, file: %s", acadErrorStatusText(status), file);
    MessageBoxW(text, MB_ICONEXCLAMATION | MB_OK, nullptr);
}

int VEXOUITools::MessageBoxW(unsigned int id, const wchar_t* project, unsigned int flags, const CWnd* owner) {
    CVxLogEntry entry(L"VEXOUITools::MessageBoxW");
    CString text;
    VxPrompts::getPrompt(text, id, project, 0);
    return showBox(text, flags, owner);
}

int VEXOUITools::MessageBoxW(const CString& text, unsigned int flags, const CWnd* owner) {
    CVxLogEntry entry(L"VEXOUITools::MessageBoxW");
    return showBox(text, flags, owner);
}
