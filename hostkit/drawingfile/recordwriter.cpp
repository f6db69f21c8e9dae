#include "recordwriter.h"

#include "groupkinds.h"
#include "recordmerge.h"
#include "recordreader.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace hostkit {

namespace {

constexpr short subclassMarkCode = 100;

} // namespace

struct RecordWriter::MergeRoom : RecordMerge::Scratch {};

RecordWriter::RecordWriter(AcDbDatabase* database, const DrawingStyle& style)
    : m_database(database)
    , m_style(style)
    , m_mergeRoom(std::make_unique<MergeRoom>()) {}

RecordWriter::~RecordWriter() = default;

AcDb::AcDbDwgVersion RecordWriter::dwgVersion() const { return filerVersion(m_style.version); }

void RecordWriter::begin() {
    resetFilerStatus();
    m_groups.clear();
    m_arena.clear();
    m_presence = FieldGroup::Presence::kAlways;
}

void RecordWriter::rememberFields() {
    m_remembered.swap(m_groups);
    m_rememberedArena.swap(m_arena);
}

void RecordWriter::compareWithRemembered(std::size_t first) {
    const auto sameCode = [](const FieldGroup& left, const FieldGroup& right) {
        return left.code == right.code;
    };
    if (!std::equal(m_groups.begin() + static_cast<std::ptrdiff_t>(first), m_groups.end(),
                    m_remembered.begin(), m_remembered.end(), sameCode))
        return;
    for (std::size_t place = 0; place < m_remembered.size(); ++place) {
        const FieldGroup& old = m_remembered[place];
        FieldGroup& group = m_groups[first + place];
        const std::string_view oldText =
            std::string_view(m_rememberedArena).substr(old.textBegin, old.textEnd - old.textBegin);
        group.isAsRead =
            std::memcmp(old.point, group.point, sizeof old.point) == 0 && oldText == textOf(group);
    }
}

FieldGroup& RecordWriter::add(short code, AcDb::GroupKind kind) {
    if (code < 0 || code > lastGroupCode)
        setError(Acad::eInvalidDxfCode, L"%d is no group code", static_cast<int>(code));
    FieldGroup& group = m_groups.emplace_back();
    group.code = code;
    group.kind = kind;
    group.presence = m_presence;
    m_presence = FieldGroup::Presence::kAlways;
    return group;
}

void RecordWriter::writeText(short code, std::wstring_view text) {
    FieldGroup& group = add(code, AcDb::GroupKind::kText);
    group.textBegin = m_arena.size();
    m_style.text.encode(text, m_arena);
    group.textEnd = m_arena.size();
}

void RecordWriter::writeReal(short code, double value) {
    if (!std::isfinite(value)) setError(Acad::eInvalidInput, L"the value of group %d is no number", code);
    add(code, AcDb::GroupKind::kReal).real = value;
}

void RecordWriter::writePoint(short code, const double* coordinates, int dimension) {
    if (!std::all_of(coordinates, coordinates + dimension, [](double value) { return std::isfinite(value); }))
        setError(Acad::eInvalidInput, L"a coordinate of group %d is no number", code);
    FieldGroup& group = add(code, AcDb::GroupKind::kPoint);
    group.dimension = static_cast<unsigned char>(dimension);
    std::copy_n(coordinates, dimension, group.point);
}

void RecordWriter::writeInteger(short code, Adesk::Int64 value) {
    add(code, AcDb::groupKind(code)).integer = value;
}

void RecordWriter::writeHandle(short code, Adesk::UInt64 handle) {
    add(code, AcDb::GroupKind::kHandle).integer = static_cast<Adesk::Int64>(handle);
}

void RecordWriter::writeBinary(short code, const void* bytes, std::size_t size) {
    constexpr char digits[] = "0123456789ABCDEF";
    FieldGroup& group = add(code, AcDb::GroupKind::kBinary);
    group.textBegin = m_arena.size();
    for (const auto* byte = static_cast<const unsigned char*>(bytes); size > 0; --size, ++byte) {
        m_arena += digits[*byte >> 4];
        m_arena += digits[*byte & 15];
    }
    group.textEnd = m_arena.size();
}

void RecordWriter::writeSubclassMark(const wchar_t* name) {
    if (!isR12Form()) writeText(subclassMarkCode, name);
}

void RecordWriter::format(const FieldGroup& group, std::string& bytes) const {
    switch (group.kind) {
    case AcDb::GroupKind::kPoint:
        for (int axis = 0; axis < group.dimension; ++axis)
            appendReal(group.code + axis * 10, group.point[axis], m_style, bytes);
        return;
    case AcDb::GroupKind::kReal:
        return appendReal(group.code, group.real, m_style, bytes);
    case AcDb::GroupKind::kHandle:
        return appendHandle(group.code, static_cast<std::uint64_t>(group.integer), m_style, bytes);
    case AcDb::GroupKind::kText:
    case AcDb::GroupKind::kBinary:
        return appendGroup(group.code, textOf(group), m_style, bytes);
    default:
        return appendInteger(group.code, group.integer, m_style, bytes);
    }
}

void RecordWriter::finish(const DrawingRecord* original, std::string& bytes) {
    if (original) {
        RecordMerge merge(*this, *original, *m_mergeRoom, bytes);
        merge.run();
        m_groupsFromFields += merge.groupsFromFields();
        m_groupsKept += merge.groupsKept();
        return;
    }
    for (const FieldGroup& group : m_groups) {
        if (group.presence == FieldGroup::Presence::kOnlyIfItWasThere) continue;
        format(group, bytes);
        ++m_groupsFromFields;
    }
}

} // namespace hostkit
