#include "consoletext.h"

#include "textencoding.h"

#include <algorithm>
#include <charconv>

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// The blocks that terminals show two columns wide.
constexpr Range wideRanges[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},
                                {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6},
                                {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
// The blocks of marks that stand over the character before them.
constexpr Range combiningRanges[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};

template <std::size_t count>
bool isIn(const Range (&ranges)[count], wchar_t character) {
    const auto code = static_cast<char32_t>(character);
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [code](const Range& each) { return code >= each.first && code <= each.last; });
}

} // namespace

std::wstring wideFromArgument(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return hostkit::isValidUtf8(bytes) ? hostkit::wideFromUtf8(bytes) : hostkit::wideFromAnsi(bytes);
}

std::size_t columnsOf(std::wstring_view text) {
    std::size_t columns = 0;
    for (const wchar_t character : text) {
        if (isIn(combiningRanges, character)) continue;
        columns += isIn(wideRanges, character) ? 2 : 1;
    }
    return columns;
}

std::wstring padRight(std::wstring_view text, std::size_t columns) {
    const std::size_t used = columnsOf(text);
    return std::wstring(text) + std::wstring(used < columns ? columns - used : 0, L' ');
}

std::wstring padLeft(std::wstring_view text, std::size_t columns) {
    const std::size_t used = columnsOf(text);
    return std::wstring(used < columns ? columns - used : 0, L' ') + std::wstring(text);
}

std::wstring onOneLine(std::wstring text) {
    std::replace_if(
        text.begin(), text.end(), [](wchar_t character) { return character < L' '; }, L' ');
    return text;
}

std::wstring counted(std::size_t count, const std::wstring& one, const std::wstring& many) {
    return std::to_wstring(count) + L" " + (count == 1 ? one : many.empty() ? one + L"s" : many);
}

std::wstring shortened(std::wstring_view text, std::size_t columns) {
    constexpr std::wstring_view mark = L"...";
    if (columnsOf(text) <= columns) return std::wstring(text);
    std::size_t used = mark.size();
    std::size_t end = 0;
    while (end < text.size() && (used += columnsOf(text.substr(end, 1))) <= columns) ++end;
    return std::wstring(text.substr(0, end)) + std::wstring(mark.substr(0, columns));
}

namespace {

constexpr std::size_t gap = 2;

bool isRight(std::string_view alignment, std::size_t column) {
    return column < alignment.size() && alignment[column] == 'r';
}

// Left columns wider than a common bound get it, so that all fit.
void narrow(std::vector<std::size_t>& widths, std::string_view alignment, std::size_t most) {
    constexpr std::size_t least = 8;
    std::vector<std::size_t> texts;
    std::size_t taken = widths.empty() ? 0 : gap * (widths.size() - 1);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (isRight(alignment, i))
            taken += widths[i];
        else
            texts.push_back(widths[i]);
    }
    std::sort(texts.begin(), texts.end());
    std::size_t room = most > taken ? most - taken : 0;
    std::size_t bound = SIZE_MAX;
    for (std::size_t i = 0; i < texts.size() && bound == SIZE_MAX; ++i) {
        const std::size_t share = room / (texts.size() - i);
        if (texts[i] > share)
            bound = std::max(share, least);
        else
            room -= texts[i];
    }
    for (std::size_t i = 0; i < widths.size(); ++i)
        if (!isRight(alignment, i)) widths[i] = std::min(widths[i], bound);
}

} // namespace

std::wstring formatTable(const std::vector<std::vector<std::wstring>>& rows, std::string_view alignment,
                         std::size_t most) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columnsOf(row[i]));
    }
    if (most > 0) narrow(widths, alignment, most);
    std::wstring text;
    for (const auto& row : rows) {
        std::wstring line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::wstring cell = shortened(row[i], widths[i]);
            line += i ? std::wstring(gap, L' ') : L"";
            line += isRight(alignment, i) ? padLeft(cell, widths[i]) : padRight(cell, widths[i]);
        }
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L'\n';
        if (&row != &rows.front()) continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += (i ? L"  " : L"") + std::wstring(widths[i], L'-');
        text += L'\n';
    }
    return text;
}

std::wstring numberText(double value) {
    char shortest[32];
    const auto written = std::to_chars(shortest, shortest + sizeof shortest, value);
    char fixed[400];
    const auto plain = std::to_chars(fixed, fixed + sizeof fixed, value, std::chars_format::fixed);
    const std::string_view shortForm(shortest, static_cast<std::size_t>(written.ptr - shortest));
    const std::string_view plainForm(fixed, static_cast<std::size_t>(plain.ptr - fixed));
    const std::string_view chosen = plain.ec == std::errc() && plainForm.size() <= 20 ? plainForm : shortForm;
    return std::wstring(chosen.begin(), chosen.end());
}
