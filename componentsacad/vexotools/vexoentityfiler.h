#pragma once

#include "acadstrc.h"

class AcDbArc;
class AcDbCircle;
class AcDbDwgFiler;
class AcDbDxfFiler;
class AcDbEllipse;
class AcDbEntity;
class AcDbHatch;
class AcDbLine;
class AcDbPolyline;
class AcDbSpline;

/// Plain entities within an object of the application: written into the owner's stream and read back by
/// value, in the binary and in the text filer. The format lies in drawings; docs/entity-records.md has it as
/// tables.
///
/// Filed are an entity's geometry and its colour index. What else it has (layer, linetype, true colour; a
/// line's thickness; a polyline's way of linetype; fit points of a spline; scale, angle, lines and sources of
/// a hatch's pattern) is not. A loop of a hatch is filed by its edges, and comes back as edges where it was a
/// polyline.
///
/// All give the filer's status unless told otherwise, and eNullEntityPointer (20) for a null filer or, of a
/// single kind, a null entity. Values that the entity refuses (infinite ones, a negative radius, a loop
/// without edges), and an entity that is not open for write, stay as they are there; the status tells of the
/// filer alone.
///
/// Reading takes the items in their order. The entity gets its geometry when all items before the colour are
/// read, and the colour behind them: what is damaged before the colour leaves the entity as it was, a damaged
/// colour leaves it with the new geometry. Vertices and loops that it had are replaced. Records of version 1
/// have no colour, and the entity keeps its own; of a colour the 16 low bits count. Version 3 or above gives
/// eMakeMeProxy (301), and nothing behind it is read. In a text filer a group of another code than the one
/// that is due goes back into the filer, which fails with eBadDxfSequence (50) and the text "\nError:
/// expected group code %d"; so does a record that ends early, where nothing goes back. Counts below 0 and
/// numbers that are no edge type fail likewise, with a text of their own, in a binary filer with
/// eDwgObjectImproperlyRead. No memory is taken for items that do not follow.
class VEXOEntityFiler {
public:
    // An entity of any class, behind its class' name. Null is filed as an empty name and comes back as null.

    /// An entity that is none of the seven kinds below is filed by its class alone, and comes back empty.
    static Acad::ErrorStatus dwgOutFieldsEntity(AcDbDwgFiler* filer, AcDbEntity const* entity);
    static Acad::ErrorStatus dxfOutFieldsEntity(AcDbDxfFiler* filer, AcDbEntity const* entity);
    /// A new entity, which belongs to the caller, also where the status tells of damage within its kind's
    /// record; null first, whatever the pointer was. Version 2 or above: eMakeMeProxy (301). A class that is
    /// not known: eInvalidSymbolTableName (34); one that cannot be made, or whose objects are no entities:
    /// eNullEntityPointer.
    static Acad::ErrorStatus dwgInFieldsEntity(AcDbDwgFiler* filer, AcDbEntity*& entity);
    static Acad::ErrorStatus dxfInFieldsEntity(AcDbDxfFiler* filer, AcDbEntity*& entity);

    // Entities of one kind. Written is always version 2.

    static Acad::ErrorStatus dwgOutFieldsLine(AcDbDwgFiler* filer, AcDbLine const* line);
    static Acad::ErrorStatus dwgInFieldsLine(AcDbDwgFiler* filer, AcDbLine* line);
    static Acad::ErrorStatus dxfOutFieldsLine(AcDbDxfFiler* filer, AcDbLine const* line);
    static Acad::ErrorStatus dxfInFieldsLine(AcDbDxfFiler* filer, AcDbLine* line);

    static Acad::ErrorStatus dwgOutFieldsArc(AcDbDwgFiler* filer, AcDbArc const* arc);
    static Acad::ErrorStatus dwgInFieldsArc(AcDbDwgFiler* filer, AcDbArc* arc);
    static Acad::ErrorStatus dxfOutFieldsArc(AcDbDxfFiler* filer, AcDbArc const* arc);
    static Acad::ErrorStatus dxfInFieldsArc(AcDbDxfFiler* filer, AcDbArc* arc);

    static Acad::ErrorStatus dwgOutFieldsPolyline(AcDbDwgFiler* filer, AcDbPolyline const* polyline);
    static Acad::ErrorStatus dwgInFieldsPolyline(AcDbDwgFiler* filer, AcDbPolyline* polyline);
    static Acad::ErrorStatus dxfOutFieldsPolyline(AcDbDxfFiler* filer, AcDbPolyline const* polyline);
    static Acad::ErrorStatus dxfInFieldsPolyline(AcDbDxfFiler* filer, AcDbPolyline* polyline);

    static Acad::ErrorStatus dwgOutFieldsCircle(AcDbDwgFiler* filer, AcDbCircle const* circle);
    static Acad::ErrorStatus dwgInFieldsCircle(AcDbDwgFiler* filer, AcDbCircle* circle);
    static Acad::ErrorStatus dxfOutFieldsCircle(AcDbDxfFiler* filer, AcDbCircle const* circle);
    static Acad::ErrorStatus dxfInFieldsCircle(AcDbDxfFiler* filer, AcDbCircle* circle);

    static Acad::ErrorStatus dwgOutFieldsEllipse(AcDbDwgFiler* filer, AcDbEllipse const* ellipse);
    static Acad::ErrorStatus dwgInFieldsEllipse(AcDbDwgFiler* filer, AcDbEllipse* ellipse);
    static Acad::ErrorStatus dxfOutFieldsEllipse(AcDbDxfFiler* filer, AcDbEllipse const* ellipse);
    static Acad::ErrorStatus dxfInFieldsEllipse(AcDbDxfFiler* filer, AcDbEllipse* ellipse);

    /// A spline without data files zeros, which no spline takes.
    static Acad::ErrorStatus dwgOutFieldsSpline(AcDbDwgFiler* filer, AcDbSpline const* spline);
    static Acad::ErrorStatus dwgInFieldsSpline(AcDbDwgFiler* filer, AcDbSpline* spline);
    static Acad::ErrorStatus dxfOutFieldsSpline(AcDbDxfFiler* filer, AcDbSpline const* spline);
    static Acad::ErrorStatus dxfInFieldsSpline(AcDbDxfFiler* filer, AcDbSpline* spline);

    static Acad::ErrorStatus dwgOutFieldsHatch(AcDbDwgFiler* filer, AcDbHatch const* hatch);
    static Acad::ErrorStatus dwgInFieldsHatch(AcDbDwgFiler* filer, AcDbHatch* hatch);
    static Acad::ErrorStatus dxfOutFieldsHatch(AcDbDxfFiler* filer, AcDbHatch const* hatch);
    static Acad::ErrorStatus dxfInFieldsHatch(AcDbDxfFiler* filer, AcDbHatch* hatch);
};
