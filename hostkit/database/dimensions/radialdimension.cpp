#include "otherdimensions.h"

#include <algorithm>

namespace hostkit {

namespace {

/// A radius or a diameter: a line through the centre with one end or two on the curve.
class RadialPieces {
public:
    RadialPieces(const DimensionShape& shape, const DimensionVariables& variables,
                 const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout)
        : m_shape(shape)
        , m_variables(variables)
        , m_arrows(arrows)
        , m_sizes(variables, wording)
        , m_layout(layout)
        , m_writer(m_layout, m_sizes, m_arrows)
        , m_isDiameter(shape.kind == DimensionKind::diametric)
        , m_tip(shape.point(15))
        , m_centre(m_isDiameter ? m_tip + (shape.point(10) - m_tip) * 0.5 : shape.point(10))
        , m_level(directionOf(shape.horizontal)) {}

    bool write();

private:
    bool standsInside() const;
    double legTo(const AcGePoint2d& text, const AcGeVector2d& way) const;
    void writeLevel();
    void writeAlong();
    void writeBetween();
    void text() { m_writer.text(m_place, m_rotation); }
    void endWithMark(bool hasMark);
    double cut() const { return m_arrows.traits[0].endsLine ? m_sizes.arrow : 0.0; }

    const DimensionShape& m_shape;
    const DimensionVariables& m_variables;
    const DimensionArrows& m_arrows;
    const DimensionSizes m_sizes;
    DimensionLayout& m_layout;
    PieceWriter m_writer;
    bool m_isDiameter;
    AcGePoint2d m_tip;
    AcGePoint2d m_centre;
    AcGeVector2d m_level;
    AcGeVector2d m_outward; ///< from the centre to the tip
    double m_radius = 0.0;
    AcGePoint2d m_place; ///< of the text
    double m_rotation = 0.0;
};

// A text that the user did not put elsewhere stands outside but where a diameter has room for it and both
// arrows.
bool RadialPieces::standsInside() const {
    if (m_shape.isTextPlaced) return (m_shape.point(11) - m_centre).length() < m_radius;
    if (!m_isDiameter) return false;
    const double needed = 2.0 * (m_sizes.halfWidth + m_sizes.gap + m_sizes.arrow);
    return m_variables.dimtix || needed <= 2.0 * m_radius;
}

// From the tip that way to the height of a text.
double RadialPieces::legTo(const AcGePoint2d& text, const AcGeVector2d& way) const {
    const AcGeVector2d toText = text - m_tip;
    const AcGeVector2d upward = m_level.perpVector();
    const double climb = way.dotProduct(upward);
    constexpr double level = 1e-6;
    if (std::abs(climb) > level) return toText.dotProduct(upward) / climb;
    return std::abs(toText.dotProduct(m_level)) - m_sizes.arrow - m_sizes.gap - m_sizes.halfWidth;
}

// Level text beside the knee of a leg that runs along the radius.
void RadialPieces::writeLevel() {
    const bool isInside = standsInside();
    const AcGeVector2d way = isInside ? -m_outward : m_outward;
    const AcGeVector2d upward = m_level.perpVector();
    const AcGeVector2d raise = upward * (m_sizes.isParted ? m_sizes.liftBy(m_variables) : 0.0);
    const double landing = m_sizes.arrow;
    // A line between two parts runs on to their far end.
    const double landingEnd = landing + (m_sizes.isParted ? m_sizes.gap + 2.0 * m_sizes.halfWidth : 0.0);
    double leg = cut() + m_sizes.arrow;
    double side = way.dotProduct(m_level) < 0.0 ? -1.0 : 1.0;
    if (m_shape.isTextPlaced) {
        leg = std::max(leg, legTo(m_shape.point(11) - raise, way));
        side = (m_shape.point(11) - (m_tip + way * leg)).dotProduct(m_level) < 0.0 ? -1.0 : 1.0;
    }
    const AcGePoint2d knee = m_tip + way * leg;
    m_place = m_shape.isTextPlaced
                  ? m_shape.point(11)
                  : knee + m_level * (side * (landing + m_sizes.gap + m_sizes.halfWidth)) + raise;
    m_rotation = m_shape.horizontal;
    const bool arrowsStay = !isInside && m_isDiameter && m_variables.dimatfit == 2;
    if (arrowsStay)
        m_writer.line(PieceLook::dimensionLine, m_shape.point(10) + m_outward * cut(),
                      m_tip - m_outward * cut());
    m_writer.line(PieceLook::dimensionLine, m_tip + way * (arrowsStay ? 0.0 : cut()), knee);
    m_writer.line(PieceLook::dimensionLine, knee, knee + m_level * (side * landingEnd));
    if (arrowsStay) m_writer.arrow(1, m_shape.point(10), -m_outward, upward);
    m_writer.arrow(0, m_tip, arrowsStay ? m_outward : -way, upward);
    text();
    const bool hasCentreLine = m_variables.dimtofl && !isInside && !arrowsStay;
    if (hasCentreLine) m_writer.line(PieceLook::dimensionLine, m_centre, m_tip);
    endWithMark(!isInside && !arrowsStay && !hasCentreLine);
}

// Text along the radius line, which runs on to its far end.
void RadialPieces::writeAlong() {
    const bool isInside = standsInside();
    const AcGeVector2d way = isInside ? -m_outward : m_outward;
    const AcGeVector2d reading = readingDirection(m_outward, m_shape.horizontal);
    const AcGeVector2d up = reading.perpVector();
    m_rotation = angleOf(reading);
    const bool isOnLine = m_sizes.isOnLine(m_variables);
    const double half = m_sizes.halfWidth + m_sizes.gap;
    double place = 2.0 * m_sizes.arrow + half;
    if (m_shape.isTextPlaced) place = (m_shape.point(11) - m_tip).dotProduct(way);
    // A user places it along the line; beside the line it stands by the style.
    m_place = m_tip + way * place + up * m_sizes.liftBy(m_variables);
    const double end = std::max(cut() + m_sizes.arrow, isOnLine ? place - half : place + half);
    m_writer.line(PieceLook::dimensionLine, m_tip + way * cut(), m_tip + way * end);
    text();
    m_writer.arrow(0, m_tip, -way, up);
    const bool hasCentreLine = m_variables.dimtofl && !isInside;
    if (hasCentreLine) m_writer.line(PieceLook::dimensionLine, m_centre, m_tip);
    endWithMark(!isInside && !hasCentreLine);
}

// Both arrows of a diameter point outwards, with the text on or above the line between them.
void RadialPieces::writeBetween() {
    const AcGeVector2d reading = readingDirection(m_outward, m_shape.horizontal);
    const AcGeVector2d up = reading.perpVector();
    m_rotation = m_variables.dimtih ? m_shape.horizontal : angleOf(reading);
    const bool isInclined = std::abs(m_level.crossProduct(m_outward)) > 1e-9;
    const bool isForced = m_variables.dimtih && isInclined;
    const bool isOnLine = m_sizes.isOnLine(m_variables) || isForced;
    m_place = m_shape.isTextPlaced ? m_shape.point(11)
                                   : m_centre + up * (isForced ? 0.0 : m_sizes.liftBy(m_variables));
    const AcGePoint2d from = m_shape.point(10) + m_outward * cut();
    const AcGePoint2d to = m_tip - m_outward * cut();
    LineStretch gap;
    if (m_sizes.hasText && isOnLine) gap = stretchInText(from, m_outward, m_sizes, m_place, m_rotation);
    const double length = (to - from).length();
    if (!gap.isEmpty() && gap.from > 0.0 && gap.to < length) {
        m_writer.line(PieceLook::dimensionLine, from, from + m_outward * gap.from);
        m_writer.line(PieceLook::dimensionLine, to, from + m_outward * gap.to);
    } else {
        m_writer.line(PieceLook::dimensionLine, from, to);
    }
    m_writer.arrow(1, m_shape.point(10), -m_outward, up);
    m_writer.arrow(0, m_tip, m_outward, up);
    text();
    endWithMark(false);
}

void RadialPieces::endWithMark(bool hasMark) {
    const double size = std::abs(m_sizes.centre);
    if (hasMark && size > 0.0) {
        const AcGeVector2d arms[] = {{1.0, 0.0}, {0.0, 1.0}};
        for (const AcGeVector2d& arm : arms)
            m_writer.line(PieceLook::centreMark, m_centre - arm * size, m_centre + arm * size);
        const double reach = m_radius + size;
        if (m_sizes.centre < 0.0 && reach > 2.0 * size)
            for (const AcGeVector2d& arm : {arms[0], -arms[0], arms[1], -arms[1]})
                m_writer.line(PieceLook::centreMark, m_centre + arm * (2.0 * size), m_centre + arm * reach);
    }
    m_writer.points(m_shape, {15, 10});
}

bool RadialPieces::write() {
    const AcGeVector2d way = m_tip - m_centre;
    m_radius = std::hypot(way.x, way.y);
    m_outward = m_radius > 0.0 ? way / m_radius : m_level;
    m_layout.linePoint = m_shape.point(10);
    const bool isInside = standsInside();
    const bool isLevel = isInside ? m_variables.dimtih : m_variables.dimtoh;
    if (isInside && m_isDiameter && !m_shape.isTextPlaced)
        writeBetween();
    else if (isLevel)
        writeLevel();
    else
        writeAlong();
    return true;
}

} // namespace

bool layOutRadial(const DimensionShape& shape, const DimensionVariables& variables,
                  const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout) {
    return RadialPieces(shape, variables, arrows, wording, layout).write();
}

} // namespace hostkit
