// Record output: one object's whole record, new or merged with the one that was read; leaves out where it
// stands in the file.
#pragma once

#include "drawingprogress.h"
#include "drawingrecord.h"
#include "groupformat.h"
#include "recordhead.h"
#include "recordmerge.h"
#include "recordreader.h"
#include "recordwriter.h"
#include "referencechanges.h"

#include "dbaccess.h"
#include "dbsource.h"
#include "groupblock.h"

#include <functional>
#include <memory>
#include <string>

namespace hostkit {

/// Writes the records of one drawing.
class ObjectWriting {
public:
    ObjectWriting(const AcDbDatabase& database, const DrawingStyle& style, ProgressStage progress);

    const DrawingStyle& style() const { return m_style; }
    /// The object's record from its fields, merged with the record at that span of the source bytes. False,
    /// with the status and message to be asked for, where a value cannot be written.
    /// With keepsSpelling a value that the object has still as it was read keeps its spelling even where the
    /// field holds it in another unit or system, so that writing it again would round it.
    bool writeMerged(const AcDbObject& object, std::string_view sourceBytes, SourceSpan span,
                     bool keepsSpelling, std::string& bytes);
    bool writeNew(const AcDbObject& object, std::string& bytes);
    /// A record that no object stands for: BLOCK and ENDBLK of a new block have their groups through
    /// `fields`.
    bool writeNewUnder(const AcDbObject& fields, std::uint64_t handle, AcDbObjectId owner,
                       std::string& bytes);

    /// References to what was renamed or erased, which the records are to follow; not owned.
    void follow(const ReferenceChanges* changes);
    /// Tells which objects have a record in the file that is written; an owner without one is not named. By
    /// default all have that are not erased.
    void setHasRecord(std::function<bool(AcDbObjectId)> hasRecord) {
        m_hasRecord = hasRecord;
        m_writer.setHasRecord(std::move(hasRecord));
    }
    /// The bytes in which the originals of copies stand; without them copies are written from their fields
    /// alone.
    void setCopySource(std::string_view bytes) { m_copySource = bytes; }
    /// New records get subclass marks and owners in the R12 form too, as a careless program's other records
    /// have them.
    void giveMarksInR12() { m_writer.giveMarks(); }
    /// Where the form wants it and a drawing has some, true colours go into extended data from now on
    /// (keptcolors.h). `sourceBytes` are those that the records are merged with, empty where all are new: a
    /// file without a table of applications keeps the nearest indices alone.
    void keepTrueColors(std::string_view sourceBytes);
    /// The drawing has no record of their application: registerColors writes one.
    bool mustRegisterColors() const { return m_mustRegisterColors; }
    bool registerColors(AcDbObjectId table, std::string& bytes);
    /// Whether the record, which nobody changed, refers to something that was renamed or erased.
    bool mustFollow(std::string_view sourceBytes, SourceSpan span);

    /// Counts a record that goes over as it stood, for the progress.
    void passRecord() { m_progress.advance(m_progressStep); }
    /// How many records each one here stands for in the progress, while others are written elsewhere.
    void countProgressBy(std::size_t records) { m_progressStep = records; }

    /// Writes records of the same drawing by the same rules, on another thread and without a listener.
    std::unique_ptr<ObjectWriting> makeSibling() const;
    /// Counts what the sibling wrote, and takes over why it failed.
    void take(const ObjectWriting& sibling);

    /// A handle that no object has, for records that have no object.
    std::uint64_t newHandle();
    /// Above every handle that the drawing has or that newHandle gave.
    std::uint64_t nextHandle() const { return m_nextHandle; }
    /// Above every handle of a new record; 0 where none was written.
    std::uint64_t aboveNewRecords() const { return m_aboveNewRecords; }

    Acad::ErrorStatus status() const { return m_status; }
    const std::wstring& message() const { return m_message; }
    std::size_t recordsWritten() const { return m_recordsWritten; }
    const RecordWriter& writer() const { return m_writer; }

private:
    std::unique_ptr<AcDbObject> markKnownGroups(const AcDbObject& object, std::string_view sourceBytes,
                                                SourceSpan span);
    bool writeCopy(const AcDbObject& object, std::string& bytes);
    const RecordWriter& fieldsAsRead(const AcDbObject& object, AcDbObject& blank);
    /// All groups of the record are with m_writer then.
    bool gatherRecord(const AcDbObject& object, std::uint64_t handle, AcDbObjectId owner, bool hasOriginal);
    void writeHead(const AcDbObject& object, std::uint64_t handle, AcDbObjectId owner, bool hasOriginal);
    void writeReactors(const AcDbObject& object);
    bool hasColorToKeep(std::string_view sourceBytes) const;
    void writeExtendedDataOf(const AcDbObject& object, bool hasOriginal);
    void writeExtendedData(const GroupBlock& data);
    void writeExtensionDictionary(const AcDbObject& object);

    const AcDbDatabase& m_database;
    DrawingStyle m_style;
    ProgressStage m_progress;
    std::size_t m_progressStep = 1;
    RecordReader m_reader;
    RecordWriter m_writer;
    RecordWriter m_fieldsAsRead;
    MergeRoom m_mergeRoom;
    DrawingRecord m_original;
    RecordHead m_head;
    const ReferenceChanges* m_changes = nullptr;
    std::string_view m_copySource;
    std::function<bool(AcDbObjectId)> m_hasRecord;
    bool m_keepsTrueColors = false;
    bool m_mustRegisterColors = false;
    GroupBlock m_extendedData; // of the record at work, with its colour
    bool m_isCopy = false;     // the record at work is that of a copy
    std::uint64_t m_nextHandle;
    std::uint64_t m_aboveNewRecords = 0;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::wstring m_message;
    std::size_t m_recordsWritten = 0;
};

/// Somebody has an object of the drawing open for write, whose record says nothing for sure.
bool isOpenForWrite(const AcDbDatabase& database);
/// As the records of a drawing are spelt that was read from there; null is a drawing that was in no file.
DrawingStyle styleOf(const DrawingSource* source);
/// The parts of an entity in the file's order, erased ones left out; then their end where there is one.
const SubentityList* partsOf(const AcDbObject& object);
/// Reads the record at that span of the source bytes into a blank object of the object's class, and so marks
/// each group with the part that takes it. The filer is one that reads without the drawing. Gives the blank
/// object; null for a class that makes none.
std::unique_ptr<AcDbObject> markGroups(const AcDbObject& object, std::string_view sourceBytes,
                                       SourceSpan span, RecordReader& filer, DrawingRecord& record,
                                       RecordHead& head);
/// The object has no record in what is written: it was erased, or an owner of it was, or it shows a block
/// that was.
bool isLeftOut(const AcDbObject& object);
/// Model space and the active paper space, whose entities stand in a section of their own.
bool isActiveSpace(const AcDbBlockTableRecord& block);

} // namespace hostkit
