#include "filtergroups.h"

#include "dbdatabase.h"
#include "dbfiler.h"
#include "dbopaque.h"
#include "objectwriting.h"

#include "groupcodes.h"

namespace hostkit {

namespace {

/// Looks at what an entity files and keeps nothing of it.
class GroupWatcher final : public AcDbDxfFiler {
public:
    GroupWatcher(const GroupTests& tests, AcDbDatabase* database)
        : m_tests(tests)
        , m_database(database)
        , m_met(tests.size()) {}

    std::vector<bool> takeAnswers() { return std::move(m_met); }

    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    AcDbDatabase* database() const override { return m_database; }

    void writeText(short code, std::wstring_view text) override { look<WildcardPattern>(code, text); }
    void writeReal(short code, double value) override { look<RealTest>(code, value); }
    void writeAngle(short code, double radians) override { writeReal(code, radians); }
    void writeInteger(short code, Adesk::Int64 value) override { look<IntegerTest>(code, value); }
    void writeBinary(short, const void*, std::size_t) override {}
    void writeSubclassMark(const wchar_t* name) override { writeText(subclassMarkCode, name); }
    void writeHandle(short code, Adesk::UInt64 handle) override {
        if (m_tests.first(code) == GroupTests::none) return;
        wchar_t text[17];
        AcDbHandle(handle).getIntoAsciiBuffer(text);
        writeText(code, text);
    }
    void writePoint(short code, const double* coordinates, int dimension) override {
        const std::array<double, 3> point{coordinates[0], coordinates[1],
                                          dimension > 2 ? coordinates[2] : 0.0};
        look<PointTest>(code, point);
        look<CoordinatesTest>(code, point);
    }

private:
    template <class Test, class Value>
    void look(short code, const Value& value) {
        for (std::size_t at = m_tests.first(code); at != GroupTests::none; at = m_tests.next(at)) {
            const auto* const test = m_met[at] ? nullptr : std::get_if<Test>(&m_tests.test(at));
            if (test && matches(*test, value)) m_met[at] = true;
        }
    }
    static bool matches(const WildcardPattern& test, std::wstring_view text) { return test.matches(text); }
    template <class Test, class Value>
    static bool matches(const Test& test, const Value& value) {
        return test.takes(value);
    }

    const GroupTests& m_tests;
    AcDbDatabase* m_database;
    std::vector<bool> m_met;
};

/// By the published ranges, for kinds whose class is not known.
bool isAngle(short code) { return code >= 50 && code <= 58; }

/// The groups of an entity that only its record describes.
void watchRecord(const AcDbEntity& entity, GroupWatcher& watcher) {
    const auto source = entity.database() ? entity.database()->source() : nullptr;
    if (!source || entity.sourceSpan().isEmpty()) return;
    RecordReader reader(entity.database(), DrawingText(static_cast<CodePage>(source->codePage)),
                        versionOfFiler(source->version));
    reader.readWithoutDrawing();
    DrawingRecord record;
    RecordHead head;
    (void)markGroups(entity, source->bytes, entity.sourceSpan(), reader, record, head);
    const RecordGroup* group = record.groups.data() + 1;
    const RecordGroup* const end = record.groups.data() + record.extendedDataBegin;
    for (std::size_t used = 1; group < end; group += used) {
        used = 1;
        AcDbDxfGroup item;
        if (group->part != nobodysPart || reader.valueOf(group, end, item, used) != Acad::eOk) continue;
        if (isAngle(item.code)) item.real = reader.angleOf(item);
        watcher.writeGroup(item);
    }
}

} // namespace

std::size_t GroupTests::add(short code, ValueTest test) {
    const auto place = static_cast<std::size_t>(code);
    if (m_first.size() <= place) m_first.resize(place + 1, none);
    m_entries.push_back({std::move(test), m_first[place]});
    m_first[place] = m_entries.size() - 1;
    return m_first[place];
}

std::vector<bool> GroupTests::run(const AcDbEntity& entity) const {
    GroupWatcher watcher(*this, entity.database());
    watcher.writeId(ownerCode, entity.ownerId());
    (void)entity.dxfOutFields(&watcher);
    if (entity.isKindOf(AcDbOpaqueEntity::desc())) watchRecord(entity, watcher);
    return watcher.takeAnswers();
}

} // namespace hostkit
