#include "drawingcommands.h"

#include "acdocman.h"
#include "aced.h"
#include "atomicfile.h"
#include "commandoutput.h"
#include "consolestate.h"
#include "dbdatabase.h"
#include "drawingrecovery.h"
#include "host.h"
#include "modulecommand.h"
#include "repairoutput.h"
#include "saveforms.h"
#include "systempath.h"
#include "textencoding.h"
#include "undohistory.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <memory>

namespace {

using hostkit::Host;

// The words behind the file name of SAVEAS, in any order; false when one of them is unknown.
bool readSaveWords(hostkit::WriteOptions& options, bool& mayReplace) {
    for (;;) {
        CString word;
        acedInitGet(0, (L"OVERWRITE FIELDS " + formWords()).c_str());
        const int answer = acedGetKword(L"[OVERWRITE/FIELDS/TEXT/BINARY/DWG/R12 to 2018] <save now>: ", word);
        if (answer == RTNONE) return true;
        if (answer != RTNORM) return false;
        if (word == L"OVERWRITE") mayReplace = true;
        if (word == L"FIELDS") options.everythingFromFields = true;
        (void)applyFormWord(word.GetString(), options);
    }
}

// Where all of the drawing went into the file, it has no unsaved changes from then on.
bool saveTo(AcApDocument& document, const hostkit::OutputFile& file, hostkit::WriteOptions options) {
    if (!hostkit::acceptOutputFile(file, hostkit::OutputFiles::Kind::drawing)) return false;
    hostkit::FormChanges changes;
    options.changes = &changes;
    hostkit::HostPort& port = Host::current()->port();
    port.flush();
    const Acad::ErrorStatus status = Host::current()->saveDocument(document, file.name, options);
    if (status != Acad::eOk) {
        hostkit::failCommand(status, file.name + L": the drawing could not be saved");
        return false;
    }
    port.outputs().noteWritten(file.name);
    if (hostkit::isStandardOutput(file.name)) return true;
    printFormChanges(changes);
    if (changes.all().empty()) hostkit::noteSaved(*document.database());
    acutPrintf(L"Saved %s\n", file.name.c_str());
    return true;
}

bool saveToOwnFile(AcApDocument& document) { return saveTo(document, {document.fileName(), true}, {}); }

// A drawing without a file has this one from now on.
bool saveToNamedFile(AcApDocument& document) {
    CString name;
    if (acedGetString(0, L"File: ", name) != RTNORM) return false;
    hostkit::OutputFile file{name.GetString()};
    hostkit::WriteOptions options;
    if (file.name.empty()) {
        hostkit::failCommand(Acad::eInvalidInput, L"a file name is needed");
        return false;
    }
    if (!readSaveWords(options, file.mayReplace)) {
        hostkit::failCommand(Acad::eInvalidInput,
                             L"behind the file stand OVERWRITE, FIELDS, TEXT, BINARY or a form, R12 to 2018");
        return false;
    }
    if (!saveTo(document, file, options)) return false;
    if (!*document.fileName() && !hostkit::isStandardOutput(file.name)) document.setFileName(file.name);
    return true;
}

std::wstring nameOf(const AcApDocument& document) {
    return *document.fileName() ? std::wstring(hostkit::fileNameOfPath(document.fileName()))
                                : L"the new drawing";
}

bool isAsked() { return Host::current()->runningCommand()->input.more() == hostkit::MoreInput::ask; }

enum class Leaving { leave, stay };

// Nobody there to answer, as in a terminal that is gone, holds nothing back.
Leaving askAbout(AcApDocument& document) {
    CString word;
    acedInitGet(0, L"Save Discard Cancel");
    const int answer = acedGetKword(
        (nameOf(document) + L" has unsaved changes [Save/Discard/Cancel] <Cancel>: ").c_str(), word);
    if (answer == RTERROR) return Leaving::leave;
    if (answer != RTNORM || word == L"Cancel") return Leaving::stay;
    if (word == L"Discard") return Leaving::leave;
    const bool isSaved = *document.fileName() ? saveToOwnFile(document) : saveToNamedFile(document);
    return isSaved ? Leaving::leave : Leaving::stay;
}

bool hasUnsavedChanges(const AcApDocument& document) {
    return hostkit::hasUnsavedChanges(*document.database());
}

// Before another drawing takes the place of this one. A line that stands by itself says DISCARD.
bool mayBeLeft(AcApDocument* document) {
    CString word;
    if (!document || !hasUnsavedChanges(*document)) return true;
    if (isAsked()) return askAbout(*document) == Leaving::leave;
    hostkit::failCommand(Acad::eNotApplicable, nameOf(*document) +
                                                   L" has unsaved changes; SAVE or SAVEAS "
                                                   L"keeps them, the word DISCARD drops them");
    return false;
}

// DISCARD on the line behind; false, and the command has failed, for another word.
bool readDiscard(bool& isDiscarded) {
    if (Host::current()->runningCommand()->input.rest().empty()) return true;
    CString word;
    acedInitGet(0, L"DISCARD");
    const int answer = acedGetKword(L"[DISCARD] <keep>: ", word);
    isDiscarded = answer == RTNORM;
    if (answer == RTREJ) hostkit::failCommand(Acad::eInvalidInput, L"the last word is DISCARD, or none");
    return answer == RTNORM || answer == RTNONE;
}

void closeEarlier(AcApDocument* earlier) {
    if (!earlier) return;
    const std::wstring name = nameOf(*earlier);
    const Acad::ErrorStatus status = Host::current()->documents().closeDocument(earlier);
    if (status == Acad::eOk) return;
    Host::current()->port().reportProblem(L"vexohost: " + name + L" stays open, a module holds a lock on it");
}

} // namespace

const wchar_t* hintOfRecovery(Acad::ErrorStatus status) {
    constexpr Acad::ErrorStatus damages[] = {Acad::eBadDxfSequence, Acad::eEndOfFile, Acad::eHandleInUse,
                                             Acad::eDuplicateKey, Acad::eCyclicReference};
    const bool isDamaged = std::find(std::begin(damages), std::end(damages), status) != std::end(damages);
    return isDamaged ? L"; RECOVER may help" : L"";
}

void openCommand() {
    CString name;
    bool isDiscarded = false;
    if (acedGetString(0, L"File: ", name) != RTNORM) return;
    if (name.IsEmpty()) return hostkit::failCommand(Acad::eInvalidInput, L"a file name is needed");
    if (!readDiscard(isDiscarded)) return;
    AcApDocument* const earlier = acDocManagerPtr()->curDocument();
    if (!isDiscarded && !mayBeLeft(earlier)) return;
    const Acad::ErrorStatus status = Host::current()->openDocument(name.GetString());
    // The reader has told file, line and reason already.
    if (status != Acad::eOk)
        return hostkit::failCommand(status, std::wstring(name.GetString()) + L": the drawing cannot be read" +
                                                hintOfRecovery(status));
    closeEarlier(earlier);
}

// The recovered drawing has no file: the damaged one is replaced by nobody who does not name it.
void recoverCommand() {
    CString name;
    bool isDiscarded = false;
    if (acedGetString(0, L"File: ", name) != RTNORM) return;
    if (name.IsEmpty()) return hostkit::failCommand(Acad::eInvalidInput, L"a file name is needed");
    if (!readDiscard(isDiscarded)) return;
    AcApDocument* const earlier = acDocManagerPtr()->curDocument();
    if (!isDiscarded && !mayBeLeft(earlier)) return;
    const std::wstring file = name.GetString();
    std::string bytes;
    if (!hostkit::readWholeFile(hostkit::mapPath(file), bytes))
        return hostkit::failCommand(Acad::eFileAccessErr,
                                    file + L": " + hostkit::wideFromUtf8(std::strerror(errno)));
    Host::current()->port().outputs().protect(file, hostkit::OutputFiles::Role::drawing,
                                              L"the drawing that was recovered");
    hostkit::RecoveryReport report;
    std::unique_ptr<AcDbDatabase> database = hostkit::recoverDrawing(bytes, file, report);
    showRepairs(report.repairs, ReportForm::table);
    if (!database) return hostkit::failCommand(report.status, report.message);
    Host::current()->documents().adopt(std::move(database), L"");
    closeEarlier(earlier);
    acutPrintf(L"Recovered %s; SAVEAS FILE keeps it\n", file.c_str());
    if (!report.repairs.isClean())
        hostkit::failCommand(Acad::eDwgObjectImproperlyRead, L"faults are left that AUDIT names");
}

void newCommand() {
    bool isDiscarded = false;
    if (!readDiscard(isDiscarded)) return;
    AcApDocument* const earlier = acDocManagerPtr()->curDocument();
    if (!isDiscarded && !mayBeLeft(earlier)) return;
    const Acad::ErrorStatus status = Host::current()->newDocument();
    if (status != Acad::eOk) return hostkit::failCommand(status, L"no drawing could be begun");
    closeEarlier(earlier);
}

void saveCommand() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    if (!*document->fileName())
        return hostkit::failCommand(Acad::eInvalidInput,
                                    L"the drawing has no file yet; SAVEAS FILE gives it one");
    // Who names a file means that one, not the drawing's own.
    if (!Host::current()->runningCommand()->input.rest().empty())
        return hostkit::failCommand(
            Acad::eInvalidInput,
            L"it saves the drawing to its own file; SAVEAS takes another name. Nothing was saved");
    (void)saveToOwnFile(*document);
}

void saveAsCommand() {
    if (AcApDocument* document = documentOrFail()) (void)saveToNamedFile(*document);
}

void quitCommand() {
    ConsoleState& state = consoleState();
    AcApDocManager& documents = Host::current()->documents();
    for (int i = 0; isAsked() && !state.savesAtEnd && i < documents.documentCount(); ++i) {
        AcApDocument& document = *documents.documentAt(i);
        if (hasUnsavedChanges(document) && askAbout(document) == Leaving::stay) return;
    }
    state.wantsToQuit = true;
}
