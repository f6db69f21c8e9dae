// The typed form of a filter: a text into a record list, and back; leaves out whether the list is a filter.
#pragma once

#include "recordlist.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

struct FilterReading {
    RecordList list;
    std::wstring problem;     ///< a sentence; empty after a success
    std::size_t position = 0; ///< of what the problem is about, in characters from 0

    bool isRead() const { return problem.empty(); }
};

/// Groups as they are typed, with blanks between as one likes:
///
///     (0 . "LINE,ARC") (8 . "WALL*") (-4 . ">=") (40 . 2.5) (10 1.0 2.0 0.0) (-3 ("APP") ("OTHER"))
///
/// A code, then a value of the code's kind: a text in quotation marks, in which \" and \\ stand for a
/// quotation mark and a backslash; a whole number that its code can hold; a real; a point of two or three
/// numbers, without the dot. The dot may be left out. Group -3 has names of applications, each in
/// parentheses, and becomes 1001 records behind it. The whole may stand in parentheses, with a ' before them.
/// An empty text reads as no list.
FilterReading readFilterText(std::wstring_view text);
/// The same of the groups that a text begins with; `length` is how much of it they take, with the blanks
/// behind them, or was read when a problem came.
FilterReading readFilterStart(std::wstring_view text, std::size_t& length);

/// A list in that form, which reads back as the same one but for a text of -3 itself, which becomes the first
/// name; the codes are those that readFilterText takes. Null gives an empty text.
std::wstring writeFilterText(const resbuf* list);

} // namespace hostkit
