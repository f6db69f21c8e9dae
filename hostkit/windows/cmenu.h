// Stand-in for the host's menu class. Covers a list of items with texts and numbers; leaves out showing it and sub-menus.
#pragma once

#include "cstring.h"
#include "windowstypes.h"

#include <vector>

inline constexpr UINT MF_STRING = 0x0;
inline constexpr UINT MF_GRAYED = 0x1;
inline constexpr UINT MF_CHECKED = 0x8;
inline constexpr UINT MF_SEPARATOR = 0x800;
inline constexpr UINT MF_BYCOMMAND = 0x0;
inline constexpr UINT MF_BYPOSITION = 0x400;
inline constexpr UINT MF_ERROR = 0xFFFFFFFFu;

class CMenu {
public:
    /// Until it is made a menu takes no items.
    BOOL CreatePopupMenu();
    BOOL DestroyMenu();
    BOOL AppendMenuW(UINT flags, UINT_PTR id = 0, const wchar_t* text = nullptr);
    UINT GetMenuItemCount() const { return static_cast<UINT>(m_items.size()); }
    /// 0xFFFFFFFF at a place that is not there.
    UINT GetMenuItemID(int position) const;
    UINT GetMenuState(UINT item, UINT flags) const;
    /// The text's length; 0 where there is no such item.
    int GetMenuStringW(UINT item, CString& text, UINT flags) const;

private:
    struct Item {
        UINT flags;
        UINT id;
        CString text;
    };
    const Item* find(UINT item, UINT flags) const;

    std::vector<Item> m_items;
    bool m_isMade = false;
};
