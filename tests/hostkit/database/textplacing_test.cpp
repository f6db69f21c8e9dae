#include "textplacing.h"

#include "dbmtext.h"
#include "dbtext.h"

#include <gtest/gtest.h>

#include <optional>

using namespace hostkit;

namespace {

using Anchor = PlacedText::Anchor;

std::wstring lettersOf(const std::vector<TextRun>& runs) {
    std::wstring letters;
    for (const TextRun& run : runs) letters += run.text;
    return letters;
}

TEST(TextPlacing, RunsOfALineHaveItsLines) {
    EXPECT_EQ(lettersOf(runsOfText(L"\\U+00E9t\t%%x", L"")), L"\u00E9t%%x");
    EXPECT_TRUE(runsOfText(L"", L"").empty());
    const auto runs = runsOfText(L"a%%ub%%oc%%ud%%ke", L"f");
    ASSERT_EQ(runs.size(), 5u);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        EXPECT_EQ(runs[i].isUnderlined, i == 1 || i == 2) << i;
        EXPECT_EQ(runs[i].isOverlined, i >= 2) << i;
        EXPECT_EQ(runs[i].isStruckOut, i == 4) << i;
        EXPECT_EQ(runs[i].heightFactor, 1.0);
        EXPECT_FALSE(runs[i].hasOwnColor);
        EXPECT_EQ(runs[i].family, L"f");
    }
}

/// Strokes of height 6 at (100, 50): a capital is 6 wide with its blank of 2, a 1 is 4.
PlacedParagraph placed(const wchar_t* contents, int attachment = 1, double width = 0.0) {
    AcDbMText text;
    text.setLocation({100.0, 50.0, 0.0});
    text.setTextHeight(6.0);
    text.setWidth(width);
    text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(attachment));
    text.setContents(contents);
    return placedParagraph(text);
}

// Blanks around a line shift nothing.
TEST(TextPlacing, LinesStandAtWhatTheyAreAlignedBy) {
    const struct {
        const wchar_t* contents;
        int attachment;
        double width;
        Anchor anchor;
        AcGePoint3d origin;
    } cases[] = {{L" AB ", 1, 0.0, Anchor::start, {100.0, 44.0, 0.0}},
                 {L"  {\\C1; }{\\C2;AB} ", 2, 0.0, Anchor::middle, {100.0, 44.0, 0.0}},
                 {L"AB", 6, 0.0, Anchor::end, {100.0, 47.0, 0.0}},
                 {L"AB", 8, 50.0, Anchor::middle, {100.0, 50.0, 0.0}},
                 {L"\\pqr;AB", 1, 50.0, Anchor::end, {150.0, 44.0, 0.0}},
                 {L"\\pqc;AB", 9, 50.0, Anchor::middle, {75.0, 50.0, 0.0}}};
    for (const auto& c : cases) {
        const PlacedParagraph paragraph = placed(c.contents, c.attachment, c.width);
        ASSERT_EQ(paragraph.texts.size(), 1u);
        const PlacedText& text = paragraph.texts.front();
        EXPECT_EQ(lettersOf(text.runs), L"AB");
        EXPECT_EQ(text.anchor, c.anchor);
        EXPECT_TRUE(text.origin.isEqualTo(c.origin)) << text.origin.x << ' ' << text.origin.y;
        EXPECT_EQ(text.fitLength, 0.0);
    }
    EXPECT_TRUE(placed(L" \\P ").texts.empty());
    const PlacedParagraph slash = placed(L" \\S#;");
    EXPECT_TRUE(slash.texts.empty() && slash.bars.size() == 1u);
}

TEST(TextPlacing, RunsLookAsTheCodesSay) {
    const auto runs = placed(L"\\A1;a{\\fTimes New Roman|b1|i0;b}{\\Fmonotxt;\\C1;\\H0.5x;c}{\\C7;\\Ld}"
                             L"{\\c255;e}{\\C256;f}{\\fArial|b0|i1;g}")
                          .texts.at(0)
                          .runs;
    const struct {
        std::optional<std::uint32_t> rgb;
        double heightFactor, rise;
        bool isBold, isItalic, isUnderlined;
        std::wstring family;
    } looks[] = {{{}, 1.0, 0.0, false, false, false, L""},
                 {{}, 1.0, 0.0, true, false, false, L"Times New Roman, serif"},
                 {0xFF0000, 0.5, 0.25, false, false, false, L"Courier New, monospace"},
                 {0, 1.0, 0.0, false, false, true, L""},
                 {0xFF0000, 1.0, 0.0, false, false, false, L""},
                 {{}, 1.0, 0.0, false, false, false, L""},
                 {{}, 1.0, 0.0, false, true, false, L""}};
    ASSERT_EQ(runs.size(), std::size(looks));
    for (std::size_t i = 0; i < runs.size(); ++i) {
        EXPECT_EQ(runs[i].hasOwnColor, looks[i].rgb.has_value()) << i;
        EXPECT_EQ(runs[i].rgb, looks[i].rgb.value_or(0)) << i;
        EXPECT_DOUBLE_EQ(runs[i].heightFactor, looks[i].heightFactor) << i;
        EXPECT_DOUBLE_EQ(runs[i].rise, looks[i].rise) << i;
        EXPECT_EQ(runs[i].isBold, looks[i].isBold) << i;
        EXPECT_EQ(runs[i].isItalic, looks[i].isItalic) << i;
        EXPECT_EQ(runs[i].isUnderlined, looks[i].isUnderlined) << i;
        EXPECT_EQ(runs[i].family, looks[i].family) << i;
    }
}

TEST(TextPlacing, PartsOfALineFillTheirWidths) {
    const PlacedParagraph stacked = placed(L"A\\S1/22;\\PB");
    const struct {
        const wchar_t* letters;
        double x, up, width;
    } parts[] = {{L"A", 0.0, 0.0, 6.0}, {L"1", 6.0 + 3.58, 8.4, 4.0}, {L"22", 6.0 - 0.42, 0.0, 12.0}};
    ASSERT_EQ(stacked.texts.size(), std::size(parts) + 1);
    for (std::size_t i = 0; i < std::size(parts); ++i) {
        const PlacedText& text = stacked.texts[i];
        EXPECT_EQ(lettersOf(text.runs), parts[i].letters);
        EXPECT_TRUE(text.origin.isEqualTo({100.0 + parts[i].x, 50.0 - 14.4 + parts[i].up, 0.0})) << i;
        EXPECT_NEAR(text.fitLength, parts[i].width, 1e-9);
        EXPECT_EQ(text.anchor, Anchor::start);
    }
    EXPECT_EQ(stacked.texts.back().fitLength, 0.0) << "a line of its own";
    ASSERT_EQ(stacked.bars.size(), 1u);
    EXPECT_TRUE(stacked.bars[0].from.isEqualTo({106.0, 50.0 - 7.2, 0.0}));
    EXPECT_TRUE(stacked.bars[0].to.isEqualTo({106.0 + 11.16, 50.0 - 7.2, 0.0}));
    const PlacedParagraph slashed = placed(L"{\\C1;\\S1#2;}");
    ASSERT_EQ(slashed.bars.size(), 1u);
    EXPECT_EQ(slashed.bars[0].rgb, 0xFF0000u);
    EXPECT_NEAR(slashed.bars[0].to.y - slashed.bars[0].from.y, 6.0, 1e-9);

    const PlacedParagraph formed = placed(L"a{\\W0.5;b}{\\T2;c}{\\Q45;d}");
    ASSERT_EQ(formed.texts.size(), 4u);
    const double along[] = {6.0, 3.0, 12.0, 6.0};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_TRUE(formed.texts[i].along.isEqualTo(AcGeVector3d(along[i], 0.0, 0.0))) << i;
        EXPECT_TRUE(formed.texts[i].up.isEqualTo(AcGeVector3d(i == 3 ? 6.0 : 0.0, 6.0, 0.0))) << i;
        EXPECT_NEAR(formed.texts[i].fitLength, along[i], 1e-9);
    }
}

} // namespace
