#include "lineardimension.h"

#include <algorithm>

namespace hostkit {

namespace {

// Nearer than this a point is its own foot.
constexpr double sameFoot = 1e-6;

/// The pieces of one linear dimension.
class LinearPieces {
public:
    LinearPieces(const LinearFrame& frame, const DimensionVariables& variables, const DimensionArrows& arrows,
                 const DimensionSizes& sizes, const LinearArrangement& arrangement, DimensionLayout& layout)
        : m_frame(frame)
        , m_variables(variables)
        , m_arrows(arrows)
        , m_sizes(sizes)
        , m_arrangement(arrangement)
        , m_writer(layout, sizes, arrows) {}

    void write(const DimensionShape& shape);

private:
    void extensionLine(int end);
    void dimensionLines();
    void tail(int end);
    double tailLength(int end) const;
    double nearEdge(int end) const;
    void hook(int end);
    void lineBetween();
    void wholeLine(double from, double to);
    void leader();
    void arrow(int end);
    void text() { m_writer.text(m_arrangement.centre, m_arrangement.rotation); }

    bool isInside(int end) const { return m_arrangement.areArrowsInside[end]; }
    bool isLeftOut(int end) const { return end == 0 ? m_variables.dimsd1 : m_variables.dimsd2; }
    bool hasArrow(int end) const { return !isLeftOut(end) && (isInside(end) || !m_variables.dimsoxd); }
    double cut(int end) const { return m_arrows.traits[end].endsLine ? m_sizes.arrow : 0.0; }
    AcGeVector2d outward(int end) const { return end == 0 ? -m_frame.along : m_frame.along; }
    /// The end beyond which the text stands.
    int textEnd() const { return m_arrangement.textPlace < 0.0 ? 0 : 1; }
    bool isTextBeyond(int end) const {
        return m_sizes.hasText && !m_arrangement.isTextInside && !m_arrangement.isRaised &&
               m_variables.dimtmove == 0 && textEnd() == end;
    }
    double lineEnd(int end) const;

    const LinearFrame& m_frame;
    const DimensionVariables& m_variables;
    const DimensionArrows& m_arrows;
    const DimensionSizes& m_sizes;
    const LinearArrangement& m_arrangement;
    PieceWriter m_writer;
};

void LinearPieces::extensionLine(int end) {
    if (end == 0 ? m_variables.dimse1 : m_variables.dimse2) return;
    const AcGeVector2d way = m_frame.feet[end] - m_frame.origins[end];
    const double distance = std::hypot(way.x, way.y);
    if (distance < sameFoot) return;
    const AcGeVector2d direction = way / distance;
    double start = m_sizes.offset;
    if (m_variables.dimfxlenOn) start = std::max(start, distance - m_sizes.fixedLength);
    m_writer.line(end == 0 ? PieceLook::firstExtension : PieceLook::secondExtension,
                  m_frame.origins[end] + direction * start,
                  m_frame.feet[end] + direction * m_sizes.extension);
}

// Where the line between the extension lines ends, from the first foot.
double LinearPieces::lineEnd(int end) const {
    double inset = 0.0;
    if (isInside(end) && hasArrow(end)) inset = m_arrows.traits[end].isTick ? -m_sizes.beyond : cut(end);
    return end == 0 ? inset : m_frame.length - inset;
}

void LinearPieces::wholeLine(double from, double to) {
    if (isLeftOut(0) && isLeftOut(1)) return;
    const double meeting = std::clamp(m_arrangement.textPlace, 0.0, m_frame.length);
    if (isLeftOut(0)) from = meeting;
    if (isLeftOut(1)) to = meeting;
    if (from != to) m_writer.line(PieceLook::dimensionLine, m_frame.at(from), m_frame.at(to));
}

void LinearPieces::lineBetween() {
    const double from = lineEnd(0);
    const double to = lineEnd(1);
    LineStretch gap;
    if (m_sizes.hasText && m_arrangement.isTextInside && m_arrangement.isTextOnLine)
        gap = stretchInText(m_frame.feet[0], m_frame.along, m_sizes, m_arrangement.centre,
                            m_arrangement.rotation);
    const bool isBroken = !gap.isEmpty() && (gap.from > from || gap.to < to);
    if (!isBroken) return wholeLine(from, to);
    if (gap.from > from && !isLeftOut(0))
        m_writer.line(PieceLook::dimensionLine, m_frame.at(from), m_frame.at(gap.from));
    if (gap.to < to && !isLeftOut(1))
        m_writer.line(PieceLook::dimensionLine, m_frame.at(to), m_frame.at(gap.to));
}

// From the extension line to where the text's widened box begins, outwards.
double LinearPieces::nearEdge(int end) const {
    return stretchInText(m_frame.feet[end], outward(end), m_sizes, m_arrangement.centre,
                         m_arrangement.rotation)
        .from;
}

double LinearPieces::tailLength(int end) const {
    const double shortest = cut(end) + m_sizes.arrow;
    if (!isTextBeyond(end)) return shortest;
    const AcGeVector2d way = m_arrangement.centre - m_frame.feet[end];
    const double place = way.dotProduct(outward(end));
    if (m_arrangement.hasHook) return std::max(shortest, place);
    if (m_arrangement.isTextOnLine) return std::max(shortest, nearEdge(end));
    return std::max(shortest, place + m_sizes.halfWidth);
}

void LinearPieces::tail(int end) {
    if (isInside(end) || !hasArrow(end)) return;
    m_writer.line(PieceLook::dimensionLine, m_frame.feet[end] + outward(end) * cut(end),
                  m_frame.feet[end] + outward(end) * tailLength(end));
}

// Level, from the tail towards the text.
void LinearPieces::hook(int end) {
    if (!m_arrangement.hasHook || !isTextBeyond(end) || isInside(end) || !hasArrow(end)) return;
    const AcGePoint2d start = m_frame.feet[end] + outward(end) * tailLength(end);
    const AcGeVector2d level = directionOf(m_arrangement.rotation);
    const double side = (m_arrangement.centre - start).dotProduct(level) < 0.0 ? -1.0 : 1.0;
    m_writer.line(PieceLook::dimensionLine, start, start + level * (side * m_sizes.arrow));
}

void LinearPieces::leader() {
    if (!m_arrangement.isRaised || m_variables.dimtmove != 1 || !m_sizes.hasText) return;
    const AcGePoint2d middle = m_frame.at(m_arrangement.textPlace);
    const double rise = (m_arrangement.centre - middle).dotProduct(m_frame.up);
    const AcGePoint2d knee = middle + m_frame.up * rise;
    m_writer.line(PieceLook::dimensionLine, middle, knee);
    m_writer.line(PieceLook::dimensionLine, knee, knee + directionOf(m_arrangement.rotation) * m_sizes.arrow);
}

void LinearPieces::dimensionLines() {
    const int last = m_sizes.hasText && !m_arrangement.isTextInside ? textEnd() : 1;
    tail(1 - last);
    tail(last);
    hook(last);
    const bool needsLine = isInside(0) || isInside(1) || m_variables.dimtofl ||
                           (m_arrangement.isRaised && m_variables.dimtmove == 1);
    if (needsLine) lineBetween();
}

void LinearPieces::arrow(int end) {
    if (!hasArrow(end)) return;
    m_writer.arrow(end, m_frame.feet[end], isInside(end) ? outward(end) : -outward(end), m_frame.up);
}

void LinearPieces::write(const DimensionShape& shape) {
    extensionLine(0);
    extensionLine(1);
    dimensionLines();
    const bool isMoved = m_variables.dimtmove != 0 && (shape.isTextPlaced || m_arrangement.isRaised);
    const int first = isTextBeyond(0) ? 1 : 0;
    if (isMoved) {
        leader();
        text();
    }
    arrow(first);
    arrow(1 - first);
    if (!isMoved) text();
    m_writer.points(shape, {13, 14});
    m_writer.point(m_frame.feet[1], 10);
}

} // namespace

LinearFrame::LinearFrame(const DimensionShape& shape) {
    const AcGePoint2d& line = shape.point(10);
    origins[0] = shape.point(13);
    origins[1] = shape.point(14);
    lineAngle = shape.rotation;
    AcGeVector2d given = directionOf(shape.rotation);
    if (shape.kind == DimensionKind::aligned) {
        const AcGeVector2d between = unitOf(origins[1] - origins[0]);
        if (between.lengthSqrd() > 0.0) given = between;
        lineAngle = angleOf(given);
    }
    const bool isSlanted = shape.oblique != 0.0 && std::abs(std::sin(shape.oblique)) > 1e-6;
    const AcGeVector2d across = isSlanted ? directionOf(lineAngle + shape.oblique) : given.perpVector();
    const double slope = given.crossProduct(across);
    for (int end = 0; end < 2; ++end)
        feet[end] = origins[end] + across * (given.crossProduct(line - origins[end]) / slope);
    const AcGeVector2d between = feet[1] - feet[0];
    const double signedLength = between.dotProduct(given);
    length = std::abs(signedLength);
    along = signedLength < 0.0 ? -given : given;
    up = readingDirection(given, shape.horizontal).perpVector();
}

bool layOutLinear(const DimensionShape& shape, const DimensionVariables& variables,
                  const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout) {
    const LinearFrame frame(shape);
    const DimensionSizes sizes(variables, wording);
    if (!std::isfinite(frame.length) || !isFinitePoint(frame.feet[0]) || !isFinitePoint(frame.feet[1]))
        return false;
    const LinearArrangement arrangement = arrangeLinear(shape, frame, variables, arrows, sizes);
    layout.linePoint = frame.feet[1];
    LinearPieces(frame, variables, arrows, sizes, arrangement, layout).write(shape);
    return true;
}

} // namespace hostkit
