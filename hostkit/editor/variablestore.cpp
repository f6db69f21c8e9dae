#include "variablestore.h"

#include "adscodes.h"
#include "numbertext.h"
#include "runtimeservices.h"
#include "winreg.h"

namespace hostkit {
namespace {

// Longer ones are not ours.
constexpr std::size_t longestSetting = 256;

std::wstring keyPath() {
    const std::wstring product = acrxProductKey();
    return product.empty() ? product : product + L"\\Variables";
}

} // namespace

bool loadSetting(const std::wstring& name, SystemValue& value) {
    const std::wstring path = keyPath();
    HKEY key = nullptr;
    if (path.empty() || RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    wchar_t text[longestSetting] = {};
    DWORD size = sizeof text - sizeof *text;
    DWORD type = 0;
    const LONG result =
        RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return result == ERROR_SUCCESS && type == REG_SZ && parseValue(text, value.type, value);
}

bool storeSetting(const std::wstring& name, const SystemValue& value) {
    const std::wstring path = keyPath();
    HKEY key = nullptr;
    if (path.empty() || RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                                        &key, nullptr) != ERROR_SUCCESS)
        return false;
    const std::wstring text = formatValue(value);
    const LONG result =
        RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

std::wstring formatValue(const SystemValue& value) {
    switch (value.type) {
    case RTSHORT:
    case RTLONG:
        return std::to_wstring(value.integer);
    case RTREAL:
        return formatReal(value.reals[0]);
    case RTPOINT:
        return formatReal(value.reals[0]) + L"," + formatReal(value.reals[1]);
    case RT3DPOINT:
        return formatReal(value.reals[0]) + L"," + formatReal(value.reals[1]) + L"," +
               formatReal(value.reals[2]);
    default:
        return value.text;
    }
}

bool parseValue(std::wstring_view text, short type, SystemValue& value) {
    SystemValue read;
    read.type = type;
    bool isOne = true;
    switch (type) {
    case RTSHORT:
    case RTLONG:
        isOne = parseInteger(text, read.integer);
        break;
    case RTREAL:
        isOne = parseReal(text, read.reals[0]);
        break;
    case RTPOINT:
    case RT3DPOINT:
        isOne = parsePoint(text, read.reals);
        break;
    default:
        read.text = text;
        break;
    }
    if (isOne) value = std::move(read);
    return isOne;
}

} // namespace hostkit
