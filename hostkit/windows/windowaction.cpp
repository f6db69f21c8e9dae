#include "windowaction.h"

#include "desktop.h"

namespace hostkit {

WindowAction WindowAction::press(unsigned key, bool withShift) {
    WindowAction action;
    action.kind = Kind::key;
    action.key = key;
    action.withShift = withShift;
    return action;
}

WindowAction WindowAction::type(std::wstring text) {
    WindowAction action;
    action.kind = Kind::characters;
    action.text = std::move(text);
    return action;
}

WindowAction WindowAction::write(int control, std::wstring text) {
    WindowAction action = type(std::move(text));
    action.kind = Kind::setText;
    action.control = control;
    return action;
}

WindowAction WindowAction::click(int control) {
    WindowAction action;
    action.kind = Kind::clickControl;
    action.control = control;
    return action;
}

WindowAction WindowAction::clickAt(int x, int y) {
    WindowAction action;
    action.kind = Kind::clickPoint;
    action.point = {x, y};
    return action;
}

WindowAction WindowAction::choose(int control, int item) {
    WindowAction action = click(control);
    action.kind = Kind::clickItem;
    action.item = item;
    return action;
}

WindowAction WindowAction::at(HWND window) const {
    WindowAction action = *this;
    action.target = window;
    return action;
}

void Desktop::postKey(HWND window, const WindowAction& action) {
    const HWND target = topWindow(m_focus) == window ? m_focus : window;
    m_isShiftHeld = action.withShift;
    post(target, WM_KEYDOWN, action.key, 0);
    post(target, WM_KEYUP, action.key, 0);
    m_isShiftHeld = false;
}

// The innermost visible window under the point, which becomes relative to it.
HWND Desktop::hit(HWND window, POINT& inClient) {
    const WindowRecord* record = find(window);
    for (const HWND each : record->children) {
        const WindowRecord* child = find(each);
        if (!child || !(child->style & WS_VISIBLE) || !contains(child->place, inClient)) continue;
        const RECT frame = frameAround(child->style);
        inClient = {inClient.x - child->place.left - frame.left, inClient.y - child->place.top - frame.top};
        return hit(each, inClient);
    }
    return window;
}

// Its own controls first, then those of the windows within it that are seen.
HWND Desktop::findWithin(HWND window, int id) {
    if (const HWND own = GetDlgItem(window, id)) return own;
    for (const HWND each : find(window)->children)
        if (const HWND inner = find(each)->style & WS_VISIBLE ? findWithin(each, id) : nullptr) return inner;
    return nullptr;
}

bool Desktop::performOnControl(HWND window, const WindowAction& action, std::wstring& reason) {
    const HWND control =
        action.target && IsChild(window, action.target) ? action.target : findWithin(window, action.control);
    WindowRecord* record = find(control);
    const std::wstring name = L"control " + std::to_wstring(action.control);
    if (!record || !isVisible(control)) {
        reason = L"there is no " + name;
        return false;
    }
    if (!isEnabled(control)) {
        reason = name + L" is disabled";
        return false;
    }
    if (action.kind == WindowAction::Kind::clickControl) {
        const LPARAM middle = MAKELPARAM(widthOf(record->place) / 2, heightOf(record->place) / 2);
        post(control, WM_LBUTTONDOWN, 0, middle);
        post(control, WM_LBUTTONUP, 0, middle);
        return true;
    }
    setFocus(control);
    if (action.kind == WindowAction::Kind::setText) {
        send(control, EM_SETSEL, 0, -1);
        send(control, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(action.text.c_str()));
        return true;
    }
    if (record->behaviour && record->behaviour->choose(*record, action.item)) return true;
    reason = name + L" has no item " + std::to_wstring(action.item);
    return false;
}

bool Desktop::perform(HWND window, const WindowAction& action, std::wstring& reason) {
    const Working working(*this);
    if (!find(window)) {
        reason = L"there is no such window";
        return false;
    }
    switch (action.kind) {
    case WindowAction::Kind::refuse:
        return post(window, WM_CLOSE, 0, 0);
    case WindowAction::Kind::key:
        postKey(window, action);
        return true;
    case WindowAction::Kind::characters:
        for (const wchar_t character : action.text)
            post(topWindow(m_focus) == window ? m_focus : window, WM_CHAR, static_cast<WPARAM>(character), 0);
        return true;
    case WindowAction::Kind::clickPoint: {
        POINT at = action.point;
        const HWND target = hit(window, at);
        if (!isEnabled(target)) {
            reason = L"what stands there is disabled";
            return false;
        }
        post(target, WM_LBUTTONDOWN, 0, MAKELPARAM(at.x, at.y));
        return post(target, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    }
    default:
        return performOnControl(window, action, reason);
    }
}

} // namespace hostkit
