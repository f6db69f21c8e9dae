// Stand-in for the host's AcGiGeometry and AcGiWorldGeometry. Covers the primitives, transforms and clips; leaves out extents told by hand and segments of attributes.
#pragma once

#include "acgidefs.h"
#include "rxobject.h"

#include <cstddef>

struct resbuf;
class AcGiDrawable;
class AcGiTextStyle;

/// What is drawn with. Points are in the coordinates of the innermost transform; arrays belong to the caller
/// and are read during the call. Primitives give true where the drawing is to be broken off; a primitive that
/// a device records instead of showing may use the value otherwise, as its own declaration says.
///
/// Loops and filled primitives take the fill type of the traits.
class AcGiGeometry : public AcRxObject {
public:
    virtual void getModelToWorldTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getWorldToModelTransform(AcGeMatrix3d& matrix) const = 0;
    /// What follows stands in the plane of this normal, by the arbitrary-axis rule; or in the coordinates of
    /// this matrix. Each push wants a pop.
    virtual Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) = 0;
    virtual Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) = 0;
    virtual Adesk::Boolean popModelTransform() = 0;

    virtual AcGeMatrix3d pushPositionTransform(AcGiPositionTransformBehavior behavior,
                                               const AcGePoint3d& offset) = 0;
    virtual AcGeMatrix3d pushPositionTransform(AcGiPositionTransformBehavior behavior,
                                               const AcGePoint2d& offset) = 0;
    virtual AcGeMatrix3d pushScaleTransform(AcGiScaleTransformBehavior behavior,
                                            const AcGePoint3d& extents) = 0;
    virtual AcGeMatrix3d pushScaleTransform(AcGiScaleTransformBehavior behavior,
                                            const AcGePoint2d& extents) = 0;
    virtual AcGeMatrix3d pushOrientationTransform(AcGiOrientationTransformBehavior behavior) = 0;

    virtual Adesk::Boolean circle(const AcGePoint3d& center, const double radius,
                                  const AcGeVector3d& normal) const = 0;
    virtual Adesk::Boolean circle(const AcGePoint3d& point1, const AcGePoint3d& point2,
                                  const AcGePoint3d& point3) const = 0;
    /// From the direction `startVector` through `sweepAngle` radians about the normal.
    virtual Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius,
                                       const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                       const double sweepAngle,
                                       const AcGiArcType arcType = kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                       const AcGePoint3d& end,
                                       const AcGiArcType arcType = kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* points,
                                    const AcGeVector3d* normal = nullptr,
                                    Adesk::LongPtr marker = -1) const = 0;
    virtual Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const = 0;
    /// rows * columns points, row by row.
    virtual Adesk::Boolean mesh(const Adesk::UInt32 rows, const Adesk::UInt32 columns,
                                const AcGePoint3d* points, const AcGiEdgeData* edges = nullptr,
                                const AcGiFaceData* faces = nullptr, const AcGiVertexData* vertices = nullptr,
                                const bool autoGenerateNormals = true) const = 0;
    /// The face list has for each face the number of its vertices and then their indices; a negative number
    /// is a hole in the face before.
    virtual Adesk::Boolean shell(const Adesk::UInt32 vertexCount, const AcGePoint3d* points,
                                 const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList,
                                 const AcGiEdgeData* edges = nullptr, const AcGiFaceData* faces = nullptr,
                                 const AcGiVertexData* vertices = nullptr, const resbuf* extra = nullptr,
                                 const bool autoGenerateNormals = true) const = 0;
    /// A line of letters from `position` on: `height` that of capitals, `width` a factor, `oblique` the slant
    /// in radians.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, const double height, const double width,
                                const double oblique, const wchar_t* message) const = 0;
    /// The same in a style. `length` characters, or all up to the zero with -1; `raw` takes codes of the form
    /// %% as letters.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, const wchar_t* message,
                                const Adesk::Int32 length, const Adesk::Boolean raw,
                                const AcGiTextStyle& style) const = 0;
    /// Endless both ways through two points, and endless from the first one on.
    virtual Adesk::Boolean xline(const AcGePoint3d& point1, const AcGePoint3d& point2) const = 0;
    virtual Adesk::Boolean ray(const AcGePoint3d& point1, const AcGePoint3d& point2) const = 0;
    /// A light polyline with its widths and bulges; `segments` sides from the vertex `from`, 0 for all.
    virtual Adesk::Boolean pline(const AcDbPolyline& polyline, Adesk::UInt32 from = 0,
                                 Adesk::UInt32 segments = 0) const = 0;
    /// Another drawable with its own look, as a part of what is drawn.
    virtual Adesk::Boolean draw(AcGiDrawable* drawable) const = 0;

    virtual Adesk::Boolean pushClipBoundary(AcGiClipBoundary* boundary) = 0;
    virtual void popClipBoundary() = 0;
    /// A line whose points are in world coordinates whatever was pushed.
    virtual Adesk::Boolean worldLine(const AcGePoint3d points[2]) = 0;

    virtual Adesk::Boolean image(const AcGiImageBGRA32& source, const AcGePoint3d& position,
                                 const AcGeVector3d& u, const AcGeVector3d& v) const = 0;
    /// Points without size.
    virtual Adesk::Boolean rowOfDots(int count, const AcGePoint3d& start, const AcGeVector3d& step) const = 0;
    virtual Adesk::Boolean ellipticalArc(const AcGeEllipArc3d& arc,
                                         const AcGePoint3d* endPointsOverrides = nullptr,
                                         AcGiArcType arcType = kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean polyline(const AcGiPolyline& polyline) const = 0;
    virtual Adesk::Boolean polyPolyline(Adesk::UInt32 count, const AcGiPolyline* polylines) const = 0;
    /// Polygons in groups: `polygonCounts[i]` contours belong to the i-th of `groups`, of `pointCounts[k]`
    /// points each, one behind the other. Contours of a group that lie in each other are holes of it.
    /// Colours, fill colours and opacities are one a group; null takes those of the traits.
    virtual Adesk::Boolean polyPolygon(const Adesk::UInt32 groups, const Adesk::UInt32* polygonCounts,
                                       const AcGePoint3d* positions, const Adesk::UInt32* pointCounts,
                                       const AcGePoint3d* points,
                                       const AcCmEntityColor* outlineColors = nullptr,
                                       const AcCmEntityColor* fillColors = nullptr) const = 0;
};

/// The same in world coordinates: what looks alike in every view.
class AcGiWorldGeometry : public AcGiGeometry {};
