// The example module on drawings whose measures are known.
#include "plantext.h"
#include "runprogram.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numbers>
#include <unistd.h>
#include <vector>

namespace {

using std::numbers::pi;

// One contour of the JSON report, by its fields.
class Contour {
public:
    explicit Contour(std::string text)
        : m_text(std::move(text)) {}

    std::string field(const std::string& name) const {
        const std::size_t at = m_text.find("\"" + name + "\": ");
        if (at == std::string::npos) return "missing";
        const std::size_t start = at + name.size() + 4;
        const char opening = m_text[start];
        const std::size_t end = opening == '['   ? m_text.find(']', start) + 1
                                : opening == '"' ? m_text.find('"', start + 1) + 1
                                                 : m_text.find_first_of(",}", start);
        return m_text.substr(start, end - start);
    }
    double value(const std::string& name) const {
        const std::string text = field(name);
        return text == "null" || text == "missing" ? NAN : std::strtod(text.c_str(), nullptr);
    }
    std::vector<double> triple(const std::string& name) const {
        std::vector<double> values;
        const std::string text = field(name);
        const char* at = text.c_str() + 1;
        for (char* end = nullptr; values.size() < 3; at = end + 1) {
            values.push_back(std::strtod(at, &end));
            if (end == at) break;
        }
        return values;
    }

private:
    std::string m_text;
};

class ContoursTest : public ::testing::Test {
protected:
    std::string contours(const std::string& drawing, const std::string& form) {
        const std::string file = writtenFile(folder, "drawing.dxf", drawing);
        const ProgramResult result =
            runProgram({VEXO_BINARY_DIR "/bin/vexohost", file, "--registry", folder / "registry.txt",
                        "--module", VEXO_BINARY_DIR "/lib/slab.so", "--command", "CONTOURS " + form});
        EXPECT_EQ(result.code, 0) << result.problems;
        return result.output;
    }
    std::vector<Contour> measured(const std::string& blocks, const std::string& entities) {
        const std::string json = contours(drawingOf(blocks, entities), "JSON");
        EXPECT_TRUE(isJson(json)) << json;
        std::vector<Contour> rows;
        for (std::size_t at = 0; (at = json.find("{\"layer\"", at)) != std::string::npos; ++at)
            rows.emplace_back(json.substr(at, json.find('\n', at) - at));
        return rows;
    }

    TemporaryFolder folder;
};

void expectTriple(const std::vector<double>& found, double x, double y, double z) {
    ASSERT_EQ(found.size(), 3u);
    EXPECT_NEAR(found[0], x, 1e-9);
    EXPECT_NEAR(found[1], y, 1e-9);
    EXPECT_NEAR(found[2], z, 1e-9);
}

const std::vector<Vertex> square = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
// A half disc of radius 2 on the chord from (0,0) to (4,0), bulging downwards.
const std::vector<Vertex> halfDisc = {{0, 0, 1}, {4, 0, 0}};

TEST_F(ContoursTest, KnownFigures) {
    const std::vector<Vertex> reversed(square.rbegin(), square.rend());
    const auto rows = measured("", light("A", square) + light("A", reversed) + light("A", halfDisc) +
                                       "0\nCIRCLE\n8\nC\n10\n10.0\n20\n20.0\n30\n5.0\n40\n3.0\n" +
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
        EXPECT_NEAR(rows[i].value("length"), wanted[i].length, 1e-9) << i;
        EXPECT_NEAR(rows[i].value("signedArea"), wanted[i].chords, 1e-9) << i;
        EXPECT_NEAR(rows[i].value("trueArea"), wanted[i].area, 1e-9) << i;
        EXPECT_EQ(rows[i].field("sense"), wanted[i].sense) << i;
        expectTriple(rows[i].triple("centroid"), wanted[i].x, wanted[i].y, wanted[i].z);
        EXPECT_EQ(rows[i].field("note"), "null") << i;
    }
    expectTriple(rows[0].triple("gravityCenter"), 2, 2, 0);
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
    EXPECT_EQ(rows[0].field("layer"), "\"REFS\"")
        << "layer 0 in a block is the reference's, through all levels";
    expectTriple(rows[0].triple("centroid"), 100 + 8 / (3 * pi), 212, 0);
    EXPECT_EQ(rows[1].field("layer"), "\"OWN\"");
    expectTriple(rows[1].triple("centroid"), 98, 202, 7);
    // Mirrored and doubled.
    EXPECT_EQ(rows[2].field("sense"), "\"cw\"");
    EXPECT_NEAR(rows[2].value("trueArea"), 8 * pi, 1e-9);
    EXPECT_NEAR(rows[2].value("length"), 2 * (4 + 2 * pi), 1e-9);
    EXPECT_NEAR(rows[3].value("signedArea"), -64, 1e-9);
    expectTriple(rows[3].triple("normal"), 0, 0, -1);
    // Stretched to half an ellipse with the half axes 2 and 6; its length by Ramanujan's second formula is
    // good to 1e-5 at this ratio.
    EXPECT_NEAR(rows[4].value("trueArea"), 6 * pi, 1e-9);
    const double h = 0.25;
    const double perimeter = pi * 8 * (1 + 3 * h / (10 + std::sqrt(4 - 3 * h)));
    EXPECT_NEAR(rows[4].value("length"), 4 + perimeter / 2, 1e-3);
    expectTriple(rows[4].triple("centroid"), 2, -8 / pi, 0);
    // Three columns, two rows.
    expectTriple(rows[5].triple("centroid"), 2, -8 / (3 * pi), 0);
    expectTriple(rows[10].triple("centroid"), 2 + 20, -8 / (3 * pi) + 20, 0);
    EXPECT_NE(rows[10].field("handle").find("[2,3]/"), std::string::npos) << rows[10].field("handle");
    // With the normal turned over, x runs the other way and up is down.
    expectTriple(rows[11].triple("centroid"), -2, -8 / (3 * pi), -5);
    EXPECT_EQ(rows[11].field("sense"), "\"cw\"");
}

TEST_F(ContoursTest, WhatHasNoAreaIsSaidNotGuessed) {
    const auto rows = measured("", light("A", {{0, 0, 0}, {4, 0, 0}}) + light("A", {{1, 1, 0}}) +
                                       light("A", {{0, 0, 0}, {4, 0, 0}, {0, 0, 0}, {4, 0, 0}}) +
                                       light("A", {{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 4, 0}}) +
                                       light("A", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}}, 0, 1, false));
    ASSERT_EQ(rows.size(), 5u);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(rows[static_cast<std::size_t>(i)].field("trueArea"), "null") << i;
        EXPECT_EQ(rows[static_cast<std::size_t>(i)].field("centroid"), "null") << i;
        EXPECT_NE(rows[static_cast<std::size_t>(i)].field("note"), "null") << i;
    }
    EXPECT_NEAR(rows[4].value("trueArea"), 8, 1e-9) << "closed by its ends";
    EXPECT_EQ(rows[4].value("vertices"), 3);
}

TEST_F(ContoursTest, FarFromTheOriginMeasuresStay) {
    constexpr double far = 1e6; // exactly representable with the figure's size
    std::vector<Vertex> moved = halfDisc;
    for (Vertex& vertex : moved) {
        vertex.x += far;
        vertex.y += far;
    }
    const auto rows = measured("", light("A", moved));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(rows[0].value("trueArea"), 2 * pi, 1e-12);
    const auto centroid = rows[0].triple("centroid");
    EXPECT_NEAR(centroid[1], far - 8 / (3 * pi), 8 * 1.2e-10);
}

TEST_F(ContoursTest, TextAndCsvTellTheSameWithTheUnit) {
    const std::string drawing = drawingOf("", light("A,\"B\"", square));
    const std::string text = contours(drawing, "TEXT");
    EXPECT_NE(text.find("Length [mm]"), std::string::npos) << text;
    EXPECT_NE(text.find("[mm\xC2\xB2]"), std::string::npos);
    EXPECT_NE(text.find(" 16.000 "), std::string::npos) << "as many decimals as the drawing shows";
    EXPECT_NE(text.find("Total"), std::string::npos);
    const std::string csv = contours(drawing, "CSV");
    EXPECT_NE(csv.find("\n\"A,\"\"B\"\"\","), std::string::npos) << csv;
    const std::string file = folder / "report with blanks.csv";
    contours(drawing, "CSV " + file);
    EXPECT_EQ(readFile(file), csv);
}

TEST_F(ContoursTest, TheExampleDrawingsHoldWhatTheyShow) {
    struct {
        const char* name;
        std::size_t contours;
    } const drawings[] = {{"floor.dxf", 37}, {"ducts.dxf", 105}, {"balconies.dxf", 71}, {"podium.dxf", 26}};
    for (const auto& each : drawings) {
        const std::string json =
            contours(readFile(std::string(VEXO_SOURCE_DIR "/examples/slab/") + each.name), "JSON");
        EXPECT_TRUE(isJson(json));
        const std::size_t at = json.find("\"totals\": {\"contours\": ");
        ASSERT_NE(at, std::string::npos) << each.name;
        EXPECT_EQ(std::strtoul(json.c_str() + at + 23, nullptr, 10), each.contours) << each.name;
    }
}

} // namespace
