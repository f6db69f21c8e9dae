#include "controlbehaviours.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr LONG margin = 3;

} // namespace

int ListBehaviour::rowHeight(const WindowRecord& window) const {
    return faceOfWindow(window).height() + (m_hasMarks ? 3 : 0);
}

void ListBehaviour::selectByUser(WindowRecord& window, int index) {
    if (m_list.selected == index) return;
    m_list.select(index);
    const int rows = std::max(1, static_cast<int>(heightOf(clientRectOf(window))) / rowHeight(window));
    m_top = std::clamp(m_top, std::max(0, index - rows + 1), index);
    if (window.style & LBS_NOTIFY) Desktop::current().notifyParent(window, LBN_SELCHANGE);
}

void ListBehaviour::changeMark(WindowRecord& window, int index) {
    ListItem* item = m_list.at(index);
    if (!m_hasMarks || !item) return;
    item->isMarked = !item->isMarked;
    Desktop::current().notifyParent(window, CLBN_CHKCHANGE);
}

// A click in the mark changes it; elsewhere in a row it selects.
void ListBehaviour::press(WindowRecord& window, LPARAM place) {
    SetFocus(window.handle);
    const auto x = static_cast<std::int16_t>(LOWORD(static_cast<std::uintptr_t>(place)));
    const auto y = static_cast<std::int16_t>(HIWORD(static_cast<std::uintptr_t>(place)));
    const int index = m_top + std::max<int>(y, 0) / rowHeight(window);
    if (!m_list.at(index)) return;
    selectByUser(window, index);
    if (x < margin + markSize) changeMark(window, index);
}

bool ListBehaviour::pressKey(WindowRecord& window, WPARAM key) {
    const int last = m_list.count() - 1;
    int wanted = m_list.selected;
    switch (key) {
    case VK_UP:
        wanted = std::max(wanted - 1, 0);
        break;
    case VK_DOWN:
        wanted = std::min(wanted + 1, last);
        break;
    case VK_HOME:
        wanted = 0;
        break;
    case VK_END:
        wanted = last;
        break;
    case VK_SPACE:
        changeMark(window, m_list.selected);
        return true;
    default:
        return false;
    }
    if (m_list.at(wanted)) selectByUser(window, wanted);
    return true;
}

bool ListBehaviour::choose(WindowRecord& window, int item) {
    if (!m_list.at(item)) return false;
    selectByUser(window, item);
    changeMark(window, item);
    return true;
}

bool ListBehaviour::handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                           LRESULT& answer) {
    answer = 0;
    ListItem* const item = m_list.at(static_cast<LPARAM>(wParam));
    switch (message) {
    case listTakeMarks:
        m_hasMarks = true;
        return true;
    case listGetMark:
        answer = item && item->isMarked;
        return true;
    case listSetMark:
        if (item && m_hasMarks) item->isMarked = lParam != 0;
        return true;
    case WM_LBUTTONDOWN:
        press(window, lParam);
        return true;
    case WM_KEYDOWN:
        return pressKey(window, wParam);
    case WM_CHAR:
        return wParam == L' ' && pressKey(window, VK_SPACE);
    case LB_RESETCONTENT:
        m_top = 0;
        [[fallthrough]];
    default:
        return m_list.handle<listMessages>((window.style & LBS_SORT) != 0, message, wParam, lParam, answer);
    }
}

void ListBehaviour::paint(const WindowRecord& window, HDC dc) const {
    const RECT client = clientRectOf(window);
    const int row = rowHeight(window);
    SetBkMode(dc, TRANSPARENT);
    LONG y = 0;
    for (int i = m_top; i < m_list.count() && y + row <= client.bottom; ++i, y += row) {
        const ListItem& item = m_list.items[static_cast<std::size_t>(i)];
        RECT room{m_hasMarks ? margin + markSize + margin : margin, y, client.right - margin, y + row};
        const bool isSelected = i == m_list.selected;
        const RECT bar{room.left - (m_hasMarks ? 1 : margin), y, client.right, y + row};
        if (isSelected) FillRect(dc, &bar, GetSysColorBrush(COLOR_HIGHLIGHT));
        if (m_hasMarks) paintMark(dc, {margin, y + (row - markSize) / 2}, item.isMarked, false);
        SetTextColor(dc, GetSysColor(dc->isDisabled ? COLOR_GRAYTEXT
                                     : isSelected   ? COLOR_HIGHLIGHTTEXT
                                                    : COLOR_WINDOWTEXT));
        DrawTextW(dc, item.text.c_str(), -1, &room,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
}

void ListBehaviour::describe(const WindowRecord&, ShownControl& control) const {
    control.kind = m_hasMarks ? ShownControl::Kind::checkList : ShownControl::Kind::list;
    for (const ListItem& item : m_list.items) control.items.push_back({item.text, item.isMarked});
    control.selected = m_list.selected;
}

} // namespace hostkit
