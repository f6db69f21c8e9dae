// Stand-in for the host's text filer, writing. Covers one record from its object's fields, merged with the record it was read from; leaves out filing across records.
#pragma once

#include "dbfiler.h"
#include "drawingrecord.h"
#include "groupformat.h"

#include <memory>
#include <string>
#include <vector>

namespace hostkit {

/// One group that an object filed. The value's text stands in the writer's arena.
struct FieldGroup {
    /// Whether the group goes into the record where the record that was read did not have it.
    enum class Presence : unsigned char { kAlways, kOnlyIfItWasThere, kOnlyInNewRecords };

    short code = 0;
    AcDb::GroupKind kind = AcDb::GroupKind::kText;
    Presence presence = Presence::kAlways;
    bool isAsRead = false; ///< the old record, read and filed again, gives this value too
    unsigned char dimension = 0;
    union {
        double point[3] = {0.0, 0.0, 0.0};
        double real;
        Adesk::Int64 integer;
    };
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;
};

/// Gathers the groups that an object files, then writes them as one record. With the record that the object
/// was read from (its groups marked by a RecordReader), the two are merged subclass by subclass:
/// - a group that no class took stays where it stood;
/// - a value that is equal to the one that stood there keeps its spelling;
/// - a taken group that the object no longer files goes;
/// - groups keep the order of the old record where each code stands there once, else they have the object's
/// order.
class RecordWriter final : public AcDbDxfFiler {
public:
    RecordWriter(AcDbDatabase* database, const DrawingStyle& style);
    ~RecordWriter() override;

    /// A new record; what was gathered before is forgotten.
    void begin();
    /// Appends the record. `original` may be null.
    void finish(const DrawingRecord* original, std::string& bytes);

    /// Keeps what was gathered since begin(), for compareWithRemembered.
    void rememberFields();
    void forgetFields() { m_remembered.clear(); }
    std::size_t fieldCount() const { return m_groups.size(); }
    /// Marks the groups from `first` on that are as remembered, where both are the same groups.
    void compareWithRemembered(std::size_t first);

    std::size_t groupsFromFields() const { return m_groupsFromFields; }
    std::size_t groupsKept() const { return m_groupsKept; }

    /// The group written next stands only in records that are new, or that had it.
    void markOptional() override { m_presence = FieldGroup::Presence::kOnlyInNewRecords; }

    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    AcDbDatabase* database() const override { return m_database; }
    AcDb::AcDbDwgVersion dwgVersion() const override;

    void markDefault() override { m_presence = FieldGroup::Presence::kOnlyIfItWasThere; }
    void writeText(short code, std::wstring_view text) override;
    void writeReal(short code, double value) override;
    void writePoint(short code, const double* coordinates, int dimension) override;
    void writeInteger(short code, Adesk::Int64 value) override;
    void writeHandle(short code, Adesk::UInt64 handle) override;
    void writeBinary(short code, const void* bytes, std::size_t size) override;
    void writeSubclassMark(const wchar_t* name) override;

private:
    friend class RecordMerge;
    FieldGroup& add(short code, AcDb::GroupKind kind);
    std::string_view textOf(const FieldGroup& group) const {
        return std::string_view(m_arena).substr(group.textBegin, group.textEnd - group.textBegin);
    }
    void format(const FieldGroup& group, std::string& bytes) const;

    AcDbDatabase* m_database;
    DrawingStyle m_style;
    std::vector<FieldGroup> m_groups;
    std::string m_arena;
    std::vector<FieldGroup> m_remembered;
    std::string m_rememberedArena;
    FieldGroup::Presence m_presence = FieldGroup::Presence::kAlways;
    struct MergeRoom;
    std::unique_ptr<MergeRoom> m_mergeRoom;
    std::size_t m_groupsFromFields = 0;
    std::size_t m_groupsKept = 0;
};

} // namespace hostkit
