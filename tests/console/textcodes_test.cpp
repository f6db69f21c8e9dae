#include "textcodes.h"

#include <gtest/gtest.h>

namespace {

std::wstring plain(std::wstring_view text) { return plainText(runsOfText(text, {})); }

std::wstring paragraphs(std::wstring_view text) {
    std::wstring all;
    for (const Paragraph& each : paragraphsOfText(text, {})) all += plainText(each.runs) + L"|";
    return all;
}

TEST(TextCodes, SingleLineCodes) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"%%c12 %%D %%p0.5", L"\u230012 \u00B0 \u00B10.5"},
        {L"100%%%", L"100%"},
        {L"%%065%%66%%7", L"AB"},
        {L"%%x %% %", L"%%x %% %"},
        {L"\\U+00E9t\t", L"\u00E9t"},
        {L"a\\Pb{c}", L"a\\Pb{c}"},
        {L"", L""}};
    for (const auto& [text, wanted] : cases) EXPECT_EQ(plain(text), wanted) << text;

    const auto runs = runsOfText(L"a%%ub%%oc%%ud", {});
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_TRUE(!runs[0].isUnderlined && runs[1].isUnderlined && !runs[1].isOverlined);
    EXPECT_TRUE(runs[2].isUnderlined && runs[2].isOverlined && !runs[3].isUnderlined && runs[3].isOverlined);
}

TEST(TextCodes, ParagraphCodesLeaveTheText) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"one\\Ptwo", L"one|two|"},
        {L"{\\fArial|b1|i0|c0|p34;bold} thin", L"bold thin|"},
        {L"\\A1;\\H2.5x;\\W0.8;\\Q15;\\T1.2;x", L"x|"},
        {L"\\S1/2; \\S+0.1^-0.2; \\S3#4;", L"1\u20442 +0.1-0.2 3\u20444|"},
        {L"a\\\\b \\{c\\} \\~d", L"a\\b {c} \u00A0d|"},
        {L"^I^J^ ^M^x", L"    |^^x|"},
        {L"%%c10 \\C1;red", L"\u230010 red|"},
        {L"\\pxqc,t10;mid", L"mid|"},
        {L"end\\", L"end\\|"},
        {L"\\H2.5", L"|"},
        {L"\\S1/2", L"1\u20442|"},
        {L"}}}a{{{", L"a|"},
        {L"\\z1\\U+00E9\\U+0007", L"\\z1\u00E9|"},
        {L"", L"|"}};
    for (const auto& [text, wanted] : cases) EXPECT_EQ(paragraphs(text), wanted) << text;
}

TEST(TextCodes, BracesHoldFormsAndHeightsMultiply) {
    TextDefaults defaults;
    defaults.height = 5.0;
    defaults.rgb = 0x123456;
    const auto runs =
        paragraphsOfText(L"a{\\H10;\\C1;b{\\H0.5x;\\Lc}d}e{\\C256;f}\\c255;g", defaults)[0].runs;
    ASSERT_EQ(runs.size(), 7u);
    const double factors[] = {1.0, 2.0, 1.0, 2.0, 1.0, 1.0, 1.0};
    const std::uint32_t colors[] = {0x123456, 0xFF0000, 0xFF0000, 0xFF0000, 0x123456, 0x123456, 0xFF0000};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_DOUBLE_EQ(runs[i].heightFactor, factors[i]) << i;
        EXPECT_EQ(runs[i].rgb, colors[i]) << i;
        EXPECT_EQ(runs[i].isUnderlined, i == 2) << i;
    }
    std::wstring deep(100000, L'{');
    EXPECT_EQ(paragraphs(deep + L"x"), L"x|");
}

TEST(TextCodes, LinesBreakAtBlanksAndLoseNothing) {
    const Paragraph paragraph =
        paragraphsOfText(L"the quick brown fox \\Ljumps\\l over theincrediblylazydogs", {})[0];
    EXPECT_EQ(brokenLines(paragraph, 0.0).size(), 1u);
    for (const double width : {0.1, 5.0, 12.0, 30.0, 1000.0}) {
        std::wstring joined;
        for (const auto& line : brokenLines(paragraph, width)) {
            joined += plainText(line);
            const std::wstring text = plainText(line);
            const std::wstring trimmed = text.substr(0, text.find_last_not_of(L' ') + 1);
            const bool isOneWord = trimmed.find(L' ') == std::wstring::npos;
            EXPECT_TRUE(isOneWord || estimatedWidth(trimmed) <= width) << width;
        }
        EXPECT_EQ(joined, plainText(paragraph.runs)) << width;
    }
}

} // namespace
