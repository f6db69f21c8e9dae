// System variables and queued input as a user meets them.
#include "runprogram.h"

#include "exitcodes.h"

#include <gtest/gtest.h>

namespace {

const std::string program = VEXO_BINARY_DIR "/bin/vexohost";
const std::string helpful = VEXO_BINARY_DIR "/tests/console/modules/helpful.so";

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class VariablesCommandTest : public ::testing::Test {
protected:
    ProgramResult run(const std::string& lines, const std::vector<std::string>& more = {}) {
        std::vector<std::string> command = {program, "--new",    "--module",
                                            helpful, "--script", writtenFile(folder, "script.scr", lines)};
        command.insert(command.end(), more.begin(), more.end());
        return runProgram(command, "", {{"VEXO_REGISTRY", folder / "registry.txt"}});
    }
    TemporaryFolder folder;
};

TEST_F(VariablesCommandTest, SetvarShowsSetsAndLists) {
    const std::string saved = folder / "saved.dxf";
    const ProgramResult result = run(
        "SETVAR ltscale 2.5\nSETVAR LTSCALE\nSETVAR USERS1 \"two words\"\nSETVAR USERS1\nSETVAR\nVERSION\n",
        {"--output", saved});
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_TRUE(has(result.output, "LTSCALE = 2.5")) << result.output;
    EXPECT_TRUE(has(result.output, "USERS1 = two words")) << result.output;
    for (const char* row : {"CMDNAMES", "VIEWCTR", "INSUNITS", "read-only", "0 to 24", "Host version 18.0"})
        EXPECT_TRUE(has(result.output, row)) << row << "\n" << result.output;
    const ProgramResult again = runProgram({program, saved, "--command", "SETVAR LTSCALE"});
    EXPECT_TRUE(has(again.output, "LTSCALE = 2.5")) << again.output << again.problems;
}

TEST_F(VariablesCommandTest, WhatCannotBeSetIsToldWithItsReason) {
    struct {
        const char* line;
        const char* told;
    } const cases[] = {
        {"SETVAR NOSUCH 1", "no variable of that name"},       {"SETVAR ACADVER 1", "read-only"},
        {"SETVAR TILEMODE 2", "not one that it can have"},     {"SETVAR TILEMODE 1.5", "another type"},
        {"SETVAR CLAYER missing", "not one that it can have"}, {"MSPACE", "model space is current"}};
    for (const auto& each : cases) {
        const ProgramResult result = run(std::string(each.line) + "\n");
        EXPECT_EQ(result.code, exitcode::commandFailed) << each.line;
        EXPECT_TRUE(has(result.problems, each.told)) << each.line << ": " << result.problems;
        EXPECT_TRUE(has(result.problems, "script.scr:1: ")) << result.problems;
    }
}

TEST_F(VariablesCommandTest, WhatACommandQueuesRunsBehindIt) {
    const ProgramResult result = run("QUEUE TEXT \"GREET You|GREET Them\"\nQUEUE TEXT | \n"
                                     "QUEUE EXPRESSION \"(command \"\"GREET\"\" \"\"All\"\")\"\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    const std::size_t you = result.output.find("Hello You"), them = result.output.find("Hello Them"),
                      all = result.output.find("Hello All");
    EXPECT_LT(result.output.find("queued"), you);
    EXPECT_LT(you, them);
    EXPECT_LT(them, all);
    EXPECT_NE(all, std::string::npos) << result.output;
}

TEST_F(VariablesCommandTest, FaultyQueuesFailTheLineAndTheHostGoesOn) {
    ProgramResult result = run("QUEUE EXPRESSION \"(command \"\"GREET\"\"\"\nGREET Nobody\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    EXPECT_TRUE(has(result.problems, "closing parenthesis is missing")) << result.problems;
    EXPECT_TRUE(has(result.problems, "script.scr:1: QUEUE")) << result.problems;
    EXPECT_FALSE(has(result.output, "Nobody"));
    EXPECT_TRUE(has(result.problems, "helpful has left"));

    result = run("QUEUE EXPRESSION " + std::string(600, 'x') + "\nGREET Somebody\n");
    EXPECT_EQ(result.code, exitcode::ok);
    EXPECT_TRUE(has(result.problems, "512 characters")) << result.problems;
    EXPECT_TRUE(has(result.output, "Hello Somebody"));

    result = run("QUEUE TEXT \"GREET Nobody\"\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    EXPECT_TRUE(has(result.problems, "ends within a line")) << result.problems;
    EXPECT_FALSE(has(result.output, "Hello Nobody"));
}

} // namespace
