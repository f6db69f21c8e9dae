#pragma once

#include "picturepath.h"
#include "placedtext.h"

#include <cstdint>
#include <vector>

namespace AModeler {
class Body;
}

/// How a line is drawn. Lengths are in drawing units.
struct StrokeStyle {
    std::uint32_t rgb = 0;        ///< 0xRRGGBB
    double lineweight = 0.0;      ///< millimetres on paper; 0 is the thinnest
    double width = 0.0;           ///< of a wide polyline, in drawing units; 0 is none
    std::vector<double> dashes{}; ///< drawn and empty lengths in turn; empty is an unbroken line
    double dashStart = 0.0;       ///< how far into the pattern the line begins
};

/// What a drawing is drawn into. Coordinates are the drawing's, seen from above: z counts for nothing.
class PictureSink {
public:
    virtual ~PictureSink() = default;

    virtual void stroke(const hostkit::PicturePath& path, const StrokeStyle& style) = 0;
    /// Inside by the even-odd rule, so that islands stay open.
    virtual void fill(const hostkit::PicturePath& path, std::uint32_t rgb, double opacity) = 0;
    virtual void text(const hostkit::PlacedText& text) = 0;
    /// A point without size.
    virtual void dot(const AcGePoint3d& point, std::uint32_t rgb) = 0;
    /// A line without an end on one side or both; it is drawn as far as the page goes and widens nothing.
    virtual void endlessLine(const AcGePoint3d& point, const AcGeVector3d& direction, bool isBothWays,
                             const StrokeStyle& style) = 0;
    /// What is drawn until the end of the clip only shows inside the path.
    virtual void beginClip(const hostkit::PicturePath& path) = 0;
    virtual void endClip() = 0;
    /// Before a solid draws its edges, for a picture in which it hides what stands behind it. From above
    /// nothing does.
    virtual void body(const AModeler::Body&, const AcGeMatrix3d& /*toWorld*/, const StrokeStyle&) {}
    /// Fills, texts, points and endless lines are lost on it; it asks for bodies.
    virtual bool showsLinesAlone() const { return false; }
    /// Millimetres on paper for one drawing unit; 0 while only the extents are wanted.
    virtual double scale() const = 0;
};
