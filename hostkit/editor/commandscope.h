// Frame of a running command: its lock, its step for undo, the implied selection and transactions that it
// leaves; leaves out the command line.
#pragma once

#include "acdocman.h"

class AcEdCommand;

namespace hostkit {

/// What holds while a command runs: the current document is locked as the command's flags ask, and what the
/// outermost one changes is one step for undo.
class CommandScope {
public:
    CommandScope(AcApDocManager& documents, const AcEdCommand& command);
    ~CommandScope();
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

    /// Aborts the transactions that were started since; false when there were none.
    bool abortTransactions();

    /// Of a command that an exception has ended: nobody is left who could close what it opened.
    void closeObjects();

private:
    void begin(const AcEdCommand& command, bool wasIdle);
    void end();
    bool hasDocument() const;

    AcApDocManager& m_documents;
    AcApDocument* m_document;
    AcDbDatabase* m_database = nullptr;
    int m_transactions = 0;
    Adesk::Int32 m_flags = 0;
    bool m_isOutermost = false;
    bool m_isLocked = false;
    bool m_isStep = false;
};

} // namespace hostkit
