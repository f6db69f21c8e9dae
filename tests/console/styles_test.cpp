// The example module whose sheet carries the bar of styles: what its user sees and gives.
#include "consoletest.h"

#include <filesystem>

namespace {

class StylesTest : public ConsoleTest {
protected:
    void SetUp() override { outputOf({"--install", folder / "installed"}); }
    ProgramResult runStyles(const std::string& commands, const std::string& answers,
                            const std::vector<std::string>& more = {"--new"}) {
        std::vector<std::string> arguments = {"--quiet", "--module", stylesModule, "--answers",
                                              writtenFile(folder, "styles.ans", answers)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runScript(arguments, commands);
    }
    const std::string stylesModule = VEXO_BINARY_DIR "/lib/styles.so";
    const std::string styles = "installed/Support/Styles/";
};

TEST_F(StylesTest, AStyleTravelsFromOneDrawingToAnother) {
    const ProgramResult saved =
        runStyles("STYLESAVE\nSTYLES\n", "Enregistrer\n=Voile Ok\n=voile Enregistrer\nEnrobage =0.05 Ok\n",
                  {VEXO_SOURCE_DIR "/examples/slab/floor.dxf"});
    EXPECT_EQ(saved.code, exitcode::ok) << saved.problems;
    EXPECT_TRUE(has(saved.output, "STYLESAVE\nVoile\n1 style\n")) << saved.output;
    const std::string written = folder.read(styles + "voile.ORStyle");
    expectHas(written, {"[BMRepartition]\r\nStyleName = \"Voile\"\r\n", "Cover1 = 0.030000000000\r\n"});

    // One with records that the drawing lacks.
    folder.write(
        styles + "far.ORStyle",
        "[BMRepartition]\nStyleName = Loin\nPositionTextStyle = \"Plans\"\nPositionTextStyleFont = "
        "\"romans.shx\"\nPositionTextStyleHeight = 2.5\nLinetype = \"TIRETS\"\nLinetypeDescription = "
        "\"2 0.5 -0.25\"\nDimensionStyleRepStyle8 = \"None\"\nWidth = 3\n");
    const ProgramResult loaded =
        runStyles("STYLELOAD\nSAVEAS loaded.dxf\n", "#Loin Ok\n", {"--new", "--overwrite"});
    EXPECT_EQ(loaded.code, exitcode::ok) << loaded.problems;
    expectHas(loaded.output, {"\"Plans\" was made\n", "\"TIRETS\" was made\n", "\"None\" could not be made",
                              "STYLELOAD: text style Plans, linetype TIRETS, dimension style Standard, cover "
                              "0.03, width 3, justification 0\n"});
    const ProgramResult refused = runStyles("STYLELOAD\n", "#Loin Annuler\n");
    EXPECT_TRUE(has(refused.output, "STYLELOAD: nothing was chosen\n"));
    std::filesystem::remove("loaded.dxf");
}

// Listing the styles makes their directory the current one of the host; what the user names stays where the
// console was started.
TEST_F(StylesTest, NamesOnTheCommandLineStayThoseOfTheStart) {
    folder.write(styles + "a.ORStyle", "[BMRepartition]\nStyleName = A\n");
    std::filesystem::create_directory(folder / "start");
    writtenFile(folder, "s.scr", "STYLES\nPLOT plan.svg\nSAVEAS plan.dxf\nOPEN plan.dxf\n");
    const ProgramResult result =
        runInShell("cd '" + (folder / "start") + "' && '" + program + "' --new --quiet --module '" +
                   stylesModule + "' --script ../s.scr");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    EXPECT_TRUE(has(result.output, "A\n1 style\n")) << result.output;
    EXPECT_TRUE(std::filesystem::exists(folder / "start/plan.svg"));
    EXPECT_TRUE(std::filesystem::exists(folder / "start/plan.dxf"));
    EXPECT_FALSE(std::filesystem::exists(folder / styles + "plan.svg"));
}

TEST_F(StylesTest, FieldsAreFoundByTheirLabelsAndItemsByTheirTexts) {
    folder.write(styles + "a.ORStyle", "[BMRepartition]\nStyleName = Mur\nWidth = 4\n");
    const ProgramResult result =
        runStyles("STYLELOAD\nSTYLELOAD\nSTYLELOAD\n", "#mur largeur =5 \"Justification :\" =2 Ok\n"
                                                       "\"<Sélectionner un style>\"\n\"#Mur\" F4 Esc\nOk\n"
                                                       "#Murs\n");
    EXPECT_EQ(result.code, exitcode::ok);
    expectHas(result.output, {"width 5, justification 2\n", "STYLELOAD: nothing was chosen\n"});
    expectHas(result.problems, {"|   1 Mur ", ">[Mur v]<", "#Murs is no item of the list"});
}

TEST_F(StylesTest, TheCommittedPicturesAreThoseOfThisTree) {
    const std::string example = VEXO_SOURCE_DIR "/examples/styles/pictures";
    const ProgramResult result =
        runInShell("cd '" + (folder / "") + "' && '" + program + "' --new --quiet --module '" + stylesModule +
                   "' --script '" + example + ".scr' --answers '" + example + ".ans'");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    for (const std::string name :
         {"style-none", "style-name", "style-save-file", "style-saved", "style-list", "style-loaded"})
        EXPECT_EQ(readFile(folder / name + ".svg"),
                  readFile(VEXO_SOURCE_DIR "/docs/pictures/" + name + ".svg"))
            << name << ": tools/make-box-pictures draws it anew";
}

} // namespace
