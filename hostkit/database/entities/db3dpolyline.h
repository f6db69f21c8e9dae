// Stand-in for the host's AcDb3dPolyline. Covers straight segments in space with vertices of their own; leaves out fitting.
#pragma once

#include "db3dvertex.h"
#include "dbobjectiterator.h"
#include "polylinecurve.h"
#include "subentitylist.h"

/// Straight segments in space. Its curve is made by the vertices that are not control points of a frame.
class AcDb3dPolyline : public hostkit::PolylineCurve {
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline)

public:
    AcDb3dPolyline() = default;
    /// Of non-resident vertices at these points.
    AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& points, Adesk::Boolean closed);
    AcDb3dPolyline(const AcDb3dPolyline&) = default;

    AcDb::Poly3dType polyType() const;
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();

    /// Appends a vertex. With a polyline that is in a drawing the vertex enters it too and is open for write
    /// afterwards; otherwise the polyline owns it.
    Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
    /// After the vertex of that id or (non-resident) that pointer; null for the front.
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, AcDbObjectId after, AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus insertVertexAt(const AcDb3dPolylineVertex* after, AcDb3dPolylineVertex* vertex);
    /// Opens a vertex of a polyline in a drawing, for the caller to close.
    Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    /// The caller deletes the iterator. For a non-resident polyline its `entity` gives the vertices, else
    /// `objectId`.
    AcDbObjectIterator* vertexIterator() const;
    const hostkit::SubentityList& vertices() const { return m_vertices; }
    /// Its sides as lines.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;

    Adesk::Boolean isClosed() const override;
    Acad::ErrorStatus reverseCurve() override;
    hostkit::PolylineShape shape(hostkit::VertexBuffer& buffer) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDb3dPolyline(*this); }
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
    Adesk::Int16 m_dxfFlags = 8;  ///< group 70: closed, spline, 3d
    Adesk::Int16 m_curveType = 0; ///< group 75
    hostkit::SubentityList m_vertices;
};
