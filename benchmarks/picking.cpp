// Picking in drawings of 10,000 to 1,000,000 entities: making the index, picks, windows, and changes that it
// follows.
#include "changelog.h"
#include "dbaccess.h"
#include "dbcircle.h"
#include "dbdatabase.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbtext.h"
#include "displaychanges.h"
#include "entitypicking.h"
#include "pickindex.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <random>

namespace {

using hostkit::DatabaseAccess;
using hostkit::PickIndex;
using hostkit::PickMode;
using hostkit::PickRegion;

/// Lines for the most part, with circles, polylines and texts between them; as dense at every size.
class Plan {
public:
    explicit Plan(std::int64_t count)
        : m_size(std::sqrt(double(count)) * 10.0) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(m_drawing.modelSpaceId(), AcDb::kForWrite);
        for (std::int64_t i = 0; i < count; ++i) {
            AcDbEntity* entity = make(i);
            (void)space->appendAcDbEntity(entity);
            m_ids.push_back(entity->objectId());
            entity->close();
        }
    }
    static Plan& of(std::int64_t count) {
        static std::map<std::int64_t, std::unique_ptr<Plan>> plans;
        std::unique_ptr<Plan>& plan = plans[count];
        if (!plan) plan = std::make_unique<Plan>(count);
        return *plan;
    }
    AcDbDatabase& drawing() { return m_drawing; }
    AcDbObjectId space() const { return m_drawing.modelSpaceId(); }
    AcDbObjectId anyEntity() { return m_ids[m_random() % m_ids.size()]; }
    PickRegion window(double half) {
        const AcGePoint3d at = place();
        return PickRegion::box({at.x - half, at.y - half}, {at.x + half, at.y + half});
    }

private:
    AcGePoint3d place() {
        std::uniform_real_distribution<double> anywhere(0.0, m_size);
        const double x = anywhere(m_random);
        return {x, anywhere(m_random), 0.0};
    }
    AcDbEntity* make(std::int64_t i) {
        const AcGePoint3d at = place();
        if (i % 10 == 7) return new AcDbCircle(at, AcGeVector3d::kZAxis, 4.0);
        if (i % 10 == 8) return new AcDbText(at, L"Text", AcDbObjectId::kNull, 2.5, 0.3);
        if (i % 10 != 9) return new AcDbLine(at, {at.x + 12.0, at.y + double(i % 7) - 3.0, 0.0});
        auto* polyline = new AcDbPolyline(4);
        for (unsigned int k = 0; k < 4; ++k)
            (void)polyline->addVertexAt(k, {at.x + 5.0 * (k & 1), at.y + 3.0 * k}, 0.3);
        return polyline;
    }

    double m_size;
    std::mt19937 m_random{1};
    AcDbDatabase m_drawing;
    std::vector<AcDbObjectId> m_ids;
};

void build(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    const PickRegion nowhere = PickRegion::box({-100.0, -100.0}, {-99.0, -99.0});
    for (auto _ : state) {
        DatabaseAccess::picking(plan.drawing()).reset();
        benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), {}, nowhere));
    }
    state.counters["bytes/entity"] =
        double(PickIndex::upToDate(plan.drawing()).bytes()) / double(state.range(0));
}

void pick(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), {}, plan.window(0.5)));
}

void pickTilted(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    const hostkit::PickSight sight{AcGeMatrix3d::rotation(0.6, {0.3, 1.0, 0.2})};
    for (auto _ : state)
        benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), sight, plan.window(0.5)));
}

void smallWindow(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    std::size_t found = 0;
    for (auto _ : state)
        found += pickedEntities(plan.drawing(), plan.space(), {}, plan.window(50.0), PickMode::inside).size();
    state.counters["found"] = benchmark::Counter(double(found), benchmark::Counter::kAvgIterations);
}

void windowOfAll(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    const PickRegion all = PickRegion::box({-1e6, -1e6}, {1e6, 1e6});
    for (auto _ : state)
        benchmark::DoNotOptimize(pickedEntities(plan.drawing(), plan.space(), {}, all, PickMode::inside));
}

void move(Plan& plan) {
    const AcDbObjectPointer<AcDbEntity> entity(plan.anyEntity(), AcDb::kForWrite);
    (void)entity->transformBy(AcGeMatrix3d::translation({40.0, -3.0, 0.0}));
}

/// What following costs is the difference to changesAlone; a thousand changes to one pick.
void changesFollowed(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    const PickRegion nowhere = PickRegion::box({-100.0, -100.0}, {-99.0, -99.0});
    benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), {}, nowhere));
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i) move(plan);
        benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), {}, nowhere));
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}

void changesAlone(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    DatabaseAccess::picking(plan.drawing()).reset();
    for (auto _ : state)
        for (int i = 0; i < 1000; ++i) move(plan);
    state.SetItemsProcessed(state.iterations() * 1000);
}

/// A change and a pick in turn, as a person works.
void changeThenPick(benchmark::State& state) {
    Plan& plan = Plan::of(state.range(0));
    benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), {}, plan.window(0.5)));
    for (auto _ : state) {
        move(plan);
        benchmark::DoNotOptimize(pickedEntity(plan.drawing(), plan.space(), {}, plan.window(0.5)));
    }
}

struct Counter : hostkit::DisplayObserver {
    void shownAnew(const hostkit::ShownChange&) override { ++count; }
    int count = 0;
};

/// Opening, changing and closing one entity, with nobody or somebody to tell.
void openChangeClose(benchmark::State& state) {
    AcDbDatabase drawing;
    auto* line = new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
        (void)space->appendAcDbEntity(line);
        line->close();
    }
    const AcDbObjectId id = line->objectId();
    Counter counter;
    if (state.range(0) > 0) DatabaseAccess::display(drawing).add(counter);
    double x = 1.0;
    for (auto _ : state) {
        AcDbLine* opened = nullptr;
        (void)acdbOpenObject(opened, id, AcDb::kForWrite);
        (void)opened->setEndPoint({x += 1.0, 0.0, 0.0});
        opened->close();
    }
    if (state.range(0) > 0) DatabaseAccess::display(drawing).remove(counter);
}

void sizes(benchmark::internal::Benchmark* each) { each->Arg(10000)->Arg(100000)->Arg(1000000); }

BENCHMARK(build)->Apply(sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(pick)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(pickTilted)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(smallWindow)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(windowOfAll)->Apply(sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(changesFollowed)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(changesAlone)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(changeThenPick)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(openChangeClose)->Arg(0)->Arg(1);

} // namespace
