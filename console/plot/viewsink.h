#pragma once

#include "gemat3d.h"
#include "hiddenlines.h"
#include "picturesink.h"

/// Shows what is drawn into it as it is seen from a direction, in parallel: lines alone, without what stands
/// behind the solids among them. Where neighbouring facets of a round face look to the viewer and away from
/// him, a line is added.
class ViewSink final : public PictureSink {
public:
    /// `towardsViewer` of any length but 0. The other sink outlives it.
    ViewSink(const AcGeVector3d& towardsViewer, PictureSink& sink);

    /// Draws what was gathered into the other sink. A sink without a scale, which is after the extents, gets
    /// hidden lines too: they do not widen these.
    void finish();

    void stroke(const hostkit::PicturePath& path, const StrokeStyle& style) override;
    void fill(const hostkit::PicturePath&, std::uint32_t, double) override {}
    void text(const hostkit::PlacedText&) override {}
    void dot(const AcGePoint3d&, std::uint32_t) override {}
    void endlessLine(const AcGePoint3d&, const AcGeVector3d&, bool, const StrokeStyle&) override {}
    void beginClip(const hostkit::PicturePath&) override {}
    void endClip() override {}
    double scale() const override { return m_sink.scale(); }
    bool showsLinesAlone() const override { return true; }
    void body(const AModeler::Body& body, const AcGeMatrix3d& toWorld, const StrokeStyle& style) override;

private:
    bool hides() const { return m_sink.scale() > 0.0; }

    struct Stroke {
        std::vector<std::vector<AcGePoint3d>> runs; ///< in the view
        StrokeStyle style;
    };

    PictureSink& m_sink;
    AcGeMatrix3d m_toView;
    std::vector<Stroke> m_strokes;
    HiddenLines m_hidden;
};
