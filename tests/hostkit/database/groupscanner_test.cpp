#include "groupscanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace hostkit;

namespace {

struct Scan {
    std::vector<std::pair<int, std::string>> groups;
    ScanResult end = ScanResult::kGroup;
    std::size_t line = 0; ///< where it ended
};

Scan scanAll(std::string_view bytes) {
    Scan scan;
    GroupScanner scanner(bytes);
    RawGroup group;
    while ((scan.end = scanner.next(group)) == ScanResult::kGroup)
        scan.groups.emplace_back(group.code, std::string(group.value));
    scan.line = lineNumberAt(bytes, scanner.offset());
    return scan;
}

} // namespace

TEST(GroupScanner, acceptsWhatWritersMakeOfLineEndsAndBlanks) {
    using Groups = std::vector<std::pair<int, std::string>>;
    const struct {
        std::string bytes;
        Groups groups;
    } cases[] = {
        {"  0\r\nLINE\r\n  8\r\nWall\r\n", {{0, "LINE"}, {8, "Wall"}}},
        {"0\nLINE\n8\nWall\n", {{0, "LINE"}, {8, "Wall"}}},
        {"0\nLINE\r\n   8  \n Wall \n", {{0, "LINE"}, {8, " Wall "}}}, // blanks of a text are the text's
        {"0\nEOF", {{0, "EOF"}}},
        {"0\nEOF\r\n\r\n  \n", {{0, "EOF"}}},
        {"0\nEOF\n\x1a", {{0, "EOF"}}},
        {"1\n\n\t-3\n\n", {{1, ""}, {-3, ""}}},
        {std::string("1\na\0b\n", 6), {{1, std::string("a\0b", 3)}}},
        {"", {}},
    };
    for (const auto& one : cases) {
        const Scan scan = scanAll(one.bytes);
        EXPECT_EQ(scan.groups, one.groups) << one.bytes;
        EXPECT_EQ(scan.end, ScanResult::kEnd) << one.bytes;
    }
}

TEST(GroupScanner, stopsAtTheFault) {
    const struct {
        const char* bytes;
        ScanResult end;
        std::size_t groups;
        std::size_t line;
    } cases[] = {
        {"0\nLINE\nten\n1.0\n", ScanResult::kBadCode, 1, 3},
        {"0\nLINE\n\n1.0\n", ScanResult::kBadCode, 1, 3},
        {"0\nLINE\n1 0\n1.0\n", ScanResult::kBadCode, 1, 3},
        {"0\nLINE\n99999\nx\n", ScanResult::kBadCode, 1, 3},
        {"0\nLINE\n10\n", ScanResult::kMissingValue, 1, 3},
        {"0\nLINE\n10", ScanResult::kMissingValue, 1, 3},
    };
    for (const auto& one : cases) {
        const Scan scan = scanAll(one.bytes);
        EXPECT_EQ(scan.end, one.end) << one.bytes;
        EXPECT_EQ(scan.groups.size(), one.groups) << one.bytes;
        EXPECT_EQ(scan.line, one.line) << one.bytes;
    }
}

TEST(GroupScanner, groupsBeginBehindAMarkAndBlankLines) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::pair<std::string, std::size_t> cases[] = {
        {"0\nEOF\n", 0},   {"  0\nEOF\n", 0},      {"\n0\nEOF\n", 1}, {"\r\n \t\r\n  0\r\nEOF", 6},
        {mark + "0\n", 3}, {mark + "\n\n 0\n", 5}, {"\n\n", 0},       {"", 0},
        {mark, 3}};
    for (const auto& [bytes, start] : cases) EXPECT_EQ(startOfGroups(bytes), start) << bytes;
}

TEST(GroupScanner, takesNumbersThatWritersPutAndNoOthers) {
    const struct {
        const char* text;
        double value;
    } reals[] = {{" 1.5 ", 1.5}, {"+2", 2},        {"-.5", -0.5}, {"1.0E+02", 100}, {"1e-400", 0}, {"5.", 5},
                 {"-0.0", -0.0}, {"1e308", 1e308}, {"0.1", 0.1},  {"  70", 70},     {"0001.0", 1}};
    for (const auto& one : reals) {
        ASSERT_TRUE(realFromText(one.text)) << one.text;
        EXPECT_EQ(*realFromText(one.text), one.value) << one.text;
    }
    for (const char* text :
         {"", " ", "nan", "inf", "-inf", "1e400", "1,5", "1.5x", "--1", "+-1", "0x10", "1.#QNAN"})
        EXPECT_FALSE(realFromText(text)) << text;

    EXPECT_EQ(integerFromText("    70"), 70);
    EXPECT_EQ(integerFromText("+7"), 7);
    EXPECT_EQ(integerFromText("1.0"), 1);
    EXPECT_EQ(integerFromText("-9223372036854775808"), INT64_MIN);
    for (const char* text : {"", "1.5", "9223372036854775808", "1e30", "x", "7 7"})
        EXPECT_FALSE(integerFromText(text)) << text;

    EXPECT_EQ(handleFromText(" 1aF "), 0x1AFu);
    EXPECT_EQ(handleFromText("FFFFFFFFFFFFFFFF"), UINT64_MAX);
    for (const char* text : {"", "G", "-1", "10000000000000000", "0x1"})
        EXPECT_FALSE(handleFromText(text)) << text;
}
