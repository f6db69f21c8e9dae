// What of a drawing comes into its picture, and how it looks there.
#include "plotdrawing.h"

#include "dbdatabase.h"
#include "dblayertable.h"
#include "dbobjptr.h"
#include "drawingreader.h"
#include "entitypicking.h"
#include "plantext.h"
#include "scriptedport.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <set>

using hostkit::PicturePath;
using hostkit::PlacedText;

namespace {

// Keeps what is drawn instead of drawing it; at scale 0, where only extents are wanted, nothing.
class RecordingSink final : public PictureSink {
public:
    explicit RecordingSink(double scale = 1.0)
        : pageScale(scale) {}
    struct Stroke {
        PicturePath path;
        StrokeStyle style;
    };
    struct Fill {
        PicturePath path;
        std::uint32_t rgb;
        double opacity;
    };
    void stroke(const PicturePath& path, const StrokeStyle& style) override {
        if (pageScale > 0.0) strokes.push_back({path, style});
    }
    void fill(const PicturePath& path, std::uint32_t rgb, double opacity) override {
        if (fills.empty()) strokesAtFirstFill = strokes.size();
        fills.push_back({path, rgb, opacity});
    }
    void text(const PlacedText& text) override { texts.push_back(text); }
    void dot(const AcGePoint3d& point, std::uint32_t) override { dots.push_back(point); }
    void endlessLine(const AcGePoint3d&, const AcGeVector3d&, bool isBothWays, const StrokeStyle&) override {
        endless.push_back(isBothWays);
    }
    void beginClip(const PicturePath&) override { ++clips; }
    void endClip() override {}
    double scale() const override { return pageScale; }

    double pageScale;
    std::vector<Stroke> strokes;
    std::vector<Fill> fills;
    std::vector<PlacedText> texts;
    std::vector<AcGePoint3d> dots;
    std::vector<bool> endless;
    int clips = 0;
    std::size_t strokesAtFirstFill = 0;
};

std::string layer(const std::string& name, int color, int flags = 0,
                  const std::string& linetype = "CONTINUOUS") {
    return "0\nLAYER\n2\n" + name + "\n70\n" + std::to_string(flags) + "\n62\n" + std::to_string(color) +
           "\n6\n" + linetype + "\n";
}

std::string line(const std::string& layerName, double x, const std::string& more = "") {
    return "0\nLINE\n8\n" + layerName + "\n" + more + "10\n" + number(x) + "\n20\n0.0\n11\n" + number(x) +
           "\n21\n1.0\n";
}

std::string insertOn(const std::string& layerName, const std::string& block, const std::string& more = "") {
    return insert(block, 0, 0, 1, 1, 0, more, layerName);
}

class PlotTest : public ::testing::Test {
protected:
    void draw(const std::string& blocks, const std::string& entities,
              const std::vector<std::wstring>& filledLayers = {}) {
        const std::string drawing = "0\nSECTION\n2\nTABLES\n"
                                    "0\nTABLE\n2\nLTYPE\n70\n1\n0\nLTYPE\n2\nDASHED\n70\n0\n3\n\n72\n65\n73\n"
                                    "2\n40\n3.0\n49\n2.0\n49\n-1.0\n0\nENDTAB\n"
                                    "0\nTABLE\n2\nLAYER\n70\n5\n" +
                                    layer("0", 7) + layer("RED", 1) + layer("REF", 3, 0, "DASHED") +
                                    layer("FROZEN", 2, 1) + layer("OFF", -2) + layer("DEFPOINTS", 7) +
                                    "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n" + blocks +
                                    "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" + entities + "0\nENDSEC\n0\nEOF\n";
        const auto database = hostkit::openDrawingFromMemory(drawing, L"test.dxf");
        ASSERT_NE(database, nullptr) << "the test's drawing is broken";
        AcDbSymbolTablePointer<AcDbLayerTable> layers(database.get(), AcDb::kForRead);
        std::vector<AcDbObjectId> filled(filledLayers.size());
        for (std::size_t i = 0; i < filled.size(); ++i)
            ASSERT_EQ(layers->getAt(filledLayers[i].c_str(), filled[i]), Acad::eOk);
        layers.close();
        sink = RecordingSink(sink.pageScale);
        report = plotDrawing(*database, sink, {.filledLayers = filled});
        EXPECT_EQ(database->numOpenObjects(), 0);
    }
    // Colours of the strokes, by the x of their begin.
    std::map<double, std::uint32_t> colors() const {
        std::map<double, std::uint32_t> found;
        for (const auto& each : sink.strokes) found[each.path.points().front().x] = each.style.rgb;
        return found;
    }

    hostkit::ScriptedPort port;
    hostkit::ScopedPort usePort{port};
    RecordingSink sink;
    PlotReport report;
};

TEST_F(PlotTest, HiddenThingsStayOut) {
    draw("", line("RED", 1) + line("FROZEN", 2) + line("OFF", 3) + line("DEFPOINTS", 4) +
                 line("RED", 5, "60\n1\n") + line("NOWHERE", 6));
    const auto found = colors();
    EXPECT_EQ(found.size(), 2u);
    EXPECT_TRUE(found.contains(1) && found.contains(6));
}

TEST_F(PlotTest, ColoursComeFromTheLayerTheBlockOrTheEntity) {
    const std::string body = line("0", 1) + line("0", 2, "62\n0\n") + line("RED", 3) +
                             line("RED", 4, "62\n5\n") + line("RED", 5, "62\n7\n") +
                             line("RED", 6, "62\n0\n");
    draw(block("B", body), insertOn("REF", "B", "62\n4\n"));
    const std::map<double, std::uint32_t> wanted = {{1, 0x00FF00}, // layer 0: the reference's layer
                                                    {2, 0x00FFFF}, // by block: the reference's colour
                                                    {3, 0xFF0000}, {4, 0x0000FF},
                                                    {5, 0x000000}, // white is black on paper
                                                    {6, 0x00FFFF}};
    EXPECT_EQ(colors(), wanted);
}

TEST_F(PlotTest, AReferenceOnAHiddenLayerHidesWhatStandsOnLayerZero) {
    const std::string body = line("0", 1) + line("RED", 2);
    draw(block("B", body), insertOn("OFF", "B"));
    EXPECT_EQ(colors().size(), 1u);
    EXPECT_TRUE(colors().contains(2)) << "off: what stands on other layers is seen";
    draw(block("B", body), insertOn("FROZEN", "B"));
    EXPECT_TRUE(sink.strokes.empty()) << "frozen: all of it is hidden";
}

TEST_F(PlotTest, LinetypesScaleWithTheBlock) {
    draw(block("B", line("0", 1) + line("RED", 2, "6\nDASHED\n48\n0.5\n")),
         insert("B", 0, 0, 10, 10, 0, "43\n10.0\n", "REF"));
    ASSERT_EQ(sink.strokes.size(), 2u);
    EXPECT_EQ(sink.strokes[0].style.dashes, (std::vector<double>{20, 10}));
    EXPECT_EQ(sink.strokes[1].style.dashes, (std::vector<double>{10, 5}));
}

TEST_F(PlotTest, ArraysRepeatTheirAttributesToo) {
    const std::string attributes =
        "66\n1\n70\n3\n71\n2\n44\n10.0\n45\n20.0\n"
        "0\nATTRIB\n8\nRED\n10\n0.0\n20\n0.0\n40\n1.0\n1\nshown\n2\nTAG\n70\n0\n"
        "0\nATTRIB\n8\nRED\n10\n0.0\n20\n0.0\n40\n1.0\n1\nhidden\n2\nTAG2\n70\n1\n0\nSEQEND\n8\n0\n";
    draw(block("B",
               line("RED", 0) + "0\nATTDEF\n8\nRED\n10\n0.0\n20\n0.0\n40\n1.0\n1\nx\n3\ny\n2\nTAG\n70\n0\n"),
         insert("B", 5, 7, 1, 1, 0, attributes, "REF"));
    EXPECT_EQ(sink.strokes.size(), 6u);
    ASSERT_EQ(sink.texts.size(), 6u);
    const auto highest =
        std::max_element(sink.texts.begin(), sink.texts.end(), [](const auto& a, const auto& b) {
            return a.origin.x + a.origin.y < b.origin.x + b.origin.y;
        });
    EXPECT_DOUBLE_EQ(highest->origin.x, 20.0);
    EXPECT_DOUBLE_EQ(highest->origin.y, 20.0);
    EXPECT_EQ(highest->runs[0].text, L"shown");
}

TEST_F(PlotTest, EveryKindHasItsForm) {
    draw("", "0\nPOINT\n8\nRED\n10\n7.0\n20\n8.0\n"
             "0\nSOLID\n8\nRED\n10\n0.0\n20\n0.0\n11\n1.0\n21\n0.0\n12\n0.0\n22\n1.0\n13\n1.0\n23\n1.0\n"
             "0\nXLINE\n8\nRED\n100\nAcDbXline\n10\n0.0\n20\n0.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n"
             "0\nCIRCLE\n8\nRED\n10\n0.0\n20\n0.0\n40\n2.0\n210\n0.0\n220\n0.0\n230\n-1.0\n"
             "0\nTEXT\n8\nRED\n10\n0.0\n20\n0.0\n40\n2.0\n1\nabc\n50\n90.0\n72\n2\n11\n10.0\n21\n20.0\n"
             "0\nMTEXT\n8\nRED\n100\nAcDbMText\n10\n5.0\n20\n5.0\n30\n0.0\n40\n1.0\n71\n9\n1\none\\Ptwo\n"
             "0\nWIPEOUT\n8\nRED\n");
    EXPECT_EQ(sink.dots.size(), 1u);
    ASSERT_EQ(sink.fills.size(), 1u);
    // Around the figure, not crosswise.
    const auto& corners = sink.fills[0].path.points();
    EXPECT_DOUBLE_EQ(corners[2].x, 1.0);
    EXPECT_DOUBLE_EQ(corners[2].y, 1.0);
    EXPECT_EQ(sink.endless, std::vector<bool>{true});
    EXPECT_EQ(sink.strokes.size(), 1u);
    ASSERT_EQ(sink.texts.size(), 3u);
    EXPECT_EQ(sink.texts[0].anchor, PlacedText::Anchor::end);
    EXPECT_DOUBLE_EQ(sink.texts[0].origin.x, 10.0);
    EXPECT_NEAR(sink.texts[0].along.y, 2.0, 1e-12);
    EXPECT_NEAR(sink.texts[2].origin.y, 5.0, 1e-12) << "the last line stands on the lower right point";
    EXPECT_GT(sink.texts[1].origin.y, 6.0);
    EXPECT_EQ(report.notDrawn, (std::map<std::wstring, std::size_t>{{L"WIPEOUT", 1}}));
    EXPECT_EQ(report.drawn, 6u);
}

// Splines that have fit points alone, and blocks of dimensions that stand displaced: only files have them.
TEST_F(PlotTest, IsPickedWhereItIsDrawn) {
    const std::string drawing =
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n" +
        block("*D1", "0\nLINE\n8\n0\n10\n0.0\n20\n0.0\n11\n5.0\n21\n0.0\n") +
        "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
        "0\nSPLINE\n5\n50\n100\nAcDbEntity\n8\n0\n100\nAcDbSpline\n70\n8\n71\n3\n72\n0\n73\n0\n74\n3\n"
        "11\n0.0\n21\n0.0\n31\n0.0\n11\n10.0\n21\n7.0\n31\n0.0\n11\n20.0\n21\n0.0\n31\n0.0\n"
        "0\nDIMENSION\n5\n51\n100\nAcDbEntity\n8\n0\n100\nAcDbDimension\n2\n*D1\n10\n0.0\n20\n0.0\n30\n0.0\n"
        "12\n100.0\n22\n50.0\n32\n0.0\n70\n1\n100\nAcDbAlignedDimension\n13\n0.0\n23\n0.0\n14\n5.0\n24\n0.0\n"
        "0\nENDSEC\n0\nEOF\n";
    const auto database = hostkit::openDrawingFromMemory(drawing, L"test.dxf");
    ASSERT_NE(database, nullptr);
    sink = RecordingSink();
    plotDrawing(*database, sink);
    ASSERT_EQ(sink.strokes.size(), 2u);
    for (const auto& [place, index] :
         {std::pair(AcGePoint3d(10, 7, 0), 0), std::pair(AcGePoint3d(105, 50, 0), 1)}) {
        const auto& points = sink.strokes[static_cast<std::size_t>(index)].path.points();
        const bool isThere =
            std::any_of(points.begin(), points.end(),
                        [&place = place](const AcGePoint3d& each) { return each.distanceTo(place) < 1e-6; });
        EXPECT_TRUE(isThere) << index;
        const auto around =
            hostkit::PickRegion::box({place.x - 0.1, place.y - 0.1}, {place.x + 0.1, place.y + 0.1});
        const AcDbObjectId picked = hostkit::pickedEntity(*database, database->modelSpaceId(), {}, around);
        EXPECT_EQ(picked.handle().value(), 0x50u + static_cast<unsigned>(index));
    }
    EXPECT_TRUE(hostkit::pickedEntity(*database, database->modelSpaceId(), {},
                                      hostkit::PickRegion::box({4, -1}, {5, 0}))
                    .isNull())
        << "where the dimension's block would stand without its place";
}

TEST_F(PlotTest, ADimensionWithoutABlockIsLaidOutButForItsPoints) {
    const auto database =
        hostkit::openDrawingFromMemory("0\nSECTION\n2\nENTITIES\n0\nDIMENSION\n8\n0\n70\n1\n10\n9.0\n20\n3."
                                       "0\n13\n0.0\n23\n0.0\n14\n9.0\n24\n0.0\n"
                                       "0\nENDSEC\n0\nEOF\n",
                                       L"test.dxf");
    ASSERT_NE(database, nullptr);
    plotDrawing(*database, sink);
    EXPECT_EQ(sink.strokes.size(), 4u) << "two extension lines, a line that the text breaks";
    EXPECT_EQ(sink.fills.size(), 2u);
    EXPECT_EQ(sink.texts.size(), 1u);
    EXPECT_TRUE(sink.dots.empty()) << "no layer says that these are not plotted";
}

std::string hatch(const std::string& pattern) {
    return "0\nHATCH\n8\nRED\n100\nAcDbHatch\n10\n0.0\n20\n0.0\n30\n0.0\n210\n0.0\n220\n0.0\n230\n1."
           "0\n2\nP\n" +
           pattern +
           "71\n0\n91\n1\n92\n2\n72\n0\n73\n1\n93\n4\n10\n0.0\n20\n0.0\n10\n10.0\n20\n0.0\n10\n10.0\n20\n10."
           "0\n10\n0.0\n20\n"
           "10.0\n97\n0\n75\n0\n76\n1\n";
}

TEST_F(PlotTest, HatchesAreFilledLinedOrToned) {
    const std::string lines =
        "52\n0.0\n41\n1.0\n77\n0\n78\n1\n53\n0.0\n43\n0.0\n44\n0.0\n45\n0.0\n46\n1.0\n79\n0\n98\n0\n";
    draw("", hatch("70\n1\n") + "98\n0\n");
    ASSERT_EQ(sink.fills.size(), 1u);
    EXPECT_EQ(sink.fills[0].opacity, 1.0);
    draw("", hatch("70\n0\n") + lines);
    EXPECT_EQ(sink.clips, 0) << "the lines end at the boundary by themselves";
    ASSERT_EQ(sink.strokes.size(), 1u);
    const auto& steps = sink.strokes[0].path.steps();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), PicturePath::Step::move), 10);
    sink.pageScale = 0.1; // the lines are a tenth of a millimetre apart on paper
    draw("", hatch("70\n0\n") + lines);
    ASSERT_EQ(sink.fills.size(), 1u);
    EXPECT_LT(sink.fills[0].opacity, 1.0);
}

TEST_F(PlotTest, ClosedCurvesOfALayerAreFilledBeneathAllLines) {
    std::string drawing = line("RED", 1) + circle("REF", 20, 0, 1) + circle("OFF", 30, 0, 1);
    for (const double x : {10, 40, 50, 60}) drawing += circle("RED", x, 0, 1);
    draw("", drawing);
    EXPECT_TRUE(sink.fills.empty());
    const std::size_t strokes = sink.strokes.size();
    draw("", drawing, {L"OFF", L"RED"});
    EXPECT_EQ(sink.strokes.size(), strokes) << "the outlines are drawn as well";
    EXPECT_EQ(sink.strokesAtFirstFill, 0u);
    ASSERT_EQ(sink.fills.size(), 4u);
    std::set<double> tones;
    for (const auto& fill : sink.fills) {
        EXPECT_EQ(fill.rgb, 0xFF0000u);
        EXPECT_TRUE(fill.opacity > 0.0 && fill.opacity < 1.0);
        tones.insert(fill.opacity);
    }
    EXPECT_EQ(tones.size(), 3u);
}

TEST_F(PlotTest, BlocksThatMultiplyWithoutEndAreCut) {
    std::string blocks = block("B0", line("RED", 1));
    for (int i = 1; i <= 9; ++i) {
        std::string body;
        for (int k = 0; k < 10; ++k) body += insertOn("REF", "B" + std::to_string(i - 1));
        blocks += block("B" + std::to_string(i), body);
    }
    sink.pageScale = 0.0;
    draw(blocks, insertOn("REF", "B9"));
    EXPECT_TRUE(report.isCut);
    EXPECT_LE(report.drawn, 2'000'000u);
}

} // namespace
