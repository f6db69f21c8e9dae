// What a region takes, found out the slow way: by points on the figure, close to each other, and by
// distances.
#pragma once

#include "pickregion.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbattribute.h"
#include "dbblocktablerecord.h"
#include "dbcurve.h"
#include "dbdim.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbminsert.h"
#include "dbobjptr.h"
#include "dbpoint.h"
#include "dbpolyline.h"
#include "dbsolid.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace pickingoracle {

enum class Verdict { no, yes, unsure };

/// Lines of points, those of one figure; a filled one covers what they enclose an odd number of times.
struct Figure {
    std::vector<std::vector<AcGePoint3d>> lines;
    bool isFilled = false;
};
using Figures = std::vector<Figure>;

inline void appendSamples(std::vector<AcGePoint3d>& line, const AcDbCurve& curve, int perUnit) {
    double from = 0.0;
    double to = 0.0;
    ASSERT_EQ(curve.getStartParam(from), Acad::eOk);
    ASSERT_EQ(curve.getEndParam(to), Acad::eOk);
    const int count = std::max(perUnit, static_cast<int>(std::ceil(to - from)) * perUnit);
    AcGePoint3d point;
    for (int i = 0; i <= count; ++i) {
        ASSERT_EQ(curve.getPointAtParam(i == count ? to : from + (to - from) * i / count, point), Acad::eOk);
        line.push_back(point);
    }
}

inline Figure traced(const AcDbCurve& curve) {
    constexpr int samples = 240;
    Figure figure;
    figure.lines.emplace_back();
    appendSamples(figure.lines.back(), curve, samples);
    return figure;
}

inline Figure filled(const std::vector<AcGePoint3d>& corners) {
    constexpr int samples = 200;
    Figure figure{{{}}, true};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const AcGeVector3d side = corners[(i + 1) % corners.size()] - corners[i];
        for (int k = 0; k <= samples; ++k)
            figure.lines[0].push_back(corners[i] + side * (double(k) / samples));
    }
    return figure;
}

/// The hatch has polyline loops, all of which count.
inline Figure traced(const AcDbHatch& hatch) {
    Figure figure{{}, true};
    AcGeMatrix3d toWorld;
    hatch.getEcs(toWorld);
    for (int i = 0; i < hatch.numLoops(); ++i) {
        Adesk::Int32 type = 0;
        AcGePoint2dArray vertices;
        AcGeDoubleArray bulges;
        EXPECT_EQ(hatch.getLoopAt(i, type, vertices, bulges), Acad::eOk);
        AcDbPolyline loop;
        for (int k = 0; k < vertices.length(); ++k)
            (void)loop.addVertexAt(k, vertices[k], k < bulges.length() ? bulges[k] : 0.0);
        loop.setClosed(true);
        Figure one = traced(loop);
        for (AcGePoint3d& point : one.lines[0]) {
            point.z = hatch.elevation();
            point.transformBy(toWorld);
        }
        figure.lines.push_back(one.lines[0]);
    }
    return figure;
}

inline std::vector<AcGePoint3d> cornersOf(const AcDbText& text) {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(text.normal(), x, y);
    const AcGeVector3d along = x * std::cos(text.rotation()) + y * std::sin(text.rotation());
    const AcGeVector3d up = text.normal().crossProduct(along) + along * std::tan(text.oblique());
    const double width = text.estimatedWidth();
    const AcGeVector3d run = along * (text.isMirroredInX() ? -width : width);
    const AcGeVector3d rise = up * text.height();
    const AcGePoint3d start = text.position();
    return {start, start + run, start + run + rise, start + rise};
}

void appendFigures(Figures& figures, const AcDbEntity& entity, const AcGeMatrix3d& toWorld);

inline void appendBlock(Figures& figures, AcDbObjectId block, const AcGeMatrix3d& toWorld) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    for (const AcDbObjectId id : record->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.object()) appendFigures(figures, *entity.object(), toWorld);
    }
}

inline void appendReference(Figures& figures, const AcDbBlockReference& reference,
                            const AcGeMatrix3d& toWorld) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord(), AcDb::kForRead);
    AcGeMatrix3d scale;
    scale.entry[0][0] = reference.scaleFactors().sx;
    scale.entry[1][1] = reference.scaleFactors().sy;
    scale.entry[2][2] = reference.scaleFactors().sz;
    const AcGeMatrix3d axes = AcGeMatrix3d::planeToWorld(reference.normal()) *
                              AcGeMatrix3d::rotation(reference.rotation(), AcGeVector3d::kZAxis);
    const auto* array = AcDbMInsertBlock::cast(&reference);
    for (int row = 0; row < (array ? array->rows() : 1); ++row)
        for (int column = 0; column < (array ? array->columns() : 1); ++column) {
            AcGeVector3d step;
            if (array) step.set(column * array->columnSpacing(), row * array->rowSpacing(), 0.0);
            const AcGeMatrix3d place =
                AcGeMatrix3d::translation(reference.position().asVector() + axes * step) * axes * scale *
                AcGeMatrix3d::translation(-block->origin().asVector());
            appendBlock(figures, block->objectId(), toWorld * place);
        }
    const std::unique_ptr<AcDbObjectIterator> each(reference.attributeIterator());
    for (; !each->done(); each->step()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(each->objectId(), AcDb::kForRead);
        appendFigures(figures, *attribute.object(), toWorld);
    }
}

/// Of the kinds that the tests make, in the world's coordinates.
inline void appendFigures(Figures& figures, const AcDbEntity& entity, const AcGeMatrix3d& toWorld) {
    if (const auto* reference = AcDbBlockReference::cast(&entity))
        return appendReference(figures, *reference, toWorld);
    if (const auto* dimension = AcDbDimension::cast(&entity))
        return appendBlock(figures, dimension->dimBlockId(), toWorld);
    Figure figure;
    std::vector<AcGePoint3d> corners(4);
    if (const auto* curve = AcDbCurve::cast(&entity)) {
        figure = traced(*curve);
    } else if (const auto* hatch = AcDbHatch::cast(&entity)) {
        figure = traced(*hatch);
    } else if (const auto* text = AcDbText::cast(&entity)) {
        figure = filled(cornersOf(*text));
    } else if (const auto* face = AcDbFace::cast(&entity)) {
        for (Adesk::UInt16 i = 0; i < 4; ++i) (void)face->getVertexAt(i, corners[i]);
        figure = filled(corners);
    } else if (const auto* solid = AcDbSolid::cast(&entity)) {
        for (Adesk::UInt16 i = 0; i < 4; ++i) (void)solid->getPointAt(i, corners[i]);
        std::swap(corners[2], corners[3]);
        figure = filled(corners);
    } else if (const auto* point = AcDbPoint::cast(&entity)) {
        figure.lines = {{point->position()}};
    } else {
        ADD_FAILURE() << "no figure for this kind";
    }
    for (auto& line : figure.lines)
        for (AcGePoint3d& point : line) point.transformBy(toWorld);
    figures.push_back(figure);
}

struct Flat {
    double x;
    double y;
};

inline double distance(const Flat& a, const Flat& b) { return std::hypot(a.x - b.x, a.y - b.y); }

inline double distance(const Flat& p, const Flat& a, const Flat& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double square = dx * dx + dy * dy;
    double t = square > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return distance(p, {a.x + t * dx, a.y + t * dy});
}

inline bool isOddlyWithin(const Flat& p, const std::vector<std::vector<Flat>>& rings) {
    bool within = false;
    for (const auto& ring : rings)
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Flat& a = ring[i];
            const Flat& b = ring[(i + 1) % ring.size()];
            if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y))
                within = !within;
        }
    return within;
}

/// One region, asked about figures seen by a matrix.
class Judge {
public:
    Judge(const hostkit::PickRegion& region, const AcGeMatrix3d& toView)
        : m_isFence(region.kind() == hostkit::PickRegion::Kind::fence)
        , m_toView(toView)
        , m_origin{region.low().x, region.low().y} {
        for (const AcGePoint2d& corner : region.corners())
            m_corners.push_back({corner.x - m_origin.x, corner.y - m_origin.y});
        m_far = 1e-12 * (std::abs(m_origin.x) + std::abs(m_origin.y));
    }

    Verdict touches(const Figures& figures) const {
        Verdict all = Verdict::no;
        for (const Figure& figure : figures) {
            const Verdict one = touches(figure);
            if (one == Verdict::yes) return one;
            if (one == Verdict::unsure) all = one;
        }
        return all;
    }
    Verdict holds(const Figures& figures) const {
        if (figures.empty() || m_isFence) return Verdict::no;
        Verdict all = Verdict::yes;
        for (const Figure& figure : figures) {
            const Verdict one = holds(figure);
            if (one == Verdict::no) return one;
            if (one == Verdict::unsure) all = one;
        }
        return all;
    }

private:
    using Lines = std::vector<std::vector<Flat>>;

    Flat seen(const AcGePoint3d& p) const {
        const auto& m = m_toView.entry;
        return {m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + (m[0][3] - m_origin.x),
                m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + (m[1][3] - m_origin.y)};
    }
    Lines seen(const Figure& figure) const {
        Lines lines;
        for (const auto& line : figure.lines) {
            lines.emplace_back();
            for (const AcGePoint3d& point : line) lines.back().push_back(seen(point));
        }
        return lines;
    }
    /// No point of the figure is farther from the nearest sample, nor from the chord between two.
    double gapOf(const Lines& lines) const {
        double gap = 0.0;
        for (const auto& line : lines)
            for (std::size_t i = 0; i + 1 < line.size(); ++i)
                gap = std::max(gap, distance(line[i], line[i + 1]));
        return gap + m_far;
    }
    std::size_t sides() const { return m_isFence ? m_corners.size() - 1 : m_corners.size(); }
    double toEdge(const Flat& p) const {
        double nearest = HUGE_VAL;
        for (std::size_t i = 0; i < sides(); ++i)
            nearest = std::min(nearest, distance(p, m_corners[i], m_corners[(i + 1) % m_corners.size()]));
        return nearest;
    }
    bool isWithin(const Flat& p) const { return !m_isFence && isOddlyWithin(p, {m_corners}); }
    double toLines(const Flat& p, const Lines& lines) const {
        double nearest = HUGE_VAL;
        for (const auto& line : lines)
            for (const Flat& each : line) nearest = std::min(nearest, distance(p, each));
        return nearest;
    }
    /// The chord passes the side well away from the side's ends.
    bool crossesSide(const Flat& p, const Flat& q, double gap) const {
        for (std::size_t i = 0; i < sides(); ++i) {
            const Flat& a = m_corners[i];
            const Flat& b = m_corners[(i + 1) % m_corners.size()];
            const double length = distance(a, b);
            if (length == 0.0) continue;
            const auto height = [&](const Flat& c) {
                return ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / length;
            };
            const auto along = [&](const Flat& c) {
                return ((b.x - a.x) * (c.x - a.x) + (b.y - a.y) * (c.y - a.y)) / length;
            };
            const double low = 3.0 * gap + m_far;
            const bool isBeside =
                along(p) > low && along(p) < length - low && along(q) > low && along(q) < length - low;
            const bool isAcross = std::abs(height(p)) > m_far && std::abs(height(q)) > m_far &&
                                  (height(p) > 0) != (height(q) > 0);
            if (isBeside && isAcross) return true;
        }
        return false;
    }

    Verdict touches(const Figure& figure) const {
        const Lines lines = seen(figure);
        const double gap = gapOf(lines);
        double nearest = HUGE_VAL;
        for (const auto& line : lines)
            for (std::size_t i = 0; i < line.size(); ++i) {
                const double edge = toEdge(line[i]);
                if (isWithin(line[i]) && edge > m_far) return Verdict::yes;
                if (i > 0 && crossesSide(line[i - 1], line[i], gap)) return Verdict::yes;
                nearest = std::min(nearest, edge);
            }
        if (nearest <= gap) return Verdict::unsure;
        return figure.isFilled && isOddlyWithin(m_corners[0], lines) ? Verdict::yes : Verdict::no;
    }
    Verdict holds(const Figure& figure) const {
        const Lines lines = seen(figure);
        const double gap = gapOf(lines);
        double nearest = HUGE_VAL;
        for (const auto& line : lines)
            for (const Flat& each : line) {
                const double edge = toEdge(each);
                if (!isWithin(each) && edge > m_far + 1e-9) return Verdict::no;
                nearest = std::min(nearest, edge);
            }
        if (nearest <= gap) return Verdict::unsure;
        if (!figure.isFilled) return Verdict::yes;
        for (const Flat& corner : m_corners)
            if (isOddlyWithin(corner, lines)) return Verdict::no;
        return Verdict::yes;
    }

    bool m_isFence;
    AcGeMatrix3d m_toView;
    Flat m_origin;
    std::vector<Flat> m_corners;
    double m_far;
};

} // namespace pickingoracle
