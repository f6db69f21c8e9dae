// The example module that looks after layers, looked at through the console's own tables.
#include "consoletest.h"

#include <sstream>

namespace {

const std::string layersModule = VEXO_BINARY_DIR "/lib/layers.so";

class LayersModule : public ConsoleTest {
protected:
    ProgramResult runLines(const std::string& lines) {
        return runScript({floorDrawing, "--quiet", "--module", layersModule}, lines);
    }
    /// A layer's row of the table of the console's LAYERS, blanks narrowed to one, or nothing.
    static std::string rowOf(const std::string& output, const std::string& layer) {
        std::istringstream lines(output);
        std::string line, row;
        while (std::getline(lines, line))
            if (line.starts_with(layer + "  ")) row = line;
        std::string narrowed;
        for (const char letter : row)
            if (letter != ' ' || (!narrowed.empty() && narrowed.back() != ' ')) narrowed += letter;
        while (narrowed.ends_with(' ')) narrowed.pop_back();
        return narrowed;
    }
    /// Runs the lines, then LAYERS; each row must be there, and what the lines print.
    void check(const std::string& lines, const std::vector<std::string>& printed,
               const std::vector<std::pair<std::string, std::string>>& rows) {
        SCOPED_TRACE(lines);
        const ProgramResult result = runLines(lines + "\nLAYERS\n");
        EXPECT_EQ(result.code, exitcode::ok) << result.problems;
        expectHas(result.output, printed);
        for (const auto& [layer, row] : rows) EXPECT_EQ(rowOf(result.output, layer), row);
    }
};

TEST_F(LayersModule, MakesRenamesAndDeletes) {
    check("LAYERMAKE \"Lit 1\" COLOUR 3 CURRENT\nLAYERMAKE \"LIT 1\"\nLAYERMAKE \"Lit 1\" NEW OFF",
          {"\"Lit 1\" made, and is current", "\"Lit 1\" was there; it stays as it was", "\"Lit 1-1\" made"},
          {{"Lit 1", "Lit 1 0 3 Continuous on"}, {"Lit 1-1", "Lit 1-1 0 7 Continuous off"}});
    check("LAYERRENAME *,~CACHE TE PLAN",
          {"\"POTEAUX\" is now \"POPLANAUX\"", "\"TEXTES\" is now \"PLANXPLANS\""},
          {{"POPLANAUX", "POPLANAUX 36 5 Continuous on"}, {"TEXTES", ""}});
    check("LAYERRENAME AXES AXES VOILES", {"\"AXES\" is now \"VOILES1\""},
          {{"VOILES1", "VOILES1 18 9 AXIS on"}});
    check("LAYERRENAME AXES XES", {"\"AXES\" is now \"A\""}, {{"A", "A 18 9 AXIS on"}});
    check("LAYERDELETE AXES,TREMIES", {"2 layers deleted, 28 entities moved to layer 0"},
          {{"AXES", ""}, {"TREMIES", ""}, {"0", "0 30 7 Continuous on"}});
    check("LAYERDELETE AXES ERASE", {"1 layer deleted, 18 entities erased"},
          {{"AXES", ""}, {"0", "0 2 7 Continuous on"}});
}

TEST_F(LayersModule, PutsLayersIntoStates) {
    check("LAYERFREEZE AXES,t?????s\nLAYERFREEZE AXES", {"2 layers frozen\n", "0 layers frozen, 1 already"},
          {{"AXES", "AXES 18 9 AXIS on frozen"}, {"TREMIES", "TREMIES 10 1 Continuous on frozen"}});
    check("LAYEROFF AXES\nLAYERTHAW AXES,A*", {"1 layer thawed\n"}, {{"AXES", "AXES 18 9 AXIS off"}});
    check("LAYERFREEZE AXES,TEXTES\nLAYERTHAW *", {"2 layers thawed, 8 already"},
          {{"AXES", "AXES 18 9 AXIS on"}});
    check("LAYEROFF *", {"10 layers off\n"},
          {{"0", "0 2 7 Continuous off"}, {"AXES", "AXES 18 9 AXIS off frozen"}});
    check("LAYEROFF AXES,VOILES\nLAYERON AXES", {"1 layer on and thawed\n"},
          {{"AXES", "AXES 18 9 AXIS on"}, {"VOILES", "VOILES 2 8 Continuous off frozen"}});
    check("LAYERLOCK CO*\nLAYERUNLOCK COFFRAGE", {"2 layers locked\n", "1 layer unlocked\n"},
          {{"COFFRAGE", "COFFRAGE 1 3 Continuous on"}, {"COTATIONS", "COTATIONS 77 4 Continuous on locked"}});
    check("LAYERISOLATE AXES", {"2 layers shown, 8 hidden"},
          {{"0", "0 2 7 Continuous on"},
           {"AXES", "AXES 18 9 AXIS on"},
           {"VOILES", "VOILES 2 8 Continuous off frozen"}});
}

TEST_F(LayersModule, TellsAndErasesWhatLiesThere) {
    check("LAYERCOUNT COTATIONS,VOILES,0",
          {"\"COTATIONS\": 11 entities in model space and on sheets, 77 with those of blocks",
           "\"VOILES\": 2 entities in model space and on sheets, 2 with those of blocks",
           "\"0\": 0 entities in model space and on sheets, 2 with those of blocks"},
          {});
    check("LAYERLIST 0,CARTOUCHE",
          {"40       CIRCLE         0                    block \"BULLE_AXE\", inserted 9 x",
           "CARTOUCHE            model space", "6 entities"},
          {});
    check("LAYERLIST COTATIONS", {"block \"*D3\", not inserted", "77 entities"}, {});
    check("LAYEREMPTY 0,VOILES", {"4 entities erased from 2 layers"},
          {{"0", "0 0 7 Continuous on"}, {"VOILES", "VOILES 0 8 Continuous on"}});
}

TEST_F(LayersModule, DoesTheRestOfWhatItCannotDo) {
    const ProgramResult result = runLines("LAYERLOCK VOILES\nLAYEREMPTY VOILES,AXES\n");
    EXPECT_EQ(result.code, exitcode::commandFailed);
    expectHas(result.output, {"18 entities erased from 2 layers"});
    expectHas(result.problems, {"2 entities left: \"VOILES\" locked"});
}

TEST_F(LayersModule, SaysWhatItCannotDo) {
    const struct {
        const char* line;
        const char* problem;
    } cases[] = {
        {"LAYERMAKE A<B", "\"A<B\" cannot be the name of a layer: names have 1 to 255"},
        {"LAYERMAKE", "\"\" cannot be the name of a layer"},
        {"LAYERMAKE X COLOUR 256", "a layer's colour is a number from 1 to 255"},
        {"LAYERMAKE X RED", "the options are COLOUR, CURRENT, OFF and NEW"},
        {"LAYERRENAME AXES AXES A|B", "\"AXES\" cannot become \"A|B\"; names have"},
        {"LAYERRENAME 0,AXES 0 Z", "\"0\" cannot become \"Z\""},
        {"LAYERRENAME AXES axes Z", "none of these names holds the text \"axes\""},
        {"LAYERFREEZE 0", "\"0\": the current layer cannot be frozen"},
        {"LAYERFREEZE AXES,NONE", "there is no layer \"NONE\""},
        {"LAYEROFF", "the name of a layer is needed"},
        {"LAYERDELETE AXES AWAY", "entities are moved to layer 0 with MOVE, or erased with ERASE"},
        {"LAYERDELETE 0", "\"0\": layer 0 and the current layer stay"},
    };
    for (const auto& each : cases) {
        const ProgramResult failed = runLines(std::string(each.line) + "\n");
        EXPECT_EQ(failed.code, exitcode::commandFailed) << each.line;
        expectHas(failed.problems, {each.problem});
    }
}

TEST_F(LayersModule, HelpsWithEachCommand) {
    const std::string help = runLines("LAYERHELP\n").output;
    std::istringstream commands(runLines("COMMANDS\n").output);
    int count = 0;
    for (std::string line; std::getline(commands, line);) {
        std::istringstream words(line);
        std::string group, name;
        words >> group >> name;
        if (group != "LAYERS") continue;
        EXPECT_TRUE(has("\n" + help, "\n" + name + ' ')) << name;
        ++count;
    }
    EXPECT_EQ(count, 14);
}

} // namespace
