#include "recordfields.h"

#include "binarychecksums.h"
#include "textencoding.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace hostkit {

/// Runs the steps of a layout over the streams of one record.
class FieldReading {
public:
    FieldReading(RecordReading& owner, RecordFields& out)
        : m_owner(owner)
        , m_out(out)
        , m_values(owner.m_values)
        , m_data(owner.m_objects, out.dataBegin, out.dataEnd)
        , m_text(owner.m_objects, out.textBegin, out.textEnd)
        , m_references(owner.m_objects, out.referencesBegin, out.referencesEnd) {
        m_values.assign(out.layout->slots, 0.0);
    }

    void run() {
        steps(0, m_out.layout->steps.size());
        const bool hasFailed = m_failed || m_data.failed() || m_text.failed() || m_references.failed();
        if (m_out.isKnown)
            m_out.isWhole = !hasFailed && m_data.left() == 0 && m_text.left() == 0 && m_references.left() < 8;
        else
            m_out.isWhole = !hasFailed;
        m_out.dataBegin = m_data.position();
        m_out.referencesBegin = m_references.position();
    }

private:
    static constexpr double mostLoops = 1.0e7;

    void steps(std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end && !isOver();) {
            const LayoutStep& step = m_out.layout->steps[i];
            switch (step.kind) {
            case LayoutStep::Kind::let:
                set(step.slot, step.condition.value(m_values));
                break;
            case LayoutStep::Kind::field:
                field(step, static_cast<std::uint16_t>(i));
                break;
            default:
                block(step, i);
            }
            i = step.end ? step.end : i + 1;
        }
    }

    [[nodiscard]] bool isOver() const {
        return m_failed || m_data.failed() || m_references.failed() || m_text.failed();
    }

    void block(const LayoutStep& step, std::size_t at) {
        switch (step.kind) {
        case LayoutStep::Kind::condition:
            m_held = step.condition.holds(m_values);
            if (m_held) steps(at + 1, step.end), m_held = true;
            break;
        case LayoutStep::Kind::otherwise:
            if (!m_held) steps(at + 1, step.end);
            break;
        case LayoutStep::Kind::loop: {
            const double count = step.condition.value(m_values);
            if (!isCount(count)) return;
            for (double i = 0; i < count && !isOver(); ++i) {
                set(m_out.layout->loopSlot, i);
                steps(at + 1, step.end);
            }
            break;
        }
        default:
            for (double i = 0; i < mostLoops && step.condition.holds(m_values) && !isOver(); ++i)
                steps(at + 1, step.end);
        }
    }

    /// What a count tells takes a bit each at least: a larger one is damage, and never becomes memory.
    [[nodiscard]] bool isCount(double count) {
        const double most = static_cast<double>(m_data.left() + m_text.left() + m_references.left());
        if (count >= 0 && count <= most) return true;
        m_failed = true;
        return false;
    }

    void set(std::uint16_t slot, double value) { m_values[slot] = value; }

    void field(const LayoutStep& step, std::uint16_t number) {
        const bool isBytes = step.code == FieldCode::bytes;
        if (!step.condition.empty() && !step.condition.holds(m_values)) return;
        if (step.count.empty() || isBytes) return one(step, number);
        const double count = step.count.value(m_values);
        if (!isCount(count)) return;
        if (step.code == FieldCode::standardChain) chainStart(step);
        for (double i = 0; i < count && !isOver(); ++i) one(step, number);
    }

    RecordField& add(std::uint16_t number) {
        RecordField& field = m_out.fields.emplace_back();
        field.step = number;
        return field;
    }

    void one(const LayoutStep& step, std::uint16_t number) {
        switch (step.code) {
        case FieldCode::bit:
            return whole(step, number, m_data.bit());
        case FieldCode::twoBits:
            return whole(step, number, static_cast<std::int64_t>(m_data.bits(2)));
        case FieldCode::rawByte:
            return whole(step, number, m_data.rawByte());
        case FieldCode::rawShort:
            return whole(step, number, static_cast<std::int16_t>(m_data.rawShort()));
        case FieldCode::rawLong:
            return whole(step, number, static_cast<std::int32_t>(m_data.rawLong()));
        case FieldCode::rawLongLong:
            return whole(step, number, static_cast<std::int64_t>(m_data.rawLongLong()));
        case FieldCode::bitShort:
            return whole(step, number, m_data.bitShort());
        case FieldCode::bitLong:
            return whole(step, number, m_data.bitLong());
        case FieldCode::bitLongLong:
            return whole(step, number, static_cast<std::int64_t>(m_data.bitLongLong()));
        case FieldCode::zeroEnded:
            return whole(step, number, countToZero());
        case FieldCode::text:
            return text(number);
        case FieldCode::bytes:
            return bytes(step, number);
        case FieldCode::bodyData:
            return bodyData(number);
        case FieldCode::extendedData:
            return extendedData(number);
        case FieldCode::color:
        case FieldCode::longColor:
            return color(step, number);
        case FieldCode::entityColor:
            return entityColor(number);
        case FieldCode::reference:
            return reference(number);
        case FieldCode::references:
            while (m_references.left() >= 8 && !isOver()) reference(number);
            return;
        case FieldCode::ownHandle:
            return ownHandle(step, number);
        case FieldCode::opaque:
            return opaque();
        case FieldCode::tooDeep:
            m_failed = true;
            return;
        default:
            return real(step, number);
        }
    }

    void whole(const LayoutStep& step, std::uint16_t number, std::int64_t value) {
        add(number).whole = value;
        set(step.slot, static_cast<double>(value));
    }

    std::int64_t countToZero() {
        std::int64_t count = 0;
        while (m_data.rawByte() != 0) ++count;
        return count;
    }

    double standard(const LayoutStep& step, std::size_t ordinate) const {
        std::uint16_t slot = 0;
        if (step.standard.size() == 1 && step.standard[0].isName(slot)) return m_values[slot + ordinate];
        return step.standard[std::min(ordinate, step.standard.size() - 1)].value(m_values);
    }

    void chainStart(const LayoutStep& step) {
        for (std::size_t i = 0; i < 2; ++i) m_values[step.slot + i] = standard(step, i);
    }

    void real(const LayoutStep& step, std::uint16_t number) {
        RecordField& field = add(number);
        unsigned count = 1;
        const auto values = [&](unsigned ordinates, auto&& read) {
            count = ordinates;
            for (unsigned i = 0; i < count; ++i) field.real[i] = read(i);
        };
        const auto bitDouble = [&](unsigned) { return m_data.bitDouble(); };
        const auto rawDouble = [&](unsigned) { return m_data.rawDouble(); };
        const auto byStandard = [&](unsigned i) { return m_data.bitDouble(standard(step, i)); };
        switch (step.code) {
        case FieldCode::rawDouble:
            values(1, rawDouble);
            break;
        case FieldCode::rawPoint2:
            values(2, rawDouble);
            break;
        case FieldCode::rawPoint3:
            values(3, rawDouble);
            break;
        case FieldCode::bitDouble:
            values(1, bitDouble);
            break;
        case FieldCode::bitPoint2:
            values(2, bitDouble);
            break;
        case FieldCode::bitPoint3:
            values(3, bitDouble);
            break;
        case FieldCode::standardDouble:
            values(1, byStandard);
            break;
        case FieldCode::standardPoint2:
            values(2, byStandard);
            break;
        case FieldCode::standardPoint3:
            values(3, byStandard);
            break;
        case FieldCode::standardChain:
            values(2, [&](unsigned i) { return m_data.bitDouble(m_values[step.slot + i]); });
            break;
        case FieldCode::thickness:
            field.real[0] = m_data.bit() ? 0.0 : m_data.bitDouble();
            break;
        default: // a direction
            if (m_data.bit())
                values(3, [](unsigned i) { return i == 2 ? 1.0 : 0.0; });
            else
                values(3, bitDouble);
        }
        for (unsigned i = 0; i < count; ++i) m_values[step.slot + i] = field.real[i];
    }

    void run(std::uint16_t number, BitReader& stream, std::size_t count, std::size_t bitsOfOne) {
        if (count > stream.left() / bitsOfOne) return stream.fail();
        RecordField& field = add(number);
        field.run = {stream.position(), count};
        stream.moveTo(stream.position() + count * bitsOfOne);
    }

    void text(std::uint16_t number) {
        const bool isWide = m_owner.m_form >= 21;
        if (isWide && m_out.textBegin == m_out.textEnd) { // a record without texts: all of them are empty
            add(number).run = {0, 0};
            return;
        }
        BitReader& stream = isWide ? m_text : m_data;
        const auto count = static_cast<std::uint16_t>(stream.bitShort());
        run(number, stream, count, isWide ? 16 : 8);
    }

    void bytes(const LayoutStep& step, std::uint16_t number) {
        const double count = step.count.value(m_values);
        if (isCount(count)) run(number, m_data, static_cast<std::size_t>(count), 8);
    }

    /// Up to its own end record.
    void bodyData(std::uint16_t number) {
        using namespace std::string_view_literals;
        static constexpr std::array ends{"End\x0e\x02of\x0e\x04"
                                         "ACIS\x0d\x04"
                                         "data"sv,
                                         "End\x0e\x02of\x0e\x03"
                                         "ASM\x0d\x04"
                                         "data"sv};
        const std::size_t begin = m_data.position();
        std::string all;
        all.reserve(m_data.left() / 8);
        while (m_data.left() >= 8) all += static_cast<char>(m_data.rawByte());
        for (const std::string_view end : ends)
            if (const std::size_t at = all.find(end); at != std::string::npos) {
                m_data.moveTo(begin);
                return run(number, m_data, at + end.size(), 8);
            }
        m_data.fail();
    }

    /// Each application's data as a handle and a run of bytes.
    void extendedData(std::uint16_t number) {
        for (std::size_t count = static_cast<std::uint16_t>(m_data.bitShort()); count > 0 && !m_data.failed();
             count = static_cast<std::uint16_t>(m_data.bitShort())) {
            add(number).reference = m_data.handle();
            run(number, m_data, count, 8);
        }
    }

    void color(const LayoutStep& step, std::uint16_t number) {
        RecordField& field = add(number);
        field.color = {m_data.bitShort(), 0, 0, 0};
        if (m_owner.m_form < 18 && step.code == FieldCode::color) return;
        field.color.value = m_data.bitLong();
        field.color.hasValue = 1;
        const unsigned names = m_data.rawByte();
        if (names & 1) text(number);
        if (names & 2) text(number);
    }

    void entityColor(std::uint16_t number) {
        RecordField& field = add(number);
        const auto coded = static_cast<std::uint16_t>(m_data.bitShort());
        field.color = {coded & 0x0FFF, 0, 0, 0};
        const bool isOfBook = (coded & 0x4000) != 0;
        set(m_out.layout->colorReferenceSlot, isOfBook);
        if ((coded & 0x8000) && !isOfBook) {
            field.color.value = m_data.bitLong();
            field.color.hasValue = 1;
        }
        if (coded & 0x2000) field.color.transparency = static_cast<std::uint32_t>(m_data.bitLong());
    }

    void reference(std::uint16_t number) {
        const BinaryHandle handle = m_references.handle();
        add(number).reference = handle;
        m_out.references.push_back(handle);
    }

    void ownHandle(const LayoutStep& step, std::uint16_t number) {
        const BinaryHandle handle = m_data.handle();
        if (step.name == "handle" && m_out.handle == 0) m_out.handle = handle.value;
        add(number).reference = handle;
    }

    void opaque() {
        m_data.moveTo(m_data.end());
        m_text.moveTo(m_text.end());
        m_references.moveTo(m_references.end());
    }

    RecordReading& m_owner;
    RecordFields& m_out;
    std::vector<double>& m_values;
    BitReader m_data, m_text, m_references;
    bool m_held = false; ///< the last condition
    bool m_failed = false;
};

RecordReading::RecordReading(const BinaryContainer& container, std::span<const BinaryClass> classes)
    : m_container(container)
    , m_classes(classes)
    , m_layouts(RecordLayouts::of(container.version))
    , m_objects(container.section("AcDb:AcDbObjects"))
    , m_form(static_cast<int>(container.version) % 100) {}

const RecordLayout* RecordReading::layoutOf(unsigned type, bool& isKnown) const {
    constexpr unsigned firstClass = 500, proxyEntity = 498;
    isKnown = true;
    if (const RecordLayout* fixed = m_layouts.byNumber(type)) return fixed;
    bool isEntity = type == proxyEntity;
    if (type >= firstClass && type - firstClass < m_classes.size()) {
        const BinaryClass& own = m_classes[type - firstClass];
        if (const RecordLayout* named = m_layouts.byName(own.dxfName)) return named;
        isEntity = own.isEntity;
    }
    isKnown = false;
    return isEntity ? &m_layouts.commonEntity() : &m_layouts.commonObject();
}

bool RecordReading::findStreams(std::size_t offset, RecordFields& fields) {
    BitReader reader(m_objects, offset * 8, m_objects.size() * 8);
    const std::size_t size = reader.modularShort();
    const std::uint64_t referenceBits = m_form >= 24 ? reader.unsignedModularChar() : 0;
    const std::size_t begin = reader.position(), end = begin + size * 8;
    if (reader.failed() || end + 16 > m_objects.size() * 8 || referenceBits > end - begin) return false;
    const ByteSpan summed = m_objects.subspan(offset, end / 8 - offset);
    fields.isSumRight = checksum16(summed) == littleEndian(m_objects, end / 8, 2);
    fields.type = m_form >= 24 ? reader.objectType() : static_cast<std::uint16_t>(reader.bitShort());
    fields.dataBegin = reader.position();
    fields.referencesBegin = m_form >= 24 ? end - referenceBits : begin + reader.rawLong();
    fields.referencesEnd = end;
    if (reader.failed() || fields.referencesBegin < fields.dataBegin || fields.referencesBegin > end)
        return false;
    fields.dataEnd = fields.textBegin = fields.textEnd = fields.referencesBegin;
    if (m_form < 21) return true;
    const std::size_t flagAt = fields.referencesBegin - 1;
    fields.dataEnd = fields.textBegin = fields.textEnd = flagAt;
    if (!BitReader(m_objects, flagAt, flagAt + 1).bit()) return true;
    std::size_t at = flagAt - 16;
    std::size_t count = BitReader(m_objects, at, flagAt).rawShort();
    if (count & 0x8000) {
        at -= 16;
        count = (count & 0x7FFF) | static_cast<std::size_t>(BitReader(m_objects, at, at + 16).rawShort())
                                       << 15;
    }
    if (at < fields.dataBegin || count > at - fields.dataBegin) return false;
    fields.textEnd = at;
    fields.dataEnd = fields.textBegin = at - count;
    return true;
}

bool RecordReading::read(std::size_t offset, RecordFields& fields) {
    fields.handle = 0;
    fields.fields.clear();
    fields.references.clear();
    if (!findStreams(offset, fields)) return false;
    fields.layout = layoutOf(fields.type, fields.isKnown);
    FieldReading(*this, fields).run();
    return true;
}

std::string RecordReading::text(const RecordField& field) const {
    BitReader reader(m_objects, field.run.firstBit, m_objects.size() * 8);
    std::string result;
    if (m_form < 21) {
        for (std::uint64_t i = 0; i < field.run.count; ++i) result += static_cast<char>(reader.rawByte());
    } else {
        for (std::uint64_t i = 0; i < field.run.count; ++i) {
            std::uint32_t unit = reader.rawShort();
            if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < field.run.count) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (reader.rawShort() - 0xDC00U);
                ++i;
            }
            appendUtf8(result, static_cast<wchar_t>(unit));
        }
    }
    while (!result.empty() && result.back() == 0) result.pop_back();
    return result;
}

} // namespace hostkit
