#include "blockholding.h"

#include "dbaccess.h"
#include "dbblockreference.h"
#include "dbdim.h"

#include <unordered_set>
#include <vector>

namespace hostkit {

AcDbObjectId shownBlock(const AcDbObject& object) {
    if (const auto* reference = AcDbBlockReference::cast(&object)) return reference->blockTableRecord();
    const auto* dimension = AcDbDimension::cast(&object);
    return dimension ? dimension->dimBlockId() : AcDbObjectId();
}

bool holdsBlock(AcDbObjectId block, AcDbObjectId wanted) {
    std::vector<AcDbObjectId> waiting{block};
    std::unordered_set<AcDbObjectId> seen{block};
    while (!waiting.empty()) {
        const AcDbObjectId id = waiting.back();
        waiting.pop_back();
        if (id == wanted) return true;
        const auto* record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (!record) continue;
        for (const AcDbObjectId entity : record->entities()) {
            const AcDbObject* object = entity.isErased() ? nullptr : DatabaseAccess::object(entity);
            const AcDbObjectId shown = object ? shownBlock(*object) : AcDbObjectId();
            if (!shown.isNull() && seen.insert(shown).second) waiting.push_back(shown);
        }
    }
    return false;
}

} // namespace hostkit
