#include "recordgathering.h"

#include "adscodes.h"
#include "dbcolor.h"
#include "fieldtable.h"
#include "groupcodes.h"
#include "recordhead.h"
#include "transcriptnatives.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <stdexcept>

namespace hostkit {

namespace {

using Line = TranscriptLine;

constexpr short trueColorShift = 358, colorNameShift = 368;
constexpr int byLayer = 256;
constexpr std::uint32_t trueColor = 0xC2000000U;
constexpr short embeddedCode = 101; // begins an object within an entity

} // namespace

/// Runs a transcript backwards over the groups of one record.
class Gathering final : public NativeInput {
public:
    Gathering(DrawingVersion version, unsigned codePage, const RecordNames& names)
        : m_form(static_cast<int>(version) % 100)
        , m_codePage(codePage)
        , m_names(names) {}

    void setOriginal(const RecordReading* reading, const RecordFields* record) {
        m_originalReading = reading;
        m_original = record;
    }

    void run(DrawingRecord& record, const RecordLayout& layout, const RecordLinks& links,
             RecordScope& values) {
        m_record = &record;
        m_layout = &layout;
        m_values.assign(layout.slots, 0.0);
        m_isSet.assign(layout.slots, 0);
        m_isTaken.assign(record.groups.size(), 0);
        m_texts.clear();
        m_outermost = {&values, nullptr};
        m_frame = &m_outermost;
        m_arrays = &values;
        m_before = m_original && m_original->layout == &layout ? &m_original->values : nullptr;
        loadBefore();
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
        m_record = &groups;
        m_layout = &layout;
        m_values.assign(layout.slots, 0.0);
        m_isSet.assign(layout.slots, 0);
        m_isTaken.assign(groups.groups.size(), 0);
        m_texts.clear();
        m_outermost = {&values, nullptr};
        m_frame = &m_outermost;
        m_region = {0, 0};
        m_lines = layout.transcript.lines;
        lines(0, m_lines.size());
    }

    // What native words read.
    int form() const override { return m_form; }
    const RecordNames& names() const override { return m_names; }
    const RecordGroup* take(int code) override { return takeGroup(code); }
    std::string takePieces(int code, int pieceCode) override {
        const std::size_t last = findGroup(code, m_region.begin);
        std::size_t first = last;
        const auto isPiece = [&](std::size_t i) {
            return !m_isTaken[i] && m_record->groups[i].code == pieceCode;
        };
        while (first > m_region.begin && isPiece(first - 1)) --first;
        std::string text;
        for (std::size_t i = first; i < std::min(last + 1, m_region.end); ++i) {
            m_isTaken[i] = 1;
            text += m_record->groups[i].value;
        }
        return text;
    }
    std::vector<const RecordGroup*> takeAll() override {
        std::vector<const RecordGroup*> all;
        for (std::size_t i = m_region.begin; i < m_region.end; ++i)
            if (!m_isTaken[i]) {
                m_isTaken[i] = 1;
                all.push_back(&m_record->groups[i]);
            }
        return all;
    }
    unsigned codePage() const override { return m_codePage; }
    void setBytes(std::string_view name, std::string bytes) override {
        set(slotOf(name)).run = kept(std::move(bytes));
    }
    void setNumber(std::string_view name, double number) override {
        const std::uint16_t slot = slotOf(name);
        setValue(slot, kindOf(slot), number);
    }
    void setPoint(std::string_view name, const double (&ordinates)[3]) override {
        Line::Part part;
        part.slot = slotOf(name);
        part.kind = ValueKind::real;
        put(part, ordinates, 3);
    }
    void addReference(std::string_view name, std::uint64_t handle, unsigned code) override {
        m_frame->scope->array(slotOf(name)).emplace_back().reference = {static_cast<std::uint8_t>(code),
                                                                        handle};
    }
    RecordScope& scope() override { return *m_frame->scope; }
    RecordScope& recordScope() override { return *m_outermost.scope; }
    const RecordScope* original() const override { return m_original ? &m_original->values : nullptr; }
    const RecordReading* originalReading() const override { return m_originalReading; }
    std::uint16_t slotOf(std::string_view name) const override {
        std::uint16_t slot = 0;
        if (!m_layout->findSlot(name, slot)) throw std::logic_error("no field: " + std::string(name));
        return slot;
    }
    ValueRun kept(std::string bytes) override {
        const std::string& text = m_texts.emplace_back(std::move(bytes));
        return {text.data(), 0, text.size()};
    }

private:
    struct Region {
        std::size_t begin = 0, end = 0;
    };
    struct Frame {
        RecordScope* scope;
        const Frame* outer;
    };

    // Values

    const RecordLayout::SlotField& fieldOf(std::uint16_t slot) const {
        static const RecordLayout::SlotField none;
        return slot < m_layout->slotFields.size() ? m_layout->slotFields[slot] : none;
    }
    ValueKind kindOf(std::uint16_t slot) const {
        const RecordLayout::SlotField& field = fieldOf(slot);
        return field.isField ? valueKindOf(static_cast<std::uint8_t>(field.code)) : ValueKind::none;
    }

    void loadBefore() {
        if (!m_before) return;
        for (const RecordScope::Item& item : m_before->items()) {
            const ValueKind kind = kindOf(item.slot);
            if (kind == ValueKind::whole) m_values[item.slot] = static_cast<double>(item.value.whole);
            if (kind == ValueKind::real) m_values[item.slot] = item.value.real[0];
        }
    }

    /// The value of a slot in the present pass; what stood there goes.
    RecordValue& set(std::uint16_t slot) {
        static const RecordValue nothing;
        m_isSet[slot] = 1;
        if (m_frame->scope->find(slot))
            m_frame->scope->set(slot, nothing);
        else
            return m_frame->scope->add(slot);
        return const_cast<RecordValue&>(*m_frame->scope->find(slot));
    }

    void setValue(std::uint16_t slot, ValueKind kind, double number) {
        m_values[slot] = number;
        m_isSet[slot] = 1;
        switch (kind) {
        case ValueKind::whole:
            set(slot).whole = static_cast<std::int64_t>(number);
            break;
        case ValueKind::real:
            set(slot).real[0] = number;
            break;
        case ValueKind::reference:
            set(slot).reference = {0, static_cast<std::uint64_t>(number)};
            break;
        default:
            break;
        }
    }

    /// Where the value of a part of a line goes: a field, an element of an array, a field of another loop.
    RecordValue& place(const Line::Part& part) {
        m_isSet[part.slot] = 1;
        if (part.isElement) return element(part);
        if (part.isAll) return m_frame->scope->array(part.slot).emplace_back();
        if (part.loopSlot) return passValue(part);
        return set(part.slot);
    }

    RecordValue& element(const Line::Part& part) {
        std::vector<RecordValue>& values = m_arrays->array(part.slot);
        const auto index = static_cast<std::size_t>(m_values[m_layout->loopSlot]);
        if (values.size() <= index) values.resize(index + 1);
        return values[index];
    }

    RecordValue& passValue(const Line::Part& part) {
        RecordScope::Loop& loop = m_frame->scope->loop(part.loopSlot);
        const auto index = static_cast<std::size_t>(m_values[m_layout->loopSlot]);
        while (loop.count <= index) RecordScope::addPass(loop);
        return loop.passes[index]->add(part.slot);
    }

    // Groups

    RecordGroup* takeGroup(int code) {
        for (std::size_t i = m_region.begin; i < m_region.end; ++i)
            if (m_record->groups[i].code == code && !m_isTaken[i]) {
                m_isTaken[i] = 1;
                return &m_record->groups[i];
            }
        return nullptr;
    }
    /// Of any value where none is told.
    [[nodiscard]] std::size_t findGroup(int code, std::size_t from, std::string_view value = {}) const {
        for (std::size_t i = from; i < m_region.end; ++i)
            if (m_record->groups[i].code == code && !m_isTaken[i] &&
                (value.empty() || withoutBlanks(m_record->groups[i].value) == value))
                return i;
        return m_region.end;
    }

    static double numberOf(const RecordGroup& group) {
        switch (AcDb::groupKind(group.code)) {
        case AcDb::GroupKind::kReal:
        case AcDb::GroupKind::kPoint:
            return realFromText(group.value).value_or(0.0);
        case AcDb::GroupKind::kHandle:
            return static_cast<double>(handleFromText(group.value).value_or(0));
        default:
            return static_cast<double>(integerFromText(group.value).value_or(0));
        }
    }

    ValueRun textRun(std::string_view value) {
        if (value.find('^') == std::string_view::npos) return {value.data(), 0, value.size()};
        std::string text;
        appendUnescaped(value, text);
        return kept(std::move(text));
    }

    // Lines

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
        const Frame* const outer = m_frame;
        RecordScope* const outerArrays = m_arrays;
        const RecordScope* const outerBefore = m_before;
        const RecordScope::Loop* const before =
            line.hasLayoutLoop && m_before ? m_before->findLoop(line.slot) : nullptr;
        m_arrays = outer->scope;
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
            Frame frame{outer->scope, outer};
            if (line.hasLayoutLoop) {
                frame.scope = &RecordScope::addPass(outer->scope->loop(line.slot));
                m_frame = &frame;
                isSetOutside = m_isSet;
                m_before = before && count < before->count ? before->passes[count].get() : nullptr;
                loadBefore();
            }
            m_values[m_layout->loopSlot] = static_cast<double>(count);
            lines(at + 1, line.end);
            m_frame = outer;
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

    [[nodiscard]] std::size_t firstLeft(std::size_t from) const {
        while (from < m_region.end && m_isTaken[from]) ++from;
        return from;
    }

    void single(const Line& line) {
        switch (line.kind) {
        case Line::Kind::mark:
            return mark(line);
        case Line::Kind::fixed:
            return line.code == embeddedCode ? mark(line) : fixed(line);
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
        color.index = m_form < 18 ? indexOf(color.value) : 0;
        set(line.slot).color = color;
    }

    static bool isMark(const RecordGroup& group) {
        return group.code == subclassMarkCode || group.code == embeddedCode;
    }

    /// The lines that follow find their groups between this mark and the next; that of an embedded object is
    /// one too. Where other programs left a class's mark out, they find them in all that is left.
    void mark(const Line& line) {
        const std::vector<RecordGroup>& groups = m_record->groups;
        const std::size_t end = m_record->extendedDataBegin;
        for (std::size_t i = 1; i < end; ++i) {
            if (m_isTaken[i] || !isMark(groups[i]) || withoutBlanks(groups[i].value) != line.text) continue;
            m_isTaken[i] = 1;
            m_region.begin = i + 1;
            std::size_t next = i + 1;
            while (next < end && !isMark(groups[next])) ++next;
            m_region.end = next;
            return;
        }
        if (line.code == embeddedCode) {
            m_region = {end, end};
            return;
        }
        m_region = {1, 1};
        while (m_region.end < end && groups[m_region.end].code != embeddedCode) ++m_region.end;
    }

    void fixed(const Line& line) {
        constexpr int variableCode = 9;
        if (line.code == variableCode) return variable(line.text);
        for (std::size_t i = m_region.begin; i < m_region.end; ++i)
            if (m_record->groups[i].code == line.code && !m_isTaken[i] &&
                withoutBlanks(m_record->groups[i].value) == line.text) {
                m_isTaken[i] = 1;
                return;
            }
    }

    void variable(std::string_view name) {
        constexpr int variableCode = 9;
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
        std::vector<RecordValue>& values = m_frame->scope->array(line.parts[0].slot);
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
        const auto index = static_cast<std::size_t>(m_values[m_layout->loopSlot]);
        if (values.size() <= index) values.resize(index + 1); // null, where no group is
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

    void put(const Line::Part& part, const double* values, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) m_values[part.slot + i] = values[i];
        m_isSet[part.slot] = 1;
        if (part.kind == ValueKind::none) return;
        RecordValue& value = place(part);
        if (part.kind == ValueKind::whole)
            value.whole = static_cast<std::int64_t>(values[0]);
        else
            std::copy_n(values, count, value.real);
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
            run = textRun(kept(std::move(pieces)));
        } else {
            run = textRun(group ? group->value : std::string_view(line.text));
        }
        place(line.parts[0]).run = run;
        m_values[line.parts[0].slot] = static_cast<double>(run.count);
    }
    ValueRun textRun(const ValueRun& run) { return textRun(std::string_view(run.bytes, run.count)); }

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
        place(line.parts[0]).reference = {0, target};
        m_values[line.parts[0].slot] = static_cast<double>(target);
    }

    /// A name that no record has counts as the standard: binary drawings have no place for it.
    std::uint64_t namedTarget(const Line& line, const RecordGroup* group) {
        const std::uint64_t target = group ? nameTarget(line.table, group->value) : 0;
        return target == 0 && line.hasStandardText ? nameTarget(line.table, line.text) : target;
    }

    /// The blocks of the usual arrows have an underscore before the name that groups tell.
    std::uint64_t arrowTarget(std::string_view name) {
        if (name.empty()) return 0;
        std::string underlined = "_";
        underlined += name;
        const std::uint64_t usual = nameTarget("BLOCK_RECORD", underlined);
        return usual ? usual : nameTarget("BLOCK_RECORD", name);
    }
    std::uint64_t nameTarget(std::string_view kind, std::string_view name) {
        if (name.find('^') == std::string_view::npos) return m_names.handleOf(kind, name);
        std::string text;
        appendUnescaped(name, text);
        return m_names.handleOf(kind, text);
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
            color.index = indexOf(color.value);
        } else {
            color.index = std::abs(static_cast<int>(told));
            color.value = exact ? trueColor | (static_cast<std::uint32_t>(numberOf(*exact)) & 0xFFFFFF)
                                : valueOfIndex(color.index);
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
        return before && before->color.hasValue && indexOf(before->color.value) == index;
    }

    static std::uint32_t valueOfIndex(int index) {
        constexpr int none = 257;
        return index == byLayer ? 0xC0000000U
               : index == 0     ? 0xC1000000U
               : index == none  ? 0xC8000000U
                                : 0xC3000000U | static_cast<std::uint32_t>(index & 0xFF);
    }
    static int indexOf(std::uint32_t value) {
        switch (value >> 24) {
        case 0xC0:
            return byLayer;
        case 0xC1:
            return 0;
        case 0xC2:
            return AcCmEntityColor::lookUpACI(static_cast<Adesk::UInt8>(value >> 16),
                                              static_cast<Adesk::UInt8>(value >> 8),
                                              static_cast<Adesk::UInt8>(value));
        case 0xC3:
            return static_cast<int>(value & 0xFF);
        default:
            return 7;
        }
    }

    /// "BOOK$NAME", or a name alone.
    void colorNames(std::uint16_t slot, std::string_view value) {
        const std::size_t sign = value.find('$');
        const auto setAt = [&](int shift, std::string_view text) {
            RecordValue run;
            run.run = textRun(text);
            m_frame->scope->set(static_cast<std::uint16_t>(slot + shift), run);
        };
        setAt(1, sign == std::string_view::npos ? value : value.substr(sign + 1));
        if (sign != std::string_view::npos) setAt(2, value.substr(0, sign));
    }

    // What every record has

    void whole(std::string_view name, std::int64_t value) {
        std::uint16_t slot = 0;
        if (m_layout->findSlot(name, slot)) setValue(slot, ValueKind::whole, static_cast<double>(value));
    }
    void link(std::string_view name, std::uint64_t handle) {
        std::uint16_t slot = 0;
        if (!m_layout->findSlot(name, slot)) return;
        set(slot).reference = {0, handle};
        m_values[slot] = static_cast<double>(handle);
    }

    void head(const RecordLinks& links) {
        readHead(*m_record, m_head);
        for (std::size_t i = 0; i < m_record->groups.size(); ++i)
            m_isTaken[i] = m_record->groups[i].isTaken() || m_record->groups[i].part == foreignPart;
        link("handle", m_head.handle);
        whole("nreact", static_cast<std::int64_t>(m_head.reactors.size()));
        std::uint16_t slot = 0;
        if (m_layout->findSlot("reactors", slot)) {
            std::vector<RecordValue>& reactors = m_frame->scope->array(slot);
            for (const std::uint64_t reactor : m_head.reactors)
                reactors.emplace_back().reference = {0, reactor};
        }
        whole("noxdic", m_head.extensionDictionary == 0);
        link("xdic", m_head.extensionDictionary);
        link("owner", links.owner ? links.owner : m_head.owner);
    }

    void entity(const RecordLinks& links) {
        Line line;
        line.text = "AcDbEntity";
        mark(line);
        whole("entmode", links.entityMode);
        const std::uint64_t own = m_head.handle;
        const bool isBetween = links.isInChain && links.previous == own - 1 && links.next == own + 1;
        whole("nolinks", isBetween);
        link("prev", links.previous);
        link("next", links.next);
        const RecordGroup* const layer = takeGroup(8);
        const std::uint64_t layerRecord = layer ? nameTarget("LAYER", layer->value) : 0;
        link("layer", layerRecord ? layerRecord : nameTarget("LAYER", "0"));
        linetype();
        const RecordGroup* const material = takeGroup(347);
        ruled("matflags", "material", material ? handleFromText(material->value).value_or(0) : 0);
        entityColor();
        const RecordGroup* const weight = takeGroup(370);
        whole("lweight", indexOfWeight(weight ? static_cast<int>(numberOf(*weight)) : -1));
        const RecordGroup* const scale = takeGroup(48);
        std::uint16_t slot = 0;
        if (m_layout->findSlot("ltscale", slot))
            setValue(slot, ValueKind::real, scale ? numberOf(*scale) : 1.0);
        const RecordGroup* const hidden = takeGroup(60);
        whole("invisible", hidden ? static_cast<std::int64_t>(numberOf(*hidden)) : 0);
        const RecordGroup* const plotStyle = takeGroup(390);
        ruled("psflags", "plotstyle", plotStyle ? handleFromText(plotStyle->value).value_or(0) : 0);
        const RecordGroup* const shadow = takeGroup(284);
        whole("shadow", shadow ? static_cast<std::int64_t>(numberOf(*shadow)) : 0);
        const RecordGroup* const style = takeGroup(348);
        whole("has_fullvs", style != nullptr);
        if (style) link("fullvs", handleFromText(style->value).value_or(0));
        picture();
    }

    /// A reference that a number tells the way of: 3 where it is stored.
    void ruled(std::string_view flags, std::string_view name, std::uint64_t target) {
        constexpr int isStored = 3;
        std::uint16_t slot = 0;
        const RecordValue* const before =
            m_original && m_layout->findSlot(flags, slot) ? m_original->values.find(slot) : nullptr;
        if (target == 0 && before && before->whole != isStored) return; // by block, or by the standard
        whole(flags, target ? isStored : 0);
        link(name, target);
    }

    void linetype() {
        const RecordGroup* const group = takeGroup(6);
        const std::string_view name = group ? withoutBlanks(group->value) : std::string_view("BYLAYER");
        const auto is = [&](std::string_view other) {
            return std::equal(name.begin(), name.end(), other.begin(), other.end(), [](char a, char b) {
                return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b;
            });
        };
        if (is("BYLAYER")) return whole("ltflags", 0);
        if (is("BYBLOCK")) return whole("ltflags", 1);
        if (is("CONTINUOUS")) return whole("ltflags", 2);
        const std::uint64_t target = nameTarget("LTYPE", name);
        whole("ltflags", target ? 3 : 0);
        link("ltype", target);
    }

    void entityColor() {
        std::uint16_t slot = 0;
        if (!m_layout->findSlot("color", slot)) return;
        const RecordGroup* const index = takeGroup(colorCode);
        const RecordGroup* const exact = takeGroup(trueColorCode);
        const RecordGroup* const name = takeGroup(colorNameCode);
        const RecordGroup* const clearness = takeGroup(440);
        ValueColor color;
        color.index = index ? std::abs(static_cast<int>(numberOf(*index))) : byLayer;
        if (m_form >= 18) {
            if (exact) {
                color.hasValue = true;
                color.value = trueColor | (static_cast<std::uint32_t>(numberOf(*exact)) & 0xFFFFFF);
            }
            if (const std::uint64_t book = name ? nameTarget("COLOR", name->value) : 0) {
                color.isOfBook = true;
                link("colorbook", book);
            }
            if (clearness) {
                color.hasTransparency = true;
                color.transparency =
                    static_cast<std::uint32_t>(static_cast<std::int64_t>(numberOf(*clearness)));
            }
        }
        set(slot).color = color;
    }

    void picture() {
        takeGroup(92);
        takeGroup(160);
        std::string bytes;
        while (const RecordGroup* const group = takeGroup(310)) appendDigits(group->value, bytes);
        whole("has_graphic", !bytes.empty());
        whole("gsize", static_cast<std::int64_t>(bytes.size()));
        std::uint16_t slot = 0;
        if (!bytes.empty() && m_layout->findSlot("graphic", slot)) set(slot).run = kept(std::move(bytes));
    }

    // Extended data

    void extendedData() {
        std::uint16_t slot = 0;
        if (!m_layout->findSlot("eed", slot)) return;
        std::vector<RecordValue>& all = m_outermost.scope->array(slot);
        std::string bytes;
        std::uint64_t application = 0;
        const auto finish = [&] {
            if (application == 0) return;
            all.emplace_back().reference = {5, application};
            all.emplace_back().run = kept(std::move(bytes));
            bytes.clear();
        };
        const std::vector<RecordGroup>& groups = m_record->groups;
        for (std::size_t i = m_record->extendedDataBegin; i < groups.size(); ++i) {
            if (groups[i].code == applicationCode) {
                finish();
                application = nameTarget("APPID", groups[i].value);
            } else if (application) {
                extendedItem(groups, i, bytes);
            }
        }
        finish();
    }

    void extendedItem(const std::vector<RecordGroup>& groups, std::size_t& at, std::string& bytes) {
        const RecordGroup& group = groups[at];
        if (group.code < firstExtendedCode || group.code > extendedLongCode) return;
        bytes += static_cast<char>(group.code - firstExtendedCode);
        switch (group.code) {
        case firstExtendedCode:
            return extendedText(group.value, bytes);
        case 1002:
            bytes += static_cast<char>(withoutBlanks(group.value) == "}");
            return;
        case extendedLayerCode:
            return appendNumber(__builtin_bswap64(nameTarget("LAYER", group.value)), 8, bytes);
        case 1004: {
            std::string digits;
            appendDigits(group.value, digits);
            bytes += static_cast<char>(digits.size());
            bytes += digits;
            return;
        }
        case 1005:
            return appendNumber(__builtin_bswap64(handleFromText(group.value).value_or(0)), 8, bytes);
        case 1070:
            return appendNumber(static_cast<std::uint64_t>(static_cast<std::int64_t>(numberOf(group))), 2,
                                bytes);
        case extendedLongCode:
            return appendNumber(static_cast<std::uint64_t>(static_cast<std::int64_t>(numberOf(group))), 4,
                                bytes);
        default:
            break;
        }
        const std::size_t count = group.code < 1040 ? 3 : 1;
        for (std::size_t i = 0; i < count; ++i) {
            const bool isThere = i == 0 || (at + 1 < groups.size() &&
                                            groups[at + 1].code == group.code + 10 * static_cast<int>(i));
            if (i > 0 && isThere) ++at;
            appendReal(isThere ? realFromText(groups[at].value).value_or(0.0) : 0.0, bytes);
        }
    }

    void extendedText(std::string_view value, std::string& bytes) {
        std::string text;
        appendUnescaped(value, text);
        if (m_form < 21) {
            constexpr std::size_t longest = 255;
            text.resize(std::min(text.size(), longest));
            bytes += static_cast<char>(text.size());
            bytes += '\0';
            bytes += static_cast<char>(m_codePage);
            bytes += text;
            return;
        }
        const std::size_t sizeAt = bytes.size();
        appendNumber(0, 2, bytes);
        utf16Of(text, m_units);
        const std::size_t units = std::min<std::size_t>(m_units.size(), 0xFFFF);
        for (std::size_t i = 0; i < units; ++i) appendNumber(m_units[i], 2, bytes);
        bytes[sizeAt] = static_cast<char>(units);
        bytes[sizeAt + 1] = static_cast<char>(units >> 8);
    }

    static void appendNumber(std::uint64_t value, int count, std::string& bytes) {
        for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> 8 * i);
    }
    static void appendReal(double value, std::string& bytes) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        appendNumber(bits, 8, bytes);
    }

    int m_form;
    unsigned m_codePage;
    const RecordNames& m_names;
    const RecordFields* m_original = nullptr;
    const RecordScope* m_before = nullptr; ///< the present pass in it
    const RecordReading* m_originalReading = nullptr;
    DrawingRecord* m_record = nullptr;
    const RecordLayout* m_layout = nullptr;
    RecordHead m_head;
    Region m_region;
    Frame m_outermost{};
    const Frame* m_frame = nullptr;
    RecordScope* m_arrays = nullptr; ///< outside of the innermost loop: its arrays have an element for a pass
    std::span<const Line> m_lines;
    std::vector<double> m_values;
    std::vector<char> m_isSet;   ///< by slot: a group or a line has told it
    std::vector<char> m_isTaken; ///< by group
    std::deque<std::string> m_texts;
    std::vector<std::uint16_t> m_units;
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

void RecordGathering::gatherVariables(DrawingRecord& groups, const RecordLayout& layout,
                                      RecordScope& values) {
    m_work->variables(groups, layout, values);
}

} // namespace hostkit
