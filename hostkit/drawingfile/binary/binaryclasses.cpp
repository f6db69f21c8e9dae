// The classes of a binary drawing.
#include "recordfields.h"
#include "sectionframe.h"
#include "textencoding.h"

#include <array>

namespace hostkit {
namespace {

const char* const sectionName = "AcDb:Classes";
constexpr int entityItem = 0x1F2, objectItem = 0x1F3;
constexpr unsigned firstNumber = 500;

std::string textOf(BitReader& reader, bool isWide, bool& endsWithZero) {
    std::string text;
    const auto count = static_cast<std::uint16_t>(reader.bitShort());
    for (unsigned i = 0; i < count && !reader.failed(); ++i)
        isWide ? appendUtf8(text, static_cast<wchar_t>(reader.rawShort()))
               : text.push_back(static_cast<char>(reader.rawByte()));
    endsWithZero = !text.empty() && text.back() == 0;
    while (!text.empty() && text.back() == 0) text.pop_back();
    return text;
}

void writeText(BitWriter& writer, std::string_view text, bool isWide, bool endsWithZero) {
    if (isWide) {
        const std::wstring wide = wideFromUtf8(text);
        writer.bitShort(static_cast<int>(wide.size()));
        for (const wchar_t character : wide) writer.rawShort(static_cast<std::uint16_t>(character));
        return;
    }
    writer.bitShort(static_cast<int>(text.size() + (endsWithZero ? 1 : 0)));
    for (const char character : text) writer.rawByte(static_cast<std::uint8_t>(character));
    if (endsWithZero) writer.rawByte(0);
}

void readClass(BitReader& data, BitReader& texts, int form, BinaryClass& one) {
    one.number = static_cast<unsigned>(data.bitShort());
    one.proxyFlags = data.bitShort();
    one.application = textOf(texts, form >= 21, one.endsWithZero[0]);
    one.className = textOf(texts, form >= 21, one.endsWithZero[1]);
    one.dxfName = textOf(texts, form >= 21, one.endsWithZero[2]);
    one.wasProxy = data.bit();
    one.isEntity = data.bitShort() == entityItem;
    if (form < 18) return;
    one.instances = data.bitLong();
    one.release = data.bitLong();
    one.maintenance = data.bitLong();
    for (int i = 0; i < 2; ++i) data.bitLong();
}

} // namespace

std::vector<BinaryClass> readClasses(BinaryContainer& container) {
    std::vector<BinaryClass> classes;
    const FramedStreams streams = findStreams(container, sectionName, classesMark);
    if (!streams.found()) return classes;
    const ByteSpan bytes = container.section(sectionName);
    const int form = static_cast<int>(container.version) % 100;
    BitReader data(bytes, streams.dataBegin, streams.dataEnd);
    BitReader texts(bytes, streams.textBegin, streams.textEnd);
    if (form >= 18) {
        data.bitShort();
        data.rawShort();
        data.bit();
    }
    while (data.left() >= 8) {
        BinaryClass& one = classes.emplace_back();
        readClass(data, form >= 21 ? texts : data, form, one);
        if (!data.failed() && one.number == firstNumber + classes.size() - 1) continue;
        classes.pop_back();
        break;
    }
    return classes;
}

std::vector<std::uint8_t> writeClasses(const BinaryContainer& form, std::span<const BinaryClass> classes) {
    const bool isWide = isUtf8(form.version), isNewer = form.version >= DrawingVersion::k2004;
    BitWriter data, texts;
    BitWriter& text = isWide ? texts : data;
    if (isNewer) {
        data.bitShort(static_cast<int>(firstNumber + classes.size()) - 1);
        data.rawShort(0);
        data.bit(true);
    }
    unsigned number = firstNumber;
    for (const BinaryClass& one : classes) {
        data.bitShort(static_cast<int>(number++));
        data.bitShort(one.proxyFlags);
        writeText(text, one.application, isWide, one.endsWithZero[0]);
        writeText(text, one.className, isWide, one.endsWithZero[1]);
        writeText(text, one.dxfName, isWide, one.endsWithZero[2]);
        data.bit(one.wasProxy);
        data.bitShort(one.isEntity ? entityItem : objectItem);
        if (!isNewer) continue;
        data.bitLong(one.instances);
        data.bitLong(one.release);
        data.bitLong(one.maintenance);
        data.bitLong(0);
        data.bitLong(0);
    }
    std::vector<std::uint8_t> bytes = framedSection(form, classesMark, data, texts, {}, {});
    if (isNewer) bytes.insert(bytes.end(), 8, 0);
    return bytes;
}

} // namespace hostkit
