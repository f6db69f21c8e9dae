// Check of a drawing, its names: comparing names however they are spelled; leaves out what names mean.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// Gives names that differ only in case, or in how a letter is written (bytes, `\U+XXXX`), one number.
class AuditNames {
public:
    using Id = std::uint32_t;
    static constexpr Id none = 0xFFFFFFFF;

    /// The bytes must outlive this.
    Id idOf(std::string_view bytes);
    /// As the name was met first.
    std::string_view spelling(Id id) const { return m_spellings[id]; }
    /// The characters of a name: UTF-8 where it is that, else Windows-1252; escapes are resolved.
    static std::wstring charactersOf(std::string_view bytes);

private:
    std::unordered_map<std::string_view, Id> m_bySpelling;
    std::unordered_map<std::wstring, Id> m_byCharacters;
    std::vector<std::string_view> m_spellings;
};

} // namespace hostkit
