#include "shownwalk.h"

#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbdim.h"
#include "dblayertablerecord.h"
#include "dbminsert.h"
#include "movedblock.h"

#include <algorithm>

namespace hostkit {

AcDbObjectId shownLayer(const AcDbEntity& entity, const ShownPlace& place) {
    const AcDbObjectId own = entity.layerId();
    if (!place.isInBlock) return own;
    const auto* record = DatabaseAccess::objectOf<AcDbLayerTableRecord>(own);
    return record && record->name() == L"0" ? place.layer : own;
}

bool isSeen(const AcDbEntity& entity, const ShownPlace& place) {
    if (entity.visibility() == AcDb::kInvisible) return false;
    const auto* layer = DatabaseAccess::objectOf<AcDbLayerTableRecord>(shownLayer(entity, place));
    if (!layer) return true;
    return !layer->isFrozen() && (!layer->isOff() || AcDbBlockReference::cast(&entity));
}

bool isSeenInBlock(const AcDbEntity& entity, const ShownPlace& place) {
    if (const auto* definition = AcDbAttributeDefinition::cast(&entity))
        if (!definition->isConstant() || definition->isInvisible()) return false;
    return isSeen(entity, place);
}

namespace {

const AcDbBlockTableRecord* blockOf(AcDbObjectId id) {
    return id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
}

ShownPlace blockPlace(const ShownPlace& place, const AcGeMatrix3d& matrix, AcDbObjectId layer) {
    return {place.toView * matrix, place.toWorld * matrix, layer, true};
}

ShownPlace moved(const ShownPlace& place, const AcGeMatrix3d& matrix) {
    return {place.toView * matrix, place.toWorld * matrix, place.layer, place.isInBlock};
}

} // namespace

struct ShownWalk::Copies {
    int columns = 1;
    int rows = 1;
    AcGeVector3d columnStep;
    AcGeVector3d rowStep;
    AcGeVector2d seenColumnStep;
    AcGeVector2d seenRowStep;
    PlaneBox hull; ///< of the first one

    Copies(const AcDbBlockReference& reference, const ViewMap& toView) {
        const auto* array = AcDbMInsertBlock::cast(&reference);
        if (!array) return;
        columns = std::max<int>(1, array->columns());
        rows = std::max<int>(1, array->rows());
        AcGeVector3d across, up;
        reference.getCopySpread(across, up);
        if (columns > 1) columnStep = across / (columns - 1);
        if (rows > 1) rowStep = up / (rows - 1);
        seenColumnStep = toView(columnStep);
        seenRowStep = toView(rowStep);
    }
    Copies of(const PlaneBox& box) const {
        Copies copies = *this;
        copies.hull = box;
        return copies;
    }

    /// Some of the columns and rows.
    struct Part {
        int fromColumn, toColumn, fromRow, toRow;
        bool isSingle() const { return toColumn - fromColumn == 1 && toRow - fromRow == 1; }
        /// The half that is drawn first, and the other.
        Part half(bool isSecond) const {
            Part part = *this;
            if (toRow - fromRow > 1)
                (isSecond ? part.fromRow : part.toRow) = fromRow + (toRow - fromRow) / 2;
            else
                (isSecond ? part.fromColumn : part.toColumn) = fromColumn + (toColumn - fromColumn) / 2;
            return part;
        }
    };
    AcGeVector3d step(const Part& single) const {
        return columnStep * single.fromColumn + rowStep * single.fromRow;
    }
    PlaneBox hullOf(const Part& part) const {
        PlaneBox box;
        if (hull.isEmpty()) return box;
        for (const int column : {part.fromColumn, part.toColumn - 1})
            for (const int row : {part.fromRow, part.toRow - 1}) {
                const AcGeVector2d shift = seenColumnStep * column + seenRowStep * row;
                const double room = AcGe::pointAllowance(AcGeContext::gTol, shift.length());
                box.add(hull.low + shift - AcGeVector2d(room, room));
                box.add(hull.high + shift + AcGeVector2d(room, room));
            }
        return box;
    }
};

template <typename ShowCopy>
void ShownWalk::visitCopies(const Copies& copies, const ShowCopy& showCopy) {
    std::vector<Copies::Part> waiting{{0, copies.columns, 0, copies.rows}};
    while (!waiting.empty() && !isDone() && --m_visitsLeft > 0) {
        const Copies::Part part = waiting.back();
        waiting.pop_back();
        if (mayPass(copies.hullOf(part))) continue;
        if (part.isSingle()) {
            showCopy(AcGeMatrix3d::translation(copies.step(part)));
            continue;
        }
        waiting.push_back(part.half(false));
        waiting.push_back(part.half(true));
    }
}

bool ShownWalk::canEnter(const AcDbBlockTableRecord& block) const {
    constexpr std::size_t deepest = 64;
    return m_path.size() < deepest && std::find(m_path.begin(), m_path.end(), &block) == m_path.end();
}

void ShownWalk::visit(const AcDbEntity& entity, const ShownPlace& place) {
    if (isDone() || --m_visitsLeft <= 0) return;
    if (const auto* reference = AcDbBlockReference::cast(&entity)) return visitReference(*reference, place);
    const auto* dimension = AcDbDimension::cast(&entity);
    const auto* block =
        dimension ? DatabaseAccess::objectOf<AcDbBlockTableRecord>(dimension->dimBlockId()) : nullptr;
    if (!block) return show(entity, place);
    const ShownPlace inside = blockPlace(place, blockPlacement(*dimension), shownLayer(entity, place));
    m_containers.push_back(&entity);
    if (!dimension->dimBlockId().isErased() && !mayPass(seen(m_boxes.of(*block), inside.toView)))
        visitBlock(*block, inside);
    m_containers.pop_back();
}

void ShownWalk::visitReference(const AcDbBlockReference& reference, const ShownPlace& place) {
    const Copies copies(reference, place.toView);
    m_containers.push_back(&reference);
    const SubentityList& attributes = reference.attributes();
    for (std::size_t i = attributes.count(); i-- > 0 && !isDone();) {
        const auto* attribute = attributes.isErasedAt(i) ? nullptr : AcDbAttribute::cast(attributes.at(i));
        if (!attribute || attribute->isInvisible() || !isSeen(*attribute, place)) continue;
        const auto showCopy = [&](const AcGeMatrix3d& step) { show(*attribute, moved(place, step)); };
        visitCopies(copies.of(seen(m_boxes.of(*attribute), place.toView)), showCopy);
    }
    if (const AcDbBlockTableRecord* block = blockOf(reference.blockTableRecord())) {
        const AcGeMatrix3d own = reference.blockTransform();
        const auto showCopy = [&](const AcGeMatrix3d& step) {
            visitBlock(*block, blockPlace(place, step * own, shownLayer(reference, place)));
        };
        visitCopies(copies.of(seen(m_boxes.of(*block), place.toView * own)), showCopy);
    }
    m_containers.pop_back();
}

void ShownWalk::visitBlock(const AcDbBlockTableRecord& block, const ShownPlace& place) {
    if (!canEnter(block)) return;
    const PlaneBox hull = seen(m_boxes.of(block), place.toView);
    m_path.push_back(&block);
    const auto visitAt = [&](std::size_t i) {
        const AcDbObjectId id = block.entities()[i];
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        if (entity && isSeenInBlock(*entity, place)) visit(*entity, place);
        return !isDone() && m_visitsLeft > 0;
    };
    std::vector<std::uint32_t> near;
    const auto isNear = [&](const SearchBox& box) { return !mayPass(seen(box, place.toView)); };
    if (looksNearAlone() && m_boxes.findNear(block, isNear, near)) {
        for (std::size_t i = near.size(); i-- > 0 && visitAt(near[i]);) {
        }
    } else {
        for (std::size_t i = block.entities().size(); i-- > 0 && visitAt(i) && !mayPass(hull);) {
        }
    }
    m_path.pop_back();
}

} // namespace hostkit
