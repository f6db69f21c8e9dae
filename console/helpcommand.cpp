#include "helpcommand.h"

#include "aced.h"
#include "builtincommands.h"
#include "casefold.h"
#include "commandoutput.h"
#include "host.h"
#include "inventorycommands.h"
#include "modulecommand.h"
#include "modulefile.h"

#include <string>
#include <vector>

namespace {

void listCommands() {
    std::vector<std::vector<std::wstring>> rows = {{L"Command", L"What it does"}};
    for (const CommandDescription& each : describedCommands()) rows.push_back({each.name, each.help});
    printTable(rows, "ll");
    std::wstring others;
    for (const AcEdCommand* command : acedRegCmds->commands())
        if (!isOwnCommand(*command))
            others += std::wstring(others.empty() ? L"" : L", ") + command->localName();
    if (!others.empty()) acutPrintf(L"Commands of modules: %s\n", others.c_str());
    acutPrintf(L"HELP COMMAND tells what is known of one command.\n");
}

// Of a module's command the host knows what was registered; its arguments are the module's own affair.
void describe(const AcEdCommand& command) {
    const CommandDescription* const known = descriptionOf(command.globalName());
    const bool isKnown = known && isOwnCommand(command);
    std::wstring text = command.localName();
    if (isKnown && *known->arguments) text += L' ' + std::wstring(known->arguments);
    text += L'\n';
    if (isKnown) text += L"  " + std::wstring(known->help) + L'\n';
    if (isKnown && *known->details) text += L"  " + std::wstring(known->details) + L'\n';
    if (!hostkit::equalFolded(command.localName(), command.globalName()))
        text += L"  its name everywhere is _" + std::wstring(command.globalName()) + L'\n';
    if (!isKnown)
        text += L"  of the group " + std::wstring(command.commandGroup()) + L" in " +
                moduleFileOf(command.functionAddr()) + L"; it asks for its answers\n";
    const std::wstring flags = commandFlagsText(command.commandFlags());
    if (!flags.empty()) text += L"  flags: " + flags + L'\n';
    hostkit::printToCommandLine(text);
}

} // namespace

void helpCommand() {
    if (hostkit::Host::current()->runningCommand()->input.rest().empty()) return listCommands();
    CString name;
    if (acedGetString(0, L"Command: ", name) != RTNORM) return;
    const AcEdCommand* const command = acedRegCmds->lookupTyped(name);
    if (command) return describe(*command);
    hostkit::failCommand(Acad::eUnknownCommand,
                         L"there is no command \"" + std::wstring(name.GetString()) + L"\"; HELP lists them");
}
