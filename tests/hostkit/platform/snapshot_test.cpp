#include "systempath.h"
#include "temporaryfolder.h"
#include "textencoding.h"
#include "tlhelp32.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

template <typename Entry>
std::vector<Entry> walk(DWORD flags, DWORD process, BOOL (*first)(HANDLE, Entry*),
                        BOOL (*next)(HANDLE, Entry*)) {
    std::vector<Entry> all;
    const HANDLE snapshot = CreateToolhelp32Snapshot(flags, process);
    EXPECT_NE(snapshot, INVALID_HANDLE_VALUE);
    Entry entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = first(snapshot, &entry); more; more = next(snapshot, &entry)) all.push_back(entry);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_MORE_FILES));
    EXPECT_EQ(CloseHandle(snapshot), TRUE);
    return all;
}

std::vector<MODULEENTRY32W> modulesOf(DWORD process) {
    return walk(TH32CS_SNAPMODULE, process, Module32FirstW, Module32NextW);
}

// A second process of this program that waits until it is let go.
class Child {
public:
    Child() {
        if (pipe(m_pipe) != 0) return;
        m_process = fork();
        if (m_process != 0) return;
        close(m_pipe[1]);
        char byte;
        while (read(m_pipe[0], &byte, 1) > 0) {
        }
        _exit(0);
    }
    ~Child() { end(); }
    DWORD process() const { return static_cast<DWORD>(m_process); }
    void end() {
        if (m_process <= 0) return;
        close(m_pipe[0]);
        close(m_pipe[1]);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    int m_pipe[2] = {-1, -1};
    pid_t m_process = 0;
};

TEST(Snapshots, ShowThisProcessAndItsChild) {
    Child child;
    const DWORD pid = child.process();
    const auto processes = walk(TH32CS_SNAPPROCESS, 0, Process32FirstW, Process32NextW);
    const auto find = [&](DWORD id) {
        return std::find_if(processes.begin(), processes.end(),
                            [id](const PROCESSENTRY32W& each) { return each.th32ProcessID == id; });
    };
    const auto own = find(GetCurrentProcessId()), other = find(pid);
    ASSERT_NE(own, processes.end());
    ASSERT_NE(other, processes.end());
    EXPECT_EQ(other->th32ParentProcessID, GetCurrentProcessId());
    EXPECT_EQ(other->cntThreads, 1u);
    EXPECT_EQ(std::wstring(own->szExeFile), L"test_platform");

    const auto modules = modulesOf(pid);
    ASSERT_GT(modules.size(), 2u);
    EXPECT_EQ(std::wstring(modules[0].szModule), L"test_platform");
    EXPECT_EQ(modules[0].th32ProcessID, pid);
    EXPECT_EQ(modules.size(), modulesOf(0).size()) << "0 is this process, which loaded the same";
    child.end();
    EXPECT_EQ(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, pid), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST(Snapshots, ModulesAreTheFilesThatCodeWasLoadedFrom) {
    const auto modules = modulesOf(GetCurrentProcessId());
    const auto holds = [&](const std::wstring& name) {
        return std::count_if(modules.begin(), modules.end(), [&](const MODULEENTRY32W& each) {
            return std::wstring(each.szModule).find(name) != std::wstring::npos;
        });
    };
    EXPECT_EQ(holds(L"vexokit_platform"), 1) << "each file once, however often it is mapped";
    EXPECT_EQ(holds(L"libc.so"), 1);
    for (const MODULEENTRY32W& each : modules) {
        EXPECT_EQ(std::wstring(each.szModule), hostkit::fileNameOfPath(each.szExePath));
        EXPECT_NE(GetFileAttributesW(each.szExePath), INVALID_FILE_ATTRIBUTES)
            << hostkit::utf8FromWide(each.szExePath);
    }
    const auto* here = reinterpret_cast<const BYTE*>(&hostkit::openSnapshotCount);
    EXPECT_TRUE(std::any_of(modules.begin(), modules.end(), [&](const MODULEENTRY32W& each) {
        return here >= each.modBaseAddr && here < each.modBaseAddr + each.modBaseSize &&
               std::wstring(each.szModule).find(L"vexokit_platform") != std::wstring::npos;
    }));
}

TEST(Snapshots, FailAsThePlatformDoes) {
    const auto failure = [](bool isGood) { return isGood ? 0 : static_cast<LONG>(GetLastError()); };
    const auto opens = [](DWORD flags, DWORD process) {
        return CreateToolhelp32Snapshot(flags, process) != INVALID_HANDLE_VALUE;
    };
    const int before = hostkit::openSnapshotCount();
    EXPECT_EQ(failure(opens(0, 0)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(failure(opens(0x4, 0)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(failure(opens(TH32CS_SNAPMODULE, 0xFFFFFFF0u)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(hostkit::openSnapshotCount(), before) << "a failure leaves none open";

    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    MODULEENTRY32W module = {};
    PROCESSENTRY32W process = {};
    EXPECT_EQ(failure(Process32FirstW(snapshot, &process)), ERROR_BAD_LENGTH);
    EXPECT_EQ(failure(Process32FirstW(snapshot, nullptr)), ERROR_INVALID_PARAMETER);
    process.dwSize = sizeof process;
    module.dwSize = sizeof module;
    EXPECT_EQ(failure(Module32FirstW(snapshot, &module)), ERROR_NO_MORE_FILES) << "it has no modules";
    EXPECT_EQ(failure(Process32FirstW(snapshot, &process)), 0);
    const DWORD first = process.th32ProcessID;
    EXPECT_EQ(failure(Process32FirstW(snapshot, &process)), 0);
    EXPECT_EQ(process.th32ProcessID, first);
    EXPECT_EQ(failure(CloseHandle(snapshot)), 0);
    EXPECT_EQ(failure(CloseHandle(snapshot)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(failure(CloseHandle(INVALID_HANDLE_VALUE)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(failure(Process32NextW(snapshot, &process)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(failure(Process32NextW(INVALID_HANDLE_VALUE, &process)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(process.th32ProcessID, first);
}

// Names of any bytes come through whole; a path longer than its place is cut, not overrun.
TEST(Snapshots, ModulesMayHaveAnyName) {
    const TemporaryFolder folder;
    std::string deep = folder.path().string();
    for (int i = 0; i < 6; ++i) deep += "/" + std::string(60, 'x');
    std::filesystem::create_directories(deep);
    const std::string files[] = {folder / "\u00e9t\u00e9 (1) x\xFF.so", deep + "/long.so"};
    std::string library;
    for (const MODULEENTRY32W& each : modulesOf(0))
        if (std::wstring(each.szModule).starts_with(L"libm.")) library = hostkit::mapPath(each.szExePath);
    std::vector<HMODULE> loaded;
    for (const std::string& each : files) {
        std::filesystem::copy_file(library, each);
        loaded.push_back(LoadLibraryW(hostkit::pathFromSystem(each).c_str()));
        ASSERT_NE(loaded.back(), nullptr) << each;
    }
    bool isWhole = false, isCut = false;
    for (const MODULEENTRY32W& each : modulesOf(0)) {
        isWhole |= hostkit::mapPath(each.szExePath) == files[0];
        isCut |= std::wstring(each.szModule) == L"long.so" && std::wcslen(each.szExePath) == MAX_PATH - 1;
    }
    EXPECT_TRUE(isWhole);
    EXPECT_TRUE(isCut);
    for (const HMODULE each : loaded) EXPECT_EQ(FreeLibrary(each), TRUE);
}

} // namespace
