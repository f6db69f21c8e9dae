#include "dialogtemplate.h"
#include "vexodlgexitapp.h"
#include "vexodlglistck.h"
#include "vexodlgorstyle.h"
#include "vexodlgorstylesavefile.h"
#include "vexodlgsavefile.h"
#include "vexodlgwarningck.h"

#include <iterator>

namespace {

constexpr DWORD defaultButton = BS_DEFPUSHBUTTON | WS_TABSTOP;
constexpr DWORD button = BS_PUSHBUTTON | WS_TABSTOP;
constexpr DWORD messageLabel = SS_LEFT | SS_NOPREFIX;
constexpr unsigned promptOk = 14060;
constexpr unsigned promptCancel = 14061;

const hostkit::DialogItem exitItems[] = {
    {L"STATIC", VEXODlgExitApp::IDC_SIDE_ICON, SS_ICON, 7, 9, 22, 20, 0},
    {L"STATIC", VEXODlgExitApp::IDC_MESSAGE, messageLabel, 38, 10, 185, 33, 0},
    {L"BUTTON", IDOK, defaultButton, 118, 51, 50, 14, promptOk},
    {L"BUTTON", IDCANCEL, button, 173, 51, 50, 14, promptCancel},
};
const hostkit::DialogItem listItems[] = {
    {L"LISTBOX", VEXODlgListCk::IDC_LIST, LBS_NOTIFY | WS_BORDER | WS_TABSTOP | WS_VSCROLL, 7, 7, 186, 92, 0},
    {L"BUTTON", IDOK, defaultButton, 88, 107, 50, 14, promptOk},
    {L"BUTTON", IDCANCEL, button, 143, 107, 50, 14, promptCancel},
};
const hostkit::DialogItem saveItems[] = {
    {L"STATIC", VEXODlgSaveFile::IDC_LABEL, SS_LEFT, 7, 10, 65, 9, 14062},
    {L"EDIT", VEXODlgSaveFile::IDC_NAME, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 76, 7, 117, 14, 0},
    {L"BUTTON", IDOK, defaultButton, 88, 31, 50, 14, promptOk},
    {L"BUTTON", IDCANCEL, button, 143, 31, 50, 14, promptCancel},
};
const hostkit::DialogItem styleItems[] = {
    {L"COMBOBOX", VEXODlgORStyle::IDC_COMBO_STYLES, CBS_DROPDOWNLIST | WS_TABSTOP, 0, 0, 168, 13, 0},
    {L"BUTTON", VEXODlgORStyle::IDC_BUTTON_SAVE, button, 173, 0, 50, 14, 14063},
};
const hostkit::DialogItem styleNameItems[] = {
    {L"STATIC", VEXODlgORStyleSaveFile::IDC_LABEL, SS_LEFT, 7, 10, 65, 9, 14074},
    {L"EDIT", VEXODlgORStyleSaveFile::IDC_NAME, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 76, 7, 117, 14, 0},
    {L"BUTTON", IDOK, defaultButton, 88, 31, 50, 14, promptOk},
    {L"BUTTON", IDCANCEL, button, 143, 31, 50, 14, promptCancel},
};
const hostkit::DialogItem warningItems[] = {
    {L"STATIC", VEXODlgWarningCk::IDC_MESSAGE, messageLabel, 7, 10, 216, 33, 0},
    {L"BUTTON", VEXODlgWarningCk::IDC_CHECK, BS_AUTOCHECKBOX | WS_TABSTOP, 7, 48, 216, 10, 14064},
    {L"BUTTON", IDOK, defaultButton, 118, 67, 50, 14, promptOk},
    {L"BUTTON", IDCANCEL, button, 173, 67, 50, 14, promptCancel},
};

const hostkit::DialogTemplate templates[] = {
    {VEXODlgExitApp::IDD, DS_MODALFRAME, 230, 72, 14020, exitItems, std::size(exitItems)},
    {VEXODlgListCk::IDD, DS_MODALFRAME, 200, 128, 14070, listItems, std::size(listItems)},
    {VEXODlgSaveFile::IDD, DS_MODALFRAME, 200, 52, 14063, saveItems, std::size(saveItems)},
    {VEXODlgORStyle::IDD, WS_CHILD | DS_CONTROL, 223, 14, 0, styleItems, std::size(styleItems)},
    {VEXODlgORStyleSaveFile::IDD, DS_MODALFRAME, 200, 52, 14063, styleNameItems, std::size(styleNameItems)},
    {VEXODlgWarningCk::IDD, DS_MODALFRAME, 230, 88, 14067, warningItems, std::size(warningItems)},
};

const hostkit::DialogTable table{templates, std::size(templates)};

} // namespace

/// What dialogs of this module are built from.
extern "C" const hostkit::DialogTable* getModuleDialogTable() { return &table; }
