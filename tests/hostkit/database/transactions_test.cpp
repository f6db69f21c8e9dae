#include "changelog.h"
#include "dbaccess.h"
#include "drawingchanges.h"
#include "undohistory.h"

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;

TEST(Transactions, AbortPutsBackWhateverWasChanged) {
    for (const Change& change : changes()) {
        SCOPED_TRACE(change.name);
        Drawing drawing;
        const std::string before = pictureOf(drawing.database);
        drawing.manager().startTransaction();
        change.apply(drawing);
        EXPECT_NE(before, pictureOf(drawing.database)) << "the change shows";
        EXPECT_EQ(Acad::eOk, drawing.manager().abortTransaction());
        EXPECT_EQ(before, pictureOf(drawing.database));
        EXPECT_EQ(0u, DatabaseAccess::changes(drawing.database).size()) << "nothing is remembered for nobody";
    }
}

TEST(Transactions, EndKeepsAll) {
    for (const Change& change : changes()) {
        SCOPED_TRACE(change.name);
        Drawing plain;
        change.apply(plain);
        Drawing drawing;
        drawing.manager().startTransaction();
        change.apply(drawing);
        EXPECT_EQ(Acad::eOk, drawing.manager().endTransaction());
        EXPECT_EQ(pictureOf(plain.database), pictureOf(drawing.database));
        EXPECT_EQ(0u, DatabaseAccess::changes(drawing.database).size());
    }
}

// One transaction a change, each in the one before; some are ended, so that their outer one takes them back.
TEST(Transactions, NestedOnesGoBackEachToItsStart) {
    for (std::uint32_t seed = 1; seed <= 50; ++seed) {
        SCOPED_TRACE(seed);
        Drawing drawing;
        std::mt19937 random(seed);
        std::vector<std::string> pictures;
        forEachPossible(drawing, seed, [&](const Change& change) {
            pictures.push_back(pictureOf(drawing.database));
            drawing.manager().startTransaction();
            change.apply(drawing);
        });
        for (; !pictures.empty(); pictures.pop_back()) {
            if (pictures.size() > 1 && random() % 3 == 0) {
                EXPECT_EQ(Acad::eOk, drawing.manager().endTransaction());
                continue;
            }
            EXPECT_EQ(Acad::eOk, drawing.manager().abortTransaction());
            EXPECT_EQ(pictures.back(), pictureOf(drawing.database));
        }
    }
}

// Whoever has the object open goes on with it while a transaction comes and goes.
TEST(Transactions, ReachWhatIsOpenElsewhere) {
    for (const bool aborts : {false, true}) {
        Drawing drawing;
        auto* held = opened<AcDbLine>(drawing.line);
        ASSERT_EQ(Acad::eOk, held->setStartPoint({1, 1, 1}));
        AcDbObject* got = nullptr;
        ASSERT_EQ(Acad::eOk,
                  drawing.manager().startTransaction()->getObject(got, drawing.line, AcDb::kForWrite));
        EXPECT_EQ(held, got);
        EXPECT_EQ(Acad::eOk, AcDbLine::cast(got)->setEndPoint({2, 2, 2}));
        EXPECT_EQ(Acad::eOk,
                  aborts ? drawing.manager().abortTransaction() : drawing.manager().endTransaction());
        EXPECT_EQ(AcGePoint3d(1, 1, 1), held->startPoint());
        EXPECT_EQ(aborts ? AcGePoint3d(1, 0, 0) : AcGePoint3d(2, 2, 2), held->endPoint());
        EXPECT_EQ(Acad::eOk, held->setEndPoint({3, 3, 3})) << "it is open for write as before";
        EXPECT_EQ(Acad::eOk, held->close());
        EXPECT_EQ(Acad::eInvalidOpenState, held->close());
    }
}

TEST(Transactions, HoldUntilTheyEnd) {
    Drawing drawing;
    AcDbObject* object = nullptr;
    AcTransaction* outer = drawing.manager().startTransaction();
    ASSERT_EQ(Acad::eOk, outer->getObject(object, drawing.line, AcDb::kForRead));
    AcTransaction* inner = drawing.manager().startTransaction();
    EXPECT_EQ(inner, drawing.manager().topTransaction());
    EXPECT_EQ(Acad::eNotTopTransaction, outer->getObject(object, drawing.line, AcDb::kForRead));
    EXPECT_EQ(nullptr, object);
    ASSERT_EQ(Acad::eOk, inner->getObject(object, drawing.line, AcDb::kForWrite));
    ASSERT_EQ(Acad::eOk, inner->getObject(object, drawing.polyline, AcDb::kForRead));
    EXPECT_EQ(Acad::eOk, object->upgradeOpen());
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_EQ(2, drawing.manager().numOpenedObjects());
    EXPECT_EQ(Acad::eOk, drawing.manager().endTransaction());
    EXPECT_FALSE(object->isReadEnabled());
    EXPECT_EQ(1, drawing.database.numOpenObjects());
    EXPECT_FALSE(drawing.line.stub()->object->isWriteEnabled());
    EXPECT_TRUE(drawing.line.stub()->object->isReadEnabled());
    EXPECT_EQ(Acad::eOk, drawing.manager().endTransaction());
    EXPECT_EQ(Acad::eNoActiveTransactions, drawing.manager().endTransaction());
    EXPECT_EQ(Acad::eNoActiveTransactions, drawing.manager().abortTransaction());
    EXPECT_EQ(Acad::eNoActiveTransactions, drawing.manager().getObject(object, drawing.line, AcDb::kForRead));
}

TEST(Transactions, ReachNothingOfAnotherDrawingAndNothingThatIsGone) {
    Drawing drawing;
    Drawing other;
    EXPECT_EQ(Acad::eOk, erase(drawing.line));
    drawing.manager().startTransaction();
    AcDbObject* object = nullptr;
    const auto get = [&](AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) {
        return drawing.manager().getObject(object, id, mode);
    };
    EXPECT_EQ(Acad::eNotFromThisDocument, get(other.line));
    EXPECT_EQ(Acad::eNullObjectId, get(AcDbObjectId()));
    EXPECT_EQ(Acad::eWasErased, get(drawing.line));
    EXPECT_EQ(Acad::eInvalidInput, get(drawing.layer, static_cast<AcDb::OpenMode>(7)));
    AcDbObjectId reserved;
    ASSERT_EQ(Acad::eOk, drawing.database.getAcDbObjectId(reserved, true, AcDbHandle(0xABCDE)));
    EXPECT_EQ(Acad::ePermanentlyErased, get(reserved));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(Acad::eOk, drawing.manager().endTransaction());
}

TEST(Transactions, TakeOverWhatIsNew) {
    Drawing drawing;
    auto* line = new AcDbLine({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(Acad::eNoActiveTransactions, drawing.manager().addNewlyCreatedDBRObject(line));
    drawing.manager().startTransaction();
    EXPECT_EQ(Acad::eNotNewlyCreated, drawing.manager().addNewlyCreatedDBRObject(line))
        << "of no drawing yet";
    EXPECT_EQ(Acad::eNullObjectPointer, drawing.manager().addNewlyCreatedDBRObject(nullptr));
    AcDbObjectId id;
    AcDbObjectId dropped;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.database.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(id, line));
        EXPECT_EQ(Acad::eOk, drawing.manager().addNewlyCreatedDBRObject(line));
        auto* second = new AcDbLine;
        ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(dropped, second));
        EXPECT_EQ(Acad::eOk, drawing.manager().addNewlyCreatedDBRObject(second, false));
    }
    EXPECT_EQ(Acad::eInvalidOpenState, line->close());
    EXPECT_EQ(Acad::eOk, line->setEndPoint({2, 2, 2}));
    EXPECT_EQ(Acad::eOk, drawing.manager().endTransaction());
    EXPECT_EQ(Acad::eOk, AcDbObjectPointer<AcDbLine>(id, AcDb::kForRead).openStatus());
    EXPECT_EQ(Acad::ePermanentlyErased, AcDbObjectPointer<AcDbLine>(dropped, AcDb::kForRead).openStatus());
}

// An id that an aborted transaction gave is nobody else's later, and nothing brings its object back.
TEST(Transactions, IdsOfWhatWasTakenBackStayTheirOwn) {
    Drawing drawing;
    drawing.manager().startTransaction();
    const AcDbObjectId id = appendToModelSpace(drawing.database, new AcDbLine({0, 0, 0}, {5, 5, 5}));
    auto* open = opened<AcDbLine>(id);
    EXPECT_EQ(Acad::eOk, drawing.manager().abortTransaction());
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(Acad::ePermanentlyErased, open->erase(false));
    EXPECT_EQ(Acad::eOk, open->close()) << "whoever had it open closes it";
    const AcDbObjectId next = appendToModelSpace(drawing.database, new AcDbLine({0, 0, 0}, {6, 6, 6}));
    EXPECT_NE(id, next);
    EXPECT_NE(id.handle().value(), next.handle().value());
    AcDbObject* object = nullptr;
    for (const bool openErased : {false, true})
        EXPECT_EQ(Acad::ePermanentlyErased, acdbOpenAcDbObject(object, id, AcDb::kForRead, openErased));
}

// Cancel.

TEST(Cancel, TakesAContainersNewPartsBack) {
    Drawing drawing;
    const std::string before = pictureOf(drawing.database);
    auto* space = opened<AcDbBlockTableRecord>(drawing.database.modelSpaceId());
    auto* line = new AcDbLine;
    ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(line));
    space->setOrigin({1, 2, 3});
    line->close();
    EXPECT_EQ(Acad::eOk, space->cancel());
    EXPECT_EQ(before, pictureOf(drawing.database));

    auto* dictionary = opened<AcDbDictionary>(drawing.dictionary);
    AcDbObjectId id;
    auto* record = new AcDbXrecord;
    ASSERT_EQ(Acad::eOk, dictionary->remove(L"first"));
    ASSERT_EQ(Acad::eOk, dictionary->setAt(L"second", record, id));
    record->close();
    EXPECT_EQ(Acad::eOk, dictionary->cancel());
    EXPECT_EQ(drawing.dictionary, drawing.record.stub()->object->ownerId());
    AcDbObjectPointer<AcDbDictionary> again(drawing.dictionary, AcDb::kForRead);
    EXPECT_TRUE(again->has(drawing.record));
    EXPECT_EQ(1u, again->numEntries());
}

TEST(Cancel, OfAReaderIsAClose) {
    Drawing drawing;
    auto* writer = opened<AcDbLine>(drawing.line);
    writer->setEndPoint({7, 7, 7});
    EXPECT_EQ(Acad::eOk, writer->downgradeOpen());
    EXPECT_EQ(Acad::eOk, writer->cancel());
    EXPECT_EQ(AcGePoint3d(7, 7, 7), writer->endPoint());
}

// What an abort or an undo has taken back is not taken back again, and no earlier open's change in its stead.
TEST(Cancel, AfterAnAbortOrAnUndoOfTheSameOpen) {
    for (const bool undoes : {false, true}) {
        for (const bool goesOn : {false, true}) {
            for (const bool suspends : {false, true}) {
                SCOPED_TRACE(std::to_string(undoes) + std::to_string(goesOn) + std::to_string(suspends));
                Drawing drawing;
                drawing.database.disableUndoRecording(!undoes);
                hostkit::beginUndoGroup(drawing.database, L"FIRST");
                change<AcDbLine>(drawing.line, [](AcDbLine& each) { each.setEndPoint({4, 4, 4}); });
                auto* space = opened<AcDbBlockTableRecord>(drawing.database.modelSpaceId());
                hostkit::endUndoGroup(drawing.database);
                auto* line = opened<AcDbLine>(drawing.line);
                if (undoes)
                    hostkit::beginUndoGroup(drawing.database, L"SECOND");
                else
                    drawing.manager().startTransaction();
                line->setEndPoint({7, 7, 7});
                auto* appended = new AcDbLine;
                ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(appended));
                appended->close();
                if (suspends) drawing.database.disableUndoRecording(true);
                if (suspends) setText(*line, L"unseen");
                if (suspends && undoes) drawing.database.disableUndoRecording(false);
                hostkit::UndoReport report;
                if (undoes) {
                    hostkit::endUndoGroup(drawing.database);
                    EXPECT_EQ(Acad::eOk, hostkit::undoLastGroup(drawing.database, report));
                } else {
                    EXPECT_EQ(Acad::eOk, drawing.manager().abortTransaction());
                }
                EXPECT_EQ(suspends && undoes, line->hasXData());
                if (goesOn) line->setEndPoint({8, 8, 8});
                EXPECT_EQ(Acad::eOk, line->cancel());
                EXPECT_EQ(AcGePoint3d(4, 4, 4), line->endPoint());
                EXPECT_FALSE(line->hasXData()) << "recording is no matter to it";
                EXPECT_EQ(Acad::eOk, space->cancel());
                EXPECT_EQ(2u, space->entities().size());
            }
        }
    }
}

// What others did meanwhile to something that the object owns is theirs.
TEST(Cancel, LeavesWhatOtherOpensDid) {
    Drawing drawing;
    auto* blocks = opened<AcDbBlockTable>(drawing.database.blockTableId());
    auto* space = opened<AcDbBlockTableRecord>(drawing.database.modelSpaceId());
    auto* taken = new AcDbBlockTableRecord;
    taken->setName(L"Taken");
    ASSERT_EQ(Acad::eOk, blocks->add(taken));
    taken->close();
    auto* line = new AcDbLine;
    ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(line));
    line->close();
    EXPECT_EQ(Acad::eOk, blocks->cancel());
    EXPECT_FALSE(blocks->has(L"Taken"));
    EXPECT_EQ(3u, space->entities().size()) << "space was another open";
    EXPECT_EQ(Acad::eOk, AcDbObjectPointer<AcDbLine>(space->entities().back(), AcDb::kForRead).openStatus());
    space->setOrigin({1, 1, 1});
    erase(drawing.polyline);
    EXPECT_EQ(Acad::eOk, space->cancel());
    EXPECT_TRUE(drawing.polyline.isErased());
    const auto* polyline = static_cast<AcDb2dPolyline*>(drawing.polyline.stub()->object);
    const std::unique_ptr<AcDbObjectIterator> vertices(polyline->vertexIterator());
    for (; !vertices->done(); vertices->step()) EXPECT_TRUE(vertices->objectId().isErased());

    auto* record = opened<AcDbXrecord>(drawing.record);
    record->addPersistentReactor(drawing.layer);
    change<AcDbDictionary>(drawing.dictionary, [](auto& dictionary) { dictionary.remove(L"first"); });
    EXPECT_EQ(Acad::eOk, record->cancel());
    EXPECT_TRUE(record->ownerId().isNull()) << "its dictionary lists it no more";
}

// An erased part that was restored and erased by itself stays erased when its owner comes back.
TEST(Erasure, OfAPartByItselfOutlastsItsOwners) {
    Drawing drawing;
    const auto* polyline = static_cast<AcDb2dPolyline*>(drawing.polyline.stub()->object);
    const std::unique_ptr<AcDbObjectIterator> vertices(polyline->vertexIterator());
    const AcDbObjectId vertex = vertices->objectId();
    erase(drawing.polyline);
    EXPECT_EQ(Acad::eOk, erase(vertex, false));
    EXPECT_EQ(Acad::eOk, erase(vertex));
    erase(drawing.polyline, false);
    EXPECT_TRUE(vertex.isErased());
}

TEST(Cancel, IsRefusedWhereTheNameWasGivenAway) {
    for (const bool erases : {false, true}) {
        Drawing drawing;
        auto* layer = opened<AcDbLayerTableRecord>(drawing.layer);
        layer->setIsOff(true);
        if (erases)
            layer->erase();
        else
            layer->setName(L"Slabs");
        const AcDbObjectId taker = addRecord<AcDbLayerTable>(drawing.database, L"WALLS");
        EXPECT_EQ(Acad::eDuplicateKey, layer->cancel());
        EXPECT_TRUE(layer->isWriteEnabled());
        EXPECT_TRUE(layer->isOff()) << "nothing is done";
        erase(taker);
        EXPECT_EQ(Acad::eOk, layer->cancel());
        AcDbSymbolTablePointer<AcDbLayerTable> layers(&drawing.database, AcDb::kForRead);
        EXPECT_EQ(drawing.layer, layers->find(L"walls"));
    }
}

} // namespace
