// What a motion changes of an entity of any kind, and what not.

#include "drawingpicture.h"
#include "entitymotions.h"
#include "everyentity.h"

#include "actrans.h"
#include "dbopaque.h"

#include <cmath>
#include <functional>
#include <map>
#include <set>

namespace {

using namespace drawingtest;
using motions::copyOf;

AcDbObjectId addBlock(AcDbDatabase& drawing) {
    const AcDbObjectId block = addRecord<AcDbBlockTable>(drawing, L"FLAG");
    append(block, new AcDbLine({0.0, 0.0, 0.0}, {0.0, 9.0, 1.0}));
    return block;
}

/// The entity, and what it owns.
std::vector<AcDbEntity*> withParts(AcDbEntity& entity) {
    std::vector<AcDbEntity*> all{&entity};
    const hostkit::SubentityList* parts = hostkit::DatabaseAccess::parts(entity);
    for (std::size_t i = 0; parts && i < parts->count(); ++i) all.push_back(parts->at(i));
    return all;
}

// Extended data.

struct Triple {
    double x, y, z;
    double length() const { return std::sqrt(x * x + y * y + z * z); }
    Triple operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
};

/// Rows of the matrix by the value, without what the geometry kit has for it.
Triple image(const AcGeMatrix3d& matrix, const Triple& from, double shift) {
    double to[3];
    for (int row = 0; row < 3; ++row)
        to[row] = matrix.entry[row][0] * from.x + matrix.entry[row][1] * from.y +
                  matrix.entry[row][2] * from.z + matrix.entry[row][3] * shift;
    return {to[0], to[1], to[2]};
}

struct Values {
    Triple point, position, displacement, direction;
    double real, distance, factor;
};

Values valuesOf(const resbuf* list) {
    Values values{};
    const std::map<short, Triple*> points = {{1010, &values.point},
                                             {1011, &values.position},
                                             {1012, &values.displacement},
                                             {1013, &values.direction}};
    const std::map<short, double*> reals = {
        {1040, &values.real}, {1041, &values.distance}, {1042, &values.factor}};
    for (; list; list = list->rbnext) {
        const double* at = list->resval.rpoint;
        if (points.count(list->restype)) *points.at(list->restype) = {at[0], at[1], at[2]};
        if (reals.count(list->restype)) *reals.at(list->restype) = list->resval.rreal;
    }
    return values;
}

List randomData(motions::Random& random) {
    double points[4][3];
    for (auto& point : points)
        for (double& value : point) value = random.between(-100.0, 100.0);
    return List(acutBuildList(1001, L"VEXO", 1000, L"text", 1010, points[0], 1002, L"{", 1011, points[1],
                              1012, points[2], 1013, points[3], 1002, L"}", 1040, random.between(-9.0, 9.0),
                              1041, random.between(-9.0, 9.0), 1042, random.between(-9.0, 9.0), 1070, 7, 1071,
                              70000, 1005, L"AB", 0));
}

void expectNear(const Triple& found, const Triple& wanted, double size) {
    const Triple difference = {found.x - wanted.x, found.y - wanted.y, found.z - wanted.z};
    EXPECT_LE(difference.length(), 1e-14 * size) << found.x << " " << found.y << " " << found.z << " for "
                                                 << wanted.x << " " << wanted.y << " " << wanted.z;
}

/// The same list but for what follows the entity.
void expectMoved(const resbuf* before, const resbuf* after, const motions::Motion& motion) {
    const Values from = valuesOf(before), to = valuesOf(after);
    const double size = std::max(1e5, 10.0 * motion.reach());
    expectNear(to.position, image(motion.matrix, from.position, 1.0), size);
    expectNear(to.displacement, image(motion.matrix, from.displacement, 0.0), 1e5);
    const Triple along = image(motion.matrix, from.direction, 0.0);
    expectNear(to.direction, along * (from.direction.length() / along.length()), 1e3);
    const double scale = motion.keepsShape ? std::cbrt(std::abs(motion.matrix.det())) : 1.0;
    EXPECT_NEAR(to.distance, from.distance * scale, 1e-12 * scale);
    EXPECT_NEAR(to.factor, from.factor * scale, 1e-12 * scale);
    const std::set<short> followers = {1011, 1012, 1013, 1041, 1042};
    for (; before && after; before = before->rbnext, after = after->rbnext) {
        ASSERT_EQ(before->restype, after->restype);
        EXPECT_TRUE(followers.count(before->restype) || valueOf(*before) == valueOf(*after));
    }
    EXPECT_EQ(before, after) << "one list is longer";
}

TEST(Movements, ExtendedDataFollowsByTheMeaningOfItsCodes) {
    AcDbDatabase drawing;
    motions::Random random(11);
    std::size_t moved = 0;
    for (const everyentity::Kind& kind : everyentity::all(addBlock(drawing))) {
        for (const motions::Motion& motion : motions::all()) {
            SCOPED_TRACE(kind.name + ", " + motion.name);
            const std::unique_ptr<AcDbEntity> entity = copyOf(*kind.entity);
            std::vector<List> before;
            for (AcDbEntity* each : withParts(*entity)) {
                before.push_back(randomData(random));
                ASSERT_EQ(each->setXData(before.back().get()), Acad::eOk);
            }
            const bool follows = entity->transformBy(motion.matrix) == Acad::eOk;
            EXPECT_TRUE(follows || !motion.keepsShape);
            const motions::Motion still{"", AcGeMatrix3d(), true};
            const std::vector<AcDbEntity*> all = withParts(*entity);
            for (std::size_t i = 0; i < all.size(); ++i)
                expectMoved(before[i].get(), List(all[i]->xData()).get(), follows ? motion : still);
            moved += follows ? all.size() : 0;
        }
    }
    EXPECT_GT(moved, 400u);
}

TEST(Movements, WhatARealCannotHoldMovesNothing) {
    const double far[] = {1e300, 0.0, 0.0};
    const List large(acutBuildList(1001, L"VEXO", 1011, far, 0));
    const AcGeMatrix3d enlarge = AcGeMatrix3d::scaling(1e20);
    const AcGePoint3dArray corners = pointsOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 1}});
    AcDb2dPolyline flat(AcDb::k2dSimplePoly, corners, 0.0, false);
    AcDb3dPolyline deep(AcDb::k3dSimplePoly, corners, false);
    for (AcDbEntity* owner : std::initializer_list<AcDbEntity*>{&flat, &deep}) {
        for (AcDbEntity* each : {owner, hostkit::DatabaseAccess::parts(*owner)->at(2)}) {
            ASSERT_EQ(each->setXData(large.get()), Acad::eOk);
            EXPECT_EQ(owner->transformBy(enlarge), Acad::eInvalidInput);
            EXPECT_EQ(motions::boxOf(*owner).maxPoint().x, 4.0);
            EXPECT_EQ(textOf(List(each->xData())), textOf(large));
            ASSERT_EQ(each->setXData(List(acutBuildList(1001, L"VEXO", 0)).get()), Acad::eOk);
        }
        EXPECT_EQ(owner->transformBy(enlarge), Acad::eOk);
    }
    AcDbOpaqueEntity unknown(L"UNKNOWN");
    const List data(acutBuildList(1001, L"VEXO", 1041, 2.0, 0));
    ASSERT_EQ(unknown.setXData(data.get()), Acad::eOk);
    EXPECT_EQ(unknown.transformBy(AcGeMatrix3d::scaling(2.0)), Acad::eNotApplicable);
    EXPECT_EQ(textOf(List(unknown.xData())), textOf(data));
}

// Fields.

/// The codes of the places in a record; all else of it stays in a shift.
const std::map<std::wstring, std::set<short>>& placeCodes() {
    static const std::map<std::wstring, std::set<short>> codes = {{L"LINE", {10, 11}},
                                                                  {L"ARC", {10}},
                                                                  {L"CIRCLE", {10}},
                                                                  {L"ELLIPSE", {10}},
                                                                  {L"SPLINE", {10, 11}},
                                                                  {L"LWPOLYLINE", {10, 38}},
                                                                  {L"POLYLINE", {10}},
                                                                  {L"VERTEX", {10}},
                                                                  {L"RAY", {10}},
                                                                  {L"XLINE", {10}},
                                                                  {L"POINT", {10}},
                                                                  {L"TEXT", {10, 11}},
                                                                  {L"ATTDEF", {10, 11}},
                                                                  {L"ATTRIB", {10, 11}},
                                                                  {L"MTEXT", {10}},
                                                                  {L"SOLID", {10, 11, 12, 13}},
                                                                  {L"TRACE", {10, 11, 12, 13}},
                                                                  {L"3DFACE", {10, 11, 12, 13}},
                                                                  {L"HATCH", {10, 43, 44}},
                                                                  {L"DIMENSION", {10, 11, 13, 14}},
                                                                  {L"INSERT", {10}}};
    return codes;
}

hostkit::GroupBlock groupsOf(const AcDbEntity& entity) {
    hostkit::GroupGatherer gatherer(nullptr);
    EXPECT_EQ(entity.dxfOutFields(&gatherer), Acad::eOk);
    return gatherer.groups();
}

/// Where a shift takes the group of a record that lies in the world's plane.
AcDbDxfGroup shifted(AcDbDxfGroup group, const AcGeVector3d& way, bool isHeightAlone) {
    if (group.kind == AcDb::GroupKind::kReal) {
        group.real += group.code == 43 ? way.x : group.code == 44 ? way.y : way.z;
        return group;
    }
    for (int i = isHeightAlone ? 2 : 0; i < group.dimension; ++i)
        group.point[i] += way[static_cast<unsigned>(i)];
    return group;
}

bool isFlat(const hostkit::GroupBlock& groups) {
    hostkit::GroupWalker walker(groups);
    for (AcDbDxfGroup group; walker.next(group);)
        if (group.code == 210 && group.point[2] != 1.0) return false;
    return true;
}

void expectShifted(const AcDbEntity& before, const AcDbEntity& after, const AcGeVector3d& way) {
    const std::wstring name = before.dxfName();
    SCOPED_TRACE(narrow(name));
    // The head of a polyline in space says nothing of its place.
    const std::set<short> places = AcDb3dPolyline::cast(&before) ? std::set<short>() : placeCodes().at(name);
    const hostkit::GroupBlock from = groupsOf(before), to = groupsOf(after);
    ASSERT_EQ(from.size(), to.size());
    const bool isInWorldPlane = isFlat(from);
    hostkit::GroupWalker fromWalker(from), toWalker(to);
    bool isFirstPoint = true;
    for (AcDbDxfGroup was, is; fromWalker.next(was);) {
        ASSERT_TRUE(toWalker.next(is));
        std::string wasText, isText;
        const bool isHeight = was.code == 10 && isFirstPoint && (name == L"HATCH" || name == L"POLYLINE");
        isFirstPoint = isFirstPoint && was.code != 10;
        addGroup(isText, is);
        addGroup(wasText, was);
        if (!places.count(was.code)) {
            EXPECT_EQ(wasText, isText) << was.code;
        } else if (!isInWorldPlane) {
            EXPECT_NE(wasText, isText) << was.code;
        } else {
            const AcDbDxfGroup wanted = shifted(was, way, isHeight);
            const int count = was.kind == AcDb::GroupKind::kReal ? 1 : was.dimension;
            for (int i = 0; i < count; ++i)
                EXPECT_NEAR(is.point[i], wanted.point[i], 1e-9) << was.code << " " << i;
        }
    }
}

TEST(Movements, AShiftChangesPlacesAlone) {
    AcDbDatabase drawing;
    const AcGeVector3d way(1000.5, -2000.25, 30.125);
    for (const everyentity::Kind& kind : everyentity::all(addBlock(drawing))) {
        if (kind.entity->isKindOf(AcDbModelerGeometry::desc())) continue; // its places are within text
        SCOPED_TRACE(kind.name);
        const std::unique_ptr<AcDbEntity> before = copyOf(*kind.entity), after = copyOf(*kind.entity);
        ASSERT_EQ(after->transformBy(AcGeMatrix3d::translation(way)), Acad::eOk);
        const std::vector<AcDbEntity*> from = withParts(*before), to = withParts(*after);
        ASSERT_EQ(from.size(), to.size());
        for (std::size_t i = 0; i < from.size(); ++i) expectShifted(*from[i], *to[i], way);
    }
}

TEST(Movements, TangentsOfFittedVerticesTurnWithTheirPolyline) {
    AcDb2dPolyline polyline(AcDb::k2dFitCurvePoly, pointsOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}}), 2.0, false);
    auto* vertex = static_cast<AcDb2dVertex*>(polyline.vertices().at(1));
    ASSERT_EQ(vertex->setTangent(0.5), Acad::eOk);
    ASSERT_EQ(polyline.transformBy(AcGeMatrix3d::translation({3.0, 4.0, 0.0})), Acad::eOk);
    EXPECT_EQ(vertex->tangent(), 0.5);
    ASSERT_EQ(polyline.transformBy(AcGeMatrix3d::rotation(0.75, AcGeVector3d::kZAxis)), Acad::eOk);
    EXPECT_NEAR(vertex->tangent(), 1.25, 1e-14);
    ASSERT_EQ(polyline.transformBy(motions::stretch(1.0, -1.0, 1.0)), Acad::eOk);
    EXPECT_NEAR(vertex->tangent(), AcGe::kTwoPi - 1.25, 1e-14);
    EXPECT_FALSE(static_cast<AcDb2dVertex*>(polyline.vertices().at(0))->isTangentUsed());
}

} // namespace
