// Drawing input: the exchange format from R12 to 2018, text and binary, and binary drawings from 2000 to
// 2018, told by their content; leaves out drawings with passwords.
#pragma once

#include "acadstrc.h"
#include "drawingversion.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

namespace hostkit {

class DrawingProgress;

/// What was wrong with a drawing, and where.
struct DrawingProblem {
    std::size_t line = 0; ///< of the group code, counted from 1; 0 where no line can be named
    std::optional<std::size_t>
        offset{}; ///< in a binary file, in place of the line: of the group or record, from 0
    std::wstring reason;
    /// The drawing could not be read; else a record was kept as it stands and reading went on.
    bool isFatal = false;
};

/// The outcome of one reading.
struct ReadReport {
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring file;
    std::vector<DrawingProblem> problems; ///< at most problemLimit, the fatal one always among them, last
    std::size_t problemCount = 0;         ///< also those over the limit
    std::size_t entityCount = 0; ///< records in blocks and spaces; vertices and attributes not counted
    std::size_t objectCount = 0; ///< records outside of blocks and tables
    DrawingVersion version = DrawingVersion::k2013;

    /// "file:line: reason", "file: byte offset: reason" of a binary drawing, or "file: reason" where there is
    /// neither.
    std::wstring messageOf(const DrawingProblem& problem) const;
    /// The message of the fatal problem; empty after a success.
    std::wstring fatalMessage() const;
};

struct ReadOptions {
    std::size_t problemLimit = 100;
    bool tellPort = true;                ///< each problem also goes to the current port's reportProblem
    DrawingProgress* progress = nullptr; ///< hears how far the reading has come, by the bytes; not owned
};

/// Reads a drawing into a database that was made without default objects and holds nothing yet; anything
/// else gives eInvalidInput. After any other status than eOk no object is open, and the database is only
/// good for being deleted: it holds a part of the drawing.
///
/// Statuses: eFileNotFound; eFileAccessErr (cannot be read, or is a directory); eNotApplicable
/// (a binary drawing of an older form or with a password, or whose container is damaged throughout);
/// eBadDxfSequence (damaged: a group without value, a section within a section, a record outside of a section
/// ...); eEndOfFile (cut: the end mark is missing); eHandleInUse (two objects with one handle); eDuplicateKey
/// (two blocks with one name); eCyclicReference (a block that contains itself); eOutOfMemory.
///
/// A damaged record inside a sound drawing does not stop the reading: it is kept as it stands as an opaque
/// entity or object, the report tells of it, and the status is eOk.
Acad::ErrorStatus readDrawing(AcDbDatabase& database, std::wstring_view file, ReadReport* report = nullptr,
                              const ReadOptions& options = {});

/// The same from bytes in memory; `name` stands in the messages.
Acad::ErrorStatus readDrawingFromMemory(AcDbDatabase& database, std::string bytes, std::wstring_view name,
                                        ReadReport* report = nullptr, const ReadOptions& options = {});

/// Makes a database and reads into it; null after a failure, so that a half-read drawing never gets out.
std::unique_ptr<AcDbDatabase> openDrawing(std::wstring_view file, ReadReport* report = nullptr,
                                          const ReadOptions& options = {});
std::unique_ptr<AcDbDatabase> openDrawingFromMemory(std::string bytes, std::wstring_view name,
                                                    ReadReport* report = nullptr,
                                                    const ReadOptions& options = {});

} // namespace hostkit
