#include "recordmerge.h"

#include "casefold.h"
#include "groupcodes.h"
#include "groupkinds.h"
#include "referencechanges.h"

#include <algorithm>
#include <numeric>

namespace hostkit {

namespace {

constexpr short firstOwnerCode = 350; // of handles of what an object owns
constexpr short lastOwnerCode = 369;
constexpr std::size_t noField = static_cast<std::size_t>(-1);
// How far a step of the merge looks ahead for the counterpart of a group: more than the groups of a vertex or
// a hatch edge.
constexpr std::size_t lookAhead = 64;

// The spaces' blocks have a dollar sign in R12 and an asterisk since; some programs take the one for the
// other.
bool isSameName(std::wstring old, std::wstring_view text) {
    const bool isOfSpace = equalFolded(text, L"$MODEL_SPACE") || equalFolded(text, L"$PAPER_SPACE");
    if (isOfSpace && !old.empty() && old.front() == L'*') old.front() = L'$';
    return equalFolded(old, text);
}

bool isCodeKnown(int code) { return code >= 0 && code < static_cast<int>(tabledCodes); }

} // namespace

RecordMerge::RecordMerge(RecordWriter& writer, const DrawingRecord& original, const RecordParts& oldParts,
                         std::function<const RecordWriter&()> readAgain, MergeRoom& room, std::string& bytes)
    : m_writer(writer)
    , m_original(original)
    , m_oldParts(oldParts)
    , m_readAgain(std::move(readAgain))
    , m_room(room)
    , m_bytes(bytes) {
    m_room.items.clear();
    m_room.insertions.clear();
    m_room.counts.resize(tabledCodes);
    if (m_room.itemsOfParts.size() < oldParts.limit()) m_room.itemsOfParts.resize(oldParts.limit());
    for (std::vector<std::size_t>& items : m_room.itemsOfParts) items.clear();
    gatherOldItems();
}

void RecordMerge::gatherOldItems() {
    const std::vector<RecordGroup>& groups = m_original.groups;
    unsigned short region = 0;
    bool isBehindEmbedded = false;
    for (std::size_t place = 0; place < groups.size();) {
        const RecordGroup& group = groups[place];
        if (place == m_original.extendedDataBegin || group.code == subclassMarkCode) {
            if (place <= m_original.extendedDataBegin) ++region;
            isBehindEmbedded = false;
        }
        isBehindEmbedded = isBehindEmbedded || group.code == embeddedObjectCode;
        OldItem item{place, 1, group.part, group.code, region, isBehindEmbedded, noField, 0};
        if (AcDb::groupKind(item.code) == AcDb::GroupKind::kPoint)
            while (item.count < 3 && place + item.count < groups.size() &&
                   groups[place + item.count].code == item.code + static_cast<short>(item.count) * 10 &&
                   groups[place + item.count].part == item.part)
                ++item.count;
        if (item.part >= headPart && isCodeKnown(item.code) && place > 0)
            m_room.itemsOfParts[item.part].push_back(m_room.items.size());
        else
            item.part = nobodysPart;
        m_room.items.push_back(item);
        place += item.count;
    }
}

void RecordMerge::run() {
    const std::vector<FieldGroup>& fields = m_writer.m_groups;
    for (std::size_t begin = 0; begin < fields.size();) {
        const RecordPart part = fields[begin].part;
        Part whole{begin, begin, nullptr};
        while (whole.end < fields.size() && fields[whole.end].part == part) ++whole.end;
        const RecordPart old = m_writer.m_parts.counterpart(part, m_oldParts);
        if (old != nobodysPart && !m_room.itemsOfParts[old].empty()) whole.items = &m_room.itemsOfParts[old];
        begin = whole.end;
        mergePart(whole);
    }
    emit();
}

void RecordMerge::mergePart(Part part) {
    const bool isExtendedData = field(part.begin).part == extendedPart;
    if (isExtendedData && !part.items) m_anchor = m_room.items.size() - 1;
    const bool beginsWithMark = field(part.begin).role == Role::kMark;
    if (!part.items) return insertPart(part);
    if (beginsWithMark) {
        const OldItem& first = m_room.items[part.items->front()];
        const bool hasMark = first.code == subclassMarkCode;
        // The mark keeps its spelling; a part whose mark was forgotten stays without.
        if (hasMark) m_room.items[part.items->front()].field = part.begin;
        if (m_original.hasMarks) m_anchor = part.items->front() - (hasMark ? 0 : 1);
        ++part.begin;
    }
    count(part);
    keepDoubles(part);
    if (eachCodeIsOnce(part))
        alignByCode(part);
    else
        alignInOrder(part);
    uncount(part);
}

// A part that says nothing but its name is not worth a mark.
void RecordMerge::insertPart(const Part& part) {
    const bool saysSomething = std::any_of(
        m_writer.m_groups.begin() + static_cast<std::ptrdiff_t>(part.begin),
        m_writer.m_groups.begin() + static_cast<std::ptrdiff_t>(part.end),
        [this](const FieldGroup& group) { return group.role != Role::kMark && isInserted(group); });
    if (!saysSomething) return;
    if (m_original.hasMarks) m_anchor = endOfRegion(m_anchor);
    for (std::size_t place = part.begin; place < part.end; ++place) {
        if (field(place).role == Role::kMark && !m_original.hasMarks) continue;
        if (isInserted(field(place))) m_room.insertions.push_back({m_anchor, place});
    }
}

std::size_t RecordMerge::endOfRegion(std::size_t item) const {
    const unsigned short region = m_room.items[item].region;
    while (item + 1 < m_room.items.size() && m_room.items[item + 1].region == region) ++item;
    return item;
}

void RecordMerge::count(const Part& part) {
    for (const std::size_t item : *part.items) {
        MergeRoom::CodeCount& counted = countOf(m_room.items[item].code);
        ++counted.oldItems;
        counted.lastItem = item;
    }
    for (std::size_t place = part.begin; place < part.end; ++place) {
        MergeRoom::CodeCount& counted = countOf(field(place).code);
        ++counted.fields;
        counted.lastField = place;
    }
}

void RecordMerge::uncount(const Part& part) {
    for (const std::size_t item : *part.items) countOf(m_room.items[item].code) = {};
    for (std::size_t place = part.begin; place < part.end; ++place) countOf(field(place).code) = {};
}

bool RecordMerge::eachCodeIsOnce(const Part& part) const {
    return std::all_of(part.items->begin(), part.items->end(),
                       [&](std::size_t item) { return countOf(m_room.items[item].code).oldItems == 1; }) &&
           std::all_of(m_writer.m_groups.begin() + static_cast<std::ptrdiff_t>(part.begin),
                       m_writer.m_groups.begin() + static_cast<std::ptrdiff_t>(part.end),
                       [&](const FieldGroup& group) { return countOf(group.code).fields == 1; });
}

void RecordMerge::match(std::size_t item, std::size_t place) {
    m_room.items[item].field = place;
    m_anchor = item;
}

// A value that nobody could read (an unknown colour) makes room for one that can be.
bool RecordMerge::replaceUnread(std::size_t place) {
    const FieldGroup& group = field(place);
    if (group.part < firstClassPart || countOf(group.code).fields != 1) return false;
    const unsigned short region = m_room.items[m_anchor].region;
    for (std::size_t item = 1; item < m_room.items.size(); ++item) {
        OldItem& old = m_room.items[item];
        if (old.code != group.code || old.part != nobodysPart || old.isBehindEmbedded ||
            old.region != region || old.field != noField || m_original.groups[old.first].part == foreignPart)
            continue;
        match(item, place);
        return true;
    }
    return false;
}

bool RecordMerge::isInserted(const FieldGroup& group) const {
    return group.presence == Presence::kAlways ||
           (m_isCopy && group.part < extendedPart && group.presence == Presence::kOnlyInNewRecords);
}

void RecordMerge::insert(std::size_t place) {
    // A record may have a true colour without the nearest index; a new colour comes with both, and so does
    // the old one in a form that knows the index alone.
    const MergeRoom::CodeCount trueColor = countOf(trueColorCode);
    if (field(place).code == colorCode && trueColor.oldItems != 0 && trueColor.fields != 0 &&
        !m_writer.losesTrueColors() &&
        keepsOldBytes(m_room.items[trueColor.lastItem], field(trueColor.lastField)))
        return;
    if (isInserted(field(place)) && !replaceUnread(place)) m_room.insertions.push_back({m_anchor, place});
}

void RecordMerge::alignByCode(const Part& part) {
    for (std::size_t place = part.begin; place < part.end; ++place) {
        const MergeRoom::CodeCount& counted = countOf(field(place).code);
        if (counted.oldItems != 0)
            match(counted.lastItem, place);
        else
            insert(place);
    }
}

std::size_t RecordMerge::distanceInOld(const Part& part, std::size_t place, short code) const {
    const std::size_t limit = std::min(part.items->size(), place + lookAhead);
    for (std::size_t next = place; next < limit; ++next)
        if (m_room.items[(*part.items)[next]].code == code) return next - place;
    return nowhere;
}

std::size_t RecordMerge::distanceInNew(const Part& part, std::size_t place, short code) const {
    const std::size_t limit = std::min(part.end, place + lookAhead);
    for (std::size_t next = place; next < limit; ++next)
        if (field(next).code == code) return next - place;
    return nowhere;
}

bool RecordMerge::hasMixedPoints(const Part& part) const {
    unsigned dimensions = 0;
    for (const std::size_t item : *part.items)
        if (AcDb::groupKind(m_room.items[item].code) == AcDb::GroupKind::kPoint)
            dimensions |= 1U << m_room.items[item].count;
    for (std::size_t place = part.begin; place < part.end; ++place)
        if (field(place).kind == AcDb::GroupKind::kPoint) dimensions |= 1U << field(place).dimension;
    return (dimensions & (dimensions - 1)) != 0;
}

// Where points stand with and without z, a list that has become longer or shorter sets the one in the place
// of the other. What the object files for the points of the old record tells them apart.
void RecordMerge::learnDimensions(const Part& part) {
    if (!hasMixedPoints(part) || !asRead()) return;
    const RecordPart own = m_writer.m_parts.counterpart(field(part.begin).part, m_asRead->m_parts);
    const auto isPoint = [own](const FieldGroup& group) {
        return group.part == own && group.kind == AcDb::GroupKind::kPoint;
    };
    auto filed = std::find_if(m_asRead->m_groups.begin(), m_asRead->m_groups.end(), isPoint);
    for (const std::size_t item : *part.items) {
        OldItem& old = m_room.items[item];
        if (AcDb::groupKind(old.code) != AcDb::GroupKind::kPoint) continue;
        if (filed == m_asRead->m_groups.end() || filed->code != old.code) return;
        old.filed = filed->dimension;
        filed = std::find_if(filed + 1, m_asRead->m_groups.end(), isPoint);
    }
}

void RecordMerge::alignInOrder(const Part& part) {
    learnDimensions(part);
    std::size_t oldPlace = 0;
    const auto isSettled = [&] {
        const OldItem& old = m_room.items[(*part.items)[oldPlace]];
        return old.field != noField || old.part == nobodysPart;
    };
    std::size_t newPlace = part.begin;
    while (newPlace < part.end) {
        while (oldPlace < part.items->size() && isSettled()) ++oldPlace;
        if (oldPlace == part.items->size())
            insert(newPlace++);
        else if (!stepInOrder(part, oldPlace, newPlace))
            m_anchor = (*part.items)[oldPlace++];
    }
}

// One step where both sides have a group. False: the old group has no counterpart and goes.
bool RecordMerge::stepInOrder(const Part& part, std::size_t& oldPlace, std::size_t& newPlace) {
    const OldItem& item = m_room.items[(*part.items)[oldPlace]];
    const FieldGroup& group = field(newPlace);
    if (item.code == group.code) {
        match((*part.items)[oldPlace++], newPlace++);
        return true;
    }
    const std::size_t ahead = distanceInOld(part, oldPlace, group.code);
    const std::size_t wait = distanceInNew(part, newPlace, item.code);
    const bool isPaired = countOf(group.code).oldItems == countOf(group.code).fields;
    if (group.presence != Presence::kAlways && !isPaired && (ahead == nowhere || wait != nowhere)) {
        ++newPlace;
        return true;
    }
    if (ahead == nowhere || (wait != nowhere && wait <= ahead)) {
        insert(newPlace++);
        return true;
    }
    return false;
}

std::vector<std::size_t> RecordMerge::orderInFile() const {
    std::vector<std::size_t> order(m_room.items.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        return m_original.groups[m_room.items[left].first].start <
               m_original.groups[m_room.items[right].first].start;
    });
    return order;
}

void RecordMerge::emit() {
    const auto isBefore = [](const MergeRoom::Insertion& left, const MergeRoom::Insertion& right) {
        return left.behind < right.behind;
    };
    std::stable_sort(m_room.insertions.begin(), m_room.insertions.end(), isBefore);
    auto next = m_room.insertions.begin();
    // What stands behind extended data in the file stays there.
    std::vector<std::size_t> order;
    if (m_original.isRearranged) order = orderInFile();
    for (std::size_t place = 0; place < m_room.items.size(); ++place) {
        const std::size_t item = order.empty() ? place : order[place];
        const OldItem& old = m_room.items[item];
        if (!order.empty())
            next = std::find_if(m_room.insertions.begin(), m_room.insertions.end(),
                                [item](const MergeRoom::Insertion& each) { return each.behind == item; });
        if (old.field != noField)
            emitMatched(old);
        else if (old.part == nobodysPart)
            emitOld(old);
        else
            m_hasNewColor = m_hasNewColor || old.code == trueColorCode;
        for (; next != m_room.insertions.end() && next->behind == item; ++next) {
            m_writer.format(field(next->field), m_bytes);
            ++m_writer.m_groupsFromFields;
        }
    }
}

void RecordMerge::emitOld(const OldItem& item) {
    const bool isOwning = item.code >= firstOwnerCode && item.code <= lastOwnerCode;
    const bool isOthers = m_original.groups[item.first].part == foreignPart || item.code == commentCode;
    if (m_isCopy && (isOwning || isOthers)) return;
    if (m_hasNewColor && item.code == colorNameCode && item.first < m_original.extendedDataBegin) return;
    using Fate = ReferenceChanges::Fate;
    std::string value;
    for (std::size_t place = item.first; place < item.first + item.count; ++place) {
        const RecordGroup& group = m_original.groups[place];
        const Fate fate = m_writer.m_changes
                              ? m_writer.m_changes->fateOf(m_original, place, m_writer.m_style.text, value)
                              : Fate::kStays;
        if (fate == Fate::kStays)
            m_bytes += group.bytes();
        else if (fate == Fate::kHasNewValue)
            appendGroup(group.code, value, m_writer.m_style, m_bytes);
    }
    if (item.code != 0) ++m_writer.m_groupsKept; // the record's name is nobody's field
}

void RecordMerge::emitMatched(const OldItem& item) {
    const FieldGroup& group = field(item.field);
    ++m_writer.m_groupsFromFields;
    if (isOtherPoint(item, group)) return m_writer.format(group, m_bytes);
    std::size_t kept = item.first;
    if (!keepsOldBytes(item, group)) {
        m_hasNewColor = m_hasNewColor || item.code == colorCode || item.code == trueColorCode;
        m_writer.format(withDimensionOf(item, group), m_bytes);
        // A point of a plane has no z; one that stood there stays.
        kept += group.kind == AcDb::GroupKind::kPoint ? group.dimension : item.count;
    }
    for (std::size_t old = kept; old < item.first + item.count; ++old)
        m_bytes += m_original.groups[old].bytes();
}

// Where the record did without a z, one of nought is not written.
FieldGroup RecordMerge::withDimensionOf(const OldItem& item, const FieldGroup& group) const {
    FieldGroup result = group;
    if (group.kind != AcDb::GroupKind::kPoint) return result;
    while (result.dimension > item.count && result.point[result.dimension - 1] == 0.0) --result.dimension;
    return result;
}

bool RecordMerge::keepsOldBytes(const OldItem& item, const FieldGroup& group) {
    if (group.role == Role::kMark || hasEqualValue(item, group)) return true;
    if (group.role != Role::kRecordName) (void)asRead();
    return group.isAsRead;
}

const RecordWriter* RecordMerge::asRead() {
    if (m_readAgain) m_asRead = &std::exchange(m_readAgain, nullptr)();
    return m_asRead;
}

bool RecordMerge::wasSingle(const FieldGroup& group) {
    if (!asRead()) return false;
    const RecordPart part = m_writer.m_parts.counterpart(group.part, m_asRead->m_parts);
    return std::count_if(m_asRead->m_groups.begin(), m_asRead->m_groups.end(), [&](const FieldGroup& each) {
               return each.code == group.code && each.part == part;
           }) == 1;
}

// Where a record has a group twice that stands for one value, the later one is the value; the other is its
// shadow.
void RecordMerge::keepDoubles(const Part& part) {
    for (const std::size_t item : *part.items) {
        OldItem& old = m_room.items[item];
        MergeRoom::CodeCount& counted = countOf(old.code);
        if (old.field != noField || counted.oldItems < 2 || counted.fields != 1 || item == counted.lastItem)
            continue;
        if (!wasSingle(field(counted.lastField)) ||
            !keepsOldBytes(m_room.items[counted.lastItem], field(counted.lastField)))
            continue;
        old.part = nobodysPart;
        --counted.oldItems;
    }
}

bool RecordMerge::hasEqualText(const RecordGroup& old, const FieldGroup& group) const {
    const std::string_view text = m_writer.textOf(group);
    if (old.value == text) return true;
    const DrawingText& encoding = m_writer.m_style.text;
    if (group.role == Role::kRecordName)
        return isSameName(encoding.decode(withoutBlanks(old.value)), encoding.decode(withoutBlanks(text)));
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
