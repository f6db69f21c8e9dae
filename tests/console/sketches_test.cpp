// Entities that an object of a module owns, as a user meets them: taken, listed, saved, read without the
// module and with it again, changed, taken back and put back.
#include "consoletest.h"

#include <fstream>

namespace {

const std::string sketchesModule = VEXO_BINARY_DIR "/lib/sketches.so";
const std::string layersModule = VEXO_BINARY_DIR "/lib/layers.so";

class SketchesConsole : public ConsoleTest {
protected:
    SketchesConsole() {
        EXPECT_EQ(run({"--new", "--output", drawing}).code, exitcode::ok);
        std::string bytes = readFile(drawing);
        const std::string section = "ENTITIES\r\n";
        const std::size_t place = bytes.find(section);
        EXPECT_NE(place, std::string::npos);
        std::string lines;
        for (const char* at = text; *at; ++at)
            lines += *at == '\n' ? std::string("\r\n") : std::string(1, *at);
        std::ofstream(drawing, std::ios::binary) << bytes.insert(place + section.size(), lines);
    }

    /// Runs lines with a module, and gives what they print; the drawing that they leave is `target`.
    std::string made(const std::string& source, const std::string& target, const std::string& lines,
                     const std::string& module = sketchesModule) {
        const ProgramResult result =
            runScript({source, "--module", module, "--output", target, "--overwrite"}, lines);
        EXPECT_EQ(result.code, exitcode::ok) << lines << result.problems;
        return result.output;
    }
    /// The sketches' records, byte by byte.
    static std::string recordsOf(const std::string& file) {
        const std::string bytes = readFile(file);
        const std::string name = "  0\r\nVEXOSKETCH\r\n";
        std::string records;
        for (std::size_t at = bytes.find(name); at != std::string::npos; at = bytes.find(name, at + 1))
            records += bytes.substr(at, bytes.find("  0\r\n", at + 5) - at);
        return records;
    }

    const std::string drawing = folder / "plan.dxf", taken = folder / "taken.dxf",
                      again = folder / "again.dxf";

private:
    static constexpr const char* text =
        "0\nLINE\n5\nA01\n100\nAcDbEntity\n8\n0\n62\n1\n100\nAcDbLine\n10\n0\n20\n0\n11\n10\n21\n5\n"
        "0\nCIRCLE\n5\nA02\n100\nAcDbEntity\n8\n0\n62\n3\n100\nAcDbCircle\n10\n20\n20\n0\n40\n5\n"
        "0\nLWPOLYLINE\n5\nA03\n100\nAcDbEntity\n8\n0\n100\nAcDbPolyline\n90\n3\n70\n1\n10\n0\n20\n10\n42\n1"
        "\n"
        "10\n10\n20\n10\n10\n10\n20\n20\n"
        "0\nELLIPSE\n5\nA04\n100\nAcDbEntity\n8\n0\n62\n4\n100\nAcDbEllipse\n10\n40\n20\n0\n11\n8\n21\n0\n40"
        "\n0.5\n"
        "41\n0\n42\n6.283185307179586\n"
        "0\nTEXT\n5\nA05\n100\nAcDbEntity\n8\n0\n100\nAcDbText\n10\n0\n20\n0\n40\n1\n1\nplan\n100\nAcDbText"
        "\n";
};

constexpr const char* listed = "PLAN: 4 entities\n"
                               "  AcDbLine      colour 1    0,0 to 10,5\n"
                               "  AcDbCircle    colour 3    15,-5 to 25,5\n"
                               "  AcDbPolyline  colour 256  0,5 to 10,20\n"
                               "  AcDbEllipse   colour 4    32,-4 to 48,4\n"
                               "1 sketches\n";

} // namespace

TEST_F(SketchesConsole, KeepTheirEntitiesWithAndWithoutTheirModule) {
    expectHas(made(drawing, taken, "SKETCHTAKE PLAN ALL\n\nSKETCHLIST\nAUDIT\nLIST\n"),
              {"4 entities taken, 1 of other kinds stay\n", listed, "0 faults"});
    expectHas(made(taken, again, "SKETCHLIST\n"), {listed});
    EXPECT_EQ(readFile(again), readFile(taken));

    // Without the module the record is kept whole, and saved with what was changed beside it.
    expectHas(made(taken, again, "LAYERMAKE EXTRA\nAUDIT\n", layersModule), {"0 faults"});
    EXPECT_NE(readFile(again), readFile(taken));
    EXPECT_EQ(recordsOf(again), recordsOf(taken));
    expectHas(made(again, folder / "put.dxf", "SKETCHLIST\nSKETCHPUT plan\nSKETCHLIST\nAUDIT\n"),
              {listed, "4 entities put into model space\n0 sketches\n", "0 faults"});
    const std::string put = readFile(folder / "put.dxf");
    EXPECT_TRUE(recordsOf(folder / "put.dxf").empty());
    for (const char* each : {"\nLINE\r", "\nCIRCLE\r", "\nLWPOLYLINE\r", "\nELLIPSE\r"})
        EXPECT_TRUE(has(put, each)) << each;
}

TEST_F(SketchesConsole, AreTakenBackAndDoneAgain) {
    made(drawing, taken, "SKETCHTAKE PLAN W -1,-1 60,6\n\nSKETCHLIST\n");
    const std::string undone = folder / "undone.dxf", redone = folder / "redone.dxf";
    for (const char* change :
         {"SKETCHMOVE PLAN 0,0 100,50\n", "SKETCHTAKE PLAN ALL\n\n", "SKETCHPUT PLAN\n"}) {
        SCOPED_TRACE(change);
        made(taken, again, change);
        EXPECT_NE(recordsOf(again), recordsOf(taken));
        expectHas(made(taken, undone, change + std::string("UNDO\nAUDIT\n")), {"taken back", "0 faults"});
        EXPECT_EQ(readFile(undone), readFile(taken));
        expectHas(made(taken, redone, change + std::string("UNDO\nREDO\nAUDIT\n")),
                  {"done again", "0 faults"});
        EXPECT_EQ(recordsOf(redone), recordsOf(again));
        made(again, undone, "SKETCHLIST\n"); // what was saved is read again
    }
    expectHas(made(taken, again, "SKETCHMOVE PLAN 0,0 100,50\nSKETCHLIST\n"), {"100,50 to 110,55"});
    expectHas(made(again, undone, "SKETCHLIST\n"), {"100,50 to 110,55"});
}

TEST_F(SketchesConsole, SayWhatCannotBe) {
    const auto expectFailure = [this](const std::string& lines, const std::string& told) {
        const ProgramResult result = runScript({drawing, "--module", sketchesModule}, lines);
        EXPECT_EQ(result.code, exitcode::commandFailed) << lines;
        expectHas(result.problems, {told});
    };
    expectFailure("SKETCHPUT PLAN\n", "there is no sketch \"PLAN\" (eKeyNotFound)");
    expectFailure("SKETCHMOVE PLAN 0,0 1,1\n", "there is no sketch \"PLAN\" (eKeyNotFound)");
    expectFailure("SKETCHTAKE PLAN W 500,500 600,600\n\n", "nothing was selected that a sketch can hold");
    expectFailure("SKETCHTAKE A|B ALL\n\n", "\"A|B\" cannot be the name of a sketch");
}

// A record that says more than it holds stays as it is, and is no sketch.
TEST_F(SketchesConsole, KeepWhatIsDamagedAsItStands) {
    made(drawing, taken, "SKETCHTAKE PLAN ALL\n\n");
    std::string bytes = readFile(taken);
    const std::size_t place =
        bytes.find("AcDbCircle", bytes.find("ExampleSketch\r\n 90", bytes.find("OBJECTS")));
    ASSERT_NE(place, std::string::npos);
    bytes.replace(place, 10, "NoSuchKind");
    std::ofstream(taken, std::ios::binary) << bytes;
    expectHas(made(taken, again, "SKETCHLIST\nLAYERS\n"), {"0 sketches\n"});
    EXPECT_TRUE(has(readFile(again), "NoSuchKind"));
    EXPECT_EQ(recordsOf(again), recordsOf(taken));
}
