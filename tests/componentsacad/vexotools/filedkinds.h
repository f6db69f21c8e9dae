// The kinds of entities that are filed: each with a sample, the four operations, and the sample's record as
// it stands in drawings.
#pragma once

#include "filedrecords.h"
#include "vexoentityfiler.h"

#include "dbarc.h"
#include "dbcircle.h"
#include "dbelipse.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbpl.h"
#include "dbspline.h"
#include "geell2d.h"
#include "gekvec.h"
#include "genurb2d.h"

#include <functional>

namespace filedrecords {

struct Kind {
    const char* name;
    std::function<AcDbEntity*()> make;
    std::function<Acad::ErrorStatus(AcDbDwgFiler*, AcDbEntity*)> dwgIn;
    std::function<Acad::ErrorStatus(AcDbDwgFiler*, const AcDbEntity*)> dwgOut;
    std::function<Acad::ErrorStatus(AcDbDxfFiler*, AcDbEntity*)> dxfIn;
    std::function<Acad::ErrorStatus(AcDbDxfFiler*, const AcDbEntity*)> dxfOut;
    Items record;
};

/// A function of one kind as one of any entity; a null entity stays null.
template <class Entity, class Filer>
auto ofAny(Acad::ErrorStatus (*function)(Filer*, Entity*)) {
    using Any = std::conditional_t<std::is_const_v<Entity>, const AcDbEntity, AcDbEntity>;
    return [function](Filer* filer, Any* entity) { return function(filer, static_cast<Entity*>(entity)); };
}

template <class Entity>
AcDbEntity* colored(Entity* entity, Adesk::UInt16 color) {
    entity->setColorIndex(color);
    return entity;
}

inline AcDbEntity* sampleOfPolyline() {
    auto* const polyline = new AcDbPolyline;
    polyline->setElevation(7);
    polyline->setThickness(0.25);
    polyline->addVertexAt(0, {0, 0}, 0.5, 0.125, 0.25);
    polyline->addVertexAt(1, {10, 0}, 0, 0, 0);
    polyline->addVertexAt(2, {10, 5}, -1, 3, 3);
    return polyline;
}

inline AcDbEntity* sampleOfSpline() {
    using namespace drawingtest;
    return colored(new AcDbSpline(2, true, false, false, pointsOf({{0, 0, 0}, {1, 2, 0}, {3, 1, 4}}),
                                  numbersOf({0, 0, 0, 1, 1, 1}), numbersOf({1, 0.5, 1}), 0.125, 0.0625),
                   6);
}

/// A loop of each kind of edge, and one of two edges.
inline AcDbEntity* sampleOfHatch() {
    using namespace drawingtest;
    auto* const hatch = new AcDbHatch;
    hatch->setElevation(1.5);
    hatch->setHatchStyle(AcDbHatch::kOuter);
    hatch->setPattern(AcDbHatch::kPreDefined, L"SOLID");
    const auto addLoop = [hatch](int type, std::initializer_list<const AcGeCurve2d*> curves,
                                 std::vector<int> types) {
        AcGeVoidPointerArray edges;
        for (const AcGeCurve2d* each : curves) edges.append(const_cast<AcGeCurve2d*>(each));
        EXPECT_EQ(hatch->appendLoop(type, edges, arrayOf(types)), Acad::eOk);
    };
    const AcGeLineSeg2d line(AcGePoint2d(-2, 0), AcGePoint2d(2, 0));
    const AcGeCircArc2d arc({0, 0}, 2, 0, 3.125, AcGeVector2d::kXAxis, false);
    const AcGeCircArc2d clockwise({0, 0}, 8, 0.5, 1, AcGeVector2d::kXAxis, true);
    const AcGeEllipArc2d ellipse({1, 2}, {0, 1}, {-1, 0}, 4, 2, 0.25, 6);
    const AcGeNurbCurve2d plain(1, AcGeKnotVector(numbersOf({0, 0, 1, 1})),
                                arrayOf<AcGePoint2d>({{0, 0}, {4, 4}}), true);
    const AcGeNurbCurve2d rational(2, AcGeKnotVector(numbersOf({0, 0, 0, 2, 2, 2}), 0.5),
                                   arrayOf<AcGePoint2d>({{0, 0}, {4, 4}, {8, 0}}), numbersOf({1, 2, 1}));
    addLoop(AcDbHatch::kExternal, {&line, &arc}, {1, 2});
    addLoop(AcDbHatch::kOutermost, {&clockwise}, {2});
    addLoop(AcDbHatch::kDefault, {&ellipse}, {3});
    addLoop(AcDbHatch::kDerived, {&plain, &rational}, {4, 4});
    return colored(hatch, 0);
}

// The format's tables with values. They are never to be changed: drawings hold such records.
constexpr const char* lineRecord = "I32 2, V3 0/0/1, P3 1/2/3, P3 4/5/6, I32 1";
constexpr const char* arcRecord = "I32 2, V3 0/0/1, P3 1/2/3, R 4, R 0.5, R 2.5, I32 2";
constexpr const char* polylineRecord = "I32 2, V3 0/0/1, R 7, I16 0, R 0.25, N 3, "
                                       "P2 0/0, R 0.5, R 0.125, R 0.25, "
                                       "P2 10/0, R 0, R 0, R 0, "
                                       "P2 10/5, R -1, R 3, R 3, I32 256";
constexpr const char* circleRecord = "I32 2, V3 0/0/-1, P3 1/2/3, R 0.5, I32 3";
constexpr const char* ellipseRecord =
    "I32 2, V3 0/0/1, P3 1/2/3, V3 0/10/0, R 0.5, R 0, R 6.283185307179586, I32 4";
constexpr const char* splineRecord = "I32 2, I32 2, I16 1, I16 0, I16 0, N 3, P3 0/0/0, P3 1/2/0, P3 3/1/4, "
                                     "N 6, R 0, R 0, R 0, R 1, R 1, R 1, N 3, R 1, R 0.5, R 1, "
                                     "R 0.125, R 0.0625, I32 6";
constexpr const char* emptySplineRecord = "I32 2, I32 0, I16 0, I16 0, I16 0, N 0, N 0, N 0, R 0, R 0, I32 7";
constexpr const char* hatchRecord = "I32 2, V3 0/0/1, R 1.5, I16 1, I16 1, S SOLID, N 4, "
                                    "I32 1, N 2, E 1, P2 -2/0, P2 2/0, "
                                    "E 2, P2 0/0, R 2, R 0, R 3.125, V2 1/0, I16 0, "
                                    "I32 16, N 1, E 2, P2 0/0, R 8, R 0.5, R 1, V2 1/0, I16 1, "
                                    "I32 0, N 1, E 3, P2 1/2, V2 0/1, V2 -1/0, R 4, R 2, R 0.25, R 6, "
                                    "I32 4, N 2, E 4, I32 1, I16 1, R 1e-09, N 4, R 0, R 0, R 1, R 1, "
                                    "N 2, P2 0/0, P2 4/4, N 0, "
                                    "E 4, I32 2, I16 0, R 0.5, N 6, R 0, R 0, R 0, R 2, R 2, R 2, "
                                    "N 3, P2 0/0, P2 4/4, P2 8/0, N 3, R 1, R 2, R 1, I32 0";
constexpr const char* emptyHatchRecord = "I32 2, V3 0/0/1, R 0, I16 0, I16 0, S LINES, N 0, I32 8";

#define VEXO_TEST_KIND(Name, sample, record)                                                                 \
    Kind {                                                                                                   \
#Name, [] { return static_cast<AcDbEntity*>(sample); }, ofAny(&VEXOEntityFiler::dwgInFields##Name),  \
                                                             ofAny(&VEXOEntityFiler::dwgOutFields##Name),    \
                                                             ofAny(&VEXOEntityFiler::dxfInFields##Name),     \
                                                             ofAny(&VEXOEntityFiler::dxfOutFields##Name),    \
                                                             itemsOf(record)                                 \
    }

inline AcDbEntity* sampleOfEmptyHatch() {
    auto* const hatch = new AcDbHatch;
    hatch->setPattern(AcDbHatch::kUserDefined, L"LINES");
    return colored(hatch, 8);
}

inline std::vector<Kind> kinds() {
    return {
        VEXO_TEST_KIND(Line, colored(new AcDbLine({1, 2, 3}, {4, 5, 6}), 1), lineRecord),
        VEXO_TEST_KIND(Arc, colored(new AcDbArc({1, 2, 3}, 4, 0.5, 2.5), 2), arcRecord),
        VEXO_TEST_KIND(Polyline, sampleOfPolyline(), polylineRecord),
        VEXO_TEST_KIND(Circle, colored(new AcDbCircle({1, 2, 3}, {0, 0, -1}, 0.5), 3), circleRecord),
        VEXO_TEST_KIND(Ellipse, colored(new AcDbEllipse({1, 2, 3}, {0, 0, 1}, {0, 10, 0}, 0.5), 4),
                       ellipseRecord),
        VEXO_TEST_KIND(Spline, sampleOfSpline(), splineRecord),
        VEXO_TEST_KIND(Spline, colored(new AcDbSpline, 7), emptySplineRecord),
        VEXO_TEST_KIND(Hatch, sampleOfHatch(), hatchRecord),
        VEXO_TEST_KIND(Hatch, sampleOfEmptyHatch(), emptyHatchRecord),
    };
}
#undef VEXO_TEST_KIND

inline std::string toldBinary(const Kind& kind, const AcDbEntity& entity) {
    BinarySpy spy;
    EXPECT_EQ(kind.dwgOut(&spy, &entity), Acad::eOk);
    return spy.told;
}
inline std::string toldText(const Kind& kind, const AcDbEntity& entity) {
    TextSpy spy;
    EXPECT_EQ(kind.dxfOut(&spy, &entity), Acad::eOk);
    return spy.told;
}

} // namespace filedrecords
