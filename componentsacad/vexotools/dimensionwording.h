#pragma once

#include "afx.h"

namespace vexo {

/// The contents of a dimension's paragraph, taken apart: codes in front up to the first ";" with it, the
/// number up to the first "\", "{", ";" or "[", and the rest. Without ";" there is nothing in front; where
/// the first one ends a stack, its codes count as in front.
struct DimensionWords {
    CString head;
    CString number;
    CString tail;

    explicit DimensionWords(const CString& contents);
};

/// How they are put together again.
struct DimensionWording {
    CString suffix;           ///< "<>" in it is the number; without one the number stands before it
    double factor = 1.0;      ///< what the number was multiplied by; 0 raises nothing
    double raisedPower = 0.0; ///< 1000 or 0: 1000 / factor says how many decimals stay down
    wchar_t separator = L'.';
    bool trimZeros = false;

    /// Decimals beyond those that stay down become a smaller raised stack.
    CString composed(const DimensionWords& words) const;
};

} // namespace vexo
