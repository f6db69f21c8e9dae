#include "solidcommands.h"

#include "acdocman.h"
#include "aced.h"
#include "bodyreport.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "modulecommand.h"
#include "reporttext.h"
#include "tableoutput.h"

#include <algorithm>

namespace {

bool readRequest(SolidChoice& choice, TableOutput& output) {
    for (;;) {
        CString form;
        acedInitGet(0, L"NAme Text CSV Json");
        const int answer = acedGetKword(L"Form [NAme/Text/CSV/Json] <Text>: ", form);
        if (answer == RTREJ)
            hostkit::failCommand(Acad::eInvalidInput,
                                 L"the form is TEXT, CSV or JSON, NAME and a solid before it");
        if (answer != RTNORM && answer != RTNONE) return false;
        if (answer == RTNORM && form == L"NAme") {
            if (!readSolidName(choice)) return false;
            continue;
        }
        output.form = answer == RTNORM ? tableForm(form) : TableOutput::Form::text;
        return hostkit::readOutputFile(L"File <command line>: ", output.file);
    }
}

} // namespace

void bodiesCommand() {
    CVxLogEntry entry(L"SOLIDS::bodies");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    AcDbDatabase& database = *document->database();
    SolidChoice choice;
    TableOutput output;
    if (!readRequest(choice, output) || !findSolids(database, choice)) return;
    BodyReport report;
    report.unit = unitName(database.insunits());
    report.decimals = std::clamp<int>(database.luprec(), 0, 8);
    for (const NamedSolid& solid : choice.solids)
        report.rows.push_back({solid.name, solid.handle, solid.layer, measuresOf(solid.body)});
    const std::wstring table = output.form == TableOutput::Form::csv    ? bodiesAsCsv(report)
                               : output.form == TableOutput::Form::json ? bodiesAsJson(report)
                                                                        : bodiesAsText(report);
    if (giveOut(output, table, std::to_wstring(report.rows.size()) + L" solids") &&
        output.form == TableOutput::Form::text)
        tellFaults(choice);
}
