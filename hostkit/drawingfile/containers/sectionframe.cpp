#include "sectionframe.h"

#include "binarychecksums.h"

#include <algorithm>

namespace hostkit {
namespace {

/// From 2010 on the size has a high part, but for files of early releases of 2010 and 2013.
bool hasHighSize(const BinaryContainer& form) {
    constexpr unsigned lastWithout = 3;
    return form.version >= DrawingVersion::k2018 ||
           (form.version >= DrawingVersion::k2010 && form.maintenance > lastWithout);
}

/// Texts stand behind all other data; how many bits they take, and whether there are any, behind them.
void findTexts(ByteSpan bytes, FramedStreams& streams) {
    const std::size_t flagAt = streams.referencesBegin - 1;
    streams.dataEnd = streams.textBegin = streams.textEnd = flagAt;
    if (!BitReader(bytes, flagAt, flagAt + 1).bit()) return;
    std::size_t at = flagAt - 16;
    std::size_t count = BitReader(bytes, at, flagAt).rawShort();
    if (count & 0x8000) {
        at -= 16;
        count = (count & 0x7FFF) | static_cast<std::size_t>(BitReader(bytes, at, at + 16).rawShort()) << 15;
    }
    streams.textEnd = at;
    streams.dataEnd = streams.textBegin = count < at - streams.dataBegin ? at - count : streams.dataBegin;
}

void appendTexts(BitWriter& payload, const BitWriter& text) {
    constexpr std::size_t mostInOneShort = 0x7FFF;
    const std::size_t count = text.position();
    if (count > 0) {
        payload.append(text);
        if (count > mostInOneShort) payload.rawShort(static_cast<std::uint16_t>(count >> 15));
        payload.rawShort(
            static_cast<std::uint16_t>((count & mostInOneShort) | (count > mostInOneShort ? 0x8000 : 0)));
    }
    payload.bit(count > 0);
}

} // namespace

void appendMark(std::vector<std::uint8_t>& bytes, const SectionMark& mark) {
    bytes.insert(bytes.end(), mark.begin(), mark.end());
}

void appendEndMark(std::vector<std::uint8_t>& bytes, const SectionMark& mark) {
    for (const std::uint8_t byte : mark) bytes.push_back(static_cast<std::uint8_t>(~byte));
}

FramedStreams findStreams(BinaryContainer& container, std::string_view section, const SectionMark& mark) {
    const ByteSpan bytes = container.section(section);
    const auto fault = [&](std::size_t at, const wchar_t* reason) {
        container.addFault(at, std::string(section), reason);
        return FramedStreams{};
    };
    if (bytes.size() < mark.size() + 4 + 2)
        return bytes.empty() ? FramedStreams{} : fault(0, L"the section ends early");
    if (!std::equal(mark.begin(), mark.end(), bytes.begin()))
        fault(0, L"the section does not begin as it has to");
    const std::size_t size = longAt(bytes, 16);
    std::size_t begin = 20 + (hasHighSize(container) ? 4U : 0U);
    if (size > bytes.size() || begin + size + 2 > bytes.size())
        return fault(16, L"the section's size is out of range");
    if (checksum16(bytes.subspan(16, begin - 16 + size)) != littleEndian(bytes, begin + size, 2))
        fault(begin + size, L"the checksum of the section is wrong");
    FramedStreams streams;
    streams.end = (begin + size) * 8;
    if (isUtf8(container.version)) {
        streams.dataBegin = begin * 8 + 32;
        streams.referencesBegin = begin * 8 + longAt(bytes, begin);
        if (streams.referencesBegin < streams.dataBegin + 48 || streams.referencesBegin > streams.end)
            return fault(begin, L"the section's size in bits is out of range");
        findTexts(bytes, streams);
        return streams;
    }
    streams.dataBegin = begin * 8;
    streams.dataEnd = streams.textBegin = streams.textEnd = streams.referencesBegin = streams.end;
    return streams;
}

std::vector<std::uint8_t> framedSection(const BinaryContainer& form, const SectionMark& mark,
                                        const BitWriter& data, const BitWriter& text,
                                        const BitWriter& references, const BitWriter& behind) {
    BitWriter payload;
    if (isUtf8(form.version)) payload.rawLong(0);
    payload.append(data);
    if (isUtf8(form.version)) {
        appendTexts(payload, text);
        payload.overwriteLong(0, static_cast<std::uint32_t>(payload.position()));
    }
    payload.append(references);
    payload.append(behind);
    payload.pad(true);
    BitWriter sizes;
    sizes.rawLong(static_cast<std::uint32_t>(payload.bytes().size()));
    if (hasHighSize(form)) sizes.rawLong(0);
    std::vector<std::uint8_t> bytes;
    appendMark(bytes, mark);
    bytes.insert(bytes.end(), sizes.bytes().begin(), sizes.bytes().end());
    bytes.insert(bytes.end(), payload.bytes().begin(), payload.bytes().end());
    const std::uint16_t sum = checksum16(ByteSpan(bytes).subspan(mark.size()));
    bytes.insert(bytes.end(), {static_cast<std::uint8_t>(sum), static_cast<std::uint8_t>(sum >> 8)});
    appendEndMark(bytes, mark);
    return bytes;
}

} // namespace hostkit
