#include "commandtest.h"
#include "documentselection.h"
#include "drawingparts.h"
#include "temporaryfolder.h"

#include "acdocman.h"
#include "acedinpt.h"
#include "dbents.h"
#include "dbminsert.h"

#include <algorithm>
#include <map>
#include <random>

namespace {

using drawingtest::addRecord;
using drawingtest::append;
using drawingtest::change;

using Indexes = std::vector<int>;

constexpr int noSet = 0; // "untouched" in a name

// Upright lines at x = 0, 100, 200 ..., each on the layer or in the state that the name says.
class Selections : public CommandTest {
protected:
    enum Line { plain, red, off, frozen, locked, invisible, onSheet, lineCount };

    Selections() {
        for (int i = 0; i < onSheet; ++i)
            lines.push_back(append(database().modelSpaceId(), newLine(100.0 * i)));
        lines.push_back(append(database().paperSpaceId(), newLine(0.0)));
        setColor(red, 1);
        putOn(off, L"OFF", [](AcDbLayerTableRecord& layer) { layer.setIsOff(true); });
        putOn(frozen, L"FROZEN", [](AcDbLayerTableRecord& layer) { layer.setIsFrozen(true); });
        putOn(locked, L"LOCKED", [](AcDbLayerTableRecord& layer) { layer.setIsLocked(true); });
        change<AcDbEntity>(lines[invisible], [](AcDbEntity& line) { line.setVisibility(AcDb::kInvisible); });
    }

    static AcDbLine* newLine(double x) { return new AcDbLine(AcGePoint3d(x, 0, 0), AcGePoint3d(x, 10, 0)); }
    void setColor(int line, int color) {
        change<AcDbEntity>(lines[line], [&](AcDbEntity& entity) { entity.setColorIndex(color); });
    }
    template <class Set>
    void putOn(int line, const wchar_t* name, Set set) {
        const AcDbObjectId layer = addRecord<AcDbLayerTable>(database(), name);
        change<AcDbEntity>(lines[line], [&](AcDbEntity& entity) { entity.setLayer(layer); });
        change<AcDbLayerTableRecord>(layer, set);
    }

    Indexes indexesOf(const ads_name set) const {
        Indexes indexes;
        Adesk::Int32 length = 0;
        EXPECT_EQ(acedSSLength(set, &length), RTNORM);
        for (int i = 0; i < length; ++i) {
            ads_name name;
            AcDbObjectId id;
            EXPECT_EQ(acedSSName(set, i, name), RTNORM);
            acdbGetObjectId(id, name);
            const auto place = std::find(lines.begin(), lines.end(), id);
            indexes.push_back(static_cast<int>(place - lines.begin()));
        }
        return indexes;
    }
    /// What a call selects, and that no set is made unless it selects.
    Indexes select(int expected, const wchar_t* mode, const void* first = nullptr,
                   const void* second = nullptr, const resbuf* filter = nullptr) {
        ads_name set = {noSet, noSet};
        EXPECT_EQ(acedSSGet(mode, first, second, filter, set), expected);
        const Indexes found = expected == RTNORM ? indexesOf(set) : Indexes();
        EXPECT_EQ(acedSSFree(set), expected == RTNORM ? RTNORM : RTERROR);
        return found;
    }
    /// The same at the prompt, in a script.
    Indexes ask(int expected, const std::wstring& answers, const wchar_t* mode = nullptr,
                const void* first = nullptr, const void* second = nullptr) {
        Indexes found;
        run(L"GO " + answers, [&] { found = select(expected, mode, first, second); });
        return found;
    }
    void imply(const Indexes& indexes) {
        ads_name set;
        ASSERT_EQ(acedSSAdd(nullptr, nullptr, set), RTNORM);
        for (const int each : indexes) {
            ads_name entity;
            acdbGetAdsName(entity, lines[each]);
            EXPECT_EQ(acedSSAdd(entity, set, set), RTNORM);
        }
        EXPECT_EQ(acedSSSetFirst(nullptr, set), RTNORM);
        acedSSFree(set);
    }
    std::wstring handleOf(int line) const {
        wchar_t text[17];
        lines[line].handle().getIntoAsciiBuffer(text);
        return L"0" + std::wstring(text);
    }

    std::vector<AcDbObjectId> lines;
};

} // namespace

TEST_F(Selections, whatCanBeSeenIsPickedAndTheWholeDrawingIsAll) {
    const ads_point low = {-1, -1, 0}, high = {1000, 20, 0}, onRed = {100, 5, 0}, onOff = {200, 5, 0};
    const ads_point within = {-1, -1, 0}, across = {100, 5, 0};
    EXPECT_EQ(select(RTNORM, L"_X"), (Indexes{plain, red, off, frozen, locked, invisible, onSheet}));
    EXPECT_EQ(select(RTNORM, L"_A"), (Indexes{plain, red, off}));
    EXPECT_EQ(select(RTNORM, L"_W", low, high), (Indexes{plain, red, locked}));
    EXPECT_EQ(select(RTNORM, L"_W:L", low, high), (Indexes{plain, red}));
    EXPECT_EQ(select(RTNORM, L"c", within, across), (Indexes{plain, red}));
    EXPECT_EQ(select(RTNORM, L"_W", within, (const ads_point){100, 10, 0}), (Indexes{plain, red}));
    EXPECT_EQ(select(RTERROR, L"_W", within, across).size(), 0u) << "half a line is not within";
    EXPECT_EQ(select(RTNORM, L"_B", across, within), (Indexes{plain, red})) << "to the left it touches";
    EXPECT_EQ(select(RTERROR, L"_B", within, across).size(), 0u);
    EXPECT_EQ(select(RTNORM, nullptr, onRed), (Indexes{red}));
    EXPECT_EQ(select(RTNORM, L"_.", onRed), (Indexes{red}));
    EXPECT_EQ(select(RTERROR, L"", onOff).size(), 0u);
    EXPECT_EQ(select(RTNORM, L"_L"), (Indexes{locked})) << "the last that can be seen";
    session.document().setSheetViewport(1);
    resbuf* filter = acutBuildList(62, 1, 0);
    EXPECT_EQ(select(RTNORM, L"_X", nullptr, nullptr, filter), (Indexes{red}));
    EXPECT_EQ(select(RTERROR, L"_L", nullptr, nullptr, filter).size(), 0u);
    acutRelRb(filter);
}

TEST_F(Selections, polygonsAndFencesTakeRecordLists) {
    const auto listOf = [](std::initializer_list<AcGePoint3d> points) {
        resbuf* list = nullptr;
        resbuf** link = &list;
        for (const AcGePoint3d& point : points) {
            *link = acutNewRb(RT3DPOINT);
            std::copy_n(&point.x, 3, (*link)->resval.rpoint);
            link = &(*link)->rbnext;
        }
        return drawingtest::List(list);
    };
    const auto around =
        listOf({{-5, -5, 0}, {105, -5, 0}, {105, 5, 0}, {50, 5, 0}, {50, 15, 0}, {-5, 15, 0}});
    EXPECT_EQ(select(RTNORM, L"_WP", around.get()), (Indexes{plain}));
    EXPECT_EQ(select(RTNORM, L"_CP", around.get()), (Indexes{plain, red}));
    EXPECT_EQ(select(RTNORM, L"_F", listOf({{50, 5, 0}, {150, 5, 0}}).get()), (Indexes{red}));
    for (const wchar_t* mode : {L"_WP", L"_CP", L"_F"}) {
        select(RTERROR, mode);
        select(RTERROR, mode, listOf({{0, 5, 0}}).get());
    }
}

TEST_F(Selections, modesThatAreNoneSelectNothing) {
    const ads_point corner = {0, 0, 0};
    for (const wchar_t* mode : {L"Q", L"_XX", L"_:", L"_:Z", L"_X:", L"_:S$", L"+W", L"_: S", L"_:?"})
        EXPECT_EQ(select(RTERROR, mode, corner, corner).size(), 0u) << hostkit::utf8FromWide(mode);
    for (const wchar_t* mode : {L"_W", L"_C", L"_G", L"_."}) select(RTERROR, mode);
    resbuf* unbalanced = acutBuildList(-4, L"<or", 0);
    select(RTERROR, L"_X", nullptr, nullptr, unbalanced);
    acutRelRb(unbalanced);
    select(RTERROR, L"_:S"); // no command runs
    giveLockBack();
    documents.closeDocument(&session.document());
    select(RTERROR, L"_X");
    EXPECT_EQ(acedSSSetFirst(nullptr, nullptr), RTERROR);
    ASSERT_EQ(host.newDocument(), Acad::eOk);
}

TEST_F(Selections, aScriptAnswersThePrompt) {
    struct Case {
        const wchar_t* answers;
        int code;
        Indexes found;
    };
    const Case cases[] = {
        {L"", RTERROR, {}},
        {L"0,5", RTNORM, {plain}},
        {L"100,5 0,5 100,5", RTNORM, {red, plain}},
        {L"W -1,-1 101,11", RTNORM, {plain, red}},
        {L"_window -1,-1 50,5", RTERROR, {}},
        {L"c -1,-1 50,5", RTNORM, {plain}},
        {L"BOX 50,5 -1,-1", RTNORM, {plain}},
        {L"50,5 -1,-1", RTNORM, {plain}},  // a miss begins a window
        {L"-1,-1 50,11", RTNORM, {plain}}, // that takes to the right what is within
        {L"-1,-1", RTERROR, {}},
        {L"ALL", RTNORM, {plain, red, off}},
        {L"L", RTNORM, {locked}},
        {L"ALL R 0,5 200,5", RTNORM, {red, off}}, // what is off cannot be picked, nor taken out by a pick
        {L"ALL R L A L", RTNORM, {plain, red, off, locked}},
        {L"0,5 100,5 U", RTNORM, {plain}},
        {L"0,5 U U 100,5", RTNORM, {red}},
        {L"ALL R W -1,-1 101,11 U", RTNORM, {plain, red, off}},
        {L"F 50,5 450,5", RTNORM, {red, locked}},
        {L"F 50,5 450,5 undo 150,5", RTNORM, {red}},
        {L"WP -1,-1 101,-1 101,11 -1,11", RTNORM, {plain, red}},
        {L"CP 50,1 101,1 101,5", RTNORM, {red}},
        {L"M 0,5 100,5 900,900", RTNORM, {plain, red}},
        {L"SI 900,900 901,901 0,5 100,5", RTNORM, {plain}}, // the next that finds something is the last
        {L"AU 0,5", RTNORM, {plain}},
        {L"G none 0,5", RTNORM, {plain}}, // a group that is not there is told
        {L"? 0,5", RTNORM, {plain}},
        {L"bananas 0,5", RTREJ, {}},
        {L"0,5 1e400,0", RTREJ, {}},
        {L"W bananas", RTREJ, {}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(ask(each.code, each.answers), each.found) << hostkit::utf8FromWide(each.answers);
    EXPECT_NE(port.printed.find(L"There is no group \"none\""), std::wstring::npos);
    EXPECT_EQ(ask(RTNORM, handleOf(off) + L" " + handleOf(onSheet)), (Indexes{off}))
        << "by its handle what is off, but nothing of another space";
}

TEST_F(Selections, whatWasFoundIsTold) {
    ask(RTNORM, L"0,5 C -1,-1 101,11 R 0,5 0,5 " + handleOf(onSheet), L"_:L");
    EXPECT_EQ(port.printed, L"\n1 found\n\n2 found, 1 selected before\n\n1 found, 1 removed; 1 in all\n"
                            L"\n1 found, 0 removed; 1 in all\n"
                            L"\n0 found, 1 not in the current space, 0 removed; 1 in all\n");
}

TEST_F(Selections, optionsOfThePrompt) {
    const wchar_t* prompts[] = {L"Bars: ", L"Not these: "};
    EXPECT_EQ(ask(RTNORM, L"0,5 100,5", L"_:S"), (Indexes{plain}));
    EXPECT_EQ(ask(RTNORM, L"900,900 901,901 0,5 100,5", L"_:S"), (Indexes{plain}));
    EXPECT_EQ(ask(RTERROR, L"900,900 0,5", L"_+.:S").size(), 0u) << "a miss ends it";
    EXPECT_EQ(ask(RTNORM, L"400,5 0,5", L"_:L"), (Indexes{plain}));
    EXPECT_EQ(ask(RTNORM, L"0,5 0,5", L"_:D"), (Indexes{plain, plain}));
    lines.push_back(append(database().modelSpaceId(), newLine(0.0)));
    EXPECT_EQ(ask(RTNORM, L"0,5"), (Indexes{lineCount})) << "the last drawn lies on top";
    EXPECT_EQ(ask(RTNORM, L"0,5", L"_:E"), (Indexes{plain, lineCount}));
    ask(RTKWORD, L"eve", L"_:$:S:K", prompts, L"EVEry");
}

TEST_F(Selections, keywordsEndThePromptAndCancelTakesAllBack) {
    const wchar_t* prompts[] = {L"Bars: ", L"Not these: "};
    CString keyword;
    run(L"GO 0,5 eve", [&] {
        select(RTKWORD, L"_:$:K", prompts, L"EVEry Last");
        EXPECT_EQ(acedGetInput(keyword), RTNORM);
    });
    EXPECT_EQ(keyword.view(), L"EVEry");
    run(L"GO last", [&] { select(RTKWORD, L"_:$:K", prompts, L"EVEry Last"); }); // before the prompt's own
    run(L"GO x", [&] {
        acedInitGet(0, L"Xyz");
        select(RTKWORD, nullptr);
    });
    // A person: a wrong answer is asked again, Remove has a prompt of its own, and the end of all input
    // breaks off.
    port.lines = {L"bananas", L"0,5", L"r", L""};
    run(
        L"GO", [&] { EXPECT_EQ(select(RTNORM, L"_:$", prompts), (Indexes{plain})); },
        hostkit::MoreInput::ask);
    EXPECT_EQ(port.prompts, (std::vector<std::wstring>{L"Bars: ", L"Bars: ", L"Bars: ", L"Not these: "}));
    port.lines = {L"0,5"};
    run(
        L"GO", [&] { select(RTERROR, nullptr); }, hostkit::MoreInput::ask);
}

TEST_F(Selections, previousAndImpliedBelongToTheDocument) {
    const Indexes two = {red, plain};
    select(RTERROR, L"_P");
    select(RTERROR, L"_I");
    ask(RTNORM, L"100,5 0,5");
    EXPECT_EQ(select(RTNORM, L"_P"), two);
    EXPECT_EQ(ask(RTNORM, L"P"), two);
    drawingtest::erase(lines[red]);
    EXPECT_EQ(select(RTNORM, L"_P"), (Indexes{plain}));
    drawingtest::erase(lines[red], false);

    imply({red});
    select(RTNORM, L"_I");
    EXPECT_EQ(select(RTNORM, L"_P"), (Indexes{plain})) << "asking what is implied is no selection";
    imply(two);
    EXPECT_EQ(select(RTNORM, L"_I"), two);
    EXPECT_EQ(select(RTNORM, L"_I"), two) << "it stays";
    resbuf *grips = nullptr, *picks = nullptr;
    EXPECT_EQ(acedSSGetFirst(&grips, &picks), RTNORM);
    ASSERT_NE(picks, nullptr);
    EXPECT_EQ(grips, nullptr);
    EXPECT_EQ(indexesOf(picks->resval.rlname), two);
    acedSSFree(picks->resval.rlname);
    acutRelRb(picks);
    EXPECT_EQ(select(RTNORM, nullptr), two);
    select(RTERROR, L"_I"); // used up by a plain call
    run(L"GO 0,5", [&] { imply(two); });
    select(RTERROR, L"_I"); // gone with the command
}

TEST_F(Selections, groupsOfAFileAreSelectedByName) {
    const TemporaryFolder folder;
    const auto line = [](const std::string& handle, const std::string& layer) {
        return "0\nLINE\n5\n" + handle + "\n100\nAcDbEntity\n8\n" + layer +
               "\n100\nAcDbLine\n10\n0.0\n20\n0.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n";
    };
    folder.write(
        "groups.dxf",
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" +
            line("20", "0") + line("21", "0") + line("22", "0") + line("23", "0") +
            "0\nENDSEC\n0\nSECTION\n2\nOBJECTS\n"
            "0\nDICTIONARY\n5\nA\n330\n0\n100\nAcDbDictionary\n3\nACAD_GROUP\n350\nB\n"
            "0\nDICTIONARY\n5\nB\n330\nA\n100\nAcDbDictionary\n3\nStairs\n350\nC\n"
            "0\nGROUP\n5\nC\n330\nB\n100\nAcDbGroup\n300\n\n70\n0\n71\n1\n340\n23\n340\n20\n340\n21\n"
            "0\nENDSEC\n0\nEOF\n");
    ASSERT_EQ(host.openDocument(hostkit::wideFromUtf8(folder / "groups.dxf")), Acad::eOk);
    const AcAxDocLock lock;
    lines.clear();
    for (const wchar_t* handle : {L"20", L"21", L"22", L"23"}) {
        lines.emplace_back();
        database().getAcDbObjectId(lines.back(), false, AcDbHandle(handle));
    }
    EXPECT_EQ(select(RTNORM, L"_G", L"STAIRS"), (Indexes{3, 0, 1}));
    EXPECT_EQ(ask(RTNORM, L"G stairs R 023"), (Indexes{0, 1}));
    drawingtest::erase(lines[0]);
    EXPECT_EQ(select(RTNORM, L"_G", L"Stairs"), (Indexes{3, 1}));
    select(RTERROR, L"_G", L"none");
}

TEST_F(Selections, commandsFindTheImpliedSelectionByTheirFlags) {
    const auto atEndOf = [&](Adesk::Int32 flags) {
        host.commands().addCommand(L"T2", L"FLAGGED", nullptr, flags, runBody);
        int found = 0;
        imply({red});
        body = [&] {
            found = static_cast<int>(select(flags & ACRX_CMD_USEPICKSET ? RTNORM : RTERROR, L"_I").size());
        };
        host.run(L"FLAGGED");
        host.commands().removeGroup(L"T2");
        const bool isLeft = !session.document().selection().implied.empty();
        imply({});
        return std::pair(found, isLeft);
    };
    EXPECT_EQ(atEndOf(ACRX_CMD_MODAL), std::pair(0, false));
    EXPECT_EQ(atEndOf(ACRX_CMD_USEPICKSET), std::pair(1, false));
    EXPECT_EQ(atEndOf(ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW), std::pair(1, true));
    const auto switched = [](int on) {
        hostkit::SystemValue value{RTSHORT, on};
        return value;
    };
    ASSERT_EQ(host.variables().set(L"PICKFIRST", switched(0)), hostkit::VariableResult::ok);
    run(L"GO 0,5", [&] {
        imply({red});
        EXPECT_EQ(select(RTNORM, nullptr), (Indexes{plain})) << "asked, as PICKFIRST is 0";
    });
    host.variables().set(L"PICKFIRST", switched(1));
}

TEST_F(Selections, namesOfSetsAreNeverUsedAgain) {
    ads_name first, second, entity, no = {noSet, noSet};
    acdbGetAdsName(entity, lines[plain]);
    ASSERT_EQ(acedSSAdd(entity, nullptr, first), RTNORM);
    EXPECT_EQ(acedSSMemb(entity, first), RTNORM);
    EXPECT_EQ(acedSSAdd(entity, first, first), RTNORM);
    EXPECT_EQ(indexesOf(first), (Indexes{plain}));
    EXPECT_EQ(acedSSAdd(first, first, first), RTERROR) << "a set is no entity";
    EXPECT_EQ(acedSSAdd(nullptr, first, first), RTERROR);
    EXPECT_EQ(acedSSDel(entity, first), RTNORM);
    EXPECT_EQ(acedSSDel(entity, first), RTERROR);
    EXPECT_EQ(acedSSMemb(entity, first), RTERROR);
    Adesk::Int32 length = -1;
    EXPECT_EQ(acedSSName(first, 0, entity), RTERROR);
    EXPECT_EQ(acedSSFree(first), RTNORM);
    ASSERT_EQ(acedSSAdd(nullptr, nullptr, second), RTNORM);
    EXPECT_EQ(acedSSFree(first), RTERROR);
    EXPECT_EQ(acedSSLength(first, &length), RTERROR);
    EXPECT_EQ(acedSSLength(entity, &length), RTERROR);
    EXPECT_EQ(acedSSLength(no, &length), RTERROR);
    EXPECT_EQ(length, -1);
    EXPECT_EQ(acedSSFree(second), RTNORM);
    EXPECT_EQ(acedSSFree(nullptr), RTERROR);
    ads_name left;
    acedSSAdd(nullptr, nullptr, left);
    EXPECT_EQ(session.leftovers().size(), 2u) << "the set, beside the lock of the test";
    acedSSFree(left);
}

TEST_F(Selections, picksGoIntoReferences) {
    const AcDbObjectId inner = addRecord<AcDbBlockTable>(database(), L"INNER");
    const AcDbObjectId outer = addRecord<AcDbBlockTable>(database(), L"OUTER");
    lines.push_back(append(inner, newLine(0.0)));
    auto* innerReference = new AcDbBlockReference(AcGePoint3d(5, 0, 0), inner);
    innerReference->setScaleFactors(AcGeScale3d(2, 2, 2));
    const AcDbObjectId within = append(outer, innerReference);
    const AcDbObjectId whole =
        append(database().modelSpaceId(), new AcDbBlockReference(AcGePoint3d(0, 100, 0), outer));
    const int innermost = lineCount;

    EXPECT_EQ(ask(RTNORM, L"5,110 5,115", L"_:n"), (Indexes{innermost}));
    setAllowDuplicateSelection(&session.document(), true);
    session.document().inputPointManager()->turnOnSubentitySelection();
    EXPECT_EQ(ask(RTNORM, L"5,110 5,115"), (Indexes{innermost, innermost}));
    session.document().inputPointManager()->turnOffSubentitySelection();
    EXPECT_EQ(session.document().inputPointManager()->turnOffSubentitySelection(), Acad::eInvalidInput);
    EXPECT_TRUE(setAllowDuplicateSelection(&session.document(), false));

    ads_name entity;
    ads_point point = {5, 110, 0};
    ads_matrix matrix;
    resbuf* containers = nullptr;
    ASSERT_EQ(acedNEntSelP(nullptr, entity, point, 1, matrix, &containers), RTNORM);
    std::vector<AcDbObjectId> chain;
    for (const resbuf* each = containers; each; each = each->rbnext) {
        AcDbObjectId id;
        EXPECT_EQ(each->restype, RTENAME);
        acdbGetObjectId(id, each->resval.rlname);
        chain.push_back(id);
    }
    acutRelRb(containers);
    EXPECT_EQ(chain, (std::vector<AcDbObjectId>{within, whole}));
    EXPECT_EQ(entity[0], lines[innermost].asOldId());
    EXPECT_EQ(matrix[0][0], 2.0);
    EXPECT_EQ(matrix[0][3], 5.0);
    EXPECT_EQ(matrix[1][3], 100.0);
    EXPECT_EQ(matrix[3][3], 1.0);
    point[0] = 900;
    EXPECT_EQ(acedNEntSelP(nullptr, entity, point, 1, nullptr, nullptr), RTERROR);

    run(L"GO 5,110", [&] {
        ads_name set;
        ASSERT_EQ(acedSSGet(L"_:n", nullptr, nullptr, nullptr, set), RTNORM);
        resbuf* list = nullptr;
        ASSERT_EQ(acedSSNameX(&list, set, 0), RTNORM);
        std::vector<int> types;
        for (const resbuf* each = list; each; each = each->rbnext) types.push_back(each->restype);
        EXPECT_EQ(types, (std::vector<int>{RTSHORT, RTENAME, RTSHORT, RTENAME, RTENAME, RT3DPOINT, RT3DPOINT,
                                           RT3DPOINT, RT3DPOINT, RTLB, RTSHORT, RT3DPOINT, RTLE}));
        EXPECT_EQ(list->resval.rint, 1);
        EXPECT_EQ(list->rbnext->resval.rlname[0], lines[innermost].asOldId());
        acutRelRb(list);
        EXPECT_EQ(acedSSNameX(&list, set, 1), RTERROR);
        acedSSFree(set);
    });
}

TEST_F(Selections, oneEntityIsPickedOrNamed) {
    ads_name entity = {noSet, noSet};
    ads_point point = {-7, -7, -7};
    struct Case {
        const wchar_t* answer;
        int code;
        int line;
    };
    for (const Case& each : {Case{L"100,5", RTNORM, red},
                             {L"last", RTNORM, locked},
                             {L"", RTNONE, -1},
                             {L"900,5", RTERROR, -1},
                             {L"bananas", RTREJ, -1},
                             {L"opt", RTKWORD, -1}}) {
        entity[0] = noSet;
        run(std::wstring(L"GO ") + each.answer, [&] {
            acedInitGet(0, L"OPTion");
            EXPECT_EQ(acedEntSel(nullptr, entity, point), each.code) << hostkit::utf8FromWide(each.answer);
        });
        EXPECT_EQ(entity[0], each.line < 0 ? noSet : lines[each.line].asOldId());
        EXPECT_TRUE(each.line != red || point[0] == 100.0);
    }
    run(L"GO " + handleOf(frozen), [&] { EXPECT_EQ(acedEntSel(nullptr, entity, nullptr), RTNORM); });
    EXPECT_EQ(entity[0], lines[frozen].asOldId());
}

TEST_F(Selections, pointsAreTheUsersAndPicksAreTheViews) {
    const AcDbObjectId active = [&] {
        const AcDbSymbolTablePointer<AcDbViewportTable> table(&database(), AcDb::kForRead);
        AcDbObjectId id;
        table->getAt(L"*Active", id);
        return id;
    }();
    // The pick box is three of the screen's 1080 points to each side.
    change<AcDbViewportTableRecord>(active,
                                    [](AcDbViewportTableRecord& record) { record.setHeight(1080.0); });
    EXPECT_EQ(ask(RTNORM, L"102.9,5"), (Indexes{red}));
    ask(RTERROR, L"103.1,5");
    hostkit::SystemValue box{RTSHORT, 10};
    host.variables().set(L"PICKBOX", box);
    EXPECT_EQ(ask(RTNORM, L"103.1,5"), (Indexes{red}));
    box.integer = 3;
    host.variables().set(L"PICKBOX", box);
    // From the side, an upright line is a point at its height.
    change<AcDbViewportTableRecord>(
        active, [](AcDbViewportTableRecord& record) { record.setViewDirection(AcGeVector3d(0, -1, 0)); });
    const AcDbObjectId raised =
        append(database().modelSpaceId(), new AcDbLine(AcGePoint3d(700, 0, 50), AcGePoint3d(700, 99, 50)));
    lines.push_back(raised);
    EXPECT_EQ(ask(RTNORM, L"W 690,0,40 710,0,60"), (Indexes{lineCount}));
    ask(RTERROR, L"W 690,0,10 710,0,40");
}
