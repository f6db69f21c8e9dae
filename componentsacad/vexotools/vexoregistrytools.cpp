#include "vexoregistrytools.h"

#include "aced.h"
#include "adscodes.h"
#include "cvxlogentry.h"
#include "debuglogoption.h"
#include "rxprodkey.h"
#include "vexoacadsystemtools.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace {

constexpr const wchar_t* applicationKey = L"Software\\Vexomar\\ordane";
constexpr const wchar_t* hostRelease = L"R18";
constexpr const wchar_t* applicationRelease = L"10.1";

constexpr const wchar_t* settingsKey = L"Settings";
constexpr unsigned long frenchPrimary = 12;
constexpr unsigned long frenchSub = 1;
constexpr DWORD frenchOfFrance = 1036;
constexpr int builtInUnitType = 4;
constexpr int highestUnitType = 7;

// A key that is closed with its scope.
class OpenedKey {
public:
    OpenedKey(HKEY hive, const wchar_t* path, REGSAM access) {
        if (path) isOpen_ = RegOpenKeyExW(hive, path, 0, access, &key_) == ERROR_SUCCESS;
    }
    ~OpenedKey() {
        if (isOpen_) RegCloseKey(key_);
    }
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;

    explicit operator bool() const { return isOpen_; }
    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
    bool isOpen_ = false;
};

bool isText(unsigned long type) { return type == REG_SZ || type == REG_EXPAND_SZ; }

// Reads a value's bytes into the caller's buffer of size bytes, with a terminator where there is room; size
// becomes the bytes of the value. The caller's buffer is written only once all is known to fit. A null buffer
// asks for the size.
bool readRaw(HKEY key, const wchar_t* name, wchar_t* value, unsigned long& size) {
    unsigned long type = REG_NONE;
    if (!value)
        return VEXORegistryTools::VEXORegQueryValueEx(key, name, nullptr, &type, nullptr, &size) ==
               ERROR_SUCCESS;
    std::vector<wchar_t> buffer(size / sizeof(wchar_t) + 1);
    const unsigned long room = (buffer.size() - 1) * sizeof(wchar_t);
    unsigned long count = room;
    auto* data = reinterpret_cast<unsigned char*>(buffer.data());
    if (VEXORegistryTools::VEXORegQueryValueEx(key, name, nullptr, &type, data, &count) != ERROR_SUCCESS)
        return false;
    // Behind the value the buffer holds zeros, so one character more than the value is its terminator.
    const unsigned long withTerminator = (count / sizeof(wchar_t) + 2) * sizeof(wchar_t);
    std::memcpy(value, buffer.data(), std::min(room, withTerminator));
    size = count;
    return true;
}

// Reads text of any length, with or without its terminator.
bool readText(HKEY key, const wchar_t* name, CString& value) {
    unsigned long type = REG_NONE;
    unsigned long size = 0;
    if (VEXORegistryTools::VEXORegQueryValueEx(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        return false;
    if (!isText(type)) return false;
    std::vector<wchar_t> buffer(size / sizeof(wchar_t) + 2);
    auto* data = reinterpret_cast<unsigned char*>(buffer.data());
    size = (buffer.size() - 1) * sizeof(wchar_t);
    if (VEXORegistryTools::VEXORegQueryValueEx(key, name, nullptr, &type, data, &size) != ERROR_SUCCESS)
        return false;
    value = buffer.data();
    return true;
}

bool readDword(HKEY key, const wchar_t* name, unsigned long& type, unsigned long& value) {
    DWORD stored = 0;
    unsigned long size = sizeof stored;
    auto* data = reinterpret_cast<unsigned char*>(&stored);
    if (VEXORegistryTools::VEXORegQueryValueEx(key, name, nullptr, &type, data, &size) != ERROR_SUCCESS)
        return false;
    if (size != sizeof stored || isText(type)) return false;
    value = stored;
    return true;
}

bool readPath(const wchar_t* name, HKEY hive, CString& path) {
    return VEXORegistryTools::QueryValueInRegistryApp(CString(), CString(name), path, hive) != 0;
}

int writeValue(const wchar_t* key, const wchar_t* name, DWORD type, const void* data, std::size_t size,
               HKEY hive) {
    if (!key || size > std::numeric_limits<DWORD>::max()) return 0;
    HKEY opened = nullptr;
    const LONG made =
        RegCreateKeyExW(hive, key, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &opened, nullptr);
    if (made != ERROR_SUCCESS) return 0;
    const LONG written =
        RegSetValueExW(opened, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    RegCloseKey(opened);
    return written == ERROR_SUCCESS ? 1 : 0;
}

CString belowApplicationKey(const wchar_t* subKey) {
    CString path;
    VEXORegistryTools::GetPathRegistryApp(path);
    if (!*subKey) return path;
    CString whole;
    whole.Format(L"%s\\%s", path, subKey);
    return whole;
}

bool endsWithSeparator(const CString& path) {
    const wchar_t last = path.GetAt(path.GetLength() - 1);
    return last == L'\\' || last == L'/';
}

void ensureSeparator(CString& path) {
    if (!endsWithSeparator(path)) path += L'\\';
}

CString directoryBelowDataPath(CString& out, const wchar_t* tail, bool trailingSeparator) {
    VEXORegistryTools::GetOrdaneDataPath(out);
    ensureSeparator(out);
    out += tail;
    if (trailingSeparator) out += L'\\';
    return out;
}

CString directoryBelowDataPath(const wchar_t* tail) {
    CString path;
    return directoryBelowDataPath(path, tail, false);
}

// The machine's language identifier; false when the built-in language holds. A missing value is written as
// the install would have it; with the rights of a reader that fails, and the write stays only for hosts that
// grant more.
bool readLanguage(unsigned long& identifier) {
    CString path;
    VEXORegistryTools::GetPathRegistryApp(path);
    const OpenedKey key(HKEY_LOCAL_MACHINE, path, KEY_READ);
    if (!key) return false;
    unsigned long type = REG_NONE;
    if (readDword(key.get(), L"Language", type, identifier) && type == REG_DWORD) return true;
    RegSetValueExW(key.get(), L"Language", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&frenchOfFrance),
                   sizeof frenchOfFrance);
    return false;
}

bool canMakeKeyIn(HKEY hive) {
    constexpr const wchar_t* testKey = L"Test key";
    const OpenedKey root(hive, L"", KEY_WRITE);
    if (!root) return false;
    HKEY made = nullptr;
    if (RegCreateKeyExW(root.get(), testKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &made,
                        nullptr) != ERROR_SUCCESS)
        return false;
    RegCloseKey(made);
    return RegDeleteKeyW(root.get(), testKey) == ERROR_SUCCESS;
}

} // namespace

// --- Raw access --------------------------------------------------------------------------------------------

int VEXORegistryTools::GetRegistryValue(const wchar_t* key, const wchar_t* name, wchar_t* value, HKEY hive,
                                        unsigned long extraAccess) {
    CVxLogEntry entry(L"VEXORegistryTools::GetRegistryValue");
    const OpenedKey opened(hive, key, static_cast<REGSAM>(extraAccess) | KEY_READ);
    unsigned long size = textBufferSize;
    return opened && readRaw(opened.get(), name, value, size) ? 1 : 0;
}

int VEXORegistryTools::GetRegistryValue(const wchar_t* key, const wchar_t* name, unsigned long& value,
                                        HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::GetRegistryValue");
    const OpenedKey opened(hive, key, KEY_READ);
    unsigned long type = REG_NONE;
    return opened && readDword(opened.get(), name, type, value) ? 1 : 0;
}

int VEXORegistryTools::SetRegistryValue(const wchar_t* key, const wchar_t* name, const wchar_t* value,
                                        HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::SetRegistryValue");
    if (!value) return 0;
    return writeValue(key, name, REG_SZ, value, (std::wcslen(value) + 1) * sizeof(wchar_t), hive);
}

int VEXORegistryTools::SetRegistryValue(const wchar_t* key, const wchar_t* name, const unsigned long& value,
                                        HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::SetRegistryValue");
    const DWORD stored = static_cast<DWORD>(value);
    return writeValue(key, name, REG_DWORD, &stored, sizeof stored, hive);
}

long VEXORegistryTools::VEXORegQueryValueEx(HKEY key, const wchar_t* name, unsigned long* reserved,
                                            unsigned long* type, unsigned char* data, unsigned long* size) {
    CVxLogEntry entry(L"VEXORegistryTools::VEXORegQueryValueEx");
    constexpr unsigned long most = std::numeric_limits<DWORD>::max();
    DWORD reservedHere = 0;
    DWORD typeHere = REG_NONE;
    const DWORD room = size ? static_cast<DWORD>(std::min(*size, most)) : 0;
    DWORD count = room;
    const LONG status = RegQueryValueExW(key, name, reserved ? &reservedHere : nullptr, &typeHere, data,
                                         size ? &count : nullptr);
    const bool isTold = status == ERROR_SUCCESS || status == ERROR_MORE_DATA;
    if (type && isTold) *type = typeHere;
    if (size && isTold) *size = count;
    if (status != ERROR_SUCCESS && (DebugLogOption & 1)) return status; // where a diagnostic build reports
    if (status != ERROR_SUCCESS) return status;

    if (!data && size) *size += 1;
    if (!data || !type || !name || !size || typeHere != REG_SZ || count == 0) return status;
    if (count < room) {
        data[count] = 0;
        return status;
    }
    wchar_t last = L'\0';
    if (count >= sizeof last) std::memcpy(&last, data + count - sizeof last, sizeof last);
    return count >= sizeof last && last == L'\0' ? status : ERROR_MORE_DATA;
}

int VEXORegistryTools::QueryValueInRegistry(HKEY hive, wchar_t* key, wchar_t* name, wchar_t* value,
                                            unsigned long size) {
    CVxLogEntry entry(L"VEXORegistryTools::QueryValueInRegistry");
    const OpenedKey opened(hive, key, KEY_QUERY_VALUE);
    return opened && readRaw(opened.get(), name, value, size) ? 1 : 0;
}

// --- Below the application key -----------------------------------------------------------------------------

int VEXORegistryTools::GetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, wchar_t* value,
                                           HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::GetRegistryValueAdv");
    return subKey ? GetRegistryValue(belowApplicationKey(subKey), name, value, hive) : 0;
}

int VEXORegistryTools::GetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, unsigned long& value,
                                           HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::GetRegistryValueAdv");
    return subKey ? GetRegistryValue(belowApplicationKey(subKey), name, value, hive) : 0;
}

int VEXORegistryTools::SetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, const wchar_t* value,
                                           HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::SetRegistryValueAdv");
    return subKey ? SetRegistryValue(belowApplicationKey(subKey), name, value, hive) : 0;
}

int VEXORegistryTools::SetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name,
                                           const unsigned long& value, HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::SetRegistryValueAdv");
    return subKey ? SetRegistryValue(belowApplicationKey(subKey), name, value, hive) : 0;
}

int VEXORegistryTools::SetRegistryValueAdvAndSwitchEnvVar(const wchar_t* subKey, const wchar_t* name,
                                                          const wchar_t* value, HKEY hive,
                                                          const wchar_t* envVar) {
    CVxLogEntry entry(L"VEXORegistryTools::SetRegistryValueAdvAndSwitchEnvVar");
    CString oldText;
    if (subKey) QueryValueInRegistryApp(CString(subKey), CString(name), oldText, hive);
    const int written = SetRegistryValueAdv(subKey, name, value, hive);
    if (!written || oldText.IsEmpty() || oldText == value || !envVar) return written;
    wchar_t state[512] = L"";
    if (acedGetEnv(envVar, state) == RTNORM) acedSetEnv(envVar, lstrcmpW(state, L"1") == 0 ? L"0" : L"1");
    return written;
}

int VEXORegistryTools::QueryValueInRegistryApp(const wchar_t* subKey, const wchar_t* name, wchar_t* value,
                                               unsigned long& size, HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::QueryValueInRegistryApp");
    if (!subKey) return 0;
    const OpenedKey opened(hive, belowApplicationKey(subKey), KEY_QUERY_VALUE);
    return opened && readRaw(opened.get(), name, value, size) ? 1 : 0;
}

int VEXORegistryTools::QueryValueInRegistryApp(const CString& subKey, const CString& name, CString& value,
                                               HKEY hive) {
    CVxLogEntry entry(L"VEXORegistryTools::QueryValueInRegistryApp");
    const OpenedKey opened(hive, belowApplicationKey(subKey), KEY_QUERY_VALUE);
    return opened && readText(opened.get(), name, value) ? 1 : 0;
}

// --- Paths -------------------------------------------------------------------------------------------------

int VEXORegistryTools::GetOrdaneBinPath(CString& path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetOrdaneBinPath");
    CString found;
    if (!readPath(L"PATHBIN", HKEY_LOCAL_MACHINE, found) && !readPath(L"Path", HKEY_LOCAL_MACHINE, found))
        return 0;
    if (!found.IsEmpty()) ensureSeparator(found);
    path = found + L"Bin";
    return 1;
}

int VEXORegistryTools::GetOrdaneBinPath(wchar_t* path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetOrdaneBinPath");
    CString found;
    return path && GetOrdaneBinPath(found) && lstrcpyW(path, found) ? 1 : 0;
}

int VEXORegistryTools::GetOrdaneDataPath(CString& path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetOrdaneDataPath");
    const bool isFound = readPath(L"PATHDATA", HKEY_CURRENT_USER, path) ||
                         readPath(L"PATHDATA", HKEY_LOCAL_MACHINE, path) ||
                         readPath(L"Path", HKEY_LOCAL_MACHINE, path);
    return isFound ? 1 : 0;
}

int VEXORegistryTools::GetOrdaneDataPath(wchar_t* path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetOrdaneDataPath");
    CString found;
    return path && GetOrdaneDataPath(found) && lstrcpyW(path, found) ? 1 : 0;
}

CString VEXORegistryTools::GetPathParentDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathParentDir");
    wchar_t testing[260] = L"";
    unsigned long size = sizeof testing;
    const bool isKnown =
        QueryValueInRegistryApp(L"", L"TestingRelease", testing, size, HKEY_LOCAL_MACHINE) != 0;
    if (isKnown && testing[0] == L'1') return GetPathAppDir(out, trailingSeparator);
    if (!readPath(L"PATHBIN", HKEY_LOCAL_MACHINE, out)) out = L"..\\";
    if (trailingSeparator) ensureSeparator(out);
    return out;
}

CString VEXORegistryTools::GetPathAppDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathAppDir");
    CString module;
    if (!QueryValueInRegistryApp(CString(L"Loader"), CString(L"MODULE"), module, HKEY_LOCAL_MACHINE)) {
        out.Empty();
        return out;
    }
    // Drive and directory, whatever their length.
    const int separator = std::max(module.ReverseFind(L'\\'), module.ReverseFind(L'/'));
    const int drive = module.GetAt(1) == L':' ? 2 : 0;
    out = module.Left(std::max(separator + 1, drive));
    if (trailingSeparator) ensureSeparator(out);
    if (!trailingSeparator && endsWithSeparator(out)) out.Truncate(out.GetLength() - 1);
    return out;
}

void VEXORegistryTools::GetPathRegistryApp(CString& path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathRegistryApp");
    path.Format(L"%s\\%s\\%s", applicationKey, hostRelease, applicationRelease);
}

wchar_t* VEXORegistryTools::GetPathRegistryApp(wchar_t* path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathRegistryApp");
    CString key;
    GetPathRegistryApp(key);
    lstrcpyW(path, key);
    return path;
}

int VEXORegistryTools::GetAcadLocation(CString& path) {
    CVxLogEntry entry(L"VEXORegistryTools::GetAcadLocation");
    const OpenedKey key(HKEY_LOCAL_MACHINE, acrxProductKey(), KEY_QUERY_VALUE);
    if (!key) return 0;
    return readText(key.get(), L"AcadLocation", path) || readText(key.get(), L"Location", path) ? 1 : 0;
}

CString VEXORegistryTools::GetPathCatalogDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathCatalogDir");
    return directoryBelowDataPath(out, L"Catalog", trailingSeparator);
}

CString VEXORegistryTools::GetPathSupportDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportDir");
    return directoryBelowDataPath(out, L"Support", trailingSeparator);
}

CString VEXORegistryTools::GetPathSupportStylesDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportStylesDir");
    return directoryBelowDataPath(out, L"Support\\Styles", trailingSeparator);
}

CString VEXORegistryTools::GetPathSupportLevelArrowDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportLevelArrowDir");
    return directoryBelowDataPath(out, L"Support\\Arrow", trailingSeparator);
}

CString VEXORegistryTools::GetPathSupportDynBlocksDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportDynBlocksDir");
    return directoryBelowDataPath(out, L"Support\\Dynamic Symbols", trailingSeparator);
}

CString VEXORegistryTools::GetPathRecoverDir(CString& out, bool trailingSeparator) {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathRecoverDir");
    return directoryBelowDataPath(out, L"Recover", trailingSeparator);
}

CString VEXORegistryTools::GetPathSupportSymbolDir() {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportSymbolDir");
    return directoryBelowDataPath(L"Support\\Symbol");
}

CString VEXORegistryTools::GetPathSupportLayoutStyles() {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportLayoutStyles");
    return directoryBelowDataPath(L"Support\\Layout Styles");
}

CString VEXORegistryTools::GetPathSupportSamplesDocument() {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportSamplesDocument");
    return directoryBelowDataPath(L"Support\\Sample\\Document");
}

CString VEXORegistryTools::GetPathSupportBarSupportsDir() {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathSupportBarSupportsDir");
    return directoryBelowDataPath(L"Support\\Bar Supports");
}

// --- Settings and identity ---------------------------------------------------------------------------------

unsigned long VEXORegistryTools::GetLanguageUI() {
    CVxLogEntry entry(L"VEXORegistryTools::GetLanguageUI");
    unsigned long identifier = 0;
    return readLanguage(identifier) ? identifier & 1023 : frenchPrimary;
}

unsigned long VEXORegistryTools::GetSubLanguageUI() {
    CVxLogEntry entry(L"VEXORegistryTools::GetSubLanguageUI");
    unsigned long identifier = 0;
    return readLanguage(identifier) ? (identifier & 0xFFFF) >> 10 : frenchSub;
}

unsigned long VEXORegistryTools::GetRegistryLanguageUI() {
    CVxLogEntry entry(L"VEXORegistryTools::GetRegistryLanguageUI");
    unsigned long identifier = 0;
    return GetRegistryValueAdv(L"", L"Language", identifier, HKEY_LOCAL_MACHINE) ? identifier : 0;
}

int VEXORegistryTools::GetDefaultUnitType() const {
    CVxLogEntry entry(L"VEXORegistryTools::GetDefaultUnitType");
    CString text;
    int type = -1;
    if (QueryValueInRegistryApp(CString(settingsKey), CString(L"Metrics"), text, HKEY_CURRENT_USER))
        type = _wtoi(text);
    if (type >= 0 && type <= highestUnitType) return type;
    SetDefaultUnitType(builtInUnitType);
    return builtInUnitType;
}

void VEXORegistryTools::SetDefaultUnitType(int type) {
    CVxLogEntry entry(L"VEXORegistryTools::SetDefaultUnitType");
    CString text;
    text.Format(L"%d", type);
    SetRegistryValueAdv(settingsKey, L"Metrics", text, HKEY_CURRENT_USER);
}

CString VEXORegistryTools::GetPathRebarSolutionXML() {
    CVxLogEntry entry(L"VEXORegistryTools::GetPathRebarSolutionXML");
    constexpr const wchar_t* name = L"PathRebarSolutionXML";
    CString path;
    if (QueryValueInRegistryApp(CString(settingsKey), CString(name), path, HKEY_CURRENT_USER)) return path;
    if (!GetOrdaneDataPath(path) || path.IsEmpty()) return {};
    ensureSeparator(path);
    path += L"Support\\Dynamic Reinforcement";
    SetRegistryValueAdv(settingsKey, name, path, HKEY_CURRENT_USER);
    return path;
}

CString VEXORegistryTools::GetSketchPointColorsLegendVisibility() {
    CVxLogEntry entry(L"VEXORegistryTools::GetSketchPointColorsLegendVisibility");
    CString visibility;
    QueryValueInRegistryApp(CString(settingsKey), CString(L"SketchPointColorsLegendVisibility"), visibility,
                            HKEY_CURRENT_USER);
    return visibility;
}

void VEXORegistryTools::SetSketchPointColorsLegendVisibility(CString visibility) {
    CVxLogEntry entry(L"VEXORegistryTools::SetSketchPointColorsLegendVisibility");
    if (visibility.IsEmpty()) return;
    SetRegistryValueAdv(settingsKey, L"SketchPointColorsLegendVisibility", visibility, HKEY_CURRENT_USER);
}

CString VEXORegistryTools::WhoAmI() {
    CVxLogEntry entry(L"VEXORegistryTools::WhoAmI");
    return VEXOAcadSystemTools::isAcadLT() ? L"ordane10.ltx" : L"ordane10.arx";
}

bool VEXORegistryTools::CanRegisterComModules() {
    CVxLogEntry entry(L"VEXORegistryTools::CanRegisterComModules");
    return canMakeKeyIn(HKEY_CLASSES_ROOT) && canMakeKeyIn(HKEY_LOCAL_MACHINE);
}

long VEXORegistryTools::UpdateRegistryD(HINSTANCE instance, const wchar_t* resource, int registerIt,
                                        IRegistrar* registrar) {
    CVxLogEntry entry(L"VEXORegistryTools::UpdateRegistryD");
    using UpdateFunction = HRESULT(WINAPI*)(HINSTANCE, const wchar_t*, BOOL, void*, IRegistrar*);
    HMODULE module = LoadLibraryW(L"atl70.dll");
    if (!module) module = LoadLibraryW(L"atl71.dll");
    if (!module) return E_FAIL;
    const auto update = reinterpret_cast<UpdateFunction>(
        reinterpret_cast<void*>(GetProcAddress(module, "AtlUpdateRegistryFromResourceD")));
    const long result = update ? update(instance, resource, registerIt, nullptr, registrar) : E_FAIL;
    FreeLibrary(module);
    return result;
}
