// What goes with an erased object and comes back with it.

#include "drawingpicture.h"

#include "actrans.h"
#include "db3dpolyline.h"
#include "dbaccess.h"
#include "dblayout.h"
#include "dbline.h"
#include "dbopaque.h"
#include "dbsequenceend.h"
#include "erasedowners.h"
#include "undohistory.h"

#include <random>

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;
using hostkit::isGone;

AcDbObjectId addOpaque(AcDbDatabase& drawing, AcDbObjectId owner) {
    return DatabaseAccess::add(drawing, new AcDbOpaqueObject(L"FIELD"), 0, owner);
}

bool isGone(AcDbObjectId id) { return isGone(*DatabaseAccess::object(id)); }

/// Objects that own one another by every means that there is, and what should have become of each.
struct Family {
    struct Member {
        AcDbObjectId id;
        std::size_t owner;
        bool isErased = false;
        bool wentWithOwner = false;
        bool isBusy = false;
    };
    static constexpr std::size_t nobody = static_cast<std::size_t>(-1);

    AcDbDatabase drawing;
    std::vector<Member> members;

    std::size_t take(AcDbObjectId id, std::size_t owner) {
        members.push_back({id, owner});
        return members.size() - 1;
    }
    std::size_t addExtension(std::size_t owner) {
        AcDbObjectPointer<AcDbObject> object(members[owner].id, AcDb::kForWrite);
        EXPECT_EQ(object->createExtensionDictionary(), Acad::eOk);
        return take(object->extensionDictionary(), owner);
    }
    std::size_t addEntry(std::size_t owner, AcDbObject* entry, int number) {
        return take(enter(members[owner].id, std::to_wstring(number).c_str(), entry), owner);
    }

    explicit Family(std::mt19937& engine) {
        take(appendToModelSpace(drawing, new AcDbLine({0, 0, 0}, {1, 1, 1})), nobody);
        take(addRecord<AcDbLayerTable>(drawing, L"Walls"), nobody);
        take(addOpaque(drawing, drawing.namedObjectsDictionaryId()), nobody);
        for (const std::size_t root : {0, 1}) addExtension(root);
        for (int number = 0; number < 25; ++number) {
            const std::size_t owner = engine() % members.size();
            const bool isDictionary = AcDbDictionary::cast(DatabaseAccess::object(members[owner].id));
            const unsigned kind = engine() % 3;
            if (!isDictionary)
                take(addOpaque(drawing, members[owner].id), owner);
            else if (kind == 0)
                addEntry(owner, new AcDbDictionary, number);
            else if (kind == 1)
                addEntry(owner, new AcDbXrecord, number);
            else
                addEntry(owner, new AcDbOpaqueObject(L"SUN"), number);
        }
    }

    void follow(std::size_t owner, bool erasing) {
        for (std::size_t i = 0; i < members.size(); ++i) {
            Member& each = members[i];
            if (each.owner != owner || each.isErased == erasing || each.isBusy) continue;
            if (!erasing && !each.wentWithOwner) continue;
            each.isErased = each.wentWithOwner = erasing;
            follow(i, erasing);
        }
    }
    void erase(std::size_t index, bool erasing) {
        Member& each = members[index];
        const Acad::ErrorStatus refusal = erasing ? Acad::eWasErased : Acad::eWasNotErased;
        const bool isSo = each.isErased == erasing;
        EXPECT_EQ(drawingtest::erase(each.id, erasing), isSo ? refusal : Acad::eOk);
        if (isSo) return;
        each.isErased = erasing;
        each.wentWithOwner = false;
        follow(index, erasing);
    }
    bool isGone(std::size_t index) const {
        for (; index != nobody; index = members[index].owner)
            if (members[index].isErased) return true;
        return false;
    }
    void check() const {
        for (std::size_t i = 0; i < members.size(); ++i) {
            EXPECT_EQ(members[i].id.isErased(), members[i].isErased) << i;
            EXPECT_EQ(::isGone(members[i].id), isGone(i)) << i;
        }
    }
};

TEST(Erasures, WhatAnObjectOwnsGoesAndComesBackWithIt) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 engine(seed);
        Family family(engine);
        // Somebody looks at one object all the while; it stays, though its owner goes.
        const std::size_t busy = engine() % family.members.size();
        auto* held = opened<AcDbObject>(family.members[busy].id, AcDb::kForRead);
        family.members[busy].isBusy = true;
        for (int step = 0; step < 40; ++step) {
            const std::size_t index = engine() % family.members.size();
            if (index != busy) family.erase(index, engine() % 2 == 0);
            family.check();
        }
        held->close();
    }
}

TEST(Erasures, AreTakenBackWhole) {
    for (unsigned seed = 1; seed <= 15; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 engine(seed);
        Family family(engine);
        AcDbDatabase& drawing = family.drawing;
        for (const std::size_t index : {0u, 1u, 2u, 7u}) {
            const std::string before = pictureOf(drawing);
            auto* object = opened<AcDbObject>(family.members[index].id);
            ASSERT_EQ(object->erase(), Acad::eOk);
            EXPECT_NE(pictureOf(drawing), before);
            ASSERT_EQ(object->cancel(), Acad::eOk);
            EXPECT_EQ(pictureOf(drawing), before);
            drawing.transactionManager()->startTransaction();
            ASSERT_EQ(drawingtest::erase(family.members[index].id), Acad::eOk);
            drawing.transactionManager()->abortTransaction();
            EXPECT_EQ(pictureOf(drawing), before);
            drawing.disableUndoRecording(false);
            for (const bool erasing : {true, false}) {
                const std::string now = pictureOf(drawing);
                hostkit::beginUndoGroup(drawing, L"ERASE");
                drawingtest::erase(family.members[index].id, erasing);
                hostkit::endUndoGroup(drawing);
                hostkit::UndoReport report;
                ASSERT_EQ(hostkit::undoLastGroup(drawing, report), Acad::eOk);
                EXPECT_EQ(pictureOf(drawing), now);
                drawingtest::erase(family.members[index].id, erasing);
            }
            drawing.disableUndoRecording(true);
        }
    }
}

TEST(Erasures, LateAndMovedObjectsBelongToTheirOwners) {
    AcDbDatabase drawing;
    const AcDbObjectId first = addOpaque(drawing, {}), second = addOpaque(drawing, {});
    const AcDbObjectId promised = DatabaseAccess::reserve(drawing, 0xABC);
    const AcDbObjectId moved = addOpaque(drawing, first);
    ASSERT_EQ(erase(second), Acad::eOk); // all that is there has been looked at
    ASSERT_EQ(erase(second, false), Acad::eOk);
    EXPECT_EQ(DatabaseAccess::add(drawing, new AcDbOpaqueObject(L"SUN"), 0xABC, second), promised);
    change<AcDbObject>(moved, [&](AcDbObject& each) { ASSERT_EQ(each.setOwnerId(second), Acad::eOk); });
    ASSERT_EQ(erase(first), Acad::eOk);
    EXPECT_FALSE(moved.isErased() || isGone(moved));
    ASSERT_EQ(erase(second), Acad::eOk);
    EXPECT_TRUE(moved.isErased());
    EXPECT_TRUE(promised.isErased());
    // A file may say anything.
    const AcDbObjectId one = addOpaque(drawing, {}), other = addOpaque(drawing, one);
    const AcDbObjectId lost = addOpaque(drawing, DatabaseAccess::reserve(drawing, 0xDEF));
    DatabaseAccess::setOwner(*DatabaseAccess::object(one), other);
    EXPECT_FALSE(isGone(one) || isGone(lost));
    ASSERT_EQ(erase(one), Acad::eOk);
    EXPECT_TRUE(one.isErased() && other.isErased());
    ASSERT_EQ(erase(one, false), Acad::eOk);
    EXPECT_FALSE(one.isErased() || other.isErased());
}

TEST(Erasures, TheEndOfASequenceGoesWithIt) {
    AcDbDatabase drawing;
    auto* polyline = new AcDb3dPolyline(AcDb::k3dSimplePoly, pointsOf({{0, 0, 0}, {1, 1, 1}}), false);
    const AcDbObjectId id = appendToModelSpace(drawing, polyline);
    const AcDbObjectId end = DatabaseAccess::add(drawing, new AcDbSequenceEnd, 0, id);
    DatabaseAccess::parts(*polyline)->setSequenceEnd(end);
    for (const bool erasing : {true, false}) {
        ASSERT_EQ(erase(id, erasing), Acad::eOk);
        EXPECT_EQ(end.isErased(), erasing);
    }
}

TEST(Erasures, SheetsGoWithTheirBlocks) {
    AcDbDatabase drawing;
    const AcDbObjectId block = addRecord<AcDbBlockTable>(drawing, L"*Paper_Space0");
    const AcDbObjectId line = append(block, new AcDbLine({0, 0, 0}, {1, 1, 1}));
    auto* made = new AcDbLayout;
    made->setLayoutName(L"Second");
    made->setBlockTableRecordId(block);
    const AcDbObjectId layout = enter(drawing.layoutDictionaryId(), L"Second", made);
    change<AcDbBlockTableRecord>(block, [&](auto& record) { record.setLayoutId(layout); });
    EXPECT_EQ(erase(block), Acad::eCannotBeErasedByCaller);
    const std::string before = pictureOf(drawing);
    auto* held = opened<AcDbLayout>(layout);
    ASSERT_EQ(held->erase(), Acad::eOk);
    ASSERT_EQ(held->cancel(), Acad::eOk);
    EXPECT_EQ(pictureOf(drawing), before);
    ASSERT_EQ(erase(layout), Acad::eOk);
    EXPECT_TRUE(block.isErased() && line.isErased());
    ASSERT_EQ(erase(layout, false), Acad::eOk);
    EXPECT_FALSE(block.isErased() || line.isErased());
    drawing.transactionManager()->startTransaction();
    ASSERT_EQ(erase(layout), Acad::eOk);
    drawing.transactionManager()->abortTransaction();
    EXPECT_EQ(pictureOf(drawing), before) << "but for the marks of change";
    for (const AcDbObjectId space : {drawing.modelSpaceId(), drawing.paperSpaceId()}) {
        const auto* record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(space);
        EXPECT_EQ(erase(record->getLayoutId()), Acad::eCannotBeErasedByCaller);
        EXPECT_FALSE(record->getLayoutId().isErased());
    }
}

} // namespace
