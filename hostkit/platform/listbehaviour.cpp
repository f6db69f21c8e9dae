#include "controlbehaviours.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr LONG markSize = 13;
constexpr LONG margin = 3;

std::wstring textAt(LPARAM text) { return text ? reinterpret_cast<const wchar_t*>(text) : L""; }

void paintMark(HDC dc, LONG top, LONG height, bool isMarked) {
    const LONG y = top + (height - markSize) / 2;
    const RECT box{margin, y, margin + markSize, y + markSize};
    FillRect(dc, &box, GetSysColorBrush(COLOR_WINDOW));
    FrameRect(dc, &box, GetSysColorBrush(COLOR_WINDOWFRAME));
    if (!isMarked) return;
    MoveToEx(dc, box.left + 3, box.top + 6, nullptr);
    LineTo(dc, box.left + 5, box.top + 9);
    LineTo(dc, box.left + 10, box.top + 3);
}

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

bool ListBehaviour::handleItems(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                                LRESULT& answer) {
    const auto index = static_cast<int>(static_cast<LPARAM>(wParam));
    ListItem* const item = m_list.at(index);
    switch (message) {
    case LB_ADDSTRING:
        answer = m_list.add(textAt(lParam), (window.style & LBS_SORT) != 0);
        return true;
    case LB_INSERTSTRING:
        answer = m_list.insert(index, textAt(lParam));
        return true;
    case LB_DELETESTRING:
        answer = m_list.remove(index);
        return true;
    case LB_RESETCONTENT:
        m_list.clear();
        m_top = 0;
        return true;
    case LB_SETCURSEL:
        answer = m_list.select(index);
        return true;
    case LB_SELECTSTRING:
        answer = m_list.find(index, textAt(lParam), false);
        if (answer >= 0) m_list.select(static_cast<int>(answer));
        return true;
    case LB_FINDSTRING:
    case LB_FINDSTRINGEXACT:
        answer = m_list.find(index, textAt(lParam), message == LB_FINDSTRINGEXACT);
        return true;
    case LB_GETTEXTLEN:
        answer = item ? static_cast<LRESULT>(item->text.size()) : LB_ERR;
        return true;
    case LB_GETTEXT:
        answer = item && lParam ? static_cast<LRESULT>(item->text.size()) : LB_ERR;
        if (answer >= 0) lstrcpyW(reinterpret_cast<wchar_t*>(lParam), item->text.c_str());
        return true;
    case LB_GETITEMDATA:
        answer = item ? item->data : LB_ERR;
        return true;
    case LB_SETITEMDATA:
        answer = item ? 0 : LB_ERR;
        if (item) item->data = lParam;
        return true;
    case listGetMark:
        answer = item && item->isMarked;
        return true;
    case listSetMark:
        if (item && m_hasMarks) item->isMarked = lParam != 0;
        return true;
    default:
        return false;
    }
}

bool ListBehaviour::handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                           LRESULT& answer) {
    answer = 0;
    switch (message) {
    case LB_GETCOUNT:
        answer = m_list.count();
        return true;
    case LB_GETCURSEL:
        answer = m_list.selected;
        return true;
    case listTakeMarks:
        m_hasMarks = true;
        return true;
    case WM_LBUTTONDOWN:
        press(window, lParam);
        return true;
    case WM_KEYDOWN:
        return pressKey(window, wParam);
    case WM_CHAR:
        return wParam == L' ' && pressKey(window, VK_SPACE);
    default:
        return handleItems(window, message, wParam, lParam, answer);
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
        if (m_hasMarks) paintMark(dc, y, row, item.isMarked);
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
