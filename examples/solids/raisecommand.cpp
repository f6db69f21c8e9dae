#include "raising.h"
#include "solidcommands.h"

#include "acdocman.h"
#include "aced.h"
#include "contourwalk.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "dbsol3d.h"
#include "modulecommand.h"
#include "namedsolids.h"
#include "reporttext.h"

#include <algorithm>

namespace {

constexpr unsigned short solidColor = 8; // grey, as concrete is drawn
constexpr double deflectionShare = 0.01; // of the thickness

struct Request {
    PlanSelection plan;
    SlabRoles roles;
    std::vector<std::wstring> beamLayers, columnLayers;
    RaisingMeasures measures;
    std::wstring layer = L"SOLIDS";
    std::wstring name = L"SLAB";
};

bool refuse(Acad::ErrorStatus status, const std::wstring& reason) {
    hostkit::failCommand(status, reason);
    return false;
}

bool readLength(const wchar_t* prompt, double& length) {
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    if (acedGetReal(prompt, &length) == RTNORM && length > 0.0 && length < 1e9) return true;
    return refuse(Acad::eInvalidInput, L"a length above 0 is needed, in drawing units");
}

bool readName(const wchar_t* prompt, std::wstring& name) {
    CString text;
    if (acedGetString(0, prompt, text) != RTNORM) return false;
    if (text.IsEmpty()) return refuse(Acad::eInvalidInput, L"a name is needed");
    name = text.GetString();
    return true;
}

bool readOption(const AcDbDatabase& database, const CString& option, Request& request) {
    RaisingMeasures& measures = request.measures;
    if (option == L"Selection") return readPlan(request.plan);
    if (option == L"OUtlines")
        return readLayerNames(database, L"Layers of the outlines: ", request.roles.outlineLayers);
    if (option == L"OPenings")
        return readLayerNames(database, L"Layers of the openings: ", request.roles.openingLayers);
    if (option == L"Beams")
        return readLayerNames(database, L"Layers of the beams: ", request.beamLayers) &&
               readLength(L"Depth of the beams: ", measures.beamDepth);
    if (option == L"Columns")
        return readLayerNames(database, L"Layers of the columns: ", request.columnLayers) &&
               readLength(L"Height of the columns: ", measures.columnHeight);
    if (option == L"Deflection") return readLength(L"Facets from their arc at most: ", measures.deflection);
    if (option == L"LAyer") return readName(L"Layer of the solid <SOLIDS>: ", request.layer);
    return readName(L"Name of the solid <SLAB>: ", request.name);
}

bool readRequest(const AcDbDatabase& database, Request& request) {
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    if (!readLength(L"Thickness of the slabs: ", request.measures.thickness)) return false;
    for (;;) {
        CString option;
        acedInitGet(0, L"Selection OUtlines OPenings Beams Columns Deflection LAyer NAme");
        const int answer = acedGetKword(
            L"Option [Selection/OUtlines/OPenings/Beams/Columns/Deflection/LAyer/NAme] <done>: ", option);
        if (answer == RTNONE) break;
        if (answer == RTREJ)
            return refuse(Acad::eInvalidInput,
                          L"the options are SELECTION, OUTLINES, OPENINGS, BEAMS, COLUMNS, "
                          L"DEFLECTION, LAYER and NAME");
        if (answer != RTNORM || !readOption(database, option, request)) return false;
    }
    RaisingMeasures& measures = request.measures;
    if (measures.deflection == 0.0) measures.deflection = measures.thickness * deflectionShare;
    return true;
}

/// Which part a contour's layer makes of it.
std::vector<std::unique_ptr<PlanContour>>* placeOf(const std::wstring& layer, const Request& request,
                                                   RaisedPlan& plan,
                                                   std::vector<std::unique_ptr<PlanContour>>& slabs) {
    if (isListed(request.beamLayers, layer)) return &plan.beams;
    if (isListed(request.columnLayers, layer)) return &plan.columns;
    const bool takesPart = request.roles.outlineLayers.empty() ||
                           isListed(request.roles.outlineLayers, layer) ||
                           isListed(request.roles.openingLayers, layer);
    return takesPart ? &slabs : nullptr;
}

RaisedPlan readParts(AcDbDatabase& database, const Request& request) {
    RaisedPlan plan;
    std::vector<std::unique_ptr<PlanContour>> slabs;
    std::vector<Finding> findings;
    const auto visit = [&](Contour&& contour) {
        auto* const place = placeOf(contour.layer, request, plan, slabs);
        if (!place) return;
        std::wstring reason;
        if (std::optional<PlanContour> flat = planContourOf(contour, reason))
            place->push_back(std::make_unique<PlanContour>(std::move(*flat)));
        else
            findings.push_back({contour.layer, contour.path, reason});
    };
    const ContourWalk walk = forEachContour(database, visit, request.plan);
    if (walk.isCut) findings.push_back({L"", L"", L"the walk was cut short; there are more contours"});
    plan.slabs = planSlabs(std::move(slabs), request.roles, [](double) { return !acedUsrBrk(); });
    plan.slabs.findings.insert(plan.slabs.findings.begin(), findings.begin(), findings.end());
    return plan;
}

void tellPlan(const RaisedPlan& plan) {
    std::size_t openings = 0;
    for (const Slab& slab : plan.slabs.slabs) openings += slab.openings.size();
    acutPrintf(L"%d slabs with %d openings, %d beams, %d columns\n",
               static_cast<int>(plan.slabs.slabs.size()), static_cast<int>(openings),
               static_cast<int>(plan.beams.size()), static_cast<int>(plan.columns.size()));
    for (const Finding& finding : plan.slabs.findings)
        acutPrintf(L"%s %s: %s\n", finding.layer.c_str(), finding.path.c_str(), finding.reason.c_str());
}

Acad::ErrorStatus putSolid(AcDbDatabase& database, const AModeler::Body& body, const Request& request) {
    auto solid = std::make_unique<AcDb3dSolid>();
    Acad::ErrorStatus status = solid->setBody(body);
    if (status == Acad::eOk) status = eraseSolid(database, request.name);
    AcDbObjectId id;
    return status != Acad::eOk
               ? status
               : addToModel(database, std::move(solid), request.layer, solidColor, request.name, id);
}

} // namespace

void raiseCommand() {
    CVxLogEntry entry(L"SOLIDS::raise");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    AcDbDatabase& database = *document->database();
    Request request;
    request.plan = impliedPlan();
    if (!readRequest(database, request)) return;
    RaisedPlan plan = readParts(database, request);
    if (acedUsrBrk()) return hostkit::failCommand(Acad::eUserBreak, L"stopped; no solid was made");
    const AModeler::Body body = raisedBody(plan, request.measures);
    tellPlan(plan);
    if (body.isNull())
        return hostkit::failCommand(Acad::eInvalidInput, L"there is no closed contour that could be raised");
    const Acad::ErrorStatus status = putSolid(database, body, request);
    if (status != Acad::eOk) return hostkit::failCommand(status, L"the solid has no place in the drawing");
    acutPrintf(L"Solid \"%s\": volume %s, %d faces\n", request.name.c_str(),
               fixedNumber(body.volume(), std::clamp<int>(database.luprec(), 0, 8)).c_str(),
               body.faceCount());
}
