// Stand-in for the host's wide text runtime. Covers conversion, comparison, case and path splitting of wide text; leaves out its narrow forms.
#pragma once

#include <cstddef>
#include <cwchar>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are given.

#define _T(text) L##text
#define _TEXT(text) L##text

inline constexpr int _MAX_PATH = 260;
inline constexpr int _MAX_DRIVE = 3;
inline constexpr int _MAX_DIR = 256;
inline constexpr int _MAX_FNAME = 256;
inline constexpr int _MAX_EXT = 256;

template <class Element, std::size_t count>
[[nodiscard]] constexpr std::size_t countOfArray(const Element (&)[count]) {
    return count;
}
#define _countof(array) countOfArray(array)

/// The leading decimal number after white space and one sign; 0 where there is none or the text is null. A
/// value beyond the type's range gives the nearest end of the range.
int _wtoi(const wchar_t* text);
long long _wtoi64(const wchar_t* text);
/// The leading number with decimal point, in the same form in every locale; the exponent letter may also be d
/// or D. 0.0 where there is none; beyond the range of double: infinity with the sign, or zero.
double _wtof(const wchar_t* text);

/// Compare without regard to case, accented letters included: negative, 0, positive. A null text counts as
/// empty.
int _wcsicmp(const wchar_t* first, const wchar_t* second);
int _wcsnicmp(const wchar_t* first, const wchar_t* second, std::size_t count);
/// Change the case in place, accented letters included; return the text.
wchar_t* _wcslwr(wchar_t* text);
wchar_t* _wcsupr(wchar_t* text);

/// Copy, unchecked: the target has room. A null source or target gives null and does nothing.
wchar_t* lstrcpyW(wchar_t* target, const wchar_t* source);
wchar_t* lstrcatW(wchar_t* target, const wchar_t* source);
int lstrlenW(const wchar_t* text);
int lstrcmpW(const wchar_t* first, const wchar_t* second);
int lstrcmpiW(const wchar_t* first, const wchar_t* second);

/// Splits at the drive letter ("C:"), the last '\' or '/', and the last point behind it: drive with its
/// colon, directory with its closing separator, name, extension with its point. A null part is left out; each
/// given part has room for its _MAX_ length and is cut there.
void _wsplitpath(const wchar_t* path, wchar_t* drive, wchar_t* directory, wchar_t* name, wchar_t* extension);
/// Puts the parts together: a colon after the drive's letter, a '\' after a directory that lacks its
/// separator, a point before an extension that lacks it. Null and empty parts are left out. The path has room
/// for _MAX_PATH and is cut there.
void _wmakepath(wchar_t* path, const wchar_t* drive, const wchar_t* directory, const wchar_t* name,
                const wchar_t* extension);

// NOLINTEND(bugprone-reserved-identifier)
