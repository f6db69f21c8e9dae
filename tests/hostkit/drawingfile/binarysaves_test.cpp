// What a save as a binary drawing keeps and what it makes anew, asked of the records that it wrote.
#include "binarytranscription.h"
#include "dbblockreference.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "drawingfiles.h"
#include "drawingparts.h"
#include "drawingsofothers.h"
#include "exchangeoutline.h"
#include "headervariables.h"
#include "recordtranscription.h"
#include "sampledrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

using namespace hostkit;
using namespace drawingtest;

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string binaryOf(const AcDbDatabase& database, std::optional<DrawingVersion> version = {}) {
    WriteOptions options = quietWriting;
    options.version = version;
    options.coding = DrawingCoding::kDrawing;
    return saved(database, options);
}

/// The records of a file, by handle.
struct Records {
    std::string text;
    TranscribedDrawing drawing;

    explicit Records(const std::string& file) {
        const ByteSpan bytes(reinterpret_cast<const std::uint8_t*>(file.data()), file.size());
        EXPECT_TRUE(textFromDrawing(bytes, text, drawing));
        EXPECT_TRUE(drawing.container.faults.empty());
    }
    RecordReading reading() const { return {drawing.container, drawing.classes}; }
    std::string bitsOf(std::uint64_t handle) const {
        const TranscribedRecord* const record = drawing.find(handle);
        if (!record) return {};
        const RecordReading all = reading();
        const ByteSpan bits = all.recordAt(record->offset);
        return {bits.begin(), bits.end()};
    }
    RecordFields fieldsOf(std::uint64_t handle) const {
        RecordFields fields;
        RecordReading all = reading();
        const TranscribedRecord* const record = drawing.find(handle);
        EXPECT_TRUE(record && all.read(record->offset, fields) && fields.isWhole) << handle;
        return fields;
    }
    std::vector<std::uint64_t> others(const Records& before) const {
        std::vector<std::uint64_t> handles;
        for (const TranscribedRecord& record : drawing.records)
            if (bitsOf(record.handle) != before.bitsOf(record.handle)) handles.push_back(record.handle);
        return handles;
    }
};

std::uint64_t handleOf(AcDbObjectId id) { return id.handle().value(); }

TEST(BinarySaves, recordsTellTheirSpaceTheirInsertsAndTheMeasurement) {
    AcDbDatabase database;
    const AcDbObjectId block = addRecord<AcDbBlockTable>(database, L"part");
    const AcDbObjectId inModel = appendToModelSpace(database, new AcDbBlockReference({1, 2, 3}, block));
    const AcDbObjectId inPaper = append(database.paperSpaceId(), new AcDbLine({0, 0, 0}, {1, 0, 0}));
    const AcDbObjectId inBlock = append(block, new AcDbLine({0, 0, 0}, {0, 1, 0}));
    database.header().setInteger(L"MEASUREMENT", 1);
    for (const DrawingVersion version : {DrawingVersion::k2000, DrawingVersion::k2018}) {
        const Records records(binaryOf(database, version));
        EXPECT_EQ(records.fieldsOf(handleOf(inModel)).value("entmode")->whole, 2);
        EXPECT_EQ(records.fieldsOf(handleOf(inPaper)).value("entmode")->whole, 1);
        const RecordFields held = records.fieldsOf(handleOf(inBlock));
        EXPECT_EQ(held.value("entmode")->whole, 0);
        EXPECT_EQ(held.referenceTo("owner"), handleOf(block));
        const auto inserts = records.fieldsOf(handleOf(block)).array("inserts");
        ASSERT_EQ(inserts.size(), 1U);
        EXPECT_EQ(inserts[0].reference.value, handleOf(inModel));
        EXPECT_NE(records.text.find("$MEASUREMENT\r\n 70\r\n1\r\n"), std::string::npos);
    }
}

TEST(BinarySaves, aRecordKeepsItsBitsUntilItOrWhatItListsChanges) {
    AcDbDatabase database;
    const AcDbObjectId block = addRecord<AcDbBlockTable>(database, L"part");
    for (int i = 0; i < 3; ++i) appendToModelSpace(database, new AcDbLine({1.0 * i, 0, 0}, {0, 1, 0}));
    for (const DrawingVersion version :
         {DrawingVersion::k2000, DrawingVersion::k2004, DrawingVersion::k2013}) {
        const std::string file = binaryOf(database, version);
        const Records before(file);
        const auto again = openDrawingFromMemory(file, L"plan.dwg", nullptr, quietReading);
        ASSERT_TRUE(again);
        EXPECT_EQ(Records(binaryOf(*again)).others(before), std::vector<std::uint64_t>());
        AcDbObjectId own;
        ASSERT_EQ(again->getAcDbObjectId(own, false, block.handle()), Acad::eOk);
        const AcDbObjectId insert = appendToModelSpace(*again, new AcDbBlockReference({0, 0, 0}, own));
        const Records after(binaryOf(*again));
        std::vector<std::uint64_t> changed = after.others(before);
        for (const std::uint64_t wanted : {handleOf(insert), handleOf(own), handleOf(again->modelSpaceId())})
            EXPECT_TRUE(std::find(changed.begin(), changed.end(), wanted) != changed.end()) << wanted;
        // In the form 2000 the last line has a neighbour, too.
        EXPECT_EQ(changed.size(), version == DrawingVersion::k2000 ? 4U : 3U);
    }
}

TEST(BinarySaves, aStyleThatIsNotNamedStaysWhenItIsRenamed) {
    const std::string old = contentOf(drawingsOfOthers() / "binary/sample_AC1032.dwg");
    if (old.empty()) GTEST_SKIP() << "no drawings of others";
    const auto database = openDrawingFromMemory(old, L"sample.dwg", nullptr, quietReading);
    ASSERT_TRUE(database);
    AcDbSymbolTablePointer<AcDbTextStyleTable> styles(database.get(), AcDb::kForRead);
    AcDbTextStyleTableRecord* standard = nullptr;
    ASSERT_EQ(styles->getAt(L"Standard", standard, AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(standard->setName(L"Plan"), Acad::eOk);
    standard->close();
    const Records before(old), after(binaryOf(*database));
    // Attributes of several lines, whose text within says nothing of its style.
    for (const std::uint64_t handle : {0x796, 0x79D}) EXPECT_EQ(after.bitsOf(handle), before.bitsOf(handle));
}

std::vector<OutlinedRecord> recordsIn(const ExchangeOutline& outline) {
    std::vector<OutlinedRecord> all = outline.parts;
    all.insert(all.end(), outline.strays.begin(), outline.strays.end());
    all.insert(all.end(), outline.objects.begin(), outline.objects.end());
    for (const OutlinedTable& table : outline.tables) {
        all.push_back(table.head);
        all.insert(all.end(), table.records.begin(), table.records.end());
    }
    for (const OutlinedBlock& block : outline.blocks) {
        all.push_back(block.begin);
        for (const OutlinedEntity& entity : block.entities) {
            all.push_back(entity.record);
            all.back().owner = entity.firstPart * 1000 + entity.partCount;
        }
        all.push_back(block.end);
    }
    return all;
}

TEST(BinarySaves, anOutlineIsThatOfTheChangedDrawingWhereverRecordsCame) {
    WriteOptions options = quietWriting;
    options.version = DrawingVersion::k2010;
    const std::string text = saved(*sampleDrawing(), options);
    const ExchangeOutline earlier(text);
    ASSERT_FALSE(earlier.parts.empty() || earlier.blocks.size() < 3);
    const std::string layer = "  0\r\nLAYER\r\n  5\r\nFFF0\r\n", line = "  0\r\nXRECORD\r\n  5\r\nFFF1\r\n";
    // In tables and objects; between blocks and entities, which is no outline's place.
    for (const auto& [first, second] :
         {std::pair("\nBLOCK_RECORD\r\n", "\nOBJECTS\r\n"), {"\nENTITIES\r\n", "\nOBJECTS\r\n"}}) {
        std::string changed = text;
        const std::size_t behind = changed.find("  0\r\nENDSEC", changed.find(second));
        changed.insert(behind, line);
        const bool isTable = first[1] == 'B';
        const std::size_t ahead = isTable ? changed.find("  0\r\nENDTAB", changed.find(first))
                                          : changed.rfind("  0\r\nSECTION", changed.find(first));
        changed.insert(ahead, isTable ? layer : "  0\r\nSECTION\r\n  2\r\nOTHER\r\n  0\r\nENDSEC\r\n");
        const std::vector<OutlinedRecord> moved = recordsIn(ExchangeOutline(changed, earlier)),
                                          whole = recordsIn(ExchangeOutline(changed));
        ASSERT_EQ(moved.size(), whole.size());
        for (std::size_t i = 0; i < whole.size(); ++i) {
            EXPECT_EQ(moved[i].in(changed), whole[i].in(changed));
            EXPECT_EQ(std::pair(moved[i].offset, moved[i].owner), std::pair(whole[i].offset, whole[i].owner));
        }
    }
}

TEST(BinarySaves, whatCannotGoAlongIsLeftOutWithWhatLeadsToIt) {
    const std::string old = contentOf(drawingsOfOthers() / "binary/sample_AC1021.dwg");
    if (old.empty()) GTEST_SKIP() << "no drawings of others";
    const auto database = openDrawingFromMemory(old, L"sample.dwg", nullptr, quietReading);
    ASSERT_TRUE(database);
    EXPECT_EQ(binaryOf(*database).substr(0, 6), "AC1024"); // 2007 is read alone
    const Records records(old);
    WriteOptions options = quietWriting;
    options.coding = DrawingCoding::kText;
    FormChanges changes;
    options.changes = &changes;
    const std::string text = saved(*database, options);
    std::size_t opaque = 0;
    for (const TranscribedRecord& record : records.drawing.records) {
        if (!record.isOpaque) continue;
        ++opaque;
        std::string handle;
        appendHandle(record.handle, handle);
        EXPECT_EQ(text.find("\r\n  5\r\n" + handle + "\r\n"), std::string::npos) << handle;
        EXPECT_EQ(text.find("\r\n350\r\n" + handle + "\r\n"), std::string::npos) << handle;
        EXPECT_TRUE(std::any_of(changes.all().begin(), changes.all().end(), [&](const FormChange& change) {
            return std::count(change.handles.begin(), change.handles.end(), record.handle) == 1;
        })) << handle;
    }
    EXPECT_GT(opaque, 20U);
}

TEST(BinarySaves, whatBelongsToALeftOutRecordGoesWithItAndReferencesLeadNowhere) {
    const AcDbDatabase made;
    WriteOptions options = quietWriting;
    options.coding = DrawingCoding::kText;
    std::string text = saved(made, options);
    const std::string root = "330\r\nC\r\n";
    const std::string records =
        "0\r\nNOSUCHKIND\r\n5\r\nF00\r\n102\r\n{ACAD_XDICTIONARY\r\n360\r\nF01\r\n102\r\n}\r\n" + root +
        "100\r\nAcDbNoSuchKind\r\n"
        "0\r\nDICTIONARY\r\n5\r\nF01\r\n330\r\nF00\r\n100\r\nAcDbDictionary\r\n3\r\nDEEP\r\n360\r\nF02\r\n"
        "0\r\nXRECORD\r\n5\r\nF02\r\n330\r\nF01\r\n100\r\nAcDbXrecord\r\n1\r\ntext\r\n"
        "0\r\nFIELDLIST\r\n5\r\nF03\r\n102\r\n{ACAD_REACTORS\r\n330\r\nF00\r\n330\r\nC\r\n102\r\n}\r\n" +
        root + "100\r\nAcDbIdSet\r\n90\r\n2\r\n330\r\nF00\r\n330\r\nF04\r\n100\r\nAcDbFieldList\r\n" +
        "0\r\nXRECORD\r\n5\r\nF04\r\n" + root + "100\r\nAcDbXrecord\r\n1\r\nother\r\n";
    const std::size_t end = text.find("  0\r\nENDSEC", text.find("\r\nOBJECTS\r\n"));
    ASSERT_NE(end, std::string::npos);
    text.insert(end, records);
    const auto database = openDrawingFromMemory(text, L"drawing.dxf", nullptr, quietReading);
    ASSERT_TRUE(database);
    for (const DrawingVersion version :
         {DrawingVersion::k2004, DrawingVersion::k2010, DrawingVersion::k2018}) {
        const Records written(binaryOf(*database, version));
        for (const std::uint64_t gone : {0xF00, 0xF01, 0xF02})
            EXPECT_FALSE(written.drawing.find(gone)) << gone;
        EXPECT_TRUE(written.drawing.find(0xF04));
        const RecordFields list = written.fieldsOf(0xF03);
        const auto leadsTo = [&](const char* name) {
            std::vector<std::uint64_t> targets;
            for (const RecordValue& value : list.array(name))
                targets.push_back(value.reference.resolved(0xF03));
            return targets;
        };
        EXPECT_EQ(leadsTo("fields"), (std::vector<std::uint64_t>{0, 0xF04}));
        EXPECT_EQ(leadsTo("reactors"), std::vector<std::uint64_t>{0xC});
    }
}

} // namespace
