#include "vexouitools.h"

#include "aced.h"
#include "afxcmn.h"
#include "cvxlogentry.h"
#include "cvxtoolsresoverride.h"
#include "dbmtext.h"
#include "moduleinstance.h"
#include "moduleprompts.h"
#include "vxprompts.h"

namespace {

constexpr unsigned int captionPrompt = 14026;
constexpr unsigned int noStep = 14022;
constexpr unsigned int modelStep = 14023;
constexpr unsigned int drawingStep = 14024;
constexpr unsigned int documentStep = 14025;
constexpr unsigned int invalidStep = 14027;
constexpr unsigned int invalidStepOfTwo = 14028;

// The windows from a dialog outwards, without the host's frame: those that can be seen.
std::vector<HWND> visibleChain(HWND window) {
    std::vector<HWND> chain;
    for (HWND at = window; at && at != adsw_acadMainWnd(); at = ::GetParent(at))
        if (::IsWindowVisible(at)) chain.push_back(at);
    return chain;
}

int showBox(const CString& text, unsigned int flags, const CWnd* owner) {
    const HWND window = owner ? owner->GetSafeHwnd() : adsw_acadMainWnd();
    return ::MessageBoxW(window, text, vexo::promptText(captionPrompt), flags);
}

} // namespace

void VEXOUITools::dlgErrorAlert(Acad::ErrorStatus status, const CString& file) {
    CVxLogEntry entry(L"VEXOUITools::dlgErrorAlert");
    if (status == Acad::eOk) return;
    CVxToolsResOverride resources(vexo::moduleInstance());
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

void VEXOUITools::DisplayInvalidStep(int current, int needed) {
    CVxLogEntry entry(L"VEXOUITools::DisplayInvalidStep");
    CString text;
    text.Format(vexo::promptText(invalidStep), getStringFromStepMode(current), getStringFromStepMode(needed));
    MessageBoxW(text, MB_ICONINFORMATION, nullptr);
}

void VEXOUITools::DisplayInvalidStep(int current, int first, int second) {
    CVxLogEntry entry(L"VEXOUITools::DisplayInvalidStep");
    CString text;
    text.Format(vexo::promptText(invalidStepOfTwo), getStringFromStepMode(current),
                getStringFromStepMode(first), getStringFromStepMode(second));
    MessageBoxW(text, MB_ICONINFORMATION, nullptr);
}

CString VEXOUITools::getStringFromStepMode(int mode) {
    CVxLogEntry entry(L"VEXOUITools::getStringFromStepMode");
    switch (mode) {
    case 0:
        return vexo::promptText(modelStep);
    case 1:
        return vexo::promptText(drawingStep);
    case 2:
        return vexo::promptText(documentStep);
    default:
        return vexo::promptText(noStep);
    }
}

int VEXOUITools::AddItemComboBoxEx(CComboBoxEx* combo, CImageList* images, CString text, unsigned int iconId,
                                   int index) {
    CVxLogEntry entry(L"VEXOUITools::AddItemComboBoxEx");
    if (!combo) return -1;
    const HINSTANCE module = AfxGetResourceHandle() ? AfxGetResourceHandle() : vexo::moduleInstance();
    const int image = images ? images->Add(LoadIconW(module, MAKEINTRESOURCEW(iconId))) : -1;
    if (images) combo->SetImageList(images);
    COMBOBOXEXITEMW item{};
    item.mask = CBEIF_TEXT | CBEIF_IMAGE | CBEIF_SELECTEDIMAGE;
    item.iItem = index;
    item.pszText = text.GetBuffer();
    item.iImage = image;
    item.iSelectedImage = image;
    return combo->InsertItem(&item);
}

int VEXOUITools::GetSafeLBText(const CComboBox& combo, const int& index, CString& text) {
    CVxLogEntry entry(L"VEXOUITools::GetSafeLBText");
    if (index < 0) return 0;
    combo.GetLBText(index, text);
    return 1;
}

void VEXOUITools::hideControls(std::vector<CWnd*> controls, std::vector<bool> hidden) {
    CVxLogEntry entry(L"VEXOUITools::hideControls");
    for (std::size_t i = 0; i < controls.size() && i < hidden.size(); ++i)
        if (controls[i]) controls[i]->ShowWindow(hidden[i] ? SW_HIDE : SW_SHOW);
}

void VEXOUITools::appendOptions(CMenu* menu, int id, int textId, int id2, int textId2) {
    CVxLogEntry entry(L"VEXOUITools::appendOptions");
    if (!menu) return;
    menu->AppendMenuW(MF_STRING, static_cast<UINT_PTR>(id),
                      vexo::promptText(static_cast<unsigned int>(textId)));
    if (id2 != 0)
        menu->AppendMenuW(MF_STRING, static_cast<UINT_PTR>(id2),
                          vexo::promptText(static_cast<unsigned int>(textId2)));
}

void VEXOUITools::EditMTextUsingInteractiveAcedEdit(AcDbMText* text, CWnd* window, AcGePoint3d location) {
    CVxLogEntry entry(L"VEXOUITools::EditMTextUsingInteractiveAcedEdit");
    if (!text) return;
    const HWND frame = adsw_acadMainWnd();
    const std::vector<HWND> chain = visibleChain(window ? window->GetSafeHwnd() : nullptr);
    for (const HWND each : chain) ::ShowWindow(each, SW_HIDE);
    const bool disablesFrame = ::IsWindowEnabled(frame);
    if (disablesFrame) ::EnableWindow(frame, FALSE);

    text->setLocation(location);
    acedEditMTextInteractive(text, false, false);

    // A frame that a modal dialog had disabled stays that dialog's.
    if (disablesFrame) ::EnableWindow(frame, TRUE);
    for (auto each = chain.rbegin(); each != chain.rend(); ++each) ::ShowWindow(*each, SW_SHOW);
}
