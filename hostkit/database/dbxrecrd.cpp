#include "dbxrecrd.h"

#include "assignfield.h"

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
