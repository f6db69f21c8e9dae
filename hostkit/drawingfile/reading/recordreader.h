// Text filer, reading: one record's groups as values, by subclass; leaves out filing across records.
#pragma once

#include "dbfiler.h"
#include "drawingrecord.h"
#include "drawingtext.h"
#include "drawingversion.h"
#include "groupblock.h"

#include <string>

class AcDbEntity;

namespace hostkit {

AcDb::AcDbDwgVersion filerVersion(DrawingVersion version);
/// The reverse; 2013 for a version that is none of a drawing file.
DrawingVersion versionOfFiler(AcDb::AcDbDwgVersion version);

/// Hands the groups of one record to its class. Groups that were read and not rejected are marked in the
/// record as those of the class' part. What a class is given is told by the record alone, not by the form
/// that the file's header names:
/// - of a record with subclass marks, the groups behind the class' mark;
/// - where the record has not that mark, those that the classes before left of their groups;
/// - of a record without marks (R12, and careless programs), the groups that the classes before left.
class RecordReader final : public AcDbDxfFiler {
public:
    RecordReader(AcDbDatabase* database, const DrawingText& text, DrawingVersion version);

    void setForm(const DrawingText& text, DrawingVersion version);

    /// The record must outlive the reading. Its head is expected to be marked already (readHead).
    void begin(DrawingRecord& record);
    /// The look of an entity (layer, colour ...) that stands outside of its part and that no class has taken;
    /// many programs put it behind the mark of the entity's own class. To be called when the entity has its
    /// fields.
    void readLooseLook(AcDbEntity& entity);
    /// The parts that were begun since begin().
    const RecordParts& parts() const { return m_parts; }
    /// Names and handles are then not looked up in the drawing: every reference reads as null. For finding
    /// out whose groups are whose, which must not depend on what the drawing holds by now.
    void readWithoutDrawing() { m_looksUp = false; }

    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    AcDbDatabase* database() const override { return m_database; }
    AcDb::AcDbDwgVersion dwgVersion() const override { return m_version; }

    Acad::ErrorStatus readItem(AcDbDxfGroup& group) override;
    void pushBackItem() override;
    void rejectItem() override;
    bool hasSubclassMarks() const override { return m_record && m_record->hasMarks; }
    bool atSubclassData(const wchar_t* name) override;
    bool atEitherSubclass(const wchar_t* name, const wchar_t* other) override;
    bool recordOf(const AcDbDxfGroup& group, AcDbObjectId& record) const override;
    bool atEndOfObject() override;
    bool atExtendedData() override;
    AcDbObjectId objectIdOf(const AcDbDxfGroup& group) override;

    /// The group that the last failure came from; null when there was none.
    const RecordGroup* faultyGroup() const { return m_faulty; }
    const DrawingText& drawingText() const { return m_text; }

    /// The value of one group into the item; `next` are the groups behind it, for the y and z of a point, and
    /// `used` receives how many of them belong to it. Fails with eInvalidDxfCode.
    Acad::ErrorStatus valueOf(const RecordGroup* group, const RecordGroup* end, AcDbDxfGroup& item,
                              std::size_t& used);

private:
    Acad::ErrorStatus readPoint(const RecordGroup* group, const RecordGroup* end, AcDbDxfGroup& item,
                                std::size_t& used);
    Acad::ErrorStatus readInteger(const RecordGroup& group, AcDbDxfGroup& item);
    void setPart(std::size_t from, std::size_t to, RecordPart part);
    std::size_t skipTaken(std::size_t place) const;
    std::size_t findMark(const wchar_t* name) const;
    bool hasMark(const wchar_t* name) const;
    bool beginMarked(std::size_t mark, const wchar_t* name);
    bool beginLeftovers(const wchar_t* name);
    bool readLoose(AcDbEntity& entity, std::size_t place);

    AcDbDatabase* m_database;
    DrawingText m_text;
    AcDb::AcDbDwgVersion m_version;
    DrawingRecord* m_record = nullptr;
    RecordParts m_parts;
    RecordPart m_part = headPart;
    bool m_looksUp = true;
    std::size_t m_regionBegin = 0; // of the present part's groups, those that are taken among them
    std::size_t m_next = 0;        // index of the group that comes next
    std::size_t m_end = 0;         // of the present part
    std::size_t m_lastBegin = 0;   // the groups of the last item
    std::size_t m_lastEnd = 0;
    const RecordGroup* m_faulty = nullptr;
    std::wstring m_value;
};

/// The groups of a record that its object does not read through its class: extended data. Marks them as
/// taken; false, and nothing taken, where a value is damaged. With null the values themselves are not wanted.
bool readExtendedData(DrawingRecord& record, RecordReader& filer, GroupBlock* data);

} // namespace hostkit
