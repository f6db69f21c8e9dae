#include "winbase.h"

#include "cfile.h"
#include "hostport.h"
#include "systempath.h"
#include "tchar.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <dlfcn.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::wstring_view viewOf(const wchar_t* text) { return text ? std::wstring_view(text) : std::wstring_view(); }

thread_local DWORD lastError = 0;

BOOL failWith(LONG error) {
    lastError = static_cast<DWORD>(error);
    return FALSE;
}

LONG errorOf(int systemError) {
    switch (systemError) {
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EEXIST:
        return ERROR_ALREADY_EXISTS;
    case ENOTEMPTY:
        return ERROR_DIR_NOT_EMPTY;
    default:
        return ERROR_ACCESS_DENIED;
    }
}

bool exists(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

// A missing parent is told apart from a missing file.
LONG errorOfMissing(const std::string& path, int systemError) {
    const std::size_t separator = path.rfind('/');
    const bool parentMissing =
        separator != std::string::npos && separator > 0 && !exists(path.substr(0, separator));
    return systemError == ENOENT && parentMissing ? ERROR_PATH_NOT_FOUND : errorOf(systemError);
}

bool isReplaceable(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return true;
    constexpr UINT alone = CFile::modeReadWrite | CFile::shareExclusive;
    return !S_ISDIR(status.st_mode) && access(path.c_str(), W_OK) == 0 &&
           hostkit::shareFile(status.st_dev, status.st_ino, alone);
}

} // namespace

// --- The port ----------------------------------------------------------------------------------------------

void OutputDebugStringW(const wchar_t* text) {
    if (text) hostkit::currentPort()->debugOutput(text);
}

__time64_t _time64(__time64_t* time) {
    const __time64_t now = hostkit::currentPort()->now();
    if (time) *time = now;
    return now;
}

DWORD GetTickCount() {
    return static_cast<DWORD>(hostkit::currentPort()->monotonicNanoseconds() / 1'000'000);
}

DWORD GetLastError() { return lastError; }
void SetLastError(DWORD error) { lastError = error; }

// --- Files -------------------------------------------------------------------------------------------------

BOOL CreateDirectoryW(const wchar_t* path, SECURITY_ATTRIBUTES*) {
    const std::string name = hostkit::platformPath(viewOf(path));
    if (mkdir(name.c_str(), 0777) == 0) return TRUE;
    return failWith(errno == ENOENT ? ERROR_PATH_NOT_FOUND : errorOf(errno));
}

BOOL RemoveDirectoryW(const wchar_t* path) {
    const std::string name = hostkit::platformPath(viewOf(path));
    if (rmdir(name.c_str()) == 0) return TRUE;
    if (errno == ENOTDIR && exists(name)) return failWith(ERROR_DIRECTORY);
    return failWith(errno == EEXIST ? ERROR_DIR_NOT_EMPTY : errorOfMissing(name, errno));
}

DWORD GetFileAttributesW(const wchar_t* path) {
    const std::string name = hostkit::platformPath(viewOf(path));
    struct stat status;
    if (stat(name.c_str(), &status) != 0) {
        failWith(errorOfMissing(name, errno));
        return INVALID_FILE_ATTRIBUTES;
    }
    DWORD attributes = S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    if (access(name.c_str(), W_OK) != 0) attributes |= FILE_ATTRIBUTE_READONLY;
    const std::string last = name.substr(name.rfind('/') + 1);
    if (last.size() > 1 && last[0] == '.' && last != "..") attributes |= FILE_ATTRIBUTE_HIDDEN;
    return attributes;
}

BOOL DeleteFileW(const wchar_t* path) {
    const std::string name = hostkit::platformPath(viewOf(path));
    if (unlink(name.c_str()) == 0) return TRUE;
    return failWith(errorOfMissing(name, errno));
}

BOOL MoveFileW(const wchar_t* from, const wchar_t* to) { return MoveFileExW(from, to, 0); }

BOOL MoveFileExW(const wchar_t* from, const wchar_t* to, DWORD flags) {
    const std::string target = hostkit::platformPath(viewOf(to));
    const std::string source = hostkit::platformPath(viewOf(from));
    if (flags & ~MOVEFILE_REPLACE_EXISTING) return failWith(ERROR_INVALID_PARAMETER);
    if (flags == 0 && exists(target)) return failWith(ERROR_ALREADY_EXISTS);
    if (exists(source) && !isReplaceable(target)) return failWith(ERROR_ACCESS_DENIED);
    if (std::rename(source.c_str(), target.c_str()) == 0) return TRUE;
    return failWith(errorOfMissing(exists(source) ? target : source, errno));
}

BOOL SetCurrentDirectoryW(const wchar_t* path) {
    const std::string name = hostkit::platformPath(viewOf(path));
    struct stat status;
    char resolved[PATH_MAX];
    if (!realpath(name.c_str(), resolved) || stat(resolved, &status) != 0)
        return failWith(errorOfMissing(name, errno));
    if (!S_ISDIR(status.st_mode)) return failWith(ERROR_DIRECTORY);
    if (access(resolved, X_OK) != 0) return failWith(ERROR_ACCESS_DENIED);
    hostkit::hostDirectory() = resolved;
    return TRUE;
}

DWORD GetCurrentDirectoryW(DWORD size, wchar_t* buffer) {
    char name[PATH_MAX];
    const std::string& set = hostkit::hostDirectory();
    if (set.empty() && !getcwd(name, sizeof name)) {
        failWith(errorOf(errno));
        return 0;
    }
    const std::wstring text = hostkit::pathFromSystem(set.empty() ? name : set);
    const DWORD length = static_cast<DWORD>(text.size());
    if (!buffer || size <= length) return length + 1;
    lstrcpyW(buffer, text.c_str());
    return length;
}

// --- Modules -----------------------------------------------------------------------------------------------

HMODULE LoadLibraryW(const wchar_t* file) {
    // A name without a folder is left to the system's search.
    const std::string mapped = hostkit::mapPath(viewOf(file));
    const std::string name =
        mapped.find('/') == std::string::npos ? mapped : hostkit::platformPath(viewOf(file));
    // An empty name would give the program itself.
    void* module = name.empty() ? nullptr : dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) failWith(ERROR_MOD_NOT_FOUND);
    return static_cast<HMODULE>(module);
}

FARPROC GetProcAddress(HMODULE module, const char* name) {
    void* symbol = module && name ? dlsym(module, name) : nullptr;
    if (!symbol) failWith(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(symbol);
}

BOOL FreeLibrary(HMODULE module) {
    if (module && dlclose(module) == 0) return TRUE;
    return failWith(ERROR_INVALID_HANDLE);
}
