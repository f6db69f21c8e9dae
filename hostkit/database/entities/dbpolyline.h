// Stand-in for the host's light polyline. Covers vertices with bulges and widths in one plane; leaves out vertex identifiers and grips.
#pragma once

#include "gearc2d.h"
#include "gearc3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "polylinecurve.h"

#include <utility>
#include <vector>

/// Straight and circular segments in one plane. Vertices are 2d points in the coordinates of the normal
/// (arbitrary-axis rule) at the elevation. A bulge is tan(sweep / 4) of the segment that begins at its
/// vertex, positive when it turns counter-clockwise about the normal. A closed polyline has a last segment
/// back to vertex 0. Memory: 16 bytes a vertex, and 8 more for bulges and 16 more for widths where any vertex
/// has one.
class AcDbPolyline : public hostkit::PolylineCurve {
    ACRX_DECLARE_MEMBERS(AcDbPolyline)

public:
    enum SegType { kLine = 0, kArc = 1, kCoincident = 2, kPoint = 3, kEmpty = 4 };

    AcDbPolyline() = default;
    /// Room for that many vertices.
    explicit AcDbPolyline(unsigned int vertexCount);
    AcDbPolyline(const AcDbPolyline&) = default;

    unsigned int numVerts() const { return static_cast<unsigned int>(m_points.size()); }
    /// Before the vertex at `index`; numVerts appends. A width below 0 means the constant width.
    /// eInvalidIndex; eInvalidInput for values that are no numbers.
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge = 0.0,
                                  double startWidth = -1.0, double endWidth = -1.0);
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& point) const;
    /// In world coordinates.
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
    /// eInvalidInput when the vertices' widths differ.
    Acad::ErrorStatus getConstantWidth(double& width) const;
    Acad::ErrorStatus setConstantWidth(double width);
    bool hasBulges() const { return !m_bulges.empty(); }
    bool hasWidth() const;
    bool isOnlyLines() const;

    /// Of the segment from vertex `index`: kPoint for the last vertex of an open polyline and for the only
    /// one, kCoincident for a zero-length segment, kEmpty for an index that is none.
    SegType segType(unsigned int index) const;
    /// eNotApplicable for a segment of the other kind; eInvalidIndex. 2d forms are in the coordinates of the
    /// normal.
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg2d& segment) const;
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg3d& segment) const;
    Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc2d& arc) const;
    /// The arc's normal is turned so that it runs from vertex to vertex counter-clockwise about it.
    Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const;
    /// The point of a segment is at this fraction of it.
    Adesk::Boolean onSegAt(unsigned int index, const AcGePoint2d& point, double& fraction) const;

    void setClosed(Adesk::Boolean closed);
    /// Keeps the first `vertexCount` vertices with `reuse`, else none.
    void reset(Adesk::Boolean reuse, unsigned int vertexCount);
    double elevation() const { return m_elevation; }
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool hasPlinegen() const { return m_plinegen; }
    void setPlinegen(bool plinegen);

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
    AcRxObject* clone() const override { return new AcDbPolyline(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    AcDbCurve* piece(double from, double to) const override;

private:
    struct Filing; ///< the groups of a drawing file
    bool m_closed = false;
    bool m_plinegen = false;
    std::vector<AcGePoint2d> m_points;
    std::vector<double> m_bulges;                    ///< empty: all 0
    std::vector<std::pair<double, double>> m_widths; ///< empty: all m_constantWidth
    double m_constantWidth = 0.0;
    double m_elevation = 0.0;
    double m_thickness = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};
