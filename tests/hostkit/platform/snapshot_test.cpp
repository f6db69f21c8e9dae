#include "systempath.h"
#include "temporaryfolder.h"
#include "tlhelp32.h"
#include "winbase.h"

#include <gtest/gtest.h>

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

// A child that waits until its pipe is closed.
TEST(Snapshots, ShowThisProcessAndItsChild) {
    int ends[2];
    char byte;
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[1]);
        _exit(static_cast<int>(read(ends[0], &byte, 1)));
    }
    const DWORD pid = static_cast<DWORD>(child);
    int found = 0;
    for (const auto& each : walk(TH32CS_SNAPPROCESS, 0, Process32FirstW, Process32NextW)) {
        if (each.th32ProcessID != pid && each.th32ProcessID != GetCurrentProcessId()) continue;
        EXPECT_EQ(std::wstring(each.szExeFile), L"test_platform");
        EXPECT_EQ(each.th32ParentProcessID == GetCurrentProcessId(), each.th32ProcessID == pid);
        ++found;
    }
    EXPECT_EQ(found, 2);
    const auto modules = modulesOf(pid);
    EXPECT_EQ(modules.size(), modulesOf(0).size()) << "0 is this process, which loaded the same";
    EXPECT_EQ(std::wstring(modules.at(0).szModule), L"test_platform");
    close(ends[0]);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, pid), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST(Snapshots, ModulesAreTheFilesThatCodeWasLoadedFrom) {
    const auto* here = reinterpret_cast<const BYTE*>(&hostkit::openSnapshotCount);
    int count = 0;
    for (const MODULEENTRY32W& each : modulesOf(GetCurrentProcessId())) {
        EXPECT_EQ(std::wstring(each.szModule), hostkit::fileNameOfPath(each.szExePath));
        EXPECT_NE(GetFileAttributesW(each.szExePath), INVALID_FILE_ATTRIBUTES);
        if (std::wstring(each.szModule).find(L"vexokit_platform") == std::wstring::npos) continue;
        EXPECT_TRUE(here >= each.modBaseAddr && here < each.modBaseAddr + each.modBaseSize);
        ++count;
    }
    EXPECT_EQ(count, 1) << "each file once, however often it is mapped";
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
    module.dwSize = sizeof module;
    EXPECT_EQ(failure(Process32FirstW(snapshot, &process)), ERROR_BAD_LENGTH);
    EXPECT_EQ(failure(Process32FirstW(snapshot, nullptr)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(failure(Module32FirstW(snapshot, &module)), ERROR_NO_MORE_FILES) << "it has no modules";
    EXPECT_EQ(failure(CloseHandle(snapshot)), 0);
    EXPECT_EQ(failure(CloseHandle(snapshot)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(failure(Process32NextW(INVALID_HANDLE_VALUE, &process)), ERROR_INVALID_HANDLE);
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
