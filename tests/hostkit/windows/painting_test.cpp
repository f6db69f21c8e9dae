#include "painting.h"

#include "afxwin.h"
#include "scriptedport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace hostkit;

const FontFace face;

TEST(FontMetrics, AccentsAreAsWideAsTheirLettersAndMarksHaveNoWidth) {
    const std::wstring accented = L"éèêëàâäîïìíôöùûüçñÉÈÀÇÎÔÛŠÿ", plain = L"eeeeaaaiiiioouuucnEEACIOUSy";
    ASSERT_EQ(accented.size(), plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i)
        EXPECT_NEAR(characterWidth(accented[i]), characterWidth(plain[i]), 0.021)
            << static_cast<int>(accented[i]);
    for (const wchar_t none : {L'\n', L'\t', L'\r', L'\u0301', L'\u200B', L'\x7F'})
        EXPECT_EQ(characterWidth(none), 0.0);
    EXPECT_EQ(characterWidth(L'漢'), 1.0);
    EXPECT_GT(characterWidth(L'Ж'), 0.4);
    EXPECT_GT(characterWidth(L'\U0001F600'), 0.4);
    for (wchar_t digit = L'0'; digit <= L'9'; ++digit) EXPECT_EQ(characterWidth(digit), characterWidth(L'0'));
    EXPECT_LT(characterWidth(L'i'), characterWidth(L'n'));
    EXPECT_LT(characterWidth(L'n'), characterWidth(L'W'));
    EXPECT_GT(textWidth({11, true, false}, L"texte"), textWidth(face, L"texte"));
    EXPECT_EQ(face.height(), 13);
}

TEST(FontMetrics, WhatFitsIsTheLongestStartThatIsNotWider) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::wstring text;
        for (unsigned i = random() % 40; i > 0; --i) text += static_cast<wchar_t>(L' ' + random() % 0x150);
        const int width = static_cast<int>(random() % 200);
        const std::size_t fitting = fittingLength(face, text, width);
        EXPECT_LE(textWidth(face, std::wstring_view(text).substr(0, fitting)), width);
        if (fitting == text.size()) continue;
        EXPECT_GT(textWidth(face, std::wstring_view(text).substr(0, fitting + 1)), width);
    }
}

struct Drawn : Painting {
    int height = 0;
    bool isCut() const { return std::any_of(items.begin(), items.end(), isClipped); }
};

Drawn draw(const wchar_t* text, UINT format, RECT rect = {0, 0, 1000, 100}) {
    Drawn drawn;
    HostDeviceContext context;
    context.painting = &drawn;
    context.clip = {0, 0, 1000, 1000};
    context.backMode = TRANSPARENT;
    drawn.height = DrawTextW(&context, text, -1, &rect, format);
    return drawn;
}

TEST(DrawText, LinesBreakAsTheFormatSays) {
    using Lines = std::vector<std::wstring>;
    // Digits are 7.04 pixels wide: ten of them and a blank fit into 80.
    const RECT narrow{0, 0, 80, 200};
    const std::tuple<const wchar_t*, UINT, Lines> cases[] = {
        {L"one\ntwo\r\nthree\rfour\n", 0, {L"one", L"two", L"three", L"four"}},
        {L"\n\na", 0, {L"", L"", L"a"}},
        {L"one\ntwo", DT_SINGLELINE, {L"one\ntwo"}},
        {L"00000 11111 22222 33333", DT_WORDBREAK, {L"00000 11111", L"22222 33333"}},
        {L"000000 11111 222 333 444", DT_WORDBREAK, {L"000000", L"11111 222", L"333 444"}},
        {L"00000000000000000000 1", DT_WORDBREAK, {L"00000000000000000000", L"1"}},
        {L"0  00000000000000000000", DT_WORDBREAK, {L"0 ", L"00000000000000000000"}},
        {L"000 111 222 333", 0, {L"000 111 222 333"}},
        {L"", DT_WORDBREAK, {L""}},
        {L"     ", DT_WORDBREAK, {L"     "}},
        {L"&Oui && n&on", 0, {L"Oui & non"}},
        {L"&Oui && n&on", DT_NOPREFIX, {L"&Oui && n&on"}},
        {L"fin&", 0, {L"fin"}},
        {L"000000000000000000", DT_SINGLELINE | DT_END_ELLIPSIS, {L"000000000..."}},
    };
    for (const auto& [text, format, lines] : cases) {
        const Drawn drawn = draw(text, format, narrow);
        Lines shown;
        for (const PaintedItem& item : drawn.items) shown.push_back(item.text);
        EXPECT_EQ(shown, lines) << std::string(text, text + std::wcslen(text));
        EXPECT_EQ(drawn.height, 13 * static_cast<int>(lines.size()));
        RECT measured = narrow;
        HostDeviceContext context;
        DrawTextW(&context, text, -1, &measured, format | DT_CALCRECT);
        EXPECT_EQ(heightOf(measured), drawn.height);
    }
    EXPECT_EQ(draw(L"n&on", 0).items.at(0).underlined, 1);
    const Drawn two = draw(L"a b\nc&d", DT_WORDBREAK);
    EXPECT_EQ(std::pair(two.items.at(0).underlined, two.items.at(1).underlined), std::pair(-1, 1));
}

TEST(DrawText, PlacesAndClipsByItsFormat) {
    const int width = textWidth(face, L"00000");
    const RECT room{100, 50, 200, 100};
    const auto place = [&](UINT format) { return draw(L"00000", format, room).items.at(0).bounds; };
    EXPECT_EQ(place(0).left, 100);
    EXPECT_EQ(place(0).top, 50);
    EXPECT_EQ(place(DT_RIGHT).right, 200);
    EXPECT_EQ(place(DT_CENTER).left, 100 + (100 - width) / 2);
    EXPECT_EQ(place(DT_VCENTER).top, 50) << "counts for single lines only";
    EXPECT_EQ(place(DT_VCENTER | DT_SINGLELINE).top, 50 + (50 - 13) / 2);
    EXPECT_EQ(place(DT_BOTTOM | DT_SINGLELINE).bottom, 100);
    EXPECT_FALSE(draw(L"00000", 0, room).isCut());
    EXPECT_TRUE(draw(L"00000", 0, {0, 0, 10, 100}).isCut());
    EXPECT_TRUE(draw(L"0\n0\n0", 0, {0, 0, 100, 30}).isCut());
    EXPECT_FALSE(draw(L"00000", DT_NOCLIP, {0, 0, 10, 100}).isCut());
    RECT rect{};
    EXPECT_EQ(DrawTextW(nullptr, L"x", -1, &rect, 0), 0);
    HostDeviceContext context;
    EXPECT_EQ(DrawTextW(&context, nullptr, -1, &rect, 0), 0);
    EXPECT_EQ(DrawTextW(&context, L"x", -1, nullptr, 0), 0);
}

TEST(Gdi, ObjectsAreSelectedByKindAndStockOnesStay) {
    HostDeviceContext context;
    EXPECT_EQ(SelectObject(&context, nullptr), nullptr);
    CFont font;
    EXPECT_TRUE(font.CreatePointFont(120, L"any"));
    EXPECT_EQ(SelectObject(&context, static_cast<HFONT>(font)), GetStockObject(DEFAULT_GUI_FONT));
    TEXTMETRICW metrics{};
    EXPECT_TRUE(GetTextMetricsW(&context, &metrics));
    EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
    EXPECT_EQ(static_cast<HFONT>(font)->face.em, 16);
    EXPECT_FALSE(DeleteObject(GetStockObject(DEFAULT_GUI_FONT)));
    EXPECT_FALSE(DeleteObject(nullptr));
    EXPECT_EQ(GetStockObject(99), nullptr);
    EXPECT_EQ(LoadIconW(nullptr, MAKEINTRESOURCEW(1)), nullptr);
    ICONINFO info;
    EXPECT_FALSE(GetIconInfo(nullptr, &info));
    ASSERT_TRUE(GetIconInfo(LoadIconW(nullptr, MAKEINTRESOURCEW(IDI_WARNING)), &info));
    EXPECT_EQ(info.xHotspot, 16u);
}

TEST(Painting, ThePictureHoldsWhatWasPaintedAndEscapesTexts) {
    ScriptedPort port;
    const ScopedPort use(port);
    Painting painting;
    painting.size = {100, 50};
    HostDeviceContext context;
    context.painting = &painting;
    context.clip = {0, 0, 100, 50};
    const RECT rect{1, 2, 11, 12};
    FillRect(&context, &rect, GetSysColorBrush(COLOR_HIGHLIGHT));
    FillRect(&context, &rect, static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)));
    const std::wstring text = L"a<b> & \"\x1é";
    TextOutW(&context, 5, 5, text.c_str(), static_cast<int>(text.size()));
    DrawIcon(&context, 90, 40, LoadIconW(nullptr, MAKEINTRESOURCEW(IDI_ERROR)));
    const std::string svg = paintingAsSvg(painting);
    EXPECT_NE(svg.find("viewBox=\"0 0 100 50\""), std::string::npos);
    EXPECT_NE(svg.find("fill=\"#3366cc\""), std::string::npos);
    EXPECT_NE(svg.find(">a&lt;b&gt; &amp; &quot;\xEF\xBF\xBD\xC3\xA9</text>"), std::string::npos) << svg;
    EXPECT_NE(svg.find("clip-path=\"url(#c1)\""), std::string::npos) << "the icon reaches over the edge";
    EXPECT_EQ(painting.items.size(), 4u) << "nothing is painted with an empty brush";
}

} // namespace
