// Keeps the settings of a repartition as styles: in files that travel from drawing to drawing, by the
// library's bar in a sheet of the module's own.
#include "aced.h"
#include "cvxlogentry.h"
#include "dbapserv.h"
#include "modulecommand.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "stylesheet.h"

namespace {

constexpr const wchar_t* commandGroup = L"STYLES";

bool hasDrawing() {
    if (acdbHostApplicationServices()->workingDatabase()) return true;
    hostkit::failCommand(Acad::eNoDatabase, L"no drawing is open");
    return false;
}

void print(const Settings& settings) {
    acutPrintf(L"text style %s, linetype %s, dimension style %s, cover %g, width %g, justification %d\n",
               settings.textStyle, settings.lineType, settings.dimensionStyle, settings.cover, settings.width,
               settings.justification);
}

// STYLESAVE: the sheet of what is current, to be saved as a style. Nothing in the drawing changes.
void saveStyle() {
    CVxLogEntry entry(L"STYLES::saveStyle");
    if (!hasDrawing()) return;
    StyleSheet sheet(L"Enregistrer un style de répartition", currentSettings());
    sheet.DoModal();
    acutPrintf(L"STYLESAVE\n");
}

// STYLELOAD: the sheet, to load a style into; what is accepted becomes current.
void loadStyle() {
    CVxLogEntry entry(L"STYLES::loadStyle");
    if (!hasDrawing()) return;
    StyleSheet sheet(L"Charger un style de répartition", currentSettings());
    if (sheet.DoModal() != IDOK) return (void)acutPrintf(L"STYLELOAD: nothing was chosen\n");
    applySettings(sheet.settings());
    acutPrintf(L"STYLELOAD: ");
    print(currentSettings());
}

// STYLES: the styles on disk
void listStyles() {
    CVxLogEntry entry(L"STYLES::listStyles");
    SlabStyle style;
    VEXOORStyleData* data = &style;
    VEXODlgORStyle bar;
    bar.SetEntityType(repartitionType);
    bar.SetORStyleData(data);
    if (!bar.Create(nullptr)) return hostkit::failCommand(Acad::eInvalidInput, L"there is no bar of styles");
    const auto& list = *static_cast<CComboBox*>(bar.GetDlgItem(VEXODlgORStyle::IDC_COMBO_STYLES));
    int styles = 0;
    for (int i = 0; i < list.GetCount(); ++i) {
        CString name;
        list.GetLBText(i, name);
        if (name[0] == L'<') continue; // the bar's own entries
        acutPrintf(L"%s\n", name);
        ++styles;
    }
    acutPrintf(styles == 1 ? L"%d style\n" : L"%d styles\n", styles);
}

struct Command {
    const wchar_t* name;
    AcRxFunctionPtr function;
};

constexpr Command commands[] = {
    {L"STYLES", listStyles}, {L"STYLESAVE", saveStyle}, {L"STYLELOAD", loadStyle}};

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
