// A sound drawing as text, written by hand and not by the writer, that tests put single faults into.
#pragma once

#include <string>
#include <string_view>

namespace drawingtest {

/// One line a record, its groups as CODE=VALUE, apart by blanks; `~` is a blank in a value. Many kinds of records, each
/// small; the form is that of 2013.
extern const std::string_view soundText;
/// The same in the form of R12.
extern const std::string_view soundOldText;

/// The drawing as it stands in a file.
std::string drawingOf(std::string_view text);

} // namespace drawingtest
