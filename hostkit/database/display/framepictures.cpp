// Frames of images, underlays and embedded objects, the area of wipeouts, and marks of shapes.

#include "acgi.h"
#include "dbaccess.h"
#include "dbopaque.h"
#include "entitycoordinates.h"
#include "pathgeometry.h"
#include "recordcursor.h"
#include "recordpictures.h"

#include <cmath>

namespace hostkit {

namespace {

PicturePath closedPath(const std::vector<AcGePoint3d>& points) {
    PicturePath path;
    for (const AcGePoint3d& point : points) path.lineTo(point);
    path.close();
    return path;
}

// Two points of a clip are opposite corners.
std::vector<AcGePoint2d> clipCorners(const std::vector<AcGePoint2d>& told) {
    if (told.size() != 2) return told;
    return {told[0], {told[1].x, told[0].y}, told[1], {told[0].x, told[1].y}};
}

AcGePoint2d flatPoint(RecordCursor& group) {
    const AcGePoint3d point = group.point();
    return {point.x, point.y};
}

struct ImageRecord {
    AcGePoint3d origin;            ///< of the lowest row
    AcGeVector3d u, v;             ///< of one pixel
    AcGePoint2d size;              ///< in pixels
    std::vector<AcGePoint2d> clip; ///< pixels, from the middle of the highest left one, downwards
    bool isClipped = false;
};

ImageRecord readImage(const AcDbOpaqueEntity& entity) {
    ImageRecord image;
    for (RecordCursor group(entity); group.next();) {
        switch (group.code()) {
        case 10:
            image.origin = group.point();
            break;
        case 11:
            image.u = group.vector();
            break;
        case 12:
            image.v = group.vector();
            break;
        case 13:
            image.size = flatPoint(group);
            break;
        case 14:
            image.clip.push_back(flatPoint(group));
            break;
        case 280:
            image.isClipped = group.integer() != 0;
            break;
        }
    }
    return image;
}

PicturePath outlineOf(const ImageRecord& image, bool isClipped) {
    std::vector<AcGePoint2d> corners = clipCorners(image.clip);
    if (!isClipped || corners.size() < 3)
        corners = clipCorners({{-0.5, -0.5}, {image.size.x - 0.5, image.size.y - 0.5}});
    std::vector<AcGePoint3d> points;
    for (const AcGePoint2d& corner : corners)
        points.push_back(image.origin + image.u * (corner.x + 0.5) +
                         image.v * (image.size.y - 0.5 - corner.y));
    return closedPath(points);
}

// Entities that are sorted are not shown in the order in which they stand.
bool isSorted(const AcDbEntity& entity) {
    const auto* const block = DatabaseAccess::object(entity.blockId());
    const auto* const extension =
        block ? DatabaseAccess::objectOf<AcDbDictionary>(DatabaseAccess::extensionDictionary(*block))
              : nullptr;
    return extension && extension->has(L"ACAD_SORTENTS");
}

bool showsWipeoutFrames(const AcDbDatabase& database) {
    const auto* const names = DatabaseAccess::objectOf<AcDbDictionary>(database.namedObjectsDictionaryId());
    AcDbObjectId id;
    if (!names || names->getAt(L"ACAD_WIPEOUT_VARS", id) != Acad::eOk) return true;
    const AcDbObject* const variables = DatabaseAccess::object(id);
    if (!variables) return true;
    for (RecordCursor group(*variables); group.next();)
        if (group.code() == 70) return group.integer(1) != 0;
    return true;
}

} // namespace

void drawImageFrame(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    const ImageRecord image = readImage(entity);
    drawPath(draw, outlineOf(image, image.isClipped));
}

// The area of a wipeout is its clip boundary, whatever the record says of clipping.
void drawWipeout(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    const ImageRecord image = readImage(entity);
    if (image.u.isZeroLength() || image.v.isZeroLength()) return;
    const PicturePath outline = outlineOf(image, true);
    const auto* geometry = dynamic_cast<const PathGeometry*>(&draw.geometry());
    constexpr std::uint32_t paper = 0xFFFFFF;
    if (geometry && !isSorted(entity)) geometry->ground(outline, paper);
    if (entity.database() && showsWipeoutFrames(*entity.database())) drawPath(draw, outline);
}

void drawUnderlayFrame(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    AcGePoint3d origin;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    double scaleX = 1.0, scaleY = 1.0, rotation = 0.0;
    std::vector<AcGePoint2d> clip;
    for (RecordCursor group(entity); group.next();) {
        if (group.code() == 10) origin = group.point();
        if (group.code() == 11) clip.push_back(flatPoint(group));
        if (group.code() == 41) scaleX = group.real(1.0);
        if (group.code() == 42) scaleY = group.real(1.0);
        if (group.code() == 50) rotation = group.radians();
        if (group.code() == 210) normal = group.vector();
    }
    if (normal.isZeroLength()) return;
    normal = normal.normal();
    const AcGeVector3d x = toWorld(normal, AcGeVector3d(std::cos(rotation), std::sin(rotation), 0.0));
    const AcGeVector3d y = normal.crossProduct(x);
    const auto at = [&](double along, double up) {
        return toWorld(normal, origin) + x * (along * scaleX) + y * (up * scaleY);
    };
    PicturePath path;
    if (clip.size() >= 2) {
        std::vector<AcGePoint3d> points;
        for (const AcGePoint2d& corner : clipCorners(clip)) points.push_back(at(corner.x, corner.y));
        path = closedPath(points);
    } else {
        path.moveTo(at(-0.5, 0.0));
        path.lineTo(at(0.5, 0.0));
        path.moveTo(at(0.0, -0.5));
        path.lineTo(at(0.0, 0.5));
    }
    drawPath(draw, path);
}

void drawEmbeddedFrame(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    constexpr int leftTop = 10, rightBottom = 11;
    AcGePoint3d corners[2];
    bool isThere[2] = {false, false};
    // The object's bytes come behind, and are many.
    RecordCursor group(entity);
    while (!(isThere[0] && isThere[1]) && group.next()) {
        if (group.code() != leftTop && group.code() != rightBottom) continue;
        const int which = group.code() - leftTop;
        corners[which] = group.point();
        isThere[which] = true;
    }
    if (!isThere[0] || !isThere[1]) return;
    const double z = corners[0].z;
    drawPath(draw, closedPath({corners[0],
                               {corners[1].x, corners[0].y, z},
                               {corners[1].x, corners[1].y, z},
                               {corners[0].x, corners[1].y, z}}));
}

void drawShapeMark(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    AcGePoint3d origin;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    double size = 0.0, widthFactor = 1.0, rotation = 0.0;
    for (RecordCursor group(entity); group.next();) {
        if (group.code() == 10) origin = group.point();
        if (group.code() == 40) size = group.real();
        if (group.code() == 41) widthFactor = group.real(1.0);
        if (group.code() == 50) rotation = group.radians();
        if (group.code() == 210) normal = group.vector();
    }
    if (normal.isZeroLength() || size == 0.0) return;
    normal = normal.normal();
    const AcGeVector3d x = toWorld(normal, AcGeVector3d(std::cos(rotation), std::sin(rotation), 0.0));
    const AcGeVector3d along = x * (size * widthFactor);
    const AcGeVector3d up = normal.crossProduct(x) * size;
    PicturePath path = closedPath({origin, origin + along, origin + along + up, origin + up});
    path.moveTo(origin);
    path.lineTo(origin + along + up);
    path.moveTo(origin + along);
    path.lineTo(origin + up);
    drawPath(draw, path);
}

} // namespace hostkit
