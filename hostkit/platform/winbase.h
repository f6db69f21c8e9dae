// Stand-in for the host's base services. Covers files, modules, clock and debug output by their wide names; leaves out starting processes.
#pragma once

#include "windowstypes.h"
#include "winreg.h"

// --- Debug output and clock --------------------------------------------------------------------------------

/// Gives the text to the port of the current host. A null text does nothing.
void OutputDebugStringW(const wchar_t* text);

// NOLINTBEGIN(bugprone-reserved-identifier): the names are given.
using __time64_t = std::int64_t;
/// Seconds since 1970-01-01 00:00 UTC by the port's clock; also stored in *time when that is not null.
__time64_t _time64(__time64_t* time);
// NOLINTEND(bugprone-reserved-identifier)
/// Milliseconds of the port's monotonic clock, modulo 2^32.
DWORD GetTickCount();

// --- Last error --------------------------------------------------------------------------------------------

/// One number a thread, set by the functions that say so.
DWORD GetLastError();
void SetLastError(DWORD error);

// --- Processes and handles ---------------------------------------------------------------------------------

/// The operating system's number of this process.
DWORD GetCurrentProcessId();
/// Ends a handle that the system gave out (a snapshot's). FALSE with ERROR_INVALID_HANDLE for any other, one
/// that is closed already among them.
BOOL CloseHandle(HANDLE handle);

// --- Files -------------------------------------------------------------------------------------------------
/// Every path goes through hostkit::platformPath: both separators are taken, a drive letter is mapped by the
/// port, and a relative path stands below the current directory. Names are compared as the file system below
/// compares them.

inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x2;
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x4;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFFu;

struct SECURITY_ATTRIBUTES;

/// Makes one level. TRUE when it was made; FALSE with ERROR_ALREADY_EXISTS for anything of that name,
/// ERROR_PATH_NOT_FOUND for a missing parent, ERROR_ACCESS_DENIED otherwise. The security attributes are not
/// looked at.
BOOL CreateDirectoryW(const wchar_t* path, SECURITY_ATTRIBUTES* attributes);
/// Removes an empty directory: ERROR_DIR_NOT_EMPTY, ERROR_DIRECTORY (it is a file), ERROR_FILE_NOT_FOUND
/// otherwise.
BOOL RemoveDirectoryW(const wchar_t* path);
/// FILE_ATTRIBUTE bits, or INVALID_FILE_ATTRIBUTES with ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND. A file
/// that the caller may not write is read-only; a name that begins with a point is hidden; a plain file is an
/// archive file.
DWORD GetFileAttributesW(const wchar_t* path);
/// Removes a file, not a directory (ERROR_ACCESS_DENIED).
BOOL DeleteFileW(const wchar_t* path);
/// Renames; fails with ERROR_ALREADY_EXISTS where the new name stands.
BOOL MoveFileW(const wchar_t* from, const wchar_t* to);
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 0x1;
/// The same; with MOVEFILE_REPLACE_EXISTING the file of the new name is replaced at once, so that the old one
/// or the new one stands there. ERROR_ACCESS_DENIED where that is a directory, may not be written, or is open
/// in this host. ERROR_INVALID_PARAMETER for another flag.
BOOL MoveFileExW(const wchar_t* from, const wchar_t* to, DWORD flags);
/// Changes what relative paths of these functions, of CFile and of CFileFind stand below, for the current
/// host alone: the process stays where it is, so that what a user names on the command line stays there too.
/// ERROR_DIRECTORY for a file.
BOOL SetCurrentDirectoryW(const wchar_t* path);
/// Writes the current directory, that of the process until one is set, with '/' as it stands in the file
/// system. Returns the characters without the terminator, or the size needed with it when the buffer is too
/// small, or 0 on failure.
DWORD GetCurrentDirectoryW(DWORD size, wchar_t* buffer);

// --- Modules -----------------------------------------------------------------------------------------------

/// Loads a shared object of exactly this file name, found by path or by the system's search. Null with
/// ERROR_MOD_NOT_FOUND when it is not there, which is what every library of another platform is.
HMODULE LoadLibraryW(const wchar_t* file);
/// Null with ERROR_PROC_NOT_FOUND when the module has no such symbol, or the module is null.
FARPROC GetProcAddress(HMODULE module, const char* name);
BOOL FreeLibrary(HMODULE module);
