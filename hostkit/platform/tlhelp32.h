// Stand-in for the host's snapshots of the system. Covers processes and the modules of one process; leaves out threads and heaps.
#pragma once

#include "windowstypes.h"

inline constexpr DWORD TH32CS_SNAPPROCESS = 0x2;
inline constexpr DWORD TH32CS_SNAPMODULE = 0x8;
inline constexpr int MAX_MODULE_NAME32 = 255;

/// One process of a snapshot. Fields that this system has no value for are 0.
struct PROCESSENTRY32W {
    DWORD dwSize; ///< its size in bytes, set by the caller before the first call
    DWORD cntUsage;
    DWORD th32ProcessID;
    ULONG_PTR th32DefaultHeapID;
    DWORD th32ModuleID;
    DWORD cntThreads;
    DWORD th32ParentProcessID;
    LONG pcPriClassBase;
    DWORD dwFlags;
    wchar_t szExeFile[MAX_PATH]; ///< the program's file name without its directory
};

/// One file that a process has loaded code from.
struct MODULEENTRY32W {
    DWORD dwSize; ///< its size in bytes, set by the caller before the first call
    DWORD th32ModuleID;
    DWORD th32ProcessID;
    DWORD GlblcntUsage;
    DWORD ProccntUsage;
    BYTE* modBaseAddr;
    DWORD modBaseSize; ///< bytes, from the first mapping of the file to the end of the last
    HMODULE hModule;
    wchar_t szModule[MAX_MODULE_NAME32 + 1]; ///< file name
    wchar_t szExePath[MAX_PATH];             ///< whole path; a longer one is cut
};

/// What runs now (TH32CS_SNAPPROCESS), or what the process has loaded (TH32CS_SNAPMODULE, process 0: this
/// one), or both, as the operating system tells it. Ended with CloseHandle. INVALID_HANDLE_VALUE with
/// ERROR_INVALID_PARAMETER for other flags or a process that is not there, ERROR_ACCESS_DENIED for one that
/// the system does not show.
HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD processId);

/// FALSE, with the entry untouched: ERROR_NO_MORE_FILES at the end, and where the snapshot has none of the
/// kind; ERROR_BAD_LENGTH for an entry whose size is not set; ERROR_INVALID_HANDLE; ERROR_INVALID_PARAMETER
/// for null.
BOOL Process32FirstW(HANDLE snapshot, PROCESSENTRY32W* entry);
BOOL Process32NextW(HANDLE snapshot, PROCESSENTRY32W* entry);
/// As above. The first one is the program itself.
BOOL Module32FirstW(HANDLE snapshot, MODULEENTRY32W* entry);
BOOL Module32NextW(HANDLE snapshot, MODULEENTRY32W* entry);

namespace hostkit {
/// Snapshots of this process that were not closed yet.
int openSnapshotCount();
} // namespace hostkit
