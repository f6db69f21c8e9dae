// The example module that raises plans: figures against areas that are summed up from the drawing's
// coordinates.
#include "consoletest.h"
#include "jsonfields.h"
#include "plantext.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>

namespace {

using std::numbers::pi;

const std::string solidsModule = VEXO_BINARY_DIR "/lib/solids.so";
const std::string podium = VEXO_SOURCE_DIR "/examples/slab/podium.dxf";

struct Place {
    double x, y;
};
using Polygon = std::vector<Place>;

/// An arc's share of the sides of a circle that stays within the deflection; its ends are left to the
/// neighbours.
void addFacets(Polygon& polygon, Place a, Place b, double bulge, double deflection) {
    polygon.push_back(a);
    if (bulge == 0.0) return;
    const double angle = 4 * std::atan(bulge), chord = std::hypot(b.x - a.x, b.y - a.y);
    const double radius = chord / 2 / std::sin(std::abs(angle) / 2),
                 toCentre = (1 - bulge * bulge) / (4 * bulge);
    const Place centre{(a.x + b.x) / 2 - (b.y - a.y) * toCentre, (a.y + b.y) / 2 + (b.x - a.x) * toCentre};
    int sides = 5;
    while (sides < 256 && radius * (1 - std::cos(pi / sides)) > deflection) ++sides;
    const int facets = std::max(1, static_cast<int>(std::ceil(sides * std::abs(angle) / (2 * pi) - 1e-9)));
    const double start = std::atan2(a.y - centre.y, a.x - centre.x);
    for (int i = 1; i < facets; ++i)
        polygon.push_back({centre.x + radius * std::cos(start + angle * i / facets),
                           centre.y + radius * std::sin(start + angle * i / facets)});
}

/// The light polylines of a listed drawing by layer, less the origin, arcs as facets; of two points with arcs
/// in halves.
std::map<std::string, std::vector<Polygon>> polygonsOf(const std::string& list, Place origin,
                                                       double deflection) {
    std::map<std::string, std::vector<Polygon>> layers;
    for (const std::string& entity : parts(list, "{\"type\":\"LWPOLYLINE\"")) {
        const std::size_t layer = entity.find("\"layer\":\"") + 9;
        std::vector<std::array<double, 3>> vertices;
        std::istringstream rest(entity.substr(entity.find("\"vertices\":[") + 12));
        double x, y, z, bulge;
        for (char mark;
             rest >> mark >> x >> mark >> y >> mark >> z >> mark >> bulge >> mark >> mark && mark == ',';)
            vertices.push_back({x - origin.x, y - origin.y, bulge});
        vertices.push_back({x - origin.x, y - origin.y, bulge});
        Polygon& polygon = layers[entity.substr(layer, entity.find('"', layer) - layer)].emplace_back();
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const double arc = vertices[i][2];
            const auto& next = vertices[(i + 1) % vertices.size()];
            const Place a{vertices[i][0], vertices[i][1]}, b{next[0], next[1]};
            const Place apex{(a.x + b.x) / 2 + arc * (b.y - a.y) / 2,
                             (a.y + b.y) / 2 - arc * (b.x - a.x) / 2};
            const bool isHalved = vertices.size() == 2 && arc != 0.0;
            if (isHalved) addFacets(polygon, a, apex, std::tan(std::atan(arc) / 2), deflection);
            addFacets(polygon, isHalved ? apex : a, b, isHalved ? std::tan(std::atan(arc) / 2) : arc,
                      deflection);
        }
    }
    return layers;
}

/// Where the line at x is inside the polygon, as pairs of y.
std::vector<std::pair<double, double>> inside(const Polygon& polygon, double x) {
    std::vector<double> ys;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Place &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        if ((a.x < x) != (b.x < x)) ys.push_back(a.y + (x - a.x) / (b.x - a.x) * (b.y - a.y));
    }
    std::sort(ys.begin(), ys.end());
    std::vector<std::pair<double, double>> pairs;
    for (std::size_t i = 0; i + 1 < ys.size(); i += 2) pairs.emplace_back(ys[i], ys[i + 1]);
    return pairs;
}

/// Of the polygon without the others, which may overlap: between neighbours among all x of corners and
/// crossings the length along y runs evenly, so that its middle tells the area.
double areaWithout(const Polygon& polygon, const std::vector<Polygon>& others) {
    std::vector<std::pair<Place, Place>> sides;
    const auto addSides = [&](const Polygon& each) {
        for (std::size_t i = 0; i < each.size(); ++i)
            sides.emplace_back(each[i], each[(i + 1) % each.size()]);
    };
    addSides(polygon);
    for (const Polygon& each : others) addSides(each);
    std::vector<double> xs;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const auto& [a, b] = sides[i];
        xs.push_back(a.x);
        for (std::size_t k = 0; k < i; ++k) {
            const auto& [c, d] = sides[k];
            const double cross = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
            if (cross == 0.0) continue;
            const double t = ((c.x - a.x) * (d.y - c.y) - (c.y - a.y) * (d.x - c.x)) / cross;
            const double u = ((c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x)) / cross;
            if (t > 0 && t < 1 && u > 0 && u < 1) xs.push_back(a.x + t * (b.x - a.x));
        }
    }
    std::sort(xs.begin(), xs.end());
    double area = 0.0;
    for (std::size_t i = 0; i + 1 < xs.size(); ++i) {
        const double x = (xs[i] + xs[i + 1]) / 2;
        if (!(xs[i + 1] - xs[i] > 1e-9)) continue;
        std::vector<std::pair<double, double>> holes;
        for (const Polygon& other : others)
            for (const auto& hole : inside(other, x)) holes.push_back(hole);
        std::sort(holes.begin(), holes.end());
        for (const auto& [low, high] : inside(polygon, x)) {
            double at = low;
            for (const auto& [from, to] : holes) {
                area += std::max(0.0, std::min(from, high) - at) * (xs[i + 1] - xs[i]);
                at = std::max(at, std::min(to, high));
            }
            area += std::max(0.0, high - at) * (xs[i + 1] - xs[i]);
        }
    }
    return area;
}

class SolidsTest : public ConsoleTest {
protected:
    std::string solids(const std::string& drawing, const std::vector<std::string>& commands) {
        std::vector<std::string> arguments = {drawing, "--module", solidsModule};
        for (const std::string& command : commands) arguments.insert(arguments.end(), {"--command", command});
        return outputOf(arguments);
    }
    std::string planFile() {
        // A slab with an opening, a beam across below it and two columns, one of them round.
        return writtenFile(folder, "plan.dxf",
                           drawingOf("", light("SLAB", {{0, 0, 0}, {8, 0, 0}, {8, 6, 0}, {0, 6, 0}}) +
                                             light("HOLE", {{1, 1, 0}, {3, 1, 0}, {3, 2, 0}, {1, 2, 0}}) +
                                             light("BEAM", {{0, 4, 0}, {8, 4, 0}, {8, 5, 0}, {0, 5, 0}}) +
                                             light("COLUMN", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}) +
                                             circle("COLUMN", 7, 1, 0.5)));
    }
    const std::string raisePlan =
        "RAISE 0.5 OUTLINES SLAB OPENINGS HOLE BEAMS BEAM 1.5 COLUMNS COLUMN 3 DEFLECTION 0.001 NAME D1";
};

TEST_F(SolidsTest, ThePodiumHasItsAreaTimesItsThickness) {
    const double deflection = 2.5, thickness = 250;
    const auto layers = polygonsOf(solids(podium, {"LIST JSON"}), {50000, 20000}, deflection);
    std::vector<Polygon> slabs = layers.at("COFFRAGE"), openings = layers.at("TREMIES");
    ASSERT_EQ(slabs.size(), 3u);
    ASSERT_EQ(openings.size(), 21u);
    // The last outline is the island: no opening takes anything of it.
    const double area =
        areaWithout(slabs[0], openings) + areaWithout(slabs[1], openings) + areaWithout(slabs[2], {});
    const std::string json = solids(podium, {"RAISE 250 OUTLINES COFFRAGE OPENINGS TREMIES", "BODIES JSON"});
    EXPECT_NEAR(value(json, "volume") / (area * thickness), 1.0, 1e-9);
    EXPECT_NEAR(value(json, "areaAbove") / area, 1.0, 1e-9);
    EXPECT_NEAR(value(json, "areaBelow") / area, 1.0, 1e-9);
    EXPECT_EQ(value(json, "pieces"), 3);
    EXPECT_EQ(value(json, "genus"), 11); // the court, stairs with lift, eight ducts, a row of six openings
    EXPECT_EQ(field(json, "valid"), "true");
}

TEST_F(SolidsTest, BeamsAndColumnsAreOneBodyWithTheSlab) {
    const std::string plan = planFile();
    const std::string json = solids(plan, {raisePlan, "BODIES NAME d1 JSON"});
    // Sides of the round column: a hundredth of its radius, 50 for a circle, in two halves of two arcs each.
    int sides = 5;
    while (0.5 * (1 - std::cos(pi / sides)) > 0.001) ++sides;
    const double quarter = std::ceil(sides / 4.0), disc = 0.5 * quarter * std::sin(pi / 2 / quarter);
    const double rim = 4 * quarter * 2 * 0.5 * std::sin(pi / 4 / quarter);
    EXPECT_NEAR(value(json, "volume"), 46 * 0.5 + 8 * 1.0 + 3 * (1 + disc), 1e-9);
    EXPECT_NEAR(value(json, "areaAbove"), 46, 1e-9);
    EXPECT_NEAR(value(json, "areaBelow"), 46, 1e-9);
    EXPECT_NEAR(value(json, "areaSides"), 28 * 0.5 + 6 * 0.5 + 18 * 1.0 + 3 * (4 + rim), 1e-9);
    EXPECT_EQ(value(json, "pieces"), 1);
    EXPECT_EQ(value(json, "genus"), 1);
    EXPECT_EQ(field(json, "low"), "[0, 0, -3]");
    EXPECT_EQ(field(json, "high"), "[8, 6, 0.5]");

    // A second run of that name replaces the first; another name stands beside.
    const std::string both =
        solids(plan, {raisePlan, raisePlan, "RAISE 1 OUTLINES BEAM NAME D2", "BODIES JSON"});
    EXPECT_EQ(value(both, "solids"), 2);
    EXPECT_NEAR(value(both.substr(both.find("totals")), "volume"), 46 * 0.5 + 8 + 3 * (1 + disc) + 8, 1e-9);

    // What is saved is the same body when it is read again.
    const std::string saved = folder / "saved.dxf";
    outputOf({plan, "--module", solidsModule, "--command", raisePlan, "--output", saved});
    const std::string again = solids(saved, {"BODIES NAME D1 JSON"});
    for (const char* name : {"volume", "areaSides", "faces", "genus"})
        EXPECT_NEAR(value(again, name), value(json, name), 1e-9) << name;
}

TEST_F(SolidsTest, SlicesAreContoursInTheDrawing) {
    // Two sides stand upright over the centre of the cut: they are no part of it.
    const std::string steps = writtenFile(
        folder, "steps.dxf",
        drawingOf(
            "",
            light("A",
                  {{0, 0, 0}, {4, 0, 0}, {4, 1, 0}, {8, 1, 0}, {8, 3, 0}, {4, 3, 0}, {4, 2, 0}, {0, 2, 0}})));
    expectHas(solids(steps, {"RAISE 2", "SLICE 0,0,1"}), {"SLAB: 1 contours, area 16.000"});
    const std::string output = solids(planFile(), {raisePlan, "SLICE 0,4.5,0 NORMAL 0,1,0",
                                                   "SLICE 0,0,0.25 LAYER CUT", "SLICE 0,0,9", "LIST JSON"});
    expectHas(output,
              {"D1: 1 contours, area 12.000", "D1: 2 contours, area 46.000", "D1: 0 contours, area 0.000"});
    EXPECT_EQ(parts(output, "\"SLICES\"").size(), 1u) << output;
    EXPECT_EQ(parts(output, "\"CUT\"").size(), 2u) << output;
}

/// Of all triangles of a file, three by three, as its text has them.
std::vector<std::string> cornersOf(const std::string& file) {
    std::vector<std::string> corners, known;
    std::ifstream stream(file);
    std::string line, value;
    while (std::getline(stream, line)) {
        const std::string word = line.substr(0, line.find(' '));
        std::istringstream rest(line.substr(std::min(line.size(), word.size() + 1)));
        if (word == "vertex") corners.push_back(rest.str());
        if (word == "v") known.push_back(rest.str());
        for (std::size_t number = 0; word == "f" && rest >> number;) corners.push_back(known.at(number - 1));
        if (!file.ends_with(".dxf") || !std::getline(stream, value)) continue;
        const int code = std::stoi(line);
        if (code >= 10 && code <= 12) corners.push_back(value);
        if ((code >= 20 && code <= 22) || (code >= 30 && code <= 32)) corners.back() += " " + value;
    }
    return corners;
}

/// Of the faces of a drawing, by their flags.
int shownEdges(const std::string& file) {
    int count = 0;
    std::ifstream stream(file);
    for (std::string code, value; std::getline(stream, code) && std::getline(stream, value);)
        for (const int edge : {1, 2, 4, 8}) count += code == "70" && !(std::stoi(value) & edge);
    return count;
}

TEST_F(SolidsTest, MeshesAreClosedInEveryForm) {
    const std::string plan = planFile(), base = folder / "mesh";
    solids(plan,
           {raisePlan, "MESH " + base + ".stl", "MESH " + base + ".obj NAME D1", "MESH " + base + ".dxf"});
    expectProblems(
        {plan, "--module", solidsModule, "--command", raisePlan, "--command", "MESH " + base + ".stl"},
        exitcode::commandFailed, {"OVERWRITE"});
    expectProblems({plan, "--module", solidsModule, "--command", "BODIES NAME X"}, exitcode::commandFailed,
                   {"no solid \"X\""});
    for (const char* ending : {".stl", ".obj", ".dxf"}) {
        const std::vector<std::string> corners = cornersOf(base + ending);
        std::map<std::pair<std::string, std::string>, int> edges;
        double volume = 0.0;
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
            std::array<std::array<double, 3>, 3> p{};
            for (std::size_t k = 0; k < 3; ++k) {
                std::istringstream(corners[i + k]) >> p[k][0] >> p[k][1] >> p[k][2];
                ++edges[{corners[i + k], corners[i + (k + 1) % 3]}];
                --edges[{corners[i + (k + 1) % 3], corners[i + k]}];
            }
            volume += (p[0][0] * (p[1][1] * p[2][2] - p[1][2] * p[2][1]) -
                       p[0][1] * (p[1][0] * p[2][2] - p[1][2] * p[2][0]) +
                       p[0][2] * (p[1][0] * p[2][1] - p[1][1] * p[2][0])) /
                      6;
        }
        EXPECT_GT(edges.size(), 100u) << ending;
        EXPECT_TRUE(std::all_of(edges.begin(), edges.end(), [](const auto& edge) {
            return edge.second == 0;
        })) << ending;
        const std::string json = solids(plan, {raisePlan, "BODIES JSON"});
        // Each edge of the body is shown by the two triangles at it, no other edge is.
        if (ending == std::string(".dxf")) {
            EXPECT_EQ(shownEdges(base + ending), 2 * value(json, "edges"));
        }
        EXPECT_NEAR(volume, value(json, "volume"), 1e-9) << ending;
    }
}

/// Lengths of the straight strokes of a picture, in millimetres, by their direction in whole degrees from 0
/// to 179.
std::map<int, double> strokesOf(const std::string& file) {
    std::map<int, double> lengths;
    std::ifstream stream(file);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    for (const std::string& each : parts(text, "<path d=\"")) {
        std::istringstream path(each.substr(9, each.find('"', 9) - 9));
        for (char step = 0; path >> step;) {
            double x = 0, y = 0;
            if (step != 'v') path >> x;
            if (step != 'h') path >> y;
            const int degrees = static_cast<int>(std::lround(std::atan2(y, x) * 180 / pi));
            if (step != 'M') lengths[(degrees + 360) % 180] += std::hypot(x, y);
        }
    }
    return lengths;
}

TEST_F(SolidsTest, HiddenLinesAreLeftOutOfViews) {
    // A cube of 10, and behind it one of 4 that peeps out by 1 in height: seen level from the south.
    const std::string plan =
        writtenFile(folder, "cubes.dxf",
                    drawingOf("", light("A", {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}) +
                                      light("B", {{3, 20, 0}, {7, 20, 0}, {7, 24, 0}, {3, 24, 0}})));
    const std::string raise = "RAISE 10 OUTLINES A NAME A", behind = "RAISE 11 OUTLINES B NAME B";
    const std::string level = folder / "level.svg", round = folder / "round.svg";
    solids(plan, {raise, behind, "PLOT " + level + " VIEW 0,-1,0 SCALE 1:1 LAYERS SOLIDS"});
    auto strokes = strokesOf(level);
    // Behind the face of A nothing of A is seen, and of B what stands above it.
    EXPECT_NEAR(strokes[0], 2 * 10 + 4, 0.1);
    EXPECT_NEAR(strokes[90], 2 * 10 + 2 * 1, 0.1);
    // Of a round column the two lines at its rim, and two of the four that stand on quarters of it.
    const std::string column = writtenFile(folder, "column.dxf", drawingOf("", circle("C", 0, 0, 2)));
    solids(column, {"RAISE 5 OUTLINES C", "PLOT " + round + " VIEW 1,-1,0 SCALE 1:1 LAYERS SOLIDS"});
    EXPECT_NEAR(strokesOf(round)[90], 4 * 5, 0.1);
    expectProblems({plan, "--module", solidsModule, "--command", raise, "--command", "PLOT x.svg VIEW 0,0,0"},
                   exitcode::commandFailed, {"no length"});
    expectProblems({plan, "--command", "PLOT x.svg VIEW ISO FILL A"}, exitcode::commandFailed, {"no WINDOW"});
}

} // namespace
