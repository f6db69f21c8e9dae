// SELECT and the commands that use a selection, as an engineer types them.
#include "consoletest.h"

#include <fstream>
#include <sstream>

namespace {

const std::string barsModule = VEXO_BINARY_DIR "/lib/bars.so";

class SelectionConsole : public ConsoleTest {
protected:
    std::string floor(const std::string& lines) {
        const ProgramResult result = runScript({floorDrawing, "--module", slabModule}, lines);
        EXPECT_EQ(result.code, exitcode::ok) << lines << "\n" << result.problems;
        return result.output;
    }
    void fails(const std::string& lines, const std::vector<std::string>& named) {
        const ProgramResult result = runScript({floorDrawing, "--module", slabModule}, lines);
        EXPECT_EQ(result.code, exitcode::commandFailed) << lines;
        expectHas(result.problems, named);
    }
    static std::size_t rows(const std::string& text, const std::string& part) {
        std::size_t count = 0;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) count += line.starts_with(part);
        return count;
    }
};

} // namespace

TEST_F(SelectionConsole, whatIsSelectedIsToldAndTheNextCommandsUseIt) {
    const std::string told =
        floor("SELECT (0 . \"LWPOLYLINE\") (8 . \"TREM*\") ALL\nLIST SELECTED\nLAYERS\nCONTOURS\n"
              "CONTOURS\nHELP\nERASE\nLIST\n");
    expectHas(told, {"LWPOLYLINE  TREMIES         3\n", "3 entities selected\n", "3 entities, AC1027\n",
                     "Of 3 selected entities:\nLayer"});
    EXPECT_EQ(rows(told, "TREMIES"), 1u + 3u + 3u) << "the layer, and three contours twice";
    expectHas(told, {"3 entities erased\n"});
    const std::string erased =
        floor("SELECT (8 . \"TREMIES\") C 0,0 99999,99999\nERASE\nSELECT (8 . \"TREMIES\") ALL\nU\n"
              "SELECT (8 . \"TREMIES\") ALL\n");
    expectHas(erased,
              {"10 entities selected\n", "10 entities erased\n", "0 entities selected\n", "19 objects are"});
}

TEST_F(SelectionConsole, theReportAsJsonGoesToAFile) {
    for (const std::string end : {" JSON ", " \"\" JSON "}) { // an Enter of the line ends the ways too
        const std::string name = folder / (std::to_string(end.size()) + ".json");
        floor("SELECT (62 . 256) (0 . \"CIRCLE,ARC\") ALL" + end + name + "\n");
        std::ifstream file(name);
        const std::string json((std::istreambuf_iterator<char>(file)), {});
        expectHas(json, {"\"selected\": 2,", "\"byType\": {\"CIRCLE\": 2}", "\"byLayer\": {\"TREMIES\": 2}"});
    }
}

TEST_F(SelectionConsole, propertiesAreChangedTogetherOrNotAtAll) {
    const std::string told =
        floor("SELECT (8 . \"TREMIES\") ALL\nCHPROP LAYER voiles COLOR 10,20,30 LTYPE ByBlock\n"
              "SELECT (8 . \"VOILES\") (62 . 256) ALL\nSELECT (8 . \"VOILES\") (6 . \"BYBLOCK\") ALL\n");
    expectHas(told, {"10 entities changed\n", "10 entities selected\n"});
    const std::string byPrompt =
        floor("CHPROP W 0,0 99999,99999 R ALL A L \"\" COLOR ByBlock\nSELECT (62 . 0) ALL\n");
    expectHas(byPrompt, {"1 entity changed\n", "1 entity selected\n"});
    for (const auto& [line, reason] : std::initializer_list<std::pair<const char*, const char*>>{
             {"CHPROP L \"\" LAYER nowhere", "there is no layer \"nowhere\""},
             {"CHPROP L \"\" COLOR 257", "\"257\" is no colour"},
             {"CHPROP L \"\" COLOR 1,2,256", "is no colour"},
             {"CHPROP L \"\" COLOR 1 LTYPE dotty", "there is no linetype \"dotty\""},
             {"CHPROP L", "no property was given"},
             {"CHPROP L \"\" WIDTH 3", "LAYER, COLOR and LTYPE"},
             {"CHPROP", "nothing was selected"},
             {"ERASE bananas", "no way to select"},
             {"ERASE 1,1", "nothing was selected"},
             {"LIST SELECTED", "nothing is selected"},
             {"PLOT x.svg SELECTED", "nothing is selected"},
             {"CONTOURS SELECTION", "no contours were selected"},
             {"SELECT (8 . TREMIES) ALL", "a text in quotation marks"},
             {"SELECT (8 . \"TREMIES\" ALL", "parenthesis"},
             {"SELECT (-4 . \"<or\") ALL", "not closed"},
             {"SELECT (8 . 5) ALL", "the filter"}})
        fails(line, {reason});
}

TEST_F(SelectionConsole, lockedLayersAreLeftAlone) {
    const std::string layers = VEXO_BINARY_DIR "/lib/layers.so";
    const ProgramResult result =
        runScript({floorDrawing, "--module", layers},
                  "LAYERLOCK TREMIES\nSELECT (8 . \"TREMIES,VOILES\") W -9,-9 99999,99999\nERASE\n");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    expectHas(result.output, {"2 entities erased, 9 on locked layers left as they are"});
}

TEST_F(SelectionConsole, slabsAreCutFromASelection) {
    const std::string told =
        floor("SELECT (8 . \"COFFRAGE,TREMIES\") ALL\nSLABSTRIPS\nU\n"
              "SLABSTRIPS SELECTION C -9,-9 99999,99999 \"\" OUTLINES COFFRAGE OPENINGS TREMIES\n");
    const std::string named = floor("SLABSTRIPS OUTLINES COFFRAGE OPENINGS TREMIES\n");
    const auto totalOf = [](const std::string& text) {
        const std::size_t at = text.find("\nTotal ");
        return at == std::string::npos ? std::string() : text.substr(at, text.find('\n', at + 1) - at);
    };
    EXPECT_FALSE(totalOf(named).empty());
    EXPECT_NE(told.find(totalOf(named)), told.rfind(totalOf(named))) << "twice the same strips";
}

TEST_F(SelectionConsole, aMarkedSelectionStandsOnABand) {
    const std::string plain = folder / "plain.svg", marked = folder / "marked.svg";
    floor("PLOT " + plain + "\nSELECT (8 . \"COFFRAGE\") ALL\nPLOT " + marked + " SELECTED\n");
    const auto read = [](const std::string& name) {
        std::ifstream file(name);
        return std::string((std::istreambuf_iterator<char>(file)), {});
    };
    const std::string first = read(plain), second = read(marked);
    const std::string band = "stroke-width=\"1.6\"";
    EXPECT_FALSE(has(first, band));
    EXPECT_TRUE(has(second, band));
    EXPECT_EQ(second.find(band), second.rfind(band)) << "one, for the one contour";
}

// The module's entities, picked by their boxes, without it kept as they stand.
TEST_F(SelectionConsole, entitiesOfAModuleLiveInADrawing) {
    const std::string drawing = folder / "bars.dxf", again = folder / "again.dxf";
    const ProgramResult made = runScript({"--new", "--module", barsModule, "--output", drawing},
                                         "BAR 0,0 10,0 0.5\nBAR 100,0 110,10 1.2\nBARNEAR 5,0 1\n");
    EXPECT_EQ(made.code, exitcode::ok) << made.problems;
    expectHas(made.output, {"1 bars\n"});
    const ProgramResult without =
        runScript({drawing, "--output", again}, "SELECT (0 . \"VEXOBAR\") ALL\nAUDIT\n");
    EXPECT_EQ(without.code, exitcode::ok) << without.problems;
    expectHas(without.output, {"2 entities selected", "0 faults"});
    const ProgramResult with =
        runScript({again, "--module", barsModule}, "BARLIST W -1,-1 11,1\nBARLIST C 104,4 105,5\n");
    expectHas(with.output, {"diameter 0.5: 1 bars, length 10\n", "diameter 1.2: 1 bars, length 14.1421\n"});
    expectHas(outputOf({again, "--module", barsModule, "--command", "BARLIST ALL"}),
              {"diameter 0.5", "diameter 1.2"});
}
