#pragma once

#include "afx.h"

#include <cstddef>

/// One setting of a style: a full key, prefix included, and a value, which is one of four kinds. A value by
/// itself: copies have all three fields, of the value as much as its kind uses.
class VEXOORStyleDataItem {
public:
    /// A name loses all punctuation of the reader when it is read from a file, a text only its quotation
    /// marks.
    enum Kind { kReal = 0, kInteger = 1, kName = 2, kText = 3 };
    /// Characters of a text value, without its end.
    static constexpr int maximumText = 255;

    /// The value and the kind are left as they are: whoever stores an item sets them first.
    VEXOORStyleDataItem() {}
    VEXOORStyleDataItem(const VEXOORStyleDataItem& other);
    VEXOORStyleDataItem& operator=(const VEXOORStyleDataItem& other);

    /// They set value and kind. A text of more than 255 characters is cut there; what stands behind a NUL is
    /// no part of it.
    void setReal(double value);
    void setInteger(int value);
    void setText(const CString& text, Kind kind = kName);
    /// The value as that kind, whatever kind the item is of: the caller knows what its key holds.
    double real() const;
    int integer() const;
    CString text() const;
    /// Bytes of the value that its kind uses; of a kind that is none of the four, all.
    std::size_t usedSize() const;

    CString m_key;
    /// A double or a 32-bit int at its start, or a text with its end.
    alignas(double) wchar_t m_value[maximumText + 1];
    int m_kind;
};
