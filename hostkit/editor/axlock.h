// Stand-in for the host's scoped document lock. Covers locking by drawing, by object and of the current document; leaves out locks that wait.
#pragma once

#include "acadstrc.h"
#include "dbid.h"

class AcApDocument;
class AcDbDatabase;

/// Locks a document for writing until it goes.
class AcAxDocLock {
public:
    enum DocLockType {
        kNormal = 0,
        kCurDocSwitch = 1 ///< the document is the current one meanwhile
    };

    /// The current document. eNoDocument when there is none.
    AcAxDocLock();
    /// The document of the drawing. A drawing of no document has nothing to lock: eOk. eNoDocument for null.
    explicit AcAxDocLock(AcDbDatabase* database, DocLockType type = kNormal);
    explicit AcAxDocLock(AcDbObjectId object, DocLockType type = kNormal);
    ~AcAxDocLock();
    AcAxDocLock(const AcAxDocLock&) = delete;
    AcAxDocLock& operator=(const AcAxDocLock&) = delete;

    Acad::ErrorStatus lockStatus() const { return m_status; }
    /// What is locked; null where nothing had to be.
    AcApDocument* document() const { return m_document; }

private:
    void lock(AcApDocument* document, DocLockType type);

    AcApDocument* m_document = nullptr;
    AcApDocument* m_earlierCurrent = nullptr;
    bool m_hasSwitched = false;
    Acad::ErrorStatus m_status = Acad::eNoDocument;
};
