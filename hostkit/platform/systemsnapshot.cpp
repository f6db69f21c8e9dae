#include "tlhelp32.h"

#include "systempath.h"
#include "winbase.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <cwchar>
#include <dirent.h>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

struct Snapshot {
    std::vector<PROCESSENTRY32W> processes;
    std::vector<MODULEENTRY32W> modules;
    std::size_t nextProcess = 0;
    std::size_t nextModule = 0;
};

// Handles belong to the process, as everything that the operating system gives out does.
std::map<HANDLE, std::unique_ptr<Snapshot>>& snapshots() {
    static std::map<HANDLE, std::unique_ptr<Snapshot>> open;
    return open;
}

Snapshot* find(HANDLE handle) {
    const auto found = snapshots().find(handle);
    return found == snapshots().end() ? nullptr : found->second.get();
}

template <std::size_t Size>
void copyCut(wchar_t (&to)[Size], std::wstring_view from) {
    const std::size_t length = std::min(from.size(), Size - 1);
    std::wmemcpy(to, from.data(), length);
    to[length] = L'\0';
}

std::string placeOf(DWORD process, const char* name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

// Empty for a process of the system's kernel, and for one that may not be looked at.
std::string programOf(DWORD process) {
    std::string path(4096, '\0');
    const ssize_t length = readlink(placeOf(process, "exe").c_str(), path.data(), path.size());
    path.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return path;
}

// "pid (name) state parent ...": the name may have blanks and parentheses within.
bool readProcess(DWORD process, PROCESSENTRY32W& entry) {
    std::ifstream stream(placeOf(process, "stat"), std::ios::binary);
    std::string line;
    if (!std::getline(stream, line, '\0')) return false;
    const std::size_t open = line.find('('), close = line.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close < open) return false;
    std::string name = line.substr(open + 1, close - open - 1);
    // The system cuts that name; the program's file has it whole.
    if (const std::string program = programOf(process); !program.empty())
        name = program.substr(program.rfind('/') + 1);
    long fields[17] = {}; // from the parent on; the last is the number of threads
    const char* text = line.c_str() + std::min(close + 3, line.size());
    for (long& field : fields) {
        while (*text == ' ') ++text;
        const auto result = std::from_chars(text, line.c_str() + line.size(), field);
        if (result.ec != std::errc()) break;
        text = result.ptr;
    }
    entry = {};
    entry.dwSize = sizeof entry;
    entry.th32ProcessID = process;
    entry.th32ParentProcessID = static_cast<DWORD>(fields[0]);
    entry.cntThreads = static_cast<DWORD>(fields[16]);
    copyCut(entry.szExeFile, hostkit::pathFromSystem(name));
    return true;
}

void takeProcesses(std::vector<PROCESSENTRY32W>& processes) {
    DIR* const entries = opendir("/proc");
    if (!entries) return;
    while (const dirent* each = readdir(entries)) {
        const char* const end = each->d_name + std::strlen(each->d_name);
        DWORD process = 0;
        const auto result = std::from_chars(static_cast<const char*>(each->d_name), end, process);
        if (result.ec != std::errc() || result.ptr != end) continue;
        PROCESSENTRY32W entry;
        if (readProcess(process, entry)) processes.push_back(entry); // it may have ended meanwhile
    }
    closedir(entries);
    std::sort(processes.begin(), processes.end(), [](const auto& first, const auto& second) {
        return first.th32ProcessID < second.th32ProcessID;
    });
}

/// A file that is mapped into a process.
struct Mapping {
    std::string file;
    std::uintptr_t start;
    std::uintptr_t end;
    bool hasCode;
};

// "start-end rights offset device inode   path"
bool parseMapping(std::string_view line, Mapping& mapping) {
    const std::size_t path = line.find('/');
    const char* const last = line.data() + line.size();
    const auto start = std::from_chars(line.data(), last, mapping.start, 16);
    if (path == std::string_view::npos || start.ec != std::errc() || start.ptr == last) return false;
    const auto end = std::from_chars(start.ptr + 1, last, mapping.end, 16);
    if (end.ec != std::errc() || last - end.ptr < 5) return false;
    mapping.hasCode = end.ptr[3] == 'x';
    mapping.file = line.substr(path);
    return true;
}

// Files with code, in the order of their addresses.
std::vector<Mapping> mappedFiles(std::istream& maps) {
    std::vector<Mapping> files;
    for (std::string line; std::getline(maps, line);) {
        Mapping mapping;
        if (!parseMapping(line, mapping)) continue;
        const auto known = std::find_if(files.begin(), files.end(),
                                        [&](const Mapping& each) { return each.file == mapping.file; });
        if (known == files.end()) {
            files.push_back(std::move(mapping));
            continue;
        }
        known->end = std::max(known->end, mapping.end);
        known->hasCode |= mapping.hasCode;
    }
    std::erase_if(files, [](const Mapping& each) { return !each.hasCode; });
    return files;
}

MODULEENTRY32W moduleOf(DWORD process, const Mapping& mapping) {
    MODULEENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    entry.th32ModuleID = 1;
    entry.th32ProcessID = process;
    entry.GlblcntUsage = entry.ProccntUsage = 1;
    entry.modBaseAddr = reinterpret_cast<BYTE*>(mapping.start);
    entry.modBaseSize = static_cast<DWORD>(mapping.end - mapping.start);
    entry.hModule = reinterpret_cast<HMODULE>(mapping.start);
    const std::wstring path = hostkit::pathFromSystem(mapping.file);
    copyCut(entry.szModule, hostkit::fileNameOfPath(path));
    copyCut(entry.szExePath, path);
    return entry;
}

LONG takeModules(DWORD process, std::vector<MODULEENTRY32W>& modules) {
    const std::string place = placeOf(process, "maps");
    if (access(placeOf(process, "").c_str(), F_OK) != 0) return ERROR_INVALID_PARAMETER;
    std::ifstream maps(place, std::ios::binary);
    if (!maps.is_open()) return ERROR_ACCESS_DENIED;
    std::vector<Mapping> files = mappedFiles(maps);
    const std::string program = programOf(process);
    std::stable_partition(files.begin(), files.end(),
                          [&](const Mapping& each) { return each.file == program; });
    for (const Mapping& each : files) modules.push_back(moduleOf(process, each));
    return ERROR_SUCCESS;
}

BOOL failWith(LONG error) {
    SetLastError(static_cast<DWORD>(error));
    return FALSE;
}

template <typename Entry>
BOOL take(HANDLE handle, Entry* entry, std::vector<Entry> Snapshot::*list, std::size_t Snapshot::*next,
          bool isFirst) {
    Snapshot* const snapshot = find(handle);
    if (!snapshot) return failWith(ERROR_INVALID_HANDLE);
    if (!entry) return failWith(ERROR_INVALID_PARAMETER);
    if (entry->dwSize < sizeof(Entry)) return failWith(ERROR_BAD_LENGTH);
    if (isFirst) snapshot->*next = 0;
    if (snapshot->*next >= (snapshot->*list).size()) return failWith(ERROR_NO_MORE_FILES);
    *entry = (snapshot->*list)[(snapshot->*next)++];
    return TRUE;
}

} // namespace

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD processId) {
    constexpr DWORD known = TH32CS_SNAPPROCESS | TH32CS_SNAPMODULE;
    LONG error = (flags & known) == 0 || (flags & ~known) != 0 ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    auto snapshot = std::make_unique<Snapshot>();
    if (error == ERROR_SUCCESS && (flags & TH32CS_SNAPMODULE))
        error = takeModules(processId == 0 ? GetCurrentProcessId() : processId, snapshot->modules);
    if (error != ERROR_SUCCESS) {
        SetLastError(static_cast<DWORD>(error));
        return INVALID_HANDLE_VALUE;
    }
    if (flags & TH32CS_SNAPPROCESS) takeProcesses(snapshot->processes);
    const HANDLE handle = snapshot.get();
    snapshots().emplace(handle, std::move(snapshot));
    return handle;
}

BOOL Process32FirstW(HANDLE snapshot, PROCESSENTRY32W* entry) {
    return take(snapshot, entry, &Snapshot::processes, &Snapshot::nextProcess, true);
}

BOOL Process32NextW(HANDLE snapshot, PROCESSENTRY32W* entry) {
    return take(snapshot, entry, &Snapshot::processes, &Snapshot::nextProcess, false);
}

BOOL Module32FirstW(HANDLE snapshot, MODULEENTRY32W* entry) {
    return take(snapshot, entry, &Snapshot::modules, &Snapshot::nextModule, true);
}

BOOL Module32NextW(HANDLE snapshot, MODULEENTRY32W* entry) {
    return take(snapshot, entry, &Snapshot::modules, &Snapshot::nextModule, false);
}

DWORD GetCurrentProcessId() { return static_cast<DWORD>(getpid()); }

BOOL CloseHandle(HANDLE handle) {
    return snapshots().erase(handle) > 0 ? TRUE : failWith(ERROR_INVALID_HANDLE);
}

int hostkit::openSnapshotCount() { return static_cast<int>(snapshots().size()); }
