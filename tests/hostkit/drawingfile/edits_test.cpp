#include "drawinglisting.h"
#include "drawingreader.h"
#include "drawingwriter.h"
#include "recordcompare.h"
#include "sampledrawing.h"

#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "dbarc.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbdictionary.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbsource.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace hostkit;
using namespace drawingtest;

namespace {

// The sample as a file of that form, with groups that no class knows, and read again.
struct EditedDrawing {
    std::string original;
    std::unique_ptr<AcDbDatabase> database;

    explicit EditedDrawing(DrawingVersion version = DrawingVersion::k2010, Kinds kinds = Kinds::kAll) {
        WriteOptions options;
        options.version = version;
        EXPECT_EQ(writeDrawingToMemory(*sampleDrawing(kinds), original, options), Acad::eOk);
        const std::size_t line = original.find("AcDbLine\r\n");
        if (line != std::string::npos) original.insert(line + 10, "999\r\na remark\r\n 99\r\n7\r\n");
        database = openDrawingFromMemory(original, L"edited");
        EXPECT_TRUE(database);
    }
    std::string save() const {
        std::string bytes;
        EXPECT_EQ(writeDrawingToMemory(*database, bytes), Acad::eOk);
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

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string_view::npos;
         place = text.find(part, place + 1))
        ++count;
    return count;
}

} // namespace

TEST(Edits, aChangedEntityKeepsWhatItsClassDoesNotKnow) {
    const EditedDrawing drawing;
    {
        AcDbObjectPointer<AcDbLine> line(drawing.first<AcDbLine>(), AcDb::kForWrite);
        ASSERT_EQ(line->setEndPoint({7, 8, 9}), Acad::eOk);
    }
    const std::string saved = drawing.save();
    EXPECT_EQ(drawing.differencesOf(saved).size(), 1u);
    EXPECT_EQ(countOf(saved, "AcDbLine\r\n999\r\na remark\r\n 99\r\n7\r\n"), 1u);
    EXPECT_EQ(countOf(saved, " 11\r\n7.0\r\n 21\r\n8.0\r\n 31\r\n9.0\r\n"), 1u);
}

// Angles and points of a tilted plane are held in other units and systems: what was not changed must not be
// rounded.
TEST(Edits, unchangedValuesKeepTheirSpelling) {
    EditedDrawing drawing;
    const std::size_t arc = drawing.original.find("AcDbArc\r\n 50\r\n30.0");
    ASSERT_NE(arc, std::string::npos);
    drawing.original.replace(arc, 18, "AcDbArc\r\n 50\r\n+390.000");
    drawing.database = openDrawingFromMemory(drawing.original, L"edited");
    ASSERT_TRUE(drawing.database);
    {
        AcDbObjectPointer<AcDbArc> changed(drawing.first<AcDbArc>(), AcDb::kForWrite);
        ASSERT_EQ(changed->setRadius(51), Acad::eOk);
    }
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
        AcDbObjectPointer<AcDb2dVertex> gone(old->vertices().idAt(0), AcDb::kForWrite);
        ASSERT_EQ(gone->erase(), Acad::eOk);
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
    registerApplication(database, L"NEWAPP");
    const AcDbObjectId added = addToModelSpace(database, new AcDbLine({0, 0, 0}, {3, 4, 0}));
    {
        AcDbObjectPointer<AcDbArc> arc(drawing.first<AcDbArc>(), AcDb::kForWrite);
        ASSERT_EQ(arc->erase(), Acad::eOk);
        AcDbDictionary* root = nullptr;
        ASSERT_EQ(database.getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
        auto* const record = new AcDbXrecord;
        AcDbObjectId id;
        ASSERT_EQ(root->setAt(L"NEW", record, id), Acad::eOk);
        record->close();
        root->close();
    }
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
    const std::size_t current = drawing.original.find("$CLAYER\r\n  8\r\n0\r\n");
    ASSERT_NE(current, std::string::npos);
    drawing.original.replace(current + 14, 1, "B\xC3\xA9ton \xE4\xB8\xAD");
    drawing.database = openDrawingFromMemory(drawing.original, L"edited");
    ASSERT_TRUE(drawing.database);
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(drawing.database->getLayerTable(table, AcDb::kForRead), Acad::eOk);
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(table->getAt(L"B\u00E9ton \u4E2D", layer, AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(layer->setName(L"Concrete"), Acad::eOk);
    layer->close();
    table->close();
    const std::string saved = drawing.save();
    EXPECT_EQ(countOf(saved, "\xE4\xB8\xAD\r\n"), 1u);    // a text has the character too
    EXPECT_EQ(countOf(saved, "  8\r\nConcrete\r\n"), 2u); // the entity and the current layer
    EXPECT_EQ(countOf(saved, "$CLAYER\r\n  8\r\nConcrete\r\n"), 1u);
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
    addToModelSpace(*drawing.database, new AcDbLine({0, 0, 0}, {3, 4, 0}));
    const std::string saved = drawing.save();
    EXPECT_EQ(countOf(saved, "OBJECTS"), 0u);
    AcDbDictionary* root = nullptr;
    ASSERT_EQ(drawing.database->getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
    auto* const record = new AcDbXrecord;
    AcDbObjectId id;
    ASSERT_EQ(root->setAt(L"NEW", record, id), Acad::eOk);
    record->close();
    root->close();
    std::string bytes;
    WriteOptions options;
    options.tellPort = false;
    EXPECT_EQ(writeDrawingToMemory(*drawing.database, bytes, options), Acad::eNotApplicable);
}

TEST(Edits, aFileIsReplacedWholeOrNotAtAll) {
    const EditedDrawing drawing;
    WriteOptions options;
    options.tellPort = false;
    WriteReport report;
    EXPECT_EQ(writeDrawing(*drawing.database, L"/nowhere/at/all.dxf", options, &report),
              Acad::eFileAccessErr);
    EXPECT_EQ(report.message.rfind(L"/nowhere/at/all.dxf: ", 0), 0u);
    const std::string file = ::testing::TempDir() + "edits_test.dxf";
    const std::wstring wideFile(file.begin(), file.end());
    ASSERT_EQ(writeDrawing(*drawing.database, wideFile, options), Acad::eOk);
    EXPECT_TRUE(openDrawing(wideFile));
    {
        AcDbObjectPointer<AcDbLine> line(drawing.first<AcDbLine>(), AcDb::kForWrite);
        ASSERT_EQ(line->setThickness(std::numeric_limits<double>::infinity()), Acad::eInvalidInput);
    }
    std::remove(file.c_str());
}

TEST(Edits, anObjectOpenForWriteStopsTheSave) {
    const EditedDrawing drawing;
    AcDbObjectPointer<AcDbLine> line(drawing.first<AcDbLine>(), AcDb::kForWrite);
    std::string bytes;
    WriteOptions options;
    options.tellPort = false;
    EXPECT_EQ(writeDrawingToMemory(*drawing.database, bytes, options), Acad::eWasOpenForWrite);
}
