#include "dbsol3d.h"

#include "amerror.h"
#include "dbbody.h"
#include "dbregion.h"
#include "fieldtable.h"
#include "geplane.h"
#include "modelercontent.h"
#include "raisedface.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDb3dSolid, AcDbModelerGeometry, L"3DSOLID")

namespace {

// What a modeller's operation throws is its refusal; the operands are as they were.
template <class Work>
Acad::ErrorStatus refusedAs(Acad::ErrorStatus refusal, Work&& work) {
    try {
        return work();
    } catch (const AModeler::Error&) {
        return refusal;
    }
}

} // namespace

Acad::ErrorStatus AcDb3dSolid::extrude(const AcDbRegion* region, double height, double taper) {
    const bool isSound = region && !region->isNull() && std::isfinite(height) && height != 0.0 &&
                         std::abs(taper) < std::numbers::pi / 2.0;
    if (!isSound) return Acad::eInvalidInput;
    const modeler::Polyhedron* const sheet = ModelerFiling::content(*region)->facets();
    if (!sheet || sheet->faces.size() != 1) return Acad::eCannotExtrudeRegion;
    return refusedAs(Acad::eCannotExtrudeRegion, [&] {
        const std::optional<AModeler::Body> body =
            modeler::raisedFace(*sheet, *ModelerFiling::content(*region)->shape(), height, taper);
        return body ? setBody(*body) : Acad::eCannotExtrudeRegion;
    });
}

Acad::ErrorStatus AcDb3dSolid::getSlice(const AcGePlane& plane, Adesk::Boolean getNegHalfToo,
                                        AcDb3dSolid*& negHalf) {
    const AModeler::Body* body = nullptr;
    Acad::ErrorStatus status = findBody(body);
    if (status != Acad::eOk) return status;
    return refusedAs(Acad::eDegenerateGeometry, [&] {
        AModeler::Body front = *body, back;
        front.section(AModeler::Plane(plane.pointOnPlane(), -plane.normal()));
        if (front.isNull()) return Acad::eNoIntersections;
        if (getNegHalfToo) {
            back = *body;
            back.section(AModeler::Plane(plane.pointOnPlane(), plane.normal()));
        }
        status = setBody(front);
        if (status != Acad::eOk || !getNegHalfToo) return status;
        negHalf = nullptr;
        if (back.isNull()) return Acad::eOk;
        negHalf = new AcDb3dSolid;
        (void)negHalf->setPropertiesFrom(this);
        return negHalf->setBody(back);
    });
}

Acad::ErrorStatus AcDb3dSolid::booleanOper(AcDb::BoolOperType operation, AcDb3dSolid* other) {
    if (!other || other == this) return Acad::eInvalidInput;
    const AModeler::Body *mine = nullptr, *its = nullptr;
    Acad::ErrorStatus status = findBody(mine);
    if (status == Acad::eOk) status = other->findBody(its);
    if (status == Acad::eOk) status = assertWriteEnabled();
    if (status == Acad::eOk) status = other->assertWriteEnabled();
    if (status != Acad::eOk) return status;
    return refusedAs(Acad::eDegenerateGeometry, [&] {
        const AModeler::BooleanOperationType kind = operation == AcDb::kBoolUnite      ? AModeler::kUnion
                                                    : operation == AcDb::kBoolSubtract ? AModeler::kSubtract
                                                                                       : AModeler::kIntersect;
        const Acad::ErrorStatus set = setBody(mine->boolOper(kind, *its));
        return set == Acad::eOk ? other->setContent(nullptr) : set;
    });
}

Acad::ErrorStatus AcDb3dSolid::getMassProp(double& volume, AcGePoint3d& centroid, AcDbExtents& box) const {
    const AModeler::Body* body = nullptr;
    const Acad::ErrorStatus status = findBody(body);
    if (status != Acad::eOk) return status;
    volume = m_content->volume();
    centroid = body->centerOfGravity();
    box = m_content->extents();
    return Acad::eOk;
}

namespace {

/// A symmetric matrix turned until it is diagonal, each turn taking one entry beside the diagonal to 0
/// (Jacobi's way).
struct PrincipalAxes {
    double entry[3][3];
    AcGeVector3d axes[3] = {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};

    void run() {
        constexpr int mostRounds = 12; // what is left is squared in each, from the third or so on
        for (int round = 0; round < mostRounds; ++round)
            for (int i = 0; i < 3; ++i) turn(i, (i + 1) % 3);
        for (int i : {0, 1, 0})
            if (entry[i][i] > entry[i + 1][i + 1]) {
                std::swap(entry[i][i], entry[i + 1][i + 1]);
                std::swap(axes[i], axes[i + 1]);
            }
        axes[2] = axes[0].crossProduct(axes[1]);
    }

private:
    void turn(int i, int j) {
        if (entry[i][j] == 0.0) return;
        // The smaller of the two turns that do it, at most 45 degrees: the larger ones may go round without
        // end.
        const double apart = entry[j][j] - entry[i][i], sense = apart < 0.0 ? -1.0 : 1.0;
        const double angle = 0.5 * std::atan2(2.0 * sense * entry[i][j], sense * apart);
        const double c = std::cos(angle), s = std::sin(angle);
        for (auto& row : entry) {
            const double first = row[i];
            row[i] = c * first - s * row[j];
            row[j] = s * first + c * row[j];
        }
        for (int k = 0; k < 3; ++k) {
            const double first = entry[i][k];
            entry[i][k] = c * first - s * entry[j][k];
            entry[j][k] = s * first + c * entry[j][k];
        }
        entry[i][j] = entry[j][i] = 0.0;
        const AcGeVector3d first = axes[i];
        axes[i] = first * c - axes[j] * s;
        axes[j] = first * s + axes[j] * c;
    }
};

} // namespace

Acad::ErrorStatus AcDb3dSolid::getMassProp(double& volume, AcGePoint3d& centroid, double momentsOfInertia[],
                                           double products[], double principalMoments[],
                                           AcGeVector3d principalAxes[], double radiiOfGyration[],
                                           AcDbExtents& box) const {
    const AModeler::Body* body = nullptr;
    Acad::ErrorStatus status = findBody(body);
    if (status == Acad::eOk) status = getMassProp(volume, centroid, box);
    if (status != Acad::eOk) return status;
    const AModeler::Body::SecondMoments second = body->secondMoments();
    const double content = body->volume();
    const double moments[] = {second.yy + second.zz, second.zz + second.xx, second.xx + second.yy};
    const double mixed[] = {second.xy, second.yz, second.zx};
    std::copy_n(moments, 3, momentsOfInertia);
    std::copy_n(mixed, 3, products);
    for (int i = 0; i < 3; ++i)
        radiiOfGyration[i] = content > 0.0 ? std::sqrt(std::max(0.0, moments[i] / content)) : 0.0;
    const AcGeVector3d c = centroid.asVector();
    const double square = c.lengthSqrd();
    PrincipalAxes own{};
    for (unsigned int i = 0; i < 3; ++i) {
        const unsigned int j = (i + 1) % 3; // mixed[i] is of the axes i and j
        own.entry[i][i] = moments[i] - content * (square - c[i] * c[i]);
        own.entry[i][j] = own.entry[j][i] = content * c[i] * c[j] - mixed[i];
    }
    own.run();
    for (int i = 0; i < 3; ++i) {
        principalMoments[i] = own.entry[i][i];
        principalAxes[i] = own.axes[i];
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dSolid::explode(AcDbVoidPtrArray& parts) const {
    if (!m_content) return Acad::eNullPtr;
    const modeler::Shape* const shape = m_content->shape();
    if (!shape) return Acad::eNotApplicable;
    for (const modeler::Shape::Face& face : shape->faces) {
        const bool isFlat = face.surface.kind == modeler::ShapeSurface::Kind::plane;
        AcDbModelerGeometry* part = nullptr;
        if (isFlat)
            part = new AcDbRegion;
        else
            part = new AcDbBody;
        (void)part->setPropertiesFrom(this);
        ModelerFiling::setContent(*part,
                                  std::make_shared<const ModelerContent>(modeler::sheetOf(*shape, face)));
        parts.append(part);
    }
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

namespace {

constexpr short historyCode = 350;

} // namespace

Acad::ErrorStatus AcDb3dSolid::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbModelerGeometry::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDb3dSolid")) return status;
    AcDbDxfGroup group;
    Acad::ErrorStatus read = filer->readItem(group);
    for (; read == Acad::eOk; read = filer->readItem(group)) {
        m_hasHistoryGroup |= group.code == historyCode;
        filer->rejectItem();
    }
    return read == Acad::eEndOfObject ? Acad::eOk : read;
}

// Solids have a history since the 2007 form; 0 is none.
Acad::ErrorStatus AcDb3dSolid::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbModelerGeometry::dxfOutFields(filer);
    if (status != Acad::eOk || filer->dwgVersion() < AcDb::kDHL_1021) return status;
    filer->writeSubclassMark(L"AcDb3dSolid");
    if (!m_hasHistoryGroup) filer->writeHandle(historyCode, 0);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb3dSolid::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbModelerGeometry::dwgOutFields(filer);
    return status == Acad::eOk ? filer->writeBool(m_hasHistoryGroup) : status;
}

Acad::ErrorStatus AcDb3dSolid::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbModelerGeometry::dwgInFields(filer);
    return status == Acad::eOk ? filer->readBool(&m_hasHistoryGroup) : status;
}
