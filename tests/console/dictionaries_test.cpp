// DICT and AUDIT as a person sees them.
#include "runprogram.h"

#include "exitcodes.h"

#include <gtest/gtest.h>

namespace {

const std::string program = VEXO_BINARY_DIR "/bin/vexohost";

std::string pairs(std::initializer_list<std::pair<int, std::string>> groups) {
    std::string text;
    for (const auto& [code, value] : groups) text += std::to_string(code) + "\n" + value + "\n";
    return text;
}

// The root holds a service with one record, and what the test adds.
std::string drawingWith(const std::string& rootEntries, const std::string& objects = {}) {
    return pairs({{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1024"}, {0, "ENDSEC"}}) +
           pairs({{0, "SECTION"},
                  {2, "OBJECTS"},
                  {0, "DICTIONARY"},
                  {5, "C"},
                  {330, "0"},
                  {100, "AcDbDictionary"},
                  {281, "1"},
                  {3, "VEXO_SERVICES"},
                  {350, "20"}}) +
           rootEntries +
           pairs({{0, "DICTIONARY"},
                  {5, "20"},
                  {330, "C"},
                  {100, "AcDbDictionary"},
                  {281, "1"},
                  {3, "first \"one\""},
                  {350, "21"},
                  {0, "XRECORD"},
                  {5, "21"},
                  {330, "20"},
                  {100, "AcDbXrecord"},
                  {280, "1"},
                  {1, "a text"},
                  {40, "2.5"},
                  {90, "70000"}}) +
           objects + pairs({{0, "ENDSEC"}, {0, "EOF"}});
}

class Dictionaries : public ::testing::Test {
protected:
    ProgramResult run(const std::string& drawing, const std::string& command) {
        return runProgram(
            {program, writtenFile(folder, "drawing.dxf", drawing), "--quiet", "--command", command}, "",
            {{"VEXO_REGISTRY", folder / "registry.txt"}});
    }
    TemporaryFolder folder;
};

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

} // namespace

TEST_F(Dictionaries, dictShowsTheTree) {
    const std::string drawing = drawingWith("");
    const ProgramResult tree = run(drawing, "DICT");
    EXPECT_EQ(tree.code, exitcode::ok) << tree.problems;
    EXPECT_TRUE(has(tree.output, "\n  VEXO_SERVICES  20 ")) << tree.output;
    EXPECT_TRUE(has(tree.output, "\n    first \"one\"  21      XRECORD")) << tree.output;
    EXPECT_FALSE(has(tree.output, "a text"));
    const ProgramResult contents = run(drawing, "DICT CONTENTS");
    EXPECT_TRUE(has(contents.output, "1: a text") && has(contents.output, "40: 2.5") &&
                has(contents.output, "90: 70000"))
        << contents.output;
    const ProgramResult json = run(drawing, "DICT CONTENTS JSON");
    EXPECT_TRUE(isJson(json.output)) << json.output;
    EXPECT_TRUE(has(json.output, "\"name\":\"first \\\"one\\\"\",\"handle\":\"21\",\"class\":\"XRECORD\","
                                 "\"contents\":[[1,\"a text\"],[40,2.5],[90,70000]]"))
        << json.output;
    const ProgramResult file = run(drawing, "DICT JSON \"" + (folder / "tree.json") + "\"");
    EXPECT_EQ(file.code, exitcode::ok) << file.problems;
    EXPECT_TRUE(isJson(readFile(folder / "tree.json")));
    EXPECT_EQ(run(drawing, "DICT YAML").code, exitcode::commandFailed);
}

// A tree that holds itself ends; so does one that is too deep to read.
TEST_F(Dictionaries, dictEndsWhereTheTreeDoesNot) {
    const ProgramResult circle =
        run(drawingWith(pairs({{3, "AGAIN"}, {350, "C"}, {3, "LOST"}, {350, "99"}})), "DICT");
    EXPECT_EQ(circle.code, exitcode::ok) << circle.problems;
    EXPECT_TRUE(has(circle.output, "it holds itself") && has(circle.output, "missing")) << circle.output;
    std::string chain;
    for (int i = 0; i < 3000; ++i) {
        char own[16], inner[16], owner[16];
        std::snprintf(own, sizeof own, "%X", 0x1000 + i);
        std::snprintf(inner, sizeof inner, "%X", 0x1001 + i);
        std::snprintf(owner, sizeof owner, "%X", i ? 0xFFF + i : 0xC);
        chain += pairs(
            {{0, "DICTIONARY"}, {5, own}, {330, owner}, {100, "AcDbDictionary"}, {3, "in"}, {350, inner}});
    }
    const ProgramResult deep = run(drawingWith(pairs({{3, "DEEP"}, {350, "1000"}}), chain), "DICT JSON");
    EXPECT_EQ(deep.code, exitcode::ok) << deep.problems;
    EXPECT_TRUE(isJson(deep.output) && has(deep.output, "\"cut\":true"));
}

TEST_F(Dictionaries, auditFailsForFaultsAndNamesThem) {
    const ProgramResult sound = run(drawingWith(""), "AUDIT");
    EXPECT_EQ(sound.code, exitcode::ok) << sound.problems << sound.output;
    EXPECT_TRUE(has(sound.output, "0 faults, 0 remarks")) << sound.output;
    const std::string damaged = drawingWith(pairs({{3, "LOST"}, {350, "99"}}));
    const ProgramResult table = run(damaged, "AUDIT");
    EXPECT_EQ(table.code, exitcode::commandFailed);
    EXPECT_TRUE(has(table.output, "fault     dictionary  DICTIONARY  C       its entry LOST, 99, is missing"))
        << table.output;
    EXPECT_TRUE(has(table.output, "1 fault, 0 remarks; dictionary 1")) << table.output;
    EXPECT_TRUE(has(table.problems, "the drawing has 1 fault")) << table.problems;
    const ProgramResult json = run(damaged, "AUDIT JSON");
    EXPECT_EQ(json.code, exitcode::commandFailed);
    EXPECT_TRUE(isJson(json.output) && has(json.output, "\"faults\":1,\"remarks\":0")) << json.output;
    const ProgramResult saved = run(drawingWith(""), "SAVEAS \"" + (folder / "saved.dxf") + "\" 2018");
    ASSERT_EQ(saved.code, exitcode::ok) << saved.problems;
    EXPECT_EQ(run(readFile(folder / "saved.dxf"), "AUDIT").code, exitcode::ok);
}
