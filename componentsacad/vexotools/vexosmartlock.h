#pragma once

#include "acadstrc.h"
#include "acdocman.h"
#include "axlock.h"

/// Locks a document for writing for a scope, unless it is locked for write already: then no second lock is
/// taken, and none is given back, so tools that each build a guard nest.
///
/// status():
/// - eOk: the caller may write, whether or not a lock had to be taken;
/// - eNoDocument (330): there is neither database nor document, or the guard has been destroyed;
/// - any other: AcAxDocLock::lockStatus() as it was.
/// It neither traces nor shows anything.
class VEXOSmartLock {
public:
    /// A null database means the current document and its database. A database of no document is handed to
    /// the host's lock as it is.
    explicit VEXOSmartLock(AcDbDatabase* database = nullptr,
                           AcAxDocLock::DocLockType type = static_cast<AcAxDocLock::DocLockType>(0)) {
        AcApDocManager* manager = acDocManagerPtr();
        AcApDocument* document = nullptr;
        if (database) {
            if (manager) document = manager->document(database);
        } else {
            if (manager) document = manager->curDocument();
            if (document) database = document->database();
        }
        if (!database && !document) {
            m_status = Acad::eNoDocument;
            return;
        }
        if (document && isWriteMode(document->lockMode(true))) return;
        m_lock = database ? new AcAxDocLock(database, type) : new AcAxDocLock();
        m_status = m_lock->lockStatus();
    }
    virtual ~VEXOSmartLock() {
        delete m_lock;
        m_lock = nullptr;
        m_status = Acad::eNoDocument;
    }
    VEXOSmartLock(const VEXOSmartLock&) = delete;
    VEXOSmartLock& operator=(const VEXOSmartLock&) = delete;

    Acad::ErrorStatus status() const { return m_status; }
    /// This guard took the lock and gives it back.
    bool hasLock() const { return m_lock != nullptr; }

private:
    static bool isWriteMode(AcAp::DocLockMode mode) {
        return mode == AcAp::kWrite || mode == AcAp::kProtectedAutoWrite || mode == AcAp::kXWrite;
    }

    AcAxDocLock* m_lock = nullptr;
    /// Volatile, so that what the destructor leaves here is really written: code of old looks at it.
    volatile Acad::ErrorStatus m_status = Acad::eOk;
};
