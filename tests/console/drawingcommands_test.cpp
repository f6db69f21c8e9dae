// OPEN, NEW, SAVE, SAVEAS and HELP in scripts, where nobody can be asked.
#include "consoletest.h"

namespace {

class DrawingCommands : public ConsoleTest {
protected:
    ProgramResult runLines(const std::string& lines) {
        return runScript({drawing, "--module", helpful}, lines);
    }
    int linesIn(const std::string& file) {
        const std::string listing = outputOf({file, "--command", "LIST JSON"});
        int count = 0;
        for (std::size_t at = 0; (at = listing.find("\"LINE\"", at)) != std::string::npos; ++at) ++count;
        return count;
    }

    std::string drawing = writtenFile(folder, "plan.dxf", readFile(floorDrawing));
    std::string other = folder / "other.dxf";
    int linesBefore = linesIn(drawing);
};

TEST_F(DrawingCommands, SaveReplacesTheOpenedFileAndNoOther) {
    const ProgramResult saved = runLines("ADDLINE\nSAVEAS " + other + "\nADDLINE\nSAVE\n");
    EXPECT_EQ(saved.code, exitcode::ok) << saved.problems;
    expectHas(saved.output, {"Saved " + other, "Saved " + drawing});
    EXPECT_EQ(linesIn(other), linesBefore + 1);
    EXPECT_EQ(linesIn(drawing), linesBefore + 2);

    const ProgramResult begun = runLines("NEW\nADDLINE\nSAVEAS " + other + " OVERWRITE\nADDLINE\nSAVE\n");
    EXPECT_EQ(begun.code, exitcode::ok) << begun.problems;
    EXPECT_EQ(linesIn(other), 2) << "the drawing without a file has the first that it was saved to";
    EXPECT_EQ(linesIn(drawing), linesBefore + 2);
}

TEST_F(DrawingCommands, OpenTakesThePlaceOfTheDrawing) {
    const ProgramResult result =
        runLines("ADDLINE\nSAVE\nNEW\nLIST\nOPEN \"" + drawing + "\"\nADDLINE\nU\nOPEN " + floorDrawing +
                 "\nADDLINE\nNEW DISCARD\nSAVEAS " + other + "\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    expectHas(result.output, {"\n0 entities", "ADDLINE: taken back"});
    EXPECT_EQ(linesIn(other), 0);
    EXPECT_EQ(linesIn(drawing), linesBefore + 1);
}

TEST_F(DrawingCommands, WhatWouldLoseChangesOrFilesFailsInWords) {
    const std::string before = readFile(drawing);
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"ADDLINE\nNEW", {"NEW: plan.dxf has unsaved changes", "DISCARD"}},
        {"ADDLINE\nOPEN " + floorDrawing, {"OPEN: plan.dxf has unsaved changes", "DISCARD"}},
        {"ADDLINE\nSAVEAS " + other + " R12\nSAVEAS " + other + "2 R12\nNEW", {"unsaved changes"}},
        {"OPEN " + floorDrawing + " DISCRAD", {"DISCARD"}},
        {"OPEN", {"a file name is needed"}},
        {"OPEN none.dxf", {"none.dxf: the drawing cannot be read", "eFileNotFound"}},
        {"NEW\nSAVE", {"no file yet", "SAVEAS FILE"}},
        {"HELP NOSUCH", {"there is no command \"NOSUCH\""}},
    };
    for (const auto& [lines, named] : cases) {
        const ProgramResult result = runLines(lines);
        EXPECT_EQ(result.code, exitcode::commandFailed) << lines;
        expectHas(result.problems, named);
    }
    EXPECT_EQ(readFile(drawing), before);
    EXPECT_EQ(runLines("ADDLINE\nQUIT\n").code, exitcode::ok) << "a script leaves without saving";
    EXPECT_EQ(readFile(drawing), before);
}

TEST_F(DrawingCommands, HelpKnowsEachCommand) {
    expectHas(outputOf({"--new", "--module", helpful, "--command", "help"}),
              {"CUILOAD", "Commands of modules: SALUER, FAIL"});
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"HELP _plot", {"PLOT FILE.svg [OVERWRITE]", "20 to 5000"}},
        {"HELP CUILOAD", {"CUILOAD FILE"}},
        {"HELP saluer", {"SALUER", "_GREET", "HELPFUL", helpful}},
        {"HELP UNDO", {"no undo step"}},
    };
    for (const auto& [command, named] : cases)
        expectHas(outputOf({"--new", "--module", helpful, "--command", command}), named);
}

} // namespace
