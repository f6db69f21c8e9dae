#include "acdocman.h"
#include "aced.h"
#include "atomicfile.h"
#include "contourreport.h"
#include "contourwalk.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "host.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "systempath.h"
#include "textencoding.h"

#include <algorithm>

namespace {

constexpr const wchar_t* commandGroup = L"SLAB";

ContourReport reportOf(AcDbDatabase& database) {
    ContourReport report;
    report.unit = unitName(database.insunits());
    report.decimals = std::clamp<int>(database.luprec(), 0, 8);
    const ContourWalk walk = forEachContour(database, [&](Contour&& contour) {
        report.rows.push_back({contour.layer, contour.path, contour.kind, measuresOf(contour)});
    });
    report.openCurves = walk.openCurves;
    report.isCut = walk.isCut;
    return report;
}

void writeReport(const CString& file, const std::wstring& text, std::size_t contours) {
    hostkit::AtomicFile target(hostkit::mapPath(file.view()));
    target.write(hostkit::utf8FromWide(text));
    if (!target.commit()) {
        CString reason;
        reason.Format(L"%s: %s", file, hostkit::wideFromUtf8(target.errorText()).c_str());
        return hostkit::failCommand(Acad::eFileAccessErr, reason.view());
    }
    acutPrintf(L"%s: %d contours\n", file, static_cast<int>(contours));
}

// CONTOURS [TEXT | CSV | JSON] [FILE]
void contours() {
    CVxLogEntry entry(L"SLAB::contours");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    CString form(L"Text");
    CString file;
    acedInitGet(0, L"Text CSV Json");
    const int answer = acedGetKword(L"Form [Text/CSV/Json] <Text>: ", form);
    if (answer == RTREJ) return hostkit::failCommand(Acad::eInvalidInput, L"the form is TEXT, CSV or JSON");
    if (answer != RTNORM && answer != RTNONE) return;
    if (acedGetString(1, L"File <command line>: ", file) != RTNORM) return;

    const ContourReport report = reportOf(*document->database());
    const std::wstring text = form == L"CSV"    ? reportAsCsv(report)
                              : form == L"Json" ? reportAsJson(report)
                                                : reportAsText(report);
    if (file.IsEmpty())
        acutPrintf(L"%s", text.c_str());
    else
        writeReport(file, text, report.rows.size());
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxDynamicLinker->unlockApplication(packet);
        acrxDynamicLinker->registerAppMDIAware(packet);
        if (acedRegCmds->addCommand(commandGroup, L"CONTOURS", L"CONTOURS", ACRX_CMD_MODAL, contours) !=
            Acad::eOk)
            return AcRx::kRetError;
        break;
    case AcRx::kUnloadAppMsg:
        acedRegCmds->removeGroup(commandGroup);
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
