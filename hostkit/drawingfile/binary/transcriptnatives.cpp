#include "transcriptnatives.h"

#include "adscodes.h"

#include <stdexcept>
#include <string>

namespace hostkit {
namespace {

/// The items of an extension record: each a code and a value by it.
class ExtensionRecord {
public:
    explicit ExtensionRecord(NativeOutput& output)
        : m_output(output) {}

    void write() {
        const RecordValue* const data = m_output.value("data");
        if (!data) return;
        const std::uint64_t first = data->run.firstBit;
        BitReader items(m_output.reading().objects(), first, first + data->run.count * 8);
        while (items.left() >= 16 && item(items)) {}
    }

private:
    bool item(BitReader& items) {
        const int code = static_cast<std::int16_t>(items.rawShort());
        switch (AcDb::groupKind(code)) {
        case AcDb::GroupKind::kPoint:
            return point(code, items);
        case AcDb::GroupKind::kReal:
            return number(code, items, items.rawDouble());
        case AcDb::GroupKind::kText:
            return text(code, items);
        case AcDb::GroupKind::kHandle:
            return handle(code, items, items.rawLongLong());
        case AcDb::GroupKind::kBinary:
            return bytes(code, items);
        default:
            return whole(code, items);
        }
    }

    bool number(int code, const BitReader& items, double value) {
        if (items.failed()) return false;
        m_output.number(code, value);
        return true;
    }
    bool handle(int code, const BitReader& items, std::uint64_t value) {
        if (items.failed()) return false;
        m_output.handle(code, value);
        return true;
    }
    bool point(int code, BitReader& items) {
        const double ordinates[] = {items.rawDouble(), items.rawDouble(), items.rawDouble()};
        for (int i = 0; i < 3; ++i)
            if (!number(code + 10 * i, items, ordinates[i])) return false;
        return true;
    }
    bool whole(int code, BitReader& items) {
        if (code >= 280 && code <= 299) return number(code, items, items.rawByte());
        if (code >= 160 && code <= 169)
            return number(code, items, static_cast<double>(static_cast<std::int64_t>(items.rawLongLong())));
        const bool isLong = (code >= 90 && code <= 99) || (code >= 420 && code <= 459) || code == 1071;
        return isLong ? number(code, items, static_cast<std::int32_t>(items.rawLong()))
                      : number(code, items, static_cast<std::int16_t>(items.rawShort()));
    }
    bool text(int code, BitReader& items) {
        const bool isWide = m_output.reading().form() >= 21;
        const std::size_t count = items.rawShort();
        if (!isWide) items.rawByte(); // the code page
        const std::size_t bits = isWide ? 16 : 8;
        if (items.failed() || count > items.left() / bits) return false;
        m_text.clear();
        m_output.reading().appendText({nullptr, items.position(), count}, m_text);
        items.moveTo(items.position() + count * bits);
        m_output.text(code, m_text);
        return true;
    }
    bool bytes(int code, BitReader& items) {
        m_text.clear();
        for (std::size_t left = items.rawByte(); left > 0 && !items.failed(); --left)
            m_text += static_cast<char>(items.rawByte());
        if (items.failed()) return false;
        m_output.digits(code, m_text);
        return true;
    }

    NativeOutput& m_output;
    std::string m_text;
};

} // namespace

void writeNative(std::string_view word, int, NativeOutput& output) {
    if (word == "xrecord") return ExtensionRecord(output).write();
    throw std::logic_error("no native word: " + std::string(word));
}

} // namespace hostkit
