#include "transcriptnatives.h"

#include "adscodes.h"
#include "transcriptvalues.h"

#include <cstring>
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
        while (items.left() >= 16 && item(items)) {
        }
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

/// The reverse. References stand among the items alone, as other programs write them.
class ExtensionItems {
public:
    explicit ExtensionItems(NativeInput& input)
        : m_input(input) {}

    void read() {
        const std::vector<const RecordGroup*> groups = m_input.takeAll();
        for (std::size_t i = 0; i < groups.size(); ++i) item(groups, i);
        m_input.setNumber("nbytes", static_cast<double>(m_bytes.size()));
        m_input.setBytes("data", std::move(m_bytes));
    }

private:
    void item(const std::vector<const RecordGroup*>& groups, std::size_t& at) {
        const RecordGroup& group = *groups[at];
        number(static_cast<std::uint64_t>(group.code), 2);
        switch (AcDb::groupKind(group.code)) {
        case AcDb::GroupKind::kPoint:
            real(group);
            for (int i = 1; i < 3; ++i) {
                const bool isThere = at + 1 < groups.size() && groups[at + 1]->code == group.code + 10 * i;
                isThere ? real(*groups[++at]) : number(0, 8);
            }
            return;
        case AcDb::GroupKind::kReal:
            return real(group);
        case AcDb::GroupKind::kText:
            return text(group.value);
        case AcDb::GroupKind::kHandle:
            return number(handleFromText(group.value).value_or(0), 8);
        case AcDb::GroupKind::kBinary: {
            std::string data;
            appendDigits(group.value, data);
            m_bytes += static_cast<char>(data.size());
            m_bytes += data;
            return;
        }
        default:
            return whole(group);
        }
    }

    void whole(const RecordGroup& group) {
        const int code = group.code;
        const bool isLong = (code >= 90 && code <= 99) || (code >= 420 && code <= 459) || code == 1071;
        const int size = code >= 280 && code <= 299 ? 1 : code >= 160 && code <= 169 ? 8 : isLong ? 4 : 2;
        number(static_cast<std::uint64_t>(integerFromText(group.value).value_or(0)), size);
    }
    void real(const RecordGroup& group) {
        const double value = realFromText(group.value).value_or(0.0);
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        number(bits, 8);
    }
    void text(std::string_view value) {
        std::string plain;
        appendUnescaped(value, plain);
        if (m_input.form() < 21) {
            number(plain.size(), 2);
            number(m_input.codePage(), 1);
            m_bytes += plain;
            return;
        }
        std::vector<std::uint16_t> units;
        utf16Of(plain, units);
        number(units.size(), 2);
        for (const std::uint16_t unit : units) number(unit, 2);
    }
    void number(std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i) m_bytes += static_cast<char>(value >> 8 * i);
    }

    NativeInput& m_input;
    std::string m_bytes;
};

} // namespace

void readNative(std::string_view word, int, NativeInput& input) {
    if (word == "xrecord") return ExtensionItems(input).read();
    throw std::logic_error("no native word: " + std::string(word));
}

void writeNative(std::string_view word, int, NativeOutput& output) {
    if (word == "xrecord") return ExtensionRecord(output).write();
    throw std::logic_error("no native word: " + std::string(word));
}

} // namespace hostkit
