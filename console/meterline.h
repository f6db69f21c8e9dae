#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The meter of the status bar as one line of a terminal: "CAPTION [#####.....]  50 %  0:12 left". What the
/// columns have no room for goes in this order: the bar, the end of the caption. The time left is shown from
/// the second on in which it can be told; a negative one is not.
std::wstring meterLine(std::wstring_view caption, int percent, std::int64_t secondsLeft, std::size_t columns);

/// How long a work lasts that has come this far: the rest at the pace so far, in seconds, rounded up; -1
/// before a second has passed or anything is done.
std::int64_t secondsLeft(std::int64_t nanosecondsSoFar, double shareDone);
