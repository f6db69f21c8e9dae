// What entities draw, asked for its shape alone: boxes and picks of kinds whose fields tell of no geometry.
#pragma once

#include "acgi.h"
#include "dbextents.h"
#include "pathgeometry.h"

#include <vector>

class AcDbBlockTableRecord;
class AcDbEntity;

namespace hostkit {

/// Traits that keep what is set.
class PlainTraits final : public AcGiDrawableTraits {
public:
    void setColor(const Adesk::UInt16 color) override { (void)m_color.setColorIndex(color); }
    void setTrueColor(const AcCmEntityColor& color) override { m_color = color; }
    void setLayer(const AcDbObjectId layerId) override { m_layer = layerId; }
    void setLineType(const AcDbObjectId linetypeId) override { m_linetype = linetypeId; }
    void setSelectionMarker(const Adesk::LongPtr) override {}
    void setFillType(const AcGiFillType type) override { m_fillType = type; }
    void setLineWeight(const AcDb::LineWeight weight) override { m_lineWeight = weight; }
    void setLineTypeScale(double scale) override { m_linetypeScale = scale; }
    void setThickness(double thickness) override { m_thickness = thickness; }
    Adesk::UInt16 color() const override { return m_color.colorIndex(); }
    AcCmEntityColor trueColor() const override { return m_color; }
    AcDbObjectId layerId() const override { return m_layer; }
    AcDbObjectId lineTypeId() const override { return m_linetype; }
    AcGiFillType fillType() const override { return m_fillType; }
    AcDb::LineWeight lineWeight() const override { return m_lineWeight; }
    double lineTypeScale() const override { return m_linetypeScale; }
    double thickness() const override { return m_thickness; }

private:
    AcCmEntityColor m_color;
    AcDbObjectId m_layer;
    AcDbObjectId m_linetype;
    AcGiFillType m_fillType = kAcGiFillNever;
    AcDb::LineWeight m_lineWeight{};
    double m_linetypeScale = 1.0;
    double m_thickness = 0.0;
};

/// A geometry that is asked what an entity draws and shows none of it. Dense lines count as the area that
/// they fill, what hides others as its outline. Of an entity that would draw more than 100,000 others, or
/// others more than 50 deep, the rest is not asked: a drawing can say that it repeats more than any machine
/// can look at.
class ShapeGeometry : public PathGeometry {
public:
    /// By `entity.worldDraw`, in the coordinates in which it stands, moved by the matrix.
    void ask(const AcDbEntity& entity, const AcGeMatrix3d& matrix);
    Adesk::Boolean draw(AcGiDrawable* drawable) const override;

protected:
    ShapeGeometry()
        : m_draw(*this) {}

    /// An entity that is drawn as a part of the one that was asked. By its own worldDraw, if nothing else.
    virtual void part(AcDbEntity& entity) const;
    /// What is no entity is about to draw its parts.
    virtual void whole(const AcGiDrawable&) const {}
    void askPart(AcDbEntity& entity) const;
    AcGiSubEntityTraits& traits() const override { return m_traits; }
    void groundPath(const PicturePath& path, std::uint32_t) const override { strokePath(path, 0.0); }
    void tonePath(const PicturePath& path) const override { fillPath(path); }
    bool areTooClose(double) const override { return true; }
    void placeLetters(const PlacedText& text) const override;
    void beginClip(const PicturePath& path) const override;
    void endClip() const override;
    /// Of the innermost clip: what is outside of all of them does not show. Null where nothing is clipped.
    const AcDbExtents* clip() const { return m_clips.empty() ? nullptr : &m_clips.back(); }

private:
    class Draw final : public AcGiWorldDraw {
    public:
        explicit Draw(ShapeGeometry& geometry)
            : m_geometry(geometry) {}
        AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
        Adesk::Boolean regenAbort() const override;
        AcGiSubEntityTraits& subEntityTraits() const override { return m_geometry.m_traits; }
        AcGiGeometry* rawGeometry() const override { return &m_geometry; }
        Adesk::Boolean isDragging() const override { return Adesk::kFalse; }
        double deviation(const AcGiDeviationType, const AcGePoint3d&) const override { return 0.0; }
        Adesk::UInt32 numberOfIsolines() const override { return 0; }
        AcGiContext* context() override { return &m_context; }
        AcGiWorldGeometry& geometry() const override { return m_geometry; }

    private:
        friend class ShapeGeometry;
        class Context final : public AcGiContext {
        public:
            Adesk::Boolean isPsOut() const override { return Adesk::kFalse; }
            Adesk::Boolean isPlotGeneration() const override { return Adesk::kFalse; }
            AcDbDatabase* database() const override { return m_database; }
            bool isBoundaryClipping() const override { return false; }
            AcDbDatabase* m_database = nullptr;
        };
        ShapeGeometry& m_geometry;
        Context m_context;
    };

    mutable PlainTraits m_traits;
    mutable Draw m_draw;
    mutable std::vector<AcDbExtents> m_clips;
};

/// The box around the path's curves, not around their control points. Widths do not count.
AcDbExtents extentsOf(const PicturePath& path);

/// Where the letters of a line stand, from the base line up to the height of capitals, around it. False where
/// there are none.
bool letterCorners(const PlacedText& text, AcGePoint3d (&corners)[4]);

struct DrawnExtents {
    AcDbExtents box;        ///< empty where nothing is drawn
    bool isEndless = false; ///< a ray or an endless line is among it, which the box leaves out
    std::vector<const AcDbBlockTableRecord*> blocks; ///< that the entity itself draws
};
/// The box around what the entity draws, moved by the matrix, and exact for a turned one. Of what others it
/// draws the box is as their getGeomExtents says: hidden layers count, as they do for references. Widths do
/// not.
DrawnExtents drawnExtents(const AcDbEntity& entity, const AcGeMatrix3d& matrix = AcGeMatrix3d::kIdentity);

} // namespace hostkit
