// Packed groups, extended data and free records.

#include "drawingparts.h"

#include "acdbads.h"
#include "dbapserv.h"
#include "dbhatch.h"
#include "dbpoint.h"
#include "dbspline.h"
#include "gelnsg2d.h"
#include "groupblock.h"
#include "headervariables.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

using namespace drawingtest;
using hostkit::GroupBlock;
using hostkit::GroupWalker;

TEST(GroupBlocks, EveryKindComesBackFromPacking) {
    const double point[] = {1e-300, -0.0, std::numeric_limits<double>::infinity()};
    const double nan = std::nan("");
    const List list(acutBuildList(1, L"", 2, L"Ausführung 第一 \U0001F600", 330, L"FFFFFFFFFFFFFFFF", 10,
                                  point, 40, nan, 40, 0.1, 70, -32768, 90, std::numeric_limits<int>::min(),
                                  160, std::numeric_limits<Adesk::Int64>::max(), 290, 1, 0));
    ASSERT_NE(nullptr, list);
    resbuf* binary = acutNewRb(310);
    binary->resval.rbinary.clen = 4;
    binary->resval.rbinary.buf = static_cast<char*>(std::malloc(4));
    std::memcpy(binary->resval.rbinary.buf, "\x00\x7f\x80\xff", 4);
    resbuf* last = list.get();
    while (last->rbnext) last = last->rbnext;
    last->rbnext = binary;
    GroupBlock block;
    ASSERT_EQ(Acad::eOk, block.appendList(list.get()));
    EXPECT_EQ(textOf(list), textOf(List(block.toList())));
}

TEST(GroupBlocks, LongTextsAndUnpairedSurrogatesStayWhole) {
    const std::wstring odd = {static_cast<wchar_t>(0xDC00), L'x', static_cast<wchar_t>(0xD800)};
    std::vector<std::wstring> expected = {odd, L"\xFFFD"};
    GroupBlock block;
    block.appendText(1, odd);
    block.appendText(1, std::wstring(1, static_cast<wchar_t>(0x110000))); // no character at all
    for (const std::size_t length : {0u, 1u, 65534u, 65535u, 65536u, 200000u}) {
        expected.emplace_back(length, L'ä');
        block.appendText(1, expected.back());
    }
    std::vector<std::wstring> found;
    GroupWalker walker(block);
    for (AcDbDxfGroup group; walker.next(group);) found.emplace_back(group.text);
    EXPECT_TRUE(found == expected);
}

TEST(GroupBlocks, IntegersAreCutToTheWidthOfTheirCode) {
    GroupBlock block;
    for (const short code : {70, 90, 160, 290, 1070, 1071}) block.appendInteger(code, 0x1234567812345678);
    const Adesk::Int64 expected[] = {0x5678, 0x12345678, 0x1234567812345678, 1, 0x5678, 0x12345678};
    GroupWalker walker(block);
    AcDbDxfGroup group;
    for (const Adesk::Int64 value : expected) {
        ASSERT_TRUE(walker.next(group));
        EXPECT_EQ(value, group.integer) << group.code;
    }
}

TEST(GroupBlocks, AFailedListLeavesTheBlockAsItWas) {
    GroupBlock block;
    block.appendReal(40, 1.0);
    const GroupBlock before = block;
    EXPECT_EQ(Acad::eInvalidResBuf, block.appendList(List(acutBuildList(40, 2.0, RTREAL, 3.0, 0)).get()));
    EXPECT_EQ(Acad::eInvalidDxfCode, block.appendList(List(acutNewRb(-1)).get()));
    EXPECT_TRUE(before == block);
}

class ExtendedData : public testing::Test {
protected:
    ExtendedData() {
        for (const wchar_t* name : {L"ORDANE", L"OTHER"}) addRecord<AcDbRegAppTable>(database, name);
        point = opened<AcDbPoint>(appendToModelSpace(database, new AcDbPoint));
    }
    ~ExtendedData() override { point->close(); }
    Acad::ErrorStatus set(resbuf* list) { return point->setXData(List(list).get()); }
    std::string text(const wchar_t* application = nullptr) const {
        return textOf(List(point->xData(application)));
    }

    AcDbDatabase database;
    AcDbPoint* point;
};

TEST_F(ExtendedData, ApplicationsAreReplacedOneByOne) {
    const double corner[] = {1, 2, 3};
    ASSERT_EQ(Acad::eOk,
              set(acutBuildList(1001, L"ORDANE", 1000, L"NUMBER", 1070, 7, 1001, L"OTHER", 1040, 2.5, 0)));
    ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"Ordane", 1002, L"{", 1011, corner, 1005, L"AB", 1002, L"}",
                                           1071, 70000, 0)));
    EXPECT_EQ("1001 Ordane, 1002 {, 1011 1/2/3, 1005 AB, 1002 }, 1071 70000, 1001 OTHER, 1040 2.5", text());
    EXPECT_EQ("1001 OTHER, 1040 2.5", text(L"other"));
    EXPECT_EQ(nullptr, point->xData(L"ACAD"));
    ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"ORDANE", 0)));
    EXPECT_EQ(nullptr, point->xData(L"ORDANE"));
    ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"OTHER", 1001, L"ORDANE", 0)));
    EXPECT_FALSE(point->hasXData());
    EXPECT_EQ(nullptr, point->xData());
}

TEST_F(ExtendedData, RefusedListsChangeNothing) {
    ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"ORDANE", 1000, L"kept", 0)));
    EXPECT_EQ(Acad::eInvalidResBuf, point->setXData(nullptr));
    EXPECT_EQ(Acad::eInvalidResBuf, set(acutBuildList(1000, L"no application", 0)));
    EXPECT_EQ(Acad::eInvalidResBuf, set(acutBuildList(1001, L"ORDANE", 40, 1.0, 0)));
    EXPECT_EQ(Acad::eInvalidResBuf, set(acutBuildList(1001, L"ORDANE", RTSTR, L"x", 0)));
    EXPECT_EQ(Acad::eInvalidResBuf,
              set(acutBuildList(1001, L"ORDANE", 1000, L"a", 1001, L"ORDANE", 1000, L"b", 0)));
    EXPECT_EQ(Acad::eRegappIdNotFound, set(acutBuildList(1001, L"UNKNOWN", 1000, L"x", 0)));
    const std::wstring large(8190, L'x');
    EXPECT_EQ(Acad::eXdataSizeExceeded, set(acutBuildList(1001, L"OTHER", 1000, large.c_str(), 0)));
    EXPECT_EQ("1001 ORDANE, 1000 kept", text());
    point->downgradeOpen();
    EXPECT_EQ(Acad::eNotOpenForWrite, set(acutBuildList(1001, L"ORDANE", 1000, L"late", 0)));
    point->upgradeOpen();
    EXPECT_EQ("1001 ORDANE, 1000 kept", text());
}

TEST_F(ExtendedData, WhatIsNoNumberIsRefused) {
    ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"ORDANE", 1000, L"kept", 0)));
    AcDbXrecord record;
    ASSERT_EQ(Acad::eOk, record.setFromRbChain(*List(acutBuildList(40, 1.0, 0))));
    for (const double none : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        for (const short code : {1040, 1041, 1042})
            EXPECT_EQ(Acad::eInvalidResBuf, set(acutBuildList(1001, L"ORDANE", 1040, 1.0, code, none, 0)));
        for (const short code : {1010, 1011, 1012, 1013, 10, 210}) {
            for (int axis = 0; axis < 3; ++axis) {
                double place[] = {1.0, 2.0, 3.0};
                place[axis] = none;
                if (code >= 1000)
                    EXPECT_EQ(Acad::eInvalidResBuf, set(acutBuildList(1001, L"ORDANE", code, place, 0)));
                else
                    EXPECT_EQ(Acad::eInvalidResBuf,
                              record.appendRbChain(*List(acutBuildList(1, L"a", code, place, 70, 1, 0))));
            }
        }
        const List real(acutBuildList(1, L"text", 330, L"AB", 140, none, 70, 2, 0));
        EXPECT_EQ(Acad::eInvalidResBuf, record.setFromRbChain(*real));
        GroupBlock groups;
        ASSERT_EQ(Acad::eOk, groups.appendList(real.get()));
        EXPECT_EQ(Acad::eInvalidInput, record.setGroups(groups));
        EXPECT_EQ(Acad::eInvalidInput, AcDbDimStyleTableRecord().setDimscale(none));
        EXPECT_EQ(Acad::eInvalidInput, AcDbUCSTableRecord().setGroups(groups));
        EXPECT_EQ(Acad::eInvalidInput, AcDbViewTableRecord().setGroups(groups));
        EXPECT_EQ(Acad::eInvalidInput, AcDbBlockTableRecord().setOrigin({0.0, none, 0.0}));
        AcDbSpline spline;
        const AcGePoint3dArray points = pointsOf({{0, 0, 0}, {1, 1, 0}});
        for (const auto& [first, second] : {std::pair(none, 0.0), {0.0, none}})
            EXPECT_EQ(Acad::eInvalidInput,
                      spline.setNurbsData(1, false, false, false, points, numbersOf({0, 0, 1, 1}),
                                          AcGeDoubleArray(), first, second));
        AcDbHatch hatch;
        AcGeVoidPointerArray edges;
        AcGeLineSeg2d edge(AcGePoint2d(0.0, 0.0), AcGePoint2d(1.0, none));
        edges.append(&edge);
        EXPECT_EQ(Acad::eInvalidInput, hatch.appendLoop(AcDbHatch::kDefault, edges, arrayOf({1})));
        database.header().setReal(L"LTSCALE", none);
        const double base[] = {0.0, 0.0, none};
        database.header().setPoint(L"INSBASE", base, 3);
    }
    EXPECT_EQ("1001 ORDANE, 1000 kept", text());
    resbuf* chain = nullptr;
    ASSERT_EQ(Acad::eOk, record.rbChain(&chain));
    EXPECT_EQ("40 1", textOf(List(chain)));
    EXPECT_EQ(1.0, database.ltscale());
    EXPECT_EQ(AcGePoint3d(), database.insbase());
}

// A name takes four bytes and two a character, a 1070 four, a binary four and its own.
TEST_F(ExtendedData, TheLimitIsExactToTheByte) {
    for (const int other : {0, 4 + 2 * 6 + 4}) {
        for (const int whole : {16382, 16383, 16384, 16385}) {
            SCOPED_TRACE(std::to_string(other) + " of " + std::to_string(whole));
            ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"ORDANE", 1001, L"OTHER", 0)));
            if (other > 0) {
                ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"ORDANE", 1070, 7, 0)));
            }
            resbuf* const list = acutBuildList(1001, L"OTHER", 0);
            list->rbnext = acutNewRb(1004);
            ads_binary& binary = list->rbnext->resval.rbinary;
            binary.clen = static_cast<short>(whole - other - (4 + 2 * 5) - 4);
            binary.buf = static_cast<char*>(std::calloc(static_cast<std::size_t>(binary.clen), 1));
            EXPECT_EQ(whole <= 16383 ? Acad::eOk : Acad::eXdataSizeExceeded, set(list));
            EXPECT_EQ(whole <= 16383, !text(L"OTHER").empty());
        }
    }
}

TEST_F(ExtendedData, ACopyTakesItAlongAndNeedsNoRegistration) {
    ASSERT_EQ(Acad::eOk, set(acutBuildList(1001, L"ORDANE", 1040, 1.5, 0)));
    const std::unique_ptr<AcDbPoint> copy(AcDbPoint::cast(point->clone()));
    EXPECT_EQ(text(), textOf(List(copy->xData())));
    EXPECT_EQ(Acad::eOk, copy->setXData(List(acutBuildList(1001, L"ANY", 1040, 1.5, 0)).get()));
    EXPECT_EQ("1001 ORDANE, 1040 1.5, 1001 ANY, 1040 1.5", textOf(List(copy->xData())));
    EXPECT_EQ("1001 ORDANE, 1040 1.5", text());
}

TEST(Xrecords, TakeFreeGroupsAndNoOthers) {
    AcDbXrecord record;
    const double corner[] = {1, 2, 3};
    const List list(acutBuildList(1, L"text", 90, 5, 10, corner, 340, L"1F", 0));
    ASSERT_EQ(Acad::eOk, record.setFromRbChain(*list));
    ASSERT_EQ(Acad::eOk, record.appendRbChain(*List(acutBuildList(40, 2.0, 0))));
    for (const List& refused : {List(acutBuildList(5, L"1F", 0)), List(acutBuildList(1000, L"x", 0)),
                                List(acutNewRb(370)), List(acutNewRb(105))})
        EXPECT_EQ(Acad::eInvalidDxfCode, record.setFromRbChain(*refused));
    EXPECT_EQ(Acad::eInvalidResBuf, record.setFromRbChain(*List(acutBuildList(RTREAL, 1.0, 0))));
    resbuf* chain = nullptr;
    ASSERT_EQ(Acad::eOk, record.rbChain(&chain));
    EXPECT_EQ("1 text, 90 5, 10 1/2/3, 340 1F, 40 2", textOf(List(chain)));
    EXPECT_EQ(Acad::eInvalidInput, record.rbChain(nullptr));
}

TEST(Reactors, EachIdOnce) {
    AcDbDatabase database;
    AcDbObjectPointer<AcDbLayerTableRecord> layer(database.layerZero(), AcDb::kForWrite);
    EXPECT_EQ(Acad::eOk, layer->addPersistentReactor(database.layerTableId()));
    EXPECT_EQ(Acad::eOk, layer->addPersistentReactor(database.layerTableId()));
    EXPECT_EQ(Acad::eNullObjectId, layer->addPersistentReactor(AcDbObjectId()));
    EXPECT_EQ(1, layer->persistentReactors().length());
    EXPECT_TRUE(layer->hasPersistentReactor(database.layerTableId()));
    EXPECT_EQ(Acad::eOk, layer->removePersistentReactor(database.layerTableId()));
    EXPECT_EQ(Acad::eKeyNotFound, layer->removePersistentReactor(database.layerTableId()));
}

TEST(TableCalls, RecordsComeAsListsByTheWordOfTheirTable) {
    AcDbHostApplicationServices services;
    const hostkit::ScopedDatabaseServices scope(services);
    EXPECT_EQ(nullptr, acdbTblSearch(L"LAYER", L"0", 0)) << "no drawing";
    EXPECT_EQ(RTERROR, acdbRegApp(L"ORDANE"));
    AcDbDatabase database;
    services.setWorkingDatabase(&database);
    const std::pair<const wchar_t*, const wchar_t*> known[] = {
        {L"LAYER", L"0"},           {L"ltype", L"CONTINUOUS"},
        {L"STYLE", L"standard"},    {L"BLOCK", L"*Model_Space"},
        {L"DimStyle", L"Standard"}, {L"APPID", L"acad"},
        {L"VPORT", L"*Active"}};
    for (const auto& [word, name] : known) {
        const List list(acdbTblSearch(word, name, 0));
        ASSERT_NE(nullptr, list);
        EXPECT_EQ(0, list->restype);
        EXPECT_STREQ(word, list->resval.rstring);
        const resbuf* record = list.get();
        while (record && record->restype != 2) record = record->rbnext;
        ASSERT_NE(nullptr, record);
        EXPECT_TRUE(hostkit::equalFolded(record->resval.rstring, name));
    }
    for (const auto& [word, name] :
         {std::pair{L"LAYER", L"1"}, {L"LAYERS", L"0"}, {L"UCS", L"none"}, {L"VIEW", L""}})
        EXPECT_EQ(nullptr, acdbTblSearch(word, name, 0));
    EXPECT_EQ(RTNORM, acdbRegApp(L"ORDANE"));
    EXPECT_EQ(RTERROR, acdbRegApp(L"ordane")) << "registered already";
    EXPECT_EQ(RTERROR, acdbRegApp(L"a|b")) << "no name for a record";
    EXPECT_EQ(RTERROR, acdbRegApp(nullptr));
    EXPECT_EQ(0, database.numOpenObjects());
}

} // namespace
