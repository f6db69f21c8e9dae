// Two drawings record for record: what tests of round trips compare.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace drawingtest {

struct Pair {
    int code = 0;
    std::string value;
    bool operator==(const Pair&) const = default;
};

/// Records by section, name and handle (or number, for those without).
using Records = std::map<std::string, std::vector<Pair>>;
Records recordsOf(std::string_view bytes);

/// How the groups of two records may differ.
enum class Strictness {
    kSame,   ///< the same groups in the same order, values by value
    kFields, ///< as for records written anew from fields: see docs/drawing-files.md for the list and the
             ///< reasons
};

/// One line for each record that differs; empty for drawings that agree.
std::vector<std::string> differences(const Records& original, const Records& written, Strictness strictness);

} // namespace drawingtest
