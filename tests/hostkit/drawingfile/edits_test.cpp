#include "drawingfiles.h"
#include "drawinglisting.h"
#include "drawingparts.h"
#include "recordcompare.h"
#include "sampledrawing.h"

#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "dbaccess.h"
#include "dbarc.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dblayout.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "temporaryfolder.h"

#include <algorithm>
#include <limits>

using namespace hostkit;
using namespace drawingtest;

namespace {

// The sample as a file of that form, with groups that no class knows, and read again.
struct EditedDrawing {
    std::string original;
    std::unique_ptr<AcDbDatabase> database;

    explicit EditedDrawing(DrawingVersion version = DrawingVersion::k2010, Kinds kinds = Kinds::kAll)
        : original(drawingtest::saved(*sampleDrawing(kinds), version)) {
        const std::size_t line = original.find("AcDbLine\r\n");
        if (line != std::string::npos) original.insert(line + 10, "999\r\na remark\r\n 99\r\n7\r\n");
        readAgain();
    }
    void readAgain() {
        database = openDrawingFromMemory(original, L"edited");
        EXPECT_TRUE(database);
    }
    void replace(const std::string& from, const std::string& to) {
        const std::size_t place = original.find(from);
        ASSERT_NE(place, std::string::npos) << from;
        original.replace(place, from.size(), to);
        readAgain();
    }
    std::string save() const {
        const std::string bytes = drawingtest::saved(*database);
        EXPECT_TRUE(openDrawingFromMemory(bytes, L"saved"));
        return bytes;
    }
    /// The first entity of that class in model space.
    template <class T>
    AcDbObjectId first() const {
        AcDbObjectPointer<AcDbBlockTableRecord> space(database->modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId id : space->entities())
            if (id.objectClass()->isDerivedFrom(T::desc())) return id;
        ADD_FAILURE() << "no such entity";
        return {};
    }
    std::vector<std::string> differencesOf(const std::string& saved) const {
        return differences(recordsOf(original), recordsOf(saved), Strictness::kSame);
    }
};

} // namespace

TEST(Edits, aChangedEntityKeepsWhatItsClassDoesNotKnow) {
    const EditedDrawing drawing;
    change<AcDbLine>(drawing.first<AcDbLine>(), [](AcDbLine& line) {
        EXPECT_EQ(line.setEndPoint({7, 8, 9}), Acad::eOk);
    });
    const std::string saved = drawing.save();
    EXPECT_EQ(drawing.differencesOf(saved).size(), 1u);
    EXPECT_EQ(countOf(saved, "AcDbLine\r\n999\r\na remark\r\n 99\r\n7\r\n"), 1u);
    EXPECT_EQ(countOf(saved, " 11\r\n7.0\r\n 21\r\n8.0\r\n 31\r\n9.0\r\n"), 1u);
}

// Angles and points of a tilted plane are held in other units and systems: what was not changed must not be
// rounded.
TEST(Edits, unchangedValuesKeepTheirSpelling) {
    EditedDrawing drawing;
    drawing.replace("AcDbArc\r\n 50\r\n30.0", "AcDbArc\r\n 50\r\n+390.000");
    change<AcDbArc>(drawing.first<AcDbArc>(), [](AcDbArc& arc) { EXPECT_EQ(arc.setRadius(51), Acad::eOk); });
    const std::string saved = drawing.save();
    EXPECT_EQ(drawing.differencesOf(saved).size(), 1u);
    EXPECT_EQ(countOf(saved, " 50\r\n+390.000\r\n"), 1u);
    EXPECT_EQ(countOf(saved, " 40\r\n51.0\r\n"), 1u);
}

TEST(Edits, verticesComeAndGo) {
    const EditedDrawing drawing;
    {
        AcDbObjectPointer<AcDbPolyline> polyline(drawing.first<AcDbPolyline>(), AcDb::kForWrite);
        ASSERT_EQ(polyline->removeVertexAt(1), Acad::eOk);
        ASSERT_EQ(polyline->addVertexAt(2, {5, 6}, 0.75), Acad::eOk);
        ASSERT_EQ(polyline->addVertexAt(3, {8, 9}), Acad::eOk);
        AcDbObjectPointer<AcDb2dPolyline> old(drawing.first<AcDb2dPolyline>(), AcDb::kForWrite);
        auto* const vertex = new AcDb2dVertex({200, 300, 0}, 0.125);
        ASSERT_EQ(old->appendVertex(vertex), Acad::eOk);
        vertex->close();
        ASSERT_EQ(erase(old->vertices().idAt(0)), Acad::eOk);
    }
    const auto again = openDrawingFromMemory(drawing.save(), L"again");
    const DrawingListing listing = listDrawing(*again);
    for (const ListedEntity& entity : listing.entities) {
        if (entity.type == L"LWPOLYLINE") {
            EXPECT_EQ(entity.vertices.size(), 4u);
            EXPECT_EQ(entity.vertices[2], (std::array<double, 4>{5, 6, 3.5, 0.75}));
        }
        if (entity.type == L"POLYLINE" && entity.vertices[0][2] != 0.0) {
            ASSERT_EQ(entity.vertices.size(), 3u);
            EXPECT_EQ(entity.vertices[0][0], 100.0);
            EXPECT_EQ(entity.vertices[2][3], 0.125);
        }
    }
}

TEST(Edits, newAndErasedRecordsFindTheirPlace) {
    const EditedDrawing drawing;
    AcDbDatabase& database = *drawing.database;
    addRecord<AcDbRegAppTable>(database, L"NEWAPP");
    const AcDbObjectId added = appendToModelSpace(database, new AcDbLine({0, 0, 0}, {3, 4, 0}));
    ASSERT_EQ(erase(drawing.first<AcDbArc>()), Acad::eOk);
    enter(database.namedObjectsDictionaryId(), L"NEW");
    const std::string saved = drawing.save();
    EXPECT_EQ(countOf(saved, "NEWAPP"), 1u);
    const Records before = recordsOf(drawing.original);
    const Records after = recordsOf(saved);
    EXPECT_EQ(after.size(), before.size() + 2); // application, line, record; without the arc
    const auto again = openDrawingFromMemory(saved, L"again");
    AcDbObjectId id;
    EXPECT_EQ(again->getAcDbObjectId(id, false, added.handle()), Acad::eOk);
    EXPECT_GT(again->handseed().value(), added.handle().value());
    AcDbObjectPointer<AcDbDictionary> root(again->namedObjectsDictionaryId(), AcDb::kForRead);
    EXPECT_TRUE(root->has(L"NEW"));
}

TEST(Edits, aNewNameReachesAllThatUseIt) {
    EditedDrawing drawing;
    drawing.replace("$CLAYER\r\n  8\r\n0\r\n", "$CLAYER\r\n  8\r\nB\xC3\xA9ton \xE4\xB8\xAD\r\n");
    change<AcDbLayerTableRecord>(drawing.database->clayer(), [](AcDbLayerTableRecord& layer) {
        EXPECT_STREQ(layer.name().c_str(), L"B\u00E9ton \u4E2D");
        EXPECT_EQ(layer.setName(L"Concrete"), Acad::eOk);
    });
    const std::string saved = drawing.save();
    EXPECT_EQ(countOf(saved, "\xE4\xB8\xAD\r\n"), 0u);    // nothing has the old name beside the new one
    EXPECT_EQ(countOf(saved, "  8\r\nConcrete\r\n"), 2u); // the entity and the current layer
    EXPECT_EQ(countOf(saved, "$CLAYER\r\n  8\r\nConcrete\r\n"), 1u);
}

TEST(Edits, aNameThatPassesFromBlockToBlockIsEachOnesOwn) {
    const auto drawing =
        openDrawingFromMemory(section("BLOCKS", block("A", line()) + block("B", line() + line())) +
                                  entities(groups({{0, "INSERT"}, {8, "0"}, {2, "A"}})),
                              L"blocks", nullptr, quietReading);
    const auto idOf = [](const AcDbDatabase& database, const wchar_t* name) {
        return DatabaseAccess::objectOf<AcDbBlockTable>(database.blockTableId())->find(name);
    };
    for (const auto& [from, to] : {std::pair(L"B", L"C"), std::pair(L"A", L"B")})
        change<AcDbBlockTableRecord>(idOf(*drawing, from), [&](AcDbBlockTableRecord& block) {
            EXPECT_EQ(block.setName(to), Acad::eOk);
        });
    const auto again = openDrawingFromMemory(saved(*drawing), L"again", nullptr, quietReading);
    ASSERT_TRUE(again);
    for (const auto& [name, count] : {std::pair(L"B", 1u), std::pair(L"C", 2u)}) {
        const auto* const found = DatabaseAccess::objectOf<AcDbBlockTableRecord>(idOf(*again, name));
        ASSERT_TRUE(found);
        EXPECT_EQ(found->entities().size(), count);
    }
    EXPECT_EQ(listDrawing(*again).entities.front().name, L"B");
}

TEST(Edits, attributesAreAddedToAReferenceWithoutAny) {
    const EditedDrawing drawing;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.database->modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId id : space->entities()) {
            AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
            if (!reference) continue;
            auto* const attribute = new AcDbAttribute;
            attribute->setTag(L"ADDED");
            attribute->setTextString(L"x");
            ASSERT_EQ(reference->appendAttribute(attribute), Acad::eOk);
            attribute->close();
        }
    }
    const auto again = openDrawingFromMemory(drawing.save(), L"again");
    const DrawingListing listing = listDrawing(*again);
    EXPECT_EQ(std::count_if(listing.entities.begin(), listing.entities.end(),
                            [](const ListedEntity& entity) { return entity.name == L"ADDED"; }),
              2);
}

TEST(Edits, anR12DrawingRefusesWhatItCannotHold) {
    const EditedDrawing drawing(DrawingVersion::kR12, Kinds::kOfR12);
    appendToModelSpace(*drawing.database, new AcDbLine({0, 0, 0}, {3, 4, 0}));
    EXPECT_EQ(countOf(drawing.save(), "OBJECTS"), 0u);
    enter(drawing.database->namedObjectsDictionaryId(), L"NEW");
    std::string bytes;
    EXPECT_EQ(writeDrawingToMemory(*drawing.database, bytes, quietWriting), Acad::eNotApplicable);
}

// A file with its spaces but without layouts gets them with the first object that its root names. The record
// of each space then names its layout, as other programs ask for.
TEST(Edits, spacesNameTheLayoutsThatComeWithASave) {
    std::string records;
    std::string blocks;
    for (const auto& [handle, name] : {std::pair("1F", "*Model_Space"), std::pair("1B", "*Paper_Space")}) {
        records += groups({{0, "BLOCK_RECORD"},
                           {5, handle},
                           {100, "AcDbSymbolTableRecord"},
                           {100, "AcDbBlockTableRecord"},
                           {2, name}});
        blocks += block(name, "");
    }
    const std::string table =
        groups({{0, "TABLE"}, {2, "BLOCK_RECORD"}, {70, "2"}}) + records + group(0, "ENDTAB");
    const auto database = openDrawingFromMemory(header("AC1024") + section("TABLES", table) +
                                                    section("BLOCKS", blocks) + entities(line()),
                                                L"without layouts");
    ASSERT_TRUE(database);
    EXPECT_EQ(countOf(saved(*database), "AcDbLayout"), 0u) << "nothing was changed";
    enter(database->namedObjectsDictionaryId(), L"NEW");
    const std::string withEntry = saved(*database);
    EXPECT_EQ(countOf(withEntry, "AcDbLayout"), 0u) << "layouts that nobody changed stay out";
    EXPECT_EQ(countOf(withEntry, "ACAD_LAYOUT"), 0u);
    const AcDbObjectId layoutId =
        AcDbObjectPointer<AcDbBlockTableRecord>(database->modelSpaceId(), AcDb::kForRead)->getLayoutId();
    change<AcDbLayout>(layoutId,
                       [](AcDbLayout& layout) { EXPECT_EQ(layout.setLayoutName(L"Plan"), Acad::eOk); });
    const Records found = recordsOf(saved(*database));
    wchar_t handleText[17] = {};
    ASSERT_TRUE(layoutId.handle().getIntoAsciiBuffer(handleText));
    const std::string handle = narrow(handleText);
    EXPECT_TRUE(found.contains("OBJECTS LAYOUT " + handle));
    const std::vector<Pair>& record = found.at("TABLES BLOCK_RECORD 1F");
    EXPECT_EQ(std::count_if(record.begin(), record.end(),
                            [&](const Pair& pair) { return pair.code == 340 && pair.value == handle; }),
              1);
}

TEST(Edits, aFileIsReplacedWholeOrNotAtAll) {
    const EditedDrawing drawing;
    WriteReport report;
    EXPECT_EQ(writeDrawing(*drawing.database, L"/nowhere/at/all.dxf", quietWriting, &report),
              Acad::eFileAccessErr);
    EXPECT_EQ(report.message.rfind(L"/nowhere/at/all.dxf: ", 0), 0u);
    const TemporaryFolder folder;
    const std::wstring file = wide(folder / "edits_test.dxf");
    ASSERT_EQ(writeDrawing(*drawing.database, file, quietWriting), Acad::eOk);
    EXPECT_TRUE(openDrawing(file));
    AcDbObjectPointer<AcDbLine> line(drawing.first<AcDbLine>(), AcDb::kForWrite);
    ASSERT_EQ(line->setThickness(std::numeric_limits<double>::infinity()), Acad::eInvalidInput);
}

TEST(Edits, anObjectOpenForWriteStopsTheSave) {
    const EditedDrawing drawing;
    AcDbObjectPointer<AcDbLine> line(drawing.first<AcDbLine>(), AcDb::kForWrite);
    std::string bytes;
    EXPECT_EQ(writeDrawingToMemory(*drawing.database, bytes, quietWriting), Acad::eWasOpenForWrite);
}
