#include "fieldcoding.h"

#include "textencoding.h"

#include <algorithm>
#include <cmath>

namespace hostkit {
namespace {

constexpr std::size_t mostCharacters = 0xFFFF;

/// Bit codes have no place for what is no number.
double finite(double value) { return std::isfinite(value) ? value : 0.0; }

void appendRun(BitWriter& stream, const FieldStreams& out, const ValueRun& run, std::size_t count,
               std::size_t bitsOfOne) {
    if (!run.bytes) return stream.append(out.source, run.firstBit, run.firstBit + count * bitsOfOne);
    for (std::size_t i = 0; i < count; ++i) stream.rawByte(static_cast<std::uint8_t>(run.bytes[i]));
}

void writeText(FieldStreams& out, const ValueRun& run) {
    const std::size_t count = std::min<std::size_t>(run.count, mostCharacters);
    if (out.form < 21) {
        out.data.bitShort(static_cast<std::uint16_t>(count));
        return appendRun(out.data, out, run, count, 8);
    }
    if (!run.bytes) {
        out.text.bitShort(static_cast<std::uint16_t>(count));
        return appendRun(out.text, out, run, count, 16);
    }
    std::vector<std::uint16_t> units;
    for (const wchar_t character : wideFromUtf8({run.bytes, run.count})) {
        auto point = static_cast<std::uint32_t>(character);
        if (point < 0x10000) {
            units.push_back(static_cast<std::uint16_t>(point));
        } else {
            point -= 0x10000;
            units.push_back(static_cast<std::uint16_t>(0xD800 + (point >> 10)));
            units.push_back(static_cast<std::uint16_t>(0xDC00 + (point & 0x3FF)));
        }
    }
    if (units.size() > mostCharacters) units.resize(mostCharacters);
    out.text.bitShort(static_cast<std::uint16_t>(units.size()));
    for (const std::uint16_t unit : units) out.text.rawShort(unit);
}

void writeEntityColor(BitWriter& data, const ValueColor& color) {
    const bool isLong = color.hasValue && !color.isOfBook;
    data.bitShort((color.index & 0x0FFF) | (isLong ? 0x8000 : 0) | (color.isOfBook ? 0x4000 : 0) |
                  (color.hasTransparency ? 0x2000 : 0));
    if (isLong) data.bitLong(static_cast<std::int32_t>(color.value));
    if (color.hasTransparency) data.bitLong(static_cast<std::int32_t>(color.transparency));
}

void writeWhole(BitWriter& data, FieldCode code, std::int64_t value) {
    switch (code) {
    case FieldCode::bit:
        return data.bit(value != 0);
    case FieldCode::twoBits:
        return data.bits(static_cast<std::uint64_t>(value) & 3, 2);
    case FieldCode::rawByte:
        return data.rawByte(static_cast<std::uint8_t>(value));
    case FieldCode::rawShort:
        return data.rawShort(static_cast<std::uint16_t>(value));
    case FieldCode::rawLong:
        return data.rawLong(static_cast<std::uint32_t>(value));
    case FieldCode::rawLongLong:
        return data.rawLongLong(static_cast<std::uint64_t>(value));
    case FieldCode::bitShort:
        return data.bitShort(static_cast<std::int16_t>(value));
    case FieldCode::bitLong:
        return data.bitLong(static_cast<std::int32_t>(value));
    case FieldCode::bitLongLong:
        return data.bitLongLong(static_cast<std::uint64_t>(value));
    default: // zeroEnded
        for (std::int64_t i = 0; i < value; ++i) data.rawByte(1);
        return data.rawByte(0);
    }
}

void writeReal(BitWriter& data, FieldCode code, const double* real, const double* standard) {
    const unsigned count = ordinatesOf(code);
    switch (code) {
    case FieldCode::rawDouble:
    case FieldCode::rawPoint2:
    case FieldCode::rawPoint3:
        for (unsigned i = 0; i < count; ++i) data.rawDouble(finite(real[i]));
        return;
    case FieldCode::standardDouble:
    case FieldCode::standardPoint2:
    case FieldCode::standardPoint3:
    case FieldCode::standardChain:
        for (unsigned i = 0; i < count; ++i) data.bitDouble(finite(real[i]), standard ? standard[i] : 0.0);
        return;
    case FieldCode::thickness: {
        const bool isZero = finite(real[0]) == 0.0 && !std::signbit(real[0]);
        data.bit(isZero);
        if (!isZero) data.bitDouble(finite(real[0]));
        return;
    }
    case FieldCode::direction: {
        const bool isUp = real[0] == 0.0 && real[1] == 0.0 && real[2] == 1.0 && !std::signbit(real[0]) &&
                          !std::signbit(real[1]);
        data.bit(isUp);
        if (isUp) return;
        [[fallthrough]];
    }
    default:
        for (unsigned i = 0; i < count; ++i) data.bitDouble(finite(real[i]));
    }
}

} // namespace

bool isWholeCode(FieldCode code) {
    return code <= FieldCode::rawLongLong || code == FieldCode::bitShort || code == FieldCode::bitLong ||
           code == FieldCode::bitLongLong || code == FieldCode::zeroEnded;
}

unsigned ordinatesOf(FieldCode code) {
    switch (code) {
    case FieldCode::rawDouble:
    case FieldCode::bitDouble:
    case FieldCode::thickness:
    case FieldCode::standardDouble:
        return 1;
    case FieldCode::bitPoint2:
    case FieldCode::rawPoint2:
    case FieldCode::standardPoint2:
    case FieldCode::standardChain:
        return 2;
    case FieldCode::direction:
    case FieldCode::bitPoint3:
    case FieldCode::rawPoint3:
    case FieldCode::standardPoint3:
        return 3;
    default:
        return 0;
    }
}

void writeField(FieldStreams& out, FieldCode code, const RecordValue& value, const double* standard) {
    if (isWholeCode(code)) return writeWhole(out.data, code, value.whole);
    if (ordinatesOf(code) > 0) return writeReal(out.data, code, value.real, standard);
    switch (code) {
    case FieldCode::text:
        return writeText(out, value.run);
    case FieldCode::bytes:
    case FieldCode::bodyData:
        return appendRun(out.data, out, value.run, value.run.count, 8);
    case FieldCode::color:
    case FieldCode::longColor:
        return writeColor(out, code, value.color, nullptr, nullptr);
    case FieldCode::entityColor:
        return writeEntityColor(out.data, value.color);
    case FieldCode::reference:
    case FieldCode::references:
        return out.references.handle(value.reference);
    case FieldCode::ownHandle:
        return out.data.handle(value.reference);
    default:
        return;
    }
}

void writeColor(FieldStreams& out, FieldCode code, const ValueColor& color, const RecordValue* name,
                const RecordValue* book) {
    out.data.bitShort(color.index);
    if (out.form < 18 && code == FieldCode::color) return;
    out.data.bitLong(static_cast<std::int32_t>(color.value));
    out.data.rawByte(static_cast<std::uint8_t>((name ? 1 : 0) | (book ? 2 : 0)));
    if (name) writeText(out, name->run);
    if (book) writeText(out, book->run);
}

void writeExtendedData(FieldStreams& out, std::span<const RecordValue> values) {
    for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
        const ValueRun& run = values[i + 1].run;
        if (run.count == 0) continue; // would end the list
        const std::size_t count = std::min<std::size_t>(run.count, mostCharacters);
        out.data.bitShort(static_cast<std::uint16_t>(count));
        out.data.handle(values[i].reference);
        appendRun(out.data, out, run, count, 8);
    }
    out.data.bitShort(0);
}

} // namespace hostkit
