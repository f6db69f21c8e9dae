#include "commandtest.h"
#include "modulecommand.h"
#include "rxprodkey.h"

#include <stdexcept>

namespace {

using hostkit::CommandResult;
using hostkit::Host;
using hostkit::MoreInput;
using HostTest = CommandTest;

TEST_F(HostTest, IsTheCurrentOneForItsLifeAndHostsNest) {
    EXPECT_EQ(Host::current(), &host);
    EXPECT_EQ(hostkit::currentPort(), &port);
    EXPECT_EQ(acedRegCmds, &host.commands());
    EXPECT_EQ(acDocManagerPtr(), &documents);
    EXPECT_EQ(acrxSysRegistry()->at(L"acad_registered_commands"), &host.commands());
    EXPECT_NE(adsw_acadMainWnd(), nullptr);
    {
        hostkit::ScriptedPort innerPort;
        Host inner(innerPort);
        EXPECT_EQ(Host::current(), &inner);
        EXPECT_EQ(acedRegCmds->lookupGlobalCmd(L"GO"), nullptr);
        acutPrintf(L"inside %s %d", CString(L"text"), 7);
        EXPECT_EQ(innerPort.printed, L"inside text 7");
    }
    EXPECT_EQ(Host::current(), &host);
    EXPECT_EQ(acrxSysRegistry(), &host.runtime().systemRegistry());
    EXPECT_TRUE(port.printed.empty());
}

TEST(HostLife, NothingIsCurrentWithoutAHost) {
    {
        hostkit::ScriptedPort port;
        Host host(port);
        ASSERT_EQ(host.newDocument(), Acad::eOk);
    }
    EXPECT_EQ(Host::current(), nullptr);
    EXPECT_EQ(acedRegCmds, nullptr);
    EXPECT_EQ(acDocManagerPtr(), nullptr);
    EXPECT_EQ(acrxSysRegistry(), nullptr);
    EXPECT_EQ(adsw_acadMainWnd(), nullptr);
    CString text(L"kept");
    EXPECT_EQ(acedGetString(0, L"", text), RTERROR);
    EXPECT_EQ(text, L"kept");
}

TEST_F(HostTest, TheMeterIsShownMovedAndTakenAway) {
    EXPECT_EQ(acedSetStatusBarProgressMeterPos(5), -1) << "none is shown";
    EXPECT_EQ(acedSetStatusBarProgressMeter(L"upside down", 10, 10), -1);
    EXPECT_TRUE(port.meters.empty());
    EXPECT_EQ(acedSetStatusBarProgressMeter(L"first", 0, 10), 0);
    for (const int position : {4, -7, 99}) EXPECT_EQ(acedSetStatusBarProgressMeterPos(position), 0);
    EXPECT_EQ(acedSetStatusBarProgressMeter(L"second", 0, 2), 0);
    acedRestoreStatusBar();
    acedRestoreStatusBar();
    EXPECT_EQ(acedSetStatusBarProgressMeterPos(1), -1);
    ASSERT_EQ(port.meters.size(), 2u);
    EXPECT_EQ(port.meters[0].positions, (std::vector<int>{4, 0, 10}));
    EXPECT_TRUE(port.meters[0].stopped) << "replaced";
    EXPECT_TRUE(port.meters[1].stopped && port.meters[1].positions.empty());
}

TEST_F(HostTest, ALineNamesItsCommandAndResultsComeBack) {
    EXPECT_EQ(run(L"", [] { FAIL(); }).status, Acad::eOk);
    EXPECT_EQ(run(L"  \t", [] { FAIL(); }).status, Acad::eOk);
    EXPECT_EQ(run(L"NOSUCH 1", [] { FAIL(); }).status, Acad::eUnknownCommand);
    int calls = 0;
    EXPECT_EQ(run(L" Va ", [&] { ++calls; }).status, Acad::eOk);
    EXPECT_EQ(run(L"\"GO\"", [&] { ++calls; }).status, Acad::eOk);
    EXPECT_EQ(calls, 2);

    const CommandResult failed = run(L"GO", [] {
        hostkit::failCommand(Acad::eKeyNotFound, L"no such layer");
        hostkit::failCommand(Acad::eOutOfDisk, L"a later one counts for nothing");
    });
    EXPECT_EQ(failed.status, Acad::eKeyNotFound);
    EXPECT_EQ(failed.reason, L"no such layer");
    EXPECT_EQ(run(L"GO", [] {}).status, Acad::eOk) << "a failure is forgotten with its run";

    EXPECT_EQ(run(L"GO", [] { throw std::bad_alloc(); }).status, Acad::eOutOfMemory);
    const CommandResult thrown = run(L"GO", [] { throw std::runtime_error("broken pipe"); });
    EXPECT_EQ(thrown.status, Acad::eCommandFailed);
    EXPECT_EQ(thrown.reason, L"broken pipe");
    EXPECT_TRUE(session.host().hasThrown());
    EXPECT_TRUE(host.runningNames().empty());
}

TEST_F(HostTest, CommandsNestAndMayTakeThemselvesAway) {
    std::vector<std::wstring> seen;
    run(L"GO outer", [&] {
        CString word;
        acedGetString(0, nullptr, word);
        body = [&] {
            seen = host.runningNames();
            CString inner;
            acedGetString(0, nullptr, inner);
            EXPECT_EQ(inner, L"inner");
            hostkit::failCommand(Acad::eInvalidInput, L"inner only");
            acedRegCmds->removeGroup(L"TEST");
        };
        EXPECT_EQ(host.run(L"go inner").status, Acad::eInvalidInput);
    });
    EXPECT_EQ(seen, (std::vector<std::wstring>{L"GO", L"GO"}));
    EXPECT_EQ(host.run(L"GO").status, Acad::eUnknownCommand);
}

TEST_F(HostTest, WordsOfTheLineAreTheAnswers) {
    run(L"GO plain \"with blanks\" \"a \"\"b\"\"\" \"\" -12 2.5e1 \"the rest, as one\" open end  ", [] {
        CString text;
        const auto expectText = [&text](int wholeLine, const wchar_t* wanted) {
            EXPECT_EQ(acedGetString(wholeLine, L"?", text), RTNORM);
            EXPECT_STREQ(text.GetString(), wanted);
        };
        for (const wchar_t* wanted : {L"plain", L"with blanks", L"a \"b\"", L""}) expectText(0, wanted);
        int whole = 0;
        EXPECT_EQ(acedGetInt(L"?", &whole), RTNORM);
        EXPECT_EQ(whole, -12);
        double real = 0.0;
        EXPECT_EQ(acedGetReal(L"?", &real), RTNORM);
        EXPECT_EQ(real, 25.0);
        expectText(1, L"the rest, as one");
        expectText(1, L"open end");
        expectText(0, L""); // a line that is used up answers Enter
        EXPECT_EQ(acedGetInt(L"?", &whole), RTNONE);
        EXPECT_EQ(whole, -12);
    });
    EXPECT_TRUE(port.prompts.empty()) << "nobody is asked in a script";
}

TEST_F(HostTest, AnswersOfTheWrongKindAreRefused) {
    const std::tuple<const wchar_t*, int, int> integers[] = {
        {L"GO 7", 0, RTNORM},         {L"GO 7.5", 0, RTREJ},
        {L"GO seven", 0, RTREJ},      {L"GO 2147483647", 0, RTNORM},
        {L"GO 2147483648", 0, RTREJ}, {L"GO 99999999999999999999", 0, RTREJ},
        {L"GO 0", RSG_NOZERO, RTREJ}, {L"GO -1", RSG_NONEG, RTREJ},
        {L"GO", RSG_NONULL, RTREJ},   {L"GO", 0, RTNONE}};
    for (const auto& [line, flags, wanted] : integers)
        run(line, [&] {
            int value = 42;
            acedInitGet(flags, nullptr);
            EXPECT_EQ(acedGetInt(L"?", &value), wanted) << line;
            EXPECT_EQ(value != 42, wanted == RTNORM) << line;
        });

    const ads_point base = {10.0, 20.0, 30.0};
    // The point; null: refused.
    const std::tuple<const wchar_t*, const ads_real*, const wchar_t*> points[] = {
        {L"1,2", nullptr, L"1,2,0"},    {L"1,2,3", nullptr, L"1,2,3"},
        {L"@1,2", base, L"11,22,30"},   {L"-.5,1e3", nullptr, L"-0.5,1000,0"},
        {L"@1,2", nullptr, nullptr},    {L"1", nullptr, nullptr},
        {L"1,2,3,4", nullptr, nullptr}, {L"1,,3", nullptr, nullptr},
        {L"nan,1", nullptr, nullptr},   {L"1,2x", nullptr, nullptr}};
    for (const auto& [text, from, wanted] : points)
        run(std::wstring(L"GO ") + text, [&] {
            ads_point point = {7.0, 7.0, 7.0};
            EXPECT_EQ(acedGetPoint(from, L"?", point), wanted ? RTNORM : RTREJ) << text;
            CString given;
            given.Format(L"%g,%g,%g", point[0], point[1], point[2]);
            EXPECT_STREQ(given, wanted ? wanted : L"7,7,7") << text;
        });
}

TEST_F(HostTest, KeywordsAreKnownByTheirCapitals) {
    // null: refused
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"t", L"Text"},      {L"TEX", L"Text"}, {L"texts", nullptr}, {L"c", nullptr},
        {L"csv", L"CSV"},     {L"_cSv", L"CSV"}, {L"J", L"Json"},     {L"plai", nullptr},
        {L"plain", L"plain"}, {L"_", nullptr},   {L"x", nullptr}};
    for (const auto& [typed, wanted] : cases)
        run(std::wstring(L"GO ") + typed, [&] {
            CString keyword(L"kept");
            acedInitGet(0, L"Text CSV Json plain");
            const int result = acedGetKword(L"?", keyword);
            EXPECT_EQ(result, wanted ? RTNORM : RTREJ) << typed;
            EXPECT_STREQ(keyword.GetString(), wanted ? wanted : L"kept");
        });
    run(L"GO Json 5 t", [] {
        int value = 0;
        CString keyword;
        acedInitGet(0, L"Text Json");
        EXPECT_EQ(acedGetInt(L"?", &value), RTKWORD);
        EXPECT_EQ(acedGetInput(keyword), RTNORM);
        EXPECT_EQ(keyword, L"Json");
        EXPECT_EQ(acedGetInt(L"?", &value), RTNORM);
        EXPECT_EQ(acedGetInput(keyword), RTERROR) << "a number is no keyword";
        EXPECT_EQ(acedGetInt(L"?", &value), RTREJ) << "keywords hold for one call";
    });
}

TEST_F(HostTest, APersonIsAskedUntilTheAnswerFits) {
    port.lines = {L"many", L"12 first", L""};
    run(
        L"GO",
        [] {
            int value = 0;
            CString text;
            EXPECT_EQ(acedGetInt(L"How many: ", &value), RTNORM);
            EXPECT_EQ(value, 12);
            EXPECT_EQ(acedGetString(0, L"Name: ", text), RTNORM);
            EXPECT_EQ(text, L"first");
            EXPECT_EQ(acedGetInt(L"More: ", &value), RTNONE);
            EXPECT_EQ(acedGetInt(L"Gone: ", &value), RTERROR);
        },
        MoreInput::ask);
    EXPECT_EQ(port.prompts, (std::vector<std::wstring>{L"How many: ", L"How many: ", L"More: ", L"Gone: "}));
}

TEST_F(HostTest, ACommandThatNeverStopsAskingComesToAnEnd) {
    run(L"GO", [] {
        CString text;
        int asked = 0;
        while (acedGetString(0, L"?", text) == RTNORM) ASSERT_LT(++asked, 100000);
    });
}

TEST_F(HostTest, BuffersAreNeverOverrun) {
    const std::wstring longWord(200, L'x');
    run(L"GO " + longWord + L" 1234 1234", [] {
        wchar_t buffer[5] = L"kept";
        EXPECT_EQ(acedGetString(0, L"?", buffer, 5), RTREJ);
        EXPECT_STREQ(buffer, L"kept");
        EXPECT_EQ(acedGetString(0, L"?", buffer, 5), RTNORM);
        EXPECT_STREQ(buffer, L"1234");
        EXPECT_EQ(acedGetString(0, L"?", buffer, 4), RTREJ);
        EXPECT_EQ(acedGetString(0, L"?", nullptr, 4), RTERROR);
    });
    wchar_t value[8] = L"kept";
    EXPECT_EQ(acedSetEnv(L"VEXO_TEST", L"12345678"), RTNORM);
    EXPECT_EQ(acedGetEnv(L"VEXO_TEST", value, 8), RTERROR);
    EXPECT_EQ(acedGetEnv(L"VEXO_NONE", value, 8), RTERROR);
    EXPECT_STREQ(value, L"kept");
    EXPECT_EQ(acedSetEnv(L"VEXO_TEST", L"1234567"), RTNORM);
    EXPECT_EQ(acedGetEnv(L"VEXO_TEST", value, 8), RTNORM);
    EXPECT_STREQ(value, L"1234567");
    EXPECT_EQ(acedSetEnv(L"", L"1"), RTERROR);
}

TEST_F(HostTest, AFileThatIsNoDrawingOpensNothing) {
    EXPECT_NE(host.openDocument(L"/nonexistent/drawing.dxf"), Acad::eOk);
    EXPECT_EQ(documents.documentCount(), 1);
    ASSERT_EQ(port.problems.size(), 1u);
    EXPECT_NE(port.problems[0].find(L"/nonexistent/drawing.dxf"), std::wstring::npos);
}

} // namespace
