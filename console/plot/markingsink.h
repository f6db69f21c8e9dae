#pragma once

#include "picturesink.h"

/// Draws a mark beneath what is drawn into it: a broad band along lines, a tone in fills and behind texts.
class MarkingSink : public PictureSink {
public:
    /// The other sink outlives it.
    explicit MarkingSink(PictureSink& sink)
        : m_sink(sink) {}

    void stroke(const hostkit::PicturePath& path, const StrokeStyle& style) override;
    void fill(const hostkit::PicturePath& path, std::uint32_t rgb, double opacity) override;
    void text(const hostkit::PlacedText& text) override;
    void dot(const AcGePoint3d& point, std::uint32_t rgb) override;
    void endlessLine(const AcGePoint3d& point, const AcGeVector3d& direction, bool isBothWays,
                     const StrokeStyle& style) override;
    void beginClip(const hostkit::PicturePath& path) override { m_sink.beginClip(path); }
    void endClip() override { m_sink.endClip(); }
    double scale() const override { return m_sink.scale(); }

private:
    StrokeStyle band(const StrokeStyle& style) const;

    PictureSink& m_sink;
};
