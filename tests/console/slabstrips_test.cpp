// SLABSTRIPS of the example module: roles, areas, tables, what is refused, and what stays in the drawing.
#include "acdocman.h"
#include "axlock.h"
#include "consoletest.h"
#include "dbdatabase.h"
#include "dblayertablerecord.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbtext.h"
#include "host.h"
#include "jsonfields.h"
#include "plantext.h"
#include "rxdlinkr.h"
#include "scriptedport.h"
#include "textencoding.h"
#include "vexodatabasetools.h"
#include "vexogeometrytools.h"

#include <algorithm>
#include <numbers>
#include <random>

namespace {

using std::numbers::pi;

struct StripEntity {
    std::string handle;
    double area;
    long number;
};

// A port that breaks off when the meter has come so far.
class BreakingPort : public hostkit::ScriptedPort {
public:
    bool interruptRequested() const override {
        return breakAt >= 0 && !meters.empty() && !meters.back().positions.empty() &&
               meters.back().positions.back() >= breakAt;
    }
    int breakAt = -1;
};

class SlabStripsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(host.runtime().linker().loadModule(hostkit::wideFromUtf8(slabModule).c_str()), Acad::eOk);
    }

    AcDbDatabase& database() { return *host.documents().curDocument()->database(); }

    void openFile(const std::string& file) {
        ASSERT_EQ(host.openDocument(hostkit::wideFromUtf8(file)), Acad::eOk);
        port.meters.clear(); // those of the command alone are looked at
    }
    void open(const std::string& entities) {
        openFile(writtenFile(folder, "plan.dxf", drawingOf("", entities)));
    }
    hostkit::CommandResult run(const std::string& options) {
        port.printed.clear();
        return host.run(L"SLABSTRIPS " + hostkit::wideFromUtf8(options));
    }
    std::string printed() { return hostkit::utf8FromWide(port.printed); }
    // The report of a run that goes well, as JSON.
    std::string report(const std::string& entities, const std::string& options = "") {
        open(entities);
        const hostkit::CommandResult result = run(options + " JSON");
        EXPECT_EQ(result.status, Acad::eOk) << hostkit::utf8FromWide(result.reason);
        EXPECT_TRUE(isJson(printed())) << printed();
        return printed();
    }
    // Those of model space that stand on the layer.
    template <class Kind, class Visit>
    void forEachOn(const wchar_t* name, Visit&& visit) {
        AcDbObjectIdArray ids;
        VEXODatabaseTools::getFromModelSpace(ids, &database());
        for (const AcDbObjectId id : ids) {
            const AcDbObjectPointer<Kind> entity(id, AcDb::kForRead);
            if (!entity.object()) continue;
            const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
            if (layer.object() && layer->name() == name) visit(*entity.object());
        }
    }
    std::vector<StripEntity> stripsOn(const wchar_t* layer) {
        std::vector<StripEntity> strips;
        forEachOn<AcDbPolyline>(layer, [&](AcDbPolyline& strip) {
            wchar_t handle[17];
            strip.handle().getIntoAsciiBuffer(handle);
            StripEntity each{hostkit::utf8FromWide(handle), 0.0, -1};
            strip.getArea(each.area);
            double filedArea = 0.0;
            EXPECT_TRUE(
                VEXODatabaseTools::getLongValueInEntityXData(&strip, L"ORDANE", L"SLABSTRIP", each.number));
            EXPECT_TRUE(VEXODatabaseTools::getDoubleValueInEntityXData(&strip, L"ORDANE", L"SLABSTRIP_AREA",
                                                                       filedArea));
            EXPECT_NEAR(filedArea, each.area, 1e-9 * each.area);
            EXPECT_TRUE(strip.isClosed());
            strips.push_back(each);
        });
        return strips;
    }
    std::size_t textsOn(const wchar_t* layer) {
        std::size_t count = 0;
        forEachOn<AcDbText>(layer, [&](AcDbText&) { ++count; });
        return count;
    }

    TemporaryFolder folder;
    BreakingPort port;
    hostkit::Host host{port};
};

const std::string slab = rectangle("S", 0, 0, 20, 10);
const std::string hole = rectangle("H", 8, 4, 3, 2);
const std::string byLayers = "OUTLINES S OPENINGS H";

TEST_F(SlabStripsTest, StripsAddUpToSlabWithoutOpenings) {
    // Two circles of radius 2, their centres 2 apart (https://en.wikipedia.org/wiki/Lens_(geometry)).
    const double lens = 2 * 4 * std::acos(0.5) - std::sqrt(16.0 - 4.0);
    const std::string disc = circle("H", 8, 5, 2);
    const std::string halfDiscs = light("H", {{4, 2, 1}, {4, 6, 0}}) + light("H", {{10, 5, 0}, {14, 5, 1}});
    const std::string island = rectangle("S", 5, 3, 4, 4);
    const std::string clockwise = light("S", {{0, 0, 0}, {0, 10, 0}, {20, 10, 0}, {20, 0, 0}});
    const std::string fromBelow = light("H", {{-8, 4, 0}, {-11, 4, 0}, {-11, 6, 0}, {-8, 6, 0}}, 0, -1);
    const std::string closedByItsEnds =
        light("S", {{0, 0, 0}, {20, 0, 0}, {20, 10, 0}, {0, 10, 0}, {0, 0, 0}}, 0, 1, false);
    struct {
        const char* what;
        std::string entities;
        std::string options;
        std::vector<double> wanted; // areas without openings, one a slab
    } const cases[] = {
        {"no opening", slab, "", {200}},
        {"rectangle inside", slab + hole, "", {194}},
        {"half over the edge", slab + circle("H", 10, 0, 2), "", {200 - 2 * pi}},
        {"over a corner", slab + circle("H", 20, 10, 2), "", {200 - pi}},
        {"overlapping each other", slab + disc + circle("H", 10, 5, 2), "", {200 - 8 * pi + lens}},
        {"one twice", slab + disc + disc, "", {200 - 4 * pi}},
        {"side by side, level", slab + rectangle("H", 4, 4, 2, 2) + rectangle("H", 6, 4, 2, 2), "", {192}},
        {"touching the edge within", slab + rectangle("H", 0, 4, 2, 2), "", {196}},
        {"touching the edge outside", slab + rectangle("H", -2, 4, 2, 2), byLayers, {200}},
        {"across the whole slab", slab + rectangle("H", 8, -1, 2, 12), "", {180}},
        {"over the end of one of two equal prongs",
         light("S",
               {{0, 0, 0}, {10, 0, 0}, {10, 2, 0}, {4, 2, 0}, {4, 4, 0}, {10, 4, 0}, {10, 6, 0}, {0, 6, 0}}) +
             rectangle("H", 8, 3.5, 3, 3),
         byLayers,
         {44}},
        {"with two tips equally far",
         rectangle("S", 0, 0, 10, 8) + light("H", {{3, 1, 0}, {6, 2, 0}, {4, 4, 0}, {6, 6, 0}, {3, 7, 0}}),
         "",
         {69}},
        {"half discs standing and lying", slab + halfDiscs, "", {200 - 4 * pi}},
        {"island and its own opening",
         slab + rectangle("S", 4, 2, 8, 6) + island + circle("S", 7, 5, 1),
         "",
         {200 - 48, 16 - pi}},
        {"island by layers", slab + rectangle("H", 4, 2, 8, 6) + island, byLayers, {200 - 48, 16}},
        {"an opening in two slabs",
         slab + rectangle("S", 20, 0, 20, 10) + rectangle("H", 18, 4, 3, 2),
         byLayers,
         {196, 198}},
        {"openings by layer, slabs outermost",
         slab + hole + rectangle("H", 12, 4, 2, 2),
         "OPENINGS H",
         {190}},
        {"other heights do not meet", slab + rectangle("S", 2, 2, 4, 4, 3.0), "", {200, 16}},
        {"clockwise, from below", clockwise + fromBelow, "", {194}},
        {"closed by its ends", closedByItsEnds + circle("H", 9, 5, 1), "", {200 - pi}},
        {"far away", rectangle("S", 1e6, 1e6, 20, 10) + circle("H", 1e6 + 9, 1e6 + 5, 2), "", {200 - 4 * pi}},
    };
    for (const auto& each : cases)
        for (const char* direction : {"", "DIRECTION 0,1", "ANGLE 30 BASE 3,-7", "DIRECTION -2,-1"}) {
            SCOPED_TRACE(std::string(each.what) + ", " + direction);
            const std::string text = report(each.entities, each.options + " " + direction);
            const std::vector<std::string> slabs =
                parts(text.substr(0, text.find("\"findings\"")), "\"openings\"");
            ASSERT_EQ(slabs.size(), each.wanted.size()) << text;
            double listed = 0.0, wanted = 0.0;
            for (std::size_t i = 0; i < slabs.size(); ++i) {
                EXPECT_EQ(field(slabs[i], "proved"), "true") << slabs[i];
                EXPECT_NEAR(value(slabs[i], "stripsArea"), each.wanted[i], 2e-7 * each.wanted[i]);
                EXPECT_NEAR(value(slabs[i], "difference"), 0.0, 2e-7 * each.wanted[i]);
                wanted += each.wanted[i];
            }
            // What stands in the drawing is what the table says.
            const std::vector<StripEntity> strips = stripsOn(L"SLABSTRIPS");
            const std::vector<std::string> rows = parts(text, "{\"number\"");
            ASSERT_EQ(rows.size(), strips.size());
            for (std::size_t i = 0; i < strips.size(); ++i) {
                EXPECT_EQ(field(rows[i], "handle"), "\"" + strips[i].handle + "\"");
                EXPECT_EQ(value(rows[i], "number"), static_cast<double>(i + 1));
                EXPECT_EQ(strips[i].number, static_cast<long>(i + 1));
                EXPECT_NEAR(value(rows[i], "area"), strips[i].area, 1e-9 * strips[i].area);
                listed += strips[i].area;
            }
            EXPECT_NEAR(listed, wanted, 2e-7 * wanted);
        }
}

// Points thrown at the plan lie in one strip exactly when they lie in the slab and in no opening.
TEST_F(SlabStripsTest, RandomPlansAreCoveredOnceAndNowhereElse) {
    struct Disc {
        double x, y, radius;
    };
    std::mt19937 random(5);
    const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 9; ++round) {
        std::string entities = rectangle("S", 0, 0, 30, 20);
        std::vector<Disc> discs;
        for (int i = 0; i < 1 + 5 * round; ++i) {
            discs.push_back({between(0, 30), between(0, 20), between(0.2, 2.5)});
            entities += circle("H", discs.back().x, discs.back().y, discs.back().radius);
        }
        const std::string text = report(entities, byLayers + " ANGLE " + number(between(0, 360)));
        EXPECT_FALSE(has(text, "\"proved\": false")) << round << text;

        std::vector<std::unique_ptr<AcDbCurve>> strips;
        forEachOn<AcDbPolyline>(L"SLABSTRIPS", [&](AcDbPolyline& strip) {
            strips.emplace_back(static_cast<AcDbCurve*>(strip.clone()));
        });
        for (int i = 0; i < 400; ++i) {
            const AcGePoint3d point(between(-1, 31), between(-1, 21), 0);
            double margin = std::min({point.x, point.y, 30 - point.x, 20 - point.y});
            for (const Disc& disc : discs)
                margin = std::min(margin, std::hypot(point.x - disc.x, point.y - disc.y) - disc.radius);
            if (std::abs(margin) <= 0.01) continue;
            const auto covering = std::count_if(strips.begin(), strips.end(), [&](const auto& strip) {
                return VEXOGeometryTools::isPointInsideContour(point, strip.get());
            });
            EXPECT_EQ(covering, margin > 0.0 ? 1 : 0) << round << ": " << point.x << ", " << point.y;
        }
    }
}

TEST_F(SlabStripsTest, WhatCannotTakePartIsNamedAndTheRestGoesOn) {
    struct {
        std::string entities, options, reason;
    } const cases[] = {
        {light("S", {{30, 0, 0}, {40, 0, 0}, {40, 10, 0}}, 0, 1, false), "OUTLINES S", "is not closed"},
        {light("H", {{2, 2, 0}, {4, 4, 0}, {4, 2, 0}, {2, 4, 0}}), "", "crosses itself"},
        {light("H", {{2, 2, 0}, {4, 4, 0}}), "", "encloses nothing"},
        {light("H", {{2, 2, 0}, {4, 2, 0}, {3, 2, 0}}), "", "encloses nothing"},
        {rectangle("H", 30, 2, 2, 2), byLayers, "lies in no slab"},
        {rectangle("H", 3, 2, 2, 2, 9.0), byLayers, "is at another"},
        {rectangle("S", 15, 5, 20, 10), byLayers, "overlaps the slab"},
        {slab, "", "the same outline as"},
    };
    for (const auto& each : cases) {
        const std::string text = report(slab + hole + each.entities, each.options);
        const std::string findings = text.substr(text.find("\"findings\""));
        expectHas(findings, {each.reason});
        EXPECT_FALSE(has(findings, "\"handle\": \"\"")) << findings;
        expectHas(text, {"\"proved\": true"});
        EXPECT_FALSE(stripsOn(L"SLABSTRIPS").empty());
    }
    // An opening that is the whole slab leaves nothing, which is no fault.
    const std::string text = report(slab + rectangle("H", 0, 0, 20, 10), byLayers);
    expectHas(text, {"\"stripsArea\": 0,", "\"proved\": true"});
    EXPECT_TRUE(stripsOn(L"SLABSTRIPS").empty());
}

TEST_F(SlabStripsTest, RefusedRequestsChangeNothing) {
    struct {
        std::string entities, options;
        Acad::ErrorStatus status;
        const wchar_t* reason;
    } const cases[] = {
        {slab, "OUTLINES NOWHERE", Acad::eKeyNotFound, L"no layer \"NOWHERE\""},
        {slab, "OUTLINES S OPENINGS S,NOWHERE", Acad::eKeyNotFound, L"NOWHERE"},
        {slab, "OUTLINES", Acad::eInvalidInput, L"name of a layer"},
        {slab, "OUTLINES S, S", Acad::eInvalidInput, L"commas alone"},
        {slab, "OUTLINES S OPENINGS S", Acad::eInvalidInput, L"containment"},
        {slab, "OUTLINES S LAYER S", Acad::eInvalidInput, L"layer of their own"},
        {slab, "DIRECTION 0,0", Acad::eInvalidInput, L"no length"},
        {slab, "DIRECTION nan,1", Acad::eInvalidInput, L"vector"},
        {slab, "DIRECTION", Acad::eInvalidInput, L"vector"},
        {slab, "ANGLE inf", Acad::eInvalidInput, L"degrees"},
        {slab, "BASE 1", Acad::eInvalidInput, L"base"},
        {slab, "SIDEWAYS", Acad::eInvalidInput, L"OUTLINES"},
        {slab, "LAYER A*B", Acad::eInvalidSymbolTableName, L"cannot be drawn"},
        {light("S", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0, 1, false), "", Acad::eInvalidInput,
         L"no closed contour"},
        {light("S", {{0, 0, 0}, {1, 1, 0}}), "", Acad::eInvalidInput, L"no closed contour"},
        {slab, "CSV no/such/folder.csv", Acad::eFileAccessErr, L"folder.csv"},
    };
    for (const auto& each : cases) {
        open(each.entities);
        const hostkit::CommandResult result = run(each.options);
        EXPECT_EQ(result.status, each.status) << each.options;
        EXPECT_NE(result.reason.find(each.reason), std::wstring::npos)
            << each.options << ": " << hostkit::utf8FromWide(result.reason);
        // A table that cannot be written is the last step: the strips are in the drawing by then.
        EXPECT_EQ(stripsOn(L"SLABSTRIPS").empty(), each.status != Acad::eFileAccessErr) << each.options;
    }
}

// Each number stands in one strip as a whole, over no other number and no text of the drawing.
TEST_F(SlabStripsTest, NumbersStandWhereTheyCanBeRead) {
    // A hook, a slab like a moon, and one with a text in its middle.
    const std::string moon = light("S", {{50, 0, 1}, {70, 0, 0}, {65, 0, -1}, {55, 0, 0}});
    const std::string hook =
        light("S", {{0, 0, 0}, {30, 0, 0}, {30, 2, 0}, {1, 2, 0}, {1, 20, 0}, {0, 20, 0}});
    open(rectangle("S", 100, 0, 20, 10) + circle("H", 105, 5, 2) + rectangle("H", 110, 0.2, 5, 3) + hook +
         moon + rectangle("S", 200, 0, 3, 3));
    AcDbObjectId own;
    auto* written = new AcDbText(AcGePoint3d(201, 1.2, 0), L"note", database().textStyleStandard());
    written->setHeight(0.5);
    ASSERT_EQ(VEXODatabaseTools::appendEntity(written, L"*Model_Space", own), 1);
    std::vector<AcDbExtents> boxes(1);
    written->getGeomExtents(boxes[0]);
    written->close();
    ASSERT_EQ(run("NUMBERS").status, Acad::eOk);
    forEachOn<AcDbText>(L"SLABSTRIPS", [&](AcDbText& text) {
        AcDbExtents& box = boxes.emplace_back();
        ASSERT_EQ(text.getGeomExtents(box), Acad::eOk);
        EXPECT_GT(text.height(), 0.1);
        int strips = 0;
        forEachOn<AcDbPolyline>(L"SLABSTRIPS", [&](AcDbPolyline& strip) {
            int corners = 0;
            for (const double x : {box.minPoint().x, box.maxPoint().x})
                for (const double y : {box.minPoint().y, box.maxPoint().y})
                    corners += VEXOGeometryTools::isPointInsideContour(AcGePoint3d(x, y, 0), &strip);
            strips += corners == 4;
            EXPECT_TRUE(corners == 0 || corners == 4) << hostkit::utf8FromWide(text.textString());
        });
        EXPECT_EQ(strips, 1) << hostkit::utf8FromWide(text.textString());
    });
    EXPECT_EQ(boxes.size(), stripsOn(L"SLABSTRIPS").size() + 1);
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (std::size_t j = i + 1; j < boxes.size(); ++j)
            EXPECT_FALSE(VEXOGeometryTools::IsIntersecting(boxes[i], boxes[j])) << i << ' ' << j;
}

// Also after a save, in a form with records of runs and in the oldest one, which has no place for them.
TEST_F(SlabStripsTest, ASecondRunReplacesTheFirstOfItsLayer) {
    const std::string file = folder / "saved.dxf";
    const std::string roles = "OUTLINES COFFRAGE OPENINGS TREMIES ";
    const std::string plain =
        drawingOf("", rectangle("COFFRAGE", 0, 0, 20, 10) + rectangle("TREMIES", 8, 4, 3, 2));
    for (const std::string& drawing : {plain, readFile(floorDrawing)}) {
        const bool isOldest = drawing == plain;
        openFile(writtenFile(folder, "start.dxf", drawing));
        ASSERT_EQ(run(roles + "NUMBERS").status, Acad::eOk);
        ASSERT_EQ(run(roles + "LAYER OTHER ANGLE 90").status, Acad::eOk);
        const std::size_t first = stripsOn(L"SLABSTRIPS").size();
        const std::size_t other = stripsOn(L"OTHER").size();
        const std::size_t numbers = textsOn(L"SLABSTRIPS");
        EXPECT_EQ(numbers, first);
        ASSERT_EQ(host.saveDocument(*host.documents().curDocument(), hostkit::wideFromUtf8(file)), Acad::eOk);

        openFile(file);
        EXPECT_EQ(stripsOn(L"SLABSTRIPS").size(), first);
        AcDbObjectId record;
        EXPECT_EQ(VEXODatabaseTools::isEntryInDictionary(L"VEXO_SLABSTRIPS", L"OTHER", record, &database()),
                  isOldest ? 0 : 1);
        // A triangle of the user's own on the strips' layer.
        AcDbObjectId own;
        AcDbPolyline* polyline = outlineOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}).release();
        ASSERT_EQ(VEXODatabaseTools::appendEntity(polyline, L"*Model_Space", own), 1);
        ASSERT_EQ(polyline->setLayer(L"SLABSTRIPS"), Acad::eOk);
        polyline->close();
        // By containment too, no strip of an earlier run is a contour of the plan.
        ASSERT_EQ(run(isOldest ? "" : roles).status, Acad::eOk);
        EXPECT_FALSE(own.isErased()) << "only what a run made is replaced";
        {
            const AcAxDocLock lock;
            const AcDbObjectPointer<AcDbEntity> taken(own, AcDb::kForWrite);
            ASSERT_EQ(taken->erase(), Acad::eOk);
        }
        EXPECT_EQ(stripsOn(L"SLABSTRIPS").size(), first);
        EXPECT_EQ(textsOn(L"SLABSTRIPS"), 0u) << "the first run's numbers go too";
        EXPECT_EQ(stripsOn(L"OTHER").size(), other);
    }
}

TEST_F(SlabStripsTest, TheMeterGoesOnAndABreakLeavesTheDrawingAsItWas) {
    std::string entities;
    for (int i = 0; i < 12; ++i)
        entities += rectangle("S", 30.0 * i, 0, 20, 10) + circle("H", 30.0 * i + 7, 5, 2);
    open(entities);
    ASSERT_EQ(run("").status, Acad::eOk);
    ASSERT_EQ(port.meters.size(), 1u);
    const auto& meter = port.meters.front();
    EXPECT_TRUE(meter.stopped);
    EXPECT_GT(meter.positions.size(), 12u);
    EXPECT_TRUE(std::is_sorted(meter.positions.begin(), meter.positions.end()));
    for (const int breakAt : {50, 200, 600, 900}) {
        open(entities);
        port.breakAt = breakAt;
        const hostkit::CommandResult result = run("");
        port.breakAt = -1;
        EXPECT_EQ(result.status, Acad::eUserBreak) << breakAt;
        ASSERT_EQ(port.meters.size(), 1u);
        EXPECT_TRUE(port.meters.front().stopped);
        EXPECT_TRUE(stripsOn(L"SLABSTRIPS").empty()) << breakAt;
    }
}

TEST_F(SlabStripsTest, TextAndCsvTellTheSame) {
    const std::string entities = rectangle("S,\"1\"", 0, 0, 20, 10) + hole;
    open(entities);
    ASSERT_EQ(run("TEXT").status, Acad::eOk);
    expectHas(printed(), {"Area [mm\xC2\xB2]", "194.000", "200.000", "  proved", "No layers were named"});
    const std::string file = folder / "strips of a slab.csv";
    ASSERT_EQ(run("CSV " + file).status, Acad::eOk);
    expectHas(printed(), {"4 strips of 1 slabs"});
    const std::string csv = readFile(file);
    double sum = 0.0;
    for (const std::string& line : parts(csv, "\nstrip,")) {
        std::size_t at = 1;
        for (int comma = 0; comma < 5; ++comma) at = line.find(',', at) + 1;
        sum += std::strtod(line.c_str() + at, nullptr);
    }
    EXPECT_NEAR(sum, 194.0, 2e-5);
    expectHas(csv, {"\"S,\"\"1\"\"\""});
    EXPECT_EQ(parts(csv, "\nopening,").size(), 1u);
    EXPECT_EQ(parts(csv, "\ncheck,").size(), 1u);
}

TEST_F(SlabStripsTest, TheExampleDrawings) {
    const std::pair<std::string, std::vector<std::size_t>> drawings[] = {
        {"floor.dxf", {6}}, {"ducts.dxf", {101}}, {"podium.dxf", {12, 10, 0}}};
    for (const auto& [name, counts] : drawings) {
        openFile(VEXO_SOURCE_DIR "/examples/slab/" + name);
        ASSERT_EQ(run("OUTLINES COFFRAGE OPENINGS TREMIES ANGLE 30 NUMBERS JSON").status, Acad::eOk);
        const std::string text = printed();
        expectHas(text.substr(text.find("\"findings\"")), {"\"findings\": []"});
        const auto slabs = parts(text, "\"openings\"");
        ASSERT_EQ(slabs.size(), counts.size()) << name;
        for (std::size_t i = 0; i < slabs.size(); ++i) {
            EXPECT_EQ(field(slabs[i], "proved"), "true") << name;
            const std::string openings = slabs[i].substr(0, slabs[i].find("\"openingsArea\""));
            EXPECT_EQ(parts(openings, "{\"handle\"").size(), counts[i]) << name;
        }
    }
}

} // namespace
