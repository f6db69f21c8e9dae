#include "acdocman.h"

#include "actrans.h"
#include "dbaccess.h"
#include "dbapserv.h"
#include "dbmain.h"
#include "displaywatch.h"
#include "documentselection.h"
#include "undohistory.h"

#include <algorithm>

AcApDocument::AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring fileName)
    : m_database(std::move(database))
    , m_fileName(std::move(fileName))
    , m_selection(std::make_unique<hostkit::DocumentSelection>()) {}

AcApDocument::~AcApDocument() = default;

AcEdInputPointManager* AcApDocument::inputPointManager() const { return &m_selection->inputPoints; }

template <typename Counts>
AcAp::DocLockMode AcApDocument::strongest(Counts counts) const {
    // In the order of their strength; a protected automatic write bears the bit of the automatic one.
    for (const auto mode :
         {AcAp::kXWrite, AcAp::kWrite, AcAp::kProtectedAutoWrite, AcAp::kAutoWrite, AcAp::kRead})
        if (std::any_of(m_locks.begin(), m_locks.end(),
                        [&](const Lock& lock) { return lock.mode == mode && counts(lock); }))
            return mode;
    return AcAp::kNotLocked;
}

AcAp::DocLockMode AcApDocument::lockMode(bool includeMyLocks) const {
    const bool inCommand = m_manager && !m_manager->isApplicationContext();
    return strongest([=](const Lock& lock) { return includeMyLocks || lock.isOfCommand != inCommand; });
}

AcAp::DocLockMode AcApDocument::myLockMode() const {
    const bool inCommand = m_manager && !m_manager->isApplicationContext();
    return strongest([=](const Lock& lock) { return lock.isOfCommand == inCommand; });
}

void AcApDocument::permitWriting() {
    const AcAp::DocLockMode mode = lockMode(true);
    hostkit::DatabaseAccess::setMayWrite(*m_database, mode != AcAp::kNotLocked && mode != AcAp::kRead);
}

AcTransactionManager* AcApDocument::transactionManager() const {
    return static_cast<AcTransactionManager*>(m_database->transactionManager());
}

bool AcApDocumentIterator::done() const { return m_index >= m_manager.documentCount(); }
AcApDocument* AcApDocumentIterator::document() const { return m_manager.documentAt(m_index); }

AcApDocManager::AcApDocManager() = default;
AcApDocManager::~AcApDocManager() { closeAll(); }

bool AcApDocManager::has(const AcApDocument* document) const {
    return std::any_of(m_documents.begin(), m_documents.end(),
                       [document](const auto& each) { return each.get() == document; });
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    for (const auto& each : m_documents)
        if (database && each->database() == database) return each.get();
    return nullptr;
}

AcApDocument* AcApDocManager::documentAt(int index) const {
    return index >= 0 && index < documentCount() ? m_documents[static_cast<std::size_t>(index)].get()
                                                 : nullptr;
}

void AcApDocument::startUndoMark() {
    ++m_undoMarks;
    hostkit::beginUndoGroup(*m_database, L"");
}

bool AcApDocument::endUndoMark() {
    if (m_undoMarks == 0) return false;
    --m_undoMarks;
    hostkit::endUndoGroup(*m_database);
    return true;
}

void AcApDocManager::makeCurrent(AcApDocument* document) {
    m_current = document;
    if (AcDbHostApplicationServices* services = acdbHostApplicationServices())
        services->setWorkingDatabase(document ? document->database() : nullptr);
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* document) {
    if (!document) return Acad::eNoDocument;
    return setCurDocument(document, AcAp::kNone, true);
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                                 bool activate) {
    if (document && !has(document)) return Acad::eNotFromThisDocument;
    if (mode != AcAp::kNone) {
        const Acad::ErrorStatus status = lockDocument(document, mode);
        if (status != Acad::eOk) return status;
    }
    makeCurrent(document);
    if (activate) m_active = document;
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode) {
    if (!document || !has(document)) return Acad::eNoDocument;
    if (mode == AcAp::kNone || mode == AcAp::kNotLocked) return Acad::eInvalidInput;
    document->m_locks.push_back({mode, !isApplicationContext()});
    document->permitWriting();
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document) {
    if (!document || !has(document)) return Acad::eNoDocument;
    if (document->m_locks.empty()) return Acad::eLockViolation;
    document->m_locks.pop_back();
    document->permitWriting();
    return Acad::eOk;
}

AcApDocument* AcApDocManager::adopt(std::unique_ptr<AcDbDatabase> database, std::wstring fileName) {
    database->disableUndoRecording(false);
    hostkit::noteSaved(*database);
    m_documents.push_back(std::make_unique<AcApDocument>(std::move(database), std::move(fileName)));
    m_documents.back()->m_manager = this;
    m_documents.back()->permitWriting();
    hostkit::HostPort& port = *hostkit::currentPort();
    if (port.watchesDisplay())
        m_documents.back()->m_displayWatch =
            std::make_unique<hostkit::DisplayWatch>(*m_documents.back()->database(), port);
    makeCurrent(m_documents.back().get());
    return m_active = m_current;
}

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* document) {
    const auto place = std::find_if(m_documents.begin(), m_documents.end(),
                                    [document](const auto& each) { return each.get() == document; });
    if (place == m_documents.end()) return Acad::eNoDocument;
    if (!document->m_locks.empty()) return Acad::eLockViolation;
    // The working database changes before the drawing goes, so that nobody finds one that is half gone.
    const std::unique_ptr<AcApDocument> closing = std::move(*place);
    m_documents.erase(place);
    AcApDocument* next = m_documents.empty() ? nullptr : m_documents.back().get();
    if (m_active == document) m_active = next;
    if (m_current == document) makeCurrent(m_active);
    return Acad::eOk;
}

void AcApDocManager::closeAll() {
    if (m_current) makeCurrent(nullptr);
    m_active = nullptr;
    const auto closing = std::move(m_documents);
    m_documents.clear();
}
