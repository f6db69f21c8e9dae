#include "dbdimension.h"

#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dimensionpicture.h"
#include "entitycoordinates.h"
#include "handover.h"
#include "movedblock.h"

using namespace hostkit;

// What a dimension looks like.

bool AcDbDimension::isInPaperSpace() const {
    const AcDbObjectId block = blockId();
    const auto* record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
    return record && record->isLayout() && block != block.database()->modelSpaceId();
}

DimensionKind AcDbDimension::kindOfLayout() const {
    switch (dimensionType()) {
    case kRotated:
        return DimensionKind::rotated;
    case kAligned:
        return DimensionKind::aligned;
    case kTwoLineAngular:
        return DimensionKind::twoLineAngular;
    case kDiametric:
        return DimensionKind::diametric;
    case kRadial:
        return DimensionKind::radial;
    case kThreePointAngular:
        return DimensionKind::threePointAngular;
    case kOrdinate:
        return DimensionKind::ordinate;
    case kArcLength:
        return DimensionKind::arcLength;
    }
    return DimensionKind::none;
}

bool AcDbDimension::isComplete() const {
    const auto has = [this](std::initializer_list<int> codes) {
        for (const int code : codes)
            if ((m_hasPoint >> (code - DimensionShape::firstPointCode) & 1) == 0) return false;
        return true;
    };
    switch (kindOfLayout()) {
    case DimensionKind::rotated:
    case DimensionKind::aligned:
    case DimensionKind::ordinate:
        return has({10, 13, 14});
    case DimensionKind::twoLineAngular:
        return has({10, 13, 14, 15, 16});
    case DimensionKind::threePointAngular:
    case DimensionKind::arcLength:
        return has({10, 13, 14, 15});
    case DimensionKind::radial:
    case DimensionKind::diametric:
        return has({10, 15});
    default:
        return false;
    }
}

void AcDbDimension::addLayout(AcDbExtents& box) const {
    DimensionPicture picture;
    if (!layOutDimension(*this, picture)) return;
    for (const std::unique_ptr<AcDbEntity>& entity : entitiesOf(*this, picture, PieceUse::loose)) {
        AcDbExtents part;
        if (entity->getGeomExtents(part) == Acad::eOk) box.addExt(part);
    }
}

void AcDbDimension::takeLayout(const DimensionPicture& picture) {
    constexpr int linePoint = 0;
    constexpr int textPoint = 1;
    const double elevation = planePointOf(DimensionShape::firstPointCode).z;
    const DimensionLayout& layout = picture.layout;
    m_points[linePoint] = toWorld(m_normal, AcGePoint3d(layout.linePoint.x, layout.linePoint.y, elevation));
    m_points[textPoint].set(layout.textCentre.x, layout.textCentre.y, elevation);
    m_hasPoint = static_cast<Adesk::UInt8>(m_hasPoint | 1 << linePoint | 1 << textPoint);
    m_measurement = picture.measure;
    m_hasMeasurement = true;
}

Acad::ErrorStatus AcDbDimension::generateLayout() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    DimensionPicture picture;
    if (!layOutDimension(*this, picture)) return Acad::eInvalidInput;
    takeLayout(picture);
    dropBlock();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::explodeBlock(AcDbVoidPtrArray& parts) const {
    const AcDbObjectId shown = m_blockId.isNull() ? m_shownBlockId : m_blockId;
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(shown);
    if (!block || shown.isErased()) return Acad::eNotApplicable;
    AcGeMatrix3d matrix = blockPlacement(*this);
    if (m_blockId.isNull()) matrix.postMultBy(m_blockMotion);
    BlockContents copies;
    if (!copyMoved(*block, matrix, copies)) return Acad::eNotApplicable;
    for (std::unique_ptr<AcDbEntity>& copy : copies) {
        takeLookOfBlock(*copy, *this);
        hostkit::handOver(parts, copy);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::explode(AcDbVoidPtrArray& parts) const {
    if (!m_blockId.isNull() || !m_shownBlockId.isNull()) return explodeBlock(parts);
    DimensionPicture picture;
    if (!layOutDimension(*this, picture)) return Acad::eNotApplicable;
    for (std::unique_ptr<AcDbEntity>& entity : entitiesOf(*this, picture, PieceUse::loose))
        hostkit::handOver(parts, entity);
    return Acad::eOk;
}
