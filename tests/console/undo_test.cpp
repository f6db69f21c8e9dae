// UNDO as a user meets it: what it says, what it leaves, and the file that is saved behind it.
#include "consoletest.h"

namespace {

class UndoCommandTest : public ConsoleTest {
protected:
    // Of a script that must go well, what it prints.
    std::string printedBy(const std::string& lines) {
        const ProgramResult result = undone(lines);
        EXPECT_EQ(result.code, exitcode::ok) << result.problems;
        return result.output;
    }
    ProgramResult undone(const std::string& lines) {
        return runScript({floorDrawing, "--module", helpful, "--output", saved, "--overwrite"}, lines);
    }
    bool isAsBefore() const { return readFile(saved) == readFile(floorDrawing); }

    std::string saved = folder / "saved.dxf";
};

TEST_F(UndoCommandTest, TakesBackTheLastCommandThatChangedSomething) {
    expectHas(printedBy("ADDLINE\nLAYERS\nUNDO\n"), {"ADDLINE: taken back, 1 object is as before"});
    EXPECT_TRUE(isAsBefore());
}

TEST_F(UndoCommandTest, CountsCommandsAndSaysWhenThereAreNoMore) {
    printedBy("ADDLINE\nADDLINE\nADDLINE\nUNDO 2\n");
    EXPECT_FALSE(isAsBefore());
    expectHas(printedBy("ADDLINE\nADDLINE\nundo 5\n"), {"Nothing further"});
    EXPECT_TRUE(isAsBefore());
}

// What was done again is saved as if it had never been taken back.
TEST_F(UndoCommandTest, DoesAgainWhatWasTakenBackUntilAChange) {
    printedBy("ADDLINE\nADDLINE\n");
    const std::string whole = readFile(saved);
    expectHas(printedBy("ADDLINE\nADDLINE\nU\nUNDO\nREDO\nLAYERS\nredo 1\n"),
              {"ADDLINE: done again, 1 object is as before it was taken back\nLayer"});
    EXPECT_EQ(readFile(saved), whole);
    expectHas(printedBy("ADDLINE\nU\nREDO 3\nU\n"), {"Nothing further to do again", "taken back"});
    EXPECT_TRUE(isAsBefore());
}

TEST_F(UndoCommandTest, SaysWhatStays) {
    expectHas(printedBy("ADDTWO\nUNDO\n"),
              {"1 object is as before", "1 object stays as changed while undo recording was off"});
    EXPECT_FALSE(isAsBefore());
}

TEST_F(UndoCommandTest, RefusesWhatItCannotDo) {
    const std::pair<const char*, const char*> cases[] = {
        {"UNDO\n", "nothing to take back (eUndoOperationNotAvailable)"},
        {"ADDLINE\nUNDO 0\n", "script.scr:2: UNDO"},
        {"ADDLINE\nUNDO -1\n", "script.scr:2: UNDO"},
        {"ADDLINE\nUNDO all\n", "script.scr:2: UNDO"},
        {"REDO\n", "nothing to do again (eUndoOperationNotAvailable)"},
        {"ADDLINE\nU\nADDLINE\nREDO\n", "nothing to do again (eUndoOperationNotAvailable)"},
        {"ADDTWO\nU\nREDO\n", "nothing to do again (eUndoOperationNotAvailable)"},
        {"REDO 0\n", "1 or more"},
        {"LEAVE\n", "eTransactionOpenWhileCommandEnded"},
    };
    for (const auto& [lines, told] : cases) {
        const ProgramResult result = undone(lines);
        EXPECT_EQ(result.code, exitcode::commandFailed) << lines;
        expectHas(result.problems, {told});
    }
}

} // namespace
