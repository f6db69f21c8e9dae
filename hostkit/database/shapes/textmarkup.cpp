#include "textmarkup.h"

#include "markupreader.h"

#include <algorithm>

namespace hostkit {

namespace {

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

void addStack(std::wstring& line, std::wstring_view stack) {
    if (!line.empty() && isDigit(line.back()) && !stack.empty() && isDigit(stack.front())) line += L' ';
    while (!stack.empty()) {
        const auto [character, isDivider] = takeStackCharacter(stack);
        line += !isDivider ? character : character == L'^' ? L' ' : L'/';
    }
}

} // namespace

std::wstring visibleText(std::wstring_view text) {
    std::wstring seen;
    seen.reserve(text.size());
    MarkupReader reader(text, MarkupReader::Extent::line);
    while (const auto piece = reader.next()) seen += piece->text;
    return seen;
}

std::vector<std::wstring> visibleLines(std::wstring_view contents) {
    std::vector<std::wstring> lines(1);
    MarkupReader reader(contents, MarkupReader::Extent::paragraphs);
    while (const auto piece = reader.next()) {
        if (piece->kind == MarkupPiece::Kind::letters) lines.back() += piece->text;
        if (piece->kind == MarkupPiece::Kind::lineEnd) lines.emplace_back();
        if (piece->kind == MarkupPiece::Kind::stack) addStack(lines.back(), piece->text);
    }
    return lines;
}

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
