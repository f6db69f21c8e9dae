#include "binaryform.h"

#include "binarytranscription.h"
#include "groupformat.h"
#include "groupscanner.h"

#include "dbsource.h"
#include "groupkinds.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace hostkit {

namespace {

// The first line names a program in seven letters, then the form. Readers compare all of it, so what we write
// has the letters of the form's first program.
constexpr unsigned char firstProgram[] = {0x41, 0x75, 0x74, 0x6F, 0x43, 0x41, 0x44};
constexpr std::string_view formMark(" Binary DXF\r\n\x1a\0", 15);
constexpr std::size_t markLimit = 32; // a longer name is no program's

constexpr unsigned char longCodeMark = 0xFF; // in the form with codes of one byte: two bytes of code follow
constexpr std::size_t longestChunk = 127;    // what fits into a line of a text drawing, as is the custom
constexpr DrawingStyle textStyle{};

std::size_t startOfBinaryGroups(std::string_view bytes) {
    const std::size_t mark = bytes.substr(0, markLimit).find(formMark.substr(0, formMark.size() - 1));
    return mark == std::string_view::npos ? std::string_view::npos
                                          : std::min(mark + formMark.size(), bytes.size());
}

template <typename T>
T littleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (std::size_t place = sizeof(T); place-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[place]);
    return static_cast<T>(value);
}

void appendLittleEndian(std::uint64_t value, std::size_t width, std::string& bytes) {
    for (; width > 0; --width, value >>= 8) bytes += static_cast<char>(value & 0xFF);
}

// The bytes of a number of that kind; 0 for a text or a chunk.
constexpr std::size_t widthOf(AcDb::GroupKind kind) {
    switch (kind) {
    case AcDb::GroupKind::kPoint:
    case AcDb::GroupKind::kReal:
    case AcDb::GroupKind::kInt64:
        return 8;
    case AcDb::GroupKind::kInt32:
        return 4;
    case AcDb::GroupKind::kInt16:
        return 2;
    case AcDb::GroupKind::kBool:
        return 1;
    default:
        return 0;
    }
}

constexpr bool isRealKind(AcDb::GroupKind kind) {
    return kind == AcDb::GroupKind::kPoint || kind == AcDb::GroupKind::kReal;
}

struct BinaryGroup {
    std::size_t offset = 0;
    int code = 0;
    std::string_view value; ///< without a text's end or a chunk's length

    bool isEndMark() const { return code == 0 && value == "EOF"; }
};

/// Walks the groups of a binary drawing.
class BinaryScanner {
public:
    explicit BinaryScanner(std::string_view bytes)
        : m_bytes(bytes)
        , m_position(startOfBinaryGroups(bytes)) {
        // The first group is a section's opening or a comment. As two bytes its code has a small second one,
        // where the other form has a letter of the value.
        const std::string_view start = bytes.substr(m_position, 2);
        m_hasWideCodes = start.size() == 2 && static_cast<unsigned char>(start[0]) != longCodeMark &&
                         static_cast<unsigned char>(start[1]) < ' ';
    }

    bool isAtEnd() const { return m_position == m_bytes.size(); }
    std::size_t offset() const { return m_position; }

    std::optional<FormFault> next(BinaryGroup& group) {
        group.offset = m_position;
        if (!takeCode(group.code) || !takeValue(group))
            return FormFault{Acad::eEndOfFile, group.offset, L"the file ends within a group: it was cut"};
        if (group.code < 0 || group.code > lastGroupCode)
            return FormFault{Acad::eBadDxfSequence, group.offset,
                             L"a group code was expected, not " + std::to_wstring(group.code)};
        return {};
    }

private:
    bool take(std::size_t count, std::string_view& part) {
        if (m_bytes.size() - m_position < count) return false;
        part = m_bytes.substr(m_position, count);
        m_position += count;
        return true;
    }

    bool takeCode(int& code) {
        std::string_view part;
        if (!m_hasWideCodes) {
            if (!take(1, part)) return false;
            code = static_cast<unsigned char>(part[0]);
            if (code != longCodeMark) return true;
        }
        if (!take(2, part)) return false;
        code = littleEndian<std::int16_t>(part);
        return true;
    }

    bool takeValue(BinaryGroup& group) {
        if (group.code < 0 || group.code > lastGroupCode) return true; // told by who asked
        const AcDb::GroupKind kind = kindOfCode(group.code);
        if (const std::size_t width = widthOf(kind)) return take(width, group.value);
        if (kind == AcDb::GroupKind::kBinary) {
            std::string_view length;
            return take(1, length) && take(static_cast<unsigned char>(length[0]), group.value);
        }
        const std::size_t end = m_bytes.find('\0', m_position);
        if (end == std::string_view::npos || !take(end - m_position, group.value)) return false;
        ++m_position;
        return true;
    }

    std::string_view m_bytes;
    std::size_t m_position;
    bool m_hasWideCodes = false;
};

void appendRealAsText(double value, std::string& text) {
    if (std::isfinite(value))
        appendReal(value, text);
    else
        text += std::isnan(value) ? "nan" : value > 0.0 ? "inf" : "-inf";
}

void appendHexadecimal(std::string_view chunk, std::string& text) {
    constexpr char digits[] = "0123456789ABCDEF";
    for (const char character : chunk) {
        const auto byte = static_cast<unsigned char>(character);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
}

void appendOneLine(std::string_view value, std::string& text) {
    for (const char character : value) {
        if (character == '\n' || character == '\r')
            (text += '^') += static_cast<char>(character + '@');
        else
            text += character;
    }
}

/// In the records of bodies the lines of data are scrambled: a caret of theirs stands for a letter. A text
/// drawing has a blank behind each, as others escape the next character; a binary one has none.
class CaretsOfBodies {
public:
    void follow(int code, std::string_view value) {
        if (code == 0)
            m_isBody =
                value == "3DSOLID" || value == "REGION" || value == "BODY" || value.ends_with("SURFACE");
        m_isData = m_isBody && (code == 1 || code == 3);
    }
    [[nodiscard]] bool areIn(std::string_view value) const {
        return m_isData && value.find('^') != std::string_view::npos;
    }

private:
    bool m_isBody = false, m_isData = false;
};

std::string withBlanksBehindCarets(std::string_view value) {
    std::string result;
    for (const char character : value) {
        result += character;
        if (character == '^') result += ' ';
    }
    return result;
}

std::string withoutBlanksBehindCarets(std::string_view value) {
    std::string result;
    for (std::size_t place = 0; place < value.size(); ++place) {
        result += value[place];
        if (value[place] == '^' && place + 1 < value.size() && value[place + 1] == ' ') ++place;
    }
    return result;
}

void appendAsText(const BinaryGroup& group, std::string& text) {
    appendCode(group.code, textStyle, text);
    switch (kindOfCode(group.code)) {
    case AcDb::GroupKind::kPoint:
    case AcDb::GroupKind::kReal:
        appendRealAsText(std::bit_cast<double>(littleEndian<std::uint64_t>(group.value)), text);
        break;
    case AcDb::GroupKind::kInt16:
        appendInteger(littleEndian<std::int16_t>(group.value), text);
        break;
    case AcDb::GroupKind::kInt32:
        appendInteger(littleEndian<std::int32_t>(group.value), text);
        break;
    case AcDb::GroupKind::kInt64:
        appendInteger(littleEndian<std::int64_t>(group.value), text);
        break;
    case AcDb::GroupKind::kBool:
        appendInteger(littleEndian<std::uint8_t>(group.value), text);
        break;
    case AcDb::GroupKind::kBinary:
        appendHexadecimal(group.value, text);
        break;
    default:
        appendOneLine(group.value, text);
    }
    text += textStyle.newline;
}

// What textFromBinary makes of bits that are no number, too.
std::optional<double> anyRealFromText(std::string_view text) {
    if (text == "nan") return std::numeric_limits<double>::quiet_NaN();
    if (text == "inf") return std::numeric_limits<double>::infinity();
    if (text == "-inf") return -std::numeric_limits<double>::infinity();
    return realFromText(text);
}

bool fitsWidth(std::int64_t value, std::size_t width) {
    if (width == sizeof value) return true;
    const std::int64_t bound = std::int64_t(1) << (8 * width);
    return value >= -bound / 2 && value < bound;
}

std::optional<unsigned char> hexadecimalDigit(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned char>(digit - '0');
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned char>(digit - 'A' + 10);
    if (digit >= 'a' && digit <= 'f') return static_cast<unsigned char>(digit - 'a' + 10);
    return {};
}

std::optional<std::string> bytesFromHexadecimal(std::string_view text) {
    text = withoutBlanks(text);
    std::string bytes;
    for (std::size_t place = 0; place + 1 < text.size(); place += 2) {
        const auto high = hexadecimalDigit(text[place]);
        const auto low = hexadecimalDigit(text[place + 1]);
        if (!high || !low) return {};
        bytes += static_cast<char>(*high << 4 | *low);
    }
    return text.size() % 2 == 0 ? std::optional(bytes) : std::nullopt;
}

/// Writes the groups of a binary drawing.
class BinaryGroupWriter {
public:
    BinaryGroupWriter(bool hasWideCodes, std::string& bytes)
        : m_hasWideCodes(hasWideCodes)
        , m_bytes(bytes) {}

    /// False where the value is none of the code's kind.
    bool write(const RawGroup& group) {
        const AcDb::GroupKind kind = kindOfCode(group.code);
        if (kind == AcDb::GroupKind::kBinary) return writeChunks(group);
        writeCode(group.code);
        if (widthOf(kind) != 0) return writeNumber(group.value, kind);
        m_bytes += group.value;
        m_bytes += '\0';
        return group.value.find('\0') == std::string_view::npos;
    }

private:
    void writeCode(int code) {
        if (!m_hasWideCodes && code < longCodeMark)
            return appendLittleEndian(static_cast<unsigned>(code), 1, m_bytes);
        if (!m_hasWideCodes) m_bytes += static_cast<char>(longCodeMark);
        appendLittleEndian(static_cast<unsigned>(code), 2, m_bytes);
    }

    bool writeNumber(std::string_view text, AcDb::GroupKind kind) {
        const std::size_t width = widthOf(kind);
        if (isRealKind(kind)) {
            const std::optional<double> value = anyRealFromText(text);
            if (value) appendLittleEndian(std::bit_cast<std::uint64_t>(*value), width, m_bytes);
            return value.has_value();
        }
        const std::optional<std::int64_t> value = integerFromText(text);
        if (!value || !fitsWidth(*value, width)) return false;
        appendLittleEndian(static_cast<std::uint64_t>(*value), width, m_bytes);
        return true;
    }

    bool writeChunks(const RawGroup& group) {
        const std::optional<std::string> chunk = bytesFromHexadecimal(group.value);
        if (!chunk) return false;
        std::string_view rest = *chunk;
        const std::size_t most = rest.size() > 0xFF ? longestChunk : rest.size();
        do {
            const std::string_view part = rest.substr(0, most);
            writeCode(group.code);
            m_bytes += static_cast<char>(part.size());
            m_bytes += part;
            rest.remove_prefix(part.size());
        } while (!rest.empty());
        return true;
    }

    bool m_hasWideCodes;
    std::string& m_bytes;
};

struct BinaryOriginal {
    std::string bytes;
    void operator()(DrawingSource* source) const { delete source; }
};
struct TranscribedOriginal {
    std::shared_ptr<const TranscribedDrawing> drawing;
    void operator()(DrawingSource* source) const { delete source; }
};

ByteSpan asBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Null, with the fault, where the container cannot be opened.
std::shared_ptr<DrawingSource> transcribe(std::string bytes, FormFault& fault) {
    auto source = std::make_unique<DrawingSource>();
    auto drawing = std::make_shared<TranscribedDrawing>();
    if (textFromDrawing(asBytes(bytes), source->bytes, *drawing))
        return {source.release(), TranscribedOriginal{std::move(drawing)}};
    fault.status = Acad::eNotApplicable;
    if (drawing->container.faults.empty()) {
        fault.reason = L"the drawing cannot be opened";
        return nullptr;
    }
    fault.offset = drawing->container.faults.back().offset;
    fault.reason = drawing->container.faults.back().reason;
    return nullptr;
}

std::wstring shownValue(std::string_view value) {
    constexpr std::size_t longest = 40;
    std::wstring text;
    for (const char character : value.substr(0, longest))
        text += character >= ' ' && character < 0x7F ? static_cast<wchar_t>(character) : L'?';
    return text;
}

} // namespace

bool isBinaryForm(std::string_view bytes) { return startOfBinaryGroups(bytes) != std::string_view::npos; }

std::optional<FormFault> textFromBinary(std::string_view bytes, std::string& text) {
    BinaryScanner scanner(bytes);
    std::string result;
    result.reserve(bytes.size() * 2);
    BinaryGroup group;
    CaretsOfBodies carets;
    while (!scanner.isAtEnd() && !group.isEndMark()) {
        if (std::optional<FormFault> fault = scanner.next(group)) return fault;
        carets.follow(group.code, group.value);
        std::string escaped;
        if (carets.areIn(group.value)) group.value = escaped = withBlanksBehindCarets(group.value);
        appendAsText(group, result);
    }
    text = std::move(result);
    return {};
}

// Only here is known that a text was made of something else: that travels with the source's deleter.
std::shared_ptr<DrawingSource> sourceFromBytes(std::string bytes, FormFault& fault) {
    if (isBinaryDrawing(asBytes(bytes))) return transcribe(std::move(bytes), fault);
    auto source = std::make_unique<DrawingSource>();
    if (!isBinaryForm(bytes)) {
        source->bytes = std::move(bytes);
        return source;
    }
    if (const std::optional<FormFault> found = textFromBinary(bytes, source->bytes)) {
        fault = *found;
        return nullptr;
    }
    return {source.release(), BinaryOriginal{std::move(bytes)}};
}

const std::string* binaryBytesOf(const std::shared_ptr<const DrawingSource>& source) {
    const auto* const original = std::get_deleter<BinaryOriginal>(source);
    return original ? &original->bytes : nullptr;
}

const TranscribedDrawing* binaryDrawingOf(const std::shared_ptr<const DrawingSource>& source) {
    const auto* const original = std::get_deleter<TranscribedOriginal>(source);
    return original ? original->drawing.get() : nullptr;
}

std::size_t offsetOfBinaryGroup(std::string_view bytes, std::size_t number) {
    BinaryScanner scanner(bytes);
    BinaryGroup group;
    while (number > 0 && !scanner.isAtEnd() && !scanner.next(group)) --number;
    return scanner.offset();
}

std::optional<FormFault> binaryFromText(std::string_view text, DrawingVersion version, std::string& bytes) {
    std::string result(std::begin(firstProgram), std::end(firstProgram));
    result += formMark;
    result.reserve(text.size());
    BinaryGroupWriter writer(version > DrawingVersion::kR12, result);
    GroupScanner scanner(text, startOfGroups(text));
    RawGroup group;
    CaretsOfBodies carets;
    while (scanner.next(group) == ScanResult::kGroup) {
        const std::size_t offset = scanner.offsetOf(group.start);
        if (group.code < 0 || group.code > lastGroupCode)
            return FormFault{Acad::eBadDxfSequence, offset,
                             std::to_wstring(group.code) + L" is no group code of the binary form"};
        carets.follow(group.code, withoutBlanks(group.value));
        std::string plain;
        if (carets.areIn(group.value)) group.value = plain = withoutBlanksBehindCarets(group.value);
        if (!writer.write(group))
            return FormFault{Acad::eInvalidInput, offset,
                             L"'" + shownValue(group.value) + L"' is no value for group " +
                                 std::to_wstring(group.code) + L" of the binary form"};
        if (group.is(0, "EOF")) break;
    }
    bytes = std::move(result);
    return {};
}

} // namespace hostkit
