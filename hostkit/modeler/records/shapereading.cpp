#include "bodydata.h"
#include "shape.h"

#include <cmath>
#include <numbers>
#include <unordered_map>

namespace hostkit::modeler {

namespace {

using Index = Shape::Index;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr std::int64_t kNull = -1;

// One reading. What fails leaves the reason; all that follows does nothing then.
class ShapeReader {
public:
    explicit ShapeReader(const BodyRecords& records)
        : m_records(records) {}

    void run() {
        bool hasBody = false;
        for (const BodyRecord& record : m_records.records)
            if (record.name == "body" && m_fault.empty()) {
                hasBody = true;
                readBody(record);
            }
        if (!hasBody) fail("there is no body");
        if (m_fault.empty() && m_shape.faces.empty()) fail("the body has no faces");
        if (m_fault.empty() && m_hasMatrix && !transformShape(m_shape, m_matrix))
            fail("the transform bends the body");
    }
    ShapeReading take() {
        if (!m_fault.empty()) return {{}, std::move(m_fault)};
        return {std::move(m_shape), {}};
    }

private:
    void fail(std::string fault) {
        if (m_fault.empty()) m_fault = std::move(fault);
    }
    bool good(const BodyFields& fields, const char* name) {
        if (!fields.isGood()) fail(std::string("a record is damaged: ") + name);
        return m_fault.empty();
    }
    // The record that the pointer means, of that kind; null with a fault.
    const BodyRecord* find(std::int64_t place, std::string_view name) {
        if (place < 0 || static_cast<std::size_t>(place) >= m_records.records.size()) {
            fail("a pointer to a " + std::string(name) + " leads nowhere");
            return nullptr;
        }
        const BodyRecord& record = m_records.records[static_cast<std::size_t>(place)];
        if (record.name == name) return &record;
        fail(std::string(name) + " expected, not " + record.name);
        return nullptr;
    }
    // Rings and chains are no longer than the list.
    bool isTooMuch() {
        if (++m_steps <= m_records.records.size() * 2 + 2) return false;
        fail("a chain of records has no end");
        return true;
    }

    void readBody(const BodyRecord& record) {
        BodyFields fields(m_records, record, true);
        std::int64_t lump = fields.pointer();
        if (fields.pointer() != kNull) return fail("the body has wires");
        const std::int64_t transform = fields.pointer();
        if (!good(fields, "body")) return;
        if (transform != kNull) readTransform(transform);
        Index number = 0;
        for (; lump != kNull && m_fault.empty() && !isTooMuch(); ++number) {
            const BodyRecord* const found = find(lump, "lump");
            if (!found) return;
            BodyFields lumpFields(m_records, *found, true);
            lump = lumpFields.pointer();
            const std::int64_t shell = lumpFields.pointer();
            if (good(lumpFields, "lump")) readShells(shell, number);
        }
    }

    // p' = scale * (p * L) + T, the rows of L being the images of the axes.
    void readTransform(std::int64_t place) {
        const BodyRecord* const record = find(place, "transform");
        if (!record) return;
        BodyFields fields(m_records, *record, false);
        fields.enterLongString();
        AcGeVector3d rows[4];
        for (AcGeVector3d& row : rows) row = fields.vector();
        const double scale = fields.real();
        if (!good(fields, "transform")) return;
        m_matrix.setCoordSystem({rows[3].x, rows[3].y, rows[3].z}, rows[0] * scale, rows[1] * scale,
                                rows[2] * scale);
        m_hasMatrix = true;
    }

    void readShells(std::int64_t shell, Index lump) {
        while (shell != kNull && m_fault.empty() && !isTooMuch()) {
            const BodyRecord* const record = find(shell, "shell");
            if (!record) return;
            BodyFields fields(m_records, *record, true);
            shell = fields.pointer();
            const std::int64_t subshell = fields.pointer();
            const std::int64_t face = fields.pointer();
            if (!good(fields, "shell")) return;
            if (subshell != kNull) return fail("a shell has shells within");
            m_shape.shellLumps.push_back(lump);
            readFaces(face);
        }
    }

    void readFaces(std::int64_t place) {
        while (place != kNull && m_fault.empty() && !isTooMuch()) {
            const BodyRecord* const record = find(place, "face");
            if (!record) return;
            BodyFields fields(m_records, *record, true);
            place = fields.pointer();
            const std::int64_t loop = fields.pointer();
            (void)fields.pointer(); // the shell
            const std::int64_t subshell = fields.pointer();
            const std::int64_t surface = fields.pointer();
            Shape::Face face;
            face.isReversed = fields.logical();
            face.isDouble = fields.logical();
            face.shell = static_cast<Index>(m_shape.shellLumps.size() - 1);
            if (!good(fields, "face")) return;
            if (subshell != kNull) return fail("a face is in a shell within another");
            readSurface(surface, face.surface);
            readLoops(loop, face);
            m_shape.faces.push_back(face);
        }
    }

    void readLoops(std::int64_t place, Shape::Face& face) {
        face.firstLoop = static_cast<Index>(m_shape.loopStarts.size() - 1);
        while (place != kNull && m_fault.empty() && !isTooMuch()) {
            const BodyRecord* const record = find(place, "loop");
            if (!record) return;
            BodyFields fields(m_records, *record, true);
            place = fields.pointer();
            const std::int64_t coedge = fields.pointer();
            if (!good(fields, "loop")) return;
            readRing(coedge);
            ++face.loopCount;
        }
        const bool needsLoop =
            face.surface.kind == ShapeSurface::Kind::plane || face.surface.kind == ShapeSurface::Kind::cone;
        if (face.loopCount == 0 && needsLoop) fail("a face has no bounds");
    }

    void readRing(std::int64_t first) {
        std::int64_t place = first;
        do {
            const BodyRecord* const record = find(place, "coedge");
            if (!record || isTooMuch()) return;
            BodyFields fields(m_records, *record, true);
            place = fields.pointer();
            (void)fields.pointer(); // back
            (void)fields.pointer(); // the partner: edges tell
            const std::int64_t edge = fields.pointer();
            Shape::Coedge coedge;
            coedge.isReversed = fields.logical();
            if (!good(fields, "coedge")) return;
            coedge.edge = edgeAt(edge);
            if (!m_fault.empty()) return;
            m_shape.coedges.push_back(coedge);
        } while (place != first);
        m_shape.loopStarts.push_back(static_cast<Index>(m_shape.coedges.size()));
        checkRing();
    }

    // Each coedge begins where the one before ends.
    void checkRing() {
        const Index begin = m_shape.loopStarts[m_shape.loopStarts.size() - 2];
        const Index end = m_shape.loopStarts.back();
        for (Index place = begin; place < end; ++place)
            if (m_shape.endOf(m_shape.coedges[place]) !=
                m_shape.startOf(m_shape.coedges[place + 1 == end ? begin : place + 1]))
                return fail("the edges of a loop do not follow each other");
    }

    Index edgeAt(std::int64_t place) {
        const auto [found, isNew] = m_edges.try_emplace(place, static_cast<Index>(m_shape.edges.size()));
        if (!isNew) return found->second;
        const BodyRecord* const record = find(place, "edge");
        if (!record) return 0;
        BodyFields fields(m_records, *record, true);
        Shape::Edge edge;
        const std::int64_t start = fields.pointer();
        const bool hasParameters = fields.isAtNumber();
        if (hasParameters) edge.from = fields.real();
        const std::int64_t end = fields.pointer();
        if (hasParameters) edge.to = fields.real();
        (void)fields.pointer(); // a coedge
        const std::int64_t curve = fields.pointer();
        const bool isReversed = fields.logical();
        if (!good(fields, "edge")) return 0;
        edge.start = vertexAt(start);
        edge.end = vertexAt(end);
        if (curve != kNull) readCurve(curve, edge.curve);
        if (!m_fault.empty()) return 0;
        if (isReversed) edge.curve.direction = -edge.curve.direction;
        fixParameters(edge);
        m_shape.edges.push_back(edge);
        return found->second;
    }

    // Older data have none. What the file has is taken for an angle's whole turns only: the vertices say
    // where an edge ends.
    void fixParameters(Shape::Edge& edge) {
        if (edge.curve.kind == ShapeCurve::Kind::none) {
            if (edge.start != edge.end) fail("an edge between two points has no curve");
            edge.from = edge.to = 0.0;
            return;
        }
        const double from = edge.curve.parameterOf(m_shape.vertices[edge.start]);
        double to = edge.curve.parameterOf(m_shape.vertices[edge.end]);
        if (edge.curve.kind == ShapeCurve::Kind::ellipse) {
            if (edge.start == edge.end)
                to = from + kTwoPi;
            else
                while (to <= from) to += kTwoPi;
        }
        edge.from = from;
        edge.to = to;
        const double reach = 1e-4 * (1.0 + (m_shape.vertices[edge.start] - AcGePoint3d::kOrigin).length());
        const bool isOn = edge.curve.at(from).distanceTo(m_shape.vertices[edge.start]) <= reach &&
                          edge.curve.at(to).distanceTo(m_shape.vertices[edge.end]) <= reach;
        if (!isOn) // also where a number is none
            fail("an edge ends away from its curve");
    }

    Index vertexAt(std::int64_t place) {
        const auto [found, isNew] =
            m_vertices.try_emplace(place, static_cast<Index>(m_shape.vertices.size()));
        if (!isNew) return found->second;
        m_shape.vertices.emplace_back();
        const BodyRecord* const record = find(place, "vertex");
        if (!record) return 0;
        BodyFields fields(m_records, *record, true);
        (void)fields.pointer();                       // an edge
        if (fields.isAtNumber()) (void)fields.real(); // which end of it
        const std::int64_t point = fields.pointer();
        if (!good(fields, "vertex")) return 0;
        const BodyRecord* const pointRecord = find(point, "point");
        if (!pointRecord) return 0;
        BodyFields pointFields(m_records, *pointRecord, true);
        m_shape.vertices[found->second] = pointFields.point();
        (void)good(pointFields, "point");
        return found->second;
    }

    void readCurve(std::int64_t place, ShapeCurve& curve) {
        if (place < 0 || static_cast<std::size_t>(place) >= m_records.records.size())
            return fail("a pointer to a curve leads nowhere");
        const BodyRecord& record = m_records.records[static_cast<std::size_t>(place)];
        if (record.name != "straight-curve" && record.name != "ellipse-curve")
            return fail("an edge is no line and no ellipse: " + record.name);
        BodyFields fields(m_records, record, true);
        curve.kind = record.name == "straight-curve" ? ShapeCurve::Kind::line : ShapeCurve::Kind::ellipse;
        curve.origin = fields.point();
        curve.direction = fields.vector();
        if (curve.kind == ShapeCurve::Kind::ellipse) {
            curve.major = fields.vector();
            curve.ratio = fields.real();
        }
        if (!good(fields, "curve")) return;
        const bool isEmpty = curve.direction.lengthSqrd() <= 0.0 ||
                             (curve.kind == ShapeCurve::Kind::ellipse && !(curve.minor().lengthSqrd() > 0.0));
        if (isEmpty) return fail("a curve has no extent");
        curve.direction.normalize();
    }

    void readSurface(std::int64_t place, ShapeSurface& surface) {
        if (place < 0 || static_cast<std::size_t>(place) >= m_records.records.size())
            return fail("a pointer to a surface leads nowhere");
        const BodyRecord& record = m_records.records[static_cast<std::size_t>(place)];
        BodyFields fields(m_records, record, true);
        surface.origin = fields.point();
        if (record.name == "plane-surface") {
            surface.axis = fields.vector();
            surface.major = fields.vector();
        } else if (record.name == "cone-surface") {
            readCone(fields, surface);
        } else if (record.name == "sphere-surface") {
            surface.kind = ShapeSurface::Kind::sphere;
            surface.radius = fields.real();
            surface.major = fields.vector();
            surface.axis = fields.vector();
        } else if (record.name == "torus-surface") {
            surface.kind = ShapeSurface::Kind::torus;
            surface.axis = fields.vector();
            surface.radius = fields.real();
            surface.minorRadius = fields.real();
            surface.major = fields.vector();
        } else {
            return fail("a face is no plane, cone, sphere or torus: " + record.name);
        }
        if (!good(fields, "surface")) return;
        if (!(surface.axis.lengthSqrd() > 0.0) || !(surface.major.lengthSqrd() > 0.0))
            return fail("a surface has no direction");
        surface.axis.normalize();
        if (surface.kind != ShapeSurface::Kind::cone) surface.major.normalize();
    }

    void readCone(BodyFields& fields, ShapeSurface& surface) {
        surface.kind = ShapeSurface::Kind::cone;
        surface.axis = fields.vector();
        surface.major = fields.vector();
        surface.ratio = fields.real();
        fields.skipInterval();
        surface.sine = fields.real();
        surface.cosine = fields.real();
        if (fields.isGood() && (!(surface.ratio > 0.0) || surface.cosine == 0.0))
            fail("a cone has no extent");
    }

    const BodyRecords& m_records;
    Shape m_shape;
    std::string m_fault;
    std::size_t m_steps = 0;
    bool m_hasMatrix = false;
    AcGeMatrix3d m_matrix;
    std::unordered_map<std::int64_t, Index> m_edges;
    std::unordered_map<std::int64_t, Index> m_vertices;
};

} // namespace

ShapeReading readShape(std::string_view bytes) {
    const BodyRecords records = readBodyRecords(bytes);
    if (!records.fault.empty()) return {{}, records.fault};
    ShapeReader reader(records);
    reader.run();
    return reader.take();
}

} // namespace hostkit::modeler
