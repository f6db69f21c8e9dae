// One entity of every kind that can be moved, none of it at a place or of a shape that hides a fault.
#pragma once

#include "curvecases.h"

#include "dbattdef.h"
#include "dbattribute.h"
#include "dbdim.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbminsert.h"
#include "dbmtext.h"
#include "dbpoint.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "dbsolid.h"
#include "dbtrace.h"

namespace everyentity {

using drawingtest::numbersOf;
using drawingtest::pointsOf;

struct Kind {
    std::string name;
    std::unique_ptr<AcDbEntity> entity;
};

inline AcDbAttribute* attribute() {
    auto* attribute = new AcDbAttribute;
    attribute->setTag(L"MARK");
    attribute->setTextString(L"S 12");
    attribute->setHeight(2.0);
    attribute->setPosition({3.0, 5.0, 1.0});
    return attribute;
}

template <class Reference>
std::unique_ptr<Reference> reference(AcDbObjectId block) {
    auto reference = std::make_unique<Reference>();
    EXPECT_EQ(reference->setBlockTableRecord(block), Acad::eOk);
    reference->setPosition({4.0, -7.0, 2.0});
    reference->setRotation(0.5);
    reference->setScaleFactors({2.0, -2.0, 2.0});
    EXPECT_EQ(reference->appendAttribute(attribute()), Acad::eOk);
    return reference;
}

inline std::unique_ptr<AcDbHatch> hatch() {
    auto hatch = std::make_unique<AcDbHatch>();
    AcArray<AcGePoint2d> corners;
    for (const AcGePoint2d& corner : {AcGePoint2d(0, 0), AcGePoint2d(8, 0), AcGePoint2d(8, 6)})
        corners.append(corner);
    EXPECT_EQ(hatch->appendLoop(AcDbHatch::kDefault, corners, numbersOf({0.5, 0.0, -0.25})), Acad::eOk);
    hatch->setElevation(4.0);
    hatch->setPattern(AcDbHatch::kPreDefined, L"ANSI31");
    hatch->setPatternDefinitions({{0.75, {1.0, 2.0}, {0.0, 3.0}, {2.0, -1.0}}});
    return hatch;
}

inline std::unique_ptr<AcDbDimension> dimension(AcDbDimension::Type type = AcDbDimension::kRotated) {
    auto dimension = std::make_unique<AcDbDimension>(type);
    dimension->setPointOf(10, {5.0, 3.0, 0.0});
    dimension->setPointOf(13, {1.0, 1.0, 0.0});
    dimension->setPointOf(14, {5.0, 2.0, 0.0});
    dimension->setRotation(0.25);
    dimension->setTextPosition({3.0, 3.5, 0.0});
    return dimension;
}

/// References show the block.
inline std::vector<Kind> all(AcDbObjectId block) {
    std::vector<Kind> kinds;
    const auto add = [&](const char* name, std::unique_ptr<AcDbEntity> entity) {
        kinds.push_back({name, std::move(entity)});
    };
    for (auto& [name, curve] : curvecases::ordinaryCurves()) kinds.push_back({name, std::move(curve)});
    add("ray", curvecases::throughPoint<AcDbRay>({1.0, 2.0, 3.0}, {0.6, 0.0, 0.8}));
    add("xline", curvecases::throughPoint<AcDbXline>({-1.0, 2.0, 5.0}, {0.6, 0.8, 0.0}));
    add("point", std::make_unique<AcDbPoint>(AcGePoint3d(1.0, 2.0, 3.0)));
    add("text",
        std::make_unique<AcDbText>(AcGePoint3d(1.0, 2.0, 3.0), L"Text", AcDbObjectId::kNull, 2.5, 0.5));
    auto definition = std::make_unique<AcDbAttributeDefinition>();
    definition->setTag(L"MARK");
    definition->setHeight(2.0);
    definition->setHorizontalMode(AcDb::kTextCenter);
    definition->setAlignmentPoint({7.0, 1.0, 2.0});
    add("definition of an attribute", std::move(definition));
    auto paragraph = std::make_unique<AcDbMText>();
    paragraph->setContents(L"Text");
    paragraph->setTextHeight(2.5);
    paragraph->setLocation({1.0, -2.0, 3.0});
    paragraph->setRotation(0.5);
    paragraph->setWidth(40.0);
    add("paragraph", std::move(paragraph));
    const AcGePoint3d corners[] = {{0.0, 9.0, 2.0}, {5.0, 8.0, 2.0}, {0.0, 6.0, 2.0}, {3.0, 5.0, 2.0}};
    add("solid", std::make_unique<AcDbSolid>(corners[0], corners[1], corners[2], corners[3]));
    add("trace", std::make_unique<AcDbTrace>(corners[0], corners[1], corners[2], corners[3]));
    add("face", std::make_unique<AcDbFace>(corners[0], corners[1], corners[3], corners[2]));
    AcDbVoidPtrArray outline, regions;
    AcDbCircle circle({2.0, 3.0, 1.0}, {0.0, 0.0, 1.0}, 1.5);
    outline.append(&circle);
    AcDbRegion::createFromCurves(outline, regions);
    auto raised = std::make_unique<AcDb3dSolid>();
    raised->extrude(static_cast<AcDbRegion*>(regions[0]), 2.0);
    add("region", std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(regions[0])));
    add("solid body", std::move(raised));
    add("hatch", hatch());
    add("dimension", dimension());
    add("reference", reference<AcDbBlockReference>(block));
    auto array = reference<AcDbMInsertBlock>(block);
    array->setColumns(3);
    array->setColumnSpacing(12.0);
    add("array of references", std::move(array));
    return kinds;
}

} // namespace everyentity
