#include "dblinetypetablerecord.h"

#include "adsdef.h"
#include "casefold.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"

#include <cmath>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, L"LTYPE")

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(wchar_t*& text) const {
    text = acutNewString(m_comments.c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const wchar_t* text) {
    return hostkit::assignField(*this, m_comments, text ? text : L"");
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    return hostkit::setNonNegativeField(*this, m_patternLength, length);
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
    return hostkit::setFiniteField(*this, m_dashes[static_cast<std::size_t>(index)].length, length);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::subErase(Adesk::Boolean erasing) {
    for (const wchar_t* standing : {L"ByLayer", L"ByBlock", L"Continuous"})
        if (erasing && hostkit::equalFolded(m_name, standing)) return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbLinetypeTableRecord::Filing {
    using Linetype = AcDbLinetypeTableRecord;
    static constexpr GroupField<Linetype> groups[] = {
        textField<&Linetype::m_name, Linetype>(2), integerField<&Linetype::m_dxfFlags, Linetype>(70),
        textField<&Linetype::m_comments>(3),       integerField<&Linetype::m_alignment>(72),
        realField<&Linetype::m_patternLength>(40),
    };
    static constexpr short dashCountCode = 73;
    static constexpr short dashCode = 49;
    static constexpr short shapeKindCode = 74;

    // What follows a dash belongs to it.
    static bool readGroup(Linetype& linetype, const AcDbDxfGroup& group) {
        if (group.code == dashCountCode) return true;
        if (group.code == dashCode) {
            linetype.m_dashes.push_back({group.real, {}});
            return true;
        }
        if (linetype.m_dashes.empty() || !isStorable(group)) return false;
        linetype.m_dashes.back().shape.append(group);
        return true;
    }

    static void writeDash(const Dash& dash, AcDbDxfFiler& filer) {
        filer.writeReal(dashCode, dash.length);
        if (!dash.shape.isEmpty()) return writeBlock(filer, dash.shape);
        filer.markSince(AcDb::kDHL_1012);
        filer.markOptional();
        filer.writeInteger(shapeKindCode, 0);
    }
};

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbLinetypeTableRecord")) return status;
    m_dashes.clear();
    return readFields(*filer, Filing::groups, *this,
                      [this](const AcDbDxfGroup& group) { return Filing::readGroup(*this, group); });
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbLinetypeTableRecord");
    const auto& [name, flags, comments, alignment, length] = Filing::groups;
    for (const auto* field : {&name, &flags, &comments, &alignment}) field->write(*this, *field, *filer);
    filer->writeInteger(Filing::dashCountCode, numDashes());
    length.write(*this, length, *filer);
    for (const Dash& dash : m_dashes) Filing::writeDash(dash, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbLinetypeTableRecord)
