#include "inventorycommands.h"

#include "aced.h"
#include "casefold.h"
#include "commandoutput.h"
#include "host.h"
#include "modulecommand.h"
#include "runtimeservices.h"
#include "tlhelp32.h"
#include "windows.h"

#include <memory>
#include <utility>

namespace {

using Rows = std::vector<std::vector<std::wstring>>;

constexpr std::pair<Adesk::Int32, const wchar_t*> flagWords[] = {
    {ACRX_CMD_TRANSPARENT, L"transparent"}, {ACRX_CMD_USEPICKSET, L"selection"},
    {ACRX_CMD_REDRAW, L"redraw"},           {ACRX_CMD_NOPAPERSPACE, L"not on sheets"},
    {ACRX_CMD_DOCREADLOCK, L"reads only"},  {ACRX_CMD_DOCEXCLUSIVELOCK, L"locks exclusively"},
    {ACRX_CMD_SESSION, L"session"},         {ACRX_CMD_NO_UNDO_MARKER, L"no undo step"},
};

void appendWord(std::wstring& words, const std::wstring& word) {
    if (!words.empty()) words += L", ";
    words += word;
}

std::vector<MODULEENTRY32W> modulesOfProcess() {
    std::vector<MODULEENTRY32W> modules;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return modules;
    const std::unique_ptr<void, BOOL (*)(HANDLE)> closing(snapshot, &CloseHandle);
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL more = Module32FirstW(snapshot, &module); more; more = Module32NextW(snapshot, &module))
        modules.push_back(module);
    return modules;
}

std::wstring pathOf(const std::vector<MODULEENTRY32W>& modules, const std::wstring& name) {
    for (const MODULEENTRY32W& each : modules)
        if (name == each.szModule) return each.szExePath;
    return L"";
}

void listProcess() {
    const std::vector<MODULEENTRY32W> modules = modulesOfProcess();
    if (modules.empty())
        return hostkit::failCommand(Acad::eNotApplicable, L"the system does not show the process's modules");
    constexpr DWORD kilobyte = 1024;
    Rows rows = {{L"Module", L"KB", L"File"}};
    for (const MODULEENTRY32W& each : modules)
        rows.push_back({each.szModule, std::to_wstring(each.modBaseSize / kilobyte), each.szExePath});
    printTable(rows, "lrl");
}

} // namespace

std::wstring commandFlagsText(Adesk::Int32 flags) {
    std::wstring words;
    for (const auto& [flag, word] : flagWords) {
        if ((flags & flag) == 0) continue;
        appendWord(words, word);
        flags &= ~flag;
    }
    if (flags == 0) return words;
    CString rest;
    rest.Format(L"0x%X", static_cast<unsigned>(flags));
    appendWord(words, rest.GetString());
    return words;
}

void commandsCommand() {
    Rows rows = {{L"Group", L"Command", L"Local name", L"Flags"}};
    const std::unique_ptr<AcEdCommandIterator> walk(acedRegCmds->iterator());
    for (; !walk->done(); walk->next()) {
        const AcEdCommand& command = *walk->command();
        const bool hasLocalName = !hostkit::equalFolded(command.localName(), command.globalName());
        rows.push_back({walk->commandGroup(), command.globalName(), hasLocalName ? command.localName() : L"",
                        commandFlagsText(command.commandFlags())});
    }
    printTable(rows, "llll");
}

void modulesCommand() {
    CString word;
    acedInitGet(0, L"Process");
    const int answer = acedGetKword(L"[Process] <loaded modules>: ", word);
    if (answer == RTNORM) return listProcess();
    if (answer == RTREJ)
        return hostkit::failCommand(Acad::eInvalidInput, L"behind MODULES stands PROCESS, or nothing");
    if (answer != RTNONE) return;
    const AcRxDynamicLinker& linker = hostkit::Host::current()->runtime().linker();
    const std::vector<MODULEENTRY32W> mapped = modulesOfProcess();
    Rows rows = {{L"Module", L"Unloading", L"Documents", L"File"}};
    for (const std::wstring& name : linker.moduleNames())
        rows.push_back({name, linker.isApplicationLocked(name.c_str()) ? L"locked" : L"allowed",
                        linker.isAppMDIAware(name.c_str()) ? L"several" : L"one", pathOf(mapped, name)});
    printTable(rows, "llll");
}
