#include "recordtranscription.h"

#include "adscodes.h"
#include "extendeddatacoding.h"
#include "fieldtable.h"
#include "groupcodes.h"
#include "longcolors.h"
#include "recordhead.h"
#include "transcriptnatives.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hostkit {

namespace {

using Line = TranscriptLine;

} // namespace

/// Runs a transcript over the values of one record.
class Transcribing final : public NativeOutput {
public:
    Transcribing(const RecordReading& reading, const RecordNames& names, const DrawingStyle& style)
        : m_reading(reading)
        , m_names(names)
        , m_style(style) {}

    bool record(const RecordFields& record, const EntityPlace& place, std::string& bytes) {
        if (!record.isKnown || !record.isWhole || !record.layout->hasTranscript) return false;
        begin(record, bytes);
        const Transcript& transcript = record.layout->transcript;
        m_lines = transcript.lines;
        head(transcript.recordName, place);
        if (record.layout->isEntity) entity(place);
        lines(0, m_lines.size());
        extendedData();
        return true;
    }

    void variables(const RecordFields& header, std::string& bytes) {
        if (!header.isKnown || !header.layout->hasTranscript) return;
        begin(header, bytes);
        m_lines = header.layout->transcript.lines;
        lines(0, m_lines.size());
    }

    void opaque(const RecordFields& record, std::string_view name, const EntityPlace& place,
                std::string& bytes) {
        begin(record, bytes);
        head(name, place);
        if (record.layout->isEntity) entity(place);
        extendedData();
    }

    // What native words write.
    const RecordReading& reading() const override { return m_reading; }
    const RecordNames& names() const override { return m_names; }
    const RecordFields& fields() const override { return *m_record; }
    const RecordValue* value(std::string_view name) const override {
        std::uint16_t slot = 0;
        return m_record->layout->findSlot(name, slot) ? find(slot) : nullptr;
    }
    const std::vector<RecordValue>* array(std::string_view name) const override {
        std::uint16_t slot = 0;
        return m_record->layout->findSlot(name, slot) ? findArray(slot) : nullptr;
    }
    std::size_t index() const override { return currentIndex(); }
    void text(int code, std::string_view text) override {
        appendCode(code, m_style, *m_bytes);
        appendEscaped(text, *m_bytes);
        *m_bytes += m_style.newline;
    }
    void number(int code, double value) override {
        switch (AcDb::groupKind(code)) {
        case AcDb::GroupKind::kReal:
        case AcDb::GroupKind::kPoint:
            return appendReal(code, value, m_style, *m_bytes);
        case AcDb::GroupKind::kHandle:
            return appendHandle(code, static_cast<std::uint64_t>(value), m_style, *m_bytes);
        default:
            appendInteger(code, static_cast<std::int64_t>(value), m_style, *m_bytes);
        }
    }
    void handle(int code, std::uint64_t handle) override { appendHandle(code, handle, m_style, *m_bytes); }
    void digits(int code, std::string_view data) override {
        constexpr std::size_t mostBytes = 127;
        for (std::size_t at = 0; at < data.size(); at += mostBytes) {
            appendCode(code, m_style, *m_bytes);
            for (const char byte : data.substr(at, mostBytes)) appendByte(static_cast<unsigned char>(byte));
            *m_bytes += m_style.newline;
        }
    }

private:
    /// A pass of a loop within another, or the record.
    struct Frame {
        const RecordScope* scope;
        const Frame* outer;
    };

    void begin(const RecordFields& record, std::string& bytes) {
        m_record = &record;
        m_bytes = &bytes;
        m_values.assign(record.layout->slots, 0.0);
        m_outermost = {&record.values, nullptr};
        m_frame = &m_outermost;
        load(record.values);
    }

    void load(const RecordScope& scope) {
        for (const RecordScope::Item& item : scope.items()) {
            const RecordLayout::SlotField& field = fieldOf(item.slot);
            if (!field.isField) continue;
            switch (valueKindOf(static_cast<std::uint8_t>(field.code))) {
            case ValueKind::whole:
                m_values[item.slot] = static_cast<double>(item.value.whole);
                break;
            case ValueKind::real:
                std::copy_n(item.value.real, 3, m_values.begin() + item.slot);
                break;
            case ValueKind::reference:
                m_values[item.slot] = static_cast<double>(resolved(item.value));
                break;
            case ValueKind::color:
                m_values[item.slot] = indexOf(item.value.color);
                break;
            case ValueKind::text:
            case ValueKind::bytes:
                m_values[item.slot] = static_cast<double>(item.value.run.count);
                break;
            default:
                break;
            }
        }
    }

    const RecordLayout::SlotField& fieldOf(std::uint16_t slot) const {
        static const RecordLayout::SlotField none;
        const auto& fields = m_record->layout->slotFields;
        return slot < fields.size() ? fields[slot] : none;
    }

    std::uint64_t resolved(const RecordValue& value) const {
        return value.reference.resolved(m_record->handle);
    }

    const RecordValue* find(std::uint16_t slot) const {
        for (const Frame* frame = m_frame; frame; frame = frame->outer)
            if (const RecordValue* const found = frame->scope->find(slot)) return found;
        return nullptr;
    }
    const std::vector<RecordValue>* findArray(std::uint16_t slot) const {
        for (const Frame* frame = m_frame; frame; frame = frame->outer)
            if (const std::vector<RecordValue>* const found = frame->scope->findArray(slot)) return found;
        return nullptr;
    }
    const RecordScope::Loop* findLoop(std::uint16_t slot) const {
        for (const Frame* frame = m_frame; frame; frame = frame->outer)
            if (const RecordScope::Loop* const found = frame->scope->findLoop(slot)) return found;
        return nullptr;
    }
    std::size_t currentIndex() const {
        const double index = m_values[m_record->layout->loopSlot];
        return index > 0 ? static_cast<std::size_t>(index) : 0;
    }

    const RecordValue* find(const Line::Part& part) const {
        if (part.isElement) {
            const std::vector<RecordValue>* const all = findArray(part.slot);
            return all && currentIndex() < all->size() ? &(*all)[currentIndex()] : nullptr;
        }
        if (part.loopSlot) {
            const RecordScope::Loop* const loop = findLoop(part.loopSlot);
            return loop && currentIndex() < loop->count ? loop->passes[currentIndex()]->find(part.slot)
                                                        : nullptr;
        }
        return find(part.slot);
    }

    // Lines

    void lines(std::size_t begin, std::size_t end) {
        bool held = false;
        for (std::size_t i = begin; i < end;) {
            const Line& line = m_lines[i];
            switch (line.kind) {
            case Line::Kind::condition:
                held = line.condition.holds(m_values);
                if (held) lines(i + 1, line.end);
                break;
            case Line::Kind::otherwise:
                if (!held) lines(i + 1, line.end);
                break;
            case Line::Kind::loop:
                loop(line, i);
                break;
            default:
                if (line.condition.empty() || line.condition.holds(m_values)) single(line);
            }
            i = line.end ? line.end : i + 1;
        }
    }

    void loop(const Line& line, std::size_t at) {
        const double outerIndex = m_values[m_record->layout->loopSlot];
        const RecordScope::Loop* const passes = line.hasLayoutLoop ? findLoop(line.slot) : nullptr;
        const double told =
            line.hasLayoutLoop ? passes ? passes->count : 0.0 : line.condition.value(m_values);
        const std::size_t count = told > 0 ? static_cast<std::size_t>(told) : 0;
        const Frame* const outer = m_frame;
        for (std::size_t i = 0; i < count; ++i) {
            Frame frame{nullptr, outer};
            if (passes) {
                frame.scope = passes->passes[i].get();
                load(*frame.scope);
                m_frame = &frame;
            }
            m_values[m_record->layout->loopSlot] = static_cast<double>(i);
            lines(at + 1, line.end);
        }
        m_frame = outer;
        if (passes && count > 0) load(*outer->scope); // names that passes have too
        m_values[m_record->layout->loopSlot] = outerIndex;
    }

    void single(const Line& line) {
        switch (line.kind) {
        case Line::Kind::mark:
        case Line::Kind::fixed:
            return appendGroup(line.code, line.text, m_style, *m_bytes);
        case Line::Kind::bits:
            return bits(line);
        case Line::Kind::read:
            m_values[line.slot] = line.expression.value(m_values);
            return;
        case Line::Kind::computed:
            return value(line, line.expression.value(m_values));
        case Line::Kind::field:
            if (line.conversion == Line::Conversion::native) return writeNative(line.text, line.code, *this);
            return line.parts[0].isAll ? all(line) : field(line);
        default:
            return;
        }
    }

    /// A number that may be the standard.
    void value(const Line& line, double value) { numbers(line, {value}, 1); }

    void bits(const Line& line) {
        std::int64_t sum = 0;
        for (const Line::Part& part : line.parts) {
            const RecordValue* const found = part.kind == ValueKind::none ? nullptr : find(part);
            const std::int64_t own = found ? found->whole : static_cast<std::int64_t>(m_values[part.slot]);
            const bool isSingle = (part.mask & (part.mask - 1)) == 0;
            if (part.isInverted)
                sum |= own ? 0 : part.mask;
            else
                sum |= isSingle ? (own ? part.mask : 0) : own & part.mask;
        }
        value(line, static_cast<double>(sum));
    }

    void all(const Line& line) {
        const std::vector<RecordValue>* const values = findArray(line.parts[0].slot);
        if (!values || isStandard(line, *values)) return;
        for (const RecordValue& value : *values) one(line, value);
    }

    /// All numbers of an array, which then is left out as a whole.
    static bool isStandard(const Line& line, const std::vector<RecordValue>& values) {
        if (line.presence != Line::Presence::unlessStandard || line.parts[0].kind != ValueKind::real)
            return false;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (values[i].real[0] != standardOf(line, i)) return false;
        return true;
    }

    void field(const Line& line) {
        const Line::Part& first = line.parts[0];
        if (first.kind == ValueKind::real || first.kind == ValueKind::whole || first.kind == ValueKind::none)
            return ordinates(line);
        const RecordValue* const found = find(first);
        if (found) return one(line, *found);
        if (line.presence != Line::Presence::always) return;
        if (line.hasStandardText)
            text(line.code, line.text);
        else
            number(line.code, line.standard.empty() ? 0.0 : line.standard[0]);
    }

    /// Numbers, alone or as the ordinates of a point, perhaps from several fields.
    void ordinates(const Line& line) {
        std::array<double, 4> values{};
        std::size_t count = 0;
        bool isThere = false;
        for (const Line::Part& part : line.parts) {
            const RecordValue* const found = part.kind == ValueKind::none ? nullptr : find(part);
            isThere = isThere || found || part.kind == ValueKind::none;
            for (std::size_t i = 0; i < part.ordinates && count < 3; ++i, ++count)
                values[count] = part.kind == ValueKind::none    ? m_values[part.slot]
                                : !found                        ? standardOf(line, count)
                                : part.kind == ValueKind::whole ? static_cast<double>(found->whole)
                                                                : found->real[i];
        }
        if (!isThere && line.presence != Line::Presence::always) return;
        numbers(line, values, count);
    }

    static double standardOf(const Line& line, std::size_t ordinate) {
        return line.standard.empty() ? 0.0 : line.standard[std::min(ordinate, line.standard.size() - 1)];
    }

    void numbers(const Line& line, std::array<double, 4> values, std::size_t count) {
        for (double& value : values) {
            if (line.conversion == Line::Conversion::degrees) value = degreesFromRadians(value);
            if (line.conversion == Line::Conversion::weight) value = weightOfIndex(static_cast<int>(value));
        }
        bool isStandard =
            line.presence == Line::Presence::unlessStandard && !line.parts.empty() && !line.parts[0].isAll;
        for (std::size_t i = 0; i < count; ++i) isStandard = isStandard && values[i] == standardOf(line, i);
        if (isStandard) return;
        if (line.conversion == Line::Conversion::julian) {
            number(line.code, values[0] + values[1] / millisecondsOfDay);
            return;
        }
        for (std::size_t i = 0; i < count; ++i) number(line.code + 10 * static_cast<int>(i), values[i]);
    }

    void one(const Line& line, const RecordValue& value) {
        const Line::Part& part = line.parts[0];
        switch (part.kind) {
        case ValueKind::whole:
            return numbers(line, {static_cast<double>(value.whole)}, 1);
        case ValueKind::real:
            return numbers(line, {value.real[0], value.real[1], value.real[2]}, part.ordinates);
        case ValueKind::text:
            return textOf(line, value.run);
        case ValueKind::bytes:
            m_text.clear();
            appendBytes(value.run, m_text);
            return digits(line.code, m_text);
        case ValueKind::color:
            return color(line, value.color, part.slot);
        case ValueKind::reference:
            return reference(line, resolved(value));
        default:
            return;
        }
    }

    void textOf(const Line& line, const ValueRun& run) {
        m_text.clear();
        m_reading.appendText(run, m_text);
        if (line.presence == Line::Presence::unlessStandard && m_text == line.text) return;
        if (line.conversion == Line::Conversion::pieces) return pieces(line.code, line.otherCode, m_text);
        text(line.code, m_text);
    }

    void pieces(int code, int pieceCode, std::string_view text) override {
        constexpr std::size_t longest = 250;
        for (std::size_t cut = lengthOf(text, longest); cut < text.size(); cut = lengthOf(text, longest)) {
            piece(pieceCode, text.substr(0, cut));
            text.remove_prefix(cut);
        }
        piece(code, text);
    }

    void piece(int code, std::string_view text) {
        m_escaped.clear();
        appendEscaped(text, m_escaped);
        appendGroup(code, m_escaped, m_style, *m_bytes);
    }

    /// Of so many characters, in bytes.
    [[nodiscard]] std::size_t lengthOf(std::string_view text, std::size_t characters) const {
        const bool isUtf8 = m_reading.form() >= 21;
        std::size_t length = 0;
        for (; length < text.size(); ++length) {
            const bool isBegin = !isUtf8 || (text[length] & 0xC0) != 0x80;
            if (isBegin && characters-- == 0) break;
        }
        return length;
    }

    void reference(const Line& line, std::uint64_t target) {
        if (line.conversion == Line::Conversion::arrow) {
            std::string_view name = m_names.nameOf(target);
            if (name.starts_with('_')) name.remove_prefix(1);
            return text(line.code, name);
        }
        if (line.conversion == Line::Conversion::name) {
            const std::string_view name = m_names.nameOf(target);
            const bool isOptional = line.presence == Line::Presence::unlessStandard;
            if (isOptional && (target == 0 || (line.hasStandardText && name == line.text))) return;
            return text(line.code, name.empty() && line.hasStandardText ? std::string_view(line.text) : name);
        }
        if (line.presence == Line::Presence::unlessStandard && target == 0) return;
        handle(line.code, target);
    }

    // Colours

    void color(const Line& line, const ValueColor& color, std::uint16_t slot) {
        if (line.conversion == Line::Conversion::longColor) return longColor(line, color);
        const bool isExact = color.hasValue && isTrueColor(color.value);
        const int index = indexOf(color);
        const bool isStandard = line.presence == Line::Presence::unlessStandard && !isExact &&
                                index == static_cast<int>(standardOf(line, 0));
        if (isStandard) return;
        const bool isOff =
            line.conversion == Line::Conversion::layerColor && m_values[line.parts[1].slot] != 0.0;
        number(line.code, isOff ? -index : index);
        if (line.conversion == Line::Conversion::indexColor) return;
        if (isExact) number(line.code + trueColorShift, color.value & 0xFFFFFF);
        colorName(line.code + colorNameShift, slot);
    }

    static int indexOf(const ValueColor& color) {
        return color.hasValue ? indexOfLongColor(color.value, color.index) : color.index;
    }

    void colorName(int code, std::uint16_t slot) {
        const RecordValue* const name = find(static_cast<std::uint16_t>(slot + 1));
        if (!name) return;
        m_text.clear();
        if (const RecordValue* const book = find(static_cast<std::uint16_t>(slot + 2))) {
            m_reading.appendText(book->run, m_text);
            m_text += '$';
        }
        m_reading.appendText(name->run, m_text);
        text(code, m_text);
    }

    void longColor(const Line& line, const ValueColor& color) {
        number(line.code, static_cast<std::int32_t>(color.hasValue ? color.value : longColorOf(color.index)));
    }

    // What every record has

    void head(std::string_view name, const EntityPlace& place) {
        appendGroup(0, name, m_style, *m_bytes);
        handle(handleCodeOf(name), m_record->handle);
        if (const std::uint64_t dictionary = referenceTo(common().extensionDictionary)) {
            appendGroup(applicationGroupCode, "{ACAD_XDICTIONARY", m_style, *m_bytes);
            handle(hardOwnerCode, dictionary);
            appendGroup(applicationGroupCode, "}", m_style, *m_bytes);
        }
        const std::vector<RecordValue>* const reactors = findArray(common().reactors);
        if (reactors && !reactors->empty()) {
            appendGroup(applicationGroupCode, "{ACAD_REACTORS", m_style, *m_bytes);
            for (const RecordValue& reactor : *reactors) handle(ownerCode, resolved(reactor));
            appendGroup(applicationGroupCode, "}", m_style, *m_bytes);
        }
        const std::uint64_t owner = referenceTo(common().owner);
        handle(ownerCode, owner ? owner : place.owner);
    }

    const RecordLayout::CommonSlots& common() const { return m_record->layout->common; }
    std::uint64_t referenceTo(std::uint16_t slot) const {
        const RecordValue* const found = slot ? find(slot) : nullptr;
        return found ? resolved(*found) : 0;
    }
    std::int64_t wholeOf(std::uint16_t slot) const {
        const RecordValue* const found = slot ? find(slot) : nullptr;
        return found ? found->whole : 0;
    }
    double realOf(std::uint16_t slot, double otherwise) const {
        const RecordValue* const found = slot ? find(slot) : nullptr;
        return found ? found->real[0] : otherwise;
    }

    void entity(const EntityPlace& place) {
        appendGroup(subclassMarkCode, "AcDbEntity", m_style, *m_bytes);
        if (place.isInPaper) number(67, 1);
        if (!place.layout.empty()) text(410, place.layout);
        text(8, m_names.nameOf(referenceTo(common().layer)));
        linetype();
        if (const std::uint64_t material = referenceTo(common().material)) handle(347, material);
        entityColor();
        transparency();
        if (wholeOf(common().hidden) & 1) number(60, 1);
        if (const std::int64_t weight = wholeOf(common().weight);
            weightOfIndex(static_cast<int>(weight)) != -1)
            number(370, weightOfIndex(static_cast<int>(weight)));
        if (const double scale = realOf(common().scale, 1.0); scale != 1.0) number(48, scale);
        picture();
        if (const std::uint64_t style = referenceTo(common().plotStyle)) handle(390, style);
        if (const std::int64_t shadow = wholeOf(common().shadow)) number(284, static_cast<double>(shadow));
        if (const std::uint64_t style = referenceTo(common().style)) handle(348, style);
    }

    void linetype() {
        static constexpr std::array<std::string_view, 3> names{"", "ByBlock", "Continuous"};
        const std::int64_t flags = wholeOf(common().linetypeRule);
        if (flags == 3)
            text(6, m_names.nameOf(referenceTo(common().linetype)));
        else if (flags > 0 && flags < 3)
            text(6, names[static_cast<std::size_t>(flags)]);
    }

    void entityColor() {
        const RecordValue* const found = find(common().color);
        if (!found) return;
        const ValueColor& color = found->color;
        if (color.index != byLayerIndex || color.hasValue) number(colorCode, color.index);
        if (color.hasValue && !color.isOfBook) number(trueColorCode, color.value & 0xFFFFFF);
        if (!color.isOfBook) return;
        const std::uint64_t book = referenceTo(common().colorBook);
        if (const std::uint32_t* const rgb = m_names.colorOf(book)) number(trueColorCode, *rgb);
        const std::string_view name = m_names.nameOf(book);
        if (!name.empty()) text(colorNameCode, name);
    }

    void transparency() {
        const RecordValue* const found = find(common().color);
        if (found && found->color.hasTransparency)
            number(440, static_cast<std::int32_t>(found->color.transparency));
    }

    void picture() {
        const RecordValue* const found = find(common().picture);
        if (!found || found->run.count == 0) return;
        number(m_reading.form() >= 24 ? 160 : 92, static_cast<double>(found->run.count));
        m_text.clear();
        appendBytes(found->run, m_text);
        digits(310, m_text);
    }

    // Extended data

    void extendedData() {
        const std::vector<RecordValue>* const all = findArray(common().extendedData);
        if (!all) return;
        for (std::size_t i = 0; i + 1 < all->size(); i += 2) {
            text(applicationCode, m_names.nameOf((*all)[i].reference.value));
            writeExtendedItems((*all)[i + 1].run, *this);
        }
    }

    void appendBytes(const ValueRun& run, std::string& bytes) const {
        BitReader reader(m_reading.objects(), run.firstBit, run.firstBit + run.count * 8);
        for (std::uint64_t i = 0; i < run.count && !reader.failed(); ++i)
            bytes += static_cast<char>(reader.rawByte());
    }
    void appendByte(unsigned char byte) {
        static constexpr std::string_view digitsOfByte = "0123456789ABCDEF";
        *m_bytes += digitsOfByte[byte >> 4];
        *m_bytes += digitsOfByte[byte & 15];
    }

    const RecordReading& m_reading;
    const RecordNames& m_names;
    const DrawingStyle& m_style;
    const RecordFields* m_record = nullptr;
    std::string* m_bytes = nullptr;
    std::span<const Line> m_lines;
    std::vector<double> m_values; ///< of numbers, by slot, in the present pass
    Frame m_outermost{};
    const Frame* m_frame = nullptr;
    std::string m_text, m_escaped;
};

RecordTranscription::RecordTranscription(const RecordReading& reading, const RecordNames& names,
                                         const DrawingStyle& style)
    : m_work(std::make_unique<Transcribing>(reading, names, style)) {}

RecordTranscription::~RecordTranscription() = default;

bool RecordTranscription::append(const RecordFields& record, const EntityPlace& place, std::string& bytes) {
    return m_work->record(record, place, bytes);
}

void RecordTranscription::appendVariables(const RecordFields& header, std::string& bytes) {
    m_work->variables(header, bytes);
}

void RecordTranscription::appendOpaque(const RecordFields& record, std::string_view name,
                                       const EntityPlace& place, std::string& bytes) {
    m_work->opaque(record, name, place, bytes);
}

} // namespace hostkit
