#include "dimensiontext.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace {

using hostkit::DimensionVariables;
using hostkit::MeasureKind;

std::wstring textOf(const DimensionVariables& variables, double measure, std::wstring_view userText = L"",
                    MeasureKind kind = MeasureKind::length, bool isInPaper = false) {
    return dimensionText(variables, kind, measure, userText, isInPaper);
}

/// Two decimals and no head, so that the texts are short.
DimensionVariables plain() {
    DimensionVariables variables;
    variables.dimdec = variables.dimtdec = variables.dimaltd = variables.dimalttd = 2;
    variables.dimtolj = 0;
    return variables;
}

template <class Change>
DimensionVariables with(Change change) {
    DimensionVariables variables = plain();
    change(variables);
    return variables;
}

TEST(DimensionText, TextsOfSavedDimensions) {
    DimensionVariables imperial;
    EXPECT_EQ(textOf(imperial, 5.5105235), L"\\A1;5.5105");
    DimensionVariables metric;
    metric.dimtolj = 0;
    metric.dimdec = 2;
    metric.dimzin = 8;
    metric.dimdsep = L',';
    EXPECT_EQ(textOf(metric, 46.7164), L"46,72");
    EXPECT_EQ(textOf(metric, 317.88), L"317,88");
    EXPECT_EQ(textOf(metric, std::numbers::pi / 4, L"", MeasureKind::angle), L"45\u00B0");
    DimensionVariables feet = imperial;
    feet.dimlunit = 4;
    feet.dimzin = 3;
    feet.dimfrac = 2;
    EXPECT_EQ(textOf(feet, 37.0), L"\\A1;3'-1\"");
    EXPECT_EQ(textOf(feet, 696.0), L"\\A1;58'-0\"");
    EXPECT_EQ(textOf(feet, 96.75), L"\\A1;8'-0 3/4\"");
    feet.dimfrac = 0;
    feet.dimtfac = 0.75;
    EXPECT_EQ(textOf(feet, 82.5), L"\\A1;6'-10{\\H0.75x;\\S1/2;}\"");
    DimensionVariables fractions = imperial;
    fractions.dimlunit = 5;
    fractions.dimfrac = 1;
    fractions.dimpost = L"\"";
    EXPECT_EQ(textOf(fractions, 2.5), L"\\A1;2{\\H1x;\\S1#2;}\"");
    EXPECT_EQ(textOf(fractions, 2.5, L"<> typ."), L"\\A1;2{\\H1x;\\S1#2;}\" typ.");
}

TEST(DimensionText, FactorRoundingPrefixSuffix) {
    struct Case {
        DimensionVariables variables;
        MeasureKind kind;
        const wchar_t* text;
    };
    using enum MeasureKind;
    const auto post = [](const wchar_t* text) { return with([&](auto& v) { v.dimpost = text; }); };
    const Case cases[] = {
        {plain(), length, L"10.00"},
        {plain(), radius, L"R10.00"},
        {plain(), diameter, L"\u220510.00"},
        {post(L"."), radius, L"R10.00"},
        {post(L" m"), radius, L"R10.00 m"},
        {post(L"<>"), radius, L"10.00"},
        {post(L"r=<> m<>"), diameter, L"r=10.00 m<>"},
        {post(L"%%c<>\\Xmm"), length, L"%%c10.00\\Xmm"},
        {with([](auto& v) { v.dimlfac = 2.5; }), length, L"25.00"},
        {with([](auto& v) { v.dimlfac = -2.5; }), length, L"10.00"},
        {with([](auto& v) { v.dimlfac = 0.0; }), length, L"10.00"},
        {with([](auto& v) { v.dimrnd = 3.0; }), length, L"9.00"},
        {with([](auto& v) { v.dimrnd = 4.0, v.dimlfac = 1.4; }), length, L"16.00"},
        {with([](auto& v) { v.dimlunit = 99; }), length, L"10.00"},
        {with([](auto& v) { v.dimdec = 77; }), length, L"10.00000000"},
        {with([](auto& v) { v.dimtolj = 2; }), length, L"\\A2;10.00"},
    };
    for (const Case& c : cases) EXPECT_EQ(textOf(c.variables, 10.0, L"", c.kind), c.text);
    const DimensionVariables onSheets = with([](auto& v) { v.dimlfac = -2.5; });
    EXPECT_EQ(textOf(onSheets, 10.0, L"", length, true), L"25.00");
}

TEST(DimensionText, Angles) {
    const auto angle = [](auto change) {
        return textOf(with(change), 45.504 / 180.0 * std::numbers::pi, L"", MeasureKind::angle);
    };
    EXPECT_EQ(angle([](auto& v) { v.dimlfac = 7.0, v.dimrnd = 4.0; }), L"46\u00B0");
    EXPECT_EQ(angle([](auto& v) { v.dimadec = -1; }), L"45.50\u00B0");
    EXPECT_EQ(angle([](auto& v) { v.dimadec = 2, v.dimazin = 2, v.dimdsep = L','; }), L"45,5\u00B0");
    EXPECT_EQ(angle([](auto& v) { v.dimadec = 3, v.dimaunit = 1; }), L"45\u00B030'14\"");
    EXPECT_EQ(angle([](auto& v) { v.dimadec = 1, v.dimaunit = 2; }), L"50.6g");
    EXPECT_EQ(angle([](auto& v) { v.dimadec = 3, v.dimaunit = 3, v.dimazin = 1; }), L".794r");
    EXPECT_EQ(angle([](auto& v) { v.dimpost = L" x"; }), L"46\u00B0");
    EXPECT_EQ(angle([](auto& v) { v.dimpost = L"(<>)"; }), L"(46\u00B0)");
    EXPECT_EQ(angle([](auto& v) { v.dimalt = true; }), L"46\u00B0");
    EXPECT_EQ(angle([](auto& v) { v.dimtol = true, v.dimtp = v.dimtm = 0.5, v.dimtzin = 12; }),
              L"46\u00B0\u00B1.5\u00B0");
}

TEST(DimensionText, TolerancesAndLimits) {
    const auto text = [](double measure, double upper, double lower, auto change) {
        return textOf(with([&](auto& v) {
                          v.dimtol = true, v.dimtp = upper, v.dimtm = lower;
                          change(v);
                      }),
                      measure);
    };
    const auto nothing = [](auto&) {};
    EXPECT_EQ(text(10, 0.05, 0.05, nothing), L"10.00\u00B10.05");
    EXPECT_EQ(text(10, 0, 0, nothing), L"10.00\u00B10.00");
    EXPECT_EQ(text(101, 0.02, 0.03, [](auto& v) { v.dimtfac = 0.7; }), L"101.00{\\H0.7x;\\S+0.02^-0.03;}");
    EXPECT_EQ(text(101, 0.1, 0, [](auto& v) { v.dimtzin = 8; }), L"101.00{\\H1x;\\S+0.1^ 0;}");
    EXPECT_EQ(text(101, -0.1, -0.2, nothing), L"101.00{\\H1x;\\S-0.10^+0.20;}");
    EXPECT_EQ(text(10, 0.5, 0.25, [](auto& v) { v.dimlunit = 5, v.dimdec = 2; }),
              L"10{\\H1x;\\S+1\\/2^-1\\/4;}");
    EXPECT_EQ(text(10, 0.2, 0.1, [](auto& v) { v.dimpost = L"a<>b"; }), L"a10.00{\\H1x;\\S+0.20^-0.10;}b");
    const auto limits = [](auto& v) { v.dimlim = true, v.dimtzin = 8, v.dimtdec = 3, v.dimlfac = 2.0; };
    EXPECT_EQ(text(5, 0.2, 0.1, limits), L"{\\H1x;\\S10.2^9.9;}");
    EXPECT_EQ(text(6.97, 0.01, 0.014, limits), L"{\\H1x;\\S13.950^13.926;}");
    EXPECT_EQ(text(5, 1, 1, limits), L"{\\H1x;\\S11^9;}");
}

TEST(DimensionText, AlternateUnitsAndUserTexts) {
    const auto metric = [](DimensionVariables& v) { v.dimalt = true, v.dimapost = L"mm", v.dimpost = L"\""; };
    EXPECT_EQ(textOf(with(metric), 10.0), L"10.00\"[254.00mm]");
    EXPECT_EQ(textOf(with(metric), 10.0, L"x <> y"), L"x 10.00\"[254.00mm] y");
    EXPECT_EQ(textOf(with(metric), 10.0, L"<> or []"), L"10.00\" or [254.00mm]");
    EXPECT_EQ(textOf(plain(), 10.0, L"<>/[]/<>"), L"10.00/[254.00]/10.00");
    EXPECT_EQ(textOf(plain(), 10.0, L"a<b[c>"), L"a<b[c>");
    EXPECT_EQ(textOf(DimensionVariables(), 10.0, L"as built"), L"\\A1;as built");
    EXPECT_EQ(textOf(DimensionVariables(), 10.0, L" "), L"");
    EXPECT_EQ(textOf(DimensionVariables(), 10.0, L"  "), L"\\A1;  ");
    const auto alternate = [&](auto change) {
        const std::wstring text = textOf(with([&](auto& v) {
                                             v.dimalt = true, v.dimaltf = 1.0;
                                             change(v);
                                         }),
                                         15.5);
        return text.substr(text.find(L'['));
    };
    EXPECT_EQ(alternate([](auto& v) { v.dimaltu = 4; }), L"[1'-3{\\H1x;\\S1/2;}\"]");
    EXPECT_EQ(alternate([](auto& v) { v.dimaltu = 6; }), L"[1'-3 1/2\"]");
    EXPECT_EQ(alternate([](auto& v) { v.dimaltu = 7; }), L"[15 1/2]");
    EXPECT_EQ(alternate([](auto& v) { v.dimaltu = 1; }), L"[1.55E+01]");
    EXPECT_EQ(alternate([](auto& v) { v.dimaltrnd = 4.0, v.dimaltz = 8; }), L"[16]");
    EXPECT_EQ(alternate([](auto& v) { v.dimtol = true, v.dimtp = v.dimtm = 0.1, v.dimaltf = 2.0; }),
              L"[31.00\u00B10.20]");
}

TEST(DimensionText, BadInputGivesATextOrNone) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double none : {infinity, -infinity, std::nan("")}) EXPECT_EQ(textOf(plain(), none, L"x"), L"");
    EXPECT_EQ(textOf(with([](auto& v) { v.dimlfac = 1e300; }), 1e300), L"");
    EXPECT_EQ(textOf(with([](auto& v) { v.dimrnd = 5e-324; }), 2.5), L"2.50");
    EXPECT_EQ(textOf(with([](auto& v) { v.dimtol = true, v.dimtp = std::nan(""); }), 2.5), L"2.50");
    EXPECT_EQ(textOf(with([](auto& v) { v.dimalt = true, v.dimaltf = 1e300; }), 1e30), textOf(plain(), 1e30));
    const std::wstring braces(10000, L'{');
    EXPECT_EQ(textOf(with([&](auto& v) { v.dimpost = braces; }), 1.0), L"1.00" + braces);
    std::wstring greedy;
    for (int i = 0; i < 100000; ++i) greedy += L"<>";
    EXPECT_EQ(textOf(with([&](auto& v) { v.dimpost = braces; }), 1.0, greedy).size(), std::size_t(1) << 20);
}

} // namespace
