#include "markingsink.h"

#include <utility>

using hostkit::PicturePath;
using hostkit::PlacedText;
using hostkit::TextReach;
using hostkit::TextRun;

namespace {

constexpr std::uint32_t tone = 0xFFB347; // light orange: dark lines stay readable on it
constexpr double bandOnPaper = 1.6;      // millimetres

} // namespace

// The width is the drawing's, so that no line weight bounds it.
StrokeStyle MarkingSink::band(const StrokeStyle& style) const {
    StrokeStyle marked;
    marked.rgb = tone;
    const double broad = m_sink.scale() > 0.0 ? bandOnPaper / m_sink.scale() : 0.0;
    marked.width = style.width + broad;
    return marked;
}

void MarkingSink::stroke(const PicturePath& path, const StrokeStyle& style) {
    m_sink.stroke(path, band(style));
}

void MarkingSink::fill(const PicturePath& path, std::uint32_t, double) {
    m_sink.stroke(path, band(StrokeStyle()));
    m_sink.fill(path, tone, 1.0);
}

void MarkingSink::text(const PlacedText& text) {
    const TextReach reach = hostkit::reachOf(text);
    constexpr double below = -0.3, above = 1.2; // of the height of capitals
    PicturePath box;
    for (const auto& [across, up] : {std::pair(reach.start, below), std::pair(reach.end, below),
                                     std::pair(reach.end, above), std::pair(reach.start, above)})
        box.lineTo(text.origin + text.along * across + text.up * up);
    box.close();
    m_sink.fill(box, tone, 1.0);
}

void MarkingSink::dot(const AcGePoint3d& point, std::uint32_t) {
    PicturePath ring;
    const double radius = m_sink.scale() > 0.0 ? bandOnPaper / m_sink.scale() : 0.0;
    constexpr double turn = 6.283185307179586;
    ring.arc(point, AcGeVector3d(radius, 0, 0), AcGeVector3d(0, radius, 0), 0.0, turn);
    ring.close();
    m_sink.fill(ring, tone, 1.0);
}

void MarkingSink::endlessLine(const AcGePoint3d& point, const AcGeVector3d& direction, bool isBothWays,
                              const StrokeStyle& style) {
    m_sink.endlessLine(point, direction, isBothWays, band(style));
}
