// Dialogs within windows, sheets of pages, files asked for, and lists that open.
#include "afxdlgs.h"
#include "outputfiles.h"
#include "scriptedport.h"
#include "temporaryfolder.h"
#include "widepath.h"

#include <gtest/gtest.h>

namespace {

using namespace hostkit;
using Do = WindowAction;

constexpr DWORD stop = WS_TABSTOP;
const DialogItem innerItems[] = {{L"STATIC", 9, 0, 0, 0, 20, 8, 0},
                                 {L"EDIT", 10, stop, 20, 0, 40, 12, 0},
                                 {L"COMBOBOX", 11, stop | CBS_DROPDOWNLIST, 0, 14, 60, 12, 0}};
const DialogTemplate templates[] = {{7001, WS_CHILD | DS_CONTROL, 80, 30, 0, innerItems, 3}};
const DialogTable table{templates, 1};

} // namespace

extern "C" const DialogTable* getModuleDialogTable() { return &table; }

namespace {

struct Page : CPropertyPage {
    Page()
        : CPropertyPage(7001) {}
    BOOL OnInitDialog() override {
        SetWindowTextW(name);
        GetDlgItem(9)->SetWindowTextW(L"&Edit :");
        for (const wchar_t* each : {L"b", L"a", L"c"})
            GetDlgItem(11)->SendMessageW(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(each));
        return CPropertyPage::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* exchange) override { DDX_Text(exchange, 10, value); }
    BOOL OnKillActive() override { return CPropertyPage::OnKillActive() && value != L"bad"; }
    BOOL OnApply() override {
        ++applied;
        return value != L"no";
    }
    BOOL OnHelpInfo(HELPINFO* info) {
        helpFor = info->iCtrlId;
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
public:
    CString name = L"Page", value = L"start";
    int applied = 0, helpFor = 0;
};
BEGIN_MESSAGE_MAP(Page, CPropertyPage)
ON_WM_HELPINFO()
END_MESSAGE_MAP()

class DialogsTest : public ::testing::Test {
protected:
    ScriptedPort port;
    ScopedPort current{port};
};

TEST_F(DialogsTest, SheetsShowOnePageAndTakeAllValues) {
    Page first, second;
    first.name = L"One";
    second.name = L"Two";
    CPropertySheet sheet(L"Sheet");
    sheet.AddPage(&first);
    sheet.AddPage(&second);
    EXPECT_EQ(sheet.GetPage(2), nullptr);
    const int tab = 0x3020;
    port.actions = {Do::click(tab + 1), Do::write(10, L"bad"), // of the page that is seen
                    Do::click(tab)};
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    ASSERT_GE(port.windows.size(), 3u);
    const auto isSeen = [](const ShownWindow& window, const wchar_t* text) {
        int edits = 0;
        for (const ShownControl& each : window.controls) edits += each.kind == ShownControl::Kind::edit;
        return edits == 1 &&
               std::any_of(window.controls.begin(), window.controls.end(),
                           [&](const ShownControl& each) { return each.isChecked && each.text == text; });
    };
    EXPECT_TRUE(isSeen(port.windows[0], L"One"));
    EXPECT_TRUE(isSeen(port.windows[1], L"Two"));
    EXPECT_EQ(first.applied + second.applied, 0);
}

TEST_F(DialogsTest, PagesHoldTheSheetOpen) {
    Page page;
    CPropertySheet sheet(L"Sheet");
    sheet.AddPage(&page);
    // The page has the focus; Tab leads from the tab into it, too. Enter is the sheet's Ok.
    port.actions = {Do::press(VK_TAB, true), Do::press(VK_TAB),      Do::press(VK_F1),
                    Do::write(10, L"bad"),   Do::press(VK_RETURN),   Do::write(10, L"no"),
                    Do::press(VK_RETURN),    Do::write(10, L"good"), Do::press(VK_RETURN)};
    EXPECT_EQ(sheet.DoModal(), IDOK);
    EXPECT_TRUE(port.actions.empty());
    EXPECT_EQ(page.value, L"good");
    EXPECT_EQ(page.applied, 2) << "not while the page does not let go";
    EXPECT_EQ(page.helpFor, 10);
    EXPECT_TRUE(port.windows[0].control(10)->hasFocus);
    EXPECT_TRUE(port.windows[1].control(0x3020)->hasFocus);
    EXPECT_TRUE(port.windows[2].control(10)->hasFocus);
}

TEST_F(DialogsTest, AListOpensAndCloses) {
    Page page;
    CPropertySheet sheet(L"Sheet");
    sheet.AddPage(&page);
    port.actions = {Do::choose(11, 1), Do::click(11),       Do::press(VK_DOWN),   Do::press(VK_ESCAPE),
                    Do::press(VK_F4),  Do::press(VK_DOWN),  Do::press(VK_RETURN), Do::click(11),
                    Do::click(10),     Do::press(VK_ESCAPE)};
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    const std::pair<const wchar_t*, bool> states[] = {
        {L"", false}, {L"a", false}, {L"a", true},  {L"c", true}, {L"a", false},
        {L"a", true}, {L"c", true},  {L"c", false}, {L"c", true}, {L"c", false}};
    ASSERT_EQ(port.windows.size(), std::size(states));
    for (std::size_t i = 0; i < std::size(states); ++i) {
        const ShownControl& list = *port.windows[i].control(11);
        EXPECT_EQ(list.text, states[i].first) << i;
        EXPECT_EQ(list.isDropped, states[i].second) << i;
        const auto& items = port.windows[i].painting.items;
        const auto rows = std::count_if(items.begin(), items.end(),
                                        [](const PaintedItem& each) { return each.text == L"b"; });
        EXPECT_EQ(rows, states[i].second ? 1 : 0) << i << ": what is open is painted";
    }
}

class FileDialogTest : public DialogsTest {
protected:
    /// The path, or what a box said.
    std::wstring ask(bool opens, const std::wstring& text,
                     DWORD flags = OFN_FILEMUSTEXIST | OFN_OVERWRITEPROMPT) {
        CFileDialog dialog(opens, L".txt", nullptr, flags, L"Text (*.txt)|*.txt;*.TEX|All|*.*||");
        const CString start = wide(folder.path());
        dialog.m_ofn.lpstrInitialDir = start;
        port.boxes.clear();
        port.actions = {Do::write(CFileDialog::nameId, text), Do::press(VK_RETURN)};
        if (dialog.DoModal() == IDOK) return std::wstring(dialog.GetPathName());
        EXPECT_TRUE(dialog.GetPathName().IsEmpty());
        return port.boxes.empty() ? L"" : L"! " + port.boxes[0].text;
    }
    std::wstring in(const std::wstring& name) {
        return std::filesystem::canonical(folder.path()).wstring() + L"\\" + name;
    }
    TemporaryFolder folder;
};

TEST_F(FileDialogTest, PathsAreTakenRefusedAndAskedAbout) {
    folder.write("there.txt", "old");
    folder.write("plain", "old");
    EXPECT_EQ(ask(true, L"there"), in(L"there.txt"));
    EXPECT_EQ(ask(true, L" there.txt "), in(L"there.txt"));
    EXPECT_EQ(ask(true, L"none.txt", 0), in(L"none.txt")) << "it need not be there";
    EXPECT_EQ(ask(true, L"none").substr(0, 2), L"! ");
    EXPECT_EQ(ask(true, L""), L"");
    EXPECT_EQ(ask(false, L"new"), in(L"new.txt"));
    EXPECT_EQ(ask(false, in(L"new.b")), in(L"new.b"));
    EXPECT_EQ(ask(false, L"none\\new"), L"! " + in(L"none\\") + L"\nCe dossier est introuvable.");
    EXPECT_EQ(ask(false, L"there"), L"! there.txt existe déjà.\nVoulez-vous le remplacer ?");
    EXPECT_EQ(ask(false, L"there", 0), in(L"there.txt"));
    port.outputs().protect(in(L"there.txt"), OutputFiles::Role::input, L"the script");
    EXPECT_NE(ask(false, L"there", 0).find(L"the script"), std::wstring::npos);
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(ask(false, L"sub"), L"") << "goes there, and asks on";
    EXPECT_EQ(std::filesystem::exists(folder / "new.txt"), false) << "it only asks";
}

TEST_F(FileDialogTest, FoldersAndFilesOfTheFilterAreListed) {
    for (const char* name : {"b.txt", "a.TEX", "c.doc", ".hidden.txt"}) folder.write(name, "");
    std::filesystem::create_directories(folder / "sub/deep");
    folder.write("sub/x.txt", "");
    CFileDialog dialog(TRUE, nullptr, L"b.txt", OFN_NOCHANGEDIR, L"Text|*.txt;*.tex||");
    const CString start = wide(folder.path());
    dialog.m_ofn.lpstrInitialDir = start;
    port.actions = {Do::choose(CFileDialog::listId, 0), Do::click(IDOK), Do::choose(CFileDialog::listId, 1),
                    Do::click(IDOK)};
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(std::wstring(dialog.GetPathName()),
              std::filesystem::canonical(folder / "sub").wstring() + L"\\x.txt");
    EXPECT_EQ(dialog.GetFileTitle() + L"|" + dialog.GetFileExt(), L"x|txt");
    const auto listed = [&](std::size_t step) {
        std::wstring names;
        for (const ShownItem& each : port.windows[step].control(CFileDialog::listId)->items)
            names += each.text + L"|";
        return names;
    };
    EXPECT_EQ(listed(0), L"sub\\|a.TEX|b.txt|");
    EXPECT_EQ(listed(2), L"deep\\|x.txt|");
    EXPECT_EQ(port.windows[0].control(CFileDialog::nameId)->text, L"b.txt");
    EXPECT_EQ(GetFileAttributesW(L"x.txt"), INVALID_FILE_ATTRIBUTES);
    dialog.m_ofn.Flags = 0;
    port.actions = {Do::write(CFileDialog::nameId, L"sub/x.txt"), Do::click(IDOK)};
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_NE(GetFileAttributesW(L"x.txt"), INVALID_FILE_ATTRIBUTES) << "its folder is the current one";
}

} // namespace
