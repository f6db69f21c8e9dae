#include "dbxrecrd.h"

#include "assignfield.h"
#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbXrecord, AcDbObject, L"XRECORD")

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** list, AcDbDatabase*) const {
    if (!list) return Acad::eInvalidInput;
    *list = m_groups.toList();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& list, AcDbDatabase*) {
    hostkit::GroupBlock groups;
    const Acad::ErrorStatus status = pack(list, groups);
    return status == Acad::eOk ? setGroups(std::move(groups)) : status;
}

Acad::ErrorStatus AcDbXrecord::appendRbChain(const resbuf& list, AcDbDatabase*) {
    hostkit::GroupBlock groups = m_groups;
    const Acad::ErrorStatus status = pack(list, groups);
    return status == Acad::eOk ? setGroups(std::move(groups)) : status;
}

Acad::ErrorStatus AcDbXrecord::pack(const resbuf& list, hostkit::GroupBlock& groups) {
    constexpr short lastCode = 369;
    for (const resbuf* record = &list; record; record = record->rbnext) {
        const short code = record->restype;
        if (code >= RTNONE) return Acad::eInvalidResBuf;
        if (code < 1 || code > lastCode || code == 5 || code == 105) return Acad::eInvalidDxfCode;
        const Acad::ErrorStatus status = groups.appendRecord(*record);
        if (status != Acad::eOk) return status;
    }
    return groups.isFinite() ? Acad::eOk : Acad::eInvalidResBuf;
}

Acad::ErrorStatus AcDbXrecord::setGroups(hostkit::GroupBlock groups) {
    groups.shrinkToFit();
    return hostkit::assignIf(groups.isFinite(), *this, m_groups, std::move(groups));
}

Acad::ErrorStatus AcDbXrecord::setMergeStyle(AcDb::DuplicateRecordCloning style) {
    return hostkit::assignIf(style >= AcDb::kDrcNotApplicable && style <= AcDb::kDrcUnmangleName, *this,
                             m_mergeStyle, static_cast<Adesk::Int16>(style));
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbXrecord::Filing {
    static constexpr short mergeStyleCode = 280;
};

// The merge style is the first group; the same code further on is data. R13 and R14 have none.
Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbXrecord")) return status;
    m_groups.clear();
    AcDbDxfGroup group;
    for (bool isFirst = true;; isFirst = false) {
        const Acad::ErrorStatus read = filer->readItem(group);
        if (read == Acad::eEndOfObject) return Acad::eOk;
        if (read != Acad::eOk) return read;
        if (!isStorable(group))
            filer->rejectItem();
        else if (isFirst && group.code == Filing::mergeStyleCode)
            m_mergeStyle = static_cast<Adesk::Int16>(group.integer);
        else
            m_groups.append(group);
    }
}

Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbXrecord");
    if (m_mergeStyle == AcDb::kDrcIgnore) filer->markOptional();
    filer->writeInteger(Filing::mergeStyleCode, m_mergeStyle);
    writeBlock(*filer, m_groups);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbXrecord)
