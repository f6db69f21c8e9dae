#include "accmd.h"
#include "actrans.h"
#include "axlock.h"
#include "dbapserv.h"
#include "dblayertable.h"
#include "dbobjptr.h"
#include "host.h"
#include "scriptedport.h"
#include "undohistory.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

using hostkit::CommandResult;
using hostkit::Host;

std::function<void()> body;
void runBody() { body(); }

class DocumentsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(host.newDocument(), Acad::eOk);
        first = host.documents().curDocument();
        ASSERT_EQ(host.newDocument(), Acad::eOk);
        second = host.documents().curDocument();
    }
    void TearDown() override {
        body = nullptr;
        for (const AcApDocument* each : {first, second}) {
            EXPECT_EQ(each->lockMode(true), AcAp::kNotLocked);
            EXPECT_EQ(each->database()->numOpenObjects(), 0);
            EXPECT_EQ(each->transactionManager()->numActiveTransactions(), 0);
            EXPECT_TRUE(each->database()->undoRecording());
        }
    }
    CommandResult run(Adesk::Int32 flags, std::function<void()> what) {
        body = std::move(what);
        EXPECT_EQ(host.commands().addCommand(L"TEST", L"GO", nullptr, flags, runBody), Acad::eOk);
        const CommandResult result = host.run(L"GO");
        host.commands().removeGroup(L"TEST");
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

    hostkit::ScriptedPort port;
    Host host{port};
    AcApDocument* first = nullptr;
    AcApDocument* second = nullptr;
};

TEST_F(DocumentsTest, CurrentActiveAndWorkingAreThreeThings) {
    AcDbHostApplicationServices& services = *acdbHostApplicationServices();
    AcApDocManager& documents = host.documents();
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

TEST_F(DocumentsTest, CommandsHoldTheLockThatTheirFlagsAskFor) {
    struct {
        Adesk::Int32 flags;
        AcAp::DocLockMode mode;
    } const cases[] = {
        {ACRX_CMD_MODAL, AcAp::kWrite},       {ACRX_CMD_TRANSPARENT, AcAp::kWrite},
        {ACRX_CMD_DOCREADLOCK, AcAp::kRead},  {ACRX_CMD_DOCEXCLUSIVELOCK, AcAp::kXWrite},
        {ACRX_CMD_SESSION, AcAp::kNotLocked},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.flags);
        run(each.flags, [&] {
            EXPECT_FALSE(host.documents().isApplicationContext());
            EXPECT_EQ(second->lockMode(true), each.mode);
            EXPECT_EQ(second->myLockMode(), each.mode);
            EXPECT_EQ(second->lockMode(), AcAp::kNotLocked) << "of others";
            EXPECT_EQ(first->lockMode(true), AcAp::kNotLocked);
        });
        EXPECT_TRUE(host.documents().isApplicationContext());
        EXPECT_EQ(second->lockMode(true), AcAp::kNotLocked);
    }
}

TEST_F(DocumentsTest, LocksOutsideOfACommandAreOthersToIt) {
    EXPECT_EQ(host.documents().lockDocument(second, AcAp::kProtectedAutoWrite), Acad::eOk);
    EXPECT_EQ(second->myLockMode(), AcAp::kProtectedAutoWrite);
    EXPECT_EQ(second->lockMode(), AcAp::kNotLocked);
    run(ACRX_CMD_DOCREADLOCK, [&] {
        EXPECT_EQ(second->lockMode(), AcAp::kProtectedAutoWrite);
        EXPECT_EQ(second->myLockMode(), AcAp::kRead);
        EXPECT_EQ(second->lockMode(true), AcAp::kProtectedAutoWrite);
    });
    EXPECT_EQ(host.documents().unlockDocument(second), Acad::eOk);
}

TEST_F(DocumentsTest, ALockOfAScopeLocksOneDocument) {
    {
        const AcAxDocLock current;
        EXPECT_EQ(current.lockStatus(), Acad::eOk);
        EXPECT_EQ(current.document(), second);
        const AcAxDocLock other(first->database());
        EXPECT_EQ(first->lockMode(true), AcAp::kWrite);
        EXPECT_EQ(host.documents().curDocument(), second);
        const AcAxDocLock byObject(first->database()->layerZero(), AcAxDocLock::kCurDocSwitch);
        EXPECT_EQ(host.documents().curDocument(), first);
        EXPECT_EQ(host.documents().closeDocument(first), Acad::eLockViolation);
    }
    EXPECT_EQ(host.documents().curDocument(), second);
    AcDbDatabase alone;
    const AcAxDocLock ofNoDocument(&alone);
    EXPECT_EQ(ofNoDocument.lockStatus(), Acad::eOk);
    EXPECT_EQ(ofNoDocument.document(), nullptr);
    EXPECT_EQ(AcAxDocLock(static_cast<AcDbDatabase*>(nullptr)).lockStatus(), Acad::eNoDocument);
    EXPECT_EQ(AcAxDocLock(AcDbObjectId()).lockStatus(), Acad::eNoDocument);
    host.documents().setCurDocument(nullptr);
    EXPECT_EQ(AcAxDocLock().lockStatus(), Acad::eNoDocument);
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
    const CommandResult result = run(ACRX_CMD_MODAL, [&] {
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
        setLayerZeroOff(true);
        EXPECT_EQ(host.documents().closeDocument(second), Acad::eOk);
        second = first;
    });
    EXPECT_EQ(host.documents().curDocument(), first);
    EXPECT_EQ(host.documents().mdiActiveDocument(), first);
}

} // namespace
