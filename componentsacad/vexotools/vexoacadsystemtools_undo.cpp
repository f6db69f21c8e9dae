#include "vexoacadsystemtools.h"

#include "acdbads.h"
#include "afxwin.h"
#include "cvxlogentry.h"
#include "rxclass.h"
#include "rxdict.h"
#include "vexoacadsystemtools_internal.h"

#include <memory>

using namespace vexo;

namespace {

// Takes the active document for a scope.
bool takeActiveDocument(Held<IHostDocument>& document) {
    Held<IHostApplication> application;
    return takeApplication(application) && SUCCEEDED(application->get_ActiveDocument(document.receive())) &&
           document;
}

std::unique_ptr<AcRxDictionaryIterator> walkOfClasses() {
    AcRxDictionary* const registry = acrxSysRegistry();
    const AcRxDictionary* const classes =
        registry ? AcRxDictionary::cast(registry->at(L"ClassDictionary")) : nullptr;
    return std::unique_ptr<AcRxDictionaryIterator>(classes ? classes->newIterator() : nullptr);
}

} // namespace

bool VEXOAcadSystemTools::startUndoMark() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::startUndoMark");
    Held<IHostDocument> document;
    return takeActiveDocument(document) && SUCCEEDED(document->StartUndoMark());
}

bool VEXOAcadSystemTools::endUndoMark() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::endUndoMark");
    Held<IHostDocument> document;
    return takeActiveDocument(document) && SUCCEEDED(document->EndUndoMark());
}

Acad::ErrorStatus VEXOAcadSystemTools::RegisterXDataFor(const CString& application) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::RegisterXDataFor");
    if (resbuf* const record = acdbTblSearch(L"APPID", application, 0)) {
        acutRelRb(record);
        return Acad::eOk;
    }
    return acdbRegApp(application) == RTNORM ? Acad::eOk : Acad::eInvalidInput;
}

int VEXOAcadSystemTools::hasDescendantsInOtherApp(const AcRxClass* parent) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::hasDescendantsInOtherApp");
    if (!parent) return 0;
    const std::unique_ptr<AcRxDictionaryIterator> walk = walkOfClasses();
    if (!walk) {
        AfxMessageBox(L"ERROR: Couldn't get class dictionary.");
        return 0;
    }
    for (; !walk->done(); walk->next()) {
        const auto* const each = dynamic_cast<const AcRxClass*>(walk->object());
        if (each && each->isDerivedFrom(parent) && std::wcscmp(each->name(), parent->name()) != 0) return 1;
    }
    return 0;
}
