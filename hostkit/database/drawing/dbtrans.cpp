#include "dbtrans.h"

#include "changelog.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbopen.h"

#include <algorithm>
#include <set>

using hostkit::DatabaseAccess;
using hostkit::kHeldForRead;
using hostkit::kHeldForWrite;

namespace {
constexpr Adesk::UInt8 heldBits = kHeldForRead | kHeldForWrite;
}

// One transaction.

AcTransaction::~AcTransaction() = default;

Acad::ErrorStatus AcTransaction::getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                           bool openErased) {
    object = nullptr;
    if (m_manager.topTransaction() != this) return Acad::eNotTopTransaction;
    AcDbStub* stub = id.stub();
    if (!stub) return Acad::eNullObjectId;
    if (id.database() != &m_manager.m_database) return Acad::eNotFromThisDocument;
    if (!stub->object || (stub->flags & hostkit::kStubTakenBack)) return Acad::ePermanentlyErased;
    if (id.isErased() && !openErased) return Acad::eWasErased;
    if (mode != AcDb::kForRead && mode != AcDb::kForWrite && mode != AcDb::kForNotify)
        return Acad::eInvalidInput;
    if (mode == AcDb::kForWrite) {
        const Acad::ErrorStatus locked = hostkit::refusalToWrite(*stub->object);
        if (locked != Acad::eOk) return locked;
    }
    hold(*stub, mode == AcDb::kForWrite ? kHeldForWrite : kHeldForRead);
    object = stub->object;
    return Acad::eOk;
}

void AcTransaction::hold(AcDbStub& stub, Adesk::UInt8 level) {
    const auto held = static_cast<Adesk::UInt8>(stub.openMode & heldBits);
    if (held >= level) return;
    m_holds.push_back({&stub, held});
    stub.openMode = static_cast<Adesk::UInt8>((stub.openMode & ~heldBits) | level);
}

// Back to what outer transactions hold; the latest hold first, since an object may have two.
void AcTransaction::release() {
    for (std::size_t i = m_holds.size(); i-- > 0;) {
        AcDbStub& stub = *m_holds[i].stub;
        const bool mayWrite = (stub.openMode & kHeldForWrite) != 0;
        stub.openMode = static_cast<Adesk::UInt8>((stub.openMode & ~heldBits) | m_holds[i].earlier);
        if (mayWrite) stub.object->endWriting();
    }
    m_holds.clear();
}

// The manager.

AcDbTransactionManager::~AcDbTransactionManager() = default;

AcTransaction* AcDbTransactionManager::topTransaction() const {
    return m_transactions.empty() ? nullptr : m_transactions.back().get();
}

AcTransaction* AcDbTransactionManager::startTransaction() {
    DatabaseAccess::changes(m_database).setMark();
    m_transactions.emplace_back(new AcTransaction(*this));
    return m_transactions.back().get();
}

Acad::ErrorStatus AcDbTransactionManager::endTransaction() {
    if (m_transactions.empty()) return Acad::eNoActiveTransactions;
    m_transactions.back()->release();
    m_transactions.pop_back();
    DatabaseAccess::changes(m_database).endMark();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTransactionManager::abortTransaction() {
    if (m_transactions.empty()) return Acad::eNoActiveTransactions;
    DatabaseAccess::changes(m_database).restoreMark();
    m_transactions.back()->release();
    m_transactions.pop_back();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTransactionManager::upgrade(AcDbObject& object) {
    AcDbStub& stub = *object.objectId().stub();
    if ((stub.openMode & kHeldForRead) == 0) return Acad::eNotOpenForRead;
    if (const Acad::ErrorStatus locked = hostkit::refusalToWrite(object); locked != Acad::eOk) return locked;
    m_transactions.back()->hold(stub, kHeldForWrite);
    return Acad::eOk;
}

int AcDbTransactionManager::numOpenedObjects() const {
    std::set<const AcDbStub*> held;
    for (const auto& each : m_transactions)
        for (const AcTransaction::Hold& hold : each->m_holds) held.insert(hold.stub);
    return static_cast<int>(held.size());
}

Acad::ErrorStatus AcDbTransactionManager::getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                                    bool openErased) {
    object = nullptr;
    AcTransaction* top = topTransaction();
    return top ? top->getObject(object, id, mode, openErased) : Acad::eNoActiveTransactions;
}

Acad::ErrorStatus AcDbTransactionManager::addNewlyCreatedDBRObject(AcDbObject* object, bool add) {
    if (!object) return Acad::eNullObjectPointer;
    if (m_transactions.empty()) return Acad::eNoActiveTransactions;
    const AcDbStub* stub = object->objectId().stub();
    if (!stub || !object->isNewObject() || !(stub->openMode & hostkit::kOpenForWrite))
        return Acad::eNotNewlyCreated;
    if (object->database() != &m_database) return Acad::eNotFromThisDocument;
    if (!add) return object->cancel();
    m_transactions.back()->hold(*object->objectId().stub(), kHeldForWrite);
    return object->close();
}
