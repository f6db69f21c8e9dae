// Looks after the layers of a drawing through the library's layer service.
#include "aced.h"
#include "layercommands.h"
#include "rxdefs.h"
#include "rxdlinkr.h"

namespace {

constexpr const wchar_t* commandGroup = L"LAYERS";

struct Command {
    const wchar_t* name;
    AcRxFunctionPtr function;
    const wchar_t* answers;
    const wchar_t* help;
};

void showHelp();

constexpr Command commands[] = {
    {L"LAYERMAKE", makeLayer, L"NAME [COLOUR n] [CURRENT] [OFF] [NEW]",
     L"makes a layer; with NEW under a free name where the name is taken"},
    {L"LAYERRENAME", renameLayers, L"LAYERS OLD NEW", L"replaces a text in their names"},
    {L"LAYERDELETE", deleteLayers, L"LAYERS [MOVE | ERASE]",
     L"deletes them; their entities move to layer 0, or go"},
    {L"LAYERON", switchLayersOn, L"LAYERS", L"switches on and thaws"},
    {L"LAYEROFF", switchLayersOff, L"LAYERS", L"switches off and freezes; the current layer only goes off"},
    {L"LAYERFREEZE", freezeLayers, L"LAYERS", L"freezes"},
    {L"LAYERTHAW", thawLayers, L"LAYERS", L"thaws"},
    {L"LAYERLOCK", lockLayers, L"LAYERS", L"locks"},
    {L"LAYERUNLOCK", unlockLayers, L"LAYERS", L"unlocks"},
    {L"LAYERISOLATE", isolateLayers, L"LAYERS", L"shows them and hides all others but layer 0"},
    {L"LAYERCOUNT", countEntities, L"LAYERS", L"how many entities lie on each"},
    {L"LAYERLIST", listEntities, L"LAYERS",
     L"the entities on them, also within blocks, and how often those are inserted"},
    {L"LAYEREMPTY", emptyLayers, L"LAYERS", L"erases all entities on them, also within blocks"},
    {L"LAYERHELP", showHelp, L"", L"this list"},
};

void showHelp() {
    for (const Command& each : commands) acutPrintf(L"%-13s %-38s %s\n", each.name, each.answers, each.help);
    acutPrintf(L"LAYERS are names or patterns (* ? # @ . [] ~), with commas alone between: WALL*,FLOOR-##\n");
}

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
