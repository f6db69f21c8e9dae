// Word on an undo: what was taken back and what stays; leaves out the objects' names.
#pragma once

#include <cstddef>
#include <string>

namespace hostkit {

/// What one undo did. Objects count once each.
struct UndoReport {
    std::wstring name;             ///< of the group: the command's; empty for what no command did
    std::size_t restored = 0;      ///< objects and header variables that are again what they were
    std::size_t keptSuspended = 0; ///< changed only while recording was off: they stay so
    std::size_t inConflict = 0;    ///< a part was changed with recording on and later with it off: it stays
    std::size_t unfiled = 0;       ///< of applications' classes that do not file their fields: likewise
};

} // namespace hostkit
