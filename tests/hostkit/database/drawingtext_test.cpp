#include "drawingtext.h"

#include <gtest/gtest.h>

#include <random>

using namespace hostkit;

TEST(DrawingText, readsEscapesInBothEncodings) {
    const struct {
        CodePage page;
        std::string bytes;
        std::wstring text;
    } cases[] = {
        {CodePage::western1252, "B\xE9ton \x80", L"B\u00E9ton \u20AC"},
        {CodePage::utf8, "B\xC3\xA9ton \xE2\x82\xAC", L"B\u00E9ton \u20AC"},
        {CodePage::western1252, "\\U+00E9\\U+4E2D", L"\u00E9\u4E2D"},
        {CodePage::utf8, "\\U+D83D\\U+DE00!", L"\U0001F600!"},
        {CodePage::utf8, "\\U+D83D!", L"\\U+D83D!"}, // half a pair is no character
        {CodePage::utf8, "\\U+00", L"\\U+00"},
        {CodePage::western1252, "\\M+18ABF", L"\u6F22"},
        {CodePage::western1252, "\\M+9FFFF", L"\\M+9FFFF"},
        {CodePage::utf8, "a^Ib^Jc^ d^", L"a\tb\nc^d^"},
        {CodePage::utf8, "^@^2", L"^@^2"},
        {CodePage::utf8, "%%c20 %%d", L"%%c20 %%d"},
        {CodePage::cyrillic1251, "\xC1\xE5\xF2\xEE\xED", L"\u0411\u0435\u0442\u043E\u043D"},
        {CodePage::japanese932, "\x8A\xBF\x83\x5C",
         L"\u6F22\u30BD"}, // the second byte of a character may be a backslash
    };
    for (const auto& one : cases) EXPECT_EQ(DrawingText(one.page).decode(one.bytes), one.text) << one.bytes;
}

TEST(DrawingText, writesNothingThatBreaksALine) {
    const DrawingText ansi(CodePage::western1252);
    std::string bytes;
    ansi.encode(std::wstring(L"0\r\nEOF\0^\u4E2D\U0001F600\u00E9", 11), bytes);
    EXPECT_EQ(bytes, "0^M^JEOF^ \\U+4E2D\\U+D83D\\U+DE00\xE9");
}

TEST(DrawingText, keepsBytesThatAreNoUtf8) {
    const DrawingText text(CodePage::utf8);
    const std::string broken = "a\xE9z\xC3\xA9\xF0\x9F";
    std::string again;
    text.encode(text.decode(broken), again);
    EXPECT_EQ(again, broken);
}

TEST(DrawingText, comesBackFromEveryCodePage) {
    std::mt19937 random(7);
    for (const CodePage page : {CodePage::utf8, CodePage::western1252, CodePage::greek1253,
                                CodePage::japanese932, CodePage::chinese936}) {
        const DrawingText text(page);
        for (int round = 0; round < 500; ++round) {
            std::wstring wide;
            for (unsigned length = random() % 12; length > 0; --length) {
                const wchar_t pool[] = {L'a',      L'\\',     L'^',      L'\n',         L'\t',
                                        L'\u00E9', L'\u03B1', L'\u6F22', L'\U0001F600', L' '};
                wide += pool[random() % std::size(pool)];
            }
            std::string bytes;
            text.encode(wide, bytes);
            EXPECT_EQ(text.decode(bytes), wide) << nameOfCodePage(page).size() << " " << bytes;
            EXPECT_EQ(bytes.find_first_of("\r\n"), std::string::npos);
        }
    }
}
