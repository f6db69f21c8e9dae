#include "transcriptnatives.h"

#include "adscodes.h"
#include "fieldtable.h"
#include "gemat3d.h"
#include "groupcodes.h"
#include "recordtranscription.h"
#include "tablestylenative.h"
#include "transcriptbodies.h"
#include "transcriptvalues.h"

#include <array>
#include <cmath>
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
        if (code <= 0 || code > extendedLongCode) return false; // damage: a record begins with 0 alone
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
    void real(const RecordGroup& group) { appendDouble(realFromText(group.value).value_or(0.0), m_bytes); }
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
    void number(std::uint64_t value, int size) { appendNumber(value, size, m_bytes); }

    NativeInput& m_input;
    std::string m_bytes;
};

// Texts of line types stand in one area, each up to a zero, at the offset that its dash tells. Offsets are of
// bytes; from 2007 on a character has two.

std::size_t unitOf(int form) { return form >= 21 ? 2 : 1; }

/// Characters from that bit up to a zero or the end.
std::size_t lengthAt(BitReader reader, std::size_t unit) {
    std::size_t count = 0;
    while (reader.left() >= unit * 8 && (unit == 2 ? reader.rawShort() : reader.rawByte()) != 0) ++count;
    return count;
}

void readRun(const ValueRun& run, std::size_t offset, const NativeOutput& output, std::string& text) {
    if (offset > run.count) return;
    const std::uint64_t first = run.firstBit + offset * 8, end = run.firstBit + run.count * 8;
    const ByteSpan objects = output.reading().objects();
    const std::size_t length = lengthAt(BitReader(objects, first, end), unitOf(output.reading().form()));
    output.reading().appendText({nullptr, first, length}, text);
}

/// With a zero behind.
std::string coded(std::string_view value, int form) {
    std::string text;
    appendUnescaped(value, text);
    if (form < 21) return text + '\0';
    std::vector<std::uint16_t> units;
    utf16Of(text, units);
    units.push_back(0);
    std::string bytes;
    for (const std::uint16_t unit : units) {
        bytes += static_cast<char>(unit);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

void writeLinetypeText(int code, NativeOutput& output) {
    const RecordValue* const area = output.value("strings");
    const RecordValue* const offset = output.value("shapecode");
    if (!area || !offset || offset->whole < 0) return;
    std::string text;
    readRun(area->run, static_cast<std::size_t>(offset->whole), output, text);
    output.text(code, text);
}

void readLinetypeText(int code, NativeInput& input) {
    const RecordGroup* const group = input.take(code);
    if (!group) return;
    const std::size_t unit = unitOf(input.form()), size = 256 * unit;
    const std::uint16_t slot = input.slotOf("strings");
    const RecordValue* const before = input.recordScope().find(slot);
    std::string area = before && before->run.bytes ? std::string(before->run.bytes, before->run.count)
                                                   : std::string(size, '\0');
    const std::size_t last = area.find_last_not_of('\0');
    const std::size_t offset = last == std::string::npos ? 0 : (last / unit + 2) * unit;
    const std::string text = coded(group->value, input.form());
    if (offset + text.size() > size) return;
    area.replace(offset, text.size(), text);
    RecordValue value;
    value.run = input.kept(std::move(area));
    input.recordScope().set(slot, value);
    input.setNumber("shapecode", static_cast<double>(offset));
}

constexpr int valuePieceCode = 2;

void writeValueText(int code, NativeOutput& output) {
    const RecordValue* const bytes = output.value("vbytes");
    if (!bytes) return;
    std::string text;
    readRun(bytes->run, 0, output, text);
    output.pieces(code, valuePieceCode, text);
}

void readValueText(int code, NativeInput& input) {
    std::string bytes = coded(input.takePieces(code, valuePieceCode), input.form());
    input.setNumber("vsize", static_cast<double>(bytes.size()));
    input.setBytes("vbytes", std::move(bytes));
}

// Names of unnamed blocks: the record of the block has them without their number.

void writeBlockName(int code, NativeOutput& output) {
    const std::string_view name = output.names().nameOf(output.fields().handle);
    if (!name.empty()) return output.text(code, name);
    std::string text;
    if (const RecordValue* const own = output.value("name")) output.reading().appendText(own->run, text);
    output.text(code, text);
}

void readBlockName(int code, NativeInput& input) {
    const RecordGroup* const group = input.take(code);
    if (!group) return;
    std::string name;
    appendUnescaped(group->value, name);
    const std::size_t prefix = name.find_last_not_of("0123456789") + 1;
    const RecordValue* const before =
        input.original() ? input.original()->find(input.slotOf("name")) : nullptr;
    const bool isShort = name.starts_with('*') && before &&
                         (before->run.count == prefix || before->run.count == prefix + 1); // a zero behind
    if (!isShort) input.setBytes("name", std::move(name));
}

// Line types of multiline styles, up to 2013 by their place in the table.

constexpr int indexByLayer = 0x7FFF, indexByBlock = 0x7FFE;

void writeLinetypeIndex(int code, NativeOutput& output) {
    const RecordValue* const index = output.value("ltindex");
    if (!index) return;
    if (index->whole == indexByLayer) return output.text(code, "BYLAYER");
    if (index->whole == indexByBlock) return output.text(code, "BYBLOCK");
    const std::size_t at = index->whole < 0 ? SIZE_MAX : static_cast<std::size_t>(index->whole);
    output.text(code, output.names().nameOf(output.names().linetypeAt(at)));
}

void readLinetypeIndex(int code, NativeInput& input) {
    const RecordGroup* const group = input.take(code);
    const std::uint64_t handle = group ? input.names().handleOf("LTYPE", group->value) : 0;
    const auto is = [&](std::string_view name) {
        return handle && handle == input.names().handleOf("LTYPE", name);
    };
    std::size_t at = 0;
    while (input.names().linetypeAt(at) != 0 && input.names().linetypeAt(at) != handle) ++at;
    const bool isPlaced = handle && input.names().linetypeAt(at) == handle;
    const std::size_t index = is("BYBLOCK") ? indexByBlock : isPlaced ? at : indexByLayer;
    input.setNumber("ltindex", static_cast<double>(index));
}

// Shapes: the record has their number in the file of shapes, which is not looked into.

void writeShapeName(int code, NativeOutput& output) {
    const RecordValue* const number = output.value("shapeno");
    output.text(code, std::to_string(number ? number->whole : 0));
}

void readShapeName(int code, NativeInput& input) {
    const RecordGroup* const group = input.take(code);
    if (!group) return;
    if (const std::optional<std::int64_t> number = integerFromText(group->value))
        input.setNumber("shapeno", static_cast<double>(*number));
}

// Paragraphs: other programs may tell their direction as an angle in the plane of the text.

void readTextRotation(int code, NativeInput& input) {
    const RecordGroup* const group = input.take(code);
    const RecordValue* const told = input.scope().find(input.slotOf("xdir"));
    const RecordValue* const normal = input.scope().find(input.slotOf("ext"));
    const bool isTold = told && (told->real[0] != 1.0 || told->real[1] != 0.0 || told->real[2] != 0.0);
    if (!group || !normal || isTold) return;
    const double angle = radiansFromDegrees(realFromText(group->value).value_or(0.0));
    if (angle == 0.0) return;
    const AcGeVector3d up(normal->real[0], normal->real[1], normal->real[2]);
    const AcGeVector3d direction =
        AcGeMatrix3d::planeToWorld(up) * AcGeVector3d(std::cos(angle), std::sin(angle), 0.0);
    input.setPoint("xdir", {direction.x, direction.y, direction.z});
}

struct NativeWord {
    std::string_view word;
    void (*write)(int code, NativeOutput& output);
    void (*read)(int code, NativeInput& input);
};
constexpr std::array nativeWords{
    NativeWord{"blockname", writeBlockName, readBlockName},
    NativeWord{"linetypetexts", writeLinetypeText, readLinetypeText},
    NativeWord{"linetypeindex", writeLinetypeIndex, readLinetypeIndex},
    NativeWord{"tablestyle", [](int, NativeOutput&) {},
               [](int, NativeInput& input) { readTableStyle(input); }},
    NativeWord{"valuetext", writeValueText, readValueText},
    NativeWord{"modeler", writeBodyData, readBodyData},
    NativeWord{"shapename", writeShapeName, readShapeName},
    NativeWord{"textrotation", [](int, NativeOutput&) {}, readTextRotation},
    NativeWord{"xrecord", [](int, NativeOutput& output) { ExtensionRecord(output).write(); },
               [](int, NativeInput& input) { ExtensionItems(input).read(); }},
};

const NativeWord& nativeWord(std::string_view word) {
    for (const NativeWord& known : nativeWords)
        if (known.word == word) return known;
    throw std::logic_error("no native word: " + std::string(word));
}

} // namespace

void readNative(std::string_view word, int code, NativeInput& input) { nativeWord(word).read(code, input); }

void writeNative(std::string_view word, int code, NativeOutput& output) {
    nativeWord(word).write(code, output);
}

} // namespace hostkit
