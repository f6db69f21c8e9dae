// Pictures of drawings as documents: lines, and curves in blocks; both passes, the measuring and the drawing
// one.
#include "dbblockreference.h"
#include "dbblocktable.h"
#include "dbblocktablerecord.h"
#include "dbcircle.h"
#include "dbdatabase.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "plotdrawing.h"
#include "svgpicture.h"

#include <benchmark/benchmark.h>
#include <random>

namespace {

void addLines(AcDbDatabase& database, std::int64_t count) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(0.0, 100000.0);
    const AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForWrite);
    for (std::int64_t i = 0; i < count; ++i) {
        const AcGePoint3d start(place(random), place(random), 0.0);
        auto* line =
            new AcDbLine(start, start + AcGeVector3d(place(random) / 100.0, place(random) / 100.0, 0.0));
        model->appendAcDbEntity(line);
        line->close();
    }
}

std::string pictureOf(AcDbDatabase& database) {
    PictureExtents extents;
    plotDrawing(database, extents);
    SvgPicture picture(PictureFrame::fitted(extents, 420.0, 297.0, false), L"lines");
    plotDrawing(database, picture);
    return picture.finish();
}

void pictureOfLines(benchmark::State& state) {
    AcDbDatabase database;
    addLines(database, state.range(0));
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string picture = pictureOf(database);
        benchmark::DoNotOptimize(size = picture.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(pictureOfLines)->RangeMultiplier(10)->Range(10'000, 1'000'000)->Unit(benchmark::kMillisecond);

void pictureOfReferences(benchmark::State& state) {
    AcDbDatabase database;
    auto* block = new AcDbBlockTableRecord;
    block->setName(L"BOLT");
    AcDbSymbolTablePointer<AcDbBlockTable> blocks(&database, AcDb::kForWrite);
    blocks->add(block);
    blocks.close();
    for (const double radius : {1.0, 2.0, 3.0}) {
        auto* circle = new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, radius);
        block->appendAcDbEntity(circle);
        circle->close();
    }
    const AcDbObjectId id = block->objectId();
    block->close();
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForWrite);
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            auto* reference = new AcDbBlockReference(
                AcGePoint3d(10.0 * static_cast<double>(i % 300), static_cast<double>(i / 300) * 10.0, 0.0),
                id);
            model->appendAcDbEntity(reference);
            reference->close();
        }
    }
    for (auto _ : state) benchmark::DoNotOptimize(pictureOf(database).size());
    state.SetItemsProcessed(state.iterations() * state.range(0) * 3);
}
BENCHMARK(pictureOfReferences)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);

} // namespace
