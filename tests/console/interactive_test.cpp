// The program in a terminal: what a person sees who cancels, leaves and edits lines.
#include "consoletest.h"
#include "consoletext.h"
#include "terminalprogram.h"
#include "textencoding.h"

#include <algorithm>
#include <memory>
#include <sstream>
#include <unistd.h>

namespace {

#ifdef VEXO_EDITS_LINES
constexpr bool editsLines = true;
#else
constexpr bool editsLines = false;
#endif
constexpr const char* ctrlC = "\x03";
constexpr const char* ctrlD = "\x04";
constexpr const char* escape = "\x1B";

class Interactive : public ConsoleTest {
protected:
    std::unique_ptr<TerminalProgram> started(std::vector<std::string> arguments,
                                             std::map<std::string, std::string> environment = {},
                                             unsigned short columns = 80) const {
        arguments.insert(arguments.begin(), program);
        environment.emplace("VEXO_REGISTRY", folder / "registry.txt");
        environment.emplace("XDG_STATE_HOME", folder / "state");
        environment.emplace("TERM", "xterm");
        return std::make_unique<TerminalProgram>(arguments, environment, columns);
    }
};

TEST_F(Interactive, UnsavedChangesAreAskedAbout) {
    const std::string drawing = writtenFile(folder, "plan.dxf", readFile(floorDrawing));
    const std::string question = "plan.dxf has unsaved changes [Save/Discard/Cancel] <Cancel>: ";
    for (const bool saves : {false, true}) {
        const auto console = started({drawing, "--module", helpful});
        for (const auto& [typed, answer] :
             std::vector<std::pair<std::string, std::string>>{{"ADDLINE\n", ""},
                                                              {"QUIT\n", "\n"},
                                                              {ctrlD, "cancel\n"},
                                                              {"QUIT\n", ctrlC},
                                                              {"NEW\n", "\n"},
                                                              {"OPEN " + drawing + "\n", "\n"},
                                                              {"U\n", ""},
                                                              {"ADDLINE\n", ""}}) {
            ASSERT_TRUE(console->waitFor("Command: ")) << console->shown();
            console->type(typed);
            if (answer.empty()) continue;
            ASSERT_TRUE(console->waitFor(question)) << typed << console->shown();
            console->type(answer);
        }
        ASSERT_TRUE(console->waitFor("Command: "));
        console->type("QUIT\n");
        ASSERT_TRUE(console->waitFor(question));
        console->type(saves ? "S\n" : "d\n");
        EXPECT_EQ(console->finish(), exitcode::ok);
        EXPECT_EQ(readFile(drawing) != readFile(floorDrawing), saves);
    }
}

// A list fits the terminal; what is no terminal gets it whole.
TEST_F(Interactive, ListsAreAsWideAsTheTerminal) {
    for (const unsigned short columns : {50, 60}) {
        const auto console = started({"--new", "--command", "SETVAR"}, {}, columns);
        ASSERT_EQ(console->finish(), exitcode::ok);
        std::istringstream lines(console->shown());
        std::size_t widest = 0;
        for (std::string line; std::getline(lines, line);)
            widest = std::max(widest, columnsOf(hostkit::wideFromUtf8(line.substr(0, line.find('\r')))));
        EXPECT_LE(widest, columns);
        EXPECT_GT(widest, columns - 8u);
        expectHas(console->shown(), {"TILEMODE", "..."});
    }
    EXPECT_FALSE(has(outputOf({"--new", "--command", "SETVAR"}), "..."));
}

TEST_F(Interactive, ANewDrawingIsGivenItsFileAsItIsLeft) {
    const auto console = started({"--new", "--module", helpful});
    for (const char* each : {"ADDLINE\n", "U\n", "NEW\n", "ADDLINE\n", "OPEN none.dxf\n"}) {
        ASSERT_TRUE(console->waitFor("Command: ")) << console->shown();
        console->type(each);
    }
    ASSERT_TRUE(console->waitFor("the new drawing has unsaved changes")) << console->shown();
    console->type("Discard\n");
    ASSERT_TRUE(console->waitFor("none.dxf: the drawing cannot be read"));
    ASSERT_TRUE(console->waitFor("Command: "));
    console->type("QUIT\n");
    ASSERT_TRUE(console->waitFor("[Save/Discard/Cancel]")) << "a drawing that was not opened replaces none";
    console->type("Save\n");
    ASSERT_TRUE(console->waitFor("File: "));
    console->type(folder / "new.dxf" + "\n");
    ASSERT_TRUE(console->waitFor("<save now>: "));
    console->type("\n");
    ASSERT_TRUE(console->waitFor("Saved "));
    EXPECT_EQ(console->finish(), exitcode::ok);
    expectHas(outputOf({folder / "new.dxf", "--command", "LIST JSON"}), {"\"LINE\""});
}

#ifdef VEXO_EDITS_LINES
TEST_F(Interactive, LinesAreEditedCompletedAndRemembered) {
    constexpr const char* up = "\x1B[A";
    constexpr const char* left = "\x1B[D";
    for (const bool isFirst : {true, false}) {
        const auto console = started({"--new", "--module", helpful});
        for (const std::string& keys :
             {isFirst ? std::string("SALU\tWold") + left + left + "r\n" : up + std::string("\n")}) {
            ASSERT_TRUE(console->waitFor("Command: ")) << console->shown();
            console->type(keys);
            ASSERT_TRUE(console->waitFor("Times: ")) << console->shown();
            console->type("2\n");
            ASSERT_TRUE(console->waitFor("Hello World\r\nHello World")) << console->shown();
        }
        ASSERT_TRUE(console->waitFor("Command: "));
        console->type(ctrlD);
        EXPECT_EQ(console->finish(), exitcode::ok);
    }
    EXPECT_EQ(readFile(folder / "state/vexotools/history"), "SALUER World\n");
}
#endif

// With and without line editing.
class Cancelling : public Interactive, public ::testing::WithParamInterface<const char*> {
protected:
    std::unique_ptr<TerminalProgram> start() const {
        return started({"--new", "--module", helpful}, {{"TERM", GetParam()}});
    }
    // A terminal that edits no lines gives them whole.
    std::string escapeAnswer() const {
        const bool isWhole = !editsLines || std::string_view(GetParam()) == "dumb";
        return std::string(escape) + (isWhole ? "\n" : "");
    }
};

TEST_P(Cancelling, LeavesTheCommandAndNotTheConsole) {
    const auto console = start();
    for (const std::string& key : {std::string(ctrlC), escapeAnswer()}) {
        ASSERT_TRUE(console->waitFor("Command: ")) << console->shown();
        console->type("ASK\n");
        ASSERT_TRUE(console->waitFor("First: "));
        console->type("one\n");
        ASSERT_TRUE(console->waitFor("Second: "));
        console->type(key);
        ASSERT_TRUE(console->waitFor("ASK: cancelled; what it had changed stays")) << console->shown();
    }
    ASSERT_TRUE(console->waitFor("Command: "));
    console->type("WAIT\n");
    ASSERT_TRUE(console->waitFor("waiting"));
    console->type(ctrlC);
    ASSERT_TRUE(console->waitFor("WAIT: cancelled\r\n")) << console->shown();
    ASSERT_TRUE(console->waitFor("Command: "));
    console->type(ctrlC);
    ASSERT_TRUE(console->waitFor("QUIT ends the program")) << console->shown();
    ASSERT_TRUE(console->waitFor("Command: "));
    console->type("GREET \"you there\" 1\n");
    ASSERT_TRUE(console->waitFor("Hello you there"));
    ASSERT_TRUE(console->waitFor("Command: "));
    console->type("UNDO 2\n");
    ASSERT_TRUE(console->waitFor("ASK: taken back")) << console->shown();
    ASSERT_TRUE(console->waitFor("ASK: taken back"));
    console->type("QUIT\n");
    EXPECT_EQ(console->finish(), exitcode::ok) << console->shown();
}

TEST_P(Cancelling, ASecondTimeEndsWhatDoesNotListen) {
    const auto console = start();
    ASSERT_TRUE(console->waitFor("Command: "));
    console->type("HANG\n");
    ASSERT_TRUE(console->waitFor("waiting"));
    // The second one may be merged with the first while that is on its way.
    for (int i = 0; i < 4 && console->type(ctrlC); ++i) usleep(50000);
    EXPECT_EQ(console->finish(), exitcode::interrupted);
}

INSTANTIATE_TEST_SUITE_P(Terminals, Cancelling, ::testing::Values("xterm", "dumb"),
                         [](const auto& each) { return std::string(each.param); });

} // namespace
