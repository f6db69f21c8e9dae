// Compiling filters of selections, and asking them of every entity of a drawing.

#include "filtertext.h"
#include "selectionfilter.h"

#include "dbaccess.h"
#include "dbcircle.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbsymtb.h"
#include "dbtext.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

namespace {

using hostkit::DatabaseAccess;
using hostkit::SelectionFilter;

constexpr int layerCount = 100;

struct Drawing {
    AcDbDatabase database;
    std::vector<const AcDbEntity*> entities;
};

std::vector<AcDbObjectId> addLayers(AcDbDatabase& database, std::int64_t count) {
    std::vector<AcDbObjectId> layers(static_cast<std::size_t>(count));
    AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForWrite);
    for (std::int64_t i = 0; i < count; ++i) {
        auto* const record = new AcDbLayerTableRecord;
        record->setName((L"LEVEL-" + std::to_wstring(i)).c_str());
        table->add(layers[static_cast<std::size_t>(i)], record);
        record->close();
    }
    return layers;
}

AcDbEntity* made(std::int64_t i) {
    const double x = static_cast<double>(i);
    switch (i % 4) {
    case 0:
        return new AcDbLine({x, 0, 0}, {x, 1, 0});
    case 1:
        return new AcDbText({x, 0, 0}, (std::to_wstring(i % 40) + L" d 14 / 150").c_str(),
                            AcDbObjectId::kNull, 2.5);
    case 2:
        return new AcDbCircle({x, 0, 0}, {0, 0, 1}, 2.0);
    default: {
        auto* const outline = new AcDbPolyline(4);
        for (unsigned v = 0; v < 4; ++v) outline->addVertexAt(v, AcGePoint2d(x, v));
        return outline;
    }
    }
}

/// A quarter each of lines, texts, circles and outlines on a hundred layers; made once for each size.
Drawing& drawingOf(std::int64_t count) {
    static std::map<std::int64_t, std::unique_ptr<Drawing>> drawings;
    std::unique_ptr<Drawing>& drawing = drawings[count];
    if (drawing) return *drawing;
    drawing = std::make_unique<Drawing>();
    const std::vector<AcDbObjectId> layers = addLayers(drawing->database, layerCount);
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing->database.modelSpaceId(), AcDb::kForWrite);
    for (std::int64_t i = 0; i < count; ++i) {
        AcDbEntity* const entity = made(i);
        AcDbObjectId id;
        space->appendAcDbEntity(id, entity);
        entity->setLayer(layers[static_cast<std::size_t>(i / 4 % layerCount)], true);
        entity->close();
        drawing->entities.push_back(entity);
    }
    return *drawing;
}

void accept(benchmark::State& state, const wchar_t* text) {
    Drawing& drawing = drawingOf(state.range(0));
    const auto reading = hostkit::readFilterText(text);
    const auto filter = SelectionFilter::compile(reading.list.get(), drawing.database);
    if (!filter) return state.SkipWithError("the filter is none");
    std::size_t accepted = 0;
    for (auto _ : state) {
        accepted = 0;
        for (const AcDbEntity* entity : drawing.entities) accepted += filter->accepts(*entity);
        benchmark::DoNotOptimize(accepted);
    }
    state.counters["entity"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["taken"] = static_cast<double>(accepted);
}
#define ACCEPT(name, text) BENCHMARK_CAPTURE(accept, name, text)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)
ACCEPT(layer_and_type, LR"((0 . "LINE,ARC") (8 . "LEVEL-1*"))");
ACCEPT(color, L"(62 . 256)");
ACCEPT(handle, LR"((5 . "2F*"))");
ACCEPT(text_of_all, LR"((1 . "*d 14*"))");
ACCEPT(text_of_texts, LR"((0 . "TEXT") (1 . "*d 14*"))");
ACCEPT(vertex, LR"((-4 . ">,<") (10 5000.0 2.5 0.0))");
ACCEPT(
    nested,
    LR"((-4 . "<or") (1 . "1#*") (40 . 2.0) (-4 . "<not") (-4 . ">") (70 . 0) (-4 . "not>") (-4 . "or>"))");

/// By the number of layers that a pattern is looked up in.
void compile(benchmark::State& state) {
    AcDbDatabase database;
    addLayers(database, state.range(0));
    const auto reading =
        hostkit::readFilterText(LR"((0 . "LINE,ARC") (8 . "LEVEL-1*") (-4 . ">") (40 . 2.5))");
    for (auto _ : state) benchmark::DoNotOptimize(SelectionFilter::compile(reading.list.get(), database));
}
BENCHMARK(compile)->Arg(10)->Arg(100)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

} // namespace
