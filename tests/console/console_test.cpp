// The program as a whole: exit codes, messages, modules, signals. Runs what the build has made.
#include "runprogram.h"

#include "exitcodes.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const std::string program = VEXO_BINARY_DIR "/bin/vexohost";
const std::string modules = VEXO_BINARY_DIR "/tests/console/modules/";
const std::string floorDrawing = VEXO_SOURCE_DIR "/examples/slab/floor.dxf";

// A drawing in the oldest form with one square.
const std::string smallDrawing =
    "0\nSECTION\n2\nENTITIES\n"
    "0\nPOLYLINE\n8\nSQUARE\n66\n1\n70\n1\n"
    "0\nVERTEX\n8\nSQUARE\n10\n0.0\n20\n0.0\n0\nVERTEX\n8\nSQUARE\n10\n2.0\n20\n0.0\n"
    "0\nVERTEX\n8\nSQUARE\n10\n2.0\n20\n2.0\n0\nVERTEX\n8\nSQUARE\n10\n0.0\n20\n2.0\n0\nSEQEND\n"
    "0\nENDSEC\n0\nEOF\n";

class ConsoleTest : public ::testing::Test {
protected:
    ProgramResult run(std::vector<std::string> arguments, const std::string& input = "",
                      std::map<std::string, std::string> environment = {}) {
        arguments.insert(arguments.begin(), program);
        environment.emplace("VEXO_REGISTRY", folder / "registry.txt");
        return runProgram(arguments, input, environment);
    }

    TemporaryFolder folder;
    std::string drawing = writtenFile(folder, "small.dxf", smallDrawing);
    std::string helpful = modules + "helpful.so";
};

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(ConsoleTest, HelpVersionAndCommandsNeedNoDrawing) {
    const ProgramResult help = run({"--help"});
    EXPECT_EQ(help.code, exitcode::ok);
    EXPECT_TRUE(has(help.output, "130") && has(help.output, "--output FILE"));
    EXPECT_TRUE(has(run({"--version"}).output, "10.1"));
    const ProgramResult list = run({"--list-commands", "--module", helpful});
    EXPECT_EQ(list.code, exitcode::ok) << list.problems;
    EXPECT_TRUE(has(list.output, "HELPFUL") && has(list.output, "SALUER") && has(list.output, "PLOT"));
}

TEST_F(ConsoleTest, EveryKindOfFailureHasItsCodeAndNamesItsPlace) {
    const std::string cut = writtenFile(folder, "cut.dxf", smallDrawing.substr(0, smallDrawing.size() / 2));
    const std::string script = writtenFile(folder, "bad.scr", "; first\nLAYERS\n\nNOSUCH 1 2\nLAYERS\n");
    struct {
        std::vector<std::string> arguments;
        int code;
        std::vector<std::string> named;
    } const cases[] = {
        {{}, exitcode::usage, {"no drawing"}},
        {{drawing, "--nonsense"}, exitcode::usage, {"--nonsense", "--help"}},
        {{folder / "none.dxf"}, exitcode::drawingUnreadable, {"none.dxf", "eFileNotFound"}},
        {{cut}, exitcode::drawingUnreadable, {"cut.dxf:", "cannot be read"}},
        {{folder / ""}, exitcode::drawingUnreadable, {}},
        {{drawing, "--module", "none.so"}, exitcode::moduleNotLoaded, {"none.so", "eModuleNotFound"}},
        {{drawing, "--module", drawing}, exitcode::moduleNotLoaded, {"small.dxf", "eModuleLoadFailed"}},
        {{drawing, "--module", modules + "noentry.so"},
         exitcode::moduleNotLoaded,
         {"noentry.so", "eModuleEntryMissing"}},
        {{drawing, "--module", modules + "refuses.so"},
         exitcode::moduleNotLoaded,
         {"refuses.so", "eModuleAttachFailed"}},
        {{drawing, "--module", modules + "noattach.so"},
         exitcode::moduleNotLoaded,
         {"noattach.so", "DllMain"}},
        {{drawing, "--module", modules + "otherversion.so"},
         exitcode::moduleNotLoaded,
         {"otherversion.so", "interface 1 ", "Build the module again", "eModuleLoadFailed"}},
        {{drawing, "--module", modules + "unmarked.so"},
         exitcode::moduleNotLoaded,
         {"unmarked.so", "no mark", "eModuleLoadFailed"}},
        {{drawing, "--library", "none.so"}, exitcode::moduleNotLoaded, {"none.so"}},
        {{drawing, "--script", script}, exitcode::commandFailed, {"bad.scr:4: NOSUCH", "eUnknownCommand"}},
        {{drawing, "--script", folder / "none.scr"}, exitcode::scriptUnreadable, {"none.scr"}},
        {{drawing, "--module", helpful, "--command", "FAIL"},
         exitcode::commandFailed,
         {"--command: FAIL: nothing is found (eKeyNotFound)"}},
        {{drawing, "--command", "QUIT", "--output", folder / "no/such/folder/x.dxf"},
         exitcode::notWritten,
         {"x.dxf"}},
        {{drawing, "--command", "QUIT", "--trace", folder / "no/trace.json"},
         exitcode::notWritten,
         {"trace.json"}},
        {{drawing, "--command", "PLOT " + (folder / "no/x.svg")},
         exitcode::commandFailed,
         {"x.svg", "eFileAccessErr"}},
        {{drawing, "--command", "PLOT x.svg FILL NOWHERE"},
         exitcode::commandFailed,
         {"NOWHERE", "eKeyNotFound"}},
        {{drawing, "--command", "PLOT x.svg 1 1"}, exitcode::commandFailed, {"PLOT", "20 to 5000"}},
        {{drawing, "--command", "LIST YAML"}, exitcode::commandFailed, {"TABLE or JSON", "eInvalidInput"}},
        {{drawing, "--command", "SAVEAS " + drawing},
         exitcode::commandFailed,
         {"OVERWRITE", "eFileAccessErr"}},
    };
    for (const auto& each : cases) {
        const ProgramResult result = run(each.arguments);
        EXPECT_EQ(result.code, each.code) << each.arguments.back() << "\n" << result.problems;
        for (const std::string& part : each.named)
            EXPECT_TRUE(has(result.problems, part)) << part << "\n" << result.problems;
        EXPECT_FALSE(has(result.output, "another version ran"));
    }
    EXPECT_EQ(readFile(drawing), smallDrawing) << "a failure leaves the drawing as it was";
}

TEST_F(ConsoleTest, CommandsRunInOrderAndStopAtAFailure) {
    const std::string script =
        writtenFile(folder, "all.scr",
                    "; a comment\r\nGREET \"J. Doe\" 2\r\n\r\n  saluer World\r\nFAIL\r\nGREET never\r\n");
    const ProgramResult result = run({drawing, "--module", helpful, "--script", script});
    EXPECT_EQ(result.code, exitcode::commandFailed);
    EXPECT_EQ(result.output, "Hello J. Doe\nHello J. Doe\nHello World\n");
    EXPECT_TRUE(has(result.problems, "all.scr:5: FAIL")) << result.problems;
    EXPECT_TRUE(has(result.problems, "helpful has left")) << "modules are told that they leave";

    const ProgramResult piped =
        run({drawing, "--module", helpful}, "GREET A\n; note\nGREET B\nQUIT\nGREET C\n");
    EXPECT_EQ(piped.code, exitcode::ok);
    EXPECT_EQ(piped.output, "Hello A\nHello B\n");
    EXPECT_EQ(run({drawing, "--module", helpful}, "GREET A\nNOSUCH").code, exitcode::commandFailed);
    EXPECT_EQ(run({drawing}, "").code, exitcode::ok) << "an empty input is the end";
}

TEST_F(ConsoleTest, ModulesAreLoadedOnceInOrderAfterTheLibrary) {
    const ProgramResult result =
        run({"--new", "--module", helpful, "--module", helpful, "--command", "MODULES"});
    EXPECT_EQ(result.output, "VEXOTools10.so\nhelpful.so\n") << result.problems;
    // The library has left its settings behind at its first load.
    EXPECT_TRUE(has(readFile(folder / "registry.txt"), "OrderDescClrIdxNotOrdered"));
}

TEST_F(ConsoleTest, OnlyASuccessIsSavedAndOnlyWhereItWasTold) {
    const std::string output = folder / "out.dxf";
    EXPECT_EQ(
        run({drawing, "--module", helpful, "--command", "ADDLINE", "--command", "FAIL", "--output", output})
            .code,
        exitcode::commandFailed);
    EXPECT_NE(access(output.c_str(), F_OK), 0) << "nothing is saved after a failure";

    EXPECT_EQ(run({drawing, "--module", helpful, "--command", "ADDLINE", "--output", output}).code,
              exitcode::ok);
    const ProgramResult listing = run({output, "--command", "LIST JSON"});
    EXPECT_TRUE(has(listing.output, "\"LINE\"")) << listing.output;
    EXPECT_EQ(readFile(drawing), smallDrawing);

    const std::string link = folder / "link.dxf";
    ASSERT_EQ(symlink(drawing.c_str(), link.c_str()), 0);
    for (const std::string& same : {drawing, link}) {
        const ProgramResult refused =
            run({drawing, "--module", helpful, "--command", "ADDLINE", "--output", same});
        EXPECT_EQ(refused.code, exitcode::notWritten) << same;
        EXPECT_TRUE(has(refused.problems, "--overwrite"));
    }
    EXPECT_EQ(readFile(drawing), smallDrawing);
    EXPECT_EQ(
        run({drawing, "--module", helpful, "--command", "ADDLINE", "--output", drawing, "--overwrite"}).code,
        exitcode::ok);
    EXPECT_NE(readFile(drawing), smallDrawing);
    EXPECT_EQ(run({drawing, "--command", "SAVEAS " + drawing + " OVERWRITE"}).code, exitcode::ok);
}

TEST_F(ConsoleTest, CtrlCStopsTheCommandSavesNothingAndLetsModulesLeave) {
    const std::string output = folder / "out.dxf";
    for (const int number : {SIGINT, SIGTERM}) {
        RunningProgram waiting({program, drawing, "--module", helpful, "--registry", folder / "r.txt",
                                "--command", "WAIT", "--command", "GREET never", "--output", output},
                               "");
        ASSERT_TRUE(waiting.waitForProblem("waiting"));
        waiting.sendSignal(number);
        const ProgramResult result = waiting.finish();
        EXPECT_EQ(result.code, exitcode::interrupted) << result.problems;
        EXPECT_TRUE(has(result.problems, "helpful has left"));
        EXPECT_FALSE(has(result.output, "never"));
        EXPECT_NE(access(output.c_str(), F_OK), 0);
    }
    RunningProgram hanging(
        {program, drawing, "--module", helpful, "--registry", folder / "r.txt", "--command", "HANG"}, "");
    ASSERT_TRUE(hanging.waitForProblem("waiting"));
    hanging.sendSignal(SIGINT);
    hanging.sendSignal(SIGINT); // may be merged with the first one while that is on its way
    usleep(20000);
    hanging.sendSignal(SIGINT);
    EXPECT_EQ(hanging.finish().code, exitcode::interrupted);
}

TEST_F(ConsoleTest, RunsWithoutHomeAndInAnyLocale) {
    const std::string named = writtenFile(folder, "d\xC3\xA9j\xC3\xA0 vu.dxf", smallDrawing);
    const std::map<std::string, std::string> bare = {
        {"HOME", ""}, {"XDG_CONFIG_HOME", ""}, {"LC_ALL", "C"}, {"LANG", ""}, {"VEXO_REGISTRY", ""}};
    const ProgramResult result =
        run({named, "--module", helpful, "--command", "GREET \xC3\xA9t\xC3\xA9"}, "", bare);
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_EQ(result.output, "Hello \xC3\xA9t\xC3\xA9\n") << "text is UTF-8 in every locale";
    EXPECT_EQ(run({named, "--module", helpful, "--command", "GREET \xE9t\xE9"}, "", bare).output,
              "Hello \xC3\xA9t\xC3\xA9\n");
    EXPECT_TRUE(has(run({folder / "\xE9.dxf"}, "", bare).problems, "cannot be read"));
}

TEST_F(ConsoleTest, ClosedStreamsAreEndsNotFiles) {
    const std::string closed = program + " " + drawing + " --registry " + folder / "r.txt" + " --output " +
                               folder / "out.dxf" + " <&- >&- 2>&-";
    EXPECT_EQ(runProgram({"sh", "-c", closed}).code, exitcode::ok);
    EXPECT_EQ(readFile(folder / "out.dxf"), readFile(drawing));
}

TEST_F(ConsoleTest, ControlCharactersNeverReachATerminal) {
    const ProgramResult result = run({drawing, "--module", helpful, "--command", "GREET \x1B[31mred\x07"});
    EXPECT_EQ(result.output, "Hello \xEF\xBF\xBD[31mred\xEF\xBF\xBD\n");
}

TEST_F(ConsoleTest, ManyAtATimeShareOneRegistry) {
    std::vector<std::unique_ptr<RunningProgram>> programs;
    for (int i = 0; i < 8; ++i)
        programs.push_back(std::make_unique<RunningProgram>(
            std::vector<std::string>{program, drawing, "--registry", folder / "shared.txt", "--command",
                                     "LAYERS", "--output", (folder / "out" + std::to_string(i) + ".dxf")},
            ""));
    for (auto& each : programs) EXPECT_EQ(each->finish().code, exitcode::ok);
    EXPECT_TRUE(has(readFile(folder / "shared.txt"), "OrderDescClrIdxCurrentOrder"));
    EXPECT_EQ(readFile(folder / "out0.dxf"), readFile(folder / "out7.dxf"));
}

TEST_F(ConsoleTest, ADamagedRegistryIsToldAndKeptAside) {
    const std::string damaged =
        writtenFile(folder, "damaged.txt", "[HKEY_CURRENT_USER\\A]\nthis is no value\n");
    const ProgramResult result = run({drawing, "--registry", damaged, "--command", "LAYERS"});
    EXPECT_EQ(result.code, exitcode::ok);
    EXPECT_TRUE(has(result.problems, "damaged.txt:")) << result.problems;
    EXPECT_TRUE(has(readFile(damaged + ".damaged-1"), "this is no value"));
}

TEST_F(ConsoleTest, TheTraceIsATimelineOfNestedCalls) {
    const std::string trace = folder / "trace.json";
    const ProgramResult result = run({floorDrawing, "--module", VEXO_BINARY_DIR "/lib/slab.so", "--command",
                                      "CONTOURS", "--trace", trace});
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    const std::string events = readFile(trace);
    EXPECT_TRUE(isJson(events));
    EXPECT_TRUE(has(events, "VEXOGeometryTools::IsCCW") && has(events, "\"B\"") && has(events, "DllMain"));
    // Each begin has its end, and none ends before it began.
    int depth = 0;
    for (std::size_t at = 0; (at = events.find("\"ph\":\"", at)) != std::string::npos; ++at) {
        depth += events[at + 6] == 'B' ? 1 : -1;
        ASSERT_GE(depth, 0);
    }
    EXPECT_EQ(depth, 0);
}

TEST_F(ConsoleTest, QuietSilencesTheConsoleAlone) {
    const std::string output = folder / "out.dxf";
    EXPECT_TRUE(has(run({drawing, "--command", "LAYERS", "--output", output}).output, "Saved"));
    const ProgramResult quiet = run({drawing, "--quiet", "--command", "LAYERS", "--output", output});
    EXPECT_FALSE(has(quiet.output, "Saved"));
    EXPECT_TRUE(has(quiet.output, "SQUARE"));
}

TEST_F(ConsoleTest, AnInstallationGivesThePathToolsSomethingToSay) {
    const std::string root = folder / "install";
    const ProgramResult result = run({"--install", root, "--language", "1036"});
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    struct stat found {};
    EXPECT_EQ(stat((root + "/Support/Styles").c_str(), &found), 0);
    EXPECT_TRUE(has(readFile(folder / "registry.txt"), "PATHDATA"));
}

TEST_F(ConsoleTest, ListingsAreJson) {
    const ProgramResult result = run({floorDrawing, "--command", "LIST JSON"});
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_TRUE(isJson(result.output));
    const std::string file = folder / "list.json";
    EXPECT_EQ(run({floorDrawing, "--command", "LIST JSON " + file}).code, exitcode::ok);
    EXPECT_EQ(readFile(file), result.output);
    EXPECT_TRUE(has(run({drawing, "--command", "LIST"}).output, "POLYLINE"));
}

} // namespace
