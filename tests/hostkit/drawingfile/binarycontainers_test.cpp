// Files of binary drawings as they are written: sections, header variables, classes and properties there and
// back, against drawings that others made and against what the format says of bytes.
#include "binarycontainerwriting.h"
#include "binarysections.h"
#include "binarytranscription.h"
#include "drawingoutput.h"
#include "drawingsofothers.h"
#include "recordfields.h"
#include "sectionframe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

namespace {

using namespace hostkit;
using Bytes = std::vector<std::uint8_t>;

constexpr DrawingVersion writable[] = {DrawingVersion::k2000, DrawingVersion::k2004, DrawingVersion::k2010,
                                       DrawingVersion::k2013, DrawingVersion::k2018};

Bytes bytesOf(ByteSpan span) { return Bytes(span.begin(), span.end()); }

Bytes randomBytes(std::mt19937& random, std::size_t count) {
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
}

Bytes contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return Bytes((std::istreambuf_iterator<char>(stream)), {});
}

BinaryContainer emptyDrawing(DrawingVersion version) {
    BinaryContainer container;
    container.version = version;
    container.sections["AcDb:Header"] = writeHeader(container, {});
    container.sections["AcDb:Classes"] = writeClasses(container, {});
    return container;
}

/// Up to the last byte before the checksum, which is filled up with any bits, and in some forms one byte
/// more.
void expectSameBits(const Bytes& written, ByteSpan original, std::size_t mayLack) {
    constexpr std::size_t checksumAndEnd = 18, sizeAt = 16, sizeEnd = 20;
    ASSERT_LE(written.size(), original.size());
    ASSERT_LE(original.size(), written.size() + mayLack);
    const Bytes all = bytesOf(original);
    EXPECT_TRUE(std::equal(written.begin(), written.begin() + sizeAt, all.begin()));
    EXPECT_TRUE(std::equal(written.begin() + sizeEnd,
                           written.end() - static_cast<std::ptrdiff_t>(checksumAndEnd + mayLack),
                           all.begin() + sizeEnd));
}

TEST(BinaryContainers, othersDrawingsAreWrittenAsTheyWere) {
    const std::filesystem::path folder = drawingsOfOthers() / "binary";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no binary drawings in " << folder;
    std::mt19937 random(3);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".dwg") continue;
        SCOPED_TRACE(entry.path().filename());
        const Bytes original = contentOf(entry.path());
        BinaryContainer container;
        ASSERT_TRUE(openContainer(original, container));
        expectSameBits(writeHeader(container, readHeader(container)), container.section("AcDb:Header"), 1);
        EXPECT_EQ(writeClasses(container, readClasses(container)),
                  bytesOf(container.section("AcDb:Classes")));
        EXPECT_EQ(writeMeasurement(container, readMeasurement(container)),
                  bytesOf(container.section("AcDb:Template")));
        if (const auto properties = readProperties(container)) {
            EXPECT_EQ(writeProperties(container, *properties),
                      bytesOf(container.section("AcDb:SummaryInfo")));
        }
        Bytes file;
        std::wstring reason;
        const auto places = readObjectMap(container);
        const bool isWritten = writeContainer(container, recordsOf(container, places), file, reason);
        EXPECT_TRUE(container.faults.empty());
        EXPECT_EQ(isWritten, container.version != DrawingVersion::k2007);
        if (!isWritten) continue;
        if (container.version == DrawingVersion::k2000) {
            // Eight bytes before the last mark are random in files of others.
            constexpr std::size_t markAndTemplate = 20, randomBytesThere = 8;
            ASSERT_EQ(file.size(), original.size());
            std::fill_n(container.sections["AcDb:AcDbObjects"].end() - markAndTemplate - randomBytesThere,
                        randomBytesThere, std::uint8_t{0});
            EXPECT_TRUE(file == container.sections["AcDb:AcDbObjects"]);
        }
        BinaryContainer again;
        ASSERT_TRUE(openContainer(file, again));
        EXPECT_TRUE(again.faults.empty());
        for (const auto& [name, bytes] : container.sections)
            EXPECT_TRUE(again.sections[name] == bytes) << name;
        EXPECT_EQ(again.sections.size(), container.sections.size());
        for (int round = 0; round < 20; ++round) {
            BinaryContainer cut;
            const bool isOpen = openContainer(ByteSpan(file).first(random() % file.size()), cut);
            EXPECT_TRUE(!isOpen || !cut.faults.empty());
        }
    }
}

/// Of all that the text of a drawing does not change, each byte comes again; of what it changes, the rest.
TEST(BinaryContainers, whatNoTextChangesStaysInASavedDrawing) {
    const std::filesystem::path file = drawingsOfOthers() / "binary" / "sample_AC1027.dwg";
    const Bytes original = contentOf(file);
    if (original.empty()) GTEST_SKIP() << "no drawing " << file;
    TranscribedDrawing before;
    std::string text;
    ASSERT_TRUE(textFromDrawing(original, text, before));
    const auto saved = [&](const std::string& changed) {
        std::string bytes;
        FormChanges changes;
        std::wstring reason;
        EXPECT_TRUE(binaryDrawingFromText(ExchangeOutline(changed), DrawingVersion::k2013, {&before, text},
                                          bytes, changes, reason));
        BinaryContainer container;
        const auto* const first = reinterpret_cast<const std::uint8_t*>(bytes.data());
        EXPECT_TRUE(openContainer({first, bytes.size()}, container) && container.faults.empty());
        return container;
    };
    const BinaryContainer same = saved(text);
    for (const auto& [name, bytes] : before.container.sections)
        if (name != "AcDb:AcDbObjects" && name != "AcDb:Handles") {
            EXPECT_EQ(bytesOf(same.section(name)), bytes) << name;
        }
    const auto replaced = [&](std::string_view from, std::string_view to) {
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return std::string(text).replace(at, from.size(), to);
    };
    BinaryContainer scaled = saved(replaced("$LTSCALE\r\n 40\r\n1.0", "$LTSCALE\r\n 40\r\n2.5"));
    BinaryHeader header = readHeader(scaled);
    EXPECT_EQ(header.real("LTSCALE"), 2.5);
    header.values["LTSCALE"] = 1.0; // colours, though the text has their index alone, too
    EXPECT_TRUE(header.values == before.header.values);
    BinaryContainer named =
        saved(replaced("  9\r\n$LASTSAVEDBY", "  9\r\n$TITLE\r\n  1\r\na^Jb\r\n  9\r\n$LASTSAVEDBY"));
    EXPECT_EQ(readProperties(named)->title, "a\nb");
}

/// The scrambled part of a file's head.
Bytes scrambledHead(ByteSpan file) {
    Bytes head = bytesOf(file.subspan(0x80, 0x6C));
    std::uint32_t random = 1;
    for (std::uint8_t& byte : head) {
        random = random * 0x343FD + 0x269EC3;
        byte = static_cast<std::uint8_t>(byte ^ (random >> 16));
    }
    return head;
}

TEST(BinaryContainers, aFileHasAllThatIsGivenAndWhatReadersAskFor) {
    std::mt19937 random(4);
    for (const DrawingVersion version : writable) {
        SCOPED_TRACE(nameOfVersion(version));
        BinaryContainer container = emptyDrawing(version);
        container.codePage = 38;
        Bytes records = randomBytes(random, 0x7400 - 4); // cut at a page, a page of zeros, and some more
        records.insert(records.end(), 0x7400, 0);
        records.insert(records.end(), 77, 7);
        const BinaryRecords given{records, {{1, 0}, {9, 0x7000}, {0x1234, 0xE830}}};
        const bool hasAll = version != DrawingVersion::k2000;
        if (hasAll) {
            container.sections["AcDb:Other"] = randomBytes(random, 3 * 0x7400 + 5);
            container.sections["AcDb:FileDepList"] = Bytes(8, 0);
            container.sections["AcDb:Signature"] = Bytes(100, 1);
        }
        Bytes preview;
        appendMark(preview, previewMark);
        const Bytes entries{0, 0,    0, 0, 2, 1, 0x50, 0, 0, 0,   2,   0,   0,   0,
                            6, 0x52, 0, 0, 0, 3, 0,    0, 0, 'a', 'b', 'P', 'N', 'G'};
        preview.insert(preview.end(), entries.begin(), entries.end());
        preview[16] = static_cast<std::uint8_t>(entries.size() - 4);
        appendEndMark(preview, previewMark);
        container.sections["AcDb:Preview"] = preview;
        Bytes file;
        std::wstring reason;
        ASSERT_TRUE(writeContainer(container, given, file, reason));
        const std::size_t previewAt = longAt(file, 0x0D), pictureAt = longAt(file, previewAt + 31);
        EXPECT_EQ(bytesOf(partOf(file, pictureAt - 2, 5)), (Bytes{'a', 'b', 'P', 'N', 'G'}));
        BinaryContainer again;
        ASSERT_TRUE(openContainer(file, again));
        const auto places = readObjectMap(again);
        EXPECT_TRUE(again.faults.empty());
        EXPECT_EQ(again.codePage, 38U);
        ASSERT_EQ(places.size(), 3U);
        const std::size_t first = places[0].offset;
        EXPECT_TRUE(places[1].handle == 9 && places[2].offset - first == 0xE830);
        EXPECT_TRUE(
            std::ranges::equal(again.section("AcDb:AcDbObjects").subspan(first, records.size()), records));
        EXPECT_EQ(longAt(again.section("AcDb:AcDbObjects"), first - 4), 0x0DCAU);
        EXPECT_EQ(again.section("AcDb:Signature").size(), 0U);
        for (const char* const name : {"AcDb:Other", "AcDb:FileDepList", "AcDb:Header", "AcDb:Classes"})
            EXPECT_TRUE(again.sections[name] == container.sections[name]) << name;
        Bytes& aux = again.sections["AcDb:AuxHeader"];
        ASSERT_EQ(aux.size(), version == DrawingVersion::k2018 ? 129U : 123U);
        const Bytes made = aux;
        for (std::size_t i = 0; i < 12; ++i) aux[aux.size() - 52 + i] = 9; // update and handle seed
        EXPECT_EQ(auxHeaderOf(again, readHeader(again)), made);
        if (!hasAll) continue;
        const Bytes head = scrambledHead(file);
        // Pages of the sections, without the one of zeros and, in 2004, the measurement; and the two maps.
        const std::uint32_t pages = version == DrawingVersion::k2004 ? 18 : 19;
        for (const std::size_t at : {0x28, 0x40, 0x50, 0x60}) EXPECT_EQ(longAt(head, at), pages) << at;
        EXPECT_EQ(longLongAt(head, 0x34), file.size() - head.size());
        EXPECT_TRUE(std::equal(file.begin() + 0x80, file.begin() + 0xEC,
                               file.end() - static_cast<std::ptrdiff_t>(head.size())));
        EXPECT_EQ(again.section("AcDb:ObjFreeSpace").size(), version == DrawingVersion::k2004 ? 53U : 89U);
        for (const char* const name :
             {"AcDb:SummaryInfo", "AcDb:AppInfo", "AcDb:Template", "AcDb:RevHistory"})
            EXPECT_FALSE(again.section(name).empty()) << name;
        for (const auto& [at, name] : {std::pair{0x20, "AcDb:SummaryInfo"}, {0x2C, "AcDb:AppInfo"}})
            EXPECT_EQ(
                bytesOf(partOf(file, longAt(file, static_cast<std::size_t>(at)), again.section(name).size())),
                again.sections[name]);
    }
}

TEST(BinaryContainers, whatCannotBeAFileIsRefused) {
    const Bytes records(100, 0);
    const auto refusal = [&](const BinaryContainer& container, std::vector<ObjectPlace> places) {
        Bytes file{1, 2, 3};
        std::wstring reason;
        EXPECT_FALSE(writeContainer(container, {records, std::move(places)}, file, reason));
        EXPECT_EQ(file.size(), 3U);
        EXPECT_FALSE(reason.empty());
    };
    for (const DrawingVersion version : {DrawingVersion::k2000, DrawingVersion::k2013}) {
        refusal(emptyDrawing(version), {{5, 0}, {4, 10}});
        refusal(emptyDrawing(version), {{5, 100}});
        for (const char* const missing : {"AcDb:Header", "AcDb:Classes"}) {
            BinaryContainer container = emptyDrawing(version);
            container.sections.erase(missing);
            refusal(container, {{5, 0}});
        }
    }
    refusal(emptyDrawing(DrawingVersion::k2007), {{5, 0}});
    refusal(emptyDrawing(DrawingVersion::kR14), {{5, 0}});
}

HeaderValue randomValue(FieldCode code, std::mt19937& random, DrawingVersion version) {
    const auto real = [&] { return static_cast<double>(static_cast<int>(random())) / 64.0; };
    const std::string text = isUtf8(version) ? "h\xC3\xB6he \xF0\x9F\x98\x80" : "h\xF6he";
    switch (code) {
    case FieldCode::bit:
        return static_cast<std::int64_t>(random() % 2);
    case FieldCode::rawByte:
        return static_cast<std::int64_t>(random() % 256);
    case FieldCode::bitShort:
        return std::int64_t{static_cast<std::int16_t>(random())};
    case FieldCode::bitLong:
        return std::int64_t{static_cast<std::int32_t>(random())};
    case FieldCode::bitLongLong:
        return static_cast<std::int64_t>(random()) << 20;
    case FieldCode::bitDouble:
        return real();
    case FieldCode::rawPoint2:
        return std::array{real(), real(), 0.0};
    case FieldCode::bitPoint3:
        return std::array{real(), real(), 1.0};
    case FieldCode::text:
        return random() % 3 ? std::string(random() % 5000, 'x') + text : std::string();
    case FieldCode::color:
        if (version < DrawingVersion::k2004)
            return HeaderColor{static_cast<std::int32_t>(random() % 257), 0, {}, {}};
        return HeaderColor{0, static_cast<std::uint32_t>(random()), text,
                           random() % 2 ? std::optional(text) : std::nullopt};
    default:
        return HeaderReference{std::uint64_t{random()} << random() % 20};
    }
}

TEST(BinaryContainers, everyHeaderVariableComesBackInEachForm) {
    std::mt19937 random(5);
    for (const DrawingVersion version : writable)
        for (int round = 0; round < 4; ++round) {
            SCOPED_TRACE(nameOfVersion(version));
            BinaryContainer container;
            container.version = version;
            container.maintenance = round % 2 ? 0 : 100;
            BinaryHeader header;
            for (const LayoutStep& step : RecordLayouts::of(version).byName("HEADER-VARS")->steps)
                header.values[step.name] = randomValue(step.code, random, version);
            header.values["CEPSNTYPE"] = std::int64_t{3}; // CPSNID stands there then alone
            for (const char* const name : {"key23", "key24", "key25", "key26"})
                header.values[name] = std::int64_t{static_cast<std::int16_t>(random())};
            Bytes& section = container.sections["AcDb:Header"] = writeHeader(container, header);
            EXPECT_TRUE(readHeader(container).values == header.values);
            EXPECT_TRUE(container.faults.empty());
            for (std::size_t size = section.size(); size-- > 16; section.resize(size))
                if (size % 7 == 0 || size < 60) static_cast<void>(readHeader(container));
            EXPECT_FALSE(container.faults.empty());
        }
}

TEST(BinaryContainers, theSizeOfASectionHasAHighPartWhereTheFormHasIt) {
    const auto sizeOf = [](DrawingVersion version, unsigned maintenance) {
        BinaryContainer container;
        container.version = version;
        container.maintenance = maintenance;
        return writeHeader(container, {}).size();
    };
    for (const DrawingVersion version : writable) {
        const bool mayHave = version == DrawingVersion::k2010 || version == DrawingVersion::k2013;
        EXPECT_EQ(sizeOf(version, 4) - sizeOf(version, 3), mayHave ? 4U : 0U) << nameOfVersion(version);
    }
    EXPECT_EQ(sizeOf(DrawingVersion::k2018, 0), sizeOf(DrawingVersion::k2013, 4));
}

TEST(BinaryContainers, aNewHeaderHasTheStandardsOfNewDrawings) {
    BinaryContainer container = emptyDrawing(DrawingVersion::k2018);
    const BinaryHeader header = readHeader(container);
    EXPECT_EQ(header.real("LTSCALE"), 1.0);
    EXPECT_EQ(header.point("EXTMAX")[1], -1.0e20);
    EXPECT_EQ(header.whole("FLAGS"), 0x2A1D);
    EXPECT_EQ(header.text("MENU"), ".");
    EXPECT_EQ(std::get<HeaderColor>(header.values.at("CECOLOR")).value, 0xC0000000U);
    EXPECT_EQ(header.handle("CLAYER"), 0U);
    EXPECT_EQ(header.whole("MIRRTEXT", 5), 0);
}

TEST(BinaryContainers, propertiesKeepTheirTextsAndAreTakenUpToDamage) {
    for (const DrawingVersion version :
         {DrawingVersion::k2004, DrawingVersion::k2007, DrawingVersion::k2018}) {
        BinaryContainer container;
        container.version = version;
        DrawingProperties properties;
        const std::size_t shortest = version == DrawingVersion::k2004 ? 3 : 4;
        EXPECT_EQ(writeProperties(container, properties).size(), 8 * shortest + 24 + 2 + 8);
        properties.title = isUtf8(version) ? "Geschoss \xF0\x9F\x98\x80 \xE2\x82\xAC" : "Geschoss \x80";
        properties.hyperlinkBase = std::string(70000, 'u');
        properties.created = {2459580, 1000};
        properties.custom = {{"Bauherr", "A"}, {"", ""}};
        Bytes& section = container.sections["AcDb:SummaryInfo"] = writeProperties(container, properties);
        const auto read = readProperties(container);
        ASSERT_TRUE(read && container.faults.empty());
        EXPECT_EQ(read->title, properties.title);
        EXPECT_EQ(read->hyperlinkBase.size(), 65534U);
        EXPECT_EQ(read->created, properties.created);
        EXPECT_EQ(read->custom, properties.custom);
        section.resize(section.size() - 9);
        EXPECT_EQ(readProperties(container)->custom.size(), 1U);
        EXPECT_EQ(container.faults.size(), 1U);
        section.resize(4);
        EXPECT_TRUE(readProperties(container).has_value());
    }
}

TEST(BinaryContainers, codePagesHaveTheirNumbers) {
    for (unsigned number = 1; number <= 44; ++number) EXPECT_EQ(codePageNumber(codePageName(number)), number);
    EXPECT_EQ(codePageNumber(L"ansi_1252"), 30U);
    EXPECT_EQ(codePageName(38), L"ANSI_932");
    EXPECT_EQ(codePageNumber(L"none") + codePageName(45).size(), 0U);
    BinaryContainer container;
    for (const auto& [number, page] :
         {std::pair{0U, CodePage::western1252}, {29U, CodePage::cyrillic1251}, {39U, CodePage::chinese936}}) {
        container.codePage = number;
        EXPECT_EQ(codePageOf(container), page);
    }
}

} // namespace
