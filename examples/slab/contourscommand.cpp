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

ContourReport reportOf(AcDbDatabase& database, const PlanSelection& plan) {
    ContourReport report;
    report.unit = unitName(database.insunits());
    report.decimals = std::clamp<int>(database.luprec(), 0, 8);
    const auto visit = [&](Contour&& contour) {
        report.rows.push_back({contour.layer, contour.path, contour.kind, measuresOf(contour)});
    };
    const ContourWalk walk = forEachContour(database, visit, plan);
    report.openCurves = walk.openCurves.size();
    report.isCut = walk.isCut;
    return report;
}

// False when the command ends here, failed or stopped.
bool readForm(PlanSelection& plan, CString& form) {
    for (;;) {
        acedInitGet(0, L"Selection Text CSV Json");
        const int answer = acedGetKword(L"Form [Selection/Text/CSV/Json] <Text>: ", form);
        if (answer == RTREJ)
            hostkit::failCommand(Acad::eInvalidInput, L"the form is TEXT, CSV or JSON, SELECTION before it");
        if (answer != RTNORM && answer != RTNONE) return false;
        if (form != L"Selection") return true;
        form = L"Text";
        if (!readPlan(plan)) return false;
    }
}

} // namespace

void contoursCommand() {
    CVxLogEntry entry(L"SLAB::contours");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    CString form(L"Text");
    TableOutput output;
    PlanSelection plan = impliedPlan();
    if (!readForm(plan, form)) return;
    output.form = tableForm(form);
    if (!hostkit::readOutputFile(L"File <command line>: ", output.file)) return;

    const ContourReport report = reportOf(*document->database(), plan);
    const std::wstring table = output.form == TableOutput::Form::csv    ? reportAsCsv(report)
                               : output.form == TableOutput::Form::json ? reportAsJson(report)
                                                                        : reportAsText(report);
    if (output.form == TableOutput::Form::text) tellPlan(plan);
    giveOut(output, table, std::to_wstring(report.rows.size()) + L" contours");
}
