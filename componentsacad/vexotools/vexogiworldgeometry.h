#pragma once

#include "acarray.h"
#include "acgi.h"

#include <memory>

class AcDbEntity;
class AcDbHatch;
class VEXOGiSubEntityTraits;

/// Records each primitive as new entities that are in no drawing, with the look that the traits have then.
///
/// Transforms and clips are not followed: what is drawn under one comes out as if none was pushed. A
/// primitive gives true, but for a text that could not be made. None throws; one that runs out of memory
/// records nothing.
///
/// What was recorded belongs to whoever takes it with getAcDbEnts, and to nobody before: it is not deleted
/// with the recorder.
class VEXOGiWorldGeometry : public AcGiWorldGeometry {
public:
    explicit VEXOGiWorldGeometry(AcDbEntity* source);
    ~VEXOGiWorldGeometry() override;
    VEXOGiWorldGeometry(const VEXOGiWorldGeometry&) = delete;
    VEXOGiWorldGeometry& operator=(const VEXOGiWorldGeometry&) = delete;

    VEXOGiSubEntityTraits* traits() const { return m_traits.get(); }
    /// Appends all that was recorded so far, as AcDbEntity pointers; each call gives them anew.
    void getAcDbEnts(AcArray<void*>& entities) const;
    /// Records an entity that was made elsewhere; null is passed over.
    void appendAcDbEnts(AcDbEntity* entity);

    /// The matrix stays as it is.
    void getModelToWorldTransform(AcGeMatrix3d& /*matrix*/) const override {}
    void getWorldToModelTransform(AcGeMatrix3d& /*matrix*/) const override {}
    Adesk::Boolean pushModelTransform(const AcGeVector3d& /*normal*/) override { return Adesk::kTrue; }
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& /*matrix*/) override { return Adesk::kTrue; }
    Adesk::Boolean popModelTransform() override { return Adesk::kTrue; }
    AcGeMatrix3d pushPositionTransform(AcGiPositionTransformBehavior /*behavior*/,
                                       const AcGePoint3d& /*offset*/) override {
        return AcGeMatrix3d::kIdentity;
    }
    AcGeMatrix3d pushPositionTransform(AcGiPositionTransformBehavior /*behavior*/,
                                       const AcGePoint2d& /*offset*/) override {
        return AcGeMatrix3d::kIdentity;
    }
    AcGeMatrix3d pushScaleTransform(AcGiScaleTransformBehavior /*behavior*/,
                                    const AcGePoint3d& /*extents*/) override {
        return AcGeMatrix3d::kIdentity;
    }
    AcGeMatrix3d pushScaleTransform(AcGiScaleTransformBehavior /*behavior*/,
                                    const AcGePoint2d& /*extents*/) override {
        return AcGeMatrix3d::kIdentity;
    }
    AcGeMatrix3d pushOrientationTransform(AcGiOrientationTransformBehavior /*behavior*/) override {
        return AcGeMatrix3d::kIdentity;
    }

    /// A circle, and a solid hatch behind it while the traits fill. Three points on a line give nothing.
    Adesk::Boolean circle(const AcGePoint3d& center, const double radius,
                          const AcGeVector3d& normal) const override;
    Adesk::Boolean circle(const AcGePoint3d& point1, const AcGePoint3d& point2,
                          const AcGePoint3d& point3) const override;
    /// The arc through center + startVector and that vector turned by half of the sweep and by all of it: the
    /// radius has no part in it. A whole turn or more gives the circle. An arc is never closed or filled,
    /// whatever its type.
    Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                               const AcGeVector3d& startVector, const double sweepAngle,
                               const AcGiArcType arcType = kAcGiArcSimple) const override;
    Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                               const AcGiArcType arcType = kAcGiArcSimple) const override;
    /// A line for each side.
    Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* points,
                            const AcGeVector3d* normal = nullptr, Adesk::LongPtr marker = -1) const override;
    /// A closed light polyline at the height of the first point, and a solid hatch at height 0 while the
    /// traits fill.
    Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const override;
    /// A solid hatch for each face, by its points' x and y alone, whether the traits fill or not. Faces with
    /// a negative count or an index that is none are skipped; a list that is cut short ends before its last
    /// face.
    Adesk::Boolean shell(const Adesk::UInt32 vertexCount, const AcGePoint3d* points,
                         const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList,
                         const AcGiEdgeData* edges = nullptr, const AcGiFaceData* faces = nullptr,
                         const AcGiVertexData* vertices = nullptr, const resbuf* extra = nullptr,
                         const bool autoGenerateNormals = true) const override;
    /// An AcDbMText. The width, a factor by the host's word, becomes the width of its box; the slant is
    /// dropped.
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const double height, const double width,
                        const double oblique, const wchar_t* message) const override;
    /// The same at the style's height, without a box.
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const wchar_t* message, const Adesk::Int32 length,
                        const Adesk::Boolean raw, const AcGiTextStyle& style) const override;
    /// A copy of its vertices, all of them; elevation and thickness stay behind.
    Adesk::Boolean pline(const AcDbPolyline& polyline, Adesk::UInt32 from = 0,
                         Adesk::UInt32 segments = 0) const override;
    /// The drawable itself, where it is an entity: it counts as recorded, and whoever takes it must not
    /// delete what somebody else owns.
    Adesk::Boolean draw(AcGiDrawable* drawable) const override;
    Adesk::Boolean pushClipBoundary(AcGiClipBoundary* /*boundary*/) override { return Adesk::kTrue; }
    void popClipBoundary() override {}
    Adesk::Boolean worldLine(const AcGePoint3d points[2]) override;

    // What is recorded of these is nothing.
    Adesk::Boolean mesh(const Adesk::UInt32 rows, const Adesk::UInt32 columns, const AcGePoint3d* points,
                        const AcGiEdgeData* edges = nullptr, const AcGiFaceData* faces = nullptr,
                        const AcGiVertexData* vertices = nullptr,
                        const bool autoGenerateNormals = true) const override;
    Adesk::Boolean xline(const AcGePoint3d& point1, const AcGePoint3d& point2) const override;
    Adesk::Boolean ray(const AcGePoint3d& point1, const AcGePoint3d& point2) const override;
    Adesk::Boolean image(const AcGiImageBGRA32& source, const AcGePoint3d& position, const AcGeVector3d& u,
                         const AcGeVector3d& v) const override;
    Adesk::Boolean rowOfDots(int count, const AcGePoint3d& start, const AcGeVector3d& step) const override;
    Adesk::Boolean ellipticalArc(const AcGeEllipArc3d& arc, const AcGePoint3d* endPointsOverrides = nullptr,
                                 AcGiArcType arcType = kAcGiArcSimple) const override;
    Adesk::Boolean polyline(const AcGiPolyline& polyline) const override;
    Adesk::Boolean polyPolyline(Adesk::UInt32 count, const AcGiPolyline* polylines) const override;
    Adesk::Boolean polyPolygon(const Adesk::UInt32 groups, const Adesk::UInt32* polygonCounts,
                               const AcGePoint3d* positions, const Adesk::UInt32* pointCounts,
                               const AcGePoint3d* points, const AcCmEntityColor* outlineColors = nullptr,
                               const AcCmEntityColor* fillColors = nullptr) const override;

private:
    template <class T>
    void record(std::unique_ptr<T> entity) const;
    bool fills() const;
    void fill(const AcArray<void*>& edges, const AcArray<int>& types, const AcGeVector3d& normal) const;
    void fillPolygon(const AcArray<AcGePoint2d>& corners) const;
    Adesk::Boolean makeText(const AcGePoint3d& position, const AcGeVector3d& normal,
                            const AcGeVector3d& direction, double height, double width,
                            const wchar_t* message) const;

    std::unique_ptr<VEXOGiSubEntityTraits> m_traits;
    mutable AcArray<AcDbEntity*> m_entities{0, 8};
};
