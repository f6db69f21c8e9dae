#include "drawingparts.h"
#include "hosttest.h"
#include "vexosmartlock.h"
#include "vexosmartopen.h"
#include "vexosmartpointer.h"
#include "vexosmartundorecording.h"

#include "dbline.h"

#include <new>

namespace {

class Guards : public hostkit::HostTest {
protected:
    AcDbObjectId addLine() {
        return drawingtest::appendToModelSpace(database(), new AcDbLine({0, 0, 0}, {1, 0, 0}));
    }
    void closeDocument() {
        giveLockBack();
        ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    }
    int transactions() { return session.document().transactionManager()->numActiveTransactions(); }
};

} // namespace

TEST_F(Guards, openTakesAndGivesBackWhatItCan) {
    const AcDbObjectId line = addLine();
    const AcDbObjectId erased = addLine();
    ASSERT_EQ(drawingtest::erase(erased), Acad::eOk);
    AcDbObjectId promised;
    ASSERT_EQ(database().getAcDbObjectId(promised, true, AcDbHandle(0xABCDE)), Acad::eOk);
    const struct {
        const char* name;
        AcDbObjectId id;
        AcDb::OpenMode mode;
        bool openErased;
        int status;
    } cases[] = {
        {"null", {}, AcDb::kForRead, false, 335},
        {"read", line, AcDb::kForRead, false, 0},
        {"write", line, AcDb::kForWrite, false, 0},
        {"notify", line, AcDb::kForNotify, false, 0},
        {"another class", database().modelSpaceId(), AcDb::kForWrite, false, 46},
        {"erased", erased, AcDb::kForRead, false, Acad::eWasErased},
        {"erased, and wanted so", erased, AcDb::kForWrite, true, 0},
        {"never came", promised, AcDb::kForRead, false, Acad::ePermanentlyErased},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        {
            const VEXOSmartOpen<AcDbEntity> guard(each.id, each.mode, each.openErased);
            EXPECT_EQ(guard.status(), each.status);
            EXPECT_EQ(guard.object() != nullptr, each.status == 0);
            EXPECT_FALSE(guard.isInTransaction());
            EXPECT_EQ(transactions(), 0);
            EXPECT_EQ(database().numOpenObjects(), each.status == 0 ? 1 : 0);
        }
        EXPECT_EQ(database().numOpenObjects(), 0);
    }
}

TEST_F(Guards, openReachesWhatIsOpenElsewhereThroughATransaction) {
    const AcDbObjectId id = addLine();
    for (const AcDb::OpenMode held : {AcDb::kForRead, AcDb::kForWrite, AcDb::kForNotify}) {
        SCOPED_TRACE(held);
        auto* const holder = drawingtest::opened<AcDbObject>(id, held);
        {
            const VEXOSmartOpen<AcDbEntity> outer(id, AcDb::kForWrite, false);
            ASSERT_EQ(outer.status(), Acad::eOk);
            EXPECT_TRUE(outer.isInTransaction());
            EXPECT_EQ(outer->setColorIndex(1), Acad::eOk);
            const VEXOSmartOpen<AcDbObject> inner(id, AcDb::kForWrite, false);
            ASSERT_EQ(inner.status(), Acad::eOk);
            EXPECT_EQ(transactions(), 2);
            EXPECT_EQ(AcDbEntity::cast(inner.object())->setColorIndex(static_cast<Adesk::UInt16>(held + 2)),
                      Acad::eOk);
            const VEXOSmartOpen<AcDbSymbolTableRecord> wrong(id, AcDb::kForWrite, false);
            EXPECT_EQ(wrong.status(), 46);
            EXPECT_EQ(transactions(), 2) << "a failed guard ends what it began";
        }
        EXPECT_EQ(transactions(), 0);
        EXPECT_EQ(AcDbEntity::cast(holder)->colorIndex(), held + 2) << "what was done stays";
        EXPECT_EQ(database().numOpenObjects(), 1) << "the holder still holds it";
        EXPECT_EQ(holder->close(), Acad::eOk);
    }
}

TEST_F(Guards, openWithoutADocumentKeepsTheDirectStatus) {
    AcDbDatabase side;
    session.watch(side);
    AcDbObjectPointer<AcDbObject> holder(side.layerZero(), AcDb::kForWrite);
    closeDocument();
    EXPECT_EQ(VEXOSmartOpen<AcDbObject>(side.layerZero(), AcDb::kForWrite, false).status(),
              Acad::eWasOpenForWrite);
    holder.close();
    EXPECT_EQ(VEXOSmartOpen<AcDbLayerTableRecord>(side.layerZero(), AcDb::kForWrite, false).status(),
              Acad::eOk);
    EXPECT_TRUE(session.leftovers().empty());
    session.forget(side);
}

namespace {

// Objects of a host's geometry go back to that host's allocator.
struct OfAnotherHeap {
    static inline int freed = 0;
    static inline int destroyed = 0;
    static void operator delete(void* place) {
        ++freed;
        ::operator delete(place);
    }
    ~OfAnotherHeap() { ++destroyed; }
};

} // namespace

TEST_F(Guards, pointerReleasesThroughTheClassOwnDelete) {
    giveLockBack();
    {
        const VEXOSmartPointer<OfAnotherHeap> guard(new OfAnotherHeap);
        EXPECT_TRUE(guard);
        EXPECT_EQ(OfAnotherHeap::freed, 0);
    }
    EXPECT_EQ(OfAnotherHeap::freed, 1);
    EXPECT_EQ(OfAnotherHeap::destroyed, 1);
    const VEXOSmartPointer<OfAnotherHeap> none(nullptr);
    EXPECT_FALSE(none);
    {
        const VEXOSmartPointer<VEXOSmartLock> lock(new VEXOSmartLock);
        EXPECT_EQ(session.document().lockMode(true), AcAp::kWrite);
    }
    EXPECT_EQ(session.document().lockMode(true), AcAp::kNotLocked);
}

TEST_F(Guards, lockTakesOneOnlyWhereNoneForWritingIsHeld) {
    giveLockBack();
    const struct {
        AcAp::DocLockMode held;
        bool takesOne;
    } cases[] = {{AcAp::kNotLocked, true}, {AcAp::kAutoWrite, true},           {AcAp::kRead, true},
                 {AcAp::kWrite, false},    {AcAp::kProtectedAutoWrite, false}, {AcAp::kXWrite, false}};
    AcApDocManager& documents = session.host().documents();
    for (const auto& each : cases) {
        SCOPED_TRACE(each.held);
        if (each.held != AcAp::kNotLocked) {
            ASSERT_EQ(documents.lockDocument(&session.document(), each.held), Acad::eOk);
        }
        for (AcDbDatabase* const database : {static_cast<AcDbDatabase*>(nullptr), &this->database()}) {
            const VEXOSmartLock outer(database);
            EXPECT_EQ(outer.status(), Acad::eOk);
            EXPECT_EQ(outer.hasLock(), each.takesOne);
            const VEXOSmartLock inner(database);
            EXPECT_EQ(inner.status(), Acad::eOk);
            EXPECT_FALSE(inner.hasLock());
        }
        EXPECT_EQ(session.document().lockMode(true), each.held);
        if (each.held != AcAp::kNotLocked) documents.unlockDocument(&session.document());
    }
}

namespace {
bool g_commandLockTookOne = true;
void lockInCommand() {
    const VEXOSmartLock lock;
    g_commandLockTookOne = lock.hasLock() || lock.status() != Acad::eOk;
}
} // namespace

TEST_F(Guards, lockInsideACommandUsesTheCommandsOwn) {
    giveLockBack();
    session.host().commands().addCommand(L"TEST", L"LOCKS", L"LOCKS", ACRX_CMD_MODAL, lockInCommand);
    EXPECT_EQ(session.host().run(L"LOCKS").status, Acad::eOk);
    EXPECT_FALSE(g_commandLockTookOne);
}

TEST_F(Guards, lockWithoutADocument) {
    giveLockBack();
    AcDbDatabase side;
    {
        const VEXOSmartLock lock(&side);
        EXPECT_EQ(lock.status(), Acad::eOk) << "nobody else can write to it";
    }
    closeDocument();
    const VEXOSmartLock lock;
    EXPECT_EQ(lock.status(), 330);
    EXPECT_FALSE(lock.hasLock());
}

TEST_F(Guards, undoRecordingIsSuspendedAndAsItWasAfterwards) {
    AcDbDatabase side;
    for (const bool records : {true, false}) {
        side.disableUndoRecording(!records);
        {
            const VEXOSmartUndoRecording outer(&side);
            EXPECT_FALSE(side.undoRecording());
            { const VEXOSmartUndoRecording inner(&side); }
            EXPECT_FALSE(side.undoRecording()) << "the outer one still holds";
        }
        EXPECT_EQ(side.undoRecording(), records);
    }
    {
        const VEXOSmartUndoRecording ofWorkingDatabase;
        EXPECT_FALSE(database().undoRecording());
    }
    EXPECT_TRUE(database().undoRecording());
    closeDocument();
    const VEXOSmartUndoRecording ofNothing;
}
