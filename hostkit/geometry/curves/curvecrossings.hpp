// All that two curves have in common, in closed form where there is one. Internal to the geometry kit.
#pragma once

#include "arcmeetings.hpp"
#include "curvekernel.hpp"
#include "linearkernel.hpp"
#include "spacearcs.hpp"

#include <algorithm>
#include <vector>

namespace AcGeKernel {

template <class T>
class CurveCrossings {
public:
    using Curve = typename T::Curve;
    using Point = typename T::Point;
    struct Meeting {
        Point point;
        double param1;
        double param2;
    };
    struct Run {
        AcGeInterval onFirst;
        AcGeInterval onSecond;
    };

    CurveCrossings(const Curve& first, const Curve& second, const AcGeTol& tol)
        : m_first(first)
        , m_second(second)
        , m_tol(tol) {
        if (!meetInClosedForm()) meetNumerically();
        for (const Run& run : m_runs)
            for (double param : {run.onFirst.lowerBound(), run.onFirst.upperBound()})
                if (std::isfinite(param)) addPoint(m_first.evalPoint(param));
        std::sort(m_points.begin(), m_points.end(),
                  [](const Meeting& a, const Meeting& b) { return a.param1 < b.param1; });
    }
    const std::vector<Meeting>& points() const { return m_points; }
    const std::vector<Run>& runs() const { return m_runs; }

private:
    static bool isLinear(const Curve& curve) {
        return curve.isKindOf(AcGe::kLinearEnt2d) || curve.isKindOf(AcGe::kLinearEnt3d);
    }
    static bool isArc(const Curve& curve) {
        return curve.isKindOf(AcGe::kCircArc2d) || curve.isKindOf(AcGe::kCircArc3d);
    }

    void addPoint(const Point& point) {
        for (const Meeting& meeting : m_points)
            if (meeting.point.isEqualTo(point, m_tol)) return;
        m_points.push_back({point, m_first.paramOfClosestPoint(point), m_second.paramOfClosestPoint(point)});
    }

    template <class Meetings>
    void take(const Meetings& meetings) {
        for (int i = 0; i < meetings.pointCount; ++i) addPoint(meetings.points[i]);
        for (int i = 0; i < meetings.runCount; ++i)
            m_runs.push_back({meetings.runs[i].onFirst, meetings.runs[i].onSecond});
    }

    bool meetInClosedForm() {
        const bool linear1 = isLinear(m_first), linear2 = isLinear(m_second);
        if ((!linear1 && !isArc(m_first)) || (!linear2 && !isArc(m_second))) return false;
        using Linear = typename T::Linear;
        using Arc = typename T::Arc;
        if (linear1 && linear2)
            meetLines(static_cast<const Linear&>(m_first), static_cast<const Linear&>(m_second));
        else if (linear1)
            take(meetLineArc(static_cast<const Linear&>(m_first), static_cast<const Arc&>(m_second), m_tol));
        else if (linear2)
            take(meetLineArc(static_cast<const Linear&>(m_second), static_cast<const Arc&>(m_first), m_tol));
        else
            take(meetArcArc(static_cast<const Arc&>(m_first), static_cast<const Arc&>(m_second), m_tol));
        return true;
    }

    void meetLines(const typename T::Linear& first, const typename T::Linear& second) {
        Point point;
        AcGeInterval run;
        const LinearMeeting meeting = meetLinear<T>(first, second, point, run, m_tol);
        if (meeting == LinearMeeting::kPoint) addPoint(point);
        if (meeting == LinearMeeting::kRun) m_runs.push_back({run, commonRange<T>(second, first)});
    }

    // A stretch of one curve with the box of a few of its points, widened by what they rise above the chord.
    struct Stretch {
        double lo, hi;
        typename T::Block box;
        bool flat;
    };

    Stretch stretchOf(const Curve& curve, double lo, double hi) const {
        constexpr double flatRise = 0.05;
        const Point start = curve.evalPoint(lo), end = curve.evalPoint(hi);
        const typename T::Vector chord = end - start;
        Stretch stretch{lo, hi, typename T::Block(start, end), false};
        double rise = 0.0;
        for (int i = 1; i < 4; ++i) {
            const Point point = curve.evalPoint(lo + (hi - lo) * i / 4.0);
            stretch.box.extend(point);
            rise = std::max(rise, (point - (start + chord * (i / 4.0))).length());
        }
        stretch.flat = rise <= flatRise * chord.length();
        const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
        stretch.box.swell(rise + AcGe::pointAllowance(m_tol, magnitude));
        return stretch;
    }

    // Where a curve is unbounded only the part near the other one's box matters.
    std::vector<double> nodesWithin(const Curve& curve, const Curve& other) const {
        constexpr int cutsPerPiece = 2;
        std::vector<double> nodes = nodesOf(curve, cutsPerPiece);
        AcGeDoubleArray otherPieces;
        other.getSmoothPieces(otherPieces);
        if (!nodes.empty() || otherPieces.isEmpty()) return nodes;
        const typename T::Block box = other.orthoBoundBlock();
        const typename T::Vector diagonal = box.maxPoint() - box.minPoint();
        AcGeInterval interval;
        curve.getInterval(interval);
        const double middle = curve.paramOf(box.minPoint() + diagonal / 2.0, m_tol);
        const double reach =
            diagonal.length() + AcGe::pointAllowance(m_tol, box.maxPoint().largestCoordinate());
        return {interval.clamp(middle - reach), interval.clamp(middle + reach)};
    }

    void meetNumerically() {
        const std::vector<double> nodes1 = nodesWithin(m_first, m_second),
                                  nodes2 = nodesWithin(m_second, m_first);
        std::vector<Stretch> others;
        for (std::size_t k = 1; k < nodes2.size(); ++k)
            others.push_back(stretchOf(m_second, nodes2[k - 1], nodes2[k]));
        constexpr int halvings = 6;
        for (std::size_t i = 1; i < nodes1.size(); ++i) {
            const Stretch own = stretchOf(m_first, nodes1[i - 1], nodes1[i]);
            for (const Stretch& other : others) narrow(own, other, halvings);
        }
    }

    void narrow(const Stretch& a, const Stretch& b, int halvings) {
        if (a.box.isDisjoint(b.box)) return;
        constexpr int deepest = -20;
        if ((halvings <= 0 && a.flat && b.flat) || halvings <= deepest) {
            for (double part : {0.5, 0.0, 1.0})
                refine(a.lo + (a.hi - a.lo) * part, b.lo + (b.hi - b.lo) * part);
            return;
        }
        const double middleA = (a.lo + a.hi) / 2.0, middleB = (b.lo + b.hi) / 2.0;
        const Stretch a1 = stretchOf(m_first, a.lo, middleA), a2 = stretchOf(m_first, middleA, a.hi);
        const Stretch b1 = stretchOf(m_second, b.lo, middleB), b2 = stretchOf(m_second, middleB, b.hi);
        for (const Stretch* own : {&a1, &a2})
            for (const Stretch* other : {&b1, &b2}) narrow(*own, *other, halvings - 1);
    }

    // Damped Newton's steps for A(s) = B(t) in the sense of least squares, kept within the curves.
    void refine(double s, double t) {
        constexpr int maximumSteps = 60;
        constexpr double damping = 1e-14;
        AcGeInterval range1, range2;
        m_first.getInterval(range1);
        m_second.getInterval(range2);
        typename T::VectorArray da, db;
        for (int step = 0; step < maximumSteps; ++step) {
            const Point a = m_first.evalPoint(s, 1, da), b = m_second.evalPoint(t, 1, db);
            const typename T::Vector gap = b - a;
            const double aa = da[0].lengthSqrd(), bb = db[0].lengthSqrd(), ab = da[0].dotProduct(db[0]);
            const double det = aa * bb * (1.0 + damping) - ab * ab;
            if (!(det > 0.0)) break;
            const double ga = gap.dotProduct(da[0]), gb = gap.dotProduct(db[0]);
            const double nextS = range1.clamp(s + (ga * bb - gb * ab) / det);
            const double nextT = range2.clamp(t + (ga * ab - gb * aa) / det);
            if (nextS == s && nextT == t) break;
            s = nextS;
            t = nextT;
        }
        addRefined(s, t);
    }

    void addRefined(double s, double t) {
        const Point a = m_first.evalPoint(s), b = m_second.evalPoint(t);
        const double magnitude = std::max(a.largestCoordinate(), b.largestCoordinate());
        if (!AcGe::isWithinAllowance(a.distanceSqrdTo(b), magnitude, m_tol)) return;
        const auto gapAt = [&](double s1, double t1) {
            return m_first.evalPoint(s1).distanceTo(m_second.evalPoint(t1));
        };
        for (Meeting& known : m_points) {
            if (!known.point.isEqualTo(a, m_tol) && !stayTogether(known, s)) continue;
            if (gapAt(s, t) < gapAt(known.param1, known.param2)) known = {a, s, t};
            return;
        }
        m_points.push_back({a, s, t});
    }

    // Near a touching point the curves stay together for a while: one point stands for the stretch. Looked at
    // in places that no regular pattern of crossings shares.
    bool stayTogether(const Meeting& known, double s) const {
        for (double part : {0.29, 0.5, 0.83}) {
            const Point between = m_first.evalPoint(known.param1 + (s - known.param1) * part);
            if (!m_second.isOn(between, m_tol)) return false;
        }
        return true;
    }

    const Curve& m_first;
    const Curve& m_second;
    AcGeTol m_tol;
    std::vector<Meeting> m_points;
    std::vector<Run> m_runs;
};

} // namespace AcGeKernel
