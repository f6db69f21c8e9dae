#include "undocommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "host.h"
#include "modulecommand.h"
#include "undohistory.h"

#include <string>

namespace {

std::wstring nameOf(const hostkit::UndoReport& report) {
    return report.name.empty() ? L"Changes by no command" : report.name;
}

void tell(const hostkit::UndoReport& report) {
    const std::wstring name = nameOf(report);
    std::wstring text =
        name + L": taken back, " + counted(report.restored, L"object is", L"objects are") + L" as before\n";
    if (report.keptSuspended > 0)
        text += L"  " + counted(report.keptSuspended, L"object stays", L"objects stay") +
                L" as changed while undo recording was off\n";
    if (report.inConflict > 0)
        text += L"  " +
                counted(report.inConflict, L"object could not be taken back whole: it was",
                        L"objects could not be taken back whole: they were") +
                L" changed again while undo recording was off\n";
    if (report.unfiled > 0)
        text += L"  " +
                counted(report.unfiled, L"object could not be taken back: its class does",
                        L"objects could not be taken back: their classes do") +
                L" not file what they hold\n";
    hostkit::printToCommandLine(text);
}

void takeBack(int count) {
    AcApDocument* document = documentOrFail();
    for (int i = 0; document && i < count; ++i) {
        hostkit::UndoReport report;
        const Acad::ErrorStatus status = hostkit::undoLastGroup(*document->database(), report);
        if (status != Acad::eOk && i > 0) return acutPrintf(L"Nothing further to take back\n"), void();
        if (status != Acad::eOk) return hostkit::failCommand(status, L"there is nothing to take back");
        tell(report);
    }
}

bool readCount(int& count) {
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    const int answer = acedGetInt(L"Number of commands <1>: ", &count);
    if (answer == RTREJ) hostkit::failCommand(Acad::eInvalidInput, L"the number of commands is 1 or more");
    return answer == RTNORM || answer == RTNONE;
}

} // namespace

void uCommand() { takeBack(1); }

void undoCommand() {
    int count = 1;
    if (readCount(count)) takeBack(count);
}

void redoCommand() {
    AcApDocument* document = documentOrFail();
    int count = 1;
    if (!document || !readCount(count)) return;
    for (int i = 0; i < count; ++i) {
        hostkit::UndoReport report;
        const Acad::ErrorStatus status = hostkit::redoLastGroup(*document->database(), report);
        if (status != Acad::eOk && i > 0) return acutPrintf(L"Nothing further to do again\n"), void();
        if (status != Acad::eOk) return hostkit::failCommand(status, L"there is nothing to do again");
        acutPrintf(L"%s: done again, %s as before it was taken back\n", nameOf(report).c_str(),
                   counted(report.restored, L"object is", L"objects are").c_str());
    }
}
