// A draw geometry of whole paths, on which what shows pictures stands, and how entities draw what the host's
// primitives do not have.
#pragma once

#include "acgigeometry.h"
#include "picturepath.h"
#include "placedtext.h"

#include <cstdint>
#include <vector>

class AcGiSubEntityTraits;
class AcGiWorldDraw;
class AcDbEntity;
class AcDbObjectId;

namespace hostkit {

/// All primitives as paths, areas and letters in world coordinates, transforms and clips done. Primitives
/// give false. Curves stay what they are under every affine map; meshes and shells show their edges, or their
/// faces where these are filled; pictures show their frame.
class PathGeometry : public AcGiWorldGeometry {
public:
    /// In the coordinates of the innermost transform, like the primitives.
    void path(const PicturePath& path) const;
    void area(const PicturePath& path) const;
    void letters(const PlacedText& text) const;
    /// Hides what was drawn before, in that colour, 0xRRGGBB; white is that of the paper.
    void ground(const PicturePath& path, std::uint32_t rgb) const;
    /// True where lines that far apart, in those coordinates, would run into each other: then tone() stands
    /// for them.
    bool wantsTone(double spacing) const;
    void tone(const PicturePath& path) const;

    const AcGeMatrix3d& toWorld() const { return m_toWorld; }

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override { matrix = m_toWorld; }
    void getWorldToModelTransform(AcGeMatrix3d& matrix) const override { matrix = m_toWorld.inverse(); }
    Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) override;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) override;
    Adesk::Boolean popModelTransform() override;
    /// These know no viewport: they change nothing, but each wants its pop.
    AcGeMatrix3d pushPositionTransform(AcGiPositionTransformBehavior, const AcGePoint3d&) override {
        return pushUnchanged();
    }
    AcGeMatrix3d pushPositionTransform(AcGiPositionTransformBehavior, const AcGePoint2d&) override {
        return pushUnchanged();
    }
    AcGeMatrix3d pushScaleTransform(AcGiScaleTransformBehavior, const AcGePoint3d&) override {
        return pushUnchanged();
    }
    AcGeMatrix3d pushScaleTransform(AcGiScaleTransformBehavior, const AcGePoint2d&) override {
        return pushUnchanged();
    }
    AcGeMatrix3d pushOrientationTransform(AcGiOrientationTransformBehavior) override {
        return pushUnchanged();
    }

    Adesk::Boolean circle(const AcGePoint3d& center, const double radius,
                          const AcGeVector3d& normal) const override;
    Adesk::Boolean circle(const AcGePoint3d& point1, const AcGePoint3d& point2,
                          const AcGePoint3d& point3) const override;
    Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                               const AcGeVector3d& startVector, const double sweepAngle,
                               const AcGiArcType arcType = kAcGiArcSimple) const override;
    Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                               const AcGiArcType arcType = kAcGiArcSimple) const override;
    Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* points,
                            const AcGeVector3d* normal = nullptr, Adesk::LongPtr marker = -1) const override;
    Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const override;
    Adesk::Boolean mesh(const Adesk::UInt32 rows, const Adesk::UInt32 columns, const AcGePoint3d* points,
                        const AcGiEdgeData* edges = nullptr, const AcGiFaceData* faces = nullptr,
                        const AcGiVertexData* vertices = nullptr,
                        const bool autoGenerateNormals = true) const override;
    Adesk::Boolean shell(const Adesk::UInt32 vertexCount, const AcGePoint3d* points,
                         const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList,
                         const AcGiEdgeData* edges = nullptr, const AcGiFaceData* faces = nullptr,
                         const AcGiVertexData* vertices = nullptr, const resbuf* extra = nullptr,
                         const bool autoGenerateNormals = true) const override;
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const double height, const double width,
                        const double oblique, const wchar_t* message) const override;
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const wchar_t* message, const Adesk::Int32 length,
                        const Adesk::Boolean raw, const AcGiTextStyle& style) const override;
    Adesk::Boolean xline(const AcGePoint3d& point1, const AcGePoint3d& point2) const override;
    Adesk::Boolean ray(const AcGePoint3d& point1, const AcGePoint3d& point2) const override;
    Adesk::Boolean pline(const AcDbPolyline& polyline, Adesk::UInt32 from = 0,
                         Adesk::UInt32 segments = 0) const override;
    Adesk::Boolean pushClipBoundary(AcGiClipBoundary* boundary) override;
    void popClipBoundary() override;
    Adesk::Boolean worldLine(const AcGePoint3d points[2]) override;
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

protected:
    PathGeometry() = default;

    // What the device does, in world coordinates and in the look of its traits.

    virtual AcGiSubEntityTraits& traits() const = 0;
    /// `width` in drawing units, 0 for a line by its weight.
    virtual void strokePath(const PicturePath& path, double width) const = 0;
    /// Inside by the even-odd rule.
    virtual void fillPath(const PicturePath& path) const = 0;
    virtual void groundPath(const PicturePath& path, std::uint32_t rgb) const = 0;
    virtual void tonePath(const PicturePath& path) const = 0;
    virtual void placeLetters(const PlacedText& text) const = 0;
    virtual void placeDot(const AcGePoint3d& point) const = 0;
    virtual void placeEndless(const AcGePoint3d& point, const AcGeVector3d& direction,
                              bool isBothWays) const = 0;
    virtual void beginClip(const PicturePath& path) const = 0;
    virtual void endClip() const = 0;
    virtual bool areTooClose(double spacing) const = 0;

private:
    AcGeMatrix3d pushUnchanged();
    bool isFilled() const;
    void show(PicturePath&& path, bool isClosed, double width = 0.0) const;
    void showArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor,
                 double start, double sweep, AcGiArcType arcType) const;

    AcGeMatrix3d m_toWorld;
    std::vector<AcGeMatrix3d> m_outer;
    std::vector<bool> m_clips; ///< whether a push began a clip
};

// For entities. Where the geometry is none of paths, curves become strokes within the deviation of the draw,
// and areas polygons.

void drawPath(AcGiWorldDraw& draw, const PicturePath& path);
/// Filled, whatever the traits say; these are as before then.
void drawArea(AcGiWorldDraw& draw, const PicturePath& path);
/// `normal` is that of the text's plane.
void drawLetters(AcGiWorldDraw& draw, const PlacedText& text, const AcGeVector3d& normal,
                 AcDbObjectId textStyle);

void setLook(AcGiSubEntityTraits& traits, const AcDbEntity& entity);
/// Another entity as a part of what is drawn, in its own look; what it shows by block stays so.
void drawPart(AcGiWorldDraw& draw, AcDbEntity& part);

/// The runs of the path as points, within the deviation.
std::vector<std::vector<AcGePoint3d>> chordsOf(const PicturePath& path, double deviation);

/// Lengths in a turned and scaled block grow by this; the mean where the scales differ.
double lengthScale(const AcGeMatrix3d& matrix);

} // namespace hostkit
