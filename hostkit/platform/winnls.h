// Stand-in for the host's text conversion. Covers the ANSI code page both ways; leaves out other code pages and all flags.
#pragma once

#include "windowstypes.h"

inline constexpr UINT CP_ACP = 0;

// Both return how many characters (bytes) were written, or would be where the room is 0. A length of -1 means
// text that ends with a NUL, which is then written too. 0 for another code page, a flag, a null text or
// another negative length (ERROR_INVALID_PARAMETER), and for a target that is too small, which is left alone
// (ERROR_INSUFFICIENT_BUFFER).

/// Every byte has a character.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteLength, wchar_t* text,
                        int textRoom);
/// A character without a place in the code page becomes the given one, '?' where that is null; *wasReplaced
/// then tells whether there was one.
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int textLength, char* bytes,
                        int byteRoom, const char* replacement, BOOL* wasReplaced);
