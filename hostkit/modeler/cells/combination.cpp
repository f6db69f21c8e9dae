#include "combination.h"

#include "assembly.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

std::optional<Polyhedron> attempt(Operation operation, std::span<const Polyhedron* const> bodies, double tolerance) {
    Arrangement all(bodies);
    findMeetings(all, tolerance);
    if (!weldEdges(all) || !findPlaneClasses(all) || !cutFaces(all) || !nodeSegments(all) || !findCells(all) ||
        !findCoverage(all))
        return std::nullopt;
    return assemble(operation, all);
}

/// What the result's volume can be, whatever way the bodies lie.
struct Bounds {
    double least = 0;
    double most = 0;
    double slack = 0; ///< a layer of the tolerance over the bodies' boxes
};

Bounds boundsOf(Operation operation, std::span<const Polyhedron* const> bodies, double tolerance) {
    const double first = volume(*bodies[0]);
    Bounds bounds;
    double sum = 0;
    double greatest = 0;
    Box box;
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        for (const AcGePoint3d& p : bodies[i]->points) box.add(p);
        if (i == 0) continue;
        const double own = volume(*bodies[i]);
        sum += own;
        greatest = std::max(greatest, own);
    }
    bounds.slack = 64 * tolerance * box.diagonalSquared();
    switch (operation) {
    case Operation::unite: bounds.least = std::max(first, greatest), bounds.most = first + sum; break;
    case Operation::subtract: bounds.least = std::max(0.0, first - sum), bounds.most = std::max(0.0, first - 0); break;
    case Operation::intersect: bounds.most = std::min(first, sum); break;
    }
    return bounds;
}

} // namespace

std::optional<Polyhedron> combine(Operation operation, const Polyhedron& a, std::span<const Polyhedron* const> others,
                                  double tolerance) {
    if (!(tolerance >= 0) || !std::isfinite(tolerance)) return std::nullopt;
    std::vector<const Polyhedron*> bodies{&a};
    bodies.insert(bodies.end(), others.begin(), others.end());
    for (const Polyhedron* body : bodies)
        if (!isClosed(*body)) return std::nullopt;
    constexpr std::array factors{1.0, 4.0, 0.25, 16.0};
    for (const double factor : factors) {
        auto result = attempt(operation, bodies, tolerance * factor);
        if (!result) continue;
        const Bounds bounds = boundsOf(operation, bodies, tolerance * factor);
        const double content = volume(*result);
        if (content >= bounds.least - bounds.slack && content <= bounds.most + bounds.slack) return result;
    }
    return std::nullopt;
}

} // namespace hostkit::modeler
