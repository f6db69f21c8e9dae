// Stand-in for the host's platform types. Covers the handle, integer and status types with their constants; leaves out COM.
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI
#define APIENTRY
#define CALLBACK

/// Types that the platform holds in 16 or 32 bits keep that width here, where `long` has 64 bits.
using BOOL = int;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using INT = int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using __int64 = std::int64_t; // NOLINT(bugprone-reserved-identifier): the name is given
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using HRESULT = std::int32_t;
using LSTATUS = LONG;
using COLORREF = DWORD;
using CHAR = char;
using WCHAR = wchar_t;
using TCHAR = wchar_t;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using LPTSTR = wchar_t*;
using LPCTSTR = const wchar_t*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using LPVOID = void*;
using LPCVOID = const void*;
using ACCESS_MASK = DWORD;
using REGSAM = ACCESS_MASK;

/// Handles are opaque pointers of distinct types, so that one kind is never taken for another.
using HANDLE = void*;
using HWND = struct HostWindow*;
using HKEY = struct HostRegistryKey*;
using HINSTANCE = struct HostModule*;
using HMODULE = HINSTANCE;
using HICON = struct HostIcon*;
using HCURSOR = HICON;
using HDC = struct HostDeviceContext*;
using HMENU = struct HostMenu*;
using HGDIOBJ = struct HostGdiObject*;
using HFONT = struct HostFont*;
using HBRUSH = struct HostBrush*;
using HPEN = struct HostPen*;
using HIMAGELIST = struct HostImageList*;
using FARPROC = std::intptr_t (*)();

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

/// What a call gives in place of a handle when it fails.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(std::intptr_t{-1});

inline constexpr int MAX_PATH = 260;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001u);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
[[nodiscard]] constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
[[nodiscard]] constexpr bool FAILED(HRESULT result) { return result < 0; }

inline constexpr LONG ERROR_SUCCESS = 0;
inline constexpr LONG ERROR_FILE_NOT_FOUND = 2;
inline constexpr LONG ERROR_PATH_NOT_FOUND = 3;
inline constexpr LONG ERROR_ACCESS_DENIED = 5;
inline constexpr LONG ERROR_INVALID_HANDLE = 6;
inline constexpr LONG ERROR_NO_MORE_FILES = 18;
inline constexpr LONG ERROR_BAD_LENGTH = 24;
inline constexpr LONG ERROR_WRITE_FAULT = 29;
inline constexpr LONG ERROR_LOCK_VIOLATION = 33;
inline constexpr LONG ERROR_INVALID_PARAMETER = 87;
inline constexpr LONG ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr LONG ERROR_INVALID_NAME = 123;
inline constexpr LONG ERROR_MOD_NOT_FOUND = 126;
inline constexpr LONG ERROR_PROC_NOT_FOUND = 127;
inline constexpr LONG ERROR_DIR_NOT_EMPTY = 145;
inline constexpr LONG ERROR_ALREADY_EXISTS = 183;
inline constexpr LONG ERROR_MORE_DATA = 234;
inline constexpr LONG ERROR_NO_MORE_ITEMS = 259;
inline constexpr LONG ERROR_DIRECTORY = 267;
inline constexpr LONG ERROR_KEY_DELETED = 1018;

inline constexpr DWORD DLL_PROCESS_DETACH = 0;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
inline constexpr DWORD DLL_THREAD_ATTACH = 2;
inline constexpr DWORD DLL_THREAD_DETACH = 3;
