#include "sampledrawing.h"

#include "drawingparts.h"

#include "dbdim.h"
#include "dbellipse.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbminsert.h"
#include "dbmtext.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbxline.h"

namespace drawingtest {

namespace {

constexpr double pi = 3.14159265358979323846;

AcDbObjectId addBlock(AcDbDatabase& database) {
    const AcDbObjectId id = addRecord<AcDbBlockTable>(database, L"Column");
    append(id, new AcDbLine({0, 0, 0}, {300, 0, 0}));
    append(id, new AcDbCircle({150, 150, 0}, AcGeVector3d::kZAxis, 100));
    change<AcDbBlockTableRecord>(id, [](auto& block) { block.setOrigin({10, 20, 0}); });
    return id;
}

void addLayer(AcDbDatabase& database) {
    change<AcDbLayerTableRecord>(addRecord<AcDbLayerTable>(database, L"B\u00E9ton \u4E2D"), [](auto& layer) {
        AcCmColor color;
        color.setColorIndex(3);
        layer.setColor(color);
        layer.setIsOff(true);
    });
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
    appendToModelSpace(database, reference);
    auto* const grid = new AcDbMInsertBlock;
    grid->setBlockTableRecord(block);
    grid->setColumns(3);
    grid->setRows(2);
    grid->setColumnSpacing(500);
    grid->setRowSpacing(600);
    appendToModelSpace(database, grid);
}

void addOldKinds(AcDbDatabase& database) {
    appendToModelSpace(database, new AcDbLine({0, 0, 0}, {1000.1, -2e-7, 1e20}));
    appendToModelSpace(database, new AcDbArc({1, 2, 3}, 50, pi / 6, pi));
    appendToModelSpace(database, new AcDbArc({5, 6, 7}, AcGeVector3d(0, 0.6, 0.8), 50, pi / 6, pi));
    appendToModelSpace(database, new AcDbPoint({7, 8, 9}));
    appendToModelSpace(database, new AcDbText({10, 20, 0}, L"\u00D8 12 \u4E2D %%c",
                                              database.textStyleStandard(), 25, pi / 4));
    const AcGePoint3dArray points = pointsOf({{0, 0, 0}, {100, 0, 0}, {100, 50, 0}});
    AcGeDoubleArray bulges = numbersOf({0.0, 0.5, -0.25});
    appendToModelSpace(database, new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 12.5, true, 1, 2, &bulges));
    appendToModelSpace(database, new AcDb3dPolyline(AcDb::k3dSimplePoly, points, false));
    appendToModelSpace(database, new AcDbSolid(points[0], points[1], points[2], points[2]));
    appendToModelSpace(database, new AcDbTrace(points[0], points[1], points[2], points[2]));
    appendToModelSpace(database, new AcDbFace(points[0], points[1], points[2], points[2]));
    auto* const dimension = new AcDbDimension(AcDbDimension::kAligned);
    dimension->setPointOf(10, {0, 100, 0});
    dimension->setPointOf(13, {0, 0, 0});
    dimension->setPointOf(14, {100, 0, 0});
    dimension->setDimensionText(L"<> mm");
    appendToModelSpace(database, dimension);
}

void addNewKinds(AcDbDatabase& database) {
    auto* const polyline = new AcDbPolyline;
    polyline->addVertexAt(0, {0, 0}, 0.5);
    polyline->addVertexAt(1, {100, 0}, 0, 1, 2);
    polyline->addVertexAt(2, {100, 100});
    polyline->setClosed(true);
    polyline->setElevation(3.5);
    appendToModelSpace(database, polyline);
    appendToModelSpace(database, new AcDbEllipse({0, 0, 0}, AcGeVector3d::kZAxis, {100, 0, 0}, 0.5, 0, pi));
    appendToModelSpace(database, new AcDbSpline(3, false, false, false,
                                                pointsOf({{0, 0, 0}, {10, 5, 0}, {20, 0, 0}, {30, 5, 0}}),
                                                numbersOf({0, 0, 0, 0, 1, 1, 1, 1}), AcGeDoubleArray()));
    auto* const ray = new AcDbRay;
    ray->setUnitDir({1, 1, 0});
    appendToModelSpace(database, ray);
    appendToModelSpace(database, new AcDbXline);
    auto* const text = new AcDbMText;
    text->setContents((std::wstring(300, L'a') + L"\\P{\\fArial;b}").c_str());
    text->setTextHeight(5);
    appendToModelSpace(database, text);
    auto* const hatch = new AcDbHatch;
    hatch->appendLoop(AcDbHatch::kExternal, arrayOf<AcGePoint2d>({{0, 0}, {10, 0}, {10, 10}}),
                      numbersOf({0.25, 0.25, 0.25}));
    hatch->setPattern(AcDbHatch::kPreDefined, L"SOLID");
    appendToModelSpace(database, hatch);
    auto* const record = new AcDbXrecord;
    record->setFromRbChain(*List(acutBuildList(1, L"text", 40, 2.5, 90, 70000, 0)));
    enter(database.namedObjectsDictionaryId(), L"SAMPLE", record);
}

} // namespace

std::unique_ptr<AcDbDatabase> sampleDrawing(Kinds kinds) {
    auto database = std::make_unique<AcDbDatabase>(true, true);
    addLayer(*database);
    addRecord<AcDbRegAppTable>(*database, L"ORDANE");
    addReference(*database, addBlock(*database));
    addOldKinds(*database);
    if (kinds == Kinds::kAll) addNewKinds(*database);
    const AcDbObjectId id = appendToModelSpace(*database, new AcDbLine({1, 1, 0}, {2, 2, 0}));
    const double point[3] = {1.5, 2.5, 3.5};
    const List data(
        acutBuildList(1001, L"ORDANE", 1000, L"KEY", 1070, -5, 1071, 123456, 1040, 2.5, 1010, point, 0));
    change<AcDbLine>(id, [&](AcDbLine& line) {
        EXPECT_EQ(line.setLayer(L"B\u00E9ton \u4E2D"), Acad::eOk);
        line.setColor(AcCmColor(AcCmEntityColor(10, 20, 30)));
        EXPECT_EQ(line.setXData(data.get()), Acad::eOk);
    });
    return database;
}

} // namespace drawingtest
