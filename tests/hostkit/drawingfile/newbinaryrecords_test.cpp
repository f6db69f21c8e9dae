// Binary records that are made from groups: new ones with values that the drawings of others at hand do not
// have, and theirs again.
#include "binarytranscription.h"
#include "drawingsofothers.h"
#include "encodinglists.h"
#include "recordchoice.h"
#include "recordencoding.h"
#include "recordgathering.h"
#include "recordtranscription.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using namespace hostkit;

/// "70 1|62 -7" as lines.
std::string groupsOf(std::string_view line) {
    std::string text;
    while (!line.empty()) {
        const std::string_view one = line.substr(0, line.find('|'));
        line.remove_prefix(std::min(line.size(), one.size() + 1));
        const std::string_view code = one.substr(0, one.find(' '));
        text.append(code.size() < 3 ? 3 - code.size() : 0, ' ').append(code).append("\n");
        text.append(one.substr(one.find(' ') + 1)).append("\n");
    }
    return text;
}

struct Record {
    DrawingVersion version;
    const char* kind;
    const char* groups; ///< behind its marks
};

RecordNames someNames() {
    RecordNames names;
    names.add("LTYPE", "Continuous", 0x16);
    names.add("STYLE", "Standard", 0x11);
    names.add("PLOTSTYLENAME", "Normal", 0xF);
    return names;
}

/// The groups of a record that goes into a binary one and is read again; empty where either fails.
std::string thereAndBack(const Record& record, const std::string& text) {
    const RecordNames names = someNames();
    const RecordLayout* const layout = layoutForGroups(RecordLayouts::of(record.version), text);
    if (!layout) return {};
    DrawingRecord groups;
    scanRecordAt(text, 0, text.size(), groups);
    RecordGathering gathering(record.version, 30, names);
    RecordScope values;
    gathering.gather(groups, *layout, {}, values);
    constexpr unsigned classNumber = 500;
    BinaryContainer container;
    container.version = record.version;
    if (!RecordEncoding(record.version)
             .append(*layout, layout->number ? layout->number : classNumber, 0x2A, values,
                     container.sections["AcDb:AcDbObjects"]))
        return {};
    std::vector<BinaryClass> classes(1);
    classes[0].number = classNumber;
    classes[0].dxfName = layout->name;
    RecordReading reading(container, classes);
    RecordFields fields;
    if (!reading.read(0, fields)) return {};
    const DrawingStyle style{DrawingText(CodePage::utf8), record.version, "\n"};
    std::string back;
    return RecordTranscription(reading, names, style).append(fields, {}, back) ? back : std::string();
}

constexpr const char* border =
    "|274 1|284 0|64 1|275 2|285 1|65 2|276 3|286 0|66 3|277 4|287 1|67 4|278 5|288 0|68 5|279 6|289 1|69 6";

TEST(NewBinaryRecords, groupsComeBackThatNoDrawingAtHandHas) {
    const std::string row = std::string("140 0.5|170 3|62 1|63 2|283 1|90 512|91 0|1 ") + border;
    const std::string styles =
        "100 AcDbTableStyle|280 0|3 Rows|70 0|71 0|40 0.25|41 0.125|280 0|281 0|7 Standard|" + row +
        "|7 Standard|" + row + "|7 Standard|" + row;
    const std::string marks = "100 AcDbSymbolTableRecord|100 ";
    const std::string layer = marks + "AcDbLayerTableRecord|2 A|70 7|62 -7|6 Continuous|290 0|370 50|390 F";
    const std::string texts =
        marks + "AcDbLinetypeTableRecord|2 B|70 16|3 two|72 65|73 2|40 1.5|49 1.0|74 2|75 0|"
                "340 11|46 1.0|50 0.0|44 0.0|45 0.0|9 GAS|49 -0.5|74 2|75 0|340 11|46 1.0|50 0.0|"
                "44 0.0|45 0.0|9 OIL";
    std::string lines = "100 AcDbMlineStyle|2 C|70 1858|3 |62 256|51 90.0|52 45.0|71 0";
    const std::string field = "100 AcDbField|1 _text|2 code|90 0|97 0|91 63|92 0|94 9|95 2|96 0|300 |93 1|6 "
                              "KEY|93 2|90 1|91 7|94 0|"
                              "300 |302 |304 ACVALUE_END|7 ACFD_FIELD_VALUE|93 2|90 4|2 " +
                              std::string(250, 'a') + "|1 rest|94 0|300 |302 |304 ACVALUE_END|301 shown|98 5";
    const std::vector<Record> records{{DrawingVersion::k2010, "FIELD", field.c_str()},
                                      {DrawingVersion::k2000, "LAYER", layer.c_str()},
                                      {DrawingVersion::k2018, "LTYPE", texts.c_str()},
                                      {DrawingVersion::k2004, "LTYPE", texts.c_str()},
                                      {DrawingVersion::k2004, "MLINESTYLE", lines.c_str()},
                                      {DrawingVersion::k2010, "TABLESTYLE", styles.c_str()}};
    for (const Record& record : records) {
        const std::string text = groupsOf("0 " + std::string(record.kind) + "|5 2A|330 0|" + record.groups);
        EXPECT_EQ(thereAndBack(record, text), text) << record.kind;
    }
}

TEST(NewBinaryRecords, formsThatHaveAKindOtherwiseGetNone) {
    struct Case {
        DrawingVersion version;
        const char* groups;
        bool can;
        const char* instead;
    };
    for (const Case& one : {Case{DrawingVersion::k2010, "0 VISUALSTYLE|177 2", true, ""},
                            Case{DrawingVersion::k2013, "0 VISUALSTYLE|177 2", false, ""},
                            Case{DrawingVersion::k2018, "0 VISUALSTYLE|177 3", true, ""},
                            Case{DrawingVersion::k2004, "0 TABLECONTENT|304 ACVALUE_END", false, ""},
                            Case{DrawingVersion::k2010, "0 TABLECONTENT|304 ACVALUE_END", true, ""},
                            Case{DrawingVersion::k2004, "0 ACAD_TABLE", true, ""},
                            Case{DrawingVersion::k2010, "0 ACAD_TABLE", false, "INSERT"}}) {
        const RecordLayouts& layouts = RecordLayouts::of(one.version);
        const std::string text = groupsOf(one.groups);
        const RecordLayout* const layout = layoutForGroups(layouts, text);
        ASSERT_TRUE(layout) << one.groups;
        EXPECT_EQ(canBeNew(*layout, text), one.can) << one.groups;
        const RecordLayout* const instead = one.can ? nullptr : replacementOf(layouts, *layout);
        EXPECT_EQ(instead ? instead->name : "", one.instead) << one.groups;
    }
}

TEST(NewBinaryRecords, layersGetThePlotStyleThatTheyLackAndKeepTheirOwn) {
    const RecordLayout& layout = *RecordLayouts::of(DrawingVersion::k2018).byName("LAYER");
    std::uint16_t slot = 0;
    ASSERT_TRUE(layout.findSlot("plotstyle", slot));
    for (const std::uint64_t own : {0x0, 0x77}) {
        RecordScope values;
        RecordValue told;
        told.reference = {5, own};
        values.set(slot, told);
        completeReferences(someNames(), layout, values);
        EXPECT_EQ(values.find(slot)->reference.value, own ? own : 0xFU);
    }
}

RecordLinks linksOf(const RecordFields& fields) {
    RecordLinks links;
    links.owner = fields.referenceTo("owner");
    if (const RecordValue* const mode = fields.value("entmode"))
        links.entityMode = static_cast<int>(mode->whole);
    links.isInChain = fields.value("nolinks") != nullptr;
    links.previous = fields.value("prev") ? fields.referenceTo("prev") : fields.handle - 1;
    links.next = fields.value("next") ? fields.referenceTo("next") : fields.handle + 1;
    return links;
}

/// Records that have other bits when they are made again from the text that was made of them.
std::vector<std::uint64_t> otherAgain(const TranscribedDrawing& drawing, const std::string& text) {
    const ExchangeOutline outline(text);
    const RecordNames names = namesIn(outline, DrawingText());
    RecordReading reading(drawing.container, drawing.classes);
    RecordGathering gathering(drawing.container.version, drawing.container.codePage, names);
    RecordEncoding encoding(drawing.container.version);
    RecordFields fields;
    DrawingRecord groups;
    std::vector<std::uint64_t> others;
    for (const TranscribedRecord& one : drawing.records) {
        if (one.isOpaque || one.length == 0 || !reading.read(one.offset, fields) ||
            !fields.layout->hasTranscript)
            continue;
        scanRecordAt(text, one.text, one.length, groups);
        RecordScope values;
        gathering.setOriginal(&reading, &fields);
        gathering.gather(groups, *fields.layout, linksOf(fields), values);
        encoding.setOriginal(&reading, &fields);
        std::vector<std::uint8_t> bytes;
        const bool isMade = encoding.append(*fields.layout, fields.type, fields.handle, values, bytes);
        const ByteSpan before = reading.recordAt(one.offset);
        if (!isMade || !std::equal(bytes.begin(), bytes.end(), before.begin(), before.end()))
            others.push_back(one.handle);
    }
    return others;
}

TEST(NewBinaryRecords, recordsOfOthersKeepTheirBitsWhenTheyAreMadeAgain) {
    const std::filesystem::path folder = drawingsOfOthers() / "binary";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no binary drawings in " << folder;
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".dwg") continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::vector<std::uint8_t> file{std::istreambuf_iterator<char>(stream), {}};
        TranscribedDrawing drawing;
        std::string text;
        ASSERT_TRUE(textFromDrawing(file, text, drawing)) << entry.path();
        count += drawing.records.size();
        std::vector<std::uint64_t> others = otherAgain(drawing, text);
        std::erase(others, 0xA7E); // up to 2007 this block and its record have different names
        EXPECT_EQ(others, std::vector<std::uint64_t>()) << entry.path();
    }
    EXPECT_GT(count, 1000U);
}

/// Of the tables of several cells: merged cells, their widths and heights, texts.
std::vector<std::string> cellsIn(std::string_view text) {
    std::vector<std::string> cells;
    GroupScanner scanner(text);
    RawGroup group;
    bool isTable = false;
    while (scanner.next(group) == ScanResult::kGroup) {
        const std::string value(withoutBlanks(group.value));
        if (group.code == 0) isTable = value == "ACAD_TABLE";
        const bool isOfCell =
            group.code == 173 || group.code == 175 || group.code == 176 || group.code == 302;
        if (isTable && isOfCell) cells.push_back(std::to_string(group.code) + ' ' + value);
    }
    return cells;
}

TEST(NewBinaryRecords, cellsOfNewerTablesStandAsInTheTwin) {
    for (const char* name : {"sample_AC1024", "sample_AC1027", "sample_AC1032"}) {
        const auto contentOf = [&](const char* ending) {
            std::ifstream stream(drawingsOfOthers() / "binary" / (std::string(name) + ending),
                                 std::ios::binary);
            return std::string{std::istreambuf_iterator<char>(stream), {}};
        };
        const std::string binary = contentOf(".dwg"), twin = contentOf(".dxf");
        if (binary.empty() || twin.empty()) GTEST_SKIP() << "no " << name;
        TranscribedDrawing drawing;
        std::string text;
        const std::vector<std::uint8_t> file(binary.begin(), binary.end());
        ASSERT_TRUE(textFromDrawing(file, text, drawing)) << name;
        EXPECT_EQ(cellsIn(text), cellsIn(twin)) << name;
        EXPECT_GT(cellsIn(twin).size(), 100U);
    }
}

} // namespace
