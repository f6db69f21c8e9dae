#include "drawingchanges.h"
#include "drawingfiles.h"
#include "recordmodel.h"
#include "undohistory.h"

using namespace hostkit;
using namespace drawingtest;

namespace {

void undo(AcDbDatabase& database) {
    UndoReport report;
    EXPECT_EQ(undoLastGroup(database, report), Acad::eOk);
    EXPECT_EQ(report.inConflict + report.keptSuspended, 0u);
}

// What was taken back leaves no trace in the file, down to the byte.
TEST(UndoAndSave, AnUntouchedDrawingIsTheSameFile) {
    const std::string original = saved(Drawing().database);
    for (const Change& change : changes()) {
        SCOPED_TRACE(change.name);
        Drawing drawing(openDrawingFromMemory(original, L"undo"));
        drawing.database.disableUndoRecording(false);
        beginUndoGroup(drawing.database, L"CHANGE");
        change.apply(drawing);
        endUndoGroup(drawing.database);
        const bool leavesNothing = std::string(change.name) == "an entity that is new, changed and erased";
        EXPECT_EQ(saved(drawing.database) == original, leavesNothing);
        undo(drawing.database);
        EXPECT_EQ(saved(drawing.database), original);
    }
}

// Only the step that stays shows in the file.
TEST(UndoAndSave, WhatStaysIsSavedAsIfTheRestHadNeverBeen) {
    const std::string original = saved(Drawing().database);
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        SCOPED_TRACE(seed);
        const auto makeFirstStep = [](Drawing& drawing) {
            change<AcDbLine>(drawing.line, [](AcDbLine& line) { line.setEndPoint({3, 4, 5}); });
        };
        Drawing plain(openDrawingFromMemory(original, L"plain"));
        makeFirstStep(plain);
        Drawing drawing(openDrawingFromMemory(original, L"undo"));
        drawing.database.disableUndoRecording(false);
        beginUndoGroup(drawing.database, L"FIRST");
        makeFirstStep(drawing);
        endUndoGroup(drawing.database);
        beginUndoGroup(drawing.database, L"SECOND");
        applyAll(drawing, seed);
        endUndoGroup(drawing.database);
        undo(drawing.database);
        EXPECT_EQ(saved(drawing.database), saved(plain.database));
        undo(drawing.database);
        EXPECT_EQ(saved(drawing.database), original);
    }
}

// Whatever was done and taken back, the file opens again and holds the same names.
TEST(UndoAndSave, TablesComeBackWithTheirNames) {
    for (std::uint32_t seed = 1; seed <= 200 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        AcDbDatabase database;
        RecordModel(seed, {seed % 2 == 0, seed % 3 != 0, seed % 5 == 0}, database).run(60);
        const auto names = RecordModel::liveNames(database);
        const auto again = openDrawingFromMemory(saved(database), L"names");
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(RecordModel::liveNames(*again), names);
    }
}

} // namespace
