#include "picturecopies.h"

#include "aced.h"
#include "dbcurve.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbtext.h"
#include "librarywork.h"
#include "ownedparts.h"

namespace {

// Blocks within blocks may stand for any number of entities.
constexpr int deepestNesting = 50;
constexpr std::size_t mostPieces = 4'000'000;
constexpr std::size_t breakInterval = 1024;

bool isKnownToPictures(const AcDbEntity& entity) {
    return AcDbCurve::cast(&entity) || AcDbText::cast(&entity) || AcDbMText::cast(&entity) ||
           AcDbHatch::cast(&entity);
}

std::wstring kindOf(const AcDbEntity& entity) {
    const wchar_t* const name = entity.dxfName();
    return name && *name ? name : entity.isA()->name();
}

} // namespace

bool PictureCopies::add(const std::vector<AcDbObjectId>& ids) {
    std::size_t visited = 0;
    for (const AcDbObjectId id : ids) {
        if (++visited % breakInterval == 0 && acedUsrBrk()) return false;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity.object() || !isShown(*entity)) continue;
        const std::size_t before = m_copies.size();
        if (isKnownToPictures(*entity))
            keep(std::unique_ptr<AcDbEntity>(AcDbEntity::cast(entity->clone())));
        else
            takeApart(*entity, 0);
        m_count += m_copies.size() > before;
    }
    return !m_isCut;
}

bool PictureCopies::isShown(const AcDbEntity& entity) {
    return entity.visibility() != AcDb::kInvisible && !m_looks.isHidden(entity.layerId());
}

void PictureCopies::takeApart(AcDbEntity& entity, int depth) {
    hostkit::OwnedParts parts;
    if (depth > deepestNesting || m_copies.size() > mostPieces) {
        m_isCut = true;
    } else if (entity.explode(parts.list) != Acad::eOk) {
        m_work.capture(entity, parts.list);
        if (parts.list.isEmpty()) ++m_missing[kindOf(entity)];
    }
    for (void*& part : parts.list) addPiece(parts.take(part), depth + 1);
}

// What a tool would pass over in silence, as a pattern with more strokes than anybody can see, is told.
void PictureCopies::keep(std::unique_ptr<AcDbEntity> copy) {
    AcDbHatch* const hatch = AcDbHatch::cast(copy.get());
    if (hatch && !hatch->isSolidFill() && hatch->evaluateHatch(true) == Acad::eOutOfRange)
        ++m_missing[L"HATCH too dense for lines"];
    else
        m_copies.push_back(std::move(copy));
}

void PictureCopies::addPiece(std::unique_ptr<AcDbEntity> piece, int depth) {
    if (!piece || !isShown(*piece)) return;
    if (isKnownToPictures(*piece))
        keep(std::move(piece));
    else
        takeApart(*piece, depth);
}

AcArray<void*> PictureCopies::list() const {
    AcArray<void*> list(static_cast<int>(m_copies.size()));
    for (const auto& copy : m_copies) list.append(copy.get());
    return list;
}
