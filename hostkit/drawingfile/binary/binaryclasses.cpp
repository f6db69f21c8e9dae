// The classes of a binary drawing.
#include "binarychecksums.h"
#include "recordfields.h"
#include "textencoding.h"

#include <algorithm>
#include <array>

namespace hostkit {
namespace {

constexpr std::array<std::uint8_t, 16> startMark{0x8D, 0xA1, 0xC4, 0xB8, 0xC4, 0xA9, 0xF8, 0xC5,
                                                 0xC0, 0xDC, 0xF4, 0x5F, 0xE7, 0xCF, 0xB6, 0x8A};
const char* const sectionName = "AcDb:Classes";
constexpr unsigned entityItem = 0x1F2, firstNumber = 500;

std::string textOf(BitReader& reader, bool isWide) {
    std::string text;
    const auto count = static_cast<std::uint16_t>(reader.bitShort());
    for (unsigned i = 0; i < count && !reader.failed(); ++i)
        isWide ? appendUtf8(text, static_cast<wchar_t>(reader.rawShort()))
               : text.push_back(static_cast<char>(reader.rawByte()));
    while (!text.empty() && text.back() == 0) text.pop_back();
    return text;
}

/// Where the texts stand that are kept behind all other fields, from the end mark's bit back.
BitReader textsBefore(ByteSpan bytes, std::size_t end, std::size_t& dataEnd) {
    dataEnd = end - 1;
    if (!BitReader(bytes, end - 1, end).bit()) return BitReader(bytes, 0, 0);
    std::size_t at = end - 17;
    std::size_t count = BitReader(bytes, at, end).rawShort();
    if (count & 0x8000) {
        at -= 16;
        count = (count & 0x7FFF) | static_cast<std::size_t>(BitReader(bytes, at, end).rawShort()) << 15;
    }
    dataEnd = count < at ? at - count : 0;
    return BitReader(bytes, dataEnd, at);
}

} // namespace

std::vector<BinaryClass> readClasses(BinaryContainer& container) {
    std::vector<BinaryClass> classes;
    const ByteSpan bytes = container.section(sectionName);
    if (bytes.size() < 16 + 4 + 2) return classes;
    const int form = static_cast<int>(container.version) % 100;
    if (!std::equal(startMark.begin(), startMark.end(), bytes.begin()))
        container.addFault(0, sectionName, L"the section does not begin as it has to");
    const std::size_t size = longAt(bytes, 16);
    const bool hasHighSize = form >= 32 || (form >= 24 && container.maintenance > 3);
    std::size_t begin = 20 + (hasHighSize ? 4U : 0U);
    if (size > bytes.size() || begin + size + 2 > bytes.size()) {
        container.addFault(16, sectionName, L"the section's size is out of range");
        return classes;
    }
    if (checksum16(bytes.subspan(16, begin - 16 + size)) != littleEndian(bytes, begin + size, 2))
        container.addFault(begin + size, sectionName, L"the checksum of the section is wrong");
    std::size_t dataEnd = (begin + size) * 8;
    BitReader texts(bytes, 0, 0);
    if (form >= 21) {
        const std::size_t end = begin * 8 + longAt(bytes, begin);
        begin += 4;
        if (end < begin * 8 + 48 || end > bytes.size() * 8) return classes;
        texts = textsBefore(bytes, end, dataEnd);
    }
    BitReader data(bytes, begin * 8, dataEnd);
    if (form >= 18) {
        data.bitShort();
        data.rawShort();
        data.bit();
    }
    while (data.left() >= 8) {
        BinaryClass& one = classes.emplace_back();
        BitReader& source = form >= 21 ? texts : data;
        one.number = static_cast<unsigned>(data.bitShort());
        one.proxyFlags = data.bitShort();
        one.application = textOf(source, form >= 21);
        one.className = textOf(source, form >= 21);
        one.dxfName = textOf(source, form >= 21);
        one.wasProxy = data.bit();
        one.isEntity = static_cast<unsigned>(data.bitShort()) == entityItem;
        if (form >= 18) {
            one.instances = data.bitLong();
            for (int i = 0; i < 4; ++i) data.bitLong();
        }
        if (!data.failed() && one.number == firstNumber + classes.size() - 1) continue;
        classes.pop_back();
        break;
    }
    return classes;
}

} // namespace hostkit
