#include "viewsink.h"

#include "amodeler.h"

#include <map>

using hostkit::PicturePath;
using Run = std::vector<AcGePoint3d>;

namespace {

constexpr int piecesOfCurve = 8; // a curve is at most an eighth of a turn

AcGeMatrix3d viewMatrix(const AcGeVector3d& towardsViewer) {
    const AcGeVector3d z = towardsViewer.normal();
    const AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(z);
    const AcGeVector3d x = across.isZeroLength() ? AcGeVector3d::kXAxis : across.normal();
    AcGeMatrix3d toWorld;
    toWorld.setCoordSystem(AcGePoint3d::kOrigin, x, z.crossProduct(x), z);
    return toWorld.inverse();
}

AcGePoint3d onCurve(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, const AcGePoint3d& d,
                    double t) {
    const double s = 1.0 - t;
    return AcGePoint3d::kOrigin + a.asVector() * (s * s * s) + b.asVector() * (3 * s * s * t) +
           c.asVector() * (3 * s * t * t) + d.asVector() * (t * t * t);
}

std::vector<Run> straightRuns(const PicturePath& path) {
    std::vector<Run> runs;
    const AcGePoint3d* point = path.points().data();
    for (const PicturePath::Step step : path.steps()) {
        if (step == PicturePath::Step::move || runs.empty()) runs.emplace_back();
        Run& run = runs.back();
        switch (step) {
        case PicturePath::Step::close:
            if (!run.empty()) run.push_back(AcGePoint3d(run.front()));
            break;
        case PicturePath::Step::curve: {
            const AcGePoint3d from = run.empty() ? point[0] : run.back();
            for (int i = 1; i <= piecesOfCurve; ++i)
                run.push_back(
                    onCurve(from, point[0], point[1], point[2], static_cast<double>(i) / piecesOfCurve));
            point += 3;
            break;
        }
        default:
            run.push_back(*point++);
        }
    }
    return runs;
}

/// Half-edges between two facets of one surface of which this one's faces the viewer and the other one does
/// not.
std::vector<Run> outlineOfRoundFaces(const AModeler::Body& body) {
    std::vector<Run> lines;
    const auto looksHere = [](const AModeler::Edge& edge) { return edge.face()->plane().normal().z > 0.0; };
    for (const AModeler::Face* face = body.faceList(); face; face = face->next()) {
        const AModeler::Edge* edge = face->surface() ? face->edgeLoop() : nullptr;
        for (int left = edge ? face->edgeCount() : 0; left > 0; --left, edge = edge->next()) {
            const AModeler::Edge* const other = edge->partner();
            if (edge->isBridge() || !other || other->surface() != edge->surface()) continue;
            if (looksHere(*edge) && !looksHere(*other))
                lines.push_back({edge->point(), edge->next()->point()});
        }
    }
    return lines;
}

} // namespace

ViewSink::ViewSink(const AcGeVector3d& towardsViewer, PictureSink& sink)
    : m_sink(sink)
    , m_toView(viewMatrix(towardsViewer)) {}

void ViewSink::stroke(const PicturePath& path, const StrokeStyle& style) {
    PicturePath seen = path;
    seen.transformBy(m_toView);
    m_strokes.push_back({straightRuns(seen), style});
}

void ViewSink::body(const AModeler::Body& body, const AcGeMatrix3d& toWorld, const StrokeStyle& style) {
    AModeler::Body seen = body;
    try {
        seen.transform(m_toView * toWorld);
    } catch (const AModeler::Error&) {
        return; // flattened by its block: it hides nothing
    }
    m_strokes.push_back({outlineOfRoundFaces(seen), style});
    if (!hides()) return;
    for (const AModeler::Body::Triangle& triangle : seen.triangles())
        m_hidden.add(triangle.corners[0]->point(), triangle.corners[1]->point(),
                     triangle.corners[2]->point());
}

void ViewSink::finish() {
    if (hides()) m_hidden.makeIndex();
    const auto flat = [](const AcGePoint3d& point) { return AcGePoint3d(point.x, point.y, 0.0); };
    for (const Stroke& stroke : m_strokes) {
        PicturePath path;
        for (const Run& run : stroke.runs) {
            bool isOpen = false; // the path ends where the next line begins
            for (std::size_t i = 0; i + 1 < run.size(); ++i) {
                const AcGeVector3d along = run[i + 1] - run[i];
                const auto parts = hides() ? m_hidden.seenParts(run[i], run[i + 1])
                                           : std::vector<HiddenLines::Part>{{0.0, 1.0}};
                if (parts.empty()) isOpen = false;
                for (const auto& [from, to] : parts) {
                    if (!isOpen || from > 0.0) path.moveTo(flat(run[i] + along * from));
                    path.lineTo(flat(run[i] + along * to));
                    isOpen = to >= 1.0;
                }
            }
        }
        if (!path.isEmpty()) m_sink.stroke(path, stroke.style);
    }
}
