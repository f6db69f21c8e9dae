// Stand-in for the host's AcDbEntity. Covers the common properties, extents, transforms and intersections; leaves out grips, snap points, subentities, plot styles and materials.
#pragma once

#include "dbextents.h"
#include "dbobject.h"

#include "acarray.h"
#include "dbcolor.h"
#include "gegbl.h"

typedef AcArray<void*> AcDbVoidPtrArray;

namespace hostkit {
class SubentityList;
}

/// What has a place and a look in a drawing.
///
/// Coordinates: points of lines, 3d polylines, points, rays, xlines, splines, ellipses and dimensions stand
/// in world coordinates. Arcs, circles, texts, light and 2d polylines, block references, hatches, solids and
/// traces keep their points in the coordinates of their normal, by the arbitrary-axis rule, in a drawing
/// file; the members here take and give world coordinates unless they say otherwise.
///
/// Setters refuse values that are infinite or no numbers (eInvalidInput). A constructor cannot: it keeps what
/// it is given, and a drawing with such an entity cannot be saved until the value is set anew.
class AcDbEntity : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbEntity)

public:
    AcDbEntity();
    AcDbEntity(const AcDbEntity&) = default;

    /// The block record that the entity stands in; null for a non-resident one.
    AcDbObjectId blockId() const;

    // The look. With `doSubents` vertices and attributes that the entity owns follow; those that are open
    // elsewhere keep theirs.

    AcCmColor color() const { return m_color; }
    AcCmEntityColor entityColor() const { return m_color; }
    Adesk::UInt16 colorIndex() const { return m_color.colorIndex(); }
    Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true,
                               AcDbDatabase* database = nullptr);
    /// 0 by block, 256 by layer; eOutOfRange above 257.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);

    AcDbObjectId layerId() const { return m_layerId; }
    /// The layer's name, from acutNewString; null for an entity that has no layer.
    wchar_t* layer() const;
    /// eKeyNotFound: no such layer; eNoDatabase: neither the entity nor the host has a drawing.
    Acad::ErrorStatus setLayer(const wchar_t* name, bool doSubents = true);
    /// eNotThatKindOfClass: the id is not a layer's; eInvalidInput: of another drawing.
    Acad::ErrorStatus setLayer(AcDbObjectId id, bool doSubents = true, bool allowHiddenLayer = false);

    AcDbObjectId linetypeId() const { return m_linetypeId; }
    wchar_t* linetype() const;
    Acad::ErrorStatus setLinetype(const wchar_t* name, bool doSubents = true);
    Acad::ErrorStatus setLinetype(AcDbObjectId id, bool doSubents = true);
    double linetypeScale() const { return m_linetypeScale; }
    /// eInvalidInput unless above 0.
    Acad::ErrorStatus setLinetypeScale(double scale, bool doSubents = true);

    AcDb::LineWeight lineWeight() const { return static_cast<AcDb::LineWeight>(m_lineWeight); }
    /// eInvalidInput for a weight that is none of the enumeration.
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, bool doSubents = true);

    AcDb::Visibility visibility() const { return m_invisible ? AcDb::kInvisible : AcDb::kVisible; }
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, bool doSubents = true);

    /// Layer, linetype, colour, weight and scale as the drawing's header has them for new entities; the
    /// host's working drawing where none is given.
    void setDatabaseDefaults(AcDbDatabase* database = nullptr);
    /// Layer, linetype, colour, weight, scale and visibility of another entity.
    Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* other, bool doSubents = true);
    /// The entity counts as changed and is shown anew when it is closed. With false nothing is done: that
    /// takes no change back, and with draw() behind it asks to see an entity again that is as before.
    Acad::ErrorStatus recordGraphicsModified(Adesk::Boolean modified = Adesk::kTrue);
    /// Whoever watches the drawing's display is told now that the entity is to be drawn again. It need only
    /// be open for read; eNotOpenForRead. Nothing is told of a non-resident one: eOk.
    Acad::ErrorStatus draw();

    /// Colour, layer, linetype, its scale and lineweight become those of the traits. kDrawableIsAnEntity, and
    /// kDrawableIsInvisible where it is.
    Adesk::UInt32 setAttributes(AcGiDrawableTraits* traits) override;

    /// The box of the geometry, without widths and thickness; where a kind does not say otherwise, of what
    /// its worldDraw draws. eInvalidExtents: the entity has none (an infinite or empty one), `extents` stays
    /// as it was.
    virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
    /// Moves the entity and what it owns, with the extended data of each (hostkit::ExtendedDataMotion says
    /// which values follow, and how). eCannotScaleNonUniformly: the matrix does not keep angles and the class
    /// needs that; eInvalidInput: the matrix is singular or has values that are no numbers, or a value of the
    /// extended data would be none; eNotApplicable: the kind cannot be moved at all. On failure nothing
    /// moves.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
    /// A moved non-resident copy that belongs to the caller.
    virtual Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const;
    /// The entity's own coordinate system for this kind: the arbitrary-axis system of its normal, or the
    /// identity.
    virtual void getEcs(AcGeMatrix3d& matrix) const;
    virtual bool isPlanar() const { return false; }
    /// Non-resident entities that belong to the caller are appended. eNotApplicable where a kind has no
    /// parts.
    virtual Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const;

    /// Appends the points where the two meet in space, in the order of this entity's parameter. Each crossing
    /// once, also at a vertex; where curves run together, the ends of the common run; a line that only
    /// touches an arc gives none. Markers are taken for callers' sake and have no effect. eNotApplicable for
    /// kinds that have no curves.
    virtual Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                            AcGePoint3dArray& points, Adesk::IntPtr thisMarker = 0,
                                            Adesk::IntPtr otherMarker = 0) const;
    /// As above for the two entities' projections on the plane; the points lie on this entity.
    virtual Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                            const AcGePlane& projectionPlane, AcGePoint3dArray& points,
                                            Adesk::IntPtr thisMarker = 0,
                                            Adesk::IntPtr otherMarker = 0) const;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// The class' part of transformBy: its geometry, and all of what the entity owns.
    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix);
    /// The entities that this one owns; null for a class that owns none.
    virtual hostkit::SubentityList* subentities();
    void listOwned(std::vector<AcDbObjectId>& owned) const override;
    std::size_t takeBack(AcDbObjectId part) override;
    void giveBack(AcDbObjectId part, std::size_t place) override;

    struct Filing; ///< the groups of a drawing file
    friend class hostkit::DatabaseAccess;
    bool m_invisible = false;
    Adesk::Int16 m_lineWeight = AcDb::kLnWtByLayer;
    AcCmEntityColor m_color;
    AcDbObjectId m_layerId;    ///< null while the entity has met no drawing
    AcDbObjectId m_linetypeId; ///< null means by layer
    double m_linetypeScale = 1.0;
};
