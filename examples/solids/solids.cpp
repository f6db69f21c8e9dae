#include "accmd.h"
#include "rxdefs.h"
#include "rxdlinkr.h"
#include "solidcommands.h"

namespace {

constexpr const wchar_t* commandGroup = L"SOLIDS";

// A command that only measures leaves the selection to the next one.
constexpr Adesk::Int32 measuring = ACRX_CMD_MODAL | ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW;
constexpr Adesk::Int32 drawing = ACRX_CMD_MODAL | ACRX_CMD_USEPICKSET;

bool addCommand(const wchar_t* name, Adesk::Int32 flags, AcRxFunctionPtr function) {
    return acedRegCmds->addCommand(commandGroup, name, name, flags, function) == Acad::eOk;
}

bool addCommands() {
    return addCommand(L"RAISE", drawing, raiseCommand) && addCommand(L"BODIES", measuring, bodiesCommand) &&
           addCommand(L"SLICE", drawing, sliceCommand) && addCommand(L"MESH", measuring, meshCommand);
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxDynamicLinker->unlockApplication(packet);
        acrxDynamicLinker->registerAppMDIAware(packet);
        if (!addCommands()) return AcRx::kRetError;
        break;
    case AcRx::kUnloadAppMsg:
        acedRegCmds->removeGroup(commandGroup);
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
