#include "vexogiworldgeometry.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"
#include "vexogisubentitytraits.h"

#include "cvxlogentry.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "gearc2d.h"
#include "gearc3d.h"
#include "gelnsg2d.h"
#include "geplane.h"

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace {

// What draws calls from deep within the host: nothing that fails here may reach it.
template <class Make>
Adesk::Boolean caught(Make&& make, Adesk::Boolean failed = Adesk::kTrue) noexcept {
    try {
        return make();
    } catch (...) {
        return failed;
    }
}

} // namespace

VEXOGiWorldGeometry::VEXOGiWorldGeometry(AcDbEntity* source)
    : m_traits(std::make_unique<VEXOGiSubEntityTraits>(source)) {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::VEXOGiWorldGeometry");
}

VEXOGiWorldGeometry::~VEXOGiWorldGeometry() {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::~VEXOGiWorldGeometry");
}

void VEXOGiWorldGeometry::getAcDbEnts(AcArray<void*>& entities) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::getAcDbEnts");
    for (AcDbEntity* each : m_entities) entities.append(each);
}

void VEXOGiWorldGeometry::appendAcDbEnts(AcDbEntity* entity) {
    CVxLogEntry logEntry(L"VEXOGiWorldGeometry::appendAcDbEnts");
    if (entity) m_entities.append(entity);
}

template <class T>
void VEXOGiWorldGeometry::record(std::unique_ptr<T> entity) const {
    m_traits->setPropToEntity(entity.get());
    m_entities.append(entity.get());
    (void)entity.release();
}

// --- Filling -----------------------------------------------------------------------------------------------

bool VEXOGiWorldGeometry::fills() const { return m_traits->fillType() == kAcGiFillAlways; }

// One external loop. What encloses nothing is left out, and its outline stays.
void VEXOGiWorldGeometry::fill(const AcArray<void*>& edges, const AcArray<int>& types,
                               const AcGeVector3d& normal) const {
    auto hatch = std::make_unique<AcDbHatch>();
    hatch->setHatchStyle(AcDbHatch::kNormal);
    hatch->setPattern(AcDbHatch::kPreDefined, L"SOLID");
    m_traits->setPropToEntity(hatch.get());
    hatch->setElevation(0.0);
    hatch->setNormal(normal);
    if (hatch->appendLoop(AcDbHatch::kExternal, edges, types) != Acad::eOk ||
        hatch->evaluateHatch(false) != Acad::eOk)
        return;
    m_entities.append(hatch.get());
    (void)hatch.release();
}

void VEXOGiWorldGeometry::fillPolygon(const AcArray<AcGePoint2d>& corners) const {
    std::vector<AcGeLineSeg2d> sides;
    for (int i = 0; i < corners.length(); ++i)
        sides.emplace_back(corners[i], corners[(i + 1) % corners.length()]);
    AcArray<void*> edges;
    AcArray<int> types;
    for (AcGeLineSeg2d& side : sides) {
        edges.append(static_cast<AcGeCurve2d*>(&side));
        types.append(AcDbHatch::kLine);
    }
    if (!sides.empty()) fill(edges, types, AcGeVector3d::kZAxis);
}

// --- Circles and arcs --------------------------------------------------------------------------------------

Adesk::Boolean VEXOGiWorldGeometry::circle(const AcGePoint3d& center, const double radius,
                                           const AcGeVector3d& normal) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::circle");
    return caught([&] {
        record(std::make_unique<AcDbCircle>(center, normal, radius));
        if (!fills()) return Adesk::kTrue;
        AcGeCircArc2d rim({center.x, center.y}, radius, 0.0, 2.0 * std::numbers::pi);
        AcArray<void*> edges;
        edges.append(static_cast<AcGeCurve2d*>(&rim));
        AcArray<int> types;
        types.append(AcDbHatch::kCirArc);
        fill(edges, types, normal);
        return Adesk::kTrue;
    });
}

Adesk::Boolean VEXOGiWorldGeometry::circle(const AcGePoint3d& point1, const AcGePoint3d& point2,
                                           const AcGePoint3d& point3) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::circle");
    return caught([&] {
        const AcGeCircArc3d through(point1, point2, point3);
        return through.radius() > 0.0 ? circle(through.center(), through.radius(), through.normal())
                                      : Adesk::kTrue;
    });
}

Adesk::Boolean VEXOGiWorldGeometry::circularArc(const AcGePoint3d& center, const double /*radius*/,
                                                const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                                const double sweepAngle, const AcGiArcType arcType) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::circularArc");
    return caught([&] {
        constexpr double wholeTurn = 2.0 * std::numbers::pi;
        if (!vexo::isDefinitelyLess(std::abs(sweepAngle), wholeTurn)) {
            record(std::make_unique<AcDbCircle>(center, normal, startVector.length()));
            return Adesk::kTrue;
        }
        AcGeVector3d towards = startVector;
        const AcGePoint3d start = center + towards;
        const AcGePoint3d middle = center + towards.rotateBy(sweepAngle / 2.0, normal);
        const AcGePoint3d end = center + towards.rotateBy(sweepAngle / 2.0, normal);
        return circularArc(start, middle, end, arcType);
    });
}

Adesk::Boolean VEXOGiWorldGeometry::circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                                const AcGePoint3d& end, const AcGiArcType /*arcType*/) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::circularArc");
    return caught([&] {
        const AcGeCircArc3d arc(start, point, end);
        if (!(arc.radius() > 0.0)) return Adesk::kTrue;
        const double offset = arc.refVec().angleOnPlane(AcGePlane(arc.center(), arc.normal()));
        record(std::make_unique<AcDbArc>(arc.center(), arc.normal(), arc.radius(), arc.startAng() + offset,
                                         arc.endAng() + offset));
        return Adesk::kTrue;
    });
}

// --- Points ------------------------------------------------------------------------------------------------

Adesk::Boolean VEXOGiWorldGeometry::polyline(const Adesk::UInt32 count, const AcGePoint3d* points,
                                             const AcGeVector3d* /*normal*/,
                                             Adesk::LongPtr /*marker*/) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::polyline");
    return caught([&] {
        for (Adesk::UInt32 i = 1; points && i < count; ++i)
            record(std::make_unique<AcDbLine>(points[i - 1], points[i]));
        return Adesk::kTrue;
    });
}

Adesk::Boolean VEXOGiWorldGeometry::polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::polygon");
    return caught([&] {
        if (!points || count == 0) return Adesk::kTrue;
        auto outline = std::make_unique<AcDbPolyline>(count);
        AcArray<AcGePoint2d> corners(static_cast<int>(count));
        for (Adesk::UInt32 i = 0; i < count; ++i) {
            corners.append(AcGePoint2d(points[i].x, points[i].y));
            outline->addVertexAt(i, corners.last());
        }
        outline->setClosed(Adesk::kTrue);
        outline->setElevation(points[0].z);
        record(std::move(outline));
        if (fills()) fillPolygon(corners);
        return Adesk::kTrue;
    });
}

Adesk::Boolean VEXOGiWorldGeometry::shell(const Adesk::UInt32 vertexCount, const AcGePoint3d* points,
                                          const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList,
                                          const AcGiEdgeData* /*edges*/, const AcGiFaceData* /*faces*/,
                                          const AcGiVertexData* /*vertices*/, const resbuf* /*extra*/,
                                          const bool /*autoGenerateNormals*/) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::shell");
    return caught([&] {
        if (!points || !faceList) return Adesk::kTrue;
        for (Adesk::UInt32 at = 0; at < faceListSize;) {
            const Adesk::Int64 count = faceList[at++];
            const Adesk::Int64 corners = std::abs(count);
            if (corners > faceListSize - at) break;
            AcArray<AcGePoint2d> face;
            for (Adesk::Int64 i = 0; i < count; ++i) {
                const Adesk::Int64 index = faceList[at + i];
                if (index >= 0 && index < vertexCount)
                    face.append(AcGePoint2d(points[index].x, points[index].y));
            }
            if (count > 0 && face.length() == count) fillPolygon(face);
            at += static_cast<Adesk::UInt32>(corners);
        }
        return Adesk::kTrue;
    });
}

Adesk::Boolean VEXOGiWorldGeometry::pline(const AcDbPolyline& polyline, Adesk::UInt32 /*from*/,
                                          Adesk::UInt32 /*segments*/) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::pline");
    return caught([&] {
        auto copy = std::make_unique<AcDbPolyline>();
        VEXOGeometryTools::copyAcDbPolyline(&polyline, copy.get());
        record(std::move(copy));
        return Adesk::kTrue;
    });
}

Adesk::Boolean VEXOGiWorldGeometry::worldLine(const AcGePoint3d points[2]) {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::worldLine");
    return caught([&] {
        if (!points) return Adesk::kTrue;
        AcGeMatrix3d toWorld;
        getModelToWorldTransform(toWorld);
        const AcGePoint3d ends[] = {toWorld * points[0], toWorld * points[1]};
        return polyline(2, ends);
    });
}

Adesk::Boolean VEXOGiWorldGeometry::draw(AcGiDrawable* drawable) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::draw");
    return caught([&] {
        if (AcDbEntity* const entity = AcDbEntity::cast(drawable)) m_entities.append(entity);
        return Adesk::kTrue;
    });
}

// --- Text --------------------------------------------------------------------------------------------------

Adesk::Boolean VEXOGiWorldGeometry::makeText(const AcGePoint3d& position, const AcGeVector3d& normal,
                                             const AcGeVector3d& direction, double height, double width,
                                             const wchar_t* message) const {
    auto text = std::make_unique<AcDbMText>();
    m_traits->setPropToEntity(text.get());
    if (text->setLocation(position) != Acad::eOk || text->setNormal(normal) != Acad::eOk ||
        text->setDirection(direction) != Acad::eOk || text->setTextHeight(height) != Acad::eOk ||
        text->setWidth(width) != Acad::eOk || text->setContents(message) != Acad::eOk)
        return Adesk::kFalse;
    m_entities.append(text.get());
    (void)text.release();
    return Adesk::kTrue;
}

Adesk::Boolean VEXOGiWorldGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                         const AcGeVector3d& direction, const double height,
                                         const double width, const double /*oblique*/,
                                         const wchar_t* message) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::text");
    return caught([&] { return makeText(position, normal, direction, height, width, message); },
                  Adesk::kFalse);
}

Adesk::Boolean VEXOGiWorldGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                         const AcGeVector3d& direction, const wchar_t* message,
                                         const Adesk::Int32 length, const Adesk::Boolean /*raw*/,
                                         const AcGiTextStyle& style) const {
    CVxLogEntry entry(L"VEXOGiWorldGeometry::text");
    return caught(
        [&] {
            if (!message || length < 0)
                return makeText(position, normal, direction, style.textSize(), 0.0, message);
            const std::wstring part(message, wcsnlen(message, static_cast<std::size_t>(length)));
            return makeText(position, normal, direction, style.textSize(), 0.0, part.c_str());
        },
        Adesk::kFalse);
}

// --- What leaves nothing -----------------------------------------------------------------------------------

Adesk::Boolean VEXOGiWorldGeometry::mesh(const Adesk::UInt32, const Adesk::UInt32, const AcGePoint3d*,
                                         const AcGiEdgeData*, const AcGiFaceData*, const AcGiVertexData*,
                                         const bool) const {
    return Adesk::kTrue;
}
Adesk::Boolean VEXOGiWorldGeometry::xline(const AcGePoint3d&, const AcGePoint3d&) const {
    return Adesk::kTrue;
}
Adesk::Boolean VEXOGiWorldGeometry::ray(const AcGePoint3d&, const AcGePoint3d&) const { return Adesk::kTrue; }
Adesk::Boolean VEXOGiWorldGeometry::image(const AcGiImageBGRA32&, const AcGePoint3d&, const AcGeVector3d&,
                                          const AcGeVector3d&) const {
    return Adesk::kTrue;
}
Adesk::Boolean VEXOGiWorldGeometry::rowOfDots(int, const AcGePoint3d&, const AcGeVector3d&) const {
    return Adesk::kTrue;
}
Adesk::Boolean VEXOGiWorldGeometry::ellipticalArc(const AcGeEllipArc3d&, const AcGePoint3d*,
                                                  AcGiArcType) const {
    return Adesk::kTrue;
}
Adesk::Boolean VEXOGiWorldGeometry::polyline(const AcGiPolyline&) const { return Adesk::kTrue; }
Adesk::Boolean VEXOGiWorldGeometry::polyPolyline(Adesk::UInt32, const AcGiPolyline*) const {
    return Adesk::kTrue;
}
Adesk::Boolean VEXOGiWorldGeometry::polyPolygon(const Adesk::UInt32, const Adesk::UInt32*, const AcGePoint3d*,
                                                const Adesk::UInt32*, const AcGePoint3d*,
                                                const AcCmEntityColor*, const AcCmEntityColor*) const {
    return Adesk::kTrue;
}
