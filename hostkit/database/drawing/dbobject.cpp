#include "dbobject.h"

#include "changelog.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dbopen.h"
#include "dbsymboltable.h"
#include "dbtrans.h"
#include "extendeddata.h"
#include "objectextras.h"
#include "ownederasure.h"
#include "ownedobjects.h"

#include "acarray.h"
#include "ownedlist.h"

#include <algorithm>

HOSTKIT_KIT_ABSTRACT_CLASS(AcDbObject, AcGiDrawable)

AcDbObject::AcDbObject() = default;
AcDbObject::~AcDbObject() = default;

AcDbObject::AcDbObject(const AcDbObject& other)
    : AcGiDrawable(other) {
    // Until the copy has an owner it remembers whose it is.
    m_source = other.m_source.forCopy();
    if (!m_source.originalSpan().isEmpty()) {
        m_ownerId = (other.m_flags & kCopy) != 0 || other.m_id.isNull() ? other.m_ownerId : other.m_id;
        m_flags = kCopy;
    }
    if (!other.m_extras) return;
    if (other.hasXData()) extras().extendedData = other.m_extras->extendedData;
    extras().unplaced = other.m_extras->unplaced;
}

AcDbObject& AcDbObject::operator=(const AcDbObject& other) {
    if (this == &other) return *this;
    m_ownerId = other.m_ownerId;
    m_source = other.m_source;
    m_extras = other.m_extras ? std::make_unique<hostkit::ObjectExtras>(*other.m_extras) : nullptr;
    return *this;
}

// What no class reads of the original's record means something in the original's drawing alone.
void AcDbObject::takeOwner(AcDbObjectId owner) {
    if ((m_flags & kCopy) != 0 && m_ownerId.database() != owner.database()) m_source = {};
    m_flags &= static_cast<Adesk::UInt8>(~kCopy);
    m_ownerId = owner;
}

hostkit::ObjectExtras& AcDbObject::extras() {
    if (!m_extras) m_extras = std::make_unique<hostkit::ObjectExtras>();
    return *m_extras;
}

const wchar_t* AcDbObject::dxfName() const {
    const wchar_t* name = isA()->dxfName();
    return name ? name : L"";
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) {
    if (!m_id.isNull() && !owner.isNull() && owner.database() != database()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    takeOwner(owner);
    if (!m_id.isNull()) hostkit::DatabaseAccess::ownedObjects(*database()).ownerChanged(*this);
    return Acad::eOk;
}

// Open state.

Acad::ErrorStatus AcDbObject::assertWriteEnabled(Adesk::Boolean, Adesk::Boolean recordModified) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (m_id.isNull()) return Acad::eOk;
    hostkit::ChangeLog::of(*this).changing(*this);
    if (recordModified) {
        m_flags |= kModified;
        m_source.setModified();
    }
    return Acad::eOk;
}

bool AcDbObject::isReallyClosing() const {
    if (m_id.isNull()) return true;
    const AcDbStub& stub = *m_id.stub();
    return stub.readers + ((stub.openMode & hostkit::kOpenForWrite) ? 1 : 0) +
               ((stub.openMode & hostkit::kOpenForNotify) ? 1 : 0) <=
           1;
}

Acad::ErrorStatus AcDbObject::close() {
    if (m_id.isNull()) return Acad::eNotInDatabase;
    AcDbStub& stub = *m_id.stub();
    constexpr unsigned direct = hostkit::kOpenForWrite | hostkit::kOpenForNotify;
    if ((stub.openMode & direct) == 0) {
        if (stub.readers == 0) return Acad::eInvalidOpenState;
        --stub.readers;
        return Acad::eOk;
    }
    if (stub.openMode & hostkit::kOpenForNotify) {
        stub.openMode &= static_cast<Adesk::UInt8>(~hostkit::kOpenForNotify);
        return Acad::eOk;
    }
    stub.openMode &= static_cast<Adesk::UInt8>(~hostkit::kOpenForWrite);
    return endWriting();
}

// As long as a transaction may write, what was changed is not closed.
Acad::ErrorStatus AcDbObject::endWriting() {
    if (m_id.stub()->openMode & (hostkit::kOpenForWrite | hostkit::kHeldForWrite)) return Acad::eOk;
    const Acad::ErrorStatus status = (m_flags & kModified) ? subClose() : Acad::eOk;
    if (m_flags & (kRemembered | kTouched)) hostkit::ChangeLog::of(*this).closed(*this);
    m_flags &= static_cast<Adesk::UInt8>(~(kModified | kNew | kRemembered | kTouched));
    return status;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (m_id.isNull()) return Acad::eNotInDatabase;
    AcDbStub& stub = *m_id.stub();
    if (stub.openMode & hostkit::kOpenForNotify) return Acad::eWasOpenForNotify;
    if (isWriteEnabled()) return Acad::eWasOpenForWrite;
    if (stub.readers == 0) return database()->transactionManager()->upgrade(*this);
    if (stub.readers > 1 || (stub.openMode & hostkit::kHeldForRead)) return Acad::eWasOpenForRead;
    if (const Acad::ErrorStatus locked = hostkit::refusalToWrite(*this); locked != Acad::eOk) return locked;
    stub.readers = 0;
    stub.openMode = hostkit::kOpenForWrite;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (m_id.isNull()) return Acad::eNotInDatabase;
    AcDbStub& stub = *m_id.stub();
    if (stub.openMode & hostkit::kOpenForNotify) return Acad::eWasOpenForNotify;
    if (!(stub.openMode & hostkit::kOpenForWrite)) return Acad::eNotOpenForWrite;
    const Acad::ErrorStatus status = close();
    stub.readers = 1;
    return status;
}

Acad::ErrorStatus AcDbObject::cancel() {
    if (m_id.isNull()) return Acad::eNotInDatabase;
    constexpr unsigned told = kRemembered | kTouched;
    if ((m_id.stub()->openMode & hostkit::kOpenForWrite) == 0 || (m_flags & told) == 0) return close();
    const Acad::ErrorStatus status = hostkit::ChangeLog::of(*this).cancel(*this);
    if (status != Acad::eOk) return status;
    m_flags &= static_cast<Adesk::UInt8>(~kModified);
    return close();
}

Acad::ErrorStatus AcDbObject::erase(Adesk::Boolean erasing) {
    if (m_id.isNull()) return Acad::eNotInDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (isErased() == erasing) return erasing ? Acad::eWasErased : Acad::eWasNotErased;
    AcDbStub& stub = *m_id.stub();
    if (stub.flags & hostkit::kStubTakenBack) return Acad::ePermanentlyErased;
    hostkit::ChangeLog& changes = hostkit::ChangeLog::of(*this);
    changes.touching(*this);
    const Acad::ErrorStatus status = subErase(erasing);
    if (status != Acad::eOk) return status;
    changes.erasing(*this);
    m_flags |= kModified;
    m_source.setModified();
    // Whoever erases or restores it by itself takes it out of its owner's hands.
    stub.flags =
        static_cast<Adesk::UInt8>((stub.flags ^ hostkit::kStubErased) & ~hostkit::kStubErasedWithOwner);
    hostkit::eraseOwned(*this, erasing);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::subErase(Adesk::Boolean) { return Acad::eOk; }
void AcDbObject::listOwned(std::vector<AcDbObjectId>&) const {}
std::size_t AcDbObject::takeBack(AcDbObjectId) { return hostkit::notListed; }
void AcDbObject::giveBack(AcDbObjectId, std::size_t) {}

Acad::ErrorStatus AcDbObject::subClose() { return Acad::eOk; }
AcRxObject* AcDbObject::clone() const { return nullptr; }

// Extended data.

bool AcDbObject::hasXData() const { return m_extras && !m_extras->extendedData.isEmpty(); }

const hostkit::GroupBlock* AcDbObject::extendedData() const {
    return hasXData() ? &m_extras->extendedData : nullptr;
}

resbuf* AcDbObject::xData(const wchar_t* applicationName) const {
    if (!hasXData()) return nullptr;
    const hostkit::GroupBlock& block = m_extras->extendedData;
    if (!applicationName) return block.toList();
    hostkit::ApplicationSpan span;
    return hostkit::findApplication(block, applicationName, span) ? block.toList(span.from, span.to)
                                                                  : nullptr;
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* list) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    static const hostkit::GroupBlock none;
    hostkit::GroupBlock result;
    const Acad::ErrorStatus status =
        hostkit::replaceExtendedData(hasXData() ? m_extras->extendedData : none, list, database(), result);
    if (status != Acad::eOk) return status;
    return setExtendedData(std::move(result));
}

Acad::ErrorStatus AcDbObject::setExtendedData(hostkit::GroupBlock&& data) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk || (data.isEmpty() && !m_extras)) return status;
    extras().extendedData = std::move(data);
    m_extras->extendedData.shrinkToFit();
    return Acad::eOk;
}

// Extension dictionary and reactors.

AcDbObjectId AcDbObject::extensionDictionary() const {
    if (!m_extras || m_extras->extensionDictionary.isErased()) return {};
    return m_extras->extensionDictionary;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (!database()) return Acad::eNoDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!extensionDictionary().isNull()) return Acad::eOk;
    auto dictionary = std::make_unique<AcDbDictionary>();
    dictionary->setTreatElementsAsHard(true);
    Acad::ErrorStatus status = database()->addAcDbObject(dictionary.get());
    if (status != Acad::eOk) return status;
    AcDbDictionary* added = dictionary.release();
    added->setOwnerId(m_id);
    assertWriteEnabled();
    extras().extensionDictionary = added->objectId();
    return added->close();
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    const AcDbObjectId id = extensionDictionary();
    if (id.isNull()) return Acad::eKeyNotFound;
    AcDbObject* object = nullptr;
    Acad::ErrorStatus status = hostkit::openPart(object, id);
    if (status != Acad::eOk) return status;
    auto* dictionary = static_cast<AcDbDictionary*>(object);
    status = dictionary->numEntries() > 0 ? Acad::eContainerNotEmpty : dictionary->erase();
    dictionary->close();
    if (status == Acad::eOk) status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_extras->extensionDictionary.setNull();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::addPersistentReactor(AcDbObjectId id) {
    if (id.isNull()) return Acad::eNullObjectId;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk && !hasPersistentReactor(id)) extras().persistentReactors.push_back(id);
    return status;
}

Acad::ErrorStatus AcDbObject::removePersistentReactor(AcDbObjectId id) {
    if (!hasPersistentReactor(id)) return Acad::eKeyNotFound;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) std::erase(m_extras->persistentReactors, id);
    return status;
}

bool AcDbObject::hasPersistentReactor(AcDbObjectId id) const {
    if (!m_extras) return false;
    const auto& ids = m_extras->persistentReactors;
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

namespace {

// An id's pointer is aligned; its lowest bit marks what is a reactor by id.
constexpr Adesk::UIntPtr persistentMark = 1;

} // namespace

const AcArray<void*>* AcDbObject::reactors() const {
    if (!m_extras || m_extras->persistentReactors.empty()) return nullptr;
    auto list = std::make_unique<AcArray<void*>>();
    for (const AcDbObjectId id : m_extras->persistentReactors)
        list->append(reinterpret_cast<void*>(static_cast<Adesk::UIntPtr>(id.asOldId()) | persistentMark));
    m_extras->handedReactors.list = std::move(list);
    return m_extras->handedReactors.list.get();
}

bool acdbIsPersistentReactor(const void* reactor) {
    return (reinterpret_cast<Adesk::UIntPtr>(reactor) & persistentMark) != 0;
}

AcDbObjectId acdbPersistentReactorObjectId(const void* reactor) {
    AcDbObjectId id;
    if (acdbIsPersistentReactor(reactor))
        id.setFromOldId(
            static_cast<Adesk::IntPtr>(reinterpret_cast<Adesk::UIntPtr>(reactor) & ~persistentMark));
    return id;
}

AcDbObjectIdArray AcDbObject::persistentReactors() const {
    AcDbObjectIdArray ids;
    if (!m_extras) return ids;
    for (const AcDbObjectId id : m_extras->persistentReactors) ids.append(id);
    return ids;
}
