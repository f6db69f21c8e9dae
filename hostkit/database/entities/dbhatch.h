// Stand-in for the host's AcDbHatch. Covers loops, islands, patterns and their lines, fill and the kept gradient; leaves out following its sources.
#pragma once

#include "dbent.h"
#include "gecurv2d.h"
#include "groupblock.h"
#include "hatchlines.h"

#include <string>
#include <vector>

/// A filled or patterned region. Loops are 2d in the coordinates of the normal, at the elevation.
class AcDbHatch : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbHatch)

public:
    enum HatchLoopType {
        kDefault = 0,
        kExternal = 1,
        kPolyline = 2,
        kDerived = 4,
        kTextbox = 8,
        kOutermost = 16,
        kNotClosed = 32
    };
    enum HatchEdgeType { kLine = 1, kCirArc = 2, kEllArc = 3, kSpline = 4 };
    // Of a fixed type, so that any number of a file or a caller has a place.
    enum HatchPatternType : int { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
    enum HatchStyle : int { kNormal = 0, kOuter = 1, kIgnore = 2 };

    AcDbHatch() = default;
    AcDbHatch(const AcDbHatch&) = default;

    double elevation() const { return m_elevation; }
    Acad::ErrorStatus setElevation(double elevation);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool associative() const { return m_associative; }
    Acad::ErrorStatus setAssociative(bool associative);
    bool isSolidFill() const { return m_solidFill; }
    HatchStyle hatchStyle() const { return static_cast<HatchStyle>(m_style); }
    Acad::ErrorStatus setHatchStyle(HatchStyle style);

    HatchPatternType patternType() const { return static_cast<HatchPatternType>(m_patternType); }
    const wchar_t* patternName() const { return m_patternName.c_str(); }
    /// "SOLID" fills. The predefined type with a name of predefinedPatterns() takes that pattern's definition
    /// lines at the hatch's angle and scale of now: set those before. Every other name keeps the definition
    /// lines that the hatch has. eInvalidInput for null and empty.
    Acad::ErrorStatus setPattern(HatchPatternType type, const wchar_t* name);
    /// Radians. As with the scale, the definition lines stay as they are until setPattern is called.
    double patternAngle() const { return m_patternAngle; }
    Acad::ErrorStatus setPatternAngle(double angle);
    double patternScale() const { return m_patternScale; }
    Acad::ErrorStatus setPatternScale(double scale);
    /// Between the lines of a user-defined pattern, and whether others cross them; taken when setPattern is
    /// called. The space stands where the scale does.
    double patternSpace() const { return m_patternScale; }
    Acad::ErrorStatus setPatternSpace(double space) { return setPatternScale(space); }
    bool patternDouble() const { return m_patternDouble; }
    Acad::ErrorStatus setPatternDouble(bool isDouble);
    int numPatternDefinitions() const { return static_cast<int>(m_patternLines.size()); }
    Acad::ErrorStatus getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                             double& offsetX, double& offsetY, AcGeDoubleArray& dashes) const;
    Acad::ErrorStatus setPatternDefinitions(std::vector<hostkit::HatchPatternLine> lines);

    int numLoops() const { return static_cast<int>(m_loops.size()); }
    /// HatchLoopType bits; 0 for an index that is none.
    Adesk::Int32 loopTypeAt(int index) const;
    /// A loop as edges: the curves (AcGeLineSeg2d, AcGeCircArc2d, AcGeEllipArc2d, AcGeNurbCurve2d) are new
    /// and belong to the caller; the types are HatchEdgeType. A polyline loop comes as its segments.
    /// eInvalidIndex.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGeVoidPointerArray& edges,
                                AcArray<int>& edgeTypes) const;
    /// A polyline loop as vertices and bulges; eNotApplicable for one of edges.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                AcGeDoubleArray& bulges) const;
    const std::vector<hostkit::HatchLoop>& loops() const { return m_loops; }
    /// Bulges may be empty. eInvalidInput: fewer than two vertices, another count of bulges, values that are
    /// no numbers. A closing vertex equal to the first is dropped.
    Acad::ErrorStatus appendLoop(Adesk::Int32 type, const AcGePoint2dArray& vertices,
                                 const AcGeDoubleArray& bulges);
    /// The curves stay the caller's and are copied. eInvalidInput for a curve of another kind or unequal
    /// counts.
    Acad::ErrorStatus appendLoop(Adesk::Int32 type, const AcGeVoidPointerArray& edges,
                                 const AcArray<int>& edgeTypes);
    Acad::ErrorStatus removeLoopAt(int index);
    /// The entities that an associative hatch follows.
    AcDbObjectIdArray getAssocObjIds() const;
    /// What is filled, by the loops' nesting and the style; loops must not cross or touch. eNotApplicable for
    /// loops that are not closed.
    Acad::ErrorStatus getArea(double& area) const;

    /// Whether the hatch has something to show. eDegenerateGeometry: no loops, or none with an area;
    /// eInvalidInput: a pattern without definition lines, or with values that are no numbers; eOutOfRange:
    /// more than hostkit::kMostHatchStrokes dashes and dots. These are counted as if the box of the loops
    /// were filled, which takes no time, or, with underestimateNumLines, one by one where they are.
    Acad::ErrorStatus evaluateHatch(bool underestimateNumLines = false) const;
    /// What is filled, in the coordinates of the normal; see HatchArea.
    hostkit::HatchArea filledArea(double deviation = 0.0) const;
    /// The definition lines as they stand, scaled and turned.
    const std::vector<hostkit::HatchPatternLine>& patternDefinitions() const { return m_patternLines; }
    /// A line a dash and a point a dot, with the hatch's look. eNotApplicable for a solid fill; else as
    /// evaluateHatch(true), and `parts` keeps what it had.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbHatch(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    Acad::ErrorStatus appendLoop(hostkit::HatchLoop&& loop);

    bool m_solidFill = false;
    bool m_associative = false;
    bool m_patternDouble = false;
    Adesk::Int16 m_style = kNormal;
    Adesk::Int16 m_patternType = kPreDefined;
    double m_elevation = 0.0;
    double m_elevationX = 0.0; ///< the first two numbers of the elevation point, zero in every sound file
    double m_elevationY = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    std::wstring m_patternName;
    double m_patternAngle = 0.0;
    double m_patternScale = 1.0;
    double m_pixelSize = 0.0;
    bool m_hasPixelSize = false;
    std::vector<hostkit::HatchLoop> m_loops;
    std::vector<hostkit::HatchPatternLine> m_patternLines;
    std::vector<AcGePoint2d> m_seedPoints;
    hostkit::GroupBlock m_gradient; ///< groups 450 to 470 as read
};
