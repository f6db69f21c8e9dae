#include "spacecommands.h"

#include "accmd.h"
#include "dbdatabase.h"
#include "host.h"
#include "modulecommand.h"

namespace hostkit {
namespace {

constexpr int ofSheet = 1;
constexpr int ofModel = 2;

void makeCurrent(int viewport) {
    AcApDocument* document = Host::current()->documents().curDocument();
    if (!document) return failCommand(Acad::eNoDocument, L"no drawing is open");
    if (document->database()->tilemode())
        return failCommand(Acad::eNotApplicable,
                           L"model space is current, which has no sheet; TILEMODE 0 changes that");
    document->setSheetViewport(viewport);
}

void paperSpace() { makeCurrent(ofSheet); }
void modelSpace() { makeCurrent(ofModel); }

} // namespace

void registerSpaceCommands(AcEdCommandStack& stack) {
    constexpr Adesk::Int32 flags = ACRX_CMD_MODAL | ACRX_CMD_NO_UNDO_MARKER;
    stack.addCommand(L"HOST", L"MSPACE", nullptr, flags, modelSpace);
    stack.addCommand(L"HOST", L"PSPACE", nullptr, flags, paperSpace);
}

} // namespace hostkit
