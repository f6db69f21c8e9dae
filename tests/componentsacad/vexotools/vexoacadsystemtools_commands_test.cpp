// Variables, running commands and what is sent to the host.
#include "vexoacadsystemtools.h"

#include "aced.h"
#include "cwnd.h"
#include "hosttest.h"
#include "vexoregistrytools.h"

#include <functional>

namespace {

using Tools = VEXOAcadSystemTools;
using Notes = std::vector<std::wstring>;

std::vector<std::function<void()>> bodies; // of the running GOs, the innermost last
void runBody() {
    const auto body = bodies.back();
    body();
}
Notes notes;
void note() {
    CString text;
    notes.push_back(acedGetString(0, L"", text) == RTNORM ? text.GetString() : L"?");
}

class SystemTools : public hostkit::HostTest {
protected:
    void SetUp() override {
        add(L"GO", L"ALLER", runBody);
        add(L"NOTE", L"NOTER", note);
        notes.clear();
        bodies.clear();
    }
    void add(const wchar_t* name, const wchar_t* localName, AcRxFunctionPtr function) {
        ASSERT_EQ(session.host().commands().addCommand(L"T", name, localName, ACRX_CMD_MODAL, function),
                  Acad::eOk)
            << name;
    }
    hostkit::CommandResult go(std::function<void()> what, const wchar_t* line = L"GO") {
        bodies.push_back(std::move(what));
        const hostkit::CommandResult result = session.host().run(line);
        bodies.pop_back();
        return result;
    }
    bool isTold(const wchar_t* part) {
        for (const std::wstring& each : session.port().problems)
            if (each.find(part) != std::wstring::npos) return true;
        return session.port().printed.find(part) != std::wstring::npos;
    }
};

TEST_F(SystemTools, VariablesAreReadInTheirOwnTypeAlone) {
    double real = -1;
    AcGePoint2d flat(-1, -1);
    AcGePoint3d point(-1, -1, -1);
    ASSERT_EQ(Tools::setSysVar(L"UserI1", 70000), Acad::eOk); // its low 16 bits
    ASSERT_EQ(Tools::setSysVar(L"LTSCALE", 2.5), Acad::eOk);
    ASSERT_EQ(Tools::setSysVar(L"LIMMAX", AcGePoint2d(3, 4)), Acad::eOk);
    ASSERT_EQ(Tools::setSysVar(L"INSBASE", AcGePoint3d(1, 2, 3)), Acad::eOk);

    // Another type, or none of that name: nothing is read, and a text is not left lying about.
    for (const wchar_t* name : {L"LTSCALE", L"LIMMAX", L"INSBASE", L"USERI1", L"ACADVER", L"NOSUCH", L""}) {
        const std::wstring given = name;
        EXPECT_EQ(Tools::getSysVar(name) != 0, given == L"USERI1") << name;
        Tools::getSysVar(name, real);
        EXPECT_EQ(real, given == L"LTSCALE" ? 2.5 : -1) << name;
        real = -1;
        EXPECT_EQ(Tools::getSysVar(name, flat), given == L"LIMMAX") << name;
        EXPECT_EQ(Tools::getSysVar(name, point), given == L"INSBASE") << name;
    }
    EXPECT_EQ(Tools::getSysVar(L"useri1"), static_cast<short>(70000));
    EXPECT_EQ(flat, AcGePoint2d(3, 4));
    EXPECT_EQ(point, AcGePoint3d(1, 2, 3));

    // Unknown, read-only, out of range, another type.
    EXPECT_EQ(Tools::setSysVar(L"NOSUCH", 1), Acad::eInvalidInput);
    EXPECT_EQ(Tools::setSysVar(nullptr, 1), Acad::eInvalidInput);
    EXPECT_EQ(Tools::setSysVar(L"CMDACTIVE", 1), Acad::eInvalidInput);
    EXPECT_EQ(Tools::setSysVar(L"TILEMODE", 2), Acad::eInvalidInput);
    EXPECT_EQ(Tools::setSysVar(L"USERI1", 1.5), Acad::eInvalidInput);
    EXPECT_EQ(Tools::setSysVar(L"LTSCALE", AcGePoint3d()), Acad::eInvalidInput);
    EXPECT_EQ(Tools::getSysVar(L"USERI1"), static_cast<short>(70000));
}

TEST_F(SystemTools, TheRunningCommandAnswersToBothOfItsNames) {
    CString name;
    EXPECT_TRUE(Tools::isNullCommandActive());
    EXPECT_FALSE(Tools::isCommandActive());
    EXPECT_FALSE(Tools::isCommand(L"GO"));
    EXPECT_TRUE(Tools::isCommand(L""));
    int calls = 0;
    const auto look = [&] {
        ++calls;
        for (const wchar_t* each : {L"GO", L"go", L"ALLER", L"aller"}) EXPECT_TRUE(Tools::isCommand(each));
        for (const wchar_t* each : {L"NOTE", L"G", L"GOO", L"_GO", L"", L"NOSUCH"})
            EXPECT_FALSE(Tools::isCommand(each)) << each;
        EXPECT_FALSE(Tools::isCommand(nullptr));
        EXPECT_TRUE(Tools::isCommandActive());
        EXPECT_FALSE(Tools::isNullCommandActive());
        EXPECT_TRUE(Tools::commandActive(name));
        EXPECT_EQ(name, L"GO");
    };
    go(look);
    go(look, L"aller");
    EXPECT_EQ(calls, 2);

    // Within one another: the joined names match neither.
    go([&] {
        bodies.push_back([&] {
            ++calls;
            for (const wchar_t* each : {L"GO", L"ALLER", L"NOTE"}) EXPECT_FALSE(Tools::isCommand(each));
            EXPECT_TRUE(Tools::isCommandActive());
            EXPECT_TRUE(Tools::commandActive(name));
            EXPECT_EQ(name, L"GO'GO");
        });
        acedCommand(RTSTR, L"GO", 0);
        bodies.pop_back();
        EXPECT_TRUE(Tools::isCommand(L"GO"));
    });
    EXPECT_EQ(calls, 3);
}

TEST_F(SystemTools, NamesAreComparedAsTheCommandsThatTheyMean) {
    add(L"REDO", L"RETABLIR", runBody);
    // In another group two commands bear each other's names: the global name comes first.
    add(L"A", L"B", runBody);
    add(L"B", L"A", runBody);
    struct {
        const wchar_t *first, *second;
        bool isSame;
    } const cases[] = {{L"go", L"Aller", true},   {L"ALLER", L"aller", true}, {L"GO", L"NOTE", false},
                       {L"xyz", L"XYZ", true},    {L"été", L"ÉTÉ", true},     {L"GO", nullptr, false},
                       {nullptr, nullptr, false}, {L"GO", L"GO ", false},     {L"A", L"B", false},
                       {L"", L"", true},          {L"ALLER", L"G", false}};
    for (const auto& each : cases)
        EXPECT_EQ(Tools::isCommand(each.first, each.second), each.isSame)
            << (each.first ? each.first : L"null") << " " << (each.second ? each.second : L"null");
    for (const wchar_t* each : {L"u", L"U", L"Undo", L"mredo", L"REDO", L"retablir"})
        EXPECT_TRUE(Tools::isUndoRedoCommand(each)) << each;
    for (const wchar_t* each : {L"", L"UN", L"UNDOX", L"OOPS", L"GO"})
        EXPECT_FALSE(Tools::isUndoRedoCommand(each)) << each;
    EXPECT_FALSE(Tools::isUndoRedoCommand(nullptr));
}

TEST_F(SystemTools, FamiliesOfEditingCommands) {
    const std::pair<const wchar_t*, int> cases[] = {{L"Mirror", 1},
                                                    {L"MATCHPROP", 1},
                                                    {L"MOVES", 0},
                                                    {L"VEXOREBARPROPERTIES", 2},
                                                    {L"VexoAssignRebarToMember", 3}};
    int seen = 0;
    for (const auto& each : cases) {
        const std::wstring localName = std::wstring(L"L") + each.first;
        add(each.first, localName.c_str(), runBody);
        go(
            [&] {
                ++seen;
                EXPECT_EQ(Tools::isAcadCommandModify(), each.second == 1) << each.first;
                EXPECT_EQ(Tools::isBarSpecificCommandModify(), each.second == 2) << each.first;
                EXPECT_EQ(Tools::isRepartSpecificCommandModify(), each.second == 3) << each.first;
            },
            localName.c_str());
    }
    EXPECT_EQ(seen, static_cast<int>(std::size(cases)));
    EXPECT_FALSE(Tools::isAcadCommandModify());
}

TEST_F(SystemTools, WithoutADrawingNoCommandIsActive) {
    go([&] {
        ASSERT_EQ(session.host().documents().setCurDocument(nullptr), Acad::eOk);
        CString name;
        EXPECT_FALSE(Tools::isCommand(L"GO"));
        EXPECT_FALSE(Tools::isCommand(L"GO", L"GO"));
        EXPECT_FALSE(Tools::isCommandActive());
        EXPECT_FALSE(Tools::isNullCommandActive());
        EXPECT_TRUE(Tools::commandActive(name)) << "the host still says";
        Tools::sendCommandToAutoCADEx(L"NOTE x"); // nobody to send it to
        ASSERT_EQ(session.host().documents().setCurDocument(session.host().documents().documentAt(0)),
                  Acad::eOk);
    });
    EXPECT_TRUE(notes.empty());
}

TEST_F(SystemTools, AllRoadsToTheCommandLineRunBehindTheCaller) {
    const auto result = go([&] {
        Tools::sendCommandToAutoCAD(L"NOTE été\n");
        EXPECT_EQ(GetFocus(), acedGetAcadDockCmdLine()->GetSafeHwnd());
        Tools::sendCommandToAutoCADEx(L"NOTE b");
        Tools::postCommandToAutoCAD(L"NOTE c", false);
        EXPECT_EQ(GetFocus(), acedGetAcadTextCmdLine()->GetSafeHwnd());
        Tools::sendCommandToAutoCAD(L"NOTE be"); // a begun line
        Tools::postCommandToAutoCAD(L"gun", false);
        Tools::sendCommandToAutoCAD(L"NOTE lost");
        Tools::postCommandToAutoCAD(L"NOTE d", true);
        EXPECT_TRUE(notes.empty());
    });
    EXPECT_EQ(result.status, Acad::eOk) << result.reason.c_str();
    EXPECT_EQ(notes, (Notes{L"été", L"b", L"c", L"begun", L"d"}));
    for (const wchar_t character : std::wstring(L"NOTE é\r")) Tools::postMessageToAcad(character);
    (void)session.host().runDeferred();
    EXPECT_EQ(notes.back(), L"é");
    EXPECT_TRUE(session.port().problems.empty());

    session.host().runtime().setProductKey(L"Software\\Maker\\Host\\ACAD-1:409");
    VEXORegistryTools::SetRegistryValue(acrxProductKey(), L"ProductName", L"Any cad lt 18",
                                        HKEY_LOCAL_MACHINE);
    Tools::postCommandToAutoCAD(L"NOTE x", false);
    EXPECT_EQ(GetFocus(), acedGetAcadDwgView()->GetSafeHwnd()) << "the LT host";
}

TEST_F(SystemTools, QueuedExpressionsKeepTheEchoAsItWas) {
    for (const int echo : {0, 1}) {
        notes.clear();
        session.port().printed.clear();
        ASSERT_EQ(Tools::setSysVar(L"CMDECHO", echo), Acad::eOk);
        go([&] {
            Tools::launchCommandNoEcho(L"NOTE\" \"two words");
            Tools::launchCommandNoEcho(L"_.NOTE\" \"C:\\\\dir\\\\\\\"x\\\"");
            Tools::setVarNoEcho(L"USERI2", 7 + echo);
            Tools::setVarNoEcho(L"cmdecho", 0);
            Tools::launchCommandNoEcho(nullptr);
            Tools::setVarNoEcho(nullptr, 1);
            EXPECT_EQ(Tools::getSysVar(L"CMDECHO"), echo) << "nothing has run yet";
        });
        EXPECT_EQ(notes, (Notes{L"two words", L"C:\\dir\\\"x\""}));
        EXPECT_EQ(Tools::getSysVar(L"USERI2"), 7 + echo);
        EXPECT_EQ(Tools::getSysVar(L"CMDECHO"), echo);
        EXPECT_FALSE(isTold(L"Command: "));
        EXPECT_TRUE(session.port().problems.empty());
    }
    // What goes wrong is told, and the echo comes back all the same.
    for (const wchar_t* faulty : {L"NOSUCH", L"NOTE\" \"C:\\dir", L"NOTE\" (\""}) {
        EXPECT_NE(go([&] { Tools::launchCommandNoEcho(faulty); }).status, Acad::eOk) << faulty;
        EXPECT_EQ(Tools::getSysVar(L"CMDECHO"), 1) << faulty;
    }
}

// (command "...") has 12 characters beside its text; with the terminator 512 is the most.
TEST_F(SystemTools, ExpressionsOverTheBufferAreRefusedWhole) {
    const std::wstring head = L"NOTE\" \"";
    for (const std::size_t length : {499u, 500u, 512u, 100000u}) {
        notes.clear();
        session.port().printed.clear();
        const std::wstring text = head + std::wstring(length - head.size(), L'x');
        go([&] {
            Tools::launchCommandNoEcho(text.c_str());
            EXPECT_EQ(session.host().deferred().isEmpty(), length >= 500) << length;
        });
        EXPECT_EQ(notes.size(), length < 500 ? 1u : 0u) << length;
        EXPECT_EQ(isTold(L"512 characters"), length >= 500) << length;
        EXPECT_EQ(Tools::getSysVar(L"CMDECHO"), 1);
    }
    go([&] {
        Tools::setVarNoEcho(std::wstring(600, L'N').c_str(), 1);
        EXPECT_TRUE(session.host().deferred().isEmpty());
    });
    EXPECT_TRUE(session.port().problems.empty()) << "refused before the host was asked";
}

TEST_F(SystemTools, MessagesStandAsTheyAre) {
    Tools::cmdLineMsg(L"100 %s %n", false, false);
    Tools::cmdLineMsg(L"a", true, false);
    Tools::cmdLineMsg(L"b", false, true);
    Tools::cmdLineMsg(L"", true, true);
    EXPECT_EQ(session.port().printed, L"100 %s %n\nab\n\n\n");
}

} // namespace
