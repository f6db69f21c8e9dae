// Stand-in for the host's AcDbBlockReference. Covers the insertion of a block with its attributes; leaves out dynamic blocks and clipping.
#pragma once

#include "dbent.h"
#include "dbobjectiterator.h"
#include "gescl3d.h"
#include "subentitylist.h"

/// A block put at a place, scaled and turned.
class AcDbBlockReference : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbBlockReference)

public:
    AcDbBlockReference() = default;
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block)
        : m_ecsPosition(position)
        , m_blockId(block) {}
    AcDbBlockReference(const AcDbBlockReference&) = default;

    AcDbObjectId blockTableRecord() const { return m_blockId; }
    /// eNotThatKindOfClass for what is no block record; eCyclicReference for a block that holds the
    /// reference.
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGeScale3d scaleFactors() const { return m_scale; }
    /// eInvalidInput for a factor of 0 or one that is no number.
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& factors);
    double rotation() const { return m_rotation; }
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return m_normal; }
    /// The position stays where it is in the world.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    /// From the block's coordinates to the world's, base point and all.
    AcGeMatrix3d blockTransform() const;
    /// Takes position, scales, rotation and normal from a matrix; eCannotScaleNonUniformly for one that
    /// skews, eInvalidInput for a singular one. Scales keep the signs that they had, but that of x turns
    /// round where the matrix mirrors.
    Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& matrix);

    /// The attribute becomes the reference's; with a reference that is in a drawing it enters it and is open
    /// for write afterwards.
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, class AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(class AcDbAttribute* attribute);
    /// eKeyNotFound: the attribute is not this reference's.
    Acad::ErrorStatus openAttribute(class AcDbAttribute*& attribute, AcDbObjectId id, AcDb::OpenMode mode,
                                    bool openErased = false) const;
    /// The caller deletes the iterator.
    AcDbObjectIterator* attributeIterator() const;
    const hostkit::SubentityList& attributes() const { return m_attributes; }

    /// From the first to the last column of copies, and row; zero for a single one.
    virtual void getCopySpread(AcGeVector3d& columns, AcGeVector3d& rows) const {
        columns = rows = AcGeVector3d::kIdentity;
    }

    /// The entities of the block as seen, as copies, and the visible attributes as texts; a block that is
    /// scaled unequally gives eCannotScaleNonUniformly for parts that cannot follow, and no parts at all.
    /// eNullObjectId for a reference without a block.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;
    const wchar_t* dxfName() const override { return L"INSERT"; }

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    /// Of what is shown: the block's entities wherever it is turned to, blocks in blocks, and the visible
    /// attributes; definitions of attributes count when they are constant. hostkit::BlockExtents tells what
    /// becomes of blocks that hold themselves and of very deep and very large ones.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    AcRxObject* clone() const override { return new AcDbBlockReference(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// The attributes move along. eCannotScaleNonUniformly for a matrix that skews the block's axes. Nothing
    /// moves when an attribute cannot be opened for write, and the status is that of opening it.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    /// How often the block is shown, and where each time, from the first on.
    virtual int copyCount() const { return 1; }
    virtual AcGeMatrix3d copyTransform(int) const { return blockTransform(); }
    /// The class' mark in a drawing file.
    virtual const wchar_t* subclassMark() const { return L"AcDbBlockReference"; }
    /// The groups of rows and columns, for the class that has some.
    virtual bool readArrayGroup(const AcDbDxfGroup& group, AcDbDxfFiler& filer);
    virtual void writeArrayGroups(AcDbDxfFiler& filer) const;

    hostkit::SubentityList* subentities() override { return &m_attributes; }
    struct Filing;
    struct Placement;
    void place(const Placement& placement, const AcGePoint3d& position);

    AcGePoint3d m_ecsPosition;
    AcGeScale3d m_scale{1.0, 1.0, 1.0};
    double m_rotation = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcDbObjectId m_blockId;
    hostkit::SubentityList m_attributes;
};
