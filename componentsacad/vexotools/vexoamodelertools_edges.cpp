#include "vexoamodelertools.h"

#include "vexoamodelertools_internal.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "dbextents.h"
#include "dbline.h"

#include <cmath>
#include <memory>

using AModeler::Body;
using AModeler::Edge;
using AModeler::Face;
using AModeler::Vertex;
using namespace vexo;

namespace {

constexpr std::uint32_t kBridgeFlag = Edge::bridgeFlag;
constexpr std::uint32_t kVisitedFlag = 2;
/// The box of a body is wider than its vertices by so many tolerances.
constexpr double kBoxTolerances = 10.0;

AcGeVector3d runOf(const Edge& edge) { return edge.next()->point() - edge.point(); }

bool isNothing(double difference) { return difference * difference <= kSquaredTolerance; }

bool runsAlong(const Face& face, const AcGeVector3d& normal) {
    return face.plane().normal().isEqualTo(normal);
}

/// The edges around a side of four that is taken out. The anchor P runs from a to b, E from b to c; b and c
/// vanish.
class LateralRemoval {
public:
    LateralRemoval(Body& body, Face& lateral, Edge& anchor)
        : m_body(body)
        , m_lateral(lateral)
        , P(&anchor)
        , E(anchor.next())
        , N(E->next())
        , Q(E->partner())
        , R(P->partner())
        , S(N->partner()) {}

    /// Both sides have four edges, and what is relinked meets: else the body would not be closed behind it.
    [[nodiscard]] bool isPossible() const {
        if (!Q || !R || !S || m_lateral.edgeCount() != 4 || !Q->face() || Q->face() == &m_lateral)
            return false;
        if (Q->face()->edgeCount() != 4 || R->face()->edgeCount() < 4 || S->face()->edgeCount() < 4)
            return false;
        return Q->next()->partner() == R->prev() && Q->prev()->partner() == S->next() && isInBody(m_lateral);
    }

    void run() {
        const Vertex &first = *E->vertex(), &second = *N->vertex();
        Edge *const closing = P->prev(), *const before = Q->prev(), *const behind = Q->next();
        Edge *const across = before->prev(), *const nextOfS = S->next();
        Face& grown = *Q->face();
        link(P, across);
        link(before, closing);
        link(R->prev(), R->next());
        link(S, nextOfS->next());
        pair(P, R->prev());
        pair(S, before);
        moveHead(grown, Q, closing);
        moveHead(grown, behind, P);
        moveHead(*R->face(), R, R->next());
        moveHead(*S->face(), nextOfS, S);
        P->setFace(&grown);
        closing->setFace(&grown);
        unlinkFace();
        unlinkVertex(first);
        unlinkVertex(second);
    }

private:
    static void link(Edge* edge, Edge* next) {
        edge->setNext(next);
        next->setPrev(edge);
    }
    static void pair(Edge* a, Edge* b) {
        a->setPartner(b);
        b->setPartner(a);
    }
    static void moveHead(Face& face, const Edge* from, Edge* to) {
        if (face.edgeLoop() == from) face.setEdgeLoop(to);
    }
    [[nodiscard]] bool isInBody(const Face& face) const {
        return findFace(m_body, [&](const Face& each) { return &each == &face; }) != nullptr;
    }

    void unlinkFace() {
        if (m_body.faceList() == &m_lateral) return m_body.setFaceList(m_lateral.next());
        Face* const before = findFace(m_body, [&](const Face& face) { return face.next() == &m_lateral; });
        if (before) before->setNext(m_lateral.next());
    }
    void unlinkVertex(const Vertex& vertex) {
        if (m_body.vertexList() == &vertex) return m_body.setVertexList(vertex.next());
        for (Vertex* each = m_body.vertexList(); each; each = each->next())
            if (each->next() == &vertex) return each->setNext(vertex.next());
    }

    Body& m_body;
    Face& m_lateral;
    Edge *P, *E, *N, *Q, *R, *S;
};

/// A partner there and back that begins where this edge ends, ends where it begins, and runs against it.
bool isPartnered(const Edge& edge) {
    const Edge* const partner = edge.partner();
    if (!partner || partner->partner() != &edge || !edge.next() || !partner->next()) return false;
    if (edge.vertex() != partner->next()->vertex() || partner->vertex() != edge.next()->vertex())
        return false;
    return runOf(edge).normal().isCodirectionalTo(-runOf(*partner).normal());
}

bool isSoundFace(const Face& face) {
    if (!face.edgeLoop() || !face.isPlanar(AModeler::gEpsAbs) || face.edgeCount() < 3) return false;
    return !findEdge(face, [](const Edge& edge) { return !isPartnered(edge); });
}

void forEachEdge(const Body& body, auto&& visit) {
    findFace(body, [&](const Face& face) {
        findEdge(face, [&](Edge& edge) {
            visit(edge);
            return false;
        });
        return false;
    });
}

/// Is the edge a part of the side that the edge before it belongs to: facets of one arc.
bool continuesSide(const Edge& edge) {
    const Edge *const before = edge.prev()->partner(), *const across = edge.partner();
    return before && across && across->surface() && before->surface() == across->surface();
}

} // namespace

bool VEXOAModelerTools::isVerticalEdge(Edge* edge) {
    CVxLogEntry entry(L"VEXOAModelerTools::isVerticalEdge");
    if (!edge || !edge->next()) return false;
    const AcGeVector3d run = runOf(*edge);
    return isNothing(run.x) && isNothing(run.y);
}

bool VEXOAModelerTools::isHorizontalEdge(Edge* edge) {
    CVxLogEntry entry(L"VEXOAModelerTools::isHorizontalEdge");
    return edge && edge->next() && isNothing(runOf(*edge).z);
}

Edge* VEXOAModelerTools::getNextSkipBridge(Edge* edge) {
    CVxLogEntry entry(L"VEXOAModelerTools::getNextSkipBridge");
    if (!edge) return nullptr;
    Edge* next = edge->next();
    while (next && next != edge && next->isBridge() && next->partner()) next = next->partner()->next();
    return next;
}

bool VEXOAModelerTools::getFace(Body& body, AcGeVector3d normal, Face*& face) {
    CVxLogEntry entry(L"VEXOAModelerTools::getFace");
    return guarded(false, [&] {
        const AcGeVector3d direction = normal.normal();
        Face* const found = findFace(body, [&](const Face& each) { return runsAlong(each, direction); });
        if (found) face = found;
        return found != nullptr;
    });
}

bool VEXOAModelerTools::getFace(Body& body, Edge* edge, AcGeVector3d normal, bool sameSense, Face*& face) {
    CVxLogEntry entry(L"VEXOAModelerTools::getFace");
    if (!edge) return false;
    return guarded(false, [&] {
        Face* const found = findFace(body, [&](const Face& each) {
            if (!runsAlong(each, normal) && (sameSense || !runsAlong(each, -normal))) return false;
            return findEdge(each, [&](const Edge& own) { return own.point().isEqual(edge->point()); }) !=
                   nullptr;
        });
        if (found) face = found;
        return found != nullptr;
    });
}

bool VEXOAModelerTools::getEdge(Face* face, AcGePoint3d point, Edge*& edge) {
    CVxLogEntry entry(L"VEXOAModelerTools::getEdge");
    edge = face ? findEdge(*face, [&](const Edge& each) { return each.point().isEqual(point); }) : nullptr;
    return edge != nullptr;
}

bool VEXOAModelerTools::detectAndSetBridges(Face* face) {
    CVxLogEntry entry(L"VEXOAModelerTools::detectAndSetBridges");
    if (!face) return false;
    bool any = false;
    findEdge(*face, [&](Edge& edge) {
        if (edge.isBridge()) return false;
        for (Edge* other = edge.next(); other != face->edgeLoop(); other = other->next()) {
            if (!other->next()->point().isEqual(edge.point()) ||
                !other->point().isEqual(edge.next()->point()))
                continue;
            edge.setFlagOn(kBridgeFlag);
            other->setFlagOn(kBridgeFlag);
            any = true;
        }
        return false;
    });
    return any;
}

bool VEXOAModelerTools::deleteLateralFace(Body& body, Face* lateral, Face* other) {
    CVxLogEntry entry(L"VEXOAModelerTools::deleteLateralFace");
    if (!lateral || !other) return false;
    return guarded(false, [&] {
        Edge* met = nullptr;
        Edge* const anchor =
            findEdge(*lateral, [&](const Edge& edge) { return getEdge(other, edge.point(), met); });
        if (!anchor) return false;
        LateralRemoval removal(body, *lateral, *anchor);
        if (!removal.isPossible()) return false;
        removal.run();
        evaluateFacePlanes(body);
        return true;
    });
}

bool VEXOAModelerTools::isValidBody(Body& body, int level) {
    CVxLogEntry entry(L"VEXOAModelerTools::isValidBody");
    if (level != 1) return true;
    return guarded(false,
                   [&] { return !findFace(body, [](const Face& face) { return !isSoundFace(face); }); });
}

void VEXOAModelerTools::evaluateFacePlanes(Body& body) {
    CVxLogEntry entry(L"VEXOAModelerTools::evaluateFacePlanes");
    findFace(body, [](Face& face) {
        face.deletePlane();
        static_cast<void>(guarded(false, [&] { return face.plane().isNull(); }));
        return false;
    });
}

bool VEXOAModelerTools::getGeomExtentsOfBody(const Body* body, AcDbExtents& extents) {
    CVxLogEntry entry(L"VEXOAModelerTools::getGeomExtentsOfBody");
    if (!body) return false;
    return guarded(false, [&] {
        if (body->isNull() || !body->isValid(-1)) return false;
        const AModeler::Interval3d box = body->interval(kBoxTolerances * AModeler::gEpsAbs);
        extents.addPoint(box.getMin());
        extents.addPoint(box.getMax());
        return true;
    });
}

void VEXOAModelerTools::explodeBody(Body* body, AcArray<void*>& lines) {
    CVxLogEntry entry(L"VEXOAModelerTools::explodeBody");
    if (!body) return;
    forEachEdge(*body, [](Edge& edge) { edge.setFlagOff(kVisitedFlag); });
    static_cast<void>(guarded(false, [&] {
        forEachEdge(*body, [&](Edge& edge) {
            if (edge.partner()) edge.partner()->setFlagOn(kVisitedFlag);
            if (!edge.next() || edge.isFlagOn(kVisitedFlag) || edge.isBridge()) return;
            auto line = std::make_unique<AcDbLine>(edge.point(), edge.next()->point());
            lines.append(static_cast<AcDbCurve*>(line.get()));
            static_cast<void>(line.release());
        });
        return true;
    }));
}

Acad::ErrorStatus VEXOAModelerTools::getOsnapPoints(Body* body, AcDb::OsnapMode mode,
                                                    Adesk::IntPtr gsSelectionMark,
                                                    const AcGePoint3d& pickPoint,
                                                    const AcGePoint3d& lastPoint,
                                                    const AcGeMatrix3d& viewTransform,
                                                    AcGePoint3dArray& snapPoints, AcDbIntArray& geometryIds) {
    CVxLogEntry entry(L"VEXOAModelerTools::getOsnapPoints");
    // Callers compare with the number 93; its name tells of something else.
    if (!body) return Acad::eInProcessOfCommitting;
    AcArray<void*> lines;
    explodeBody(body, lines);
    for (void* each : lines) {
        const std::unique_ptr<AcDbLine> line(static_cast<AcDbLine*>(static_cast<AcDbCurve*>(each)));
        static_cast<void>(line->getOsnapPoints(mode, gsSelectionMark, pickPoint, lastPoint, viewTransform,
                                               snapPoints, geometryIds));
    }
    return Acad::eOk;
}

void VEXOAModelerTools::getAllFacesContainingPoint(const Body* body, const AcGePoint3d& point,
                                                   std::vector<Face*>& faces, double tolerance) {
    CVxLogEntry entry(L"VEXOAModelerTools::getAllFacesContainingPoint");
    if (!body) return;
    static_cast<void>(guarded(false, [&] {
        findFace(*body, [&](Face& face) {
            if (point.distanceTo(face.plane().project(point)) < tolerance) faces.push_back(&face);
            return false;
        });
        return true;
    }));
}

int VEXOAModelerTools::getSideIndexInContour(const Edge* edge, const Face* face) {
    CVxLogEntry entry(L"VEXOAModelerTools::getSideIndexInContour");
    if (!edge || !face || !edge->face()) return -1;
    const Edge* const wanted = edge->face() == face ? edge : edge->partner();
    if (!wanted || wanted->face() != face) return -1;
    int side = -1;
    const Edge* const found = findEdge(*face, [&](const Edge& each) {
        if (&each == face->edgeLoop() || !continuesSide(each)) ++side;
        return &each == wanted;
    });
    return found ? side : -1;
}
