#include "angletext.h"

#include "decimaltext.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {
namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;
constexpr double kGradians = 200.0 / std::numbers::pi;
constexpr double kRightAngle = 90.0;
constexpr int kMinutePlaces = 2; // as many show minutes, twice as many seconds
constexpr int kSecondPlaces = 4;
constexpr int kMostPlaces = 16;
constexpr wchar_t kDegreeSign = L'\u00B0';

DecimalForm decimalsOf(const AngleForm& form) {
    return {form.places, form.dropsLeadingZero, form.dropsTrailingZeros, false, form.separator};
}

// A magnitude in degrees, rounded to the smallest unit that is shown.
struct Sexagesimal {
    double degrees;
    double minutes;
    double seconds;

    Sexagesimal(double magnitude, int places) {
        const int decimals = std::clamp(places - kSecondPlaces, 0, kMostPlaces);
        const double parts = places <= 0 ? 1.0 : places <= kMinutePlaces ? 60.0 : 3600.0;
        const double second = std::pow(10.0, decimals);
        const double count = parts * second;
        const double scaled = magnitude * count;
        const double units = std::floor(scaled + halfLeniency(scaled, 1.0) + 0.5);
        // Beyond all whole numbers degrees alone are told.
        degrees = std::isfinite(units) ? std::floor(units / count) : magnitude;
        double rest = std::isfinite(units) ? std::fmod(units, count) : 0.0;
        const double minute = std::max(count / 60.0, 1.0);
        minutes = std::floor(rest / minute);
        rest -= minutes * minute;
        seconds = rest / second;
    }

    std::wstring text(const AngleForm& form, wchar_t degreeMark) const {
        DecimalForm number{.places = 0, .separator = form.separator};
        std::wstring text = decimalText(degrees, number) + degreeMark;
        if (form.places > 0) text += decimalText(minutes, number) + L'\'';
        if (form.places <= kMinutePlaces) return text;
        number.places = std::max(0, form.places - kSecondPlaces);
        number.dropsTrailingZeros = form.dropsTrailingZeros;
        return text + decimalText(seconds, number) + L'"';
    }
    bool isZero() const { return degrees == 0.0 && minutes == 0.0 && seconds == 0.0; }
};

std::wstring partsText(double degrees, const AngleForm& form) {
    const Sexagesimal parts(std::abs(degrees), form.places);
    const std::wstring text =
        parts.text(form, form.spelling == AngleSpelling::drawn ? kDegreeSign : wchar_t(L'd'));
    return degrees < 0.0 && !parts.isZero() ? L'-' + text : text;
}

std::wstring bearingText(double degrees, const AngleForm& form) {
    const double turned = std::fmod(degrees, 4.0 * kRightAngle);
    const double direction = turned < 0.0 ? turned + 4.0 * kRightAngle : turned;
    const bool isNorth = direction < 2.0 * kRightAngle;
    const double upright = isNorth ? kRightAngle : 3.0 * kRightAngle;
    const Sexagesimal parts(std::abs(direction - upright), form.places);
    const wchar_t* const pole = isNorth ? L"N" : L"S";
    const wchar_t* const side = isNorth == (direction < upright) ? L"E" : L"W";
    if (parts.isZero()) return pole;
    if (parts.degrees >= kRightAngle) return side;
    const wchar_t* const gap = form.spelling == AngleSpelling::typed ? L"" : L" ";
    return pole + (gap + parts.text(form, L'd')) + gap + side;
}

} // namespace

std::wstring angleText(double radians, const AngleForm& form) {
    if (!std::isfinite(radians) || !std::isfinite(radians * kGradians)) return {};
    switch (form.unit) {
    case AngleUnit::degreesMinutesSeconds:
        return partsText(radians * kDegrees, form);
    case AngleUnit::gradians:
        return decimalText(radians * kGradians, decimalsOf(form)) + L'g';
    case AngleUnit::radians:
        return decimalText(radians, decimalsOf(form)) + L'r';
    case AngleUnit::bearing:
        return bearingText(radians * kDegrees, form);
    default:
        break;
    }
    const std::wstring number = decimalText(radians * kDegrees, decimalsOf(form));
    return form.spelling == AngleSpelling::drawn ? number + kDegreeSign : number;
}

} // namespace hostkit
