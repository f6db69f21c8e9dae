#include "paragraphlayout.h"

#include "dbline.h"
#include "dbmtext.h"
#include "dbtext.h"
#include "drawingparts.h"
#include "entitymotions.h"

#include <gtest/gtest.h>

namespace {

using hostkit::InkSize;
using hostkit::paragraphInk;

/// Adds a style of the sans face.
AcDbObjectId sansStyle(AcDbDatabase& database) {
    const AcDbObjectId id = drawingtest::addRecord<AcDbTextStyleTable>(database, L"Sans");
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(id, AcDb::kForWrite);
    style->setFileName(L"sans.ttf");
    return id;
}

TEST(ParagraphLayout, InkOfSavedDimensions) {
    AcDbDatabase database;
    const AcDbObjectId sans = sansStyle(database);
    const AcDbObjectId strokes;
    const struct {
        const wchar_t* contents;
        AcDbObjectId style;
        double height, width, tall; // 0: not known
    } cases[] = {{L"\\A1;5.5105", sans, 0.18, 0.7486, 0.18 * 1.021},
                 {L"46,72", sans, 2.5, 0.0, 3.005},
                 {L"28,55", sans, 2.5, 8.5, 3.005},
                 {L"102,59", sans, 2.5, 10.148, 3.005},
                 {L"\\A1;3'-1\"", sans, 6.0, 15.95, 0.0},
                 {L"0.125", strokes, 1.0, 3.5, 1.0},
                 {L"\\A1;2.923", strokes, 0.115, 0.46, 0.115},
                 {L"0.100", strokes, 1.0, 3.1667, 1.0},
                 {L"317,88", strokes, 1.0, 0.0, 1.1667},
                 {L"{\\H1.000000x;\\S1#2;}\"", strokes, 0.1875, 0.438, 0.375},
                 {L"{\\H1x;\\S3#8;}", sans, 1.0, 0.0, 2.021}};
    for (const auto& c : cases) {
        const InkSize ink = paragraphInk(c.contents, c.height, c.style);
        const std::string name = drawingtest::narrow(c.contents);
        EXPECT_NEAR(ink.width, c.width > 0.0 ? c.width : ink.width, 0.02 * c.height) << name;
        EXPECT_NEAR(ink.height, c.tall > 0.0 ? c.tall : ink.height, 0.01 * c.height) << name;
    }
}

/// Strokes of height 6: a letter is 6 wide, 1 is 4.
AcDbMText paragraphOf(const wchar_t* contents) {
    AcDbMText text;
    text.setTextHeight(6.0);
    text.setContents(contents);
    return text;
}

TEST(ParagraphLayout, EachRunBecomesATextWithItsLook) {
    const AcDbMText paragraph =
        paragraphOf(L"\\A1;a{\\T1;b}{\\H2x;c}{\\C1;\\W0.5;\\Q10;\\Lde} {\\c16711680;\\T2;f}\\S1/22;");
    const struct {
        const wchar_t* text;
        double x, up, height, widthFactor, oblique;
        int color;
    } runs[] = {{L"ab", 0.0, 3.0, 6.0, 1.0, 0.0, 256},        {L"c", 12.0, 0.0, 12.0, 1.0, 0.0, 256},
                {L"%%ude", 24.0, 3.0, 6.0, 0.5, 10.0, 1},     {L"f", 36.0, 3.0, 6.0, 2.0, 0.0, -1},
                {L"1", 48.0 + 3.58, 7.2, 6.0, 1.0, 0.0, 256}, {L"22", 48.0 - 0.42, -1.2, 6.0, 1.0, 0.0, 256}};
    constexpr double base = -13.2; // below the top of the upper part of the stack
    const auto parts = motions::partsOf<AcDbEntity>(paragraph);
    ASSERT_EQ(parts.size(), std::size(runs) + 1);
    std::size_t next = 0;
    for (const auto& entity : parts) {
        if (const auto* const bar = AcDbLine::cast(entity.get())) {
            EXPECT_TRUE(motions::isNear(bar->startPoint(), {48.0, base + 6.0, 0.0}));
            EXPECT_TRUE(motions::isNear(bar->endPoint(), {48.0 + 11.16, base + 6.0, 0.0}));
            continue;
        }
        const auto* const part = AcDbText::cast(entity.get());
        ASSERT_TRUE(part && next < std::size(runs));
        const auto& run = runs[next++];
        EXPECT_EQ(part->text(), run.text);
        EXPECT_NEAR(part->position().x, run.x, 1e-9) << next;
        EXPECT_NEAR(part->position().y, base + run.up, 1e-9) << next;
        EXPECT_NEAR(part->height(), run.height, 1e-9) << next;
        EXPECT_NEAR(part->widthFactor(), run.widthFactor, 1e-9) << next;
        EXPECT_NEAR(part->oblique(), run.oblique / 180.0 * AcGe::kPi, 1e-9) << next;
        AcCmColor color;
        if (run.color < 0)
            color.setRGB(0, 0, 255);
        else
            color.setColorIndex(static_cast<Adesk::UInt16>(run.color));
        EXPECT_TRUE(part->color() == color) << next;
    }
    EXPECT_EQ(next, std::size(runs));
}

std::vector<std::wstring> linesOf(std::wstring_view contents, double width = 0.0) {
    std::vector<std::wstring> lines;
    for (const hostkit::ParagraphLine& line : hostkit::laidOut(contents, {.width = width}).lines)
        lines.push_back(line.text());
    return lines;
}

TEST(ParagraphLayout, LinesAreWhatIsSeen) {
    const std::pair<std::wstring, std::vector<std::wstring>> cases[] = {
        {L"\\S1/2; \\S+0.1^-0.2; \\S3#4;", {L"1/2 +0.1 -0.2 3/4"}},
        {L"10\\S1/2;\" \\S1/2/3; a\\S2;", {L"10 1/2\" 1/2/3 a2"}},
        {L" {\\C1;a\t{\\Lb}\\Pc} ", {L"a    b", L"c"}},
        {L"}}}a{{{", {L"a"}},
        {std::wstring(100000, L'{') + L"x" + std::wstring(100000, L'}'), {L"x"}},
        {L"", {L""}}};
    for (const auto& [contents, lines] : cases) EXPECT_EQ(linesOf(contents), lines) << contents.substr(0, 40);
}

} // namespace
