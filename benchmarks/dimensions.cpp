// Laying dimensions out, and what a save makes of new ones, in drawings of three sizes.

#include "completedimensions.h"
#include "dbdim.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dimensionpicture.h"

#include <benchmark/benchmark.h>

namespace {

AcDbObjectId addDimension(AcDbDatabase& drawing, double x) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    auto* const dimension =
        new AcDbRotatedDimension(0.0, AcGePoint3d(x, 0.0, 0.0), AcGePoint3d(x + 40.0 + x / 8.0, 5.0, 0.0),
                                 AcGePoint3d(x, 15.0, 0.0), nullptr, drawing.dimStyleStandard());
    AcDbObjectId id;
    space->appendAcDbEntity(id, dimension);
    dimension->close();
    return id;
}

void layOut(benchmark::State& state) {
    AcDbDatabase drawing;
    std::vector<AcDbObjectId> ids;
    for (std::int64_t i = 0; i < state.range(0); ++i) ids.push_back(addDimension(drawing, double(i)));
    std::size_t next = 0;
    for (auto _ : state) {
        hostkit::DimensionPicture picture;
        const AcDbObjectPointer<AcDbDimension> dimension(ids[next++ % ids.size()], AcDb::kForRead);
        benchmark::DoNotOptimize(hostkit::layOutDimension(*dimension.object(), picture));
    }
}
BENCHMARK(layOut)->Arg(100)->Arg(1000)->Arg(10000);

// As a tool does that asks a style for its text: no drawing has the dimension.
void explodeThrowAway(benchmark::State& state) {
    AcDbDatabase drawing;
    for (std::int64_t i = 0; i < state.range(0); ++i) addDimension(drawing, double(i));
    for (auto _ : state) {
        AcDbRotatedDimension dimension(0.0, AcGePoint3d(), AcGePoint3d(12.345, 0.0, 0.0), AcGePoint3d(),
                                       nullptr, drawing.dimStyleStandard());
        (void)dimension.setDimlfac(1.0);
        (void)dimension.generateLayout();
        AcDbVoidPtrArray parts;
        (void)dimension.explode(parts);
        for (int i = 0; i < parts.length(); ++i) delete static_cast<AcDbEntity*>(parts[i]);
    }
}
BENCHMARK(explodeThrowAway)->Arg(100)->Arg(1000)->Arg(10000);

void completeNew(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<AcDbDatabase>();
        for (std::int64_t i = 0; i < state.range(0); ++i) addDimension(*drawing, double(i));
        state.ResumeTiming();
        benchmark::DoNotOptimize(hostkit::completeDimensions(*drawing));
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(completeNew)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
