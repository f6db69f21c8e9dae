#include "recordencoding.h"

#include "binarychecksums.h"
#include "longcolors.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

/// Runs the steps of a layout over the values of one record.
class FieldWriting {
public:
    FieldWriting(RecordEncoding& owner, const RecordLayout& layout, std::uint64_t handle,
                 const RecordScope& values)
        : m_owner(owner)
        , m_layout(layout)
        , m_handle(handle)
        , m_values(owner.m_values)
        , m_scope(&values)
        , m_original(owner.m_original && owner.m_original->layout == &layout ? &owner.m_original->values
                                                                             : nullptr) {
        m_values.assign(layout.slots, 0.0);
    }

    bool run() {
        steps(0, m_layout.steps.size());
        return !m_hasFailed;
    }

private:
    void steps(std::size_t begin, std::size_t end) {
        bool held = false;
        for (std::size_t i = begin; i < end && !m_hasFailed;) {
            const LayoutStep& step = m_layout.steps[i];
            switch (step.kind) {
            case LayoutStep::Kind::let:
                m_values[step.slot] = step.condition.value(m_values);
                break;
            case LayoutStep::Kind::field:
                if (step.condition.empty() || step.condition.holds(m_values)) field(step);
                break;
            case LayoutStep::Kind::condition:
                held = step.condition.holds(m_values);
                if (held) steps(i + 1, step.end);
                break;
            case LayoutStep::Kind::otherwise:
                if (!held) steps(i + 1, step.end);
                break;
            case LayoutStep::Kind::loop:
            case LayoutStep::Kind::whilst:
                loop(step, i);
                break;
            }
            i = step.end ? step.end : i + 1;
        }
    }

    void loop(const LayoutStep& step, std::size_t at) {
        double told = step.condition.value(m_values);
        const RecordScope* const outer = m_scope;
        const RecordScope* const outerOriginal = m_original;
        const RecordScope::Loop* passes = outer->findLoop(step.slot);
        const bool isOwn = passes != nullptr;
        if (!passes && m_original) passes = m_original->findLoop(step.slot);
        if (step.kind == LayoutStep::Kind::whilst && passes) told = passes->count;
        const std::size_t count = told > 0 ? static_cast<std::size_t>(told) : 0;
        if ((passes ? passes->count : 0) < count) {
            m_hasFailed = true;
            return;
        }
        for (std::size_t i = 0; i < count && !m_hasFailed; ++i) {
            m_scope = passes->passes[i].get();
            m_original = isOwn ? originalPass(outerOriginal, step.slot, i) : m_scope;
            m_values[m_layout.loopSlot] = static_cast<double>(i);
            steps(at + 1, step.end);
        }
        m_scope = outer;
        m_original = outerOriginal;
    }

    static const RecordScope* originalPass(const RecordScope* original, std::uint16_t slot, std::size_t at) {
        const RecordScope::Loop* const passes = original ? original->findLoop(slot) : nullptr;
        return passes && at < passes->count ? passes->passes[at].get() : nullptr;
    }

    [[nodiscard]] const RecordValue* find(std::uint16_t slot) const {
        if (const RecordValue* const own = m_scope->find(slot)) return own;
        return m_original ? m_original->find(slot) : nullptr;
    }

    void field(const LayoutStep& step) {
        if (step.code == FieldCode::extendedData) return extendedData(step);
        if (!step.isArray()) {
            const RecordValue* const value = find(step.slot);
            const RecordValue* const before = m_original ? m_original->find(step.slot) : nullptr;
            return one(step, value, before);
        }
        const std::vector<RecordValue>* const before =
            m_original ? m_original->findArray(step.slot) : nullptr;
        const std::vector<RecordValue>* values = m_scope->findArray(step.slot);
        if (!values) values = before;
        const bool isRest = step.code == FieldCode::references;
        const double told =
            isRest ? values ? static_cast<double>(values->size()) : 0.0 : step.count.value(m_values);
        const std::size_t count = told > 0 ? static_cast<std::size_t>(told) : 0;
        if (count > (values ? values->size() : 0)) {
            m_hasFailed = true;
            return;
        }
        for (std::size_t i = 0; i < count; ++i) {
            m_isFirst = i == 0;
            one(step, &(*values)[i], before && i < before->size() ? &(*before)[i] : nullptr);
        }
    }

    void one(const LayoutStep& step, const RecordValue* value, const RecordValue* before) {
        static const RecordValue nothing;
        switch (valueKindOf(static_cast<std::uint8_t>(step.code))) {
        case ValueKind::whole:
            return whole(step, value ? value->whole : 0);
        case ValueKind::real:
            return real(step, (value ? value : &nothing)->real);
        case ValueKind::text:
            return text(value, before);
        case ValueKind::bytes:
            return value ? rawBytes(value->run) : zeros(step.count.value(m_values));
        case ValueKind::color:
            return color(step, value ? value->color : ValueColor{});
        case ValueKind::reference:
            return reference(step, value ? value->reference : BinaryHandle{step.referenceCode, 0}, before);
        default:
            return;
        }
    }

    void whole(const LayoutStep& step, std::int64_t value) {
        BitWriter& data = m_owner.m_data;
        if (step.name == "bitsize") m_owner.m_sizeAt = data.position();
        switch (step.code) {
        case FieldCode::bit:
            value = value != 0;
            data.bit(value != 0);
            break;
        case FieldCode::twoBits:
            data.bits(static_cast<std::uint64_t>(value) & 3, 2);
            break;
        case FieldCode::rawByte:
            data.rawByte(static_cast<std::uint8_t>(value));
            break;
        case FieldCode::rawShort:
            data.rawShort(static_cast<std::uint16_t>(value));
            break;
        case FieldCode::rawLong:
            data.rawLong(static_cast<std::uint32_t>(value));
            break;
        case FieldCode::rawLongLong:
            data.rawLongLong(static_cast<std::uint64_t>(value));
            break;
        case FieldCode::bitShort:
            data.bitShort(static_cast<int>(value));
            break;
        case FieldCode::bitLong:
            data.bitLong(static_cast<std::int32_t>(value));
            break;
        case FieldCode::bitLongLong:
            data.bitLongLong(static_cast<std::uint64_t>(value));
            break;
        default: // a run of ones that a zero ends
            for (std::int64_t i = 0; i < value; ++i) data.rawByte(1);
            data.rawByte(0);
        }
        m_values[step.slot] = static_cast<double>(value);
    }

    double standard(const LayoutStep& step, std::size_t ordinate) const {
        std::uint16_t slot = 0;
        if (step.standard.size() == 1 && step.standard[0].isName(slot)) return m_values[slot + ordinate];
        return step.standard[std::min(ordinate, step.standard.size() - 1)].value(m_values);
    }

    void real(const LayoutStep& step, const double (&values)[3]) {
        BitWriter& data = m_owner.m_data;
        const auto each = [&](unsigned count, auto&& write) {
            for (unsigned i = 0; i < count; ++i) write(i);
            for (unsigned i = 0; i < count; ++i) m_values[step.slot + i] = values[i];
        };
        const auto bitDouble = [&](unsigned i) { data.bitDouble(values[i]); };
        const auto rawDouble = [&](unsigned i) { data.rawDouble(values[i]); };
        const auto byStandard = [&](unsigned i) { data.bitDouble(values[i], standard(step, i)); };
        switch (step.code) {
        case FieldCode::rawDouble:
            return each(1, rawDouble);
        case FieldCode::rawPoint2:
            return each(2, rawDouble);
        case FieldCode::rawPoint3:
            return each(3, rawDouble);
        case FieldCode::bitDouble:
            return each(1, bitDouble);
        case FieldCode::bitPoint2:
            return each(2, bitDouble);
        case FieldCode::bitPoint3:
            return each(3, bitDouble);
        case FieldCode::standardDouble:
            return each(1, byStandard);
        case FieldCode::standardPoint2:
            return each(2, byStandard);
        case FieldCode::standardPoint3:
            return each(3, byStandard);
        case FieldCode::standardChain:
            if (m_isFirst) return each(2, rawDouble);
            return each(2, [&](unsigned i) { data.bitDouble(values[i], m_values[step.slot + i]); });
        case FieldCode::thickness: {
            const bool isNone = values[0] == 0.0 && !std::signbit(values[0]);
            data.bit(isNone);
            return each(1, [&](unsigned i) {
                if (!isNone) bitDouble(i);
            });
        }
        default: { // a direction
            const bool isUp = values[0] == 0.0 && values[1] == 0.0 && values[2] == 1.0 &&
                              !std::signbit(values[0]) && !std::signbit(values[1]);
            data.bit(isUp);
            return each(3, [&](unsigned i) {
                if (!isUp) bitDouble(i);
            });
        }
        }
    }

    // Texts: those of groups are in the drawing's coding, those of the original as the record has them.

    void text(const ValueRun& run) {
        BitWriter& stream = m_owner.m_form >= 21 ? m_owner.m_text : m_owner.m_data;
        constexpr std::size_t longest = 0xFFFF;
        if (!run.bytes) {
            stream.bitShort(static_cast<std::int16_t>(run.count));
            originalBits(stream, run, m_owner.m_form >= 21 ? 16 : 8);
            return;
        }
        const std::string_view bytes(run.bytes, run.count);
        if (m_owner.m_form < 21) {
            const std::string_view kept = bytes.substr(0, longest);
            m_owner.m_hasShortened = m_owner.m_hasShortened || kept.size() < bytes.size();
            stream.bitShort(static_cast<std::int16_t>(kept.size()));
            for (const char byte : kept) stream.rawByte(static_cast<std::uint8_t>(byte));
            return;
        }
        utf16Of(bytes, m_units);
        m_owner.m_hasShortened = m_owner.m_hasShortened || m_units.size() > longest;
        m_units.resize(std::min(m_units.size(), longest));
        stream.bitShort(static_cast<std::int16_t>(m_units.size()));
        for (const std::uint16_t unit : m_units) stream.rawShort(unit);
    }

    void text(const RecordValue* value, const RecordValue* before) {
        if (!value) return text(ValueRun{});
        text(before && isSameText(value->run, before->run) ? before->run : value->run);
    }

    /// Texts of older forms may have a zero behind, which no group tells.
    [[nodiscard]] bool isSameText(const ValueRun& run, const ValueRun& before) {
        if (!run.bytes || !m_owner.m_reading) return false;
        m_text.clear();
        m_owner.m_reading->appendText(before, m_text);
        return m_text == std::string_view(run.bytes, run.count);
    }

    void originalBits(BitWriter& stream, const ValueRun& run, unsigned bitsOfOne) {
        if (m_owner.m_reading)
            stream.append(m_owner.m_reading->objects(), run.firstBit, run.firstBit + run.count * bitsOfOne);
    }

    void rawBytes(const ValueRun& run) {
        if (!run.bytes) return originalBits(m_owner.m_data, run, 8);
        for (std::uint64_t i = 0; i < run.count; ++i)
            m_owner.m_data.rawByte(static_cast<std::uint8_t>(run.bytes[i]));
    }

    void zeros(double count) {
        for (double i = 0; i < count; ++i) m_owner.m_data.rawByte(0);
    }

    void extendedData(const LayoutStep& step) {
        const std::vector<RecordValue>* all = m_scope->findArray(step.slot);
        if (!all && m_original) all = m_original->findArray(step.slot);
        BitWriter& data = m_owner.m_data;
        for (std::size_t i = 0; all && i + 1 < all->size(); i += 2) {
            const ValueRun& run = (*all)[i + 1].run;
            data.bitShort(static_cast<std::int16_t>(run.count));
            data.handle({5, (*all)[i].reference.value});
            rawBytes(run);
        }
        data.bitShort(0);
    }

    // Colours and references

    void color(const LayoutStep& step, const ValueColor& color) {
        BitWriter& data = m_owner.m_data;
        if (step.code == FieldCode::entityColor) return entityColor(color);
        if (m_owner.m_form < 18 && step.code == FieldCode::color) {
            data.bitShort(color.index);
            m_values[step.slot] = color.index;
            return;
        }
        const bool isKept = color.hasValue;
        data.bitShort(isKept ? color.index : 0);
        data.bitLong(static_cast<std::int32_t>(isKept ? color.value : longColorOf(color.index)));
        const bool isOwn = m_scope->find(step.slot); // another colour has no name of the one before
        const auto part = [&](int shift) {
            const auto slot = static_cast<std::uint16_t>(step.slot + shift);
            return isOwn ? m_scope->find(slot) : find(slot);
        };
        const RecordValue* const name = part(1);
        const RecordValue* const book = part(2);
        data.rawByte(static_cast<std::uint8_t>((name ? 1 : 0) | (book ? 2 : 0)));
        const auto before = [&](int shift) {
            return m_original ? m_original->find(static_cast<std::uint16_t>(step.slot + shift)) : nullptr;
        };
        if (name) text(name, before(1));
        if (book) text(book, before(2));
        m_values[step.slot] = color.index;
    }

    void entityColor(const ValueColor& color) {
        BitWriter& data = m_owner.m_data;
        unsigned coded = static_cast<unsigned>(color.index) & 0x0FFF;
        if (color.hasValue || color.isOfBook) coded |= 0x8000;
        if (color.isOfBook) coded |= 0x4000;
        if (color.hasTransparency) coded |= 0x2000;
        data.bitShort(static_cast<std::int16_t>(coded));
        if (color.hasValue && !color.isOfBook) data.bitLong(static_cast<std::int32_t>(color.value));
        if (color.hasTransparency) data.bitLong(static_cast<std::int32_t>(color.transparency));
        m_values[m_layout.colorReferenceSlot] = color.isOfBook;
    }

    void reference(const LayoutStep& step, BinaryHandle handle, const RecordValue* before) {
        std::uint64_t target = handle.resolved(m_handle);
        if (m_owner.m_gone && m_owner.m_gone->contains(target)) {
            handle = {};
            target = 0;
        }
        m_values[step.slot] = static_cast<double>(handle.value);
        const bool isWithin = step.code == FieldCode::ownHandle;
        if (isWithin)
            handle = {0, step.name == "handle" ? m_handle : target};
        else if (before && before->reference.resolved(m_handle) == target)
            handle = before->reference;
        else if (step.mayBeRelative)
            handle = byDistance(target);
        else if (step.referenceCode)
            handle = {step.referenceCode, target};
        (isWithin || m_owner.m_hasOneStream ? m_owner.m_data : m_owner.m_references).handle(handle);
    }

    /// Of a soft pointer, which alone may be told so.
    [[nodiscard]] BinaryHandle byDistance(std::uint64_t target) const {
        constexpr std::uint8_t absolute = 4, next = 6, before = 8, behind = 0xA, ahead = 0xC;
        const bool isBehind = target > m_handle;
        const std::uint64_t distance = isBehind ? target - m_handle : m_handle - target;
        if (target == 0 || distance >= target) return {absolute, target};
        if (distance == 1) return {isBehind ? next : before, 0};
        return {isBehind ? behind : ahead, distance};
    }

    RecordEncoding& m_owner;
    const RecordLayout& m_layout;
    std::uint64_t m_handle;
    std::vector<double>& m_values;
    const RecordScope* m_scope;
    const RecordScope* m_original; ///< the same place in the original; null where there is none
    std::vector<std::uint16_t> m_units;
    std::string m_text;
    bool m_isFirst = true; ///< of an array
    bool m_hasFailed = false;
};

RecordEncoding::RecordEncoding(DrawingVersion version)
    : m_form(static_cast<int>(version) % 100) {}

void RecordEncoding::setOriginal(const RecordReading* reading, const RecordFields* record) {
    m_reading = reading;
    m_original = record;
}

bool RecordEncoding::run(const RecordLayout& layout, std::uint64_t handle, const RecordScope& values) {
    return FieldWriting(*this, layout, handle, values).run();
}

bool RecordEncoding::append(const RecordLayout& layout, unsigned type, std::uint64_t handle,
                            const RecordScope& values, std::vector<std::uint8_t>& bytes) {
    m_hasShortened = false;
    m_data.clear();
    m_text.clear();
    m_references.clear();
    if (m_form >= 24)
        m_data.objectType(type);
    else
        m_data.bitShort(static_cast<std::int16_t>(type));
    if (!run(layout, handle, values)) return false;
    if (m_original && !m_original->isKnown) appendOpaque();
    finish(bytes);
    return true;
}

void RecordEncoding::appendOpaque() {
    const ByteSpan objects = m_reading->objects();
    m_data.append(objects, m_original->dataBegin, m_original->dataEnd);
    m_text.append(objects, m_original->textBegin, m_original->textEnd);
    BitReader rest(objects, m_original->referencesBegin, m_original->referencesEnd);
    while (rest.left() >= 8) {
        const BinaryHandle handle = rest.handle();
        if (rest.failed()) return;
        m_references.handle(handle);
    }
}

void RecordEncoding::finish(std::vector<std::uint8_t>& bytes) {
    if (m_form >= 21) {
        const std::size_t count = m_text.position();
        m_data.append(m_text);
        if (count > 0x7FFF) m_data.rawShort(static_cast<std::uint16_t>(count >> 15));
        if (count > 0)
            m_data.rawShort(static_cast<std::uint16_t>(count > 0x7FFF ? (count & 0x7FFF) | 0x8000 : count));
        m_data.bit(count > 0);
    }
    if (m_form < 24) m_data.overwriteLong(m_sizeAt, static_cast<std::uint32_t>(m_data.position()));
    const std::size_t all = m_data.position() + m_references.position(), padding = (8 - all % 8) % 8;
    const std::size_t referenceBits = m_references.position() + padding;
    m_data.append(m_references);
    m_data.pad(true);
    BitWriter head;
    head.modularShort(static_cast<std::uint32_t>(m_data.bytes().size()));
    if (m_form >= 24) head.unsignedModularChar(referenceBits);
    const std::size_t begin = bytes.size();
    bytes.insert(bytes.end(), head.bytes().begin(), head.bytes().end());
    bytes.insert(bytes.end(), m_data.bytes().begin(), m_data.bytes().end());
    const std::uint16_t sum = checksum16(std::span(bytes).subspan(begin));
    bytes.push_back(static_cast<std::uint8_t>(sum));
    bytes.push_back(static_cast<std::uint8_t>(sum >> 8));
}

} // namespace hostkit
