#include "dbblocktablerecord.h"

#include "blockholding.h"
#include "casefold.h"
#include "changelog.h"
#include "dbaccess.h"
#include "dbattdef.h"
#include "dbdatabase.h"
#include "fetchahead.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "ownederasure.h"
#include "ownedlist.h"

#include <algorithm>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbBlockTableRecord, AcDbSymbolTableRecord, L"BLOCK_RECORD")

using hostkit::DatabaseAccess;

AcDbBlockTableRecord::AcDbBlockTableRecord(const AcDbBlockTableRecord& other)
    : AcDbSymbolTableRecord(other)
    , m_origin(other.m_origin)
    , m_comments(other.m_comments)
    , m_pathName(other.m_pathName)
    , m_insertUnits(other.m_insertUnits)
    , m_explodability(other.m_explodability)
    , m_scalability(other.m_scalability) {}

AcDbBlockTableRecord& AcDbBlockTableRecord::operator=(const AcDbBlockTableRecord& other) {
    AcDbSymbolTableRecord::operator=(other);
    m_origin = other.m_origin;
    m_comments = other.m_comments;
    m_pathName = other.m_pathName;
    m_layoutId = other.m_layoutId;
    m_beginId = other.m_beginId;
    m_endId = other.m_endId;
    m_insertUnits = other.m_insertUnits;
    m_explodability = other.m_explodability;
    m_scalability = other.m_scalability;
    return *this;
}

void AcDbBlockTableRecord::listOwned(std::vector<AcDbObjectId>& owned) const {
    owned.insert(owned.end(), m_entities.begin(), m_entities.end());
    owned.insert(owned.end(), {m_beginId, m_endId});
}

std::size_t AcDbBlockTableRecord::takeBack(AcDbObjectId entity) {
    return hostkit::takeFromList(m_entities, entity);
}

void AcDbBlockTableRecord::giveBack(AcDbObjectId entity, std::size_t place) {
    hostkit::giveToList(m_entities, entity, place);
}

namespace {

// Most entities go into a space, and hardly anything shows one: there only the nearest circle is looked for.
bool wouldHoldItself(const AcDbBlockTableRecord& block, const AcDbEntity& entity) {
    const AcDbObjectId shown = hostkit::shownBlock(entity);
    if (shown.isNull()) return false;
    return shown == block.objectId() || (!block.isLayout() && hostkit::holdsBlock(shown, block.objectId()));
}

} // namespace

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    if (!entity) return Acad::eNullEntityPointer;
    if (!database()) return Acad::eNoDatabase;
    if (!entity->objectId().isNull()) return Acad::eAlreadyInDb;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!database()->mayWrite()) return Acad::eLockViolation;
    if (wouldHoldItself(*this, *entity)) return Acad::eCyclicReference;
    hostkit::makeRoom(m_entities);
    // The block's own record does not list its entities, so it stands in the drawing as before.
    hostkit::ChangeLog::of(*this).touching(*this);
    m_flags |= kModified;
    if (entity->layerId().database() != database()) DatabaseAccess::setLayer(*entity, database()->clayer());
    if (entity->linetypeId().database() != database()) DatabaseAccess::setLinetype(*entity, AcDbObjectId());
    id = DatabaseAccess::addOpen(*database(), entity, objectId());
    m_entities.push_back(id);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
    iterator = new AcDbBlockTableRecordIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    return hostkit::setFiniteField(*this, m_origin, origin);
}

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const wchar_t* text) {
    return text ? hostkit::assignField(*this, m_comments, text) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId id) {
    return hostkit::assignField(*this, m_layoutId, id);
}

namespace {
bool startsWith(std::wstring_view name, std::wstring_view start) {
    return name.size() >= start.size() && hostkit::equalFolded(name.substr(0, start.size()), start);
}
constexpr std::wstring_view modelSpace = L"*Model_Space";
constexpr std::wstring_view paperSpace = L"*Paper_Space";
} // namespace

bool AcDbBlockTableRecord::isLayout() const {
    return startsWith(m_name, modelSpace) || startsWith(m_name, paperSpace);
}

bool AcDbBlockTableRecord::isAnonymous() const { return !m_name.empty() && m_name[0] == L'*' && !isLayout(); }

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    return std::any_of(m_entities.begin(), m_entities.end(), [](AcDbObjectId id) {
        const AcDbObject* object = DatabaseAccess::object(id);
        return object && !id.isErased() && object->isKindOf(AcDbAttributeDefinition::desc());
    });
}

bool AcDbBlockTableRecord::allowsName(std::wstring_view name) const {
    return isValidName(name) || (name.size() > 1 && name[0] == L'*' && isValidName(name.substr(1)));
}

Acad::ErrorStatus AcDbBlockTableRecord::subErase(Adesk::Boolean erasing) {
    const bool hasSheet = isLayout() && m_layoutId.isResident() && !m_layoutId.isErased();
    if (erasing &&
        (hasSheet || hostkit::equalFolded(m_name, modelSpace) || hostkit::equalFolded(m_name, paperSpace)))
        return Acad::eCannotBeErasedByCaller;
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::subErase(erasing);
    if (status != Acad::eOk) return status;
    for (const AcDbObjectId id : m_entities) hostkit::eraseWithOwner(id, erasing);
    hostkit::eraseWithOwner(m_beginId, erasing);
    hostkit::eraseWithOwner(m_endId, erasing);
    return Acad::eOk;
}

// The iterator. An index before the first wraps to the largest number and counts as done.

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    m_index = atBeginning ? 0 : m_block.entities().size() - 1;
    if (skipDeleted) skipErased(atBeginning);
}

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
    if (done()) return;
    m_index += forward ? 1 : static_cast<std::size_t>(-1);
    fetchAhead(m_block.entities(), m_index);
    if (skipDeleted) skipErased(forward);
}

void AcDbBlockTableRecordIterator::skipErased(bool forward) {
    while (!done() && m_block.entities()[m_index].isErased())
        m_index += forward ? 1 : static_cast<std::size_t>(-1);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
    if (done()) return Acad::eInvalidIndex;
    id = m_block.entities()[m_index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    if (done()) return Acad::eInvalidIndex;
    return acdbOpenAcDbEntity(entity, m_block.entities()[m_index], mode, openErased);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
    const auto& entities = m_block.entities();
    const auto found = std::find(entities.begin(), entities.end(), id);
    if (found == entities.end()) return Acad::eKeyNotFound;
    m_index = static_cast<std::size_t>(found - entities.begin());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(const AcDbEntity* entity) {
    return entity ? seek(entity->objectId()) : Acad::eNullEntityPointer;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbBlockTableRecord::Filing {
    using Record = AcDbBlockTableRecord;
    static constexpr GroupField<Record> groups[] = {
        textField<&Record::m_name, Record>(2),        idField<&Record::m_layoutId>(340),
        integerField<&Record::m_insertUnits>(70, 0),  integerField<&Record::m_explodability>(280, 1),
        integerField<&Record::m_scalability>(281, 0),
    };
    /// What a text drawing has with the block's beginning.
    static constexpr GroupField<Record> blockGroups[] = {
        integerField<&Record::m_dxfFlags, Record>(70),
        pointField<&Record::m_origin>(10),
        textField<&Record::m_pathName>(1),
        textField<&Record::m_comments>(4),
    };
};

Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbSymbolTableRecord>(filer, *this, L"AcDbBlockTableRecord", Filing::groups);
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbBlockTableRecord");
    const auto& [name, layout, units, explodability, scalability] = Filing::groups;
    name.write(*this, name, *filer);
    const bool hasLayout = filer->files(m_layoutId);
    if (!hasLayout) filer->markOptional();
    filer->writeItem(layout.code, hasLayout ? m_layoutId : AcDbObjectId());
    for (const auto* field : {&units, &explodability, &scalability}) field->write(*this, *field, *filer);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status =
        readFieldItems(filer, *this, [](AcDbObject& object, AcDbDxfFiler* groups) {
            return static_cast<Filing::Record&>(object).AcDbBlockTableRecord::dxfInFields(groups);
        });
    if (status != Acad::eOk) return status;
    return readFieldItems(filer, *this, [](AcDbObject& object, AcDbDxfFiler* groups) {
        return readFields(*groups, Filing::blockGroups, static_cast<Filing::Record&>(object));
    });
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status =
        writeFieldItems(filer, *this, [](const AcDbObject& object, AcDbDxfFiler* groups) {
            return static_cast<const Filing::Record&>(object).AcDbBlockTableRecord::dxfOutFields(groups);
        });
    if (status != Acad::eOk) return status;
    return writeFieldItems(filer, *this, [](const AcDbObject& object, AcDbDxfFiler* groups) {
        writeFields(*groups, Filing::blockGroups, static_cast<const Filing::Record&>(object));
        return groups->filerStatus();
    });
}
