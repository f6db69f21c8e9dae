#include "vexodlgexitapp.h"
#include "vexodlglistck.h"
#include "vexodlgsavefile.h"
#include "vexodlgwarningck.h"

#include "aced.h"
#include "afxcmn.h"
#include "dbmtext.h"
#include "vexouitools.h"
#include "windowcheck.h"

namespace {

using hostkit::ShownControl;
using hostkit::ShownWindow;
using DialogTest = WindowTest;

CString longMessage() {
    CString text;
    for (int i = 0; i < 60; ++i) text += L"Le dessin a été modifié & n'est pas enregistré. ";
    return text.Trim();
}

TEST_F(DialogTest, ExitShowsItsMessageAndEndsWithOneOrTwo) {
    const std::pair<Do, int> cases[] = {{Do::click(IDOK), 1},
                                        {Do::press(VK_RETURN), 1},
                                        {Do::type(L"O"), 1},
                                        {Do::press(VK_ESCAPE), 2},
                                        {Do::refuse(), 2}};
    for (const auto& [action, result] : cases) {
        VEXODlgExitApp dialog;
        dialog.setExitMsg(L"Licence expirée & plus.");
        port.actions = {action};
        EXPECT_EQ(dialog.DoModal(), result);
        const ShownWindow& window = port.windows.back();
        EXPECT_EQ(window.caption, L"Quitter l'application");
        EXPECT_EQ(window.control(VEXODlgExitApp::IDC_MESSAGE)->text, L"Licence expirée & plus.");
        expectReadable(window, "exit");
        const auto isExitIcon = [](const hostkit::PaintedItem& item) { return item.iconId == 20922; };
        EXPECT_EQ(std::count_if(window.painting.items.begin(), window.painting.items.end(), isExitIcon), 2)
            << "in the caption and beside the text";
    }
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(IDC_WAIT)));
    VEXODlgExitApp dialog;
    port.actions = {Do::clickAt(3, 3)};
    dialog.DoModal();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, MAKEINTRESOURCEW(IDC_ARROW)));
}

TEST_F(DialogTest, DialogsGrowWithTheirMessage) {
    VEXODlgExitApp brief, exit;
    brief.setExitMsg(L"A");
    brief.DoModal();
    exit.setExitMsg(longMessage());
    exit.DoModal();
    EXPECT_GT(port.windows[1].painting.size.cy, port.windows[0].painting.size.cy);
    expectReadable(port.windows[1], "exit");
    for (const CString& message : {longMessage(), CString(L'W', 200), CString(L"")}) {
        VEXODlgWarningCk warning(message, nullptr, L"&Toujours", nullptr);
        warning.DoModal();
        expectReadable(port.windows.back(), "warning");
        const RECT all{0, 0, port.windows.back().painting.size.cx, port.windows.back().painting.size.cy};
        for (const ShownControl& control : port.windows.back().controls)
            EXPECT_TRUE(hostkit::contains(all, control.bounds)) << control.id;
    }
}

TEST_F(DialogTest, JustOneElementIsMarked) {
    constexpr int list = VEXODlgListCk::IDC_LIST;
    const std::tuple<std::deque<Do>, int, int> cases[] = {
        {{Do::click(IDOK)}, 1, 0},
        {{Do::choose(list, 2), Do::click(IDOK)}, 1, 2},
        {{Do::choose(list, 2), Do::choose(list, 1), Do::press(VK_RETURN)}, 1, 1},
        // The mark cannot be taken away, only moved.
        {{Do::choose(list, 0), Do::click(IDOK)}, 1, 0},
        {{Do::press(VK_DOWN), Do::press(VK_SPACE), Do::press(VK_ESCAPE)}, 2, 1},
        // A click beside the mark selects and marks nothing.
        {{Do::clickAt(100, 50), Do::press(VK_RETURN)}, 1, 0},
        {{Do::clickAt(19, 50), Do::press(VK_RETURN)}, 1, 2},
    };
    int number = 0;
    for (const auto& [actions, result, marked] : cases) {
        VEXODlgListCk dialog;
        EXPECT_EQ(dialog.GetCheckedElement(), -1);
        dialog.SetTitle(L"Choix");
        for (const wchar_t* element : {L"Dalle", L"Voile", L"Poutre & poteau"}) dialog.AddElement(element);
        port.actions = actions;
        EXPECT_EQ(dialog.DoModal(), result);
        EXPECT_EQ(dialog.GetCheckedElement(), marked) << number;
        const auto& items = port.windows.back().control(list)->items;
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(items.at(static_cast<std::size_t>(i)).isChecked, i == marked) << number;
        EXPECT_EQ(port.windows.back().caption, L"Choix");
        expectReadable(port.windows.back(), "list");
        ++number;
    }
    EXPECT_TRUE(port.problems.empty());
    VEXODlgListCk empty;
    port.actions = {Do::choose(list, 0), Do::click(IDOK)};
    EXPECT_EQ(empty.DoModal(), 1);
    EXPECT_EQ(empty.GetCheckedElement(), -1);
    ASSERT_EQ(port.problems.size(), 1u) << "there is nothing to choose, and it is told";
}

TEST_F(DialogTest, ABadFileNameIsRefusedAndAskedAgain) {
    constexpr int nameEdit = VEXODlgSaveFile::IDC_NAME;
    for (const wchar_t* bad : {L"", L"a.b", L"a:b", L"\"a", L"a;", L"a,b", L"?", L"a=b"}) {
        VEXODlgSaveFile dialog;
        port.boxes.clear();
        port.actions = {Do::write(nameEdit, bad), Do::click(IDOK), Do::press(VK_RETURN), Do::type(L"Étage 1"),
                        Do::press(VK_RETURN)};
        EXPECT_EQ(dialog.DoModal(), IDOK);
        ASSERT_EQ(port.boxes.size(), 1u) << bad;
        EXPECT_EQ(port.boxes[0].text, L"Invalid file name!");
        EXPECT_EQ(port.boxes[0].flags, 48u);
        EXPECT_STREQ(dialog.GetFileName(), L"Étage 1") << "the edit has the focus, its text selected";
        EXPECT_TRUE(port.actions.empty());
        expectReadable(port.windows.back(), "save");
    }
    VEXODlgSaveFile refused;
    port.actions = {Do::write(nameEdit, L"a"), Do::press(VK_ESCAPE)};
    EXPECT_EQ(refused.DoModal(), IDCANCEL);
    EXPECT_STREQ(refused.GetFileName(), L"");
    EXPECT_EQ(refused.IsFileNameValid(), 0) << "without its window there is no text";

    VEXODlgSaveFile modeless;
    ASSERT_TRUE(modeless.Create(nullptr));
    EXPECT_TRUE(modeless.IsWindowVisible());
    modeless.SetDlgItemTextW(nameEdit, L"plan\\a");
    EXPECT_EQ(modeless.IsFileNameValid(), 1);
    modeless.SendMessageW(WM_COMMAND, IDOK);
    EXPECT_FALSE(modeless.IsWindowVisible());
    EXPECT_STREQ(modeless.GetFileName(), L"plan\\a");
}

TEST_F(DialogTest, AWarningRemembersItsCheckBox) {
    constexpr int check = VEXODlgWarningCk::IDC_CHECK;
    VEXODlgWarningCk warning(L"Attention", L"", nullptr, nullptr);
    EXPECT_EQ(warning.IsChecked(), 0);
    port.actions = {Do::click(check), Do::click(IDOK)};
    EXPECT_EQ(warning.DoModal(), IDOK);
    EXPECT_EQ(warning.IsChecked(), 1);
    EXPECT_EQ(port.windows[0].caption, L"Avertissement");
    EXPECT_EQ(port.windows[0].control(check)->text, L"Ne plus afficher ce message");
    EXPECT_FALSE(port.windows[0].control(check)->isChecked);
    EXPECT_TRUE(port.windows[1].control(check)->isChecked);
    port.actions = {Do::click(check), Do::refuse()};
    EXPECT_EQ(warning.DoModal(), IDCANCEL);
    EXPECT_EQ(warning.IsChecked(), 0) << "it starts unchecked, and a refusal keeps nothing";
}

// --- Helpers of dialogs ------------------------------------------------------------------------------------

TEST_F(DialogTest, StepsAreNamedAndToldInABox) {
    const wchar_t* const names[] = {L"AUCUN", L"MODELE", L"DESSIN", L"DOCUMENT", L"AUCUN"};
    for (int mode = -1; mode <= 3; ++mode)
        EXPECT_STREQ(VEXOUITools::getStringFromStepMode(mode), names[mode + 1]) << mode;
    VEXOUITools::DisplayInvalidStep(0, 1);
    VEXOUITools::DisplayInvalidStep(7, 1, 2);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text,
              L"Commande invalide en mode MODELE.\nActivez le mode DESSIN pour exécuter la commande.");
    EXPECT_EQ(port.boxes[1].text,
              L"Commande invalide en mode AUCUN.\nActivez le mode DESSIN ou le mode DOCUMENT "
              L"pour exécuter la commande.");
    EXPECT_EQ(port.boxes[0].flags, 64u);
}

TEST_F(DialogTest, ComboBoxesMenusAndControlsAreFilledAndHidden) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, L"#32770", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, 0));
    CComboBoxEx combo;
    ASSERT_TRUE(combo.Create(WS_VISIBLE | CBS_DROPDOWNLIST, CRect(0, 0, 100, 20), &parent, 1));
    CImageList images;
    images.Create(16, 16, 0, 0, 4);
    EXPECT_EQ(VEXOUITools::AddItemComboBoxEx(&combo, &images, L"B", 14019, -1), 0);
    EXPECT_EQ(VEXOUITools::AddItemComboBoxEx(&combo, &images, L"A", 1, 0), 0);
    EXPECT_EQ(VEXOUITools::AddItemComboBoxEx(&combo, &images, L"C", 14019, 9), -1);
    EXPECT_EQ(VEXOUITools::AddItemComboBoxEx(nullptr, &images, L"C", 14019, -1), -1);
    EXPECT_EQ(combo.GetItemImage(0), -1);
    ASSERT_EQ(combo.GetItemImage(1), 0);
    EXPECT_EQ(images.ExtractIconW(0)->id, 14019u);

    CString text(L"kept");
    EXPECT_EQ(VEXOUITools::GetSafeLBText(combo, -1, text), 0);
    EXPECT_STREQ(text, L"kept");
    EXPECT_EQ(VEXOUITools::GetSafeLBText(combo, 1, text), 1);
    EXPECT_STREQ(text, L"B");
    EXPECT_EQ(VEXOUITools::GetSafeLBText(combo, 2, text), 1);
    EXPECT_STREQ(text, L"");

    CButton first, second;
    first.Create(L"1", WS_VISIBLE, CRect(0, 30, 50, 50), &parent, 2);
    second.Create(L"2", 0, CRect(0, 60, 50, 80), &parent, 3);
    VEXOUITools::hideControls({&first, nullptr, &second, &combo}, {true, true, false});
    EXPECT_FALSE(first.IsWindowVisible());
    EXPECT_TRUE(second.IsWindowVisible());
    EXPECT_TRUE(combo.IsWindowVisible());

    CMenu menu;
    menu.CreatePopupMenu();
    VEXOUITools::appendOptions(&menu, 100, 14009);
    VEXOUITools::appendOptions(&menu, 101, 14010, 102, 14011);
    VEXOUITools::appendOptions(nullptr, 1, 14009);
    ASSERT_EQ(menu.GetMenuItemCount(), 3u);
    EXPECT_EQ(menu.GetMenuItemID(2), 102u);
    menu.GetMenuStringW(101, text, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"Eléments de coffrage");
}

TEST_F(DialogTest, EditingAParagraphHidesTheWindowsAroundAndBringsThemBack) {
    CWnd outer, inner;
    ASSERT_TRUE(
        outer.CreateEx(0, L"#32770", L"O", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, adsw_acadMainWnd(), 0));
    ASSERT_TRUE(
        inner.CreateEx(0, L"#32770", L"I", WS_POPUP | WS_VISIBLE, 0, 0, 90, 90, outer.GetSafeHwnd(), 0));
    AcDbMText text;
    ASSERT_EQ(text.setContents(L"Ligne 1\\PA\\\\P"), Acad::eOk);
    port.actions = {Do::press(VK_END), Do::type(L"x"), Do::press(VK_RETURN), Do::type(L"y"), Do::click(IDOK)};
    VEXOUITools::EditMTextUsingInteractiveAcedEdit(&text, &inner, AcGePoint3d(1, 2, 3));
    EXPECT_EQ(text.rawContents(), L"Ligne 1\\PA\\\\Px\\Py");
    EXPECT_EQ(text.location(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(port.windows[0].control(1001)->text, L"Ligne 1\nA\\\\P");
    EXPECT_TRUE(inner.IsWindowVisible() && outer.IsWindowVisible() && ::IsWindowEnabled(adsw_acadMainWnd()));

    port.actions = {Do::type(L"z")}; // then nobody is there
    VEXOUITools::EditMTextUsingInteractiveAcedEdit(&text, nullptr, AcGePoint3d(4, 5, 6));
    EXPECT_EQ(text.rawContents(), L"Ligne 1\\PA\\\\Px\\Py");
    EXPECT_EQ(text.location(), AcGePoint3d(4, 5, 6));
    EXPECT_EQ(acedEditMTextInteractive(nullptr, false, false), RTERROR);
}

} // namespace
