// Styles: reading a style's file of that many lines, and the list of a directory of that many files. Wanted:
// at most 50 ms for 100,000 lines, whether all are understood or none; of a file that is listed only the head
// is read, so that its size does not matter.
#include "host.h"
#include "scriptedport.h"
#include "vexodlgorstyle.h"
#include "vexoregistrytools.h"
#include "vexotools.h"

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace {

namespace fs = std::filesystem;

/// The library as a host has it loaded, with a data path of its own.
struct Session {
    hostkit::ScriptedPort port;
    hostkit::Host host{port};
    HINSTANCE instance = static_cast<HINSTANCE>(dlopen("VEXOTools10.so", RTLD_NOW | RTLD_NOLOAD));
    fs::path folder;
    VEXOORStyleData style;
    VEXOORStyleData* data = &style;
    VEXODlgORStyle dialog;

    Session() {
        std::string name = (fs::temp_directory_path() / "vexo-styles-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        folder = name;
        fs::create_directories(folder / "Support/Styles");
        DllMain(instance, 1, nullptr);
        VEXORegistryTools::SetRegistryValueAdv(L"", L"PATHDATA", folder.wstring().c_str(), HKEY_CURRENT_USER);
        dialog.SetEntityType(L"BMRepartition");
        dialog.SetORStyleData(data);
    }
    ~Session() {
        dialog.DestroyWindow();
        DllMain(instance, 0, nullptr);
        dlclose(instance);
        fs::remove_all(folder);
    }
};

enum Lines : std::int64_t { unknown, numbers, texts };

std::string lineOf(std::int64_t kind, std::int64_t i) {
    const std::string number = std::to_string(i);
    if (kind == numbers)
        return (i % 2 ? "Cover1 = " + number + ".250000000000\r\n" : "Trim = " + number + "\r\n");
    if (kind == texts) return "Usertext1 = \"Niveau " + number + " du bâtiment\"\r\n";
    return "SomeOtherKey" + number + " = " + number + "\r\n";
}

void writeStyle(const fs::path& path, std::int64_t kind, std::int64_t lines) {
    std::ofstream file(path, std::ios::binary);
    file << "[BMRepartition]\r\nStyleName = \"" << path.stem().string() << "\"\r\n";
    for (std::int64_t i = 0; i < lines; ++i) file << lineOf(kind, i);
}

void readStyle(benchmark::State& state) {
    Session session;
    const fs::path path = session.folder / "a.ORStyle";
    writeStyle(path, state.range(1), state.range(0));
    const std::wstring name = path.wstring();
    // Each time fresh data, whose memory nobody has touched yet.
    std::optional<VEXOORStyleData> style;
    for (auto step : state) {
        state.PauseTiming();
        VEXOORStyleData* data = &style.emplace();
        session.dialog.SetORStyleData(data);
        state.ResumeTiming();
        if (session.dialog.LoadStyleFromFile(name.c_str()) != Acad::eOk)
            return state.SkipWithError("not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetLabel(state.range(1) == unknown   ? "unknown keys"
                   : state.range(1) == numbers ? "numbers"
                                               : "texts");
}
BENCHMARK(readStyle)
    ->ArgsProduct({{1000, 10000, 100000}, {unknown, numbers, texts}})
    ->Unit(benchmark::kMillisecond);

// The second number: lines of each file.
void fillStyles(benchmark::State& state) {
    Session session;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        writeStyle(session.folder / "Support/Styles" / ("Style " + std::to_string(i) + ".ORStyle"), texts,
                   state.range(1));
    session.dialog.Create(nullptr);
    for (auto step : state) session.dialog.FillStyles();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(fillStyles)->ArgsProduct({{10, 100, 1000}, {20, 2000}})->Unit(benchmark::kMillisecond);

} // namespace
