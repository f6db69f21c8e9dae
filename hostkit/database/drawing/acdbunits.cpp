#include "acdbunits.h"

#include "angletext.h"
#include "dbapserv.h"
#include "dbdatabase.h"
#include "headervariables.h"
#include "lengthtext.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace {

using hostkit::AngleUnit;
using hostkit::LengthUnit;

constexpr int kLargestPrecision = 8;
constexpr int kUsualPrecision = 4;
constexpr double kTurn = 2.0 * std::numbers::pi;

int drawingValue(const wchar_t* variable, int otherwise) {
    const AcDbDatabase* const database = hostkit::orWorkingDatabase(nullptr);
    return database ? static_cast<int>(database->header().integer(variable, otherwise)) : otherwise;
}

// What was asked for, or the drawing's own for -1; nothing where it is out of its range.
std::optional<int> chosen(int asked, const wchar_t* variable, int otherwise, int least, int most) {
    const int value = asked == -1 ? drawingValue(variable, otherwise) : asked;
    return value >= least && value <= most ? std::optional(value) : std::nullopt;
}

std::optional<LengthUnit> lengthUnit(int asked) {
    const auto unit =
        chosen(asked, L"LUNITS", static_cast<int>(LengthUnit::decimal),
               static_cast<int>(LengthUnit::scientific), static_cast<int>(LengthUnit::fractional));
    return unit ? std::optional(static_cast<LengthUnit>(*unit)) : std::nullopt;
}

std::optional<AngleUnit> angleUnit(int asked) {
    const auto unit = chosen(asked, L"AUNITS", static_cast<int>(AngleUnit::degrees), 0,
                             static_cast<int>(AngleUnit::bearing));
    return unit ? std::optional(static_cast<AngleUnit>(*unit)) : std::nullopt;
}

bool isTyped() { return drawingValue(L"UNITMODE", 0) == 1; }

int handOut(const std::wstring& text, wchar_t* buffer) {
    if (!buffer || text.empty() || text.size() >= hostkit::kNumberTextRoom) return RTERROR;
    std::copy_n(text.c_str(), text.size() + 1, buffer);
    return RTNORM;
}

struct AngleBase {
    double start = 0.0;
    double sense = 1.0;

    explicit AngleBase(bool counts) {
        const AcDbDatabase* const database = hostkit::orWorkingDatabase(nullptr);
        if (!counts || !database) return;
        start = database->header().real(L"ANGBASE", 0.0);
        sense = database->header().integer(L"ANGDIR", 0) == 1 ? -1.0 : 1.0;
    }
};

double withinTurn(double radians) {
    const double rest = std::fmod(radians, kTurn);
    const double angle = rest < 0.0 ? rest + kTurn : rest;
    return angle >= kTurn ? 0.0 : angle;
}

// A direction that rounds to a whole turn is the zero one.
std::wstring directionText(double radians, const hostkit::AngleForm& form) {
    const std::wstring text = hostkit::angleText(radians, form);
    return text == hostkit::angleText(kTurn, form) ? hostkit::angleText(0.0, form) : text;
}

bool isBearing(const wchar_t* text) {
    const std::wstring_view all(text);
    const std::size_t first = all.find_first_not_of(L' ');
    return first != all.npos && std::wstring_view(L"NSEWnsew").find(all[first]) != std::wstring_view::npos;
}

} // namespace

int acdbRToS(ads_real value, int unit, int precision, wchar_t* text) {
    const auto form = lengthUnit(unit);
    const auto places = chosen(precision, L"LUPREC", kUsualPrecision, 0, kLargestPrecision);
    if (!form || !places) return RTERROR;
    return handOut(
        hostkit::lengthText(
            value,
            {.unit = *form, .places = *places, .zeros = drawingValue(L"DIMZIN", 0), .isTyped = isTyped()}),
        text);
}

int acdbAngToS(ads_real value, int unit, int precision, wchar_t* text) {
    const auto form = angleUnit(unit);
    const auto places = chosen(precision, L"AUPREC", kUsualPrecision, 0, kLargestPrecision);
    if (!form || !places || !std::isfinite(value)) return RTERROR;
    const int zeros = drawingValue(L"DIMZIN", 0);
    const AngleBase base(*form != AngleUnit::bearing);
    const hostkit::AngleForm spelling{.unit = *form,
                                      .places = *places,
                                      .dropsLeadingZero = (zeros & hostkit::kLeadingZeroBit) != 0,
                                      .dropsTrailingZeros = (zeros & hostkit::kTrailingZeroBit) != 0,
                                      .spelling = isTyped() ? hostkit::AngleSpelling::typed
                                                            : hostkit::AngleSpelling::shown};
    return handOut(directionText(withinTurn((value - base.start) * base.sense), spelling), text);
}

int acdbDisToF(const wchar_t* text, int unit, ads_real* value) {
    const auto form = lengthUnit(unit);
    return form && text && value && hostkit::readLength(text, *form, *value) ? RTNORM : RTERROR;
}

int acdbAngToF(const wchar_t* text, int unit, ads_real* value) {
    const auto form = angleUnit(unit);
    double angle = 0.0;
    if (!form || !text || !value || !hostkit::readAngle(text, *form, angle)) return RTERROR;
    const AngleBase base(!isBearing(text));
    *value = withinTurn(base.start + base.sense * angle);
    return RTNORM;
}
