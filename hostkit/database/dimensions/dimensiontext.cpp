#include "dimensiontext.h"

#include "dimensionnumber.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hostkit {
namespace {

constexpr std::wstring_view kPlaceOfNumber = L"<>";
constexpr std::wstring_view kPlaceOfAlternate = L"[]";
// A user text that asks for its number again and again is cut there.
constexpr std::size_t kLongestDimensionText = 1 << 20;
constexpr wchar_t kRadiusSign[] = L"R";
constexpr wchar_t kDiameterSign[] = L"\u2205";
// No blank before the bracket.
constexpr wchar_t kAlternateOpens[] = L"[";
constexpr wchar_t kAlternateCloses[] = L"]";

// What stands around a number, from a text like dimpost.
struct Surroundings {
    std::wstring_view prefix;
    std::wstring_view suffix;
    bool hasPlace = false; ///< of the number; what is before it replaces the sign of a radius or a diameter

    explicit Surroundings(std::wstring_view text) {
        if (text == L".") return;
        const std::size_t place = text.find(kPlaceOfNumber);
        hasPlace = place != text.npos;
        if (hasPlace) prefix = text.substr(0, place);
        suffix = hasPlace ? text.substr(place + kPlaceOfNumber.size()) : text;
    }
};

std::wstring_view signOf(MeasureKind kind) {
    return kind == MeasureKind::radius ? kRadiusSign : kind == MeasureKind::diameter ? kDiameterSign : L"";
}

double factorOf(const DimensionVariables& variables, bool isInPaperSpace) {
    if (variables.dimlfac < 0.0) return isInPaperSpace ? -variables.dimlfac : 1.0;
    return variables.dimlfac > 0.0 ? variables.dimlfac : 1.0;
}

// To the nearest multiple of the step; a step that is none, or one that numbers cannot be counted in, leaves
// them alone.
double roundedTo(double step, double value) {
    if (!(step > 0.0)) return value;
    const double rounded = std::floor(value / step + 0.5) * step;
    return std::isfinite(rounded) ? rounded : value;
}

// The texts that stand for "<>" and "[]".
struct MeasureTexts {
    std::wstring primary;
    std::wstring alternate;
};

std::wstring surrounded(const Surroundings& around, MeasureKind kind, const std::wstring& number) {
    std::wstring text(around.hasPlace ? around.prefix : signOf(kind));
    return text.append(number).append(around.suffix);
}

std::wstring primaryText(const DimensionVariables& variables, MeasureKind kind, double value) {
    const Surroundings around(variables.dimpost);
    if (kind != MeasureKind::angle) {
        const auto number = DimensionNumber::ofLength(variables);
        return surrounded(around, kind,
                          toleratedText(variables, number, 1.0, roundedTo(variables.dimrnd, value)));
    }
    // A mere suffix is not for angles.
    const std::wstring text = toleratedText(variables, DimensionNumber::ofAngle(variables), 1.0, value);
    return around.hasPlace ? surrounded(around, kind, text) : text;
}

// Angles have none.
std::wstring alternateText(const DimensionVariables& variables, MeasureKind kind, double value) {
    const double alternate = roundedTo(variables.dimaltrnd, value * variables.dimaltf);
    if (kind == MeasureKind::angle || !std::isfinite(alternate)) return {};
    const auto number = DimensionNumber::ofAlternate(variables);
    return kAlternateOpens +
           surrounded(Surroundings(variables.dimapost), kind,
                      toleratedText(variables, number, variables.dimaltf, alternate)) +
           kAlternateCloses;
}

// Puts the texts where their signs stand. What would come beyond the longest text is cut.
std::wstring filledIn(std::wstring_view text, const MeasureTexts& texts) {
    const std::pair<std::wstring_view, const std::wstring&> places[] = {{kPlaceOfNumber, texts.primary},
                                                                        {kPlaceOfAlternate, texts.alternate}};
    std::wstring filled;
    while (!text.empty() && filled.size() < kLongestDimensionText) {
        std::size_t taken = 0;
        for (const auto& [sign, value] : places)
            if (text.starts_with(sign)) {
                filled += value;
                taken = sign.size();
            }
        if (taken == 0) {
            taken = std::min(text.find_first_of(L"<[", 1), text.size());
            filled += text.substr(0, taken);
        }
        text.remove_prefix(taken);
    }
    filled.resize(std::min(filled.size(), kLongestDimensionText));
    return filled;
}

std::wstring headOf(const DimensionVariables& variables) {
    if (variables.dimtolj == 1) return L"\\A1;";
    return variables.dimtolj == 2 ? L"\\A2;" : L"";
}

} // namespace

std::wstring dimensionText(const DimensionVariables& variables, MeasureKind kind, double measure,
                           std::wstring_view userText, bool isInPaperSpace) {
    const double value = kind == MeasureKind::angle ? measure : measure * factorOf(variables, isInPaperSpace);
    if (!std::isfinite(value) || userText == L" ") return {};
    MeasureTexts texts{primaryText(variables, kind, value), {}};
    const bool hasOwnPlace = userText.find(kPlaceOfAlternate) != userText.npos;
    if (variables.dimalt || hasOwnPlace) texts.alternate = alternateText(variables, kind, value);
    if (!hasOwnPlace) texts.primary += texts.alternate;
    return headOf(variables) + filledIn(userText.empty() ? kPlaceOfNumber : userText, texts);
}

} // namespace hostkit
