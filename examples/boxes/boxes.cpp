// Shows how an application speaks to its user: the message box in its styles and the small dialogs, each as a
// command that prints what the user answered.
#include "aced.h"
#include "cvxlogentry.h"
#include "modulecommand.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "vexodlgexitapp.h"
#include "vexodlglistck.h"
#include "vexodlgsavefile.h"
#include "vexodlgwarningck.h"
#include "vexomessagebox.h"
#include "vexouitools.h"

namespace {

constexpr const wchar_t* commandGroup = L"BOXES";
constexpr unsigned productIcon = 14019;

CString givenText(const wchar_t* prompt, const wchar_t* otherwise) {
    CString text;
    if (acedGetString(0, prompt, text) != RTNORM || text.IsEmpty()) return otherwise;
    text.Replace(L"\\n", L"\n");
    return text;
}

// BOX [Ok | Cancel | Yesno] [TEXT] [CAPTION]
void box() {
    CVxLogEntry entry(L"BOXES::box");
    CString style(L"Ok");
    acedInitGet(0, L"Ok Cancel Yesno");
    if (acedGetKword(L"Style [Ok/Cancel/Yesno] <Ok>: ", style) == RTREJ)
        return hostkit::failCommand(Acad::eInvalidInput, L"the style is OK, CANCEL or YESNO");
    const CString text = givenText(L"Text: ", L"Les aciers ont été calculés.");
    const CString caption = givenText(L"Caption: ", L"Ordane Dalle");
    VEXOMessageBox dialog(text, caption, productIcon, nullptr);
    dialog.SetStyle(style == L"Yesno" ? 4 : style == L"Cancel" ? 1 : 0);
    acutPrintf(L"BOX: %d\n", dialog.DoModal());
}

// SIDEBOX: a text of the library beside a warning sign
void sideBox() {
    CVxLogEntry entry(L"BOXES::sideBox");
    VEXOMessageBox dialog(14013, L"VEXOTOOLS", 0, nullptr, 0, nullptr,
                          LoadIconW(nullptr, MAKEINTRESOURCEW(IDI_WARNING)));
    acutPrintf(L"SIDEBOX: %d\n", dialog.DoModal());
}

// STEPBOX: the platform's own box
void stepBox() {
    CVxLogEntry entry(L"BOXES::stepBox");
    VEXOUITools::DisplayInvalidStep(0, 1);
    acutPrintf(L"STEPBOX\n");
}

// QUESTION: the platform's own box with three buttons
void question() {
    CVxLogEntry entry(L"BOXES::question");
    acutPrintf(L"QUESTION: %d\n", VEXOUITools::MessageBoxW(L"Enregistrer les modifications ?",
                                                           MB_YESNOCANCEL | MB_ICONQUESTION));
}

// EXITBOX [MESSAGE]
void exitBox() {
    CVxLogEntry entry(L"BOXES::exitBox");
    VEXODlgExitApp dialog;
    dialog.setExitMsg(
        givenText(L"Message: ", L"Le dessin a été modifié. Voulez-vous quitter l'application ?"));
    acutPrintf(L"EXITBOX: %d\n", dialog.DoModal());
}

// LISTBOX [TITLE]
void listBox() {
    CVxLogEntry entry(L"BOXES::listBox");
    VEXODlgListCk dialog;
    dialog.SetTitle(givenText(L"Title: ", L"Choix du treillis"));
    for (const wchar_t* element : {L"Treillis soudé ST 10", L"Treillis soudé ST 25 C",
                                   L"Treillis soudé ST 40 C", L"Barres HA 8", L"Barres HA 10"})
        dialog.AddElement(element);
    const int result = dialog.DoModal();
    acutPrintf(L"LISTBOX: %d, element %d\n", result, dialog.GetCheckedElement());
}

// NAMEBOX
void nameBox() {
    CVxLogEntry entry(L"BOXES::nameBox");
    VEXODlgSaveFile dialog;
    const int result = dialog.DoModal();
    acutPrintf(L"NAMEBOX: %d, \"%s\"\n", result, dialog.GetFileName());
}

// WARNINGBOX
void warningBox() {
    CVxLogEntry entry(L"BOXES::warningBox");
    VEXODlgWarningCk dialog(
        L"Les armatures de la dalle dépassent le contour du coffrage. Elles seront coupées au "
        L"contour, et leur nombre peut changer.",
        nullptr, nullptr, nullptr);
    const int result = dialog.DoModal();
    acutPrintf(L"WARNINGBOX: %d, checked %d\n", result, dialog.IsChecked());
}

struct Command {
    const wchar_t* name;
    AcRxFunctionPtr function;
};

constexpr Command commands[] = {
    {L"BOX", box},         {L"SIDEBOX", sideBox}, {L"STEPBOX", stepBox}, {L"QUESTION", question},
    {L"EXITBOX", exitBox}, {L"LISTBOX", listBox}, {L"NAMEBOX", nameBox}, {L"WARNINGBOX", warningBox},
};

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        acrxDynamicLinker->unlockApplication(packet);
        acrxDynamicLinker->registerAppMDIAware(packet);
        for (const Command& each : commands)
            if (acedRegCmds->addCommand(commandGroup, each.name, each.name, ACRX_CMD_MODAL, each.function) !=
                Acad::eOk)
                return AcRx::kRetError;
    }
    if (message == AcRx::kUnloadAppMsg) acedRegCmds->removeGroup(commandGroup);
    return AcRx::kRetOK;
}
