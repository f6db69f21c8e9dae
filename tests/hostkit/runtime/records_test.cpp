#include "acadstrc.h"
#include "adsdef.h"
#include "dbcolor.h"
#include "dbhandle.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(RecordList, HoldsEachKindInItsField) {
    const double point[3] = {1, 2, 3};
    resbuf* list = acutBuildList(1001, L"ORDANE", 1000, L"key", 1070, 70000, 1071, -5, 1040, 2.5, 1010, point,
                                 160, Adesk::Int64{1} << 40, RTDXF0, L"LINE", RTNIL, 1005, L"2A", 0);
    std::vector<const resbuf*> at;
    for (const resbuf* record = list; record; record = record->rbnext) at.push_back(record);
    ASSERT_EQ(at.size(), 10u);
    EXPECT_STREQ(at[0]->resval.rstring, L"ORDANE");
    EXPECT_EQ(at[2]->resval.rint, static_cast<short>(70000)); // 16 bits are kept
    EXPECT_EQ(at[3]->resval.rlong, -5);
    EXPECT_EQ(at[4]->resval.rreal, 2.5);
    EXPECT_EQ(at[5]->resval.rpoint[2], 3);
    EXPECT_EQ(at[6]->resval.mnInt64, Adesk::Int64{1} << 40);
    EXPECT_EQ(at[7]->restype, 0);
    EXPECT_STREQ(at[7]->resval.rstring, L"LINE");
    EXPECT_EQ(at[8]->restype, RTNIL);
    EXPECT_STREQ(at[9]->resval.rstring, L"2A");
    EXPECT_EQ(acutRelRb(list), RTNORM);
}

TEST(RecordList, RefusesUnknownTypesAndEmptyCalls) {
    EXPECT_EQ(acutBuildList(0), nullptr);
    EXPECT_EQ(acutBuildList(1000, L"kept only on success", 5999, 0), nullptr);
    EXPECT_EQ(acutRelRb(nullptr), RTNORM);
    wchar_t* text = acutNewString(L"é");
    acutDelBuffer(text);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(acutNewString(nullptr), nullptr);
}

TEST(Handle, ReadsAndWritesHexadecimal) {
    const struct {
        const wchar_t* text;
        Adesk::UInt64 value;
    } cases[] = {{L"0", 0},
                 {L"2a", 0x2A},
                 {L"FFFFFFFFFFFFFFFF", ~Adesk::UInt64{0}},
                 {L"", 0},
                 {L"12345678901234567", 0},
                 {L"1G", 0},
                 {L"00FF", 0xFF}};
    for (const auto& each : cases)
        EXPECT_EQ(AcDbHandle(each.text).value(), each.value) << testing::PrintToString(each.text);
    wchar_t buffer[17];
    for (const Adesk::UInt64 value :
         {Adesk::UInt64{0}, Adesk::UInt64{0xABC}, Adesk::UInt64{1} << 63, ~Adesk::UInt64{0}}) {
        AcDbHandle(value).getIntoAsciiBuffer(buffer);
        EXPECT_EQ(AcDbHandle(buffer).value(), value);
    }
    EXPECT_EQ(AcDbHandle((Adesk::UInt64{5} << 32) + 7).high(), 5u);
}

TEST(Color, IndexAndTrueColoursKeepTheirMeaning) {
    AcCmEntityColor color;
    EXPECT_TRUE(color.isByLayer());
    EXPECT_EQ(color.colorIndex(), 256);
    EXPECT_EQ(color.setColorIndex(258), Acad::eOutOfRange);
    EXPECT_TRUE(color.isByLayer());
    const struct {
        Adesk::UInt16 index;
        Adesk::UInt32 rgb;
    } palette[] = {{1, 0xFF0000},   {3, 0x00FF00},   {7, 0xFFFFFF},  {10, 0xFF0000},
                   {11, 0xFF7F7F},  {12, 0xA50000},  {50, 0xFFFF00}, {90, 0x00FF00},
                   {170, 0x0000FF}, {250, 0x333333}, {255, 0xFFFFFF}};
    for (const auto& entry : palette) {
        EXPECT_EQ(color.setColorIndex(entry.index), Acad::eOk);
        EXPECT_EQ(color.colorIndex(), entry.index);
        EXPECT_EQ(color.rgb(), entry.rgb) << entry.index;
    }
    color.setColorIndex(0);
    EXPECT_TRUE(color.isByBlock());
    color.setRGB(254, 1, 1);
    EXPECT_TRUE(color.isByColor());
    EXPECT_EQ(color.rgb(), 0xFE0101u);
    EXPECT_EQ(color.colorIndex(), 1); // the nearest
}

TEST(Status, HasItsNumberAndName) {
    EXPECT_EQ(Acad::eWasErased, 81);
    EXPECT_EQ(Acad::eNotThatKindOfClass, 46);
    EXPECT_STREQ(acadErrorStatusText(Acad::eKeyNotFound), L"eKeyNotFound");
    EXPECT_STREQ(acadErrorStatusText(static_cast<Acad::ErrorStatus>(9999)), L"eUnknownStatus");
}

} // namespace
