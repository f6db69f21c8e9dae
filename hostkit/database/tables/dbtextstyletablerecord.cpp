#include "dbtextstyletablerecord.h"

#include "adsdef.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "recordlist.h"

#include <cmath>
#include <numbers>

using namespace hostkit;

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
    return hostkit::setNonNegativeField(*this, m_textSize, size);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) {
    return hostkit::setPositiveField(*this, m_priorSize, size);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    return hostkit::setPositiveField(*this, m_xScale, scale);
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

// --- Typeface ----------------------------------------------------------------------------------------------

namespace {

// Under this application: the name (1000) and one number (1071) of flags, character set, pitch and family.
constexpr const wchar_t* typefaceApplication = L"ACAD";
constexpr int nameCode = 1000;
constexpr int flagsCode = 1071;
constexpr Adesk::Int32 italicFlag = 0x01000000;
constexpr Adesk::Int32 boldFlag = 0x02000000;
constexpr int charsetShift = 8;
constexpr Adesk::Int32 byteMask = 0xFF;

} // namespace

Acad::ErrorStatus AcDbTextStyleTableRecord::font(wchar_t*& typeface, Adesk::Boolean& bold,
                                                 Adesk::Boolean& italic, int& charset,
                                                 int& pitchAndFamily) const {
    const RecordList list(xData(typefaceApplication));
    const resbuf* at = list ? list->rbnext : nullptr;
    const wchar_t* const name = at && at->restype == nameCode ? at->resval.rstring : nullptr;
    if (name) at = at->rbnext;
    const Adesk::Int32 flags = name && at && at->restype == flagsCode ? at->resval.rlong : 0;
    typeface = acutNewString(name ? name : L"");
    bold = (flags & boldFlag) != 0;
    italic = (flags & italicFlag) != 0;
    charset = flags >> charsetShift & byteMask;
    pitchAndFamily = flags & byteMask;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFont(const wchar_t* typeface, Adesk::Boolean bold,
                                                    Adesk::Boolean italic, int charset, int pitchAndFamily) {
    const auto isByte = [](int value) { return (value & ~byteMask) == 0; };
    if (!typeface || !isByte(charset) || !isByte(pitchAndFamily)) return Acad::eInvalidInput;
    RecordListMaker list;
    list.append(applicationCode).resval.rstring = acutNewString(typefaceApplication);
    if (*typeface) {
        list.append(nameCode).resval.rstring = acutNewString(typeface);
        list.append(flagsCode).resval.rlong =
            (bold ? boldFlag : 0) | (italic ? italicFlag : 0) | charset << charsetShift | pitchAndFamily;
    }
    return setXData(list.take().get());
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbTextStyleTableRecord::Filing {
    using Style = AcDbTextStyleTableRecord;
    static constexpr GroupField<Style> groups[] = {
        textField<&Style::m_name, Style>(2),
        realField<&Style::m_textSize>(40),
        realField<&Style::m_xScale>(41),
        angleField<&Style::m_obliquingAngle>(50),
        integerField<&Style::m_generationFlags>(71),
        realField<&Style::m_priorSize>(42),
        textField<&Style::m_fileName>(3),
        textField<&Style::m_bigFontFileName>(4),
    };
    static constexpr short flagsCode = 70;
    static constexpr Adesk::Int16 shapeFlag = 1;
    static constexpr Adesk::Int16 verticalFlag = 4;
};

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbTextStyleTableRecord")) return status;
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (group.code != Filing::flagsCode) return false;
        m_dxfFlags = static_cast<Adesk::Int16>(group.integer);
        m_isShapeFile = (group.integer & Filing::shapeFlag) != 0;
        m_isVertical = (group.integer & Filing::verticalFlag) != 0;
        return m_dxfFlags == group.integer;
    });
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbTextStyleTableRecord");
    const auto& [name, size, scale, angle, generation, priorSize, file, bigFont] = Filing::groups;
    name.write(*this, name, *filer);
    filer->writeInteger(Filing::flagsCode, (m_dxfFlags & ~(Filing::shapeFlag | Filing::verticalFlag)) |
                                               (m_isShapeFile ? Filing::shapeFlag : 0) |
                                               (m_isVertical ? Filing::verticalFlag : 0));
    for (const auto* field : {&size, &scale, &angle, &generation, &priorSize, &file, &bigFont})
        field->write(*this, *field, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbTextStyleTableRecord)
