// DICT, AUDIT, RECOVER and PURGE as a person sees them.
#include "consoletest.h"

namespace {

// The root holds a service with one record, and what the test adds.
std::string drawingWith(const std::string& rootEntries, const std::string& objects = {}) {
    return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1024\n0\nENDSEC\n0\nSECTION\n2\nOBJECTS\n"
           "0\nDICTIONARY\n5\nC\n330\n0\n100\nAcDbDictionary\n281\n1\n3\nVEXO_SERVICES\n350\n20\n" +
           rootEntries +
           "0\nDICTIONARY\n5\n20\n330\nC\n100\nAcDbDictionary\n281\n1\n3\nfirst \"one\"\n350\n21\n"
           "0\nXRECORD\n5\n21\n330\n20\n100\nAcDbXrecord\n280\n1\n1\na text\n40\n2.5\n90\n70000\n" +
           objects + "0\nENDSEC\n0\nEOF\n";
}

class Dictionaries : public ConsoleTest {
protected:
    std::vector<std::string> command(const std::string& drawing, const std::string& line) const {
        return {writtenFile(folder, "drawing.dxf", drawing), "--quiet", "--command", line};
    }
    std::string outputFor(const std::string& drawing, const std::string& line) {
        return outputOf(command(drawing, line));
    }
};

TEST_F(Dictionaries, dictShowsTheTree) {
    const std::string drawing = drawingWith("");
    const std::string tree = outputFor(drawing, "DICT");
    expectHas(tree, {"\n  VEXO_SERVICES  20 ", "\n    first \"one\"  21      XRECORD"});
    EXPECT_FALSE(has(tree, "a text"));
    expectHas(outputFor(drawing, "DICT CONTENTS"), {"1: a text", "40: 2.5", "90: 70000"});
    const std::string json = outputFor(drawing, "DICT CONTENTS JSON");
    EXPECT_TRUE(isJson(json)) << json;
    expectHas(json, {"\"name\":\"first \\\"one\\\"\",\"handle\":\"21\",\"class\":\"XRECORD\","
                     "\"contents\":[[1,\"a text\"],[40,2.5],[90,70000]]"});
    outputFor(drawing, "DICT JSON \"" + (folder / "tree.json") + "\"");
    EXPECT_TRUE(isJson(readFile(folder / "tree.json")));
    expectProblems(command(drawing, "DICT YAML"), exitcode::commandFailed, {"CONTENTS"});
}

// A tree that holds itself ends; so does one that is too deep to read.
TEST_F(Dictionaries, dictEndsWhereTheTreeDoesNot) {
    expectHas(outputFor(drawingWith("3\nAGAIN\n350\nC\n3\nLOST\n350\n99\n"), "DICT"),
              {"it holds itself", "missing"});
    std::string chain;
    for (int i = 0; i < 3000; ++i) {
        char link[100];
        std::snprintf(link, sizeof link,
                      "0\nDICTIONARY\n5\n%X\n330\n%X\n100\nAcDbDictionary\n3\nin\n350\n%X\n", 0x1000 + i,
                      i ? 0xFFF + i : 0xC, 0x1001 + i);
        chain += link;
    }
    const std::string deep = outputFor(drawingWith("3\nDEEP\n350\n1000\n", chain), "DICT JSON");
    EXPECT_TRUE(isJson(deep));
    expectHas(deep, {"\"cut\":true"});
}

TEST_F(Dictionaries, auditFailsForFaultsAndNamesThem) {
    expectHas(outputFor(drawingWith(""), "AUDIT"), {"0 faults, "});
    const std::string damaged = drawingWith("3\nLOST\n350\n99\n");
    expectHas(expectProblems(command(damaged, "AUDIT"), exitcode::commandFailed, {"the drawing has 1 fault"}),
              {"fault     dictionary  DICTIONARY  C         29  its entry LOST, 99, is missing",
               ": 1 fault, ", "; dictionary 1"});
    const std::string json = expectProblems(command(damaged, "AUDIT JSON"), exitcode::commandFailed, {});
    EXPECT_TRUE(isJson(json));
    expectHas(json, {"\"faults\":1,", "\"handle\":\"C\",\"line\":29,\"finding\":"});
    const std::string file = writtenFile(folder, "damaged.dxf", damaged);
    const std::string fixed = folder / "fixed.dxf";
    expectHas(runScript({file, "--output", fixed}, "AUDIT FIX\nAUDIT\n").output,
              {"repaired  DICTIONARY  C", "its entry LOST", " 0 lost, 0 left", ": 0 faults"});
    EXPECT_FALSE(has(readFile(fixed), "LOST"));
    expectHas(runScript({file, "--output", folder / "undone.dxf"}, "AUDIT FIX JSON\nU\n").output,
              {"\"outcome\":\"repaired\"", "AUDIT: taken back"});
    EXPECT_EQ(readFile(folder / "undone.dxf"), damaged);
    outputFor(drawingWith(""), "SAVEAS \"" + (folder / "saved.dxf") + "\" 2018");
    expectHas(outputFor(readFile(folder / "saved.dxf"), "AUDIT"), {"0 faults, "});
}

TEST_F(Dictionaries, purgeListsThenErases) {
    const std::string drawing = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nSECTION\n2\n"
                                "TABLES\n0\nTABLE\n2\nLAYER\n0\nLAYER\n2\nOLD\n70\n0\n62\n3\n6\nCONTINUOUS\n"
                                "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";
    const std::string table = outputFor(drawing, "PURGE LIST");
    expectHas(table, {"layer  ", "  OLD", "Unused: 1 layer"});
    const std::string json = outputFor(drawing, "PURGE LIST JSON");
    EXPECT_TRUE(isJson(json)) << json;
    const std::string file = folder / "purged.dxf";
    const std::string input = writtenFile(folder, "unused.dxf", drawing);
    expectHas(runScript({input, "--output", file}, "PURGE\nPURGE\n").output,
              {"Purged: 1 layer", "Nothing is unused"});
    EXPECT_FALSE(has(readFile(file), "OLD"));
    expectProblems(command(drawing, "PURGE ALL"), exitcode::commandFailed, {"LIST"});
}

// A file that no drawing can be made of is checked all the same, beside the drawing that is open.
TEST_F(Dictionaries, auditOfAFileThatCannotBeOpened) {
    const std::string whole = drawingWith("3\nLOST\n350\n99\n");
    const std::string cut = writtenFile(folder, "cut.dxf", whole.substr(0, whole.rfind("0\nEOF")));
    expectProblems({cut}, exitcode::drawingUnreadable, {"RECOVER may help"});
    expectHas(expectProblems({"--new", "--quiet", "--command", "AUDIT OF \"" + cut + "\""},
                             exitcode::commandFailed, {"the drawing has 1 fault"}),
              {"the mark EOF is missing"});
    const std::string json = expectProblems(
        {"--new", "--quiet", "--command", "AUDIT OF \"" + cut + "\" JSON"}, exitcode::commandFailed, {});
    EXPECT_TRUE(isJson(json));
    expectProblems({"--new", "--quiet", "--command", "AUDIT OF /nowhere/at/all.dxf"}, exitcode::commandFailed,
                   {"No such file"});
    expectProblems({"--new", "--quiet", "--command", "AUDIT OF"}, exitcode::commandFailed,
                   {"missing behind OF"});
}

TEST_F(Dictionaries, recoverOpensWhatOpenRefuses) {
    const std::string whole = drawingWith("3\nLOST\n350\n99\n");
    const std::string cut = writtenFile(folder, "cut.dxf", whole.substr(0, whole.rfind("90\n70000")));
    const std::string saved = folder / "saved.dxf";
    const std::string recover = "RECOVER \"" + cut + "\"";
    expectHas(runScript({"--new", "--output", saved}, recover + "\nAUDIT\nDICT CONTENTS\n").output,
              {"XRECORD", "kept", "LOST", "Recovered ", "0 faults", "40: 2.5"});
    expectHas(runScript({"--new"}, recover + "\nSAVE\n").problems, {"SAVEAS FILE gives it one"});
    expectHas(outputFor(readFile(saved), "AUDIT"), {"0 faults"});
    EXPECT_EQ(readFile(cut), whole.substr(0, whole.rfind("90\n70000")));
    const std::string none = writtenFile(folder, "none.dxf", "no drawing at all\n");
    expectProblems({"--new", "--quiet", "--command", "RECOVER \"" + none + "\""}, exitcode::commandFailed,
                   {"nothing of a drawing"});
}

} // namespace
