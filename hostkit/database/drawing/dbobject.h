// Stand-in for the host's AcDbObject. Covers identity, open state, erase, extended data, extension dictionary, persistent reactors and filing; leaves out deep clone, proxies and long transactions. What has nothing to show draws nothing.
#pragma once

#include "dbfiler.h"
#include "dbmaindefs.h"
#include "dbsource.h"

#include "acgidrawable.h"
#include "dbid.h"
#include "rxboiler.h"

#include <memory>

struct resbuf;
class AcDbDatabase;
namespace hostkit {
class ChangeLog;
class DatabaseAccess;
class GroupBlock;
struct ObjectExtras;
} // namespace hostkit

/// What a drawing holds. An object is made by its class' constructor and belongs to its maker until a
/// container takes it; from then on it belongs to the drawing, has an id, and is used between open and close.
/// An object of no drawing (non-resident: null id) needs no opening and may always be written.
///
/// Every member that changes the object calls assertWriteEnabled before the first change and refuses with its
/// status.
class AcDbObject : public AcGiDrawable {
    ACRX_DECLARE_MEMBERS(AcDbObject)

public:
    AcDbObject();
    ~AcDbObject() override;
    /// A copy is non-resident: it has the values and the extended data, but no id, owner, extension
    /// dictionary or reactors. Put into its original's drawing, it is saved with what no class reads of the
    /// original's record.
    AcDbObject(const AcDbObject& other);

    AcDbObjectId objectId() const { return m_id; }
    AcDbObjectId id() const final { return m_id; }
    AcDbObjectId ownerId() const { return (m_flags & kCopy) != 0 ? AcDbObjectId() : m_ownerId; }
    /// A container calls this as it takes the object in; ids of another drawing are refused with
    /// eInvalidInput.
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    AcDbDatabase* database() const { return m_id.database(); }
    void getAcDbHandle(AcDbHandle& handle) const { handle = m_id.handle(); }
    AcDbHandle handle() const { return m_id.handle(); }

    // Open state; docs/open-modes.md tables every state and request.

    /// Ends one open: the notify one first, then the write one, then one reader. What a transaction holds is
    /// not closed by this. eNotInDatabase for a non-resident object, eInvalidOpenState when nothing is open.
    /// After the last close the pointer is not to be used.
    Acad::ErrorStatus close();
    /// From one reader to writing; what a transaction alone holds for reading, it holds for writing then.
    /// eLockViolation where nobody may write, eOnLockedLayer for an entity whose layer is locked.
    Acad::ErrorStatus upgradeOpen();
    /// From writing to one reader.
    Acad::ErrorStatus downgradeOpen();
    /// Closes as if it had not been opened: the object, what it took in meanwhile and what was erased along
    /// with it are what they were before. A new object leaves the drawing. It stays open and changed where it
    /// cannot be what it was: eNotImplementedYet for a class of an application that does not file its fields,
    /// eDuplicateKey for a record of a table whose earlier name another one has meanwhile.
    Acad::ErrorStatus cancel();
    /// What the object owns is erased and restored with it. An erased object can be restored with false.
    /// eWasErased / eWasNotErased when it is so already, eCannotBeErasedByCaller for what every drawing
    /// needs.
    Acad::ErrorStatus erase(Adesk::Boolean erasing = Adesk::kTrue);

    bool isReadEnabled() const {
        return m_id.isNull() || m_id.stub()->readers > 0 ||
               (m_id.stub()->openMode & ~hostkit::kOpenForNotify) != 0;
    }
    bool isWriteEnabled() const {
        return m_id.isNull() ||
               (m_id.stub()->openMode & (hostkit::kOpenForWrite | hostkit::kHeldForWrite)) != 0;
    }
    bool isNotifyEnabled() const {
        return !m_id.isNull() && (m_id.stub()->openMode & hostkit::kOpenForNotify) != 0;
    }
    /// The next close is the last: no more than one open is left. What a transaction holds does not count.
    bool isReallyClosing() const;
    Adesk::Boolean isErased() const { return m_id.isErased(); }
    /// Changed since it was opened.
    Adesk::Boolean isModified() const { return (m_flags & kModified) != 0; }
    /// Came into the drawing during the present open.
    Adesk::Boolean isNewObject() const { return (m_flags & kNew) != 0; }
    bool isAProxy() const { return false; }

    Adesk::UInt32 setAttributes(AcGiDrawableTraits*) override { return kDrawableNone; }
    Adesk::Boolean worldDraw(AcGiWorldDraw*) override { return Adesk::kTrue; }
    Adesk::Boolean isPersistent() const final { return !m_id.isNull(); }

    /// eOk, or eNotOpenForRead.
    Acad::ErrorStatus assertReadEnabled() const {
        return isReadEnabled() || isNotifyEnabled() ? Acad::eOk : Acad::eNotOpenForRead;
    }
    /// eOk, and the object counts as changed; or eNotOpenForWrite, and the caller must change nothing.
    Acad::ErrorStatus assertWriteEnabled(Adesk::Boolean autoUndo = Adesk::kTrue,
                                         Adesk::Boolean recordModified = Adesk::kTrue);

    // Extended data, extension dictionary, reactors.

    /// The records of one application, or of all with null, as a list that belongs to the caller (acutRelRb):
    /// 1001 with the application's name first. Null when there are none.
    resbuf* xData(const wchar_t* applicationName = nullptr) const;
    /// Replaces the records of each application that the list names; an application's name alone removes its
    /// records. Values are cut to the widths of the drawing. eInvalidResBuf: a list that does not begin with
    /// 1001 or has other codes than 1000 to 1071, or a real or coordinate that is infinite or no number.
    /// eRegappIdNotFound: an application that the object's drawing has not registered. eXdataSizeExceeded:
    /// more than 16,383 bytes. The old records stay on failure.
    Acad::ErrorStatus setXData(const resbuf* list);
    bool hasXData() const;
    /// The compact block, or null; for filers.
    const hostkit::GroupBlock* extendedData() const;
    /// Replaces the whole block, unchecked but for its form; for filers.
    Acad::ErrorStatus setExtendedData(hostkit::GroupBlock&& data);

    /// Null when there is none or it was erased.
    AcDbObjectId extensionDictionary() const;
    /// eOk also when there is one. eNoDatabase for a non-resident object.
    Acad::ErrorStatus createExtensionDictionary();
    /// Erases an empty one. eContainerNotEmpty, eKeyNotFound.
    Acad::ErrorStatus releaseExtensionDictionary();

    /// Ids of objects that hear of this one; kept and filed, each once.
    Acad::ErrorStatus addPersistentReactor(AcDbObjectId id);
    Acad::ErrorStatus removePersistentReactor(AcDbObjectId id);
    bool hasPersistentReactor(AcDbObjectId id) const;
    AcDbObjectIdArray persistentReactors() const;
    /// What acdbIsPersistentReactor and acdbPersistentReactorObjectId tell of, in the order of adding; null
    /// when there are none. Good until the reactors change or the object is closed. There are no others than
    /// persistent ones here.
    const AcArray<void*>* reactors() const;

    /// A non-resident copy that belongs to the caller; null for classes without.
    AcRxObject* clone() const override;

    // Filing. See AcDbDxfFiler for the order of calls.

    /// Whole record: own fields, then extended data.
    virtual Acad::ErrorStatus dxfIn(AcDbDxfFiler* filer);
    virtual Acad::ErrorStatus dxfOut(AcDbDxfFiler* filer) const;
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;
    /// Whole record in the binary form: owner, reactors and extension dictionary as ids, own fields, extended
    /// data with the ids of its applications. A non-resident object takes fields and extended data alone, as
    /// a copy does.
    Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
    Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
    /// The kit's classes file the groups of their text form as items; what an object owns (entities of a
    /// block, vertices, records of a table) is not filed with it. A class of an application calls its
    /// parent's and files its own items behind. An object that is known only by its record (AcDbOpaqueObject)
    /// can be filed for undo and not for copies: eNotApplicable.
    virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer);
    virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const;
    /// The record's name in a drawing; its class' by default.
    virtual const wchar_t* dxfName() const;

    /// Where the object's record stands in the drawing's source bytes; empty for a new object.
    hostkit::SourceSpan sourceSpan() const { return m_source.span(); }
    /// Of a copy within one drawing: where the original's record stands, which has what no class reads.
    hostkit::SourceSpan originalSpan() const { return m_source.originalSpan(); }
    /// Changed, or made, since the drawing was read; not so for what a reader gave to a drawing that lacked
    /// it.
    bool isChangedSinceRead() const { return m_source.isModified(); }
    /// Changed since the drawing was read, or new: its record must be written from the fields.
    bool differsFromSource() const { return m_source.isModified() || m_source.span().isEmpty(); }

protected:
    /// All values, the owner and the standing in the source, but not the identity: how a drawing puts back
    /// what an object was. Others use the setters.
    AcDbObject& operator=(const AcDbObject& other);
    /// Called by erase before the state changes; a failing status refuses it.
    virtual Acad::ErrorStatus subErase(Adesk::Boolean erasing);
    /// Called by the last close after changes.
    virtual Acad::ErrorStatus subClose();
    /// Adds what the object's own fields name as its property: entities, parts, entries. An undo asks which
    /// of them go with it; its extension dictionary is known already.
    virtual void listOwned(std::vector<AcDbObjectId>& owned) const;
    /// One of them never was: its creation was taken back. The place where it was listed, or
    /// hostkit::notListed (ownedlist.h).
    virtual std::size_t takeBack(AcDbObjectId owned);
    /// The reverse: it is listed at that place again.
    virtual void giveBack(AcDbObjectId owned, std::size_t place);

    /// kRemembered, kTouched: the drawing's memory of changes was told of this open. kCopy: a copy without an
    /// owner yet, with the original in that place.
    enum ObjectFlag : Adesk::UInt8 { kModified = 1, kNew = 2, kRemembered = 4, kTouched = 8, kCopy = 16 };

private:
    friend class hostkit::ChangeLog;
    friend class hostkit::DatabaseAccess;
    friend class AcDbDatabase;
    friend class AcTransaction;
    hostkit::ObjectExtras& extras();
    void takeOwner(AcDbObjectId owner);
    Acad::ErrorStatus endWriting();

    AcDbObjectId m_id;
    AcDbObjectId m_ownerId;
    hostkit::PackedSource m_source;
    std::unique_ptr<hostkit::ObjectExtras> m_extras;

protected:
    Adesk::UInt8 m_flags = 0;
};

/// Of an entry of AcDbObject::reactors: true where it is a persistent reactor, which has an id; its id, or
/// the null id for any other.
bool acdbIsPersistentReactor(const void* reactor);
AcDbObjectId acdbPersistentReactorObjectId(const void* reactor);
