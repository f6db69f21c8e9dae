// What a drawing of a document remembers of changes: memory a new line takes, the cost of a change, of taking
// it back, of a transaction, and of opening through the library's guard.

#include "actrans.h"
#include "axlock.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host.h"
#include "scriptedport.h"
#include "undohistory.h"
#include "vexosmartopen.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <memory>

namespace {

std::size_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// A host with one new document.
struct Session {
    hostkit::ScriptedPort port;
    hostkit::Host host{port};
    AcDbDatabase* database = nullptr;
    std::unique_ptr<AcAxDocLock> lock;

    Session() {
        host.newDocument();
        database = host.documents().curDocument()->database();
        lock = std::make_unique<AcAxDocLock>(database);
    }
    void append(std::int64_t count, bool opensEachTime) {
        std::unique_ptr<AcDbObjectPointer<AcDbBlockTableRecord>> space;
        hostkit::beginUndoGroup(*database, L"APPEND");
        for (std::int64_t i = 0; i < count; ++i) {
            if (!space || opensEachTime) {
                space.reset();
                space = std::make_unique<AcDbObjectPointer<AcDbBlockTableRecord>>(database->modelSpaceId(),
                                                                                  AcDb::kForWrite);
            }
            const double x = static_cast<double>(i);
            auto* line = new AcDbLine({x, 0, 0}, {x, 1, 0});
            (*space)->appendAcDbEntity(line);
            line->close();
        }
        space.reset();
        hostkit::endUndoGroup(*database);
    }
    template <typename F>
    void forEachLine(F&& f) {
        const VEXOSmartOpen<AcDbBlockTableRecord> space(database->modelSpaceId(), AcDb::kForRead, false);
        for (const AcDbObjectId id : space->entities()) f(id);
    }
    void changeAll() {
        hostkit::beginUndoGroup(*database, L"CHANGE");
        forEachLine([](AcDbObjectId id) {
            const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
            line->setEndPoint({1, 2, 3});
        });
        hostkit::endUndoGroup(*database);
    }
};

// Memory a line: the object, its id, its place in the block, and what undo needs.
void appendRecorded(benchmark::State& state) {
    double bytes = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        {
            Session session;
            const std::size_t before = allocatedBytes();
            state.ResumeTiming();
            session.append(state.range(0), state.range(1) == 1);
            state.PauseTiming();
            bytes = static_cast<double>(allocatedBytes() - before) / static_cast<double>(state.range(0));
        }
        state.ResumeTiming();
    }
    state.counters["bytes_each"] = bytes;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void walkWithGuard(benchmark::State& state) {
    Session session;
    session.append(state.range(0), false);
    for (auto _ : state) {
        double sum = 0.0;
        session.forEachLine([&](AcDbObjectId id) {
            const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
            sum += static_cast<const AcDbLine*>(entity.object())->startPoint().x;
        });
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The guard's second way: the object is open for write elsewhere.
void guardThroughTransaction(benchmark::State& state) {
    Session session;
    session.append(1, false);
    AcDbObjectId id;
    session.forEachLine([&](AcDbObjectId each) { id = each; });
    const AcDbObjectPointer<AcDbLine> held(id, AcDb::kForWrite);
    for (auto _ : state) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForWrite, false);
        benchmark::DoNotOptimize(entity.object());
    }
}

void changeRecorded(benchmark::State& state) {
    Session session;
    session.append(state.range(0), false);
    for (auto _ : state) {
        session.changeAll();
        state.PauseTiming();
        hostkit::UndoReport report;
        hostkit::undoLastGroup(*session.database, report);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void undoChanges(benchmark::State& state) {
    Session session;
    session.append(state.range(0), false);
    for (auto _ : state) {
        state.PauseTiming();
        session.changeAll();
        state.ResumeTiming();
        hostkit::UndoReport report;
        hostkit::undoLastGroup(*session.database, report);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void redoChanges(benchmark::State& state) {
    Session session;
    session.append(state.range(0), false);
    session.changeAll();
    hostkit::UndoReport report;
    for (auto _ : state) {
        state.PauseTiming();
        hostkit::undoLastGroup(*session.database, report);
        state.ResumeTiming();
        hostkit::redoLastGroup(*session.database, report);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void undoAppended(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            Session session;
            session.append(state.range(0), false);
            state.ResumeTiming();
            hostkit::UndoReport report;
            hostkit::undoLastGroup(*session.database, report);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(appendRecorded)
    ->ArgNames({"lines", "opening_each_time"})
    ->ArgsProduct({{10000, 100000, 1000000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(walkWithGuard)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(guardThroughTransaction);
BENCHMARK(changeRecorded)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(undoChanges)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(redoChanges)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(undoAppended)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
