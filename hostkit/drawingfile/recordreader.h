// Stand-in for the host's text filer, reading. Covers one record's groups as values, by subclass; leaves out filing across records.
#pragma once

#include "dbfiler.h"
#include "drawingrecord.h"
#include "drawingtext.h"
#include "drawingversion.h"

#include <string>

namespace hostkit {

AcDb::AcDbDwgVersion filerVersion(DrawingVersion version);
/// The reverse; 2013 for a version that is none of a drawing file.
DrawingVersion versionOfFiler(AcDb::AcDbDwgVersion version);

/// Hands the groups of one record to its class. Groups that were read and not rejected are marked as taken in
/// the record. Where the record has no subclass marks (R12, and careless writers of later forms) each class
/// of an object sees the groups that the classes above it did not take.
class RecordReader final : public AcDbDxfFiler {
public:
    RecordReader(AcDbDatabase* database, const DrawingText& text, DrawingVersion version);

    void setForm(const DrawingText& text, DrawingVersion version);

    /// The record must outlive the reading. Its handle, owner and application groups (the head) are expected
    /// to be marked as taken already.
    void begin(DrawingRecord& record);

    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    AcDbDatabase* database() const override { return m_database; }
    AcDb::AcDbDwgVersion dwgVersion() const override { return m_version; }

    Acad::ErrorStatus readItem(AcDbDxfGroup& group) override;
    void pushBackItem() override;
    void rejectItem() override;
    bool atSubclassData(const wchar_t* name) override;
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
    void setTaken(std::size_t from, std::size_t to, bool isTaken);
    std::size_t skipTaken(std::size_t place) const;

    AcDbDatabase* m_database;
    DrawingText m_text;
    AcDb::AcDbDwgVersion m_version;
    DrawingRecord* m_record = nullptr;
    std::size_t m_next = 0;      // index of the group that comes next
    std::size_t m_end = 0;       // of the present part
    std::size_t m_lastBegin = 0; // the groups of the last item
    std::size_t m_lastEnd = 0;
    const RecordGroup* m_faulty = nullptr;
    std::wstring m_value;
    std::wstring m_markName;
};

} // namespace hostkit
