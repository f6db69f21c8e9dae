// The dictionary tree: finding an entry must not hang on how many there are.
#include "vexodatabasetools.h"

#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dbobjptr.h"
#include "dbxrecrd.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr wchar_t serviceName[] = L"VEXO_SERVICES";

std::unique_ptr<AcDbDatabase> drawingWithEntries(std::int64_t count) {
    auto database = std::make_unique<AcDbDatabase>();
    AcDbDictionary* const service =
        VEXODatabaseTools::openDictionary(serviceName, AcDb::kForWrite, database.get(), 1);
    for (std::int64_t i = 0; i < count; ++i) {
        AcDbObjectId id;
        VEXODatabaseTools::appendToDictionary(service, new AcDbXrecord, id,
                                              (L"entry " + std::to_wstring(i)).c_str());
    }
    service->close();
    return database;
}

// Keys from all over the dictionary, in another spelling than theirs.
std::vector<std::wstring> scatteredKeys(std::int64_t count) {
    std::vector<std::wstring> keys;
    std::uint64_t scattered = 1;
    for (int i = 0; i < 1024; ++i) {
        scattered = scattered * 6364136223846793005u + 1442695040888963407u;
        keys.push_back(L"ENTRY " + std::to_wstring((scattered >> 33) % static_cast<std::uint64_t>(count)));
    }
    return keys;
}

void entryIdByKey(benchmark::State& state) {
    const auto database = drawingWithEntries(state.range(0));
    const auto keys = scatteredKeys(state.range(0));
    std::size_t next = 0;
    for (auto _ : state) {
        AcDbObjectId id;
        const int found = VEXODatabaseTools::getFromDictionary(
            serviceName, keys[next++ % keys.size()].c_str(), id, database.get());
        if (found != 1) state.SkipWithError("an entry is missing");
    }
}

void entryByKey(benchmark::State& state) {
    const auto database = drawingWithEntries(state.range(0));
    const auto keys = scatteredKeys(state.range(0));
    std::size_t next = 0;
    for (auto _ : state) {
        AcDbObject* object = nullptr;
        if (VEXODatabaseTools::getFromDictionary(serviceName, keys[next++ % keys.size()].c_str(), object,
                                                 AcDb::kForRead, database.get()) != 1)
            state.SkipWithError("an entry is missing");
        else
            object->close();
    }
}

void appendEntry(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(drawingWithEntries(state.range(0)));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void allEntries(benchmark::State& state) {
    const auto database = drawingWithEntries(state.range(0));
    for (auto _ : state) {
        AcDbObjectIdArray ids;
        VEXODatabaseTools::getFromDictionary(serviceName, ids, database.get());
        benchmark::DoNotOptimize(ids.length());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(entryIdByKey)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(entryByKey)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(appendEntry)->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(allEntries)->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
