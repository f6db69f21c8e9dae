#include "pathgeometry.h"

#include "acgi.h"
#include "curvepaths.h"
#include "dbpolyline.h"
#include "textplacing.h"

#include "gearc3d.h"
#include "geell3d.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {

namespace {

constexpr double fullTurn = 2.0 * std::numbers::pi;

PicturePath pathOf(std::size_t count, const AcGePoint3d* points, bool isClosed) {
    PicturePath path;
    for (std::size_t i = 0; points && i < count; ++i) path.lineTo(points[i]);
    if (isClosed) path.close();
    return path;
}

AcDbPolyline partOf(const AcDbPolyline& whole, unsigned from, unsigned segments) {
    AcDbPolyline part;
    (void)part.setNormal(whole.normal());
    (void)part.setElevation(whole.elevation());
    const unsigned count = whole.numVerts();
    const unsigned sides = whole.isClosed() ? count : std::max(count, 1u) - 1;
    const unsigned most = from < sides ? sides - from : 0;
    const unsigned wanted = segments == 0 ? most : std::min(segments, most);
    for (unsigned i = from; wanted > 0 && i <= from + wanted; ++i) {
        AcGePoint2d point;
        double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
        (void)whole.getPointAt(i % count, point);
        (void)whole.getBulgeAt(i % count, bulge);
        (void)whole.getWidthsAt(i % count, startWidth, endWidth);
        (void)part.addVertexAt(part.numVerts(), point, bulge, startWidth, endWidth);
    }
    return part;
}

PlacedText placed(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                  double height, double width, double oblique) {
    PlacedText text;
    const AcGeVector3d along = direction.normal();
    text.origin = position;
    text.along = along * (height * width);
    text.up = (normal.crossProduct(along) + along * std::tan(oblique)) * height;
    return text;
}

} // namespace

// --- What is drawn -----------------------------------------------------------------------------------------

bool PathGeometry::isFilled() const { return traits().fillType() == kAcGiFillAlways; }

void PathGeometry::show(PicturePath&& path, bool isClosed, double width) const {
    if (path.isEmpty()) return;
    path.transformBy(m_toWorld);
    if (isClosed && isFilled())
        fillPath(path);
    else
        strokePath(path, width * lengthScale(m_toWorld));
}

void PathGeometry::path(const PicturePath& path) const { show(PicturePath(path), false); }

void PathGeometry::area(const PicturePath& path) const {
    PicturePath moved = path;
    moved.transformBy(m_toWorld);
    fillPath(moved);
}

void PathGeometry::tone(const PicturePath& path) const {
    PicturePath moved = path;
    moved.transformBy(m_toWorld);
    tonePath(moved);
}

void PathGeometry::ground(const PicturePath& path, std::uint32_t rgb) const {
    PicturePath moved = path;
    moved.transformBy(m_toWorld);
    groundPath(moved, rgb);
}

bool PathGeometry::wantsTone(double spacing) const { return areTooClose(spacing * lengthScale(m_toWorld)); }

void PathGeometry::letters(const PlacedText& text) const {
    if (text.runs.empty()) return;
    PlacedText moved = text;
    moved.transformBy(m_toWorld);
    placeLetters(moved);
}

// --- Transforms and clips ----------------------------------------------------------------------------------

Adesk::Boolean PathGeometry::pushModelTransform(const AcGeVector3d& normal) {
    return pushModelTransform(AcGeMatrix3d::planeToWorld(normal));
}

Adesk::Boolean PathGeometry::pushModelTransform(const AcGeMatrix3d& matrix) {
    m_outer.push_back(m_toWorld);
    m_toWorld = m_toWorld * matrix;
    return Adesk::kTrue;
}

Adesk::Boolean PathGeometry::popModelTransform() {
    if (m_outer.empty()) return Adesk::kFalse;
    m_toWorld = m_outer.back();
    m_outer.pop_back();
    return Adesk::kTrue;
}

AcGeMatrix3d PathGeometry::pushUnchanged() {
    pushModelTransform(AcGeMatrix3d::kIdentity);
    return m_toWorld;
}

Adesk::Boolean PathGeometry::pushClipBoundary(AcGiClipBoundary* boundary) {
    const int count = boundary ? boundary->m_aptPoints.length() : 0;
    m_clips.push_back(count >= 2);
    if (count < 2) return Adesk::kFalse;
    const AcArray<AcGePoint2d>& corners = boundary->m_aptPoints;
    const auto at = [&](double x, double y) {
        return m_toWorld * boundary->m_xToClipSpace.inverse() * AcGePoint3d(x, y, 0.0);
    };
    PicturePath path;
    if (count == 2) {
        for (const auto& [i, k] : {std::pair(0, 0), std::pair(1, 0), std::pair(1, 1), std::pair(0, 1)})
            path.lineTo(at(corners[i].x, corners[k].y));
    } else {
        for (const AcGePoint2d& corner : corners) path.lineTo(at(corner.x, corner.y));
    }
    path.close();
    beginClip(path);
    return Adesk::kTrue;
}

void PathGeometry::popClipBoundary() {
    if (m_clips.empty()) return;
    if (m_clips.back()) endClip();
    m_clips.pop_back();
}

// --- Curves ------------------------------------------------------------------------------------------------

void PathGeometry::showArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor,
                           double start, double sweep, AcGiArcType arcType) const {
    PicturePath path;
    path.arc(center, major, minor, start, sweep);
    if (arcType == kAcGiArcSector) path.lineTo(center);
    const bool isClosed = arcType != kAcGiArcSimple || std::abs(sweep) >= fullTurn;
    if (isClosed) path.close();
    show(std::move(path), isClosed);
}

Adesk::Boolean PathGeometry::circle(const AcGePoint3d& center, const double radius,
                                    const AcGeVector3d& normal) const {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(normal, x, y);
    showArc(center, x * radius, y * radius, 0.0, fullTurn, kAcGiArcSimple);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::circle(const AcGePoint3d& point1, const AcGePoint3d& point2,
                                    const AcGePoint3d& point3) const {
    const AcGeCircArc3d round(point1, point2, point3);
    return circle(round.center(), round.radius(), round.normal());
}

Adesk::Boolean PathGeometry::circularArc(const AcGePoint3d& center, const double radius,
                                         const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                         const double sweepAngle, const AcGiArcType arcType) const {
    const AcGeVector3d major = startVector.normal() * radius;
    showArc(center, major, normal.normal().crossProduct(major), 0.0, sweepAngle, arcType);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                         const AcGePoint3d& end, const AcGiArcType arcType) const {
    const AcGeCircArc3d arc(start, point, end);
    return circularArc(arc.center(), arc.radius(), arc.normal(), start - arc.center(),
                       arc.endAng() - arc.startAng(), arcType);
}

Adesk::Boolean PathGeometry::ellipticalArc(const AcGeEllipArc3d& arc, const AcGePoint3d*,
                                           AcGiArcType arcType) const {
    showArc(arc.center(), arc.majorAxis() * arc.majorRadius(), arc.minorAxis() * arc.minorRadius(),
            arc.startAng(), arc.endAng() - arc.startAng(), arcType);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::polyline(const Adesk::UInt32 count, const AcGePoint3d* points,
                                      const AcGeVector3d*, Adesk::LongPtr) const {
    show(pathOf(count, points, false), false);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::polyline(const AcGiPolyline& polyline) const {
    return this->polyline(polyline.points(), polyline.vertexList());
}

Adesk::Boolean PathGeometry::polyPolyline(Adesk::UInt32 count, const AcGiPolyline* polylines) const {
    for (Adesk::UInt32 i = 0; polylines && i < count; ++i) polyline(polylines[i]);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const {
    show(pathOf(count, points, true), true);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::polyPolygon(const Adesk::UInt32 groups, const Adesk::UInt32* polygonCounts,
                                         const AcGePoint3d* positions, const Adesk::UInt32* pointCounts,
                                         const AcGePoint3d* points, const AcCmEntityColor* outlineColors,
                                         const AcCmEntityColor* fillColors) const {
    if (!polygonCounts || !pointCounts || !points) return Adesk::kFalse;
    const AcCmEntityColor* colors = isFilled() ? fillColors : outlineColors;
    const AcCmEntityColor before = traits().trueColor();
    for (Adesk::UInt32 group = 0; group < groups; ++group) {
        PicturePath path;
        for (Adesk::UInt32 i = 0; i < polygonCounts[group]; ++i) {
            path.append(pathOf(*pointCounts, points, true));
            points += *pointCounts++;
        }
        if (positions) path.transformBy(AcGeMatrix3d::translation(positions[group].asVector()));
        if (colors) traits().setTrueColor(colors[group]);
        show(std::move(path), true);
    }
    if (colors) traits().setTrueColor(before);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::pline(const AcDbPolyline& polyline, Adesk::UInt32 from,
                                   Adesk::UInt32 segments) const {
    if (from > 0 || segments > 0) {
        return pline(partOf(polyline, from, segments));
    }
    const std::vector<WidePiece> pieces = widePieces(polyline);
    if (pieces.empty()) {
        PicturePath path;
        if (appendCurve(path, polyline)) show(std::move(path), polyline.isClosed());
    }
    for (const WidePiece& piece : pieces) {
        const bool isOutline = piece.width == 0.0 && piece.path.steps().back() == PicturePath::Step::close;
        if (isOutline)
            area(piece.path);
        else
            show(PicturePath(piece.path), false, piece.width);
    }
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::xline(const AcGePoint3d& point1, const AcGePoint3d& point2) const {
    placeEndless(m_toWorld * point1, m_toWorld * (point2 - point1), true);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::ray(const AcGePoint3d& point1, const AcGePoint3d& point2) const {
    placeEndless(m_toWorld * point1, m_toWorld * (point2 - point1), false);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::worldLine(const AcGePoint3d points[2]) {
    strokePath(pathOf(2, points, false), 0.0);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::rowOfDots(int count, const AcGePoint3d& start, const AcGeVector3d& step) const {
    for (int i = 0; i < count; ++i) placeDot(m_toWorld * (start + step * i));
    return Adesk::kFalse;
}

// --- Faces and pictures ------------------------------------------------------------------------------------

Adesk::Boolean PathGeometry::mesh(const Adesk::UInt32 rows, const Adesk::UInt32 columns,
                                  const AcGePoint3d* points, const AcGiEdgeData*, const AcGiFaceData*,
                                  const AcGiVertexData*, const bool) const {
    if (!points || rows < 2 || columns < 2) return Adesk::kFalse;
    const auto at = [&](Adesk::UInt32 row, Adesk::UInt32 column) {
        return points[static_cast<std::size_t>(row) * columns + column];
    };
    if (isFilled()) {
        for (Adesk::UInt32 row = 0; row + 1 < rows; ++row)
            for (Adesk::UInt32 column = 0; column + 1 < columns; ++column) {
                const AcGePoint3d face[] = {at(row, column), at(row, column + 1), at(row + 1, column + 1),
                                            at(row + 1, column)};
                polygon(4, face);
            }
        return Adesk::kFalse;
    }
    PicturePath lines;
    for (Adesk::UInt32 row = 0; row < rows; ++row)
        for (Adesk::UInt32 column = 0; column < columns; ++column)
            column ? lines.lineTo(at(row, column)) : lines.moveTo(at(row, column));
    for (Adesk::UInt32 column = 0; column < columns; ++column)
        for (Adesk::UInt32 row = 0; row < rows; ++row)
            row ? lines.lineTo(at(row, column)) : lines.moveTo(at(row, column));
    show(std::move(lines), false);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::shell(const Adesk::UInt32 vertexCount, const AcGePoint3d* points,
                                   const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList,
                                   const AcGiEdgeData* edges, const AcGiFaceData*, const AcGiVertexData*,
                                   const resbuf*, const bool) const {
    const Adesk::UInt8* visibility = edges && !isFilled() ? edges->visibility() : nullptr;
    std::size_t edge = 0;
    for (std::size_t i = 0; points && faceList && i < faceListSize;) {
        const std::size_t count = static_cast<std::size_t>(std::abs(static_cast<long>(faceList[i++])));
        if (count > faceListSize - i) break;
        PicturePath face;
        bool isRunning = false;
        for (std::size_t k = 0; k <= count && count > 0; ++k) {
            const Adesk::Int32 index = faceList[i + k % count];
            if (index < 0 || static_cast<Adesk::UInt32>(index) >= vertexCount) break;
            isRunning ? face.lineTo(points[index]) : face.moveTo(points[index]);
            isRunning = !visibility || (k < count && visibility[edge + k] != kAcGiInvisible);
        }
        show(std::move(face), true);
        i += count;
        edge += count;
    }
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::image(const AcGiImageBGRA32&, const AcGePoint3d& position, const AcGeVector3d& u,
                                   const AcGeVector3d& v) const {
    const AcGePoint3d corners[] = {position, position + u, position + u + v, position + v};
    show(pathOf(4, corners, true), false);
    return Adesk::kFalse;
}

// --- Letters -----------------------------------------------------------------------------------------------

Adesk::Boolean PathGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                  const AcGeVector3d& direction, const double height, const double width,
                                  const double oblique, const wchar_t* message) const {
    if (!message) return Adesk::kFalse;
    PlacedText text = placed(position, normal, direction, height, width, oblique);
    text.runs = runsOfText(message, {});
    letters(text);
    return Adesk::kFalse;
}

Adesk::Boolean PathGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                  const AcGeVector3d& direction, const wchar_t* message,
                                  const Adesk::Int32 length, const Adesk::Boolean raw,
                                  const AcGiTextStyle& style) const {
    if (!message) return Adesk::kFalse;
    PlacedText text = placed(position, normal, direction, style.textSize(),
                             style.xScale() * style.trackingPercent(), style.obliquingAngle());
    if (style.isBackward()) text.along = -text.along;
    if (style.isUpsideDown()) text.up = -text.up;
    std::wstring told(message);
    if (length >= 0) told.resize(std::min(told.size(), static_cast<std::size_t>(length)));
    text.runs = raw ? std::vector<TextRun>{TextRun{.text = told}} : runsOfText(told, {});
    for (TextRun& run : text.runs) takeForm(run, style);
    letters(text);
    return Adesk::kFalse;
}

} // namespace hostkit
