// How a window is seen: its painting, and what a person can read off it.
#include "desktop.h"

#include <algorithm>
#include <utility>

namespace hostkit {
namespace {

constexpr LONG captionMargin = 4;
constexpr LONG closeMark = 8;

PaintedItem frameItem(PaintKind kind, const RECT& bounds, const RECT& clip, COLORREF color) {
    PaintedItem item;
    item.kind = kind;
    item.bounds = bounds;
    item.clip = clip;
    item.color = color;
    return item;
}

void paintCloseMark(const RECT& bar, Painting& painting) {
    const LONG right = bar.right - captionMargin, top = bar.top + (heightOf(bar) - closeMark) / 2;
    const RECT down{right - closeMark, top, right, top + closeMark};
    painting.items.push_back(frameItem(PaintKind::line, down, bar, GetSysColor(COLOR_CAPTIONTEXT)));
    painting.items.push_back(frameItem(PaintKind::line, {down.left, down.bottom, down.right, down.top}, bar,
                                       GetSysColor(COLOR_CAPTIONTEXT)));
}

void paintCaption(const WindowRecord& window, const RECT& bar, Painting& painting) {
    painting.items.push_back(frameItem(PaintKind::fill, bar, bar, GetSysColor(COLOR_ACTIVECAPTION)));
    HostDeviceContext context;
    context.painting = &painting;
    context.clip = bar;
    context.textColor = GetSysColor(COLOR_CAPTIONTEXT);
    context.backMode = TRANSPARENT;
    RECT room{bar.left + captionMargin, bar.top, bar.right - 2 * captionMargin, bar.bottom};
    if (window.icon) {
        const LONG size = std::min<LONG>(GetSystemMetrics(SM_CXSMICON), heightOf(bar));
        DrawIconEx(&context, room.left, room.top + (heightOf(bar) - size) / 2, window.icon, size, size);
        room.left += size + captionMargin;
    }
    if (window.style & WS_SYSMENU) {
        paintCloseMark(bar, painting);
        room.right -= closeMark + captionMargin;
    }
    DrawTextW(&context, window.text.c_str(), -1, &room,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void paintFrame(const WindowRecord& window, const RECT& place, const RECT& clip, Painting& painting) {
    const RECT frame = frameAround(window.style);
    if (isEmpty({0, 0, frame.left, frame.bottom})) return;
    if ((window.style & WS_CAPTION) == WS_CAPTION) {
        painting.items.push_back(frameItem(PaintKind::fill, place, clip, GetSysColor(COLOR_BTNFACE)));
        const LONG edge = frame.left;
        paintCaption(window, {place.left + edge, place.top + edge, place.right - edge, place.top + frame.top},
                     painting);
    }
    painting.items.push_back(frameItem(PaintKind::frame, place, clip, GetSysColor(COLOR_WINDOWFRAME)));
}

bool isAbove(const PaintedItem* a, const PaintedItem* b) {
    return a->bounds.top != b->bounds.top ? a->bounds.top < b->bounds.top : a->bounds.left < b->bounds.left;
}

std::vector<std::wstring> linesOf(const Painting& painting, HWND window) {
    std::vector<const PaintedItem*> texts;
    for (const PaintedItem& item : painting.items)
        if (item.kind == PaintKind::text && item.window == window) texts.push_back(&item);
    std::stable_sort(texts.begin(), texts.end(), isAbove);
    std::vector<std::wstring> lines;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const bool isSameLine = i > 0 && texts[i]->bounds.top == texts[i - 1]->bounds.top;
        if (isSameLine)
            lines.back() += L" " + texts[i]->text;
        else
            lines.push_back(texts[i]->text);
    }
    return lines;
}

} // namespace

void Desktop::paintWindow(HWND window, Painting& painting, POINT origin, const RECT& clip) {
    WindowRecord* record = find(window);
    if (!record) return;
    const RECT place{origin.x, origin.y, origin.x + widthOf(record->place),
                     origin.y + heightOf(record->place)};
    paintFrame(*record, place, common(place, clip), painting);
    const RECT client = clientOf(*record, origin);
    HostDeviceContext context;
    context.painting = &painting;
    context.window = window;
    context.origin = {client.left, client.top};
    context.clip = common(client, clip);
    context.font = record->font;
    context.isDisabled = !isEnabled(window);
    const HostDeviceContext* const before = std::exchange(m_painting, &context);
    send(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(&context), 0);
    send(window, WM_PAINT, 0, 0);
    m_painting = before;
    record = find(window);
    if (!record) return;
    const std::vector<HWND> children = record->children;
    for (const HWND each : children) {
        const WindowRecord* child = find(each);
        if (child && (child->style & WS_VISIBLE))
            paintWindow(each, painting, {client.left + child->place.left, client.top + child->place.top},
                        context.clip);
    }
}

// They stand above what lies under them, and the picture grows where one reaches out of the window.
void Desktop::paintOpenLists(HWND window, Painting& painting, POINT origin) {
    const WindowRecord* record = find(window);
    if (!record) return;
    const RECT client = clientOf(*record, origin);
    if (record->behaviour) {
        constexpr LONG anywhere = 0x7FFF;
        HostDeviceContext context;
        context.painting = &painting;
        context.window = window;
        context.origin = {client.left, client.top};
        context.clip = {0, 0, anywhere, anywhere};
        context.font = record->font;
        const RECT list = record->behaviour->paintAbove(*record, &context);
        painting.size = {std::max(painting.size.cx, client.left + list.right),
                         std::max(painting.size.cy, client.top + list.bottom)};
    }
    for (const HWND each : record->children) {
        const WindowRecord* child = find(each);
        if (child && (child->style & WS_VISIBLE))
            paintOpenLists(each, painting, {client.left + child->place.left, client.top + child->place.top});
    }
}

Painting Desktop::paint(HWND window) {
    const WindowRecord* record = find(window);
    if (!record) return {};
    Painting painting;
    painting.size = {widthOf(record->place), heightOf(record->place)};
    paintWindow(window, painting, {}, {0, 0, painting.size.cx, painting.size.cy});
    paintOpenLists(window, painting, {});
    return painting;
}

void Desktop::describeControls(HWND window, POINT clientOrigin, std::vector<ShownControl>& controls) {
    const WindowRecord* record = find(window);
    for (const HWND each : record->children) {
        const WindowRecord* child = find(each);
        if (!child || !(child->style & WS_VISIBLE)) continue;
        ShownControl control;
        control.id = child->id;
        control.window = each;
        control.text = labelText(child->text, control.mnemonic);
        control.bounds = moved(child->place, clientOrigin.x, clientOrigin.y);
        control.isEnabled = isEnabled(each);
        control.hasFocus = m_focus == each;
        const RECT inner = clientOf(*child, {control.bounds.left, control.bounds.top});
        if (child->behaviour) child->behaviour->describe(*child, control);
        // A dialog within is its controls.
        if (child->className != L"#32770") controls.push_back(std::move(control));
        describeControls(each, {inner.left, inner.top}, controls);
    }
}

ShownWindow Desktop::show(HWND window) {
    ShownWindow shown;
    const WindowRecord* record = find(window);
    if (!record) return shown;
    shown.window = window;
    shown.caption = record->text;
    shown.box = record->box;
    shown.painting = paint(window);
    shown.lines = linesOf(shown.painting, window);
    record = find(window);
    if (!record) return shown;
    const RECT client = clientOf(*record, {});
    describeControls(window, {client.left, client.top}, shown.controls);
    return shown;
}

const ShownControl* ShownWindow::control(int id) const {
    for (const ShownControl& each : controls)
        if (each.id == id) return &each;
    return nullptr;
}

const ShownControl* ShownWindow::focused() const {
    for (const ShownControl& each : controls)
        if (each.hasFocus) return &each;
    return nullptr;
}

} // namespace hostkit
