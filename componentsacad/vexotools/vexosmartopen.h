#pragma once

#include "acadstrc.h"
#include "acdocman.h"
#include "actrans.h"
#include "dbobject.h"
#include "dbopen.h"

/// Opens an object of a drawing for a scope. Where the host's own pointer gives up on an object that is open
/// elsewhere, this guard reaches it through a transaction of the current document: the change lands when the
/// guard goes.
///
/// status() after construction:
/// - eOk: object() is usable until the guard goes;
/// - eNullPtr (335): the id is null or of no drawing;
/// - eNotThatKindOfClass (46): there is an object, but it is no T; it is closed again;
/// - any other: the failure of the direct open where no transaction could be started, else the failure of the
///   transaction's getObject.
/// object() is null unless the status is eOk.
///
/// The class is looked at after the open, not in it. A guard that holds a transaction goes before the current
/// document changes, and guards go in the reverse order of their making, as transactions nest. It neither
/// traces nor shows anything.
template <typename T>
class VEXOSmartOpen {
public:
    VEXOSmartOpen(AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
        if (!id.isValid() || id.isNull()) return;
        AcDbObject* raw = nullptr;
        m_status = acdbOpenAcDbObject(raw, id, mode, openErased);
        if (m_status == Acad::eOk)
            takeOpened(raw);
        else
            openInTransaction(id, mode, openErased);
    }
    virtual ~VEXOSmartOpen() {
        if (m_status != Acad::eOk) return;
        if (m_isOpenedDirectly)
            m_object->close();
        else if (m_transaction)
            endTransaction();
    }
    VEXOSmartOpen(const VEXOSmartOpen&) = delete;
    VEXOSmartOpen& operator=(const VEXOSmartOpen&) = delete;

    Acad::ErrorStatus status() const { return m_status; }
    T* object() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    /// The object was reached through a transaction, which ends with the guard.
    bool isInTransaction() const { return m_transaction != nullptr; }

private:
    static auto transactionManager() {
        AcApDocument* document = acDocManagerPtr() ? acDocManagerPtr()->curDocument() : nullptr;
        return document ? document->transactionManager() : nullptr;
    }
    // Ended, never aborted: what was done through the guard stays.
    static void endTransaction() {
        if (auto* manager = transactionManager()) manager->endTransaction();
    }

    void takeOpened(AcDbObject* raw) {
        m_object = T::cast(raw);
        m_isOpenedDirectly = m_object != nullptr;
        if (m_isOpenedDirectly) return;
        m_status = Acad::eNotThatKindOfClass;
        raw->close();
    }

    void openInTransaction(AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
        auto* manager = transactionManager();
        m_transaction = manager ? manager->startTransaction() : nullptr;
        if (!m_transaction) return;
        AcDbObject* raw = nullptr;
        m_status = m_transaction->getObject(raw, id, mode, openErased);
        if (m_status == Acad::eOk) {
            m_object = T::cast(raw);
            if (m_object) return;
            m_status = Acad::eNotThatKindOfClass;
        }
        m_transaction = nullptr;
        endTransaction();
    }

    T* m_object = nullptr;
    Acad::ErrorStatus m_status = Acad::eNullPtr;
    bool m_isOpenedDirectly = false;
    AcTransaction* m_transaction = nullptr;
};
