// Stand-in for the host's transactions. Covers nesting, reaching objects that are open elsewhere, commit and abort; leaves out reactors, objects of other drawings and graphics.
#pragma once

#include "dbmaindefs.h"

#include "acadstrc.h"
#include "dbid.h"
#include "rxobject.h"

#include <memory>
#include <vector>

class AcDbDatabase;
class AcDbObject;
class AcDbTransactionManager;

/// One transaction: from its start to its end or abortion it holds the objects that were got through it, so
/// that nobody closes them. It belongs to its manager and is gone once it was ended or aborted.
class AcTransaction : public AcRxObject {
public:
    ~AcTransaction() override;
    AcTransaction(const AcTransaction&) = delete;
    AcTransaction& operator=(const AcTransaction&) = delete;

    /// Holds the object for reading or writing until this transaction ends, also where it is open elsewhere:
    /// whoever opened it closes it as ever. Asking again for more turns a hold for reading into one for
    /// writing. A hold for notify is one for reading. The object is not to be closed by the caller.
    ///
    /// eNotTopTransaction: another transaction was started since. eNullObjectId, ePermanentlyErased,
    /// eWasErased, eInvalidInput (no such mode), eLockViolation as in an open; eNotFromThisDocument for an
    /// object of another drawing. On failure the pointer is null.
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                bool openErased = false);

private:
    friend class AcDbTransactionManager;
    struct Hold {
        AcDbStub* stub;
        Adesk::UInt8 earlier; ///< what an outer transaction held before
    };
    explicit AcTransaction(AcDbTransactionManager& manager)
        : m_manager(manager) {}
    void hold(AcDbStub& stub, Adesk::UInt8 level);
    void release();

    AcDbTransactionManager& m_manager;
    std::vector<Hold> m_holds;
};

/// The transactions of one drawing. They nest: the latest one is ended or aborted first. What a nested one
/// did is taken back with the outer one, if that is aborted.
///
/// Ending keeps all changes and lets go of what this transaction held. Aborting gives every object the values
/// that it had at the start, whoever changed it: what was erased comes back, what was restored is erased,
/// what entered the drawing is in it no more (its id stays its own and gives ePermanentlyErased), entries of
/// tables and dictionaries and the order of a block's entities are as before, and so are header variables.
/// That holds while undo recording is off, too.
class AcDbTransactionManager : public AcRxObject {
public:
    explicit AcDbTransactionManager(AcDbDatabase& database)
        : m_database(database) {}
    ~AcDbTransactionManager() override;
    AcDbTransactionManager(const AcDbTransactionManager&) = delete;
    AcDbTransactionManager& operator=(const AcDbTransactionManager&) = delete;

    /// Never null.
    AcTransaction* startTransaction();
    /// eNoActiveTransactions.
    Acad::ErrorStatus endTransaction();
    Acad::ErrorStatus abortTransaction();
    int numActiveTransactions() const { return static_cast<int>(m_transactions.size()); }
    /// Objects that the active transactions hold, each once.
    int numOpenedObjects() const;
    /// Null when none is active.
    AcTransaction* topTransaction() const;

    /// getObject of the latest transaction; eNoActiveTransactions.
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                bool openErased = false);
    /// Hands an object that came into the drawing, and is open for writing since, to the latest transaction:
    /// its maker need not close it. With add false it is closed and leaves the drawing.
    /// eNoActiveTransactions; eNullObjectPointer; eNotNewlyCreated for any other object;
    /// eNotFromThisDocument.
    Acad::ErrorStatus addNewlyCreatedDBRObject(AcDbObject* object, bool add = true);

private:
    friend class AcDbObject;
    friend class AcTransaction;
    Acad::ErrorStatus upgrade(AcDbObject& object);

    AcDbDatabase& m_database;
    std::vector<std::unique_ptr<AcTransaction>> m_transactions;
};
