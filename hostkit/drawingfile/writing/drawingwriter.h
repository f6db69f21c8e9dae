// Drawing output: the exchange format from R12 to 2018, text and binary, and binary drawings from 2000 to
// 2018; leaves out the form 2007 of these.
#pragma once

#include "acadstrc.h"
#include "drawingversion.h"
#include "formchanges.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

class AcDbDatabase;

namespace hostkit {

class DrawingProgress;

/// The exchange form as text or binary, or a binary drawing.
enum class DrawingCoding : unsigned char { kText, kBinary, kDrawing };

struct WriteOptions {
    /// Nothing keeps the form that the drawing was read in; a drawing that was never read is written as 2013.
    std::optional<DrawingVersion> version;
    /// Nothing goes by the ending of the file's name: ".dwg" is a binary drawing, ".dxf" is none. Where that
    /// tells nothing the drawing keeps the coding that it was read in; one that was never read is written as
    /// text.
    std::optional<DrawingCoding> coding{};
    /// Writes every object from its fields, as if it had been changed. For tests of the fields.
    bool everythingFromFields = false;
    /// Records that stand in a file are written on so many threads; 0 takes as many as the machine has and
    /// the work is worth. Objects of applications' classes file themselves on the calling thread alone.
    unsigned threads = 0;
    /// Receives what a save in another form turned or left out, as the report does; not owned.
    FormChanges* changes = nullptr;
    /// What is open for write is written as it stands, in place of a refusal.
    bool writesOpenObjects = false;
    /// What stood under the name stands beside it then, with the ending ".bak".
    bool keepsBackup = false;
    /// A failure also goes to the current port's reportProblem.
    bool tellPort = true;
    /// Hears how far the writing has come, by the objects and at the end the file; not owned.
    DrawingProgress* progress = nullptr;
};

/// The outcome of one writing.
struct WriteReport {
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring message;           ///< "file: reason" after a failure
    std::size_t byteCount = 0;      ///< of the drawing written
    std::size_t recordsCopied = 0;  ///< untouched since reading: their bytes went over as they were
    std::size_t recordsWritten = 0; ///< from their fields
    std::size_t groupsFromFields = 0;
    FormChanges changes;        ///< of a save in another form
    std::size_t groupsKept = 0; ///< of changed records: groups that their class does not know
};

/// Writes the drawing in one step: under the file's name stands either what stood there before or the whole
/// new drawing. No object may be open for write (eWasOpenForWrite), but by options.writesOpenObjects.
///
/// An object that was not changed since it was read is copied byte by byte. A changed one is written from its
/// fields; groups that its class does not know stay beside the group that they followed, and a value that is
/// equal to the one in the file keeps its spelling. The file's line ends, code page and form are kept.
///
/// With options.version other than the form the drawing was read in, everything is written from fields, with
/// the groups and records of unknown meaning that the new form can hold (formtransfer.h). What it has no
/// place for is turned into what it has (r12entities.h) or left out; report.changes tells of both. No drawing
/// is refused for what its old form holds and the new one lacks.
///
/// The binary exchange form is written by the same rules as the text that its groups make, and turned back.
/// eInvalidInput where a text drawing holds a value that the binary form has no place for; the message names
/// the line of what was to be turned.
///
/// Binary drawings are of the forms 2000, 2004, 2010, 2013 and 2018: without options.version an older one
/// becomes 2000, and 2007 becomes 2010; told by options.version such a form is refused with eInvalidInput. A
/// record that was not changed since it was read keeps its bits in the form that it was read in; records of
/// unknown kinds go nowhere else, and report.changes tells of them.
///
/// A block that contains itself, also by way of others, is refused with eCyclicReference: the drawing could
/// not be opened again. So is, in R12, a block with a name that a space has there ($MODEL_SPACE,
/// $PAPER_SPACE), with eDuplicateKey.
///
/// Statuses besides these: eFileAccessErr (cannot be written; the old file is as it was), eOutOfMemory.
Acad::ErrorStatus writeDrawing(const AcDbDatabase& database, std::wstring_view file,
                               const WriteOptions& options = {}, WriteReport* report = nullptr);

/// The same into memory. `bytes` is only changed by a success.
Acad::ErrorStatus writeDrawingToMemory(const AcDbDatabase& database, std::string& bytes,
                                       const WriteOptions& options = {}, WriteReport* report = nullptr);

} // namespace hostkit
