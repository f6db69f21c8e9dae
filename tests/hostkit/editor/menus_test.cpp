// The fuzz target's own check, over the corpus that it starts from, among others.
#include "../../../fuzz/menu_fuzz.cpp"

#include "aced.h"
#include "hosttest.h"
#include "temporaryfolder.h"

#include <cwctype>
#include <fstream>
#include <iterator>

namespace {

using hostkit::MenuGroup;

const std::string corpus = VEXO_SOURCE_DIR "/fuzz/corpus/menu";

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(MenuFile, ToolbarsAndButtonsAreRead) {
    MenuGroup group;
    std::wstring problem;
    ASSERT_EQ(hostkit::readMenuText(bytesOf(corpus + "/whole.mnu"), L"m", group, problem), Acad::eOk)
        << hostkit::utf8FromWide(problem);
    ASSERT_EQ(group.toolbars.size(), 2u);
    const hostkit::Toolbar &bars = *group.toolbars[0], &views = *group.toolbars[1];
    EXPECT_EQ(group.name + L"|" + bars.id + L"|" + bars.name, L"Rebar|ID_TbBars|Bars, straight");
    ASSERT_EQ(bars.buttons.size(), 2u);
    EXPECT_EQ(bars.buttons[1].name + L"|" + bars.buttons[1].macro, L"Stirrup [round]|^C^C_STIRRUP ROUND 10");
    EXPECT_TRUE(bars.isVisible && !views.isVisible);
    EXPECT_EQ(views.id, L"TB_VIEWS");
    MenuGroup other;
    ASSERT_EQ(hostkit::readMenuText(bytesOf(corpus + "/ansi.mnu"), L"m", other, problem), Acad::eOk);
    EXPECT_EQ(other.name + other.toolbars[0]->name + other.toolbars[0]->buttons[0].macro,
              L"\u00e9t\u00e9B\u00e9tona");
}

TEST(MenuFile, FaultsAreToldWithTheirLine) {
    const std::string front = "***MENUGROUP=A\n***TOOLBARS\n";
    const std::string head = front + "**T\n[_Toolbar(\"T\")]\n";
    const struct {
        std::string text;
        const wchar_t* problem;
    } cases[] = {
        {"", L"m:1: the file names no menu group"},
        {"0\nSECTION\n", L"m:1: this is no menu"},
        {"***MENUGROUP=  \n", L"m:1: the menu group has no name"},
        {"***MENUGROUP=A\n\n***menugroup=B\n", L"m:3: the menu group is named a second time"},
        {front + "[_Button(\"x\")]c\n", L"m:3: an item stands before the first toolbar"},
        {front + "**\n", L"m:3: a toolbar has no id"},
        {front + "**T\n**U\n", L"m:3: the toolbar T has no item"},
        {front + "**T\n\n", L"m:3: the toolbar T has no item"},
        {front + "**T\n[_Button(\"x\")]c\n", L"m:4: a toolbar begins with"},
        {head + "[_Toolbar(\"U\")]\n", L"m:5: the toolbar is named a second time"},
        {head + "ID no label\n", L"m:5: an item has its label in brackets"},
        {head + "[_Button(\"x]\")\n", L"m:5: an item has its label in brackets"},
        {head + "[_Button(\"x\"]c\n", L"m:5: an item is [--] or"},
        {head + "[_Button()]c\n", L"m:5: a button has no name"},
        {head + "[_Spring(\"x\")]c\n", L"m:5: there is no kind of item _Spring"},
        {head + "[_Button(\"x\")]c+\n+\n+\nd\n[oops\n", L"m:9: an item has its label"},
    };
    for (const auto& each : cases) {
        MenuGroup group;
        std::wstring problem;
        EXPECT_EQ(hostkit::readMenuText(each.text, L"m", group, problem), Acad::eInvalidInput) << each.text;
        EXPECT_TRUE(problem.starts_with(each.problem)) << each.text << hostkit::utf8FromWide(problem);
    }
}

TEST(MenuFile, TheCorpusAndItsDamagedFormsAreSurvived) {
    for (const auto& file : std::filesystem::directory_iterator(corpus)) {
        const std::string bytes = bytesOf(file.path());
        const auto run = [](const std::string& each) {
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(each.data()), each.size());
        };
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
            run(bytes.substr(0, cut));
            run(bytes.substr(0, cut) + "\"" + bytes.substr(cut));
            run(bytes.substr(0, cut) + "\n" + bytes.substr(cut));
        }
    }
}

class MenuCommandsTest : public hostkit::HostTest {
protected:
    // The road of a program: queued, the path in capital letters with '/'.
    hostkit::CommandResult queue(const wchar_t* command, std::wstring argument) {
        ads_queueexpr((L"(command \"" + std::wstring(command) + L"\" \"" + argument + L"\")").c_str());
        ads_queueexpr(L"(command \" \n\")");
        return session.host().runDeferred();
    }
    std::wstring upper(const std::string& path) {
        std::wstring wide = hostkit::wideFromUtf8(path);
        for (wchar_t& each : wide) each = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(each)));
        return wide;
    }
    TemporaryFolder folder;
};

TEST_F(MenuCommandsTest, AQueuedLoadFindsItsFileAndUnloadTakesItAway) {
    std::filesystem::create_directory(folder / "Support Files");
    folder.write("Support Files/Rebar.mnu", bytesOf(corpus + "/whole.mnu"));
    EXPECT_EQ(queue(L"_.CUILOAD", upper(folder / "Support Files/Rebar.mnu")).status, Acad::eOk);
    EXPECT_EQ(acedIsMenuGroupLoaded(L"REBAR"), TRUE);
    EXPECT_NE(session.port().printed.find(L"Menu group Rebar loaded, 2 toolbars"), std::wstring::npos);
    const hostkit::CommandResult again = queue(L"_.CUILOAD", upper(folder / "Support Files/Rebar.mnu"));
    EXPECT_NE(again.reason.find(L"Rebar is loaded already"), std::wstring::npos);
    EXPECT_EQ(queue(L"_.CUIUNLOAD", L"rebar").status, Acad::eOk);
    EXPECT_EQ(acedIsMenuGroupLoaded(L"Rebar"), FALSE);
    EXPECT_NE(queue(L"_.CUIUNLOAD", L"rebar").status, Acad::eOk);
}

TEST_F(MenuCommandsTest, WhatCannotBeLoadedIsToldAndTheHostGoesOn) {
    folder.write("bad.mnu", "***MENUGROUP=A\n***TOOLBARS\n**T\n");
    folder.write("big.mnu", "***MENUGROUP=A\n" + std::string(hostkit::largestMenuFile, '\n'));
    const struct {
        std::string file;
        Acad::ErrorStatus status;
        const wchar_t* reason;
    } cases[] = {{"missing.mnu", Acad::eFileNotFound, L"there is no such menu file"},
                 {"bad.mnu", Acad::eInvalidInput, L"bad.mnu:3: the toolbar T"},
                 {"big.mnu", Acad::eFileAccessErr, L"too large"},
                 {"", Acad::eFileAccessErr, L"cannot be read"}};
    for (const auto& each : cases) {
        const hostkit::CommandResult result =
            session.host().run(L"CUILOAD " + hostkit::quotedWord(hostkit::wideFromUtf8(folder / each.file)));
        EXPECT_EQ(result.status, each.status) << each.file;
        EXPECT_NE(result.reason.find(each.reason), std::wstring::npos)
            << hostkit::utf8FromWide(result.reason);
    }
    EXPECT_TRUE(session.host().menuGroups().all().empty());
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    folder.write("good.mnu", "***MENUGROUP=A\n");
    EXPECT_EQ(session.host().run(L"CUILOAD " + hostkit::wideFromUtf8(folder / "good.mnu")).status, Acad::eOk)
        << "menus need no drawing";
}

} // namespace
