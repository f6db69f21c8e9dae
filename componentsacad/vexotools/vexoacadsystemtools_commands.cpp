#include "vexoacadsystemtools.h"

#include "cvxlogentry.h"
#include "rxdict.h"
#include "tchar.h"
#include "vexoacadsystemtools_internal.h"

#include <initializer_list>

using namespace vexo;

AcEdCommandStack* vexo::commandStack() {
    AcRxDictionary* registry = acrxSysRegistry();
    return registry ? AcEdCommandStack::cast(registry->at(L"ACAD_REGISTERED_COMMANDS")) : nullptr;
}

namespace {

// The result is as good as the name and the command are.
const wchar_t* globalNameOf(const wchar_t* name, const AcEdCommandStack* stack) {
    if (!stack) return name;
    const AcEdCommand* command = stack->lookupGlobalCmd(name);
    if (!command) command = stack->lookupLocalCmd(name);
    return command ? command->globalName() : name;
}

bool isRunning(std::initializer_list<const wchar_t*> names) {
    if (!workingDatabase()) return false;
    const Variable running(L"CMDNAMES");
    if (!running.text()) return false;
    const AcEdCommandStack* const stack = commandStack();
    const wchar_t* const runningName = globalNameOf(running.text(), stack);
    for (const wchar_t* name : names)
        if (name && _wcsicmp(runningName, globalNameOf(name, stack)) == 0) return true;
    return false;
}

} // namespace

bool VEXOAcadSystemTools::isCommand(const wchar_t* name) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isCommand");
    return isRunning({name});
}

bool VEXOAcadSystemTools::isCommand(const wchar_t* first, const wchar_t* second) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isCommand");
    if (!first || !second || !workingDatabase()) return false;
    const AcEdCommandStack* const stack = commandStack();
    return _wcsicmp(globalNameOf(first, stack), globalNameOf(second, stack)) == 0;
}

bool VEXOAcadSystemTools::isCommandActive() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isCommandActive");
    return workingDatabase() && getSysVar(L"CMDACTIVE") != 0;
}

bool VEXOAcadSystemTools::isNullCommandActive() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isNullCommandActive");
    if (!workingDatabase()) return false;
    const Variable running(L"CMDNAMES");
    return running.text() && *running.text() == L'\0';
}

bool VEXOAcadSystemTools::commandActive(CString& name) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::commandActive");
    const Variable running(L"CMDNAMES");
    if (!running.text()) return false;
    name = globalNameOf(running.text(), commandStack());
    return true;
}

bool VEXOAcadSystemTools::isUndoRedoCommand(const wchar_t* name) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isUndoRedoCommand");
    if (!name) return false;
    const wchar_t* const globalName = globalNameOf(name, commandStack());
    for (const wchar_t* each : {L"U", L"UNDO", L"MREDO", L"REDO"})
        if (_wcsicmp(globalName, each) == 0) return true;
    return false;
}

bool VEXOAcadSystemTools::isAcadCommandModify() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcadCommandModify");
    return isRunning({L"GRIP_STRETCH", L"MIRROR", L"OFFSET", L"MOVE", L"ROTATE", L"SCALE", L"STRETCH",
                      L"TRIM", L"EXTEND", L"BREAK", L"DROPGEOM", L"MATCHPROP"});
}

bool VEXOAcadSystemTools::isBarSpecificCommandModify() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isBarSpecificCommandModify");
    return isRunning({L"vexorebarproperties"});
}

bool VEXOAcadSystemTools::isRepartSpecificCommandModify() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isRepartSpecificCommandModify");
    return isRunning({L"vexorepartproperties", L"vexoassignrebartomember"});
}
