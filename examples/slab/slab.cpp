#include "accmd.h"
#include "contourscommand.h"
#include "rxdefs.h"
#include "rxdlinkr.h"
#include "slabstripscommand.h"

namespace {

constexpr const wchar_t* commandGroup = L"SLAB";

bool addCommand(const wchar_t* name, AcRxFunctionPtr function) {
    return acedRegCmds->addCommand(commandGroup, name, name, ACRX_CMD_MODAL, function) == Acad::eOk;
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxDynamicLinker->unlockApplication(packet);
        acrxDynamicLinker->registerAppMDIAware(packet);
        if (!addCommand(L"CONTOURS", contoursCommand) || !addCommand(L"SLABSTRIPS", slabStripsCommand))
            return AcRx::kRetError;
        break;
    case AcRx::kUnloadAppMsg:
        acedRegCmds->removeGroup(commandGroup);
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
