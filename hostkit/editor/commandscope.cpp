#include "commandscope.h"

#include "accmd.h"
#include "actrans.h"
#include "dbmain.h"
#include "documentselection.h"
#include "openobjects.h"
#include "undohistory.h"

namespace hostkit {
namespace {

AcAp::DocLockMode lockOf(Adesk::Int32 flags) {
    if (flags & ACRX_CMD_SESSION) return AcAp::kNone;
    if (flags & ACRX_CMD_DOCEXCLUSIVELOCK) return AcAp::kXWrite;
    return (flags & ACRX_CMD_DOCREADLOCK) ? AcAp::kRead : AcAp::kWrite;
}

} // namespace

CommandScope::CommandScope(AcApDocManager& documents, const AcEdCommand& command)
    : m_documents(documents)
    , m_document(documents.curDocument()) {
    const bool wasIdle = m_documents.isApplicationContext();
    m_documents.commandStarts();
    try {
        begin(command, wasIdle);
    } catch (...) {
        end();
        throw;
    }
}

void CommandScope::begin(const AcEdCommand& command, bool wasIdle) {
    if (!m_document) return;
    m_database = m_document->database();
    m_transactions = m_document->transactionManager()->numActiveTransactions();
    const AcAp::DocLockMode mode = lockOf(command.commandFlags());
    if (mode != AcAp::kNone) m_isLocked = m_documents.lockDocument(m_document, mode) == Acad::eOk;
    m_isOutermost = wasIdle;
    m_flags = command.commandFlags();
    if (m_isOutermost && (m_flags & ACRX_CMD_USEPICKSET) == 0) m_document->selection().implied.clear();
    if ((command.commandFlags() & ACRX_CMD_NO_UNDO_MARKER) != 0) return;
    beginUndoGroup(*m_database, command.globalName());
    m_isStep = true;
}

// A session command may have closed the document.
bool CommandScope::hasDocument() const {
    return m_document && m_documents.document(m_database) == m_document;
}

CommandScope::~CommandScope() { end(); }

void CommandScope::end() {
    if (hasDocument()) {
        if (m_isOutermost && (m_flags & ACRX_CMD_REDRAW) == 0) m_document->selection().implied.clear();
        if (m_isStep) endUndoGroup(*m_database);
        if (m_isLocked) m_documents.unlockDocument(m_document);
    }
    m_documents.commandEnds();
}

void CommandScope::closeObjects() {
    if (m_isOutermost && hasDocument()) closeOpenObjects(*m_database);
}

bool CommandScope::abortTransactions() {
    if (!hasDocument()) return false;
    AcDbTransactionManager& manager = *m_document->transactionManager();
    const bool areLeft = manager.numActiveTransactions() > m_transactions;
    while (manager.numActiveTransactions() > m_transactions) manager.abortTransaction();
    return areLeft;
}

} // namespace hostkit
