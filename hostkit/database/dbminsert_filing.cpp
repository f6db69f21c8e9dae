#include "dbminsert.h"

#include "fieldtable.h"

#include <algorithm>

using namespace hostkit;

struct AcDbMInsertBlock::Filing {
    static constexpr GroupField<AcDbMInsertBlock> groups[] = {
        integerField<&AcDbMInsertBlock::m_columns>(70, 1),
        integerField<&AcDbMInsertBlock::m_rows>(71, 1),
        realField<&AcDbMInsertBlock::m_columnSpacing>(44, 0.0),
        realField<&AcDbMInsertBlock::m_rowSpacing>(45, 0.0),
    };
};

bool AcDbMInsertBlock::readArrayGroup(const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
    const auto* const field =
        std::find_if(std::begin(Filing::groups), std::end(Filing::groups),
                     [&](const auto& candidate) { return candidate.code == group.code; });
    if (field == std::end(Filing::groups)) return false;
    if (group.kind == AcDb::GroupKind::kInt16 && group.integer < 1) return false;
    return field->read(*this, group, filer);
}

void AcDbMInsertBlock::writeArrayGroups(AcDbDxfFiler& filer) const {
    writeFields(filer, Filing::groups, *this);
}
