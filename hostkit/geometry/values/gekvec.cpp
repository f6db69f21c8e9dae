#include "gekvec.h"

AcGeKnotVector::AcGeKnotVector(int count, const double* knots, double tolerance)
    : m_tolerance(tolerance) {
    for (int i = 0; i < count; ++i) m_knots.append(knots[i]);
}
