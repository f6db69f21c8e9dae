#include "transcriptbodies.h"

#include "bodydata.h"
#include "modelercontent.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace hostkit {
namespace {

constexpr int formOfStore = 27;
constexpr short textCode = 1, moreCode = 3, dataFormCode = 70, revisionFlagCode = 290, revisionCode = 2;
constexpr std::size_t longestPiece = 255, longestBlock = 4096;

void appendRun(const RecordReading& reading, const ValueRun& run, std::string& bytes) {
    BitReader reader(reading.objects(), run.firstBit, run.firstBit + run.count * 8);
    for (std::uint64_t i = 0; i < run.count && !reader.failed(); ++i)
        bytes += static_cast<char>(reader.rawByte());
}

// Characters are scrambled one by one, so that a line may be cut anywhere; a character that is escaped has
// two.
void writeLine(std::string_view line, NativeOutput& output) {
    int code = textCode;
    std::size_t begin = 0, width = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::size_t own = line[i] == '^' || static_cast<unsigned char>(line[i]) < ' ' ? 2 : 1;
        if (width + own > longestPiece) {
            output.text(code, line.substr(begin, i - begin));
            code = moreCode;
            begin = i;
            width = 0;
        }
        width += own;
    }
    output.text(code, line.substr(begin));
}

void writeLines(std::string_view data, NativeOutput& output) {
    while (!data.empty()) {
        const std::size_t end = std::min(data.find('\n'), data.size());
        std::string_view line = data.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        writeLine(line, output);
        data.remove_prefix(std::min(end + 1, data.size()));
    }
}

void scrambleLines(std::string& data) {
    for (std::size_t begin = 0; begin < data.size();) {
        const std::size_t end = std::min(data.find('\n', begin), data.size());
        std::string line = data.substr(begin, end - begin);
        modeler::scramble(line);
        data.replace(begin, line.size(), line);
        begin = end + 1;
    }
}

struct BodySlots {
    std::uint16_t binary = 0, blocks = 0, block = 0;
};

/// Scrambled text; empty where there are no data, or none that can be told as text.
std::string scrambledText(const RecordReading& reading, const RecordScope& values, const BodySlots& slots) {
    std::string data;
    if (const RecordValue* const binary = values.find(slots.binary)) {
        std::string bytes;
        appendRun(reading, binary->run, bytes);
        data = ModelerContent(std::move(bytes)).dataFor(AcDb::kDHL_1024);
        scrambleLines(data);
    } else if (const RecordScope::Loop* const passes = values.findLoop(slots.blocks)) {
        for (std::size_t i = 0; i < passes->count; ++i)
            if (const RecordValue* const text = passes->passes[i]->find(slots.block))
                appendRun(reading, text->run, data);
    }
    return data;
}

// Revisions: a number of 32 bits, two of 16 and eight bytes, as "{8-4-4-4-12}" digits.

struct Revision {
    std::array<std::uint64_t, 3> numbers{};
    std::string bytes;
};
constexpr std::array<std::string_view, 3> revisionFields{"rev1", "rev2", "rev3"};
constexpr std::array<int, 3> digitsOfRevision{8, 4, 4};

void appendHex(std::uint64_t value, int digits, std::string& text) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += "0123456789abcdef"[value >> shift & 15];
}

void writeRevision(NativeOutput& output) {
    const RecordValue* const has = output.value("hasrev");
    const RecordValue* const bytes = output.value("rev4");
    if (!has || !bytes) return;
    output.number(revisionFlagCode, static_cast<double>(has->whole));
    std::string text = "{", tail;
    for (std::size_t i = 0; i < revisionFields.size(); ++i) {
        const RecordValue* const number = output.value(revisionFields[i]);
        appendHex(number ? static_cast<std::uint64_t>(number->whole) : 0, digitsOfRevision[i], text);
        text += '-';
    }
    appendRun(output.reading(), bytes->run, tail);
    for (std::size_t i = 0; i < tail.size(); ++i) {
        if (i == 2) text += '-';
        appendHex(static_cast<unsigned char>(tail[i]), 2, text);
    }
    output.text(revisionCode, text + '}');
}

void readRevision(NativeInput& input) {
    const RecordGroup* const has = input.take(revisionFlagCode);
    const RecordGroup* const told = input.take(revisionCode);
    if (has) input.setNumber("hasrev", has->value.find('1') != std::string_view::npos);
    if (!told) return;
    std::string digits;
    for (const char character : told->value)
        if (std::isxdigit(static_cast<unsigned char>(character))) digits += character;
    constexpr std::size_t digitsOfId = 32;
    if (digits.size() != digitsOfId) return;
    std::size_t at = 0;
    for (std::size_t i = 0; i < revisionFields.size(); ++i) {
        std::uint32_t number = 0;
        const auto count = static_cast<std::size_t>(digitsOfRevision[i]);
        std::from_chars(digits.data() + at, digits.data() + at + count, number, 16);
        at += count;
        input.setNumber(revisionFields[i],
                        i == 0 ? static_cast<std::int32_t>(number) : static_cast<std::int16_t>(number));
    }
    std::string bytes;
    appendDigits(std::string_view(digits).substr(at), bytes);
    input.setBytes("rev4", std::move(bytes));
}

/// Lines with their ends; a group 3 goes on with the line before.
std::string textOfGroups(NativeInput& input) {
    std::string text;
    for (const RecordGroup* const group : input.takeAll()) {
        if (group->code != textCode && group->code != moreCode) continue;
        if (group->code == moreCode && text.size() > 1) text.resize(text.size() - 2);
        appendUnescaped(group->value, text);
        text += "\r\n";
    }
    return text;
}

/// The groups tell what the record holds already, perhaps in its binary form.
bool isOriginal(std::string_view text, NativeInput& input) {
    const BodySlots slots{input.slotOf("sab"), input.slotOf("while bs"), input.slotOf("sat")};
    const std::string before = scrambledText(*input.originalReading(), *input.original(), slots);
    const auto isEnd = [](char character) { return character == '\r' || character == '\n'; };
    std::size_t at = 0;
    for (const char character : text) {
        if (isEnd(character)) continue;
        while (at < before.size() && isEnd(before[at])) ++at;
        if (at == before.size() || before[at++] != character) return false;
    }
    while (at < before.size() && isEnd(before[at])) ++at;
    return at == before.size();
}

} // namespace

void writeBodyData(int, NativeOutput& output) {
    if (output.reading().form() >= formOfStore) return writeRevision(output);
    output.number(dataFormCode, 1);
    const RecordLayout& layout = *output.fields().layout;
    BodySlots slots;
    if (layout.findSlot("sab", slots.binary) && layout.findSlot("while bs", slots.blocks) &&
        layout.findSlot("sat", slots.block))
        writeLines(scrambledText(output.reading(), output.fields().values, slots), output);
}

void readBodyData(int, NativeInput& input) {
    if (input.form() >= formOfStore) return readRevision(input);
    const std::string text = textOfGroups(input);
    if (input.original() && input.originalReading() && isOriginal(text, input)) return;
    input.setNumber("empty", text.empty());
    if (text.empty()) return;
    input.setNumber("unk", 1);
    input.setNumber("mversion", 1);
    const auto sizeAt = [&](std::size_t at) {
        return static_cast<std::int64_t>(std::min(longestBlock, text.size() - std::min(at, text.size())));
    };
    input.setNumber("bs", static_cast<double>(sizeAt(0)));
    RecordScope::Loop& blocks = input.scope().loop(input.slotOf("while bs"));
    for (std::size_t at = 0; at < text.size(); at += longestBlock) {
        RecordScope& pass = RecordScope::addPass(blocks);
        pass.add(input.slotOf("sat")).run = input.kept(text.substr(at, longestBlock));
        pass.add(input.slotOf("bs")).whole = sizeAt(at + longestBlock);
    }
}

} // namespace hostkit
