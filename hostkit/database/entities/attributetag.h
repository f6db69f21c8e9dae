// Attribute tags: the rule for them; leaves out the attributes.
#pragma once

#include <cwctype>

namespace hostkit {

/// Not empty and without blanks.
inline bool isAttributeTag(const wchar_t* tag) {
    if (!tag || !*tag) return false;
    for (; *tag; ++tag)
        if (std::iswspace(static_cast<std::wint_t>(*tag))) return false;
    return true;
}

/// Bits of group 70 of an attribute and of its definition.
enum AttributeFlag {
    kAttributeInvisible = 1,
    kAttributeConstant = 2,
    kAttributeVerify = 4,
    kAttributePreset = 8
};

} // namespace hostkit
