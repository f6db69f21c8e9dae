#include "cmenu.h"

BOOL CMenu::CreatePopupMenu() {
    if (m_isMade) return FALSE;
    m_isMade = true;
    return TRUE;
}

BOOL CMenu::DestroyMenu() {
    if (!m_isMade) return FALSE;
    m_items.clear();
    m_isMade = false;
    return TRUE;
}

BOOL CMenu::AppendMenuW(UINT flags, UINT_PTR id, const wchar_t* text) {
    if (!m_isMade) return FALSE;
    m_items.push_back({flags, static_cast<UINT>(id), CString(text)});
    return TRUE;
}

const CMenu::Item* CMenu::find(UINT item, UINT flags) const {
    if (flags & MF_BYPOSITION) return item < m_items.size() ? &m_items[item] : nullptr;
    for (const Item& each : m_items)
        if (each.id == item && !(each.flags & MF_SEPARATOR)) return &each;
    return nullptr;
}

UINT CMenu::GetMenuItemID(int position) const {
    const Item* found = position >= 0 ? find(static_cast<UINT>(position), MF_BYPOSITION) : nullptr;
    return found ? found->id : MF_ERROR;
}

UINT CMenu::GetMenuState(UINT item, UINT flags) const {
    const Item* found = find(item, flags);
    return found ? found->flags : MF_ERROR;
}

int CMenu::GetMenuStringW(UINT item, CString& text, UINT flags) const {
    const Item* found = find(item, flags);
    if (!found) return 0;
    text = found->text;
    return text.GetLength();
}
