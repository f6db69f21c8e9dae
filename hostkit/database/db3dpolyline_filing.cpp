#include "db3dpolyline.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDb3dPolyline::Filing {
    static constexpr GroupField<AcDb3dPolyline> groups[] = {
        integerField<&AcDb3dPolyline::m_dxfFlags>(70),
        integerField<&AcDb3dPolyline::m_curveType>(75, 0),
    };
    static constexpr short verticesFollowCode = 66;
    static constexpr short placeCode = 10; ///< always zero
};

Acad::ErrorStatus AcDb3dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDb3dPolyline")) return status;
    return readFields(*filer, Filing::groups, *this, [](const AcDbDxfGroup& group) {
        if (group.code == Filing::placeCode)
            return group.point[0] == 0.0 && group.point[1] == 0.0 && group.point[2] == 0.0;
        return group.code == Filing::verticesFollowCode;
    });
}

Acad::ErrorStatus AcDb3dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDb3dPolyline");
    filer->markOptional();
    filer->writeInteger(Filing::verticesFollowCode, 1);
    filer->markOptional();
    filer->writeItem(Filing::placeCode, AcGePoint3d(0.0, 0.0, 0.0));
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb3dPolyline)
