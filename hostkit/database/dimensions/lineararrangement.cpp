#include "dimensionfit.h"
#include "lineardimension.h"

namespace hostkit {

namespace {

constexpr double levelTolerance = 1e-9;
// A text that is farther from the line, in text heights, leaves the line whole.
constexpr double breakingOffset = 0.7;
// Of a text that dimtmove lets stand beside its place: how far its leader rises, in text heights.
constexpr double leaderRise = 2.27;

enum Place : int { centredPlace = 0, outerPlace = 2, japanesePlace = 3 };

/// The steps from the variables to an arrangement.
class Arranging {
public:
    Arranging(const DimensionShape& shape, const LinearFrame& frame, const DimensionVariables& variables,
              const DimensionArrows& arrows, const DimensionSizes& sizes)
        : m_shape(shape)
        , m_frame(frame)
        , m_variables(variables)
        , m_arrows(arrows)
        , m_sizes(sizes)
        , m_level(directionOf(shape.horizontal))
        , m_isInclined(std::abs(m_level.crossProduct(frame.along)) > levelTolerance) {}

    LinearArrangement run();

private:
    void choosePlaced();
    void chooseByRoom();
    void turnText(bool isInside);
    double halfExtentOnLine(double margin) const;
    DimensionFit fitAutomatic() const;
    bool fitsAround(double place) const;
    double room(int end) const { return m_arrows.traits[end].room * m_sizes.arrow; }
    void placeInside();
    void placeOutside();
    void placeOverExtensionLine(int end);
    void placeMoved();
    double acrossLine() const;

    const DimensionShape& m_shape;
    const LinearFrame& m_frame;
    const DimensionVariables& m_variables;
    const DimensionArrows& m_arrows;
    const DimensionSizes& m_sizes;
    AcGeVector2d m_level;
    bool m_isInclined;
    LinearArrangement m_result;
};

void Arranging::turnText(bool isInside) {
    const bool isLevel = (isInside ? m_variables.dimtih : m_variables.dimtoh) &&
                         !(isInside && m_variables.dimtad == japanesePlace);
    m_result.isTextHorizontal = isLevel;
    m_result.rotation = textAngle(m_shape, m_variables, m_frame.along, isLevel);
    const bool isForced = isLevel && m_isInclined;
    const bool isTurned = m_sizes.isParted && m_shape.textRotation != 0.0;
    m_result.isTextOnLine = isForced || isTurned ||
                            (m_sizes.isOnLine(m_variables) && std::abs(m_variables.dimtvp) < breakingOffset);
    m_result.halfExtent = halfExtentOnLine(0.0);
}

// Half of the line that the text's box covers as it is turned, widened by the margin.
double Arranging::halfExtentOnLine(double margin) const {
    if (!m_result.isTextOnLine) return m_sizes.halfWidth + margin;
    return halfExtent(m_sizes, m_result.rotation - m_frame.lineAngle, margin);
}

DimensionFit Arranging::fitAutomatic() const {
    const double text = 2.0 * halfExtentOnLine(m_result.isTextOnLine ? m_sizes.gap : 0.0);
    return {m_arrows, m_sizes, text, m_frame.length};
}

// Whether both arrows have room beside a text that stands at its own place.
bool Arranging::fitsAround(double place) const {
    const LineStretch box =
        stretchInText(m_frame.feet[0], m_frame.along, m_sizes, m_result.centre, m_result.rotation);
    if (!m_result.isTextOnLine || box.isEmpty()) return fitAutomatic().hasBoth;
    const double half = halfExtentOnLine(m_sizes.gap);
    return isWithin(room(0), place - half) && isWithin(room(1), m_frame.length - place - half);
}

void Arranging::choosePlaced() {
    m_result.centre = m_shape.point(11);
    m_result.textPlace = (m_result.centre - m_frame.feet[0]).dotProduct(m_frame.along);
    m_result.isTextInside = m_result.textPlace > 0.0 && m_result.textPlace < m_frame.length;
    turnText(m_result.isTextInside);
    m_result.hasHook = !m_result.isTextInside && m_result.isTextHorizontal && m_isInclined;
    const bool areInside =
        m_result.isTextInside ? fitsAround(m_result.textPlace) : stayInside(m_variables, fitAutomatic());
    m_result.areArrowsInside[0] = m_result.areArrowsInside[1] = areInside;
}

void Arranging::chooseByRoom() {
    turnText(true);
    const DimensionSides sides = chosenSides(m_variables, m_sizes, fitAutomatic());
    m_result.isTextInside = sides.isTextInside;
    m_result.areArrowsInside[0] = m_result.areArrowsInside[1] = sides.areArrowsInside;
}

// From the line to the text's middle, upwards.
double Arranging::acrossLine() const {
    if (m_sizes.isParted) return m_result.isTextOnLine ? 0.0 : m_sizes.liftBy(m_variables);
    if (m_variables.dimtad == centredPlace) return m_variables.dimtvp * m_sizes.textHeight;
    if (m_variables.dimtad != outerPlace) return m_sizes.liftBy(m_variables);
    double side = (m_frame.feet[0] - m_frame.origins[0]).dotProduct(m_frame.up);
    if (side == 0.0) side = (m_frame.feet[1] - m_frame.origins[1]).dotProduct(m_frame.up);
    return side < 0.0 ? -m_sizes.lift() : m_sizes.lift();
}

void Arranging::placeInside() {
    double ends[2] = {0.0, 0.0};
    for (int end = 0; end < 2; ++end)
        if (m_result.areArrowsInside[end] && m_arrows.traits[end].endsLine) ends[end] = m_sizes.arrow;
    const double aside = 2.0 * m_sizes.arrow + m_sizes.gap + m_result.halfExtent;
    double place = 0.5 * (ends[0] + m_frame.length - ends[1]);
    if (m_variables.dimjust == 1) place = aside;
    if (m_variables.dimjust == 2) place = m_frame.length - aside;
    const bool isForced = m_result.isTextHorizontal && m_isInclined;
    m_result.textPlace = place;
    m_result.centre = m_frame.at(place, isForced ? 0.0 : acrossLine());
}

// Parallel to the extension line, past the dimension line.
void Arranging::placeOverExtensionLine(int end) {
    const AcGeVector2d outward = unitOf(m_frame.feet[end] - m_frame.origins[end]);
    const AcGeVector2d away = outward.lengthSqrd() > 0.0 ? outward : m_frame.up;
    const AcGeVector2d reading = readingDirection(away, m_shape.horizontal);
    m_result.rotation = angleOf(reading);
    m_result.isTextOnLine = false;
    m_result.textPlace = end == 0 ? 0.0 : m_frame.length;
    m_result.centre =
        m_frame.feet[end] + away * (m_sizes.gap + m_sizes.halfWidth) + reading.perpVector() * m_sizes.lift();
}

void Arranging::placeOutside() {
    turnText(false);
    const double reach = 2.0 * m_sizes.arrow;
    m_result.hasHook = m_result.isTextHorizontal && m_isInclined;
    if (m_result.hasHook) {
        const double cut = m_arrows.traits[1].endsLine ? m_sizes.arrow : 0.0;
        m_result.textPlace = m_frame.length + cut + m_sizes.arrow;
        m_result.centre =
            m_frame.at(m_result.textPlace) + m_level * (m_sizes.arrow + m_sizes.gap + m_sizes.halfWidth);
        return;
    }
    const double gap = m_result.isTextOnLine ? m_sizes.gap : 0.0;
    m_result.textPlace = m_frame.length + reach + gap + m_result.halfExtent;
    m_result.centre = m_frame.at(m_result.textPlace, acrossLine());
}

// dimtmove: with a leader from the middle of the line, or free above it.
void Arranging::placeMoved() {
    m_result.isRaised = true;
    m_result.isTextOnLine = false;
    m_result.textPlace = 0.5 * m_frame.length;
    const AcGePoint2d middle = m_frame.at(m_result.textPlace);
    if (m_variables.dimtmove == 1) {
        m_result.areArrowsInside[0] = m_result.areArrowsInside[1] = false;
        const AcGeVector2d reading = readingDirection(m_frame.along, m_shape.horizontal);
        m_result.centre = middle + m_frame.up * (leaderRise * m_sizes.textHeight) +
                          reading * (m_sizes.arrow + m_sizes.gap + m_sizes.halfWidth);
        return;
    }
    turnText(false);
    m_result.isTextOnLine = false;
    m_result.areArrowsInside[0] = m_result.areArrowsInside[1] = true;
    m_result.centre = middle + m_frame.up * (m_sizes.arrow + 2.0 * m_sizes.halfWidth);
}

LinearArrangement Arranging::run() {
    if (m_shape.isTextPlaced) {
        choosePlaced();
    } else {
        chooseByRoom();
        if (m_result.isTextInside && (m_variables.dimjust == 3 || m_variables.dimjust == 4))
            placeOverExtensionLine(m_variables.dimjust - 3);
        else if (m_result.isTextInside)
            placeInside();
        else if (m_variables.dimtmove != 0)
            placeMoved();
        else
            placeOutside();
    }
    for (int end = 0; end < 2; ++end)
        if (m_shape.isFlipped[end]) m_result.areArrowsInside[end] = !m_result.areArrowsInside[end];
    return m_result;
}

} // namespace

LinearArrangement arrangeLinear(const DimensionShape& shape, const LinearFrame& frame,
                                const DimensionVariables& variables, const DimensionArrows& arrows,
                                const DimensionSizes& sizes) {
    return Arranging(shape, frame, variables, arrows, sizes).run();
}

} // namespace hostkit
