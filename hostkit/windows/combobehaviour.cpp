#include "controlbehaviours.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr LONG margin = 3;
constexpr LONG arrowWidth = 17;

bool isEditable(const WindowRecord& window) { return (window.style & CBS_DROPDOWNLIST) != CBS_DROPDOWNLIST; }

} // namespace

void ComboBehaviour::showItem(WindowRecord& window, LPARAM index) const {
    window.text = m_list.at(index) ? m_list.at(index)->text : L"";
}

void ComboBehaviour::setDropped(WindowRecord& window, bool isDropped) {
    if (m_isDropped == isDropped) return;
    m_isDropped = isDropped;
    if (isDropped) m_textBefore = window.text;
    Desktop::current().notifyParent(window, isDropped ? CBN_DROPDOWN : CBN_CLOSEUP);
}

// The order of notifications is the platform's: list opens, selection changes, list closes.
bool ComboBehaviour::choose(WindowRecord& window, int item) {
    const HWND handle = window.handle;
    if (!m_list.at(item)) return false;
    const std::wstring wanted = m_list.at(item)->text;
    setDropped(window, true);
    if (!IsWindow(handle)) return true;
    // The list may be another now that it is open.
    const ListItem* still = m_list.at(item);
    if (!still || still->text != wanted) item = m_list.find(-1, wanted, true);
    const bool isThere = m_list.at(item) != nullptr;
    if (isThere) {
        showItem(window, m_list.select(item));
        Desktop::current().notifyParent(window, CBN_SELENDOK);
        Desktop::current().notifyParent(window, CBN_SELCHANGE);
    }
    if (IsWindow(handle)) setDropped(window, false);
    return isThere;
}

// Escape leaves what was chosen before the list opened.
void ComboBehaviour::closeByKey(WindowRecord& window, bool isTaken) {
    const HWND handle = window.handle;
    if (!isTaken) {
        m_list.select(m_list.find(-1, m_textBefore, true));
        window.text = m_textBefore;
    }
    Desktop::current().notifyParent(window, isTaken ? CBN_SELENDOK : CBN_SELENDCANCEL);
    if (IsWindow(handle)) setDropped(window, false);
}

bool ComboBehaviour::pressKey(WindowRecord& window, WPARAM key) {
    if (key == VK_F4) {
        if (m_isDropped)
            closeByKey(window, true);
        else
            setDropped(window, true);
        return true;
    }
    if (m_isDropped && (key == VK_RETURN || key == VK_ESCAPE)) {
        closeByKey(window, key == VK_RETURN);
        return true;
    }
    if (key != VK_UP && key != VK_DOWN) return false;
    const int wanted =
        std::clamp(m_list.selected + (key == VK_DOWN ? 1 : -1), 0, std::max(m_list.count() - 1, 0));
    if (!m_list.at(wanted) || wanted == m_list.selected) return true;
    showItem(window, m_list.select(wanted));
    Desktop::current().notifyParent(window, CBN_SELCHANGE);
    return true;
}

// The text shows what is selected.
bool ComboBehaviour::handleItems(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                                 LRESULT& answer) {
    const bool isSorted = (window.style & CBS_SORT) != 0;
    if (!m_list.handle<comboMessages>(isSorted, message, wParam, lParam, answer)) return false;
    if (message == CB_SETCURSEL || (message == CB_SELECTSTRING && answer >= 0)) showItem(window, answer);
    const bool isSelectedGone = message == CB_DELETESTRING && m_list.selected < 0 && !isEditable(window);
    if (isSelectedGone || message == CB_RESETCONTENT) window.text.clear();
    return true;
}

bool ComboBehaviour::handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                            LRESULT& answer) {
    answer = 0;
    switch (message) {
    case CB_SHOWDROPDOWN:
        setDropped(window, wParam != 0);
        return true;
    case CB_GETDROPPEDSTATE:
        answer = m_isDropped;
        return true;
    case WM_KILLFOCUS:
        setDropped(window, false);
        return true;
    case EM_REPLACESEL:
        if (!isEditable(window)) return true;
        window.text = lParam ? reinterpret_cast<const wchar_t*>(lParam) : L"";
        m_list.select(-1);
        Desktop::current().notifyParent(window, CBN_EDITCHANGE);
        return true;
    case WM_LBUTTONDOWN:
        SetFocus(window.handle);
        setDropped(window, !m_isDropped);
        return true;
    case WM_KEYDOWN:
        return pressKey(window, wParam);
    case WM_CHAR:
        if (!isEditable(window) || wParam < L' ') return false;
        window.text += static_cast<wchar_t>(wParam);
        Desktop::current().notifyParent(window, CBN_EDITCHANGE);
        return true;
    default:
        return handleItems(window, message, wParam, lParam, answer);
    }
}

void ComboBehaviour::paint(const WindowRecord& window, HDC dc) const {
    const RECT client = clientRectOf(window);
    FrameRect(dc, &client, GetSysColorBrush(COLOR_WINDOWFRAME));
    const LONG middle = client.right - arrowWidth / 2, top = client.bottom / 2 - 2;
    MoveToEx(dc, middle - 4, top, nullptr);
    LineTo(dc, middle, top + 4);
    LineTo(dc, middle + 4, top);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(dc->isDisabled ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT));
    RECT room{margin, 0, std::max(margin, client.right - arrowWidth), client.bottom};
    DrawTextW(dc, window.text.c_str(), -1, &room, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

RECT ComboBehaviour::paintAbove(const WindowRecord& window, HDC dc) const {
    if (!m_isDropped) return {};
    const RECT client = clientRectOf(window);
    const LONG row = faceOfWindow(window).height();
    const RECT list{client.left, client.bottom, client.right,
                    client.bottom + row * std::max(m_list.count(), 1) + 2};
    FillRect(dc, &list, GetSysColorBrush(COLOR_WINDOW));
    FrameRect(dc, &list, GetSysColorBrush(COLOR_WINDOWFRAME));
    SetBkMode(dc, TRANSPARENT);
    LONG top = list.top + 1;
    for (int i = 0; i < m_list.count(); ++i, top += row) {
        const bool isSelected = i == m_list.selected;
        const RECT bar{list.left + 1, top, list.right - 1, top + row};
        if (isSelected) FillRect(dc, &bar, GetSysColorBrush(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        RECT room{bar.left + margin - 1, top, bar.right - margin, top + row};
        DrawTextW(dc, m_list.items[static_cast<std::size_t>(i)].text.c_str(), -1, &room,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    return list;
}

void ComboBehaviour::describe(const WindowRecord& window, ShownControl& control) const {
    control.kind = ShownControl::Kind::combo;
    control.text = window.text;
    control.mnemonic = 0;
    for (const ListItem& item : m_list.items) control.items.push_back({item.text});
    control.selected = m_list.selected;
    control.isDropped = m_isDropped;
}

std::unique_ptr<ControlBehaviour> makeControlBehaviour(const std::wstring& className) {
    if (className == L"BUTTON") return std::make_unique<ButtonBehaviour>();
    if (className == L"STATIC") return std::make_unique<StaticBehaviour>();
    if (className == L"EDIT") return std::make_unique<EditBehaviour>();
    if (className == L"LISTBOX") return std::make_unique<ListBehaviour>();
    if (className == L"COMBOBOX") return std::make_unique<ComboBehaviour>();
    return nullptr;
}

} // namespace hostkit
