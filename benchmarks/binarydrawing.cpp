// Containers of binary drawings: pages packed and unpacked, files written and taken apart. Drawings of 1,000,
// 10,000 and 100,000 lines; bytes are those of the records, rates those of one core.
#include "binarycontainerwriting.h"
#include "binaryheader.h"
#include "pagecompression.h"
#include "recordencoding.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

using namespace hostkit;
using Bytes = std::vector<std::uint8_t>;

/// Lines of a plan: on a grid of millimetres, most of them upright or level, on a few layers.
Bytes linesOf(DrawingVersion version, std::size_t count, std::vector<ObjectPlace>& places) {
    const RecordLayout& layout = *RecordLayouts::of(version).byName("LINE");
    const auto slotOf = [&](const char* name) {
        std::uint16_t slot = 0;
        static_cast<void>(layout.findSlot(name, slot));
        return slot;
    };
    const std::uint16_t slots[] = {slotOf("x1"), slotOf("y1"), slotOf("x2"), slotOf("y2")};
    const std::uint16_t layer = slotOf("layer"), mode = slotOf("entmode"), direction = slotOf("ext"),
                        flat = slotOf("zzero");
    std::mt19937 random(7);
    RecordEncoding encoding(version);
    RecordScope values;
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) {
        values.clear();
        const bool isLevel = random() % 2 == 0;
        const double x = random() % 60000, y = random() % 40000, length = 100.0 + random() % 5000;
        const double ordinates[] = {x, y, isLevel ? x + length : x, isLevel ? y : y + length};
        for (int at = 0; at < 4; ++at) values.add(slots[at]).real[0] = ordinates[at];
        values.add(layer).reference = {5, 0x10 + random() % 8};
        values.add(mode).whole = 2;
        values.add(flat).whole = 1;
        values.add(direction).real[2] = 1.0;
        const std::uint64_t handle = 0x100 + i;
        places.push_back({handle, bytes.size()});
        if (!encoding.append(layout, layout.number, handle, values, bytes)) std::abort();
    }
    return bytes;
}

struct Drawing {
    BinaryContainer container;
    Bytes bytes;
    BinaryRecords records;

    Drawing(DrawingVersion version, std::size_t count) {
        container.version = version;
        container.sections["AcDb:Header"] = writeHeader(container, {});
        container.sections["AcDb:Classes"] = writeClasses(container, {});
        bytes = linesOf(version, count, records.places);
        records.bytes = bytes;
    }
};

constexpr std::size_t pageSize = 0x7400;

std::vector<Bytes> pagesOf(std::size_t lines) {
    const Drawing drawing(DrawingVersion::k2010, lines);
    std::vector<Bytes> pages;
    for (std::size_t at = 0; at < drawing.bytes.size(); at += pageSize) {
        const ByteSpan part = partOf(drawing.bytes, at, pageSize);
        pages.emplace_back(part.begin(), part.end()).resize(pageSize);
    }
    return pages;
}

void count(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}

void pack(benchmark::State& state) {
    const std::vector<Bytes> pages = pagesOf(static_cast<std::size_t>(state.range(0)));
    std::size_t packed = 0;
    for (auto _ : state) {
        packed = 0;
        for (const Bytes& page : pages) packed += packPage(page).size();
    }
    count(state, pages.size() * pageSize);
    state.counters["packed"] = static_cast<double>(packed) / static_cast<double>(pages.size() * pageSize);
}

void unpack(benchmark::State& state) {
    const std::vector<Bytes> pages = pagesOf(static_cast<std::size_t>(state.range(0)));
    std::vector<Bytes> packed;
    for (const Bytes& page : pages) packed.push_back(packPage(page));
    Bytes out;
    for (auto _ : state)
        for (const Bytes& page : packed)
            if (!unpackPage(page, pageSize, out)) state.SkipWithError("a page is damaged");
    count(state, pages.size() * pageSize);
}

void write(benchmark::State& state, DrawingVersion version) {
    const Drawing drawing(version, static_cast<std::size_t>(state.range(0)));
    Bytes file;
    std::wstring reason;
    for (auto _ : state)
        if (!writeContainer(drawing.container, drawing.records, file, reason))
            state.SkipWithError("it is not written");
    count(state, drawing.bytes.size());
}

void open(benchmark::State& state, DrawingVersion version) {
    const Drawing drawing(version, static_cast<std::size_t>(state.range(0)));
    Bytes file;
    std::wstring reason;
    if (!writeContainer(drawing.container, drawing.records, file, reason))
        state.SkipWithError("it is not written");
    for (auto _ : state) {
        BinaryContainer container;
        if (!openContainer(file, container)) state.SkipWithError("it is not read");
        benchmark::DoNotOptimize(readObjectMap(container));
    }
    count(state, drawing.bytes.size());
}

void sizes(benchmark::internal::Benchmark* one) {
    one->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}

BENCHMARK(pack)->Apply(sizes);
BENCHMARK(unpack)->Apply(sizes);
BENCHMARK_CAPTURE(write, 2000, DrawingVersion::k2000)->Apply(sizes);
BENCHMARK_CAPTURE(write, 2010, DrawingVersion::k2010)->Apply(sizes);
BENCHMARK_CAPTURE(open, 2000, DrawingVersion::k2000)->Apply(sizes);
BENCHMARK_CAPTURE(open, 2010, DrawingVersion::k2010)->Apply(sizes);

} // namespace
