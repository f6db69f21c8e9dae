#include "../../../fuzz/filterinvariants.h"

#include "drawingparts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

using drawingtest::textOf;
using hostkit::FilterReading;
using hostkit::readFilterText;
using hostkit::RecordList;
using hostkit::writeFilterText;

TEST(FilterText, IsReadAsItIsTyped) {
    const struct {
        const wchar_t* text;
        const char* records;
    } cases[] = {
        {L"", ""},
        {L"  ()  ", ""},
        {LR"((0 . "LINE,ARC")(8 . "WALL*"))", "0 LINE,ARC, 8 WALL*"},
        {LR"(  '( ( 0 ."LINE" ) (62 . -1))  )", "0 LINE, 62 -1"},
        {LR"((8 "A \"b\" \\ \P"))", "8 A \"b\" \\ \\P"},
        {L"(40 . .5) (40 2) (48 . -1e-3)", "40 0.5, 40 2, 48 -0.001"},
        {L"(10 1 -2) (11 . 1.5 2.5 3.5)", "10 1/-2/0, 11 1.5/2.5/3.5"},
        {LR"((-4 . "<or") (70 . 32767) (-4 "or>"))", "-4 <or, 70 32767, -4 or>"},
        {LR"((90 . -70000) (160 . 9000000000) (290 . 1) (5 . "2F"))",
         "90 -70000, 160 9000000000, 290 1, 5 2F"},
        {LR"((-3 ("A") ( "B" )) (1001 . "C"))", "-3 , 1001 A, 1001 B, 1001 C"},
        {L"(1 . \"\u00E9\")", "1 <233>"},
    };
    for (const auto& each : cases) {
        const FilterReading reading = readFilterText(each.text);
        EXPECT_EQ(reading.problem, L"") << each.text;
        EXPECT_EQ(textOf(reading.list), each.records) << each.text;
    }
}

TEST(FilterText, TheGroupsThatALineBeginsWithEndWhereTheyClose) {
    const struct {
        const wchar_t* groups;
        const wchar_t* rest;
    } cases[] = {
        {LR"x((0 . "LINE") (8 . "a)(b") )x", L"ALL"},
        {LR"x(((0 . "A") (-3 ("B"))) )x", L"W"},
        {LR"x((0 . "a\")") )x", L"x"},
        {L"", L"ALL"},
        {L"", L""},
        {L"(62 . 1)", L""},
    };
    for (const auto& each : cases) {
        std::size_t length = 99;
        const FilterReading reading = hostkit::readFilterStart(std::wstring(each.groups) + each.rest, length);
        EXPECT_EQ(reading.problem, L"") << each.groups;
        EXPECT_EQ(length, std::wstring_view(each.groups).size());
        EXPECT_EQ(textOf(reading.list), textOf(readFilterText(each.groups).list));
    }
    std::size_t length = 0;
    EXPECT_EQ(hostkit::readFilterStart(LR"x((0 . "LINE")x", length).problem,
              L"a closing parenthesis is expected behind the value");
}

TEST(FilterText, TellsWhatIsWrongAndWhere) {
    const struct {
        const wchar_t* text;
        std::size_t position;
        const wchar_t* problem;
    } cases[] = {
        {L"0 . 1", 0, L"a group in parentheses is expected here"},
        {L"(62 . 1) x", 9, L"a group in parentheses is expected here"},
        {L"((62 . 1)", 9, L"the list is not closed by a parenthesis"},
        {L"((62 . 1)) (62 . 1)", 11, L"a group in parentheses is expected here"},
        {L"(x . 1)", 1, L"a group begins with its code, a whole number"},
        {L"( ", 2, L"a group begins with its code, a whole number"},
        {L"(6.2 . 1)", 1, L"a group begins with its code, a whole number"},
        {L"(5000 . 1)", 1, L"there is no group 5000 in a filter"},
        {L"(-1 . \"2F\")", 1, L"there is no group -1 in a filter"},
        {L"(310 . \"00\")", 1, L"there is no group 310 in a filter"},
        {L"(8 . WALL)", 5, L"a text in quotation marks is expected here"},
        {L"(8 . \"WALL)", 5, L"the text is not closed by a quotation mark"},
        {L"(8 . \"WALL\\\")", 5, L"the text is not closed by a quotation mark"},
        {L"(8 . \"A\" \"B\")", 9, L"a closing parenthesis is expected behind the value"},
        {L"(62 . 1", 7, L"a closing parenthesis is expected behind the value"},
        {L"(62 . 1.5)", 6, L"a whole number is expected here"},
        {L"(62 . \"1\")", 6, L"a whole number is expected here"},
        {L"(62 . 32768)", 6, L"the number is too large for its group"},
        {L"(90 . 3000000000)", 6, L"the number is too large for its group"},
        {L"(40 . inf)", 6, L"a number is expected here"},
        {L"(40 . 1e999)", 6, L"a number is expected here"},
        {L"(40 . )", 6, L"a number is expected here"},
        {L"(10 1.0)", 7, L"a number is expected here"},
        {L"(10 1 2 3 4)", 10, L"a closing parenthesis is expected behind the value"},
        {L"(-3)", 3, L"the name of an application in parentheses is expected here"},
        {L"(-3 \"A\")", 4, L"the name of an application in parentheses is expected here"},
        {L"(-3 (\"A\" (1070 . 1)))", 9,
         L"a closing parenthesis is expected behind the name of an application"},
        {L"(-3 (\"A\") x)", 10, L"a closing parenthesis is expected behind the names of applications"},
    };
    for (const auto& each : cases) {
        const FilterReading reading = readFilterText(each.text);
        EXPECT_EQ(reading.problem, each.problem) << each.text;
        EXPECT_EQ(reading.position, each.position) << each.text;
        EXPECT_FALSE(reading.list) << each.text;
    }
    EXPECT_EQ(readFilterText(std::wstring_view(L"(8 . \"a\0b\")", 11)).position, 7u);
}

RecordList randomList(std::mt19937& random) {
    constexpr int codes[] = {0, 1, 5, 8, -4, 10, 11, 40, 62, 70, 90, 160, 290, 330, 1001};
    constexpr wchar_t letters[] = L"aZ\"\\ ()'.,\u00E9\u4E2D\n";
    RecordList list;
    for (unsigned count = random() % 6; count > 0; --count) {
        RecordList record(acutNewRb(codes[random() % std::size(codes)]));
        ads_u_val& value = record->resval;
        std::wstring text;
        for (unsigned length = random() % 6; length > 0; --length)
            text += letters[random() % (std::size(letters) - 1)];
        const double real =
            std::ldexp(static_cast<double>(random()) - 2e9, static_cast<int>(random() % 100) - 50);
        switch (AcDb::groupKind(record->restype)) {
        case AcDb::GroupKind::kPoint:
            for (const int axis : {0, 1, 2}) value.rpoint[axis] = real / (axis + 1);
            break;
        case AcDb::GroupKind::kReal:
            value.rreal = real;
            break;
        case AcDb::GroupKind::kInt64:
            value.mnInt64 = (static_cast<Adesk::Int64>(random()) - 2'000'000'000) * 2'000'000'000;
            break;
        case AcDb::GroupKind::kInt32:
            value.rlong = static_cast<Adesk::Int32>(random());
            break;
        case AcDb::GroupKind::kText:
        case AcDb::GroupKind::kHandle:
            value.rstring = acutNewString(text.c_str());
            break;
        default:
            value.rint = static_cast<short>(random());
        }
        record->rbnext = list.release();
        list = std::move(record);
    }
    return list;
}

TEST(FilterText, IsWrittenAsItIsRead) {
    std::mt19937 random(5);
    for (int round = 0; round < 5000; ++round) {
        const RecordList list = randomList(random);
        const std::wstring text = writeFilterText(list.get());
        const FilterReading reading = readFilterText(text);
        ASSERT_EQ(reading.problem, L"") << text;
        ASSERT_EQ(textOf(reading.list), textOf(list)) << text;
    }
    const RecordList typed(acutBuildList(RTDXF0, L"LINE", -3, L"A", 1001, L"B", 0));
    EXPECT_EQ(writeFilterText(typed.get()), LR"((0 . "LINE") (-3 ("A") ("B")))");
}

TEST(FilterText, TheCorpusAndItsDamagedFormsAreSurvived) {
    AcDbDatabase drawing;
    const auto run = [&](const std::string& each) {
        EXPECT_EQ(filterinvariants::faultOf(each, drawing), "") << each;
    };
    std::size_t files = 0;
    for (const auto& file : std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/filter")) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        EXPECT_TRUE(readFilterText(hostkit::wideFromUtf8(bytes)).isRead()) << file.path();
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut)
            for (const char* between : {"", "\"", "(", ")", "\\", "9", "\xFF"}) {
                run(bytes.substr(0, cut) + between);
                run(bytes.substr(0, cut) + between + bytes.substr(cut));
            }
        ++files;
    }
    EXPECT_GE(files, 3u);
}

} // namespace
