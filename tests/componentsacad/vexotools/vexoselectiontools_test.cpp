#include "drawingparts.h"
#include "hosttest.h"
#include "vexoselectiontools.h"

#include "aced.h"
#include "dbents.h"
#include "documentselection.h"
#include "gebndblock3d.h"
#include "vexoboundblockprotocol.h"
#include "vexodomainprotocol.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numbers>
#include <random>
#include <set>

namespace {

using Tools = VEXOSelectionTools;
using drawingtest::addRecord;
using drawingtest::append;
using drawingtest::change;
using drawingtest::listOf;

using Ids = std::vector<AcDbObjectId>;
AcDbObjectIdArray arrayOf(const Ids& ids) { return drawingtest::arrayOf(ids); }

// Application entities, as modules derive them.
class Bar : public AcDbLine {
    ACRX_DECLARE_MEMBERS(Bar)
public:
    Bar() = default;
    explicit Bar(double x)
        : AcDbLine(AcGePoint3d(x, 0, 0), AcGePoint3d(x, 10, 0)) {}
};
class Stirrup : public Bar {
    ACRX_DECLARE_MEMBERS(Stirrup)
public:
    using Bar::Bar;
};
class BarRepartition : public Bar {
    ACRX_DECLARE_MEMBERS(BarRepartition)
public:
    using Bar::Bar;
};
class StirrupRepartition : public Bar {
    ACRX_DECLARE_MEMBERS(StirrupRepartition)
public:
    using Bar::Bar;
};
ACRX_DXF_DEFINE_MEMBERS(Bar, AcDbLine, 0, 0, 0, VEXOBAR, TEST)
ACRX_DXF_DEFINE_MEMBERS(Stirrup, Bar, 0, 0, 0, VEXOSTIRRUP, TEST)
ACRX_DXF_DEFINE_MEMBERS(BarRepartition, Bar, 0, 0, 0, VEXOBARREPARTITION, TEST)
ACRX_DXF_DEFINE_MEMBERS(StirrupRepartition, Bar, 0, 0, 0, VEXOSTIRRUPREPARTITION, TEST)

struct Classes {
    Classes() {
        BarRepartition::rxInit();
        StirrupRepartition::rxInit();
        Stirrup::rxInit();
    }
    ~Classes() {
        Stirrup::rxExit();
        StirrupRepartition::rxExit();
        BarRepartition::rxExit();
        Bar::rxExit();
    }
};

class Domain : public VEXODomainProtocol {
public:
    Acad::ErrorStatus getDomain(const AcDbEntity* entity, CString& domain) override {
        domain = domains.at(entity->isA()).c_str();
        return domain.IsEmpty() ? Acad::eInvalidInput : Acad::eOk;
    }
    std::map<const AcRxClass*, std::wstring> domains;
};
class BoundBlock : public VEXOBoundBlockProtocol {
public:
    Acad::ErrorStatus getBoundBlock(AcDbObjectId id, AcGeBoundBlock3d& block) override {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents box;
        if (entity.object() && entity->getGeomExtents(box) == Acad::eOk)
            block.set(box.minPoint(), box.maxPoint());
        return entity.openStatus();
    }
};

std::function<void()> body;
void runBody() { body(); }

class SelectionTools : public hostkit::HostTest {
protected:
    SelectionTools() {
        host.commands().addCommand(L"TEST", L"GO", nullptr, ACRX_CMD_USEPICKSET, runBody);
        domain.domains = {{Bar::desc(), L"steel"},
                          {Stirrup::desc(), L"Stirrups"},
                          {BarRepartition::desc(), L"grids"},
                          {StirrupRepartition::desc(), L""}};
    }
    ~SelectionTools() override { body = nullptr; }
    void TearDown() override {
        Bar::desc()->delX(VEXODomainProtocol::desc());
        HostTest::TearDown();
    }
    void giveDomains() { Bar::desc()->addX(VEXODomainProtocol::desc(), &domain); }

    template <class T>
    AcDbObjectId add(double x) {
        return append(database().modelSpaceId(), new T(x));
    }
    AcDbObjectId addLine(double x) {
        return append(database().modelSpaceId(), new AcDbLine(AcGePoint3d(x, 0, 0), AcGePoint3d(x, 10, 0)));
    }
    void run(const std::wstring& answers, std::function<void()> what) {
        body = std::move(what);
        host.run(L"GO " + answers);
    }
    void imply(const Ids& ids) { session.document().selection().implied = ids; }
    std::wstring taken() { return std::exchange(port.printed, L""); }

    const Classes classes;
    Domain domain;
    hostkit::Host& host = session.host();
    hostkit::ScriptedPort& port = session.port();
};

using List = drawingtest::List;

} // namespace

TEST_F(SelectionTools, oneEntityIsPickedAndOpened) {
    const AcDbObjectId line = addLine(0);
    run(L"0,5", [&] {
        AcDbObjectId id;
        AcDbEntity* entity = Tools::selectEntity(id, AcDb::kForWrite, nullptr);
        ASSERT_NE(entity, nullptr);
        EXPECT_EQ(id, line);
        EXPECT_TRUE(entity->isWriteEnabled());
        taken();
        run(L"0,5", [&] { EXPECT_EQ(Tools::selectEntity(id, AcDb::kForRead, L"One: ", L"two"), nullptr); });
        entity->close();
    });
    const std::wstring told = taken();
    EXPECT_NE(
        told.find(L"acdbOpenObject failed with error " + std::to_wstring(Acad::eWasOpenForWrite) + L".\n"),
        std::wstring::npos);
    for (const wchar_t* answer : {L"", L"900,900"})
        run(answer, [&] {
            AcDbObjectId id = line;
            EXPECT_EQ(Tools::selectEntity(id, AcDb::kForRead, nullptr), nullptr);
            EXPECT_EQ(id, line);
            EXPECT_EQ(taken(), L"Rien n'a été sélectionné !\n");
        });
}

TEST_F(SelectionTools, theImpliedSelectionIsTakenWhereItIsAsWanted) {
    const AcDbObjectId a = addLine(0), b = addLine(100), c = addLine(200);
    const AcDbObjectId none;
    const List red(acutBuildList(62, 1, 0));
    change<AcDbEntity>(b, [](AcDbEntity& entity) { entity.setColorIndex(1); });
    struct Case {
        Tools::eSelect kind;
        Ids implied;
        bool prompting;
        const wchar_t* answers;
        const resbuf* filter;
        int code;
        Ids found;
    };
    const Case cases[] = {
        {Tools::eSelectAny, {a}, false, L"", nullptr, RTNORM, {a}},
        {Tools::eSelectAny, {a, b}, true, L"200,5", nullptr, RTNORM, {a, b}},
        {Tools::eSelectOne, {a}, true, L"200,5", nullptr, RTNORM, {a}},
        {Tools::eSelectOne, {a, b}, false, L"200,5", nullptr, RTNORM, {c}},
        {Tools::eSelectSeveral, {a, b}, true, L"200,5", nullptr, RTNORM, {a, b}},
        {Tools::eSelectSeveral, {a}, true, L"200,5 0,5", nullptr, RTNORM, {c}}, // one is asked for
        {Tools::eSelectSeveral, {}, true, L"200,5 0,5", nullptr, RTNORM, {c, a}},
        {Tools::eSelectAny, {}, true, L"200,5 0,5", nullptr, RTNORM, {c, a}},
        {Tools::eSelectOne, {}, true, L"200,5", nullptr, RTNORM, {c}},
        {Tools::eSelectOne, {}, true, L"", nullptr, RTERROR, {none}}, // a null id is appended
        {Tools::eSelectOne, {}, false, L"200,5", nullptr, RTERROR, {}},
        {Tools::eSelectAny, {a, b, c}, true, L"", red.get(), RTNORM, {b}},
        {Tools::eSelectSeveral, {}, true, L"ALL", red.get(), RTNORM, {b}},
        {Tools::eSelectOne, {}, true, L"200,5", red.get(), RTNONE, {none}},
        {Tools::eSelectSeveral, {}, true, L"", nullptr, RTERROR, {}},
        {Tools::eSelectSeveral, {}, true, L"bananas", nullptr, RTREJ, {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(static_cast<int>(&each - cases));
        imply(each.implied);
        run(each.answers, [&] {
            AcDbObjectIdArray ids;
            taken();
            EXPECT_EQ(Tools::selectEntity(L"Which? ", each.filter, each.kind, ids, nullptr, each.prompting),
                      each.code);
            EXPECT_EQ(listOf(ids), each.found);
            EXPECT_EQ(taken().starts_with(L"Which? "), each.implied.empty() && each.prompting);
        });
    }
}

TEST_F(SelectionTools, singleAndSeveralByPrompt) {
    const AcDbObjectId a = addLine(0), b = addLine(100);
    const List circles(acutBuildList(RTDXF0, L"CIRCLE", 0));
    run(L"W -1,-1 101,11", [&] {
        AcDbObjectId id;
        EXPECT_EQ(Tools::selectSingleEntity(nullptr, id, nullptr, nullptr, true), RTNONE)
            << "two are not one";
        EXPECT_TRUE(id.isNull());
    });
    run(L"W -1,-1 101,11", [&] {
        AcDbObjectId id;
        EXPECT_EQ(Tools::selectSingleEntity(L"One: ", circles.get(), id, nullptr), RTNORM);
        EXPECT_EQ(id, a) << "the first, whatever the filter says";
    });
    run(L"one", [&] {
        AcDbObjectId id;
        CString word;
        EXPECT_EQ(Tools::selectSingleEntityKword(L"One: ", id, L"ONEmore Other"), RTKWORD);
        EXPECT_EQ(acedGetInput(word), RTNORM);
        EXPECT_EQ(word.view(), L"ONEmore");
    });
    run(L"100,5", [&] {
        AcDbObjectId id;
        EXPECT_EQ(Tools::selectSingleEntityKword(nullptr, id, L"Other"), RTNORM);
        EXPECT_EQ(id, b);
    });
    run(L"100,5 0,5", [&] {
        AcDbObjectIdArray ids;
        EXPECT_EQ(Tools::selectMultipleEntities(L"Several: ", nullptr, ids, nullptr, true), RTNORM);
        EXPECT_EQ(listOf(ids), (Ids{b}));
        EXPECT_EQ(Tools::selectMultipleEntities(L"Several: ", nullptr, ids, nullptr, false), RTNORM);
        EXPECT_EQ(listOf(ids), (Ids{b, a})) << "appended";
        EXPECT_EQ(Tools::selectMultipleEntities(nullptr, ids, nullptr), RTERROR);
        EXPECT_EQ(ids.length(), 2);
    });
    run(L"0,5", [&] {
        AcDbObjectIdArray ids;
        EXPECT_EQ(Tools::selectMultipleEntities(circles.get(), ids, nullptr), RTERROR)
            << "the filter leaves none";
        EXPECT_EQ(ids.length(), 0);
    });
}

TEST_F(SelectionTools, nestedOnesComeAsOftenAsTheyArePicked) {
    const AcDbObjectId block = addRecord<AcDbBlockTable>(database(), L"B");
    const AcDbObjectId inside = append(block, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 10, 0)));
    const AcDbObjectId outside = addLine(100);
    append(database().modelSpaceId(), new AcDbBlockReference(AcGePoint3d(200, 0, 0), block));
    AcDbObjectIdArray ids;
    run(L"200,5 100,5 200,6",
        [&] { EXPECT_EQ(Tools::selectNestedEntities(nullptr, ids, L"nobody"), RTNORM); });
    EXPECT_EQ(listOf(ids), (Ids{inside, outside, inside}));
    run(L"", [&] { EXPECT_EQ(Tools::selectNestedEntities(nullptr, ids, nullptr), RTERROR); });
    const hostkit::DocumentSelection& left = session.document().selection();
    EXPECT_FALSE(left.allowsDuplicates || left.inputPoints.isSubentitySelectionOn());
}

TEST_F(SelectionTools, impliedSelectionsAreListedAndUsedUp) {
    const AcDbObjectId a = addLine(0), b = addLine(100);
    change<AcDbEntity>(b, [](AcDbEntity& entity) { entity.setColorIndex(1); });
    const List red(acutBuildList(62, 1, 0)), blue(acutBuildList(62, 5, 0));
    AcDbObjectIdArray ids = arrayOf({a});
    imply({a, b});
    Tools::getSelectionIds(ids);
    EXPECT_EQ(listOf(ids), (Ids{a, b}));
    EXPECT_EQ(Tools::verifyImpliedSelection(ids, blue.get()), RTERROR);
    EXPECT_EQ(ids.length(), 0);
    EXPECT_EQ(session.document().selection().implied, (Ids{a, b})) << "an empty one uses nothing up";
    EXPECT_EQ(Tools::verifyImpliedSelection(ids, red.get()), RTNORM);
    EXPECT_EQ(listOf(ids), (Ids{b}));
    Tools::getSelectionIds(ids);
    EXPECT_EQ(ids.length(), 0);
}

TEST_F(SelectionTools, refusedDomainsAreToldOnceEach) {
    giveDomains();
    const AcDbObjectId bar = add<Bar>(0), second = add<Bar>(1), stirrup = add<Stirrup>(2),
                       grid = add<BarRepartition>(3), foreign = addLine(4),
                       silent = add<StirrupRepartition>(5), hidden = add<Stirrup>(6);
    change<AcDbEntity>(hidden, [](AcDbEntity& entity) { entity.setVisibility(AcDb::kInvisible); });
    struct Case {
        Ids ids;
        const wchar_t* domains;
        bool isGood;
        const wchar_t* told;
    };
    const Case cases[] = {
        {{bar, second, foreign, silent, hidden}, L"STEEL", true, L""},
        {{bar, stirrup}, L"x||stirrups||Steel", true, L""},
        {{bar, second}, L"stirrups", false, L"Steel ne sont pas compatible avec cette commande !"},
        {{bar, stirrup, second},
         L"",
         false,
         L"Steel et Stirrups ne sont pas compatible avec cette commande !"},
        {{grid, bar, stirrup},
         nullptr,
         false,
         L"Grids, steel et Stirrups ne sont pas compatible avec cette commande !"},
        {{bar}, L"stee|steel ", false, L"Steel ne sont pas compatible avec cette commande !"},
        {{}, L"steel", true, L""},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(static_cast<int>(&each - cases));
        const AcDbObjectIdArray ids = arrayOf(each.ids);
        const std::wstring told = each.told;
        run(L"", [&] {
            taken();
            EXPECT_EQ(
                Tools::checkSelectionSet(ids, Tools::eSelectAny, each.domains, true, false, nullptr, false),
                each.isGood);
            EXPECT_EQ(taken(), told.empty() ? L"" : L"\n" + told);
            port.boxes.clear();
            Tools::checkSelectionSet(ids, Tools::eSelectOne, each.domains, true, false, nullptr, false);
            ASSERT_EQ(port.boxes.size(), told.empty() ? 0u : 1u);
            if (!told.empty()) {
                EXPECT_EQ(port.boxes[0].text, told);
                EXPECT_EQ(port.boxes[0].flags, 48u);
            }
            port.boxes.clear();
            EXPECT_EQ(
                Tools::checkSelectionSet(ids, Tools::eSelectOne, each.domains, false, false, nullptr, false),
                each.isGood);
            EXPECT_EQ(taken(), L"");
            EXPECT_TRUE(port.boxes.empty());
        });
    }
    EXPECT_FALSE(
        Tools::checkSelectionSet(arrayOf({bar}), Tools::eSelectAny, L"steel", true, true, nullptr, false))
        << "outside of a command";
    run(L"", [&] {
        taken();
        EXPECT_FALSE(Tools::checkSelectionSet(arrayOf({bar, foreign}), Tools::eSelectAny, L"steel", true,
                                              true, nullptr, false));
        EXPECT_EQ(taken(), L"\nSélection incorrecte !");
        EXPECT_TRUE(Tools::checkSelectionSet(arrayOf({bar, stirrup}), Tools::eSelectAny, L"steel||stirrups",
                                             true, true, AcDbLine::desc(), true));
    });
    // What is refused is given all the same.
    run(L"0,5 0,5", [&] {
        AcDbObjectId id;
        bool isAllowed = true;
        EXPECT_EQ(Tools::selectSingleEntity(nullptr, id, L"stirrups", &isAllowed, false), RTNORM);
        EXPECT_EQ(id, bar);
        EXPECT_FALSE(isAllowed);
        AcDbObjectIdArray ids;
        taken();
        EXPECT_EQ(Tools::selectMultipleEntities(nullptr, ids, L"stirrups"), RTNORM);
        EXPECT_EQ(listOf(ids), (Ids{bar}));
        EXPECT_NE(taken().find(L"\nSteel ne sont pas"), std::wstring::npos);
    });
}

TEST_F(SelectionTools, questionsAboutClasses) {
    const AcDbObjectId bar = add<Bar>(0), bar2 = add<Bar>(1), stirrup = add<Stirrup>(2),
                       grid = add<BarRepartition>(3), grid2 = add<StirrupRepartition>(4), line = addLine(5),
                       line2 = addLine(6), gone = addLine(7);
    drawingtest::erase(gone);
    struct Case {
        Ids ids;
        bool onlyRepartitions, sameRepartitions, sameBars, oneApplication, homogenous;
    };
    const Case cases[] = {
        {{}, false, false, false, false, true},
        {{line}, false, false, false, false, true},
        {{bar}, false, false, true, true, true},
        {{grid}, true, true, true, false, true},
        {{line, line2}, true, true, true, false, true}, // the first is not asked, foreign ones pass
        {{line, bar}, false, false, false, true, false},
        {{bar, line}, true, true, true, false, false}, // so that no application entity is seen here
        {{bar, bar2, line}, false, false, true, true, false},
        {{grid, grid2}, true, false, false, false, false},
        {{line, grid}, true, false, false, false, false},
        {{bar, stirrup}, false, false, false, true, false},
        {{gone, bar}, false, false, false, true, false},
        {{bar, gone}, false, false, false, true, false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(static_cast<int>(&each - cases));
        const AcDbObjectIdArray ids = arrayOf(each.ids);
        EXPECT_EQ(Tools::areOnlyRepartitions(ids, false), each.onlyRepartitions);
        EXPECT_EQ(Tools::areOnlyRepartitions(ids, true), each.sameRepartitions);
        EXPECT_EQ(Tools::areSameTypeOfBars(ids), each.sameBars);
        EXPECT_EQ(Tools::isOneVEXOEntity(ids), each.oneApplication);
        EXPECT_EQ(Tools::isSelectionHomogenous(ids, nullptr, false), each.homogenous);
    }
    EXPECT_TRUE(Tools::isSelectionHomogenous(arrayOf({bar, stirrup, grid}), Bar::desc(), true));
    EXPECT_FALSE(Tools::isSelectionHomogenous(arrayOf({bar, line}), Bar::desc(), true));
    EXPECT_TRUE(Tools::isSelectionHomogenous(arrayOf({bar, stirrup}), nullptr, true))
        << "derived from the first";
    EXPECT_FALSE(Tools::isSelectionHomogenous(arrayOf({stirrup, bar}), nullptr, true));
    AcDbObjectIdArray ids = arrayOf({line, line2, bar, gone, line, grid});
    Tools::getOnlyVEXOEntities(ids);
    EXPECT_EQ(listOf(ids), (Ids{bar, gone, grid}));
    ids = arrayOf({line, line2, bar, gone, grid});
    CStringArray names;
    names.Add(L"line");
    names.Add(L"VexoBarRepartition");
    Tools::filterEntitiesByName(ids, names);
    EXPECT_EQ(listOf(ids), (Ids{line, line2, gone, grid}));
}

TEST_F(SelectionTools, theWholeDrawingDecidesWhatAFilterLeaves) {
    const AcDbObjectId a = addLine(0), b = addLine(100), c = addLine(200);
    const AcDbObjectId block = addRecord<AcDbBlockTable>(database(), L"B");
    const AcDbObjectId inBlock = append(block, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    const List lines(acutBuildList(RTDXF0, L"LINE", 0)), broken(acutBuildList(-4, L"<and", 0));
    drawingtest::erase(b);
    const AcDbObjectIdArray ids = arrayOf({c, inBlock, b, a, c});
    EXPECT_EQ(listOf(Tools::filterSelectionSet(lines.get(), ids)), (Ids{c, a, c}));
    EXPECT_EQ(Tools::filterSelectionSet(broken.get(), ids).length(), 0);
}

// Whatever the order in which they are asked for, and however often.
TEST_F(SelectionTools, whatAFilterLeavesKeepsItsOrder) {
    std::mt19937 random(11);
    std::set<AcDbObjectId> taken;
    Ids all;
    for (int i = 0; i < 300; ++i) {
        const bool isLine = random() % 3 == 0;
        all.push_back(isLine ? addLine(i) : add<Bar>(i));
        if (isLine) taken.insert(all.back());
    }
    const List lines(acutBuildList(RTDXF0, L"LINE", 0));
    for (int round = 0; round < 40; ++round) {
        Ids asked;
        for (std::size_t i = 0, count = 1 + random() % 500; i < count; ++i)
            asked.push_back(all[random() % all.size()]);
        if (round % 4 == 1) std::sort(asked.begin(), asked.end());
        if (round % 4 == 2) std::sort(asked.rbegin(), asked.rend());
        if (round % 4 == 3) std::sort(asked.begin(), asked.begin() + static_cast<long>(asked.size() / 2));
        Ids expected;
        for (const AcDbObjectId id : asked)
            if (taken.contains(id)) expected.push_back(id);
        AcDbObjectIdArray ids;
        for (const AcDbObjectId id : asked) ids.append(id);
        EXPECT_EQ(listOf(Tools::filterSelectionSet(lines.get(), ids)), expected) << "round " << round;
    }
}

TEST_F(SelectionTools, allButOneTypeIsHidden) {
    const AcDbObjectId bar = add<Bar>(0), line = addLine(1), onOff = addLine(2), onLocked = addLine(3);
    const AcDbObjectId off = addRecord<AcDbLayerTable>(database(), L"Off");
    const AcDbObjectId locked = addRecord<AcDbLayerTable>(database(), L"Locked");
    change<AcDbEntity>(onOff, [&](AcDbEntity& entity) { entity.setLayer(off); });
    change<AcDbEntity>(onLocked, [&](AcDbEntity& entity) { entity.setLayer(locked); });
    change<AcDbLayerTableRecord>(off, [](AcDbLayerTableRecord& layer) { layer.setIsOff(true); });
    change<AcDbLayerTableRecord>(locked, [](AcDbLayerTableRecord& layer) { layer.setIsLocked(true); });
    const auto hidden = [&] {
        std::set<AcDbObjectId> found;
        for (const AcDbObjectId id : {bar, line, onOff, onLocked})
            if (AcDbObjectPointer<AcDbEntity>(id, AcDb::kForRead)->visibility() == AcDb::kInvisible)
                found.insert(id);
        return found;
    };
    Tools::HideExcept(L"vexobar", 1);
    EXPECT_EQ(hidden(), (std::set<AcDbObjectId>{line}));
    Tools::HideExcept(L"VEXOBAR", 0);
    EXPECT_TRUE(hidden().empty());
    Tools::HideExcept(nullptr, 1);
    EXPECT_TRUE(hidden().empty());
    taken();
    Tools::DisplayGenericMultipleSelectionMessage(true);
    EXPECT_EQ(taken(), L"Choix des éléments :");
}

TEST_F(SelectionTools, neighboursAreFoundInReferencesToo) {
    BoundBlock protocol;
    const auto addTo = [](AcDbObjectId block, double x) { return append(block, new Bar(x)); };
    const AcDbObjectId inner = addRecord<AcDbBlockTable>(database(), L"INNER");
    const AcDbObjectId outer = addRecord<AcDbBlockTable>(database(), L"OUTER");
    const AcDbObjectId deep = addTo(inner, 0.0);
    auto* turned = new AcDbBlockReference(AcGePoint3d(10, 0, 0), inner);
    turned->setRotation(std::numbers::pi / 2.0); // the bar lies along -x from there
    append(outer, turned);
    append(outer, new AcDbBlockReference(AcGePoint3d(500, 0, 0), inner));
    const AcDbObjectId near = add<Bar>(112);
    add<Bar>(200);
    addLine(112);
    auto* whole = new AcDbBlockReference(AcGePoint3d(100, 0, 0), outer);
    whole->setScaleFactors(AcGeScale3d(2, 2, 2));
    append(database().modelSpaceId(), whole);
    const AcGeBoundBlock3d box(AcGePoint3d(105, -1, -1),
                               AcGePoint3d(113, 6, 1)); // the bar from (100,0) to (120,0)
    AcDbObjectIdArray ids;
    AcArray<AcGeMatrix3d> matrices;
    Tools::getAdiacentElements(box, ids, matrices);
    EXPECT_EQ(ids.length(), 0) << "nobody tells a block";
    Bar::desc()->addX(VEXOBoundBlockProtocol::desc(), &protocol);
    Tools::getAdiacentElements(box, ids, matrices);
    Bar::desc()->delX(VEXOBoundBlockProtocol::desc());
    EXPECT_EQ(listOf(ids), (Ids{near, deep}));
    ASSERT_EQ(matrices.length(), 2);
    EXPECT_EQ(matrices[0].translation().x, 0.0);
    EXPECT_NEAR(matrices[1].translation().x, 120.0, 1e-9);
    EXPECT_NEAR((matrices[1] * AcGePoint3d(0, 10, 0)).x, 100.0, 1e-9);
}
