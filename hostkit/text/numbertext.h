// Reading and writing of typed numbers: whole numbers, reals and points in the C locale; leaves out feet,
// fractions and angles.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

std::wstring_view withoutBlanksAround(std::wstring_view text);
/// The shortest text that reads back as the same number.
std::wstring formatReal(double value);
/// A finite number in the form of the C locale with nothing behind it. Nothing is set on failure, here and
/// below.
bool parseReal(std::wstring_view text, double& value);
/// A whole number in 32 bits.
bool parseInteger(std::wstring_view text, int& value);
/// In 64 bits.
bool parseInteger(std::wstring_view text, long long& value);
/// "x,y" or "x,y,z"; the third coordinate is 0 where there are two.
bool parsePoint(std::wstring_view text, double* coordinates);

} // namespace hostkit
