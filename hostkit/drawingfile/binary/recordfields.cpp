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
        , m_references(owner.m_objects, out.referencesBegin, out.referencesEnd)
        , m_scope(&out.values) {
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
                field(step);
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
            RecordScope* const outer = m_scope;
            RecordScope::Loop& loop = outer->loop(step.slot);
            for (double i = 0; i < count && !isOver(); ++i) {
                m_scope = &RecordScope::addPass(loop);
                set(m_out.layout->loopSlot, i);
                steps(at + 1, step.end);
            }
            m_scope = outer;
            break;
        }
        default: {
            RecordScope* const outer = m_scope;
            RecordScope::Loop& loop = outer->loop(step.slot);
            for (double i = 0; i < mostLoops && step.condition.holds(m_values) && !isOver(); ++i) {
                m_scope = &RecordScope::addPass(loop);
                steps(at + 1, step.end);
            }
            m_scope = outer;
        }
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

    void field(const LayoutStep& step) {
        if (!step.condition.empty() && !step.condition.holds(m_values)) return;
        if (!step.isArray()) return one(step);
        m_array = &m_scope->array(step.slot);
        if (!step.count.empty()) {
            const double count = step.count.value(m_values);
            if (isCount(count)) elements(step, count);
        } else {
            one(step);
        }
        m_array = nullptr;
    }

    void elements(const LayoutStep& step, double count) {
        double i = 0;
        if (step.code == FieldCode::standardChain && count > 0) { // the first one as it is
            raw2(step);
            ++i;
        }
        for (; i < count && !isOver(); ++i) one(step);
    }

    void raw2(const LayoutStep& step) {
        RecordValue& value = add(step);
        for (unsigned i = 0; i < 2; ++i) m_values[step.slot + i] = value.real[i] = m_data.rawDouble();
    }

    RecordValue& add(const LayoutStep& step) {
        return m_array ? m_array->emplace_back() : m_scope->add(step.slot);
    }

    void one(const LayoutStep& step) {
        switch (step.code) {
        case FieldCode::bit:
            return whole(step, m_data.bit());
        case FieldCode::twoBits:
            return whole(step, static_cast<std::int64_t>(m_data.bits(2)));
        case FieldCode::rawByte:
            return whole(step, m_data.rawByte());
        case FieldCode::rawShort:
            return whole(step, static_cast<std::int16_t>(m_data.rawShort()));
        case FieldCode::rawLong:
            return whole(step, static_cast<std::int32_t>(m_data.rawLong()));
        case FieldCode::rawLongLong:
            return whole(step, static_cast<std::int64_t>(m_data.rawLongLong()));
        case FieldCode::bitShort:
            return whole(step, m_data.bitShort());
        case FieldCode::bitLong:
            return whole(step, m_data.bitLong());
        case FieldCode::bitLongLong:
            return whole(step, static_cast<std::int64_t>(m_data.bitLongLong()));
        case FieldCode::zeroEnded:
            return whole(step, countToZero());
        case FieldCode::text:
            return text(add(step));
        case FieldCode::bytes:
            return bytes(step);
        case FieldCode::bodyData:
            return bodyData(step);
        case FieldCode::extendedData:
            return extendedData(step);
        case FieldCode::color:
        case FieldCode::longColor:
            return color(step);
        case FieldCode::entityColor:
            return entityColor(step);
        case FieldCode::reference:
            return reference(step);
        case FieldCode::references:
            while (m_references.left() >= 8 && !isOver()) reference(step);
            return;
        case FieldCode::ownHandle:
            return ownHandle(step);
        case FieldCode::opaque:
            return opaque();
        case FieldCode::tooDeep:
            m_failed = true;
            return;
        default:
            return real(step);
        }
    }

    void whole(const LayoutStep& step, std::int64_t value) {
        add(step).whole = value;
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

    void real(const LayoutStep& step) {
        RecordValue& field = add(step);
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

    void run(RecordValue& value, BitReader& stream, std::size_t count, std::size_t bitsOfOne) {
        if (count > stream.left() / bitsOfOne) return stream.fail();
        value.run = {nullptr, stream.position(), count};
        stream.moveTo(stream.position() + count * bitsOfOne);
    }

    void text(RecordValue& value) {
        const bool isWide = m_owner.m_form >= 21;
        value.run = {};
        if (isWide && m_out.textBegin == m_out.textEnd) return; // a record without texts: all are empty
        BitReader& stream = isWide ? m_text : m_data;
        const auto count = static_cast<std::uint16_t>(stream.bitShort());
        run(value, stream, count, isWide ? 16 : 8);
    }

    void bytes(const LayoutStep& step) {
        const double count = step.count.value(m_values);
        if (isCount(count)) run(add(step), m_data, static_cast<std::size_t>(count), 8);
    }

    /// Up to its own end record.
    void bodyData(const LayoutStep& step) {
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
                return run(add(step), m_data, at + end.size(), 8);
            }
        m_data.fail();
    }

    /// Each application's data as a handle and a run of bytes.
    void extendedData(const LayoutStep& step) {
        for (std::size_t count = static_cast<std::uint16_t>(m_data.bitShort()); count > 0 && !m_data.failed();
             count = static_cast<std::uint16_t>(m_data.bitShort())) {
            add(step).reference = m_data.handle();
            run(add(step), m_data, count, 8);
        }
    }

    void color(const LayoutStep& step) {
        ValueColor& color = add(step).color = {};
        color.index = m_data.bitShort();
        if (m_owner.m_form < 18 && step.code == FieldCode::color) return;
        color.value = static_cast<std::uint32_t>(m_data.bitLong());
        color.hasValue = true;
        const unsigned names = m_data.rawByte();
        for (unsigned i = 0; i < 2; ++i)
            if (names >> i & 1) text(m_scope->add(static_cast<std::uint16_t>(step.slot + 1 + i)));
    }

    void entityColor(const LayoutStep& step) {
        ValueColor& color = add(step).color = {};
        const auto coded = static_cast<std::uint16_t>(m_data.bitShort());
        color.index = coded & 0x0FFF;
        color.isOfBook = (coded & 0x4000) != 0;
        set(m_out.layout->colorReferenceSlot, color.isOfBook);
        if ((coded & 0x8000) && !color.isOfBook) {
            color.value = static_cast<std::uint32_t>(m_data.bitLong());
            color.hasValue = true;
        }
        color.hasTransparency = (coded & 0x2000) != 0;
        if (color.hasTransparency) color.transparency = static_cast<std::uint32_t>(m_data.bitLong());
    }

    void reference(const LayoutStep& step) {
        const BinaryHandle handle = m_references.handle();
        add(step).reference = handle;
        set(step.slot, static_cast<double>(handle.value));
    }

    void ownHandle(const LayoutStep& step) {
        const BinaryHandle handle = m_data.handle();
        if (step.name == "handle" && m_out.handle == 0) m_out.handle = handle.value;
        add(step).reference = handle;
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
    RecordScope* m_scope;
    std::vector<RecordValue>* m_array = nullptr; ///< of the field that repeats
    bool m_held = false;                         ///< the last condition
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
    fields.handle = 0;
    fields.values.clear();
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
    if (!findStreams(offset, fields)) return false;
    fields.layout = layoutOf(fields.type, fields.isKnown);
    FieldReading(*this, fields).run();
    return true;
}

bool RecordReading::readCommon(std::size_t offset, RecordFields& fields) {
    if (!findStreams(offset, fields)) return false;
    fields.layout = layoutOf(fields.type, fields.isKnown)->isEntity ? &m_layouts.commonEntity()
                                                                    : &m_layouts.commonObject();
    fields.isKnown = false;
    FieldReading(*this, fields).run();
    return true;
}

unsigned RecordReading::typeAt(std::size_t offset) const {
    BitReader reader(m_objects, offset * 8, m_objects.size() * 8);
    reader.modularShort();
    if (m_form >= 24) reader.unsignedModularChar();
    const unsigned type = m_form >= 24 ? reader.objectType() : static_cast<std::uint16_t>(reader.bitShort());
    return reader.failed() ? 0 : type;
}

ByteSpan RecordReading::recordAt(std::size_t offset) const {
    BitReader reader(m_objects, offset * 8, m_objects.size() * 8);
    const std::size_t size = reader.modularShort();
    if (m_form >= 24) (void)reader.unsignedModularChar();
    constexpr std::size_t checksumSize = 2;
    const std::size_t end = reader.position() / 8 + size + checksumSize;
    if (reader.failed() || end > m_objects.size()) return {};
    return m_objects.subspan(offset, end - offset);
}

const BinaryClass* RecordReading::classOf(unsigned type) const {
    constexpr unsigned first = 500;
    return type >= first && type - first < m_classes.size() ? &m_classes[type - first] : nullptr;
}

std::string RecordReading::text(const RecordValue& value) const {
    std::string result;
    appendText(value.run, result);
    return result;
}

void RecordReading::appendText(const ValueRun& run, std::string& bytes) const {
    if (run.bytes) {
        bytes.append(run.bytes, run.count);
        return;
    }
    const std::size_t before = bytes.size();
    BitReader reader(m_objects, run.firstBit, m_objects.size() * 8);
    if (m_form < 21) {
        for (std::uint64_t i = 0; i < run.count; ++i) bytes += static_cast<char>(reader.rawByte());
    } else {
        for (std::uint64_t i = 0; i < run.count; ++i) {
            std::uint32_t unit = reader.rawShort();
            if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < run.count) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (reader.rawShort() - 0xDC00U);
                ++i;
            }
            if (unit < 0x80)
                bytes += static_cast<char>(unit);
            else
                appendUtf8(bytes, static_cast<wchar_t>(unit));
        }
    }
    while (bytes.size() > before && bytes.back() == 0) bytes.pop_back();
}

const RecordValue* RecordFields::value(std::string_view name) const {
    std::uint16_t slot = 0;
    return layout && layout->findSlot(name, slot) ? values.find(slot) : nullptr;
}

const std::vector<RecordValue>& RecordFields::array(std::string_view name) const {
    static const std::vector<RecordValue> none;
    std::uint16_t slot = 0;
    const std::vector<RecordValue>* const found =
        layout && layout->findSlot(name, slot) ? values.findArray(slot) : nullptr;
    return found ? *found : none;
}

std::uint64_t RecordFields::referenceTo(std::string_view name) const {
    const RecordValue* const found = value(name);
    return found ? found->reference.resolved(handle) : 0;
}

} // namespace hostkit
