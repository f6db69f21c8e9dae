#include "rescueport.h"

#include "atomicfile.h"
#include "commandhistory.h"
#include "crashreport.h"
#include "registrystore.h"
#include "systempath.h"
#include "textencoding.h"
#include "winreg.h"

#include <ctime>
#include <optional>
#include <unistd.h>

namespace {

constexpr const wchar_t* applicationKey = L"Software\\Vexomar\\ordane\\R18\\10.1";

std::wstring setting(HKEY hive, const wchar_t* name) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, applicationKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
    wchar_t text[2048] = L"";
    DWORD size = sizeof text - sizeof *text, type = 0;
    const LONG status = RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS && type == REG_SZ ? std::wstring(text) : std::wstring();
}

// The places in the order in which the library looks for its data.
std::wstring dataPath() {
    for (const auto& [hive, name] :
         {std::pair{HKEY_CURRENT_USER, L"PATHDATA"}, std::pair{HKEY_LOCAL_MACHINE, L"PATHDATA"},
          std::pair{HKEY_LOCAL_MACHINE, L"Path"}})
        if (std::wstring found = setting(hive, name); !found.empty()) return found;
    return {};
}

} // namespace

RescuePort::RescuePort() {
    std::wstring data = dataPath();
    std::string directory = hostkit::platformPath(data);
    if (data.empty()) {
        const std::optional<std::string> history = CommandHistory::defaultPath();
        if (!history) return;
        directory = m_ownPlace = history->substr(0, history->rfind('/'));
    }
    data = hostkit::pathFromSystem(directory);
    if (directory.empty() || directory.back() != '/') directory += '/';
    m_recoverDirectory = directory + "Recover";
    const hostkit::ScopedPort scope(*this);
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, applicationKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return;
    RegSetValueExW(key, L"PATHDATA", 0, REG_SZ, reinterpret_cast<const BYTE*>(data.c_str()),
                   static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
}

void RescuePort::reportProblem(std::wstring_view text) {
    crashreport::say("vexohost: " + hostkit::utf8FromWide(text) + "\n");
}

std::string RescuePort::nameOf(std::int64_t second) const {
    const auto time = static_cast<std::time_t>(second);
    std::tm local{};
    char name[64];
    localtime_r(&time, &local);
    std::strftime(name, sizeof name, "/Recovered%Y-%m-%d-%H%M%S.dwg", &local);
    return m_recoverDirectory + name;
}

std::int64_t RescuePort::now() const {
    constexpr int mostTried = 10000;
    const std::int64_t first = hostkit::HostPort::now();
    m_second = first;
    while (m_second < first + mostTried && access(nameOf(m_second).c_str(), F_OK) == 0) ++m_second;
    return m_second;
}

std::string RescuePort::recovered() const {
    std::string path = nameOf(m_second);
    return m_second != 0 && access(path.c_str(), F_OK) == 0 ? path : std::string();
}

void RescuePort::makePlace() const {
    if (!m_ownPlace.empty()) hostkit::makeDirectories(m_ownPlace);
}
