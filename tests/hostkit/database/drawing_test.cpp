// Ids, handles, ownership and the default drawing.

#include "drawingparts.h"

#include "dbaccess.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dblayout.h"
#include "headervariables.h"

#include <limits>
#include <random>
#include <unordered_map>

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;

TEST(Drawing, ANewOneHasWhatEveryDrawingHas) {
    AcDbDatabase database;
    EXPECT_EQ(0, database.numOpenObjects());
    for (const AcDbObjectId id : {database.blockTableId(),       database.layerTableId(),
                                  database.textStyleTableId(),   database.linetypeTableId(),
                                  database.viewTableId(),        database.UCSTableId(),
                                  database.viewportTableId(),    database.regAppTableId(),
                                  database.dimStyleTableId(),    database.namedObjectsDictionaryId(),
                                  database.layoutDictionaryId(), database.groupDictionaryId(),
                                  database.byLayerLinetype(),    database.byBlockLinetype(),
                                  database.continuousLinetype(), database.layerZero(),
                                  database.modelSpaceId(),       database.paperSpaceId(),
                                  database.textStyleStandard(),  database.dimStyleStandard()}) {
        EXPECT_TRUE(id.isResident());
        EXPECT_EQ(&database, id.database());
    }
    EXPECT_EQ(database.layerZero(), database.clayer());
    EXPECT_EQ(database.modelSpaceId(), database.currentSpaceId());
    for (const AcDbObjectId space : {database.modelSpaceId(), database.paperSpaceId()}) {
        const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(space);
        const auto* layout = DatabaseAccess::objectOf<AcDbLayout>(block->getLayoutId());
        ASSERT_NE(nullptr, layout);
        EXPECT_EQ(space, layout->getBlockTableRecordId());
        EXPECT_EQ(database.layoutDictionaryId(), layout->ownerId());
        EXPECT_EQ(Acad::eCannotBeErasedByCaller, erase(space));
    }
    const Adesk::Int32 count = database.approxNumObjects();
    DatabaseAccess::completeDrawing(database);
    EXPECT_EQ(count, database.approxNumObjects()) << "completing a complete drawing adds nothing";
}

TEST(Drawing, AnEmptyOneHasNothing) {
    AcDbDatabase database(false);
    EXPECT_EQ(0, database.approxNumObjects());
    EXPECT_TRUE(database.layerZero().isNull() && database.clayer().isNull());
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(Acad::eNullObjectId, database.getSymbolTable(table, AcDb::kForRead));
    AcDbDictionary* root = nullptr;
    EXPECT_EQ(Acad::eNullObjectId, database.getNamedObjectsDictionary(root));
}

TEST(Drawing, HandlesLeadToIdsAndAreNeverGivenTwice) {
    AcDbDatabase database(false);
    std::unordered_map<Adesk::UInt64, AcDbObjectId> known;
    std::mt19937_64 random(20260);
    for (int i = 0; i < 20000; ++i) {
        // Runs, multiples of large powers of two and scattered ones.
        const Adesk::UInt64 handle = i % 3 == 0   ? 100 + static_cast<Adesk::UInt64>(i)
                                     : i % 3 == 1 ? static_cast<Adesk::UInt64>(i) << 40
                                                  : random() >> 1;
        const AcDbObjectId id = DatabaseAccess::add(database, new AcDbPoint, handle, AcDbObjectId());
        if (known.contains(handle)) continue;
        ASSERT_FALSE(id.isNull());
        EXPECT_EQ(handle, id.handle().value());
        known[handle] = id;
    }
    for (const auto& [handle, id] : known) {
        AcDbObjectId found;
        ASSERT_EQ(Acad::eOk, database.getAcDbObjectId(found, false, AcDbHandle(handle)));
        EXPECT_EQ(id, found);
    }
    const AcDbHandle seed = database.handseed();
    for (const auto& [handle, id] : known) EXPECT_LT(handle, seed.value());
    AcDbPoint taken;
    EXPECT_TRUE(DatabaseAccess::add(database, &taken, known.begin()->first, AcDbObjectId()).isNull());
    AcDbObjectId missing = known.begin()->second;
    EXPECT_EQ(Acad::eUnknownHandle, database.getAcDbObjectId(missing, false, seed));
    EXPECT_EQ(Acad::eNullHandle, database.getAcDbObjectId(missing, true, AcDbHandle()));
    EXPECT_EQ(known.begin()->second, missing);
}

TEST(Drawing, HandlesNearTheTopLeaveRoomForNewObjects) {
    constexpr AcDbHandleValue largest = std::numeric_limits<AcDbHandleValue>::max();
    constexpr AcDbHandleValue highest = 0xFFFFFFFEFFFFFFFF;
    const auto next = [](AcDbDatabase& database) {
        AcDbObjectId id;
        auto* point = new AcDbPoint;
        EXPECT_EQ(Acad::eOk, database.addAcDbObject(id, point));
        point->close();
        EXPECT_EQ(id, DatabaseAccess::find(database, id.handle().value()));
        return id.handle().value();
    };
    AcDbDatabase named(false);
    DatabaseAccess::add(named, new AcDbPoint, largest, AcDbObjectId());
    DatabaseAccess::reserve(named, highest + 1);
    DatabaseAccess::add(named, new AcDbPoint, 1, AcDbObjectId());
    EXPECT_EQ(2u, named.handseed().value());
    EXPECT_EQ(Acad::eOutOfRange, named.setHandseed(AcDbHandle(highest + 1)));
    EXPECT_EQ(Acad::eOutOfRange, named.setHandseed(AcDbHandle(largest)));
    EXPECT_EQ(Acad::eOk, named.setHandseed(AcDbHandle(1)));
    EXPECT_EQ(2u, next(named)) << "never lowered";
    EXPECT_EQ(Acad::eOk, named.setHandseed(AcDbHandle(highest)));
    DatabaseAccess::reserve(named, 4);
    EXPECT_EQ(highest, next(named));
    EXPECT_EQ(highest + 2, named.handseed().value()) << "the one before is promised";
    for (const AcDbHandleValue free : {3u, 5u, 6u}) EXPECT_EQ(free, next(named));
    EXPECT_EQ(highest + 2, named.handseed().value());
    EXPECT_TRUE(DatabaseAccess::add(named, std::make_unique<AcDbPoint>().get(), largest, {}).isNull());
}

TEST(Drawing, BlocksTakeEntitiesAndRefuseOthers) {
    AcDbDatabase database;
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(Acad::eNullEntityPointer, space->appendAcDbEntity(id, nullptr));
    auto* line = new AcDbLine({0, 0, 0}, {1, 1, 1});
    ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(id, line));
    EXPECT_EQ(Acad::eAlreadyInDb, space->appendAcDbEntity(id, line));
    EXPECT_EQ(database.layerZero(), line->layerId()) << "an entity without a layer gets the current one";
    EXPECT_EQ(database.modelSpaceId(), line->blockId());
    EXPECT_EQ(line->ownerId(), line->blockId());
    line->close();
    space.close();
    AcDbObjectPointer<AcDbBlockTableRecord> reading(database.modelSpaceId(), AcDb::kForRead);
    AcDbLine refused;
    EXPECT_EQ(Acad::eNotOpenForWrite, reading->appendAcDbEntity(id, &refused));
    AcDbBlockTableRecord loose;
    EXPECT_EQ(Acad::eNoDatabase, loose.appendAcDbEntity(id, &refused));
    EXPECT_EQ(Acad::eNotOpenForWrite, reading->setOrigin({1, 2, 3}));
}

TEST(Drawing, EntitiesLeaveTheLooksOfAnotherDrawingBehind) {
    AcDbDatabase from, to;
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    line->setDatabaseDefaults(&from);
    EXPECT_EQ(Acad::eOk, line->setLinetype(from.continuousLinetype()));
    const AcDbObjectId id = appendToModelSpace(to, line);
    EXPECT_EQ(to.layerZero(), line->layerId());
    EXPECT_TRUE(line->linetypeId().isNull());
    AcDbObjectPointer<AcDbLine> writing(id, AcDb::kForWrite);
    EXPECT_EQ(Acad::eInvalidInput, writing->setLayer(from.layerZero()));
    EXPECT_EQ(Acad::eInvalidInput, writing->setLinetype(from.continuousLinetype()));
    EXPECT_EQ(to.layerZero(), line->layerId());
}

TEST(Drawing, WalkingABlockSkipsErasedEntitiesAndMeetsNewOnes) {
    AcDbDatabase database;
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 5; ++i) ids.push_back(appendToModelSpace(database, new AcDbPoint({double(i), 0, 0})));
    for (const std::size_t i : {0u, 2u, 4u}) EXPECT_EQ(Acad::eOk, erase(ids[i]));
    const auto walk = [&](bool forward, bool skipErased) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
        AcDbBlockTableRecordIterator* iterator = nullptr;
        EXPECT_EQ(Acad::eOk, space->newIterator(iterator, forward, skipErased));
        std::vector<double> found;
        for (; !iterator->done(); iterator->step(forward, skipErased)) {
            AcDbEntity* entity = nullptr;
            EXPECT_EQ(Acad::eOk, iterator->getEntity(entity, AcDb::kForRead, !skipErased));
            found.push_back(AcDbPoint::cast(entity)->position().x);
            entity->close();
        }
        AcDbObjectId untouched = ids[1];
        EXPECT_EQ(Acad::eInvalidIndex, iterator->getEntityId(untouched));
        EXPECT_EQ(ids[1], untouched);
        delete iterator;
        return found;
    };
    EXPECT_EQ((std::vector<double>{1, 3}), walk(true, true));
    EXPECT_EQ((std::vector<double>{3, 1}), walk(false, true));
    EXPECT_EQ((std::vector<double>{0, 1, 2, 3, 4}), walk(true, false));
    EXPECT_EQ((std::vector<double>{4, 3, 2, 1, 0}), walk(false, false));
    AcDbBlockTableRecordIterator* iterator = nullptr;
    AcDbObjectPointer<AcDbBlockTableRecord>(database.modelSpaceId(), AcDb::kForRead)->newIterator(iterator);
    ASSERT_EQ(Acad::eOk, iterator->seek(ids[3]));
    const AcDbObjectId late = appendToModelSpace(database, new AcDbPoint({9, 0, 0}));
    iterator->step();
    AcDbObjectId found;
    EXPECT_EQ(Acad::eOk, iterator->getEntityId(found));
    EXPECT_EQ(late, found);
    EXPECT_EQ(Acad::eKeyNotFound, iterator->seek(database.layerZero()));
    delete iterator;
}

TEST(Drawing, PartsLiveAndDieWithWhatOwnsThem) {
    AcDbDatabase database;
    const AcGePoint3dArray points = pointsOf({{0, 0, 7}, {1, 1, 7}, {2, 0, 7}, {3, 1, 7}});
    auto* polyline = new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, Adesk::kFalse);
    EXPECT_EQ(4u, polyline->vertices().count());
    EXPECT_TRUE(polyline->vertices().idAt(0).isNull());
    EXPECT_NE(nullptr, std::unique_ptr<AcDbObjectIterator>(polyline->vertexIterator())->entity());
    const AcDbObjectId id = appendToModelSpace(database, polyline);
    const hostkit::SubentityList& vertices = polyline->vertices();
    ASSERT_EQ(4u, vertices.count());
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(id, vertices.at(i)->ownerId());
        EXPECT_EQ(database.modelSpaceId(), vertices.at(i)->blockId());
        EXPECT_EQ(database.layerZero(), vertices.at(i)->layerId());
    }
    EXPECT_EQ(0, database.numOpenObjects());
    ASSERT_EQ(Acad::eOk, erase(vertices.idAt(1)));
    ASSERT_EQ(Acad::eOk, erase(id));
    for (std::size_t i = 0; i < 4; ++i) EXPECT_TRUE(vertices.isErasedAt(i));
    ASSERT_EQ(Acad::eOk, erase(id, false));
    std::unique_ptr<AcDbObjectIterator> iterator(polyline->vertexIterator());
    std::vector<AcDbObjectId> found;
    for (; !iterator->done(); iterator->step()) {
        EXPECT_EQ(nullptr, iterator->entity()) << "a resident vertex is opened by its id";
        found.push_back(iterator->objectId());
    }
    EXPECT_EQ((std::vector<AcDbObjectId>{vertices.idAt(0), vertices.idAt(2), vertices.idAt(3)}), found)
        << "the vertex that was erased by itself stays erased";
    iterator->start(false);
    EXPECT_EQ(vertices.idAt(3), iterator->objectId());
    iterator->step(true);
    EXPECT_EQ(vertices.idAt(2), iterator->objectId());
    EXPECT_TRUE(iterator->setPosition(vertices.idAt(0)));
    EXPECT_FALSE(iterator->setPosition(id));
    const std::unique_ptr<AcDb2dPolyline> copy(AcDb2dPolyline::cast(polyline->clone()));
    EXPECT_EQ(3u, copy->vertices().count());
    EXPECT_FALSE(copy->vertices().isResident());
}

TEST(Drawing, LookIsHandedOnToParts) {
    AcDbDatabase database;
    const AcGePoint3dArray points = pointsOf({{0, 0, 0}, {1, 0, 0}});
    auto* polyline = new AcDb3dPolyline(AcDb::k3dSimplePoly, points, Adesk::kFalse);
    const AcDbObjectId id = appendToModelSpace(database, polyline);
    AcDbObjectPointer<AcDb3dPolyline> writing(id, AcDb::kForWrite);
    AcDbObjectPointer<AcDbEntity> busy(writing->vertices().idAt(1), AcDb::kForRead);
    EXPECT_EQ(Acad::eOk, writing->setColorIndex(3));
    EXPECT_EQ(3, writing->vertices().at(0)->colorIndex());
    EXPECT_EQ(256, writing->vertices().at(1)->colorIndex()) << "open elsewhere";
    EXPECT_EQ(Acad::eOk, writing->setColorIndex(4, false));
    EXPECT_EQ(3, writing->vertices().at(0)->colorIndex());
}

TEST(Drawing, PropertiesAreCheckedAndDefaultsTaken) {
    AcDbDatabase database;
    AcDbHostApplicationServices services;
    AcDbLine line;
    EXPECT_EQ(Acad::eNoDatabase, line.setLayer(L"0"));
    const hostkit::ScopedDatabaseServices current(services);
    services.setWorkingDatabase(&database);
    EXPECT_EQ(Acad::eKeyNotFound, line.setLayer(L"missing"));
    EXPECT_EQ(Acad::eOk, line.setLayer(L"0"));
    EXPECT_EQ(Acad::eNotThatKindOfClass, line.setLayer(database.continuousLinetype()));
    EXPECT_EQ(Acad::eNotThatKindOfClass, line.setLinetype(database.layerZero()));
    EXPECT_EQ(Acad::eOk, line.setLinetype(L"CONTINUOUS"));
    EXPECT_EQ(Acad::eOutOfRange, line.setColorIndex(258));
    EXPECT_EQ(Acad::eInvalidInput, line.setLineWeight(static_cast<AcDb::LineWeight>(17)));
    EXPECT_EQ(Acad::eInvalidInput, line.setLinetypeScale(0.0));
    EXPECT_EQ(database.layerZero(), line.layerId());
    EXPECT_EQ(database.continuousLinetype(), line.linetypeId());

    const AcDbObjectId steelId = addRecord<AcDbLayerTable>(database, L"Steel");
    ASSERT_EQ(Acad::eOk, database.setClayer(steelId));
    EXPECT_EQ(Acad::eInvalidInput, database.setClayer(database.continuousLinetype()));
    AcCmColor red;
    red.setColorIndex(1);
    database.setCecolor(red);
    AcDbLine fresh;
    fresh.setDatabaseDefaults();
    EXPECT_EQ(steelId, fresh.layerId());
    EXPECT_EQ(1, fresh.colorIndex());
    EXPECT_EQ(database.byLayerLinetype(), fresh.linetypeId());
    AcDbObjectPointer<AcDbLayerTableRecord> renamed(steelId, AcDb::kForWrite);
    EXPECT_EQ(Acad::eOk, renamed->setName(L"Bewehrung"));
    EXPECT_EQ(steelId, database.clayer()) << "the current layer follows its new name";
    EXPECT_EQ(Acad::eCannotBeErasedByCaller, renamed->erase());
    EXPECT_EQ(Acad::eNotApplicable, renamed->setIsFrozen(true));
}

TEST(Drawing, AWorkingDatabaseThatGoesIsForgotten) {
    AcDbHostApplicationServices outer, inner;
    const hostkit::ScopedDatabaseServices one(outer);
    {
        const hostkit::ScopedDatabaseServices two(inner);
        AcDbDatabase database;
        inner.setWorkingDatabase(&database);
        EXPECT_EQ(&database, hostkit::orWorkingDatabase(nullptr));
    }
    EXPECT_EQ(nullptr, inner.workingDatabase());
    EXPECT_EQ(&outer, acdbHostApplicationServices());
}

TEST(Drawing, HeaderVariablesKeepOrderKindAndCode) {
    hostkit::HeaderVariables header;
    header.put(L"ACADVER").groups.appendText(1, L"AC1015");
    header.put(L"CELWEIGHT").groups.appendInteger(370, -1);
    const double corner[] = {1, 2, 3};
    header.put(L"EXTMIN").groups.appendPoint(10, corner);
    header.setInteger(L"CELWEIGHT", 25);
    header.setReal(L"ANGBASE", 0.5, 50);
    ASSERT_EQ(4u, header.all().size());
    EXPECT_EQ(L"CELWEIGHT", header.all()[1].name);
    hostkit::GroupWalker walker(header.all()[1].groups);
    AcDbDxfGroup group;
    ASSERT_TRUE(walker.next(group));
    EXPECT_EQ(370, group.code);
    EXPECT_EQ(25, group.integer);
    EXPECT_TRUE(header.all()[1].modified);
    EXPECT_FALSE(header.all()[0].modified);
    EXPECT_EQ(AcGePoint3d(1, 2, 3), header.point(L"EXTMIN"));
    EXPECT_EQ(0.5, header.real(L"ANGBASE"));
    EXPECT_EQ(8.0, header.real(L"ACADVER", 8.0)) << "a value of another kind is none";
    EXPECT_EQ(L"x", header.text(L"CELWEIGHT", L"x"));
}

} // namespace
