#include "desktop.h"

#include "casefold.h"
#include "cwnd.h"
#include "hostport.h"

#include <algorithm>
#include <atomic>

namespace hostkit {
namespace {

std::atomic<std::uintptr_t> lastHandle{0x10000};

constexpr int hitClient = 1;

bool isMouse(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_MOUSEMOVE;
}

} // namespace

WindowRecord::WindowRecord() = default;
WindowRecord::~WindowRecord() = default;

Desktop::Desktop() {
    m_classes[L"BUTTON"] = {};
    m_classes[L"STATIC"] = {};
    m_classes[L"EDIT"] = {nullptr, nullptr, GetSysColorBrush(COLOR_WINDOW)};
    m_classes[L"LISTBOX"] = {nullptr, nullptr, GetSysColorBrush(COLOR_WINDOW)};
    m_classes[L"COMBOBOX"] = {nullptr, nullptr, GetSysColorBrush(COLOR_WINDOW)};
    const HCURSOR arrow = LoadCursorW(nullptr, MAKEINTRESOURCEW(IDC_ARROW));
    m_classes[L"#32770"] = {nullptr, arrow, GetSysColorBrush(COLOR_BTNFACE)};
    m_classes[L"HOSTFRAME"] = {nullptr, arrow, nullptr};
    m_cursor = arrow;
}

// Objects may outlive their windows; they learn that these are gone.
Desktop::~Desktop() {
    for (auto& [handle, record] : m_windows)
        if (record->object) record->object->windowGone();
}

Desktop& Desktop::current() { return of(*currentPort()); }
Desktop& Desktop::of(HostPort& port) { return port.kept<Desktop>(); }

WindowRecord* Desktop::find(HWND window) {
    const auto found = m_windows.find(window);
    return found == m_windows.end() ? nullptr : found->second.get();
}

HWND Desktop::mainWindow() {
    if (find(m_main)) return m_main;
    auto record = std::make_unique<WindowRecord>();
    record->className = L"HOSTFRAME";
    record->style = WS_POPUP | WS_VISIBLE;
    record->place = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    m_main = create(std::move(record), nullptr);
    return m_main;
}

bool Desktop::registerClass(const std::wstring& name, const WindowClass& windowClass) {
    if (name.empty()) return false;
    m_classes.emplace(upperCase(name), windowClass);
    return true;
}

HWND Desktop::create(std::unique_ptr<WindowRecord> record, CWnd* object) {
    record->className = upperCase(record->className);
    const auto windowClass = m_classes.find(record->className);
    if (windowClass == m_classes.end()) return nullptr;
    const bool isChild = (record->style & WS_CHILD) != 0;
    WindowRecord* parent = find(record->parent);
    if (isChild && !parent) return nullptr;
    if (!isChild) {
        record->owner = parent ? topWindow(record->parent) : nullptr;
        record->parent = nullptr;
    }
    record->windowClass = windowClass->second;
    record->icon = record->windowClass.icon;
    record->behaviour = makeControlBehaviour(record->className);
    record->object = object;
    const HWND handle = reinterpret_cast<HWND>(lastHandle += 2);
    record->handle = handle;
    if (isChild) parent->children.push_back(handle);
    m_gone.reserve(m_gone.size() + m_windows.size() + 1); // windows go without asking for memory
    m_windows[handle] = std::move(record);
    if (object) object->windowMade(handle);
    if (send(handle, WM_CREATE, 0, 0) == -1) {
        destroy(handle);
        return nullptr;
    }
    return find(handle) ? handle : nullptr;
}

bool Desktop::destroy(HWND window) {
    if (!find(window)) return false;
    std::vector<HWND> owned;
    for (const auto& [handle, record] : m_windows)
        if (record->owner == window) owned.push_back(handle);
    for (const HWND each : owned) destroy(each);
    send(window, WM_DESTROY, 0, 0);
    if (const WindowRecord* record = find(window)) {
        const std::vector<HWND> children = record->children;
        for (const HWND each : children) destroy(each);
    }
    if (!find(window)) return true;
    send(window, WM_NCDESTROY, 0, 0);
    forget(window);
    return true;
}

void Desktop::forget(HWND window) {
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return;
    m_gone.push_back(std::move(found->second));
    WindowRecord* const record = m_gone.back().get();
    m_windows.erase(found);
    if (WindowRecord* parent = find(record->parent)) std::erase(parent->children, window);
    std::erase_if(m_queue, [&](const Queued& each) { return each.message.hwnd == window; });
    if (m_focus == window) m_focus = nullptr;
    if (m_active == window) m_active = find(record->owner) ? record->owner : nullptr;
    if (record->object) record->object->windowGone();
    if (m_sending == 0) m_gone.clear();
}

void Desktop::notifyParent(const WindowRecord& control, unsigned code) {
    send(control.parent, WM_COMMAND, MAKEWPARAM(static_cast<unsigned>(control.id), code),
         reinterpret_cast<LPARAM>(control.handle));
}

LRESULT Desktop::send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WindowRecord* record = find(window);
    if (!record) return 0;
    const Working working(*this);
    return record->object ? record->object->receive(message, wParam, lParam)
                          : DefWindowProcW(window, message, wParam, lParam);
}

bool Desktop::post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!find(window)) return false;
    m_queue.push_back({{window, message, wParam, lParam}, m_isShiftHeld});
    return true;
}

bool Desktop::take(MSG& message) {
    if (m_queue.empty()) return false;
    message = m_queue.front().message;
    m_isShiftHeld = m_queue.front().isShiftHeld;
    m_queue.pop_front();
    return true;
}

void Desktop::dispatch(const MSG& message) {
    if (isMouse(message.message))
        send(message.hwnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(message.hwnd),
             MAKELPARAM(hitClient, static_cast<int>(message.message)));
    send(message.hwnd, message.message, message.wParam, message.lParam);
}

HWND Desktop::topWindow(HWND window) {
    const WindowRecord* record = find(window);
    while (record && record->parent) record = find(record->parent);
    return record ? record->handle : nullptr;
}

bool Desktop::isVisible(HWND window) {
    const WindowRecord* record = find(window);
    if (!record) return false;
    for (; record; record = find(record->parent))
        if (!(record->style & WS_VISIBLE)) return false;
    return true;
}

bool Desktop::isEnabled(HWND window) {
    const WindowRecord* record = find(window);
    if (!record) return false;
    for (; record; record = find(record->parent))
        if (record->style & WS_DISABLED) return false;
    return true;
}

HWND Desktop::setFocus(HWND window) {
    const HWND before = m_focus;
    if (window && !isEnabled(window)) return nullptr;
    if (window == before) return before;
    m_focus = window;
    if (window) m_active = topWindow(window);
    send(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    if (m_focus == window) send(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
    return before;
}

HWND Desktop::setActive(HWND window) {
    const HWND before = m_active;
    if (!find(window)) return nullptr;
    m_active = topWindow(window);
    if (topWindow(m_focus) != m_active) setFocus(isEnabled(m_active) ? m_active : nullptr);
    m_active = topWindow(window);
    return before;
}

HCURSOR Desktop::setCursor(HCURSOR cursor) { return std::exchange(m_cursor, cursor); }

RECT Desktop::onScreen(HWND window) {
    const WindowRecord* record = find(window);
    if (!record) return {};
    if (!record->parent) return record->place;
    const RECT around = clientOnScreen(record->parent);
    return moved(record->place, around.left, around.top);
}

RECT Desktop::clientOnScreen(HWND window) {
    const WindowRecord* record = find(window);
    if (!record) return {};
    const RECT place = onScreen(window);
    return clientOf(*record, {place.left, place.top});
}

HDC Desktop::makeContext(HWND window, bool isPaint) {
    auto context = std::make_unique<HostDeviceContext>();
    const WindowRecord* record = find(window);
    if (isPaint && m_painting && m_painting->window == window) {
        *context = *m_painting;
    } else {
        context->window = window;
        context->font = record ? record->font : nullptr;
    }
    m_contexts.push_back(std::move(context));
    return m_contexts.back().get();
}

bool Desktop::releaseContext(HDC context) {
    return std::erase_if(m_contexts, [&](const auto& each) { return each.get() == context; }) > 0;
}

void Desktop::forget(const HostGdiObject* object) {
    for (const auto& context : m_contexts) {
        if (context->font == object) context->font = nullptr;
        if (context->brush == object) context->brush = nullptr;
        if (context->pen == object) context->pen = nullptr;
    }
}

HWND createWindow(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style,
                  const RECT& place, HWND parent, int id, CWnd* object) {
    auto record = std::make_unique<WindowRecord>();
    record->className = className ? className : L"";
    record->text = text ? text : L"";
    record->style = style;
    record->exStyle = exStyle;
    record->id = id;
    record->place = {place.left, place.top, std::max(place.left, place.right),
                     std::max(place.top, place.bottom)};
    record->parent = parent;
    return Desktop::current().create(std::move(record), object);
}

RECT frameAround(DWORD style) {
    if ((style & WS_CAPTION) == WS_CAPTION) {
        const LONG x = GetSystemMetrics(SM_CXFIXEDFRAME), y = GetSystemMetrics(SM_CYFIXEDFRAME);
        return {x, y + GetSystemMetrics(SM_CYCAPTION), x, y};
    }
    if (!(style & WS_BORDER)) return {};
    const LONG x = GetSystemMetrics(SM_CXBORDER), y = GetSystemMetrics(SM_CYBORDER);
    return {x, y, x, y};
}

RECT clientOf(const WindowRecord& window, POINT corner) {
    const RECT frame = frameAround(window.style);
    const LONG left = corner.x + frame.left, top = corner.y + frame.top;
    return {left, top, std::max(left, corner.x + widthOf(window.place) - frame.right),
            std::max(top, corner.y + heightOf(window.place) - frame.bottom)};
}

std::wstring labelText(std::wstring_view text, wchar_t& mnemonic) {
    std::size_t marked = 0;
    std::wstring plain = withoutPrefixMarks(text, marked);
    mnemonic = marked < plain.size() ? foldCase(plain[marked]) : L'\0';
    return plain;
}

} // namespace hostkit
