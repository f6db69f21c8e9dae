// User at a window: what he sees of it and what he does there; leaves out dragging.
#pragma once

#include "painting.h"

#include <optional>

namespace hostkit {

/// One thing that a person does at a window. `refuse` is what closing the window means: the Cancel, the No,
/// or the only answer.
struct WindowAction {
    enum class Kind { key, characters, setText, clickControl, clickItem, clickPoint, refuse };
    Kind kind = Kind::refuse;
    unsigned key = 0; ///< a VK code
    bool withShift = false;
    std::wstring text{};
    int control = 0;       ///< its id; the window's own controls first, then those of windows within it
    HWND target = nullptr; ///< the control itself, where one is meant whose id stands there twice
    int item = 0;
    POINT point{}; ///< in the window's client area

    static WindowAction refuse() { return {}; }
    static WindowAction press(unsigned key, bool withShift = false);
    /// Types at the control that has the focus.
    static WindowAction type(std::wstring text);
    /// Replaces what stands in the control.
    static WindowAction write(int control, std::wstring text);
    static WindowAction click(int control);
    static WindowAction clickAt(int x, int y);
    /// An item of a list or combo box, counted from 0. In a check list it changes the item's mark. A combo
    /// box opens its list first; the item is the one that stood there before.
    static WindowAction choose(int control, int item);
    /// The same at that very control.
    WindowAction at(HWND window) const;
};

struct ShownItem {
    std::wstring text;
    bool isChecked = false;
};

/// A control as a person sees it.
struct ShownControl {
    enum class Kind { label, button, check, radio, edit, list, checkList, combo, other };
    Kind kind = Kind::other;
    int id = 0;
    HWND window = nullptr;
    std::wstring text{};  ///< without prefix marks
    wchar_t mnemonic = 0; ///< lower case; 0 where there is none
    RECT bounds{};        ///< in the painting
    bool isEnabled = true;
    bool hasFocus = false;
    bool isDefault = false;
    bool isChecked = false;
    std::vector<ShownItem> items{};
    int selected = -1;
    bool isDropped = false; ///< of a combo box: its list is open
};

/// What the system's own message box asks.
struct ShownBox {
    std::wstring text;
    unsigned flags; ///< of MessageBoxW; its buttons are controls of their ids
};

/// A window as a person sees it: only what is visible.
struct ShownWindow {
    HWND window = nullptr;
    std::wstring caption{};
    std::optional<ShownBox> box{}; ///< where the window is one
    /// Lines that the window paints itself, from top to bottom.
    std::vector<std::wstring> lines{};
    std::vector<ShownControl> controls{};
    Painting painting{};

    const ShownControl* control(int id) const;
    const ShownControl* focused() const;
};

} // namespace hostkit
