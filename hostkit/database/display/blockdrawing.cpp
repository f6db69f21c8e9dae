// How blocks and what shows them draw themselves.

#include "blockdrawing.h"

#include "acgi.h"
#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbblocktablerecord.h"
#include "dbdimension.h"
#include "dbobjptr.h"
#include "dimensionpicture.h"
#include "movedblock.h"
#include "pathgeometry.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

class PushedTransform {
public:
    PushedTransform(AcGiWorldDraw& draw, const AcGeMatrix3d& matrix)
        : m_geometry(draw.geometry()) {
        m_geometry.pushModelTransform(matrix);
    }
    ~PushedTransform() { m_geometry.popModelTransform(); }
    PushedTransform(const PushedTransform&) = delete;
    PushedTransform& operator=(const PushedTransform&) = delete;

private:
    AcGiWorldGeometry& m_geometry;
};

// Entities that stand in no block, drawn as if they stood in one: what they show by block is the look of the
// entity that draws them.
class LooseBlock : public AcGiDrawable {
public:
    explicit LooseBlock(std::vector<std::unique_ptr<AcDbEntity>> entities)
        : m_entities(std::move(entities)) {}
    Adesk::UInt32 setAttributes(AcGiDrawableTraits*) override { return kDrawableIsCompoundObject; }
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override {
        for (const std::unique_ptr<AcDbEntity>& entity : m_entities) draw->geometry().draw(entity.get());
        return Adesk::kTrue;
    }
    Adesk::Boolean isPersistent() const override { return Adesk::kFalse; }
    AcDbObjectId id() const override { return AcDbObjectId(); }

private:
    std::vector<std::unique_ptr<AcDbEntity>> m_entities;
};

// Blocks would be lost where simple entities are wanted: what they show is drawn by itself.
bool drawExploded(AcGiWorldDraw& draw, const AcDbEntity& entity) {
    if (draw.regenType() != kAcGiForExplode) return false;
    AcDbVoidPtrArray parts;
    (void)entity.explode(parts);
    for (void* each : parts) {
        const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(each));
        hostkit::drawPart(draw, *part);
    }
    return true;
}

} // namespace

namespace hostkit {

namespace {

// The blocks that this thread is drawing, the outer ones first.
class DrawnBlock {
public:
    explicit DrawnBlock(AcDbObjectId block)
        : m_isNew(std::find(s_blocks.begin(), s_blocks.end(), block) == s_blocks.end()) {
        if (m_isNew) s_blocks.push_back(block);
    }
    ~DrawnBlock() {
        if (m_isNew) s_blocks.pop_back();
    }
    DrawnBlock(const DrawnBlock&) = delete;
    DrawnBlock& operator=(const DrawnBlock&) = delete;
    bool isNew() const { return m_isNew; }

private:
    static thread_local std::vector<AcDbObjectId> s_blocks;
    bool m_isNew;
};
thread_local std::vector<AcDbObjectId> DrawnBlock::s_blocks;

} // namespace

namespace {

// Moved copies, one by one: what becomes simple entities keeps no transform. What is by block has the colour
// that the traits had.
void drawPieces(AcGiWorldDraw& draw, const AcDbBlockTableRecord& block, const AcGeMatrix3d& toWorld) {
    BlockContents pieces;
    if (!copyMoved(block, toWorld, pieces)) return;
    AcGiSubEntityTraits& traits = draw.subEntityTraits();
    const Adesk::UInt16 around = traits.color();
    for (const std::unique_ptr<AcDbEntity>& piece : pieces) {
        if (piece->visibility() == AcDb::kInvisible || AcDbAttributeDefinition::cast(piece.get())) continue;
        setLook(traits, *piece);
        if (piece->entityColor().isByBlock()) traits.setColor(around);
        piece->worldDraw(&draw);
    }
}

} // namespace

void drawBlock(AcGiWorldDraw& draw, AcDbObjectId block, const AcGeMatrix3d& toWorld) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    const DrawnBlock drawn(block);
    if (!record.object() || !drawn.isNew()) return;
    if (draw.regenType() == kAcGiForExplode) return drawPieces(draw, *record.object(), toWorld);
    const PushedTransform pushed(draw, toWorld);
    draw.geometry().draw(record.object());
}

AcDbObjectId blockToShow(AcDbObjectId block) {
    return DatabaseAccess::objectOf<AcDbBlockTableRecord>(block) && !block.isErased() ? block
                                                                                      : AcDbObjectId();
}

} // namespace hostkit

Adesk::Boolean AcDbBlockTableRecord::worldDraw(AcGiWorldDraw* draw) {
    for (const AcDbObjectId id : entities()) {
        if (id.isErased()) continue;
        if (draw->regenAbort()) break;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.object()) draw->geometry().draw(entity.object());
    }
    return Adesk::kTrue;
}

Adesk::Boolean AcDbBlockReference::worldDraw(AcGiWorldDraw* draw) {
    if (drawExploded(*draw, *this)) return Adesk::kTrue;
    const AcGeMatrix3d fromFirst = copyTransform(0).inverse();
    for (int i = 0; i < copyCount() && !draw->regenAbort(); ++i) {
        const AcGeMatrix3d place = copyTransform(i);
        hostkit::drawBlock(*draw, blockTableRecord(), place);
        const PushedTransform pushed(*draw, i == 0 ? AcGeMatrix3d::kIdentity : place * fromFirst);
        const std::unique_ptr<AcDbObjectIterator> each(attributeIterator());
        for (; each && !each->done(); each->step()) {
            const AcDbObjectPointer<AcDbAttribute> attribute(each->objectId(), AcDb::kForRead);
            if (attribute.object()) draw->geometry().draw(attribute.object());
        }
    }
    return Adesk::kTrue;
}

// Drawings of other programs may have no block for a dimension: then it is laid out as a save would.
Adesk::Boolean AcDbDimension::worldDraw(AcGiWorldDraw* draw) {
    if (drawExploded(*draw, *this)) return Adesk::kTrue;
    if (!dimBlockId().isNull()) {
        hostkit::drawBlock(*draw, dimBlockId(), hostkit::blockPlacement(*this));
        return Adesk::kTrue;
    }
    hostkit::DimensionPicture picture;
    if (!isComplete() || !hostkit::layOutDimension(*this, picture)) return Adesk::kTrue;
    LooseBlock pieces(hostkit::entitiesOf(*this, picture, hostkit::PieceUse::plotted));
    draw->geometry().draw(&pieces);
    return Adesk::kTrue;
}
