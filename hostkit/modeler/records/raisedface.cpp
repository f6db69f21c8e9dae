#include "raisedface.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace hostkit::modeler {

namespace {

using Index = Polyhedron::Index;

/// Loops of points with the material to the left, seen against the normal.
struct Profile {
    std::vector<std::vector<AcGePoint3d>> loops;
    AcGeVector3d normal;
};

Profile profileOf(const Polyhedron& sheet, bool isTurned) {
    const Polyhedron::Face& face = sheet.faces.front();
    Profile profile{{}, isTurned ? -face.normal : face.normal};
    for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop) {
        std::vector<AcGePoint3d>& points = profile.loops.emplace_back();
        for (Index place = sheet.loopStarts[loop]; place < sheet.loopStarts[loop + 1]; ++place)
            points.push_back(sheet.points[sheet.corners[place]]);
        if (isTurned) std::reverse(points.begin(), points.end());
    }
    return profile;
}

// Each side moved to its left by `inset`; false where a side turns round.
bool insetLoop(const std::vector<AcGePoint3d>& loop, const AcGeVector3d& normal, double inset,
               std::vector<AcGePoint3d>& result) {
    const std::size_t count = loop.size();
    for (std::size_t place = 0; place < count; ++place) {
        const AcGeVector3d before = (loop[place] - loop[(place + count - 1) % count]).normal();
        const AcGeVector3d after = (loop[(place + 1) % count] - loop[place]).normal();
        const AcGeVector3d left = normal.crossProduct(before) + normal.crossProduct(after);
        const double reach = left.lengthSqrd() / 2.0; // 1 + cos of the turn
        constexpr double sharp = 1e-6;
        if (!(reach > sharp)) return false;
        result.push_back(loop[place] + left * (inset / reach));
    }
    for (std::size_t place = 0; place < count; ++place) {
        const AcGeVector3d was = loop[(place + 1) % count] - loop[place],
                           is = result[(place + 1) % count] - result[place];
        if (!(was.dotProduct(is) > 0.0)) return false;
    }
    return true;
}

void addFace(Polyhedron& body, const AcGeVector3d& normal, const std::vector<std::vector<Index>>& loops,
             const AModeler::Surface* surface) {
    Polyhedron::Face face;
    face.normal = normal;
    face.distance = normal.dotProduct(body.points[loops.front().front()].asVector());
    face.firstLoop = body.loopCount();
    face.loopCount = static_cast<Index>(loops.size());
    face.surface = surface;
    for (const std::vector<Index>& loop : loops) {
        body.corners.insert(body.corners.end(), loop.begin(), loop.end());
        body.loopStarts.push_back(static_cast<Index>(body.corners.size()));
    }
    body.faces.push_back(face);
}

/// The arcs of the shape as surfaces, and to which of them a side of the profile belongs.
class ArcSurfaces {
public:
    ArcSurfaces(const Shape& shape, const AcGeVector3d& along)
        : m_shape(shape) {
        for (const Shape::Edge& edge : shape.edges)
            m_surfaces.push_back(edge.curve.kind == ShapeCurve::Kind::ellipse
                                     ? m_owner.newSurface(AModeler::Line3d(edge.curve.origin, along),
                                                          edge.curve.major.length())
                                     : nullptr);
    }
    [[nodiscard]] const AModeler::Surface* of(const AcGePoint3d& from, const AcGePoint3d& to) const {
        for (std::size_t edge = 0; edge < m_surfaces.size(); ++edge)
            if (m_surfaces[edge] && isOn(m_shape.edges[edge], from) && isOn(m_shape.edges[edge], to))
                return m_surfaces[edge];
        return nullptr;
    }
    [[nodiscard]] const AModeler::Body& owner() const { return m_owner; }

private:
    static bool isOn(const Shape::Edge& edge, const AcGePoint3d& point) {
        constexpr double turn = 6.28318530717958647692, rounding = 1e-9;
        double t = edge.curve.parameterOf(point);
        while (t < edge.from - rounding) t += turn;
        return t <= edge.to + rounding && edge.curve.at(t).distanceTo(point) <= AModeler::gEpsAbs;
    }
    const Shape& m_shape;
    AModeler::Body m_owner;
    std::vector<const AModeler::Surface*> m_surfaces;
};

} // namespace

std::optional<AModeler::Body> raisedFace(const Polyhedron& sheet, const Shape& shape, double height,
                                         double taper) {
    const Profile base = profileOf(sheet, height < 0.0);
    const double rise = std::abs(height);
    const ArcSurfaces arcs(shape, base.normal * rise);
    Polyhedron body;
    std::vector<std::vector<Index>> bottom, top;
    for (const std::vector<AcGePoint3d>& loop : base.loops) {
        std::vector<AcGePoint3d> upper;
        if (!insetLoop(loop, base.normal, rise * std::tan(taper), upper)) return {};
        const auto first = static_cast<Index>(body.points.size());
        const auto count = static_cast<Index>(loop.size());
        body.points.insert(body.points.end(), loop.begin(), loop.end());
        for (const AcGePoint3d& point : upper) body.points.push_back(point + base.normal * rise);
        std::vector<Index>&low = bottom.emplace_back(), &high = top.emplace_back();
        for (Index place = 0; place < count; ++place) {
            low.push_back(first + count - 1 - place);
            high.push_back(first + count + place);
        }
        for (Index place = 0; place < count; ++place) {
            const Index next = (place + 1) % count;
            const AcGeVector3d along = loop[next] - loop[place];
            const AcGeVector3d up = body.points[first + count + place] - loop[place];
            addFace(body, along.crossProduct(up).normal(),
                    {{first + place, first + next, first + count + next, first + count + place}},
                    arcs.of(loop[place], loop[next]));
        }
    }
    addFace(body, -base.normal, bottom, nullptr);
    addFace(body, base.normal, top, nullptr);
    const AModeler::Body* const source = &arcs.owner();
    return AModeler::Body::fromPolyhedron(body, {&source, 1});
}

Shape sheetOf(const Shape& shape, const Shape::Face& face) {
    Shape sheet;
    Shape::Face own = face;
    own.isDouble = true;
    own.firstLoop = 0;
    own.shell = 0;
    std::map<Index, Index> edges, vertices;
    const auto vertexOf = [&](Index vertex) {
        const auto [found, isNew] = vertices.try_emplace(vertex, static_cast<Index>(sheet.vertices.size()));
        if (isNew) sheet.vertices.push_back(shape.vertices[vertex]);
        return found->second;
    };
    for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop) {
        for (Index place = shape.loopStarts[loop]; place < shape.loopStarts[loop + 1]; ++place) {
            const Shape::Coedge& coedge = shape.coedges[place];
            const auto [found, isNew] =
                edges.try_emplace(coedge.edge, static_cast<Index>(sheet.edges.size()));
            if (isNew) {
                Shape::Edge edge = shape.edges[coedge.edge];
                edge.start = vertexOf(edge.start);
                edge.end = vertexOf(edge.end);
                sheet.edges.push_back(edge);
            }
            sheet.coedges.push_back({found->second, coedge.isReversed});
        }
        sheet.loopStarts.push_back(static_cast<Index>(sheet.coedges.size()));
    }
    sheet.faces.push_back(own);
    sheet.shellLumps.push_back(0);
    return sheet;
}

} // namespace hostkit::modeler
