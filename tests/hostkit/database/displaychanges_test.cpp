#include "drawingparts.h"

#include "acdbads.h"
#include "changelog.h"
#include "db2dpolyline.h"
#include "dbaccess.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "dbline.h"
#include "dbtrans.h"
#include "displaychanges.h"

#include <map>
#include <sstream>

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;
using hostkit::ShownChange;

class DisplayChangesOf : public testing::Test, protected hostkit::DisplayObserver {
protected:
    void SetUp() override {
        m_drawing.disableUndoRecording(false);
        name("space", m_drawing.modelSpaceId());
        name("layer", addRecord<AcDbLayerTable>(m_drawing, L"Walls"));
        name("block", addRecord<AcDbBlockTable>(m_drawing, L"Door"));
        name("line", appendToModelSpace(m_drawing, new AcDbLine({0, 0, 0}, {1, 0, 0})));
        name("other", appendToModelSpace(m_drawing, new AcDbLine({0, 1, 0}, {1, 1, 0})));
        name("part", append(m_ids["block"], new AcDbLine({0, 2, 0}, {1, 2, 0})));
        name("polyline",
             appendToModelSpace(m_drawing, new AcDb2dPolyline(AcDb::k2dSimplePoly,
                                                              pointsOf({{0, 0, 0}, {1, 0, 0}}), 0.0, false)));
        auto* reference = new AcDbBlockReference({5, 5, 0}, m_ids["block"]);
        auto* attribute = new AcDbAttribute;
        EXPECT_EQ(reference->appendAttribute(attribute), Acad::eOk);
        name("reference", appendToModelSpace(m_drawing, reference));
        name("attribute", attribute->objectId());
        display().add(*this);
    }
    void TearDown() override {
        EXPECT_EQ(m_drawing.numOpenObjects(), 0);
        if (m_isWatching) display().remove(*this);
    }
    hostkit::DisplayChanges& display() { return DatabaseAccess::display(m_drawing); }
    void name(const char* word, AcDbObjectId id) { m_ids[word] = id; }
    AcDbObjectId of(const char* word) { return m_ids.at(word); }
    std::string wordOf(AcDbObjectId id) const {
        for (const auto& [word, each] : m_ids)
            if (each == id) return word;
        return "new";
    }
    void shownAnew(const ShownChange& change) override {
        constexpr const char* kinds[] = {"entity", "gone", "redraw", "layer", "block"};
        m_told.insert(std::string(kinds[int(change.kind)]) + " " + wordOf(change.id) +
                      (change.cause == change.id ? "" : " by " + wordOf(change.cause)));
    }
    /// What was told since the last time, in the order of the alphabet.
    std::string told() {
        std::string all;
        for (const std::string& each : m_told) all += (all.empty() ? "" : ", ") + each;
        m_told.clear();
        return all;
    }
    template <class T>
    T* open(const char* word, bool evenErased = false) {
        T* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, of(word), AcDb::kForWrite, evenErased), Acad::eOk);
        return object;
    }
    void moveEnd(const char* word) {
        change<AcDbLine>(of(word), [](auto& line) { (void)line.setEndPoint({9, 9, 9}); });
    }

    AcDbDatabase m_drawing;
    std::map<std::string, AcDbObjectId> m_ids;
    std::multiset<std::string> m_told;
    bool m_isWatching = true;
};

TEST_F(DisplayChangesOf, EntitiesAreToldOnceAnOpen) {
    AcDbLine* line = open<AcDbLine>("line");
    (void)line->setEndPoint({2, 0, 0});
    (void)line->setColorIndex(3);
    EXPECT_EQ(told(), "") << "not before it is closed";
    line->close();
    EXPECT_EQ(told(), "entity line");
    open<AcDbLine>("line")->close();
    EXPECT_EQ(told(), "") << "nothing was changed";
    change<AcDbLine>(of("line"), [](auto& opened) { (void)opened.setVisibility(AcDb::kInvisible); });
    EXPECT_EQ(told(), "entity line");
    change<AcDbLine>(of("line"), [](auto& opened) { (void)opened.erase(); });
    EXPECT_EQ(told(), "gone line");
    line = open<AcDbLine>("line", true);
    (void)line->erase(false);
    line->close();
    EXPECT_EQ(told(), "entity line");
    appendToModelSpace(m_drawing, new AcDbLine({0, 0, 0}, {7, 7, 7}));
    EXPECT_EQ(told(), "entity new");
}

TEST_F(DisplayChangesOf, PartsAreToldAsWhatOwnsThem) {
    const auto* polyline = DatabaseAccess::objectOf<AcDb2dPolyline>(of("polyline"));
    name("vertex", polyline->vertices().idAt(1));
    change<AcDb2dVertex>(of("vertex"), [](auto& vertex) { (void)vertex.setPosition({3, 3, 0}); });
    EXPECT_EQ(told(), "entity polyline by vertex");
    change<AcDbAttribute>(of("attribute"), [](auto& attribute) { (void)attribute.setTextString(L"12"); });
    EXPECT_EQ(told(), "entity reference by attribute");
    moveEnd("part");
    EXPECT_EQ(told(), "block block by part");
    append(of("block"), new AcDbLine({0, 0, 0}, {1, 1, 1}));
    EXPECT_EQ(told(), "block block, block block by new") << "both are closed";
    change<AcDbBlockTableRecord>(of("block"), [](auto& block) { (void)block.setOrigin({1, 1, 0}); });
    EXPECT_EQ(told(), "block block");
    change<AcDbBlockTableRecord>(of("block"), [](auto& block) { (void)block.erase(); });
    EXPECT_EQ(told(), "block block, block block by new, block block by part");
}

TEST_F(DisplayChangesOf, LayersAreToldAndTablesAreNot) {
    change<AcDbLayerTableRecord>(of("layer"), [](auto& layer) { (void)layer.setIsOff(true); });
    EXPECT_EQ(told(), "layer layer");
    change<AcDbLayerTable>(m_drawing.layerTableId(), [](auto& table) { (void)table.assertWriteEnabled(); });
    enter(m_drawing.namedObjectsDictionaryId(), L"NOTES");
    addRecord<AcDbTextStyleTable>(m_drawing, L"Narrow");
    EXPECT_EQ(told(), "");
}

TEST_F(DisplayChangesOf, WhatGoesBackIsToldOnce) {
    hostkit::ChangeLog& log = DatabaseAccess::changes(m_drawing);
    log.beginGroup(L"Move");
    moveEnd("line");
    change<AcDbLine>(of("line"), [](auto& line) { (void)line.erase(); });
    moveEnd("other");
    name("late", appendToModelSpace(m_drawing, new AcDbLine({0, 0, 0}, {7, 7, 7})));
    log.endGroup();
    told();
    hostkit::UndoReport report;
    ASSERT_EQ(log.undo(report), Acad::eOk);
    EXPECT_EQ(told(), "entity line, entity other, gone late");
    ASSERT_EQ(log.redo(report), Acad::eOk);
    EXPECT_EQ(told(), "entity late, entity other, gone line");
    ASSERT_EQ(log.undo(report), Acad::eOk);
    EXPECT_EQ(told(), "entity line, entity other, gone late");

    m_drawing.transactionManager()->startTransaction();
    AcDbObject* held = nullptr;
    ASSERT_EQ(m_drawing.transactionManager()->getObject(held, of("line"), AcDb::kForWrite), Acad::eOk);
    (void)AcDbLine::cast(held)->setColorIndex(1);
    EXPECT_EQ(told(), "");
    m_drawing.transactionManager()->abortTransaction();
    EXPECT_EQ(told(), "entity line");
    m_drawing.transactionManager()->startTransaction();
    ASSERT_EQ(m_drawing.transactionManager()->getObject(held, of("line"), AcDb::kForWrite), Acad::eOk);
    (void)AcDbLine::cast(held)->setColorIndex(1);
    m_drawing.transactionManager()->endTransaction();
    EXPECT_EQ(told(), "entity line");

    AcDbLine* line = open<AcDbLine>("line");
    (void)line->setColorIndex(2);
    line->cancel();
    EXPECT_EQ(told(), "entity line");
}

TEST_F(DisplayChangesOf, ARedrawIsAskedFor) {
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, of("line"), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(line->recordGraphicsModified(false), Acad::eOk);
    EXPECT_EQ(line->recordGraphicsModified(), Acad::eNotOpenForWrite);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(line->draw(), Acad::eOk);
    EXPECT_EQ(told(), "redraw line");
    line->close();
    EXPECT_EQ(line->draw(), Acad::eNotOpenForRead);
    EXPECT_EQ(told(), "");
    change<AcDbLine>(of("line"), [](auto& opened) { (void)opened.recordGraphicsModified(); });
    EXPECT_EQ(told(), "entity line");
    EXPECT_EQ(AcDbLine().draw(), Acad::eOk);
}

TEST_F(DisplayChangesOf, ByTheNameOfRecordLists) {
    const auto update = [&](const char* word) {
        ads_name entity;
        EXPECT_EQ(acdbGetAdsName(entity, of(word)), Acad::eOk);
        return acdbEntUpd(entity);
    };
    EXPECT_EQ(update("line"), RTNORM);
    EXPECT_EQ(told(), "redraw line");
    EXPECT_EQ(update("attribute"), RTNORM);
    EXPECT_EQ(told(), "redraw reference by attribute");
    EXPECT_EQ(update("part"), RTNORM);
    EXPECT_EQ(told(), "block block by part");
    EXPECT_EQ(update("layer"), RTERROR);
    change<AcDbLine>(of("line"), [](auto& line) { (void)line.erase(); });
    told();
    EXPECT_EQ(update("line"), RTERROR);
    const ads_name none = {0, 0};
    EXPECT_EQ(acdbEntUpd(none), RTERROR);
    EXPECT_EQ(told(), "");
}

TEST_F(DisplayChangesOf, NobodyIsToldAnyMore) {
    display().remove(*this);
    m_isWatching = false;
    moveEnd("line");
    hostkit::UndoReport report;
    EXPECT_EQ(DatabaseAccess::changes(m_drawing).undo(report), Acad::eOk);
    EXPECT_EQ(told(), "");
}

} // namespace
