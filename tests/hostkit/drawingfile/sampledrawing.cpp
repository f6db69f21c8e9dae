#include "sampledrawing.h"

#include "dbdictionary.h"
#include "dbdim.h"
#include "dbellipse.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbminsert.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbsymtb.h"
#include "dbxline.h"
#include "dbxrecrd.h"

#include "adsdef.h"

#include <gtest/gtest.h>

namespace drawingtest {

namespace {

constexpr double pi = 3.14159265358979323846;

AcDbObjectId addBlock(AcDbDatabase& database) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(database.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* const block = new AcDbBlockTableRecord;
    EXPECT_EQ(block->setName(L"Column"), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, block), Acad::eOk);
    for (AcDbEntity* entity :
         {static_cast<AcDbEntity*>(new AcDbLine({0, 0, 0}, {300, 0, 0})),
          static_cast<AcDbEntity*>(new AcDbCircle({150, 150, 0}, AcGeVector3d::kZAxis, 100))}) {
        EXPECT_EQ(block->appendAcDbEntity(entity), Acad::eOk);
        entity->close();
    }
    block->setOrigin({10, 20, 0});
    block->close();
    table->close();
    return id;
}

void addLayer(AcDbDatabase& database) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(database.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* const layer = new AcDbLayerTableRecord;
    layer->setName(L"B\u00E9ton \u4E2D");
    AcCmColor color;
    color.setColorIndex(3);
    layer->setColor(color);
    layer->setIsOff(true);
    EXPECT_EQ(table->add(layer), Acad::eOk);
    layer->close();
    table->close();
}

void addReference(AcDbDatabase& database, AcDbObjectId block) {
    auto* const reference = new AcDbBlockReference;
    reference->setBlockTableRecord(block);
    reference->setPosition({1000, 2000, 0});
    reference->setScaleFactors({1, -1, 1});
    reference->setRotation(pi / 6);
    auto* const attribute = new AcDbAttribute;
    attribute->setTag(L"NUMBER");
    attribute->setTextString(L"C^1\n2");
    attribute->setHeight(25);
    attribute->setPosition({1000, 2050, 0});
    reference->appendAttribute(attribute);
    addToModelSpace(database, reference);
    auto* const grid = new AcDbMInsertBlock;
    grid->setBlockTableRecord(block);
    grid->setColumns(3);
    grid->setRows(2);
    grid->setColumnSpacing(500);
    grid->setRowSpacing(600);
    addToModelSpace(database, grid);
}

void addOldKinds(AcDbDatabase& database) {
    addToModelSpace(database, new AcDbLine({0, 0, 0}, {1000.1, -2e-7, 1e20}));
    addToModelSpace(database, new AcDbArc({1, 2, 3}, 50, pi / 6, pi));
    addToModelSpace(database, new AcDbArc({5, 6, 7}, AcGeVector3d(0, 0.6, 0.8), 50, pi / 6, pi));
    addToModelSpace(database, new AcDbPoint({7, 8, 9}));
    addToModelSpace(database, new AcDbText({10, 20, 0}, L"\u00D8 12 \u4E2D %%c", database.textStyleStandard(),
                                           25, pi / 4));
    AcGePoint3dArray points;
    for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0), AcGePoint3d(100, 50, 0)})
        points.append(point);
    AcGeDoubleArray bulges;
    for (const double bulge : {0.0, 0.5, -0.25}) bulges.append(bulge);
    addToModelSpace(database, new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 12.5, true, 1, 2, &bulges));
    addToModelSpace(database, new AcDb3dPolyline(AcDb::k3dSimplePoly, points, false));
    addToModelSpace(database, new AcDbSolid(points[0], points[1], points[2], points[2]));
    addToModelSpace(database, new AcDbTrace(points[0], points[1], points[2], points[2]));
    addToModelSpace(database, new AcDbFace(points[0], points[1], points[2], points[2]));
    auto* const dimension = new AcDbDimension(AcDbDimension::kAligned);
    dimension->setPointOf(10, {0, 100, 0});
    dimension->setPointOf(13, {0, 0, 0});
    dimension->setPointOf(14, {100, 0, 0});
    dimension->setDimensionText(L"<> mm");
    addToModelSpace(database, dimension);
}

void addNewKinds(AcDbDatabase& database) {
    auto* const polyline = new AcDbPolyline;
    polyline->addVertexAt(0, {0, 0}, 0.5);
    polyline->addVertexAt(1, {100, 0}, 0, 1, 2);
    polyline->addVertexAt(2, {100, 100});
    polyline->setClosed(true);
    polyline->setElevation(3.5);
    addToModelSpace(database, polyline);
    addToModelSpace(database, new AcDbEllipse({0, 0, 0}, AcGeVector3d::kZAxis, {100, 0, 0}, 0.5, 0, pi));
    AcGePoint3dArray points;
    AcGeDoubleArray knots;
    AcGeDoubleArray weights;
    for (int place = 0; place < 4; ++place) points.append({place * 10.0, place % 2 * 5.0, 0});
    for (const double knot : {0., 0., 0., 0., 1., 1., 1., 1.}) knots.append(knot);
    addToModelSpace(database, new AcDbSpline(3, false, false, false, points, knots, weights));
    auto* const ray = new AcDbRay;
    ray->setUnitDir({1, 1, 0});
    addToModelSpace(database, ray);
    addToModelSpace(database, new AcDbXline);
    auto* const text = new AcDbMText;
    text->setContents((std::wstring(300, L'a') + L"\\P{\\fArial;b}").c_str());
    text->setTextHeight(5);
    addToModelSpace(database, text);
    auto* const hatch = new AcDbHatch;
    AcGePoint2dArray corners;
    AcGeDoubleArray bulges;
    for (const AcGePoint2d& corner : {AcGePoint2d(0, 0), AcGePoint2d(10, 0), AcGePoint2d(10, 10)}) {
        corners.append(corner);
        bulges.append(0.25);
    }
    hatch->appendLoop(AcDbHatch::kExternal, corners, bulges);
    hatch->setPattern(AcDbHatch::kPreDefined, L"SOLID");
    addToModelSpace(database, hatch);
    AcDbDictionary* root = nullptr;
    EXPECT_EQ(database.getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
    auto* const record = new AcDbXrecord;
    resbuf* const list = acutBuildList(1, L"text", 40, 2.5, 90, 70000, 0);
    record->setFromRbChain(*list);
    acutRelRb(list);
    AcDbObjectId id;
    EXPECT_EQ(root->setAt(L"SAMPLE", record, id), Acad::eOk);
    record->close();
    root->close();
}

} // namespace

AcDbObjectId addToModelSpace(AcDbDatabase& database, AcDbEntity* entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

void registerApplication(AcDbDatabase& database, const wchar_t* name) {
    AcDbRegAppTable* table = nullptr;
    EXPECT_EQ(database.getRegAppTable(table, AcDb::kForWrite), Acad::eOk);
    auto* const record = new AcDbRegAppTableRecord;
    record->setName(name);
    EXPECT_EQ(table->add(record), Acad::eOk);
    record->close();
    table->close();
}

std::unique_ptr<AcDbDatabase> sampleDrawing(Kinds kinds) {
    auto database = std::make_unique<AcDbDatabase>(true, true);
    addLayer(*database);
    registerApplication(*database, L"ORDANE");
    addReference(*database, addBlock(*database));
    addOldKinds(*database);
    if (kinds == Kinds::kAll) addNewKinds(*database);
    auto* const line = new AcDbLine({1, 1, 0}, {2, 2, 0});
    const AcDbObjectId id = addToModelSpace(*database, line);
    AcDbObjectPointer<AcDbLine> marked(id, AcDb::kForWrite);
    EXPECT_EQ(marked->setLayer(L"B\u00E9ton \u4E2D"), Acad::eOk);
    marked->setColor(AcCmColor(AcCmEntityColor(10, 20, 30)));
    const double point[3] = {1.5, 2.5, 3.5};
    resbuf* const data =
        acutBuildList(1001, L"ORDANE", 1000, L"KEY", 1070, -5, 1071, 123456, 1040, 2.5, 1010, point, 0);
    EXPECT_EQ(marked->setXData(data), Acad::eOk);
    acutRelRb(data);
    return database;
}

} // namespace drawingtest
