// Opening and closing, appending, walking and looking up, and the memory that entities take.

#include "dbdict.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbsymtb.h"
#include "dbtext.h"
#include "dbxrecrd.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <memory>
#include <string>

namespace {

std::size_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

template <typename Make>
void appendMany(AcDbDatabase& database, std::int64_t count, Make&& make) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    for (std::int64_t i = 0; i < count; ++i) {
        AcDbEntity* entity = make(i);
        AcDbObjectId id;
        space->appendAcDbEntity(id, entity);
        entity->close();
    }
}

AcDbEntity* makeLine(std::int64_t i) {
    const double x = static_cast<double>(i);
    return new AcDbLine({x, 0, 0}, {x, 1, 0});
}

AcDbEntity* makePolyline(std::int64_t i) {
    constexpr unsigned int vertices = 8;
    auto* polyline = new AcDbPolyline(vertices);
    for (unsigned int v = 0; v < vertices; ++v)
        polyline->addVertexAt(v, AcGePoint2d(static_cast<double>(i), v), v == 0 ? 0.5 : 0.0);
    return polyline;
}

AcDbEntity* makeText(std::int64_t i) {
    return new AcDbText({static_cast<double>(i), 0, 0}, L"12 d 14 / 150", AcDbObjectId::kNull, 2.5);
}

// Memory a piece, the stub, the handle and the place in the block included.
template <AcDbEntity* (*make)(std::int64_t)>
void append(benchmark::State& state) {
    double bytes = 0.0;
    for (auto _ : state) {
        AcDbDatabase database;
        const std::size_t before = allocatedBytes();
        appendMany(database, state.range(0), make);
        bytes = static_cast<double>(allocatedBytes() - before) / static_cast<double>(state.range(0));
        state.PauseTiming();
        benchmark::DoNotOptimize(database.approxNumObjects());
        state.ResumeTiming();
    }
    state.counters["bytes_each"] = bytes;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void appendLines(benchmark::State& state) { append<makeLine>(state); }
void appendPolylines(benchmark::State& state) { append<makePolyline>(state); }
void appendTexts(benchmark::State& state) { append<makeText>(state); }

void openAndCloseOne(benchmark::State& state) {
    AcDbDatabase database;
    const AcDbObjectId id = database.layerZero();
    const auto mode = static_cast<AcDb::OpenMode>(state.range(0));
    for (auto _ : state) {
        AcDbObject* object = nullptr;
        acdbOpenAcDbObject(object, id, mode);
        benchmark::DoNotOptimize(object);
        object->close();
    }
}

void walkOpeningEach(benchmark::State& state) {
    AcDbDatabase database;
    appendMany(database, state.range(0), makeLine);
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
    for (auto _ : state) {
        AcDbBlockTableRecordIterator* made = nullptr;
        space->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
        double sum = 0.0;
        for (; !iterator->done(); iterator->step()) {
            AcDbEntity* entity = nullptr;
            iterator->getEntity(entity, AcDb::kForRead);
            sum += static_cast<AcDbLine*>(entity)->startPoint().x;
            entity->close();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void findByHandle(benchmark::State& state) {
    AcDbDatabase database;
    appendMany(database, state.range(0), makeLine);
    const Adesk::UInt64 last = database.handseed().value() - 1;
    Adesk::UInt64 scattered = 1;
    for (auto _ : state) {
        scattered = scattered * 6364136223846793005u + 1442695040888963407u;
        AcDbObjectId id;
        database.getAcDbObjectId(id, false, AcDbHandle(1 + (scattered >> 33) % last));
        benchmark::DoNotOptimize(id);
    }
}

void findInDictionary(benchmark::State& state) {
    AcDbDatabase database;
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForWrite);
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        auto* record = new AcDbXrecord;
        AcDbObjectId id;
        root->setAt((L"entry " + std::to_wstring(i)).c_str(), record, id);
        record->close();
    }
    const std::wstring wanted = L"ENTRY " + std::to_wstring(state.range(0) / 2);
    for (auto _ : state) {
        AcDbXrecord* record = nullptr;
        root->getAt(wanted.c_str(), record, AcDb::kForRead);
        benchmark::DoNotOptimize(record);
        record->close();
    }
}

void extendedDataOfTen(benchmark::State& state) {
    AcDbLine line;
    resbuf* list = acutBuildList(1001, L"ORDANE", 1000, L"KEY 1", 1070, 1, 1000, L"KEY 2", 1040, 2.0, 1000,
                                 L"KEY 3", 1071, 3, 1000, L"KEY 4", 1000, L"text", 1070, 5, 0);
    line.setXData(list);
    const bool writing = state.range(0) == 1;
    for (auto _ : state) {
        if (writing) {
            line.setXData(list);
        } else {
            resbuf* found = line.xData(L"ORDANE");
            benchmark::DoNotOptimize(found);
            acutRelRb(found);
        }
    }
    acutRelRb(list);
}

BENCHMARK(openAndCloseOne)->ArgName("mode")->Arg(AcDb::kForRead)->Arg(AcDb::kForWrite)->Arg(AcDb::kForNotify);
BENCHMARK(walkOpeningEach)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(appendLines)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(appendPolylines)->Arg(10000)->Arg(100000)->Arg(300000)->Unit(benchmark::kMillisecond);
BENCHMARK(appendTexts)->Arg(10000)->Arg(100000)->Arg(300000)->Unit(benchmark::kMillisecond);
BENCHMARK(findByHandle)->Arg(10000)->Arg(100000)->Arg(1000000);
BENCHMARK(findInDictionary)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(extendedDataOfTen)->ArgName("writing")->Arg(0)->Arg(1);

} // namespace
