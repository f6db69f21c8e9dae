// Conversion of numbers at three sizes each, the text of a dimension in drawings of 10, 1,000 and 100,000
// objects, and paragraphs of 10, 100 and 1,000 words. Wanted: tens of nanoseconds for the numbers, 20 us for
// the text of a dimension, whatever the drawing's size.
#include "vexoconversiontools.h"

#include "dbapserv.h"
#include "dbline.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dimensiontext.h"
#include "paragraphlayout.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <string>

namespace {

using Tools = VEXOConversionTools;

/// Whole digits, a point and as many decimals.
void stringToDouble(benchmark::State& state) {
    const auto digits = static_cast<std::size_t>(state.range(0));
    std::wstring text = std::wstring(digits, L'7') + L'.' + std::wstring(digits, L'3');
    for (auto _ : state) benchmark::DoNotOptimize(Tools::StringToDouble(text.data()));
}

void doubleToInt(benchmark::State& state) {
    double value = static_cast<double>(state.range(0)) - 1e-11;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(Tools::DoubleToInt(value));
    }
}

/// Within 10 to the power of minus so many.
void double2Fraction(benchmark::State& state) {
    const double tolerance = std::pow(10.0, -static_cast<double>(state.range(0)));
    double value = std::numbers::pi;
    __int64 whole = 0, numerator = 0, denominator = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(Tools::Double2Fraction(value, whole, numerator, denominator, tolerance));
    }
}

void getUnitsConversion(benchmark::State& state) {
    auto to = static_cast<AcDb::UnitsValue>(state.range(0));
    double factor = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(to);
        benchmark::DoNotOptimize(Tools::getUnitsConversion(AcDb::kUnitsMeters, to, factor));
    }
}

class Drawing {
public:
    explicit Drawing(std::int64_t lines)
        : m_scope(m_services) {
        m_services.setWorkingDatabase(&m_database);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(m_database.modelSpaceId(), AcDb::kForWrite);
        for (std::int64_t i = 0; i < lines; ++i) {
            auto* const line = new AcDbLine({0, 0, 0}, {1, 1, 0});
            space->appendAcDbEntity(line);
            line->close();
        }
    }
    AcDbObjectId style() const { return m_database.dimStyleStandard(); }

private:
    AcDbHostApplicationServices m_services;
    hostkit::ScopedDatabaseServices m_scope;
    AcDbDatabase m_database;
};

void plainDimensionText(benchmark::State& state) {
    const Drawing drawing(state.range(0));
    CString text;
    for (auto _ : state) {
        if (Tools::getFormatedDimText(1.255, drawing.style(), text) != Acad::eOk || text.IsEmpty())
            return state.SkipWithError("no text");
    }
}

void longDimensionText(benchmark::State& state) {
    const Drawing drawing(state.range(0));
    CString text, prefix;
    for (auto _ : state) {
        if (Tools::getFormatedDimText(1.255, drawing.style(), 1.0, 0.0, false, 0, false, true, text, true,
                                      prefix, true) != Acad::eOk)
            return state.SkipWithError("no text");
    }
}

/// Decimal, architectural, with limits.
void dimensionTextAlone(benchmark::State& state) {
    hostkit::DimensionVariables variables;
    if (state.range(0) > 0) variables.dimlunit = 4;
    variables.dimlim = state.range(0) > 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            hostkit::dimensionText(variables, hostkit::MeasureKind::length, 1.255, L"", false));
}

std::wstring wordsOf(std::int64_t count) {
    std::wstring words;
    for (std::int64_t i = 0; i < count; ++i) words += i % 8 == 7 ? L"{\\H0.7x;\\S1/2;} " : L"words ";
    return words;
}

void paragraphInk(benchmark::State& state) {
    const std::wstring words = wordsOf(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(hostkit::paragraphInk(words, 2.5, AcDbObjectId()));
}

void brokenParagraph(benchmark::State& state) {
    const std::wstring words = wordsOf(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(hostkit::laidOut(words, {.height = 2.5, .width = 100.0}));
}

void inkOfOneNumber(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(hostkit::paragraphInk(L"\\A1;1.255", 2.5, AcDbObjectId()));
}

BENCHMARK(stringToDouble)->Arg(2)->Arg(6)->Arg(15);
BENCHMARK(doubleToInt)->Arg(3)->Arg(1000)->Arg(1000000000);
BENCHMARK(double2Fraction)->Arg(2)->Arg(4)->Arg(8);
BENCHMARK(getUnitsConversion)->Arg(1)->Arg(4)->Arg(20);
BENCHMARK(plainDimensionText)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(longDimensionText)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(dimensionTextAlone)->Arg(0)->Arg(1)->Arg(2);
BENCHMARK(inkOfOneNumber);
BENCHMARK(paragraphInk)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(brokenParagraph)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace
