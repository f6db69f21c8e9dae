#include "db2dpolyline.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDb2dPolyline::Filing {
    static constexpr GroupField<AcDb2dPolyline> groups[] = {
        realField<&AcDb2dPolyline::m_thickness>(39, 0.0),  integerField<&AcDb2dPolyline::m_dxfFlags>(70, 0),
        realField<&AcDb2dPolyline::m_startWidth>(40, 0.0), realField<&AcDb2dPolyline::m_endWidth>(41, 0.0),
        integerField<&AcDb2dPolyline::m_curveType>(75, 0), normalField<&AcDb2dPolyline::m_normal>(),
    };
    static constexpr short verticesFollowCode = 66;
    static constexpr short elevationCode = 10; ///< a point, of which only z means something
};

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDb2dPolyline")) return status;
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (group.code == Filing::elevationCode) m_elevation = group.point[2];
        return group.code == Filing::elevationCode || group.code == Filing::verticesFollowCode;
    });
}

Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDb2dPolyline");
    filer->markOptional();
    filer->writeInteger(Filing::verticesFollowCode, 1);
    if (m_elevation == 0.0) filer->markOptional();
    filer->writeItem(Filing::elevationCode, AcGePoint3d(0.0, 0.0, m_elevation));
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb2dPolyline)
