// Space, coordinate system, view and visibility.
#include "vexoacadsystemtools.h"

#include "dbblocktable.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbviewporttable.h"
#include "dbviewtablerecord.h"
#include "headervariables.h"
#include "hosttest.h"

#include <random>

namespace {

using Tools = VEXOAcadSystemTools;

class ViewTools : public hostkit::HostTest {
protected:
    void setUcs(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y) {
        const double values[3][3] = {{origin.x, origin.y, origin.z}, {x.x, x.y, x.z}, {y.x, y.y, y.z}};
        database().header().setPoint(L"UCSORG", values[0], 3);
        database().header().setPoint(L"UCSXDIR", values[1], 3);
        database().header().setPoint(L"UCSYDIR", values[2], 3);
    }
    void expectSpace(const char* space) {
        EXPECT_EQ(Tools::isModelSpace(), *space == 'M') << space;
        EXPECT_EQ(Tools::isPaperSpace(), *space == 'P') << space;
        EXPECT_EQ(Tools::isFloatingSpace(), *space == 'F') << space;
    }
    AcDbObjectId appendLine() {
        auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
        AcDbObjectId id;
        const AcDbSymbolTablePointer<AcDbBlockTable> blocks(&database(), AcDb::kForRead);
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(blocks->getAt(L"*Model_Space", space, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
        line->close();
        space->close();
        return id;
    }
    void react(AcDbObjectId on, AcDbObjectId reactor) {
        const AcDbObjectPointer<AcDbEntity> entity(on, AcDb::kForWrite);
        EXPECT_EQ(entity->addPersistentReactor(reactor), Acad::eOk);
    }
    bool isVisible(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        return entity->visibility() == AcDb::kVisible;
    }
};

TEST_F(ViewTools, SpacesAreReachedFromEachOther) {
    expectSpace("M");
    Tools::setFloatingSpace(); // both steps
    expectSpace("F");
    Tools::setPaperSpace();
    expectSpace("P");
    Tools::setPaperSpace();
    expectSpace("P");
    Tools::setFloatingSpace();
    expectSpace("F");
    Tools::setModelSpace();
    expectSpace("M");
    Tools::setPaperSpace();
    expectSpace("P");
    EXPECT_FALSE(Tools::IsEditingXref());
    hostkit::SystemValue name;
    name.type = RTSTR;
    name.text = L"plan";
    ASSERT_EQ(session.host().variables().setByHost(L"REFEDITNAME", name), hostkit::VariableResult::ok);
    EXPECT_TRUE(Tools::IsEditingXref());
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    expectSpace("none");
}

TEST_F(ViewTools, AxesOfTheUserCoordinateSystem) {
    setUcs({5, 6, 7}, {0, 1, 0}, {0, 0, 1});
    for (AcDbDatabase* const drawing : {&database(), static_cast<AcDbDatabase*>(nullptr)}) {
        EXPECT_TRUE(Tools::getUcsXAxis(drawing).isEqualTo(AcGeVector3d::kYAxis));
        EXPECT_TRUE(Tools::getUcsYAxis(drawing).isEqualTo(AcGeVector3d::kZAxis));
        EXPECT_TRUE(Tools::getUcsZAxis(drawing).isEqualTo(AcGeVector3d::kXAxis));
        EXPECT_TRUE(Tools::getUcsPlane(drawing).isOn(AcGePoint3d(5, -1, 2)));
        EXPECT_TRUE(Tools::getUcsPlane(drawing).normal().isEqualTo(AcGeVector3d::kXAxis));
    }
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    EXPECT_EQ(Tools::getUcsXAxis(nullptr), AcGeVector3d::kXAxis);
    EXPECT_EQ(Tools::getUcsYAxis(nullptr), AcGeVector3d::kYAxis);
    EXPECT_EQ(Tools::getUcsZAxis(nullptr), AcGeVector3d::kZAxis);
    EXPECT_EQ(Tools::getUcsPlane(nullptr).normal(), AcGeVector3d::kZAxis);
}

// Whatever the user coordinate system is, the record has the viewport's own values.
TEST_F(ViewTools, TheCurrentViewIsThatOfTheViewport) {
    std::mt19937 random(71);
    std::uniform_real_distribution<double> anywhere(-1000, 1000);
    const auto point = [&] { return AcGePoint3d(anywhere(random), anywhere(random), anywhere(random)); };
    AcDbObjectId active;
    {
        const AcDbSymbolTablePointer<AcDbViewportTable> viewports(&database(), AcDb::kForRead);
        ASSERT_EQ(viewports->getAt(L"*Active", active), Acad::eOk);
    }
    double worst = 0;
    for (int i = 0; i < 200; ++i) {
        const AcGeVector3d x = point().asVector().normal();
        setUcs(point(), x, x.crossProduct(point().asVector()).normal());
        AcDbObjectPointer<AcDbViewportTableRecord> viewport(active, AcDb::kForWrite);
        viewport->setTarget(point());
        viewport->setViewDirection(point().asVector());
        viewport->setCenterPoint(AcGePoint2d(anywhere(random), anywhere(random)));
        viewport->setHeight(1 + std::abs(anywhere(random)));
        viewport->setLensLength(35);
        viewport->setViewTwist(anywhere(random));
        viewport->setBackClipDistance(anywhere(random));
        viewport->setFrontClipDistance(anywhere(random));
        viewport->setPerspectiveEnabled(i & 1);
        viewport->setFrontClipEnabled(i & 2);
        viewport->setBackClipEnabled(i & 4);
        viewport->setFrontClipAtEye(i & 8);

        AcDbViewTableRecord view;
        view.setViewTwist(0.25);
        view.setWidth(12);
        Tools::GetCurrentView(view);
        worst = std::max({worst, view.target().distanceTo(viewport->target()),
                          (view.viewDirection() - viewport->viewDirection()).length(),
                          view.centerPoint().distanceTo(viewport->centerPoint())});
        EXPECT_EQ(view.height(), viewport->height());
        EXPECT_EQ(view.lensLength(), 35);
        EXPECT_EQ(view.backClipDistance(), viewport->backClipDistance());
        EXPECT_EQ(view.frontClipDistance(), viewport->frontClipDistance());
        EXPECT_EQ(view.perspectiveEnabled(), (i & 1) != 0);
        EXPECT_EQ(view.frontClipEnabled(), (i & 2) != 0);
        EXPECT_EQ(view.backClipEnabled(), (i & 4) != 0);
        EXPECT_EQ(view.frontClipAtEye(), (i & 8) != 0);
        EXPECT_EQ(view.viewTwist(), 0.25) << "not among what is told";
        EXPECT_EQ(view.width(), 12);
    }
    EXPECT_LT(worst, 1e-10); // 1e-12 seen

    AcDbViewTableRecord view;
    view.setTarget(AcGePoint3d(1, 2, 3));
    view.setFrontClipAtEye(false);
    view.setHeight(7);
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    Tools::GetCurrentView(view);
    EXPECT_EQ(view.target(), AcGePoint3d(1, 2, 3));
    EXPECT_FALSE(view.frontClipAtEye());
    EXPECT_EQ(view.height(), 7);
}

TEST_F(ViewTools, VisibilityFollowsPersistentReactorsOnce) {
    // a -> b -> c -> a, b -> a layer, c -> an erased one and one that is open elsewhere with its own reactor
    const AcDbObjectId a = appendLine(), b = appendLine(), c = appendLine(), erased = appendLine(),
                       behind = appendLine();
    react(a, b);
    react(b, c);
    react(b, database().layerZero());
    react(c, a);
    react(c, erased);
    react(erased, behind);
    AcDbObjectPointer<AcDbEntity>(erased, AcDb::kForWrite)->erase();

    EXPECT_EQ(Tools::setVisibility(AcDb::kInvisible, a, 0), Acad::eOk);
    EXPECT_FALSE(isVisible(a));
    EXPECT_TRUE(isVisible(b));
    EXPECT_EQ(Tools::setVisibility(AcDb::kInvisible, a, 1), Acad::eOk);
    for (const AcDbObjectId each : {a, b, c}) EXPECT_FALSE(isVisible(each));
    EXPECT_TRUE(isVisible(behind));

    EXPECT_EQ(Tools::setVisibility(AcDb::kVisible, static_cast<AcDbEntity*>(nullptr), 1),
              Acad::eNullEntityPointer);
    EXPECT_EQ(Tools::setVisibility(AcDb::kVisible, AcDbObjectId(), 1), Acad::eNullPtr);
    EXPECT_EQ(Tools::setVisibility(AcDb::kVisible, database().layerZero(), 1), Acad::eNotThatKindOfClass);
    const AcDbObjectPointer<AcDbEntity> reading(a, AcDb::kForRead);
    EXPECT_EQ(Tools::setVisibility(AcDb::kVisible, reading.object(), 1), Acad::eNotOpenForWrite);
    EXPECT_EQ(reading->visibility(), AcDb::kInvisible);
    EXPECT_FALSE(isVisible(b)) << "nothing was begun";
}

TEST_F(ViewTools, ALongChainOfReactorsIsNoDeepRecursion) {
    std::vector<AcDbObjectId> chain;
    for (int i = 0; i < 20000; ++i) {
        chain.push_back(appendLine());
        if (i > 0) react(chain[i - 1], chain[i]);
    }
    EXPECT_EQ(Tools::setVisibility(AcDb::kInvisible, chain.front(), 1), Acad::eOk);
    EXPECT_FALSE(isVisible(chain.back()));
}

} // namespace
