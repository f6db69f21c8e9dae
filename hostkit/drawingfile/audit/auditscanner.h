// Check of a drawing, its own walk of the lines: codes, values and line numbers; leaves out what the groups
// mean. Shares nothing with the reader, so that a mistake of one cannot hide one of the other.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace hostkit {

struct AuditGroup {
    int code = 0;
    std::uint32_t line = 0; ///< of the code, counted from 1
    std::string_view value; ///< without the line end
};

enum class AuditScan : unsigned char { kGroup, kEnd, kBadCode, kNoValue };

/// Splits the text of a drawing into groups; these refer to the text, which must outlive them.
class AuditScanner {
public:
    explicit AuditScanner(std::string_view bytes)
        : m_rest(bytes) {
        if (m_rest.starts_with("\xEF\xBB\xBF")) m_rest.remove_prefix(3);
        skipBlankLines();
    }

    /// With kBadCode and kNoValue the group holds the line of the code, and the line's text as its value.
    AuditScan next(AuditGroup& group) {
        const char* const place = m_rest.data();
        std::string_view code;
        if (!nextLine(code)) return AuditScan::kEnd;
        group.line = m_line;
        if (!parseCode(code, group.code)) {
            group.value = code;
            return isBlank({place, code.size() + m_rest.size()}) ? AuditScan::kEnd : AuditScan::kBadCode;
        }
        if (nextLine(group.value)) return AuditScan::kGroup;
        group.value = code;
        return AuditScan::kNoValue;
    }

private:
    // Some writers begin with them.
    void skipBlankLines() {
        const std::size_t first = m_rest.find_first_not_of(" \t\r\n");
        if (first == std::string_view::npos) return;
        const char* const group = m_rest.data() + first;
        for (std::string_view line;
             std::memchr(m_rest.data(), '\n', static_cast<std::size_t>(group - m_rest.data()));)
            (void)nextLine(line);
    }

    bool nextLine(std::string_view& line) {
        if (m_rest.empty()) return false;
        ++m_line;
        const void* const found = std::memchr(m_rest.data(), '\n', m_rest.size());
        const std::size_t end =
            found ? static_cast<std::size_t>(static_cast<const char*>(found) - m_rest.data()) : m_rest.size();
        line = m_rest.substr(0, end);
        m_rest.remove_prefix(found ? end + 1 : end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return true;
    }

    static bool parseCode(std::string_view text, int& code) {
        std::size_t at = 0;
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
        const bool isNegative = at < text.size() && text[at] == '-';
        at += isNegative;
        const std::size_t firstDigit = at;
        int number = 0;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && number < 100000; ++at)
            number = number * 10 + (text[at] - '0');
        const bool hasDigits = at > firstDigit;
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
        code = isNegative ? -number : number;
        return hasDigits && at == text.size();
    }

    // Only blanks, and the mark that old systems put at a file's end.
    static bool isBlank(std::string_view text) {
        return text.find_first_not_of(" \t\r\n\x1A") == std::string_view::npos;
    }

    std::string_view m_rest;
    std::uint32_t m_line = 0;
};

} // namespace hostkit
