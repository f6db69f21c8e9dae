// The way into a drawing for readers and writers: adding without opening, spans, owners and handles; leaves
// out all checks of open state.
#pragma once

#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dbent.h"
#include "dbobject.h"
#include "dbsymboltable.h"
#include "subentitylist.h"

#include <memory>

namespace hostkit {

class BlockUsers;
class DisplayChanges;
class OwnedObjects;
class PickIndex;

enum class TableKind : unsigned char {
    kBlock,
    kLayer,
    kTextStyle,
    kLinetype,
    kView,
    kUcs,
    kViewport,
    kRegApp,
    kDimStyle
};
constexpr int tableCount = 9;

/// Nothing here opens, closes or marks as changed what it touches, and nothing asks whether it may.
class DatabaseAccess {
public:
    /// The drawing takes a non-resident object under that handle (0: the next free one). It is not open.
    /// Null, and the object stays the caller's, when the handle has an object already.
    static AcDbObjectId add(AcDbDatabase& database, AcDbObject* object, AcDbHandleValue handle,
                            AcDbObjectId owner);
    /// As above, and as a new object that is open for write; its parts come along. Null for an object that is
    /// in a drawing, and for no object. Where memory is short the object stays the caller's, as it was.
    static AcDbObjectId addOpen(AcDbDatabase& database, AcDbObject* object, AcDbObjectId owner,
                                AcDbHandleValue handle = 0);
    /// Takes an object out again that has just come in by addOpen, for whoever cannot enter it elsewhere: it
    /// is the caller's, its handle stays without an object. Its parts stay with it.
    static void withdraw(AcDbDatabase& database, AcDbObject& object) noexcept;
    /// The id of a handle, without an object if none has come yet. Null for handle 0.
    static AcDbObjectId reserve(AcDbDatabase& database, AcDbHandleValue handle);
    /// The id of a handle, or null.
    static AcDbObjectId find(const AcDbDatabase& database, AcDbHandleValue handle);
    /// The object behind an id, open or not.
    static AcDbObject* object(AcDbObjectId id) { return id.stub() ? id.stub()->object : nullptr; }
    template <typename T>
    static T* objectOf(AcDbObjectId id) {
        return T::cast(object(id));
    }
    /// Calls f(AcDbObject&) for every object in the order in which their ids were made, erased ones too.
    template <typename F>
    static void forEachObject(const AcDbDatabase& database, F&& f) {
        for (std::size_t i = 0, count = stubCount(database); i < count; ++i)
            if (AcDbObject* found = stubAt(database, i)->object) f(*found);
    }
    static std::size_t stubCount(const AcDbDatabase& database);
    static AcDbStub* stubAt(const AcDbDatabase& database, std::size_t index);

    static ChangeLog& changes(AcDbDatabase& database);
    static OwnedObjects& ownedObjects(AcDbDatabase& database);
    static BlockUsers& blockUsers(AcDbDatabase& database);
    static DisplayChanges& display(AcDbDatabase& database);
    static std::unique_ptr<PickIndex>& picking(AcDbDatabase& database);
    /// What a document says of its drawing.
    static void setMayWrite(AcDbDatabase& database, bool may) { database.m_mayWrite = may; }

    static void setOwner(AcDbObject& object, AcDbObjectId owner) { object.takeOwner(owner); }
    static void setSource(AcDbObject& object, SourceSpan span) { object.m_source = PackedSource(span); }
    /// What a reader calls when an object has its fields: as if never touched.
    static void markUnchanged(AcDbObject& object) {
        object.m_flags &= static_cast<Adesk::UInt8>(~(AcDbObject::kModified | AcDbObject::kNew));
        object.m_source.setModified(false);
    }
    /// The drawing has an object of another class in an object's place: its id, owner, extended data,
    /// dictionary and reactors are that one's, which is deleted. Neither is open.
    static void takePlace(std::unique_ptr<AcDbObject> object, AcDbObject& earlier);
    static void markChanged(AcDbObject& object) { object.m_source.setModified(true); }
    static void setExtendedData(AcDbObject& object, GroupBlock&& data);
    static void setExtensionDictionary(AcDbObject& object, AcDbObjectId id);
    static void setPersistentReactors(AcDbObject& object, std::vector<AcDbObjectId>&& ids);
    static const std::vector<AcDbObjectId>& persistentReactors(const AcDbObject& object);
    /// As the record has it, erased or not.
    static AcDbObjectId extensionDictionary(const AcDbObject& object);

    /// The name that a field of the object was read with and that no table had; null where there is none.
    static const std::wstring* unknownName(const AcDbObject& object, short code);
    static void setUnknownName(AcDbObject& object, short code, std::wstring_view name);
    static void forgetUnknownName(AcDbObject& object, short code);

    /// The groups of an object within the object's record, from its mark on; null where there are none.
    static GroupBlock* embedded(const AcDbObject& object);
    static GroupBlock& madeEmbedded(AcDbObject& object);
    static void dropEmbedded(AcDbObject& object);

    /// A bit for each group code of an entity's look; 0 for other codes.
    static Adesk::UInt32 lookBit(short code);
    /// A group of the look into the entity. False where its value has no place there.
    static bool readLook(AcDbEntity& entity, const AcDbDxfGroup& group, AcDbDxfFiler& filer);
    static void setLayer(AcDbEntity& entity, AcDbObjectId layer) { entity.m_layerId = layer; }
    static void setLinetype(AcDbEntity& entity, AcDbObjectId linetype) { entity.m_linetypeId = linetype; }

    /// The entity is in the drawing and has the block as its owner.
    static void appendToBlock(AcDbBlockTableRecord& block, AcDbObjectId entity) {
        block.m_entities.push_back(entity);
    }
    static void setBlockRecords(AcDbBlockTableRecord& block, AcDbObjectId begin, AcDbObjectId end) {
        block.m_beginId = begin;
        block.m_endId = end;
    }
    /// What a file's flags say of a block without a name of its own.
    static void markAnonymous(AcDbBlockTableRecord& block) { block.m_dxfFlags |= 1; }
    static void setLayout(AcDbBlockTableRecord& block, AcDbObjectId layout) { block.m_layoutId = layout; }
    /// The parts of an entity that has some; null for others.
    static SubentityList* parts(AcDbEntity& entity);

    static void setRecordName(AcDbSymbolTableRecord& record, std::wstring_view name) { record.m_name = name; }
    /// The record was given another name than before: its table finds it by the new one, and the header
    /// follows. False, and the record has its old name again, where another record has the new one.
    static bool followName(AcDbSymbolTableRecord& record, std::wstring_view oldName);
    /// The same without asking anybody, the header left as it is.
    static void forceName(AcDbSymbolTableRecord& record, std::wstring_view name);
    /// The record is in the drawing and has its name. A second one of a name is a record too, but is not
    /// found by it.
    static void enterRecord(AcDbSymbolTable& table, AcDbSymbolTableRecord& record) { table.enter(record); }
    /// An entry whose object may come later.
    static void putEntry(AcDbDictionary& dictionary, std::wstring_view name, AcDbObjectId id) {
        dictionary.put(name, id);
    }

    static AcDbObjectId table(const AcDbDatabase& database, TableKind kind);
    static void setTable(AcDbDatabase& database, TableKind kind, AcDbObjectId id);
    static void setNamedObjectsDictionary(AcDbDatabase& database, AcDbObjectId id);
    static void setSource(AcDbDatabase& database, std::shared_ptr<const DrawingSource> source,
                          std::wstring_view file);
    /// Adds what every drawing has and this one lacks: tables, standing records, spaces, dictionaries,
    /// layouts.
    static void completeDrawing(AcDbDatabase& database);
};

} // namespace hostkit
