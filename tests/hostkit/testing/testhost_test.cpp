#include "drawingparts.h"
#include "hosttest.h"

#include "aced.h"
#include "actrans.h"
#include "applicationobject.h"
#include "axlock.h"
#include "dbline.h"
#include "tlhelp32.h"
#include "windows.h"

#include <functional>

namespace {

using hostkit::TestHost;

std::function<void()> g_body;
void runBody() { g_body(); }

std::function<std::function<void()>(TestHost&)> openFor(AcDb::OpenMode mode) {
    return [mode](TestHost& session) {
        AcDbObject* object = nullptr;
        const AcAxDocLock lock(&session.database());
        EXPECT_EQ(acdbOpenAcDbObject(object, session.database().layerZero(), mode), Acad::eOk);
        return [object] { object->close(); };
    };
}

} // namespace

TEST(TestHost, tellsEachThingThatIsLeftBehind) {
    // What a test may leave behind, and what makes good for it.
    const struct {
        const char* name;
        std::function<std::function<void()>(TestHost&)> leave;
        const wchar_t* words;
    } cases[] = {
        {"open for read", openFor(AcDb::kForRead), L"AcDbLayerTableRecord"},
        {"open for write", openFor(AcDb::kForWrite), L"is open for write"},
        {"open for notify", openFor(AcDb::kForNotify), L"is open for notify"},
        {"locked",
         [](TestHost& session) {
             auto* const lock = new AcAxDocLock(&session.database());
             return [lock] { delete lock; };
         },
         L"document 1 is locked"},
        {"a transaction",
         [](TestHost& session) {
             session.database().transactionManager()->startTransaction();
             return [&session] { session.database().transactionManager()->endTransaction(); };
         },
         L"1 transactions were not ended"},
        {"no undo recording",
         [](TestHost& session) {
             session.database().disableUndoRecording(true);
             return [&session] { session.database().disableUndoRecording(false); };
         },
         L"undo recording was left off"},
        {"an undo mark",
         [](TestHost& session) {
             session.document().startUndoMark();
             return [&session] { session.document().endUndoMark(); };
         },
         L"1 undo marks were not ended"},
        {"an interface",
         [](TestHost& session) {
             IDispatch* const application = session.host().application().GetIDispatch(TRUE);
             return [application] { application->Release(); };
         },
         L"1 interfaces of the application"},
        {"a snapshot",
         [](TestHost&) {
             const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
             return [snapshot] { CloseHandle(snapshot); };
         },
         L"1 snapshots of the system"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        TestHost session;
        EXPECT_TRUE(session.leftovers().empty());
        const std::function<void()> makeGood = each.leave(session);
        const auto problems = session.leftovers();
        ASSERT_EQ(problems.size(), 1u);
        EXPECT_NE(problems[0].find(each.words), std::wstring::npos) << hostkit::utf8FromWide(problems[0]);
        makeGood();
        EXPECT_TRUE(session.leftovers().empty());
    }
}

TEST(TestHost, looksAtDrawingsOfNoDocumentToo) {
    TestHost session;
    AcDbDatabase side;
    session.watch(side);
    side.disableUndoRecording(side.undoRecording());
    const AcDbObjectPointer<AcDbObject> open(side.layerZero(), AcDb::kForRead);
    EXPECT_EQ(session.leftovers().size(), 2u);
    session.forget(side);
    EXPECT_TRUE(session.leftovers().empty());
}

TEST(TestHost, aRunningCommandIsLeftBehindWhileItRuns) {
    TestHost session;
    session.host().commands().addCommand(L"TEST", L"LOOK", L"LOOK", ACRX_CMD_MODAL, runBody);
    std::vector<std::wstring> during;
    g_body = [&] { during = session.leftovers(); };
    EXPECT_EQ(session.host().run(L"LOOK").status, Acad::eOk);
    ASSERT_EQ(during.size(), 2u) << "the command and its lock";
    EXPECT_NE(during[1].find(L"LOOK"), std::wstring::npos);
    EXPECT_TRUE(session.leftovers().empty());
}

TEST(TestHost, nothingLeaksIntoTheNext) {
    for (int round = 0; round < 2; ++round) {
        TestHost session;
        EXPECT_EQ(session.host().documents().documentCount(), 1);
        EXPECT_TRUE(session.port().printed.empty());
        const AcDbObjectId space = session.database().modelSpaceId();
        EXPECT_TRUE(AcDbObjectPointer<AcDbBlockTableRecord>(space, AcDb::kForRead)->entities().empty());
        const AcAxDocLock lock;
        drawingtest::append(space, new AcDbLine({0, 0, 0}, {1, 0, 0}));
        acutPrintf(L"something");
    }
}
