#include "hatchlines.h"

#include "monotonepiece.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hostkit {

namespace {

constexpr double kLargest = 1e100;
// Numbers of lines beyond this have no unit in the last place of their own.
constexpr double kMostLineNumber = 4e15;

/// Steps that may be made for a stroke, so that patterns of which next to nothing is drawn end too.
constexpr double kStepsByStroke = 64.0;

bool isUsable(double value) { return std::abs(value) < kLargest; } // false for what is no number

bool isUsable(const HatchPatternLine& family) {
    return isUsable(family.angle) && isUsable(family.base.x) && isUsable(family.base.y) &&
           isUsable(family.offset.x) && isUsable(family.offset.y) &&
           std::all_of(family.dashes.begin(), family.dashes.end(),
                       [](double dash) { return isUsable(dash); });
}

/// What of a family's line is drawn, from its origin on, again and again.
class Dashes {
public:
    explicit Dashes(const std::vector<double>& lengths) {
        double place = 0.0;
        for (const double length : lengths) {
            const double end = place + std::abs(length);
            if (length >= 0.0) add(place, end);
            place = end;
        }
        m_period = place;
        joinAround();
    }

    bool isUnbroken() const {
        return !(m_period > 0.0) || (m_drawn.size() == 1 && m_drawn[0].to - m_drawn[0].from >= m_period);
    }
    /// About how many a length has.
    double countIn(double length) const {
        return isUnbroken() ? 1.0 : (length / m_period + 1.0) * static_cast<double>(m_drawn.size());
    }

    /// Calls emit(from, to) for what is drawn between two abscissae, the dashes counting from origin. False
    /// where emit said so, and without a call where there would be more than `limit`.
    template <class Emit>
    bool cut(double origin, double from, double to, double limit, const Emit& emit) const {
        if (isUnbroken()) return emit(from, to);
        if (m_drawn.empty()) return true;
        constexpr double partPeriods = 2.0; // at the ends, and the one that reaches over from before
        const double first = std::floor((from - origin) / m_period) - 1.0;
        const double count = std::floor((to - origin) / m_period) - first + 1.0;
        if (!(count - partPeriods - 1.0 <= limit) || !(std::abs(first) < kMostLineNumber)) return false;
        for (double i = 0.0; i < count; i += 1.0) {
            const double start = origin + (first + i) * m_period;
            for (const Drawn& drawn : m_drawn)
                if (!cutOne(start, drawn, from, to, emit)) return false;
        }
        return true;
    }

private:
    struct Drawn {
        double from;
        double to;
    };

    void add(double from, double to) {
        if (!m_drawn.empty() && m_drawn.back().to == from)
            m_drawn.back().to = to;
        else
            m_drawn.push_back({from, to});
    }
    // A dash at the end goes on in the one that the next period begins with.
    void joinAround() {
        if (m_drawn.size() < 2 || m_drawn.front().from > 0.0 || m_drawn.back().to < m_period) return;
        m_drawn.back().to += m_drawn.front().to;
        m_drawn.erase(m_drawn.begin());
    }
    template <class Emit>
    static bool cutOne(double start, const Drawn& drawn, double from, double to, const Emit& emit) {
        const double begin = start + drawn.from;
        if (drawn.from == drawn.to) return begin < from || begin > to || emit(begin, begin);
        const double low = std::max(begin, from);
        const double high = std::min(start + drawn.to, to);
        return low >= high || emit(low, high);
    }

    std::vector<Drawn> m_drawn;
    double m_period = 0.0;
};

/// The lines of a family in its sweep coordinates.
struct FamilyLines {
    AcGePoint2d base;
    double shift = 0.0; ///< along, from one line to the next
    double step = 0.0;  ///< across, not negative; 0 where there is one line only

    FamilyLines(const HatchPatternLine& family, const SweepAxes& axes) {
        constexpr double alongOnly = 1e-12; // of the offset's length: rounding of the angle
        base = axes(family.base);
        const AcGePoint2d offset = axes.rotated(family.offset);
        if (std::abs(offset.y) <= alongOnly * family.offset.length()) return;
        step = std::abs(offset.y);
        shift = offset.y < 0.0 ? -offset.x : offset.x;
    }

    /// The number of the first line that is not below. Never falls where the height rises, so that pieces
    /// with a common end share it. May be no number, or beyond any.
    double firstFrom(double height) const {
        if (step == 0.0) return height > base.y ? 1.0 : 0.0;
        return std::ceil((height - base.y) / step);
    }
    double height(double number) const { return base.y + number * step; }
    double origin(double number) const { return base.x + number * shift; }
};

/// One family over one area: lines from below, with the pieces that each of them crosses from left to right.
class FamilySweep {
public:
    FamilySweep(const HatchArea& area, const HatchPatternLine& family)
        : m_axes{area.contours().front().front().start,
                 AcGeVector2d(std::cos(family.angle), std::sin(family.angle))}
        , m_lines(family, m_axes)
        , m_dashes(family.dashes) {
        std::vector<MonotonePiece> pieces;
        for (const HatchContour& contour : area.contours()) appendMonotonePieces(contour, m_axes, pieces);
        for (const MonotonePiece& piece : pieces) add(piece);
        std::sort(m_pieces.begin(), m_pieces.end(),
                  [](const SweptPiece& a, const SweptPiece& b) { return a.first < b.first; });
        countLines();
    }

    /// How many lines cross the area.
    double lineCount() const { return m_lineCount; }
    /// As if each of them did so from the area's left to its right.
    double estimate() const {
        return m_lineCount > 0.0 ? m_lineCount * m_dashes.countIn(m_right - m_left) : 0.0;
    }

    /// False where visit(stroke) said so, where dashes are more than `limit` in one part of a line, and when
    /// `steps` are used up.
    template <class Visit>
    bool run(double limit, double& steps, const Visit& visit) {
        std::size_t next = 0;
        for (double number = 0.0; next < m_pieces.size() || !m_active.empty(); number += 1.0) {
            if (m_active.empty()) number = m_pieces[next].first;
            std::erase_if(m_active, [&](const Crossing& c) { return m_pieces[c.piece].last <= number; });
            for (; next < m_pieces.size() && m_pieces[next].first == number; ++next)
                m_active.push_back({next, 0.0});
            steps -= 1.0 + static_cast<double>(m_active.size());
            if (steps < 0.0) return false;
            cross(m_lines.height(number));
            if (!cutLine(number, limit, visit)) return false;
        }
        return true;
    }

private:
    struct SweptPiece {
        MonotonePiece shape;
        double first; ///< numbers of the lines that cross it, the last one not
        double last;
    };
    struct Crossing {
        std::size_t piece;
        double at;
    };

    void add(const MonotonePiece& piece) {
        for (const double height : {piece.low, piece.high}) {
            const double at = piece.abscissaAt(height);
            m_left = std::min(m_left, at);
            m_right = std::max(m_right, at);
        }
        const double first = m_lines.firstFrom(piece.low);
        const double last = m_lines.firstFrom(piece.high);
        m_isBeyond |= !(std::abs(first) < kMostLineNumber && std::abs(last) < kMostLineNumber);
        if (m_isBeyond || first >= last) return;
        m_pieces.push_back({piece, first, last});
    }

    void countLines() {
        double end = -std::numeric_limits<double>::infinity();
        for (const SweptPiece& piece : m_pieces) {
            m_lineCount += std::max(0.0, piece.last - std::max(end, piece.first));
            end = std::max(end, piece.last);
        }
        if (m_isBeyond) m_lineCount = std::numeric_limits<double>::infinity();
    }

    // From one line to the next the order hardly changes; where it does, it is sorted anew.
    void cross(double height) {
        for (Crossing& crossing : m_active) crossing.at = m_pieces[crossing.piece].shape.abscissaAt(height);
        std::size_t moves = 4 * m_active.size() + 16;
        for (std::size_t i = 1; i < m_active.size(); ++i) {
            const Crossing crossing = m_active[i];
            std::size_t place = i;
            for (; place > 0 && m_active[place - 1].at > crossing.at; --place) {
                m_active[place] = m_active[place - 1];
                if (moves > 0) --moves;
            }
            m_active[place] = crossing;
            if (moves > 0) continue;
            std::sort(m_active.begin(), m_active.end(),
                      [](const Crossing& a, const Crossing& b) { return a.at < b.at; });
            return;
        }
    }

    // Parts that meet are one: areas that share an edge are no reason to cut a dash.
    template <class Visit>
    bool cutLine(double number, double limit, const Visit& visit) const {
        constexpr double meeting = 1e-14; // of the area's reach along the line
        const double height = m_lines.height(number);
        const double origin = m_lines.origin(number);
        const auto emit = [&](double from, double to) {
            return visit(HatchStroke{m_axes.back(from, height), m_axes.back(to, height)});
        };
        for (std::size_t i = 0; i + 1 < m_active.size(); i += 2) {
            const double from = m_active[i].at;
            const double joined = meeting * (m_right - m_left);
            while (i + 3 < m_active.size() && m_active[i + 2].at - m_active[i + 1].at <= joined) i += 2;
            const double to = m_active[i + 1].at;
            if (to > from && !m_dashes.cut(origin, from, to, limit, emit)) return false;
        }
        return true;
    }

    SweepAxes m_axes;
    FamilyLines m_lines;
    Dashes m_dashes;
    std::vector<SweptPiece> m_pieces;
    std::vector<Crossing> m_active;
    double m_lineCount = 0.0;
    double m_left = std::numeric_limits<double>::infinity();
    double m_right = -std::numeric_limits<double>::infinity();
    bool m_isBeyond = false;
};

double pieceCount(const HatchArea& area) {
    double count = 0.0;
    for (const HatchContour& contour : area.contours()) count += static_cast<double>(contour.size());
    return count;
}

double stepsFor(double limit) {
    return kStepsByStroke * std::max(limit, static_cast<double>(kMostHatchStrokes));
}

} // namespace

double spacingOf(const HatchPatternLine& line) {
    return std::abs(line.offset.y * std::cos(line.angle) - line.offset.x * std::sin(line.angle));
}

Acad::ErrorStatus forEachStroke(const HatchArea& area, const std::vector<HatchPatternLine>& families,
                                std::size_t limit, const HatchStrokeVisitor& visit) {
    const bool areUsable = std::all_of(families.begin(), families.end(),
                                       [](const HatchPatternLine& family) { return isUsable(family); });
    if (families.empty() || !areUsable) return Acad::eInvalidInput;
    if (area.contours().empty()) return Acad::eOk;
    const auto most = static_cast<double>(limit);
    const double pieces = pieceCount(area);
    double steps = stepsFor(most);
    std::size_t count = 0;
    bool isEnded = false;
    for (const HatchPatternLine& family : families) {
        FamilySweep sweep(area, family);
        steps -= pieces;
        if (sweep.lineCount() > most || steps < 0.0) return Acad::eOutOfRange;
        const bool isWhole = sweep.run(most, steps, [&](const HatchStroke& stroke) {
            if (count == limit) return false;
            ++count;
            isEnded = !visit(stroke);
            return !isEnded;
        });
        if (!isWhole) return isEnded ? Acad::eOk : Acad::eOutOfRange;
    }
    return Acad::eOk;
}

double estimatedStrokes(const HatchArea& area, const std::vector<HatchPatternLine>& families) {
    constexpr double unbounded = std::numeric_limits<double>::infinity();
    double steps = stepsFor(0.0);
    const double pieces = pieceCount(area);
    double sum = families.empty() ? unbounded : 0.0;
    for (const HatchPatternLine& family : families) {
        steps -= pieces;
        if (!isUsable(family) || steps < 0.0) return unbounded;
        if (!area.contours().empty()) sum += FamilySweep(area, family).estimate();
    }
    return sum;
}

} // namespace hostkit
