// The module's dialog and its texts, and its place in the chain of modules where both are looked up.
#include "afxdllx.h"
#include "dialogtemplate.h"
#include "resources.h"
#include "stringtable.h"
#include "winuser.h"

#include <iterator>

namespace {

constexpr DWORD list = CBS_DROPDOWNLIST | WS_TABSTOP;
constexpr DWORD field = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;

const hostkit::DialogItem pageItems[] = {
    {L"STATIC", labelFirst, SS_LEFT, 4, 7, 70, 9, promptTextStyle},
    {L"COMBOBOX", comboTextStyle, list, 78, 4, 145, 13, 0},
    {L"STATIC", labelFirst + 1, SS_LEFT, 4, 24, 70, 9, promptLineType},
    {L"COMBOBOX", comboLineType, list, 78, 21, 145, 13, 0},
    {L"STATIC", labelFirst + 2, SS_LEFT, 4, 41, 70, 9, promptDimensionStyle},
    {L"COMBOBOX", comboDimensionStyle, list, 78, 38, 145, 13, 0},
    {L"STATIC", labelFirst + 3, SS_LEFT, 4, 58, 70, 9, promptCover},
    {L"EDIT", editCover, field, 78, 55, 45, 13, 0},
    {L"STATIC", labelFirst + 4, SS_LEFT, 130, 58, 46, 9, promptWidth},
    {L"EDIT", editWidth, field, 178, 55, 45, 13, 0},
    {L"STATIC", labelFirst + 5, SS_LEFT, 4, 75, 70, 9, promptJustification},
    {L"EDIT", editJustification, field, 78, 72, 45, 13, 0},
};
const hostkit::DialogTemplate templates[] = {
    {pageTemplate, WS_CHILD | DS_CONTROL, 227, 92, promptPage, pageItems, std::size(pageItems)},
};
const hostkit::DialogTable dialogs{templates, std::size(templates)};

const hostkit::StringTableEntry entries[] = {
    {promptPage, L"Répartition"},
    {promptTextStyle, L"Style de &texte :"},
    {promptLineType, L"Type de &ligne :"},
    {promptDimensionStyle, L"Style de &cote :"},
    {promptCover, L"Enro&bage :"},
    {promptWidth, L"Lar&geur :"},
    {promptJustification, L"&Justification :"},
};
const hostkit::StringTable texts{entries, std::size(entries)};

AFX_EXTENSION_MODULE extensionModule;

} // namespace

extern "C" BOOL DllMain(HINSTANCE instance, DWORD reason, void*) {
    constexpr DWORD processDetach = 0, processAttach = 1;
    if (reason == processAttach) {
        if (!AfxInitExtensionModule(extensionModule, instance)) return FALSE;
        new CDynLinkLibrary(extensionModule); // the chain owns it
    }
    if (reason == processDetach) AfxTermExtensionModule(extensionModule);
    return TRUE;
}

extern "C" const hostkit::DialogTable* getModuleDialogTable() { return &dialogs; }
extern "C" const hostkit::StringTable* getModuleStringTable() { return &texts; }
extern "C" const wchar_t* getModulePromptsProjectName() { return promptsProject; }
