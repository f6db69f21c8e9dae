// Lengths of a dimension as they act: scaled, with ticks in the place of arrows, and the text's box.
#pragma once

#include "dimensionlayout.h"

#include <array>
#include <cmath>
#include <initializer_list>

namespace hostkit {

struct DimensionSizes {
    DimensionSizes(const DimensionVariables& variables, const DimensionWording& wording);

    bool isTicked = false; ///< strokes in the place of both arrows
    double arrow = 0.0;
    double offset = 0.0;    ///< of an extension line from its origin
    double extension = 0.0; ///< of an extension line beyond the dimension line
    double fixedLength = 0.0;
    double beyond = 0.0; ///< of the dimension line beyond the extension line, with ticks
    double centre = 0.0; ///< signed
    double gap = 0.0;
    bool isFramed = false;
    double textHeight = 0.0; ///< of its letters
    double halfWidth = 0.0;  ///< of the text
    double halfHeight = 0.0;
    bool hasText = false;
    bool isParted = false;   ///< the line runs between two parts of the text
    double partOffset = 0.0; ///< from there to the text's middle, upwards

    /// Between the dimension line and a text beside it.
    double lineGap() const { return isFramed ? 2.0 * gap : gap; }
    /// From the dimension line to the middle of a text that stands beside it.
    double lift() const { return lineGap() + halfHeight; }
    /// The text breaks the line, if it is turned as the line is.
    bool isOnLine(const DimensionVariables& variables) const { return !isParted && variables.dimtad == 0; }
    /// From the line to the middle of a text that is turned as the line is, upwards; dimtad says on which
    /// side it stands.
    double liftBy(const DimensionVariables& variables) const;
};

/// Part of a straight line, by the distance from its start.
struct LineStretch {
    double from = 0.0;
    double to = 0.0;
    bool isEmpty() const { return !(from < to); }
};

/// The part of a line within the text's box, widened by the gap, that has its centre there and is turned by
/// the angle. `direction` has length 1. Empty where they do not meet.
LineStretch stretchInText(const AcGePoint2d& start, const AcGeVector2d& direction,
                          const DimensionSizes& sizes, const AcGePoint2d& centre, double angle);
/// Corners of that box, anticlockwise from the lower left as the text is read.
std::array<AcGePoint2d, 4> cornersAround(const DimensionSizes& sizes, const AcGePoint2d& centre,
                                         double angle);

inline AcGeVector2d directionOf(double angle) { return {std::cos(angle), std::sin(angle)}; }
inline double angleOf(const AcGeVector2d& direction) { return std::atan2(direction.y, direction.x); }
/// Of length 1, also of the shortest vectors; zero for a zero one.
AcGeVector2d unitOf(const AcGeVector2d& vector);
/// The direction or its reverse: the one in which text is read, to the right or straight up as seen along
/// `horizontal`.
AcGeVector2d readingDirection(const AcGeVector2d& direction, double horizontal);
bool isFinitePoint(const AcGePoint2d& point);

/// Writes pieces with the looks of one dimension.
class PieceWriter {
public:
    PieceWriter(DimensionLayout& layout, const DimensionSizes& sizes, const DimensionArrows& arrows)
        : m_layout(layout)
        , m_sizes(sizes)
        , m_arrows(arrows) {}

    void line(PieceLook look, const AcGePoint2d& from, const AcGePoint2d& to);
    /// Anticlockwise.
    void arc(PieceLook look, const AcGePoint2d& centre, double radius, double from, double to);
    /// Which of the two arrows stands with its tip there; it points in that direction. The base of a filled
    /// one begins on the side of `up`.
    void arrow(int which, const AcGePoint2d& tip, const AcGeVector2d& direction, const AcGeVector2d& up);
    /// The paragraph with its frame, where there is one; the layout's place and rotation of the text are set.
    void text(const AcGePoint2d& centre, double rotation);
    void point(const AcGePoint2d& place, int code);
    void points(const DimensionShape& shape, std::initializer_list<int> codes) {
        for (const int code : codes) point(shape.point(code), code);
    }

private:
    void frame();
    DimensionPiece& add(DimensionPiece::Form form, PieceLook look);

    DimensionLayout& m_layout;
    const DimensionSizes& m_sizes;
    const DimensionArrows& m_arrows;
};

} // namespace hostkit
