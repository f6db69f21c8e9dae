// Repair of a drawing's text: what the check finds is put right, or goes; leaves out the drawing that is open
// and what a reader gives a drawing.
#pragma once

#include "drawingaudit.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

enum class RepairOutcome : unsigned char {
    kRepaired, ///< with everything that could be told of it
    kLost,     ///< the record, or what the note names, is not in the drawing any more
    kLeft,     ///< nothing here can repair it
};

struct RepairNote {
    RepairOutcome outcome;
    AcDbHandleValue handle; ///< of the record; 0 where it has none, or the drawing itself is meant
    std::wstring type;      ///< the record's name; empty likewise
    std::wstring text;      ///< what was wrong, as the check tells it
    std::size_t line;       ///< of the record in the text that was given; 0 where no line can be named
};

struct RepairReport {
    std::vector<RepairNote> notes; ///< in the order of the work
    std::size_t count(RepairOutcome outcome) const;
    bool isClean() const { return count(RepairOutcome::kLeft) == 0; }
};

struct RepairOptions {
    AcDbHandleValue firstHandle = 1; ///< of new records, where the text has none above
    /// The handle that a record which has to be added gets, by its table and name; 0 for the next free one.
    std::function<AcDbHandleValue(std::string_view table, std::wstring_view name)> handleOf{};
};

/// The text with every fault that auditDrawingText finds repaired, which it finds none in any more, but for
/// those of the notes kLeft. A text without faults comes back as it is. Anything may be given: a text that
/// was cut, whose lines are out of step, whose sections, tables, blocks, dictionaries or handles are missing.
///
/// - Records whose lines are out of step keep the groups that can be told; they stand where their kind
/// belongs.
/// - Whole again: sections, tables with heads, blocks with records and ends, sequences, the root dictionary,
/// handles (one of two that are the same gets another), owners (by what a record stands in, or by who holds
/// it; what nobody holds goes into the root as RECOVERED_ and its handle), names of records.
/// - What leads nowhere goes: entries, references, vertices without a polyline, insertions of blocks that are
/// missing or contain themselves, names of linetypes and styles. Applications are registered.
/// - A record whose groups do not say what its kind needs goes (recordrepair.h).
///
/// Records without a fault keep their bytes, and stand in the order in which they were. Binary drawings of
/// the exchange format are given back as text. Time is linear in the text, with a factor of some eight rounds
/// at most.
std::string repairDrawingText(std::string_view bytes, RepairReport& report,
                              const RepairOptions& options = {});

} // namespace hostkit
