#include "dbray.h"

#include "curvegeometry.h"
#include "dbline.h"
#include "fielditems.h"

#include <cmath>

HOSTKIT_KIT_CLASS(AcDbRay, AcDbCurve, L"RAY")

// A ray has one sense only.
Acad::ErrorStatus AcDbRay::reverseCurve() { return Acad::eNotApplicable; }

bool AcDbRay::geometry(hostkit::CurveGeometry& geometry) const {
    geometry.set(AcGeRay3d(m_basePoint, m_unitDirection));
    return !m_unitDirection.isZeroLength();
}

AcDbCurve* AcDbRay::piece(double from, double to) const {
    if (std::isfinite(to)) return new AcDbLine(pointAt(from), pointAt(to));
    AcDbRay* rest = new AcDbRay(*this);
    rest->m_basePoint = pointAt(from);
    return rest;
}

Acad::ErrorStatus AcDbRay::dxfInFields(AcDbDxfFiler* filer) { return readLine(filer, L"AcDbRay"); }
Acad::ErrorStatus AcDbRay::dxfOutFields(AcDbDxfFiler* filer) const { return writeLine(filer, L"AcDbRay"); }

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbRay)
