#include "dbminsert.h"

#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

#include <algorithm>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbMInsertBlock, AcDbBlockReference, nullptr)

namespace {

constexpr int kMostCopies = 32767; // what the drawing's 16-bit field holds

bool isCount(Adesk::UInt16 count) { return count >= 1 && count <= kMostCopies; }

} // namespace

Acad::ErrorStatus AcDbMInsertBlock::setColumns(Adesk::UInt16 columns) {
    return hostkit::assignIf(isCount(columns), *this, m_columns, static_cast<Adesk::Int16>(columns));
}

Acad::ErrorStatus AcDbMInsertBlock::setRows(Adesk::UInt16 rows) {
    return hostkit::assignIf(isCount(rows), *this, m_rows, static_cast<Adesk::Int16>(rows));
}

Acad::ErrorStatus AcDbMInsertBlock::setColumnSpacing(double spacing) {
    return hostkit::setFiniteField(*this, m_columnSpacing, spacing);
}

Acad::ErrorStatus AcDbMInsertBlock::setRowSpacing(double spacing) {
    return hostkit::setFiniteField(*this, m_rowSpacing, spacing);
}

AcGeVector3d AcDbMInsertBlock::columnAxis() const {
    return hostkit::toWorld(m_normal, AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0.0));
}

AcGeVector3d AcDbMInsertBlock::rowAxis() const {
    return hostkit::toWorld(m_normal, AcGeVector3d(-std::sin(m_rotation), std::cos(m_rotation), 0.0));
}

void AcDbMInsertBlock::getCopySpread(AcGeVector3d& columns, AcGeVector3d& rows) const {
    columns = columnAxis() * (m_columnSpacing * std::max(0, m_columns - 1));
    rows = rowAxis() * (m_rowSpacing * std::max(0, m_rows - 1));
}

AcGeMatrix3d AcDbMInsertBlock::copyTransform(int index) const {
    const int columns = std::max<int>(1, m_columns);
    const AcGeVector3d offset =
        columnAxis() * (m_columnSpacing * (index % columns)) + rowAxis() * (m_rowSpacing * (index / columns));
    return AcGeMatrix3d::translation(offset) * blockTransform();
}

Acad::ErrorStatus AcDbMInsertBlock::subTransformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d column = columnAxis() * m_columnSpacing;
    const AcGeVector3d row = rowAxis() * m_rowSpacing;
    const Acad::ErrorStatus status = AcDbBlockReference::subTransformBy(matrix);
    if (status != Acad::eOk || hostkit::isShift(matrix)) return status;
    m_columnSpacing = columnAxis().dotProduct(matrix * column);
    m_rowSpacing = rowAxis().dotProduct(matrix * row);
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

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
