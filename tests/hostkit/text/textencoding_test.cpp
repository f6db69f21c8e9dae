#include "casefold.h"
#include "textencoding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace {

using namespace hostkit;

const CodePage allPages[] = {CodePage::thai874,           CodePage::japanese932,    CodePage::chinese936,
                             CodePage::korean949,         CodePage::chinese950,     CodePage::cyrillic1251,
                             CodePage::centralEurope1250, CodePage::western1252,    CodePage::greek1253,
                             CodePage::turkish1254,       CodePage::hebrew1255,     CodePage::arabic1256,
                             CodePage::baltic1257,        CodePage::vietnamese1258, CodePage::utf8};

TEST(AnsiCodePage, EveryByteComesBackAndStandsForOneCharacter) {
    std::set<wchar_t> seen;
    for (int byte = 0; byte < 256; ++byte) {
        const wchar_t character = wideFromAnsi(static_cast<unsigned char>(byte));
        EXPECT_EQ(ansiFromWide(character), static_cast<unsigned char>(byte));
        seen.insert(character);
    }
    EXPECT_EQ(seen.size(), 256u);
    EXPECT_EQ(wideFromAnsi("\x80\x85\x8C\x9F\x81\xFF"), L"€…ŒŸ\x81\xFF");
    EXPECT_EQ(ansiFromWide(L"Œuvre €5 文 \x80"), "\x8Cuvre \x80\x35 ? ?");
}

TEST(Utf8, TellsEveryKindOfFaultAndGoesOn) {
    // The fault's place (-1: none) and the text.
    const std::tuple<std::string, int, std::wstring> cases[] = {
        {"a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E", -1, L"aé€𝄞"},
        {"\xF4\x8F\xBF\xBF", -1, L"\U0010FFFF"},
        {"a\x80", 1, L"a\uFFFD"},
        {"\xC0\xAF", 0, L"\uFFFD\uFFFD"}, // overlong
        {"\xE0\x80\xAFx", 0, L"\uFFFD\uFFFD\uFFFDx"},
        {"\xED\xA0\x80", 0, L"\uFFFD\uFFFD\uFFFD"}, // surrogate
        {"\xF4\x90\x80\x80", 0, L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"ab\xE2\x82", 2, L"ab\uFFFD\uFFFD"}, // cut off
        {"\xC3(", 0, L"\uFFFD("},
        {"\xFF", 0, L"\uFFFD"},
    };
    for (const auto& [bytes, place, text] : cases) {
        std::optional<Utf8Fault> fault;
        EXPECT_EQ(wideFromUtf8(bytes, &fault), text);
        EXPECT_EQ(fault ? static_cast<int>(fault->offset) : -1, place) << testing::PrintToString(bytes);
        EXPECT_EQ(isValidUtf8(bytes), place < 0);
        EXPECT_EQ(utf8FromWide(text) == bytes, place < 0);
    }
    const wchar_t bad[] = {static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000),
                           static_cast<wchar_t>(-1), 0};
    EXPECT_EQ(utf8FromWide(bad), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CodePages, AreKnownByTheNamesInDrawings) {
    EXPECT_EQ(codePageFromName(L"ansi_1252"), CodePage::western1252);
    EXPECT_EQ(codePageFromName(L"ANSI_932"), CodePage::japanese932);
    EXPECT_EQ(codePageFromName(L"GB2312"), CodePage::chinese936);
    EXPECT_EQ(codePageFromName(L"ANSI_9999"), std::nullopt);
    EXPECT_EQ(codePageFromName(L""), std::nullopt);
    for (const CodePage page : allPages) EXPECT_EQ(codePageFromName(nameOfCodePage(page)), page);
}

TEST(CodePages, DecodeKnownTexts) {
    EXPECT_EQ(decodeText(CodePage::cyrillic1251, "\xCF\xEB\xE8\xF2\xE0"), L"Плита");
    EXPECT_EQ(decodeText(CodePage::centralEurope1250, "p\xF8\xED\xE8n\xFD"), L"příčný");
    EXPECT_EQ(decodeText(CodePage::greek1253, "\xF0\xEB\xDC\xEA\xE1"), L"πλάκα");
    EXPECT_EQ(decodeText(CodePage::japanese932, "\x93\x53\x8B\xD8\x83\x5C\x61"),
              L"鉄筋ソa"); // 5C is a second byte
    EXPECT_EQ(decodeText(CodePage::chinese936, "\xB8\xD6\xBD\xEE"), L"钢筋");
    EXPECT_EQ(decodeText(CodePage::korean949, "\xC3\xB6\xB1\xD9"), L"철근");
    EXPECT_EQ(decodeText(CodePage::chinese950, "\xBF\xFB\xB5\xAC"), L"鋼筋");
    EXPECT_EQ(decodeText(CodePage::thai874, "\xE0\xCB"), L"เห");
    EXPECT_EQ(decodeText(CodePage::japanese932, "\x93"), L"\uFFFD"); // cut off
}

TEST(CodePages, EveryCharacterOfAPageComesBack) {
    for (const CodePage page : allPages) {
        std::string bytes;
        for (int byte = 1; byte < 256; ++byte) {
            if (isMultiByte(page) && byte >= 0x80) break;
            bytes += static_cast<char>(byte);
        }
        if (page == CodePage::utf8) bytes = "\xE9\x9B\xBB";
        EXPECT_EQ(encodeText(page, decodeText(page, bytes)), bytes) << static_cast<int>(page);
        EXPECT_EQ(encodeText(page, L"\x1F600"
                                   L"x"),
                  page == CodePage::utf8 ? "\xF0\x9F\x98\x80x" : "?x");
    }
    const auto escape = [](std::string& bytes, wchar_t character) {
        bytes += "<" + std::to_string(character) + ">";
    };
    EXPECT_EQ(encodeText(CodePage::western1252, L"aЖ", escape), "a<1046>");
    EXPECT_EQ(encodeText(CodePage::cyrillic1251, L"Жé", escape), "\xC6<233>");
}

TEST(CodePages, EveryPairOfBytesThatIsACharacterComesBack) {
    for (const CodePage page : allPages) {
        if (!isMultiByte(page)) continue;
        int characters = 0;
        for (int lead = 0x81; lead < 0xFF; ++lead) {
            for (int trail = 0x40; trail < 0xFF; ++trail) {
                const std::wstring text =
                    decodeText(page, std::string{static_cast<char>(lead), static_cast<char>(trail)});
                if (text.size() != 1 || text[0] == 0xFFFD) continue;
                ++characters;
                EXPECT_EQ(decodeText(page, encodeText(page, text)), text);
            }
        }
        EXPECT_GT(characters, 7000) << static_cast<int>(page);
    }
}

TEST(CodePages, TakeAnyBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string bytes(random() % 40, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        for (const CodePage page : allPages) {
            std::wstring text = decodeText(page, bytes);
            EXPECT_LE(text.size(), bytes.size());
            const std::wstring again = decodeText(page, encodeText(page, text));
            if (page != CodePage::utf8) std::replace(text.begin(), text.end(), L'\xFFFD', L'?');
            EXPECT_EQ(again, text) << static_cast<int>(page) << testing::PrintToString(bytes);
        }
    }
}

TEST(CaseFolding, MapsBackAndOrders) {
    for (wchar_t c = 0; c < 0x500; ++c) EXPECT_EQ(foldCase(foldCase(c)), foldCase(c)) << static_cast<int>(c);
    EXPECT_TRUE(equalFolded(L"VEXO_Été", L"vexo_éTÉ"));
    EXPECT_FALSE(equalFolded(L"a", L"ab"));
    EXPECT_LT(compareFolded(L"a", L"AB"), 0);
    EXPECT_GT(compareFolded(L"Z", L"a"), 0);
}

TEST(Wildcards, Match) {
    const std::tuple<const wchar_t*, const wchar_t*, bool> cases[] = {
        {L"*", L"", true},          {L"", L"", true},
        {L"", L"a", false},         {L"*.ORStyle", L"Été.orstyle", true},
        {L"a?c", L"aÉc", true},     {L"a?c", L"ac", false},
        {L"*a*b", L"xaxxab", true}, {L"*a*b", L"xaxxabc", false},
        {L"a*", L"A", true},        {L"**?", L"", false},
    };
    for (const auto& [pattern, text, matches] : cases)
        EXPECT_EQ(matchesWildcard(pattern, text), matches) << pattern;
    EXPECT_FALSE(matchesWildcard(L"*a*a*a*a*a*a*a*a*a*a*b", std::wstring(2000, L'a'))); // and comes to an end
}

} // namespace
