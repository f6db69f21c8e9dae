#include "dbtextstyletablerecord.h"

#include "assignfield.h"

#include "adsdef.h"

#include <cmath>
#include <numbers>

HOSTKIT_KIT_CLASS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, L"STYLE")

using hostkit::assignField;
using hostkit::assignIf;

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(wchar_t*& name) const {
    name = acutNewString(m_fileName.c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(wchar_t*& name) const {
    name = acutNewString(m_bigFontFileName.c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const wchar_t* name) {
    return assignField(*this, m_fileName, name ? name : L"");
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const wchar_t* name) {
    return assignField(*this, m_bigFontFileName, name ? name : L"");
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    return assignIf(std::isfinite(size) && size >= 0.0, *this, m_textSize, size);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) {
    return assignIf(std::isfinite(size) && size > 0.0, *this, m_priorSize, size);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    return assignIf(std::isfinite(scale) && scale > 0.0, *this, m_xScale, scale);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    constexpr double steepest = 85.0 * std::numbers::pi / 180.0;
    return assignIf(std::abs(angle) < steepest, *this, m_obliquingAngle, angle);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setIsShapeFile(bool isShapeFile) {
    return assignField(*this, m_isShapeFile, isShapeFile);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setIsVertical(bool isVertical) {
    return assignField(*this, m_isVertical, isVertical);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFlagBits(Adesk::UInt8 bits) {
    constexpr Adesk::UInt8 known = 2 | 4;
    return assignIf((bits & ~known) == 0, *this, m_generationFlags, static_cast<Adesk::Int16>(bits));
}
