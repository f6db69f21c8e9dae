#include "consoletest.h"
#include "metafilewalk.h"

namespace {

using metafiletest::Record;
using metafiletest::Walked;

class MetafileCommand : public ConsoleTest {
protected:
    /// A line, a circle in a block that is inserted at twice its size, and a point, so far out.
    std::string drawing(double far = 0.0) {
        const std::string x = std::to_string(far), right = std::to_string(far + 30.0);
        return writtenFile(
            folder, "d.dxf",
            "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n8\n0\n2\nB\n70\n0\n10\n0.0\n20\n0.0\n0\nCIRCLE\n8\n0\n10\n"
            "0.0\n20\n0.0\n40\n5."
            "0\n0\nENDBLK\n8\n0\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n" +
                x + "\n20\n0.0\n11\n" + right + "\n21\n40.0\n0\nINSERT\n8\n0\n2\nB\n10\n" + x +
                "\n20\n30.0\n41\n2.0\n42\n2.0\n43\n2.0\n0\nPOINT\n8\n0\n10\n" + x +
                "\n20\n0.0\n0\nENDSEC\n0\nEOF\n");
    }
    Walked picture(const std::string& name) { return Walked::ofFile(folder / name); }
};

TEST_F(MetafileCommand, CopiesAreDrawnAtTheScaleAndTheDrawingStays) {
    for (const double far : {0.0, 9e10}) {
        const std::string file = drawing(far);
        const std::string before = folder.read("d.dxf");
        const std::string output =
            outputOf({file, "--command", "METAFILE " + (folder / "a.emf") + " OVERWRITE SCALE 10",
                      "--command", "METAFILE " + (folder / "b.emf") + " OVERWRITE ASPECT 2 SELECTED ALL",
                      "--overwrite", "--output", folder / "out.dxf"});
        expectHas(output, {"a.emf: 2 entities", "Not in the picture: POINT 1"});
        EXPECT_EQ(folder.read("out.dxf"), before);
        // The circle reaches ten units to the left of the line and as far up.
        EXPECT_EQ(picture("a.emf").bounds(), (std::vector<int>{0, -400, 400, 0}));
        std::size_t strokes = 0;
        for (const Record& each : picture("a.emf").records) strokes += each.type == 54;
        EXPECT_NEAR(static_cast<double>(strokes), 101, 1);
    }
}

TEST_F(MetafileCommand, WhatCannotBeMeantIsRefusedAndNoFileIsMade) {
    const std::string file = drawing();
    const std::string a = folder / "a.emf";
    const std::pair<std::string, std::string> cases[] = {
        {"METAFILE " + a + " ASPECT 1 SCALE 2", "not both"},
        {"METAFILE " + a + " SCALE 0", "above 0"},
        {"METAFILE " + a + " WIDE", "behind the file stand"},
        {"METAFILE " + (folder / "a.svg"), ".emf alone"},
        {"METAFILE " + (folder / "none/a.emf"), "could not be written"},
        {"METAFILE " + file, "d.dxf"},
        {"METAFILE " + a + " SELECTED " + std::string("W 5000,5000 6000,6000 \"\""), "nothing was selected"},
    };
    for (const auto& [command, problem] : cases)
        expectProblems({file, "--command", command}, exitcode::commandFailed, {problem});
    const std::string dense =
        writtenFile(folder, "dense.dxf",
                    "0\nSECTION\n2\nENTITIES\n0\nHATCH\n8\n0\n100\nAcDbHatch\n10\n0\n20\n0\n30\n0\n210\n0\n22"
                    "0\n0\n230\n1\n2\nP\n70\n0\n71\n0\n"
                    "91\n1\n92\n2\n72\n0\n73\n1\n93\n3\n10\n0\n20\n0\n10\n900\n20\n0\n10\n0\n20\n900\n97\n0\n"
                    "75\n0\n76\n1\n52\n0\n41\n1\n77\n0\n"
                    "78\n1\n53\n30\n43\n0\n44\n0\n45\n0\n46\n0.00001\n79\n0\n98\n0\n0\nENDSEC\n0\nEOF\n");
    expectProblems({dense, "--command", "METAFILE " + a}, exitcode::commandFailed,
                   {"HATCH too dense for lines 1"});
    EXPECT_FALSE(std::filesystem::exists(a));
}

// The bar of the example module draws a filled strip; the library captures its outline and its filling.
TEST_F(MetafileCommand, EntitiesOfApplicationsAreDrawnAndExplodedAsTheyDrawThemselves) {
    const std::string module = std::string(VEXO_BINARY_DIR) + "/lib/bars.so";
    const ProgramResult result =
        runScript({"--new", "--module", module},
                  "BAR 10,10 110,10 20\nCAPTURE ALL\nCAPTURE ALL \"\" JSON " + (folder / "bar.json") +
                      "\nMETAFILE " + (folder / "bar.emf") + " SCALE 2\nEXPLODE ALL\nLIST\nU\nLIST\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    expectHas(result.output,
              {"2 entities drawn by 1 entity", "bar.emf: 1 entity", "1 entity exploded into 2"});
    expectHas(folder.read("bar.json"), {"\"type\":\"LWPOLYLINE\"", "\"type\":\"HATCH\"",
                                        "\"from\": [10, 0, 0], \"to\": [110, 20, 0]"});
    const std::size_t exploded = result.output.find("exploded into"), undone = result.output.rfind("VEXOBAR");
    const std::string between = result.output.substr(exploded, undone - exploded);
    expectHas(between, {"LWPOLYLINE", "HATCH"});
    EXPECT_EQ(between.find("VEXOBAR"), std::string::npos) << "gone, and back after U";
    EXPECT_GT(undone, result.output.rfind("HATCH"));
    EXPECT_EQ(picture("bar.emf").bounds(), (std::vector<int>{0, -40, 200, 0}));
}

} // namespace
