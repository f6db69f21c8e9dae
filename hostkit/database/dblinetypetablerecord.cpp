#include "dblinetypetablerecord.h"

#include "assignfield.h"

#include "adsdef.h"
#include "casefold.h"

#include <cmath>

HOSTKIT_KIT_CLASS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, L"LTYPE")

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(wchar_t*& text) const {
    text = acutNewString(m_comments.c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const wchar_t* text) {
    return hostkit::assignField(*this, m_comments, text ? text : L"");
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    return hostkit::assignIf(std::isfinite(length) && length >= 0.0, *this, m_patternLength, length);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    constexpr int most = 12;
    if (count < 0 || count > most) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_dashes.resize(static_cast<std::size_t>(count));
    return status;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index < 0 || index >= numDashes() ? 0.0 : m_dashes[static_cast<std::size_t>(index)].length;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
    return hostkit::assignIf(std::isfinite(length), *this, m_dashes[static_cast<std::size_t>(index)].length,
                             length);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::subErase(Adesk::Boolean erasing) {
    for (const wchar_t* standing : {L"ByLayer", L"ByBlock", L"Continuous"})
        if (erasing && hostkit::equalFolded(m_name, standing)) return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}
