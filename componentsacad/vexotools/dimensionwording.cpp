#include "dimensionwording.h"

#include "vexoconversiontools_internal.h"

#include <algorithm>
#include <cmath>

namespace vexo {
namespace {

constexpr wchar_t numberPlace[] = L"<>";

struct RaisedNumber {
    CString kept;
    CString raised;
};

// As many decimals stay down as the number k tells that 1000 / factor has digits, less one; a k that is not
// whole raises nothing. With k 0 the separator goes, too.
RaisedNumber raisedNumber(const CString& number, double power, wchar_t separator) {
    const double exponent = std::log10(power) - 1.0;
    const double whole = std::round(exponent);
    const int place = number.Find(separator);
    const bool isWhole = std::isfinite(exponent) && std::fabs(exponent - whole) <= toleranceAt(whole);
    if (!isWhole || whole < 0.0 || whole > number.GetLength() || place < 0) return {number, {}};
    const int decimals = static_cast<int>(whole);
    const int raisedLength = number.GetLength() - (place + 1) - decimals;
    const int keptLength = place + 1 + (decimals > 0 ? decimals : -1);
    const auto isPart = [&](int length) { return length > 0 && length < number.GetLength(); };
    if (!isPart(raisedLength) || !isPart(keptLength)) return {number, {}};
    return {number.Left(keptLength), number.Right(raisedLength)};
}

bool isAllZeros(const CString& digits) {
    return digits.SpanIncluding(L"0").GetLength() == digits.GetLength();
}

} // namespace

DimensionWords::DimensionWords(const CString& contents) {
    const int headEnd = contents.Find(L';') + 1;
    head = contents.Left(headEnd);
    const CString rest = contents.Mid(headEnd);
    const int tailStart = rest.FindOneOf(L"\\{;[");
    number = tailStart < 0 ? rest : rest.Left(tailStart);
    if (tailStart >= 0) tail = rest.Mid(tailStart);
}

CString DimensionWording::composed(const DimensionWords& words) const {
    CString number = words.number;
    if (trimZeros && number.Find(L'.') >= 0) number.TrimRight(L'0');
    const double power = factor != 0.0 ? raisedPower / factor : 0.0;
    RaisedNumber parts{number, {}};
    if (power > 0.0) parts = raisedNumber(number, power, separator);
    if (trimZeros && isAllZeros(parts.raised)) parts.raised.Empty();
    CString part = parts.kept;
    if (!parts.raised.IsEmpty()) part.Format(L"%s{\\H0.6x;\\S%s^;}", parts.kept, parts.raised);
    CString text = suffix;
    if (CString(suffix).Trim().IsEmpty() || suffix.Find(numberPlace) < 0) text = numberPlace + suffix;
    text.Replace(numberPlace, part + words.tail);
    return words.head + text;
}

} // namespace vexo
