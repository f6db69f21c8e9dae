// Binary drawings as text drawings: what is damaged costs itself alone and is told, and those of others have
// the records of their text twins.
#include "binarydrawinginvariants.h"
#include "datastore.h"
#include "drawingaudit.h"
#include "drawingfiles.h"
#include "drawingorder.h"
#include "drawingparts.h"
#include "drawingsofothers.h"
#include "groupscanner.h"
#include "recordencoding.h"
#include "sampledrawing.h"

#include "dbline.h"

#include "temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <random>
#include <set>

namespace {

using namespace hostkit;
using drawingtest::wide;

constexpr const char* objectsName = "AcDb:AcDbObjects";

ByteSpan bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string binaryDrawing(const AcDbDatabase& database, DrawingVersion version) {
    WriteOptions options = drawingtest::quietWriting;
    options.version = version;
    options.coding = DrawingCoding::kDrawing;
    return drawingtest::saved(database, options);
}

BinaryContainer sampleContainer(DrawingVersion version) {
    BinaryContainer container;
    EXPECT_TRUE(openContainer(bytesOf(binaryDrawing(*drawingtest::sampleDrawing(), version)), container));
    EXPECT_TRUE(container.faults.empty());
    return container;
}

struct Transcribed {
    std::string text;
    TranscribedDrawing drawing;

    explicit Transcribed(const BinaryContainer& container, unsigned threads = 0) {
        drawing.container = container;
        textFromSections(text, drawing, threads);
    }
    /// Handles and names of the records that have a text, in its order.
    [[nodiscard]] std::vector<std::pair<std::uint64_t, std::string>> records() const {
        std::map<std::size_t, std::pair<std::uint64_t, std::string>> all;
        for (const TranscribedRecord& record : drawing.records) {
            if (record.length == 0) continue;
            GroupScanner scanner(text, record.text);
            RawGroup group;
            EXPECT_EQ(scanner.next(group), ScanResult::kGroup);
            all[record.text] = {record.handle, std::string(group.value)};
        }
        std::vector<std::pair<std::uint64_t, std::string>> result;
        for (auto& [place, one] : all) result.push_back(std::move(one));
        return result;
    }
    [[nodiscard]] std::vector<std::uint64_t> handles() const {
        std::vector<std::uint64_t> result;
        for (const auto& [handle, name] : records()) result.push_back(handle);
        return result;
    }
    [[nodiscard]] bool tells(std::uint64_t handle) const {
        std::string digits;
        appendHandle(handle, digits);
        const std::wstring named = L"record " + wide(digits);
        return std::any_of(
            drawing.container.faults.begin(), drawing.container.faults.end(), [&](const BinaryFault& fault) {
                const std::size_t at = fault.reason.find(named);
                return at != std::wstring::npos &&
                       !std::iswxdigit(static_cast<std::wint_t>((fault.reason + L" ")[at + named.size()]));
            });
    }
    [[nodiscard]] std::uint64_t first(std::string_view name) const {
        for (const auto& [handle, own] : records())
            if (own == name) return handle;
        ADD_FAILURE() << "no " << name;
        return 0;
    }
};

/// The container with the record changed: it then stands behind all others.
BinaryContainer changed(const BinaryContainer& original, std::uint64_t handle,
                        const std::function<void(RecordFields&)>& change) {
    BinaryContainer container = original;
    std::vector<ObjectPlace> places = readObjectMap(container);
    const std::vector<BinaryClass> classes = readClasses(container);
    const auto place = std::find_if(places.begin(), places.end(),
                                    [&](const ObjectPlace& one) { return one.handle == handle; });
    RecordReading reading(original, classes);
    RecordFields fields, asWas;
    EXPECT_TRUE(place != places.end() && reading.read(place->offset, fields) &&
                reading.read(place->offset, asWas));
    change(fields);
    RecordEncoding encoding(original.version);
    encoding.setOriginal(&reading, &asWas);
    std::vector<std::uint8_t>& objects = container.sections[objectsName];
    place->offset = objects.size();
    EXPECT_TRUE(encoding.append(*fields.layout, fields.type, handle, fields.values, objects));
    container.sections["AcDb:Handles"] = writeObjectMap(places);
    return container;
}

RecordValue referenceTo(std::uint64_t handle) {
    RecordValue value;
    value.reference = {4, handle};
    return value;
}

void setReference(RecordFields& fields, std::string_view name, std::uint64_t handle) {
    std::uint16_t slot = 0;
    ASSERT_TRUE(fields.layout->findSlot(name, slot)) << name;
    fields.values.set(slot, referenceTo(handle));
}

constexpr DrawingVersion forms[] = {DrawingVersion::k2000, DrawingVersion::k2004, DrawingVersion::k2010,
                                    DrawingVersion::k2013, DrawingVersion::k2018};

// Each record in turn is missing in the map: what is then missing in the text besides is told.
TEST(BinaryTranscription, noRecordIsLostWithoutAWord) {
    for (const DrawingVersion version : forms) {
        const BinaryContainer container = sampleContainer(version);
        const Transcribed whole(container);
        EXPECT_TRUE(whole.drawing.container.faults.empty()) << int(version);
        BinaryContainer damaged = container;
        const std::vector<ObjectPlace> places = readObjectMap(damaged);
        std::size_t lost = 0;
        for (std::size_t i = 0; i < places.size(); ++i) {
            std::vector<ObjectPlace> left = places;
            left.erase(left.begin() + static_cast<std::ptrdiff_t>(i));
            damaged.sections["AcDb:Handles"] = writeObjectMap(left);
            const Transcribed after(damaged);
            const std::vector<std::uint64_t> there = after.handles();
            const std::set<std::uint64_t> found(there.begin(), there.end());
            EXPECT_EQ(found.size(), there.size()) << "a record stands twice";
            for (const auto& [handle, name] : whole.records()) {
                if (found.contains(handle) || handle == places[i].handle) continue;
                ++lost;
                EXPECT_TRUE(after.tells(handle)) << int(version) << " without " << std::hex
                                                 << places[i].handle << ": " << handle << " " << name;
            }
            EXPECT_EQ(
                binarydrawinginvariants::faultOf(bytesOf(binarydrawinginvariants::sectionsText(damaged))), "")
                << int(version) << " without " << std::hex << places[i].handle;
        }
        EXPECT_LT(lost, places.size()) << "what hangs on a missing record costs too much";
    }
}

TEST(BinaryTranscription, aRingEndsWhereItCloses) {
    const BinaryContainer container = sampleContainer(DrawingVersion::k2000);
    const Transcribed whole(container);
    const std::uint64_t line = whole.first("LINE");
    const auto wholeHandles = whole.handles();
    const std::uint64_t before = *std::prev(std::find(wholeHandles.begin(), wholeHandles.end(), line));
    const Transcribed ring(changed(container, line, [&](RecordFields& fields) {
        std::uint16_t slot = 0;
        ASSERT_TRUE(fields.layout->findSlot("nolinks", slot));
        RecordValue none;
        none.whole = 0;
        fields.values.set(slot, none);
        setReference(fields, "prev", before);
        setReference(fields, "next", before);
    }));
    std::vector<std::uint64_t> handles = ring.handles(), all = wholeHandles;
    std::sort(handles.begin(), handles.end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(handles, all) << "what the ring cut off stands at the block's end";
    EXPECT_FALSE(ring.drawing.container.faults.empty());
}

TEST(BinaryTranscription, whatIsNamedTwiceStandsOnce) {
    const BinaryContainer container = sampleContainer(DrawingVersion::k2010);
    const Transcribed whole(container);
    const std::uint64_t line = whole.first("LINE"), insert = whole.first("INSERT");
    for (const bool isForeign : {false, true}) {
        const std::uint64_t named = isForeign ? whole.first("ENDBLK") : line;
        const Transcribed twice(changed(container, whole.first("BLOCK_RECORD"), [&](RecordFields& fields) {
            std::uint16_t slot = 0;
            ASSERT_TRUE(fields.layout->findSlot("owned", slot));
            std::vector<RecordValue>& owned = fields.values.array(slot);
            ASSERT_GT(owned.size(), 2U);
            for (RecordValue& value : owned)
                if (value.reference.value == insert) value = referenceTo(named);
            if (isForeign) owned.back() = referenceTo(named);
        }));
        std::vector<std::uint64_t> handles = twice.handles();
        std::sort(handles.begin(), handles.end());
        EXPECT_EQ(std::adjacent_find(handles.begin(), handles.end()), handles.end());
        EXPECT_EQ(handles.size(), whole.handles().size())
            << "what no list names any more is at the block's end";
        EXPECT_TRUE(twice.tells(named) && twice.tells(insert));
    }
}

TEST(BinaryTranscription, blocksOfOneNameGetTwo) {
    const BinaryContainer container = sampleContainer(DrawingVersion::k2004);
    const Transcribed whole(container);
    std::vector<std::uint64_t> blocks;
    for (const auto& [handle, name] : whole.records())
        if (name == "BLOCK") blocks.push_back(handle);
    ASSERT_GT(blocks.size(), 2U);
    const BinaryContainer twice = changed(container, blocks.back(), [&](RecordFields& fields) {
        static const std::string name = "*model_space";
        std::uint16_t slot = 0;
        ASSERT_TRUE(fields.layout->findSlot("name", slot));
        RecordValue value;
        value.run = {name.data(), 0, name.size()};
        fields.values.set(slot, value);
    });
    EXPECT_EQ(binarydrawinginvariants::faultOf(bytesOf(binarydrawinginvariants::sectionsText(twice))), "");
    EXPECT_NE(Transcribed(twice).text.find("*model_space_2"), std::string::npos);
}

TEST(BinaryTranscription, severalThreadsMakeTheSameText) {
    AcDbDatabase database(true, false);
    for (int i = 0; i < 7000; ++i)
        drawingtest::appendToModelSpace(database, new AcDbLine({1.0 * i, 0, 0}, {0, 1.0 * i, 0}));
    BinaryContainer container;
    ASSERT_TRUE(openContainer(bytesOf(binaryDrawing(database, DrawingVersion::k2018)), container));
    const Transcribed one(container, 1), three(container, 3);
    EXPECT_EQ(one.text, three.text);
    EXPECT_EQ(one.handles(), three.handles());
    EXPECT_EQ(drawingtest::countOf(one.text, "\nLINE\r"), 7000U);
}

TEST(BinaryTranscription, damageIsToldWithItsAddress) {
    const std::string drawing = binaryDrawing(*drawingtest::sampleDrawing(), DrawingVersion::k2000);
    BinaryContainer container;
    ASSERT_TRUE(openContainer(bytesOf(drawing), container));
    const Transcribed whole(container);
    const TranscribedRecord* const line = whole.drawing.find(whole.first("LINE"));
    ASSERT_TRUE(line);
    EXPECT_EQ(whole.drawing.recordAt(line->text + line->length - 1), line);
    std::string damaged = drawing;
    damaged[line->offset + 12] ^= 1;
    ReadReport report;
    ASSERT_TRUE(openDrawingFromMemory(damaged, L"plan.dwg", &report, drawingtest::quietReading));
    ASSERT_FALSE(report.problems.empty());
    EXPECT_EQ(
        report.messageOf(report.problems[0]).find(L"plan.dwg: byte " + std::to_wstring(line->offset) + L": "),
        0U);
    EXPECT_EQ(auditDrawingText(drawing).faultCount(), 0U);
    const AuditReport audit = auditDrawingText(damaged);
    ASSERT_FALSE(audit.findings.empty());
    EXPECT_EQ(audit.findings[0].text.find(L"byte " + std::to_wstring(line->offset) + L" of the section "),
              0U);
    EXPECT_FALSE(
        openDrawingFromMemory(drawing.substr(0, 60), L"plan.dwg", &report, drawingtest::quietReading));
    EXPECT_TRUE(report.status == Acad::eNotApplicable && !report.fatalMessage().empty());
}

TEST(BinaryTranscription, anyDamageLeavesADrawingOrAReason) {
    std::mt19937 random(16);
    for (const DrawingVersion version : forms) {
        const BinaryContainer container = sampleContainer(version);
        const std::string sections = binarydrawinginvariants::sectionsText(container),
                          file = binaryDrawing(*drawingtest::sampleDrawing(), version);
        for (int round = 0; round < 60; ++round) {
            std::string bytes = round % 6 ? sections : file;
            for (std::size_t left = 1 + random() % 12; left > 0; --left)
                bytes[10 + random() % (bytes.size() - 10)] = static_cast<char>(random() % 4 ? random()
                                                                               : left % 2   ? 0
                                                                                            : 0xFF);
            if (round % 10 == 9) bytes.resize(random() % bytes.size());
            EXPECT_EQ(binarydrawinginvariants::faultOf(bytesOf(bytes)), "") << int(version) << " " << round;
        }
    }
}

// Programs write text drawings of a header and entities alone.
TEST(BinaryTranscription, aDrawingWithoutTablesKeepsItsEntities) {
    for (const std::string_view name : {"curves.dxf", "texts.dxf"})
        for (const DrawingVersion version : {DrawingVersion::k2000, DrawingVersion::k2013}) {
            const auto before = openDrawingFromMemory(
                contentOf(std::filesystem::path(VEXO_SOURCE_DIR "/fuzz/corpus/drawing") / name), L"plan.dxf",
                nullptr, drawingtest::quietReading);
            ASSERT_TRUE(before);
            ReadReport report;
            const auto after = openDrawingFromMemory(binaryDrawing(*before, version), L"plan.dwg", &report,
                                                     drawingtest::quietReading);
            ASSERT_TRUE(after) << name;
            EXPECT_EQ(report.problemCount, 0U) << name;
            EXPECT_EQ(report.entityCount, name == "curves.dxf" ? 3U : 2U) << name;
        }
}

// As a failing program saves: the form by its number, beside what stood there, with an object open.
TEST(BinaryTranscription, aDrawingSavesItselfInTheFormOfTheConstant) {
    const TemporaryFolder folder;
    const std::string file = folder / "rescued.dwg";
    const auto database = drawingtest::sampleDrawing();
    const auto begin = [](const std::string& path) { return contentOf(path).substr(0, 6); };
    EXPECT_EQ(database->saveAs(wide(file).c_str(), true, AcDb::kDHL_1015), Acad::eOk);
    AcDbObject* held = nullptr;
    ASSERT_EQ(acdbOpenObject(held, database->layerZero(), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(database->saveAs(wide(file).c_str(), true, static_cast<AcDb::AcDbDwgVersion>(29)), Acad::eOk);
    held->close();
    EXPECT_EQ(begin(file), "AC1024");
    EXPECT_EQ(begin(folder / "rescued.bak"), "AC1015");
    for (const AcDb::AcDbDwgVersion version : {AcDb::kDHL_1009, AcDb::kDHL_1021, AcDb::kDHL_Unknown})
        EXPECT_EQ(database->saveAs(wide(file).c_str(), false, version), Acad::eInvalidInput) << version;
    EXPECT_EQ(begin(file), "AC1024");
    AcDbDatabase again(false, true);
    EXPECT_EQ(again.readDwgFile(wide(file).c_str()), Acad::eOk);
    EXPECT_EQ(again.readDwgFile(wide(file).c_str()), Acad::eInvalidInput); // it holds something
    EXPECT_EQ(drawingtest::saved(again, drawingtest::quietWriting).size(),
              drawingtest::saved(*openDrawing(wide(file)), drawingtest::quietWriting).size());
}

// Names are the same in upper and lower case in all alphabets, and programs forget to register what they
// write.
TEST(BinaryTranscription, namesInAnotherCaseAndDataOfUnknownApplicationsAreNotLost) {
    AcDbDatabase database;
    drawingtest::appendToModelSpace(database, new AcDbLine({0, 0, 0}, {1, 0, 0}));
    for (const DrawingVersion version : {DrawingVersion::k2000, DrawingVersion::k2018}) {
        WriteOptions options = drawingtest::quietWriting;
        options.version = version;
        std::string text = drawingtest::saved(database, options);
        const auto replace = [&](std::string_view old, std::string_view other, std::size_t from) {
            const std::size_t at = text.find(old, from);
            ASSERT_NE(at, std::string::npos) << old;
            text.replace(at, old.size(), other);
        };
        const bool isWide = version == DrawingVersion::k2018;
        const std::string layer = isWide ? "\xC3\x89tage" : "\xC9tage",
                          other = isWide ? "\xC3\xA9TAGE" : "\xE9TAGE";
        const std::size_t own = text.find("  0\r\nLAYER\r\n  5\r\n");
        const std::size_t end = text.find("  0\r\n", own + 5);
        std::string record = text.substr(own, end - own);
        const std::size_t handle = record.find("  5\r\n") + 5, name = record.find("  2\r\n0\r\n") + 5;
        record.replace(name, 1, layer);
        record.replace(handle, record.find('\r', handle) - handle, "7FF1");
        text.insert(end, record);
        const std::size_t line = text.find("\nLINE\r\n");
        replace("  8\r\n0\r\n", "  8\r\n" + other + "\r\n", line);
        replace("\r\n  0\r\n", "\r\n1001\r\nNOBODY\r\n1000\r\nheld\r\n  0\r\n", line + 8);
        const auto before = openDrawingFromMemory(text, L"plan.dxf", nullptr, drawingtest::quietReading);
        ASSERT_TRUE(before);
        const auto after = openDrawingFromMemory(binaryDrawing(*before, version), L"plan.dwg", nullptr,
                                                 drawingtest::quietReading);
        ASSERT_TRUE(after);
        options.coding = DrawingCoding::kText;
        const std::string again = drawingtest::saved(*after, options);
        const std::size_t found = again.find("\nLINE\r\n");
        EXPECT_NE(again.find("  8\r\n" + layer, found), std::string::npos);
        EXPECT_NE(again.find("1001\r\nNOBODY\r\n1000\r\nheld", found), std::string::npos);
    }
}

TEST(BinaryTranscription, whatTheFuzzerStartsFromHoldsToo) {
    std::size_t opened = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/binarydrawing")) {
        bool hasOpened = false;
        EXPECT_EQ(binarydrawinginvariants::faultOf(bytesOf(contentOf(entry.path())), &hasOpened), "")
            << entry.path();
        opened += hasOpened;
    }
    EXPECT_GE(opened, 7U);
}

// Written by hand: an index of segments, one of data, one of schemas with their names, a record whose data
// stand beside it and one whose data are in two pages.
class DataStore : public testing::Test {
protected:
    void number(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
    void numbers(std::initializer_list<std::uint32_t> values) {
        for (const std::uint32_t value : values) number(value, 4);
    }
    void text(std::string_view text) { m_bytes.insert(m_bytes.end(), text.begin(), text.end()); }
    /// The head of a segment; `alignment` in 16 bytes.
    void segment(std::string_view name, std::uint32_t alignment = 0) {
        m_bytes.resize((m_bytes.size() + 63) / 64 * 64);
        m_segments.push_back(m_bytes.size());
        number(0xD5AC, 2);
        text(name);
        numbers({0, 0, 0, 0, 0, 0, 0, alignment, 0x55555555, 0x55555555});
    }
    void page(std::string_view bytes) {
        segment("blob01");
        number(7, 8);
        number(0, 8);
        numbers({0, 2});
        number(bytes.size(), 8);
        text(bytes);
    }
    void SetUp() override {
        numbers({0x6472616A, 0x80, 8, 2, 0, 1, 0, 0, 6, 2, 1}); // segments at 0x18 come later
        m_bytes.resize(0x80);
        segment("_data_", 6); // number 3
        numbers({20, 1, 0xAB, 0, 0, 20, 1, 0xCD, 0, 16});
        m_bytes.resize(m_segments[0] + 96);
        numbers({3, 0x00434241, 0, 0}); // "ABC"
        numbers({0xBB106BB1, 7, 0, 2, 0, 0, 0, 0, 0, 4, 0, 5, 0});
        page("pages ");
        page("2");
        segment("datidx");
        numbers({2, 0, 3, 0, 0, 3, 20, 1});
        segment("schidx");
        numbers({0, 0, 0, 0, 2});
        text(std::string_view("AcDb_Thumbnail_Schema\0AcDb3DSolid_ASM_Data\0", 43));
        segment("segidx");
        for (const std::size_t number :
             {5U, 3U, 4U, 0U, 1U, 2U}) { // by their numbers: 0 index, 1 data, 2 names
            this->number(m_segments[number], 8);
            this->number(m_bytes.size() + 4 - m_segments[number], 4);
        }
        m_bytes[0x18] = static_cast<std::uint8_t>(m_segments[5]);
        m_bytes[0x19] = static_cast<std::uint8_t>(m_segments[5] >> 8);
        m_container.sections["AcDb:AcDsPrototype_1b"] = m_bytes;
    }
    std::vector<std::uint8_t> m_bytes;
    std::vector<std::size_t> m_segments;
    BinaryContainer m_container;
};

TEST_F(DataStore, givesDataByHandleAndKind) {
    const std::vector<StoredData> all = readDataStore(m_container);
    ASSERT_EQ(all.size(), 2U);
    const auto textOf = [](const StoredData& data) {
        return std::string(data.bytes.begin(), data.bytes.end());
    };
    EXPECT_TRUE(all[0].handle == 0xAB && all[0].kind == "AcDb_Thumbnail_Schema" && textOf(all[0]) == "ABC");
    EXPECT_TRUE(all[1].handle == 0xCD && all[1].kind == "AcDb3DSolid_ASM_Data" &&
                textOf(all[1]) == "pages 2");
    EXPECT_TRUE(m_container.faults.empty());
}

TEST_F(DataStore, isReadToItsEndHoweverDamaged) {
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::uint8_t> bytes = m_bytes;
        for (int left = 0; left < 3; ++left)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random() % 3 ? random() : 0xFF);
        if (round % 5 == 0) bytes.resize(random() % bytes.size());
        m_container.sections["AcDb:AcDsPrototype_1b"] = bytes;
        for (const StoredData& data : readDataStore(m_container)) EXPECT_LE(data.bytes.size(), bytes.size());
    }
}

std::string plain(std::string_view value) {
    char* end = nullptr;
    const std::string text(withoutBlanks(value));
    const double number = std::strtod(text.c_str(), &end);
    return *end == 0 && end != text.c_str() ? std::to_string(number) : text;
}

/// Of a text drawing the header's variables, the names of all records of tables, blocks and entities, what
/// layers are called, and what is not told by the records themselves: of blocks and numbers of viewports.
/// What was made anew when the twins were saved is left out.
std::vector<std::string> outlineOf(std::string_view text) {
    const std::set<std::string> notCompared{
        "$HANDSEED", "$VERSIONGUID", "$TDCREATE", "$TDUCREATE",    "$TDUPDATE",       "$TDUUPDATE",
        "$TDINDWG",  "$TDUSRTIMER",  "$CECOLOR",  "$ACADMAINTVER", "$INTERFEREOBJVS", "$INTERFEREVPVS"};
    const std::map<std::string, std::set<int>> told{{"SECTION", {2}},
                                                    {"TABLE", {2}},
                                                    {"LAYER", {2}},
                                                    {"BLOCK", {70, 10, 20, 30, 1, 4}},
                                                    {"VIEWPORT", {68, 69}}};
    std::vector<std::string> outline;
    GroupScanner scanner(text, 0);
    RawGroup group;
    std::string record, variable;
    while (scanner.next(group) == ScanResult::kGroup && !group.is(2, "OBJECTS")) {
        const std::string value(withoutBlanks(group.value));
        if (group.code == 0) {
            outline.push_back(record = value);
            variable.clear();
        } else if (group.code == 9) {
            variable = value;
        } else if (!variable.empty()) {
            if (!notCompared.contains(variable)) outline.push_back(variable + ' ' + plain(value));
        } else if (const auto found = told.find(record);
                   found != told.end() && found->second.contains(group.code)) {
            outline.push_back(record + ' ' + std::to_string(group.code) + ' ' + plain(value));
        }
    }
    std::erase_if(outline, [](const std::string& name) { return name == "APPID" || name == "CLASS"; });
    return outline;
}

TEST(BinaryTranscription, propertiesOfTheFileAreVariables) {
    BinaryContainer container = sampleContainer(DrawingVersion::k2018);
    std::vector<std::uint8_t>& section = container.sections["AcDb:SummaryInfo"];
    section.clear();
    const auto text = [&](std::string_view words) {
        section.insert(section.end(), {static_cast<std::uint8_t>(words.size() + 1), 0});
        for (const char c : words) section.insert(section.end(), {static_cast<std::uint8_t>(c), 0});
        section.insert(section.end(), {0, 0});
    };
    for (const char* const words : {"Slab", "", "", "", "", "Somebody", "", ""}) text(words);
    section.resize(section.size() + 24);
    section.insert(section.end(), {1, 0});
    text("Storey");
    text("3");
    const std::string all = Transcribed(container).text;
    EXPECT_NE(all.find("$TITLE\r\n  1\r\nSlab\r\n  9\r\n$LASTSAVEDBY\r\n  1\r\nSomebody\r\n  9\r\n"
                       "$CUSTOMPROPERTYTAG\r\n  1\r\nStorey\r\n  9\r\n$CUSTOMPROPERTY\r\n  1\r\n3\r\n"),
              std::string::npos);
}

TEST(BinaryTranscription, hasTheRecordsOfTheTwinsInTheirOrder) {
    const std::filesystem::path folder = drawingsOfOthers() / "binary";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no binary drawings in " << folder;
    std::size_t twins = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::filesystem::path twin = entry.path();
        if (twin.extension() != ".dwg" || !exists(twin.replace_extension(".dxf"))) continue;
        std::string text;
        TranscribedDrawing drawing;
        const std::string file = contentOf(entry.path());
        ASSERT_TRUE(textFromDrawing(bytesOf(file), text, drawing)) << entry.path();
        EXPECT_TRUE(drawing.container.faults.empty()) << entry.path();
        const std::vector<std::string> own = outlineOf(text), its = outlineOf(contentOf(twin));
        for (std::size_t i = 0; i < std::min(own.size(), its.size()); ++i)
            ASSERT_EQ(own[i], its[i]) << entry.path() << " at " << i;
        EXPECT_EQ(own.size(), its.size()) << entry.path();
        ++twins;
    }
    EXPECT_GE(twins, 6U);
}

} // namespace
