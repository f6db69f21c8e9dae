#include "drawingaudit.h"
#include "drawingfiles.h"
#include "sampledrawing.h"
#include "scriptedport.h"

#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dbopaque.h"

#include <random>

using namespace hostkit;
using namespace drawingtest;

namespace {

std::string insert(const std::string& name) {
    return groups({{0, "INSERT"}, {8, "0"}, {2, name}, {10, "0"}, {20, "0"}});
}

struct Reading {
    ReadReport report;
    std::unique_ptr<AcDbDatabase> database;

    explicit Reading(const std::string& bytes)
        : database(openDrawingFromMemory(bytes, L"test.dxf", &report, quietReading)) {}
};

} // namespace

TEST(Damage, aDrawingThatCannotBeReadGivesStatusAndLine) {
    std::string hundredThousandBraces;
    for (int depth = 0; depth < 100000; ++depth) hundredThousandBraces += group(102, "{DEEP");
    const struct {
        const char* name;
        std::string bytes;
        Acad::ErrorStatus status;
        std::size_t line;
    } cases[] = {
        {"empty", "", Acad::eEndOfFile, 1},
        {"blank", "\n \n", Acad::eEndOfFile, 1},
        {"other text", "<html>\n<body>\n", Acad::eBadDxfSequence, 1},
        {"binary drawing without sections", std::string("AC1027") + std::string(300, '\0'),
         Acad::eNotApplicable, 0},
        {"binary drawing of a form that nobody knows", std::string("AC1099") + std::string(300, '\0'),
         Acad::eNotApplicable, 0},
        {"binary drawing that is cut", std::string("AC1027\0\0\0", 9), Acad::eNotApplicable, 0},
        {"binary form without groups", std::string("XXXXXXX Binary DXF\r\n\x1a\0", 22), Acad::eEndOfFile, 0},
        {"no end mark", section("ENTITIES", line()), Acad::eEndOfFile, 19},
        {"cut in a section", group(0, "SECTION") + group(2, "ENTITIES") + line(), Acad::eEndOfFile, 17},
        {"cut in a record", groups({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}}) + "10\n", Acad::eEndOfFile,
         7},
        {"code is no number", group(0, "SECTION") + group(2, "ENTITIES") + "x\ny\n", Acad::eBadDxfSequence,
         5},
        {"missing value shifts the pairs", entities("0\nLINE\n8\n10\n1.0\n"), Acad::eBadDxfSequence, 9},
        {"record outside", line() + group(0, "EOF"), Acad::eBadDxfSequence, 1},
        {"section in a section", group(0, "SECTION") + group(2, "ENTITIES") + entities(line()),
         Acad::eBadDxfSequence, 1},
        {"section without name", group(0, "SECTION") + group(0, "LINE"), Acad::eBadDxfSequence, 3},
        {"block not closed", section("BLOCKS", group(0, "BLOCK") + group(2, "A")) + entities(""),
         Acad::eBadDxfSequence, 9},
        {"block twice", section("BLOCKS", block("A", "") + block("a", "")) + entities(""),
         Acad::eDuplicateKey, 19},
        {"block in itself",
         section("BLOCKS", block("A", insert("B")) + block("B", insert("A"))) + entities(""),
         Acad::eCyclicReference, 0},
        {"handle twice", entities(line(group(5, "1A")) + line(group(5, "1a"))), Acad::eHandleInUse, 19},
        {"header without a name", section("HEADER", group(40, "1.0")) + entities(""), Acad::eBadDxfSequence,
         5},
        {"endless braces and no end",
         groups({{0, "SECTION"}, {2, "OBJECTS"}, {0, "XRECORD"}}) + hundredThousandBraces, Acad::eEndOfFile,
         200007},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const Reading reading(one.bytes);
        EXPECT_FALSE(reading.database);
        EXPECT_EQ(reading.report.status, one.status) << acadErrorStatusText(reading.report.status);
        ASSERT_FALSE(reading.report.problems.empty());
        EXPECT_TRUE(reading.report.problems.back().isFatal);
        EXPECT_EQ(reading.report.problems.back().line, one.line);
        const std::wstring place =
            one.line ? L"test.dxf:" + std::to_wstring(one.line) + L": " : L"test.dxf: ";
        EXPECT_EQ(reading.report.fatalMessage().substr(0, place.size()), place);
    }
}

// A bad value spoils one record, not the drawing: the record stays as it stands, also through a save.
TEST(Damage, aDamagedRecordIsKeptAndTold) {
    const std::string polyline = groups({{0, "LWPOLYLINE"},
                                         {8, "0"},
                                         {90, "2147483648"},
                                         {70, "1"},
                                         {10, "0"},
                                         {20, "0"},
                                         {10, "5"},
                                         {20, "5"}});
    const std::string hatch = groups({{0, "HATCH"},
                                      {8, "0"},
                                      {2, "SOLID"},
                                      {70, "1"},
                                      {71, "0"},
                                      {91, "2147483647"},
                                      {92, "2"},
                                      {72, "0"},
                                      {73, "1"},
                                      {93, "2147483647"},
                                      {10, "0"},
                                      {20, "0"}});
    const struct {
        const char* name;
        std::string record;
        bool isKeptAsOpaque;
    } cases[] = {
        {"no number", line(group(39, "thick")), true},
        {"not finite", line(group(39, "nan")), true},
        {"too large", line(group(39, "1e999")), true},
        {"counts that lie", polyline, false},
        {"hatch counts that lie", hatch, true},
        {"spline without its knots",
         groups({{0, "SPLINE"}, {8, "0"}, {70, "8"}, {71, "3"}, {10, "0"}, {20, "0"}, {30, "0"}}), true},
        {"bad handle", line(group(5, "XYZ")), false},
        {"bad extended data", line(group(1001, "APP") + group(1040, "x")), false},
        {"vertex of nothing", groups({{0, "VERTEX"}, {8, "0"}, {10, "0"}, {20, "0"}}), true},
        {"unknown kind", groups({{0, "WIDGET"}, {8, "0"}, {90, "1"}}), true},
        {"colour that is none", line(group(62, "70000")), false},
        {"layer that is none", line(group(8, "Nowhere")), false},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const std::string bytes = header("AC1015") + entities(one.record + line());
        const Reading reading(bytes);
        ASSERT_TRUE(reading.database);
        EXPECT_EQ(reading.report.entityCount, 2u);
        const auto* const space =
            DatabaseAccess::objectOf<AcDbBlockTableRecord>(reading.database->modelSpaceId());
        ASSERT_EQ(space->entities().size(), 2u);
        EXPECT_EQ(space->entities()[0].objectClass() == AcDbOpaqueEntity::desc(), one.isKeptAsOpaque);
        EXPECT_EQ(reading.database->numOpenObjects(), 0);
        const std::string again = saved(*reading.database, fromFields);
        for (const char* value : {"thick", "nan", "1e999", "WIDGET", "Nowhere", "VERTEX"})
            EXPECT_EQ(again.find(value) == std::string::npos, bytes.find(value) == std::string::npos)
                << value;
    }
}

TEST(Damage, longLinesAndDeepNestingAreNothingSpecial) {
    const std::string longText(10 * 1024 * 1024, 'x');
    std::string blocks;
    const int depth = 20000;
    for (int level = 0; level < depth; ++level)
        blocks += block("B" + std::to_string(level),
                        level + 1 < depth ? insert("B" + std::to_string(level + 1)) : line());
    std::string braces;
    for (int level = 0; level < 10000; ++level) braces += group(102, "{DEEP");
    for (int level = 0; level < 10000; ++level) braces += group(102, "}");
    const std::string bytes = header("AC1015") + section("BLOCKS", blocks) +
                              section("ENTITIES", group(0, "TEXT") + group(5, "A1") + braces +
                                                      groups({{330, "1F"},
                                                              {100, "AcDbEntity"},
                                                              {8, "0"},
                                                              {100, "AcDbText"},
                                                              {1, longText},
                                                              {10, "0"},
                                                              {20, "0"},
                                                              {40, "1"}})) +
                              group(0, "EOF");
    const Reading reading(bytes);
    ASSERT_TRUE(reading.database);
    const std::string again = saved(*reading.database, fromFields);
    EXPECT_NE(again.find(longText), std::string::npos);
    EXPECT_NE(again.find(braces), std::string::npos);
}

// Every cut and every flipped byte of a sound drawing gives a drawing or a status, and never leaves an object
// open.
TEST(Damage, anyCutAndAnyByteIsSurvived) {
    const std::string sound = saved(*sampleDrawing());
    std::mt19937 random(5);
    const auto survive = [](const std::string& bytes) {
        const Reading reading(bytes);
        EXPECT_EQ(reading.report.status == Acad::eOk, reading.database != nullptr);
        if (reading.database) {
            const AuditReport audit = auditDrawing(*reading.database);
            EXPECT_LE(audit.objects, static_cast<std::size_t>(reading.database->approxNumObjects()));
            EXPECT_EQ(reading.database->numOpenObjects(), 0);
        }
        return reading.database != nullptr;
    };
    EXPECT_TRUE(survive(sound));
    const std::size_t endMark = sound.rfind("EOF");
    for (int round = 0; round < 150; ++round) EXPECT_FALSE(survive(sound.substr(0, random() % endMark)));
    for (int round = 0; round < 300; ++round) {
        std::string damaged = sound;
        damaged[random() % damaged.size()] = static_cast<char>(random());
        survive(damaged);
    }
    for (int round = 0; round < 150; ++round) {
        std::string damaged = sound;
        damaged.erase(random() % damaged.size(), random() % 200);
        survive(damaged);
    }
}

TEST(Damage, problemsGoToThePort) {
    ScriptedPort port;
    const ScopedPort scope(port);
    EXPECT_FALSE(openDrawing(L"/nowhere/at/all.dxf"));
    EXPECT_FALSE(openDrawing(L"/"));
    EXPECT_FALSE(openDrawingFromMemory("x\n", L"memory.dxf"));
    AcDbDatabase used(true, true);
    EXPECT_EQ(readDrawingFromMemory(used, entities(""), L"memory.dxf"), Acad::eInvalidInput);
    ReadReport report;
    EXPECT_FALSE(openDrawing(L"/nowhere/at/all.dxf", &report));
    EXPECT_EQ(report.status, Acad::eFileNotFound);
    EXPECT_FALSE(openDrawing(L"/", &report));
    EXPECT_EQ(report.status, Acad::eFileAccessErr);
    ReadOptions options;
    options.problemLimit = 3;
    std::string bad;
    for (int count = 0; count < 10; ++count) bad += line(group(39, "x"));
    EXPECT_TRUE(openDrawingFromMemory(header("AC1015") + entities(bad), L"memory.dxf", &report, options));
    EXPECT_EQ(report.problems.size(), 3u);
    EXPECT_EQ(report.problemCount, 10u);
}
