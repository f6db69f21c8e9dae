#include "salvagedtext.h"

#include "auditrules.h"
#include "auditscanner.h"
#include "auditvalues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>

namespace hostkit {

namespace {

constexpr int nameCode = 2;
constexpr int variableCode = 9;
constexpr int markCode = 100;
constexpr int commentCode = 999;

constexpr std::string_view sectionNames[] = {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"};
constexpr std::string_view tableTypes[] = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                           "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

template <class Names>
bool isOneOf(const Names& names, std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    return text;
}

// What stands behind a code 0: capital letters, digits and lines, a letter among them.
bool isRecordName(std::string_view name) {
    const auto isLetter = [](char each) { return each >= 'A' && each <= 'Z'; };
    return name.size() <= 64 && std::any_of(name.begin(), name.end(), isLetter) &&
           std::all_of(name.begin(), name.end(), [&](char each) {
               return isLetter(each) || (each >= '0' && each <= '9') || each == '_';
           });
}

struct Line {
    std::string_view text;
    const char* end; ///< behind the line end
};

std::vector<Line> linesOf(std::string_view bytes) {
    std::vector<Line> lines;
    lines.reserve(bytes.size() / 8);
    while (!bytes.empty()) {
        const std::size_t found = bytes.find('\n');
        const std::size_t size = found == std::string_view::npos ? bytes.size() : found;
        std::string_view text = bytes.substr(0, size);
        if (text.ends_with('\r')) text.remove_suffix(1);
        bytes.remove_prefix(found == std::string_view::npos ? size : size + 1);
        lines.push_back({text, bytes.data()});
    }
    return lines;
}

std::optional<int> codeOf(std::string_view line) {
    line = trimmed(line);
    int code = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), code);
    if (error != std::errc() || end != line.data() + line.size()) return std::nullopt;
    return code;
}

} // namespace

/// Reads groups, gets into step again where they are out of it, and puts records where their kinds belong.
class SalvagedText::Reading {
public:
    Reading(SalvagedText& drawing, std::string_view bytes)
        : m_drawing(drawing)
        , m_lines(linesOf(bytes)) {}

    void run(bool bytesEndWithLine) {
        while (m_at < m_lines.size() && trimmed(m_lines[m_at].text).empty()) ++m_at;
        const std::size_t first = m_at;
        while (m_at + 1 < m_lines.size() && codeOf(m_lines[m_at].text) == commentCode) m_at += 2;
        m_drawing.m_before = between(first, m_at);
        m_recordAt = m_at;
        while (m_at < m_lines.size() && !m_isEnded) readGroup();
        if (!m_isEnded && hasRecord()) takeCut(bytesEndWithLine);
        finishRecord(m_lines.size());
        if (!m_isEnded) lose({}, m_lines.size(), L"the file ends before its end mark", false);
    }

private:
    // The last record may lack anything, which nobody can tell of a kind without rules; of a line without an
    // end nobody knows how it went on.
    void takeCut(bool bytesEndWithLine) {
        if (!bytesEndWithLine && !m_groups.empty() && m_at == m_lines.size()) m_groups.pop_back();
        const AuditKind* const kind = findAuditKind(m_type);
        m_isDamaged =
            m_isDamaged || (m_type != "SECTION" && m_type != "XRECORD" && (!kind || kind->isAnyAllowed));
        if (!m_isDamaged) tellOfMending();
    }

    std::string_view between(std::size_t first, std::size_t end) const {
        if (first >= end) return {};
        const char* const begin = m_lines[first].text.data();
        return {begin, static_cast<std::size_t>(m_lines[end - 1].end - begin)};
    }
    bool hasRecord() const { return !m_type.empty(); }
    void lose(std::string_view type, std::size_t line, std::wstring text, bool isLost = true) {
        m_drawing.losses.push_back({type, static_cast<std::uint32_t>(line + 1), std::move(text), isLost});
    }

    bool isSound(int code, std::string_view value) const {
        if (code == 0) return isRecordName(trimmed(value));
        if (code == commentCode) return true;
        if (auditValueOf(code) == AuditValue::kNone) return isPlausible(code);
        // A text may be anything, a mark is no number.
        if (code == markCode) return !value.empty() && !auditReal(value);
        if (code == variableCode) return value.starts_with('$') || m_section != "HEADER";
        return auditValueOf(code) == AuditValue::kText || isPlausibleValue(code, value);
    }
    // Codes that the format lacks are a matter of the record, unless they are none at all.
    static bool isPlausible(int code) { return code > -10 && code < 2000; }
    // Neither are values; but what has letters where a number belongs is likely another line.
    static bool isPlausibleValue(int code, std::string_view value) {
        return isAuditValue(auditValueOf(code), value) || trimmed(value).empty() ||
               codeOf(value).has_value() || isAuditValue(AuditValue::kReal, value) ||
               !isRecordName(trimmed(value));
    }

    std::string_view line(std::size_t at) const {
        return at < m_lines.size() ? trimmed(m_lines[at].text) : std::string_view();
    }
    bool isGroupAt(std::size_t at) const {
        const std::optional<int> code = at + 1 < m_lines.size() ? codeOf(line(at)) : std::nullopt;
        return code && isSound(*code, m_lines[at + 1].text);
    }

    void readGroup() {
        if (!isGroupAt(m_at)) return line(m_at).empty() && m_at + 1 >= m_lines.size() ? void(++m_at) : mend();
        const int code = *codeOf(line(m_at));
        const std::string_view value = m_lines[m_at + 1].text;
        if (code == 0) return beginRecord(trimmed(value));
        m_groups.push_back({code, value});
        m_at += 2;
        if (m_type == "SECTION" && code == nameCode && m_groups.size() == 1) enterSection(trimmed(value));
    }

    // How many of the next groups can be groups from that line on; a record's beginning settles it.
    int soundGroupsFrom(std::size_t at) const {
        constexpr int enough = 4;
        for (int count = 0; count < enough; ++count, at += 2) {
            if (!isGroupAt(at)) return count;
            if (codeOf(line(at)) == 0) return enough;
        }
        return enough;
    }

    // A line is lost or doubled here, or just before: groups go on from the line before, whose group then
    // has lost its value, or from the next one.
    void mend() {
        if (line(m_at) == "0" && line(m_at + 1) == "0" && isRecordName(line(m_at + 2))) {
            m_isMended = true;
            return void(++m_at);
        }
        if (!m_groups.empty() && line(m_at - 1) == "0" && isRecordName(line(m_at))) return stepBack();
        if (beginsNamelessRecord()) return;
        if (isKeyword(line(m_at)) && !(m_groups.empty() && line(m_at) == m_type))
            return beginRecordWithoutCode();
        const int before = m_groups.empty() ? 0 : soundGroupsFrom(m_at - 1);
        const int behind = soundGroupsFrom(m_at + 1);
        constexpr int fewest = 2;
        if (!hasRecord() || std::max(before, behind) < fewest) return getInStep();
        if (before >= behind) return stepBack();
        tellOfMending();
        ++m_at;
    }
    void stepBack() {
        tellOfMending();
        m_groups.pop_back();
        --m_at;
    }
    void tellOfMending() {
        if (!m_isMended && m_type != "SECTION")
            lose(m_type, m_recordAt, L"its lines are out of step; what can be told of its groups was kept",
                 false);
        m_isMended = true;
    }
    static bool isKeyword(std::string_view name) {
        constexpr std::string_view structural[] = {"SECTION", "ENDSEC", "ENDTAB", "EOF", "CLASS"};
        return isOneOf(structural, name) || findAuditKind(name);
    }
    // The code 0 of a record is lost, and with it the record; what frames others is not.
    void beginRecordWithoutCode() {
        const std::string_view name = line(m_at);
        finishRecord(m_at);
        m_type = name;
        m_recordAt = m_at++;
        m_isMended = true;
        if (name == "EOF") m_isEnded = true;
        if (name == "ENDSEC") leaveSection();
        if (!m_isEnded && name != "SECTION" && name != "ENDSEC" && name != "ENDTAB")
            lose(name, m_recordAt, L"the line before its name is lost");
    }
    bool beginsNamelessRecord() {
        constexpr std::string_view firstCodes[] = {"5", "105", "102", "330", "100", "8"};
        if (line(m_at) != "0" || !isOneOf(firstCodes, line(m_at + 1)) || !isGroupAt(m_at + 1)) return false;
        finishRecord(m_at);
        lose({}, m_at, L"a record has lost its name");
        m_recordAt = m_at++;
        m_isDamaged = true;
        return true;
    }

    // Where a code 0 stands before a record's name, or a section's or a variable's name behind its own code.
    // The line before may be the code already: it was taken for a value.
    void getInStep() {
        m_isDamaged = true;
        const std::size_t from = std::max(m_at > 0 ? m_at - 1 : 0, m_recordAt + 1);
        for (std::size_t at = from; at + 1 < m_lines.size(); ++at) {
            const std::optional<int> code = codeOf(line(at));
            if (code == 0 && isRecordName(line(at + 1))) return void(m_at = at);
            if (code == nameCode && isOneOf(sectionNames, line(at + 1)) &&
                (m_section.empty() || !hasRecord()))
                return beginSectionWithoutMark(at);
            const bool isInHeader = m_section == "HEADER" || (m_section.empty() && !hasRecord());
            if (code == variableCode && line(at + 1).starts_with('$') && isInHeader) return goOnInHeader(at);
        }
        m_at = m_lines.size();
    }
    void beginSectionWithoutMark(std::size_t at) {
        finishRecord(at);
        m_type = "SECTION";
        m_recordAt = m_at = at;
    }
    // A variable whose value cannot be told goes.
    void goOnInHeader(std::size_t at) {
        if (m_section.empty()) enterSection("HEADER");
        while (!m_groups.empty() && m_groups.back().code != variableCode) m_groups.pop_back();
        if (!m_groups.empty()) m_groups.pop_back();
        m_type = "SECTION";
        m_at = at;
        m_isDamaged = false;
        lose({}, at, L"a variable of the header does not parse");
    }

    void beginRecord(std::string_view name) {
        finishRecord(m_at);
        m_type = name;
        m_recordAt = m_at;
        m_at += 2;
        if (name == "EOF") m_isEnded = true;
        if (name == "ENDSEC") leaveSection();
    }

    void enterSection(std::string_view name) {
        if (m_section == "OTHER") leaveSection();
        m_section = isOneOf(sectionNames, name) ? name : std::string_view("OTHER");
        if (m_section == "OTHER") m_other = frame(0, "SECTION") + frame(nameCode, name);
        m_block = nullptr;
        m_table = {};
        if (name == "CLASSES") m_drawing.hasClasses = true;
        if (name == "TABLES") m_drawing.hasTables = true;
        if (name == "BLOCKS") m_drawing.hasBlocks = true;
        if (name == "ENTITIES") m_drawing.hasEntities = true;
        if (name == "OBJECTS") m_drawing.hasObjects = true;
    }

    std::string frame(int code, std::string_view value) const {
        return "  " + std::to_string(code) + std::string(m_drawing.m_newline) + std::string(value) +
               std::string(m_drawing.m_newline);
    }

    void leaveSection() {
        if (m_section == "OTHER")
            m_drawing.otherSections.push_back(m_drawing.kept(std::move(m_other) + frame(0, "ENDSEC")));
        m_other.clear();
        m_section = {};
        m_block = nullptr;
        m_table = {};
    }

    void finishRecord(std::size_t end) {
        const std::string_view type = m_type;
        const bool isDamaged = m_isDamaged;
        if (type == "SECTION") takeHeader();
        constexpr std::string_view frames[] = {"SECTION", "ENDSEC", "EOF", "ENDTAB"};
        if (!type.empty() && !isOneOf(frames, type)) {
            SalvagedRecord record{type, between(m_recordAt, end), static_cast<std::uint32_t>(m_recordAt + 1)};
            if (m_isMended || isDamaged) m_drawing.setGroups(record, m_groups);
            place(record, isDamaged);
        }
        if (type == "ENDTAB") m_table = {};
        m_groups.clear();
        m_type = {};
        m_isDamaged = m_isMended = false;
    }

    void takeHeader() {
        if (m_section != "HEADER") return;
        for (const SalvagedGroup& each : m_groups)
            if (!m_drawing.header.empty() || each.code == variableCode) m_drawing.header.push_back(each);
    }

    bool hasMark(std::string_view mark) const {
        return std::any_of(m_groups.begin(), m_groups.end(), [&](const SalvagedGroup& each) {
            return each.code == markCode && (mark.empty() || trimmed(each.value) == mark);
        });
    }
    std::string_view nameOf() const {
        for (const SalvagedGroup& each : m_groups)
            if (each.code == nameCode) return trimmed(each.value);
        return {};
    }

    // The section that the record belongs to by its kind; where that says nothing the one that it stands in.
    std::string_view sectionOf(std::string_view type) const {
        if (m_section == "OTHER") return m_section;
        if (type == "CLASS") return "CLASSES";
        const bool isOfTables = type == "TABLE" || isOneOf(tableTypes, type);
        if (isOfTables) return m_section == "BLOCKS" || m_section == "ENTITIES" ? m_section : "TABLES";
        if (type == "BLOCK" || type == "ENDBLK") return "BLOCKS";
        if (hasMark("AcDbEntity")) return m_block || m_section == "BLOCKS" ? "BLOCKS" : "ENTITIES";
        if (type == "DICTIONARY" || type == "XRECORD" || type == "LAYOUT") return "OBJECTS";
        if (m_section.empty() && hasMark({})) return "OBJECTS";
        return m_section.empty() || m_section == "HEADER" ? "ENTITIES" : m_section;
    }

    // What cannot be done without is taken as far as it can be read.
    static bool isNeeded(std::string_view type) {
        return type == "TABLE" || type == "BLOCK" || type == "ENDBLK" || type == "DICTIONARY" ||
               type == "BLOCK_RECORD" || isOneOf(tableTypes, type);
    }

    void place(SalvagedRecord record, bool isDamaged) {
        const std::string_view section = sectionOf(record.type);
        if (section == "OTHER") {
            if (isDamaged) lose(record.type, m_recordAt, L"its lines are out of step", false);
            return void(m_other += record.bytes);
        }
        if (section != m_section) enterOf(section);
        if (isDamaged) {
            const bool isKept = isNeeded(record.type) && m_section != "CLASSES";
            lose(record.type, m_recordAt,
                 isKept ? L"its lines are out of step; it was kept as far as it can be read"
                        : L"its lines are out of step",
                 !isKept);
            if (!isKept) return;
        }
        record.place = SalvagedPlace::kEntities;
        if (section == "CLASSES") return m_drawing.classes.push_back(record);
        if (section == "TABLES") return placeInTable(record);
        if (section == "BLOCKS") return placeInBlock(record);
        const bool isObject = section == "OBJECTS";
        record.place = isObject ? SalvagedPlace::kObjects : SalvagedPlace::kEntities;
        (isObject ? m_drawing.objects : m_drawing.entities).push_back(record);
    }
    void enterOf(std::string_view section) {
        m_section = section;
        m_table = {};
        if (section != "BLOCKS") m_block = nullptr;
        if (section == "CLASSES") m_drawing.hasClasses = true;
        if (section == "TABLES") m_drawing.hasTables = true;
        if (section == "BLOCKS") m_drawing.hasBlocks = true;
        if (section == "ENTITIES") m_drawing.hasEntities = true;
        if (section == "OBJECTS") m_drawing.hasObjects = true;
    }

    void placeInTable(SalvagedRecord record) {
        record.place = SalvagedPlace::kTable;
        if (record.type == "TABLE") {
            m_table = nameOf();
            if (!m_table.empty()) {
                SalvagedTable& table = m_drawing.table(m_table);
                if (table.head.bytes.empty()) table.head = record;
            }
            return;
        }
        // Tables that are not known keep what stands in them.
        const bool isKnown = isOneOf(tableTypes, record.type);
        if (!isKnown && m_table.empty()) return lose(record.type, record.line - 1, L"it stands in no table");
        m_drawing.table(isKnown ? record.type : m_table).records.push_back(record);
    }

    void placeInBlock(SalvagedRecord record) {
        record.place = SalvagedPlace::kBlock;
        if (record.type == "BLOCK") {
            m_drawing.blocks.push_back({record, {}, {}});
            m_block = &m_drawing.blocks.back();
        } else if (!m_block) {
            if (record.type == "ENDBLK") return;
            lose(record.type, record.line - 1, L"it stood in no block; it stands in a space now", false);
            record.place = SalvagedPlace::kEntities;
            m_drawing.hasEntities = true;
            m_drawing.entities.push_back(record);
        } else if (record.type == "ENDBLK") {
            m_block->end = record;
            m_block = nullptr;
        } else {
            m_block->entities.push_back(record);
        }
    }

    SalvagedText& m_drawing;
    std::vector<Line> m_lines;
    std::size_t m_at = 0;
    std::size_t m_recordAt = 0; ///< the line of the present record's group 0
    std::string m_other;        ///< the section that is not known, so far
    std::string_view m_type;
    SalvagedGroups m_groups;
    std::string_view m_section;
    std::string_view m_table;
    SalvagedBlock* m_block = nullptr;
    bool m_isDamaged = false; ///< the rest of the present record cannot be read
    bool m_isMended = false;  ///< its groups are others than its lines
    bool m_isEnded = false;
};

SalvagedText::SalvagedText(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    const std::size_t newline = bytes.find('\n');
    if (newline != std::string_view::npos && (newline == 0 || bytes[newline - 1] != '\r')) m_newline = "\n";
    Reading(*this, bytes).run(bytes.ends_with('\n'));
}

SalvagedTable& SalvagedText::table(std::string_view name) {
    for (SalvagedTable& each : tables)
        if (each.name == name) return each;
    tables.push_back({name, {}, {}});
    return tables.back();
}

SalvagedGroups SalvagedText::groupsOf(const SalvagedRecord& record) {
    SalvagedGroups groups;
    AuditScanner scanner(record.bytes);
    AuditGroup group;
    while (scanner.next(group) == AuditScan::kGroup)
        if (group.code != 0) groups.push_back({group.code, group.value});
    return groups;
}

void SalvagedText::setGroups(SalvagedRecord& record, const SalvagedGroups& groups) {
    std::string text;
    const auto append = [&](int code, std::string_view value) {
        const std::string number = std::to_string(code);
        text.append(number.size() < 3 ? 3 - number.size() : 0, ' ');
        ((text += number) += m_newline) += value;
        text += m_newline;
    };
    append(0, record.type);
    for (const SalvagedGroup& each : groups) append(each.code, each.value);
    record.bytes = kept(std::move(text));
}

SalvagedRecord SalvagedText::made(std::string_view type, SalvagedPlace place, const SalvagedGroups& groups) {
    SalvagedRecord record{type, {}, 0, place};
    setGroups(record, groups);
    return record;
}

std::string_view SalvagedText::kept(std::string text) { return m_kept.emplace_back(std::move(text)); }

void SalvagedText::forEach(const std::function<void(SalvagedRecord&)>& call) {
    const auto each = [&](SalvagedRecord& record) {
        if (!record.isGone && !record.bytes.empty()) call(record);
    };
    for (SalvagedTable& table : tables) {
        each(table.head);
        for (SalvagedRecord& record : table.records) each(record);
    }
    for (SalvagedBlock& block : blocks) {
        each(block.begin);
        for (SalvagedRecord& record : block.entities) each(record);
        each(block.end);
    }
    for (SalvagedRecord& record : entities) each(record);
    for (SalvagedRecord& record : objects) each(record);
}

} // namespace hostkit
