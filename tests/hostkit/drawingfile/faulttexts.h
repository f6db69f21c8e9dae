// Drawings as texts that a person can read, in the folder audit, and the single faults that are put into
// them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace drawingtest {

/// Of a file in the folder audit.
std::string contentOf(const std::string& name);
/// A text has a line a record, its groups as CODE=VALUE, apart by blanks; `~` is a blank in a value.
std::string drawingOf(const std::string& text);
/// Where the groups stand as whole words, from that place on.
std::size_t placeOf(const std::string& text, const std::string& groups, std::size_t from = 0);
/// Of the line with the record that has such groups; `.` is the drawing.
std::size_t beginOf(const std::string& text, const std::string& record);
/// A line each.
std::string joined(const std::vector<std::string>& texts);
std::vector<std::string> split(const std::string& text, const std::string& separator);
/// "GROUPS -> OTHER GROUPS", in or behind the record; ` // ` parts records.
std::string changedText(const std::string& sound, const std::string& record, const std::string& change);
/// Calls it for each line of faults.txt, with the text that the fault goes into; gives their number.
std::size_t
forEachFault(const std::function<void(const std::string& sound, const std::string& fault)>& check);

} // namespace drawingtest
