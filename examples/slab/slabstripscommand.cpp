#include "slabstripscommand.h"

#include "acdocman.h"
#include "aced.h"
#include "contourwalk.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "modulecommand.h"
#include "reporttext.h"
#include "stripdrawing.h"
#include "stripfiling.h"
#include "stripreport.h"
#include "tableoutput.h"
#include "vexoacadprogressbar.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

struct Request {
    PlanSelection plan;
    SlabRoles roles;
    CuttingFrame frame{AcGePoint3d(), AcGeVector3d::kXAxis};
    StripLook look{defaultStripLayer};
    TableOutput output;
};

bool refuse(Acad::ErrorStatus status, const std::wstring& reason) {
    hostkit::failCommand(status, reason);
    return false;
}

bool readDirection(AcGeVector3d& direction) {
    ads_point point;
    if (acedGetPoint(nullptr, L"Direction of the strips as a vector <1,0>: ", point) != RTNORM)
        return refuse(Acad::eInvalidInput, L"the direction is a vector: x,y");
    direction.set(point[0], point[1], 0.0);
    return !direction.isZeroLength() || refuse(Acad::eInvalidInput, L"the direction has no length");
}

bool readAngle(AcGeVector3d& direction) {
    double degrees = 0.0;
    if (acedGetReal(L"Angle of the strips in degrees <0>: ", &degrees) != RTNORM)
        return refuse(Acad::eInvalidInput, L"the angle is a number of degrees");
    // Quarters are met exactly: strips along an axis have edges along it.
    const double turns = std::remainder(degrees, 360.0);
    const double radians = turns * std::numbers::pi / 180.0;
    const bool isQuarter = std::remainder(turns, 90.0) == 0.0;
    direction.set(std::cos(radians), std::sin(radians), 0.0);
    if (isQuarter) direction.set(std::round(direction.x), std::round(direction.y), 0.0);
    return true;
}

bool readBase(AcGePoint3d& base) {
    ads_point point;
    if (acedGetPoint(nullptr, L"Base point <0,0>: ", point) != RTNORM)
        return refuse(Acad::eInvalidInput, L"the base is a point: x,y");
    base.set(point[0], point[1], 0.0);
    return true;
}

bool readStripLayer(std::wstring& layer) {
    CString name;
    if (acedGetString(0, L"Layer of the strips <SLABSTRIPS>: ", name) != RTNORM) return false;
    if (!name.IsEmpty()) layer = name.GetString();
    return true;
}

bool readOption(const AcDbDatabase& database, const CString& option, Request& request) {
    if (option == L"Selection") return readPlan(request.plan);
    if (option == L"OUtlines")
        return readLayerNames(database, L"Layers of the outlines: ", request.roles.outlineLayers);
    if (option == L"OPenings")
        return readLayerNames(database, L"Layers of the openings: ", request.roles.openingLayers);
    if (option == L"Direction") return readDirection(request.frame.direction);
    if (option == L"Angle") return readAngle(request.frame.direction);
    if (option == L"Base") return readBase(request.frame.base);
    if (option == L"Layer") return readStripLayer(request.look.layer);
    request.look.hasNumbers = true;
    return true;
}

bool isForm(const CString& option) { return option == L"Text" || option == L"CSV" || option == L"Json"; }

bool isSound(const Request& request) {
    const SlabRoles& roles = request.roles;
    for (const std::wstring& layer : roles.openingLayers)
        if (isListed(roles.outlineLayers, layer))
            return refuse(Acad::eInvalidInput, L"outlines and openings on one layer are told apart by "
                                               L"containment: give it for the outlines alone");
    if (isListed(roles.outlineLayers, request.look.layer) ||
        isListed(roles.openingLayers, request.look.layer))
        return refuse(Acad::eInvalidInput, L"the strips need a layer of their own");
    return true;
}

bool readRequest(const AcDbDatabase& database, Request& request) {
    for (;;) {
        CString option;
        acedInitGet(0, L"Selection OUtlines OPenings Direction Angle Base Layer Numbers Text CSV Json");
        const int answer = acedGetKword(
            L"Option [Selection/OUtlines/OPenings/Direction/Angle/Base/Layer/Numbers/Text/CSV/Json] <Text>: ",
            option);
        if (answer == RTREJ)
            return refuse(Acad::eInvalidInput,
                          L"the options are SELECTION, OUTLINES, OPENINGS, DIRECTION, ANGLE, BASE, "
                          L"LAYER, NUMBERS, and TEXT, CSV or JSON at the end");
        if (answer != RTNORM && answer != RTNONE) return false;
        if (answer == RTNORM && !isForm(option)) {
            if (!readOption(database, option, request)) return false;
            continue;
        }
        if (answer == RTNORM) request.output.form = tableForm(option);
        if (!hostkit::readOutputFile(L"File <command line>: ", request.output.file)) return false;
        request.look.angle = std::atan2(request.frame.direction.y, request.frame.direction.x);
        return isSound(request);
    }
}

// The meter over all the work, and a look for a break at every step of it.
class Progress {
public:
    explicit Progress(const wchar_t* caption)
        : m_meter(caption, 0, steps) {}

    /// False once the user breaks off.
    bool reach(double share) {
        const int position = static_cast<int>(share * steps);
        if (position != m_position) m_meter.moveToPos(m_position = position);
        m_isBroken = m_isBroken || acedUsrBrk();
        return !m_isBroken;
    }
    bool isBroken() const { return m_isBroken; }

private:
    static constexpr int steps = 1000;
    VEXOAcadProgressBar m_meter;
    int m_position = 0;
    bool m_isBroken = false;
};

// Reading the drawing, giving the roles and cutting, of the whole work.
constexpr double readShare = 0.1;
constexpr double plannedShare = 0.3;

// Strips of this run and of earlier ones are no contours of the plan.
bool takesPart(const SlabRoles& roles, const std::vector<std::wstring>& stripLayers,
               const std::wstring& layer) {
    if (isListed(stripLayers, layer)) return false;
    return roles.outlineLayers.empty() || isListed(roles.outlineLayers, layer) ||
           isListed(roles.openingLayers, layer);
}

std::vector<std::unique_ptr<PlanContour>> readContours(AcDbDatabase& database, const Request& request,
                                                       StripRun& run) {
    std::vector<std::unique_ptr<PlanContour>> contours;
    std::vector<std::wstring> stripLayers = filedStripLayers(database);
    stripLayers.push_back(request.look.layer);
    const auto visit = [&](Contour&& contour) {
        if (!takesPart(request.roles, stripLayers, contour.layer)) return;
        std::wstring reason;
        std::optional<PlanContour> plan = planContourOf(contour, reason);
        if (plan)
            contours.push_back(std::make_unique<PlanContour>(std::move(*plan)));
        else
            run.findings.push_back({contour.layer, contour.path, reason});
    };
    const ContourWalk walk = forEachContour(database, visit, request.plan);
    // Open lines are only amiss where outlines and openings are said to stand.
    for (const ContourWalk::OpenCurve& each : walk.openCurves)
        if (isListed(request.roles.outlineLayers, each.layer) ||
            isListed(request.roles.openingLayers, each.layer))
            run.findings.push_back({each.layer, each.path, L"is not closed"});
    run.isCut = walk.isCut;
    return contours;
}

void cutSlabs(StripRun& run, const CuttingFrame& frame, Progress& progress) {
    const double count = static_cast<double>(run.plan.slabs.size());
    for (const Slab& slab : run.plan.slabs) {
        const double before = static_cast<double>(run.slabs.size()) / count;
        if (!progress.reach(plannedShare + (1.0 - plannedShare) * before)) return;
        SlabResult result;
        result.slab = &slab;
        result.cut = cutSlab(slab, frame, [&](double share) {
            return progress.reach(plannedShare + (1.0 - plannedShare) * (before + share / count));
        });
        run.findings.insert(run.findings.end(), result.cut.findings.begin(), result.cut.findings.end());
        run.slabs.push_back(std::move(result));
    }
}

// False, and nothing has been drawn, when the user broke off.
bool makeRun(AcDbDatabase& database, const Request& request, StripRun& run) {
    Progress progress(L"Slab strips");
    std::vector<std::unique_ptr<PlanContour>> contours = readContours(database, request, run);
    if (!progress.reach(readShare)) return false;
    run.plan = planSlabs(std::move(contours), request.roles, [&](double share) {
        return progress.reach(readShare + (plannedShare - readShare) * share);
    });
    run.findings.insert(run.findings.end(), run.plan.findings.begin(), run.plan.findings.end());
    if (progress.isBroken()) return false;
    cutSlabs(run, request.frame, progress);
    return !progress.isBroken();
}

void giveTable(const StripRun& run, const TableOutput& output) {
    const std::wstring table = output.form == TableOutput::Form::csv    ? stripsAsCsv(run)
                               : output.form == TableOutput::Form::json ? stripsAsJson(run)
                                                                        : stripsAsText(run);
    const std::wstring content =
        std::to_wstring(stripCount(run)) + L" strips of " + std::to_wstring(run.slabs.size()) + L" slabs";
    if (!giveOut(output, table, content) || output.file.name.empty()) return;
    acutPrintf(L"%s", checksAsText(run).c_str());
}

} // namespace

void slabStripsCommand() {
    CVxLogEntry entry(L"SLAB::slabStrips");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    AcDbDatabase& database = *document->database();
    Request request;
    request.plan = impliedPlan();
    if (!readRequest(database, request)) return;

    StripRun run;
    run.unit = unitName(database.insunits());
    run.decimals = std::clamp<int>(database.luprec(), 0, 8);
    run.isByContainment =
        request.roles.outlineLayers.empty() && request.roles.openingLayers.empty() && !request.plan;
    if (!makeRun(database, request, run))
        return hostkit::failCommand(Acad::eUserBreak, L"stopped; no strips were drawn");
    if (run.slabs.empty()) {
        acutPrintf(L"%s", checksAsText(run).c_str());
        return hostkit::failCommand(Acad::eInvalidInput, L"there is no closed contour that could be a slab");
    }
    const Acad::ErrorStatus registered = registerMarks();
    if (registered != Acad::eOk)
        return hostkit::failCommand(registered, L"the drawing does not take the application's name");
    const Acad::ErrorStatus status = drawStrips(database, run, request.look);
    if (status != Acad::eOk) return hostkit::failCommand(status, L"the strips cannot be drawn");
    giveTable(run, request.output);
}
