#include "dimensionfit.h"
#include "otherdimensions.h"

#include <algorithm>
#include <numbers>

namespace hostkit {

namespace {

constexpr double rightAngle = 0.5 * std::numbers::pi;

/// An arc about the centre between two extension lines. Places on it are angles from the first end towards
/// the second.
class ArcPieces {
public:
    ArcPieces(const DimensionShape& shape, const DimensionVariables& variables, const DimensionArrows& arrows,
              const DimensionWording& wording, DimensionLayout& layout)
        : m_shape(shape)
        , m_variables(variables)
        , m_arrows(arrows)
        , m_sizes(variables, wording)
        , m_layout(layout)
        , m_writer(m_layout, m_sizes, m_arrows) {}

    bool write();

private:
    bool findEnds();
    bool meetParallel(const AcGeVector2d& bisector);
    void arrange();
    void turnText(bool isInside);
    void placeOutside();
    void extensionLine(int end);
    void arcs();
    void arcBetween(double from, double to);
    void tail(int end);
    void arrow(int end);
    void arcSymbol();
    bool gapInArc(double& from, double& to) const;
    void cutEdge(const AcGePoint2d& from, const AcGePoint2d& to, double middle, double& before,
                 double& behind) const;

    AcGeVector2d directionAt(double place) const { return directionOf(m_first + m_sense * place); }
    AcGePoint2d at(double place) const { return m_sector.centre + directionAt(place) * m_sector.radius; }
    double endPlace(int end) const { return end == 0 ? 0.0 : m_span; }
    /// From the end into the arc or out of it.
    double way(int end, bool isInward) const { return (end == 0) == isInward ? 1.0 : -1.0; }
    double placeOf(const AcGePoint2d& point) const;
    double cut(int end) const { return m_arrows.traits[end].endsLine ? m_arrowTurn : 0.0; }
    bool isLeftOut(int end) const { return end == 0 ? m_variables.dimsd1 : m_variables.dimsd2; }
    bool hasArrow(int end) const { return !isLeftOut(end) && (m_isInside[end] || !m_variables.dimsoxd); }

    const DimensionShape& m_shape;
    const DimensionVariables& m_variables;
    const DimensionArrows& m_arrows;
    const DimensionSizes m_sizes;
    DimensionLayout& m_layout;
    PieceWriter m_writer;
    DimensionSector m_sector;
    AcGePoint2d m_extensions[2][2]; ///< where each begins, and where it meets the arc
    double m_first = 0.0;           ///< direction of the first end
    double m_sense = 1.0;           ///< anticlockwise, or the reverse
    double m_span = 0.0;
    double m_arrowTurn = 0.0; ///< whose chord is an arrow
    bool m_isInside[2] = {true, true};
    bool m_isTextInside = true;
    bool m_isOnArc = false;
    double m_textPlace = 0.0;
    double m_rotation = 0.0;
    AcGePoint2d m_centre; ///< of the text
};

double ArcPieces::placeOf(const AcGePoint2d& point) const {
    const AcGeVector2d way = point - m_sector.centre;
    const double turn = m_sense * (angleOf(way) - m_first);
    // Nearest to the middle of the arc.
    return 0.5 * m_span + std::remainder(turn - 0.5 * m_span, 2.0 * std::numbers::pi);
}

// Of a short arc's length both extension lines run as its bisector does.
bool ArcPieces::meetParallel(const AcGeVector2d& bisector) {
    for (int end = 0; end < 2; ++end) {
        const AcGePoint2d& origin = m_shape.point(13 + end);
        const AcGeVector2d from = origin - m_sector.centre;
        const double along = from.dotProduct(bisector);
        const double rest = along * along - from.lengthSqrd() + m_sector.radius * m_sector.radius;
        if (rest < 0.0) return false;
        m_extensions[end][0] = origin;
        m_extensions[end][1] = origin + bisector * (std::sqrt(rest) - along);
    }
    const AcGeVector2d ends[2] = {m_extensions[0][1] - m_sector.centre, m_extensions[1][1] - m_sector.centre};
    m_first = angleOf(ends[0]);
    m_span = std::abs(std::atan2(ends[0].crossProduct(ends[1]), ends[0].dotProduct(ends[1])));
    return m_span > 0.0;
}

bool ArcPieces::findEnds() {
    if (!findSector(m_shape, m_sector)) return false;
    m_sense = m_sector.isAnticlockwise ? 1.0 : -1.0;
    m_first = angleOf(m_sector.sides[0]);
    m_span = m_sector.span;
    for (int end = 0; end < 2; ++end) {
        m_extensions[end][0] = m_sector.centre + m_sector.sides[end] * m_sector.starts[end];
        m_extensions[end][1] = m_sector.centre + m_sector.sides[end] * m_sector.radius;
    }
    const bool isShortArc = m_shape.kind == DimensionKind::arcLength && m_span < rightAngle;
    if (isShortArc && !meetParallel(directionAt(0.5 * m_span))) return false;
    const double ratio = m_sizes.arrow / (2.0 * m_sector.radius);
    m_arrowTurn = 2.0 * std::asin(std::min(ratio, 1.0));
    return true;
}

void ArcPieces::turnText(bool isInside) {
    const AcGeVector2d tangent = directionAt(m_textPlace).perpVector();
    const AcGeVector2d level = directionOf(m_shape.horizontal);
    const bool isLevel = isInside ? m_variables.dimtih : m_variables.dimtoh;
    m_rotation = textAngle(m_shape, m_variables, tangent, isLevel);
    constexpr double levelTolerance = 1e-9;
    const bool isForced = isLevel && std::abs(level.crossProduct(tangent)) > levelTolerance;
    const bool isTurned = m_sizes.isParted && m_shape.textRotation != 0.0;
    m_isOnArc = m_sizes.isOnLine(m_variables) || isForced || isTurned;
}

// By the same rule as along a line, with lengths along the arc.
void ArcPieces::arrange() {
    m_textPlace = m_shape.isTextPlaced ? placeOf(m_shape.point(11)) : 0.5 * m_span;
    m_isTextInside = m_textPlace > 0.0 && m_textPlace < m_span;
    turnText(m_isTextInside);
    const double turn = m_rotation - angleOf(directionAt(m_textPlace).perpVector());
    const double text = 2.0 * halfExtent(m_sizes, turn, m_isOnArc ? m_sizes.gap : 0.0);
    const DimensionFit fit(m_arrows, m_sizes, text, m_span * m_sector.radius);
    DimensionSides sides{m_isTextInside, m_isTextInside ? fit.hasBoth : stayInside(m_variables, fit)};
    if (!m_shape.isTextPlaced) sides = chosenSides(m_variables, m_sizes, fit);
    m_isTextInside = sides.isTextInside;
    for (int end = 0; end < 2; ++end) m_isInside[end] = sides.areArrowsInside != m_shape.isFlipped[end];
    if (!m_isTextInside && !m_shape.isTextPlaced) placeOutside();
    const AcGeVector2d reading = readingDirection(directionAt(m_textPlace).perpVector(), m_shape.horizontal);
    const double lift = m_isOnArc ? 0.0 : m_sizes.liftBy(m_variables);
    m_centre = m_shape.isTextPlaced ? m_shape.point(11) : at(m_textPlace) + reading.perpVector() * lift;
}

// Beyond the second end, as far along the arc as beside a line.
void ArcPieces::placeOutside() {
    const double aside = (m_isOnArc ? m_sizes.gap : 0.0) + m_sizes.halfWidth;
    m_textPlace = m_span + 2.0 * m_arrowTurn + aside / m_sector.radius;
    turnText(false);
}

void ArcPieces::extensionLine(int end) {
    if (end == 0 ? m_variables.dimse1 : m_variables.dimse2) return;
    const AcGeVector2d way = m_extensions[end][1] - m_extensions[end][0];
    constexpr double sameFoot = 1e-6;
    if (std::hypot(way.x, way.y) < sameFoot) return;
    const AcGeVector2d direction = unitOf(way);
    m_writer.line(end == 0 ? PieceLook::firstExtension : PieceLook::secondExtension,
                  m_extensions[end][0] + direction * m_sizes.offset,
                  m_extensions[end][1] + direction * m_sizes.extension);
}

void ArcPieces::arcBetween(double from, double to) {
    if (!(from < to)) return;
    const double ends[2] = {m_first + m_sense * from, m_first + m_sense * to};
    const bool isReversed = m_sense < 0.0;
    m_writer.arc(PieceLook::dimensionLine, m_sector.centre, m_sector.radius, ends[isReversed ? 1 : 0],
                 ends[isReversed ? 0 : 1]);
}

// Where an edge of the text's widened box cuts the circle, before and behind a place on the arc.
void ArcPieces::cutEdge(const AcGePoint2d& from, const AcGePoint2d& to, double middle, double& before,
                        double& behind) const {
    const AcGeVector2d edge = to - from;
    const AcGeVector2d start = from - m_sector.centre;
    const double a = edge.lengthSqrd();
    const double b = edge.dotProduct(start);
    const double c = start.lengthSqrd() - m_sector.radius * m_sector.radius;
    const double root = b * b - a * c;
    if (!(a > 0.0) || root < 0.0) return;
    for (const double sign : {-1.0, 1.0}) {
        const double share = (-b + sign * std::sqrt(root)) / a;
        if (share < 0.0 || share > 1.0) continue;
        const double place = placeOf(from + edge * share);
        if (place <= middle)
            before = std::max(before, place);
        else
            behind = std::min(behind, place);
    }
}

bool ArcPieces::gapInArc(double& from, double& to) const {
    if (!m_sizes.hasText || !m_isTextInside || !m_isOnArc) return false;
    const auto corners = cornersAround(m_sizes, m_centre, m_rotation);
    constexpr double never = 1e9;
    double before = -never;
    double behind = never;
    const double middle = placeOf(m_centre);
    for (std::size_t i = 0; i < 4; ++i) cutEdge(corners[i], corners[(i + 1) % 4], middle, before, behind);
    if (before == -never || behind == never) return false;
    from = before;
    to = behind;
    return true;
}

void ArcPieces::tail(int end) {
    if (m_isInside[end] || !hasArrow(end)) return;
    const double out = way(end, false);
    double far = cut(end) + m_arrowTurn;
    const bool isTextHere = m_sizes.hasText && !m_isTextInside && (m_textPlace < 0.0) == (end == 0);
    if (isTextHere) {
        const double aside = m_sizes.halfWidth / m_sector.radius;
        const double place = std::abs(m_textPlace - endPlace(end));
        far = std::max(far, m_isOnArc ? place - aside - m_sizes.gap / m_sector.radius : place + aside);
    }
    const double ends[2] = {endPlace(end) + out * cut(end), endPlace(end) + out * far};
    arcBetween(std::min(ends[0], ends[1]), std::max(ends[0], ends[1]));
}

void ArcPieces::arcs() {
    tail(0);
    tail(1);
    if (!m_isInside[0] && !m_isInside[1] && !m_variables.dimtofl) return;
    const double from = m_isInside[0] && hasArrow(0) ? cut(0) : 0.0;
    const double to = m_span - (m_isInside[1] && hasArrow(1) ? cut(1) : 0.0);
    double gapFrom = 0.0;
    double gapTo = 0.0;
    if (!gapInArc(gapFrom, gapTo)) {
        gapFrom = gapTo = std::clamp(m_textPlace, from, std::max(from, to));
        if (!isLeftOut(0) && !isLeftOut(1)) return arcBetween(from, to);
    }
    if (!isLeftOut(0)) arcBetween(from, gapFrom);
    if (!isLeftOut(1)) arcBetween(gapTo, to);
}

// Along the chord of the arc that it takes the place of.
void ArcPieces::arrow(int end) {
    if (!hasArrow(end)) return;
    const AcGePoint2d tip = at(endPlace(end));
    const AcGePoint2d base = at(endPlace(end) + way(end, m_isInside[end]) * m_arrowTurn);
    m_writer.arrow(end, tip, unitOf(tip - base), directionAt(endPlace(end)));
}

// A half circle left of the text.
void ArcPieces::arcSymbol() {
    if (m_shape.kind != DimensionKind::arcLength || m_variables.dimarcsym != 0 || !m_sizes.hasText) return;
    const double height = m_sizes.isParted ? m_sizes.textHeight : 2.0 * m_sizes.halfHeight;
    const double radius = 0.8 * height;
    const AcGeVector2d along = directionOf(m_rotation);
    const AcGePoint2d centre =
        m_centre - along * (m_sizes.halfWidth + 0.2 * height + radius) - along.perpVector() * (0.4 * height);
    m_writer.arc(PieceLook::arcSymbol, centre, radius, m_rotation, m_rotation + std::numbers::pi);
}

bool ArcPieces::write() {
    if (!findEnds()) return false;
    arrange();
    extensionLine(0);
    extensionLine(1);
    arcs();
    arrow(0);
    arrow(1);
    m_writer.text(m_centre, m_rotation);
    arcSymbol();
    if (m_shape.kind == DimensionKind::twoLineAngular)
        m_writer.points(m_shape, {16, 15, 13, 14, 10});
    else
        m_writer.points(m_shape, {15, 13, 14, 10});
    m_layout.linePoint = m_shape.point(10);
    return true;
}

} // namespace

bool layOutArc(const DimensionShape& shape, const DimensionVariables& variables,
               const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout) {
    return ArcPieces(shape, variables, arrows, wording, layout).write();
}

} // namespace hostkit
