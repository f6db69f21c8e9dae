#include "planselection.h"

#include "aced.h"
#include "dbdatabase.h"
#include "dblayertable.h"
#include "dbobjptr.h"
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

bool readLayerNames(const AcDbDatabase& database, const wchar_t* prompt, std::vector<std::wstring>& layers) {
    CString text;
    if (acedGetString(0, prompt, text) != RTNORM) return false;
    const AcDbSymbolTablePointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForRead);
    const auto refuse = [](Acad::ErrorStatus status, const std::wstring& reason) {
        hostkit::failCommand(status, reason);
        return false;
    };
    std::wstring_view rest = text.view();
    layers.clear();
    for (bool hasMore = true; hasMore;) {
        const std::size_t comma = rest.find(L',');
        const std::wstring name(rest.substr(0, comma));
        hasMore = comma != std::wstring_view::npos;
        if (hasMore) rest.remove_prefix(comma + 1);
        if (name.empty())
            return refuse(
                Acad::eInvalidInput,
                L"the name of a layer is needed; several stand with commas alone between them: A,B");
        if (!table.object() || !table->has(name.c_str()))
            return refuse(Acad::eKeyNotFound, L"there is no layer \"" + name + L"\"");
        layers.push_back(name);
    }
    return true;
}
