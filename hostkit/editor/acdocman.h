// Stand-in for the host's document manager. Covers open documents, the current and the active one, counted locks and their modes, texts to execute; leaves out reactors.
#pragma once

#include "acadstrc.h"
#include "rxobject.h"

#include <memory>
#include <string>
#include <vector>

class AcApDocManager;
class AcDbDatabase;
class AcEdInputPointManager;
class AcTransactionManager;
namespace hostkit {
class DisplayWatch;
struct DocumentSelection;
} // namespace hostkit

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
    /// The strongest mode that others hold, or with includeMyLocks that anybody holds; kNotLocked when none
    /// does. "Mine" are the locks that running commands hold while one runs, and those that were taken
    /// outside of commands while none does.
    AcAp::DocLockMode lockMode(bool includeMyLocks = false) const;
    AcAp::DocLockMode myLockMode() const;
    /// That of the document's drawing.
    AcTransactionManager* transactionManager() const;
    /// The viewport that is current on the sheet: 1 is the sheet itself, above it one that shows the model.
    int sheetViewport() const { return m_sheetViewport; }
    void setSheetViewport(int number) { m_sheetViewport = number; }
    /// What is changed until the mark's end is one step for undo, over the ends of commands too. Marks nest;
    /// the outermost one counts.
    void startUndoMark();
    /// False where none was started.
    bool endUndoMark();
    int undoMarkCount() const { return m_undoMarks; }
    /// What is implied, what was selected before, and how picks go.
    hostkit::DocumentSelection& selection() const { return *m_selection; }
    AcEdInputPointManager* inputPointManager() const;
    /// Expires with the document.
    std::weak_ptr<const void> life() const { return m_life; }

private:
    friend class AcApDocManager;
    struct Lock {
        AcAp::DocLockMode mode;
        bool isOfCommand;
    };
    template <typename Counts>
    AcAp::DocLockMode strongest(Counts counts) const;
    /// The drawing may be written as long as one of the locks is for writing, whoever holds it.
    void permitWriting();

    AcApDocManager* m_manager = nullptr; ///< null until the document is adopted
    std::unique_ptr<AcDbDatabase> m_database;
    std::unique_ptr<hostkit::DisplayWatch> m_displayWatch; ///< null where the port does not watch
    std::wstring m_fileName;
    std::vector<Lock> m_locks;
    int m_sheetViewport = 1;
    int m_undoMarks = 0;
    std::unique_ptr<hostkit::DocumentSelection> m_selection;
    std::shared_ptr<const void> m_life = std::make_shared<char>();
};

/// Walks the documents in the order in which they came. The list must not change meanwhile.
class AcApDocumentIterator {
public:
    explicit AcApDocumentIterator(const AcApDocManager& manager)
        : m_manager(manager) {}
    virtual ~AcApDocumentIterator() = default;
    bool done() const;
    void step() { ++m_index; }
    /// Null when done.
    AcApDocument* document() const;

private:
    const AcApDocManager& m_manager;
    int m_index = 0;
};

/// The documents of one host. Documents live until they are closed or the host goes.
class AcApDocManager : public AcRxObject {
public:
    AcApDocManager();
    ~AcApDocManager() override;
    AcApDocManager(const AcApDocManager&) = delete;
    AcApDocManager& operator=(const AcApDocManager&) = delete;

    /// The one that functions without a document argument mean.
    AcApDocument* curDocument() const { return m_current; }
    /// The one that the user sees in front. Another one may be current for a while.
    AcApDocument* mdiActiveDocument() const { return m_active; }
    /// The document of that database, or null.
    AcApDocument* document(const AcDbDatabase* database) const;
    int documentCount() const { return static_cast<int>(m_documents.size()); }
    AcApDocument* documentAt(int index) const;
    /// The caller deletes the iterator.
    AcApDocumentIterator* newAcApDocumentIterator() const { return new AcApDocumentIterator(*this); }
    /// No command runs: what is done now belongs to no document.
    bool isApplicationContext() const { return m_runningCommands == 0; }

    /// Makes the document the active and the current one and its database the working one. eNoDocument for
    /// null; eNotFromThisDocument for one of another host.
    Acad::ErrorStatus activateDocument(AcApDocument* document);
    /// Makes it the current one, its database the working one, and with activate the active one. A mode other
    /// than kNone locks it, too. Null makes none current and its working database none.
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);

    /// Objects of a document's drawing are opened for write under a lock: kWrite, kXWrite, kAutoWrite or
    /// kProtectedAutoWrite, not kRead. The host locks for a command as its flags ask; session commands and
    /// code outside of commands (a module while it loads, a callback) lock themselves.
    ///
    /// Locks count: each needs its unlockDocument, which takes back the latest. eInvalidInput for kNone and
    /// kNotLocked; eNoDocument for null; eLockViolation for unlocking what is not locked.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite);
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    /// Queues text for the command line, as if it were typed into that document once the running command has
    /// returned and what was queued before is done; a line runs when its end comes. Documents stay as they
    /// are here: with activate the document is the active one from then on, without it the current one for
    /// this text alone. With echo the text is printed as it is taken. The document that was in front has
    /// nothing to wrap up. eNoDocument for one of another host or none; eInvalidInput for null.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const wchar_t* text, bool activate = true,
                                          bool wrapUpInactiveDocument = false, bool echo = true);

    /// The host tells when a command starts and ends, for the locks that it takes.
    void commandStarts() { ++m_runningCommands; }
    void commandEnds() { --m_runningCommands; }

    /// Takes a drawing in as a new document and makes it the current one. The manager owns it. From now on
    /// the drawing records what undo needs and which changes are not saved (hostkit::hasUnsavedChanges).
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
    AcApDocument* m_active = nullptr;
    int m_runningCommands = 0;
};

/// The current host's documents; null when there is no host.
AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
