#include "dbarc.h"

#include "fielditems.h"
#include "fieldtable.h"

#include <cmath>
#include <numbers>

using namespace hostkit;

struct AcDbArc::Filing {
    // The arc's circle has a subclass of its own in a file.
    static constexpr GroupField<AcDbArc> circle[] = {
        realField<&AcDbArc::m_thickness>(39, 0.0),
        pointField<&AcDbArc::m_ecsCenter>(10),
        realField<&AcDbArc::m_radius>(40),
        normalField<&AcDbArc::m_normal>(),
    };
    static constexpr GroupField<AcDbArc> arc[] = {
        angleField<&AcDbArc::m_startAngle>(50),
        angleField<&AcDbArc::m_endAngle>(51),
    };

    static double withinTurn(double angle) {
        constexpr double turn = 2.0 * std::numbers::pi;
        if (angle >= 0.0 && angle < turn) return angle;
        const double rest = std::fmod(angle, turn);
        const double positive = rest < 0.0 ? rest + turn : rest;
        return positive < turn ? positive : 0.0;
    }
};

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status == Acad::eOk && filer->atSubclassData(L"AcDbCircle"))
        status = readFields(*filer, Filing::circle, *this);
    if (status == Acad::eOk && filer->atSubclassData(L"AcDbArc"))
        status = readFields(*filer, Filing::arc, *this);
    m_startAngle = Filing::withinTurn(m_startAngle);
    m_endAngle = Filing::withinTurn(m_endAngle);
    return status;
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbCircle");
    writeFields(*filer, Filing::circle, *this);
    filer->writeSubclassMark(L"AcDbArc");
    writeFields(*filer, Filing::arc, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbArc)
