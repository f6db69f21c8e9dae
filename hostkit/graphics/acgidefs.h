// Stand-in for the host's small types of the draw interface. Covers enumerations, looks of faces, clips, point runs and pixels; leaves out materials and lights.
#pragma once

#include "adesk.h"
#include "dbcolor.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"

class AcDbObjectId;
class AcDbPolyline;
class AcGeEllipArc3d;

/// What a drawing is made for. An entity may look at it and draw a simpler or a finer form.
enum AcGiRegenType {
    eAcGiRegenTypeInvalid = 0,
    kAcGiStandardDisplay = 2,
    kAcGiHideOrShadeCommand,
    kAcGiShadedDisplay,
    kAcGiForExplode, ///< each primitive is to become a simple entity
    kAcGiSaveWorldDrawForProxy
};

/// Closed primitives are filled, or show their outline alone.
enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever };

enum AcGiArcType {
    kAcGiArcSimple = 0, ///< the arc alone
    kAcGiArcSector,     ///< closed through its centre
    kAcGiArcChord       ///< closed by its chord
};

enum AcGiDeviationType {
    kAcGiMaxDevForCircle = 0,
    kAcGiMaxDevForCurve,
    kAcGiMaxDevForBoundary,
    kAcGiMaxDevForIsoline,
    kAcGiMaxDevForFacet
};

enum AcGiVisibility { kAcGiInvisible = 0, kAcGiVisible, kAcGiSilhouette };

enum AcGiPositionTransformBehavior {
    kAcGiWorldPosition = 1,
    kAcGiViewportPosition,
    kAcGiScreenPosition,
    kAcGiScreenLocalPosition,
    kAcGiWorldWithScreenOffsetPosition
};
enum AcGiScaleTransformBehavior {
    kAcGiWorldScale = 1,
    kAcGiViewportScale,
    kAcGiScreenScale,
    kAcGiViewportLocalOriginScale,
    kAcGiScreenLocalOriginScale
};
enum AcGiOrientationTransformBehavior {
    kAcGiWorldOrientation = 1,
    kAcGiScreenOrientation,
    kAcGiZAxisOrientation
};

/// Looks of the edges of a mesh or shell, one value an edge. Arrays belong to the caller; null is none.
class AcGiEdgeData {
public:
    void setColors(const short* colors) { m_colors = colors; }
    void setTrueColors(const AcCmEntityColor* colors) { m_trueColors = colors; }
    void setVisibility(const Adesk::UInt8* visibility) { m_visibility = visibility; }
    const short* colors() const { return m_colors; }
    const AcCmEntityColor* trueColors() const { return m_trueColors; }
    /// AcGiVisibility, one an edge.
    const Adesk::UInt8* visibility() const { return m_visibility; }

private:
    const short* m_colors = nullptr;
    const AcCmEntityColor* m_trueColors = nullptr;
    const Adesk::UInt8* m_visibility = nullptr;
};

/// Looks of the faces of a mesh or shell, one value a face.
class AcGiFaceData {
public:
    void setColors(const short* colors) { m_colors = colors; }
    void setTrueColors(const AcCmEntityColor* colors) { m_trueColors = colors; }
    void setVisibility(const Adesk::UInt8* visibility) { m_visibility = visibility; }
    void setNormals(const AcGeVector3d* normals) { m_normals = normals; }
    const short* colors() const { return m_colors; }
    const AcCmEntityColor* trueColors() const { return m_trueColors; }
    const Adesk::UInt8* visibility() const { return m_visibility; }
    const AcGeVector3d* normals() const { return m_normals; }

private:
    const short* m_colors = nullptr;
    const AcCmEntityColor* m_trueColors = nullptr;
    const Adesk::UInt8* m_visibility = nullptr;
    const AcGeVector3d* m_normals = nullptr;
};

/// What is told of the vertices of a mesh or shell.
class AcGiVertexData {
public:
    void setNormals(const AcGeVector3d* normals) { m_normals = normals; }
    const AcGeVector3d* normals() const { return m_normals; }

private:
    const AcGeVector3d* m_normals = nullptr;
};

/// What shows only inside a closed outline. Points are those of the plane through m_ptPoint with the normal
/// m_vNormal, told in the coordinates that m_xToClipSpace leads to; with two points a box.
class AcGiClipBoundary {
public:
    AcGeVector3d m_vNormal = AcGeVector3d::kZAxis;
    AcGePoint3d m_ptPoint;
    AcArray<AcGePoint2d> m_aptPoints;
    AcGeMatrix3d m_xToClipSpace;
    AcGeMatrix3d m_xInverseBlockRefXForm;
    double m_dFrontClipZ = 0.0;
    double m_dBackClipZ = 0.0;
    bool m_bClippingFront = false;
    bool m_bClippingBack = false;
    bool m_bDrawBoundary = false;
};

/// A run of points with what a simple one says of all. The points belong to the caller.
class AcGiPolyline {
public:
    AcGiPolyline(Adesk::UInt32 count = 0, const AcGePoint3d* points = nullptr,
                 const AcGeVector3d* normal = nullptr, Adesk::LongPtr marker = -1)
        : m_count(count)
        , m_points(points)
        , m_normal(normal)
        , m_marker(marker) {}
    Adesk::UInt32 points() const { return m_count; }
    const AcGePoint3d* vertexList() const { return m_points; }
    const AcGeVector3d* normal() const { return m_normal; }
    Adesk::LongPtr baseSubEntMarker() const { return m_marker; }

private:
    Adesk::UInt32 m_count;
    const AcGePoint3d* m_points;
    const AcGeVector3d* m_normal;
    Adesk::LongPtr m_marker;
};

/// A picture of 32 bits a pixel: blue, green, red, opacity; the lowest row first. The pixels belong to the
/// caller.
class AcGiImageBGRA32 {
public:
    AcGiImageBGRA32(Adesk::UInt32 width = 0, Adesk::UInt32 height = 0, const Adesk::UInt32* pixels = nullptr)
        : m_width(width)
        , m_height(height)
        , m_pixels(pixels) {}
    Adesk::UInt32 width() const { return m_width; }
    Adesk::UInt32 height() const { return m_height; }
    const Adesk::UInt32* image() const { return m_pixels; }

private:
    Adesk::UInt32 m_width;
    Adesk::UInt32 m_height;
    const Adesk::UInt32* m_pixels;
};
