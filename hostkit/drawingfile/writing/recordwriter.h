// Text filer, writing: one record from its object's fields, merged with the record it was read from; leaves
// out filing across records.
#pragma once

#include "dbfiler.h"
#include "drawingrecord.h"
#include "groupformat.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace hostkit {

class ReferenceChanges;

/// One group that an object filed. The value's text stands in the writer's arena.
struct FieldGroup {
    /// Whether the group goes into the record where the record that was read did not have it.
    enum class Presence : unsigned char { kAlways, kOnlyIfItWasThere, kOnlyInNewRecords };

    enum class Role : unsigned char { kValue, kMark, kRecordName };

    short code = 0;
    AcDb::GroupKind kind = AcDb::GroupKind::kText;
    Presence presence = Presence::kAlways;
    Role role = Role::kValue;
    bool isAsRead = false; ///< the old record, read and filed again, gives this value too
    unsigned char dimension = 0;
    RecordPart part = headPart; ///< of the writer's parts
    union {
        double point[3] = {0.0, 0.0, 0.0};
        double real;
        Adesk::Int64 integer;
    };
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;
};

/// Gathers the groups that an object files, then writes them as one record, alone or merged with the record
/// that the object was read from (see RecordMerge).
class RecordWriter final : public AcDbDxfFiler {
public:
    RecordWriter(AcDbDatabase* database, const DrawingStyle& style)
        : m_database(database)
        , m_style(style) {}

    /// A new record; what was gathered before is forgotten.
    void begin();
    /// What is gathered from here on is of that part, which is none of a class.
    void setPart(RecordPart part) { m_part = part; }
    /// New records get subclass marks whatever the form.
    void giveMarks() { m_givesMarks = true; }
    bool givesMarks() const { return m_givesMarks; }
    /// The records come from a form with true colours and go to one without.
    void loseTrueColors() { m_losesTrueColors = true; }
    bool losesTrueColors() const { return m_losesTrueColors; }
    /// Appends a record that no file had.
    void finish(std::string& bytes);
    /// References that the groups below and those that stay in a merged record are to follow; null for none.
    /// Not owned.
    void follow(const ReferenceChanges* changes) { m_changes = changes; }
    /// Tells which objects have a record in the file that is written. By default all have that are not
    /// erased.
    void setHasRecord(std::function<bool(AcDbObjectId)> hasRecord) { m_hasRecord = std::move(hasRecord); }
    bool files(AcDbObjectId object) const override {
        return AcDbDxfFiler::files(object) && (!m_hasRecord || m_hasRecord(object));
    }
    /// The texts gathered are those of groups that may name records: they get the names that these have by
    /// now.
    void renameTexts(std::string_view recordName);
    /// Marks the groups that are as another writer gathered them, part by part, where the part has the same
    /// codes in both.
    void markAsRead(const RecordWriter& asRead);

    std::size_t groupsFromFields() const { return m_groupsFromFields; }
    std::size_t groupsKept() const { return m_groupsKept; }
    void addCounts(const RecordWriter& other) {
        m_groupsFromFields += other.m_groupsFromFields;
        m_groupsKept += other.m_groupsKept;
    }

    /// The group written next stands only in records that are new, or that had it.
    void markOptional() override {
        if (m_presence == FieldGroup::Presence::kAlways) m_presence = FieldGroup::Presence::kOnlyInNewRecords;
    }

    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    AcDbDatabase* database() const override { return m_database; }
    AcDb::AcDbDwgVersion dwgVersion() const override;

    void markDefault() override { m_presence = FieldGroup::Presence::kOnlyIfItWasThere; }
    void writeText(short code, std::wstring_view text) override;
    void writeReal(short code, double value) override;
    void writePoint(short code, const double* coordinates, int dimension) override;
    void writeInteger(short code, Adesk::Int64 value) override;
    void writeHandle(short code, Adesk::UInt64 handle) override;
    void writeRecordName(short code, AcDbObjectId record, std::wstring_view name) override;
    void writeBinary(short code, const void* bytes, std::size_t size) override;
    void writeSubclassMark(const wchar_t* name) override;

private:
    friend class RecordMerge;
    FieldGroup& add(short code, AcDb::GroupKind kind);
    std::string_view textOf(const FieldGroup& group) const {
        return std::string_view(m_arena).substr(group.textBegin, group.textEnd - group.textBegin);
    }
    FieldGroup& group(std::ptrdiff_t place) { return m_groups[static_cast<std::size_t>(place)]; }
    const FieldGroup& group(std::ptrdiff_t place) const { return m_groups[static_cast<std::size_t>(place)]; }
    void format(const FieldGroup& group, std::string& bytes) const;

    AcDbDatabase* m_database;
    DrawingStyle m_style;
    std::vector<FieldGroup> m_groups;
    std::string m_arena;
    bool m_givesMarks = false;
    bool m_losesTrueColors = false;
    const ReferenceChanges* m_changes = nullptr;
    std::function<bool(AcDbObjectId)> m_hasRecord;
    RecordParts m_parts;
    RecordPart m_part = headPart;
    FieldGroup::Presence m_presence = FieldGroup::Presence::kAlways;
    std::size_t m_groupsFromFields = 0;
    std::size_t m_groupsKept = 0;
};

} // namespace hostkit
