#include "textmarkup.h"

#include "markupreader.h"

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

} // namespace hostkit
