#include "r12entities.h"

#include "drawingrecord.h"
#include "drawingtext.h"
#include "hatchstrokes.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbaccess.h"
#include "dbarcdimension.h"
#include "dbblockreference.h"
#include "dbellipse.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbmtext.h"
#include "dbopaque.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbsolid.h"
#include "dbsource.h"
#include "dbspline.h"
#include "dbtext.h"
#include "dbtextstyletablerecord.h"
#include "dbxline.h"
#include "dimensionpicture.h"
#include "entitycoordinates.h"
#include "movedblock.h"
#include "paragraphlayout.h"

#include "gecurv3d.h"
#include "geintrvl.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace hostkit {

namespace {

constexpr double shareOfDrawing = 1e-5;
constexpr double shareOfCurve = 1e-3;
constexpr std::size_t mostFigures = 20000; // of one hatch

double diagonalOf(const AcDbExtents& extents) {
    return extents.isEmpty() ? 0.0 : (extents.maxPoint() - extents.minPoint()).length();
}

void append(AcDb2dPolyline& polyline, std::unique_ptr<AcDb2dVertex> vertex) {
    if (polyline.appendVertex(vertex.get()) == Acad::eOk) (void)vertex.release();
}

std::unique_ptr<AcDbEntity> flatPolyline(const std::vector<AcGePoint2d>& points, double elevation,
                                         const AcGeVector3d& normal, bool isClosed) {
    auto polyline = std::make_unique<AcDb2dPolyline>();
    (void)polyline->setElevation(elevation);
    (void)polyline->setNormal(normal);
    if (isClosed) (void)polyline->makeClosed();
    for (const AcGePoint2d& point : points)
        append(*polyline, std::make_unique<AcDb2dVertex>(AcGePoint3d(point.x, point.y, elevation)));
    return polyline;
}

std::unique_ptr<AcDbEntity> chordPolyline(const AcGePoint3dArray& points, bool isClosed) {
    const int count = isClosed && points.length() > 2 ? points.length() - 1 : points.length();
    bool isFlat = true;
    for (int place = 1; place < count; ++place) isFlat = isFlat && points[place].z == points[0].z;
    if (isFlat && count > 0) {
        std::vector<AcGePoint2d> flat;
        flat.reserve(static_cast<std::size_t>(count));
        for (int place = 0; place < count; ++place) flat.emplace_back(points[place].x, points[place].y);
        return flatPolyline(flat, points[0].z, AcGeVector3d::kZAxis, isClosed);
    }
    AcGePoint3dArray spatial(count);
    for (int place = 0; place < count; ++place) spatial.append(points[place]);
    return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, spatial, isClosed);
}

// Of the line base + t direction within the box; false where there is none.
bool clip(const AcDbExtents& box, const AcGePoint3d& base, const AcGeVector3d& direction, double& from,
          double& to) {
    for (int axis = 0; axis < 3; ++axis) {
        const double low = box.minPoint()[static_cast<unsigned>(axis)];
        const double high = box.maxPoint()[static_cast<unsigned>(axis)];
        const double start = base[static_cast<unsigned>(axis)];
        const double step = direction[static_cast<unsigned>(axis)];
        if (step == 0.0) {
            if (start < low || start > high) return false;
            continue;
        }
        const double first = (low - start) / step;
        const double second = (high - start) / step;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
    }
    return from < to;
}

// With every coordinate a little room, so that a flat drawing has a box.
AcDbExtents modelExtents(const AcDbDatabase& database) {
    AcDbExtents all;
    const auto* const space = DatabaseAccess::objectOf<AcDbBlockTableRecord>(database.modelSpaceId());
    for (const AcDbObjectId id : space ? space->entities() : std::vector<AcDbObjectId>()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity || entity->isErased() || entity->isKindOf(AcDbRay::desc()) ||
            entity->isKindOf(AcDbXline::desc()))
            continue;
        AcDbExtents own;
        if (entity->getGeomExtents(own) == Acad::eOk) all.addExt(own);
    }
    return all;
}

/// Kinds without a class here that something in R12 can stand for.
struct OpaqueKind {
    std::wstring_view name;
    bool hasBlock; ///< a block draws it, else its points are a chain
    bool isPlaced; ///< the block stands at its point, else it is drawn in place
};
constexpr OpaqueKind opaqueKinds[] = {{L"LEADER", false, false},
                                      {L"ACAD_TABLE", true, true},
                                      {L"ARC_DIMENSION", true, false},
                                      {L"LARGE_RADIAL_DIMENSION", true, false}};

const OpaqueKind* opaqueKindOf(const AcDbEntity& entity) {
    if (!entity.isKindOf(AcDbOpaqueEntity::desc())) return nullptr;
    const auto found = std::find_if(std::begin(opaqueKinds), std::end(opaqueKinds),
                                    [&](const OpaqueKind& kind) { return kind.name == entity.dxfName(); });
    return found == std::end(opaqueKinds) ? nullptr : &*found;
}

// The points of that code, in the order of the record.
std::vector<AcGePoint3d> pointsIn(const DrawingRecord& record, int code) {
    std::vector<AcGePoint3d> points;
    for (std::size_t place = 0; place < record.extendedDataBegin; ++place) {
        const RecordGroup& group = record.groups[place];
        const double value = realFromText(group.value).value_or(0.0);
        if (group.code == code) points.emplace_back(value, 0.0, 0.0);
        if (group.code == code + 10 && !points.empty()) points.back().y = value;
        if (group.code == code + 20 && !points.empty()) points.back().z = value;
    }
    return points;
}

void handOnLook(const AcDbEntity& from, OlderEntities& to) {
    for (const std::unique_ptr<AcDbEntity>& entity : to.entities) {
        (void)entity->setPropertiesFrom(&from);
        DatabaseAccess::setOwner(*entity, from.ownerId());
    }
    if (to.entities.empty() || !from.extendedData()) return;
    GroupBlock data = *from.extendedData();
    DatabaseAccess::setExtendedData(*to.entities.front(), std::move(data));
}

} // namespace

R12Entities::R12Entities(const AcDbDatabase& database)
    : m_database(database)
    , m_extents(modelExtents(database)) {}

bool R12Entities::isKept(const AcDbEntity& entity) {
    return !entity.isKindOf(AcDbPolyline::desc()) && !entity.isKindOf(AcDbEllipse::desc()) &&
           !entity.isKindOf(AcDbSpline::desc()) && !entity.isKindOf(AcDbMText::desc()) &&
           !entity.isKindOf(AcDbRay::desc()) && !entity.isKindOf(AcDbXline::desc()) &&
           !entity.isKindOf(AcDbHatch::desc()) && !entity.isKindOf(AcDbArcDimension::desc()) &&
           !opaqueKindOf(entity);
}

double R12Entities::chordTolerance(const AcDbEntity& entity) const {
    AcDbExtents own;
    (void)entity.getGeomExtents(own);
    const double ofCurve = diagonalOf(own) * shareOfCurve;
    const double ofDrawing = diagonalOf(m_extents) * shareOfDrawing;
    return ofDrawing > 0.0 ? std::min(ofCurve, ofDrawing) : ofCurve;
}

OlderEntities R12Entities::turn(const AcDbEntity& entity) const {
    OlderEntities result;
    if (const auto* const dimension = AcDbArcDimension::cast(&entity)) return turnDimension(*dimension);
    if (const auto* const polyline = AcDbPolyline::cast(&entity))
        result = turnPolyline(*polyline);
    else if (const auto* const text = AcDbMText::cast(&entity))
        result = turnText(*text);
    else if (const auto* const hatch = AcDbHatch::cast(&entity))
        result = turnHatch(*hatch);
    else if (const auto* const ray = AcDbRay::cast(&entity))
        result = turnUnbounded(ray->basePoint(), ray->unitDir(), true);
    else if (const auto* const line = AcDbXline::cast(&entity))
        result = turnUnbounded(line->basePoint(), line->unitDir(), false);
    else if (const auto* const curve = AcDbCurve::cast(&entity))
        result = turnCurve(*curve);
    else
        result = turnOpaque(entity);
    handOnLook(entity, result);
    return result;
}

OlderEntities R12Entities::turnPolyline(const AcDbPolyline& polyline) const {
    auto older = std::make_unique<AcDb2dPolyline>();
    (void)older->setElevation(polyline.elevation());
    (void)older->setThickness(polyline.thickness());
    (void)older->setNormal(polyline.normal());
    if (polyline.isClosed()) (void)older->makeClosed();
    for (unsigned index = 0; index < polyline.numVerts(); ++index) {
        AcGePoint2d point;
        double bulge = 0.0;
        double startWidth = 0.0;
        double endWidth = 0.0;
        (void)polyline.getPointAt(index, point);
        (void)polyline.getBulgeAt(index, bulge);
        (void)polyline.getWidthsAt(index, startWidth, endWidth);
        append(*older, std::make_unique<AcDb2dVertex>(AcGePoint3d(point.x, point.y, polyline.elevation()),
                                                      bulge, startWidth, endWidth));
    }
    OlderEntities result{L"POLYLINE", {}};
    result.entities.push_back(std::move(older));
    return result;
}

OlderEntities R12Entities::turnCurve(const AcDbCurve& curve) const {
    OlderEntities result{L"POLYLINE", {}};
    AcGeCurve3d* made = nullptr;
    if (curve.getAcGeCurve(made) != Acad::eOk) return result;
    const std::unique_ptr<AcGeCurve3d> shape(made);
    AcGeInterval interval;
    AcGePoint3dArray points;
    AcGeDoubleArray parameters;
    shape->getInterval(interval);
    shape->getSamplePoints(interval.lowerBound(), interval.upperBound(), chordTolerance(curve), points,
                           parameters);
    if (points.length() < 2) return result;
    const bool isClosed = curve.isClosed() && points[0].isEqualTo(points[points.length() - 1]);
    result.entities.push_back(chordPolyline(points, isClosed));
    return result;
}

// Each line becomes one text at what it is aligned by, so that another face leaves it in its place; it looks
// as its first letters do.
OlderEntities R12Entities::turnText(const AcDbMText& text) const {
    OlderEntities result{L"TEXT", {}};
    const ParagraphLayout layout = text.layout();
    const AcGeVector3d x = text.direction();
    const AcGeVector3d y = text.normal().crossProduct(x);
    const double top = text.topOf(layout);
    for (const ParagraphLine& line : layout.lines) {
        const std::wstring letters = line.text();
        if (letters.empty()) continue;
        const ParagraphLook& look = line.pieces.front().look;
        auto made =
            std::make_unique<AcDbText>(AcGePoint3d::kOrigin, letters.c_str(), text.textStyle(), look.height);
        (void)made->setNormal(text.normal());
        (void)made->setRotation(text.rotation());
        (void)made->setWidthFactor(look.widthFactor * look.tracking);
        (void)made->setOblique(look.oblique);
        const AcGePoint3d anchor = text.location() + x * line.anchor() + y * (top + line.base);
        if (line.column == 0) {
            (void)made->setPosition(anchor);
        } else {
            (void)made->setHorizontalMode(line.column == 1 ? AcDb::kTextCenter : AcDb::kTextRight);
            (void)made->setAlignmentPoint(anchor);
        }
        result.entities.push_back(std::move(made));
    }
    return result;
}

// Its record in the file is all that is known of it.
OlderEntities R12Entities::turnOpaque(const AcDbEntity& entity) const {
    const OpaqueKind* const kind = opaqueKindOf(entity);
    const auto source = m_database.source();
    if (!kind || !source || entity.sourceSpan().isEmpty()) return {};
    const SourceSpan span = entity.sourceSpan();
    DrawingRecord record;
    scanRecordAt(source->bytes, span.offset, span.length, record);
    if (kind->hasBlock) return turnToBlock(record, kind->isPlaced);
    const std::vector<AcGePoint3d> points = pointsIn(record, 10);
    OlderEntities result{L"POLYLINE", {}};
    if (points.size() < 2) return result;
    AcGePoint3dArray chain;
    for (const AcGePoint3d& point : points) chain.append(point);
    result.entities.push_back(chordPolyline(chain, false));
    return result;
}

OlderEntities R12Entities::turnToBlock(const DrawingRecord& record, bool isPlaced) const {
    OlderEntities result{L"INSERT", {}};
    const RecordGroup* const name = record.find(2);
    const auto* const blocks =
        DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(m_database, TableKind::kBlock));
    if (!name || !blocks) return result;
    const DrawingText text(static_cast<CodePage>(m_database.source()->codePage));
    const AcDbObjectId block = blocks->find(text.decode(name->value));
    if (block.isNull()) return result;
    const std::vector<AcGePoint3d> points = pointsIn(record, 10);
    const AcGePoint3d place = isPlaced && !points.empty() ? points.front() : AcGePoint3d::kOrigin;
    result.entities.push_back(std::make_unique<AcDbBlockReference>(place, block));
    return result;
}

// What stands for the lines and letters of a dimension without a block has their looks.
OlderEntities R12Entities::turnDimension(const AcDbArcDimension& dimension) const {
    OlderEntities result{L"INSERT", {}};
    const AcDbObjectId block = dimension.dimBlockId();
    if (block.isResident() && !block.isErased()) {
        const AcGePoint3d place = blockPlacement(dimension) * AcGePoint3d::kOrigin;
        result.entities.push_back(std::make_unique<AcDbBlockReference>(place, block));
        handOnLook(dimension, result);
        return result;
    }
    result.kind = L"ARC";
    DimensionPicture picture;
    if (!layOutDimension(dimension, picture)) return result;
    for (std::unique_ptr<AcDbEntity>& part : entitiesOf(dimension, picture, PieceUse::plotted)) {
        takeLookOfBlock(*part, dimension);
        DatabaseAccess::setOwner(*part, dimension.ownerId());
        OlderEntities older;
        if (isKept(*part))
            older.entities.push_back(std::move(part));
        else
            older = turn(*part);
        std::move(older.entities.begin(), older.entities.end(), std::back_inserter(result.entities));
    }
    return result;
}

OlderEntities R12Entities::turnUnbounded(const AcGePoint3d& base, const AcGeVector3d& direction,
                                         bool isRay) const {
    OlderEntities result{L"LINE", {}};
    double from = isRay ? 0.0 : -HUGE_VAL;
    double to = HUGE_VAL;
    if (m_extents.isEmpty() || !clip(m_extents, base, direction, from, to)) return result;
    result.entities.push_back(std::make_unique<AcDbLine>(base + direction * from, base + direction * to));
    return result;
}

OlderEntities R12Entities::turnHatch(const AcDbHatch& hatch) const {
    const HatchFigure figure(hatch, chordTolerance(hatch));
    const AcGeVector3d normal = hatch.normal();
    const auto inSpace = [&](const AcGePoint2d& point) {
        return toWorld(normal, AcGePoint3d(point.x, point.y, hatch.elevation()));
    };
    OlderEntities result;
    if (hatch.isSolidFill()) {
        result.kind = L"SOLID";
        for (const HatchFigure::Trapezoid& corner : figure.trapezoids(mostFigures)) {
            auto solid = std::make_unique<AcDbSolid>(inSpace(corner[0]), inSpace(corner[1]),
                                                     inSpace(corner[2]), inSpace(corner[3]));
            (void)solid->setNormal(normal);
            for (Adesk::UInt16 place = 0; place < 4; ++place)
                (void)solid->setPointAt(place, inSpace(corner[place]));
            result.entities.push_back(std::move(solid));
        }
    } else {
        result.kind = L"LINE";
        for (const HatchFigure::Stroke& stroke : figure.strokes(mostFigures))
            result.entities.push_back(std::make_unique<AcDbLine>(inSpace(stroke.from), inSpace(stroke.to)));
    }
    if (!result.entities.empty()) return result;
    result.kind = L"POLYLINE";
    for (const HatchFigure::Polygon& loop : figure.loops())
        result.entities.push_back(flatPolyline(loop, hatch.elevation(), normal, true));
    return result;
}

} // namespace hostkit
