// What the console saves and says when something fails, by modules that really do, in processes of their own.
#include "consoletest.h"

#include "reservememory.h"

#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <sys/resource.h>
#include <thread>

namespace {

namespace fs = std::filesystem;

const bool isSanitized = *VEXO_SANITIZER_FLAGS != '\0';

class Rescue : public ConsoleTest {
protected:
    void SetUp() override {
        if (isSanitized) GTEST_SKIP() << "a sanitizer takes the faults for itself";
    }
    std::vector<fs::path> recovered() {
        std::vector<fs::path> found;
        const fs::path place = folder / "state/vexotools/Recover";
        if (fs::is_directory(place))
            for (const auto& entry : fs::directory_iterator(place)) found.push_back(entry.path());
        return found;
    }
    /// One drawing was recovered, which the messages name; it is whole and has the line that was made last.
    void expectRecovered(const ProgramResult& result) {
        EXPECT_EQ(result.code, exitcode::rescued) << result.problems;
        const std::vector<fs::path> found = recovered();
        ASSERT_EQ(found.size(), 1u) << result.problems;
        expectHas(result.problems,
                  {"vexohost: the drawing as it was then is recovered in " + found[0].string() + "\n"});
        const ProgramResult audit = run({found[0], "--command", "AUDIT"});
        EXPECT_EQ(audit.code, exitcode::ok) << audit.output << audit.problems;
        EXPECT_TRUE(has(outputOf({found[0], "--command", "LIST JSON"}), "[4,5,6,0]"));
        fs::remove(found[0]);
    }
    ProgramResult failBy(const std::string& way, std::vector<std::string> more = {},
                         std::map<std::string, std::string> environment = {}) {
        more.insert(more.end(), {"--new", "--module", failing, "--command", "FAIL " + way});
        return run(more, "", std::move(environment));
    }
};

} // namespace

TEST_F(Rescue, EveryFailureIsToldAndSavesTheDrawing) {
    const struct {
        const char* way;
        std::vector<std::string> told;
    } cases[] = {
        {"NULL",
         {" crashed: memory that is not its own was used (SIGSEGV)\n", "useNull()+0x", "called by",
          "::fail()"}},
        {"DIVIDE", {" crashed: a whole number was divided by zero, or the like (SIGFPE)\n", "divide()"}},
        {"ABORT", {" crashed: the code gave up (SIGABRT)\n", "abort"}},
        {"ILL", {"(SIGILL)"}},
        {"BUS", {"(SIGBUS)"}},
        {"RECURSE", {"(SIGSEGV)", "useStack(int)"}},
        {"THREAD", {"(SIGSEGV)", "useNull()"}},
        {"TEAR", {"(SIGABRT)", "tearHeap()"}},
        {"CHURN", {" took too long (--timeout)\n", "churn()"}},
        {"LOOP", {" took too long (--timeout)\n", "loop()"}},
        {"POLITE", {" took too long (--timeout)\n"}},
        {"THROW", {"FAIL: the beam is gone", " threw an exception"}},
        {"THROWNUMBER", {" threw an exception"}},
        {"THROWBEYOND", {" threw an exception that nobody took: the beam is gone\n"}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.way);
        const ProgramResult result = failBy(each.way, {"--timeout", "0.3"});
        expectHas(result.problems, {"the command FAIL of " + failing});
        expectHas(result.problems, each.told);
        expectRecovered(result);
    }
}

TEST_F(Rescue, MemoryThatIsUsedUpLeavesEnoughForTheRescue) {
    for (const std::string way : {"ALLOCATE", "LEAK"}) {
        SCOPED_TRACE(way);
        const ProgramResult result =
            runInShell("ulimit -v 400000; XDG_STATE_HOME=" + (folder / "state") + " " + program +
                       " --new --module " + failing + " --command 'FAIL " + way + "'");
        expectRecovered(result);
    }
}

TEST_F(Rescue, WhatFailsInTheRescueEndsIt) {
    const std::pair<const char*, const char*> ways[] = {
        {"RESCUENULL", "memory that is not its own was used (SIGSEGV)"},
        {"RESCUETHROW", "its saving threw an exception"}};
    for (const auto& [way, reason] : ways) {
        const ProgramResult result = failBy(way);
        EXPECT_EQ(result.code, exitcode::notRescued) << result.problems;
        expectHas(result.problems,
                  {"crashed: ", "vexohost: the drawing is not rescued: " + std::string(reason) + "\n"});
    }
    EXPECT_TRUE(recovered().empty());
}

TEST_F(Rescue, PlacesThatAreNotThereAndDrawingsThatAreNotOpenAreTold) {
    folder.write("file", "kept");
    const struct {
        std::string registry; ///< the machine's data path
        std::map<std::string, std::string> environment;
        std::string told;
    } cases[] = {
        {"", {{"XDG_STATE_HOME", ""}, {"HOME", ""}}, "no place for recovered drawings is known"},
        {folder / "missing", {}, folder / "missing/Recover: it could not be saved there"},
        {folder / "file", {}, folder / "file/Recover: it could not be saved there"},
        {"", {{"FAILING_AT_LEAVING", "1"}}, "none is open"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.told);
        if (!each.registry.empty())
            folder.write("registry.txt",
                         "[HKEY_LOCAL_MACHINE\\Software\\Vexomar\\ordane\\R18\\10.1]\n\"PATHDATA\"=\"" +
                             each.registry + "\"\n");
        const bool isLeaving = each.environment.contains("FAILING_AT_LEAVING");
        const ProgramResult result = failBy(isLeaving ? "NOT" : "NULL", {}, each.environment);
        EXPECT_EQ(result.code, exitcode::notRescued) << result.problems;
        expectHas(result.problems, {"vexohost: the drawing is not rescued: " + each.told + "\n"});
        fs::remove(folder / "registry.txt");
    }
    EXPECT_EQ(folder.read("file"), "kept");
    const ProgramResult loading = failBy("NOT", {}, {{"FAILING_AT_LOADING", "1"}});
    EXPECT_EQ(loading.code, exitcode::rescued) << loading.problems;
    expectHas(loading.problems, {"vexohost: the loading of " + failing + " crashed: "});
}

// Within one second, too.
TEST_F(Rescue, NoRecoveredDrawingTakesThePlaceOfAnother) {
    for (int i = 0; i < 4; ++i) EXPECT_EQ(failBy("NULL").code, exitcode::rescued);
    EXPECT_EQ(recovered().size(), 4u);
}

TEST_F(Rescue, WithoutRescueTheSignalEndsTheProgram) {
    const ProgramResult result = failBy("NULL", {"--no-rescue"});
    EXPECT_EQ(result.code, 128 + SIGSEGV);
    expectHas(result.problems, {"vexohost: the command FAIL of " + failing + " crashed: memory"});
    EXPECT_FALSE(has(result.problems, "recovered"));
    EXPECT_EQ(failBy("THROW", {"--no-rescue"}).code, exitcode::commandFailed);
    EXPECT_TRUE(recovered().empty());
}

TEST_F(Rescue, CallsThatWereTracedAreNamed) {
    expectHas(failBy("NULL", {"--trace", folder / "trace.json"}).problems,
              {"  traced call failing::useNull\n"});
}

// At random moments of opening, cutting and saving: the file is the old one or the new one, and what was
// recovered is whole. tools/check-rescue asks the same, with more signals, 500 times.
TEST_F(Rescue, ASignalAtAnyMomentLosesNoDrawing) {
    const std::string old = readFile(floorDrawing), file = folder / "floor.dxf";
    const std::vector<std::string> command = {program,      file,       "--module", slabModule,   "--command",
                                              "SLABSTRIPS", "--output", file,       "--overwrite"};
    const std::map<std::string, std::string> environment = {{"VEXO_REGISTRY", folder / "registry.txt"},
                                                            {"XDG_STATE_HOME", folder / "state"}};
    folder.write("floor.dxf", old);
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(runProgram(command, "", environment).code, exitcode::ok);
    const auto took = std::chrono::steady_clock::now() - begin;
    const std::string changed = readFile(file);
    std::mt19937 random(7);
    int rescues = 0;
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS, SIGTERM, SIGKILL})
        for (int i = 0; i < 6; ++i) {
            SCOPED_TRACE(strsignal(number));
            folder.write("floor.dxf", old);
            RunningProgram running(command, "", environment);
            std::this_thread::sleep_for(took * std::uniform_real_distribution<>(0.0, 1.1)(random));
            running.sendSignal(number);
            const ProgramResult result = running.finish();
            const std::string now = readFile(file);
            EXPECT_TRUE(now == old || now == changed) << result.problems;
            EXPECT_TRUE(result.code == exitcode::ok || result.code == exitcode::rescued ||
                        result.code == exitcode::interrupted || result.code == 128 + number ||
                        has(result.problems, "none is open"))
                << result.code << result.problems;
            for (const fs::path& each : recovered()) {
                const ProgramResult audit = run({each, "--command", "AUDIT"});
                EXPECT_EQ(audit.code, exitcode::ok) << audit.output << audit.problems;
                fs::remove(each);
                ++rescues;
            }
        }
    EXPECT_GT(rescues, 0);
}

// Blocks keep their contents beside each other, whatever is given back and asked for meanwhile.
TEST(ReserveMemory, BlocksDoNotTouchEachOther) {
    ASSERT_TRUE(reservememory::setAside(std::size_t{4} << 20));
    struct Block {
        unsigned char* place;
        std::size_t size;
        unsigned char mark;
    };
    std::vector<Block> blocks;
    std::mt19937 random(3);
    const auto check = [](const Block& block) {
        return std::all_of(block.place, block.place + block.size,
                           [&](unsigned char each) { return each == block.mark; });
    };
    for (int round = 0; round < 20000; ++round) {
        const bool isLarge = random() % 512 == 0;
        const std::size_t size = random() % (isLarge ? 5'000'000 : random() % 8 == 0 ? 40'000 : 200);
        const std::size_t alignment = random() % 16 == 0 ? std::size_t{1} << (5 + random() % 6) : 16;
        const std::size_t number = blocks.empty() ? 0 : random() % blocks.size();
        const unsigned what = random() % 3;
        if (what == 0 || blocks.size() < 4) {
            auto* const place = static_cast<unsigned char*>(reservememory::allocate(size, alignment));
            ASSERT_TRUE(place);
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(place) % alignment, 0u);
            blocks.push_back({place, size, static_cast<unsigned char>(round)});
            std::memset(place, blocks.back().mark, size);
        } else if (what == 1) {
            ASSERT_TRUE(check(blocks[number]));
            reservememory::release(blocks[number].place);
            blocks[number] = blocks.back();
            blocks.pop_back();
        } else {
            Block& block = blocks[number];
            block.place = static_cast<unsigned char*>(reservememory::reallocate(block.place, size));
            block.size = std::min(block.size, size);
            ASSERT_TRUE(check(block));
            block.size = size;
            std::memset(block.place, block.mark, size);
        }
    }
    for (const Block& block : blocks) {
        EXPECT_TRUE(check(block));
        reservememory::release(block.place);
    }
}
