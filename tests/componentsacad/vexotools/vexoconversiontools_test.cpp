#include "vexoconversiontools.h"

#include "drawingparts.h"
#include "hosttest.h"

#include "dbapserv.h"
#include "headervariables.h"
#include "textencoding.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <random>

namespace {

using Tools = VEXOConversionTools;
using drawingtest::addRecord;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class ConversionTools : public hostkit::HostTest {};

AcDb::UnitsValue unit(int code) { return static_cast<AcDb::UnitsValue>(code); }

TEST_F(ConversionTools, EveryFactorIsTheRatioOfMetresInSevenDigits) {
    const double metres[] = {0.0254,  0.3048,  1609.344, 0.001,    0.01,      1.0,        1000.0,
                             2.54e-8, 2.54e-5, 0.9144,   1e-10,    1e-9,      1e-6,       0.1,
                             10.0,    100.0,   1e9,      1.496e11, 9.4605e15, 3.084123e16};
    for (int from = 1; from <= 20; ++from)
        for (int to = 1; to <= 20; ++to) {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%.7g", metres[from - 1] / metres[to - 1]);
            double factor = -1.0;
            ASSERT_TRUE(Tools::getUnitsConversion(unit(from), unit(to), factor));
            EXPECT_EQ(factor, std::strtod(digits, nullptr)) << from << " to " << to;
        }
    double factor = 7.0;
    for (const int none : {-1, 0, 21, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(Tools::getUnitsConversion(unit(none), AcDb::kUnitsMeters, factor));
        EXPECT_FALSE(Tools::getUnitsConversion(AcDb::kUnitsMeters, unit(none), factor));
    }
    EXPECT_EQ(factor, 7.0);
    EXPECT_TRUE(Tools::getUnitsConversion(AcDb::kUnitsInches, AcDb::kUnitsAstronomical, factor));
    EXPECT_EQ(factor, 1.697861e-13);
}

TEST_F(ConversionTools, NumbersOfKeyFiles) {
    const std::pair<const wchar_t*, double> cases[] = {
        {L"", 0.0},    {L"12.5", 12.5}, {L"12,5", 12.5}, {L"1.2.3", 0.0}, {L"-5", 0.5},
        {L"1e5", 1.5}, {L"7", 7.0},     {L".25", 0.25},  {L"3.", 3.0},    {L"x", 0.0},
        {L" 4", 0.4},  {L"--", 0.0},    {L"0", 0.0},     {L"1 000", 1.0}, {L"-1.5", 0.0}};
    for (const auto& [text, number] : cases) {
        std::wstring buffer = text;
        EXPECT_DOUBLE_EQ(Tools::StringToDouble(buffer.data()), number) << drawingtest::narrow(text);
        EXPECT_DOUBLE_EQ(Tools::StringToDouble(CString(text)), number) << drawingtest::narrow(text);
    }
    EXPECT_EQ(Tools::StringToDouble(static_cast<wchar_t*>(nullptr)), 0.0);
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        const double number = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 40) - 40);
        char digits[64];
        std::snprintf(digits, sizeof digits, "%.9f", number);
        EXPECT_NEAR(Tools::StringToDouble(CString(digits)), std::strtod(digits, nullptr),
                    number * 1e-14 + 1e-16);
    }
    EXPECT_EQ(Tools::StringToDouble(CString(L'9', 400)), kInfinity);
    EXPECT_EQ(Tools::StringToDouble(CString(L'0', 100000) + L"7"), 7.0);
    EXPECT_EQ(Tools::StringToDouble(L"." + CString(L'0', 10000) + L"7"), 0.0);
}

TEST_F(ConversionTools, OnlyWhatIsNearlyWholeIsRounded) {
    const std::pair<double, int> cases[] = {{2.99999999999, 3},
                                            {2.5, 2},
                                            {-2.99999999999, -3},
                                            {-2.5, -2},
                                            {2.9999999, 2},
                                            {3.00000000001, 3},
                                            {-1e-11, 0},
                                            {-3.00000000001, -3},
                                            {0.9999999996, 0},
                                            {0.99999999975, 1},
                                            {2147483647.0, 2147483647},
                                            {2147483647.75, 2147483647},
                                            {2147483648.0, 0},
                                            {-2147483648.5, std::numeric_limits<int>::min()},
                                            {-2147483649.0, 0},
                                            {1e300, 0},
                                            {kInfinity, 0},
                                            {-kInfinity, 0},
                                            {std::nan(""), 0}};
    for (const auto& [value, whole] : cases) EXPECT_EQ(Tools::DoubleToInt(value), whole) << value;
}

TEST_F(ConversionTools, TheScaleOfImperialAndMetricDrawings) {
    for (const auto& [measurement, factor] : {std::pair(0, 48.0), {1, 50.0}}) {
        database().header().setInteger(L"MEASUREMENT", measurement);
        EXPECT_EQ(Tools::DwgScale2DisplayValue(1.5, false), 1.5 * factor);
        EXPECT_EQ(Tools::DwgScale2DisplayValue(factor, true), 1.0);
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(Tools::DwgScale2DisplayValue(1.5, false), 1.5);
}

struct Parts {
    __int64 whole = 77, numerator = 77, denominator = 77;
    double error;

    Parts(double value, double tolerance)
        : error(Tools::Double2Fraction(value, whole, numerator, denominator, tolerance)) {}
    bool operator==(const std::array<__int64, 3>& parts) const {
        return parts == std::array{whole, numerator, denominator};
    }
};

TEST_F(ConversionTools, FractionsOfKnownValues) {
    EXPECT_TRUE(Parts(2.5, 1e-6) == (std::array<__int64, 3>{2, 1, 2}));
    EXPECT_TRUE(Parts(-2.5, 1e-6) == (std::array<__int64, 3>{-3, 1, 2}));
    EXPECT_TRUE(Parts(3.0000001, 1e-6) == (std::array<__int64, 3>{3, 0, 1}));
    EXPECT_TRUE(Parts(2.9999999, 1e-6) == (std::array<__int64, 3>{3, 0, 1}));
    EXPECT_TRUE(Parts(std::numbers::pi, 1e-2) == (std::array<__int64, 3>{3, 1, 7}));
    EXPECT_EQ(Parts(4.0, 1e-6).error, 0.0);
    for (const double none : {std::nan(""), kInfinity, -kInfinity, 1e19})
        EXPECT_TRUE(Parts(none, 1e-6) == (std::array<__int64, 3>{0, 0, 1})) << none;
}

TEST_F(ConversionTools, FractionsAreAsNearAsAskedFor) {
    std::mt19937 random(9);
    std::uniform_real_distribution<double> anyValue(-1000.0, 1000.0), exponent(-9.0, -1.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = i % 2 ? anyValue(random)
                                   : static_cast<double>(static_cast<int>(random() % 2001) - 1000) /
                                         static_cast<double>(1 + random() % 99);
        const double tolerance = std::pow(10.0, exponent(random));
        const Parts parts(value, tolerance);
        ASSERT_GT(parts.denominator, 0) << value;
        ASSERT_GE(parts.numerator, 0) << value;
        EXPECT_LE(parts.numerator, parts.denominator);
        const double found = static_cast<double>(parts.whole) +
                             static_cast<double>(parts.numerator) / static_cast<double>(parts.denominator);
        // What is left out as whole is within the tolerance, and so is the search's own end, up to the slack.
        EXPECT_LE(std::abs(found - value), 2.0 * tolerance + parts.error + 1e-9) << value;
    }
}

TEST_F(ConversionTools, FractionsWithToleranceThatIsNoneEnd) {
    for (const double tolerance : {0.0, -1.0, std::nan(""), 5e-324, 0.5, 3.0, 1e300, kInfinity})
        for (const double value : {0.5, 1.0 / 3.0, std::numbers::pi, -0.1, 1e-300, 12345678.9, 1e15 + 0.3}) {
            const Parts parts(value, tolerance);
            EXPECT_GE(parts.denominator, 0);
            EXPECT_FALSE(std::isnan(parts.error)) << value << " by " << tolerance;
        }
}

TEST_F(ConversionTools, RecordsByName) {
    const AcDbObjectId dashes = addRecord<AcDbLinetypeTable>(database(), L"Dashes");
    const AcDbObjectId text = addRecord<AcDbTextStyleTable>(database(), L"Notes");
    const AcDbObjectId dimension = addRecord<AcDbDimStyleTable>(database(), L"Scale 50");
    EXPECT_EQ(Tools::GetLineTypeId(L"dashes"), dashes);
    EXPECT_EQ(Tools::GetLineTypeName(dashes), CString(L"Dashes"));
    EXPECT_EQ(Tools::GetTextStyleId(L"Notes"), text);
    EXPECT_EQ(Tools::GetDimStyleId(L"Scale 50"), dimension);
    for (const wchar_t* none : {L"", L"notes", L"scale 50", L"Note"}) {
        EXPECT_TRUE(Tools::GetTextStyleId(none).isNull());
        EXPECT_TRUE(Tools::GetDimStyleId(none).isNull());
        EXPECT_TRUE(Tools::GetLineTypeId(none).isNull());
    }
    EXPECT_TRUE(Tools::GetLineTypeName(AcDbObjectId()).IsEmpty());
    EXPECT_TRUE(Tools::GetLineTypeName(text).IsEmpty());
    AcDbLinetypeTableRecord* open = nullptr;
    ASSERT_EQ(acdbOpenObject(open, dashes, AcDb::kForWrite), Acad::eOk);
    EXPECT_TRUE(Tools::GetLineTypeName(dashes).IsEmpty());
    open->close();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_TRUE(Tools::GetTextStyleId(L"Notes").isNull());
    EXPECT_EQ(Tools::GetLineTypeId(L"Dashes"), dashes) << "of the document";
}

TEST_F(ConversionTools, TextsOfTheCodePageComeBack) {
    std::wstring all;
    for (int byte = 1; byte < 256; ++byte) all += hostkit::wideFromAnsi(static_cast<unsigned char>(byte));
    const CString bytes = Tools::StringUnicodeToAnsi(CString(all));
    ASSERT_EQ(bytes.GetLength(), 255);
    for (int byte = 1; byte < 256; ++byte) EXPECT_EQ(bytes[byte - 1], static_cast<wchar_t>(byte));
    EXPECT_EQ(Tools::StringAnsiToUnicode(bytes), CString(all));
    EXPECT_EQ(Tools::StringAnsiToUnicode(CString(all)), CString(all)) << "what was wide already";
    EXPECT_EQ(Tools::StringUnicodeToAnsi(L"\u0141\u20AC"), CString(L"?\x80"));
    EXPECT_TRUE(Tools::StringUnicodeToAnsi(CString()).IsEmpty());
    EXPECT_TRUE(Tools::StringAnsiToUnicode(CString()).IsEmpty());
}

} // namespace
