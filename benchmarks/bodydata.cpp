// Data of bodies, text and binary: into exact shapes, facets, bodies, and out again. Slabs of 10, 100 and
// 1,000 openings.
#include "bodydata.h"
#include "amodeler.h"
#include "shape.h"

#include <benchmark/benchmark.h>

namespace {

using namespace hostkit::modeler;

/// A slab with square openings, 6 + 4 n faces.
Polyhedron slab(unsigned openings) {
    Polyhedron body;
    const unsigned across = openings >= 1000 ? 40 : 10;
    const auto addWalls = [&](double x, double y, double size, bool isHole, std::vector<unsigned>& bottom,
                              std::vector<unsigned>& top) {
        const auto first = static_cast<unsigned>(body.points.size());
        const double corners[4][2] = {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
        for (const double z : {0.0, 0.2})
            for (const auto& [cx, cy] : corners) body.points.emplace_back(cx, cy, z);
        for (unsigned side = 0; side < 4; ++side) {
            const unsigned next = (side + 1) % 4;
            std::vector<unsigned> loop{first + side, first + next, first + 4 + next, first + 4 + side};
            AcGeVector3d normal = (body.points[first + next] - body.points[first + side])
                                      .crossProduct(AcGeVector3d::kZAxis)
                                      .normal();
            if (isHole) {
                std::reverse(loop.begin(), loop.end());
                normal = -normal;
            }
            body.faces.push_back(
                {normal, normal.dotProduct(body.points[loop[0]].asVector()), body.loopCount(), 1});
            body.corners.insert(body.corners.end(), loop.begin(), loop.end());
            body.loopStarts.push_back(static_cast<unsigned>(body.corners.size()));
        }
        for (unsigned corner = 0; corner < 4; ++corner) {
            bottom.push_back(first + (isHole ? corner : 3 - corner));
            top.push_back(first + 4 + (isHole ? 3 - corner : corner));
        }
    };
    std::vector<unsigned> bottom, top;
    addWalls(0, 0, across, false, bottom, top);
    for (unsigned opening = 0; opening < openings; ++opening)
        addWalls(opening % across + 0.25, opening / across + 0.25, 0.5, true, bottom, top);
    for (const auto* const loops : {&bottom, &top}) {
        const bool isTop = loops == &top;
        body.faces.push_back({{0, 0, isTop ? 1.0 : -1.0}, isTop ? 0.2 : 0.0, body.loopCount(), 1 + openings});
        for (std::size_t corner = 0; corner < loops->size(); corner += 4) {
            body.corners.insert(body.corners.end(), loops->begin() + static_cast<std::ptrdiff_t>(corner),
                                loops->begin() + static_cast<std::ptrdiff_t>(corner) + 4);
            body.loopStarts.push_back(static_cast<unsigned>(body.corners.size()));
        }
    }
    return body;
}

const std::pair<BodyForm, int>& versionOf(const benchmark::State& state) {
    static constexpr std::pair<BodyForm, int> versions[] = {{BodyForm::text, 400}, {BodyForm::binary, 21800}};
    return versions[state.range(1)];
}

void writeBody(benchmark::State& state) {
    const Polyhedron body = slab(static_cast<unsigned>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string data = writeShape(shapeOf(body), versionOf(state).first, versionOf(state).second);
        size = data.size();
        benchmark::DoNotOptimize(data.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
}

template <class Work>
void onData(benchmark::State& state, Work&& work) {
    const std::string data = writeShape(shapeOf(slab(static_cast<unsigned>(state.range(0)))),
                                        versionOf(state).first, versionOf(state).second);
    for (auto _ : state)
        if (!work(data)) state.SkipWithError("the body is not read");
    state.SetBytesProcessed(static_cast<std::int64_t>(data.size()) * state.iterations());
}

void readIntoShape(benchmark::State& state) {
    onData(state, [](const std::string& data) { return readShape(data).shape.has_value(); });
}

void readIntoBody(benchmark::State& state) {
    onData(state, [](const std::string& data) {
        const ShapeReading reading = readShape(data);
        const Facets facets =
            facetsOf(*reading.shape, {}, [](const auto&, const auto&, double) { return nullptr; });
        return facets.polyhedron && !AModeler::Body::fromPolyhedron(*facets.polyhedron).isNull();
    });
}

/// The volume 4/3 pi of a ball by facets: state.range(0) sides for a turn.
void facetBall(benchmark::State& state) {
    Shape shape;
    shape.shellLumps.push_back(0);
    shape.faces.push_back({{ShapeSurface::Kind::sphere, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 1.0, 0.0, 1.0, 1.0},
                           false,
                           false,
                           0,
                           0,
                           0});
    for (auto _ : state) {
        const Facets facets = facetsOf(shape, {static_cast<double>(state.range(0)), 0.0},
                                       [](const auto&, const auto&, double) { return nullptr; });
        if (!facets.polyhedron) state.SkipWithError("no facets");
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int form : {0, 1})
        for (const int openings : {10, 100, 1000}) benchmark->Args({openings, form});
    benchmark->ArgNames({"openings", "binary"})->Unit(benchmark::kMillisecond);
}

BENCHMARK(writeBody)->Apply(sizes);
BENCHMARK(readIntoShape)->Apply(sizes);
BENCHMARK(readIntoBody)->Apply(sizes);
BENCHMARK(facetBall)->Arg(18)->Arg(36)->Arg(72)->ArgName("sides")->Unit(benchmark::kMillisecond);

} // namespace
