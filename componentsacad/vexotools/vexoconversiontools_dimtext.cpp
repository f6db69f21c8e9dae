#include "vexoconversiontools.h"

#include "dimensionwording.h"
#include "vexoconversiontools_internal.h"
#include "vexosmartundorecording.h"

#include "adsdef.h"
#include "cvxlogentry.h"
#include "dbmtext.h"
#include "dbrotateddimension.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <new>

namespace vexo {
namespace {

constexpr int decimalUnit = 2;
constexpr int desktopUnit = 6;
constexpr int trailingZeroBit = 8;
constexpr double smallRounding = 100.0;
constexpr double raisingPower = 1000.0;
constexpr double mostDecimals = 8.0;

bool hasDecimals(const AcDbDimension& dimension) {
    return dimension.dimlunit() == decimalUnit || dimension.dimlunit() == desktopUnit;
}

// Of that length, laid out in the style, in no drawing.
std::unique_ptr<AcDbRotatedDimension> throwAwayDimension(double value, const AcDbObjectId& style) {
    const AcGePoint3d end(std::fabs(value), 0.0, 0.0);
    std::unique_ptr<AcDbRotatedDimension> dimension(
        new (std::nothrow) AcDbRotatedDimension(0.0, AcGePoint3d::kOrigin, end, AcGePoint3d::kOrigin));
    if (!dimension) return nullptr;
    (void)dimension->generateLayout();
    (void)dimension->setDimensionStyle(style);
    return dimension;
}

// Deletes the pieces; `take` gets the contents of those that are paragraphs.
Acad::ErrorStatus explodeTexts(const AcDbDimension& dimension,
                               const std::function<void(const CString&)>& take) {
    AcDbVoidPtrArray pieces;
    const Acad::ErrorStatus status = dimension.explode(pieces);
    for (int i = 0; i < pieces.length(); ++i) {
        const std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(pieces[i]));
        const auto* const text = AcDbMText::cast(piece.get());
        if (!text) continue;
        wchar_t* contents = text->contents();
        take(contents);
        acutDelString(contents);
    }
    return status;
}

// As many decimals as leave the value its digits at that rounding.
void setRounding(AcDbDimension& dimension, double scale, double rounding) {
    const double digits =
        std::log10(std::pow(10.0, dimension.dimdec()) * scale * dimension.dimlfac() / rounding);
    const double decimals = digits > 0.0 ? std::min(digits, mostDecimals) : 0.0;
    (void)dimension.setDimdec(static_cast<int>(decimals));
    (void)dimension.setDimlfac(rounding / scale);
}

void setSmallForm(AcDbDimension& dimension, int decimals, bool dropsTrailingZeros) {
    (void)dimension.setDimdec(decimals);
    const int zeros = dimension.dimzin();
    (void)dimension.setDimzin(dropsTrailingZeros ? zeros | trailingZeroBit : zeros & ~trailingZeroBit);
}

// Takes what stands before the place of the number off the text.
void splitPrefix(CString& suffix, CString& prefix) {
    const int place = suffix.Find(L"<>");
    if (place < 0) return;
    prefix = suffix.Left(place);
    suffix = suffix.Mid(place);
}

} // namespace
} // namespace vexo

Acad::ErrorStatus VEXOConversionTools::getFormatedDimText(double value, const AcDbObjectId& dimStyle,
                                                          CString& text) {
    CVxLogEntry entry(L"VEXOConversionTools::getFormatedDimText");
    const VEXOSmartUndoRecording noRecording;
    text.Empty();
    const std::unique_ptr<AcDbRotatedDimension> dimension = vexo::throwAwayDimension(value, dimStyle);
    if (!dimension) return static_cast<Acad::ErrorStatus>(20);
    (void)dimension->setDimlfac(1.0);
    (void)dimension->generateLayout();
    return vexo::explodeTexts(*dimension, [&](const CString& contents) { text = contents; });
}

Acad::ErrorStatus VEXOConversionTools::getFormatedDimText(double value, const AcDbObjectId& dimStyle,
                                                          double scale, double rounding, bool smallValues,
                                                          int smallDecimals, bool smallTrailingZeros,
                                                          bool raisedDigits, CString& text, bool trimZeros,
                                                          CString& prefix, bool takePrefix) {
    CVxLogEntry entry(L"VEXOConversionTools::getFormatedDimText");
    const VEXOSmartUndoRecording noRecording;
    text.Empty();
    const std::unique_ptr<AcDbRotatedDimension> dimension = vexo::throwAwayDimension(value, dimStyle);
    if (!dimension) return static_cast<Acad::ErrorStatus>(20);

    const bool isSmall = smallValues && rounding <= vexo::comparisonTolerance &&
                         vexo::hasDecimals(*dimension) && value < scale - vexo::toleranceAt(scale);
    if (isSmall) rounding = vexo::smallRounding;
    vexo::DimensionWording wording;
    if (rounding <= vexo::comparisonTolerance)
        wording.factor = dimension->dimlfac() * scale;
    else
        vexo::setRounding(*dimension, scale, rounding);
    if (isSmall) vexo::setSmallForm(*dimension, smallDecimals, smallTrailingZeros);

    wording.suffix = dimension->dimpost();
    if (takePrefix) vexo::splitPrefix(wording.suffix, prefix);
    (void)dimension->setDimpost(L"");
    (void)dimension->generateLayout();
    wording.raisedPower = raisedDigits && vexo::hasDecimals(*dimension) ? vexo::raisingPower : 0.0;
    wording.separator = dimension->dimdsep();
    wording.trimZeros = trimZeros;
    return vexo::explodeTexts(*dimension, [&](const CString& contents) {
        text = wording.composed(vexo::DimensionWords(contents));
    });
}
