#include "angletext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <string>

namespace {

using hostkit::AngleForm;
using hostkit::AngleSpelling;
using hostkit::angleText;
using hostkit::AngleUnit;
using hostkit::readAngle;

constexpr double kDegree = std::numbers::pi / 180.0;

std::string narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

TEST(AngleText, Forms) {
    using enum AngleUnit;
    using enum AngleSpelling;
    const struct {
        double degrees;
        AngleUnit unit;
        int places;
        AngleSpelling spelling;
        const wchar_t* text;
    } cases[] = {{45.0, degrees, 0, drawn, L"45\u00B0"},
                 {45.5, degrees, 0, drawn, L"46\u00B0"},
                 {45.25, degrees, 4, shown, L"45.2500"},
                 {-45.25, degrees, 1, shown, L"-45.3"},
                 {45.0, degreesMinutesSeconds, 0, drawn, L"45\u00B0"},
                 {45.504, degreesMinutesSeconds, 1, drawn, L"45\u00B030'"},
                 {45.504, degreesMinutesSeconds, 4, drawn, L"45\u00B030'14\""},
                 {45.504, degreesMinutesSeconds, 5, shown, L"45d30'14.4\""},
                 {59.9999, degreesMinutesSeconds, 3, shown, L"60d0'0\""},
                 {-0.0001, degreesMinutesSeconds, 2, shown, L"0d0'"},
                 {-1.5, degreesMinutesSeconds, 2, shown, L"-1d30'"},
                 {45.0, gradians, 1, drawn, L"50.0g"},
                 {180.0, radians, 4, drawn, L"3.1416r"},
                 {45.0, bearing, 0, shown, L"N 45d E"},
                 {120.5, bearing, 2, typed, L"N30d30'W"},
                 {200.0, bearing, 0, shown, L"S 70d W"},
                 {-30.0, bearing, 3, shown, L"S 60d0'0\" E"},
                 {359.9999, bearing, 0, shown, L"E"},
                 {0.0, bearing, 3, shown, L"E"},
                 {90.0, bearing, 3, shown, L"N"},
                 {180.0, bearing, 3, shown, L"W"},
                 {630.0, bearing, 3, shown, L"S"}};
    for (const auto& c : cases)
        EXPECT_EQ(narrow(angleText(c.degrees * kDegree, {c.unit, c.places, false, false, L'.', c.spelling})),
                  narrow(c.text));
    EXPECT_EQ(angleText(0.5 * kDegree, {degrees, 2, true, true, L','}), L",5");
    EXPECT_EQ(angleText(45.5025 * kDegree, {degreesMinutesSeconds, 6, true, true, L'.'}), L"45d30'9\"");
}

TEST(AngleText, ReadsBackToTheNearestShownAngle) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> angle(-7.0, 7.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = angle(random);
        const AngleForm form{.unit = static_cast<AngleUnit>(i % 5),
                             .places = static_cast<int>(random() % 9),
                             .dropsLeadingZero = random() % 2 == 0,
                             .dropsTrailingZeros = random() % 2 == 0,
                             .spelling = static_cast<AngleSpelling>(random() % 3)};
        const bool isParts = form.unit == AngleUnit::degreesMinutesSeconds || form.unit == AngleUnit::bearing;
        const double part = form.places == 0 ? 1.0 : form.places <= 2 ? 1.0 / 60 : 1.0 / 3600;
        const double scale[] = {kDegree, kDegree, std::numbers::pi / 200.0, 1.0, kDegree};
        const double unit =
            (isParts ? part * std::pow(10.0, -std::max(0, form.places - 4)) : std::pow(10.0, -form.places)) *
            scale[i % 5];
        const std::wstring text = angleText(value, form);
        double back = std::nan("");
        ASSERT_TRUE(readAngle(text, form.unit, back)) << narrow(text);
        const double off = form.unit == AngleUnit::bearing
                               ? std::remainder(back - value, 2.0 * std::numbers::pi)
                               : back - value;
        EXPECT_LE(std::abs(off), unit * (0.5 + 1e-6) + 1e-14) << narrow(text);
        EXPECT_EQ(text.find(L"d60"), text.npos);
        EXPECT_EQ(text.find(L"'60"), text.npos);
    }
}

TEST(AngleText, OnlyAnglesAreRead) {
    using enum AngleUnit;
    const struct {
        const wchar_t* text;
        AngleUnit unit;
        double degrees;
    } good[] = {{L"90", degrees, 90},          {L"100", gradians, 90},       {L" 100g ", degrees, 90},
                {L"2R", degrees, 2 / kDegree}, {L"45D30'", radians, 45.5},   {L"30'", degrees, 0.5},
                {L"1d36\"", degrees, 1.01},    {L"-45\u00B0", degrees, -45}, {L"n 45d e", degrees, 45},
                {L"S30W", bearing, 240},       {L"w", degrees, 180},         {L"N90dE", bearing, 0}};
    for (const auto& [text, unit, degreesRead] : good) {
        double read = 99.0;
        EXPECT_TRUE(readAngle(text, unit, read)) << narrow(text);
        EXPECT_NEAR(read, degreesRead * kDegree, 1e-12) << narrow(text);
    }
    for (const wchar_t* text : {L"", L" ", L"d", L"x", L"45x", L"45d30\"10'", L"45'30d", L"--4", L"N91dE",
                                L"N45d", L"45dE", L"gg", L"1g2", L"inf", L"N-4dE", L"45d-30'", L"5d5d"}) {
        double read = 99.0;
        EXPECT_FALSE(readAngle(text, degrees, read)) << narrow(text);
        EXPECT_EQ(read, 99.0);
    }
}

TEST(AngleText, HugeAnglesAndNoNumbers) {
    for (int unit = 0; unit < 5; ++unit)
        for (const int places : {-3, 0, 3, 99}) {
            const AngleForm form{.unit = static_cast<AngleUnit>(unit), .places = places};
            EXPECT_EQ(angleText(std::nan(""), form), L"");
            EXPECT_NE(angleText(1e300, form), L"");
        }
}

} // namespace
