// Stand-in for the host's AcDb2dPolyline. Covers the old-style polyline with vertices of their own; leaves out fitting.
#pragma once

#include "db2dvertex.h"
#include "dbobjectiterator.h"
#include "polylinecurve.h"
#include "subentitylist.h"

/// An old-style polyline in one plane. Its curve is made by the vertices that are not control points of a
/// frame.
class AcDb2dPolyline : public hostkit::PolylineCurve {
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline)

public:
    AcDb2dPolyline() = default;
    /// Of non-resident vertices at these points (z is dropped), without bulges where the array is null.
    AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& points, double elevation,
                   Adesk::Boolean closed, double startWidth = 0.0, double endWidth = 0.0,
                   const AcGeDoubleArray* bulges = nullptr);
    AcDb2dPolyline(const AcDb2dPolyline&) = default;

    AcDb::Poly2dType polyType() const;
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();
    double elevation() const { return m_elevation; }
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double defaultStartWidth() const { return m_startWidth; }
    double defaultEndWidth() const { return m_endWidth; }
    /// World coordinates of a vertex.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;

    /// Appends a vertex. With a polyline that is in a drawing the vertex enters it too and is open for write
    /// afterwards; otherwise the polyline owns it.
    Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
    /// After the vertex of that id or (non-resident) that pointer; null for the front.
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, AcDbObjectId after, AcDb2dVertex* vertex);
    Acad::ErrorStatus insertVertexAt(const AcDb2dVertex* after, AcDb2dVertex* vertex);
    /// Opens a vertex of a polyline in a drawing, for the caller to close.
    Acad::ErrorStatus openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    /// The caller deletes the iterator. For a non-resident polyline its `entity` gives the vertices, else
    /// `objectId`.
    AcDbObjectIterator* vertexIterator() const;
    const hostkit::SubentityList& vertices() const { return m_vertices; }

    Adesk::Boolean isClosed() const override;
    Acad::ErrorStatus reverseCurve() override;
    hostkit::PolylineShape shape(hostkit::VertexBuffer& buffer) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    /// Lines and arcs (PolylineCurve::explodeFlat).
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override {
        return explodeFlat(m_normal, m_thickness, parts);
    }
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDb2dPolyline(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    AcDbCurve* piece(double from, double to) const override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    struct Filing;
    hostkit::SubentityList* subentities() override { return &m_vertices; }
    Adesk::Int16 m_dxfFlags = 0;  ///< group 70: closed, fit, spline, linetype generation
    Adesk::Int16 m_curveType = 0; ///< group 75
    double m_elevation = 0.0;
    double m_thickness = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_startWidth = 0.0;
    double m_endWidth = 0.0;
    hostkit::SubentityList m_vertices;
};
