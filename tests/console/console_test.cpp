// The program as a whole: exit codes, messages, modules, signals. Runs what the build has made.
#include "consoletest.h"

#include <csignal>
#include <memory>
#include <unistd.h>

namespace {

// A drawing in the oldest form with one square.
const std::string smallDrawing =
    "0\nSECTION\n2\nENTITIES\n"
    "0\nPOLYLINE\n8\nSQUARE\n66\n1\n70\n1\n"
    "0\nVERTEX\n8\nSQUARE\n10\n0.0\n20\n0.0\n0\nVERTEX\n8\nSQUARE\n10\n2.0\n20\n0.0\n"
    "0\nVERTEX\n8\nSQUARE\n10\n2.0\n20\n2.0\n0\nVERTEX\n8\nSQUARE\n10\n0.0\n20\n2.0\n0\nSEQEND\n"
    "0\nENDSEC\n0\nEOF\n";

class WholeProgram : public ConsoleTest {
protected:
    // The small drawing and the helpful module, with these arguments behind them.
    std::vector<std::string> helped(std::vector<std::string> more) const {
        more.insert(more.begin(), {drawing, "--module", helpful});
        return more;
    }
    std::unique_ptr<RunningProgram> started(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), program);
        return std::make_unique<RunningProgram>(
            arguments, "", std::map<std::string, std::string>{{"VEXO_REGISTRY", folder / "registry.txt"}});
    }
    static bool exists(const std::string& file) { return access(file.c_str(), F_OK) == 0; }

    std::string drawing = writtenFile(folder, "small.dxf", smallDrawing);
    std::string output = folder / "out.dxf";
};

TEST_F(WholeProgram, HelpVersionAndCommandsNeedNoDrawing) {
    expectHas(outputOf({"--help"}), {"130", "--output FILE"});
    expectHas(outputOf({"--version"}), {"10.1"});
    expectHas(outputOf({"--list-commands", "--module", helpful}),
              {"HELPFUL", "SALUER", "PLOT", "CUILOAD", "session, no undo step"});
}

TEST_F(WholeProgram, EveryKindOfFailureHasItsCodeAndNamesItsPlace) {
    const std::string cut = writtenFile(folder, "cut.dxf", smallDrawing.substr(0, smallDrawing.size() / 2));
    const std::string script = writtenFile(folder, "bad.scr", "; first\nLAYERS\n\nNOSUCH 1 2\nLAYERS\n");
    const std::string lost = folder / "no/such/folder/";
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
        {{drawing, "--library", "none.so"}, exitcode::moduleNotLoaded, {"none.so"}},
        {{drawing, "--script", script}, exitcode::commandFailed, {"bad.scr:4: NOSUCH", "eUnknownCommand"}},
        {{drawing, "--script", folder / "none.scr"}, exitcode::scriptUnreadable, {"none.scr"}},
        {{drawing, "--command", "QUIT", "--output", lost + "x.dxf"}, exitcode::notWritten, {"x.dxf"}},
        {{drawing, "--command", "QUIT", "--trace", lost + "t.json"}, exitcode::notWritten, {"t.json"}},
    };
    for (const auto& each : cases) expectProblems(each.arguments, each.code, each.named);

    const std::pair<std::string, std::vector<std::string>> unloadable[] = {
        {"none.so", {"none.so", "eModuleNotFound"}},
        {drawing, {"small.dxf", "eModuleLoadFailed"}},
        {modules + "noentry.so", {"noentry.so", "eModuleEntryMissing"}},
        {modules + "refuses.so", {"refuses.so", "eModuleAttachFailed"}},
        {modules + "noattach.so", {"noattach.so", "DllMain"}},
        {modules + "otherversion.so", {"interface 1 ", "Build the module again", "eModuleLoadFailed"}},
        {modules + "unmarked.so", {"unmarked.so", "no mark", "eModuleLoadFailed"}},
    };
    for (const auto& [module, named] : unloadable)
        EXPECT_EQ(expectProblems({drawing, "--module", module}, exitcode::moduleNotLoaded, named), "")
            << "none of its code has run";

    const std::pair<std::string, std::vector<std::string>> failing[] = {
        {"FAIL", {"--command: FAIL: nothing is found (eKeyNotFound)"}},
        {"PLOT " + lost + "x.svg", {"x.svg", "eFileAccessErr"}},
        {"PLOT x.svg FILL NOWHERE", {"NOWHERE", "eKeyNotFound"}},
        {"PLOT x.svg 1 1", {"PLOT", "20 to 5000"}},
        {"LIST YAML", {"TABLE or JSON", "eInvalidInput"}},
        {"SAVEAS " + drawing, {"OVERWRITE", "eFileAccessErr"}},
        {"SAVE " + lost + "x.dxf", {"own file", "Nothing was saved"}},
        {"PLOT x.png", {"x.png", ".svg alone"}},
        {"UNDO 0", {"1 or more"}},
        {"SETVAR CLAYER nolayer", {"CLAYER (text): there is no layer \"nolayer\""}},
        {"SETVAR LUPREC many", {"LUPREC (16-bit number, 0 to 8): the value is of another type: \"many\""}},
        {"GREET \"Jane", {"GREET: a quotation mark is not closed: \"Jane", "eInvalidInput"}},
        {"\"LAYERS", {"a quotation mark is not closed: \"LAYERS"}},
    };
    for (const auto& [command, named] : failing)
        expectProblems(helped({"--command", command}), exitcode::commandFailed, named);
    EXPECT_EQ(readFile(drawing), smallDrawing) << "a failure leaves the drawing as it was";
}

TEST_F(WholeProgram, AnAnswerThatIsRefusedIsToldWithWhatIsWanted) {
    const std::pair<const char*, const char*> cases[] = {
        {"UNDO 0", "UNDO: \"0\" is no whole number above 0.\n"},
        {"PLOT a.svg -1 5",
         "PLOT: \"-1\" is no number above 0, nor Fill or Selected or Window or SCale or View or "
         "LAYErs or LAYOut or WEights or Background or OVERWRITE.\n"},
        {"GREET you many", "GREET: \"many\" is no whole number.\n"},
    };
    for (const auto& [command, told] : cases) expectHas(run(helped({"--command", command})).output, {told});
}

TEST_F(WholeProgram, WhatACommandLeavesOpenIsNamedOnce) {
    const ProgramResult result = runScript(
        helped({}), "LEAVEOPEN READ READ\nGREET A\nLEAVEOPEN NOTIFY\nADDLINE\nLEAVEOPEN WRITE\nHELP\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    const std::string table = "LEAVEOPEN: it left AcDbLayerTable ",
                      record = "LEAVEOPEN: it left AcDbLayerTableRecord ";
    const std::size_t first = result.problems.find(table);
    ASSERT_NE(first, std::string::npos) << result.problems;
    EXPECT_EQ(result.problems.find(table, first + 1), std::string::npos) << result.problems;
    expectHas(result.problems, {" open for read\n", record, " open for notify\n"});
    EXPECT_FALSE(has(result.problems, "GREET:") || has(result.problems, "ADDLINE:")) << result.problems;
}

TEST_F(WholeProgram, WordsThatNobodyAskedForAreToldAndTheCommandCounts) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {helped({"--command", "LAYERS all of them"}), "LAYERS: \"all of them\" was not asked for\n"},
        {helped({"--command", "GREET J. 1 Doe"}), "GREET: \"Doe\" was not asked for\n"},
        {helped({"--command", "QUEUE TEXT \"ADDLINE 1|\""}), "ADDLINE: \"1\" was not asked for\n"}};
    for (const auto& [arguments, told] : cases) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.code, exitcode::ok) << result.problems;
        expectHas(result.problems, {told});
    }
    EXPECT_FALSE(has(run(helped({"--command", "GREET \"J. Doe\" 2"})).problems, "asked for"));
    EXPECT_FALSE(has(run(helped({"--command", "QUEUE EXPRESSION \"(command \"\"GREET\"\" \"\"A\"\" 1 "
                                              "\"\"ADDLINE\"\")\""}))
                         .problems,
                     "asked for"))
        << "behind a program's command stands the next";
}

TEST_F(WholeProgram, CommandsRunInOrderAndStopAtAFailure) {
    const ProgramResult result = runScript(
        helped({}), "; a comment\r\nGREET \"J. Doe\" 2\r\n\r\n  saluer World\r\nFAIL\r\nGREET never\r\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    EXPECT_EQ(result.output, "Hello J. Doe\nHello J. Doe\nHello World\n");
    expectHas(result.problems, {"script.scr:5: FAIL", "helpful has left"});

    EXPECT_EQ(outputOf(helped({}), "GREET A\n; note\nGREET B\nQUIT\nGREET C\n"), "Hello A\nHello B\n");
    EXPECT_EQ(run(helped({}), "GREET A\nNOSUCH").code, exitcode::commandFailed);
    EXPECT_EQ(outputOf({drawing}, ""), "") << "an empty input is the end";
}

TEST_F(WholeProgram, ModulesAreLoadedOnceInOrderAfterTheLibrary) {
    const std::string list =
        outputOf({"--new", "--module", helpful, "--module", helpful, "--command", "MODULES"});
    const std::size_t library = list.find("\nVEXOTools10.so  allowed    several"),
                      module = list.find("\nhelpful.so ");
    EXPECT_LT(library, module) << list;
    EXPECT_EQ(list.find("\nhelpful.so ", module + 1), std::string::npos) << list;
    expectHas(list, {helpful});
    expectHas(outputOf({"--new", "--module", helpful, "--command", "modules process"}), {program, helpful});
    expectProblems({"--new", "--command", "MODULES ALL"}, exitcode::commandFailed, {"PROCESS"});
    // The library has left its settings behind at its first load.
    expectHas(readFile(folder / "registry.txt"), {"OrderDescClrIdxNotOrdered"});
}

TEST_F(WholeProgram, OnlyASuccessIsSavedAndOnlyWhereItWasTold) {
    expectProblems(helped({"--command", "ADDLINE", "--command", "FAIL", "--output", output}),
                   exitcode::commandFailed, {});
    EXPECT_FALSE(exists(output)) << "nothing is saved after a failure";

    outputOf(helped({"--command", "ADDLINE", "--output", output}));
    expectHas(outputOf({output, "--command", "LIST JSON"}), {"\"LINE\""});
    EXPECT_EQ(readFile(drawing), smallDrawing);

    const std::string link = folder / "link.dxf";
    ASSERT_EQ(symlink(drawing.c_str(), link.c_str()), 0);
    for (const std::string& same : {drawing, link})
        expectProblems(helped({"--command", "ADDLINE", "--output", same}), exitcode::notWritten,
                       {"--overwrite"});
    EXPECT_EQ(readFile(drawing), smallDrawing);
    outputOf(helped({"--command", "ADDLINE", "--output", drawing, "--overwrite"}));
    EXPECT_NE(readFile(drawing), smallDrawing);
    outputOf({drawing, "--command", "SAVEAS " + drawing + " OVERWRITE"});
}

TEST_F(WholeProgram, AnotherFormIsSavedAndItsChangesAreListed) {
    const std::string binary = folder / "binary.dxf";
    const std::string older = folder / "older.dxf";
    EXPECT_TRUE(has(outputOf({floorDrawing, "-o", older, "--form", "R12"}), "LWPOLYLINE  POLYLINE"));
    EXPECT_TRUE(has(outputOf({floorDrawing, "--command", "SAVEAS " + binary + " BINARY R12"}), "LWPOLYLINE"));
    EXPECT_TRUE(has(readFile(older), "AC1009"));
    EXPECT_TRUE(has(readFile(binary).substr(0, 32), " Binary DXF"));
    const std::string again = folder / "again.dxf";
    outputOf({binary, "-o", again, "--form", "TEXT"});
    EXPECT_TRUE(readFile(again) == readFile(older));
}

TEST_F(WholeProgram, CtrlCStopsTheCommandSavesNothingAndLetsModulesLeave) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto waiting =
            started(helped({"--command", "WAIT", "--command", "GREET never", "--output", output}));
        ASSERT_TRUE(waiting->waitForProblem("waiting"));
        waiting->sendSignal(number);
        const ProgramResult result = waiting->finish();
        EXPECT_EQ(result.code, exitcode::interrupted) << result.problems;
        expectHas(result.problems, {"helpful has left"});
        EXPECT_FALSE(has(result.output, "never"));
        EXPECT_FALSE(exists(output));
    }
    const auto hanging = started(helped({"--command", "HANG"}));
    ASSERT_TRUE(hanging->waitForProblem("waiting"));
    hanging->sendSignal(SIGINT);
    hanging->sendSignal(SIGINT); // may be merged with the first one while that is on its way
    usleep(20000);
    hanging->sendSignal(SIGINT);
    EXPECT_EQ(hanging->finish().code, exitcode::interrupted);
}

TEST_F(WholeProgram, RunsWithoutHomeAndInAnyLocale) {
    drawing = writtenFile(folder, "d\xC3\xA9j\xC3\xA0 vu.dxf", smallDrawing);
    const std::map<std::string, std::string> bare = {
        {"HOME", ""}, {"XDG_CONFIG_HOME", ""}, {"LC_ALL", "C"}, {"LANG", ""}, {"VEXO_REGISTRY", ""}};
    for (const char* summer : {"\xC3\xA9t\xC3\xA9", "\xE9t\xE9"})
        EXPECT_EQ(outputOf(helped({"--command", std::string("GREET ") + summer}), "", bare),
                  "Hello \xC3\xA9t\xC3\xA9\n")
            << "text is UTF-8 in every locale";
    expectHas(run({folder / "\xE9.dxf"}, "", bare).problems, {"cannot be read"});
}

TEST_F(WholeProgram, ClosedStreamsAreEndsNotFiles) {
    EXPECT_EQ(runInShell(program + " " + drawing + " -q --output " + output + " <&- >&- 2>&-").code,
              exitcode::ok)
        << "nothing was printed";
    EXPECT_EQ(readFile(output), smallDrawing);
    for (const std::string& lost :
         {drawing + " --command LAYERS >/dev/full", drawing + " --command LAYERS >&-",
          drawing + " --command \"LIST JSON\" >&-", std::string("--help >&-"),
          std::string("--version >&-")}) {
        const ProgramResult result = runInShell(program + " " + lost);
        EXPECT_EQ(result.code, exitcode::notWritten) << lost;
        expectHas(result.problems, {"could not be written to standard output"});
    }
}

TEST_F(WholeProgram, ControlCharactersNeverReachATerminal) {
    EXPECT_EQ(outputOf(helped({"--command", "GREET \x1B[31mred\x07"})),
              "Hello \xEF\xBF\xBD[31mred\xEF\xBF\xBD\n");
}

TEST_F(WholeProgram, ManyAtATimeShareOneRegistry) {
    std::vector<std::unique_ptr<RunningProgram>> programs;
    for (int i = 0; i < 8; ++i)
        programs.push_back(started(
            {drawing, "--command", "LAYERS", "--output", folder / "out" + std::to_string(i) + ".dxf"}));
    for (auto& each : programs) EXPECT_EQ(each->finish().code, exitcode::ok);
    expectHas(readFile(folder / "registry.txt"), {"OrderDescClrIdxCurrentOrder"});
    EXPECT_EQ(readFile(folder / "out0.dxf"), readFile(folder / "out7.dxf"));
}

TEST_F(WholeProgram, ADamagedRegistryIsToldAndKeptAside) {
    const std::string damaged =
        writtenFile(folder, "damaged.txt", "[HKEY_CURRENT_USER\\A]\nthis is no value\n");
    expectProblems({drawing, "--registry", damaged, "--command", "LAYERS"}, exitcode::ok, {"damaged.txt:"});
    expectHas(readFile(damaged + ".damaged-1"), {"this is no value"});
}

TEST_F(WholeProgram, TheTraceIsATimelineOfNestedCalls) {
    const std::string trace = folder / "trace.json";
    outputOf({floorDrawing, "--module", slabModule, "--command", "CONTOURS", "--trace", trace});
    const std::string events = readFile(trace);
    EXPECT_TRUE(isJson(events));
    expectHas(events, {"VEXOGeometryTools::IsCCW", "\"B\"", "DllMain", "\"shown anew\",\"ph\":\"C\""});
    // Each begin has its end, and none ends before it began.
    int depth = 0;
    for (std::size_t at = 0; (at = events.find("\"ph\":\"", at)) != std::string::npos; ++at) {
        if (events[at + 6] != 'C') depth += events[at + 6] == 'B' ? 1 : -1;
        ASSERT_GE(depth, 0);
    }
    EXPECT_EQ(depth, 0);
}

TEST_F(WholeProgram, TheRecordTellsEachCommandAndWhatFailed) {
    const std::string record = folder / "record.json", picture = folder / "picture.svg";
    const std::vector<std::string> work = {drawing,     "--record",       record,      "--output",
                                           output,      "--quiet",        "--command", "NO \"quoted\"",
                                           "--command", "PLOT " + picture};
    std::vector<std::string> further = work;
    further.insert(further.end(), {"--overwrite", "--keep-going"});
    const std::string failed =
        R"([{"command":"NO \"quoted\"","status":"eUnknownCommand","reason":"there is no)";
    for (const bool keepsGoing : {false, true}) {
        expectProblems(keepsGoing ? further : work, exitcode::commandFailed, {"NO"});
        const std::string text = readFile(record);
        EXPECT_TRUE(isJson(text)) << text;
        expectHas(text, {failed, "\"exitCode\":1", "\"problemCount\":1", "vexohost: --command: NO"});
        EXPECT_EQ(has(text, "PLOT"), keepsGoing) << text;
        EXPECT_EQ(has(text, "\"status\":\"eOk\""), keepsGoing) << text;
        EXPECT_EQ(readFile(picture).empty(), !keepsGoing);
        EXPECT_TRUE(readFile(output).empty()) << "saved behind a failure";
    }
    expectProblems({folder / "none.dxf", "--record", record, "--overwrite"}, exitcode::drawingUnreadable,
                   {"none"});
    expectHas(readFile(record),
              {"\"exitCode\":3", "\"commands\":[]", "none.dxf: the drawing cannot be read"});
}

TEST_F(WholeProgram, QuietSilencesTheConsoleAlone) {
    std::vector<std::string> layers = {drawing, "--command", "LAYERS", "--output", output};
    expectHas(outputOf(layers), {"Saved"});
    layers.insert(layers.end(), {"--quiet", "--overwrite"});
    const std::string quiet = outputOf(layers);
    EXPECT_FALSE(has(quiet, "Saved"));
    expectHas(quiet, {"SQUARE"});
}

TEST_F(WholeProgram, AnInstallationGivesThePathToolsSomethingToSay) {
    outputOf({"--install", folder / "install", "--language", "1036"});
    EXPECT_TRUE(exists(folder / "install/Support/Styles"));
    expectHas(readFile(folder / "registry.txt"), {"PATHDATA"});
}

TEST_F(WholeProgram, ListingsAreJson) {
    const std::string listing = outputOf({floorDrawing, "--command", "LIST JSON"});
    EXPECT_TRUE(isJson(listing));
    const std::string file = folder / "list.json";
    outputOf({floorDrawing, "--command", "LIST JSON " + file});
    EXPECT_EQ(readFile(file), listing);
    expectHas(outputOf({drawing, "--command", "LIST"}), {"POLYLINE"});
}

} // namespace
