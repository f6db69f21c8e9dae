#include "drawingparts.h"
#include "hosttest.h"
#include "vexodatabasetools.h"
#include "vexolayertools.h"
#include "vexosmartlock.h"

#include "dbents.h"

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <set>

namespace {

using Tools = VEXOLayerTools;
using drawingtest::addRecord;
using drawingtest::append;
using drawingtest::change;
using drawingtest::listOf;

using Ids = std::vector<AcDbObjectId>;
AcDbObjectIdArray arrayOf(const Ids& ids) { return drawingtest::arrayOf(ids); }

class LayerTools : public hostkit::HostTest {
protected:
    AcDbObjectId layer(const wchar_t* name) { return addRecord<AcDbLayerTable>(database(), name); }
    AcDbObjectId block(const wchar_t* name) { return addRecord<AcDbBlockTable>(database(), name); }
    AcDbObjectId line(AcDbObjectId block, AcDbObjectId layer) {
        auto* made = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
        made->setLayer(layer);
        return append(block, made);
    }
    AcDbObjectId line(AcDbObjectId layer) { return line(database().modelSpaceId(), layer); }
    AcDbObjectId reference(AcDbObjectId into, AcDbObjectId block, AcDbObjectId layer, double x = 0.0) {
        auto* made = new AcDbBlockReference(AcGePoint3d(x, 0, 0), block);
        made->setLayer(layer);
        return append(into, made);
    }
    static std::wstring nameOf(AcDbObjectId layer) {
        const AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead, true);
        return record->name();
    }
    static AcDbObjectId layerOf(AcDbObjectId entity) {
        return AcDbObjectPointer<AcDbEntity>(entity, AcDb::kForRead, true)->layerId();
    }
    /// "off frozen locked", as far as it is.
    static std::string stateOf(AcDbObjectId layer) {
        const AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead);
        std::string state;
        if (record->isOff()) state += "off ";
        if (record->isFrozen()) state += "frozen ";
        if (record->isLocked()) state += "locked ";
        return state;
    }
    static void setState(AcDbObjectId layer, bool off, bool frozen, bool locked = false) {
        change<AcDbLayerTableRecord>(layer, [=](AcDbLayerTableRecord& record) {
            record.setIsOff(off);
            record.setIsFrozen(frozen);
            record.setIsLocked(locked);
        });
    }

    AcDbObjectId zero() { return database().layerZero(); }
};

struct Drawing {
    Ids layers;
    Ids entities; ///< of all blocks, in the drawing's order
};

} // namespace

TEST_F(LayerTools, aLayerIsFoundOrMadeAsItIsNamed) {
    struct Case {
        const wchar_t* name;
        int on;
        int makeCurrent;
        unsigned short color;
        bool isMade;
    };
    const Case cases[] = {
        {L"Walls", 1, 0, 3, true},      {L"Hidden", 0, 0, 65535, true}, {L"Now", 1, 1, 5, true},
        {L"a<b", 1, 0, 1, false},       {L"", 1, 0, 1, false},          {L"comma,", 1, 1, 1, false},
        {L"P#1 @ ~x", 1, 0, 256, true}, // the host refuses none of these; nor is ByLayer a layer's colour
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(drawingtest::narrow(each.name));
        AcDbObjectId id = zero();
        const AcDbObjectId before = database().clayer();
        EXPECT_EQ(Tools::addLayer(each.name, id, nullptr, each.on, each.makeCurrent, each.color),
                  each.isMade);
        EXPECT_EQ(id.isNull(), !each.isMade);
        EXPECT_EQ(database().clayer(), each.isMade && each.makeCurrent ? id : before);
        if (!each.isMade) continue;
        EXPECT_EQ(nameOf(id), each.name);
        EXPECT_EQ(stateOf(id), each.on ? "" : "off ");
        const AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForRead);
        EXPECT_EQ(record->color().colorIndex(), each.color < 256 ? each.color : 7);
        EXPECT_EQ(record->linetypeObjectId(), database().continuousLinetype());
    }
    AcDbObjectId again;
    EXPECT_TRUE(Tools::addLayer(L"HIDDEN", again, &database(), 1, 0, 1));
    EXPECT_EQ(again, Tools::getLayerId(L"hidden"));
    EXPECT_EQ(stateOf(again), "off ") << "one that is there stays as it is";
    const std::wstring tooLong(256, L'x');
    EXPECT_FALSE(Tools::addLayer(tooLong.c_str(), again, nullptr, 1, 0, 1));
    EXPECT_FALSE(Tools::addLayer(nullptr, again, nullptr, 1, 0, 1));
}

TEST_F(LayerTools, freeNamesAreNumbered) {
    AcDbObjectId id;
    for (const wchar_t* expected : {L"A", L"A-1", L"A-2", L"A-3"}) {
        EXPECT_TRUE(Tools::addNewLayer(L"A", id, nullptr, 1, 0, 7));
        EXPECT_EQ(nameOf(id), expected);
    }
    EXPECT_FALSE(Tools::addNewLayer(L"A|B", id, nullptr, 1, 0, 7));
    EXPECT_TRUE(id.isNull());
    id = zero();
    EXPECT_FALSE(Tools::existLayer(L"none", id));
    EXPECT_EQ(id, zero());
    EXPECT_TRUE(Tools::getLayerId(L"none").isNull());
    EXPECT_TRUE(Tools::getLayerId(nullptr).isNull());
}

TEST_F(LayerTools, renamingNumbersNamesThatAreTaken) {
    const AcDbObjectId wall = layer(L"Wall"), other = layer(L"A");
    layer(L"A1");
    EXPECT_EQ(Tools::renameLayer(L"WALL", wall), Acad::eOk);
    EXPECT_EQ(nameOf(wall), L"Wall") << "in other case it is no new name";
    EXPECT_EQ(Tools::renameLayer(L"a", wall), Acad::eOk);
    EXPECT_EQ(nameOf(wall), L"a12") << "digits stand behind those of the turn before";
    EXPECT_EQ(Tools::renameLayer(L"Slab \n ", wall), Acad::eOk);
    EXPECT_EQ(nameOf(wall), L"Slab");
    EXPECT_NE(Tools::renameLayer(L"x|y", wall), Acad::eOk);
    EXPECT_NE(Tools::renameLayer(L"B", AcDbObjectId()), Acad::eOk);
    const std::wstring longName(300, L'n');
    EXPECT_EQ(Tools::renameLayer(longName.c_str(), wall), Acad::eOk);
    EXPECT_EQ(nameOf(wall), longName.substr(0, 255));
    EXPECT_EQ(Tools::renameLayer(longName.substr(0, 255).c_str(), other), Acad::eOk);
    EXPECT_EQ(nameOf(other), longName.substr(0, 254) + L"1");

    const AcDbObjectId text = layer(L"one two one");
    EXPECT_TRUE(Tools::replaceTextFromLayerName(text, L"one", L"1"));
    EXPECT_EQ(nameOf(text), L"1 two 1");
    EXPECT_FALSE(Tools::replaceTextFromLayerName(text, L"ONE", L"2"));
    EXPECT_FALSE(Tools::replaceTextFromLayerName(text, L"", L"2"));
    EXPECT_TRUE(Tools::replaceTextFromLayerName(text, L"two", L"a|b")) << "whether the host takes it or not";
    EXPECT_EQ(nameOf(text), L"1 two 1");
    EXPECT_FALSE(Tools::replaceTextFromLayerName(AcDbObjectId(), L"a", L"b"));
}

TEST_F(LayerTools, listsOfLayers) {
    const AcDbObjectId off = layer(L"off"), frozen = layer(L"frozen"), both = layer(L"both"),
                       locked = layer(L"locked");
    setState(off, true, false);
    setState(frozen, false, true);
    setState(both, true, true);
    setState(locked, false, false, true);
    const Ids before = {both};
    const auto listed = [&](auto list) {
        AcDbObjectIdArray ids = arrayOf(before);
        list(ids);
        Ids found = listOf(ids);
        if (!found.empty() && found.front() == both && found.size() > 1) found.erase(found.begin());
        return found;
    };
    EXPECT_EQ(listed([&](auto& ids) { Tools::getAllLayers(ids, &database()); }),
              (Ids{zero(), off, frozen, both, locked}));
    EXPECT_EQ(listed([&](auto& ids) { Tools::getAllLayers(ids, nullptr); }), Ids{});
    EXPECT_EQ(listed([&](auto& ids) { Tools::getAllActiveLayers(ids); }), (Ids{zero(), frozen, locked}));
    EXPECT_EQ(listed([&](auto& ids) { Tools::getLokedLayers(ids); }), (Ids{locked}));
    EXPECT_EQ(listed([&](auto& ids) { Tools::getFrozenAndOffLayers(ids); }), (Ids{both}));
    EXPECT_EQ(listed([&](auto& ids) { Tools::getAllFrozenLayers(ids, nullptr); }), (Ids{frozen, both}));
    CStringList names;
    AcDbObjectIdArray ids;
    Tools::getSelectLayersName(arrayOf({off, AcDbObjectId(), locked}), names, ids);
    EXPECT_EQ(listOf(ids), (Ids{off, locked}));
    EXPECT_EQ(names.GetCount(), 2);
    Tools::getAllLayersName(names, ids);
    EXPECT_EQ(names.GetCount(), 7);
    EXPECT_EQ(ids.length(), 7);
}

TEST_F(LayerTools, statesOfLayersAndOfWhatIsNone) {
    const AcDbObjectId wall = layer(L"Wall"), none, line = this->line(zero());
    EXPECT_FALSE(Tools::lockLayer(wall, true));
    EXPECT_TRUE(Tools::lockLayer(wall, true));
    EXPECT_TRUE(Tools::isLockedLayer(wall));
    EXPECT_EQ(Tools::freezeLayer(wall, true), Acad::eOk);
    EXPECT_TRUE(Tools::isFrozenLayer(wall));
    EXPECT_TRUE(Tools::isLayerActive(wall)) << "whether it is frozen is not asked";
    Tools::lockLayers(arrayOf({none, wall}), false);
    Tools::freezeLayers(arrayOf({none, wall}), false);
    EXPECT_EQ(stateOf(wall), "");
    for (const AcDbObjectId id : {none, line}) {
        EXPECT_FALSE(Tools::isLayerActive(id));
        EXPECT_TRUE(Tools::isFrozenLayer(id));
        EXPECT_FALSE(Tools::isLockedLayer(id));
        EXPECT_FALSE(Tools::lockLayer(id, true));
        EXPECT_FALSE(Tools::activateLayer(true, id));
        EXPECT_FALSE(Tools::delLayer(id, true));
    }
    EXPECT_EQ(Tools::freezeLayer(none, true), Acad::eNullPtr);
    EXPECT_EQ(Tools::freezeLayer(line, true), Acad::eNotThatKindOfClass);
    AcDbDatabase other;
    const AcDbObjectId elsewhere = addRecord<AcDbLayerTable>(other, L"Wall");
    giveLockBack();
    EXPECT_EQ(Tools::freezeLayer(wall, true), Acad::eOk) << "it locks the layer's drawing for itself";
    EXPECT_EQ(Tools::freezeLayer(elsewhere, true), Acad::eOk);
    EXPECT_FALSE(Tools::lockLayer(wall, true));
    EXPECT_EQ(stateOf(wall), "frozen locked ");
    Tools::activateLayers(true, arrayOf({wall}));
    EXPECT_EQ(stateOf(wall), "locked ");
    Tools::activateLayer(false, wall);
    EXPECT_EQ(stateOf(wall), "locked ") << "that relies on the caller's lock";
}

TEST_F(LayerTools, layersAreSwitchedTogether) {
    const AcDbObjectId a = layer(L"A"), b = layer(L"B"), c = layer(L"C"), now = layer(L"Now");
    database().setClayer(now);
    setState(b, true, false);
    setState(c, false, true);
    const auto states = [&] { return stateOf(a) + "/" + stateOf(b) + "/" + stateOf(c); };
    Tools::activateLayers(true, arrayOf({a, b, c}));
    EXPECT_EQ(states(), "//");
    setState(b, true, false);
    Tools::activateLayers(false, arrayOf({a, b}));
    EXPECT_EQ(states(), "off frozen /off frozen /");
    setState(zero(), true, true);
    Tools::activateLayers(true, AcDbObjectIdArray());
    EXPECT_EQ(stateOf(zero()), "") << "none means layer 0";
    EXPECT_FALSE(Tools::activateLayer(true, a)) << "callers ignore it";
    EXPECT_EQ(stateOf(a), "");
    Tools::activateLayersExclusively(true, arrayOf({a}));
    EXPECT_EQ(states(), "off frozen //");
    Tools::activateLayersExclusively(false, arrayOf({a}));
    EXPECT_EQ(states(), "/off frozen /off frozen ");
    EXPECT_EQ(stateOf(zero()), "");
    EXPECT_EQ(stateOf(now), "off ") << "the current layer is never frozen";
    setState(zero(), true, false);
    Tools::activateLayersExclusively(false, arrayOf({zero()}));
    EXPECT_EQ(stateOf(zero()), "") << "listed, it is switched like any";
    Tools::activateAllLayers(false);
    EXPECT_EQ(states(), "off frozen /off frozen /off frozen ");
}

TEST_F(LayerTools, aDeletedLayerLeavesItsEntitiesOnLayerZeroOrTakesThemAlong) {
    for (const bool erases : {false, true}) {
        SCOPED_TRACE(erases);
        const AcDbObjectId wall = layer(L"P#1"), other = layer(L"P51");
        const AcDbObjectId part = block(erases ? L"PART1" : L"PART2");
        const Ids onWall = {line(wall), line(database().paperSpaceId(), wall), line(part, wall)};
        const AcDbObjectId onOther = line(other);
        setState(wall, false, false, true);
        EXPECT_EQ(Tools::getEntityCountOnLayer(wall), 2) << "the name is no pattern, blocks do not count";
        EXPECT_EQ(Tools::getEntityCountOnLayerEx(wall, nullptr), 3);
        database().setClayer(wall);
        EXPECT_FALSE(Tools::delLayer(wall, erases)) << "the current layer";
        EXPECT_FALSE(Tools::delLayer(zero(), erases));
        EXPECT_EQ(stateOf(wall), "locked ") << "a refused one is not unlocked";
        database().setClayer(zero());
        EXPECT_TRUE(Tools::delLayer(wall, erases));
        EXPECT_TRUE(wall.isErased());
        for (const AcDbObjectId id : onWall) {
            EXPECT_EQ(id.isErased(), erases);
            EXPECT_EQ(layerOf(id), erases ? wall : zero());
        }
        EXPECT_EQ(layerOf(onOther), other);
        EXPECT_TRUE(Tools::delLayer(other, true));
    }
}

TEST_F(LayerTools, whatCannotBeErasedIsTold) {
    const AcDbObjectId wall = layer(L"Wall");
    const AcDbObjectId first = line(wall), second = line(wall);
    EXPECT_TRUE(Tools::emptyLayer(layer(L"Empty")));
    setState(wall, false, false, true);
    EXPECT_FALSE(Tools::emptyLayer(wall));
    EXPECT_FALSE(first.isErased());
    EXPECT_FALSE(Tools::emptyLayers(AcDbObjectIdArray()));
    setState(wall, false, false, false);
    AcDbEntity* held = drawingtest::opened<AcDbEntity>(first, AcDb::kForNotify);
    EXPECT_FALSE(Tools::delLayer(wall, true));
    EXPECT_FALSE(wall.isErased());
    EXPECT_TRUE(second.isErased()) << "the walk goes on";
    held->close();
    EXPECT_TRUE(Tools::emptyLayer(wall));
    EXPECT_TRUE(first.isErased());
}

// A series in one walk against the steps one by one, on twin drawings.
TEST_F(LayerTools, seriesGiveWhatTheStepsGive) {
    for (const bool erases : {false, true}) {
        std::vector<std::vector<bool>> outcomes;
        for (const bool isSeries : {false, true}) {
            AcDbDatabase* drawing = &database();
            if (isSeries) {
                ASSERT_EQ(session.host().newDocument(), Acad::eOk);
                drawing = session.document().database();
            }
            const AcAxDocLock lock;
            std::mt19937 random(erases + 11);
            Ids layers = {drawing->layerZero()}, blocks = {drawing->modelSpaceId(), drawing->paperSpaceId()},
                entities;
            const std::wstring tag = erases ? L"E" : L"M";
            for (int i = 0; i < 12; ++i)
                layers.push_back(addRecord<AcDbLayerTable>(*drawing, tag + std::to_wstring(i)));
            for (int i = 0; i < 4; ++i)
                blocks.push_back(addRecord<AcDbBlockTable>(*drawing, tag + std::to_wstring(i)));
            for (int i = 0; i < 300; ++i)
                entities.push_back(line(blocks[random() % blocks.size()], layers[random() % layers.size()]));
            change<AcDbLayerTableRecord>(layers[3],
                                         [](AcDbLayerTableRecord& record) { record.setIsLocked(true); });
            const AcDbObjectIdArray chosen =
                arrayOf({layers[3], layers[0], layers[5], layers[5], layers[7], layers[12]});
            if (isSeries)
                Tools::delLayers(chosen, erases);
            else
                for (const AcDbObjectId each : chosen) Tools::delLayer(each, erases);
            std::vector<bool> outcome;
            for (const AcDbObjectId id : layers) outcome.push_back(id.isErased());
            for (const AcDbObjectId id : entities) {
                outcome.push_back(id.isErased());
                outcome.push_back(layerOf(id) == drawing->layerZero());
            }
            outcomes.push_back(std::move(outcome));
            EXPECT_TRUE(Tools::emptyLayers(arrayOf({layers[1], layers[2], layers[1]})));
            EXPECT_EQ(Tools::getEntityCountOnLayerEx(layers[1], drawing), 0);
            if (isSeries) continue;
        }
        EXPECT_EQ(outcomes[0], outcomes[1]);
        EXPECT_TRUE(std::count(outcomes[0].begin(), outcomes[0].end(), true) > 4);
    }
}

// Against a walk that asks every entity of every block, whatever the tools' ways.
TEST_F(LayerTools, entitiesOfLayersInRandomDrawings) {
    std::mt19937 random(5);
    const Ids layers = {zero(), layer(L"A"), layer(L"P#1"), layer(L"P51"), layer(L"x[1]"), layer(L"~A")};
    const Ids blocks = {database().modelSpaceId(), database().paperSpaceId(), block(L"ONE"), block(L"TWO")};
    Ids entities;
    for (int i = 0; i < 400; ++i)
        entities.push_back(line(blocks[random() % blocks.size()], layers[random() % layers.size()]));
    for (int i = 0; i < 40; ++i) drawingtest::erase(entities[random() % entities.size()]);
    const auto expected = [&](const std::set<AcDbObjectId>& wanted, bool inSpacesAlone) {
        std::set<AcDbObjectId> found;
        for (const AcDbObjectId id : entities) {
            if (id.isErased()) continue;
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            const bool isInSpace = entity->ownerId() == blocks[0] || entity->ownerId() == blocks[1];
            if (wanted.contains(entity->layerId()) && (isInSpace || !inSpacesAlone)) found.insert(id);
        }
        return found;
    };
    const auto asSet = [](const AcDbObjectIdArray& ids) {
        const std::set<AcDbObjectId> found(ids.begin(), ids.end());
        EXPECT_EQ(static_cast<int>(found.size()), ids.length()) << "each once";
        return found;
    };
    for (const AcDbObjectId each : layers) {
        SCOPED_TRACE(drawingtest::narrow(nameOf(each)));
        const bool hasBracket = nameOf(each).find(L'[') != std::wstring::npos;
        AcDbObjectIdArray ids = arrayOf({each});
        EXPECT_TRUE(Tools::getEntitiesFromLayer(each, ids));
        EXPECT_EQ(asSet(ids), expected({each}, !hasBracket));
        EXPECT_EQ(Tools::getEntityCountOnLayer(each), static_cast<long>(expected({each}, true).size()));
        EXPECT_EQ(Tools::getEntityCountOnLayerEx(each, nullptr),
                  static_cast<long>(expected({each}, false).size()));
        ids.removeAll();
        ids.append(entities[0]);
        EXPECT_TRUE(Tools::getEntitiesFromLayerEx(each, ids));
        auto whole = expected({each}, false);
        whole.insert(entities[0]);
        EXPECT_EQ(asSet(ids), whole) << "what was there stays, and does not come twice";
    }
    AcDbObjectIdArray ids = arrayOf({zero()});
    EXPECT_TRUE(Tools::getEntitiesFromLayers(arrayOf({layers[1], layers[2]}), ids));
    EXPECT_EQ(asSet(ids), expected({layers[1], layers[2]}, false));
    EXPECT_TRUE(Tools::getEntitiesFromLayers(AcDbObjectIdArray(), ids));
    EXPECT_EQ(ids.length(), 0);
    ids.append(zero());
    EXPECT_FALSE(Tools::getEntitiesFromLayer(AcDbObjectId(), ids));
    EXPECT_EQ(ids.length(), 0);
    EXPECT_EQ(Tools::getEntityCountOnLayer(AcDbObjectId()), 0);
}

TEST_F(LayerTools, referencesAreFollowedWithTheirTransforms) {
    const AcDbObjectId wall = layer(L"Wall"), door = layer(L"Door"), other = layer(L"Other");
    const AcDbObjectId inner = block(L"INNER"), outer = block(L"OUTER");
    const AcDbObjectId inInner = line(inner, door);
    line(inner, other);
    reference(outer, inner, other, 10.0);
    const AcDbObjectId inOuter = line(outer, wall);
    reference(outer, inner, other, 100.0);
    const AcDbObjectId plain = line(wall);
    const AcDbObjectId placed = reference(database().modelSpaceId(), outer, wall, 1000.0);
    line(database().paperSpaceId(), wall);
    line(door); // of a layer that is not asked for

    const AcDbObjectIdArray filter = arrayOf({wall, door});
    AcDbObjectIdArray ids;
    Tools::recursiveGetEntitiesFromLayer(wall, ids, filter);
    EXPECT_EQ(listOf(ids), (Ids{plain, door, wall, door}))
        << "inside of blocks it is the layers that are given";
    ids.removeAll();
    Tools::recursiveGetEntitiesFromLayers(arrayOf({wall, other}), ids, filter);
    EXPECT_EQ(listOf(ids), (Ids{plain, door, wall, door}));

    ids.removeAll();
    std::vector<AcGeMatrix3d> matrices;
    Tools::recursiveGetEntitiesFromLayersEx(arrayOf({wall}), ids, filter, matrices);
    EXPECT_EQ(listOf(ids), (Ids{plain, inInner, inOuter, inInner}));
    std::vector<double> shifts;
    for (const AcGeMatrix3d& matrix : matrices) shifts.push_back(matrix.translation().x);
    EXPECT_EQ(shifts, (std::vector<double>{0, 1010, 1010, 1110})) << "the running matrix is not taken back";

    ids.removeAll();
    Tools::recursiveGetBlockEntities(nullptr, ids, filter);
    AcGeMatrix3d matrix;
    Tools::recursiveGetBlockEntitiesEx(nullptr, ids, filter, matrix, matrices);
    EXPECT_EQ(ids.length(), 0);
    const AcDbObjectPointer<AcDbBlockReference> open(placed, AcDb::kForRead);
    Tools::recursiveGetBlockEntitiesEx(open.object(), ids, arrayOf({wall}), matrix, matrices);
    EXPECT_EQ(listOf(ids), (Ids{inOuter}));
}

// What the host is told to show anew, by a port that watches from the document's beginning.
TEST_F(LayerTools, theDisplayFollows) {
    session.port().isWatchingDisplay = true;
    ASSERT_EQ(session.host().newDocument(), Acad::eOk);
    const AcAxDocLock lock;
    const AcDbObjectId wall = layer(L"Wall"), other = layer(L"Other");
    const AcDbObjectId plain = line(wall), generated = line(wall), unmarked = line(wall),
                       elsewhere = line(other);
    for (const auto& [id, mark] : {std::pair(generated, 1), std::pair(unmarked, 0)})
        VEXODatabaseTools::setIntValueInEntityXData(id, L"ORDANE", L"Dimension generated by VEXODimension",
                                                    mark);
    line(database().paperSpaceId(), wall);
    const auto redrawn = [&](const std::function<void()>& act) {
        session.port().displayChanges.clear();
        act();
        Ids ids;
        for (const hostkit::DisplayChange& change : session.port().displayChanges) {
            AcDbObjectId id;
            if (change.kind != hostkit::DisplayChange::Kind::redraw) continue;
            database().getAcDbObjectId(id, false, AcDbHandle(change.handle));
            ids.push_back(id);
        }
        return ids;
    };
    AcDbObjectIdArray ids;
    const Ids byName = {plain, unmarked}, byLayers = {plain, generated, unmarked};
    setState(wall, false, false, true);
    EXPECT_EQ(redrawn([&] { Tools::redrawLayerEntities(L"wall", ids, false); }), byName);
    EXPECT_EQ(ids.length(), 4) << "the model space, for the next call";
    EXPECT_EQ(redrawn([&] { Tools::redrawLayerEntities(arrayOf({wall})); }), byLayers);
    EXPECT_EQ(stateOf(wall), "locked ");
    ids = arrayOf({elsewhere, unmarked});
    EXPECT_EQ(redrawn([&] { Tools::redrawLayerEntities(L"Wall", ids, true); }), (Ids{unmarked}))
        << "of the array alone";
    EXPECT_EQ(redrawn([&] { Tools::redrawLayerEntities(L"none", ids, false); }), Ids{});

    EXPECT_EQ(redrawn([&] { Tools::activateLayer(false, wall); }), Ids{});
    EXPECT_EQ(redrawn([&] {
                  Tools::redrawLayerEntities(arrayOf({wall, other, AcDbObjectId()}));
              }),
              (Ids{elsewhere}))
        << "what is hidden is not drawn";
    EXPECT_EQ(redrawn([&] {
                  Tools::activateLayers(true, arrayOf({other, wall}));
              }),
              byName)
        << "the other one was on";
    EXPECT_EQ(redrawn([&] { Tools::activateLayers(false, arrayOf({wall})); }), Ids{});
    EXPECT_EQ(redrawn([&] { Tools::activateLayer(true, wall); }), byName);
    EXPECT_EQ(redrawn([&] { Tools::activateLayersExclusively(true, arrayOf({wall})); }), byName)
        << "those just hidden";
    EXPECT_EQ(redrawn([&] { Tools::activateLayersExclusively(false, arrayOf({wall})); }), (Ids{elsewhere}));
}
