#include "planselection.h"

#include "aced.h"
#include "modulecommand.h"
#include "vexoselectiontools.h"

PlanSelection impliedPlan() {
    AcDbObjectIdArray ids;
    VEXOSelectionTools::getSelectionIds(ids);
    return ids.isEmpty() ? PlanSelection() : PlanSelection(ids);
}

bool readPlan(PlanSelection& plan) {
    if (plan) return true;
    AcDbObjectIdArray ids;
    const int result =
        VEXOSelectionTools::selectMultipleEntities(L"Contours: ", nullptr, ids, nullptr, false);
    if (result == RTNORM) {
        plan = ids;
        return true;
    }
    if (result != RTCAN) hostkit::failCommand(Acad::eInvalidInput, L"no contours were selected");
    return false;
}

void tellPlan(const PlanSelection& plan) {
    if (plan) acutPrintf(L"Of %d selected entities:\n", plan->length());
}
