#include "controlbehaviours.h"

#include <algorithm>

namespace hostkit {
namespace {
constexpr LONG margin = 3;

bool isMultiLine(const WindowRecord& window) { return (window.style & ES_MULTILINE) != 0; }
} // namespace

void EditBehaviour::select(const WindowRecord& window, LPARAM first, LPARAM last) {
    const auto length = static_cast<LPARAM>(window.text.size());
    if (last < 0) last = length;
    const LPARAM a = std::clamp<LPARAM>(first, 0, length), b = std::clamp<LPARAM>(last, 0, length);
    m_first = static_cast<std::size_t>(std::min(a, b));
    m_last = static_cast<std::size_t>(std::max(a, b));
}

void EditBehaviour::replaceSelection(WindowRecord& window, std::wstring_view text) {
    m_last = std::min(m_last, window.text.size());
    m_first = std::min(m_first, m_last);
    if (!isMultiLine(window)) text = text.substr(0, text.find_first_of(L"\r\n"));
    const std::size_t kept = window.text.size() - (m_last - m_first);
    text = text.substr(0, m_limit > kept ? m_limit - kept : 0);
    window.text.replace(m_first, m_last - m_first, text);
    m_first = m_last = m_first + text.size();
    Desktop::current().notifyParent(window, EN_CHANGE);
}

bool EditBehaviour::pressKey(WindowRecord& window, WPARAM key) {
    const bool isReadOnly = (window.style & ES_READONLY) != 0;
    const std::size_t length = window.text.size();
    m_last = std::min(m_last, length);
    m_first = std::min(m_first, m_last);
    switch (key) {
    case VK_HOME:
        m_first = m_last = 0;
        return true;
    case VK_END:
        m_first = m_last = length;
        return true;
    case VK_LEFT:
        m_first = m_last = m_last > 0 ? m_last - 1 : 0;
        return true;
    case VK_RIGHT:
        m_first = m_last = std::min(m_last + 1, length);
        return true;
    case VK_BACK:
    case VK_DELETE:
        if (isReadOnly) return true;
        if (m_first == m_last && key == VK_BACK && m_first > 0) --m_first;
        if (m_first == m_last && key == VK_DELETE && m_last < length) ++m_last;
        if (m_first != m_last) replaceSelection(window, L"");
        return true;
    default:
        return false;
    }
}

void EditBehaviour::typeCharacter(WindowRecord& window, wchar_t character) {
    if (window.style & ES_READONLY) return;
    if (character == L'\r') character = L'\n';
    const bool isText = character >= L' ' || (character == L'\n' && isMultiLine(window));
    if (isText) replaceSelection(window, std::wstring_view(&character, 1));
}

bool EditBehaviour::handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                           LRESULT& answer) {
    answer = 0;
    switch (message) {
    case EM_SETSEL:
        select(window, static_cast<LPARAM>(wParam), lParam);
        return true;
    case EM_GETSEL:
        answer =
            static_cast<LRESULT>(MAKEWPARAM(static_cast<unsigned>(m_first), static_cast<unsigned>(m_last)));
        return true;
    case EM_REPLACESEL:
        if (lParam && !(window.style & ES_READONLY))
            replaceSelection(window, reinterpret_cast<const wchar_t*>(lParam));
        return true;
    case EM_LIMITTEXT:
        m_limit = wParam ? wParam : 30000;
        return true;
    case WM_SETTEXT:
        window.text = lParam ? reinterpret_cast<const wchar_t*>(lParam) : L"";
        m_first = m_last = 0;
        Desktop::current().notifyParent(window, EN_CHANGE);
        answer = TRUE;
        return true;
    case WM_LBUTTONDOWN:
        SetFocus(window.handle);
        return true;
    case WM_SETFOCUS:
        select(window, 0, -1);
        Desktop::current().notifyParent(window, EN_SETFOCUS);
        return true;
    case WM_KILLFOCUS:
        Desktop::current().notifyParent(window, EN_KILLFOCUS);
        return true;
    case WM_KEYDOWN:
        return pressKey(window, wParam);
    case WM_CHAR:
        typeCharacter(window, static_cast<wchar_t>(wParam));
        return true;
    default:
        return false;
    }
}

// A single line shows what is around its caret: the end of a text that is too long, when it was just typed.
void EditBehaviour::paint(const WindowRecord& window, HDC dc) const {
    RECT client = clientRectOf(window);
    RECT room{margin, 0, std::max(margin, client.right - margin), client.bottom};
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(dc->isDisabled ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT));
    if (isMultiLine(window)) {
        room.top = 2;
        DrawTextW(dc, window.text.c_str(), -1, &room, DT_NOPREFIX | DT_WORDBREAK);
        return;
    }
    const FontFace& face = faceOfWindow(window);
    const int width = static_cast<int>(widthOf(room));
    std::wstring_view shown = window.text;
    const std::size_t caret = std::min(m_last, shown.size());
    std::size_t first = caret;
    while (first > 0 && textWidth(face, shown.substr(first - 1, caret - first + 1)) <= width) --first;
    shown.remove_prefix(first);
    shown = shown.substr(0, fittingLength(face, shown, width));
    DrawTextW(dc, std::wstring(shown).c_str(), -1, &room, DT_NOPREFIX | DT_SINGLELINE | DT_VCENTER);
}

void EditBehaviour::describe(const WindowRecord& window, ShownControl& control) const {
    control.kind = ShownControl::Kind::edit;
    control.text = window.text;
    control.mnemonic = 0;
}

} // namespace hostkit
