// Knowledge of lists of handles in records: which records list others and what stands with each handle;
// leaves out what the lists mean.
#pragma once

#include <string_view>

namespace hostkit {

/// A list of handles in a record. What leaves the file leaves the list, with the groups that stand with it;
/// anywhere else a null handle keeps the place, as the groups may be counted.
struct HandleList {
    std::string_view record;
    std::string_view mark; ///< the subclass mark or the application group that the list stands behind
    short code;
    short beforeCode; ///< of the group right before a handle that goes with it; 0: none
    short behindCode; ///< of the group right behind it
    short countCode;  ///< of the group that counts the list
};

/// The list of that record that has handles of that code; null where there is none.
const HandleList* handleListOf(std::string_view record, int code);
/// The list of that record that is counted by that code; null where there is none.
const HandleList* countedListOf(std::string_view record, int countCode);

} // namespace hostkit
