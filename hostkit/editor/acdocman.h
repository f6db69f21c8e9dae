// Stand-in for the host's document manager. Covers open documents, the current one and counted locks; leaves out queued commands and reactors.
#pragma once

#include "acadstrc.h"
#include "rxobject.h"

#include <memory>
#include <string>
#include <vector>

class AcDbDatabase;

class AcAp {
public:
    enum DocLockMode {
        kNone = 0x00,
        kAutoWrite = 0x01,
        kNotLocked = 0x02,
        kWrite = 0x04,
        kProtectedAutoWrite = 0x14,
        kRead = 0x20,
        kXWrite = 0x40
    };
};

/// One open drawing with its file and its locks. It owns the drawing's database.
class AcApDocument : public AcRxObject {
public:
    AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring fileName);
    ~AcApDocument() override;
    AcApDocument(const AcApDocument&) = delete;
    AcApDocument& operator=(const AcApDocument&) = delete;

    AcDbDatabase* database() const { return m_database.get(); }
    /// As it was given; empty for a new drawing.
    const wchar_t* fileName() const { return m_fileName.c_str(); }
    void setFileName(std::wstring fileName) { m_fileName = std::move(fileName); }
    /// The strongest mode that is held; kNotLocked when none is.
    AcAp::DocLockMode lockMode() const;

private:
    friend class AcApDocManager;
    std::unique_ptr<AcDbDatabase> m_database;
    std::wstring m_fileName;
    std::vector<AcAp::DocLockMode> m_locks;
};

/// The documents of one host. Documents live until they are closed or the host goes.
class AcApDocManager : public AcRxObject {
public:
    AcApDocManager();
    ~AcApDocManager() override;
    AcApDocManager(const AcApDocManager&) = delete;
    AcApDocManager& operator=(const AcApDocManager&) = delete;

    AcApDocument* curDocument() const { return m_current; }
    /// The one in front; the same as the current one, since one window shows all.
    AcApDocument* mdiActiveDocument() const { return m_current; }
    /// The document of that database, or null.
    AcApDocument* document(const AcDbDatabase* database) const;
    int documentCount() const { return static_cast<int>(m_documents.size()); }
    AcApDocument* documentAt(int index) const;

    /// Makes the document the current one and its database the working one. eNoDocument for null;
    /// eNotFromThisDocument for one of another host.
    Acad::ErrorStatus activateDocument(AcApDocument* document);
    Acad::ErrorStatus setCurDocument(AcApDocument* document) { return activateDocument(document); }

    /// Locks count: each needs its unlockDocument, which takes back the latest. eInvalidInput for kNone and
    /// kNotLocked; eNoDocument for null; eLockViolation for unlocking what is not locked.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite);
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    /// Takes a drawing in as a new document and makes it the current one. The manager owns it.
    AcApDocument* adopt(std::unique_ptr<AcDbDatabase> database, std::wstring fileName);
    /// Closes without saving. The next document becomes the current one, or none. eNoDocument for one that is
    /// not of this manager; eLockViolation while it is locked.
    Acad::ErrorStatus closeDocument(AcApDocument* document);
    /// Closes all, locked or not.
    void closeAll();

private:
    bool has(const AcApDocument* document) const;
    void makeCurrent(AcApDocument* document);

    std::vector<std::unique_ptr<AcApDocument>> m_documents;
    AcApDocument* m_current = nullptr;
};

/// The current host's documents; null when there is no host.
AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
