#include "barcommands.h"

#include "bar.h"

#include "aced.h"
#include "cvxlogentry.h"
#include "dbobjptr.h"
#include "gebndblock3d.h"
#include "modulecommand.h"
#include "vexodatabasetools.h"
#include "vexoselectiontools.h"

#include <map>

namespace {

AcGePoint3d pointOf(const ads_point point) { return {point[0], point[1], point[2]}; }

AcDbObjectIdArray selectedBars() {
    resbuf* const filter = acutBuildList(RTDXF0, L"VEXOBAR", 0);
    AcDbObjectIdArray ids;
    VEXOSelectionTools::selectEntity(L"Bars: ", filter, VEXOSelectionTools::eSelectAny, ids, nullptr, true);
    acutRelRb(filter);
    return ids;
}

} // namespace

void barCommand() {
    CVxLogEntry entry(L"BARS::barCommand");
    ads_point start, end;
    ads_real diameter = 0.0;
    if (acedGetPoint(nullptr, L"Start: ", start) != RTNORM || acedGetPoint(start, L"End: ", end) != RTNORM)
        return;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    if (acedGetReal(L"Diameter: ", &diameter) != RTNORM) return;
    auto* const bar = new ExampleBar(pointOf(start), pointOf(end), diameter);
    AcDbObjectId id;
    if (VEXODatabaseTools::appendEntity(bar, L"*Model_Space", id, nullptr) == 1) {
        bar->close();
        return;
    }
    delete bar;
    hostkit::failCommand(Acad::eInvalidInput, L"the bar could not be put into the drawing");
}

void barListCommand() {
    CVxLogEntry entry(L"BARS::barListCommand");
    struct Row {
        int count = 0;
        double length = 0.0;
    };
    std::map<double, Row> rows;
    for (const AcDbObjectId id : selectedBars()) {
        const AcDbObjectPointer<ExampleBar> bar(id, AcDb::kForRead);
        if (!bar.object()) continue;
        Row& row = rows[bar->diameter()];
        ++row.count;
        row.length += bar->length();
    }
    if (rows.empty()) return hostkit::failCommand(Acad::eInvalidInput, L"no bar was selected");
    for (const auto& [diameter, row] : rows)
        acutPrintf(L"diameter %g: %d bars, length %g\n", diameter, row.count, row.length);
}

void barNearCommand() {
    CVxLogEntry entry(L"BARS::barNearCommand");
    ads_point point;
    ads_real distance = 0.0;
    if (acedGetPoint(nullptr, L"Point: ", point) != RTNORM) return;
    acedInitGet(RSG_NONEG, nullptr);
    if (acedGetReal(L"Distance: ", &distance) != RTNORM) return;
    const AcGeVector3d reach(distance, distance, distance);
    AcDbObjectIdArray ids;
    AcArray<AcGeMatrix3d> matrices;
    VEXOSelectionTools::getAdiacentElements(AcGeBoundBlock3d(pointOf(point) - reach, pointOf(point) + reach),
                                            ids, matrices);
    for (const AcDbObjectId id : ids) {
        wchar_t handle[17];
        id.handle().getIntoAsciiBuffer(handle);
        acutPrintf(L"%s\n", handle);
    }
    acutPrintf(L"%d bars\n", ids.length());
}
