#include "auditnames.h"

#include "casefold.h"
#include "textencoding.h"

#include <charconv>

namespace hostkit {

namespace {

// The four digits behind "\U+" at that place, or -1.
int escapeAt(std::wstring_view text, std::size_t at) {
    if (text.size() < at + 7 || (text[at + 1] != L'U' && text[at + 1] != L'u') || text[at + 2] != L'+')
        return -1;
    int number = 0;
    for (std::size_t digit = at + 3; digit < at + 7; ++digit) {
        const wchar_t each = text[digit];
        if (each >= L'0' && each <= L'9')
            number = number * 16 + (each - L'0');
        else if ((each | 32) >= L'a' && (each | 32) <= L'f')
            number = number * 16 + ((each | 32) - L'a' + 10);
        else
            return -1;
    }
    return number;
}

} // namespace

std::wstring AuditNames::charactersOf(std::string_view bytes) {
    std::wstring text = isValidUtf8(bytes) ? wideFromUtf8(bytes) : wideFromAnsi(bytes);
    for (std::size_t at = text.find(L'\\'); at != std::wstring::npos; at = text.find(L'\\', at + 1))
        if (const int number = escapeAt(text, at); number > 0)
            text.replace(at, 7, 1, static_cast<wchar_t>(number));
    return text;
}

AuditNames::Id AuditNames::idOf(std::string_view bytes) {
    const auto [place, isNew] = m_bySpelling.try_emplace(bytes, none);
    if (!isNew) return place->second;
    const auto [known, isNewName] =
        m_byCharacters.try_emplace(foldCase(charactersOf(bytes)), static_cast<Id>(m_spellings.size()));
    if (isNewName) m_spellings.push_back(bytes);
    return place->second = known->second;
}

} // namespace hostkit
