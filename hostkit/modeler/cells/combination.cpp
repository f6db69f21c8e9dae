#include "combination.h"

#include "assembly.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

std::optional<Polyhedron> attempt(Operation operation, std::span<const Polyhedron* const> bodies,
                                  double tolerance) {
    Arrangement all(bodies);
    if (!findMeetings(all, tolerance) || !weldEdges(all) || !findPlaneClasses(all) || !cutFaces(all) ||
        !nodeSegments(all) || !findCells(all) || !findCoverage(all))
        return std::nullopt;
    return assemble(operation, all);
}

/// What the result's volume can be, whatever way the bodies lie.
struct Bounds {
    double least = 0;
    double most = 0;
    double layer = 0; ///< what a tolerance of 1 over the surfaces comes to

    bool allow(double content, double tolerance) const {
        return content >= least - tolerance * layer && content <= most + tolerance * layer;
    }
};

Bounds boundsOf(Operation operation, std::span<const Polyhedron* const> bodies,
                const std::vector<double>& volumes) {
    Box box;
    double sum = 0;
    double greatest = 0;
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        for (const AcGePoint3d& p : bodies[i]->points) box.add(p);
        if (i > 0) sum += volumes[i];
        if (i > 0) greatest = std::max(greatest, volumes[i]);
    }
    constexpr double boxesOver = 64;
    Bounds bounds{.layer = boxesOver * box.diagonalSquared()};
    switch (operation) {
    case Operation::unite:
        bounds.least = std::max(volumes[0], greatest);
        bounds.most = volumes[0] + sum;
        break;
    case Operation::subtract:
        bounds.least = std::max(0.0, volumes[0] - sum);
        bounds.most = volumes[0];
        break;
    case Operation::intersect:
        bounds.most = std::min(volumes[0], sum);
        break;
    }
    return bounds;
}

} // namespace

std::optional<Polyhedron> combine(Operation operation, const Polyhedron& a,
                                  std::span<const Polyhedron* const> others, double tolerance) {
    if (!(tolerance >= 0) || !std::isfinite(tolerance)) return std::nullopt;
    std::vector<const Polyhedron*> bodies{&a};
    bodies.insert(bodies.end(), others.begin(), others.end());
    std::vector<double> volumes;
    for (const Polyhedron* body : bodies) {
        if (!isClosed(*body)) return std::nullopt;
        volumes.push_back(volume(*body));
        if (!(volumes.back() >= 0)) return std::nullopt; // inside out
    }
    const Bounds bounds = boundsOf(operation, bodies, volumes);
    for (const double factor : {1.0, 4.0, 0.25, 16.0}) {
        auto result = attempt(operation, bodies, tolerance * factor);
        if (result && bounds.allow(volume(*result), tolerance * factor)) return result;
    }
    return std::nullopt;
}

} // namespace hostkit::modeler
