// Binary drawings from the bit up: codes, checksums, packed pages, the map, and the records of drawings that
// others made.
#include "binarychecksums.h"
#include "bitwriter.h"
#include "drawingsofothers.h"
#include "objectmap.h"
#include "pagecompression.h"
#include "recordfields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <random>

namespace {

using namespace hostkit;
using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(std::string_view hex) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += hex[i] == ' ' ? 1 : 2)
        if (hex[i] != ' ')
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    return bytes;
}

std::string bitsOf(const BitWriter& writer) {
    std::string bits;
    BitReader reader(writer.bytes(), 0, writer.position());
    while (reader.left() > 0) bits += reader.bit() ? '1' : '0';
    return bits;
}

Bytes bitsIn(std::string_view bits) {
    BitWriter writer;
    for (char bit : bits)
        if (bit != ' ') writer.bit(bit == '1');
    return writer.copy();
}

/// One value, written down by hand, read and written.
struct CodeCase {
    const char* bits;
    std::function<void(BitWriter&)> write;
    std::function<bool(BitReader&)> reads;
};

TEST(BinaryRecords, eachCodeStandsInItsShortestForm) {
    const auto raw = [](std::string_view hex) {
        BitWriter writer;
        for (std::uint8_t byte : bytesOf(hex)) writer.rawByte(byte);
        return bitsOf(writer);
    };
    const std::string wholeDouble = "00" + raw("0000000000000440"), fewer = "10" + raw("001000000000"),
                      minusZero = "00" + raw("0000000000000080"), lowFour = "01" + raw("01000000"),
                      other = "11" + raw("0000000000001440"), reference = raw("51 10"),
                      wide = raw("42 01 A2");
#define CODE(bits, call, value)                                                                              \
    {                                                                                                        \
        bits, [](BitWriter& w) { w.call(value); }, [](BitReader& r) { return r.call() == (value); }          \
    }
#define BYTES(hex, call, value)                                                                              \
    {                                                                                                        \
        codes.emplace_back(raw(hex)).c_str(), [](BitWriter& w) { w.call(value); },                           \
            [](BitReader& r) { return r.call() == (value); }                                                 \
    }
    std::deque<std::string> codes;
    const std::vector<CodeCase> cases{
        CODE("10", bitShort, 0),
        CODE("11", bitShort, 256),
        CODE("0100001111", bitShort, 15),
        CODE("000000000100000001", bitShort, 257),
        CODE("001111111111111111", bitShort, -1),
        CODE("0000101100000000010000000000000000", bitLong, 300),
        CODE("10", bitLong, 0),
        CODE("0111111111", bitLong, 255),
        CODE("01", bitDouble, 1.0),
        CODE("10", bitDouble, 0.0),
        CODE("000", bitLongLong, 0U),
        CODE("0100000000100000001", bitLongLong, 257U),
        CODE("0000010011", objectType, 19U),
        CODE("0100000100", objectType, 500U),
        BYTES("41 00", modularShort, 65U),
        BYTES("00 80 01 00", modularShort, 32768U),
        BYTES("70 91 02 00", modularShort, 70000U),
        BYTES("3F", modularChar, 63),
        BYTES("C0 00", modularChar, 64),
        BYTES("41", modularChar, -1),
        BYTES("C0 40", modularChar, -64),
        BYTES("B7 F1 06", modularChar, 112823),
        BYTES("85 4B", modularChar, -1413),
        BYTES("7F", unsignedModularChar, 127U),
        BYTES("80 01", unsignedModularChar, 128U),
        BYTES("90 20", unsignedModularChar, 4112U),
        {wholeDouble.c_str(), [](BitWriter& w) { w.bitDouble(2.5); },
         [](BitReader& r) { return r.bitDouble() == 2.5; }},
        {minusZero.c_str(), [](BitWriter& w) { w.bitDouble(-0.0); },
         [](BitReader& r) { return std::signbit(r.bitDouble()); }},
        {"00", [](BitWriter& w) { w.bitDouble(7.0, 7.0); },
         [](BitReader& r) { return r.bitDouble(7.0) == 7.0; }},
        {fewer.c_str(), [](BitWriter& w) { w.bitDouble(100.25, 100.0); },
         [](BitReader& r) { return r.bitDouble(100.0) == 100.25; }},
        {lowFour.c_str(), [](BitWriter& w) { w.bitDouble(std::nextafter(1.0, 2.0), 1.0); },
         [](BitReader& r) { return r.bitDouble(1.0) == std::nextafter(1.0, 2.0); }},
        {other.c_str(), [](BitWriter& w) { w.bitDouble(5.0, 1.0); },
         [](BitReader& r) { return r.bitDouble(1.0) == 5.0; }},
        {reference.c_str(),
         [](BitWriter& w) {
             w.handle({5, 0x10});
         },
         [](BitReader& r) { return r.handle().resolved(9) == 0x10; }},
        {wide.c_str(),
         [](BitWriter& w) {
             w.handle({4, 0x1A2});
         },
         [](BitReader& r) { return r.handle().resolved(9) == 0x1A2; }},
    };
#undef CODE
#undef BYTES
    for (const CodeCase& one : cases)
        for (unsigned shift = 0; shift < 8; ++shift) { // at each place within a byte
            BitWriter writer;
            writer.bits(0, shift);
            one.write(writer);
            EXPECT_EQ(bitsOf(writer).substr(shift), one.bits);
            const Bytes bytes = bitsIn(std::string(shift, '1') + one.bits);
            BitReader reader(bytes, shift, shift + std::string_view(one.bits).size());
            EXPECT_TRUE(one.reads(reader) && !reader.failed() && reader.left() == 0) << one.bits;
            BitReader cut(bytes, shift, shift + std::string_view(one.bits).size() - 1);
            one.reads(cut);
            EXPECT_TRUE(cut.failed()) << one.bits;
        }
    const std::array<std::pair<BinaryHandle, std::uint64_t>, 4> relative{
        {{{6, 0}, 0x54}, {{8, 0}, 0x52}, {{0xC, 5}, 0x4E}, {{0xA, 5}, 0x58}}};
    for (const auto& [handle, expected] : relative) EXPECT_EQ(handle.resolved(0x53), expected);
}

TEST(BinaryRecords, checksumsAndTheMapAgreeWithWhatIsWrittenDown) {
    const Bytes digits{'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(checksum16(digits, 0), 0xBB3D);
    EXPECT_EQ(checksum16(digits), 0x7E6C);
    EXPECT_EQ(checksum32(digits), 0xCBF43926U);
    EXPECT_EQ(pageChecksum(Bytes{'a', 'b', 'c'}), 0x024A0126U);
    EXPECT_EQ(pageChecksum(Bytes(70000, 0xFF)),
              pageChecksum(Bytes(30000, 0xFF), pageChecksum(Bytes(40000, 0xFF))));
    const std::vector<ObjectPlace> places{{1, 27675}, {2, 27635}, {5, 27835}};
    const Bytes map = bytesOf("000B 019BD801 0168 03C801 15D7 0002 01D0");
    EXPECT_EQ(writeObjectMap(places), map);
    BinaryContainer container;
    container.sections["AcDb:Handles"] = map;
    container.sections["AcDb:AcDbObjects"].resize(30000);
    const std::vector<ObjectPlace> read = readObjectMap(container);
    ASSERT_EQ(read.size(), 3U);
    EXPECT_TRUE(read[1].handle == 2 && read[1].offset == 27635 && read[2].handle == 5 &&
                container.faults.empty());
    container.sections["AcDb:AcDbObjects"].resize(27700);
    EXPECT_EQ(readObjectMap(container).size(), 2U);
    EXPECT_EQ(container.faults.size(), 1U);
}

TEST(BinaryRecords, aMapOfManyPartsIsReadAsItWasWritten) {
    std::mt19937 random(5);
    std::vector<ObjectPlace> places;
    for (std::uint64_t handle = 1; places.size() < 5000; handle += 1 + random() % 300)
        places.push_back({handle, 1 + random() % 5'000'000});
    BinaryContainer container;
    container.sections["AcDb:Handles"] = writeObjectMap(places);
    container.sections["AcDb:AcDbObjects"].resize(5'000'001);
    const std::vector<ObjectPlace> read = readObjectMap(container);
    EXPECT_TRUE(container.faults.empty());
    const auto areSame = [](const ObjectPlace& a, const ObjectPlace& b) {
        return a.handle == b.handle && a.offset == b.offset;
    };
    EXPECT_TRUE(std::equal(places.begin(), places.end(), read.begin(), read.end(), areSame));
}

TEST(BinaryRecords, pagesAreUnpackedAndPacked) {
    const std::array<std::pair<const char*, std::string>, 4> known{
        {{"02 4142434445 5001 110000", "ABCDEABCD"},
         {"01 41424344 210C00 110000", "ABCDABC"},
         {"01 41424344 6300 58595A 110000", "ABCDDDDDDXYZ"},
         {"01 00000000 20100000 110000", std::string(53, '\0')}}};
    Bytes out;
    for (const auto& [packed, plain] : known) {
        EXPECT_TRUE(unpackPage(bytesOf(packed), 100, out));
        EXPECT_EQ(std::string(out.begin(), out.end()), plain);
        EXPECT_FALSE(unpackPage(bytesOf(packed), plain.size() - 1, out)) << "more than there is room for";
    }
    std::mt19937 random(16);
    for (int round = 0; round < 400; ++round) {
        Bytes plain;
        const std::size_t size = 4 + random() % (round % 10 == 0 ? 120000 : 3000);
        while (plain.size() < size) {
            const std::size_t length = 1 + random() % (round % 3 ? 20 : 2000);
            const std::size_t from = plain.empty() ? 0 : random() % plain.size();
            for (std::size_t i = 0; i < length; ++i)
                plain.push_back(random() % 4 && !plain.empty()
                                    ? plain[(from + i) % plain.size()]
                                    : static_cast<std::uint8_t>(random() % (1 + round % 256)));
        }
        const Bytes packed = packPage(plain);
        ASSERT_TRUE(unpackPage(packed, plain.size(), out)) << "round " << round;
        ASSERT_TRUE(out == plain) << "round " << round;
        Bytes damaged = packed;
        damaged[random() % damaged.size()] ^= static_cast<std::uint8_t>(1 << random() % 8);
        static_cast<void>(unpackPage(damaged, plain.size(), out));
        static_cast<void>(unpackPage2007(damaged, plain.size(), out));
        EXPECT_LE(out.size(), plain.size());
    }
}

/// A section of objects with one record at its second byte.
BinaryContainer holding(DrawingVersion version, std::string_view record) {
    BinaryContainer container;
    container.version = version;
    Bytes& objects = container.sections["AcDb:AcDbObjects"];
    objects = bytesOf(record);
    objects.insert(objects.begin(), 0);
    return container;
}

TEST(BinaryRecords, recordsThatAreWrittenDownHaveTheirValues) {
    RecordFields record;
    const BinaryContainer old =
        holding(DrawingVersion::k2000, "2700 44C6C040000054657421D800000000000781FE0000000000002880"
                                       "0000000000000080660A221F 31DA");
    RecordReading reading(old, {});
    ASSERT_TRUE(reading.read(1, record) && record.isKnown && record.isWhole && record.isSumRight);
    EXPECT_EQ(record.layout->name, "LINE");
    EXPECT_EQ(record.handle, 0x51U);
    EXPECT_EQ(record.value("x1")->real[0], 1.0);
    EXPECT_EQ(record.value("x2")->real[0], 5.0);
    EXPECT_EQ(record.value("y2")->real[0], 2.0);
    EXPECT_EQ(record.value("layer")->reference.resolved(0x51), 0x10U);
    EXPECT_EQ(record.value("color")->color.index, 256);

    const BinaryContainer later =
        holding(DrawingVersion::k2010, "2D00 22 0040 54A574 00010EFF80000000000012200000000000001A2060"
                                       "000000000000880812400348015005444144 47 77FA");
    RecordReading texts(later, {});
    ASSERT_TRUE(texts.read(1, record) && record.isKnown && record.isWhole && record.isSumRight);
    EXPECT_EQ(record.layout->name, "TEXT");
    EXPECT_EQ(texts.text(*record.value("text")), "Hi");
    EXPECT_EQ(record.value("ins")->real[1], 20.0);
    EXPECT_EQ(record.value("height")->real[0], 2.5);
    EXPECT_FALSE(texts.read(2, record) && record.isWhole);
}

Bytes contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), {});
}

struct Counts {
    std::size_t whole = 0, withoutLayout = 0, damaged = 0;
};

Counts countsOf(BinaryContainer& container) {
    Counts counts;
    const std::vector<BinaryClass> classes = readClasses(container);
    RecordReading reading(container, classes);
    RecordFields record;
    for (const ObjectPlace& place : readObjectMap(container)) {
        const bool isSound = reading.read(place.offset, record) && record.isWhole && record.isSumRight &&
                             record.handle == place.handle;
        ++(!isSound ? counts.damaged : record.isKnown ? counts.whole : counts.withoutLayout);
    }
    return counts;
}

TEST(BinaryRecords, everyRecordOfOthersDrawingsEndsWhereItMust) {
    // What an independent decoder counts in them: records, and those without a layout.
    const std::map<std::string, std::pair<std::size_t, std::size_t>> expected{
        {"empty_AC1032", {143, 2}},   {"sample_AC1015", {1025, 22}}, {"sample_AC1018", {992, 22}},
        {"sample_AC1021", {903, 22}}, {"sample_AC1024", {899, 24}},  {"sample_AC1027", {841, 24}},
        {"sample_AC1032", {818, 24}}};
    const std::filesystem::path folder = drawingsOfOthers() / "binary";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no binary drawings in " << folder;
    std::mt19937 random(9);
    for (const auto& [name, counts] : expected) {
        const Bytes file = contentOf(folder / (name + ".dwg"));
        if (file.empty()) continue;
        BinaryContainer container;
        ASSERT_TRUE(openContainer(file, container)) << name;
        const Counts own = countsOf(container);
        EXPECT_TRUE(own.whole == counts.first && own.withoutLayout == counts.second && own.damaged == 0)
            << name;
        EXPECT_TRUE(container.faults.empty()) << name;
        for (int round = 0; round < 12; ++round) { // damaged, it costs what is damaged and nothing else
            Bytes damaged(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(
                                                           round % 4 ? file.size() : random() % file.size()));
            for (int i = 0; i < 20 && damaged.size() > 0x200; ++i)
                damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
            BinaryContainer other;
            const bool isOpen = openContainer(damaged, other);
            const Counts left = countsOf(other);
            const bool isTold = !isOpen || !other.faults.empty() || left.damaged > 0;
            EXPECT_TRUE(isTold || damaged.size() == file.size()) << name;
        }
    }
}

} // namespace
