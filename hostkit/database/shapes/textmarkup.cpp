#include "textmarkup.h"

#include <algorithm>
#include <cwctype>

namespace hostkit {

namespace {

constexpr wchar_t kDiameter = L'\u2300';
constexpr wchar_t kDegree = L'\u00B0';
constexpr wchar_t kPlusMinus = L'\u00B1';
constexpr wchar_t kFixedBlank = L'\u00A0';
constexpr std::size_t kNumberLength = 3;      // %%nnn
constexpr std::size_t kHexadecimalLength = 4; // \U+hhhh

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

int hexadecimalDigit(wchar_t character) {
    if (isDigit(character)) return character - L'0';
    if (character >= L'a' && character <= L'f') return character - L'a' + 10;
    if (character >= L'A' && character <= L'F') return character - L'A' + 10;
    return -1;
}

std::size_t takeNumber(std::wstring_view text, std::wstring& seen) {
    unsigned number = 0;
    std::size_t length = 2;
    for (; length < 2 + kNumberLength && length < text.size() && isDigit(text[length]); ++length)
        number = number * 10 + static_cast<unsigned>(text[length] - L'0');
    if (number >= L' ') seen += static_cast<wchar_t>(number);
    return length;
}

/// How much of the text a code at its start took; 0 for no code.
std::size_t takePercentCode(std::wstring_view text, std::wstring& seen) {
    if (text.size() < 3 || text[0] != L'%' || text[1] != L'%') return 0;
    if (isDigit(text[2])) return takeNumber(text, seen);
    switch (text[2]) {
    case L'c':
    case L'C':
        seen += kDiameter;
        return 3;
    case L'd':
    case L'D':
        seen += kDegree;
        return 3;
    case L'p':
    case L'P':
        seen += kPlusMinus;
        return 3;
    case L'%':
        seen += L'%';
        return 3;
    default:
        return std::wstring_view(L"uUoOkK").find(text[2]) == std::wstring_view::npos ? 0 : 3;
    }
}

std::size_t takeNumberedCharacter(std::wstring_view text, std::wstring& seen) {
    constexpr std::size_t length = 3 + kHexadecimalLength;
    if (text.size() < length || text[0] != L'\\' || (text[1] != L'U' && text[1] != L'u') || text[2] != L'+')
        return 0;
    int number = 0;
    for (std::size_t i = 3; i < length; ++i) {
        const int digit = hexadecimalDigit(text[i]);
        if (digit < 0) return 0;
        number = number * 16 + digit;
    }
    seen += static_cast<wchar_t>(number);
    return length;
}

std::size_t takeCharacterCode(std::wstring_view text, std::wstring& seen) {
    const std::size_t length = takePercentCode(text, seen);
    return length > 0 ? length : takeNumberedCharacter(text, seen);
}

class ContentsReader {
public:
    explicit ContentsReader(std::wstring_view contents)
        : m_text(contents)
        , m_lines(1) {}

    std::vector<std::wstring> read() {
        while (m_position < m_text.size()) {
            const std::size_t length = takeCharacterCode(m_text.substr(m_position), m_lines.back());
            m_position += length;
            if (length == 0) readCharacter(m_text[m_position++]);
        }
        return std::move(m_lines);
    }

private:
    void readCharacter(wchar_t character) {
        const bool hasNext = m_position < m_text.size();
        if (character == L'\\' && hasNext) return readCode(m_text[m_position++]);
        if (character == L'^' && hasNext) return readCaret(m_text[m_position++]);
        if (character == L'{' || character == L'}') return;
        if (character == L'\n') return endLine();
        if (character >= L' ' || character == L'\t') m_lines.back() += character;
    }

    void readCode(wchar_t code) {
        const auto isOneOf = [code](std::wstring_view codes) { return codes.find(code) != codes.npos; };
        if (isOneOf(L"PNX")) return endLine();
        if (isOneOf(L"LlOoKk")) return;
        if (isOneOf(L"HCcfFpAWQT")) return passArgument();
        if (code == L'S') return readStack();
        if (code == L'~') {
            m_lines.back() += kFixedBlank;
            return;
        }
        if (!isOneOf(L"\\{}")) m_lines.back() += L'\\';
        m_lines.back() += code;
    }

    void readCaret(wchar_t code) {
        std::wstring& line = m_lines.back();
        if (code == L'J') return endLine();
        if (code == L'I')
            line += L'\t';
        else if (code == L' ')
            line += L'^';
        else if (code != L'M')
            (line += L'^') += code;
    }

    void readStack() {
        std::wstring& line = m_lines.back();
        if (!line.empty() && isDigit(line.back()) && m_position < m_text.size() &&
            isDigit(m_text[m_position]))
            line += L' ';
        for (; m_position < m_text.size() && m_text[m_position] != L';'; ++m_position) {
            wchar_t character = m_text[m_position];
            if (character == L'\\' && m_position + 1 < m_text.size())
                line += m_text[++m_position];
            else
                line += character == L'#' ? L'/' : character == L'^' ? L' ' : character;
        }
        ++m_position;
    }

    /// Up to the closing semicolon, or the rest where there is none.
    void passArgument() { m_position = std::min(m_text.find(L';', m_position), m_text.size() - 1) + 1; }

    void endLine() { m_lines.emplace_back(); }

    std::wstring_view m_text;
    std::vector<std::wstring> m_lines;
    std::size_t m_position = 0;
};

} // namespace

std::wstring visibleText(std::wstring_view text) {
    std::wstring seen;
    seen.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = takeCharacterCode(text, seen);
        if (length == 0) seen += text.front();
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return seen;
}

std::vector<std::wstring> visibleLines(std::wstring_view contents) { return ContentsReader(contents).read(); }

std::vector<std::wstring> brokenAtBlanks(const std::wstring& line, std::size_t longest) {
    if (longest == 0 || line.size() <= longest) return {line};
    std::vector<std::wstring> lines;
    std::size_t start = 0;
    while (line.size() - start > longest) {
        // The last blank that leaves the line short enough, or the first one behind a word that is too long.
        std::size_t blank = line.rfind(L' ', start + longest);
        if (blank == line.npos || blank <= start) blank = line.find(L' ', start + longest);
        if (blank == line.npos) break;
        lines.push_back(line.substr(start, blank - start));
        start = std::min(line.find_first_not_of(L' ', blank), line.size());
    }
    if (start < line.size()) lines.push_back(line.substr(start));
    return lines;
}

} // namespace hostkit
