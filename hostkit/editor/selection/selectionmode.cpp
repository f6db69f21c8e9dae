#include "selectionmode.h"

#include "casefold.h"

namespace hostkit {
namespace {

struct MethodWord {
    std::wstring_view word;
    SelectionMethod method;
};
constexpr MethodWord methodWords[] = {
    {L"", SelectionMethod::ask},
    {L"I", SelectionMethod::implied},
    {L"P", SelectionMethod::previous},
    {L"L", SelectionMethod::last},
    {L"X", SelectionMethod::wholeDrawing},
    {L"A", SelectionMethod::currentSpace},
    {L"W", SelectionMethod::window},
    {L"C", SelectionMethod::crossing},
    {L"B", SelectionMethod::box},
    {L"WP", SelectionMethod::windowPolygon},
    {L"CP", SelectionMethod::crossingPolygon},
    {L"F", SelectionMethod::fence},
    {L"G", SelectionMethod::group},
    {L".", SelectionMethod::point},
};

bool takeOption(wchar_t letter, SelectionMode& mode) {
    switch (foldCase(letter)) {
    case L's':
        return mode.isSingle = true;
    case L'$':
        return mode.hasPrompts = true;
    case L'k':
        return mode.hasKeywords = true;
    case L'n':
        return mode.isNested = true;
    case L'd':
        return mode.allowsRepeats = true;
    case L'e':
        return mode.takesAllMet = true;
    case L'l':
        return mode.skipsLocked = true;
    case L'p':
        return mode.skipsViewports = true;
    case L'u':
    case L'v':
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<SelectionMode> parseSelectionMode(std::wstring_view text) {
    SelectionMode mode;
    if (text.starts_with(L'_')) text.remove_prefix(1);
    const bool asks = text.starts_with(L'+');
    if (asks) text.remove_prefix(1);
    const std::size_t options = text.find(L':');
    const std::wstring_view word = text.substr(0, options);
    bool isKnown = false;
    for (const MethodWord& each : methodWords) {
        if (!equalFolded(each.word, word)) continue;
        mode.method = each.method;
        isKnown = true;
    }
    if (!isKnown) return std::nullopt;
    if (asks) {
        if (mode.method != SelectionMethod::point) return std::nullopt;
        mode.method = SelectionMethod::ask;
        mode.picksOnly = true;
    }
    for (std::size_t i = options; i < text.size(); i += 2)
        if (text[i] != L':' || i + 1 == text.size() || !takeOption(text[i + 1], mode)) return std::nullopt;
    return mode;
}

} // namespace hostkit
