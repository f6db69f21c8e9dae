#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The meter of the status bar as one line of a terminal: "CAPTION [#####.....]  50 %  0:12 left". What the
/// columns have no room for goes in this order: the bar, the end of the caption. A negative time left
/// is not shown.
std::wstring meterLine(std::wstring_view caption, int percent, std::int64_t secondsLeft, std::size_t columns);

/// How long a work goes on that has come this far: the rest at the pace so far, in seconds, rounded up; -1
/// before a second has passed or anything is done.
std::int64_t secondsLeft(std::int64_t nanosecondsSoFar, double shareDone);
