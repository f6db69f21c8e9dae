#include "drawingparts.h"

#include "curvecases.h"
#include "entitymotions.h"
#include "entitypicking.h"
#include "pickingoracle.h"

#include "dbmtext.h"
#include "dbray.h"
#include "dbtrace.h"
#include "dbxline.h"

#include <functional>
#include <map>
#include <string>

namespace {

using hostkit::isPicked;
using hostkit::PickMode;
using hostkit::PickRegion;
using hostkit::PickSight;
using motions::Random;
using pickingoracle::Figures;
using pickingoracle::Judge;
using pickingoracle::Verdict;

using EntityPointer = std::unique_ptr<AcDbEntity>;

AcGePoint2d somewhere(Random& random, double size) {
    return {random.between(-size, size), random.between(-size, size)};
}

AcGePoint3d inSpace(Random& random, double size) {
    return {random.between(-size, size), random.between(-size, size), random.between(-size, size)};
}

EntityPointer randomPolyline(Random& random) {
    auto polyline = std::make_unique<AcDbPolyline>();
    const int count = static_cast<int>(random.between(2.0, 7.0));
    for (int i = 0; i < count; ++i) {
        const double kind = random.between(0.0, 4.0);
        const double bulge = kind < 1.0   ? 0.0
                             : kind < 2.0 ? random.between(-3.0, 3.0)
                                          : random.between(-0.5, 0.5);
        (void)polyline->addVertexAt(i, somewhere(random, 10.0), bulge);
    }
    polyline->setClosed(random.sign() > 0);
    return polyline;
}

EntityPointer randomOldPolyline(Random& random) {
    AcGePoint3dArray points;
    AcGeDoubleArray bulges;
    for (int i = 0; i < 5; ++i) {
        points.append(inSpace(random, 10.0));
        bulges.append(random.between(-1.2, 1.2));
    }
    return std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, points, 0.0, random.sign() > 0, 0.0, 0.0,
                                            &bulges);
}

EntityPointer randomSpline(Random& random) {
    const int degree = static_cast<int>(random.between(1.0, 6.0));
    const int count = degree + 1 + static_cast<int>(random.between(0.0, 5.0));
    AcGePoint3dArray points;
    AcGeDoubleArray knots, weights;
    for (int i = 0; i < count; ++i) {
        points.append(inSpace(random, 10.0));
        weights.append(random.between(0.2, 4.0));
    }
    double knot = 0.0;
    for (int i = 0; i < count + degree + 1; ++i) {
        knots.append(knot);
        // Ends that the curve meets or does not, and knots that are there twice.
        const bool isEnd = i < degree || i >= count;
        if (!isEnd && (i == degree || random.between(0.0, 1.0) < 0.8)) knot += random.between(0.5, 2.0);
    }
    return std::make_unique<AcDbSpline>(degree, random.sign() > 0, false, false, points, knots, weights);
}

EntityPointer randomHatch(Random& random) {
    auto hatch = std::make_unique<AcDbHatch>();
    double size = 10.0;
    for (int loop = 0; loop < 3; ++loop) {
        AcGePoint2dArray corners;
        AcGeDoubleArray bulges;
        for (int i = 0; i < 5; ++i) {
            const double angle = (i + random.between(0.0, 0.6)) * AcGe::kTwoPi / 5.0;
            corners.append(AcGePoint2d(size * std::cos(angle), size * std::sin(angle)));
            bulges.append(random.between(-0.15, 0.15));
        }
        EXPECT_EQ(hatch->appendLoop(AcDbHatch::kDefault, corners, bulges), Acad::eOk);
        size *= 0.4;
    }
    if (random.sign() > 0) hatch->setElevation(3.0);
    return hatch;
}

EntityPointer randomText(Random& random) {
    auto text = std::make_unique<AcDbText>(inSpace(random, 5.0), L"Anchor 12", AcDbObjectId::kNull,
                                           random.between(1.0, 4.0), random.between(0.0, 6.0));
    text->setOblique(random.between(-0.5, 0.5));
    return text;
}

std::vector<std::pair<std::string, std::function<EntityPointer(Random&)>>> kinds() {
    const auto at = [](Random& random) { return inSpace(random, 10.0); };
    return {
        {"line", [=](Random& r) { return std::make_unique<AcDbLine>(at(r), at(r)); }},
        {"circle",
         [=](Random& r) { return std::make_unique<AcDbCircle>(at(r), r.direction(), r.between(0.1, 12.0)); }},
        {"arc",
         [=](Random& r) {
             return std::make_unique<AcDbArc>(at(r), r.direction(), r.between(0.1, 12.0), r.between(0.0, 6.0),
                                              r.between(0.0, 6.0));
         }},
        {"ellipse",
         [=](Random& r) {
             const AcGeVector3d normal = r.direction();
             const AcGeVector3d axis = normal.perpVector().normal() * r.between(1.0, 9.0);
             return std::make_unique<AcDbEllipse>(at(r), normal, axis, r.between(0.1, 1.0),
                                                  r.between(0.0, 6.0), r.between(0.0, 6.0));
         }},
        {"polyline", randomPolyline},
        {"old polyline", randomOldPolyline},
        {"chain in space",
         [=](Random& r) {
             return std::make_unique<AcDb3dPolyline>(
                 AcDb::k3dSimplePoly, drawingtest::pointsOf({at(r), at(r), at(r), at(r)}), r.sign() > 0);
         }},
        {"spline", randomSpline},
        {"hatch", randomHatch},
        {"solid", [=](Random& r) { return std::make_unique<AcDbSolid>(at(r), at(r), at(r), at(r)); }},
        {"face", [=](Random& r) { return std::make_unique<AcDbFace>(at(r), at(r), at(r), at(r)); }},
        {"text", randomText},
        {"point", [=](Random& r) { return std::make_unique<AcDbPoint>(at(r)); }},
    };
}

/// A region about a point that the figure comes near.
PickRegion randomRegion(Random& random, const AcGePoint2d& about) {
    const double size = std::exp(random.sign() > 0 ? random.between(-3.0, 2.5) : random.between(2.5, 4.2));
    const AcGePoint2d middle = about + somewhere(random, size).asVector();
    const auto near = [&] { return middle + somewhere(random, size).asVector(); };
    switch (static_cast<int>(random.between(0.0, 5.0))) {
    case 0:
    case 1:
        return PickRegion::box(near(), near());
    case 2:
        return PickRegion::fence({near(), near(), near(), near()});
    case 3: { // simple, with a notch or two
        std::vector<AcGePoint2d> corners;
        for (int i = 0; i < 9; ++i) {
            const double angle = i * AcGe::kTwoPi / 9.0;
            corners.push_back(middle + AcGeVector2d(std::cos(angle), std::sin(angle)) *
                                           random.between(0.3, 2.0) * size);
        }
        return PickRegion::polygon(corners);
    }
    default:
        return PickRegion::polygon({near(), near(), near(), near(), near()});
    }
}

/// How often an answer was put to the test.
struct Tally {
    int judged = 0;
    int unsure = 0;
    std::map<std::pair<PickMode, bool>, int> answers;
};

void compare(const AcDbEntity& entity, const Figures& figures, const AcGeMatrix3d& toView, Random& random,
             Tally& tally, const std::string& name) {
    const auto& lines = figures[static_cast<std::size_t>(random.between(0.0, double(figures.size())))].lines;
    const auto& line = lines[static_cast<std::size_t>(random.between(0.0, double(lines.size())))];
    const AcGePoint3d point =
        toView * line[static_cast<std::size_t>(random.between(0.0, double(line.size())))];
    const PickRegion region = randomRegion(random, {point.x, point.y});
    const Judge judge(region, toView);
    for (const PickMode mode : {PickMode::touching, PickMode::inside}) {
        const Verdict verdict = mode == PickMode::touching ? judge.touches(figures) : judge.holds(figures);
        const bool isTaken = isPicked(entity, {toView}, region, mode);
        ++(verdict == Verdict::unsure ? tally.unsure : tally.judged);
        ++tally.answers[{mode, isTaken}];
        if (verdict == Verdict::unsure) continue;
        EXPECT_EQ(isTaken, verdict == Verdict::yes)
            << name << (mode == PickMode::inside ? " inside " : " touching ") << int(region.kind());
    }
}

/// Plan views and others, of places near and far.
AcGeMatrix3d randomView(Random& random, int round) {
    if (round % 3 == 0) return {};
    AcGeMatrix3d view = AcGeMatrix3d::rotation(random.between(0.0, 6.0), random.direction());
    if (round % 3 == 2) view = AcGeMatrix3d::scaling(random.between(0.5, 3.0)) * view;
    return AcGeMatrix3d::translation(inSpace(random, 100.0).asVector()) * view;
}

TEST(Picking, TakesWhatPointsOnTheFigureSay) {
    Random random(20261);
    for (const auto& [name, make] : kinds()) {
        Tally tally;
        for (int round = 0; round < 120; ++round) {
            const EntityPointer entity = make(random);
            const double far = round % 4 == 0 ? 1e7 : round % 4 == 1 ? -1e6 : 0.0;
            const AcGeMatrix3d motion = AcGeMatrix3d::translation({far, far / 3.0, 0.0}) *
                                        AcGeMatrix3d::rotation(random.between(0.0, 6.0), random.direction());
            ASSERT_EQ(entity->transformBy(motion), Acad::eOk) << name;
            Figures figures;
            pickingoracle::appendFigures(figures, *entity, AcGeMatrix3d());
            const AcGeMatrix3d view = randomView(random, round);
            for (int i = 0; i < 3; ++i) compare(*entity, figures, view, random, tally, name);
            if (HasFailure()) return;
        }
        EXPECT_GT(tally.judged, 2 * tally.unsure) << name;
        for (const PickMode mode : {PickMode::touching, PickMode::inside})
            for (const bool isTaken : {false, true})
                EXPECT_GT((tally.answers[{mode, isTaken}]), 8) << name << int(mode) << isTaken;
    }
}

} // namespace
