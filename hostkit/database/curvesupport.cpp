#include "curvesupport.h"

#include "dbcurve.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

/// Sorted, each once; empty when one lies outside.
std::vector<double> orderedCuts(const AcGeDoubleArray& cuts, double start, double end, bool closed,
                                double tolerance) {
    std::vector<double> ordered;
    ordered.reserve(static_cast<std::size_t>(cuts.length()));
    for (double cut : cuts) {
        if (!bringIntoRange(cut, start, end, tolerance)) return {};
        if (closed && end - cut <= tolerance) cut = start;
        if (cut - start <= tolerance) cut = start;
        ordered.push_back(cut);
    }
    std::sort(ordered.begin(), ordered.end());
    const auto last = std::unique(ordered.begin(), ordered.end(), [tolerance](double before, double after) {
        return after - before <= tolerance;
    });
    ordered.erase(last, ordered.end());
    return ordered;
}

} // namespace

std::vector<ParameterSpan> spansBetween(const AcGeDoubleArray& cuts, double start, double end, bool closed,
                                        double tolerance) {
    const std::vector<double> ordered = orderedCuts(cuts, start, end, closed, tolerance);
    std::vector<ParameterSpan> spans;
    if (ordered.empty()) return spans;
    if (closed) {
        if (ordered.size() == 1 && ordered.front() == start) return spans;
        for (std::size_t i = 0; i + 1 < ordered.size(); ++i) spans.push_back({ordered[i], ordered[i + 1]});
        spans.push_back({ordered.back(), ordered.front() == start ? end : ordered.front() + (end - start)});
        return spans;
    }
    double from = start;
    for (const double cut : ordered) {
        if (cut == start || end - cut <= tolerance) continue;
        spans.push_back({from, cut});
        from = cut;
    }
    if (!spans.empty()) spans.push_back({from, end});
    return spans;
}

bool bringIntoRange(double& parameter, double start, double end, double tolerance) {
    if (!(parameter >= start - tolerance && parameter <= end + tolerance)) return false;
    parameter = std::clamp(parameter, start, end);
    return true;
}

bool canProject(const AcGePlane& plane, const AcGeVector3d& direction) {
    const double size = direction.length();
    if (!std::isfinite(size) || size <= AcGeContext::gTol.equalVector()) return false;
    return std::abs(direction.dotProduct(plane.normal())) > AcGeContext::gTol.equalVector() * size;
}

Acad::ErrorStatus parametersOf(const AcDbCurve& curve, const AcGePoint3dArray& points,
                               AcGeDoubleArray& parameters) {
    for (const AcGePoint3d& point : points) {
        double parameter = 0.0;
        const Acad::ErrorStatus status = curve.getParamAtPoint(point, parameter);
        if (status != Acad::eOk) return status;
        parameters.append(parameter);
    }
    return Acad::eOk;
}

} // namespace hostkit
