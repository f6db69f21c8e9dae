#include "controlbehaviours.h"

namespace hostkit {
namespace {

constexpr LONG gap = 5;

DWORD typeOf(const WindowRecord& window) { return window.style & BS_TYPEMASK; }
bool isCheck(DWORD type) { return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX; }
bool isPush(DWORD type) { return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON; }

} // namespace

void paintMark(HDC dc, POINT corner, bool isChecked, bool isRadio) {
    const RECT box{corner.x, corner.y, corner.x + markSize, corner.y + markSize};
    FillRect(dc, &box, GetSysColorBrush(COLOR_WINDOW));
    FrameRect(dc, &box, GetSysColorBrush(COLOR_WINDOWFRAME));
    if (!isChecked) return;
    if (isRadio) {
        const RECT inner = shrunk(box, 4);
        FillRect(dc, &inner, GetSysColorBrush(COLOR_WINDOWTEXT));
        return;
    }
    MoveToEx(dc, box.left + 3, box.top + 6, nullptr);
    LineTo(dc, box.left + 5, box.top + 9);
    LineTo(dc, box.left + 10, box.top + 3);
}

const FontFace& faceOfWindow(const WindowRecord& window) {
    return window.font ? window.font->face : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT))->face;
}

RECT clientRectOf(const WindowRecord& window) {
    const RECT client = clientOf(window, {});
    return {0, 0, widthOf(client), heightOf(client)};
}

void ButtonBehaviour::press(WindowRecord& window) {
    const DWORD type = typeOf(window);
    if (type == BS_GROUPBOX) return;
    if (type == BS_AUTOCHECKBOX) m_isChecked = !m_isChecked;
    if (type == BS_AUTORADIOBUTTON) {
        // The other radio buttons of the same parent go out.
        if (const WindowRecord* parent = Desktop::current().find(window.parent))
            for (const HWND each : parent->children)
                if ((GetWindowLongW(each, GWL_STYLE) & BS_TYPEMASK) == BS_AUTORADIOBUTTON &&
                    Desktop::current().find(each)->className == L"BUTTON")
                    SendMessageW(each, BM_SETCHECK, BST_UNCHECKED, 0);
        m_isChecked = true;
    }
    Desktop::current().notifyParent(window, BN_CLICKED);
}

bool ButtonBehaviour::handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM, LRESULT& answer) {
    answer = 0;
    switch (message) {
    case BM_GETCHECK:
        answer = m_isChecked;
        return true;
    case BM_SETCHECK:
        m_isChecked = wParam == BST_CHECKED;
        return true;
    case WM_LBUTTONDOWN:
        if (typeOf(window) != BS_GROUPBOX) SetFocus(window.handle);
        return true;
    case BM_CLICK:
    case WM_LBUTTONUP:
        press(window);
        return true;
    case WM_KEYDOWN:
        if (wParam != VK_SPACE) return false;
        press(window);
        return true;
    case WM_CHAR:
        if (wParam != L' ') return false;
        press(window);
        return true;
    default:
        return false;
    }
}

void ButtonBehaviour::paint(const WindowRecord& window, HDC dc) const {
    const DWORD type = typeOf(window);
    RECT client = clientRectOf(window);
    const bool hasFocus = GetFocus() == window.handle;
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(dc->isDisabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    if (type == BS_GROUPBOX) {
        const LONG middle = faceOfWindow(window).height() / 2;
        const RECT frame{0, middle, client.right, client.bottom};
        FrameRect(dc, &frame, GetSysColorBrush(COLOR_BTNSHADOW));
        RECT title{8, 0, client.right - 8, 2 * middle + 1};
        SetBkMode(dc, OPAQUE);
        SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
        DrawTextW(dc, window.text.c_str(), -1, &title, DT_SINGLELINE | DT_END_ELLIPSIS);
        return;
    }
    if (isPush(type)) {
        FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
        FrameRect(dc, &client, GetSysColorBrush(COLOR_WINDOWFRAME));
        RECT inner = shrunk(client, 1);
        if (type == BS_DEFPUSHBUTTON) FrameRect(dc, &inner, GetSysColorBrush(COLOR_WINDOWFRAME));
        RECT focus = shrunk(client, 3);
        if (hasFocus) DrawFocusRect(dc, &focus);
        DrawTextW(dc, window.text.c_str(), -1, &client, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
        return;
    }
    paintMark(dc, {0, (client.bottom - markSize) / 2}, m_isChecked, type == BS_AUTORADIOBUTTON);
    RECT label{markSize + gap, 0, client.right, client.bottom};
    DrawTextW(dc, window.text.c_str(), -1, &label, DT_SINGLELINE | DT_VCENTER);
    if (hasFocus) DrawFocusRect(dc, &label);
}

void ButtonBehaviour::describe(const WindowRecord& window, ShownControl& control) const {
    const DWORD type = typeOf(window);
    control.kind = type == BS_GROUPBOX ? ShownControl::Kind::label
                   : isCheck(type)     ? ShownControl::Kind::check
                   : isPush(type)      ? ShownControl::Kind::button
                                       : ShownControl::Kind::radio;
    control.isDefault = type == BS_DEFPUSHBUTTON;
    control.isChecked = m_isChecked;
}

// --- Labels ------------------------------------------------------------------------------------------------

bool StaticBehaviour::handle(WindowRecord&, UINT message, WPARAM wParam, LPARAM, LRESULT& answer) {
    if (message != STM_SETICON && message != STM_GETICON) return false;
    answer = reinterpret_cast<LRESULT>(m_icon);
    if (message == STM_SETICON) m_icon = reinterpret_cast<HICON>(wParam);
    return true;
}

void StaticBehaviour::paint(const WindowRecord& window, HDC dc) const {
    const DWORD type = window.style & SS_TYPEMASK;
    if (type == SS_ICON) {
        DrawIconEx(dc, 0, 0, m_icon, 0, 0);
        return;
    }
    RECT client = clientRectOf(window);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(dc->isDisabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    const UINT side = type == SS_CENTER ? DT_CENTER : type == SS_RIGHT ? DT_RIGHT : DT_LEFT;
    DrawTextW(dc, window.text.c_str(), -1, &client,
              side | DT_WORDBREAK | (window.style & SS_NOPREFIX ? DT_NOPREFIX : 0u));
}

void StaticBehaviour::describe(const WindowRecord& window, ShownControl& control) const {
    control.kind = ShownControl::Kind::label;
    if (window.style & SS_NOPREFIX) control.text = window.text;
    if ((window.style & SS_TYPEMASK) == SS_ICON) control.text.clear();
}

} // namespace hostkit
