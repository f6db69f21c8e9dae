#pragma once

#include "cstring.h"

namespace vexo {

/// A line of a style file: the text as characters of the numbers that its bytes have, and back. Characters
/// above U+00FF come back as they are.
CString toFileText(const CString& text);
CString fromFileText(CString text);

/// What stands at the head of a style file's name line.
inline constexpr wchar_t styleNameKey[] = L"StyleName";

} // namespace vexo
