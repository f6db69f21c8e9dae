#include "boxtext.h"

#include "consoletext.h"
#include "windows.h"

#include <algorithm>
#include <utility>

namespace {

using hostkit::ShownControl;
using hostkit::ShownWindow;
using Kind = ShownControl::Kind;

constexpr std::size_t widest = 72;
constexpr LONG sameRow = 8;
constexpr LONG pixelsOfColumn = 6;
constexpr LONG narrowestEdit = 8;
constexpr LONG widestEdit = 30;

// Broken at blanks; a longer word is cut.
void appendWrapped(std::vector<std::wstring>& lines, std::wstring_view text) {
    for (;;) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        std::wstring_view line = text.substr(0, end);
        while (columnsOf(line) > widest) {
            std::size_t fitting = std::min(line.size(), widest);
            while (fitting > 1 && columnsOf(line.substr(0, fitting)) > widest) --fitting;
            const std::size_t blank = line.rfind(L' ', fitting);
            const std::size_t cut = blank == std::wstring_view::npos || blank == 0 ? fitting : blank;
            lines.emplace_back(line.substr(0, cut));
            line.remove_prefix(std::min(line.size(), cut + (cut == blank ? 1 : 0)));
        }
        lines.emplace_back(line);
        if (end >= text.size()) return;
        text.remove_prefix(end + (text.substr(end, 2) == L"\r\n" ? 2 : 1));
    }
}

std::wstring marked(const ShownControl& control, const std::wstring& text) {
    const std::wstring state = control.isEnabled ? text : L"(" + text + L")";
    return control.hasFocus ? L">" + state + L"<" : state;
}

std::size_t columnsOfEdit(const ShownControl& control) {
    const LONG columns = hostkit::widthOf(control.bounds) / pixelsOfColumn;
    return static_cast<std::size_t>(std::clamp(columns, narrowestEdit, widestEdit));
}

std::wstring lineOf(const ShownControl& control) {
    const std::wstring mark = control.isChecked ? L"x" : L" ";
    switch (control.kind) {
    case Kind::button:
        return marked(control, L"[ " + control.text + L" ]");
    case Kind::check:
        return marked(control, L"[" + mark + L"] " + control.text);
    case Kind::radio:
        return marked(control, L"(" + mark + L") " + control.text);
    case Kind::edit:
        return marked(control, L"[" + padRight(control.text, columnsOfEdit(control)) + L"]");
    case Kind::combo:
        return marked(control, L"[" + control.text + (control.isDropped ? L" ^]" : L" v]"));
    default:
        return control.text;
    }
}

void appendItems(std::vector<std::wstring>& lines, const ShownControl& control) {
    int number = 0;
    for (const hostkit::ShownItem& item : control.items) {
        const bool isSelected = number++ == control.selected;
        std::wstring line = isSelected ? L"> " : L"  ";
        line += std::to_wstring(number) + L" ";
        if (control.kind == Kind::checkList) line += item.isChecked ? L"[x] " : L"[ ] ";
        appendWrapped(lines, line + item.text);
    }
}

bool isList(const ShownControl& control) {
    return control.kind == Kind::list || control.kind == Kind::checkList;
}

std::vector<const ShownControl*> fromTop(const ShownWindow& window) {
    std::vector<const ShownControl*> controls;
    for (const ShownControl& each : window.controls) controls.push_back(&each);
    const auto isAbove = [](const auto* a, const auto* b) { return a->bounds.top < b->bounds.top; };
    const auto isLeft = [](const auto* a, const auto* b) { return a->bounds.left < b->bounds.left; };
    std::stable_sort(controls.begin(), controls.end(), isAbove);
    for (auto row = controls.begin(); row != controls.end();) {
        const auto end = std::find_if(row, controls.end(), [top = (*row)->bounds.top](const auto* each) {
            return each->bounds.top - top > sameRow;
        });
        std::stable_sort(row, end, isLeft);
        row = end;
    }
    return controls;
}

std::vector<std::wstring> contentOf(const ShownWindow& window) {
    std::vector<std::wstring> lines;
    for (const std::wstring& line : window.lines) appendWrapped(lines, line);
    std::wstring row;
    LONG rowTop = 0;
    const auto endRow = [&] {
        if (!row.empty()) appendWrapped(lines, row);
        row.clear();
    };
    bool hasButtons = false;
    for (const ShownControl* control : fromTop(window)) {
        if (!row.empty() && std::abs(control->bounds.top - rowTop) > sameRow) endRow();
        if (control->kind == Kind::button && !std::exchange(hasButtons, true)) {
            endRow();
            if (!lines.empty()) lines.emplace_back();
        }
        if (isList(*control)) {
            endRow();
            appendItems(lines, *control);
            continue;
        }
        const std::wstring text = lineOf(*control);
        if (text.empty()) continue;
        if (row.empty()) rowTop = control->bounds.top;
        row += (row.empty() ? L"" : L"  ") + text;
        if (!control->isDropped) continue;
        endRow();
        appendItems(lines, *control);
    }
    endRow();
    return lines;
}

} // namespace

std::wstring boxAsText(const ShownWindow& window) {
    const std::vector<std::wstring> lines = contentOf(window);
    std::vector<std::wstring> captions;
    appendWrapped(captions, window.caption);
    const std::wstring& caption = captions.front();
    std::size_t width = columnsOf(caption) + 2;
    for (const std::wstring& line : lines) width = std::max(width, columnsOf(line));
    const std::wstring title = caption.empty() ? L"" : L" " + caption + L" ";
    std::wstring text = L"+-" + title + std::wstring(width - columnsOf(title) + 1, L'-') + L"+\n";
    for (const std::wstring& line : lines) text += L"| " + padRight(line, width) + L" |\n";
    return text + L"+" + std::wstring(width + 2, L'-') + L"+\n";
}

const ShownControl* refusingControl(const ShownWindow& window) {
    const ShownControl* lone = nullptr;
    int count = 0;
    for (const ShownControl& each : window.controls) {
        if (each.kind != Kind::button) continue;
        lone = &each;
        ++count;
    }
    for (const int id : {IDCANCEL, IDNO, IDABORT})
        for (const ShownControl& each : window.controls)
            if (each.kind == Kind::button && each.id == id) return &each;
    return count == 1 ? lone : nullptr;
}
