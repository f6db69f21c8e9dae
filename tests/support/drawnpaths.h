// What drawables draw, kept as paths.
#pragma once

#include "acgi.h"
#include "dbextents.h"
#include "dbmaindefs.h"
#include "pathgeometry.h"

#include <string>
#include <vector>

namespace drawntest {

using namespace hostkit;

class PlainTraits final : public AcGiSubEntityTraits {
public:
    void setColor(const Adesk::UInt16 color) override { m_color = color; }
    void setTrueColor(const AcCmEntityColor&) override {}
    void setLayer(const AcDbObjectId) override {}
    void setLineType(const AcDbObjectId) override {}
    void setSelectionMarker(const Adesk::LongPtr) override {}
    void setFillType(const AcGiFillType type) override { m_fillType = type; }
    void setLineWeight(const AcDb::LineWeight) override {}
    void setLineTypeScale(double) override {}
    void setThickness(double) override {}
    Adesk::UInt16 color() const override { return m_color; }
    AcCmEntityColor trueColor() const override { return {}; }
    AcDbObjectId layerId() const override { return {}; }
    AcDbObjectId lineTypeId() const override { return {}; }
    AcGiFillType fillType() const override { return m_fillType; }
    AcDb::LineWeight lineWeight() const override { return AcDb::kLnWtByLayer; }
    double lineTypeScale() const override { return 1.0; }
    double thickness() const override { return 0.0; }

private:
    Adesk::UInt16 m_color = 256;
    AcGiFillType m_fillType = kAcGiFillNever;
};

/// Counts what is drawn and keeps the points of lines and areas.
class Recorder final : public AcGiWorldDraw, private PathGeometry {
public:
    AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
    Adesk::Boolean regenAbort() const override { return Adesk::kFalse; }
    AcGiSubEntityTraits& subEntityTraits() const override { return m_traits; }
    AcGiGeometry* rawGeometry() const override { return &geometry(); }
    Adesk::Boolean isDragging() const override { return Adesk::kFalse; }
    double deviation(const AcGiDeviationType, const AcGePoint3d&) const override { return 0.01; }
    Adesk::UInt32 numberOfIsolines() const override { return 0; }
    AcGiContext* context() override { return nullptr; }
    AcGiWorldGeometry& geometry() const override { return const_cast<Recorder&>(*this); }

    mutable std::vector<AcGePoint3d> points;
    mutable std::vector<PicturePath> paths;
    mutable std::vector<AcGePoint3d> dots;
    mutable double length = 0.0; ///< of what is straight
    mutable std::string marks;   ///< a letter for each stroke, area and line of text, with the colour set

    /// Of what was drawn, curves by fine chords.
    AcDbExtents box() const {
        AcDbExtents box;
        for (const PicturePath& path : paths)
            for (const auto& run : chordsOf(path, 1e-7))
                for (const AcGePoint3d& point : run) box.addPoint(point);
        return box;
    }

private:
    void mark(char kind) const {
        marks += kind;
        if (m_traits.color() != 256) marks += std::to_string(m_traits.color());
    }
    void take(char kind, const PicturePath& path) const {
        mark(kind);
        paths.push_back(path);
        points.insert(points.end(), path.points().begin(), path.points().end());
        auto point = path.points().begin();
        auto start = point;
        for (const PicturePath::Step step : path.steps()) {
            if (step == PicturePath::Step::move) start = point;
            if (step == PicturePath::Step::line) length += point[-1].distanceTo(*point);
            if (step == PicturePath::Step::close) length += point[-1].distanceTo(*start);
            if (step == PicturePath::Step::curve) point += 2;
            if (step != PicturePath::Step::close) ++point;
        }
    }
    AcGiSubEntityTraits& traits() const override { return m_traits; }
    Adesk::Boolean draw(AcGiDrawable* drawable) const override {
        return drawable->worldDraw(const_cast<Recorder*>(this));
    }
    void strokePath(const PicturePath& path, double) const override { take('s', path); }
    void fillPath(const PicturePath& path) const override { take('a', path); }
    void groundPath(const PicturePath& path, std::uint32_t) const override { take('g', path); }
    void tonePath(const PicturePath& path) const override { take('t', path); }
    void placeLetters(const PlacedText&) const override { mark('l'); }
    void placeDot(const AcGePoint3d& point) const override { dots.push_back(point); }
    void placeEndless(const AcGePoint3d& point, const AcGeVector3d& direction,
                      bool isBothWays) const override {
        mark(isBothWays ? 'x' : 'r');
        points.push_back(point);
        points.push_back(point + direction);
    }
    void beginClip(const PicturePath& path) const override { take('c', path); }
    void endClip() const override {}
    bool areTooClose(double) const override { return false; }

    mutable PlainTraits m_traits;
};

} // namespace drawntest
