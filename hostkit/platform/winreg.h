// Stand-in for the host's registry functions. Covers hives, keys, typed values and access masks; leaves out security, links, notification and remote keys.
#pragma once

#include "windowstypes.h"

/// The functions work on the registry store of the current port. Keys and values are found without regard to
/// case and keep the case they were made with. A handle belongs to the store it was opened on.
///
/// Lengths are in bytes, and a wide character has sizeof(wchar_t) of them. A value keeps the bytes that it
/// was given: nothing adds a terminator when text is stored or read. Names of keys and values, and their
/// lengths, are in characters.

inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000000u));
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000001u));
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000002u));
inline const HKEY HKEY_USERS = reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000003u));

inline constexpr REGSAM KEY_QUERY_VALUE = 0x1;
inline constexpr REGSAM KEY_SET_VALUE = 0x2;
inline constexpr REGSAM KEY_CREATE_SUB_KEY = 0x4;
inline constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 0x8;
inline constexpr REGSAM KEY_NOTIFY = 0x10;
inline constexpr REGSAM KEY_CREATE_LINK = 0x20;
inline constexpr REGSAM KEY_WOW64_64KEY = 0x100;
inline constexpr REGSAM KEY_WOW64_32KEY = 0x200;
inline constexpr REGSAM KEY_READ = 0x20019;
inline constexpr REGSAM KEY_WRITE = 0x20006;
inline constexpr REGSAM KEY_EXECUTE = KEY_READ;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;

inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_EXPAND_SZ = 2;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;
inline constexpr DWORD REG_MULTI_SZ = 7;
inline constexpr DWORD REG_QWORD = 11;

inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

struct SECURITY_ATTRIBUTES;
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

/// Opens an existing key. ERROR_FILE_NOT_FOUND when it is not there, ERROR_ACCESS_DENIED when the access
/// holds a right to change and the hive is read-only, ERROR_INVALID_HANDLE for a closed handle. A null or
/// empty path opens the key itself. On failure the result stays untouched.
LONG RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD options, REGSAM access, HKEY* result);
/// Opens the key, after making it and all keys above it that are not there. Making is decided by the hive,
/// not by the rights of the handle. ERROR_INVALID_PARAMETER for a name that no key can have (a control
/// character, over 255 characters). The class and the security attributes are not looked at; disposition may
/// be null.
LONG RegCreateKeyExW(HKEY key, const wchar_t* path, DWORD reserved, wchar_t* keyClass, DWORD options,
                     REGSAM access, const SECURITY_ATTRIBUTES* attributes, HKEY* result, DWORD* disposition);
/// Needs KEY_SET_VALUE. Stores size bytes as they stand. A null or empty name is the key's default value.
LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);
/// Needs KEY_QUERY_VALUE. With null data only the type and the size are told. With too small a buffer the
/// size needed is told, the data stays untouched and the result is ERROR_MORE_DATA. Data without a size:
/// ERROR_INVALID_PARAMETER.
LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size);
/// Removes a key without sub-keys, its values with it; ERROR_ACCESS_DENIED when it has sub-keys. Decided by
/// the hive, not by the rights of the handle.
LONG RegDeleteKeyW(HKEY key, const wchar_t* path);
/// Needs KEY_SET_VALUE.
LONG RegDeleteValueW(HKEY key, const wchar_t* name);
/// Needs KEY_ENUMERATE_SUB_KEYS. The names come in order without regard to case. nameLength: in, the room
/// with terminator; out, the length without. ERROR_NO_MORE_ITEMS behind the last; ERROR_MORE_DATA when the
/// room is too small.
LONG RegEnumKeyExW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved,
                   wchar_t* keyClass, DWORD* classLength, FILETIME* lastWrite);
/// Needs KEY_QUERY_VALUE. As RegEnumKeyExW for the name, as RegQueryValueExW for type and data, each of which
/// may be null.
LONG RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type,
                   BYTE* data, DWORD* size);
/// ERROR_INVALID_HANDLE for a handle that is not open. Closing a hive does nothing and succeeds.
LONG RegCloseKey(HKEY key);
