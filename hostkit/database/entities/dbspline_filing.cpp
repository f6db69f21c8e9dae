#include "dbspline.h"

#include "fielditems.h"
#include "fieldtable.h"

#include <utility>

using namespace hostkit;

struct AcDbSpline::Filing {
    static constexpr GroupField<AcDbSpline> head[] = {
        pointField<&AcDbSpline::m_normal>(210, 0.0),
        integerField<&AcDbSpline::m_dxfFlags>(70),
        integerField<&AcDbSpline::m_degree>(71),
        realField<&AcDbSpline::m_knotTolerance>(42, 1e-7),
        realField<&AcDbSpline::m_controlPointTolerance>(43, 1e-7),
        realField<&AcDbSpline::m_fitTolerance>(44, 1e-10),
    };
    static constexpr short knotCountCode = 72;
    static constexpr short controlCountCode = 73;
    static constexpr short fitCountCode = 74;
    static constexpr short startTangentCode = 12;
    static constexpr short endTangentCode = 13;
    static constexpr short knotCode = 40;
    static constexpr short weightCode = 41;
    static constexpr short controlCode = 10;
    static constexpr short fitCode = 11;
    static constexpr Adesk::Int16 closedFlag = 1;
    static constexpr Adesk::Int16 periodicFlag = 2;
    static constexpr Adesk::Int16 rationalFlag = 4;

    // The counts are not looked at: what is there counts itself.
    static bool readGroup(AcDbSpline& spline, const AcDbDxfGroup& group) {
        const AcGePoint3d point(group.point[0], group.point[1], group.point[2]);
        switch (group.code) {
        case knotCountCode:
        case controlCountCode:
        case fitCountCode:
            return true;
        case knotCode:
            spline.m_knots.append(group.real);
            return true;
        case weightCode:
            spline.m_weights.append(group.real);
            return true;
        case controlCode:
            spline.m_controlPoints.append(point);
            return true;
        case fitCode:
            spline.m_fitPoints.append(point);
            return true;
        case startTangentCode:
            spline.m_startTangent = point.asVector();
            return spline.m_hasStartTangent = true;
        case endTangentCode:
            spline.m_endTangent = point.asVector();
            return spline.m_hasEndTangent = true;
        default:
            return false;
        }
    }

    static void clear(AcDbSpline& spline) {
        spline.m_controlPoints.removeAll();
        spline.m_knots.removeAll();
        spline.m_weights.removeAll();
        spline.m_fitPoints.removeAll();
        spline.m_hasStartTangent = spline.m_hasEndTangent = false;
    }

    /// A spline may be given by its fit points alone; control points need their knots.
    static bool isSound(const AcDbSpline& spline) {
        const int points = spline.m_controlPoints.length();
        if (points == 0) return spline.m_knots.isEmpty() && spline.m_weights.isEmpty();
        constexpr int highestDegree = 25;
        if (spline.m_degree < 1 || spline.m_degree > highestDegree || points < spline.m_degree + 1)
            return false;
        if (spline.m_knots.length() != points + spline.m_degree + 1) return false;
        for (int place = 1; place < spline.m_knots.length(); ++place)
            if (spline.m_knots[place] < spline.m_knots[place - 1]) return false;
        for (const double weight : spline.m_weights)
            if (!(weight > 0.0)) return false;
        return spline.m_weights.isEmpty() || spline.m_weights.length() == points;
    }

    static void writeCounts(const AcDbSpline& spline, AcDbDxfFiler& filer) {
        filer.writeInteger(knotCountCode, spline.m_knots.length());
        filer.writeInteger(controlCountCode, spline.m_controlPoints.length());
        if (spline.m_fitPoints.isEmpty()) filer.markDefault();
        filer.writeInteger(fitCountCode, spline.m_fitPoints.length());
    }

    static void writeData(const AcDbSpline& spline, AcDbDxfFiler& filer) {
        if (spline.m_hasStartTangent) filer.writeItem(startTangentCode, spline.m_startTangent);
        if (spline.m_hasEndTangent) filer.writeItem(endTangentCode, spline.m_endTangent);
        for (const double knot : spline.m_knots) filer.writeReal(knotCode, knot);
        for (int place = 0; place < spline.m_controlPoints.length(); ++place) {
            if (place < spline.m_weights.length()) filer.writeReal(weightCode, spline.m_weights[place]);
            filer.writeItem(controlCode, spline.m_controlPoints[place]);
        }
        for (const AcGePoint3d& point : spline.m_fitPoints) filer.writeItem(fitCode, point);
    }
};

Acad::ErrorStatus AcDbSpline::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbSpline")) return status;
    Filing::clear(*this);
    status = readFields(*filer, Filing::head, *this,
                        [this](const AcDbDxfGroup& group) { return Filing::readGroup(*this, group); });
    if (status != Acad::eOk) return status;
    m_closed = (m_dxfFlags & Filing::closedFlag) != 0;
    m_periodic = (m_dxfFlags & Filing::periodicFlag) != 0;
    m_rational = !m_weights.isEmpty();
    if (Filing::isSound(*this)) return Acad::eOk;
    filer->setError(Acad::eInvalidInput,
                    L"the spline's degree, knots, weights and control points do not fit");
    return Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbSpline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbSpline");
    const auto& [normal, flags, degree, knotTolerance, controlTolerance, fitTolerance] = Filing::head;
    normal.write(*this, normal, *filer);
    const Adesk::Int16 otherFlags =
        m_dxfFlags & ~(Filing::closedFlag | Filing::periodicFlag | Filing::rationalFlag);
    filer->writeInteger(flags.code, otherFlags | (m_closed ? Filing::closedFlag : 0) |
                                        (m_periodic ? Filing::periodicFlag : 0) |
                                        (m_rational ? Filing::rationalFlag : 0));
    degree.write(*this, degree, *filer);
    Filing::writeCounts(*this, *filer);
    for (const auto* tolerance : {&knotTolerance, &controlTolerance, &fitTolerance})
        tolerance->write(*this, *tolerance, *filer);
    Filing::writeData(*this, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbSpline)
