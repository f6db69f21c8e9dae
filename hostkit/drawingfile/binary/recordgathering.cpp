#include "recordgathering.h"

#include "commongathering.h"
#include "fieldtable.h"
#include "longcolors.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace hostkit {

namespace {

using Line = TranscriptLine;

constexpr short embeddedCode = 101; // begins an object within an entity
constexpr short variableCode = 9;   // begins a variable of the header
constexpr int usualIndex = 7;       // of a colour that none can be told of

} // namespace

/// Runs a transcript backwards over the groups of one record.
class Gathering final : public CommonGathering {
public:
    Gathering(DrawingVersion version, unsigned codePage, const RecordNames& names)
        : CommonGathering(version, codePage, names) {}

    void run(DrawingRecord& record, const RecordLayout& layout, const RecordLinks& links,
             RecordScope& values) {
        begin(record, layout, values);
        m_region = {1, record.extendedDataBegin};
        head(links);
        if (layout.isEntity) entity(links);
        if (layout.hasTranscript) {
            m_lines = layout.transcript.lines;
            lines(0, m_lines.size());
        }
        extendedData();
    }

    /// The variables of a header: each between its name and the next.
    void variables(DrawingRecord& groups, const RecordLayout& layout, RecordScope& values) {
        begin(groups, layout, values);
        m_region = {0, 0};
        m_lines = layout.transcript.lines;
        lines(0, m_lines.size());
    }

private:
    void lines(std::size_t begin, std::size_t end) {
        bool held = false;
        for (std::size_t i = begin; i < end;) {
            const Line& line = m_lines[i];
            switch (line.kind) {
            case Line::Kind::condition:
                held = !line.isForwardsAlone && line.condition.holds(m_values);
                if (held) lines(i + 1, line.end);
                break;
            case Line::Kind::otherwise:
                if (!held) lines(i + 1, line.end);
                break;
            case Line::Kind::loop:
                loop(line, i);
                break;
            default:
                if (line.condition.empty() || line.isForwardsAlone || line.condition.holds(m_values))
                    single(line);
            }
            i = line.end ? line.end : i + 1;
        }
    }

    void loop(const Line& line, std::size_t at) {
        const double outerIndex = m_values[m_layout->loopSlot];
        const Region outerRegion = m_region;
        RecordScope* const outer = m_scope;
        RecordScope* const outerArrays = m_arrays;
        const RecordScope* const outerBefore = m_before;
        const RecordScope::Loop* const before =
            line.hasLayoutLoop && m_before ? m_before->findLoop(line.slot) : nullptr;
        m_arrays = outer;
        const bool isCounted = !line.countSlot || m_isSet[line.countSlot];
        const double told = line.condition.value(m_values);
        const std::size_t most = !isCounted ? m_record->groups.size()
                                 : told > 0 ? static_cast<std::size_t>(told)
                                            : 0;
        std::size_t count = 0;
        std::vector<char> isSetOutside;
        constexpr double mostFixed = 16;
        const bool isFixed =
            line.hasLayoutLoop && !line.countSlot && told <= mostFixed; // all passes, though none has a group
        for (; count < most && (nextPass(line, at, outerRegion) || isFixed); ++count) {
            if (line.hasLayoutLoop) {
                m_scope = &RecordScope::addPass(outer->loop(line.slot));
                isSetOutside = m_isSet;
                m_before = before && count < before->count ? before->passes[count].get() : nullptr;
                loadBefore();
            }
            m_values[m_layout->loopSlot] = static_cast<double>(count);
            lines(at + 1, line.end);
            m_scope = outer;
            if (line.hasLayoutLoop) m_isSet = isSetOutside;
        }
        m_region = outerRegion;
        m_arrays = outerArrays;
        m_before = outerBefore;
        m_values[m_layout->loopSlot] = outerIndex;
        if (line.countSlot && (!isCounted || count != most))
            setValue(line.countSlot, kindOf(line.countSlot), static_cast<double>(count));
    }

    /// The groups of the next pass: from its first group up to the next such group, or up to the fixed group
    /// that its lines end with.
    bool nextPass(const Line& line, std::size_t at, const Region& outer) {
        m_region = outer;
        if (line.otherCode == 0) return true;
        const std::size_t begin = findGroup(line.otherCode, outer.begin, line.text);
        if (begin == outer.end || (line.isStrict && begin != firstLeft(outer.begin))) {
            m_region = {outer.end, outer.end};
            return false;
        }
        const Line& last = m_lines[line.end - 1];
        std::size_t end = outer.end;
        if (isClosing(at, line.end))
            end = std::min(outer.end, findGroup(last.code, begin, last.text) + 1);
        else if (!line.repeatsFirstCode)
            end = findGroup(line.otherCode, begin + 1, line.text);
        m_region = {begin, end};
        return true;
    }

    /// The last line of a block is a fixed group, in no block of its own.
    [[nodiscard]] bool isClosing(std::size_t block, std::size_t end) const {
        std::size_t i = block + 1;
        while (i + 1 < end) i = m_lines[i].end ? m_lines[i].end : i + 1;
        return i + 1 == end && m_lines[i].kind == Line::Kind::fixed && m_lines[i].condition.empty();
    }

    void single(const Line& line) {
        switch (line.kind) {
        case Line::Kind::mark:
            return findMark(line.text);
        case Line::Kind::fixed:
            return line.code == embeddedCode ? findEmbedded(line.text) : fixed(line);
        case Line::Kind::bits:
            return bits(line);
        case Line::Kind::write:
            return write(line);
        case Line::Kind::computed:
            if (const RecordGroup* const group = takeGroup(line.code);
                !line.parts.empty() && (group || !line.standard.empty()))
                setValue(line.slot, line.parts[0].kind,
                         converted(line, group ? numberOf(*group) : line.standard[0]));
            return;
        case Line::Kind::field:
            if (line.conversion == Line::Conversion::native) return readNative(line.text, line.code, *this);
            return line.parts[0].isAll ? all(line) : field(line);
        default:
            return;
        }
    }

    void write(const Line& line) {
        if (line.isForNew && m_original) return;
        if (std::uint16_t point = 0; line.parts[0].ordinates > 1 && line.expression.isName(point))
            return put(line.parts[0], &m_values[point], line.parts[0].ordinates);
        const double value = line.expression.value(m_values);
        if (line.parts[0].kind != ValueKind::color) return setValue(line.slot, line.parts[0].kind, value);
        ValueColor color;
        color.hasValue = true;
        color.value = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
        color.index = m_form < 18 ? indexOfLongColor(color.value, usualIndex) : 0;
        set(line.slot).color = color;
    }

    static bool isMark(const RecordGroup& group) {
        return group.code == subclassMarkCode || group.code == embeddedCode;
    }

    /// The lines that follow find their groups between this mark and the next; that of an embedded object is
    /// one too.
    bool findPart(std::string_view name) {
        const std::vector<RecordGroup>& groups = m_record->groups;
        const std::size_t end = m_record->extendedDataBegin;
        for (std::size_t i = 1; i < end; ++i) {
            if (m_isTaken[i] || !isMark(groups[i]) || withoutBlanks(groups[i].value) != name) continue;
            m_isTaken[i] = 1;
            m_region = {i + 1, i + 1};
            while (m_region.end < end && !isMark(groups[m_region.end])) ++m_region.end;
            return true;
        }
        return false;
    }

    /// Where other programs left a class's mark out, its lines find their groups in all that is left.
    void findMark(std::string_view name) override {
        if (findPart(name)) return;
        m_region = {1, 1};
        while (m_region.end < m_record->extendedDataBegin &&
               m_record->groups[m_region.end].code != embeddedCode)
            ++m_region.end;
    }

    void findEmbedded(std::string_view name) {
        if (!findPart(name)) m_region = {m_record->extendedDataBegin, m_record->extendedDataBegin};
    }

    void fixed(const Line& line) {
        if (line.code == variableCode) return variable(line.text);
        const std::size_t found = findGroup(line.code, m_region.begin, line.text);
        if (found != m_region.end) m_isTaken[found] = 1;
    }

    void variable(std::string_view name) {
        const std::vector<RecordGroup>& groups = m_record->groups;
        m_region = {groups.size(), groups.size()};
        for (std::size_t i = 0; i < groups.size(); ++i) {
            if (groups[i].code != variableCode || withoutBlanks(groups[i].value) != name) continue;
            m_region = {i + 1, i + 1};
            while (m_region.end < groups.size() && groups[m_region.end].code != variableCode) ++m_region.end;
            return;
        }
    }

    void bits(const Line& line) {
        const RecordGroup* const group = takeGroup(line.code);
        if (!group && line.standard.empty()) return;
        const auto sum = static_cast<std::int64_t>(group ? numberOf(*group) : line.standard[0]);
        for (const Line::Part& part : line.parts) {
            const bool isSingle = (part.mask & (part.mask - 1)) == 0;
            std::int64_t own = sum & part.mask;
            if (part.isInverted)
                own = own == 0;
            else if (isSingle)
                own = own != 0;
            setValue(part.slot, part.kind, static_cast<double>(own));
        }
    }

    void all(const Line& line) {
        std::vector<RecordValue>& values = m_scope->array(line.parts[0].slot);
        const std::uint16_t countSlot = fieldOf(line.parts[0].slot).countSlot;
        const bool isCounted = countSlot && m_isSet[countSlot];
        const auto most = isCounted ? static_cast<std::size_t>(std::max(0.0, m_values[countSlot]))
                                    : m_record->groups.size();
        if (!line.standard.empty() && findGroup(line.code, m_region.begin) == m_region.end)
            return standardArray(line, values);
        for (std::size_t before = 0; values.size() < most;) {
            const std::size_t next = findGroup(line.code, m_region.begin);
            const bool isRun = isCounted || values.empty() || firstLeft(before) == next;
            if (next == m_region.end || !isRun) break;
            one(line);
            before = next;
        }
        if (countSlot && values.size() != (isCounted ? most : 0))
            setValue(countSlot, kindOf(countSlot), static_cast<double>(values.size()));
        if (countSlot) m_isSet[countSlot] = 1;
    }

    static void standardArray(const Line& line, std::vector<RecordValue>& values) {
        if (line.standard.size() > 1) values.resize(line.standard.size());
        for (std::size_t i = 0; i < values.size(); ++i) values[i].real[0] = line.standard[i];
    }

    void field(const Line& line) {
        one(line);
        const Line::Part& part = line.parts[0];
        if (!part.isElement) return;
        std::vector<RecordValue>& values = m_arrays->array(part.slot);
        if (values.size() <= currentIndex()) values.resize(currentIndex() + 1); // null, where no group is
        const std::uint16_t countSlot = fieldOf(part.slot).countSlot;
        if (!countSlot) return;
        const auto count = static_cast<double>(values.size());
        if (!m_isSet[countSlot] || m_values[countSlot] < count) setValue(countSlot, kindOf(countSlot), count);
    }

    void one(const Line& line) {
        const Line::Part& part = line.parts[0];
        switch (part.kind) {
        case ValueKind::text:
            return textOf(line);
        case ValueKind::color:
            return color(line);
        case ValueKind::reference:
            return reference(line);
        case ValueKind::bytes:
            return digits(line);
        default:
            return ordinates(line);
        }
    }

    void ordinates(const Line& line) {
        std::array<double, 4> values{};
        std::size_t count = 0;
        for (const Line::Part& part : line.parts) count += part.ordinates;
        count = std::min<std::size_t>(count, 3);
        if (line.conversion == Line::Conversion::julian) count = 1;
        bool isThere = false;
        for (std::size_t i = 0; i < count; ++i) {
            const RecordGroup* const group = takeGroup(line.code + 10 * static_cast<int>(i));
            isThere = isThere || group;
            values[i] = converted(line, group ? numberOf(*group) : standardOf(line, i));
            if (i == 0 && !group) break;
        }
        if (!isThere) {
            if (line.standard.empty()) return;
            for (std::size_t i = 0; i < count; ++i) values[i] = converted(line, standardOf(line, i));
        }
        if (line.conversion == Line::Conversion::julian) return julian(line, values[0]);
        std::size_t next = 0;
        for (const Line::Part& part : line.parts) {
            put(part, &values[next],
                std::min<std::size_t>(part.ordinates, 3 - std::min<std::size_t>(next, 3)));
            next += part.ordinates;
        }
    }

    static double standardOf(const Line& line, std::size_t ordinate) {
        return line.standard.empty() ? 0.0 : line.standard[std::min(ordinate, line.standard.size() - 1)];
    }

    double converted(const Line& line, double value) const {
        if (line.conversion == Line::Conversion::degrees) return radians(line, value);
        if (line.conversion == Line::Conversion::weight) return indexOfWeight(static_cast<int>(value));
        return value;
    }

    /// To the bit as before where the degrees are those that the record gave: degrees are too coarse for
    /// some.
    double radians(const Line& line, double degrees) const {
        const RecordValue* const before =
            m_before && !line.parts.empty() ? m_before->find(line.parts[0].slot) : nullptr;
        return before && degreesFromRadians(before->real[0]) == degrees ? before->real[0]
                                                                        : radiansFromDegrees(degrees);
    }

    void julian(const Line& line, double days) {
        const double whole = std::floor(days);
        const double milliseconds = std::round((days - whole) * millisecondsOfDay);
        put(line.parts[0], &whole, 1);
        if (line.parts.size() > 1) put(line.parts[1], &milliseconds, 1);
    }

    void textOf(const Line& line) {
        std::string pieces;
        bool hasPieces = false;
        if (line.conversion == Line::Conversion::pieces)
            while (const RecordGroup* const piece = takeGroup(line.otherCode)) {
                pieces += piece->value;
                hasPieces = true;
            }
        const RecordGroup* const group = takeGroup(line.code);
        if (!group && !hasPieces && !line.hasStandardText && !line.parts[0].isElement) return;
        ValueRun run;
        if (hasPieces) {
            if (group) pieces += group->value;
            const ValueRun whole = kept(std::move(pieces));
            run = textRun({whole.bytes, whole.count});
        } else {
            run = textRun(group ? group->value : std::string_view(line.text));
        }
        place(line.parts[0]).run = run;
        m_values[line.parts[0].slot] = static_cast<double>(run.count);
    }

    void digits(const Line& line) {
        std::string bytes;
        while (const RecordGroup* const group = takeGroup(line.code)) appendDigits(group->value, bytes);
        const std::uint16_t countSlot = countOfBytes(line.parts[0].slot);
        const auto size = static_cast<double>(bytes.size());
        place(line.parts[0]).run = kept(std::move(bytes));
        if (countSlot) setValue(countSlot, kindOf(countSlot), size);
    }

    std::uint16_t countOfBytes(std::uint16_t slot) const {
        std::uint16_t counted = 0;
        for (const LayoutStep& step : m_layout->steps)
            if (step.slot == slot && step.code == FieldCode::bytes && step.count.isName(counted))
                return counted;
        return 0;
    }

    void reference(const Line& line) {
        const RecordGroup* const group = takeGroup(line.code);
        if (!group && line.presence == Line::Presence::asItIs) return;
        std::uint64_t target = 0;
        if (line.conversion == Line::Conversion::arrow)
            target = group ? arrowTarget(group->value) : 0;
        else if (line.conversion == Line::Conversion::name)
            target = namedTarget(line, group);
        else if (group)
            target = handleFromText(group->value).value_or(0);
        // The standard has another name by now: what refers to it does so still.
        if (!group && target == 0 && line.hasStandardText) return;
        place(line.parts[0]).reference = {0, target};
        m_values[line.parts[0].slot] = static_cast<double>(target);
    }

    /// A name that no record has counts as the standard: binary drawings have no place for it.
    std::uint64_t namedTarget(const Line& line, const RecordGroup* group) {
        const std::uint64_t target = group ? m_names.handleOfValue(line.table, group->value) : 0;
        return target == 0 && line.hasStandardText ? m_names.handleOfValue(line.table, line.text) : target;
    }

    /// The blocks of the usual arrows have an underscore before the name that groups tell.
    std::uint64_t arrowTarget(std::string_view name) {
        if (name.empty()) return 0;
        std::string underlined = "_";
        underlined += name;
        const std::uint64_t usual = m_names.handleOfValue("BLOCK_RECORD", underlined);
        return usual ? usual : m_names.handleOfValue("BLOCK_RECORD", name);
    }

    // Colours

    void color(const Line& line) {
        const RecordGroup* const group = takeGroup(line.code);
        const RecordGroup* exact = nullptr;
        const RecordGroup* name = nullptr;
        if (line.conversion == Line::Conversion::color || line.conversion == Line::Conversion::layerColor) {
            const Region all = m_region; // what follows may belong to another colour of the same code
            m_region.end = findGroup(line.code, m_region.begin);
            exact = takeGroup(line.code + trueColorShift);
            name = takeGroup(line.code + colorNameShift);
            m_region = all;
        }
        if (line.conversion == Line::Conversion::layerColor)
            setValue(line.parts[1].slot, ValueKind::none, group && numberOf(*group) < 0);
        if (!group && !exact && line.standard.empty()) return;
        const double told = group ? numberOf(*group) : standardOf(line, 0);
        ValueColor color;
        if (line.conversion == Line::Conversion::longColor) {
            color.value = static_cast<std::uint32_t>(static_cast<std::int64_t>(told));
            color.index = indexOfLongColor(color.value, usualIndex);
        } else {
            color.index = std::abs(static_cast<int>(told));
            color.value = exact ? trueColorMethod | (static_cast<std::uint32_t>(numberOf(*exact)) & 0xFFFFFF)
                                : longColorOf(color.index);
        }
        color.hasValue = true;
        if (line.conversion == Line::Conversion::indexColor && isOriginal(line.parts[0].slot, color.index))
            return;
        if (m_form >= 18 || fieldOf(line.parts[0].slot).code == FieldCode::longColor) color.index = 0;
        place(line.parts[0]).color = color;
        m_values[line.parts[0].slot] = told;
        if (name) colorNames(line.parts[0].slot, name->value);
    }

    /// The record that is changed has a colour of that index, and perhaps knows it more exactly.
    [[nodiscard]] bool isOriginal(std::uint16_t slot, int index) const {
        const RecordValue* const before = m_original ? m_original->values.find(slot) : nullptr;
        return before && before->color.hasValue && indexOfLongColor(before->color.value, usualIndex) == index;
    }

    /// "BOOK$NAME", or a name alone.
    void colorNames(std::uint16_t slot, std::string_view value) {
        const std::size_t sign = value.find('$');
        const auto setAt = [&](int shift, std::string_view text) {
            RecordValue run;
            run.run = textRun(text);
            m_scope->set(static_cast<std::uint16_t>(slot + shift), run);
        };
        setAt(1, sign == std::string_view::npos ? value : value.substr(sign + 1));
        if (sign != std::string_view::npos) setAt(2, value.substr(0, sign));
    }

    std::span<const Line> m_lines;
};

RecordGathering::RecordGathering(DrawingVersion version, unsigned codePage, const RecordNames& names)
    : m_work(std::make_unique<Gathering>(version, codePage, names)) {}

RecordGathering::~RecordGathering() = default;

void RecordGathering::setOriginal(const RecordReading* reading, const RecordFields* record) {
    m_work->setOriginal(reading, record);
}

void RecordGathering::gather(DrawingRecord& record, const RecordLayout& layout, const RecordLinks& links,
                             RecordScope& values) {
    m_work->run(record, layout, links, values);
}

bool RecordGathering::hasLostData() const { return m_work->hasLostData(); }

void RecordGathering::gatherVariables(DrawingRecord& groups, const RecordLayout& layout,
                                      RecordScope& values) {
    m_work->variables(groups, layout, values);
}

} // namespace hostkit
