#include "dbcircle.h"

#include "curvegeometry.h"
#include "dbarc.h"
#include "fielditems.h"

HOSTKIT_KIT_CLASS(AcDbCircle, AcDbCurve, L"CIRCLE")

bool AcDbCircle::geometry(hostkit::CurveGeometry& geometry) const {
    if (!(m_radius > 0.0)) return false;
    geometry.set(AcGeCircArc3d(center(), m_normal, m_radius));
    return true;
}

AcDbCurve* AcDbCircle::piece(double from, double to) const {
    AcDbArc* result = new AcDbArc(center(), m_normal, m_radius, from, to);
    (void)result->setThickness(m_thickness);
    return result;
}

Acad::ErrorStatus AcDbCircle::reverseCurve() {
    const Acad::ErrorStatus status = setNormal(-m_normal); // it runs counter-clockwise about its normal
    if (status == Acad::eOk) m_thickness = -m_thickness;
    return status;
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbCircle)
