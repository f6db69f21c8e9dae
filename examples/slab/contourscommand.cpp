#include "contourscommand.h"

#include "acdocman.h"
#include "aced.h"
#include "contourreport.h"
#include "contourwalk.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "modulecommand.h"
#include "reporttext.h"
#include "tableoutput.h"

#include <algorithm>

namespace {

ContourReport reportOf(AcDbDatabase& database) {
    ContourReport report;
    report.unit = unitName(database.insunits());
    report.decimals = std::clamp<int>(database.luprec(), 0, 8);
    const ContourWalk walk = forEachContour(database, [&](Contour&& contour) {
        report.rows.push_back({contour.layer, contour.path, contour.kind, measuresOf(contour)});
    });
    report.openCurves = walk.openCurves.size();
    report.isCut = walk.isCut;
    return report;
}

} // namespace

void contoursCommand() {
    CVxLogEntry entry(L"SLAB::contours");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    CString form(L"Text");
    TableOutput output;
    acedInitGet(0, L"Text CSV Json");
    const int answer = acedGetKword(L"Form [Text/CSV/Json] <Text>: ", form);
    if (answer == RTREJ) return hostkit::failCommand(Acad::eInvalidInput, L"the form is TEXT, CSV or JSON");
    if (answer != RTNORM && answer != RTNONE) return;
    output.form = tableForm(form);
    if (!hostkit::readOutputFile(L"File <command line>: ", output.file)) return;

    const ContourReport report = reportOf(*document->database());
    const std::wstring table = output.form == TableOutput::Form::csv    ? reportAsCsv(report)
                               : output.form == TableOutput::Form::json ? reportAsJson(report)
                                                                        : reportAsText(report);
    giveOut(output, table, std::to_wstring(report.rows.size()) + L" contours");
}
