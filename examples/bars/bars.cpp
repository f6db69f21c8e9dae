// An application module with an entity class of its own: bars that live in drawings, are selected, and tell
// their domain and their bounding block.

#include "bar.h"
#include "barcommands.h"
#include "barprotocols.h"

#include "accmd.h"
#include "rxdefs.h"
#include "rxdlinkr.h"

namespace {

constexpr wchar_t commandGroup[] = L"BARS";

struct Command {
    const wchar_t* name;
    AcRxFunctionPtr function;
    Adesk::Int32 flags;
};
constexpr Command commands[] = {
    {L"BAR", barCommand, ACRX_CMD_MODAL},
    {L"BARLIST", barListCommand, ACRX_CMD_MODAL | ACRX_CMD_USEPICKSET},
    {L"BARNEAR", barNearCommand, ACRX_CMD_MODAL},
};

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        // Drawings hold bars as long as the class is known: the module stays locked.
        acrxDynamicLinker->registerAppMDIAware(packet);
        ExampleBar::rxInit();
        addBarProtocols();
        for (const Command& each : commands)
            if (acedRegCmds->addCommand(commandGroup, each.name, each.name, each.flags, each.function) !=
                Acad::eOk)
                return AcRx::kRetError;
    }
    if (message == AcRx::kUnloadAppMsg) {
        acedRegCmds->removeGroup(commandGroup);
        removeBarProtocols();
        ExampleBar::rxExit();
    }
    return AcRx::kRetOK;
}
