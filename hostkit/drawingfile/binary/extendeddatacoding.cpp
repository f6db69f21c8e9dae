#include "extendeddatacoding.h"

#include "groupcodes.h"
#include "transcriptvalues.h"

#include <algorithm>

namespace hostkit {
namespace {

// Besides those that records have in common.
constexpr short braceCode = 1002, bytesCode = 1004, handleItemCode = 1005, firstPointCode = 1010,
                lastPointCode = 1015, firstRealCode = 1040, lastRealCode = 1042, shortCode = 1070;
constexpr int handleSize = 8, shortSize = 2, longSize = 4;

/// Reads the items of one application.
class ExtendedItems {
public:
    ExtendedItems(const ValueRun& items, NativeOutput& output)
        : m_output(output)
        , m_items(output.reading().objects(), items.firstBit, items.firstBit + items.count * 8) {}

    void write() {
        while (m_items.left() >= 8 && item()) {
        }
    }

private:
    bool item() {
        const int code = firstExtendedCode + m_items.rawByte();
        switch (code) {
        case firstExtendedCode:
        case applicationCode:
            return text(code);
        case braceCode:
            m_output.text(code, m_items.rawByte() ? "}" : "{");
            break;
        case extendedLayerCode:
            m_output.text(code, m_output.names().nameOf(bigEndian()));
            break;
        case bytesCode:
            bytes();
            break;
        case handleItemCode:
            m_output.handle(code, bigEndian());
            break;
        case shortCode:
            m_output.number(code, static_cast<std::int16_t>(m_items.rawShort()));
            break;
        case extendedLongCode:
            m_output.number(code, static_cast<std::int32_t>(m_items.rawLong()));
            break;
        default:
            return reals(code);
        }
        return !m_items.failed();
    }

    void bytes() {
        m_text.clear();
        for (std::size_t left = m_items.rawByte(); left > 0 && !m_items.failed(); --left)
            m_text += static_cast<char>(m_items.rawByte());
        m_text.empty() ? m_output.text(bytesCode, {}) : m_output.digits(bytesCode, m_text);
    }

    bool text(int code) {
        const bool isWide = m_output.reading().form() >= 21;
        const std::size_t count = isWide ? m_items.rawShort() : m_items.rawByte();
        if (!isWide) m_items.rawShort(); // the code page
        const std::size_t bits = isWide ? 16 : 8;
        if (count > m_items.left() / bits) return false;
        m_text.clear();
        m_output.reading().appendText({nullptr, m_items.position(), count}, m_text);
        m_items.moveTo(m_items.position() + count * bits);
        m_output.text(code, m_text);
        return true;
    }

    bool reals(int code) {
        const bool isPoint = code >= firstPointCode && code <= lastPointCode;
        if (!isPoint && (code < firstRealCode || code > lastRealCode)) return false;
        for (int i = 0; i < (isPoint ? 3 : 1); ++i) {
            const double value = m_items.rawDouble();
            if (m_items.failed()) return false;
            m_output.number(code + 10 * i, value);
        }
        return true;
    }

    std::uint64_t bigEndian() { return __builtin_bswap64(m_items.rawLongLong()); }

    NativeOutput& m_output;
    BitReader m_items;
    std::string m_text;
};

} // namespace

void writeExtendedItems(const ValueRun& items, NativeOutput& output) { ExtendedItems(items, output).write(); }

void ExtendedDataBytes::append(std::span<const RecordGroup> groups, std::size_t& at, std::string& bytes) {
    const RecordGroup& group = groups[at];
    if (group.code < firstExtendedCode || group.code > extendedLongCode) return;
    bytes += static_cast<char>(group.code - firstExtendedCode);
    const auto whole = [&] { return static_cast<std::uint64_t>(integerFromText(group.value).value_or(0)); };
    switch (group.code) {
    case firstExtendedCode:
        return appendText(group.value, bytes);
    case braceCode:
        bytes += static_cast<char>(withoutBlanks(group.value) == "}");
        return;
    case extendedLayerCode:
        return appendNumber(__builtin_bswap64(m_names.handleOfValue("LAYER", group.value)), handleSize,
                            bytes);
    case bytesCode: {
        std::string digits;
        appendDigits(group.value, digits);
        bytes += static_cast<char>(digits.size());
        bytes += digits;
        return;
    }
    case handleItemCode:
        return appendNumber(__builtin_bswap64(handleFromText(group.value).value_or(0)), handleSize, bytes);
    case shortCode:
        return appendNumber(whole(), shortSize, bytes);
    case extendedLongCode:
        return appendNumber(whole(), longSize, bytes);
    default:
        break;
    }
    const std::size_t count = group.code < firstRealCode ? 3 : 1;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isThere = i == 0 || (at + 1 < groups.size() &&
                                        groups[at + 1].code == group.code + 10 * static_cast<int>(i));
        if (i > 0 && isThere) ++at;
        appendDouble(isThere ? realFromText(groups[at].value).value_or(0.0) : 0.0, bytes);
    }
}

void ExtendedDataBytes::appendText(std::string_view value, std::string& bytes) {
    std::string text;
    appendUnescaped(value, text);
    if (m_form < 21) {
        constexpr std::size_t longest = 255;
        text.resize(std::min(text.size(), longest));
        bytes += static_cast<char>(text.size());
        bytes += '\0';
        bytes += static_cast<char>(m_codePage);
        bytes += text;
        return;
    }
    utf16Of(text, m_units);
    constexpr std::size_t longest = 0xFFFF;
    m_units.resize(std::min(m_units.size(), longest));
    appendNumber(m_units.size(), shortSize, bytes);
    for (const std::uint16_t unit : m_units) appendNumber(unit, shortSize, bytes);
}

} // namespace hostkit
