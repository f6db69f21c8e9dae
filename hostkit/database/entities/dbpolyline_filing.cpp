#include "dbpolyline.h"

#include "fielditems.h"
#include "fieldtable.h"

#include <algorithm>

using namespace hostkit;

struct AcDbPolyline::Filing {
    static constexpr GroupField<AcDbPolyline> head[] = {
        realField<&AcDbPolyline::m_constantWidth>(43, 0.0),
        realField<&AcDbPolyline::m_elevation>(38, 0.0),
        realField<&AcDbPolyline::m_thickness>(39, 0.0),
        normalField<&AcDbPolyline::m_normal>(),
    };
    static constexpr short pointCode = 10;
    static constexpr short startWidthCode = 40;
    static constexpr short endWidthCode = 41;
    static constexpr short bulgeCode = 42;
    static constexpr short flagsCode = 70;
    static constexpr short countCode = 90;
    static constexpr Adesk::Int64 closedFlag = 1;
    static constexpr Adesk::Int64 plinegenFlag = 128;

    /// A vertex may lack widths and bulge; what was never filed stays without memory.
    static bool readVertexGroup(AcDbPolyline& polyline, const AcDbDxfGroup& group) {
        if (group.code == pointCode) {
            polyline.m_points.emplace_back(group.point[0], group.point[1]);
            if (!polyline.m_bulges.empty()) polyline.m_bulges.push_back(0.0);
            if (!polyline.m_widths.empty()) polyline.m_widths.emplace_back(0.0, 0.0);
            return true;
        }
        if (polyline.m_points.empty()) return false;
        if (group.code == bulgeCode) {
            if (group.real != 0.0) polyline.m_bulges.resize(polyline.m_points.size());
            if (!polyline.m_bulges.empty()) polyline.m_bulges.back() = group.real;
            return true;
        }
        if (group.code != startWidthCode && group.code != endWidthCode) return false;
        polyline.m_widths.resize(polyline.m_points.size());
        (group.code == startWidthCode ? polyline.m_widths.back().first : polyline.m_widths.back().second) =
            group.real;
        return true;
    }

    static bool readCountGroup(AcDbPolyline& polyline, const AcDbDxfGroup& group) {
        constexpr Adesk::Int64 mostReserved =
            4096; // a count may lie; the vertices themselves say how many there are
        if (group.code == countCode) {
            polyline.m_points.reserve(
                static_cast<std::size_t>(std::clamp<Adesk::Int64>(group.integer, 0, mostReserved)));
            return true;
        }
        if (group.code != flagsCode) return false;
        polyline.m_closed = (group.integer & closedFlag) != 0;
        polyline.m_plinegen = (group.integer & plinegenFlag) != 0;
        return (group.integer & ~(closedFlag | plinegenFlag)) == 0;
    }

    /// Widths that are all the constant one need no memory.
    static void dropEvenWidths(AcDbPolyline& polyline) {
        const std::pair<double, double> even(polyline.m_constantWidth, polyline.m_constantWidth);
        if (std::all_of(polyline.m_widths.begin(), polyline.m_widths.end(),
                        [&](const auto& width) { return width == even; }))
            polyline.m_widths = {};
    }

    static void writeVertices(const AcDbPolyline& polyline, AcDbDxfFiler& filer) {
        const bool hasWidths = !polyline.m_widths.empty();
        const std::pair<double, double> even(polyline.m_constantWidth, polyline.m_constantWidth);
        for (std::size_t place = 0; place < polyline.m_points.size(); ++place) {
            const std::pair<double, double>& width = hasWidths ? polyline.m_widths[place] : even;
            const double bulge = polyline.m_bulges.empty() ? 0.0 : polyline.m_bulges[place];
            filer.writeItem(pointCode, polyline.m_points[place]);
            if (!hasWidths || width.first == 0.0) filer.markDefault();
            filer.writeReal(startWidthCode, width.first);
            if (!hasWidths || width.second == 0.0) filer.markDefault();
            filer.writeReal(endWidthCode, width.second);
            if (bulge == 0.0) filer.markDefault();
            filer.writeReal(bulgeCode, bulge);
        }
    }
};

Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbPolyline")) return status;
    m_points.clear();
    m_bulges.clear();
    m_widths.clear();
    status = readFields(*filer, Filing::head, *this, [this](const AcDbDxfGroup& group) {
        return Filing::readVertexGroup(*this, group) || Filing::readCountGroup(*this, group);
    });
    Filing::dropEvenWidths(*this);
    return status;
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbPolyline");
    filer->writeInteger(Filing::countCode, static_cast<Adesk::Int64>(m_points.size()));
    filer->writeInteger(Filing::flagsCode,
                        (m_closed ? Filing::closedFlag : 0) | (m_plinegen ? Filing::plinegenFlag : 0));
    const auto& [width, elevation, thickness, normal] = Filing::head;
    if (!m_widths.empty()) filer->markDefault(); // the vertices' own widths count
    width.write(*this, width, *filer);
    elevation.write(*this, elevation, *filer);
    thickness.write(*this, thickness, *filer);
    Filing::writeVertices(*this, *filer);
    normal.write(*this, normal, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbPolyline)
