// Controls: how buttons, labels, edits, lists and combo boxes act and look; leaves out owner drawing.
#pragma once

#include "desktop.h"
#include "itemlist.h"

namespace hostkit {

class ButtonBehaviour final : public ControlBehaviour {
public:
    bool handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) override;
    void paint(const WindowRecord& window, HDC dc) const override;
    void describe(const WindowRecord& window, ShownControl& control) const override;

private:
    void press(WindowRecord& window);
    bool m_isChecked = false;
};

class StaticBehaviour final : public ControlBehaviour {
public:
    bool handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) override;
    void paint(const WindowRecord& window, HDC dc) const override;
    void describe(const WindowRecord& window, ShownControl& control) const override;

private:
    HICON m_icon = nullptr;
};

class EditBehaviour final : public ControlBehaviour {
public:
    bool handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) override;
    void paint(const WindowRecord& window, HDC dc) const override;
    void describe(const WindowRecord& window, ShownControl& control) const override;

private:
    void replaceSelection(WindowRecord& window, std::wstring_view text);
    bool pressKey(WindowRecord& window, WPARAM key);
    void typeCharacter(WindowRecord& window, wchar_t character);
    void select(const WindowRecord& window, LPARAM first, LPARAM last);

    std::size_t m_first = 0; ///< of the selection
    std::size_t m_last = 0;  ///< behind it; the caret stands there
    std::size_t m_limit = 30000;
};

class ListBehaviour final : public ControlBehaviour {
public:
    bool handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) override;
    void paint(const WindowRecord& window, HDC dc) const override;
    void describe(const WindowRecord& window, ShownControl& control) const override;
    bool choose(WindowRecord& window, int item) override;

private:
    void press(WindowRecord& window, LPARAM place);
    bool pressKey(WindowRecord& window, WPARAM key);
    void selectByUser(WindowRecord& window, int index);
    void changeMark(WindowRecord& window, int index);
    int rowHeight(const WindowRecord& window) const;

    ItemList m_list;
    bool m_hasMarks = false;
    int m_top = 0; ///< the first item that shows
};

class ComboBehaviour final : public ControlBehaviour {
public:
    bool handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) override;
    void paint(const WindowRecord& window, HDC dc) const override;
    RECT paintAbove(const WindowRecord& window, HDC dc) const override;
    void describe(const WindowRecord& window, ShownControl& control) const override;
    bool choose(WindowRecord& window, int item) override;

private:
    bool handleItems(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer);
    bool pressKey(WindowRecord& window, WPARAM key);
    void setDropped(WindowRecord& window, bool isDropped);
    void closeByKey(WindowRecord& window, bool isTaken);
    void showItem(WindowRecord& window, LPARAM index) const;

    ItemList m_list;
    bool m_isDropped = false;
    std::wstring m_textBefore; ///< when the list opened
};

/// Of the window's own font, or the default one.
const FontFace& faceOfWindow(const WindowRecord& window);
/// With its corner at (0, 0).
RECT clientRectOf(const WindowRecord& window);

inline constexpr LONG markSize = 13;
/// A box that is checked or not, or a radio button's.
void paintMark(HDC dc, POINT corner, bool isChecked, bool isRadio);

} // namespace hostkit
