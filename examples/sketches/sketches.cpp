// An application module whose objects own entities: sketches, which take entities out of model space, keep
// them in the drawing through the library's filing, and put them back.

#include "sketch.h"
#include "sketchcommands.h"

#include "accmd.h"
#include "rxdefs.h"
#include "rxdlinkr.h"

namespace {

constexpr wchar_t commandGroup[] = L"SKETCHES";

struct Command {
    const wchar_t* name;
    AcRxFunctionPtr function;
    Adesk::Int32 flags;
};
constexpr Command commands[] = {
    {L"SKETCHTAKE", sketchTakeCommand, ACRX_CMD_MODAL | ACRX_CMD_USEPICKSET},
    {L"SKETCHLIST", sketchListCommand, ACRX_CMD_MODAL},
    {L"SKETCHMOVE", sketchMoveCommand, ACRX_CMD_MODAL},
    {L"SKETCHPUT", sketchPutCommand, ACRX_CMD_MODAL},
};

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        // Drawings hold sketches as long as the class is known: the module stays locked.
        acrxDynamicLinker->registerAppMDIAware(packet);
        ExampleSketch::rxInit();
        for (const Command& each : commands)
            if (acedRegCmds->addCommand(commandGroup, each.name, each.name, each.flags, each.function) !=
                Acad::eOk)
                return AcRx::kRetError;
    }
    if (message == AcRx::kUnloadAppMsg) {
        acedRegCmds->removeGroup(commandGroup);
        ExampleSketch::rxExit();
    }
    return AcRx::kRetOK;
}
