// Stand-in for the host's AcDbBlockTableRecord. Covers its entities, base point, kind and layout; leaves out external references' loading and the reverse look-up of insertions.
#pragma once

#include "dbent.h"
#include "dbsymboltablerecord.h"

#include <vector>

class AcDbBlockTableRecordIterator;

/// A block's entities in order. *Model_Space and *Paper_Space are blocks too.
class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord)

public:
    AcDbBlockTableRecord() = default;
    /// A copy has no entities.
    AcDbBlockTableRecord(const AcDbBlockTableRecord& other);

    /// The block takes the entity, which stays open for write until the caller closes it. Without a layer of
    /// this drawing it gets the current one, without a linetype of it the layer's. eAlreadyInDb,
    /// eNullEntityPointer, eNotOpenForWrite, eNoDatabase for a block of no drawing, eCyclicReference for a
    /// reference or a dimension whose block is this one or holds it (of a space, which hardly anything shows,
    /// only the former is found out); the entity then stays the caller's.
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    /// The caller deletes the iterator, which is usable as long as the drawing lives.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;
    /// Every entity in order, erased ones too.
    const std::vector<AcDbObjectId>& entities() const { return m_entities; }

    AcGePoint3d origin() const { return m_origin; }
    /// eInvalidInput for coordinates that are infinite or no numbers.
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    const std::wstring& comments() const { return m_comments; }
    Acad::ErrorStatus setComments(const wchar_t* text);
    /// The file of an external reference; empty for other blocks.
    const std::wstring& pathName() const { return m_pathName; }

    /// One of the spaces.
    bool isLayout() const;
    bool isAnonymous() const;
    bool isFromExternalReference() const { return (m_dxfFlags & 4) != 0; }
    bool isFromOverlayReference() const { return (m_dxfFlags & 8) != 0; }
    bool hasAttributeDefinitions() const;
    AcDbObjectId getLayoutId() const { return m_layoutId; }
    Acad::ErrorStatus setLayoutId(AcDbObjectId id);
    Adesk::Int16 blockInsertUnits() const { return m_insertUnits; }

    /// The records that open and close the block in a drawing file; null for a block that was made here.
    AcDbObjectId blockBeginId() const { return m_beginId; }
    AcDbObjectId blockEndId() const { return m_endId; }

    /// Blocks with names of their own; *U, *D and the like ask for a number.
    bool allowsName(std::wstring_view name) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbBlockTableRecord(*this); }

    /// The fields of the table's record. Those of the block itself are its begin record's to file.
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// All but the entities, which come and go one by one.
    AcDbBlockTableRecord& operator=(const AcDbBlockTableRecord& other);
    /// The spaces stay. The entities of an erased block are erased with it.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend class hostkit::ChangeLog;
    friend class hostkit::DatabaseAccess;
    friend class AcDbBlockBegin;
    struct Filing;
    void listOwned(std::vector<AcDbObjectId>& owned) const override;
    std::size_t takeBack(AcDbObjectId entity) override;
    void giveBack(AcDbObjectId entity, std::size_t place) override;

    std::vector<AcDbObjectId> m_entities;
    AcGePoint3d m_origin;
    std::wstring m_comments;
    std::wstring m_pathName;
    AcDbObjectId m_layoutId;
    AcDbObjectId m_beginId;
    AcDbObjectId m_endId;
    Adesk::Int16 m_insertUnits = 0;
    Adesk::Int16 m_explodability = 1; ///< group 280
    Adesk::Int16 m_scalability = 0;   ///< group 281
};

/// Walks a block's entities. An entity that is appended or erased during the walk is met or passed over as
/// its turn comes.
class AcDbBlockTableRecordIterator {
public:
    AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& block, bool atBeginning, bool skipDeleted)
        : m_block(block) {
        start(atBeginning, skipDeleted);
    }
    virtual ~AcDbBlockTableRecordIterator() = default;

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const { return m_index >= m_block.entities().size(); }
    void step(bool forward = true, bool skipDeleted = true);
    /// eInvalidIndex when done; the arguments stay.
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    /// eKeyNotFound, and no move, when the entity is not of this block.
    Acad::ErrorStatus seek(AcDbObjectId id);
    Acad::ErrorStatus seek(const AcDbEntity* entity);
    AcDbObjectId blockTableRecord() const { return m_block.objectId(); }

private:
    void skipErased(bool forward);

    const AcDbBlockTableRecord& m_block;
    std::size_t m_index = 0;
};
