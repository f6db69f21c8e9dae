// Binary drawings: their bytes against a table written by hand, values to the bit, damage, and every drawing
// at hand there and back.
#include "binaryform.h"
#include "drawingfiles.h"
#include "drawinglisting.h"
#include "sampledrawing.h"

#include "dbdatabase.h"
#include "headervariables.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <random>

using namespace hostkit;
using namespace drawingtest;

namespace {

const std::string sentinel("XXXXXXX Binary DXF\r\n\x1a\0", 22);

std::string fromHexadecimal(std::string_view digits) {
    std::string bytes;
    for (std::size_t place = 0; place + 1 < digits.size(); place += 2)
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(place, 2)), nullptr, 16));
    return bytes;
}

std::string binaryOf(const std::string& text, DrawingVersion version) {
    std::string bytes;
    const auto fault = binaryFromText(text, version, bytes);
    EXPECT_FALSE(fault) << std::string(fault->reason.begin(), fault->reason.end());
    return bytes;
}

std::string textOf(const std::string& bytes) {
    std::string text;
    EXPECT_FALSE(textFromBinary(bytes, text));
    return text;
}

std::string listingOf(const AcDbDatabase& database) { return listingAsJson(listDrawing(database)); }

std::string savedAs(const AcDbDatabase& database, DrawingCoding coding) {
    WriteOptions options = quietWriting;
    options.coding = coding;
    return saved(database, options);
}

} // namespace

TEST(BinaryDrawing, everyKindOfGroupHasItsBytes) {
    const struct {
        int code;
        std::string text;
        const char* later; ///< of the forms from R13 on
        const char* r12;
    } cases[] = {
        {0, "LINE", "00004C494E4500", "004C494E4500"},
        {8, "", "080000", "0800"},
        {5, "1F", "0500314600", "05314600"},
        {330, "A", "4A014100", "FF4A014100"},
        {10, "1.0", "0A00000000000000F03F", "0A000000000000F03F"},
        {39, "-0.0", "27000000000000000080", "270000000000000080"},
        {254, "x", "FE007800", "FE7800"},
        {255, "x", "FF007800", "FFFF007800"},
        {62, "-7", "3E00F9FF", "3EF9FF"},
        {70, "65535", "4600FFFF", "46FFFF"},
        {90, "-2", "5A00FEFFFFFF", "5AFEFFFFFF"},
        {160, "4294967296", "A0000000000001000000", "A00000000001000000"},
        {290, "1", "220101", "FF220101"},
        {310, "00FF0a", "36010300FF0A", "FF36010300FF0A"},
        {1004, "", "EC0300", "FFEC0300"},
        {1071, "1", "2F0401000000", "FF2F0401000000"},
        {1010, "0.5", "F203000000000000E03F", "FFF203000000000000E03F"},
    };
    const std::string start = group(0, "SECTION");
    for (const auto& one : cases) {
        SCOPED_TRACE(one.code);
        for (const bool isR12 : {false, true}) {
            const std::string bytes = binaryOf(start + group(one.code, one.text),
                                               isR12 ? DrawingVersion::kR12 : DrawingVersion::kR13);
            const std::size_t head = sentinel.size() + (isR12 ? 9 : 10);
            EXPECT_EQ(bytes.substr(head), fromHexadecimal(isR12 ? one.r12 : one.later));
            const std::string back = one.text == "65535" ? "-1" : one.text == "00FF0a" ? "00FF0A" : one.text;
            EXPECT_EQ(textOf(bytes), start + group(one.code, back));
        }
    }
}

TEST(BinaryDrawing, realsKeepTheirBits) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 20000; ++round) {
        const std::uint64_t bits = random();
        if (!std::isfinite(std::bit_cast<double>(bits))) continue;
        std::string bytes = sentinel + fromHexadecimal("000053454354494F4E002800");
        for (int place = 0; place < 8; ++place) bytes += static_cast<char>(bits >> (8 * place) & 0xFF);
        ASSERT_EQ(binaryOf(textOf(bytes), DrawingVersion::kR13).substr(sentinel.size()),
                  bytes.substr(sentinel.size()))
            << bits;
    }
}

TEST(BinaryDrawing, aLongChunkIsSplitAndALineEndIsEscaped) {
    std::string digits;
    for (int byte = 0; byte < 300; ++byte) digits += "5A";
    const std::string again =
        textOf(binaryOf(group(0, "SECTION") + group(310, digits), DrawingVersion::k2018));
    EXPECT_EQ(countOf(again, "310\r\n"), 3u);
    EXPECT_EQ(countOf(again, "5A"), 300u);
    const std::string record =
        binaryOf(header("AC1015") +
                     entities(groups({{0, "TEXT"}, {8, "0"}, {10, "0"}, {20, "0"}, {40, "1"}, {1, "a?b"}})),
                 DrawingVersion::k2000);
    std::string broken = record;
    broken[broken.find("a?b") + 1] = '\n';
    const auto database = openDrawingFromMemory(broken, L"broken", nullptr, quietReading);
    ASSERT_TRUE(database);
    EXPECT_EQ(listDrawing(*database).entities.at(0).text, L"a\nb");
    EXPECT_TRUE(saved(*database) == broken);
    EXPECT_NE(savedAs(*database, DrawingCoding::kText).find("a^Jb"), std::string::npos);
}

TEST(BinaryDrawing, whatIsNoValueIsRefusedWithItsLine) {
    const struct {
        int code;
        const char* value;
        Acad::ErrorStatus status;
    } cases[] = {{40, "thick", Acad::eInvalidInput}, {70, "65536", Acad::eInvalidInput},
                 {70, "1.5", Acad::eInvalidInput},   {90, "4294967296", Acad::eInvalidInput},
                 {290, "256", Acad::eInvalidInput},  {310, "ABC", Acad::eInvalidInput},
                 {1004, "XY", Acad::eInvalidInput},  {1072, "1", Acad::eBadDxfSequence},
                 {-5, "1", Acad::eBadDxfSequence}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.code);
        std::string bytes = "as it was";
        const std::string start = group(0, "SECTION");
        const auto fault = binaryFromText(start + group(one.code, one.value), DrawingVersion::k2000, bytes);
        ASSERT_TRUE(fault);
        EXPECT_EQ(fault->status, one.status);
        EXPECT_EQ(fault->offset, start.size());
        EXPECT_EQ(bytes, "as it was");
    }
    const auto database = openDrawingFromMemory(header("AC1015") + entities(line(group(39, "thick"))), L"bad",
                                                nullptr, quietReading);
    ASSERT_TRUE(database);
    WriteOptions options = quietWriting;
    options.coding = DrawingCoding::kBinary;
    WriteReport report;
    std::string bytes;
    EXPECT_EQ(writeDrawingToMemory(*database, bytes, options, &report), Acad::eInvalidInput);
    EXPECT_NE(report.message.find(L"line "), std::wstring::npos);
}

TEST(BinaryDrawing, anyCutAndAnyByteIsSurvivedAndTheCutIsPlaced) {
    for (const DrawingVersion version : {DrawingVersion::kR12, DrawingVersion::k2018}) {
        const auto database = sampleDrawing(version == DrawingVersion::kR12 ? Kinds::kOfR12 : Kinds::kAll);
        const std::string sound = binaryOf(saved(*database, version), version);
        std::mt19937 random(3);
        for (int round = 0; round < 200; ++round) {
            const std::size_t cut = sentinel.size() + random() % (sound.size() - sentinel.size());
            ReadReport report;
            EXPECT_FALSE(openDrawingFromMemory(sound.substr(0, cut), L"cut.dxf", &report, quietReading));
            EXPECT_EQ(report.status, Acad::eEndOfFile);
            ASSERT_FALSE(report.problems.empty());
            ASSERT_TRUE(report.problems.back().offset || cut == sentinel.size());
            const std::size_t offset = report.problems.back().offset.value_or(cut);
            EXPECT_LE(offset, cut);
            EXPECT_GE(offset + 300, cut) << "a group of the sample is shorter";
            EXPECT_NE(report.fatalMessage().find(L"cut.dxf: "), std::wstring::npos);
        }
        for (int round = 0; round < 300; ++round) {
            std::string damaged = sound;
            damaged[random() % damaged.size()] = static_cast<char>(random());
            ReadReport report;
            const auto read = openDrawingFromMemory(damaged, L"damaged", &report, quietReading);
            EXPECT_EQ(report.status == Acad::eOk, read != nullptr);
            EXPECT_TRUE(!read || saved(*read) == damaged);
        }
    }
}

TEST(BinaryDrawing, aDamagedRecordIsToldByItsOffset) {
    std::string bytes = binaryOf(header("AC1015") + entities(line(group(39, "1.0"))), DrawingVersion::k2000);
    const std::size_t thickness = bytes.find(fromHexadecimal("2700000000000000F03F"));
    ASSERT_NE(thickness, std::string::npos);
    bytes.replace(thickness + 2, 8, fromHexadecimal("000000000000F87F")); // not a number
    ReadReport report;
    const auto database = openDrawingFromMemory(bytes, L"nan.dxf", &report, quietReading);
    ASSERT_TRUE(database);
    ASSERT_EQ(report.problems.size(), 1u);
    EXPECT_EQ(report.problems[0].offset, thickness);
    EXPECT_TRUE(saved(*database) == bytes);
}

TEST(BinaryDrawing, aChangedOneStaysBinaryAndEitherCodingIsSaved) {
    const std::string text = saved(*sampleDrawing(), DrawingVersion::k2010);
    const std::string bytes = binaryOf(text, DrawingVersion::k2010);
    const auto fromText = openDrawingFromMemory(text, L"text");
    const auto fromBinary = openDrawingFromMemory(bytes, L"binary");
    ASSERT_TRUE(fromText && fromBinary);
    EXPECT_EQ(listingOf(*fromBinary), listingOf(*fromText));
    EXPECT_TRUE(saved(*fromText) == text);
    EXPECT_TRUE(saved(*fromBinary) == bytes);
    EXPECT_TRUE(savedAs(*fromBinary, DrawingCoding::kText) == text);
    EXPECT_TRUE(savedAs(*fromText, DrawingCoding::kBinary) == bytes);
    fromBinary->header().setReal(L"LTSCALE", 7.25);
    const std::string changed = saved(*fromBinary);
    EXPECT_TRUE(isBinaryForm(changed));
    const auto again = openDrawingFromMemory(changed, L"again");
    ASSERT_TRUE(again);
    EXPECT_EQ(again->header().real(L"LTSCALE"), 7.25);
}

class BinaryDrawingsOfOthers : public DrawingsOfOthers {};

TEST_F(BinaryDrawingsOfOthers, goThereAndBack) {
    forEach([](const AcDbDatabase& database) {
        const std::string bytes = savedAs(database, DrawingCoding::kBinary);
        const auto again = openDrawingFromMemory(bytes, L"again", nullptr, quietReading);
        ASSERT_TRUE(again);
        EXPECT_TRUE(listingOf(*again) == listingOf(database));
        EXPECT_TRUE(saved(*again) == bytes);
        const auto text =
            openDrawingFromMemory(savedAs(*again, DrawingCoding::kText), L"text", nullptr, quietReading);
        ASSERT_TRUE(text);
        EXPECT_TRUE(savedAs(*text, DrawingCoding::kBinary) == bytes);
    });
}
