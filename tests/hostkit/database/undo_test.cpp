#include "beam.h"
#include "changelog.h"
#include "dbaccess.h"
#include "drawingchanges.h"
#include "undohistory.h"

namespace {

using namespace drawingtest;

struct RecordedDrawing : Drawing {
    RecordedDrawing() { database.disableUndoRecording(false); }
    template <typename Do>
    void step(const wchar_t* name, Do&& act) {
        hostkit::beginUndoGroup(database, name);
        act();
        hostkit::endUndoGroup(database);
    }
    template <typename Do>
    void suspended(Do&& act) {
        database.disableUndoRecording(true);
        act();
        database.disableUndoRecording(false);
    }
    hostkit::UndoReport undo() {
        hostkit::UndoReport report;
        EXPECT_EQ(Acad::eOk, hostkit::undoLastGroup(database, report));
        return report;
    }
    void moveEnd(const AcGePoint3d& to) {
        change<AcDbLine>(line, [&](AcDbLine& each) { each.setEndPoint(to); });
    }
    AcGePoint3d end() { return AcDbObjectPointer<AcDbLine>(line, AcDb::kForRead)->endPoint(); }
};

TEST(Undo, TakesBackEachStepWhole) {
    for (std::uint32_t seed = 1; seed <= 50; ++seed) {
        SCOPED_TRACE(seed);
        RecordedDrawing drawing;
        std::vector<std::pair<std::wstring, std::string>> steps;
        forEachPossible(drawing, seed, [&](const Change& change) {
            const std::wstring name = L"STEP" + std::to_wstring(steps.size());
            steps.emplace_back(name, pictureOf(drawing.database));
            drawing.step(name.c_str(), [&] { change.apply(drawing); });
        });
        for (; !steps.empty(); steps.pop_back()) {
            const hostkit::UndoReport report = drawing.undo();
            EXPECT_EQ(steps.back().first, report.name);
            EXPECT_LT(0u, report.restored);
            EXPECT_EQ(0u, report.keptSuspended + report.inConflict);
            EXPECT_EQ(steps.back().second, pictureOf(drawing.database));
        }
        hostkit::UndoReport none;
        EXPECT_EQ(Acad::eUndoOperationNotAvailable, hostkit::undoLastGroup(drawing.database, none));
        EXPECT_EQ(0u, hostkit::DatabaseAccess::changes(drawing.database).size());
    }
}

TEST(Undo, StepsAreWhatChangedSomething) {
    RecordedDrawing drawing;
    drawing.step(L"LOOK", [&] { drawing.end(); });
    EXPECT_EQ(0, hostkit::undoGroupCount(drawing.database));
    drawing.step(L"MOVE", [&] { drawing.moveEnd({2, 2, 2}); });
    drawing.step(L"LOOK", [&] { drawing.end(); });
    drawing.moveEnd({3, 3, 3}); // by no command
    drawing.moveEnd({4, 4, 4});
    EXPECT_EQ(2, hostkit::undoGroupCount(drawing.database));
    EXPECT_EQ(L"", drawing.undo().name);
    EXPECT_EQ(AcGePoint3d(2, 2, 2), drawing.end());
    EXPECT_EQ(L"MOVE", drawing.undo().name);
    EXPECT_EQ(AcGePoint3d(1, 0, 0), drawing.end());
}

TEST(Undo, WhatWasDoneWhileRecordingWasOffStays) {
    RecordedDrawing drawing;
    drawing.step(L"BOTH", [&] {
        drawing.moveEnd({2, 2, 2});
        drawing.suspended([&] {
            change<AcDbLayerTableRecord>(drawing.layer, [](auto& layer) { layer.setIsOff(true); });
            appendToModelSpace(drawing.database, new AcDbLine({0, 0, 0}, {9, 9, 9}));
        });
        appendToModelSpace(drawing.database, new AcDbLine({0, 0, 0}, {8, 8, 8}));
    });
    const hostkit::UndoReport report = drawing.undo();
    EXPECT_EQ(2u, report.restored);
    EXPECT_EQ(2u, report.keptSuspended);
    EXPECT_EQ(0u, report.inConflict);
    EXPECT_EQ(AcGePoint3d(1, 0, 0), drawing.end());
    EXPECT_TRUE(AcDbObjectPointer<AcDbLayerTableRecord>(drawing.layer, AcDb::kForRead)->isOff());
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.database.modelSpaceId(), AcDb::kForRead);
    ASSERT_EQ(3u, space->entities().size());
    EXPECT_EQ(AcGePoint3d(9, 9, 9),
              AcDbObjectPointer<AcDbLine>(space->entities().back(), AcDb::kForRead)->endPoint());
}

// A later change with recording off stays, also where an earlier step is taken back after its own one.
TEST(Undo, WhatRecordingDidNotSeeIsNotOverwritten) {
    RecordedDrawing drawing;
    drawing.step(L"FIRST", [&] { drawing.moveEnd({2, 2, 2}); });
    drawing.step(L"SECOND", [&] { drawing.suspended([&] { drawing.moveEnd({3, 3, 3}); }); });
    hostkit::UndoReport report = drawing.undo();
    EXPECT_EQ(L"SECOND", report.name);
    EXPECT_EQ(1u, report.keptSuspended);
    report = drawing.undo();
    EXPECT_EQ(L"FIRST", report.name);
    EXPECT_EQ(0u, report.restored);
    EXPECT_EQ(1u, report.inConflict);
    EXPECT_EQ(0u, report.keptSuspended) << "told once";
    EXPECT_EQ(AcGePoint3d(3, 3, 3), drawing.end());

    drawing.suspended([&] { drawing.moveEnd({4, 4, 4}); });
    drawing.step(L"THIRD", [&] { drawing.moveEnd({5, 5, 5}); });
    EXPECT_EQ(1u, drawing.undo().restored);
    EXPECT_EQ(AcGePoint3d(4, 4, 4), drawing.end()) << "an earlier one is what the step found";
}

// Fields and extended data are parts of their own.
TEST(Undo, PartsOfOneObjectGoTheirOwnWays) {
    for (const bool recordsFields : {true, false}) {
        for (const bool inTwoSteps : {false, true}) {
            SCOPED_TRACE(std::to_string(recordsFields) + std::to_string(inTwoSteps));
            RecordedDrawing drawing;
            const auto mark = [&] {
                change<AcDbLine>(drawing.line, [](AcDbLine& line) { setText(line, L"text"); });
            };
            const auto move = [&] { drawing.moveEnd({2, 2, 2}); };
            const auto seen = [&] { recordsFields ? move() : mark(); };
            const auto unseen = [&] { drawing.suspended([&] { recordsFields ? mark() : move(); }); };
            drawing.step(L"SEEN", [&] {
                seen();
                if (!inTwoSteps) unseen();
            });
            if (inTwoSteps) {
                drawing.step(L"UNSEEN", unseen);
                EXPECT_EQ(1u, drawing.undo().keptSuspended);
            }
            const hostkit::UndoReport report = drawing.undo();
            EXPECT_EQ(1u, report.restored);
            EXPECT_EQ(inTwoSteps ? 0u : 1u, report.keptSuspended);
            EXPECT_EQ(0u, report.inConflict);
            EXPECT_EQ(recordsFields ? AcGePoint3d(1, 0, 0) : AcGePoint3d(2, 2, 2), drawing.end());
            AcDbObjectPointer<AcDbLine> line(drawing.line, AcDb::kForRead);
            EXPECT_EQ(recordsFields, line->hasXData());
            EXPECT_TRUE(line->isChangedSinceRead()) << "what stays is to be saved";
        }
    }
}

// Whoever took a name while recording was off keeps it: by being made, renamed or restored.
TEST(Undo, ANameGivenAwayMeanwhileStaysWithItsNewOwner) {
    const auto rename = [](AcDbObjectId id, const wchar_t* name) {
        change<AcDbLayerTableRecord>(id, [&](auto& layer) { EXPECT_EQ(Acad::eOk, layer.setName(name)); });
    };
    for (int frees = 0; frees < 2; ++frees) {
        for (int takes = 0; takes < 3; ++takes) {
            SCOPED_TRACE(std::to_string(frees) + std::to_string(takes));
            RecordedDrawing drawing;
            const AcDbObjectId erased = addRecord<AcDbLayerTable>(drawing.database, L"Beams");
            rename(drawing.layer, L"Beams2");
            rename(erased, L"Walls");
            erase(erased);
            rename(drawing.layer, L"Walls");
            drawing.step(L"FREE",
                         [&] { frees == 0 ? (void)erase(drawing.layer) : rename(drawing.layer, L"Slabs"); });
            AcDbObjectId taker = erased;
            drawing.suspended([&] {
                if (takes == 0)
                    taker = addRecord<AcDbLayerTable>(drawing.database, L"WALLS");
                else if (takes == 1)
                    rename(taker = addRecord<AcDbLayerTable>(drawing.database, L"Other"), L"walls");
                else
                    EXPECT_EQ(Acad::eOk, erase(erased, false));
            });
            const hostkit::UndoReport report = drawing.undo();
            EXPECT_EQ(1u, report.inConflict);
            EXPECT_EQ(0u, report.restored);
            AcDbSymbolTablePointer<AcDbLayerTable> layers(&drawing.database, AcDb::kForRead);
            EXPECT_EQ(taker, layers->find(L"walls"));
            EXPECT_EQ(frees == 0, drawing.layer.isErased());
            EXPECT_EQ(frees == 0 ? AcDbObjectId() : drawing.layer, layers->find(L"slabs"));
        }
    }
}

// What a block that stays erased owns stays erased with it.
TEST(Undo, ABlockWhoseNameWasGivenAwayStaysErasedWithItsEntities) {
    RecordedDrawing drawing;
    const AcDbObjectId block = addRecord<AcDbBlockTable>(drawing.database, L"Column");
    const AcDbObjectId line = append(block, new AcDbLine);
    drawing.step(L"ERASE", [&] { erase(block); });
    drawing.suspended([&] { addRecord<AcDbBlockTable>(drawing.database, L"Column"); });
    drawing.undo();
    EXPECT_TRUE(block.isErased());
    EXPECT_TRUE(line.isErased());
}

// A key of a dictionary likewise.
TEST(Undo, AKeyGivenAwayMeanwhileStaysWithItsNewOwner) {
    for (const bool erasesTaker : {false, true}) {
        RecordedDrawing drawing;
        drawing.step(L"REMOVE", [&] {
            change<AcDbDictionary>(drawing.dictionary, [](auto& dictionary) {
                EXPECT_EQ(Acad::eOk, dictionary.remove(L"first"));
            });
        });
        AcDbObjectId taker;
        drawing.suspended([&] {
            taker = enter(drawing.dictionary, L"FIRST");
            if (erasesTaker) erase(taker);
        });
        EXPECT_EQ(erasesTaker ? 0u : 1u, drawing.undo().inConflict);
        AcDbObjectPointer<AcDbDictionary> dictionary(drawing.dictionary, AcDb::kForRead);
        AcDbObjectId found;
        EXPECT_EQ(Acad::eOk, dictionary->getAt(L"first", found));
        EXPECT_EQ(erasesTaker ? drawing.record : taker, found);
        EXPECT_EQ(1u, dictionary->numEntries());
        EXPECT_EQ(erasesTaker ? drawing.dictionary : AcDbObjectId(),
                  AcDbObjectPointer<AcDbXrecord>(drawing.record, AcDb::kForRead)->ownerId());
        dictionary.close();
        if (!erasesTaker) continue;
        EXPECT_EQ(Acad::eOk, erase(taker, false));
        EXPECT_EQ(1u, AcDbObjectPointer<AcDbDictionary>(drawing.dictionary, AcDb::kForRead)->numEntries());
    }
}

// What was put into something that came with the step goes with it, seen or not.
void expectNothingLeftBehind(bool isAborted) {
    RecordedDrawing drawing;
    AcDbObjectId block;
    AcDbObjectId dictionary;
    AcDbObjectId polyline;
    const auto makeOwners = [&] {
        block = addRecord<AcDbBlockTable>(drawing.database, L"Column");
        dictionary = enter(drawing.dictionary, L"owner", new AcDbDictionary);
        polyline = append(block, new AcDb2dPolyline(AcDb::k2dSimplePoly, pointsOf({{0, 0, 0}}), 0.0, false));
    };
    if (isAborted) {
        drawing.manager().startTransaction();
        makeOwners();
    } else {
        drawing.step(L"OWNERS", makeOwners);
    }
    std::vector<AcDbObjectId> owned(4);
    drawing.suspended([&] {
        owned[0] = append(block, new AcDbLine);
        owned[1] = enter(dictionary, L"entry");
        change<AcDb2dPolyline>(polyline, [&](AcDb2dPolyline& line) {
            auto* vertex = new AcDb2dVertex({1, 1, 0});
            EXPECT_EQ(Acad::eOk, line.appendVertex(owned[2], vertex));
            vertex->close();
        });
        change<AcDbLine>(owned[0], [&](AcDbLine& line) {
            line.createExtensionDictionary();
            owned[3] = line.extensionDictionary();
        });
    });
    if (isAborted)
        drawing.manager().abortTransaction();
    else
        drawing.undo();
    owned.insert(owned.end(), {block, dictionary, polyline});
    for (const AcDbObjectId id : owned)
        EXPECT_EQ(Acad::ePermanentlyErased,
                  AcDbObjectPointer<AcDbObject>(id, AcDb::kForRead, true).openStatus())
            << id.handle().value();
}

TEST(Undo, AnOwnerThatIsTakenBackLeavesNothingBehind) {
    for (const bool isAborted : {false, true}) {
        SCOPED_TRACE(isAborted);
        expectNothingLeftBehind(isAborted);
    }
}

TEST(Undo, WaitsForStepsAndTransactionsToEnd) {
    RecordedDrawing drawing;
    drawing.step(L"MOVE", [&] { drawing.moveEnd({2, 2, 2}); });
    hostkit::UndoReport report;
    drawing.manager().startTransaction();
    EXPECT_EQ(Acad::eUndoOperationNotAvailable, hostkit::undoLastGroup(drawing.database, report));
    drawing.manager().endTransaction();
    drawing.step(L"OUTER", [&] {
        drawing.step(L"INNER", [&] { drawing.moveEnd({3, 3, 3}); });
        EXPECT_EQ(Acad::eUndoOperationNotAvailable, hostkit::undoLastGroup(drawing.database, report));
        drawing.moveEnd({4, 4, 4});
    });
    EXPECT_EQ(L"OUTER", drawing.undo().name);
    EXPECT_EQ(AcGePoint3d(2, 2, 2), drawing.end());
}

// Steps and transactions may cross: an aborted transaction leaves no step behind, and none of its own.
TEST(Undo, AbortedTransactionsAreNoSteps) {
    RecordedDrawing drawing;
    drawing.step(L"MOVE", [&] { drawing.moveEnd({2, 2, 2}); });
    drawing.step(L"VAIN", [&] {
        drawing.manager().startTransaction();
        drawing.moveEnd({3, 3, 3});
        drawing.manager().abortTransaction();
    });
    EXPECT_EQ(1, hostkit::undoGroupCount(drawing.database));
    drawing.manager().startTransaction();
    drawing.step(L"LOST", [&] { drawing.moveEnd({4, 4, 4}); });
    drawing.step(L"CALL", [&] {
        drawing.moveEnd({5, 5, 5});
        drawing.manager().abortTransaction();
        EXPECT_EQ(AcGePoint3d(2, 2, 2), drawing.end());
        drawing.moveEnd({6, 6, 6});
    });
    EXPECT_EQ(L"CALL", drawing.undo().name);
    EXPECT_EQ(L"MOVE", drawing.undo().name);
    EXPECT_EQ(AcGePoint3d(1, 0, 0), drawing.end());
}

TEST(Undo, ADrawingOfNoDocumentRemembersOnlyWhatIsOpen) {
    Drawing drawing;
    hostkit::ChangeLog& changes = hostkit::DatabaseAccess::changes(drawing.database);
    EXPECT_FALSE(drawing.database.undoRecording());
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        applyAll(drawing, seed);
        EXPECT_EQ(0u, changes.size());
    }
    auto* layer = opened<AcDbLayerTableRecord>(drawing.database.layerZero());
    layer->setIsOff(true);
    EXPECT_EQ(1u, changes.size());
    layer->close();
    EXPECT_EQ(0u, changes.size());
}

// The same object changed in a thousand opens of one step is remembered once.
TEST(Undo, RepeatedOpensCostNothingMore) {
    RecordedDrawing drawing;
    drawing.step(L"MANY", [&] {
        for (int i = 0; i < 1000; ++i) drawing.moveEnd({double(i), 2, 2});
        EXPECT_EQ(1u, hostkit::DatabaseAccess::changes(drawing.database).size());
    });
    drawing.undo();
    EXPECT_EQ(AcGePoint3d(1, 0, 0), drawing.end());
}

TEST(Undo, SaysWhatAnApplicationDoesNotFile) {
    const BeamApplication application(false);
    RecordedDrawing drawing;
    const AcDbObjectId id = appendToModelSpace(drawing.database, new Beam);
    drawing.step(L"LOAD", [&] {
        change<Beam>(id, [](Beam& beam) { beam.setThickness(3.0); });
        drawing.moveEnd({2, 2, 2});
    });
    auto* beam = opened<Beam>(id);
    beam->setThickness(4.0);
    EXPECT_EQ(Acad::eNotImplementedYet, beam->cancel());
    EXPECT_TRUE(beam->isWriteEnabled());
    beam->close();
    EXPECT_EQ(1u, drawing.undo().unfiled) << "the change by no command";
    const hostkit::UndoReport report = drawing.undo();
    EXPECT_EQ(1u, report.unfiled);
    EXPECT_EQ(1u, report.restored);
}

TEST(Undo, KnowsTheFieldsOfApplicationsClasses) {
    const BeamApplication application;
    RecordedDrawing drawing;
    const AcDbObjectId id = appendToModelSpace(drawing.database, new Beam);
    const auto load = [&] { return AcDbObjectPointer<Beam>(id, AcDb::kForRead)->load(); };
    drawing.step(L"LOAD", [&] {
        change<Beam>(id, [](Beam& beam) {
            beam.setLoad(5.0);
            beam.setThickness(3.0);
        });
    });
    auto* beam = opened<Beam>(id);
    beam->setLoad(7.0);
    EXPECT_EQ(Acad::eOk, beam->cancel());
    EXPECT_EQ(5.0, load());
    drawing.undo();
    EXPECT_EQ(1.0, load());
    EXPECT_EQ(0.0, AcDbObjectPointer<Beam>(id, AcDb::kForRead)->thickness());
}

} // namespace
