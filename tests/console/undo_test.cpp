// UNDO as a user meets it: what it says, what it leaves, and the file that is saved behind it.
#include "runprogram.h"

#include "exitcodes.h"

#include <gtest/gtest.h>

namespace {

const std::string program = VEXO_BINARY_DIR "/bin/vexohost";
const std::string helpful = VEXO_BINARY_DIR "/tests/console/modules/helpful.so";
const std::string floorDrawing = VEXO_SOURCE_DIR "/examples/slab/floor.dxf";

class UndoCommandTest : public ::testing::Test {
protected:
    ProgramResult run(const std::string& lines) {
        return runProgram({program, floorDrawing, "--module", helpful, "--script",
                           writtenFile(folder, "script.scr", lines), "--output", saved},
                          "", {{"VEXO_REGISTRY", folder / "registry.txt"}});
    }
    TemporaryFolder folder;
    std::string saved = folder / "saved.dxf";
};

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(UndoCommandTest, TakesBackTheLastCommandThatChangedSomething) {
    const ProgramResult result = run("ADDLINE\nLAYERS\nUNDO\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_TRUE(has(result.output, "ADDLINE: taken back, 1 object is as before")) << result.output;
    EXPECT_EQ(readFile(saved), readFile(floorDrawing));
}

TEST_F(UndoCommandTest, CountsCommandsAndSaysWhenThereAreNoMore) {
    ProgramResult result = run("ADDLINE\nADDLINE\nADDLINE\nUNDO 2\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_NE(readFile(saved), readFile(floorDrawing));
    result = run("ADDLINE\nADDLINE\nundo 5\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_TRUE(has(result.output, "Nothing further")) << result.output;
    EXPECT_EQ(readFile(saved), readFile(floorDrawing));
}

TEST_F(UndoCommandTest, SaysWhatStays) {
    const ProgramResult result = run("ADDTWO\nUNDO\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_TRUE(has(result.output, "1 object is as before")) << result.output;
    EXPECT_TRUE(has(result.output, "1 object stays as changed while undo recording was off"))
        << result.output;
    EXPECT_NE(readFile(saved), readFile(floorDrawing));
}

TEST_F(UndoCommandTest, RefusesWhatItCannotDo) {
    EXPECT_TRUE(has(run("UNDO\n").problems, "nothing to take back (eUndoOperationNotAvailable)"));
    for (const char* wrong : {"ADDLINE\nUNDO 0\n", "ADDLINE\nUNDO -1\n", "ADDLINE\nUNDO all\n"}) {
        const ProgramResult result = run(wrong);
        EXPECT_EQ(result.code, exitcode::commandFailed) << wrong;
        EXPECT_TRUE(has(result.problems, "script.scr:2: UNDO")) << result.problems;
    }
}

TEST_F(UndoCommandTest, ACommandThatLeavesATransactionFails) {
    const ProgramResult result = run("LEAVE\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    EXPECT_TRUE(has(result.problems, "eTransactionOpenWhileCommandEnded")) << result.problems;
}

} // namespace
