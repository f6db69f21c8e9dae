#include "afxcmn.h"

#include <utility>

BOOL CImageList::Create(int width, int height, UINT, int, int) {
    if (m_isMade || width <= 0 || height <= 0) return FALSE;
    m_isMade = true;
    return TRUE;
}

int CImageList::Add(HICON icon) {
    if (!m_isMade || !icon) return -1;
    m_icons.push_back(icon);
    return GetImageCount() - 1;
}

HICON CImageList::ExtractIconW(int index) const {
    return index >= 0 && index < GetImageCount() ? m_icons[static_cast<std::size_t>(index)] : nullptr;
}

CImageList* CComboBoxEx::SetImageList(CImageList* images) { return std::exchange(m_images, images); }

int CComboBoxEx::InsertItem(const COMBOBOXEXITEMW* item) {
    if (!m_hWnd || !item || !(item->mask & CBEIF_TEXT)) return -1;
    const int index = InsertString(static_cast<int>(item->iItem), item->pszText);
    const int image = item->mask & CBEIF_IMAGE ? item->iImage : -1;
    // One more than the image, so that an item without data has none.
    if (index >= 0) SetItemData(index, static_cast<DWORD_PTR>(image) + 1);
    return index;
}

int CComboBoxEx::GetItemImage(int index) const {
    if (index < 0 || index >= GetCount()) return -1;
    return static_cast<int>(GetItemData(index)) - 1;
}
