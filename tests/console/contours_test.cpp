// The example module on drawings whose measures are known.
#include "consoletest.h"
#include "gepnt3d.h"
#include "jsonfields.h"
#include "plantext.h"

#include <numbers>

namespace {

using std::numbers::pi;

class ContoursTest : public ConsoleTest {
protected:
    std::string contours(const std::string& drawing, const std::string& form) {
        return outputOf({writtenFile(folder, "drawing.dxf", drawing), "--module", slabModule, "--command",
                         "CONTOURS " + form});
    }
    // The contours of the JSON report.
    std::vector<std::string> measured(const std::string& blocks, const std::string& entities) {
        const std::string json = contours(drawingOf(blocks, entities), "JSON");
        EXPECT_TRUE(isJson(json)) << json;
        return parts(json.substr(0, json.find("\"totals\"")), "{\"layer\"");
    }
};

AcGePoint3d point(const std::string& contour, const std::string& name) {
    AcGePoint3d found;
    const std::string text = field(contour, name);
    EXPECT_EQ(std::sscanf(text.c_str(), "[%lf,%lf,%lf]", &found.x, &found.y, &found.z), 3) << text;
    return found;
}

void expectPoint(const std::string& contour, const std::string& name, double x, double y, double z) {
    EXPECT_LT(point(contour, name).distanceTo(AcGePoint3d(x, y, z)), 1e-9) << contour;
}

const std::vector<Vertex> square = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
// A half disc of radius 2 on the chord from (0,0) to (4,0), bulging downwards.
const std::vector<Vertex> halfDisc = {{0, 0, 1}, {4, 0, 0}};

TEST_F(ContoursTest, KnownFigures) {
    const std::vector<Vertex> reversed(square.rbegin(), square.rend());
    const auto rows = measured("", light("A", square) + light("A", reversed) + light("A", halfDisc) +
                                       circle("C", 10, 20, 3, 5) +
                                       light("A", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}}, 0, 1, false));
    ASSERT_EQ(rows.size(), 4u) << "an open polyline is no contour";
    struct {
        double length, chords, area, x, y, z;
        const char* sense;
    } const wanted[] = {{16, 16, 16, 2, 2, 0, "\"ccw\""},
                        {16, -16, 16, 2, 2, 0, "\"cw\""},
                        {4 + 2 * pi, 0, 2 * pi, 2, -8 / (3 * pi), 0, "\"ccw\""},
                        {6 * pi, 0, 9 * pi, 10, 20, 5, "\"ccw\""}};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_NEAR(value(rows[i], "length"), wanted[i].length, 1e-9) << i;
        EXPECT_NEAR(value(rows[i], "signedArea"), wanted[i].chords, 1e-9) << i;
        EXPECT_NEAR(value(rows[i], "trueArea"), wanted[i].area, 1e-9) << i;
        EXPECT_EQ(field(rows[i], "sense"), wanted[i].sense) << i;
        expectPoint(rows[i], "centroid", wanted[i].x, wanted[i].y, wanted[i].z);
        EXPECT_EQ(field(rows[i], "note"), "null") << i;
    }
    expectPoint(rows[0], "gravityCenter", 2, 2, 0);
}

TEST_F(ContoursTest, PlacesInBlocksRaisedMirroredAndStretched) {
    const std::string blocks =
        block("INNER", light("0", halfDisc)) +
        block("OUTER", insert("INNER", 10, 0, 1, 1, 0, "", "0") + light("OWN", square, 7.0));
    const auto rows =
        measured(blocks, insert("OUTER", 100, 200, 1, 1, 90) + insert("OUTER", 0, 0, -2, 2, 0) +
                             insert("INNER", 0, 0, 1, 3, 0) +
                             insert("INNER", 0, 0, 1, 1, 0, "70\n3\n71\n2\n44\n10.0\n45\n20.0\n") +
                             light("MIRRORED", halfDisc, 5.0, -1.0));
    ASSERT_EQ(rows.size(), 2u + 2u + 1u + 6u + 1u);
    // Turned by a right angle: what lay below the chord lies to the right of it.
    EXPECT_EQ(field(rows[0], "layer"), "\"REFS\"")
        << "layer 0 in a block is the reference's, through all levels";
    expectPoint(rows[0], "centroid", 100 + 8 / (3 * pi), 212, 0);
    EXPECT_EQ(field(rows[1], "layer"), "\"OWN\"");
    expectPoint(rows[1], "centroid", 98, 202, 7);
    // Mirrored and doubled.
    EXPECT_EQ(field(rows[2], "sense"), "\"cw\"");
    EXPECT_NEAR(value(rows[2], "trueArea"), 8 * pi, 1e-9);
    EXPECT_NEAR(value(rows[2], "length"), 2 * (4 + 2 * pi), 1e-9);
    EXPECT_NEAR(value(rows[3], "signedArea"), -64, 1e-9);
    expectPoint(rows[3], "normal", 0, 0, -1);
    // Stretched to half an ellipse with the half axes 2 and 6; its length by Ramanujan's second formula is
    // good to 1e-5 at this ratio.
    EXPECT_NEAR(value(rows[4], "trueArea"), 6 * pi, 1e-9);
    const double h = 0.25;
    const double perimeter = pi * 8 * (1 + 3 * h / (10 + std::sqrt(4 - 3 * h)));
    EXPECT_NEAR(value(rows[4], "length"), 4 + perimeter / 2, 1e-3);
    expectPoint(rows[4], "centroid", 2, -8 / pi, 0);
    // Three columns, two rows.
    expectPoint(rows[5], "centroid", 2, -8 / (3 * pi), 0);
    expectPoint(rows[10], "centroid", 2 + 20, -8 / (3 * pi) + 20, 0);
    expectHas(field(rows[10], "handle"), {"[2,3]/"});
    // With the normal turned over, x runs the other way and up is down.
    expectPoint(rows[11], "centroid", -2, -8 / (3 * pi), -5);
    EXPECT_EQ(field(rows[11], "sense"), "\"cw\"");
}

TEST_F(ContoursTest, WhatHasNoAreaIsSaidNotGuessed) {
    const auto rows = measured("", light("A", {{0, 0, 0}, {4, 0, 0}}) + light("A", {{1, 1, 0}}) +
                                       light("A", {{0, 0, 0}, {4, 0, 0}, {0, 0, 0}, {4, 0, 0}}) +
                                       light("A", {{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 4, 0}}) +
                                       light("A", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}}, 0, 1, false));
    ASSERT_EQ(rows.size(), 5u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(field(rows[i], "trueArea"), "null") << i;
        EXPECT_EQ(field(rows[i], "centroid"), "null") << i;
        EXPECT_NE(field(rows[i], "note"), "null") << i;
    }
    EXPECT_NEAR(value(rows[4], "trueArea"), 8, 1e-9) << "closed by its ends";
    EXPECT_EQ(value(rows[4], "vertices"), 3);
}

TEST_F(ContoursTest, FarFromTheOriginMeasuresStay) {
    constexpr double far = 1e6; // exactly representable with the figure's size
    const auto rows = measured("", light("A", {{far, far, 1}, {far + 4, far, 0}}));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(value(rows[0], "trueArea"), 2 * pi, 1e-12);
    EXPECT_NEAR(point(rows[0], "centroid").y, far - 8 / (3 * pi), 8 * 1.2e-10);
}

TEST_F(ContoursTest, TextAndCsvTellTheSameWithTheUnit) {
    const std::string drawing = drawingOf("", light("A,\"B\"", square));
    // With as many decimals as the drawing shows.
    expectHas(contours(drawing, "TEXT"), {"Length [mm]", "[mm\xC2\xB2]", " 16.000 ", "Total"});
    const std::string csv = contours(drawing, "CSV");
    expectHas(csv, {"\n\"A,\"\"B\"\"\","});
    const std::string file = folder / "report with blanks.csv";
    contours(drawing, "CSV " + file);
    EXPECT_EQ(readFile(file), csv);
    // The name is the rest of the line but for the word that replaces it; quoted, the rest is words.
    writtenFile(folder, "report with blanks.csv", "old");
    contours(drawing, "CSV " + file + "  overwrite ");
    EXPECT_EQ(readFile(file), csv);
    expectProblems({folder / "drawing.dxf", "--module", slabModule, "--command",
                    "CONTOURS CSV \"" + file + "\" overwritten"},
                   exitcode::commandFailed, {"OVERWRITE or nothing"});
}

TEST_F(ContoursTest, TheExampleDrawingsHoldWhatTheyShow) {
    const std::pair<const char*, double> drawings[] = {
        {"floor.dxf", 37}, {"ducts.dxf", 105}, {"balconies.dxf", 71}, {"podium.dxf", 26}};
    for (const auto& [name, count] : drawings) {
        const std::string json =
            contours(readFile(std::string(VEXO_SOURCE_DIR "/examples/slab/") + name), "JSON");
        EXPECT_TRUE(isJson(json)) << name;
        EXPECT_EQ(value(parts(json, "\"totals\"").at(0), "contours"), count) << name;
    }
}

} // namespace
