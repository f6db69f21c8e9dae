// A module as tests need one: commands that answer, fail, wait for Ctrl-C and change the drawing.
#include "acdocman.h"
#include "aced.h"
#include "actrans.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "hostport.h"
#include "modulecommand.h"
#include "rxdlinkr.h"

#include <chrono>
#include <thread>

namespace {

void greet() {
    CString name;
    int times = 1;
    if (acedGetString(0, L"Name: ", name) != RTNORM) return;
    acedGetInt(L"Times: ", &times);
    for (int i = 0; i < times; ++i) acutPrintf(L"Hello %s\n", name);
}

void fail() { hostkit::failCommand(Acad::eKeyNotFound, L"nothing is found"); }

void addLine() {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(
        acDocManagerPtr()->curDocument()->database()->modelSpaceId(), AcDb::kForWrite);
    auto* line = new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6));
    line->setDatabaseDefaults();
    if (space->appendAcDbEntity(line) == Acad::eOk) line->close();
}

// Changes the drawing and asks; does no more when it is cancelled.
void ask() {
    addLine();
    CString first, second;
    if (acedGetString(0, L"First: ", first) != RTNORM) return;
    if (acedGetString(0, L"Second: ", second) != RTNORM) return;
    acutPrintf(L"%s and %s\n", first, second);
}

// One line that undo knows of and one that it does not.
void addTwo() {
    AcDbDatabase& database = *acDocManagerPtr()->curDocument()->database();
    addLine();
    database.disableUndoRecording(true);
    addLine();
    database.disableUndoRecording(false);
}

// One open object for each word: READ, WRITE or NOTIFY.
void leaveOpen() {
    for (CString mode; acedGetString(0, L"Mode: ", mode) == RTNORM && !mode.IsEmpty();) {
        const AcDb::OpenMode how = mode == L"READ"    ? AcDb::kForRead
                                   : mode == L"WRITE" ? AcDb::kForWrite
                                                      : AcDb::kForNotify;
        AcDbObject* object = nullptr;
        AcDbDatabase* const database = acDocManagerPtr()->curDocument()->database();
        acdbOpenObject(object, how == AcDb::kForRead ? database->layerTableId() : database->layerZero(), how);
    }
}

void leaveTransaction() {
    acDocManagerPtr()->curDocument()->transactionManager()->startTransaction();
    addLine();
}

// Texts (TEXT) with | for the end of a line, or an expression (EXPRESSION), that run behind it.
void queue() {
    CString kind, text;
    acedGetString(0, L"Kind: ", kind);
    acedGetString(0, L"Text: ", text);
    if (kind == L"EXPRESSION") {
        ads_queueexpr(text.GetString());
    } else {
        text.Replace(L"|", L"\n");
        acedPostCommand(text.GetString());
    }
    acutPrintf(L"queued\n");
}

void wait() {
    acutPrintf(L"waiting\n");
    // Output is held until a command ends or asks: ask for nothing, so that the test hears of it.
    hostkit::currentPort()->reportProblem(L"waiting");
    while (!acedUsrBrk()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
}

// Ignores the break, as a command that is busy elsewhere does.
void hang() {
    hostkit::currentPort()->reportProblem(L"waiting");
    for (;;) std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        acrxDynamicLinker->unlockApplication(packet);
        const std::pair<const wchar_t*, AcRxFunctionPtr> commands[] = {
            {L"FAIL", fail},          {L"ADDLINE", addLine},
            {L"ADDTWO", addTwo},      {L"LEAVE", leaveTransaction},
            {L"QUEUE", queue},        {L"WAIT", wait},
            {L"HANG", hang},          {L"ASK", ask},
            {L"LEAVEOPEN", leaveOpen}};
        acedRegCmds->addCommand(L"HELPFUL", L"GREET", L"SALUER", 0, greet);
        for (const auto& [name, function] : commands)
            acedRegCmds->addCommand(L"HELPFUL", name, L"", 0, function);
    }
    if (message == AcRx::kUnloadAppMsg) {
        acedRegCmds->removeGroup(L"HELPFUL");
        hostkit::currentPort()->reportProblem(L"helpful has left");
    }
    return AcRx::kRetOK;
}
