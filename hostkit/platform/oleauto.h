// Stand-in for the host's values of interfaces. Covers counted texts and truth values; leaves out variants and arrays.
#pragma once

#include "unknwn.h"

/// A text that its receiver frees with SysFreeString; null is the empty text.
using BSTR = wchar_t*;

/// A copy with a terminator; null for null, or where memory is short.
BSTR SysAllocString(const wchar_t* text);
/// Null is allowed.
void SysFreeString(BSTR text);
/// Characters without the terminator; 0 for null. A text may have zeros within.
UINT SysStringLen(BSTR text);

using VARIANT_BOOL = std::int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;
