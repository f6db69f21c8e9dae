#include "changelog.h"
#include "dbaccess.h"
#include "drawingchanges.h"
#include "drawingpicture.h"
#include "undohistory.h"

#include <random>
#include <set>

namespace {

using namespace drawingtest;

struct RedoDrawing : Drawing {
    RedoDrawing() {
        database.disableUndoRecording(false);
        hostkit::noteSaved(database);
    }
    Acad::ErrorStatus undo(hostkit::UndoReport* report = nullptr) {
        hostkit::UndoReport own;
        return hostkit::undoLastGroup(database, report ? *report : own);
    }
    Acad::ErrorStatus redo(hostkit::UndoReport* report = nullptr) {
        hostkit::UndoReport own;
        return hostkit::redoLastGroup(database, report ? *report : own);
    }
    template <typename Do>
    void step(const wchar_t* name, Do&& act) {
        hostkit::beginUndoGroup(database, name);
        act();
        hostkit::endUndoGroup(database);
    }
    void moveEnd(double x) {
        change<AcDbLine>(line, [&](AcDbLine& each) { each.setEndPoint({x, 0, 0}); });
    }
};

// What a history of steps must be: states by number, each with what the drawing held then.
class Model {
public:
    explicit Model(std::uint32_t seed)
        : m_random(seed) {
        m_states.push_back(current({}));
    }
    void run(int actions) {
        for (int i = 0; i < actions && !::testing::Test::HasFailure(); ++i) {
            const unsigned choice = m_random() % 10;
            if (choice < 3)
                step();
            else if (choice < 6)
                undo();
            else if (choice < 9)
                redo();
            else
                save();
            check();
        }
    }

private:
    struct State {
        int number;
        std::string picture;
        std::set<std::size_t> made; ///< places of the changes that led here
    };
    State current(std::set<std::size_t> made) {
        return {m_latest++, pictureOf(m_drawing.database), std::move(made)};
    }
    // One to three changes, by a command or by none.
    void step() {
        const bool isCommand = m_random() % 4 != 0;
        const bool wasAtUnnamed = m_isLastUnnamed;
        const std::wstring name = isCommand ? L"STEP" + std::to_wstring(m_latest) : L"";
        if (isCommand) hostkit::beginUndoGroup(m_drawing.database, name);
        bool hasChanged = false;
        std::set<std::size_t> made = m_states[m_at].made;
        for (unsigned left = 1 + m_random() % 3; left > 0; --left) {
            const std::size_t place = m_random() % changes().size();
            const Change& change = changes()[place];
            if (!isPossible(m_drawing, change) || !(made.insert(place).second || change.isFree)) continue;
            change.apply(m_drawing);
            hasChanged = true;
        }
        if (isCommand) hostkit::endUndoGroup(m_drawing.database);
        if (!hasChanged) return;
        m_states.resize(m_at + 1);
        m_names.resize(m_at);
        // What no command did gathers in one step.
        if (!isCommand && wasAtUnnamed && m_at > 0 && m_names.back().empty()) {
            m_states.back() = current(std::move(made));
        } else {
            m_states.push_back(current(std::move(made)));
            m_names.push_back(name);
            ++m_at;
        }
        m_isLastUnnamed = !isCommand;
    }
    void undo() {
        hostkit::UndoReport report;
        ASSERT_EQ(m_drawing.undo(&report), m_at > 0 ? Acad::eOk : Acad::eUndoOperationNotAvailable);
        if (m_at == 0) return;
        EXPECT_EQ(report.name, m_names[--m_at]);
        m_isLastUnnamed = m_at > 0 && m_names[m_at - 1].empty();
    }
    void redo() {
        hostkit::UndoReport report;
        const bool canRedo = m_at + 1 < m_states.size();
        ASSERT_EQ(m_drawing.redo(&report), canRedo ? Acad::eOk : Acad::eUndoOperationNotAvailable);
        if (!canRedo) return;
        EXPECT_EQ(report.name, m_names[m_at++]);
        EXPECT_LT(0u, report.restored);
        m_isLastUnnamed = m_names[m_at - 1].empty();
    }
    void save() {
        hostkit::noteSaved(m_drawing.database);
        m_saved = m_states[m_at].number;
    }
    void check() {
        ASSERT_EQ(m_states[m_at].picture, pictureOf(m_drawing.database));
        ASSERT_EQ(m_saved != m_states[m_at].number, hostkit::hasUnsavedChanges(m_drawing.database));
        ASSERT_EQ(static_cast<int>(m_at), hostkit::undoGroupCount(m_drawing.database));
        ASSERT_EQ(static_cast<int>(m_states.size() - m_at - 1), hostkit::redoGroupCount(m_drawing.database));
    }

    std::mt19937 m_random;
    RedoDrawing m_drawing;
    int m_latest = 0;
    int m_saved = 0;
    std::vector<State> m_states;
    std::vector<std::wstring> m_names; ///< of the step behind each state
    std::size_t m_at = 0;
    bool m_isLastUnnamed = false;
};

TEST(Redo, IsWhatAModelOfStatesSays) {
    for (std::uint32_t seed = 1; seed <= 80 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Model(seed).run(60);
    }
}

TEST(Redo, WhatWasNotTakenBackWholeIsNotDoneAgain) {
    AcDbObject* held = nullptr;
    const std::function<void(RedoDrawing&)> hindrances[] = {
        [](RedoDrawing& drawing) { // a change that recording did not see
            drawing.database.disableUndoRecording(true);
            drawing.moveEnd(9);
            drawing.database.disableUndoRecording(false);
        },
        [&held](RedoDrawing& drawing) { // an object that is open and changed
            auto* layer = opened<AcDbLayerTableRecord>(drawing.layer);
            layer->setIsOff(true);
            held = layer;
        },
    };
    for (const auto& hinder : hindrances) {
        RedoDrawing drawing;
        drawing.step(L"ONE", [&] { drawing.moveEnd(2); });
        drawing.step(L"TWO", [&] {
            drawing.moveEnd(3);
            hinder(drawing);
        });
        EXPECT_EQ(Acad::eOk, drawing.undo());
        EXPECT_EQ(Acad::eUndoOperationNotAvailable, drawing.redo());
        EXPECT_TRUE(hostkit::hasUnsavedChanges(drawing.database));
        if (held) held->close();
    }
}

TEST(Redo, ALaterChangeForgetsIt) {
    RedoDrawing drawing;
    const std::function<void()> later[] = {
        [&] { drawing.moveEnd(7); },
        [&] { erase(drawing.line); },
        [&] { drawing.database.setInsunits(3); },
        [&] { appendToModelSpace(drawing.database, new AcDbLine); },
        [&] {
            drawing.database.disableUndoRecording(true);
            drawing.moveEnd(8);
            drawing.database.disableUndoRecording(false);
        },
        [&] {
            drawing.manager().startTransaction();
            drawing.moveEnd(8);
            drawing.manager().abortTransaction();
        },
    };
    for (const auto& change : later) {
        drawing.step(L"ONE", [&] { appendToModelSpace(drawing.database, new AcDbLine); });
        ASSERT_EQ(Acad::eOk, drawing.undo());
        EXPECT_EQ(1, hostkit::redoGroupCount(drawing.database));
        drawing.step(L"LOOK", [] {}); // which is no change
        EXPECT_EQ(1, hostkit::redoGroupCount(drawing.database));
        drawing.step(L"LATER", change);
        EXPECT_EQ(Acad::eUndoOperationNotAvailable, drawing.redo());
        if (drawing.line.isErased()) erase(drawing.line, false);
    }
}

// An id that was handed out is good again, and the object is the same one.
TEST(Redo, IdsOutliveTheirUndo) {
    RedoDrawing drawing;
    AcDbObjectId block, line;
    drawing.step(L"BLOCK", [&] {
        block = addRecord<AcDbBlockTable>(drawing.database, L"Column");
        line = append(block, new AcDbLine({1, 2, 3}, {4, 5, 6}));
    });
    const AcDbObject* const object = hostkit::DatabaseAccess::object(line);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Acad::eOk, drawing.undo());
        EXPECT_EQ(Acad::ePermanentlyErased,
                  AcDbObjectPointer<AcDbLine>(line, AcDb::kForRead, true).openStatus());
        EXPECT_EQ(Acad::eOk, drawing.redo());
        const AcDbObjectPointer<AcDbLine> again(line, AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, again.openStatus());
        EXPECT_EQ(object, again.object());
        EXPECT_EQ(AcGePoint3d(4, 5, 6), again->endPoint());
        EXPECT_EQ(block, again->ownerId());
    }
}

TEST(Redo, WaitsForStepsAndTransactionsToEnd) {
    RedoDrawing drawing;
    drawing.step(L"MOVE", [&] { drawing.moveEnd(2); });
    drawing.undo();
    drawing.manager().startTransaction();
    EXPECT_EQ(Acad::eUndoOperationNotAvailable, drawing.redo());
    drawing.manager().endTransaction();
    drawing.step(L"OUTER", [&] { EXPECT_EQ(Acad::eUndoOperationNotAvailable, drawing.redo()); });
    EXPECT_EQ(Acad::eOk, drawing.redo());
}

} // namespace
