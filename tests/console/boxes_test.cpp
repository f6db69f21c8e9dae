// Boxes of the library, shown as text and answered by a file, or by nobody.
#include "boxanswers.h"
#include "boxtext.h"
#include "consoletest.h"
#include "windows.h"

#include <algorithm>
#include <random>

namespace {

using hostkit::ShownControl;
using hostkit::ShownWindow;
using hostkit::WindowAction;
using Kind = ShownControl::Kind;

ShownControl control(Kind kind, int id, const wchar_t* text, wchar_t mnemonic = 0, RECT bounds = {}) {
    return {kind, id, nullptr, text, mnemonic, bounds};
}

ShownWindow sampleWindow() {
    ShownWindow window;
    window.caption = L"Titre";
    window.lines = {L"Une ligne"};
    window.controls = {control(Kind::button, IDYES, L"Oui", L'o', {10, 100, 50, 120}),
                       control(Kind::button, IDNO, L"Non", L'n', {60, 100, 100, 120}),
                       control(Kind::edit, 5, L"abc", 0, {50, 20, 100, 40}),
                       control(Kind::label, 6, L"Nom :", 0, {10, 23, 40, 40}),
                       control(Kind::checkList, 7, L"", 0, {10, 50, 100, 80}),
                       control(Kind::check, 8, L"Toujours", L't', {10, 84, 100, 96})};
    window.controls[4].items = {{L"a", true}, {L"b", false}};
    window.controls[4].selected = 1;
    window.controls[0].hasFocus = true;
    window.controls[5].isEnabled = false;
    return window;
}

TEST(BoxText, ShowsRowsFromTheTopWithMarksAndFocus) {
    EXPECT_EQ(boxAsText(sampleWindow()), L"+- Titre ------------+\n"
                                         L"| Une ligne          |\n"
                                         L"| Nom :  [abc     ]  |\n"
                                         L"|   1 [x] a          |\n"
                                         L"| > 2 [ ] b          |\n"
                                         L"| ([ ] Toujours)     |\n"
                                         L"|                    |\n"
                                         L"| >[ Oui ]<  [ Non ] |\n"
                                         L"+--------------------+\n");
    ShownWindow wide;
    wide.lines = {std::wstring(200, L'漢'), std::wstring(80, L'a') + L" " + std::wstring(10, L'b')};
    const std::wstring text = boxAsText(wide);
    for (std::size_t at = 0; at < text.size(); at = text.find(L'\n', at) + 1)
        EXPECT_LE(text.find(L'\n', at) - at, 76u);
    EXPECT_EQ(std::count(text.begin(), text.end(), L'漢'), 200);
    EXPECT_EQ(std::count(text.begin(), text.end(), L'a'), 80);
}

TEST(BoxText, TheRefusingButtonIsTheOneThatChangesLeast) {
    ShownWindow window = sampleWindow();
    EXPECT_EQ(refusingControl(window)->id, IDNO);
    window.controls.push_back(control(Kind::button, IDCANCEL, L"Annuler"));
    EXPECT_EQ(refusingControl(window)->id, IDCANCEL);
    window.controls = {control(Kind::button, 77, L"Fermer")};
    EXPECT_EQ(refusingControl(window)->id, 77) << "the only one";
    window.controls.push_back(control(Kind::button, 78, L"Autre"));
    EXPECT_EQ(refusingControl(window), nullptr);
}

TEST(BoxAnswers, WordsBecomeActionsAndWhatCannotBeMeantStopsThemAll) {
    const ShownWindow window = sampleWindow();
    const auto first = [&](const wchar_t* line) { return parseBoxAnswer(line, window).steps.at(0).action; };
    EXPECT_EQ(first(L"OUI").control, IDYES);
    EXPECT_EQ(first(L"n").control, IDNO);
    EXPECT_EQ(first(L"toujours").control, 8);
    EXPECT_EQ(first(L"").key, VK_RETURN);
    EXPECT_EQ(first(L"ESC").key, VK_ESCAPE);
    EXPECT_EQ(first(L"#2").kind, WindowAction::Kind::clickItem);
    EXPECT_EQ(first(L"#2").item, 1);
    EXPECT_EQ(first(L"\"=un nom\"").text, L"un nom");
    EXPECT_EQ(first(L"=").text, L"");
    EXPECT_EQ(parseBoxAnswer(L">a.svg Oui", window).steps.at(0).picture, L"a.svg");
    EXPECT_EQ(parseBoxAnswer(L"#1 =x Oui", window).steps.size(), 3u);
    for (const wchar_t* bad :
         {L"Oui peut-être", L"#0", L"#3", L"#99999999999999999999", L"#x", L"x", L"F2"}) {
        const BoxAnswer answer = parseBoxAnswer(bad, window);
        EXPECT_FALSE(answer.problem.empty());
        EXPECT_TRUE(answer.steps.empty());
    }
    const ShownWindow empty;
    for (const wchar_t* bad : {L"#1", L"=x", L"Oui"})
        EXPECT_FALSE(parseBoxAnswer(bad, empty).problem.empty());
}

TEST(BoxAnswers, AnyLineIsAnAnswerOrAProblem) {
    const ShownWindow window = sampleWindow(), empty;
    std::mt19937 random(11);
    const std::wstring letters = L"OuiNnt#=>\"  0123;\t\\\x1é漢";
    for (int round = 0; round < 2000; ++round) {
        std::wstring line;
        for (unsigned i = random() % 12; i > 0; --i) line += letters[random() % letters.size()];
        for (const ShownWindow* each : {&window, &empty}) {
            const BoxAnswer answer = parseBoxAnswer(line, *each);
            EXPECT_NE(answer.problem.empty(), answer.steps.empty());
            for (const BoxStep& step : answer.steps)
                if (step.action.kind == WindowAction::Kind::clickItem) {
                    EXPECT_TRUE(step.action.item == 0 || step.action.item == 1);
                }
        }
    }
}

class BoxesTest : public ConsoleTest {
protected:
    const std::vector<std::string> boxes = {"--new", "--quiet", "--module", boxesModule};

    ProgramResult runBoxes(const std::string& commands) { return runScript(boxes, commands); }
    ProgramResult runBoxes(const std::string& commands, const std::string& answers) {
        std::vector<std::string> arguments = boxes;
        arguments.insert(arguments.end(), {"--answers", writtenFile(folder, "boxes.ans", answers)});
        return runScript(arguments, commands);
    }
};

TEST_F(BoxesTest, AnswersOfAFileAreGivenInOrder) {
    const ProgramResult result =
        runBoxes("BOX YESNO \"Remplacer ?\"\nBOX "
                 "CANCEL\nLISTBOX\nNAMEBOX\nWARNINGBOX\nQUESTION\nSTEPBOX\nEXITBOX\nSIDEBOX\n",
                 "; each line is one box\nOui\nTab Enter\n\n#3 Ok\n=a.b Ok\nOk\n=plan Ok\n"
                 "\"Ne plus afficher ce message\" Ok\nn\nOk\no\nEsc\n");
    EXPECT_EQ(result.code, exitcode::ok);
    EXPECT_EQ(result.output,
              "BOX: 6\nBOX: 2\nLISTBOX: 1, element 2\nNAMEBOX: 1, \"plan\"\nWARNINGBOX: 1, checked 1\n"
              "QUESTION: 7\nSTEPBOX\nEXITBOX: 1\nSIDEBOX: 1\n")
        << result.problems;
    expectHas(result.problems, {"+- Ordane Dalle -", "Invalid file name!"});
    EXPECT_FALSE(has(result.problems, "vexohost:")) << result.problems;
}

TEST_F(BoxesTest, WithoutAnAnswerTheRefusalIsTakenAndSaid) {
    const ProgramResult nobody =
        runBoxes("BOX\nBOX CANCEL\nBOX YESNO\nQUESTION\nEXITBOX\nLISTBOX\nNAMEBOX\nWARNINGBOX\n");
    EXPECT_EQ(nobody.code, exitcode::ok);
    EXPECT_EQ(nobody.output, "BOX: 1\nBOX: 2\nBOX: 7\nQUESTION: 2\nEXITBOX: 2\nLISTBOX: 2, element 0\n"
                             "NAMEBOX: 2, \"\"\nWARNINGBOX: 2, checked 0\n");
    expectHas(nobody.problems, {"answered \"Ok\"", "answered \"Annuler\"", "answered \"Non\"", "--answers"});

    const ProgramResult unknown = runBoxes("BOX YESNO\nBOX YESNO\nBOX YESNO\n", "; one\nPeut-être\nOui\n");
    EXPECT_EQ(unknown.code, exitcode::ok) << "the host goes on";
    EXPECT_EQ(unknown.output, "BOX: 7\nBOX: 6\nBOX: 7\n");
    expectHas(unknown.problems, {"boxes.ans:2: \"Peut-être\" is no answer", "boxes.ans has no answer left"});
}

TEST_F(BoxesTest, AClosedInputIsNobody) {
    const ProgramResult result =
        runInShell(program + " --new --quiet --module " + boxesModule + " --command 'BOX YESNO' <&-");
    EXPECT_EQ(result.code, exitcode::ok);
    EXPECT_EQ(result.output, "BOX: 7\n");
}

TEST_F(BoxesTest, PicturesAreWrittenOnTheWayAndUnusedAnswersTold) {
    const std::string picture = folder / "box.svg";
    const ProgramResult result =
        runBoxes("BOX YESNO\n", ">" + picture + "\n>/no/such/folder/x.svg Oui\nOk\nOk\n");
    EXPECT_EQ(result.output, "BOX: 6\n");
    expectHas(readFile(picture), {"<svg", "</svg>"});
    expectHas(result.problems,
              {"/no/such/folder/x.svg: ", "boxes.ans: no box asked for the last 2 of the answers"});
    EXPECT_EQ(run({"--new", "--answers", folder / "none.ans"}).code, exitcode::scriptUnreadable);
}

TEST_F(BoxesTest, TheCommittedPicturesAreThoseOfThisTree) {
    const std::string example = VEXO_SOURCE_DIR "/examples/boxes/pictures";
    const ProgramResult result =
        runInShell("cd '" + (folder / "") + "' && '" + program + "' --new --quiet --module '" + boxesModule +
                   "' --script '" + example + ".scr' --answers '" + example + ".ans'");
    EXPECT_EQ(result.code, exitcode::ok) << result.problems;
    for (const std::string name :
         {"box-ok", "box-cancel", "box-yes-no", "box-long-text", "box-side-icon", "box-question",
          "dialog-exit", "dialog-list", "dialog-save-file", "dialog-warning"})
        EXPECT_EQ(readFile(folder / name + ".svg"),
                  readFile(VEXO_SOURCE_DIR "/docs/pictures/" + name + ".svg"))
            << name << ": tools/make-box-pictures draws it anew";
}

} // namespace
