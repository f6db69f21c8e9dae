#include "entitypicking.h"

#include "entityshapes.h"
#include "pickindex.h"
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
    bool looksNearAlone() const override { return m_probe.mode() == PickMode::touching; }

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
    bool looksNearAlone() const override { return true; }

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

/// Calls take(entity) for the seen entities of the space that may be near the region, the last drawn first,
/// until it gives true.
template <typename Take>
void forEachNear(PickIndex& index, AcDbObjectId space, const Question& question, const Take& take) {
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(space);
    if (!block || question.region.isEmpty()) return;
    const auto takeAt = [&](std::size_t i) {
        const AcDbObjectId id = block->entities()[i];
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        return entity && isSeen(*entity, {}) && take(*entity);
    };
    const auto isNear = [&](const SearchBox& box) {
        return question.region.box().meets(seen(box, question.place.toView), question.region.allowance());
    };
    std::vector<std::uint32_t> near;
    if (index.findNear(*block, isNear, near)) {
        for (std::size_t i = near.size(); i-- > 0 && !takeAt(near[i]);) {
        }
    } else {
        for (std::size_t i = block->entities().size(); i-- > 0 && !takeAt(i);) {
        }
    }
}

} // namespace

bool isPicked(const AcDbEntity& entity, const PickSight& sight, const PickRegion& region, PickMode mode) {
    PickBoxes boxes;
    return Question(sight, region).takes(entity, mode, boxes);
}

std::vector<AcDbObjectId> pickedEntities(AcDbDatabase& database, AcDbObjectId space, const PickSight& sight,
                                         const PickRegion& region, PickMode mode) {
    std::vector<AcDbObjectId> found;
    PickIndex& index = PickIndex::upToDate(database);
    const Question question(sight, region);
    forEachNear(index, space, question, [&](const AcDbEntity& entity) {
        if (question.takes(entity, mode, index)) found.push_back(entity.objectId());
        return false;
    });
    std::reverse(found.begin(), found.end());
    return found;
}

AcDbObjectId pickedEntity(AcDbDatabase& database, AcDbObjectId space, const PickSight& sight,
                          const PickRegion& region) {
    AcDbObjectId found;
    PickIndex& index = PickIndex::upToDate(database);
    const Question question(sight, region);
    forEachNear(index, space, question, [&](const AcDbEntity& entity) {
        if (question.takes(entity, PickMode::touching, index)) found = entity.objectId();
        return !found.isNull();
    });
    return found;
}

std::optional<NestedPick> pickedNested(AcDbDatabase& database, AcDbObjectId space, const PickSight& sight,
                                       const PickRegion& region) {
    PickIndex& index = PickIndex::upToDate(database);
    const Question question(sight, region);
    NestedWalk walk(question.region, index);
    forEachNear(index, space, question, [&](const AcDbEntity& entity) {
        walk.visit(entity, question.place);
        return walk.result.has_value();
    });
    return walk.result;
}

} // namespace hostkit
