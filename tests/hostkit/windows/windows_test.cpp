#include "afxwin.h"
#include "desktop.h"
#include "scriptedport.h"
#include "systembox.h"

#include <gtest/gtest.h>

namespace {

using namespace hostkit;
using Do = WindowAction;

constexpr DWORD topStyle = WS_POPUP | WS_VISIBLE;
constexpr DWORD stop = WS_VISIBLE | WS_TABSTOP;

class WindowTest : public ::testing::Test {
protected:
    HWND makeTop(HWND owner = nullptr) {
        return CreateWindowExW(0, L"#32770", L"Top", topStyle, 10, 20, 300, 200, owner, 0);
    }
    HWND makeChild(HWND parent, const wchar_t* windowClass, DWORD style, int id) {
        return CreateWindowExW(0, windowClass, L"", style | WS_CHILD, 0, 20 * (id % 9), 90, 18, parent, id);
    }
    static std::wstring textOf(HWND window) {
        wchar_t buffer[200];
        GetWindowTextW(window, buffer, 200);
        return buffer;
    }

    ScriptedPort port;
    ScopedPort current{port};
};

TEST_F(WindowTest, StaleAndForeignHandlesDoNothing) {
    HWND gone = makeTop();
    ASSERT_TRUE(DestroyWindow(gone));
    HWND foreign = nullptr;
    {
        ScriptedPort other;
        const ScopedPort use(other);
        foreign = makeTop();
        EXPECT_TRUE(IsWindow(foreign));
    }
    const HWND newer = makeTop();
    EXPECT_NE(newer, gone) << "handles are not used twice";
    for (const HWND window : {gone, foreign, HWND{}}) {
        RECT rect{};
        POINT point{};
        EXPECT_FALSE(IsWindow(window));
        EXPECT_FALSE(DestroyWindow(window));
        EXPECT_FALSE(ShowWindow(window, SW_SHOW));
        EXPECT_FALSE(EnableWindow(window, FALSE));
        EXPECT_FALSE(IsWindowEnabled(window) || IsWindowVisible(window));
        EXPECT_FALSE(GetClientRect(window, &rect) || GetWindowRect(window, &rect));
        EXPECT_FALSE(MoveWindow(window, 0, 0, 1, 1, TRUE) || ScreenToClient(window, &point));
        EXPECT_FALSE(PostMessageW(window, WM_USER, 0, 0));
        EXPECT_EQ(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0), 0);
        EXPECT_EQ(SetFocus(window), nullptr);
        EXPECT_EQ(GetParent(window), nullptr);
        EXPECT_EQ(GetWindow(window, GW_CHILD), nullptr);
        EXPECT_EQ(GetDlgItem(window, 1), nullptr);
        EXPECT_EQ(GetNextDlgTabItem(window, nullptr, FALSE), nullptr);
        EXPECT_EQ(CWnd::FromHandle(window), nullptr);
        EXPECT_EQ(makeChild(window, L"EDIT", 0, 1), nullptr) << "a child needs its parent";
        CWnd object;
        EXPECT_FALSE(object.SubclassWindow(window));
        EXPECT_EQ(object.RunModalLoop(), -1);
    }
    EXPECT_EQ(CreateWindowExW(0, L"NoSuchClass", L"", topStyle, 0, 0, 1, 1, nullptr, 0), nullptr);
    EXPECT_TRUE(IsWindow(newer));
}

TEST_F(WindowTest, DestroyingTakesChildrenAndOwnedWindowsAndTellsTheirObjects) {
    CWnd outer, inner, owned;
    outer.CreateEx(0, L"#32770", L"", topStyle, CRect(0, 0, 100, 100), nullptr, 0);
    inner.CreateEx(0, L"STATIC", L"", WS_CHILD, CRect(0, 0, 10, 10), &outer, 1);
    owned.CreateEx(0, L"#32770", L"", topStyle, CRect(0, 0, 10, 10), &inner, 0);
    EXPECT_EQ(GetWindow(owned.GetSafeHwnd(), GW_OWNER), outer.GetSafeHwnd())
        << "a child's owner is its top window";
    PostMessageW(inner.GetSafeHwnd(), WM_USER, 0, 0);
    SetFocus(owned.GetSafeHwnd());
    outer.DestroyWindow();
    EXPECT_EQ(inner.GetSafeHwnd(), nullptr);
    EXPECT_EQ(owned.GetSafeHwnd(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
    MSG message;
    EXPECT_FALSE(Desktop::of(port).take(message)) << "what waited for it goes with it";

    CWnd late;
    {
        ScriptedPort other;
        const ScopedPort use(other);
        late.CreateEx(0, L"#32770", L"", topStyle, CRect(0, 0, 10, 10), nullptr, 0);
        EXPECT_NE(late.GetSafeHwnd(), nullptr);
    }
    EXPECT_EQ(late.GetSafeHwnd(), nullptr) << "windows go with their port";
}

TEST_F(WindowTest, FocusFollowsEnablingAndTabOrder) {
    const HWND top = makeTop();
    const HWND first = makeChild(top, L"BUTTON", stop, 1), label = makeChild(top, L"STATIC", WS_VISIBLE, 2);
    const HWND hidden = makeChild(top, L"BUTTON", WS_TABSTOP, 3),
               disabled = makeChild(top, L"EDIT", stop | WS_DISABLED, 4);
    const HWND last = makeChild(top, L"EDIT", stop, 5);
    EXPECT_EQ(SetFocus(disabled), nullptr);
    SetFocus(first);
    EXPECT_EQ(GetFocus(), first);
    EXPECT_EQ(GetActiveWindow(), top);
    EXPECT_EQ(GetNextDlgTabItem(top, first, FALSE), last);
    EXPECT_EQ(GetNextDlgTabItem(top, last, FALSE), first);
    EXPECT_EQ(GetNextDlgTabItem(top, first, TRUE), last);
    EXPECT_EQ(GetNextDlgTabItem(top, label, FALSE), last);
    EXPECT_FALSE(IsWindowVisible(hidden));
    EXPECT_FALSE(EnableWindow(top, FALSE));
    EXPECT_EQ(GetFocus(), nullptr) << "a disabled window keeps no focus in it";
    EXPECT_EQ(SetFocus(first), nullptr);
    EXPECT_TRUE(EnableWindow(top, TRUE));
    ShowWindow(top, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(first));
}

TEST_F(WindowTest, EditsTakeKeysTextAndLimits) {
    const HWND top = makeTop();
    const HWND edit = makeChild(top, L"edit", stop, 1);
    const auto key = [&](unsigned code) { SendMessageW(edit, WM_KEYDOWN, code, 0); };
    const auto type = [&](const wchar_t* text) {
        for (; *text; ++text) SendMessageW(edit, WM_CHAR, static_cast<WPARAM>(*text), 0);
    };
    type(L"dalle\r\x1");
    EXPECT_EQ(textOf(edit), L"dalle") << "a single line takes no line ends and no control characters";
    key(VK_HOME);
    key(VK_DELETE);
    type(L"D");
    key(VK_END);
    key(VK_BACK);
    key(VK_LEFT);
    type(L"x");
    EXPECT_EQ(textOf(edit), L"Dalxl");
    for (int i = 0; i < 10; ++i) key(VK_RIGHT);
    for (int i = 0; i < 10; ++i) key(VK_BACK);
    EXPECT_EQ(textOf(edit), L"");
    SendMessageW(edit, EM_LIMITTEXT, 3, 0);
    type(L"abcd");
    EXPECT_EQ(textOf(edit), L"abc");
    SendMessageW(edit, EM_SETSEL, 1, 99);
    type(L"z");
    EXPECT_EQ(textOf(edit), L"az");
    SetWindowTextW(edit, nullptr);
    EXPECT_EQ(textOf(edit), L"");
    wchar_t small[3];
    SetWindowTextW(edit, L"abcdef");
    EXPECT_EQ(GetWindowTextW(edit, small, 3), 2);
    EXPECT_STREQ(small, L"ab");
    // What is shown of a text that is too long is its end, where the caret stands.
    const HWND narrow = makeChild(top, L"EDIT", stop, 2);
    for (int i = 0; i < 60; ++i) SendMessageW(narrow, WM_CHAR, static_cast<WPARAM>(L'0' + i % 10), 0);
    const Painting painting = Desktop::of(port).paint(top);
    const PaintedItem& text = painting.items.back();
    EXPECT_FALSE(isClipped(text));
    EXPECT_EQ(text.text.back(), L'9');
}

TEST_F(WindowTest, ListsSortFindSelectAndTell) {
    const HWND top = makeTop();
    CListBox list;
    list.Create(stop | LBS_SORT | LBS_NOTIFY, CRect(0, 0, 100, 40), CWnd::FromHandle(top), 1);
    for (const wchar_t* text : {L"poutre", L"Dalle", L"voile", L"dallage"}) list.AddString(text);
    CString text;
    list.GetText(0, text);
    EXPECT_STREQ(text, L"dallage");
    EXPECT_EQ(list.FindStringExact(-1, L"DALLE"), 1);
    EXPECT_EQ(list.SelectString(0, L"dal"), 1) << "the search begins behind the item";
    EXPECT_EQ(list.GetCurSel(), 1);
    EXPECT_EQ(list.DeleteString(0), 3);
    EXPECT_EQ(list.GetCurSel(), 0) << "the selection moves with its item";
    EXPECT_EQ(list.DeleteString(0), 2);
    EXPECT_EQ(list.GetCurSel(), -1);
    list.SetItemData(1, 77);
    EXPECT_EQ(list.GetItemData(1), 77u);
    for (const int index : {-1, 2, 1000000}) {
        EXPECT_EQ(list.GetTextLen(index), LB_ERR);
        EXPECT_EQ(list.DeleteString(index), LB_ERR);
        text = L"kept";
        list.GetText(index, text);
        EXPECT_STREQ(text, L"");
    }
    EXPECT_EQ(list.SetCurSel(2), LB_ERR);
    EXPECT_EQ(list.InsertString(9, L"x"), LB_ERR);
    EXPECT_EQ(CListBox().GetCount(), LB_ERR) << "without its window";

    CComboBox combo;
    combo.Create(stop | CBS_DROPDOWNLIST, CRect(0, 60, 100, 80), CWnd::FromHandle(top), 2);
    combo.AddString(L"un");
    combo.InsertString(0, L"deux");
    combo.SelectString(-1, L"U");
    EXPECT_EQ(textOf(combo.GetSafeHwnd()), L"un");
    combo.DeleteString(1);
    EXPECT_EQ(textOf(combo.GetSafeHwnd()), L"");
    EXPECT_EQ(combo.AddString(L"trois"), 1);
    EXPECT_EQ(combo.SetCurSel(1) + combo.GetCurSel() + combo.FindStringExact(-1, L"TROIS"), 3);
    EXPECT_EQ(textOf(combo.GetSafeHwnd()), L"trois");
    combo.SetItemData(1, 77);
    EXPECT_EQ(combo.GetItemData(1), 77u);
    combo.ResetContent();
    list.ResetContent();
    EXPECT_EQ(textOf(combo.GetSafeHwnd()), L"");
    EXPECT_EQ(combo.GetCount() + list.GetCount(), 0);
}

// Records what reaches it, in order.
class Recorder : public CDialog {
public:
    std::wstring events;
    DECLARE_MESSAGE_MAP()
    void OnButton() { events += L"button "; }
    void OnMark() { events += L"mark "; }
    void OnSelect() { events += L"select "; }
    void OnDrop() { events += L"drop "; }
    void OnCloseUp() { events += L"closeup "; }
    void OnChange() { events += L"change "; }
    LRESULT OnUser(WPARAM wParam, LPARAM) {
        events += L"user" + std::to_wstring(wParam) + L" ";
        return 42;
    }
    void OnOK() override { events += L"ok "; }
    void OnCancel() override { events += L"cancel "; }
};

BEGIN_MESSAGE_MAP(Recorder, CDialog)
ON_BN_CLICKED(10, &Recorder::OnButton)
ON_CLBN_CHKCHANGE(11, &Recorder::OnMark)
ON_LBN_SELCHANGE(11, &Recorder::OnSelect)
ON_CBN_DROPDOWN(12, &Recorder::OnDrop)
ON_CBN_SELCHANGE(12, &Recorder::OnSelect)
ON_CBN_CLOSEUP(12, &Recorder::OnCloseUp)
ON_EN_CHANGE(13, &Recorder::OnChange)
ON_MESSAGE(WM_USER + 1, &Recorder::OnUser)
END_MESSAGE_MAP()

TEST_F(WindowTest, ActionsReachControlsAndTheirParentHearsOfIt) {
    Recorder top;
    top.CreateEx(0, L"#32770", L"Boîte", topStyle, CRect(0, 0, 300, 200), AfxGetMainWnd(), 0);
    CButton button, off;
    button.Create(L"&Calculer", stop, CRect(0, 0, 80, 20), &top, 10);
    off.Create(L"&Non", stop | WS_DISABLED, CRect(100, 0, 180, 20), &top, 14);
    CCheckListBox list;
    list.Create(stop, CRect(0, 30, 100, 90), &top, 11);
    list.AddString(L"a");
    list.AddString(L"b");
    CComboBox combo;
    combo.Create(stop | CBS_DROPDOWNLIST, CRect(0, 100, 80, 120), &top, 12);
    combo.AddString(L"x");
    combo.AddString(L"y");
    CEdit edit;
    edit.Create(stop, CRect(0, 130, 80, 150), &top, 13);
    button.SetFocus();
    PostMessageW(top.GetSafeHwnd(), WM_USER + 1, 5, 0);
    port.actions = {Do::click(10),        Do::clickAt(5, 5),    Do::type(L"c"),          Do::press(VK_SPACE),
                    Do::press(VK_RETURN), Do::choose(11, 1),    Do::choose(12, 1),       Do::write(13, L"ab"),
                    Do::type(L"c"),       Do::press(VK_RETURN), Do::press(VK_TAB, true),
                    Do::press(VK_DOWN), // the combo box's last item stays
                    Do::press(VK_UP),     Do::press(VK_ESCAPE),
                    Do::press(0xFF), // a key that nobody knows
                    Do::type(L"n"),  // of a disabled button
                    Do::click(14),        Do::click(99),        Do::choose(11, 7),       Do::clickAt(120, 5)};
    EXPECT_EQ(top.RunModalLoop(), IDCANCEL) << "refused twice, it is closed";
    EXPECT_EQ(top.events,
              L"user5 button button button button button select mark drop select closeup change change ok "
              L"select cancel cancel cancel ");
    EXPECT_EQ(top.SendMessageW(WM_USER + 1), 42);
    EXPECT_TRUE(list.GetCheck(1));
    EXPECT_FALSE(list.GetCheck(0));
    EXPECT_EQ(textOf(edit.GetSafeHwnd()), L"abc");
    ASSERT_EQ(port.problems.size(), 5u);
    for (const std::wstring& problem : port.problems)
        EXPECT_NE(problem.find(L"\"Boîte\""), std::wstring::npos);
    EXPECT_NE(port.problems.back().find(L"stayed when it was refused"), std::wstring::npos);
}

// Destroys itself while its control's message is still running.
class SelfDestroyer : public CDialog {
public:
    DECLARE_MESSAGE_MAP()
    void OnSelect() { DestroyWindow(); }
};

BEGIN_MESSAGE_MAP(SelfDestroyer, CDialog)
ON_LBN_SELCHANGE(1, &SelfDestroyer::OnSelect)
END_MESSAGE_MAP()

TEST_F(WindowTest, AWindowMayGoWhileItsControlIsAtWork) {
    SelfDestroyer top;
    top.CreateEx(0, L"#32770", L"", topStyle, CRect(0, 0, 100, 100), AfxGetMainWnd(), 0);
    const HWND list = makeChild(top.GetSafeHwnd(), L"LISTBOX", stop | LBS_NOTIFY, 1);
    SendMessageW(list, listTakeMarks, 0, 0);
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"a"));
    port.actions = {Do::choose(1, 0)};
    EXPECT_EQ(top.RunModalLoop(), -1) << "gone before it was ended";
    EXPECT_FALSE(IsWindow(list));
    EXPECT_EQ(top.GetSafeHwnd(), nullptr);
}

TEST_F(WindowTest, RadioButtonsAndCheckBoxesKeepTheirMarks) {
    const HWND top = makeTop();
    const HWND one = makeChild(top, L"BUTTON", stop | BS_AUTORADIOBUTTON, 1);
    const HWND two = makeChild(top, L"BUTTON", stop | BS_AUTORADIOBUTTON, 2);
    const HWND check = makeChild(top, L"BUTTON", stop | BS_AUTOCHECKBOX, 3);
    for (const HWND each : {one, check, two}) SendMessageW(each, BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageW(one, BM_GETCHECK, 0, 0), 0);
    EXPECT_EQ(SendMessageW(two, BM_GETCHECK, 0, 0), 1);
    EXPECT_EQ(SendMessageW(check, BM_GETCHECK, 0, 0), 1);
    SendMessageW(check, BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageW(check, BM_GETCHECK, 0, 0), 0);
}

TEST_F(WindowTest, SystemBoxesGiveTheButtonTakenAndRefuseByTheirLeastChange) {
    const std::tuple<UINT, std::deque<Do>, int> cases[] = {
        {MB_OK, {Do::press(VK_ESCAPE)}, IDOK},
        {MB_OKCANCEL | MB_ICONERROR, {Do::press(VK_RETURN)}, IDOK},
        {MB_OKCANCEL | MB_DEFBUTTON2, {Do::press(VK_RETURN)}, IDCANCEL},
        {MB_YESNO | MB_ICONQUESTION, {Do::type(L"O")}, IDYES},
        {MB_YESNO, {Do::refuse()}, IDNO},
        {MB_YESNOCANCEL, {Do::press(VK_TAB), Do::press(VK_RETURN)}, IDNO},
        {MB_YESNOCANCEL, {Do::press(VK_ESCAPE)}, IDCANCEL},
        {MB_ABORTRETRYIGNORE, {Do::click(IDIGNORE)}, IDIGNORE},
        {MB_ABORTRETRYIGNORE, {}, IDABORT},
        {MB_RETRYCANCEL | MB_ICONWARNING, {Do::type(L"r")}, IDRETRY},
    };
    for (const auto& [flags, actions, result] : cases) {
        port.actions = actions;
        EXPECT_EQ(MessageBoxW(nullptr, L"Un texte & un autre", L"Titre", flags), result) << flags;
        const ShownWindow& window = port.windows.back();
        for (const PaintedItem& item : window.painting.items)
            EXPECT_FALSE(item.kind == PaintKind::text && isClipped(item)) << flags;
    }
    EXPECT_TRUE(port.problems.empty());
    EXPECT_TRUE(AfxGetMainWnd()->IsWindowEnabled());
    // A text without end, one without a blank and an empty one.
    for (const std::wstring& text : {std::wstring(20000, L'a'), std::wstring(L"\n\n"), std::wstring()})
        EXPECT_EQ(MessageBoxW(nullptr, text.c_str(), text.c_str(), MB_OK), IDOK);
}

TEST(SystemBox, BoxesAreAskedAndAnsweredByWhatChangesLeastWhereNobodyIs) {
    const std::tuple<UINT, int, int> cases[] = {{MB_OK, IDOK, IDOK},
                                                {MB_OKCANCEL | MB_DEFBUTTON2, IDCANCEL, IDCANCEL},
                                                {MB_ABORTRETRYIGNORE | MB_DEFBUTTON3, IDABORT, IDIGNORE},
                                                {MB_YESNOCANCEL, IDCANCEL, IDYES},
                                                {MB_YESNO | MB_ICONSTOP | MB_DEFBUTTON2, IDNO, IDNO},
                                                {MB_RETRYCANCEL, IDCANCEL, IDRETRY},
                                                {MB_OK | MB_DEFBUTTON3, IDOK, IDOK},
                                                {0xF, IDOK, IDOK}};
    for (const auto& [flags, refusal, enter] : cases) {
        EXPECT_EQ(MessageBoxW(nullptr, nullptr, nullptr, flags), refusal) << flags;
        EXPECT_EQ(defaultButton(flags), enter) << flags;
    }

    ScriptedPort port;
    const ScopedPort use(port);
    port.buttons = {IDNO};
    EXPECT_EQ(MessageBoxW(nullptr, L"é?", L"Dalle", MB_YESNO), IDNO);
    AfxSetAppName(L"ordane");
    EXPECT_EQ(AfxMessageBox(L"fault"), IDOK);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text + L"|" + port.boxes[0].caption, L"é?|Dalle");
    EXPECT_EQ(port.boxes[1].flags, MB_ICONEXCLAMATION);
    EXPECT_EQ(port.boxes[1].caption, L"ordane");
}

} // namespace
