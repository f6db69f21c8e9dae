#pragma once

#include "picturepath.h"

#include <cstdint>
#include <string>
#include <vector>

/// How a line is drawn. Lengths are in drawing units.
struct StrokeStyle {
    std::uint32_t rgb = 0;        ///< 0xRRGGBB
    double lineweight = 0.0;      ///< millimetres on paper; 0 is the thinnest
    double width = 0.0;           ///< of a wide polyline, in drawing units; 0 is none
    std::vector<double> dashes{}; ///< drawn and empty lengths in turn; empty is an unbroken line
    double dashStart = 0.0;       ///< how far into the pattern the line begins
};

/// A piece of text in one form.
struct TextRun {
    std::wstring text{};
    double heightFactor = 1.0; ///< of the text's height
    double rise = 0.0;         ///< above the line, in text heights
    std::uint32_t rgb = 0;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isOverlined = false;
    bool isStruckOut = false;
    std::wstring family{}; ///< of the font; empty is the default
};

/// One line of text where it stands in the drawing.
struct PlacedText {
    enum class Anchor { start, middle, end };
    std::vector<TextRun> runs;
    AcGePoint3d origin; ///< on the base line
    AcGeVector3d along; ///< direction of writing; its length is the height of capitals times the width factor
    AcGeVector3d up;    ///< its length is the height of capitals
    Anchor anchor = Anchor::start;
    double fitLength = 0.0; ///< drawing units that the line must fill; 0 leaves it as it comes
};

/// What a drawing is drawn into. Coordinates are the drawing's, seen from above: z counts for nothing.
class PictureSink {
public:
    virtual ~PictureSink() = default;

    virtual void stroke(const PicturePath& path, const StrokeStyle& style) = 0;
    /// Inside by the even-odd rule, so that islands stay open.
    virtual void fill(const PicturePath& path, std::uint32_t rgb, double opacity) = 0;
    virtual void text(const PlacedText& text) = 0;
    /// A point without size.
    virtual void dot(const AcGePoint3d& point, std::uint32_t rgb) = 0;
    /// A line without an end on one side or both; it is drawn as far as the page goes and widens nothing.
    virtual void endlessLine(const AcGePoint3d& point, const AcGeVector3d& direction, bool isBothWays,
                             const StrokeStyle& style) = 0;
    /// What is drawn until the end of the clip only shows inside the path.
    virtual void beginClip(const PicturePath& path) = 0;
    virtual void endClip() = 0;
    /// Millimetres on paper for one drawing unit; 0 while only the extents are wanted.
    virtual double scale() const = 0;
};

/// The width that letters take, in heights of capitals, by the widths of the common sans-serif face. Good to
/// a tenth or so: whoever shows the picture chooses the face.
double estimatedWidth(const std::wstring& text);
/// Where the line of text begins and ends, in heights of capitals along it from its origin on.
struct TextReach {
    double start;
    double end;
};
TextReach reachOf(const PlacedText& text);
