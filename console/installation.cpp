#include "installation.h"

#include "afx.h"
#include "atomicfile.h"
#include "hostport.h"
#include "librarylocation.h"
#include "registrystore.h"
#include "rxprodkey.h"
#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <cstring>
#include <vector>

namespace {

constexpr const wchar_t* applicationKey = L"Software\\Vexomar\\ordane\\R18\\10.1";
constexpr const wchar_t* hostProductName = L"CAD host";
constexpr const wchar_t* hostRelease = L"18.0";

// What the application looks for below the install root.
constexpr const wchar_t* directories[] = {
    L"Bin",
    L"Catalog",
    L"Recover",
    L"Support",
    L"Support\\Arrow",
    L"Support\\Bar Supports",
    L"Support\\Dynamic Reinforcement",
    L"Support\\Dynamic Symbols",
    L"Support\\Layout Styles",
    L"Support\\Sample",
    L"Support\\Sample\\Document",
    L"Support\\Styles",
    L"Support\\Symbol",
};

std::wstring absolutePath(const std::wstring& path) {
    const bool hasDrive = path.size() > 1 && path[1] == L':';
    if (hasDrive || path.starts_with(L'/') || path.starts_with(L'\\')) return path;
    std::vector<wchar_t> current(GetCurrentDirectoryW(0, nullptr) + 1);
    GetCurrentDirectoryW(static_cast<DWORD>(current.size()), current.data());
    return std::wstring(current.data()) + L'/' + path;
}

bool makeTree(const std::wstring& root, std::wstring& problem) {
    for (const wchar_t* directory : directories) {
        const std::wstring path = root + L'\\' + directory;
        errno = 0;
        if (hostkit::makeDirectories(hostkit::mapPath(path))) continue;
        problem = path + L": the directory cannot be made: " +
                  hostkit::wideFromUtf8(std::strerror(errno ? errno : ENOTDIR));
        return false;
    }
    return true;
}

// Writes values under one key of the machine hive; the first that cannot be written ends it.
class MachineKey {
public:
    explicit MachineKey(const std::wstring& path)
        : m_path(path) {
        m_isGood = RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                   KEY_WRITE, nullptr, &m_key, nullptr) == ERROR_SUCCESS;
    }
    ~MachineKey() {
        if (m_key) RegCloseKey(m_key);
    }
    MachineKey(const MachineKey&) = delete;
    MachineKey& operator=(const MachineKey&) = delete;

    void setText(const wchar_t* name, const std::wstring& text) {
        set(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }
    void setNumber(const wchar_t* name, DWORD number) { set(name, REG_DWORD, &number, sizeof number); }

    bool finish(std::wstring& problem) const {
        if (!m_isGood) problem = L"the settings under HKEY_LOCAL_MACHINE\\" + m_path + L" cannot be written";
        return m_isGood;
    }

private:
    void set(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
        m_isGood = m_isGood && RegSetValueExW(m_key, name, 0, type, static_cast<const BYTE*>(data),
                                              static_cast<DWORD>(size)) == ERROR_SUCCESS;
    }

    std::wstring m_path;
    HKEY m_key = nullptr;
    bool m_isGood;
};

bool writeApplicationValues(const std::wstring& root, unsigned language, std::wstring& problem) {
    MachineKey key(applicationKey);
    key.setText(L"Path", root);
    key.setText(L"PATHBIN", root);
    key.setText(L"PATHDATA", root);
    key.setNumber(L"Language", language);
    return key.finish(problem);
}

bool writeLoaderValues(const std::wstring& module, std::wstring& problem) {
    MachineKey key(std::wstring(applicationKey) + L"\\Loader");
    key.setText(L"MODULE", module);
    return key.finish(problem);
}

bool writeHostValues(const std::wstring& root, std::wstring& problem) {
    const std::wstring productKey = acrxProductKey();
    if (productKey.empty()) {
        problem = L"the host has no product key";
        return false;
    }
    MachineKey key(productKey);
    key.setText(L"AcadLocation", root);
    key.setText(L"ProductName", hostProductName);
    key.setText(L"Release", hostRelease);
    return key.finish(problem);
}

} // namespace

bool writeInstallation(const std::wstring& root, unsigned language, const std::wstring& module,
                       std::wstring& problem) {
    if (root.empty()) {
        problem = L"no directory is named for the installation";
        return false;
    }
    std::wstring whole = absolutePath(root);
    while (whole.size() > 1 && (whole.back() == L'/' || whole.back() == L'\\')) whole.pop_back();
    return makeTree(whole, problem) && writeApplicationValues(whole, language, problem) &&
           writeLoaderValues(absolutePath(module), problem) && writeHostValues(whole, problem);
}

bool writeInstallation(const std::wstring& root, unsigned language, std::wstring& problem) {
    if (!hostkit::currentPort()->registry().isLasting()) {
        problem = L"there is no registry file to keep an installation in; name one";
        return false;
    }
    return writeInstallation(root, language, libraryLocation(), problem);
}
