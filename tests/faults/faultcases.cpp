#include "faultcases.h"

namespace faults {
namespace {

const char* const plan = " OUTLINES COFFRAGE OPENINGS TREMIES";

std::vector<Case> consoleCases() {
    return {
        {.command = "HELP LIST"},
        {.command = "OPEN $D DISCARD", .isUndone = false, .opens = true},
        {.command = "RECOVER $D DISCARD", .isUndone = false, .opens = true},
        {.command = "NEW DISCARD", .isUndone = false, .opens = true},
        {.command = "SAVEAS $F/out.dxf"},
        {.command = "SAVEAS $F/out.dxf BINARY 2010"},
        {.command = "SAVEAS $F/out.dwg 2018"},
        {.command = "SAVEAS $F/out.dxf TEXT R12"},
        {.command = "SELECT ALL"},
        {.command = "SELECT (0 . \"LINE,ARC\") W -9,-9 99999,99999 JSON"},
        {.command = "ERASE ALL"},
        {.command = "CHPROP ALL \"\" COLOR 3 LTYPE ByLayer"},
        {.command = "LIST JSON $F/out.json"},
        {.command = "LAYERS"},
        {.command = "XDATA 1F JSON"},
        {.command = "DICT CONTENTS"},
        {.command = "AUDIT"},
        {.command = "AUDIT OF $D JSON"},
        {.command = "AUDIT FIX"},
        {.command = "PURGE"},
        {.command = "PURGE LIST JSON"},
        {.command = "PLOT $F/out.svg 400 300 WEIGHTS"},
        {.command = "CAPTURE ALL \"\" JSON"},
        {.command = "EXPLODE ALL"},
        {.command = "METAFILE $F/out.emf"},
        {.prepare = "ERASE L", .command = "U", .isUndone = false},
        {.prepare = "ERASE ALL", .command = "UNDO 1", .isUndone = false},
        {.prepare = "ERASE ALL\nU", .command = "REDO", .isUndone = false},
        {.command = "SETVAR LTSCALE 2.5"},
        {.command = "SETVAR"},
        {.command = "VERSION"},
        {.command = "MODULES"},
        {.command = "COMMANDS"},
        {.prepare = "SETVAR TILEMODE 0", .command = "MSPACE"},
    };
}

std::vector<Case> slabCases() {
    return {
        {.module = "slab", .command = "CONTOURS JSON"},
        {.module = "slab", .command = "SLABSTRIPS" + std::string(plan) + " NUMBERS"},
        {.module = "slab",
         .prepare = "SLABSTRIPS" + std::string(plan),
         .command = "SLABSTRIPS" + std::string(plan) + " CSV $F/out.csv"},
        {.module = "solids", .command = "RAISE 400" + std::string(plan)},
        {.module = "solids", .prepare = "RAISE 400" + std::string(plan), .command = "BODIES JSON"},
        {.module = "solids", .prepare = "RAISE 400" + std::string(plan), .command = "SLICE 0,0,100"},
        {.module = "solids", .prepare = "RAISE 400" + std::string(plan), .command = "MESH $F/out.stl"},
    };
}

std::vector<Case> layerCases() {
    std::vector<Case> cases;
    for (const char* const command :
         {"LAYERMAKE \"Lit 1\" COLOUR 3 CURRENT", "LAYERRENAME *,~0 E EE", "LAYERDELETE ~0 MOVE",
          "LAYERDELETE ~0 ERASE", "LAYEROFF *", "LAYERON *", "LAYERFREEZE *", "LAYERLOCK *",
          "LAYERISOLATE A*", "LAYERCOUNT *", "LAYERLIST *", "LAYEREMPTY ~0", "LAYERHELP"})
        cases.push_back({.module = "layers", .command = command});
    cases.push_back({.module = "layers", .prepare = "LAYERFREEZE *", .command = "LAYERTHAW *"});
    cases.push_back({.module = "layers", .prepare = "LAYERLOCK *", .command = "LAYERUNLOCK *"});
    return cases;
}

std::vector<Case> otherCases() {
    return {
        {.module = "bars", .command = "BAR 0,0 100,0 20"},
        {.module = "bars", .prepare = "BAR 0,0 100,0 20\nBAR 0,50 100,90 8", .command = "BARLIST ALL"},
        {.module = "bars", .prepare = "BAR 0,0 100,0 20\nBAR 0,50 100,90 8", .command = "BARNEAR 5,0 30"},
        {.module = "bars", .prepare = "BAR 0,0 100,0 20", .command = "SAVEAS $F/out.dxf"},
        {.module = "sketches", .command = "SKETCHTAKE PLAN ALL \"\""},
        {.module = "sketches", .prepare = "SKETCHTAKE PLAN ALL \"\"", .command = "SKETCHLIST"},
        {.module = "sketches",
         .prepare = "SKETCHTAKE PLAN ALL \"\"",
         .command = "SKETCHMOVE PLAN 0,0 100,50"},
        {.module = "sketches", .prepare = "SKETCHTAKE PLAN ALL \"\"", .command = "SKETCHPUT PLAN"},
        {.module = "boxes", .command = "BOX"},
        {.module = "boxes", .command = "SIDEBOX"},
        {.module = "boxes", .command = "STEPBOX"},
        {.module = "boxes", .command = "QUESTION"},
        {.module = "boxes", .command = "EXITBOX"},
        {.module = "boxes", .command = "LISTBOX"},
        {.module = "boxes", .command = "NAMEBOX"},
        {.module = "boxes", .command = "WARNINGBOX"},
        {.module = "styles", .command = "STYLES"},
        {.module = "styles", .command = "STYLESAVE"},
        {.module = "styles", .command = "STYLELOAD"},
    };
}

} // namespace

std::vector<Case> allCases() {
    std::vector<Case> cases = consoleCases();
    for (const auto& more : {slabCases(), layerCases(), otherCases()})
        cases.insert(cases.end(), more.begin(), more.end());
    return cases;
}

std::vector<Case> fewCases() {
    return {
        {.command = "SAVEAS $F/out.dxf TEXT R12"},
        {.command = "CHPROP ALL \"\" COLOR 3 LTYPE ByLayer"},
        {.command = "AUDIT FIX"},
        {.command = "PURGE"},
        {.command = "EXPLODE ALL"},
        {.prepare = "ERASE ALL\nU", .command = "REDO", .isUndone = false},
        {.module = "slab", .command = "CONTOURS JSON"},
        {.module = "layers", .command = "LAYERRENAME *,~0 E EE"},
        {.module = "sketches", .command = "SKETCHTAKE PLAN ALL \"\""},
    };
}

} // namespace faults
