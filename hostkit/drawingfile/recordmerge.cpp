#include "recordmerge.h"

#include "groupkinds.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

constexpr short subclassMarkCode = 100;
constexpr short applicationNameCode = 1001;
constexpr std::size_t codeLimit = tabledCodes;
// How far a step of the merge looks ahead for the counterpart of a group: more than the groups of a vertex or
// a hatch edge.
constexpr std::size_t lookAhead = 64;

bool isCodeKnown(int code) { return code >= 0 && code < static_cast<int>(codeLimit); }

} // namespace

RecordMerge::RecordMerge(RecordWriter& writer, const DrawingRecord& original, Scratch& scratch,
                         std::string& bytes)
    : m_writer(writer)
    , m_original(original)
    , m_bytes(bytes)
    , m_fields(scratch.fields)
    , m_oldItems(scratch.oldItems)
    , m_oldCounts(scratch.oldCounts)
    , m_newCounts(scratch.newCounts) {
    m_fields.clear();
    m_oldItems.clear();
    m_oldCounts.resize(codeLimit);
    m_newCounts.resize(codeLimit);
    m_fields.reserve(writer.m_groups.size());
    for (const FieldGroup& group : writer.m_groups)
        if (original.hasMarks || group.code != subclassMarkCode) m_fields.push_back(group);
    gatherOldItems();
}

void RecordMerge::gatherOldItems() {
    const std::vector<RecordGroup>& groups = m_original.groups;
    for (std::size_t place = 0; place < groups.size();) {
        OldItem item{place, 1, groups[place].code, groups[place].isTaken};
        if (AcDb::groupKind(item.code) == AcDb::GroupKind::kPoint)
            while (item.count < 3 && place + item.count < groups.size() &&
                   groups[place + item.count].code == item.code + static_cast<short>(item.count) * 10 &&
                   groups[place + item.count].isTaken == item.isTaken)
                ++item.count;
        item.isTaken = item.isTaken && isCodeKnown(item.code);
        m_oldItems.push_back(item);
        place += item.count;
    }
}

// A part begins at a subclass mark or where the extended data does; the first one is the head.
std::vector<RecordMerge::Part> RecordMerge::oldParts() const {
    std::vector<Part> parts{{0, 0}};
    bool inExtendedData = false;
    for (std::size_t place = 0; place < m_oldItems.size(); ++place) {
        const bool entersExtendedData =
            !inExtendedData && m_oldItems[place].first >= m_original.extendedDataBegin;
        if (entersExtendedData || (!inExtendedData && m_oldItems[place].code == subclassMarkCode)) {
            parts.back().end = place;
            parts.push_back({place, place});
        }
        inExtendedData = inExtendedData || entersExtendedData;
    }
    parts.back().end = m_oldItems.size();
    return parts;
}

std::vector<RecordMerge::Part> RecordMerge::newParts() const {
    std::vector<Part> parts{{0, 0}};
    bool inExtendedData = false;
    for (std::size_t place = 0; place < m_fields.size(); ++place) {
        const bool entersExtendedData = !inExtendedData && m_fields[place].code == applicationNameCode;
        if (entersExtendedData || (!inExtendedData && m_fields[place].code == subclassMarkCode)) {
            parts.back().end = place;
            parts.push_back({place, place});
        }
        inExtendedData = inExtendedData || entersExtendedData;
    }
    parts.back().end = m_fields.size();
    return parts;
}

bool RecordMerge::isSamePart(const Part& oldPart, const Part& newPart) const {
    const OldItem& old = m_oldItems[oldPart.begin];
    const FieldGroup& field = m_fields[newPart.begin];
    const bool oldIsExtendedData = old.first >= m_original.extendedDataBegin;
    if (oldIsExtendedData || field.code == applicationNameCode)
        return oldIsExtendedData && field.code == applicationNameCode;
    return old.code == field.code && old.isTaken && hasEqualText(m_original.groups[old.first], field);
}

void RecordMerge::run() {
    const std::vector<Part> olds = oldParts();
    const std::vector<Part> news = newParts();
    mergePart(olds.front(), news.front());
    std::size_t next = 1;
    for (std::size_t place = 1; place < olds.size(); ++place) {
        const bool isExtendedData = m_oldItems[olds[place].begin].first >= m_original.extendedDataBegin;
        std::size_t match = next;
        while (match < news.size() && !isSamePart(olds[place], news[match])) ++match;
        const bool isMatched = match < news.size();
        // Nothing may follow the extended data.
        if (isMatched || isExtendedData)
            for (; next < match; ++next) emitNewPart(news[next]);
        mergePart(olds[place], isMatched ? news[next++] : Part{0, 0});
    }
    for (; next < news.size(); ++next) emitNewPart(news[next]);
}

void RecordMerge::emitNewPart(Part newPart) {
    for (std::size_t place = newPart.begin; place < newPart.end; ++place)
        if (m_fields[place].presence == Presence::kAlways) emitNew(place);
}

void RecordMerge::count(Part oldPart, Part newPart, int step) {
    for (std::size_t place = oldPart.begin; place < oldPart.end; ++place)
        if (m_oldItems[place].isTaken) oldCount(m_oldItems[place].code) += step;
    for (std::size_t place = newPart.begin; place < newPart.end; ++place)
        newCount(m_fields[place].code) += step;
}

bool RecordMerge::eachCodeIsOnce(Part oldPart, Part newPart) {
    const auto oldBegin = m_oldItems.begin() + static_cast<std::ptrdiff_t>(oldPart.begin);
    const auto oldEnd = m_oldItems.begin() + static_cast<std::ptrdiff_t>(oldPart.end);
    const auto newBegin = m_fields.begin() + static_cast<std::ptrdiff_t>(newPart.begin);
    const auto newEnd = m_fields.begin() + static_cast<std::ptrdiff_t>(newPart.end);
    return std::all_of(oldBegin, oldEnd,
                       [&](const OldItem& item) { return !item.isTaken || oldCount(item.code) == 1; }) &&
           std::all_of(newBegin, newEnd, [&](const FieldGroup& group) { return newCount(group.code) == 1; });
}

void RecordMerge::mergePart(Part oldPart, Part newPart) {
    count(oldPart, newPart, 1);
    if (eachCodeIsOnce(oldPart, newPart))
        mergeInOldOrder(oldPart, newPart);
    else
        mergeInNewOrder(oldPart, newPart);
    count(oldPart, newPart, -1);
}

// A field that the old record lacks goes behind the field that the object files before it.
void RecordMerge::mergeInOldOrder(Part oldPart, Part newPart) {
    for (std::size_t place = oldPart.begin; place < oldPart.end; ++place) {
        const OldItem& item = m_oldItems[place];
        if (!item.isTaken) {
            emitOld(item);
            continue;
        }
        std::size_t match = newPart.begin;
        while (match < newPart.end && m_fields[match].code != item.code) ++match;
        if (match == newPart.end) continue;
        emitMatched(item, match);
        for (std::size_t next = match + 1; next < newPart.end && oldCount(m_fields[next].code) == 0; ++next)
            if (m_fields[next].presence == Presence::kAlways) emitNew(next);
    }
}

std::size_t RecordMerge::distanceInOld(std::size_t place, std::size_t end, short code) const {
    const std::size_t limit = std::min(end, place + lookAhead);
    for (std::size_t next = place; next < limit; ++next)
        if (m_oldItems[next].isTaken && m_oldItems[next].code == code) return next - place;
    return nowhere;
}

std::size_t RecordMerge::distanceInNew(std::size_t place, std::size_t end, short code) const {
    const std::size_t limit = std::min(end, place + lookAhead);
    for (std::size_t next = place; next < limit; ++next)
        if (m_fields[next].code == code) return next - place;
    return nowhere;
}

void RecordMerge::mergeInNewOrder(Part oldPart, Part newPart) {
    std::size_t oldPlace = oldPart.begin;
    std::size_t newPlace = newPart.begin;
    while (oldPlace < oldPart.end || newPlace < newPart.end) {
        if (oldPlace < oldPart.end && !m_oldItems[oldPlace].isTaken)
            emitOld(m_oldItems[oldPlace++]);
        else if (newPlace == newPart.end)
            ++oldPlace;
        else if (oldPlace == oldPart.end) {
            if (m_fields[newPlace].presence == Presence::kAlways) emitNew(newPlace);
            ++newPlace;
        } else if (!stepNewOrder(oldPlace, oldPart, newPlace, newPart)) {
            ++oldPlace;
        }
    }
}

// One step where both sides have a group. False: the old group has no counterpart and goes.
bool RecordMerge::stepNewOrder(std::size_t& oldPlace, Part oldPart, std::size_t& newPlace, Part newPart) {
    const OldItem& item = m_oldItems[oldPlace];
    const FieldGroup& group = m_fields[newPlace];
    if (item.code == group.code) {
        emitMatched(item, newPlace++);
        ++oldPlace;
        return true;
    }
    const std::size_t ahead = distanceInOld(oldPlace, oldPart.end, group.code);
    const std::size_t wait = distanceInNew(newPlace, newPart.end, item.code);
    const bool isPaired = oldCount(group.code) == newCount(group.code);
    if (group.presence != Presence::kAlways && !isPaired && (ahead == nowhere || wait != nowhere)) {
        ++newPlace;
        return true;
    }
    if (ahead == nowhere || (wait != nowhere && wait <= ahead)) {
        emitNew(newPlace++);
        return true;
    }
    return false;
}

void RecordMerge::emitOld(const OldItem& item) {
    for (std::size_t place = item.first; place < item.first + item.count; ++place)
        m_bytes += m_original.groups[place].bytes();
    if (item.code != 0) ++m_groupsKept; // the record's name is nobody's field
}

void RecordMerge::emitNew(std::size_t place) {
    m_writer.format(m_fields[place], m_bytes);
    ++m_groupsFromFields;
}

void RecordMerge::emitMatched(const OldItem& item, std::size_t place) {
    ++m_groupsFromFields;
    if (!m_fields[place].isAsRead && !hasEqualValue(item, m_fields[place])) {
        m_writer.format(m_fields[place], m_bytes);
        return;
    }
    for (std::size_t old = item.first; old < item.first + item.count; ++old)
        m_bytes += m_original.groups[old].bytes();
}

bool RecordMerge::hasEqualText(const RecordGroup& old, const FieldGroup& group) const {
    const std::string_view text = m_writer.textOf(group);
    if (old.value == text) return true;
    const DrawingText& encoding = m_writer.m_style.text;
    std::string again;
    encoding.encode(encoding.decode(old.value), again);
    // Names may have blanks around them, which are no part of the name.
    return again == text || withoutBlanks(again) == text;
}

bool RecordMerge::hasEqualValue(const OldItem& item, const FieldGroup& group) const {
    const RecordGroup* const old = &m_original.groups[item.first];
    switch (group.kind) {
    case AcDb::GroupKind::kText:
        return hasEqualText(*old, group);
    case AcDb::GroupKind::kBinary:
        return withoutBlanks(old->value) == m_writer.textOf(group);
    case AcDb::GroupKind::kReal:
        return realFromText(old->value) == group.real;
    case AcDb::GroupKind::kHandle:
        if (group.integer == 0 && withoutBlanks(old->value).empty()) return true;
        return handleFromText(old->value) == static_cast<std::uint64_t>(group.integer);
    case AcDb::GroupKind::kPoint: {
        // A missing z is zero; a plane point's record may have a z of its own, which stays.
        const std::size_t dimension = std::max<std::size_t>(group.dimension, 1);
        for (std::size_t axis = 0; axis < dimension; ++axis) {
            const std::optional<double> value = axis < item.count ? realFromText(old[axis].value) : 0.0;
            if (value != group.point[axis]) return false;
        }
        return true;
    }
    default:
        return integerFromText(old->value) == group.integer;
    }
}

} // namespace hostkit
