#include "dbxline.h"

#include "curvegeometry.h"
#include "dbline.h"
#include "dbray.h"
#include "fielditems.h"

#include <cmath>

HOSTKIT_KIT_CLASS(AcDbXline, AcDbCurve, L"XLINE")

Acad::ErrorStatus AcDbXline::reverseCurve() { return setUnitDir(-m_unitDirection); }

bool AcDbXline::geometry(hostkit::CurveGeometry& geometry) const {
    geometry.set(AcGeLine3d(m_basePoint, m_unitDirection));
    return !m_unitDirection.isZeroLength();
}

AcDbCurve* AcDbXline::piece(double from, double to) const {
    if (std::isfinite(from) && std::isfinite(to)) return new AcDbLine(pointAt(from), pointAt(to));
    AcDbRay* rest = new AcDbRay;
    (void)rest->setBasePoint(pointAt(std::isfinite(from) ? from : to));
    (void)rest->setUnitDir(std::isfinite(from) ? m_unitDirection : -m_unitDirection);
    return rest;
}

Acad::ErrorStatus AcDbXline::dxfInFields(AcDbDxfFiler* filer) { return readLine(filer, L"AcDbXline"); }
Acad::ErrorStatus AcDbXline::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeLine(filer, L"AcDbXline");
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbXline)
