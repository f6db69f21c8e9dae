// The numbers of dimensions: how one is written, alone, with a tolerance or as its two limits.
#pragma once

#include "angletext.h"
#include "dimensionvariables.h"
#include "lengthtext.h"

#include <string>

namespace hostkit {

/// How a number and its tolerances are written; the numbers themselves are lengths or radians.
struct DimensionNumber {
    bool isAngle = false;
    LengthForm length;
    AngleForm angle;
    int tolerancePlaces = 4;
    int toleranceZeros = 0;   ///< the bits of dimzin, of angles too
    double stackHeight = 1.0; ///< of the text's

    /// As variables ask for lengths, for alternate lengths and for angles.
    static DimensionNumber ofLength(const DimensionVariables& variables);
    static DimensionNumber ofAlternate(const DimensionVariables& variables);
    static DimensionNumber ofAngle(const DimensionVariables& variables);

    std::wstring text(double value) const;
    /// In places and zeros of tolerances, fractions not stacked: it may stand within a stack.
    std::wstring toleranceText(double value) const;
    /// In radians, what dimensions give in the unit of their angles; a length as it is.
    double toleranceValue(double value) const;
};

/// The number with what dimtol or dimlim add, tolerances multiplied by that factor: ± and one tolerance, a
/// stack of two behind the number, or a stack of the limits in its place, which show as many decimals as each
/// other. Limits go before tolerances where both are asked for. Two tolerances of 0 are ± too.
std::wstring toleratedText(const DimensionVariables& variables, const DimensionNumber& number,
                           double toleranceFactor, double value);

} // namespace hostkit
