// Undo recording: what objects, containers and the header were before a change, marks, taking back and
// cancelling, doing again; leaves out partial undo by applications.
#pragma once

#include "undoreport.h"

#include "acadstrc.h"
#include "dbid.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

class AcDbDictionary;
class AcDbSymbolTable;

namespace hostkit {

class DisplayChanges;
class HeaderVariables;

/// A drawing's memory of changes. Whoever changes something tells it before the first change; it remembers
/// what was there, once between two marks (starts of transactions, undo groups and opens). A new object costs
/// one entry and no copy. It serves cancel, which takes back one open, transactions, which take back all
/// since a mark, and undo groups.
///
/// What nobody can ask for any more is forgotten at once: a drawing without undo groups and transactions
/// remembers only what is open.
class ChangeLog {
public:
    /// What is put back, and what changes, is told to those who watch the display.
    ChangeLog(AcDbDatabase& database, DisplayChanges& display);
    ~ChangeLog();
    ChangeLog(const ChangeLog&) = delete;
    ChangeLog& operator=(const ChangeLog&) = delete;

    /// Of a resident object's drawing.
    static ChangeLog& of(const AcDbObject& object);

    // What is about to change.

    /// The fields of a resident object.
    void changing(AcDbObject& object);
    /// Something other than its fields: it takes something in, or is erased or restored.
    void touching(AcDbObject& object);
    /// It came into the drawing just now.
    void created(AcDbObject& object);
    /// The object leaves the drawing again, with what was told of it.
    void forgetCreation(AcDbObject& object) noexcept;
    /// Its mark of erasure.
    void erasing(AcDbObject& object);
    /// An entry of a dictionary, or, with the index one past the last, a new one.
    void entryChanging(AcDbDictionary& dictionary, std::size_t index);
    void headerChanging(const HeaderVariables& header, std::wstring_view name);
    /// The bytes that the drawing was read from, and where in them each object's record stands.
    void sourceChanging();
    /// The last open for write of an object that the log was told of ended.
    void closed(AcDbObject& object);

    /// Gives the object, its entries and what it owns what they were before the present open; what it took in
    /// since is taken back. Nothing is done, and it stays open, where it could not be remembered
    /// (eNotImplementedYet: an application's class that does not file its fields), and where another record
    /// of its table has the earlier name meanwhile (eDuplicateKey).
    Acad::ErrorStatus cancel(AcDbObject& object);

    // Transactions. Their marks nest.

    void setMark();
    void endMark();
    /// Takes back all since the latest mark and ends it.
    void restoreMark();

    // Undo.

    bool isRecording() const { return m_isRecording; }
    void setRecording(bool recording);
    /// What follows belongs to one group, until its end. Groups do not nest: the inner one is the outer's.
    void beginGroup(std::wstring_view name);
    /// A group in which nothing was changed is forgotten.
    void endGroup();
    bool isInGroup() const { return m_groupDepth > 0; }
    std::size_t groupCount() const { return m_groups.size(); }
    /// Takes the latest group back, but for what was changed while recording was off. Where both changed one
    /// part of an object (its fields, extended data, extension dictionary, reactors, owner), the part stays
    /// as it is, and the object is counted; so is a record whose earlier name another has meanwhile: it keeps
    /// its name, or stays erased. eUndoOperationNotAvailable: there is no group, one is not ended
    /// yet, or a transaction is active.
    Acad::ErrorStatus undo(UndoReport& report);
    std::size_t redoCount() const;
    /// Does again what the latest undo took back: everything is what it was before that, ids and order
    /// included, and the group can be taken back again. Any change forgets what could be done again. So does
    /// an undo that left something as it was, or met an object that is open and changed.
    /// eUndoOperationNotAvailable: there is nothing, a group is not ended yet, or a transaction is active.
    Acad::ErrorStatus redo(UndoReport& report);

    // Saving.

    /// What the drawing holds now is saved.
    void noteSaved();
    /// The drawing holds something else than was saved last, or than at the log's beginning. What was changed
    /// and taken back is no change, but for a change that was taken back by cancel alone or stays in part.
    bool hasUnsavedChanges() const { return m_state != m_savedState; }

    /// What it remembers something of, for undo or for redo.
    std::unordered_set<const AcDbStub*> remembered() const;

    /// Entries in memory; for tests.
    std::size_t size() const { return m_entries.size(); }

private:
    struct Memory;
    struct StateMemory;
    struct SlotMemory;
    struct VariableMemory;
    struct SourceMemory;
    enum class Kind : unsigned char { none, state, touch, creation, erasure, slot, variable, source };
    struct Entry {
        AcDbStub* stub;
        std::unique_ptr<Memory> memory;
        Adesk::UInt32 index = 0; ///< of a dictionary's entry
        Kind kind = Kind::none;
        Adesk::UInt8 stubFlags = 0;   ///< before an erasure
        bool wasModified : 1 = false; ///< likewise, the mark "changed since read"
        bool isFirstOfOpen : 1 = false;
        bool isRepeated : 1 = false; ///< an earlier one since the latest mark says more
        bool isSuspended : 1 = false;
        bool isTold : 1 = false; ///< an undo has said that it stays
    };
    struct Group {
        std::wstring name;
        std::size_t start = 0;
        bool isNamed = false; ///< else of what was done between commands
        Adesk::UInt64 stateBefore = 0;
    };
    /// What an undo took out of its owner: where it stood there.
    struct TakenBack {
        AcDbStub* stub;
        std::size_t place;
        Adesk::UInt8 stubFlags;
    };
    /// An undo that can be done again: what it found where it put something back, the latest change first.
    struct RedoStep;
    /// What was changed while recording was off, later than the entry that is looked at.
    struct Suspended;
    /// Nothing that is put back is remembered itself.
    struct Restoring;

    bool isNeeded() const { return m_isRecording || !m_groups.empty() || !m_marks.empty(); }
    Entry& append(Kind kind, AcDbStub* stub);
    void enterNewState() { m_state = ++m_latestState; }
    static bool isToldOf(const AcDbObject& object);
    bool noteOpen(AcDbObject& object, Adesk::UInt8 flag);
    void forgetOpen(const Entry& firstOfOpen);
    const AcDbSymbolTable* tableOfCurrent(std::wstring_view variable) const;
    void dropOfOpen(const AcDbStub* stub);
    void dropGroupsFrom(std::size_t mark);
    void trim();

    /// False where an entry of a dictionary cannot go back: another one has its name.
    bool restore(Entry& entry);
    void restoreState(Entry& entry);
    void putBack(AcDbStub& stub, const StateMemory& state);
    void restoreErasure(Entry& entry);
    /// Notes in m_taken, where an undo asks for it.
    void takeBack(AcDbObject& object);
    void giveBack(const TakenBack& taken);
    Entry oppositeOf(const Entry& entry);
    static std::unique_ptr<SlotMemory> oppositeOfSlot(const Entry& entry);
    bool canBeDoneAgain(const Group& group) const;
    void rememberForRedo(const Group& group, RedoStep& step, const UndoReport& report);
    void restoreOpposites(RedoStep& step);
    static std::vector<AcDbObjectId> ownedBy(AcDbObject& owner);

    struct Settling;
    struct CancelledOpen;
    Acad::ErrorStatus refusalOfCancel(const CancelledOpen& open) const;
    void takeBackOrLeave(const Group& group, UndoReport& report, RedoStep* step);
    void undoGroup(const Group& group, UndoReport& report);
    void forgetGroup(std::size_t start);
    struct Tally;
    void undoEntry(Entry& entry, Suspended& later, Tally& tally);
    void redoSuspended(Suspended& later, Tally& tally);
    void takeBackLeftBehind(const Suspended& later);

    AcDbDatabase& m_database;
    DisplayChanges& m_display;
    std::deque<Entry> m_entries;
    std::vector<std::size_t> m_marks;
    std::vector<Group> m_groups;
    std::vector<RedoStep> m_redo;
    RedoStep* m_undoing = nullptr; ///< what the running undo remembers
    Adesk::UInt32 m_epoch = 1;
    Adesk::UInt64 m_state = 0; ///< a number for what the drawing holds; another one after each change
    Adesk::UInt64 m_latestState = 0;
    Adesk::UInt64 m_savedState = 0;
    std::size_t m_openCount = 0; ///< objects that are open and told of
    int m_groupDepth = 0;
    bool m_hasOpenGroup = false; ///< it is the last one
    bool m_isRecording = false;
    bool m_isRestoring = false;
};

} // namespace hostkit
