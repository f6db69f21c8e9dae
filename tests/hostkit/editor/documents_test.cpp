#include "aced.h"
#include "actrans.h"
#include "axlock.h"
#include "commandtest.h"
#include "dbapserv.h"
#include "dblayertable.h"
#include "dbobjptr.h"
#include "temporaryfolder.h"
#include "undohistory.h"

#include <memory>

namespace {

class DocumentsTest : public CommandTest {
protected:
    DocumentsTest() {
        giveLockBack();
        EXPECT_EQ(host.newDocument(), Acad::eOk);
        second = documents.curDocument();
    }
    /// GO with those flags.
    hostkit::CommandResult run(Adesk::Int32 flags, std::function<void()> what) {
        EXPECT_EQ(host.commands().addCommand(L"FLAGS", L"GO", nullptr, flags, runBody), Acad::eOk);
        const hostkit::CommandResult result = CommandTest::run(L"GO", std::move(what));
        host.commands().removeGroup(L"FLAGS");
        return result;
    }
    void setLayerZeroOff(bool off) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(second->database()->layerZero(), AcDb::kForWrite);
        layer->setIsOff(off);
    }
    bool isLayerZeroOff() {
        return AcDbObjectPointer<AcDbLayerTableRecord>(second->database()->layerZero(), AcDb::kForRead)
            ->isOff();
    }

    AcApDocument* first = documents.curDocument();
    AcApDocument* second = nullptr;
};

TEST_F(DocumentsTest, CurrentActiveAndWorkingAreThreeThings) {
    AcDbHostApplicationServices& services = *acdbHostApplicationServices();
    EXPECT_EQ(documents.setCurDocument(first), Acad::eOk);
    EXPECT_EQ(documents.curDocument(), first);
    EXPECT_EQ(documents.mdiActiveDocument(), second);
    EXPECT_EQ(services.workingDatabase(), first->database());
    services.setWorkingDatabase(second->database());
    EXPECT_EQ(documents.curDocument(), first);
    EXPECT_EQ(documents.setCurDocument(nullptr), Acad::eOk);
    EXPECT_EQ(documents.curDocument(), nullptr);
    EXPECT_EQ(documents.setCurDocument(nullptr, AcAp::kWrite), Acad::eNoDocument);
    EXPECT_EQ(documents.setCurDocument(first, AcAp::kRead, true), Acad::eOk);
    EXPECT_EQ(documents.mdiActiveDocument(), first);
    EXPECT_EQ(first->lockMode(true), AcAp::kRead);
    EXPECT_EQ(documents.unlockDocument(first), Acad::eOk);
    std::vector<AcApDocument*> walked;
    const std::unique_ptr<AcApDocumentIterator> iterator(documents.newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step()) walked.push_back(iterator->document());
    EXPECT_EQ(walked, (std::vector<AcApDocument*>{first, second}));
    EXPECT_EQ(iterator->document(), nullptr);
}

TEST_F(DocumentsTest, TheActiveOneSetsTheWorkingDrawingAndANextOneFollowsItsEnd) {
    ASSERT_NE(first, second);
    const AcDbHostApplicationServices& services = *acdbHostApplicationServices();
    EXPECT_EQ(services.workingDatabase(), second->database());
    EXPECT_EQ(documents.document(first->database()), first);
    EXPECT_EQ(documents.document(nullptr), nullptr);
    EXPECT_EQ(documents.activateDocument(first), Acad::eOk);
    EXPECT_EQ(services.workingDatabase(), first->database());
    EXPECT_EQ(documents.activateDocument(nullptr), Acad::eNoDocument);
    EXPECT_EQ(documents.closeDocument(first), Acad::eOk);
    EXPECT_EQ(services.workingDatabase(), second->database());
    EXPECT_EQ(documents.closeDocument(second), Acad::eOk);
    EXPECT_EQ(services.workingDatabase(), nullptr);
    EXPECT_EQ(documents.curDocument(), nullptr);
    EXPECT_EQ(documents.documentCount(), 0);
    hostkit::TestHost other;
    EXPECT_EQ(documents.activateDocument(&other.document()), Acad::eNotFromThisDocument);
}

TEST_F(DocumentsTest, LocksCountAndTheStrongestShows) {
    EXPECT_EQ(documents.unlockDocument(second), Acad::eLockViolation);
    EXPECT_EQ(documents.lockDocument(nullptr), Acad::eNoDocument);
    EXPECT_EQ(documents.lockDocument(second, AcAp::kNone), Acad::eInvalidInput);
    run(ACRX_CMD_MODAL, [&] {
        for (const auto& [mode, shown] :
             {std::pair(AcAp::kRead, AcAp::kWrite), {AcAp::kXWrite, AcAp::kXWrite}}) {
            EXPECT_EQ(documents.lockDocument(second, mode), Acad::eOk);
            EXPECT_EQ(second->lockMode(true), shown);
        }
        for (int i = 0; i < 2; ++i) EXPECT_EQ(documents.unlockDocument(second), Acad::eOk);
        EXPECT_EQ(second->lockMode(true), AcAp::kWrite);
    });
}

TEST_F(DocumentsTest, CommandsHoldTheLockThatTheirFlagsAskFor) {
    const std::pair<Adesk::Int32, AcAp::DocLockMode> cases[] = {
        {ACRX_CMD_MODAL, AcAp::kWrite},       {ACRX_CMD_TRANSPARENT, AcAp::kWrite},
        {ACRX_CMD_DOCREADLOCK, AcAp::kRead},  {ACRX_CMD_DOCEXCLUSIVELOCK, AcAp::kXWrite},
        {ACRX_CMD_SESSION, AcAp::kNotLocked},
    };
    for (const auto& [flags, mode] : cases) {
        SCOPED_TRACE(flags);
        run(flags, [&] {
            EXPECT_FALSE(documents.isApplicationContext());
            EXPECT_EQ(second->lockMode(true), mode);
            EXPECT_EQ(second->myLockMode(), mode);
            EXPECT_EQ(second->lockMode(), AcAp::kNotLocked) << "of others";
            EXPECT_EQ(first->lockMode(true), AcAp::kNotLocked);
        });
        EXPECT_TRUE(documents.isApplicationContext());
        EXPECT_EQ(second->lockMode(true), AcAp::kNotLocked);
    }
}

TEST_F(DocumentsTest, LocksOutsideOfACommandAreOthersToIt) {
    EXPECT_EQ(documents.lockDocument(second, AcAp::kProtectedAutoWrite), Acad::eOk);
    EXPECT_EQ(second->myLockMode(), AcAp::kProtectedAutoWrite);
    EXPECT_EQ(second->lockMode(), AcAp::kNotLocked);
    run(ACRX_CMD_DOCREADLOCK, [&] {
        EXPECT_EQ(second->lockMode(), AcAp::kProtectedAutoWrite);
        EXPECT_EQ(second->myLockMode(), AcAp::kRead);
        EXPECT_EQ(second->lockMode(true), AcAp::kProtectedAutoWrite);
    });
    EXPECT_EQ(documents.unlockDocument(second), Acad::eOk);
}

TEST_F(DocumentsTest, ALockOfAScopeLocksOneDocument) {
    {
        const AcAxDocLock current;
        EXPECT_EQ(current.lockStatus(), Acad::eOk);
        EXPECT_EQ(current.document(), second);
        const AcAxDocLock other(first->database());
        EXPECT_EQ(first->lockMode(true), AcAp::kWrite);
        EXPECT_EQ(documents.curDocument(), second);
        const AcAxDocLock byObject(first->database()->layerZero(), AcAxDocLock::kCurDocSwitch);
        EXPECT_EQ(documents.curDocument(), first);
        EXPECT_EQ(documents.closeDocument(first), Acad::eLockViolation);
    }
    EXPECT_EQ(documents.curDocument(), second);
    AcDbDatabase alone;
    const AcAxDocLock ofNoDocument(&alone);
    EXPECT_EQ(ofNoDocument.lockStatus(), Acad::eOk);
    EXPECT_EQ(ofNoDocument.document(), nullptr);
    EXPECT_EQ(AcAxDocLock(static_cast<AcDbDatabase*>(nullptr)).lockStatus(), Acad::eNoDocument);
    EXPECT_EQ(AcAxDocLock(AcDbObjectId()).lockStatus(), Acad::eNoDocument);
    documents.setCurDocument(nullptr);
    EXPECT_EQ(AcAxDocLock().lockStatus(), Acad::eNoDocument);
}

// A lock for writing lets write, of whomever and for whatever; one for reading does not.
TEST_F(DocumentsTest, ObjectsOpenForWriteUnderALockOnTheirDocument) {
    const auto writing = [](const AcApDocument& document) {
        return AcDbObjectPointer<AcDbObject>(document.database()->layerZero(), AcDb::kForWrite).openStatus();
    };
    EXPECT_EQ(writing(*second), Acad::eLockViolation);
    EXPECT_FALSE(isLayerZeroOff()) << "reading needs no lock";
    for (const AcAp::DocLockMode mode :
         {AcAp::kRead, AcAp::kAutoWrite, AcAp::kProtectedAutoWrite, AcAp::kWrite, AcAp::kXWrite}) {
        SCOPED_TRACE(mode);
        const Acad::ErrorStatus expected = mode == AcAp::kRead ? Acad::eLockViolation : Acad::eOk;
        ASSERT_EQ(documents.lockDocument(second, mode), Acad::eOk);
        EXPECT_EQ(writing(*second), expected);
        EXPECT_EQ(writing(*first), Acad::eLockViolation) << "another document";
        documents.lockDocument(second, AcAp::kWrite);
        documents.lockDocument(second, AcAp::kRead);
        EXPECT_EQ(writing(*second), Acad::eOk) << "the strongest counts";
        documents.unlockDocument(second);
        documents.unlockDocument(second);
        EXPECT_EQ(writing(*second), expected);
        documents.unlockDocument(second);
        EXPECT_EQ(writing(*second), Acad::eLockViolation);
    }
    const std::pair<Adesk::Int32, Acad::ErrorStatus> commands[] = {
        {ACRX_CMD_MODAL, Acad::eOk},
        {ACRX_CMD_TRANSPARENT, Acad::eOk},
        {ACRX_CMD_DOCEXCLUSIVELOCK, Acad::eOk},
        {ACRX_CMD_DOCREADLOCK, Acad::eLockViolation},
        {ACRX_CMD_SESSION, Acad::eLockViolation},
    };
    for (const auto& [flags, expected] : commands) {
        SCOPED_TRACE(flags);
        run(flags, [&] {
            EXPECT_EQ(writing(*second), expected);
            const AcAxDocLock lock;
            EXPECT_EQ(writing(*second), Acad::eOk);
        });
        EXPECT_EQ(writing(*second), Acad::eLockViolation);
    }
}

TEST_F(DocumentsTest, EachOutermostCommandIsOneStepForUndo) {
    run(ACRX_CMD_MODAL, [&] {
        setLayerZeroOff(true);
        body = [&] { setLayerZeroOff(false); };
        host.run(L"GO");
        setLayerZeroOff(true);
    });
    run(ACRX_CMD_MODAL, [&] { isLayerZeroOff(); });
    AcDbDatabase& database = *second->database();
    ASSERT_EQ(hostkit::undoGroupCount(database), 1);
    hostkit::UndoReport report;
    run(ACRX_CMD_NO_UNDO_MARKER, [&] { EXPECT_EQ(hostkit::undoLastGroup(database, report), Acad::eOk); });
    EXPECT_EQ(report.name, L"GO");
    EXPECT_FALSE(isLayerZeroOff());
}

TEST_F(DocumentsTest, ATransactionThatACommandLeavesIsAborted) {
    const hostkit::CommandResult result = run(ACRX_CMD_MODAL, [&] {
        second->transactionManager()->startTransaction();
        setLayerZeroOff(true);
        second->transactionManager()->startTransaction();
    });
    EXPECT_EQ(result.status, Acad::eTransactionOpenWhileCommandEnded);
    EXPECT_FALSE(result.reason.empty());
    EXPECT_FALSE(isLayerZeroOff());
    EXPECT_EQ(hostkit::undoGroupCount(*second->database()), 0);
}

TEST_F(DocumentsTest, ACommandMayCloseItsOwnDocument) {
    run(ACRX_CMD_SESSION, [&] {
        {
            const AcAxDocLock lock(second->database());
            setLayerZeroOff(true);
        }
        EXPECT_EQ(documents.closeDocument(second), Acad::eOk);
    });
    EXPECT_EQ(documents.curDocument(), first);
    EXPECT_EQ(documents.mdiActiveDocument(), first);
}

TEST_F(DocumentsTest, OpeningAndSavingShowOneMeterEachUnlessOneStandsThere) {
    const TemporaryFolder folder;
    const std::string bytes = folder / "plan.dxf";
    const std::wstring file(bytes.begin(), bytes.end());
    ASSERT_EQ(host.saveDocument(*second, file), Acad::eOk);
    ASSERT_EQ(host.openDocument(file), Acad::eOk);
    EXPECT_EQ(host.openDocument(file + L"x"), Acad::eFileNotFound);
    ASSERT_EQ(port.meters.size(), 3u);
    EXPECT_EQ(port.meters[0].caption, L"Saving plan.dxf");
    EXPECT_EQ(port.meters[1].caption, L"Opening plan.dxf");
    for (int work = 0; work < 2; ++work)
        EXPECT_EQ(port.meters[work].positions.back(), port.meters[work].maximum);
    for (const auto& meter : port.meters) EXPECT_TRUE(meter.stopped);

    ASSERT_EQ(acedSetStatusBarProgressMeter(L"All plans", 0, 10), 0);
    ASSERT_EQ(host.openDocument(file), Acad::eOk);
    EXPECT_EQ(port.meters.size(), 4u);
    EXPECT_TRUE(port.meters[3].positions.empty() && !port.meters[3].stopped);
    acedRestoreStatusBar();
}

} // namespace
