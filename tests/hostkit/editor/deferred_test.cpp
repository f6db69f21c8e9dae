#include "commandtest.h"
#include "cwnd.h"
#include "expressionevaluator.h"
#include "modulecommand.h"

namespace {

using hostkit::CommandResult;

std::vector<std::wstring> notes;
// Writes down its one answer.
void note() {
    CString text;
    notes.push_back(acedGetString(0, L"", text) == RTNORM ? text.GetString() : L"?");
}

LRESULT sendData(COPYDATASTRUCT data) {
    const HWND main = adsw_acadMainWnd();
    return SendMessageW(main, WM_COPYDATA, reinterpret_cast<WPARAM>(main), reinterpret_cast<LPARAM>(&data));
}

class DeferredTest : public CommandTest {
protected:
    DeferredTest() {
        host.commands().addCommand(L"T", L"NOTE", L"noter", ACRX_CMD_MODAL, note);
        notes.clear();
    }
    CommandResult go(std::function<void()> what) { return run(L"GO", std::move(what)); }
    Acad::ErrorStatus runDeferred() { return host.runDeferred().status; }
    bool evaluate(const std::wstring& text) {
        problem.clear();
        return hostkit::evaluateExpression(host, text, problem);
    }
    std::wstring problem;
};

TEST_F(DeferredTest, AllRoadsRunBehindTheCommandInTheOrderOfTheCalls) {
    const CommandResult result = go([&] {
        EXPECT_EQ(ads_queueexpr(L"(setvar \"cmdecho\" 0)"), RTNORM);
        EXPECT_EQ(ads_queueexpr(L"(command \"_.NOTE\" \"first\")"), RTNORM);
        EXPECT_EQ(acedPostCommand(L"NOTE second\n"), 1);
        EXPECT_EQ(documents.sendStringToExecute(&session.document(), L"noter third\n"), Acad::eOk);
        wchar_t text[] = L"NOTE fourth\n";
        EXPECT_EQ(sendData({1, sizeof text, text}), 1);
        EXPECT_EQ(ads_queueexpr(L"(setvar \"cmdecho\" 1)"), RTNORM);
        EXPECT_TRUE(notes.empty());
        EXPECT_EQ(value(L"CMDECHO").integer, 1);
    });
    EXPECT_EQ(result.status, Acad::eOk);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"first", L"second", L"third", L"fourth"}));
    EXPECT_EQ(value(L"CMDECHO").integer, 1);
    EXPECT_NE(port.printed.find(L"noter third\n"), std::wstring::npos) << "echoed";
    EXPECT_EQ(port.printed.find(L"Command: "), std::wstring::npos) << "CMDECHO was 0";
}

TEST_F(DeferredTest, CharactersMakeALineAtItsEnd) {
    const HWND input = GetWindow(acedGetAcadTextCmdLine()->GetSafeHwnd(), GW_CHILD);
    ASSERT_NE(input, nullptr);
    for (const wchar_t each : {L'N', L'O', L'T', L'E', L' ', L'x'})
        EXPECT_TRUE(PostMessageW(input, WM_CHAR, each, 0));
    EXPECT_EQ(runDeferred(), Acad::eOk);
    EXPECT_TRUE(notes.empty()) << "not yet at its end";
    EXPECT_TRUE(PostMessageW(input, WM_CHAR, L'\r', 0));
    EXPECT_EQ(runDeferred(), Acad::eOk);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"x"}));

    acedPostCommand(L"NOTE lost");
    acedPostCommand(L"CANCELCMD");
    acedPostCommand(L"NOTE kept\r\nNOTE begun");
    EXPECT_EQ(runDeferred(), Acad::eOk);
    EXPECT_EQ(notes.back(), L"kept");
    EXPECT_FALSE(host.endInput());
    ASSERT_EQ(port.problems.size(), 1u);
    EXPECT_NE(port.problems[0].find(L"NOTE begun"), std::wstring::npos);
    EXPECT_TRUE(host.endInput());
    EXPECT_EQ(notes.size(), 2u);
}

TEST_F(DeferredTest, MalformedCopiedDataIsRefused) {
    wchar_t text[] = {L'N', L'O'}; // without a terminator: the count ends it
    EXPECT_EQ(sendData({1, 3, text}), 0);
    EXPECT_EQ(sendData({1, 8, nullptr}), 0);
    EXPECT_EQ(SendMessageW(adsw_acadMainWnd(), WM_COPYDATA, 0, 0), 0);
    EXPECT_EQ(sendData({1, sizeof text, text}), 1);
    (void)host.runDeferred();
    EXPECT_EQ(host.deferred().begunLine(), L"NO");
}

TEST_F(DeferredTest, AFailureIsToldAndTheRestRuns) {
    const CommandResult result = go([&] {
        acedPostCommand(L"NOSUCH\nNOTE after\n");
        ads_queueexpr(L"(setvar \"nosuch\" 1)");
        ads_queueexpr(L"(command \"NOTE\" \"last\")");
    });
    EXPECT_EQ(result.status, Acad::eUnknownCommand);
    EXPECT_NE(result.reason.find(L"NOSUCH"), std::wstring::npos);
    ASSERT_EQ(port.problems.size(), 1u);
    EXPECT_NE(port.problems[0].find(L"nosuch"), std::wstring::npos);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"after", L"last"}));
    const CommandResult own = go([] {
        hostkit::failCommand(Acad::eKeyNotFound, L"its own fault");
        acedPostCommand(L"NOTE still\n");
    });
    EXPECT_EQ(own.status, Acad::eKeyNotFound);
    EXPECT_EQ(notes.back(), L"still");
}

TEST_F(DeferredTest, TextsGoToTheirDocument) {
    AcApDocument* const first = &session.document();
    ASSERT_EQ(host.newDocument(), Acad::eOk);
    AcApDocument* const second = documents.curDocument();
    std::vector<AcApDocument*> seen;
    body = [&] { seen.push_back(documents.curDocument()); };
    EXPECT_EQ(documents.sendStringToExecute(first, L"GO\n", false, false, false), Acad::eOk);
    EXPECT_EQ(runDeferred(), Acad::eOk);
    EXPECT_EQ(documents.curDocument(), second);
    EXPECT_EQ(documents.sendStringToExecute(first, L"GO\n"), Acad::eOk);
    EXPECT_EQ(runDeferred(), Acad::eOk);
    EXPECT_EQ(documents.mdiActiveDocument(), first);
    EXPECT_EQ(seen, (std::vector<AcApDocument*>{first, first}));

    EXPECT_EQ(documents.sendStringToExecute(second, L"GO\n"), Acad::eOk);
    EXPECT_EQ(documents.closeDocument(second), Acad::eOk);
    EXPECT_EQ(runDeferred(), Acad::eNoDocument);
    EXPECT_EQ(documents.sendStringToExecute(second, L"GO\n"), Acad::eNoDocument);
    EXPECT_EQ(documents.sendStringToExecute(nullptr, L"GO\n"), Acad::eNoDocument);
    EXPECT_EQ(documents.sendStringToExecute(first, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(seen.size(), 2u);
}

TEST_F(DeferredTest, LongExpressionsAreRefusedWithAWord) {
    const auto ofLength = [](std::size_t length) {
        const std::wstring front = L"(setvar \"users1\" \"", back = L"\")";
        return front + std::wstring(length - front.size() - back.size(), L'x') + back;
    };
    EXPECT_EQ(ads_queueexpr(ofLength(511).c_str()), RTNORM);
    EXPECT_EQ(ads_queueexpr(ofLength(512).c_str()), RTREJ);
    EXPECT_EQ(ads_queueexpr(nullptr), RTERROR);
    EXPECT_EQ(port.problems.size(), 1u);
    EXPECT_EQ(runDeferred(), Acad::eOk);
    EXPECT_EQ(value(L"USERS1").text.size(), 511u - 20u);
}

TEST_F(DeferredTest, ExpressionsDoWhatTheySay) {
    EXPECT_TRUE(evaluate(L""));
    EXPECT_TRUE(
        evaluate(L"(setvar \"users1\" \"a\\\\b \\\"c\\\"\") (setvar \"expert\" (getvar \"pickfirst\"))"));
    EXPECT_EQ(value(L"EXPERT").integer, 1);
    EXPECT_EQ(value(L"users1").text, L"a\\b \"c\"");
    EXPECT_TRUE(evaluate(L"(SETVAR \"limmax\" (list 10 2.5))"));
    EXPECT_EQ(formatValue(value(L"LIMMAX")), L"10,2.5");
    EXPECT_TRUE(evaluate(L"(progn (command \"NOTE\" \"two words\") (command \"NOTE\" 12))"));
    EXPECT_TRUE(evaluate(L"(command \"NOTE\" \"one\" \"noter\" \"two\n\")"))
        << "what is left is the next command";
    EXPECT_TRUE(evaluate(L"(command \" \n\")")) << "Enter where nothing waits";
    EXPECT_TRUE(evaluate(L"(command \"NOTE\" \" \n\")")) << "Enter as the answer";
    EXPECT_TRUE(evaluate(L"(command)"));
    EXPECT_TRUE(evaluate(L"(command nil \"NOTE\" \"cancelled\")"));
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"two words", L"12", L"one", L"two", L""}));
    EXPECT_NE(port.printed.find(L"Command: NOTE 12\n"), std::wstring::npos);
}

TEST_F(DeferredTest, FaultyExpressionsAreToldAndDoNothing) {
    const std::pair<std::wstring, const wchar_t*> cases[] = {
        {L"(setvar \"expert\" 5", L"closing parenthesis is missing"},
        {L"(setvar \"expert\" 5))", L"too many"},
        {L"(setvar \"expert\" 5) (", L"missing"},
        {L"(setvar \"expert\" \"5)", L"quotation mark is missing"},
        {L"(setvar \"expert\" \"\\q\")", L"backslash"},
        {L"(setvar \"expert\" \"\\", L"backslash"},
        {L"(setvar \"expert\" 6)", L"setvar expert"},
        {L"(setvar \"expert\" T)", L"another type"},
        {L"(setvar \"expert\")", L"a name and a value"},
        {L"(setvar expert 5)", L"expert"},
        {L"(quit)", L"no function quit"},
        {L"(\"setvar\" 1)", L"name of a function"},
        {L"(list 1)", L"two or three numbers"},
        {L"(command \"NOSUCH\")", L"eUnknownCommand"},
        {L"(command T)", L"texts, numbers and points"},
        {std::wstring(5000, L'('), L"nested too deeply"},
        {L"99999999999", L""},
    };
    for (const auto& [text, told] : cases) {
        SCOPED_TRACE(hostkit::utf8FromWide(text.substr(0, 60)));
        EXPECT_EQ(evaluate(text), *told == 0);
        EXPECT_NE(problem.find(told), std::wstring::npos) << hostkit::utf8FromWide(problem.substr(0, 200));
    }
    EXPECT_EQ(value(L"EXPERT").integer, 0);
}

TEST_F(DeferredTest, ACallRunsItsCommandNow) {
    const double point[] = {1.0, 2.5, 0.0};
    (void)go([&] {
        EXPECT_EQ(acedCommand(RTSTR, L"NOTE", RTPOINT, point, 0), RTNORM);
        EXPECT_EQ(acedCommand(RTSTR, L"_NOTE", RTREAL, 0.5, RTSTR, L"NOTE", RTSHORT, 7, 0), RTNORM);
        EXPECT_EQ(notes, (std::vector<std::wstring>{L"1,2.5", L"0.5", L"7"}));
        EXPECT_EQ(acedCommand(RTSTR, L"NOSUCH", 0), RTREJ);
        EXPECT_EQ(acedCommand(RTENAME, point, 0), RTERROR);
        EXPECT_EQ(acedCommand(0), RTNORM);
    });
    EXPECT_NE(port.printed.find(L"NOSUCH"), std::wstring::npos);
}

TEST_F(DeferredTest, ATransparentCommandRunsWithinAPrompt) {
    AcEdCommandStack& stack = host.commands();
    ASSERT_EQ(stack.addCommand(L"T", L"LOOK", nullptr, ACRX_CMD_TRANSPARENT, note), Acad::eOk);
    port.lines = {L"'look", L"its answer", L"'note", L"unread"};
    CString first, second;
    body = [&] {
        EXPECT_EQ(acedGetString(0, L"First: ", first), RTNORM);
        EXPECT_EQ(acedGetString(0, L"Second: ", second), RTNORM);
    };
    EXPECT_EQ(host.run(L"GO", hostkit::MoreInput::ask).status, Acad::eOk);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"its"})) << "in its own line's words";
    EXPECT_EQ(first, L"'note") << "no transparent command, so a text";
    EXPECT_EQ(second, L"unread");
}

} // namespace
