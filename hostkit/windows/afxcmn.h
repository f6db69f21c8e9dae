// Stand-in for the host's common controls. Covers image lists and combo boxes with images; leaves out trees, tabs and overlays.
#pragma once

#include "afxwin.h"

#include <vector>

/// Icons of one size, counted from 0.
class CImageList {
public:
    /// FALSE for a size that is not positive. Flags and growth are not looked at.
    BOOL Create(int width, int height, UINT flags, int initial, int grow);
    /// The icon's index; -1 for null, and before Create.
    int Add(HICON icon);
    int GetImageCount() const { return static_cast<int>(m_icons.size()); }
    /// Null where there is none.
    HICON ExtractIconW(int index) const;

private:
    std::vector<HICON> m_icons;
    bool m_isMade = false;
};

inline constexpr UINT CBEIF_TEXT = 0x1;
inline constexpr UINT CBEIF_IMAGE = 0x2;
inline constexpr UINT CBEIF_SELECTEDIMAGE = 0x4;

struct COMBOBOXEXITEMW {
    UINT mask = 0;
    INT_PTR iItem = 0;          ///< -1: at the end
    wchar_t* pszText = nullptr; ///< only read
    int iImage = -1;
    int iSelectedImage = -1;
};

/// A combo box whose items have an image, which is kept as the item's data.
class CComboBoxEx : public CComboBox {
public:
    /// The list stays the caller's; the one before.
    CImageList* SetImageList(CImageList* images);
    CImageList* GetImageList() const { return m_images; }
    /// The item's index, or -1.
    int InsertItem(const COMBOBOXEXITEMW* item);
    /// -1 for an item without image or one that is not there.
    int GetItemImage(int index) const;

private:
    CImageList* m_images = nullptr;
};
