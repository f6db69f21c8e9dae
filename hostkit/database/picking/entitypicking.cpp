#include "entitypicking.h"

#include "entityshapes.h"
#include "shownwalk.h"

#include "dbaccess.h"

#include <algorithm>

namespace hostkit {

namespace {

/// Asks one region about entities; coordinates are taken from the middle of the region on.
class RegionWalk : public ShownWalk {
public:
    RegionWalk(const RegionProbe& start, PickBoxes& boxes)
        : ShownWalk(boxes)
        , m_probe(start) {}
    bool isTaken() const { return m_probe.isTaken(); }

protected:
    void show(const AcDbEntity& entity, const ShownPlace& place) override {
        showEntity(m_probe, entity, place.toView, place.isInBlock);
    }
    bool isDone() const override { return m_probe.isDecided(); }
    bool mayPass(const PlaneBox& hull) const override { return m_probe.mayPass(hull); }

private:
    RegionProbe m_probe;
};

/// Looks for the topmost entity that the region touches.
class NestedWalk : public ShownWalk {
public:
    NestedWalk(const PlaneRegion& region, PickBoxes& boxes)
        : ShownWalk(boxes)
        , m_region(region) {}
    std::optional<NestedPick> result;

protected:
    void show(const AcDbEntity& entity, const ShownPlace& place) override {
        RegionProbe probe(m_region, PickMode::touching);
        showEntity(probe, entity, place.toView, place.isInBlock);
        if (!probe.isTaken()) return;
        result = NestedPick{entity.objectId(), {}, place.toWorld};
        for (auto each = containers().rbegin(); each != containers().rend(); ++each)
            result->containers.push_back((*each)->objectId());
    }
    bool isDone() const override { return result.has_value(); }
    bool mayPass(const PlaneBox& hull) const override {
        return RegionProbe(m_region, PickMode::touching).mayPass(hull);
    }

private:
    const PlaneRegion& m_region;
};

/// A region and a sight near a local origin.
struct Question {
    Question(const PickSight& sight, const PickRegion& asked)
        : origin(asked.isEmpty() ? AcGePoint2d() : asked.low() + (asked.high() - asked.low()) * 0.5)
        , region(asked, origin) {
        const AcGeVector3d shift(-origin.x, -origin.y, 0.0);
        place.toView = {AcGeMatrix3d::translation(shift) * sight.worldToView};
    }
    bool takes(const AcDbEntity& entity, PickMode mode, PickBoxes& boxes) const {
        RegionWalk walk(RegionProbe(region, mode), boxes);
        walk.visit(entity, place);
        return walk.isTaken();
    }

    AcGePoint2d origin;
    PlaneRegion region;
    ShownPlace place;
};

/// Calls take(entity) for the seen entities of the block until it gives true, the last drawn first.
template <typename Take>
void forEachSeen(AcDbObjectId space, const Take& take) {
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(space);
    if (!block) return;
    const std::vector<AcDbObjectId>& entities = block->entities();
    for (std::size_t i = entities.size(); i-- > 0;) {
        if (entities[i].isErased()) continue;
        const auto* entity = DatabaseAccess::objectOf<AcDbEntity>(entities[i]);
        if (entity && isSeen(*entity, {}) && take(*entity)) return;
    }
}

} // namespace

bool isPicked(const AcDbEntity& entity, const PickSight& sight, const PickRegion& region, PickMode mode) {
    PickBoxes boxes;
    return Question(sight, region).takes(entity, mode, boxes);
}

std::vector<AcDbObjectId> pickedEntities(AcDbDatabase&, AcDbObjectId space, const PickSight& sight,
                                         const PickRegion& region, PickMode mode) {
    PickBoxes boxes;
    const Question question(sight, region);
    std::vector<AcDbObjectId> found;
    forEachSeen(space, [&](const AcDbEntity& entity) {
        if (question.takes(entity, mode, boxes)) found.push_back(entity.objectId());
        return false;
    });
    std::reverse(found.begin(), found.end());
    return found;
}

AcDbObjectId pickedEntity(AcDbDatabase&, AcDbObjectId space, const PickSight& sight,
                          const PickRegion& region) {
    PickBoxes boxes;
    const Question question(sight, region);
    AcDbObjectId found;
    forEachSeen(space, [&](const AcDbEntity& entity) {
        if (question.takes(entity, PickMode::touching, boxes)) found = entity.objectId();
        return !found.isNull();
    });
    return found;
}

std::optional<NestedPick> pickedNested(AcDbDatabase&, AcDbObjectId space, const PickSight& sight,
                                       const PickRegion& region) {
    PickBoxes boxes;
    const Question question(sight, region);
    NestedWalk walk(question.region, boxes);
    forEachSeen(space, [&](const AcDbEntity& entity) {
        walk.visit(entity, question.place);
        return walk.result.has_value();
    });
    return walk.result;
}

} // namespace hostkit
