// Stand-in for the host's AcDbModelerGeometry. Covers the data of solids, regions and bodies, motions, looks, extents and snap points; leaves out materials and subentities.
#pragma once

#include "dbent.h"
#include "modelerenums.h"

#include <memory>
#include <string>

namespace AModeler {
class Body;
}
namespace hostkit {
class ModelerContent;
struct ModelerFiling;
using ModelerContentPtr = std::shared_ptr<const ModelerContent>;
} // namespace hostkit

/// What has a body. The data are kept as they were read; the body is made of them when it is first needed.
/// Data that are not understood (free-form faces) are kept whole: the entity is filed, copied and erased as
/// any, draws nothing, and every question of its geometry gives eNotApplicable (of its extents
/// eInvalidExtents); bodyFault says why.
class AcDbModelerGeometry : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbModelerGeometry)

public:
    AcDbModelerGeometry(const AcDbModelerGeometry&) = default;

    /// Without data.
    Adesk::Boolean isNull() const { return m_content == nullptr; }
    /// In words, why there is no body to work on; empty where there is one, and for a null one.
    std::wstring bodyFault() const;
    /// A copy of the body, curved faces as facets. eNullPtr: the entity is null; eNotApplicable: kept whole,
    /// or a sheet.
    Acad::ErrorStatus getBody(AModeler::Body& body) const;

    /// Of all faces, both sides of a sheet once; curved ones exactly.
    Acad::ErrorStatus getArea(double& area) const;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// Ends and middles of edges that are straight or arcs, centres of arcs; nearest: the point of an edge
    /// that is nearest to `picked`. Other modes give none. Points are appended.
    Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode mode, Adesk::IntPtr marker, const AcGePoint3d& picked,
                                     const AcGePoint3d& last, const AcGeMatrix3d& view,
                                     AcGePoint3dArray& points, AcDbIntArray& geometryIds) const;
    /// Edges as they are, arcs as chords; between facets of one surface the four lines of each turn that lie
    /// on quarters.
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    AcDbModelerGeometry() = default;
    /// A body that is understood is rewritten in its new place, curved faces as such; of one that is not a
    /// motion without a change of size is written into the data's own transform. Any other motion of such a
    /// one: eNotApplicable. eCannotScaleNonUniformly: the matrix does not keep angles.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus setBody(const AModeler::Body& body);
    Acad::ErrorStatus setContent(hostkit::ModelerContentPtr content);
    /// eNullPtr or eNotApplicable where there is none.
    Acad::ErrorStatus findBody(const AModeler::Body*& body) const;

    hostkit::ModelerContentPtr m_content;

private:
    friend struct hostkit::ModelerFiling;
    struct Filing;
    Adesk::Int16 m_dataForm = 1; ///< group 70
    bool m_hasBodyFlag = true;   ///< group 290
    std::wstring m_bodyId;       ///< group 2
};
