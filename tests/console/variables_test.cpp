// System variables and queued input as a user meets them.
#include "consoletest.h"

namespace {

class VariablesCommandTest : public ConsoleTest {
protected:
    ProgramResult helpedBy(const std::string& lines) {
        return runScript({"--new", "--quiet", "--module", helpful, "--output", saved, "--overwrite"}, lines);
    }
    std::string saved = folder / "saved.dxf";
};

TEST_F(VariablesCommandTest, SetvarShowsSetsAndLists) {
    const ProgramResult result =
        helpedBy("SETVAR ltscale 2.5\nSETVAR LTSCALE\nSETVAR USERS1 \"two words\"\nSETVAR USERS1\n"
                 "SETVAR\nVERSION\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    expectHas(result.output, {"LTSCALE = 2.5", "USERS1 = two words", "CMDNAMES", "VIEWCTR", "INSUNITS",
                              "read-only", "0 to 24", "Host version 18.0"});
    expectHas(outputOf({saved, "--command", "SETVAR LTSCALE"}), {"LTSCALE = 2.5"});
}

TEST_F(VariablesCommandTest, WhatCannotBeSetIsToldWithItsReason) {
    const std::pair<const char*, const char*> cases[] = {
        {"SETVAR NOSUCH 1", "no variable of that name; SETVAR alone lists them"},
        {"SETVAR ACADVER 1", "read-only"},
        {"SETVAR LTSCALE 0", "LTSCALE (real, above 0)"},
        {"SETVAR TILEMODE 2", "not one that it can have"},
        {"SETVAR TILEMODE 1.5", "TILEMODE (16-bit number): the value is of another type"},
        {"SETVAR INSUNITS 99", "INSUNITS (16-bit number, 0 to 24): the value is not one that it can have"},
        {"SETVAR CLAYER missing", "there is no layer \"missing\""},
        {"MSPACE", "model space is current"},
    };
    for (const auto& [line, told] : cases) {
        const ProgramResult result = helpedBy(line);
        EXPECT_EQ(result.code, exitcode::commandFailed) << line;
        expectHas(result.problems, {told, "script.scr:1: "});
    }
}

TEST_F(VariablesCommandTest, WhatACommandQueuesRunsBehindIt) {
    const ProgramResult result = helpedBy("QUEUE TEXT \"GREET You|GREET Them\"\nQUEUE TEXT | \n"
                                          "QUEUE EXPRESSION \"(command \"\"GREET\"\" \"\"All\"\")\"\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_EQ(result.output,
              "queued\nHello You\nqueued\nHello Them\nqueued\nCommand: GREET All\nHello All\n");
}

TEST_F(VariablesCommandTest, FaultyQueuesFailTheLineAndTheHostGoesOn) {
    ProgramResult result = helpedBy("QUEUE EXPRESSION \"(command \"\"GREET\"\"\"\nGREET Nobody\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    expectHas(result.problems, {"closing parenthesis is missing", "script.scr:1: QUEUE", "helpful has left"});
    EXPECT_FALSE(has(result.output, "Nobody"));

    result = helpedBy("QUEUE TEXT \"GREET Nobody\"\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    expectHas(result.problems, {"ends within a line"});
    EXPECT_FALSE(has(result.output, "Hello Nobody"));
}

} // namespace
