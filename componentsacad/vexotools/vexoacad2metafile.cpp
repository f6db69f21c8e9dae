#include "vexoacad2metafile.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"
#include "vexosmartopen.h"
#include "vexosmartpointer.h"

#include "cdc.h"
#include "cvxlogentry.h"
#include "dbapserv.h"
#include "dbdatabase.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dblayertablerecord.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbtextstyletablerecord.h"
#include "gearc3d.h"
#include "gecurv2d.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>
#include <memory>
#include <numbers>
#include <vector>

namespace {

constexpr int curveSteps = 100;
constexpr int edgeSamples = 10;

int integerPart(double value) {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, lowest, highest));
}

POINT devicePoint(const AcGePoint3d& point) { return {integerPart(point.x), integerPart(-point.y)}; }

struct TextLook {
    CString fontFile;
    double angle = 0.0;
    double height = 0.0;
    bool isBold = false;
    bool isItalic = false;
};

AcDbObjectId styleOf(const AcDbEntity& text, AcDbObjectId own) {
    if (!own.isNull()) return own;
    AcDbDatabase* const database =
        text.database() ? text.database() : acdbHostApplicationServices()->workingDatabase();
    return database ? database->textStyleStandard() : AcDbObjectId::kNull;
}

bool readStyle(AcDbObjectId id, TextLook& look) {
    const VEXOSmartOpen<AcDbTextStyleTableRecord> style(id, AcDb::kForRead, false);
    if (style.status() != Acad::eOk) return false;
    wchar_t* text = nullptr;
    int charset = 0, pitchAndFamily = 0;
    if (style->font(text, look.isBold, look.isItalic, charset, pitchAndFamily) != Acad::eOk) return false;
    acutDelString(text);
    if (style->fileName(text) != Acad::eOk) return false;
    look.fontFile = text;
    acutDelString(text);
    return true;
}

// Position and look; false where they cannot be read.
bool readText(AcDbEntity& entity, AcGePoint3d& position, TextLook& look) {
    AcDbObjectId style;
    if (const AcDbMText* const paragraph = AcDbMText::cast(&entity)) {
        position = paragraph->location();
        look.angle = paragraph->direction().angleTo(AcGeVector3d::kXAxis, -AcGeVector3d::kZAxis);
        look.height = paragraph->textHeight();
        style = paragraph->textStyle();
    } else if (const AcDbText* const text = AcDbText::cast(&entity)) {
        position = text->position();
        look.angle = text->rotation();
        look.height = text->height();
        style = text->textStyle();
    } else {
        return false;
    }
    look.angle = VEXOGeometryTools::GetNormalizedAngle(look.angle);
    return readStyle(styleOf(entity, style), look);
}

void changeFont(const TextLook& look, LOGFONTW& font) {
    constexpr double halfTurn = 180.0, tenths = 10.0, lineOfHeight = 1.2;
    constexpr LONG boldWeight = 700;
    const CString shapes = L".shx";
    CString face = look.fontFile;
    if (const int at = face.Find(shapes); at >= 0) face.Delete(at, shapes.GetLength());
    std::fill(std::begin(font.lfFaceName), std::end(font.lfFaceName), L'\0');
    std::wcsncpy(font.lfFaceName, face, LF_FACESIZE - 1);
    font.lfEscapement = font.lfOrientation = integerPart(look.angle * halfTurn / std::numbers::pi * tenths);
    font.lfHeight = integerPart(lineOfHeight * look.height);
    font.lfWidth = 0;
    font.lfItalic = look.isItalic;
    if (look.isBold) font.lfWeight = boldWeight;
}

COLORREF deviceColor(const AcCmColor& color) {
    const bool isForeground =
        color.isByBlock() || (color.isByACI() && color.colorIndex() == AcCmColor::kACIforeground);
    return isForeground ? RGB(0, 0, 0) : RGB(color.red(), color.green(), color.blue());
}

COLORREF deviceColor(const AcDbEntity& entity) {
    if (!entity.color().isByLayer()) return deviceColor(entity.color());
    const VEXOSmartOpen<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead, false);
    return layer.status() == Acad::eOk ? deviceColor(layer->color()) : RGB(0, 0, 0);
}

void addPoint(const AcGePoint2d& point, AcArray<AcGePoint2d>& contour) {
    contour.append(AcGePoint2d(point.x, -point.y));
}

void addEdge(const AcGeCurve2d& edge, int type, bool withEnd, AcArray<AcGePoint2d>& contour) {
    AcGePoint2d point;
    if (type == AcDbHatch::kLine) {
        if (edge.hasStartPoint(point)) addPoint(point, contour);
        if (withEnd && edge.hasEndPoint(point)) addPoint(point, contour);
    } else if (type == AcDbHatch::kCirArc || type == AcDbHatch::kEllArc || type == AcDbHatch::kSpline) {
        AcGePoint2dArray points;
        edge.getSamplePoints(edgeSamples, points);
        for (const AcGePoint2d& each : points) addPoint(each, contour);
    }
}

AcArray<AcGePoint2d> contourOf(const AcDbHatch& hatch, int loop) {
    AcArray<AcGePoint2d> contour;
    Adesk::Int32 loopType = 0;
    AcGeVoidPointerArray edges;
    AcArray<int> types;
    if (hatch.getLoopAt(loop, loopType, edges, types) != Acad::eOk) return contour;
    for (int i = 0; i < edges.length(); ++i) {
        const std::unique_ptr<AcGeCurve2d> edge(static_cast<AcGeCurve2d*>(edges[i]));
        if (edge) addEdge(*edge, types[i], loop == edges.length() - 1, contour);
    }
    return contour;
}

} // namespace

void VEXOAcad2MetaFile::Segment(CMetaFileDC& dc, const AcGePoint3d& from, const AcGePoint3d& to) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::Segment");
    const POINT first = devicePoint(from), last = devicePoint(to);
    dc.MoveTo(first.x, first.y);
    dc.LineTo(last.x, last.y);
}

void VEXOAcad2MetaFile::Arc(CMetaFileDC& dc, const AcDbExtents& box, const AcGePoint3d& start,
                            const AcGePoint3d& end) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::Arc");
    const POINT least = devicePoint(box.minPoint()), most = devicePoint(box.maxPoint());
    const RECT rect{least.x, least.y, most.x, most.y};
    dc.Arc(&rect, devicePoint(start), devicePoint(end));
}

void VEXOAcad2MetaFile::FillContour(CMetaFileDC& dc, AcArray<AcGePoint2d> contour, unsigned long colour) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::FillContour");
    if (contour.isEmpty()) return;
    std::vector<POINT> points;
    for (const AcGePoint2d& point : contour) points.push_back({integerPart(point.x), integerPart(point.y)});
    const CBrush brush(static_cast<COLORREF>(colour));
    const HGDIOBJ before = dc.SelectObject(&brush);
    dc.Polygon(points.data(), static_cast<int>(points.size()));
    dc.SelectObject(before);
}

void VEXOAcad2MetaFile::DrawLine(CMetaFileDC& dc, AcDbLine* line) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::DrawLine");
    if (line) Segment(dc, line->startPoint(), line->endPoint());
}

void VEXOAcad2MetaFile::DrawArc(CMetaFileDC& dc, AcDbArc* arc) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::DrawArc");
    if (!arc) return;
    const AcDbCircle circle(arc->center(), arc->normal(), arc->radius());
    AcDbExtents box;
    AcGePoint3d start, end;
    if (circle.getGeomExtents(box) != Acad::eOk || arc->getStartPoint(start) != Acad::eOk ||
        arc->getEndPoint(end) != Acad::eOk)
        return;
    if (arc->normal().isEqualTo(-AcGeVector3d::kZAxis)) std::swap(start, end);
    Arc(dc, box, start, end);
}

void VEXOAcad2MetaFile::DrawPoly(CMetaFileDC& dc, AcDbPolyline* polyline) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::DrawPoly");
    if (!polyline) return;
    const unsigned int vertices = polyline->numVerts();
    const unsigned int count = vertices + (polyline->isClosed() ? 1 : 0);
    for (unsigned int i = 0; i + 1 < count; ++i) {
        double bulge = 0.0;
        if (polyline->getBulgeAt(i, bulge) != Acad::eOk) continue;
        if (vexo::isArcBulge(bulge)) {
            AcGeCircArc3d segment;
            if (polyline->getArcSegAt(i, segment) != Acad::eOk) continue;
            const VEXOSmartPointer<AcDbCurve> curve(VEXOGeometryTools::TransformGe2Db(&segment));
            DrawArc(dc, AcDbArc::cast(curve.object()));
            continue;
        }
        AcGePoint3d from, to;
        if (polyline->getPointAt(i, from) == Acad::eOk &&
            polyline->getPointAt((i + 1) % vertices, to) == Acad::eOk)
            Segment(dc, from, to);
    }
}

void VEXOAcad2MetaFile::DrawCurve(CMetaFileDC& dc, AcDbCurve* curve) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::DrawCurve");
    double start = 0.0, end = 0.0;
    AcGePoint3d previous;
    if (!curve || curve->getStartParam(start) != Acad::eOk || curve->getEndParam(end) != Acad::eOk ||
        curve->getStartPoint(previous) != Acad::eOk)
        return;
    const double step = (end - start) / curveSteps;
    const double last = end + std::abs(end) * vexo::kComparisonTolerance + vexo::kComparisonTolerance;
    const auto movesOn = [step](double parameter) { return parameter + step > parameter; };
    double parameter = start;
    while (movesOn(parameter) && (parameter += step) <= last) {
        AcGePoint3d point;
        if (curve->getPointAtParam(parameter, point) != Acad::eOk) continue;
        Segment(dc, previous, point);
        previous = point;
    }
}

void VEXOAcad2MetaFile::DrawTextW(CMetaFileDC& dc, AcDbEntity* text) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::DrawTextW");
    CString contents;
    AcGePoint3d position;
    TextLook look;
    if (!GetTextContetns(text, contents) || !readText(*text, position, look)) return;
    LOGFONTW logical;
    if (GetObjectW(dc.GetCurrentObject(OBJ_FONT), sizeof logical, &logical) == 0) return;
    changeFont(look, logical);
    CFont font;
    if (!font.CreateFontIndirect(&logical)) return;
    const HGDIOBJ before = dc.SelectObject(&font);
    dc.SetTextAlign(TA_BASELINE | TA_CENTER);
    const POINT at = devicePoint(position);
    dc.TextOutW(at.x, at.y, contents);
    dc.SelectObject(before);
}

bool VEXOAcad2MetaFile::GetTextContetns(AcDbEntity* text, CString& contents) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::GetTextContetns");
    contents.Empty();
    if (!text) return false;
    wchar_t* found = nullptr;
    if (AcDbMText::cast(text)) {
        AcDbVoidPtrArray pieces;
        text->explode(pieces);
        std::vector<std::unique_ptr<AcDbEntity>> owned;
        for (void* piece : pieces) owned.emplace_back(static_cast<AcDbEntity*>(piece));
        const AcDbText* const first = owned.empty() ? nullptr : AcDbText::cast(owned.front().get());
        if (first) found = first->textString();
    } else if (const AcDbText* const line = AcDbText::cast(text)) {
        found = line->textString();
    }
    if (found) contents = found;
    acutDelString(found);
    return true;
}

void VEXOAcad2MetaFile::DrawHatch(CMetaFileDC& dc, AcDbHatch* hatch) {
    CVxLogEntry entry(L"VEXOAcad2MetaFile::DrawHatch");
    if (!hatch) return;
    const COLORREF colour = deviceColor(*hatch);
    for (int i = 0; i < hatch->numLoops(); ++i) FillContour(dc, contourOf(*hatch, i), colour);
}
