#include "winreg.h"

#include "hostport.h"
#include "registrystore.h"

#include <cstring>
#include <iterator>
#include <optional>

namespace {

using hostkit::RegistryChange;
using hostkit::RegistryHive;
using hostkit::RegistryKey;
using hostkit::RegistryStore;
using hostkit::RegistryValue;

constexpr REGSAM changingRights = KEY_SET_VALUE | KEY_CREATE_SUB_KEY;

RegistryStore& store() { return hostkit::currentPort()->registry(); }

std::optional<RegistryHive> hiveOf(HKEY key) {
    if (key == HKEY_CLASSES_ROOT) return RegistryHive::classesRoot;
    if (key == HKEY_CURRENT_USER) return RegistryHive::currentUser;
    if (key == HKEY_LOCAL_MACHINE) return RegistryHive::localMachine;
    if (key == HKEY_USERS) return RegistryHive::users;
    return std::nullopt;
}

// The key that a handle stands for; a hive is always open with all rights.
std::optional<RegistryStore::OpenKey> openKeyOf(HKEY key) {
    if (const auto hive = hiveOf(key)) return RegistryStore::OpenKey{*hive, {}, KEY_ALL_ACCESS};
    const RegistryStore::OpenKey* open = store().fromHandle(key);
    return open ? std::optional(*open) : std::nullopt;
}

std::wstring joined(const std::wstring& path, const wchar_t* below) {
    if (!below || !*below) return path;
    return path.empty() ? std::wstring(below) : path + L'\\' + below;
}

// Applies a change to a key that a handle with these rights names.
LONG change(const RegistryStore::OpenKey& open, RegistryChange what) {
    if (!(open.access & KEY_SET_VALUE) || store().isReadOnly(open.hive)) return ERROR_ACCESS_DENIED;
    const LONG result = store().apply(what);
    const bool keyIsGone = result == ERROR_FILE_NOT_FOUND && !store().read().find(open.hive, open.path);
    return keyIsGone ? ERROR_KEY_DELETED : result;
}

// Hands out type, data and size of a value the way that both query functions do.
LONG giveValue(const RegistryValue& value, DWORD* type, BYTE* data, DWORD* size) {
    if (type) *type = value.type;
    const DWORD needed = static_cast<DWORD>(value.bytes.size());
    const DWORD room = size ? *size : 0;
    if (size) *size = needed;
    if (!data) return ERROR_SUCCESS;
    if (room < needed) return ERROR_MORE_DATA;
    value.bytes.copy(reinterpret_cast<char*>(data), needed);
    return ERROR_SUCCESS;
}

LONG giveName(const std::wstring& from, wchar_t* name, DWORD* nameLength) {
    if (*nameLength <= from.size()) return ERROR_MORE_DATA;
    name[from.copy(name, from.size())] = L'\0';
    *nameLength = static_cast<DWORD>(from.size());
    return ERROR_SUCCESS;
}

} // namespace

LONG RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD, REGSAM access, HKEY* result) {
    if (!result) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    const std::wstring whole = joined(open->path, path);
    if (!store().read().find(open->hive, whole)) return ERROR_FILE_NOT_FOUND;
    if ((access & changingRights) && store().isReadOnly(open->hive)) return ERROR_ACCESS_DENIED;
    *result = store().openHandle({open->hive, whole, access});
    return ERROR_SUCCESS;
}

LONG RegCreateKeyExW(HKEY key, const wchar_t* path, DWORD reserved, wchar_t*, DWORD, REGSAM access,
                     const SECURITY_ATTRIBUTES*, HKEY* result, DWORD* disposition) {
    if (!result || !path || reserved != 0) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    const std::wstring whole = joined(open->path, path);
    const bool exists = store().read().find(open->hive, whole) != nullptr;
    if ((!exists || (access & changingRights)) && store().isReadOnly(open->hive)) return ERROR_ACCESS_DENIED;
    if (!exists) {
        const LONG made = store().apply({RegistryChange::Kind::makeKey, open->hive, whole});
        if (made != ERROR_SUCCESS) return made;
    }
    if (disposition) *disposition = exists ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    *result = store().openHandle({open->hive, whole, access});
    return ERROR_SUCCESS;
}

LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    if (reserved != 0 || (!data && size > 0)) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    std::string bytes(size, '\0');
    if (size > 0) std::memcpy(bytes.data(), data, size);
    return change(*open, {RegistryChange::Kind::setValue,
                          open->hive,
                          open->path,
                          name ? name : L"",
                          {type, std::move(bytes)}});
}

LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) {
    if (reserved || (data && !size)) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    if (!(open->access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
    const RegistryKey* found = store().read().find(open->hive, open->path);
    if (!found) return ERROR_KEY_DELETED;
    const auto value = found->values.find(std::wstring_view(name ? name : L""));
    if (value == found->values.end()) return ERROR_FILE_NOT_FOUND;
    return giveValue(value->second, type, data, size);
}

LONG RegDeleteKeyW(HKEY key, const wchar_t* path) {
    if (!path) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    const std::wstring whole = joined(open->path, path);
    if (!store().read().find(open->hive, whole)) return ERROR_FILE_NOT_FOUND;
    if (store().isReadOnly(open->hive)) return ERROR_ACCESS_DENIED;
    return store().apply({RegistryChange::Kind::removeKey, open->hive, whole});
}

LONG RegDeleteValueW(HKEY key, const wchar_t* name) {
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    return change(*open, {RegistryChange::Kind::removeValue, open->hive, open->path, name ? name : L""});
}

LONG RegEnumKeyExW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, wchar_t*, DWORD*,
                   FILETIME* lastWrite) {
    if (!name || !nameLength || reserved) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    if (!(open->access & KEY_ENUMERATE_SUB_KEYS)) return ERROR_ACCESS_DENIED;
    const RegistryKey* found = store().read().find(open->hive, open->path);
    if (!found) return ERROR_KEY_DELETED;
    if (index >= found->keys.size()) return ERROR_NO_MORE_ITEMS;
    if (lastWrite) *lastWrite = {0, 0};
    return giveName(std::next(found->keys.begin(), index)->first, name, nameLength);
}

LONG RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type,
                   BYTE* data, DWORD* size) {
    if (!name || !nameLength || reserved || (data && !size)) return ERROR_INVALID_PARAMETER;
    const auto open = openKeyOf(key);
    if (!open) return ERROR_INVALID_HANDLE;
    if (!(open->access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
    const RegistryKey* found = store().read().find(open->hive, open->path);
    if (!found) return ERROR_KEY_DELETED;
    if (index >= found->values.size()) return ERROR_NO_MORE_ITEMS;
    const auto& [valueName, value] = *std::next(found->values.begin(), index);
    const LONG result = giveName(valueName, name, nameLength);
    return result == ERROR_SUCCESS ? giveValue(value, type, data, size) : result;
}

LONG RegCloseKey(HKEY key) {
    if (hiveOf(key)) return ERROR_SUCCESS;
    return store().closeHandle(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}
