#include "vexoacadsystemtools.h"

#include "acdocman.h"
#include "afxwin.h"
#include "cvxlogentry.h"
#include "vexoacadsystemtools_internal.h"

using namespace vexo;

namespace {

constexpr int expressionBufferLength = 512;
constexpr int shownOfExpression = 60;

void focusOn(CWnd* window) {
    if (window) window->SetFocus();
}

// All three or none, so that the echo comes back whatever becomes of the payload.
void queueWithoutEcho(const CString& payload) {
    if (!canQueue(payload)) return;
    const int echo = VEXOAcadSystemTools::getSysVar(L"CMDECHO");
    if (echo != 0) ads_queueexpr(L"(setvar \"cmdecho\" 0)");
    ads_queueexpr(payload);
    if (echo == 0) return;
    CString restore;
    restore.Format(L"(setvar \"cmdecho\" %d)", echo);
    ads_queueexpr(restore);
}

} // namespace

bool vexo::canQueue(const CString& expression) {
    if (expression.GetLength() < expressionBufferLength) return true;
    acutPrintf(L"\nCannot queue an expression of 512 characters or more: %s...\n",
               expression.Left(shownOfExpression));
    return false;
}

void VEXOAcadSystemTools::sendCommandToAutoCAD(CString command) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::sendCommandToAutoCAD");
    focusOn(acedGetAcadDockCmdLine());
    const HWND main = adsw_acadMainWnd();
    COPYDATASTRUCT data;
    data.dwData = 1;
    data.cbData = static_cast<DWORD>((command.GetLength() + 1) * sizeof(wchar_t));
    data.lpData = command.GetBuffer();
    ::SendMessageW(main, WM_COPYDATA, reinterpret_cast<WPARAM>(main), reinterpret_cast<LPARAM>(&data));
}

void VEXOAcadSystemTools::sendCommandToAutoCADEx(CString command) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::sendCommandToAutoCADEx");
    command += L"\n";
    AcApDocManager* const manager = acDocManagerPtr();
    AcApDocument* const document = manager ? manager->curDocument() : nullptr;
    if (document) manager->sendStringToExecute(document, command, true, false, true);
}

void VEXOAcadSystemTools::postCommandToAutoCAD(CString command, bool cancelFirst) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::postCommandToAutoCAD");
    focusOn(acedGetAcadTextCmdLine());
    if (cancelFirst) acedPostCommand(L"CANCELCMD");
    command += L"\n";
    if (acedPostCommand(command) == 0) acutPrintf(L"Cannot post command");
    if (isAcadLT()) focusOn(acedGetAcadDwgView());
}

void VEXOAcadSystemTools::postMessageToAcad(std::uint64_t character) {
    CWnd* const commandLine = acedGetAcadTextCmdLine();
    if (!commandLine) return;
    const HWND input = ::GetWindow(commandLine->GetSafeHwnd(), GW_CHILD);
    ::PostMessageW(input, WM_CHAR, static_cast<WPARAM>(character), 0);
}

void VEXOAcadSystemTools::cmdLineMsg(CString text, bool newLineBefore, bool newLineAfter) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::cmdLineMsg");
    acutPrintf(L"%s%s%s", newLineBefore ? L"\n" : L"", text, newLineAfter ? L"\n" : L"");
}

void VEXOAcadSystemTools::launchCommandNoEcho(const wchar_t* command) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::launchCommandNoEcho");
    if (!command) return;
    CString payload;
    payload.Format(L"(command \"%s\")", command);
    queueWithoutEcho(payload);
}

void VEXOAcadSystemTools::setVarNoEcho(const wchar_t* name, const int& value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setVarNoEcho");
    if (!name) return;
    CString payload;
    payload.Format(L"(setvar \"%s\" %d)", name, value);
    queueWithoutEcho(payload);
}
