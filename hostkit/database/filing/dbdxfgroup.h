// Stand-in for the host's groups of a text drawing, as filers hand them out. Covers every kind of value; leaves out how it stood in the file.
#pragma once

#include "adesk.h"
#include "adscodes.h"

#include <string_view>

/// A group code with its value in the field that goes with the code's kind. A point comes whole, with the
/// code of its x; `dimension` says whether a z was there (2 or 3; z is 0 without).
struct AcDbDxfGroup {
    short code = 0;
    AcDb::GroupKind kind = AcDb::GroupKind::kText;
    unsigned char dimension = 0;
    union {
        double point[3] = {0.0, 0.0, 0.0};
        double real;          ///< kReal
        Adesk::Int64 integer; ///< kInt16, kInt32, kInt64, kBool; kHandle: the handle's value
    };
    /// kText; kHandle and kBinary have their hexadecimal text here too. Owned by the filer, good until its
    /// next readItem.
    std::wstring_view text;

    AcDbHandleValue handle() const { return static_cast<AcDbHandleValue>(integer); }
    bool isText(short wanted, std::wstring_view value) const {
        return code == wanted && kind == AcDb::GroupKind::kText && text == value;
    }
};
