#include "formtransfer.h"

#include "formtables.h"
#include "r12names.h"

#include "casefold.h"
#include "groupcodes.h"
#include "groupkinds.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int variableCode = 9;
constexpr int nameCode = 2;
constexpr int proxyGraphicsSize64 = 160;
constexpr int proxyGraphicsSize32 = 92;

bool isReference(int code) {
    return kindOfCode(code) == AcDb::GroupKind::kHandle && code != 5 && code != 105;
}

bool isPart(std::string_view kind) { return kind == "VERTEX" || kind == "ATTRIB" || kind == "SEQEND"; }

/// Spelt alike in every encoding, and without an escape.
bool isPlainText(std::string_view text) {
    bool isPlain = true;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        isPlain &=
            (byte >= ' ' || byte == '\r' || byte == '\n') && byte < 0x80 && byte != '\\' && byte != '^';
    }
    return isPlain;
}

std::wstring wide(std::string_view name) { return {name.begin(), name.end()}; }

} // namespace

FormTransfer::FormTransfer(std::string_view text, const DrawingStyle& source, const DrawingStyle& target,
                           FormChanges& changes, std::unordered_set<std::uint64_t> unheld)
    : m_text(text)
    , m_source(source)
    , m_target(target)
    , m_changes(changes)
    , m_encodesAnew(source.text.page() != target.text.page())
    , m_unheld(std::move(unheld)) {}

std::string FormTransfer::run() {
    gather();
    chooseRecords();
    if (isToR12()) gatherNames();
    std::string bytes;
    bytes.reserve(m_text.size() + m_text.size() / 8);
    for (const Record& record : m_records)
        if (!record.isLeftOut) writeRecord(record, bytes);
    return bytes;
}

FormTransfer::Groups FormTransfer::groupsOf(const Record& record) const {
    m_groups.clear();
    GroupScanner scanner(m_text.substr(0, record.end), record.begin);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) m_groups.push_back(group);
    return m_groups;
}

std::optional<RawGroup> FormTransfer::find(const Record& record, int code) const {
    GroupScanner scanner(m_text.substr(0, record.end), record.begin);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup && group.code < firstExtendedCode)
        if (group.code == code) return group;
    return {};
}

// The header is one record, and what stands before the first section too.
void FormTransfer::gather() {
    GroupScanner scanner(m_text, startOfGroups(m_text));
    RawGroup group;
    Head head;
    std::string_view section;
    while (scanner.next(group) == ScanResult::kGroup) {
        const bool isFirst = group.code == 0 || m_records.empty();
        if (isFirst) {
            const std::size_t begin = scanner.offsetOf(group.start);
            m_records.push_back({begin, begin, section, withoutBlanks(group.value)});
            if (group.code != 0) m_records.back().kind = {};
            head = {};
        }
        Record& record = m_records.back();
        record.end = scanner.offset();
        if (!isFirst && !head.isOver) readHead(record, head, group);
        if (record.kind == "SECTION" && group.code == nameCode && record.section.empty())
            section = record.section = withoutBlanks(group.value);
        if (record.kind == "ENDSEC") section = {};
    }
}

// The owner stands before the first mark, outside of the groups of applications.
void FormTransfer::readHead(Record& record, Head& head, const RawGroup& group) const {
    if (group.code == subclassMarkCode || group.code >= firstExtendedCode) head.isOver = true;
    if (group.code == applicationGroupCode) head.isInGroup = withoutBlanks(group.value).substr(0, 1) == "{";
    if (head.isOver || head.isInGroup) return;
    const int codeOfHandle = record.kind == "DIMSTYLE" ? 105 : 5;
    if (group.code == codeOfHandle && record.handle == 0)
        record.handle = handleFromText(group.value).value_or(0);
    if (group.code == ownerCode && hasSubclassMarkers(m_source.version))
        record.owner = handleFromText(group.value).value_or(0);
}

// What stands before the first section is one, but a damaged record that lost its name is not.
bool FormTransfer::isHolder(const Record& record) const {
    return record.kind == "SECTION" || record.kind == "ENDSEC" || record.kind == "TABLE" ||
           record.kind == "ENDTAB" || record.kind == "EOF" || record.kind.data() == nullptr;
}

bool FormTransfer::hasNoPlace(const Record& record) const {
    if (record.handle != 0 && m_unheld.contains(record.handle)) return true;
    const DrawingVersion target = m_target.version;
    if (record.section == "CLASSES" && record.kind == "CLASS") {
        const std::optional<RawGroup> name = isToLater() ? std::nullopt : find(record, 1);
        return name && target < needed(firstFormOfKind(withoutBlanks(name->value)));
    }
    if (record.section == "ACDSDATA") return target < DrawingVersion::k2013;
    if (isHolder(record)) return false;
    if (isToR12()) return !isKindOfR12(record.kind);
    // What could not be rewritten has no data in its record; nor have kinds without a class, which stay as
    // they were read.
    constexpr int dataLineCode = 1;
    const bool losesItsBody = isModelerKind(record.kind) && m_source.version >= DrawingVersion::k2013 &&
                              target < DrawingVersion::k2013 && !find(record, dataLineCode);
    return losesItsBody || isOlderThan(record);
}

bool FormTransfer::isOlderThan(const Record& record) const {
    if (isToLater()) return false;
    const auto [known, isNew] = m_firstForms.try_emplace(record.kind, DrawingVersion{});
    if (isNew) known->second = needed(firstFormOfKind(record.kind));
    return m_target.version < known->second;
}

// R12 has four sections.
void FormTransfer::chooseRecords() {
    const auto isSectionOfR12 = [](std::string_view name) {
        return name.empty() || name == "HEADER" || name == "TABLES" || name == "BLOCKS" || name == "ENTITIES";
    };
    bool isPartOfGone = false;
    std::string_view table;
    for (Record& record : m_records) {
        if (record.kind == "TABLE") {
            const std::optional<RawGroup> name = find(record, nameCode);
            table = name ? withoutBlanks(name->value) : std::string_view();
        }
        const bool isTableOfNone = isToR12() && table == "BLOCK_RECORD";
        record.isLeftOut =
            hasNoPlace(record) || isTableOfNone || (isToR12() && !isSectionOfR12(record.section));
        isPartOfGone = isPart(record.kind) ? isPartOfGone : record.isLeftOut;
        if (isPart(record.kind) && isPartOfGone) record.isLeftOut = true;
        if (record.kind == "ENDTAB") table = {};
    }
    leaveOutOwned();
    for (const Record& record : m_records)
        if (record.isLeftOut) tellLeftOut(record);
}

void FormTransfer::leaveOutOwned() {
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> owned;
    std::vector<std::uint64_t> pending;
    for (std::size_t place = 0; place < m_records.size(); ++place) {
        const Record& record = m_records[place];
        if (isHolder(record)) continue;
        if (record.owner != 0) owned[record.owner].push_back(place);
        if (record.isLeftOut && record.handle != 0) pending.push_back(record.handle);
    }
    while (!pending.empty()) {
        const std::uint64_t handle = pending.back();
        pending.pop_back();
        if (!m_gone.insert(handle).second) continue;
        for (const std::size_t place : owned[handle]) {
            Record& record = m_records[place];
            record.isLeftOut = true;
            if (record.handle != 0) pending.push_back(record.handle);
        }
    }
}

// What only holds or describes others needs no word, nor do parts beside their owner.
void FormTransfer::tellLeftOut(const Record& record) {
    if (isHolder(record) || isPart(record.kind) || record.kind == "CLASS" || record.kind == "BLOCK_RECORD" ||
        record.section == "ACDSDATA" || (isStandingKind(record.kind) && !m_unheld.contains(record.handle)))
        return;
    m_changes.add(wide(record.kind), {}, record.handle);
}

FormTransfer::NameKind FormTransfer::nameKindOf(const Record& record, const RawGroup& group) const {
    struct Row {
        std::string_view kind; ///< empty: all
        int code;
        NameKind name;
    };
    using enum NameKind;
    static constexpr Row rows[] = {
        {"LAYER", 2, kLayer},
        {"LTYPE", 2, kLinetype},
        {"STYLE", 2, kStyle},
        {"BLOCK", 2, kBlock},
        {"BLOCK", 3, kBlock},
        {"INSERT", 2, kBlock},
        {"DIMENSION", 2, kBlock},
        {"DIMENSION", 3, kDimStyle},
        {"DIMSTYLE", 2, kDimStyle},
        {"DIMSTYLE", 5, kBlock},
        {"DIMSTYLE", 6, kBlock},
        {"DIMSTYLE", 7, kBlock},
        {"VIEW", 2, kView},
        {"UCS", 2, kUcs},
        {"VPORT", 2, kViewport},
        {"APPID", 2, kApplication},
        {"", 8, kLayer},
        {"", 6, kLinetype},
        {"", 7, kStyle},
        {"", 1001, kApplication},
        {"", 1003, kLayer},
    };
    const auto found = std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) {
        return row.code == group.code && (row.kind.empty() || row.kind == record.kind);
    });
    return found == std::end(rows) ? kNone : found->name;
}

// The names that records have; what others refer to is one of them. Sound names come first.
void FormTransfer::gatherNames() {
    std::array<R12Names, 9> given;
    for (const bool takesSound : {true, false}) {
        for (const Record& record : m_records) {
            const std::optional<RawGroup> name =
                record.isLeftOut || isHolder(record) ? std::nullopt : find(record, nameCode);
            if (!name || (record.section != "TABLES" && record.kind != "BLOCK")) continue;
            const NameKind kind = nameKindOf(record, *name);
            const std::wstring old = m_source.text.decode(name->value);
            if (kind != NameKind::kNone && R12Names::isSound(old) == takesSound)
                giveName(record, old, m_names[static_cast<std::size_t>(kind)],
                         given[static_cast<std::size_t>(kind)]);
        }
    }
}

void FormTransfer::giveName(const Record& record, const std::wstring& old, NameMap& names, R12Names& given) {
    auto [entry, isNew] = names.try_emplace(foldCase(old));
    if (!isNew) return;
    entry->second = given.take(old);
    if (entry->second != old) m_changes.add(wide(record.kind) + L" name", entry->second, record.handle);
}

bool FormTransfer::isGone(const RawGroup& group) const {
    return !m_gone.empty() && isReference(group.code) &&
           m_gone.contains(handleFromText(group.value).value_or(0));
}

// An entry's name goes with what it names.
bool FormTransfer::goesWithNext(const Record& record, Groups groups, std::size_t place) const {
    if (place + 1 >= groups.size() || !isGone(groups[place + 1])) return false;
    const HandleList* const list = handleListOf(record.kind, groups[place + 1].code);
    return list && list->beforeCode == groups[place].code;
}

// Nothing where the group counts no list, or one that loses nothing.
std::optional<std::int64_t> FormTransfer::countLeft(const Record& record, Groups groups,
                                                    int countCode) const {
    const HandleList* const list = m_gone.empty() ? nullptr : countedListOf(record.kind, countCode);
    if (!list) return {};
    bool isInPart = false;
    bool isShorter = false;
    std::int64_t count = 0;
    for (const RawGroup& group : groups) {
        if (group.code == subclassMarkCode) isInPart = withoutBlanks(group.value) == list->mark;
        if (!isInPart || group.code != list->code) continue;
        isShorter = isShorter || isGone(group);
        count += isGone(group) ? 0 : 1;
    }
    return isShorter ? std::optional(count) : std::nullopt;
}

bool FormTransfer::staysInRecord(const Record& record, std::string_view subclass,
                                 const RawGroup& group) const {
    if (group.code >= firstExtendedCode) return true;
    if (isToR12()) return isGroupOfR12(record.kind, group.code);
    return m_target.version >= needed(firstFormOfGroup(subclass, group.code));
}

bool FormTransfer::losesGroups(std::string_view subclass) const {
    return isToR12() || (!isToLater() && hasLaterGroups(subclass, m_target.version));
}

// The two encodings spell plain text alike.
bool FormTransfer::isVerbatim(const RawGroup& group) const {
    const bool isText = kindOfCode(group.code) == AcDb::GroupKind::kText || group.code == 5;
    return !isToR12() && !isGone(group) && !(isText && m_encodesAnew && !isPlainText(group.value));
}

bool FormTransfer::isVerbatim(const Record& record) const {
    return isToLater() && !isToR12() && m_gone.empty() && (!m_encodesAnew || isPlainText(textOf(record)));
}

void FormTransfer::writeVerbatim(std::string_view text, std::string& bytes) const {
    bytes += text;
    if (!text.ends_with('\n')) bytes += m_target.newline;
}

void FormTransfer::writeRecord(const Record& record, std::string& bytes) {
    if (record.kind == "SECTION" && record.section == "HEADER") return writeHeader(record, bytes);
    if (isVerbatim(record)) return writeVerbatim(textOf(record), bytes);
    writeGroups(record, groupsOf(record), bytes);
}

// Groups that go along as they stand are copied together.
void FormTransfer::writeGroups(const Record& record, Groups groups, std::string& bytes) {
    const auto startOf = [&](std::size_t place) {
        return place < groups.size() ? static_cast<std::size_t>(groups[place].start - m_text.data())
                                     : record.end;
    };
    std::string_view subclass = record.kind == "CLASS" ? record.kind : std::string_view();
    bool losesAny = losesGroups(subclass);
    bool isEmbedded = false;
    std::size_t copied = 0;
    const auto copyTo = [&](std::size_t place) {
        if (copied < place)
            writeVerbatim(m_text.substr(startOf(copied), startOf(place) - startOf(copied)), bytes);
    };
    for (std::size_t place = 0; place < groups.size(); ++place) {
        const RawGroup& group = groups[place];
        if (group.code == subclassMarkCode) {
            subclass = withoutBlanks(group.value);
            losesAny = losesGroups(subclass);
        }
        if (group.code == embeddedObjectCode) isEmbedded = m_target.version < needed(DrawingVersion::k2018);
        isEmbedded = isEmbedded && group.code < firstExtendedCode;
        const bool isOfApplication =
            group.code == applicationGroupCode && subclass.empty() && !isToR12() && !m_gone.empty();
        const bool stays = !losesAny || staysInRecord(record, subclass, group);
        std::size_t last = place;
        std::string changed;
        if (isOfApplication && !isEmbedded)
            last = writeApplicationGroup(groups, place, changed);
        else if (!isEmbedded && !writeChanged(record, groups, last, subclass, changed) && stays) {
            if (isVerbatim(group)) continue;
            writeGroup(record, group, changed);
        }
        copyTo(place);
        bytes += changed;
        copied = (place = last) + 1;
    }
    copyTo(groups.size());
}

// What of lists and counts is lost or told otherwise; false where that does not concern the group. `place`
// becomes that of the last group that is done with.
bool FormTransfer::writeChanged(const Record& record, Groups groups, std::size_t& place,
                                std::string_view subclass, std::string& bytes) {
    const RawGroup& group = groups[place];
    if (const HandleList* const list = isGone(group) ? handleListOf(record.kind, group.code) : nullptr) {
        if (list->behindCode != 0 && place + 1 < groups.size() && groups[place + 1].code == list->behindCode)
            ++place;
        return true;
    }
    if (goesWithNext(record, groups, place)) return true;
    if (const std::optional<std::int64_t> left = countLeft(record, groups, group.code)) {
        appendInteger(group.code, *left, m_target, bytes);
        return true;
    }
    if (group.code != proxyGraphicsSize64 || subclass != "AcDbEntity" ||
        m_target.version >= needed(DrawingVersion::k2010))
        return false;
    appendGroup(proxyGraphicsSize32, withoutBlanks(group.value), m_target, bytes);
    return true;
}

// The index of the group that closes. A list of reactors without one, and the mark of an extension dictionary
// that is gone, go as a whole.
std::size_t FormTransfer::writeApplicationGroup(Groups groups, std::size_t first, std::string& bytes) {
    std::string inner;
    std::size_t place = first + 1;
    bool hasReference = false;
    bool lostReference = false;
    for (; place < groups.size() && groups[place].code != applicationGroupCode &&
           groups[place].code != subclassMarkCode;
         ++place) {
        if (isGone(groups[place])) {
            lostReference = true;
            continue;
        }
        hasReference = hasReference || isReference(groups[place].code);
        writeGroup({}, groups[place], inner);
    }
    const bool isClosed = place < groups.size() && groups[place].code == applicationGroupCode;
    if (lostReference && !hasReference && isClosed) return place;
    writeGroup({}, groups[first], bytes);
    bytes += inner;
    if (isClosed) writeGroup({}, groups[place], bytes);
    return isClosed ? place : place - 1;
}

void FormTransfer::writeHeader(const Record& record, std::string& bytes) {
    bool isKept = true;
    std::string_view variable;
    for (const RawGroup& group : groupsOf(record)) {
        if (group.code == variableCode) {
            variable = withoutBlanks(group.value);
            if (!variable.empty()) variable.remove_prefix(1);
            isKept = isToR12() ? isVariableOfR12(variable)
                               : m_target.version >= needed(firstFormOfVariable(variable));
        }
        if (!isKept) continue;
        if (variable == "ACADVER" && group.code == 1)
            appendGroup(1, nameOfVersion(m_target.version), m_target, bytes);
        else if (variable == "DWGCODEPAGE" && group.code == 3 && !isUtf8(m_target.version))
            appendText(3, nameOfCodePage(m_target.text.page()), m_target, bytes);
        else
            writeGroup(record, group, bytes);
    }
}

void FormTransfer::writeGroup(const Record& record, const RawGroup& group, std::string& bytes) {
    if (isGone(group)) return appendGroup(group.code, "0", m_target, bytes);
    const AcDb::GroupKind kind = kindOfCode(group.code);
    const bool isText = kind == AcDb::GroupKind::kText || group.code == 5;
    const NameKind name = isToR12() && isText ? nameKindOf(record, group) : NameKind::kNone;
    if (name != NameKind::kNone) {
        const auto& names = m_names[static_cast<std::size_t>(name)];
        const std::wstring old = m_source.text.decode(group.value);
        const auto found = names.find(foldCase(old));
        return appendText(group.code, found == names.end() ? old : found->second, m_target, bytes);
    }
    // With a NUL within it a name is none of a section, a table or a record; encoded, without it, it would
    // be.
    const bool isStructure = group.code == 0 || (group.code == nameCode && isHolder(record));
    const bool isDamaged = isStructure && group.value.find('\0') != std::string_view::npos;
    if (isText && m_encodesAnew && !isDamaged)
        return appendText(group.code, m_source.text.decode(group.value), m_target, bytes);
    appendGroup(group.code, group.value, m_target, bytes);
}

} // namespace hostkit
