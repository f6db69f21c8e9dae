// Registry hives: keys and typed values as data; leaves out handles and rights.
#pragma once

#include "casefold.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

enum class RegistryHive : unsigned char { classesRoot, currentUser, localMachine, users };
inline constexpr int registryHiveCount = 4;

/// "HKEY_CURRENT_USER" and its like.
std::wstring_view nameOfHive(RegistryHive hive);

struct RegistryValue {
    std::uint32_t type = 0;
    std::string bytes;

    bool operator==(const RegistryValue&) const = default;
};

/// One key: its values and its sub-keys, by name without regard to case, in the case they were made with.
struct RegistryKey {
    std::map<std::wstring, RegistryValue, FoldedLess> values;
    std::map<std::wstring, std::unique_ptr<RegistryKey>, FoldedLess> keys;
};

/// All hives. Paths are parts joined by '\'; empty parts count as absent, so the empty path is the hive
/// itself.
class RegistryTree {
public:
    RegistryTree();

    const RegistryKey* find(RegistryHive hive, std::wstring_view path) const;
    RegistryKey* find(RegistryHive hive, std::wstring_view path);
    /// Makes what is missing; null when a part is no name for a key or the path is deeper than maximumDepth.
    RegistryKey* make(RegistryHive hive, std::wstring_view path);
    /// Removes a key that has no sub-keys. False for a missing key, one with sub-keys, or the hive itself.
    bool remove(RegistryHive hive, std::wstring_view path);

    static constexpr std::size_t maximumDepth = 512;
    static constexpr std::size_t maximumKeyName = 255;
    static constexpr std::size_t maximumValueName = 16383;
    /// A part of a path that a key can have: 1 to 255 characters of Unicode, no control characters, no '\'.
    static bool isKeyName(std::wstring_view name);

private:
    std::unique_ptr<RegistryKey> m_hives[registryHiveCount];
};

/// The parts of a path, empty ones dropped.
std::vector<std::wstring_view> partsOfKeyPath(std::wstring_view path);

} // namespace hostkit
