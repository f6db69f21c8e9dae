#pragma once

#include "acgi.h"
#include "pathgeometry.h"
#include "picturesink.h"
#include "plotlook.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>

struct SheetView;

/// What a plot counts.
struct PlotReport {
    std::size_t drawn = 0;                        ///< entities, those inside block references too
    std::map<std::wstring, std::size_t> notDrawn; ///< by record name: those of which nothing is shown
    bool isCut = false;                           ///< block references repeat more than is reasonable
};

/// The look that entities ask for, as traits.
class PictureTraits final : public AcGiDrawableTraits {
public:
    void setColor(const Adesk::UInt16 color) override;
    void setTrueColor(const AcCmEntityColor& color) override { change().color = color; }
    void setLayer(const AcDbObjectId layerId) override { change().layer = layerId; }
    void setLineType(const AcDbObjectId linetypeId) override { change().linetype = linetypeId; }
    void setSelectionMarker(const Adesk::LongPtr) override {}
    void setFillType(const AcGiFillType type) override { m_fillType = type; }
    void setLineWeight(const AcDb::LineWeight weight) override { change().lineweight = weight; }
    void setLineTypeScale(double scale) override { change().linetypeScale = scale; }
    void setThickness(double thickness) override { m_thickness = thickness; }
    Adesk::UInt16 color() const override { return m_wanted.color.colorIndex(); }
    AcCmEntityColor trueColor() const override { return m_wanted.color; }
    AcDbObjectId layerId() const override { return m_wanted.layer; }
    AcDbObjectId lineTypeId() const override { return m_wanted.linetype; }
    AcGiFillType fillType() const override { return m_fillType; }
    AcDb::LineWeight lineWeight() const override {
        return static_cast<AcDb::LineWeight>(m_wanted.lineweight);
    }
    double lineTypeScale() const override { return m_wanted.linetypeScale; }
    double thickness() const override { return m_thickness; }

    const WantedLook& wanted() const { return m_wanted; }
    /// Whether a look was set since the last call.
    bool takeChange() { return std::exchange(m_isChanged, false); }

private:
    WantedLook& change() {
        m_isChanged = true;
        return m_wanted;
    }

    WantedLook m_wanted;
    AcGiFillType m_fillType = kAcGiFillNever;
    double m_thickness = 0.0;
    bool m_isChanged = true;
};

/// Draws into a picture: the look of each entity by its layer and the block references around it. Invisible
/// entities and those on layers that are off, frozen or not to be plotted are left out. What a drawable that
/// is no entity draws is seen as the contents of a block. Viewports of a sheet show the model within their
/// outline, without the layers that are frozen in them.
class PictureDraw final : public AcGiWorldDraw {
public:
    PictureDraw(AcDbDatabase& database, LookTable& looks, PictureSink& sink);

    AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
    /// The user broke off, or blocks repeat too often.
    Adesk::Boolean regenAbort() const override;
    AcGiSubEntityTraits& subEntityTraits() const override { return m_traits; }
    AcGiGeometry* rawGeometry() const override { return &m_geometry; }
    Adesk::Boolean isDragging() const override { return Adesk::kFalse; }
    double deviation(const AcGiDeviationType, const AcGePoint3d&) const override;
    Adesk::UInt32 numberOfIsolines() const override { return 0; }
    AcGiContext* context() override { return &m_context; }
    AcGiWorldGeometry& geometry() const override { return m_geometry; }

    const PlotReport& report() const { return m_report; }

private:
    class Geometry final : public hostkit::PathGeometry {
    public:
        explicit Geometry(PictureDraw& owner)
            : m_owner(owner) {}
        Adesk::Boolean draw(AcGiDrawable* drawable) const override;
        StrokeStyle stroke() const;

    private:
        AcGiSubEntityTraits& traits() const override { return m_owner.m_traits; }
        void strokePath(const hostkit::PicturePath& path, double width) const override;
        void fillPath(const hostkit::PicturePath& path) const override;
        void groundPath(const hostkit::PicturePath& path, std::uint32_t rgb) const override;
        void tonePath(const hostkit::PicturePath& path) const override;
        void placeLetters(const hostkit::PlacedText& text) const override;
        void placeDot(const AcGePoint3d& point) const override;
        void placeEndless(const AcGePoint3d& point, const AcGeVector3d& direction,
                          bool isBothWays) const override;
        void beginClip(const hostkit::PicturePath& path) const override;
        void endClip() const override;
        bool areTooClose(double spacing) const override;

        PictureDraw& m_owner;
    };

    class Context final : public AcGiContext {
    public:
        explicit Context(AcDbDatabase& database)
            : m_database(database) {}
        Adesk::Boolean isPsOut() const override { return Adesk::kFalse; }
        Adesk::Boolean isPlotGeneration() const override { return Adesk::kTrue; }
        AcDbDatabase* database() const override { return &m_database; }
        bool isBoundaryClipping() const override { return false; }

    private:
        AcDbDatabase& m_database;
    };

    void drawEntity(AcDbEntity& entity);
    void showBody(const AcDbEntity& entity);
    void drawParts(AcGiDrawable& drawable);
    void drawView(const SheetView& view);
    void count(const AcDbEntity& entity, bool isSeen);
    /// That of what is drawn next.
    const Look& look();
    PictureSink& mark() {
        ++m_marks;
        return m_sink;
    }

    PictureSink& m_sink;
    LookTable& m_looks;
    Context m_context;
    mutable PictureTraits m_traits;
    mutable Geometry m_geometry;
    PlotReport m_report;
    Look m_look;
    const Look* m_around = nullptr; ///< of the block reference around
    std::size_t m_marks = 0;        ///< on the picture
    std::size_t m_visited = 0;
    int m_depth = 0;
    bool m_isInView = false;
    double m_dashScale = 1.0; ///< of dashes in a viewport, which may be as long as on the sheet
};
