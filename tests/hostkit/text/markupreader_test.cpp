#include "markupreader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using hostkit::MarkupPiece;
using hostkit::MarkupReader;
using Extent = MarkupReader::Extent;

/// Letters as they are, a code by its sign: | line end, ( ) group, !L toggle, [H2.5] form, <1/2> stack.
std::wstring signsOf(std::wstring_view text, Extent extent) {
    std::wstring signs;
    MarkupReader reader(text, extent);
    while (const auto piece = reader.next()) {
        const std::wstring argument(piece->text);
        switch (piece->kind) {
        case MarkupPiece::Kind::letters:
            signs += argument;
            break;
        case MarkupPiece::Kind::lineEnd:
            signs += L'|';
            break;
        case MarkupPiece::Kind::groupBegin:
            signs += L'(';
            break;
        case MarkupPiece::Kind::groupEnd:
            signs += L')';
            break;
        case MarkupPiece::Kind::toggle:
            (signs += L'!') += piece->code;
            break;
        case MarkupPiece::Kind::form:
            signs += L'[' + (piece->code + argument) + L']';
            break;
        case MarkupPiece::Kind::stack:
            signs += L'<' + argument + L'>';
        }
    }
    return signs;
}

struct Reading {
    const wchar_t* text;
    const wchar_t* signs;
};

TEST(MarkupReader, CodesOfEveryText) {
    const Reading readings[] = {{L"%%c%%C %%d%%D %%p%%P", L"\u2300\u2300 \u00B0\u00B0 \u00B1\u00B1"},
                                {L"%%u%%U%%o%%O%%k%%K", L"!L!L!O!O!K!K"},
                                {L"%%065%%66%%7x%%0671%%031%%032", L"ABxC1 "},
                                {L"%%%%%%%", L"%%%"},
                                {L"%% %%x %", L"%% %%x %"},
                                {L"\\U+00E9\\u+20aC", L"\u00E9\u20AC"},
                                {L"", L""}};
    for (const Extent extent : {Extent::line, Extent::paragraphs})
        for (const auto& [text, signs] : readings) EXPECT_EQ(signsOf(text, extent), signs) << text;
}

TEST(MarkupReader, ALineHasNoOtherCodes) {
    for (const std::wstring text : {L"a\\Pb", L"{\\H2;\\S1/2;}", L"^J^I\t\n\x01", L"\\\\\\U+00Gx", L"\\~\\"})
        EXPECT_EQ(signsOf(text, Extent::line), text);
    EXPECT_EQ(signsOf(L"\\\\U+0041", Extent::line), L"\\A");
}

TEST(MarkupReader, CodesOfParagraphs) {
    const Reading readings[] = {{L"a\\Pb\\Nc\\Xd\ne^Jf", L"a|b|c|d|e|f"},
                                {L"{\\Lx\\l\\O\\o}\\K\\k", L"([L]x[l][O][o])[K][k]"},
                                {L"\\H2.5x;\\C1;\\c255;b", L"[H2.5x][C1][c255]b"},
                                {L"\\fArial|b1;\\Fx;\\pqc;", L"[fArial|b1][Fx][pqc]"},
                                {L"\\A1;\\W2;\\Q3;\\T4;", L"[A1][W2][Q3][T4]"},
                                {L"\\H2.5 a\\Pb", L"[H2.5 a\\Pb]"},
                                {L"\\H;\\H", L"[H][H]"},
                                {L"\\S1/2;\\S+1^-2;\\S;", L"<1/2><+1^-2><>"},
                                {L"\\S1\\;2\\/3;4", L"<1\\;2\\/3>4"},
                                {L"\\S1/2\\", L"<1/2\\>"},
                                {L"\\\\P\\{a\\}\\~b", L"\\P{a}\u00A0b"},
                                {L"^I^ ^M^x\t\x01^", L"\t^^x\t^"},
                                {L"\\z\\u+00Gx\\", L"\\z\\u+00Gx\\"},
                                {L"\\\\U+0041", L"\\U+0041"}};
    for (const auto& [text, signs] : readings) EXPECT_EQ(signsOf(text, Extent::paragraphs), signs) << text;
}

TEST(MarkupReader, SourcesAreTheWholeText) {
    std::mt19937 random(7);
    const std::wstring_view alphabet = L"%\\^{};/#SHPUupqcLk~+0019AE \t\n";
    for (int round = 0; round < 20000; ++round) {
        std::wstring text(random() % 12, L' ');
        for (wchar_t& character : text) character = alphabet[random() % alphabet.size()];
        for (const Extent extent : {Extent::line, Extent::paragraphs}) {
            std::wstring sources;
            MarkupReader reader(text, extent);
            while (const auto piece = reader.next()) {
                ASSERT_FALSE(piece->source.empty()) << text;
                sources += piece->source;
            }
            ASSERT_EQ(sources, text);
        }
    }
}

TEST(MarkupReader, OnlyBareDividersDivideAStack) {
    std::wstring_view stack = L"a/\\/#\\#^\\^\\";
    std::wstring characters, dividers;
    while (!stack.empty()) {
        const auto [character, isDivider] = hostkit::takeStackCharacter(stack);
        (isDivider ? dividers : characters) += character;
    }
    EXPECT_EQ(characters, L"a/#^\\");
    EXPECT_EQ(dividers, L"/#^");
}

TEST(MarkupReader, AlignmentIsTheLetterBehindTheQ) {
    const std::pair<const wchar_t*, wchar_t> forms[] = {{L"xqc,t10", L'c'}, {L"i0,qr", L'r'}, {L"ql", L'l'},
                                                        {L"i1,l2", L'\0'},  {L"xq", L'\0'},   {L"", L'\0'}};
    for (const auto& [form, letter] : forms) EXPECT_EQ(hostkit::alignmentAskedBy(form), letter) << form;
}

} // namespace
