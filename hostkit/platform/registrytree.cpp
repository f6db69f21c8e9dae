#include "registrytree.h"

namespace hostkit {

std::wstring_view nameOfHive(RegistryHive hive) {
    static constexpr std::wstring_view names[registryHiveCount] = {L"HKEY_CLASSES_ROOT", L"HKEY_CURRENT_USER",
                                                                   L"HKEY_LOCAL_MACHINE", L"HKEY_USERS"};
    return names[static_cast<int>(hive)];
}

std::vector<std::wstring_view> partsOfKeyPath(std::wstring_view path) {
    std::vector<std::wstring_view> parts;
    while (!path.empty()) {
        const std::size_t end = path.find(L'\\');
        if (end != 0) parts.push_back(path.substr(0, end));
        if (end == std::wstring_view::npos) break;
        path.remove_prefix(end + 1);
    }
    return parts;
}

RegistryTree::RegistryTree() {
    for (auto& hive : m_hives) hive = std::make_unique<RegistryKey>();
}

bool RegistryTree::isKeyName(std::wstring_view name) {
    if (name.empty() || name.size() > maximumKeyName) return false;
    for (const wchar_t character : name) {
        const char32_t code = static_cast<char32_t>(character);
        if (code < 0x20 || code == 0x7F || code == U'\\') return false;
        if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return false;
    }
    return true;
}

const RegistryKey* RegistryTree::find(RegistryHive hive, std::wstring_view path) const {
    const RegistryKey* key = m_hives[static_cast<int>(hive)].get();
    for (const std::wstring_view part : partsOfKeyPath(path)) {
        const auto below = key->keys.find(part);
        if (below == key->keys.end()) return nullptr;
        key = below->second.get();
    }
    return key;
}

RegistryKey* RegistryTree::find(RegistryHive hive, std::wstring_view path) {
    return const_cast<RegistryKey*>(static_cast<const RegistryTree*>(this)->find(hive, path));
}

RegistryKey* RegistryTree::make(RegistryHive hive, std::wstring_view path) {
    const std::vector<std::wstring_view> parts = partsOfKeyPath(path);
    if (parts.size() > maximumDepth) return nullptr;
    for (const std::wstring_view part : parts)
        if (!isKeyName(part)) return nullptr;
    RegistryKey* key = m_hives[static_cast<int>(hive)].get();
    for (const std::wstring_view part : parts) {
        auto below = key->keys.find(part);
        if (below == key->keys.end())
            below = key->keys.emplace(std::wstring(part), std::make_unique<RegistryKey>()).first;
        key = below->second.get();
    }
    return key;
}

bool RegistryTree::remove(RegistryHive hive, std::wstring_view path) {
    const std::vector<std::wstring_view> parts = partsOfKeyPath(path);
    if (parts.empty()) return false;
    RegistryKey* parent = m_hives[static_cast<int>(hive)].get();
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        const auto below = parent->keys.find(parts[i]);
        if (below == parent->keys.end()) return false;
        parent = below->second.get();
    }
    const auto key = parent->keys.find(parts.back());
    if (key == parent->keys.end() || !key->second->keys.empty()) return false;
    parent->keys.erase(key);
    return true;
}

} // namespace hostkit
