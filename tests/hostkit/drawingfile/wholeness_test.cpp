// A changed record is as whole as an untouched one: what was read is written once, at its place, in its new
// value, and what was not read stays where it stood. The expectations are written down by hand, group by
// group.
#include "drawingfiles.h"
#include "drawingparts.h"
#include "recordcompare.h"

#include "dbaccess.h"
#include "dbarc.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "dblayertablerecord.h"
#include "dbline.h"
#include "dbtext.h"
#include "groupscanner.h"

#include <functional>

using namespace hostkit;
using namespace drawingtest;

namespace {

// "8 0 ; 62 3" as groups; a value may have blanks within.
std::string groupsOf(std::string_view notation) {
    std::string text;
    while (!notation.empty()) {
        const std::size_t end = std::min(notation.find(';'), notation.size());
        const std::string one(withoutBlanks(notation.substr(0, end)));
        const std::size_t blank = std::min(one.find(' '), one.size());
        if (!one.empty())
            text += group(std::stoi(one.substr(0, blank)), blank == one.size() ? "" : one.substr(blank + 1));
        notation.remove_prefix(std::min(end + 1, notation.size()));
    }
    return text;
}

std::vector<Pair> pairsOf(std::string_view notation) {
    const std::string text = groupsOf(notation);
    GroupScanner scanner(text);
    std::vector<Pair> pairs;
    RawGroup each;
    while (scanner.next(each) == ScanResult::kGroup) pairs.push_back({each.code, std::string(each.value)});
    return pairs;
}

std::string tableOf(const std::string& name, std::string_view records) {
    return groupsOf("0 TABLE ; 2 " + name + " ; 70 9 ;") + groupsOf(records) + group(0, "ENDTAB");
}

const std::string layers =
    "0 LAYER ; 5 A1 ; 100 AcDbSymbolTableRecord ; 100 AcDbLayerTableRecord ; 2 Wall ; 70 0 ; 62 7 ; "
    "6 CONTINUOUS ;"
    "0 LAYER ; 5 A2 ; 100 AcDbSymbolTableRecord ; 100 AcDbLayerTableRecord ; 2 Door ; 70 0 ; 62 7 ; "
    "6 CONTINUOUS";

// A drawing of that form ("" for none) with the record in its entities; handles to 2F are free for it.
std::string drawingOf(const std::string& version, std::string_view record) {
    const std::string head =
        version.empty() ? section("HEADER", groupsOf("9 $LTSCALE ; 40 1.0")) : header(version);
    return head + section("TABLES", tableOf("LAYER", layers)) + entities(groupsOf(record));
}

using Edit = std::function<void(AcDbDatabase&, AcDbObjectId)>;

template <class T, class Change>
Edit edit(Change change) {
    return [change](AcDbDatabase&, AcDbObjectId id) {
        AcDbObjectPointer<T> object(id, AcDb::kForWrite);
        ASSERT_EQ(object.openStatus(), Acad::eOk);
        change(*object);
    };
}

Edit moveBy(double x) {
    return edit<AcDbEntity>([x](AcDbEntity& entity) {
        EXPECT_EQ(entity.transformBy(AcGeMatrix3d::translation({x, 0.0, 0.0})), Acad::eOk);
    });
}
Edit colorAs(Adesk::UInt16 index) {
    return edit<AcDbEntity>(
        [index](AcDbEntity& entity) { EXPECT_EQ(entity.setColorIndex(index), Acad::eOk); });
}
Edit renameLayer(const wchar_t* from, const wchar_t* to) {
    return [=](AcDbDatabase& database, AcDbObjectId) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(
            DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(database, TableKind::kLayer))
                ->find(from),
            AcDb::kForWrite);
        ASSERT_EQ(layer.openStatus(), Acad::eOk);
        EXPECT_EQ(layer->setName(to), Acad::eOk);
    };
}
Edit eraseLayer(const wchar_t* name) {
    return [=](AcDbDatabase& database, AcDbObjectId) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(
            DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(database, TableKind::kLayer))
                ->find(name),
            AcDb::kForWrite);
        ASSERT_EQ(layer.openStatus(), Acad::eOk);
        EXPECT_EQ(layer->erase(), Acad::eOk);
    };
}

struct Case {
    const char* name;
    const char* version;
    const char* record;
    Edit change;
    const char* expected; ///< the record afterwards; the numbers may be spelt otherwise
};

const std::string ends = "10 0.0 ; 20 0.0 ; 30 0.0 ; 11 1.0 ; 21 0.0 ; 31 0.0";

} // namespace

TEST(Wholeness, aChangedRecordIsWholeInEveryShape) {
    const Case cases[] = {
        {"marks in a file without a version", "",
         "0 LINE ; 5 2F ; 330 1F ; 100 AcDbEntity ; 8 Wall ; 370 25 ; 48 2.0 ; 100 AcDbLine ; 10 0.0 ; 20 "
         "0.0 ; 30 0.0 ; 11 1.0 ; "
         "21 0.0 ; 31 0.0",
         moveBy(5),
         "0 LINE ; 5 2F ; 330 1F ; 100 AcDbEntity ; 8 Wall ; 370 25 ; 48 2.0 ; 100 AcDbLine ; 10 5.0 ; 20 "
         "0.0 ; 30 0.0 ; 11 6.0 ; "
         "21 0.0 ; 31 0.0"},
        {"marks in the R12 form", "AC1009",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0",
         moveBy(5),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 100 AcDbLine ; 10 5.0 ; 20 0.0 ; 11 6.0 ; 21 0.0"},
        {"no marks in a form that has them", "AC1015",
         "0 LINE ; 5 2F ; 8 Wall ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0", colorAs(3),
         "0 LINE ; 5 2F ; 8 Wall ; 62 3 ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0"},
        {"the handle behind the first mark", "AC1015",
         "0 LINE ; 100 AcDbEntity ; 5 2F ; 330 1F ; 8 Wall ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 "
         "0.0",
         moveBy(5),
         "0 LINE ; 100 AcDbEntity ; 5 2F ; 330 1F ; 8 Wall ; 100 AcDbLine ; 10 5.0 ; 20 0.0 ; 11 6.0 ; 21 "
         "0.0"},
        {"the look behind the class's mark", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 100 AcDbLine ; 8 Wall ; 62 1 ; 6 ByBlock ; 370 25 ; 10 0.0 ; 20 "
         "0.0 ; 11 1.0 ; 21 0.0",
         colorAs(3),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 100 AcDbLine ; 8 Wall ; 62 3 ; 6 ByBlock ; 370 25 ; 10 0.0 ; 20 "
         "0.0 ; 11 1.0 ; 21 0.0"},
        {"a class's mark that was forgotten", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0", moveBy(5),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 10 5.0 ; 20 0.0 ; 11 6.0 ; 21 0.0"},
        {"a true colour in a form without", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 30 ; 420 16678656 ; 430 BOOK$ORANGE ; 100 AcDbLine ; "
         "10 0.0 ; 20 0.0 ; "
         "11 1.0 ; 21 0.0",
         moveBy(5),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 30 ; 420 16678656 ; 430 BOOK$ORANGE ; 100 AcDbLine ; "
         "10 5.0 ; 20 0.0 ; "
         "11 6.0 ; 21 0.0"},
        {"a colour's name goes with it", "AC1018",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 30 ; 420 16678656 ; 430 BOOK$ORANGE ; 440 33554559 ; "
         "100 AcDbLine ; 10 0.0 ; "
         "20 0.0 ; 11 1.0 ; 21 0.0",
         colorAs(3),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 3 ; 440 33554559 ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; "
         "11 1.0 ; 21 0.0"},
        {"a colour that is none makes room", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 300 ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 "
         "0.0",
         colorAs(3),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 3 ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0"},
        {"a group twice, untouched", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 1 ; 62 2 ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; "
         "21 0.0",
         moveBy(5),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 1 ; 62 2 ; 100 AcDbLine ; 10 5.0 ; 20 0.0 ; 11 6.0 ; "
         "21 0.0"},
        {"a group twice, changed", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 1 ; 62 2 ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; "
         "21 0.0",
         colorAs(3),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 3 ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0"},
        {"names that no table has", "AC1015",
         "0 TEXT ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 6 Missing ; 100 AcDbText ; 10 0.0 ; 20 0.0 ; 40 2.5 ; 1 "
         "words ; 7 lost ; "
         "100 AcDbText",
         moveBy(5),
         "0 TEXT ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 6 Missing ; 100 AcDbText ; 10 5.0 ; 20 0.0 ; 40 2.5 ; 1 "
         "words ; 7 lost ; "
         "100 AcDbText"},
        {"a layer's new name", "AC1015",
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 WALL ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0 ; 1001 "
         "ACAD ; 1003 wall",
         renameLayer(L"Wall", L"Mur"),
         "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 Mur ; 100 AcDbLine ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0 ; 1001 "
         "ACAD ; 1003 Mur"},
        {"a layer that only its users name", "AC1015",
         "0 STRANGE ; 5 2F ; 100 AcDbEntity ; 8 Nowhere ; 100 Unheard ; 8 Nowhere ; 62 5",
         renameLayer(L"Nowhere", L"Here"),
         "0 STRANGE ; 5 2F ; 100 AcDbEntity ; 8 Here ; 100 Unheard ; 8 Nowhere ; 62 5"},
        {"an erased layer's name", "AC1009", "0 LINE ; 5 2F ; 8 WALL ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0",
         eraseLayer(L"Wall"), "0 LINE ; 5 2F ; 8 0 ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0"},
        {"comments and groups of others", "AC1015",
         "0 LINE ; 5 2F ; 102 {MINE ; 330 AB ; 102 } ; 100 AcDbEntity ; 999 a remark ; 8 Wall ; 100 AcDbLine "
         "; 10 0.0 ; 20 0.0 ; "
         "11 1.0 ; 21 0.0 ; 90 7 ; 100 AcDbMine ; 10 3.0 ; 20 4.0",
         colorAs(3),
         "0 LINE ; 5 2F ; 102 {MINE ; 330 AB ; 102 } ; 100 AcDbEntity ; 999 a remark ; 8 Wall ; 62 3 ; 100 "
         "AcDbLine ; 10 0.0 ; "
         "20 0.0 ; 11 1.0 ; 21 0.0 ; 90 7 ; 100 AcDbMine ; 10 3.0 ; 20 4.0"},
        {"a dimension's place and unknown style", "AC1015",
         "0 DIMENSION ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 100 AcDbDimension ; 10 0.0 ; 20 1.0 ; 11 0.0 ; 21 "
         "2.0 ; 12 7.0 ; 22 8.0 ; "
         "70 1 ; 3 Missing ; 73 0 ; 100 AcDbAlignedDimension ; 13 0.0 ; 23 0.0 ; 14 1.0 ; 24 0.0",
         colorAs(3),
         "0 DIMENSION ; 5 2F ; 100 AcDbEntity ; 8 Wall ; 62 3 ; 100 AcDbDimension ; 10 0.0 ; 20 1.0 ; 11 0.0 "
         "; 21 2.0 ; 12 7.0 ; "
         "22 8.0 ; 70 1 ; 3 Missing ; 73 0 ; 100 AcDbAlignedDimension ; 13 0.0 ; 23 0.0 ; 14 1.0 ; 24 0.0"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const std::string original = drawingOf(each.version, each.record);
        const auto database = openDrawingFromMemory(original, L"whole", nullptr, quietReading);
        ASSERT_TRUE(database);
        each.change(*database, DatabaseAccess::find(*database, 0x2F));
        const std::string written = saved(*database);
        const std::vector<Pair> expected = pairsOf(each.expected);
        const std::string key = "ENTITIES " + expected.front().value + " 2F";
        const Records found = recordsOf(written);
        ASSERT_TRUE(found.contains(key)) << written;
        EXPECT_EQ(differences({{key, expected}}, {{key, found.at(key)}}, Strictness::kSame),
                  std::vector<std::string>())
            << testing::PrintToString(found.at(key));
        EXPECT_TRUE(openDrawingFromMemory(written, L"again", nullptr, quietReading));
    }
}

// A copy has what no class reads of its original, but for what is the original's alone.
TEST(Wholeness, aCopyHasWhatItsOriginalHas) {
    const auto database = openDrawingFromMemory(
        drawingOf(
            "AC1018",
            "0 LINE ; 5 2F ; 102 {MINE ; 360 AB ; 102 } ; 102 {ACAD_REACTORS ; 330 A1 ; 102 } ; 330 1F ; "
            "100 AcDbEntity ; 999 a remark ; 8 Wall ; 440 33554559 ; 360 AC ; 100 AcDbLine ; " +
                ends + " ; 90 7"),
        L"copy", nullptr, quietReading);
    ASSERT_TRUE(database);
    std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(
        DatabaseAccess::objectOf<AcDbEntity>(DatabaseAccess::find(*database, 0x2F))->clone()));
    EXPECT_TRUE(copy->ownerId().isNull());
    const AcDbObjectId id = appendToModelSpace(*database, copy.release());
    const Records found = recordsOf(saved(*database));
    wchar_t handle[17] = {};
    ASSERT_TRUE(id.handle().getIntoAsciiBuffer(handle));
    const std::string key = "ENTITIES LINE " + narrow(handle);
    ASSERT_TRUE(found.contains(key));
    EXPECT_EQ(found.at(key),
              pairsOf("0 LINE ; 5 " + narrow(handle) + " ; 100 AcDbEntity ; 8 Wall ; 440 33554559 ; " +
                      "100 AcDbLine ; " + ends + " ; 90 7"));
}

// The header's seed counts when new handles are given, and what is written lies above all of them.
TEST(Wholeness, theSeedOfHandlesIsKept) {
    const std::string seeded =
        section("HEADER", groupsOf("9 $ACADVER ; 1 AC1015 ; 9 $HANDSEED ; 5 500")) +
        entities(groupsOf("0 LINE ; 5 2F ; 100 AcDbEntity ; 8 0 ; 100 AcDbLine ; " + ends));
    const auto database = openDrawingFromMemory(seeded, L"seed", nullptr, quietReading);
    ASSERT_TRUE(database);
    const AcDbObjectId added = appendToModelSpace(*database, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    EXPECT_GE(added.handle().value(), 0x500u);
    const std::string written = saved(*database);
    const auto again = openDrawingFromMemory(written, L"again", nullptr, quietReading);
    ASSERT_TRUE(again);
    EXPECT_GT(again->handseed().value(), added.handle().value());
    const Records records = recordsOf(written);
    const std::vector<Pair>& variable = records.at("HEADER $HANDSEED #0");
    EXPECT_EQ(std::stoull(variable[1].value, nullptr, 16), added.handle().value() + 1)
        << "the least that is above";
}

// An entity stands in the space that its owner names, whatever its mark says.
TEST(Wholeness, theOwnerTellsTheSpace) {
    const std::string records =
        "0 BLOCK_RECORD ; 5 1F ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 *Model_Space ;"
        "0 BLOCK_RECORD ; 5 1B ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 *Paper_Space";
    const auto database = openDrawingFromMemory(
        header("AC1015") + section("TABLES", tableOf("BLOCK_RECORD", records)) +
            section("BLOCKS", block("*Model_Space", "") + block("*Paper_Space", "")) +
            entities(groupsOf("0 LINE ; 5 2F ; 330 1B ; 100 AcDbEntity ; 8 0 ; 100 AcDbLine ; " + ends)),
        L"spaces", nullptr, quietReading);
    ASSERT_TRUE(database);
    EXPECT_EQ(
        AcDbObjectPointer<AcDbBlockTableRecord>(database->paperSpaceId(), AcDb::kForRead)->entities().size(),
        1u);
    EXPECT_EQ(
        AcDbObjectPointer<AcDbBlockTableRecord>(database->modelSpaceId(), AcDb::kForRead)->entities().size(),
        0u);
}

// An owner that the file has not is not named.
TEST(Wholeness, whatIsAddedToEntitiesAloneNamesNobody) {
    const std::string bare =
        header("AC1015") +
        entities(groupsOf("0 LINE ; 5 2F ; 100 AcDbEntity ; 8 0 ; 100 AcDbLine ; " + ends));
    const auto database = openDrawingFromMemory(bare, L"bare", nullptr, quietReading);
    ASSERT_TRUE(database);
    (void)appendToModelSpace(*database, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    const std::string written = saved(*database);
    EXPECT_EQ(countOf(written, "\r\nLINE\r\n"), 2u);
    EXPECT_EQ(countOf(written, "\r\n330\r\n"), 0u);
    EXPECT_EQ(countOf(written, "BLOCKS"), 0u);
}

// Two names of a dictionary that differ in case at most, and an edit of it: both objects keep an entry.
TEST(Wholeness, noEntryIsLostForItsName) {
    const std::string objects =
        "0 DICTIONARY ; 5 C ; 330 0 ; 100 AcDbDictionary ; 281 1 ; 3 KEY ; 350 D ; 3 key ; 350 E ;"
        "0 DICTIONARY ; 5 D ; 330 C ; 100 AcDbDictionary ; 281 1 ;"
        "0 DICTIONARY ; 5 E ; 330 C ; 100 AcDbDictionary ; 281 1";
    const auto database =
        openDrawingFromMemory(header("AC1015") + section("OBJECTS", groupsOf(objects)) + group(0, "EOF"),
                              L"keys", nullptr, quietReading);
    ASSERT_TRUE(database);
    {
        const AcDbObjectPointer<AcDbDictionary> root(database->namedObjectsDictionaryId(), AcDb::kForWrite);
        ASSERT_EQ(root->assertWriteEnabled(), Acad::eOk);
    }
    const std::string written = saved(*database);
    for (const char* const handle : {"D", "E"})
        EXPECT_EQ(countOf(written, std::string("\r\n350\r\n") + handle + "\r\n"), 1u) << handle;
    EXPECT_EQ(countOf(written, "\r\nKEY\r\n") + countOf(written, "\r\nkey\r\n"), 1u);
}

// A reader of R12 takes such a block for the space: the drawing could not be opened, or its contents would
// move.
TEST(Wholeness, aBlockIsNoSpaceOfR12) {
    AcDbDatabase database;
    auto* const block = new AcDbBlockTableRecord;
    (void)block->setName(L"$Paper_Space");
    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(database.getBlockTable(blocks, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(blocks->add(block), Acad::eOk);
    block->close();
    blocks->close();
    std::string bytes;
    WriteOptions options = quietWriting;
    for (const auto& [version, status] :
         {std::pair(DrawingVersion::k2000, Acad::eOk), {DrawingVersion::kR12, Acad::eDuplicateKey}}) {
        options.version = version;
        EXPECT_EQ(writeDrawingToMemory(database, bytes, options), status);
    }
}

// References to what is erased go with it, in the records that no class reads too.
TEST(Wholeness, nothingRefersToWhatWasErased) {
    const std::string objects =
        "0 DICTIONARY ; 5 C ; 330 0 ; 100 AcDbDictionary ; 281 1 ; 3 ACAD_GROUP ; 350 D ;"
        "0 DICTIONARY ; 5 D ; 330 C ; 100 AcDbDictionary ; 281 1 ; 3 PAIR ; 350 5A ;"
        "0 GROUP ; 5 5A ; 330 D ; 100 AcDbGroup ; 300 two ; 70 0 ; 71 1 ; 340 2F ; 340 30 ;"
        "0 SORTENTSTABLE ; 5 5B ; 330 C ; 100 AcDbSortentsTable ; 330 1F ; 331 2F ; 5 30 ; 331 30 ; 5 2F ;"
        "0 FIELDLIST ; 5 5C ; 330 C ; 100 AcDbIdSet ; 90 2 ; 330 2F ; 330 30 ; 100 AcDbFieldList ;"
        "0 STRANGE ; 5 5D ; 330 C ; 100 AcDbStrange ; 90 2 ; 331 2F ; 331 30";
    const std::string lines = "0 LINE ; 5 2F ; 100 AcDbEntity ; 8 0 ; 100 AcDbLine ; " + ends +
                              " ; 0 LINE ; 5 30 ; 102 {ACAD_REACTORS ; 330 2F ; 330 5A ; 102 } ; 100 "
                              "AcDbEntity ; 8 0 ; 100 AcDbLine ; " +
                              ends;
    const std::string original = header("AC1015") + section("ENTITIES", groupsOf(lines)) +
                                 section("OBJECTS", groupsOf(objects)) + group(0, "EOF");
    const auto database = openDrawingFromMemory(original, L"erased", nullptr, quietReading);
    ASSERT_TRUE(database);
    ASSERT_EQ(erase(DatabaseAccess::find(*database, 0x2F)), Acad::eOk);
    const std::string written = saved(*database);
    Records expected = recordsOf(original);
    expected.erase("ENTITIES LINE 2F");
    const auto become = [&](const char* key, std::string_view notation) {
        expected[key] = pairsOf(notation);
    };
    become("OBJECTS GROUP 5A", "0 GROUP ; 5 5A ; 330 D ; 100 AcDbGroup ; 300 two ; 70 0 ; 71 1 ; 340 30");
    become("OBJECTS SORTENTSTABLE 5B",
           "0 SORTENTSTABLE ; 5 5B ; 330 C ; 100 AcDbSortentsTable ; 330 1F ; 331 30 ; 5 2F");
    become("OBJECTS FIELDLIST 5C",
           "0 FIELDLIST ; 5 5C ; 330 C ; 100 AcDbIdSet ; 90 1 ; 330 30 ; 100 AcDbFieldList");
    become("OBJECTS STRANGE 5D", "0 STRANGE ; 5 5D ; 330 C ; 100 AcDbStrange ; 90 2 ; 331 0 ; 331 30");
    std::vector<Pair>& kept = expected.at("ENTITIES LINE 30");
    kept.erase(std::find_if(kept.begin(), kept.end(),
                            [](const Pair& pair) { return pair.code == 330 && pair.value == "2F"; }));
    EXPECT_EQ(differences(expected, recordsOf(written), Strictness::kSame), std::vector<std::string>())
        << written;
}

// A text that looks like an escape comes back as it is.
TEST(Wholeness, aTextThatLooksLikeAnEscapeIsNone) {
    const auto database =
        openDrawingFromMemory(drawingOf("AC1021", "0 TEXT ; 5 2F ; 100 AcDbEntity ; 8 0 ; 100 AcDbText ; 10 "
                                                  "0.0 ; 20 0.0 ; 40 1.0 ; 1 x ; 100 AcDbText"),
                              L"escape", nullptr, quietReading);
    ASSERT_TRUE(database);
    for (const wchar_t* text :
         {L"\\U+00E9", L"a\\U+005Cb", L"\\M+1ABCD", L"\\\\U+0041", L"^J", L"\\U+D800"}) {
        edit<AcDbText>([text](AcDbText& entity) { EXPECT_EQ(entity.setTextString(text), Acad::eOk); })(
            *database, DatabaseAccess::find(*database, 0x2F));
        const auto again = openDrawingFromMemory(saved(*database), L"again", nullptr, quietReading);
        ASSERT_TRUE(again);
        EXPECT_EQ(DatabaseAccess::objectOf<AcDbText>(DatabaseAccess::find(*again, 0x2F))->text(), text);
    }
}
