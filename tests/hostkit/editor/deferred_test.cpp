#include "aced.h"
#include "cwnd.h"
#include "dbdatabase.h"
#include "expressionevaluator.h"
#include "hosttest.h"

#include <algorithm>
#include <functional>

namespace {

using hostkit::CommandResult;

std::function<void()> body;
void runBody() {
    const auto running = body;
    running();
}
std::vector<std::wstring> notes;
// Writes down its one answer.
void note() {
    CString text;
    notes.push_back(acedGetString(0, L"", text) == RTNORM ? text.GetString() : L"?");
}

class DeferredTest : public hostkit::HostTest {
protected:
    void SetUp() override {
        AcEdCommandStack& stack = session.host().commands();
        ASSERT_EQ(stack.addCommand(L"T", L"GO", nullptr, ACRX_CMD_MODAL, runBody), Acad::eOk);
        ASSERT_EQ(stack.addCommand(L"T", L"NOTE", L"noter", ACRX_CMD_MODAL, note), Acad::eOk);
        notes.clear();
    }
    void TearDown() override {
        body = nullptr;
        HostTest::TearDown();
    }
    CommandResult go(std::function<void()> what) {
        body = std::move(what);
        return session.host().run(L"GO");
    }
    bool evaluate(const std::wstring& text) {
        problem.clear();
        return hostkit::evaluateExpression(session.host(), text, problem);
    }
    int variable(const wchar_t* name) {
        hostkit::SystemValue value;
        EXPECT_EQ(session.host().variables().get(name, value), hostkit::VariableResult::ok);
        return value.integer;
    }
    std::wstring problem;
};

TEST_F(DeferredTest, AllRoadsRunBehindTheCommandInTheOrderOfTheCalls) {
    const CommandResult result = go([&] {
        EXPECT_EQ(ads_queueexpr(L"(setvar \"cmdecho\" 0)"), RTNORM);
        EXPECT_EQ(ads_queueexpr(L"(command \"_.NOTE\" \"first\")"), RTNORM);
        EXPECT_EQ(acedPostCommand(L"NOTE second\n"), 1);
        EXPECT_EQ(session.host().documents().sendStringToExecute(&session.document(), L"noter third\n"),
                  Acad::eOk);
        std::wstring text = L"NOTE fourth\n";
        COPYDATASTRUCT data{1, static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)), text.data()};
        const HWND main = adsw_acadMainWnd();
        EXPECT_EQ(
            SendMessageW(main, WM_COPYDATA, reinterpret_cast<WPARAM>(main), reinterpret_cast<LPARAM>(&data)),
            1);
        EXPECT_EQ(ads_queueexpr(L"(setvar \"cmdecho\" 1)"), RTNORM);
        EXPECT_TRUE(notes.empty());
        EXPECT_EQ(variable(L"CMDECHO"), 1);
    });
    EXPECT_EQ(result.status, Acad::eOk);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"first", L"second", L"third", L"fourth"}));
    EXPECT_EQ(variable(L"CMDECHO"), 1);
    EXPECT_NE(session.port().printed.find(L"noter third\n"), std::wstring::npos) << "echoed";
    EXPECT_EQ(session.port().printed.find(L"Command: "), std::wstring::npos) << "CMDECHO was 0";
}

TEST_F(DeferredTest, CharactersMakeALineAtItsEnd) {
    const HWND input = GetWindow(acedGetAcadTextCmdLine()->GetSafeHwnd(), GW_CHILD);
    ASSERT_NE(input, nullptr);
    for (const wchar_t each : {L'N', L'O', L'T', L'E', L' ', L'x'})
        EXPECT_TRUE(PostMessageW(input, WM_CHAR, each, 0));
    EXPECT_EQ(session.host().runDeferred().status, Acad::eOk);
    EXPECT_TRUE(notes.empty()) << "not yet at its end";
    EXPECT_TRUE(PostMessageW(input, WM_CHAR, L'\r', 0));
    EXPECT_EQ(session.host().runDeferred().status, Acad::eOk);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"x"}));

    acedPostCommand(L"NOTE lost");
    acedPostCommand(L"CANCELCMD");
    acedPostCommand(L"NOTE kept\r\nNOTE begun");
    EXPECT_EQ(session.host().runDeferred().status, Acad::eOk);
    EXPECT_EQ(notes.back(), L"kept");
    EXPECT_FALSE(session.host().endInput());
    ASSERT_EQ(session.port().problems.size(), 1u);
    EXPECT_NE(session.port().problems[0].find(L"NOTE begun"), std::wstring::npos);
    EXPECT_TRUE(session.host().endInput());
    EXPECT_EQ(notes.size(), 2u);
}

TEST_F(DeferredTest, MalformedCopiedDataIsRefused) {
    wchar_t text[] = {L'N', L'O'}; // without a terminator: the count ends it
    COPYDATASTRUCT cases[] = {{1, 3, text}, {1, 8, nullptr}};
    const HWND main = adsw_acadMainWnd();
    for (COPYDATASTRUCT& each : cases)
        EXPECT_EQ(SendMessageW(main, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&each)), 0);
    EXPECT_EQ(SendMessageW(main, WM_COPYDATA, 0, 0), 0);
    COPYDATASTRUCT whole{1, sizeof text, text};
    EXPECT_EQ(SendMessageW(main, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&whole)), 1);
    (void)session.host().runDeferred();
    EXPECT_EQ(session.host().deferred().begunLine(), L"NO");
}

TEST_F(DeferredTest, AFailureIsToldAndTheRestRuns) {
    const CommandResult result = go([&] {
        acedPostCommand(L"NOSUCH\nNOTE after\n");
        ads_queueexpr(L"(setvar \"nosuch\" 1)");
        ads_queueexpr(L"(command \"NOTE\" \"last\")");
    });
    EXPECT_EQ(result.status, Acad::eUnknownCommand);
    EXPECT_NE(result.reason.find(L"NOSUCH"), std::wstring::npos);
    ASSERT_EQ(session.port().problems.size(), 1u);
    EXPECT_NE(session.port().problems[0].find(L"nosuch"), std::wstring::npos);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"after", L"last"}));
    const CommandResult own = go([] {
        hostkit::failCommand(Acad::eKeyNotFound, L"its own fault");
        acedPostCommand(L"NOTE still\n");
    });
    EXPECT_EQ(own.status, Acad::eKeyNotFound);
    EXPECT_EQ(notes.back(), L"still");
}

TEST_F(DeferredTest, TextsGoToTheirDocument) {
    AcApDocManager& documents = session.host().documents();
    AcApDocument* const first = &session.document();
    ASSERT_EQ(session.host().newDocument(), Acad::eOk);
    AcApDocument* const second = documents.curDocument();
    std::vector<AcApDocument*> seen;
    body = [&] { seen.push_back(documents.curDocument()); };
    EXPECT_EQ(documents.sendStringToExecute(first, L"GO\n", false, false, false), Acad::eOk);
    EXPECT_EQ(session.host().runDeferred().status, Acad::eOk);
    EXPECT_EQ(documents.curDocument(), second);
    EXPECT_EQ(documents.sendStringToExecute(first, L"GO\n"), Acad::eOk);
    EXPECT_EQ(session.host().runDeferred().status, Acad::eOk);
    EXPECT_EQ(documents.mdiActiveDocument(), first);
    EXPECT_EQ(seen, (std::vector<AcApDocument*>{first, first}));

    EXPECT_EQ(documents.sendStringToExecute(second, L"GO\n"), Acad::eOk);
    EXPECT_EQ(documents.closeDocument(second), Acad::eOk);
    EXPECT_EQ(session.host().runDeferred().status, Acad::eNoDocument);
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
    EXPECT_EQ(session.port().problems.size(), 1u);
    EXPECT_EQ(session.host().runDeferred().status, Acad::eOk);
    hostkit::SystemValue value;
    (void)session.host().variables().get(L"USERS1", value);
    EXPECT_EQ(value.text.size(), 511u - 20u);
}

TEST_F(DeferredTest, ExpressionsDoWhatTheySay) {
    EXPECT_TRUE(evaluate(L""));
    EXPECT_TRUE(
        evaluate(L"(setvar \"users1\" \"a\\\\b \\\"c\\\"\") (setvar \"expert\" (getvar \"pickfirst\"))"));
    EXPECT_EQ(variable(L"EXPERT"), 1);
    hostkit::SystemValue value;
    (void)session.host().variables().get(L"users1", value);
    EXPECT_EQ(value.text, L"a\\b \"c\"");
    EXPECT_TRUE(evaluate(L"(SETVAR \"limmax\" (list 10 2.5))"));
    (void)session.host().variables().get(L"LIMMAX", value);
    EXPECT_EQ(formatValue(value), L"10,2.5");
    EXPECT_TRUE(evaluate(L"(progn (command \"NOTE\" \"two words\") (command \"NOTE\" 12))"));
    EXPECT_TRUE(evaluate(L"(command \"NOTE\" \"one\" \"noter\" \"two\n\")"))
        << "what is left is the next command";
    EXPECT_TRUE(evaluate(L"(command \" \n\")")) << "Enter where nothing waits";
    EXPECT_TRUE(evaluate(L"(command \"NOTE\" \" \n\")")) << "Enter as the answer";
    EXPECT_TRUE(evaluate(L"(command)"));
    EXPECT_TRUE(evaluate(L"(command nil \"NOTE\" \"cancelled\")"));
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"two words", L"12", L"one", L"two", L""}));
    EXPECT_NE(session.port().printed.find(L"Command: NOTE 12\n"), std::wstring::npos);
}

TEST_F(DeferredTest, FaultyExpressionsAreToldAndDoNothing) {
    struct {
        std::wstring text;
        const wchar_t* told;
    } const cases[] = {
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
    for (const auto& each : cases) {
        SCOPED_TRACE(hostkit::utf8FromWide(each.text.substr(0, 60)));
        EXPECT_EQ(evaluate(each.text), *each.told == 0);
        EXPECT_NE(problem.find(each.told), std::wstring::npos)
            << hostkit::utf8FromWide(problem.substr(0, 200));
    }
    EXPECT_EQ(variable(L"EXPERT"), 0);
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
    EXPECT_NE(session.port().printed.find(L"NOSUCH"), std::wstring::npos);
}

TEST_F(DeferredTest, ATransparentCommandRunsWithinAPrompt) {
    AcEdCommandStack& stack = session.host().commands();
    ASSERT_EQ(stack.addCommand(L"T", L"LOOK", nullptr, ACRX_CMD_TRANSPARENT, note), Acad::eOk);
    session.port().lines = {L"'look", L"its answer", L"'note", L"unread"};
    CString first, second;
    body = [&] {
        EXPECT_EQ(acedGetString(0, L"First: ", first), RTNORM);
        EXPECT_EQ(acedGetString(0, L"Second: ", second), RTNORM);
    };
    EXPECT_EQ(session.host().run(L"GO", hostkit::MoreInput::ask).status, Acad::eOk);
    EXPECT_EQ(notes, (std::vector<std::wstring>{L"its"})) << "in its own line's words";
    EXPECT_EQ(first, L"'note") << "no transparent command, so a text";
    EXPECT_EQ(second, L"unread");
}

TEST_F(DeferredTest, TheStackIsWalkedAndStaysQuickToSearch) {
    AcEdCommandStack& stack = session.host().commands();
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(stack.addCommand(L"MANY", (L"C" + std::to_wstring(i)).c_str(), nullptr, 0, note),
                  Acad::eOk);
    EXPECT_STREQ(stack.lookupGlobalCmd(L"c1999")->globalName(), L"C1999");
    stack.removeCmd(L"MANY", L"C1999");
    EXPECT_EQ(stack.lookupGlobalCmd(L"c1999"), nullptr);
    int count = 0;
    const std::unique_ptr<AcEdCommandIterator> walk(stack.iterator());
    for (; !walk->done(); walk->next())
        if (std::wstring_view(walk->commandGroup()) == L"MANY") ++count;
    EXPECT_EQ(count, 1999);
    EXPECT_EQ(walk->command(), nullptr);
    EXPECT_EQ(walk->commandGroup(), nullptr);
}

} // namespace
