// Pages of PLOT: windows, scales, layers, weights, grounds, and what viewports of a sheet show.
#include "consoletest.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbobjptr.h"
#include "drawingreader.h"
#include "plantext.h"
#include "scriptedport.h"
#include "sheet.h"

#include <cmath>
#include <numbers>

namespace {

std::string groups(const std::vector<std::pair<int, std::string>>& all) {
    std::string text;
    for (const auto& [code, value] : all) text += std::to_string(code) + "\n" + value + "\n";
    return text;
}

std::string drawn(const std::string& entities) {
    return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$INSUNITS\n70\n6\n0\nENDSEC\n"
           "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n2\n0\nLAYER\n2\nWALL-"
           "1\n70\n0\n62\n5\n6\nCONTINUOUS\n370\n70\n"
           "0\nLAYER\n5\nAB\n2\nROOM\n70\n0\n62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTIT"
           "IES\n" +
           entities + "0\nENDSEC\n0\nEOF\n";
}

std::string line(const std::string& layer, const std::string& x0, const std::string& y0,
                 const std::string& x1, const std::string& y1) {
    return groups({{0, "LINE"},
                   {100, "AcDbEntity"},
                   {8, layer},
                   {100, "AcDbLine"},
                   {10, x0},
                   {20, y0},
                   {11, x1},
                   {21, y1}});
}

class PlotPages : public ConsoleTest {
protected:
    std::string picture(const std::string& words) {
        const std::string file = folder / "p.svg";
        outputOf({m_drawing, "--command", "PLOT " + file + " OVERWRITE " + words});
        return folder.read("p.svg");
    }
    std::string m_drawing = writtenFile(
        folder, "d.dxf",
        drawn(line("WALL-1", "0.0", "0.0", "10.0", "5.0") + line("ROOM", "2.0", "0.0", "2.0", "5.0")));
};

TEST_F(PlotPages, HaveTheirScaleGroundWeightsAndLayers) {
    const struct {
        const char* words;
        std::vector<std::string> parts, others;
    } cases[] = {// Ten metres at 1:50 and a margin of 10 mm on either side.
                 {"SCALE 1:50",
                  {"width=\"220mm\" height=\"120mm\"", "M10 110l200-100", "M50 110v-100", "fill=\"#ffffff\"",
                   "#000000"},
                  {}},
                 {"SCALE 100 300 200", {"width=\"300mm\" height=\"200mm\"", "M100 125l100-50"}, {}},
                 {"SCALE 1:50 WINDOW 0,0 4,2", {"width=\"100mm\" height=\"60mm\"", "clip-path"}, {}},
                 {"LAYERS wall*", {"#0000ff"}, {"#000000"}},
                 {"LAYERS ~wall*", {"#000000"}, {"#0000ff"}},
                 {"WEIGHTS", {"stroke-width=\"0.7\"", "stroke-width=\"0.25\""}, {}},
                 {"BACKGROUND black", {"height=\"100%\" fill=\"#000000\"", "stroke=\"#ffffff\""}, {}},
                 {"BACKGROUND none", {"stroke=\"#000000\""}, {"100%"}},
                 {"BACKGROUND #12aB34", {"fill=\"#12ab34\""}, {}}};
    for (const auto& each : cases) {
        const std::string svg = picture(each.words);
        for (const std::string& part : each.parts)
            EXPECT_TRUE(has(svg, part)) << each.words << ": " << part << svg;
        for (const std::string& other : each.others)
            EXPECT_FALSE(has(svg, other)) << each.words << ": " << other;
    }
    for (const auto& [words, reason] :
         {std::pair("SCALE 0:5", "no scale"), std::pair("SCALE 1000:1", "5000 mm"),
          std::pair("LAYOUT x", "Model"), std::pair("WINDOW 1,1 1,5", "one line"),
          std::pair("BACKGROUND pink", "#RRGGBB"), std::pair("LAYOUT Model SCALE 1:5", "its own paper")})
        expectProblems({m_drawing, "--command", std::string("PLOT x.svg ") + words}, exitcode::commandFailed,
                       {reason});
}

// Of the model a sheet shows what its viewport does: not the frozen layer, and nothing beyond its outline.
TEST_F(PlotPages, OfSheetsShowTheModelThroughTheirViewports) {
    m_drawing = writtenFile(folder, "s.dxf",
                            drawn(line("WALL-1", "-900.0", "0.0", "900.0", "0.0") +
                                  line("ROOM", "0.0", "-2.0", "0.0", "2.0") +
                                  groups({{0, "VIEWPORT"},
                                          {100, "AcDbEntity"},
                                          {67, "1"},
                                          {8, "WALL-1"},
                                          {100, "AcDbViewport"},
                                          {10, "100.0"},
                                          {20, "50.0"},
                                          {40, "80.0"},
                                          {41, "40.0"},
                                          {68, "2"},
                                          {69, "2"},
                                          {12, "0.0"},
                                          {22, "0.0"},
                                          {16, "0.0"},
                                          {26, "0.0"},
                                          {36, "1.0"},
                                          {45, "20.0"},
                                          {331, "AB"},
                                          {90, "0"}})));
    const std::string svg = picture("LAYOUT layout1");
    expectHas(svg, {"width=\"420mm\"", "h400v-200h-400Z", "#0000ff"});
    EXPECT_FALSE(has(svg, "#000000")) << svg;
}

// On a sheet dashes are as long in viewports as beside them, unless the drawing says that they are the
// model's. A viewport whose layer is off still shows the model, without its frame, and bounds a sheet without
// paper.
TEST_F(PlotPages, DashesAndExtentsOfSheetsFollowTheirViewports) {
    const auto dashesOf = [&](const std::string& scaling) {
        const std::string viewport = groups({{0, "VIEWPORT"},
                                             {100, "AcDbEntity"},
                                             {67, "1"},
                                             {8, "OFF"},
                                             {100, "AcDbViewport"},
                                             {10, "0.0"},
                                             {20, "0.0"},
                                             {40, "80.0"},
                                             {41, "40.0"},
                                             {68, "2"},
                                             {69, "2"},
                                             {16, "0.0"},
                                             {26, "0.0"},
                                             {36, "1.0"},
                                             {45, "10.0"}});
        const auto dashed = [](const std::string& space) {
            return groups({{0, "LINE"},
                           {100, "AcDbEntity"},
                           {67, space},
                           {8, "0"},
                           {6, "DASHED"},
                           {100, "AcDbLine"},
                           {10, "-5.0"},
                           {20, "0.0"},
                           {11, "5.0"},
                           {21, "0.0"}});
        };
        m_drawing = writtenFile(
            folder, "d.dxf",
            "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$PSLTSCALE\n70\n" + scaling +
                "\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLTYPE\n0\nLTYPE\n2\nDASHED\n70\n0\n72\n65\n"
                "73\n2\n"
                "40\n2.0\n49\n1.0\n49\n-1.0\n0\nENDTAB\n0\nTABLE\n2\nLAYER\n0\nLAYER\n2\nOFF\n70\n0\n62\n-"
                "1\n0\nENDTAB\n0\n"
                "ENDSEC\n0\nSECTION\n2\nENTITIES\n" +
                viewport + dashed("0") + dashed("1") + "0\nENDSEC\n0\nEOF\n");
        const std::string svg = picture("LAYOUT Layout1");
        expectHas(svg, {"width=\"420mm\" height=\"220mm\""}); // 80 by 40 at 1:0.2, and a margin
        EXPECT_FALSE(has(svg, "#ff0000")) << "the frame's layer is off";
        std::vector<double> dashes;
        const std::string mark = "stroke-dasharray=\"";
        for (std::size_t i = svg.find(mark); i != svg.npos; i = svg.find(mark, i + 1))
            dashes.push_back(std::stod(svg.substr(i + mark.size())));
        return dashes;
    };
    EXPECT_EQ(dashesOf("1"), (std::vector<double>{5.0, 5.0}));
    EXPECT_EQ(dashesOf("0"), (std::vector<double>{20.0, 5.0}));
}

// The view's x axis stands on the sheet turned by the twist, counter-clockwise, its middle in the viewport's.
TEST(SheetViews, ShowTheModelTurnedAndScaled) {
    const auto viewport = [](const std::string& number, const std::string& flags) {
        return groups({{0, "VIEWPORT"}, {100, "AcDbEntity"}, {67, "1"},   {8, "ROOM"},  {100, "AcDbViewport"},
                       {10, "100.0"},   {20, "50.0"},        {30, "0.0"}, {40, "80.0"}, {41, "40.0"},
                       {68, "2"},       {69, number},        {12, "7.0"}, {22, "3.0"},  {16, "0.0"},
                       {26, "0.0"},     {36, "1.0"},         {17, "5.0"}, {27, "6.0"},  {37, "0.0"},
                       {45, "20.0"},    {51, "30.0"},        {90, flags}});
    };
    hostkit::ScriptedPort port;
    const hostkit::ScopedPort usePort(port);
    const auto database = hostkit::openDrawingFromMemory(
        drawn(viewport("2", "0") + viewport("1", "0") + viewport("3", "131072")), L"test.dxf");
    ASSERT_NE(database, nullptr);
    std::vector<SheetView> shown;
    const AcDbObjectPointer<AcDbBlockTableRecord> sheet(database->paperSpaceId(), AcDb::kForRead);
    ASSERT_EQ(sheet->entities().size(), 3u);
    for (const AcDbObjectId id : sheet->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (auto view = sheetViewOf(*entity)) shown.push_back(std::move(*view));
    }
    ASSERT_EQ(shown.size(), 1u) << "neither the sheet itself nor one that is off";
    const double twist = std::numbers::pi / 6.0;
    EXPECT_EQ(shown[0].scale, 2.0);
    const AcGeVector3d along = shown[0].modelToSheet * AcGeVector3d::kXAxis;
    EXPECT_TRUE(along.isEqualTo(AcGeVector3d(2.0 * std::cos(twist), 2.0 * std::sin(twist), 0.0)));
    const AcGePoint3d target = shown[0].modelToSheet * AcGePoint3d(5.0, 6.0, 0.0);
    EXPECT_TRUE(target.isEqualTo(AcGePoint3d(100.0 - 14.0, 50.0 - 6.0, 0.0))) << target.x << ' ' << target.y;
    ASSERT_EQ(shown[0].outline.points().size(), 4u);
    EXPECT_TRUE(shown[0].outline.points()[2].isEqualTo(AcGePoint3d(140.0, 70.0, 0.0)));
}

} // namespace
