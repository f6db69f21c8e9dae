#pragma once

#include "acarray.h"
#include "gepnt2d.h"
#include "gepnt3d.h"

class AcDbArc;
class AcDbCurve;
class AcDbEntity;
class AcDbExtents;
class AcDbHatch;
class AcDbLine;
class AcDbPolyline;
class CMetaFileDC;
class CString;

/// Draws entities on a metafile: pen strokes, texts and solid polygons.
///
/// A drawing's point becomes the device's by the integer parts of x and -y; z is dropped. The picture is thus
/// no finer than one drawing unit, which is why the export tools scale before they draw. Values beyond 32
/// bits are cut to that range; what is no number counts as 0.
///
/// Null, and what cannot be read of an entity, draws nothing and is not told.
class VEXOAcad2MetaFile {
public:
    void DrawLine(CMetaFileDC& dc, AcDbLine* line);
    /// Ends change places for an arc whose normal is -z.
    void DrawArc(CMetaFileDC& dc, AcDbArc* arc);
    /// Segment by segment: arcs as arcs, all else as strokes.
    void DrawPoly(CMetaFileDC& dc, AcDbPolyline* polyline);
    /// Any other curve, in 100 equal steps of its parameter, which are added up: rounding decides about the
    /// last stroke. A curve whose parameters begin where they end, or lie so far out that a step is lost in
    /// them, draws nothing.
    void DrawCurve(CMetaFileDC& dc, AcDbCurve* curve);
    /// An AcDbText or AcDbMText, centred on the base line at its insertion point, whatever its alignment. The
    /// face is the style's font file, not its typeface; ".shx" in it, in small letters alone, is taken out,
    /// and at most 31 characters are left. The font's height is the integer part of 1.2 times the text's
    /// (below 5/6 of a unit 0, the platform's default), its angle the integer part in tenths of a degree: 30
    /// degrees are 299. A bold style has weight 700, any other that of the font that is current. Line by line
    /// codes of a text (%%c) stand as they are. A text without a style has the drawing's standard one.
    void DrawTextW(CMetaFileDC& dc, AcDbEntity* text);
    /// Each loop filled by itself in the hatch's colour, with the current pen around it; islands are not left
    /// out. The colour of a hatch by layer is the layer's, index 7 is black. An edge that is no line adds 10
    /// points of it. Only in the loop whose index is one less than its number of edges do lines add their end
    /// points: callers' pictures are so.
    void DrawHatch(CMetaFileDC& dc, AcDbHatch* hatch);
    /// The text of an AcDbText, or of the first piece of an exploded AcDbMText; empty where there is none.
    /// False, and empty, for null.
    bool GetTextContetns(AcDbEntity* text, CString& contents);

private:
    void Segment(CMetaFileDC& dc, const AcGePoint3d& from, const AcGePoint3d& to);
    void Arc(CMetaFileDC& dc, const AcDbExtents& box, const AcGePoint3d& start, const AcGePoint3d& end);
    /// The points' y are the device's already.
    void FillContour(CMetaFileDC& dc, AcArray<AcGePoint2d> contour, unsigned long colour);
};
