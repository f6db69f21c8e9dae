#include "drawingparts.h"

#include "curvecases.h"
#include "entitymotions.h"
#include "entitypicking.h"

#include "changelog.h"
#include "changingboxtree.h"
#include "dbaccess.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "dbpoint.h"
#include "dbtext.h"
#include "dbtrans.h"
#include "pickindex.h"

#include <functional>
#include <set>

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;
using hostkit::PickMode;
using hostkit::PickRegion;
using motions::Random;

// --- The tree alone ----------------------------------------------------------------------------------------

hostkit::SearchBox randomBox(Random& random, double far) {
    hostkit::SearchBox box{};
    const double size = std::exp(random.between(-4.0, 3.0));
    for (std::size_t axis = 0; axis < 3; ++axis) {
        box.low[axis] = far + random.between(-100.0, 100.0);
        box.high[axis] = box.low[axis] + (axis == 2 ? 0.0 : random.between(0.0, size));
    }
    return box;
}

TEST(ChangingBoxTree, FindsAllThatAWalkFinds) {
    Random random(5);
    for (const double far : {0.0, 1e7}) {
        std::map<std::uint32_t, hostkit::SearchBox> model;
        const std::uint32_t start = far == 0.0 ? 3000 : 0;
        for (std::uint32_t item = 0; item < start; ++item) model[item] = randomBox(random, far);
        hostkit::ChangingBoxTree tree;
        tree.build(start, [&](std::uint32_t item) { return model[item]; });
        for (int round = 0; round < 6000; ++round) {
            const auto item = static_cast<std::uint32_t>(random.between(0.0, 4000.0));
            const double action = random.between(0.0, 10.0);
            if (action < (round % 2000 < 1000 ? 3.0 : 8.0)) {
                model.erase(item);
                tree.remove(item);
            } else {
                const bool isNear = action > 8.0 && model.count(item) > 0;
                hostkit::SearchBox box = isNear ? model[item] : randomBox(random, far);
                if (isNear) box.high[0] += 0.01;
                model[item] = box;
                tree.set(item, box);
            }
            if (round % 20 != 0) continue;
            const hostkit::SearchBox asked = randomBox(random, far);
            std::set<std::uint32_t> found;
            std::size_t visited = 0;
            tree.forEach(
                [&](const hostkit::CoarseBox& box) {
                    ++visited;
                    return tree.exact(box).meets(asked);
                },
                [&](std::uint32_t each) { EXPECT_TRUE(found.insert(each).second); });
            for (const auto& [each, box] : model) {
                ASSERT_TRUE(tree.has(each));
                if (box.meets(asked)) {
                    ASSERT_EQ(found.count(each), 1U) << round;
                }
            }
            for (const std::uint32_t each : found) ASSERT_EQ(model.count(each), 1U);
            EXPECT_LT(visited, 500 + found.size() * 16) << "most of the tree is passed by";
        }
        for (std::uint32_t item = 0; item < 4000; ++item) tree.remove(item);
        EXPECT_GT(tree.bounds().low[0], tree.bounds().high[0]);
    }
}

// --- Drawings under changes --------------------------------------------------------------------------------

class PickIndexModel : public testing::Test {
protected:
    void SetUp() override {
        for (const wchar_t* name : {L"A", L"B"})
            m_layers.push_back(addRecord<AcDbLayerTable>(m_drawing, name));
        // The first block is large; of the others each holds the one before, and a change of little shows.
        for (const wchar_t* name : {L"Large", L"Small", L"Middle", L"Outer"}) {
            const AcDbObjectId block = addRecord<AcDbBlockTable>(m_drawing, name);
            for (int i = m_blocks.empty() ? 70 : 1; i > 0; --i) add(block, randomEntity());
            if (m_blocks.size() > 1) add(block, reference(m_blocks.back()));
            if (!m_blocks.empty())
                m_inBlocks.insert(m_inBlocks.end(), m_entities.end() - 1, m_entities.end());
            m_blocks.push_back(block);
        }
        for (int i = 0; i < 60; ++i) add(m_blocks[3], new AcDbPoint(place(5.0)));
        for (int i = 0; i < 200; ++i) add(space(), randomEntity());
        for (int i = 0; i < 12; ++i) add(space(), reference(anyBlock()));
        auto* dimension = new AcDbDimension(AcDbDimension::kAligned);
        ASSERT_EQ(dimension->setDimBlockId(m_blocks[1]), Acad::eOk);
        add(space(), dimension);
        m_drawing.disableUndoRecording(false); // what stands here stays
    }

    AcDbObjectId space() const { return m_drawing.modelSpaceId(); }
    AcDbObjectId add(AcDbObjectId block, AcDbEntity* entity) {
        if (m_random.between(0.0, 3.0) < 1.0)
            (void)entity->setLayer(m_layers[std::size_t(m_random.sign() > 0)]);
        m_entities.push_back(append(block, entity));
        return m_entities.back();
    }
    AcGePoint3d place(double size = 100.0) {
        return {m_random.between(-size, size), m_random.between(-size, size), 0.0};
    }
    AcDbEntity* randomEntity() {
        const AcGePoint3d at = place();
        switch (static_cast<int>(m_random.between(0.0, 6.0))) {
        case 0:
            return new AcDbCircle(at, AcGeVector3d::kZAxis, m_random.between(0.1, 9.0));
        case 1:
            return new AcDbPoint(at);
        case 2:
            return new AcDbText(at, L"Text", AcDbObjectId::kNull, 3.0, m_random.between(0.0, 6.0));
        case 3:
            return new AcDb2dPolyline(AcDb::k2dSimplePoly, pointsOf({at, place(), place()}), 0.0, true);
        case 4:
            if (m_random.between(0.0, 10.0) < 1.0)
                return curvecases::throughPoint<AcDbRay>(at, {0.6, 0.8, 0.0}).release();
            [[fallthrough]];
        default:
            return new AcDbLine(at, at + (place() - AcGePoint3d()) * 0.1);
        }
    }
    AcDbBlockReference* reference(AcDbObjectId block) {
        auto* made = new AcDbBlockReference(place(), block);
        made->setScaleFactors({m_random.between(0.2, 1.0), m_random.between(0.2, 1.0), 1.0});
        made->setRotation(m_random.between(0.0, 6.0));
        auto* attribute = new AcDbAttribute;
        attribute->setTag(L"T");
        attribute->setTextString(L"Mark");
        attribute->setHeight(2.0);
        attribute->setPosition(place());
        EXPECT_EQ(made->appendAttribute(attribute), Acad::eOk);
        return made;
    }
    AcDbObjectId anyBlock() { return m_blocks[static_cast<std::size_t>(m_random.between(0.0, 4.0))]; }
    AcDbObjectId anyEntity() {
        if (m_random.between(0.0, 4.0) < 1.0)
            return m_inBlocks[static_cast<std::size_t>(m_random.between(0.0, double(m_inBlocks.size())))];
        return m_entities[static_cast<std::size_t>(m_random.between(0.0, double(m_entities.size())))];
    }

    void changeOne();
    void changeParts(AcDbEntity& entity);
    void changeLayer();
    void changeSome() {
        for (int i = static_cast<int>(m_random.between(1.0, 4.0)); i > 0; --i) changeOne();
    }
    AcGePoint3d somePlace();
    void compare();

    AcDbDatabase m_drawing;
    Random m_random{99};
    std::vector<AcDbObjectId> m_layers, m_blocks, m_entities, m_inBlocks;
};

void PickIndexModel::changeParts(AcDbEntity& entity) {
    if (const auto* polyline = AcDb2dPolyline::cast(&entity)) {
        const AcDbObjectPointer<AcDb2dVertex> vertex(polyline->vertices().idAt(1), AcDb::kForWrite);
        if (vertex.object()) (void)vertex->setPosition(place());
    } else if (auto* reference = AcDbBlockReference::cast(&entity)) {
        const AcDbObjectPointer<AcDbAttribute> attribute(reference->attributes().idAt(0), AcDb::kForWrite);
        if (attribute.object()) (void)attribute->setPosition(place());
        if (m_random.sign() > 0) (void)reference->setBlockTableRecord(m_blocks[0]);
    }
}

void PickIndexModel::changeLayer() {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(m_layers[std::size_t(m_random.sign() > 0)],
                                                        AcDb::kForWrite);
    if (m_random.sign() > 0)
        (void)layer->setIsOff(!layer->isOff());
    else
        (void)layer->setIsFrozen(!layer->isFrozen());
}

void PickIndexModel::changeOne() {
    const int action = static_cast<int>(m_random.between(0.0, 9.0));
    if (action == 0) {
        add(m_random.sign() > 0 ? space() : anyBlock(), randomEntity());
    } else if (action == 1) {
        changeLayer();
    } else if (action == 2) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(anyBlock(), AcDb::kForWrite);
        (void)block->setOrigin(place(20.0));
    } else if (action == 3) {
        add(space(), reference(anyBlock()));
    } else {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, anyEntity(), AcDb::kForWrite, true) != Acad::eOk) return;
        if (action == 4)
            (void)entity->erase(!entity->isErased());
        else if (action == 5)
            changeParts(*entity);
        else if (action == 6)
            (void)entity->setVisibility(m_random.between(0.0, 3.0) < 1.0 ? AcDb::kInvisible : AcDb::kVisible);
        else
            (void)entity->transformBy(AcGeMatrix3d::translation((place() - AcGePoint3d()) * 0.5));
        if (m_random.between(0.0, 4.0) < 1.0)
            (void)entity->cancel();
        else
            (void)entity->close();
    }
}

bool isVisible(const AcDbEntity& entity) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    const bool isOff = layer->isOff() && !AcDbBlockReference::cast(&entity);
    return entity.visibility() == AcDb::kVisible && !layer->isFrozen() && !isOff;
}

/// A corner of something that is seen, or anywhere.
AcGePoint3d PickIndexModel::somePlace() {
    const auto& entities = DatabaseAccess::objectOf<AcDbBlockTableRecord>(space())->entities();
    // What came last is what references are among.
    const std::size_t reach = m_random.sign() > 0 ? entities.size() : 40;
    const std::size_t index =
        entities.size() - 1 - static_cast<std::size_t>(m_random.between(0.0, double(reach)));
    AcDbExtents box;
    const auto* entity = DatabaseAccess::objectOf<AcDbEntity>(entities[index]);
    if (entity->getGeomExtents(box) != Acad::eOk) return place();
    return {m_random.sign() > 0 ? box.minPoint().x : box.maxPoint().x,
            m_random.sign() > 0 ? box.minPoint().y : box.maxPoint().y, 0.0};
}

/// The same by asking every entity by itself.
void PickIndexModel::compare() {
    const AcGePoint3d at = somePlace();
    const double size = std::exp(m_random.between(-1.0, 4.5));
    const PickRegion region = PickRegion::box({at.x - size, at.y - size}, {at.x + size, at.y + size});
    const hostkit::PickSight sight{
        m_random.sign() > 0 ? AcGeMatrix3d()
                            : AcGeMatrix3d::rotation(m_random.between(0.0, 6.0), m_random.direction())};
    for (const PickMode mode : {PickMode::touching, PickMode::inside}) {
        std::vector<AcDbObjectId> expected;
        for (const AcDbObjectId id : DatabaseAccess::objectOf<AcDbBlockTableRecord>(space())->entities()) {
            const auto* entity = DatabaseAccess::objectOf<AcDbEntity>(id);
            if (!id.isErased() && isVisible(*entity) && isPicked(*entity, sight, region, mode))
                expected.push_back(id);
        }
        ASSERT_EQ(pickedEntities(m_drawing, space(), sight, region, mode), expected);
        if (mode == PickMode::inside) continue;
        const AcDbObjectId top = expected.empty() ? AcDbObjectId() : expected.back();
        ASSERT_EQ(pickedEntity(m_drawing, space(), sight, region), top);
        const auto nested = pickedNested(m_drawing, space(), sight, region);
        ASSERT_EQ(nested.has_value(), !expected.empty());
        if (!nested) continue;
        ASSERT_EQ(nested->containers.empty() ? nested->entity : nested->containers.back(), top);
        ASSERT_TRUE(isPicked(*DatabaseAccess::objectOf<AcDbEntity>(nested->entity),
                             {sight.worldToView * nested->toWorld}, region, mode));
    }
}

TEST_F(PickIndexModel, AgreesWithAskingEveryEntity) {
    hostkit::ChangeLog& log = DatabaseAccess::changes(m_drawing);
    compare();
    for (int round = 0; round < 800; ++round) {
        SCOPED_TRACE(round);
        const int way = static_cast<int>(m_random.between(0.0, 8.0));
        if (way == 0 && log.groupCount() > 0) {
            hostkit::UndoReport report;
            ASSERT_EQ(log.undo(report), Acad::eOk);
            if (m_random.sign() > 0) compare(); // else both steps are followed at once
            if (m_random.sign() > 0) (void)log.redo(report);
        } else if (way == 1) {
            m_drawing.transactionManager()->startTransaction();
            changeSome();
            if (m_random.sign() > 0) compare();
            if (m_random.sign() > 0)
                m_drawing.transactionManager()->abortTransaction();
            else
                m_drawing.transactionManager()->endTransaction();
        } else if (way == 2) { // open while somebody picks
            const AcDbObjectPointer<AcDbEntity> entity(anyEntity(), AcDb::kForWrite);
            for (int i = 0; entity.object() && i < 2; ++i) {
                (void)entity->transformBy(AcGeMatrix3d::translation((place() - AcGePoint3d()) * 0.5));
                compare();
            }
        } else {
            log.beginGroup(L"Change");
            changeSome();
            log.endGroup();
        }
        compare();
        if (HasFatalFailure()) return;
    }
    EXPECT_EQ(m_drawing.numOpenObjects(), 0);
}

TEST_F(PickIndexModel, ManyChangesAreFollowedByLookingAnew) {
    compare();
    for (int i = 0; i < 120000; ++i) {
        const AcDbObjectPointer<AcDbEntity> entity(m_entities[std::size_t(i) % m_entities.size()],
                                                   AcDb::kForWrite);
        if (entity.object()) (void)entity->recordGraphicsModified();
    }
    changeSome();
    compare();
    changeSome();
    compare();
}

} // namespace
