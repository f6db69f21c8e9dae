// Stand-in for the host's AcGeKnotVector. Covers the knots of a spline with their tolerance; leaves out knot editing.
#pragma once

#include "gegbl.h"

/// Knot values of a spline and the tolerance within which neighbours count as one knot (1e-9 by default).
class AcGeKnotVector {
public:
    static constexpr double globalKnotTolerance = 1e-9;

    explicit AcGeKnotVector(double tolerance = globalKnotTolerance)
        : m_tolerance(tolerance) {}
    explicit AcGeKnotVector(const AcGeDoubleArray& knots, double tolerance = globalKnotTolerance)
        : m_knots(knots)
        , m_tolerance(tolerance) {}
    AcGeKnotVector(int count, const double* knots, double tolerance = globalKnotTolerance);

    int length() const { return m_knots.length(); }
    int logicalLength() const { return m_knots.length(); }
    bool isEmpty() const { return m_knots.isEmpty(); }
    double operator[](int i) const { return m_knots[i]; }
    double& operator[](int i) { return m_knots[i]; }
    /// First and last knot; 0 when empty.
    double startParam() const { return isEmpty() ? 0.0 : m_knots.first(); }
    double endParam() const { return isEmpty() ? 0.0 : m_knots.last(); }
    AcGeKnotVector& append(double knot) {
        m_knots.append(knot);
        return *this;
    }
    AcGeKnotVector& setLogicalLength(int length) {
        m_knots.setLogicalLength(length);
        return *this;
    }
    double tolerance() const { return m_tolerance; }
    AcGeKnotVector& setTolerance(double tolerance) {
        m_tolerance = tolerance;
        return *this;
    }
    const AcGeDoubleArray& knots() const { return m_knots; }
    const double* asArrayPtr() const { return m_knots.asArrayPtr(); }

private:
    AcGeDoubleArray m_knots;
    double m_tolerance;
};
