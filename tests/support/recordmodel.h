// What a drawing's nine tables hold while records come, go, change their names, and all that is taken back.
#pragma once

#include "drawingparts.h"

#include "actrans.h"
#include "dbaccess.h"
#include "dbline.h"
#include "undohistory.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace drawingtest {

/// The plain picture: the records that a test made, in the order of their tables.
struct Row {
    AcDbObjectId id;
    std::string name; ///< small letters
    bool isErased = false;

    bool operator==(const Row&) const = default;
};

struct Rows {
    std::array<std::vector<Row>, hostkit::tableCount> tables;
    std::array<AcDbObjectId, hostkit::tableCount> current; ///< the header's; null: one that every drawing has

    std::vector<Row>& of(int kind) { return tables[static_cast<std::size_t>(kind)]; }
    const std::vector<Row>& of(int kind) const { return tables[static_cast<std::size_t>(kind)]; }
    Row* find(AcDbObjectId id) {
        for (auto& table : tables)
            for (Row& row : table)
                if (row.id == id) return &row;
        return nullptr;
    }
    void remove(AcDbObjectId id) {
        for (auto& table : tables) std::erase_if(table, [id](const Row& row) { return row.id == id; });
    }
};

/// Does random things to a drawing and says after each what the drawing should hold.
class RecordModel {
public:
    /// What the drawing is to do besides appending, erasing, restoring and renaming.
    struct Kinds {
        bool transactions = false;
        bool steps = false;
        bool suspends = false;
    };

    RecordModel(std::uint32_t seed, Kinds kinds, AcDbDatabase& drawing)
        : m_random(seed)
        , m_kinds(kinds)
        , m_database(drawing) {
        m_database.disableUndoRecording(!kinds.steps);
    }

    void run(int operations) {
        if (m_kinds.steps) beginStep();
        for (int i = 0; i < operations && !::testing::Test::HasFailure(); ++i) {
            act();
            if (m_touched < 0)
                checkAll();
            else
                check(m_touched);
        }
        finish();
        checkAll();
        if (::testing::Test::HasFailure()) ADD_FAILURE() << "after" << m_log;
    }

    /// The names that are not erased, by table and in its order: what a saved drawing holds.
    static std::array<std::vector<std::string>, hostkit::tableCount> liveNames(const AcDbDatabase& database) {
        std::array<std::vector<std::string>, hostkit::tableCount> names;
        for (int kind = 0; kind < hostkit::tableCount; ++kind)
            for (const AcDbObjectId id : tableOf(database, kind)->records())
                if (!id.isErased()) names[static_cast<std::size_t>(kind)].push_back(nameOf(id));
        return names;
    }

private:
    struct Opening {
        AcDbObject* object;
        Row before; ///< without a meaning for a record that came in this open
        bool isNew = false;
        std::size_t depth = 0; ///< transactions and steps that were under way
        std::size_t stepCount = 0;
    };
    struct Step {
        std::wstring name;
        Rows before;
    };

    /// Of a table that has a current record.
    struct CurrentRecord {
        hostkit::TableKind kind;
        AcDbObjectId (AcDbDatabase::*get)() const;
        Acad::ErrorStatus (AcDbDatabase::*set)(AcDbObjectId);
    };

    // Ground.

    static const CurrentRecord* currentRecordOf(int kind) {
        using hostkit::TableKind;
        static constexpr CurrentRecord all[] = {
            {TableKind::kLayer, &AcDbDatabase::clayer, &AcDbDatabase::setClayer},
            {TableKind::kLinetype, &AcDbDatabase::celtype, &AcDbDatabase::setCeltype},
            {TableKind::kTextStyle, &AcDbDatabase::textstyle, &AcDbDatabase::setTextstyle},
            {TableKind::kDimStyle, &AcDbDatabase::dimstyle, &AcDbDatabase::setDimstyle}};
        for (const CurrentRecord& each : all)
            if (each.kind == static_cast<TableKind>(kind)) return &each;
        return nullptr;
    }
    static const AcDbSymbolTable* tableOf(const AcDbDatabase& database, int kind) {
        return hostkit::DatabaseAccess::objectOf<AcDbSymbolTable>(
            hostkit::DatabaseAccess::table(database, static_cast<hostkit::TableKind>(kind)));
    }
    static std::string small(std::wstring_view name) {
        std::string text = narrow(name);
        for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        return text;
    }
    static std::string nameOf(AcDbObjectId id) {
        return small(static_cast<AcDbSymbolTableRecord*>(id.stub()->object)->name());
    }
    static bool repeats(int kind) { return kind == static_cast<int>(hostkit::TableKind::kViewport); }

    unsigned any(unsigned count) { return static_cast<unsigned>(m_random() % count); }
    std::wstring anyName() {
        static const wchar_t* const names[] = {L"axis", L"AXIS", L"Beam", L"bEAM", L"core", L"Core", L"DUCT"};
        return names[any(7)];
    }
    int anyKind() { return static_cast<int>(any(hostkit::tableCount)); }
    /// Of the table that is touched from now on.
    Row* anyRow() {
        m_touched = anyKind();
        auto& rows = m_rows.of(m_touched);
        return rows.empty() ? nullptr : &rows[any(static_cast<unsigned>(rows.size()))];
    }
    int kindOf(AcDbObjectId id) {
        int kind = hostkit::tableCount - 1;
        while (kind >= 0 && std::ranges::find(m_rows.of(kind), id, &Row::id) == m_rows.of(kind).end()) --kind;
        return kind;
    }
    bool isTaken(const Rows& rows, int kind, const std::string& name, AcDbObjectId except) const {
        if (repeats(kind)) return false;
        return std::ranges::any_of(rows.of(kind), [&](const Row& row) {
            return row.id != except && !row.isErased && row.name == name;
        });
    }

    // Doing.

    void act() {
        m_touched = -1;
        const unsigned what = any(18);
        if (what < 4) return add();
        if (what < 8) return erase(what < 6);
        if (what < 11) return rename();
        if (what == 11) return setCurrent();
        if (what == 12) return open();
        if (what == 13) return close();
        if (what == 14) return cancel();
        if (what == 15) return m_kinds.transactions ? startTransaction() : rename();
        if (what == 16)
            return m_kinds.transactions && !m_marks.empty() ? endTransaction(any(3) > 0) : rename();
        if (m_kinds.suspends) m_database.disableUndoRecording(any(2) == 0);
        if (!m_kinds.steps || !m_marks.empty()) return;
        endStep();
        if (any(2) == 0) undo();
        beginStep();
    }

    /// Calls f(object) with the object open for write, in one of the ways in which code comes by one.
    template <class F>
    void write(AcDbObjectId id, F&& f) {
        AcDbObject* object = id.stub()->object;
        if (object->isWriteEnabled()) return f(*object);
        if (!m_marks.empty() && any(2) == 0) {
            ASSERT_EQ(m_database.transactionManager()->getObject(object, id, AcDb::kForWrite, true),
                      Acad::eOk);
            return f(*object);
        }
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite, true), Acad::eOk);
        f(*object);
        ASSERT_EQ(object->close(), Acad::eOk);
    }

    void add() {
        const int kind = m_touched = anyKind();
        const AcDbSymbolTable* table = tableOf(m_database, kind);
        auto* record = static_cast<AcDbSymbolTableRecord*>(table->recordClass()->create());
        const std::wstring name = anyName();
        ASSERT_EQ(record->setName(name.c_str()), Acad::eOk);
        const bool isFree = !isTaken(m_rows, kind, small(name), {});
        write(table->objectId(), [&](AcDbObject& opened) {
            AcDbObjectId id;
            ASSERT_EQ(static_cast<AcDbSymbolTable&>(opened).add(id, record),
                      isFree ? Acad::eOk : Acad::eDuplicateKey);
        });
        if (!isFree) {
            delete record;
            return;
        }
        if (auto* block = AcDbBlockTableRecord::cast(record)) {
            auto* line = new AcDbLine;
            ASSERT_EQ(block->appendAcDbEntity(line), Acad::eOk);
            line->close();
        }
        const Row row = {record->objectId(), small(name), false};
        tell("add", row.id, row.name + " to table " + std::to_string(kind));
        m_rows.of(kind).push_back(row);
        if (any(4) == 0)
            m_openings.push_back({record, row, true, m_marks.size(), m_steps.size()});
        else
            record->close();
    }

    void erase(bool erasing) {
        Row* row = anyRow();
        if (!row || row->isErased == erasing) return;
        // Only the layer table keeps its current record.
        const bool isCurrent = m_rows.current[static_cast<std::size_t>(m_touched)] == row->id;
        const bool isLayer = m_touched == static_cast<int>(hostkit::TableKind::kLayer);
        if (erasing && isCurrent && !isLayer) return;
        tell(erasing ? "erase" : "restore", row->id);
        Acad::ErrorStatus expected = Acad::eOk;
        if (erasing && isCurrent) expected = Acad::eCannotBeErasedByCaller;
        if (!erasing && isTaken(m_rows, m_touched, row->name, row->id)) expected = Acad::eDuplicateKey;
        write(row->id, [&](AcDbObject& object) { ASSERT_EQ(object.erase(erasing), expected); });
        if (expected == Acad::eOk) row->isErased = erasing;
    }

    void rename() {
        Row* row = anyRow();
        if (!row) return;
        const std::wstring name = anyName();
        const bool isFree = !isTaken(m_rows, m_touched, small(name), row->id);
        tell("rename", row->id, small(name));
        write(row->id, [&](AcDbObject& object) {
            ASSERT_EQ(static_cast<AcDbSymbolTableRecord&>(object).setName(name.c_str()),
                      isFree ? Acad::eOk : Acad::eDuplicateKey);
        });
        if (isFree) row->name = small(name);
    }

    void setCurrent() {
        const Row* row = anyRow();
        const CurrentRecord* current = currentRecordOf(m_touched);
        if (!row || row->isErased || !current) return;
        tell("set current", row->id);
        ASSERT_EQ((m_database.*current->set)(row->id), Acad::eOk);
        m_rows.current[static_cast<std::size_t>(m_touched)] = row->id;
    }

    // Opens that last.

    void open() {
        const Row* row = anyRow();
        AcDbObject* object = nullptr;
        if (!row || row->id.stub()->object->isWriteEnabled()) return;
        ASSERT_EQ(acdbOpenAcDbObject(object, row->id, AcDb::kForWrite, true), Acad::eOk);
        tell("open", row->id);
        m_openings.push_back({object, *row, false, m_marks.size(), m_steps.size()});
    }

    Opening takeOpening() {
        const auto place = m_openings.begin() + any(static_cast<unsigned>(m_openings.size()));
        const Opening opening = *place;
        tell("close or cancel", opening.object->objectId());
        m_openings.erase(place);
        return opening;
    }

    void close() {
        if (m_openings.empty()) return;
        ASSERT_EQ(takeOpening().object->close(), Acad::eOk);
    }

    // The object is what it was before the open, then and in all that could be gone back to since.
    void cancel() {
        if (m_openings.empty()) return;
        const Opening opening = takeOpening();
        const AcDbObjectId id = opening.object->objectId();
        const int kind = kindOf(id);
        if (kind < 0) { // an abort has taken it back
            ASSERT_EQ(opening.object->cancel(), Acad::eOk);
            return;
        }
        const bool isCurrent = m_rows.current[static_cast<std::size_t>(kind)] == id;
        if (isCurrent && (opening.isNew || opening.before.isErased)) {
            ASSERT_EQ(opening.object->close(), Acad::eOk);
            return;
        }
        const bool isRefused =
            !opening.isNew && !opening.before.isErased && isTaken(m_rows, kind, opening.before.name, id);
        ASSERT_EQ(opening.object->cancel(), isRefused ? Acad::eDuplicateKey : Acad::eOk);
        if (isRefused) {
            ASSERT_EQ(opening.object->close(), Acad::eOk);
            return;
        }
        putBack(m_rows, opening);
        for (std::size_t i = opening.depth; i < m_marks.size(); ++i) putBack(m_marks[i], opening);
        for (std::size_t i = opening.stepCount; i < m_steps.size(); ++i) putBack(m_steps[i].before, opening);
    }

    static void putBack(Rows& rows, const Opening& opening) {
        if (opening.isNew)
            rows.remove(opening.before.id);
        else if (Row* row = rows.find(opening.before.id))
            *row = opening.before;
    }

    // Transactions and steps.

    void startTransaction() {
        tell("start");
        m_database.transactionManager()->startTransaction();
        m_marks.push_back(m_rows);
    }

    void endTransaction(bool aborts) {
        tell(aborts ? "abort" : "end");
        AcDbTransactionManager& manager = *m_database.transactionManager();
        ASSERT_EQ(aborts ? manager.abortTransaction() : manager.endTransaction(), Acad::eOk);
        const Rows before = m_marks.back();
        m_marks.pop_back();
        for (Opening& opening : m_openings) {
            const bool isLater = opening.depth > m_marks.size();
            opening.depth = std::min(opening.depth, m_marks.size());
            if (aborts && isLater) startAnew(opening, before);
        }
        if (aborts) goBack(before);
    }

    void beginStep() {
        tell("step");
        m_steps.push_back({L"STEP" + std::to_wstring(++m_lastStep), m_rows});
        hostkit::beginUndoGroup(m_database, m_steps.back().name);
    }
    void endStep() { hostkit::endUndoGroup(m_database); }

    void undo() {
        tell("undo");
        hostkit::UndoReport report;
        const Acad::ErrorStatus status = hostkit::undoLastGroup(m_database, report);
        if (status != Acad::eOk) {
            EXPECT_EQ(hostkit::undoGroupCount(m_database), 0);
            m_steps.clear();
            return;
        }
        // A step in which nothing was changed is none.
        while (m_steps.size() > 1 && m_steps.back().name != report.name && !report.name.empty())
            m_steps.pop_back();
        const Rows before = m_steps.back().before;
        m_steps.pop_back();
        for (Opening& opening : m_openings) {
            if (opening.stepCount > m_steps.size()) startAnew(opening, before);
            opening.stepCount = std::min(opening.stepCount, m_steps.size());
        }
        if (m_kinds.suspends)
            takeOver();
        else
            goBack(before);
    }

    /// What the open did is taken back; it goes on from there.
    static void startAnew(Opening& opening, Rows before) {
        if (const Row* row = before.find(opening.object->objectId())) {
            opening.before = *row;
            opening.isNew = false;
        }
    }

    // A record whose earlier name was given away, which only a cancel beyond the start can do, keeps the
    // present one.
    void goBack(const Rows& before) {
        Rows now = m_rows;
        m_rows = before;
        for (bool isSettled = false; !isSettled;) {
            isSettled = true;
            for (int kind = 0; kind < hostkit::tableCount; ++kind)
                for (Row& row : m_rows.of(kind)) {
                    const Row* present = now.find(row.id);
                    if (row.isErased || !present || *present == row ||
                        !isTaken(m_rows, kind, row.name, row.id))
                        continue;
                    if (present->isErased)
                        row.isErased = true;
                    else
                        row.name = present->name;
                    isSettled = false;
                }
        }
    }

    // What recording did not see stays: the drawing says what that is, and only has to be whole.
    void takeOver() {
        Rows found;
        for (int kind = 0; kind < hostkit::tableCount; ++kind)
            for (const AcDbObjectId id : tableOf(m_database, kind)->records())
                if (m_rows.find(id) || isOwn(id)) found.of(kind).push_back({id, nameOf(id), id.isErased()});
        for (std::size_t kind = 0; kind < found.current.size(); ++kind)
            if (const Row* row = found.find(m_rows.current[kind]); row && !row->isErased)
                found.current[kind] = currentOf(static_cast<int>(kind));
        m_rows = found;
        for (Step& step : m_steps) step.before = found;
        for (const Opening& opening : m_openings) (void)opening.object->close();
        m_openings.clear();
    }
    static bool isOwn(AcDbObjectId id) {
        const std::string name = nameOf(id);
        return name == "axis" || name == "beam" || name == "core" || name == "duct";
    }

    void finish() {
        while (!m_openings.empty() && !::testing::Test::HasFailure()) any(2) == 0 ? close() : cancel();
        while (!m_marks.empty() && !::testing::Test::HasFailure()) endTransaction(any(2) == 0);
        if (m_kinds.steps) endStep();
        while (m_kinds.steps && any(3) > 0 && hostkit::undoGroupCount(m_database) > 0) undo();
    }

    // Looking.

    AcDbObjectId currentOf(int kind) const {
        const CurrentRecord* current = currentRecordOf(kind);
        return current ? (m_database.*current->get)() : AcDbObjectId();
    }

    void checkAll() {
        for (int kind = 0; kind < hostkit::tableCount; ++kind) check(kind);
    }

    void check(int kind) {
        const auto& expected = m_rows.of(kind);
        const AcDbSymbolTable& table = *tableOf(m_database, kind);
        std::vector<Row> found;
        for (const AcDbObjectId id : table.records())
            if (isOwn(id)) found.push_back({id, nameOf(id), id.isErased()});
        ASSERT_TRUE(expected == found)
            << "table " << kind << ": " << textOf(found) << " and not " << textOf(expected);
        for (const wchar_t* name : {L"AXIS", L"beam", L"CORE", L"duct"}) checkName(table, kind, name, found);
        checkCurrent(kind);
        if (kind == static_cast<int>(hostkit::TableKind::kBlock)) checkLines(found);
    }

    static std::string textOf(const std::vector<Row>& rows) {
        std::string text;
        for (const Row& row : rows)
            text += std::to_string(row.id.handle().value()) + ' ' + row.name +
                    (row.isErased ? " erased, " : ", ");
        return text;
    }

    static void checkName(const AcDbSymbolTable& table, int kind, const wchar_t* name,
                          const std::vector<Row>& rows) {
        AcDbObjectId live;
        AcDbObjectId last;
        int count = 0;
        for (const Row& row : rows) {
            if (row.name != small(name)) continue;
            last = row.id;
            if (!row.isErased && count++ == 0) live = row.id;
        }
        ASSERT_TRUE(repeats(kind) || count <= 1) << small(name) << " twice in table " << kind;
        ASSERT_EQ(table.find(name), live) << small(name) << " in table " << kind;
        AcDbObjectId erasedToo;
        ASSERT_EQ(table.getAt(name, erasedToo, true), last.isNull() ? Acad::eKeyNotFound : Acad::eOk);
        ASSERT_EQ(erasedToo, live.isNull() ? last : live) << small(name) << " in table " << kind;
    }

    void checkCurrent(int kind) {
        AcDbObjectId& expected = m_rows.current[static_cast<std::size_t>(kind)];
        const Row* row = m_rows.find(expected);
        if (!row || row->isErased)
            expected = {};
        else
            ASSERT_EQ(currentOf(kind), expected) << "current of table " << kind;
    }

    // A block's entities share its fate.
    static void checkLines(const std::vector<Row>& blocks) {
        for (const Row& block : blocks)
            for (const AcDbObjectId line :
                 static_cast<AcDbBlockTableRecord*>(block.id.stub()->object)->entities())
                ASSERT_EQ(line.isErased(), block.isErased) << block.id.handle().value();
    }

    /// "erase 2A", for whoever looks for what went wrong.
    void tell(const char* what, AcDbObjectId id = {}, const std::string& name = {}) {
        m_log += std::string("; ") + what;
        if (!id.isNull()) m_log += ' ' + std::to_string(id.handle().value());
        if (!name.empty()) m_log += ' ' + name;
    }

    std::string m_log;
    std::mt19937 m_random;
    Kinds m_kinds;
    AcDbDatabase& m_database;
    Rows m_rows;
    std::vector<Rows> m_marks;
    std::vector<Step> m_steps;
    std::vector<Opening> m_openings;
    int m_lastStep = 0;
    int m_touched = -1; ///< the table that the last operation could change; -1: any
};

} // namespace drawingtest
