#include "lengthtext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace {

using hostkit::FractionForm;
using hostkit::LengthForm;
using hostkit::lengthText;
using hostkit::LengthUnit;
using hostkit::readLength;
using Wide = __int128;

std::string narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

std::wstring written(double value, LengthUnit unit, int places, int zeros = 0) {
    return lengthText(value, {.unit = unit, .places = places, .zeros = zeros});
}

// The number of last places in a decimal text.
long long countOf(std::wstring text) {
    std::erase(text, L'.');
    return std::stoll(text);
}

TEST(LengthText, DecimalsRoundAsExactNumbersDo) {
    std::mt19937 random(7);
    std::uniform_int_distribution<long long> count(0, 999999999);
    std::uniform_int_distribution<int> anyPlaces(0, 8), wobble(-3, 3);
    int halves = 0;
    for (int i = 0; i < 20000; ++i) {
        const int places = anyPlaces(random);
        const double unit = std::pow(10.0, -places);
        double value = (static_cast<double>(count(random)) + (i % 2 ? 0.5 : 0.25)) * unit;
        for (int step = wobble(random); step != 0; step -= step > 0 ? 1 : -1)
            value = std::nextafter(value, step > 0 ? 1e300 : 0.0);
        // value * 10^places as a whole number of 2^-shift, exactly.
        int exponent = 0;
        const auto mantissa = static_cast<Wide>(std::ldexp(std::frexp(value, &exponent), 53));
        const int shift = 53 - exponent;
        if (shift < 1 || shift > 90) continue;
        Wide scaled = mantissa;
        for (int k = 0; k < places; ++k) scaled *= 10;
        const Wide one = static_cast<Wide>(1) << shift;
        const Wide rest = scaled % one;
        const auto below = static_cast<long long>(scaled / one);
        const double missing = 0.5 - static_cast<double>(rest) / static_cast<double>(one);
        const long long found = countOf(written(value, LengthUnit::decimal, places));
        const double step = (std::nextafter(value, 1e300) - value) / unit;
        const double lenient = std::max(1e-9, 2.0 * step);
        if (missing <= lenient * 0.99) {
            EXPECT_EQ(found, below + 1) << value;
            ++halves;
        } else if (missing > lenient * 1.01) {
            EXPECT_EQ(found, below) << value;
        }
    }
    EXPECT_GT(halves, 5000);
}

struct Case {
    double value;
    LengthUnit unit;
    int places;
    int zeros;
    const wchar_t* text;
};

void check(const Case& c) {
    EXPECT_EQ(narrow(written(c.value, c.unit, c.places, c.zeros)), narrow(c.text))
        << c.value << " zeros " << c.zeros;
}

TEST(LengthText, DecimalAndScientificForms) {
    using enum LengthUnit;
    const Case cases[] = {{1.032499999999913, decimal, 3, 0, L"1.033"},
                          {0.5, decimal, 3, 4, L".500"},
                          {12.5, decimal, 3, 8, L"12.5"},
                          {30.0, decimal, 1, 8, L"30"},
                          {0.5, decimal, 4, 12, L".5"},
                          {0.0, decimal, 4, 12, L"0"},
                          {0.0, decimal, 2, 4, L".00"},
                          {-0.0049, decimal, 2, 0, L"0.00"},
                          {-0.5, decimal, 0, 0, L"-1"},
                          {-0.25, decimal, 2, 4, L"-.25"},
                          {100.0, decimal, 0, 8, L"100"},
                          {15.5, scientific, 4, 0, L"1.5500E+01"},
                          {-15.5, scientific, 4, 8, L"-1.55E+01"},
                          {9.99996, scientific, 4, 0, L"1.0000E+01"},
                          {0.0, scientific, 2, 0, L"0.00E+00"},
                          {2.5e-7, scientific, 0, 0, L"3E-07"},
                          {1e300, scientific, 1, 0, L"1.0E+300"},
                          {5e-324, scientific, 2, 0, L"4.94E-324"},
                          {1e22, decimal, 2, 0, L"10000000000000000000000.00"},
                          {9007199254740993.0, decimal, 0, 0, L"9007199254740992"},
                          {1234567.891, desktop, 2, 0, L"1,234,567.89"},
                          {-123.0, desktop, 2, 8, L"-123"}};
    for (const Case& each : cases) check(each);
    EXPECT_EQ(lengthText(46.7164, {.places = 2, .separator = L','}), L"46,72");
}

TEST(LengthText, FeetAndInchesByTheirZeros) {
    const struct {
        double inches;
        const wchar_t* texts[4];
    } rows[] = {{0.5, {L"1/2\"", L"0'-0 1/2\"", L"0'-0 1/2\"", L"1/2\""}},
                {6.0, {L"6\"", L"0'-6\"", L"0'-6\"", L"6\""}},
                {12.0, {L"1'", L"1'-0\"", L"1'", L"1'-0\""}},
                {12.75, {L"1'-0 3/4\"", L"1'-0 3/4\"", L"1'-0 3/4\"", L"1'-0 3/4\""}},
                {0.0, {L"0\"", L"0'-0\"", L"0'", L"0\""}},
                {-15.5, {L"-1'-3 1/2\"", L"-1'-3 1/2\"", L"-1'-3 1/2\"", L"-1'-3 1/2\""}},
                {11.984375, {L"1'", L"1'-0\"", L"1'", L"1'-0\""}}};
    for (const auto& row : rows)
        for (int zeros = 0; zeros < 4; ++zeros)
            check({row.inches, LengthUnit::architectural, 3, zeros, row.texts[zeros]});
    using enum LengthUnit;
    const Case others[] = {{15.5, engineering, 2, 0, L"1'-3.50\""}, {15.5, engineering, 2, 8, L"1'-3.5\""},
                           {0.5, engineering, 2, 4, L".50\""},      {11.996, engineering, 2, 1, L"1'-0.00\""},
                           {12.0, engineering, 2, 0, L"1'"},        {-0.001, engineering, 2, 0, L"0.00\""},
                           {2.5, fractional, 1, 0, L"2 1/2"},       {0.5, fractional, 4, 0, L"1/2"},
                           {-0.01, fractional, 4, 0, L"0"},         {0.99, fractional, 2, 0, L"1"},
                           {3.0 / 256, fractional, 9, 0, L"3/256"}};
    for (const Case& each : others) check(each);
    EXPECT_EQ(lengthText(15.5, {.unit = architectural, .isTyped = true}), L"1'3-1/2\"");
    EXPECT_EQ(lengthText(15.5, {.unit = fractional, .isTyped = true}), L"15-1/2");
}

TEST(LengthText, FractionsStack) {
    const double value = 48.3636; // 4'-0 1/4" and a bit
    LengthForm form{.unit = LengthUnit::architectural, .places = 2, .fraction = FractionForm::diagonal};
    EXPECT_EQ(lengthText(value, form), L"4'-0{\\H1x;\\S1#4;}\"");
    form = {
        .unit = LengthUnit::fractional, .places = 1, .fraction = FractionForm::stacked, .stackHeight = 0.75};
    EXPECT_EQ(lengthText(2.5, form), L"2{\\H0.75x;\\S1/2;}");
    EXPECT_EQ(lengthText(0.5, form), L"{\\H0.75x;\\S1/2;}");
}

TEST(LengthText, WhatIsWrittenReadsBackToTheNearestShownValue) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> exponent(-4.0, 9.0), mantissa(-1.0, 1.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(random) * std::pow(10.0, exponent(random));
        const LengthForm form{.unit = static_cast<LengthUnit>(1 + i % 5),
                              .places = static_cast<int>(random() % 9),
                              .zeros = static_cast<int>(random() % 16),
                              .isTyped = random() % 2 == 0};
        const bool isFraction = form.unit >= LengthUnit::architectural;
        double unit = isFraction ? std::ldexp(1.0, -form.places) : std::pow(10.0, -form.places);
        if (form.unit == LengthUnit::scientific)
            unit *= std::pow(10.0, std::floor(std::log10(std::abs(value))));
        const std::wstring text = lengthText(value, form);
        double back = std::nan("");
        ASSERT_TRUE(readLength(text, form.unit, back)) << narrow(text);
        EXPECT_LE(std::abs(back - value), unit * (0.5 + 1e-6) + std::abs(value) * 1e-15) << narrow(text);
        if (isFraction) {
            EXPECT_EQ(std::ldexp(back, form.places), std::round(std::ldexp(back, form.places)));
        }
        EXPECT_EQ(lengthText(back, form), text);
    }
}

TEST(LengthText, OnlyLengthsAreRead) {
    using enum LengthUnit;
    const struct {
        const wchar_t* text;
        LengthUnit unit;
        double value;
    } good[] = {
        {L" 12.5 ", decimal, 12.5},        {L"1e2", decimal, 100.0},      {L"1'3", architectural, 15.0},
        {L"1'-3-1/2\"", fractional, 15.5}, {L"1'3.5", engineering, 15.5}, {L"1.5'", architectural, 18.0},
        {L"-1/2\"", architectural, -0.5},  {L"+7 3/4", fractional, 7.75}, {L"6\"", engineering, 6.0},
        {L"1' 2\"", architectural, 14.0},  {L"1/2'", architectural, 6.0}};
    for (const auto& [text, unit, value] : good) {
        double read = -1.0;
        EXPECT_TRUE(readLength(text, unit, read)) << narrow(text);
        EXPECT_DOUBLE_EQ(read, value) << narrow(text);
    }
    const std::pair<const wchar_t*, LengthUnit> bad[] = {{L"", decimal},          {L"1'3\"", decimal},
                                                         {L"1/2", decimal},       {L"", architectural},
                                                         {L"'", architectural},   {L"\"", architectural},
                                                         {L"1'-", engineering},   {L"1/0", fractional},
                                                         {L"--1", architectural}, {L"1'2'3", architectural},
                                                         {L"1 2", fractional},    {L"1/2/3", fractional},
                                                         {L"-", fractional},      {L"nan", decimal},
                                                         {L"1e999", decimal},     {L"1e308'", architectural}};
    for (const auto& [text, unit] : bad) {
        double read = -1.0;
        EXPECT_FALSE(readLength(text, unit, read)) << narrow(text);
        EXPECT_EQ(read, -1.0);
    }
}

TEST(LengthText, HugeTinyAndNoNumbers) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (int unit = 1; unit <= 6; ++unit) {
        for (const double none : {infinity, -infinity, std::nan("")})
            EXPECT_EQ(written(none, static_cast<LengthUnit>(unit), 4), L"");
        for (const double value : {1e308, -1.2e308, 1e20, 5e-324})
            for (const int places : {-5, 0, 8, 99}) {
                const std::wstring text = written(value, static_cast<LengthUnit>(unit), places);
                double back = 0.0;
                if (unit != 6) {
                    EXPECT_TRUE(readLength(text, static_cast<LengthUnit>(unit), back)) << narrow(text);
                    EXPECT_NEAR(back / 1e308, value / 1e308, 1e-7 + (unit == 1 ? 0.5 : 0.0));
                }
            }
    }
}

} // namespace
