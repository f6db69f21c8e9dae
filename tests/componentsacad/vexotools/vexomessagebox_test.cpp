#include "vexomessagebox.h"

#include "casefolding.h"
#include "desktop.h"
#include "scriptedport.h"
#include "vexotools.h"
#include "windowcheck.h"

#include <dlfcn.h>

#include <random>

namespace {

using hostkit::PaintedItem;
using hostkit::PaintKind;
using hostkit::ShownWindow;
using hostkit::WindowAction;

constexpr LONG captionHeight = 19;
constexpr LONG frame = 3;

class MessageBoxTest : public ::testing::Test {
protected:
    MessageBoxTest() { DllMain(instance, 1, nullptr); }
    ~MessageBoxTest() override {
        DllMain(instance, 0, nullptr);
        dlclose(instance);
    }

    // A parent that lives on the test's desktop.
    CWnd* owner() {
        if (!m_owner.GetSafeHwnd())
            m_owner.CreateEx(0, L"#32770", L"Parent", WS_POPUP | WS_VISIBLE, 100, 100, 600, 400, nullptr, 0);
        return &m_owner;
    }

    int answer(unsigned long style, std::deque<WindowAction> actions) {
        port.actions = std::move(actions);
        VEXOMessageBox box(L"Texte", L"Titre", 0, owner());
        box.SetStyle(style);
        return box.DoModal();
    }

    ShownWindow shown(const CString& text, unsigned long style = 0, unsigned iconId = 0) {
        VEXOMessageBox box(text, L"Titre", iconId, owner());
        box.SetStyle(style);
        box.DoModal();
        return port.windows.back();
    }

    static CSize clientOf(const ShownWindow& window) {
        return {window.painting.size.cx - 2 * frame, window.painting.size.cy - 2 * frame - captionHeight};
    }

    static std::vector<std::wstring> linesOf(const ShownWindow& window) { return window.lines; }

    hostkit::ScriptedPort port;
    hostkit::ScopedPort current{port};
    HINSTANCE instance = static_cast<HINSTANCE>(dlopen("VEXOTools10.so", RTLD_NOW | RTLD_NOLOAD));

private:
    CWnd m_owner;
};

TEST_F(MessageBoxTest, EveryStyleGivesItsResultForButtonsKeysAndClosing) {
    const auto tab = WindowAction::press(VK_TAB), enter = WindowAction::press(VK_RETURN);
    struct {
        unsigned long style;
        std::deque<WindowAction> actions;
        int result;
    } const cases[] = {
        {0, {WindowAction::click(1)}, 1},
        {0, {enter}, 1},
        {0, {WindowAction::press(VK_ESCAPE)}, 1},
        {0, {WindowAction::refuse()}, 1},
        {0, {tab, enter}, 1},
        {0, {WindowAction::type(L"o")}, 1},
        {1, {WindowAction::click(1)}, 1},
        {1, {WindowAction::click(2)}, 2},
        {1, {tab, enter}, 2},
        {1, {tab, tab, enter}, 1},
        {1, {WindowAction::press(VK_ESCAPE)}, 2},
        {1, {WindowAction::type(L"n")}, 2},
        {4, {enter}, 6},
        {4, {tab, enter}, 7},
        {4, {WindowAction::refuse()}, 7},
        {4, {WindowAction::press(VK_SPACE)}, 6},
        {4, {tab, WindowAction::press(VK_SPACE)}, 7},
        {4, {WindowAction::press(0x70), enter}, 6},
        {3, {tab, enter}, 2}, // an unknown style counts as 1
    };
    int number = 0;
    for (const auto& each : cases) EXPECT_EQ(answer(each.style, each.actions), each.result) << number++;
    EXPECT_TRUE(port.problems.empty());
}

TEST_F(MessageBoxTest, OwnerIsDisabledMeanwhileAndActiveAfterwards) {
    ASSERT_TRUE(owner()->IsWindowEnabled());
    struct WatchingPort : hostkit::ScriptedPort {
        HWND owner = nullptr;
        bool wasEnabled = true;
        WindowAction askWindow(const ShownWindow& window) override {
            wasEnabled = ::IsWindowEnabled(owner);
            EXPECT_EQ(::GetActiveWindow(), window.window);
            return ScriptedPort::askWindow(window);
        }
    } watching;
    const hostkit::ScopedPort use(watching);
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, L"#32770", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, 0));
    watching.owner = parent.GetSafeHwnd();
    VEXOMessageBox box(L"Texte", L"Titre", 0, &parent);
    EXPECT_EQ(box.DoModal(), 1);
    EXPECT_FALSE(watching.wasEnabled);
    EXPECT_TRUE(parent.IsWindowEnabled());
    EXPECT_EQ(::GetActiveWindow(), parent.GetSafeHwnd());
    EXPECT_EQ(box.GetSafeHwnd(), nullptr);

    // An owner that is disabled already stays so: it is someone else's to enable.
    parent.EnableWindow(FALSE);
    EXPECT_EQ(box.DoModal(), 1);
    EXPECT_FALSE(parent.IsWindowEnabled());
    parent.DestroyWindow();
    EXPECT_EQ(box.DoModal(), 1) << "without its owner the box stands alone";
    ASSERT_EQ(watching.problems.size(), 1u);
    EXPECT_NE(watching.problems[0].find(L"\"Titre\" has no owner"), std::wstring::npos);
}

// Keeps the parts of the box that cannot be made from being made.
class UnmakeableBox : public VEXOMessageBox {
public:
    explicit UnmakeableBox(CWnd* owner)
        : VEXOMessageBox(L"Texte", L"Titre", 0, owner) {}
    int CreateControls() override { return 0; }
};

TEST_F(MessageBoxTest, ABoxThatCannotBeMadeGivesMinusOneAndFreesItsOwner) {
    UnmakeableBox box(owner());
    EXPECT_EQ(box.DoModal(), -1);
    EXPECT_TRUE(owner()->IsWindowEnabled());
    EXPECT_TRUE(port.windows.empty());
}

TEST_F(MessageBoxTest, SizesFollowTextIconsAndTheScreenMetrics) {
    const CSize brief = clientOf(shown(L"A"));
    EXPECT_EQ(brief.cx, 300);
    EXPECT_EQ(brief.cy, 13 + 22 + 18 + 2 * 2 + 33);
    EXPECT_EQ(clientOf(shown(L"A\nB\nC\n\n\n")).cy, brief.cy + 2 * 13)
        << "line feeds at the end take no room";
    EXPECT_EQ(clientOf(shown(L"A", 0, 14019)).cy, 32 + 22 + 18 + 4 + 33)
        << "an icon higher than the text counts";

    const CString line(L'm', 40);
    const LONG width = hostkit::textWidth({}, line.view());
    EXPECT_EQ(clientOf(shown(line)).cx, 20 + width + 4 * 2);
    EXPECT_EQ(clientOf(shown(line, 0, 14019)).cx, (2 * 16 + 10) + 20 + width + 4 * 2);
    port.metrics[SM_CXEDGE] = 5;
    EXPECT_EQ(clientOf(shown(line)).cx, 20 + width + 4 * 5);
    port.metrics.clear();

    VEXOMessageBox box(14001, L"VEXOTOOLS", 0, nullptr, 0, owner(),
                       LoadIconW(nullptr, MAKEINTRESOURCEW(IDI_WARNING)));
    box.DoModal();
    EXPECT_EQ(clientOf(port.windows.back()).cx, 330) << "a side icon has its own 30";
    EXPECT_EQ(port.windows.back().caption, L"Ordane Dalle");
    expectReadable(port.windows.back(), "side icon");
}

TEST_F(MessageBoxTest, ButtonsStandWhereTheStylePutsThem) {
    const ShownWindow lone = shown(L"A", 0), pair = shown(L"A", 4);
    const CSize client = clientOf(lone);
    const auto inClient = [](const RECT& rect) {
        return hostkit::moved(rect, -frame, -frame - captionHeight);
    };
    const auto expectAt = [&](const ShownWindow& window, int id, const wchar_t* text, LONG left, LONG right) {
        const hostkit::ShownControl* button = window.control(id);
        ASSERT_NE(button, nullptr);
        const RECT at = inClient(button->bounds);
        EXPECT_EQ(button->text, text);
        EXPECT_EQ(at.left, left);
        EXPECT_EQ(at.right, right);
        EXPECT_EQ(at.top, client.cy - 33);
        EXPECT_EQ(at.bottom, client.cy - 11);
    };
    expectAt(lone, 1, L"Ok", 150 - 37, 150 + 37);
    EXPECT_EQ(lone.control(2), nullptr) << "the second button does not show";
    expectAt(pair, 1, L"Oui", 150 - 80, 150 - 5);
    expectAt(pair, 2, L"Non", 150 + 5, 150 + 80);
    EXPECT_TRUE(pair.control(1)->hasFocus && pair.control(1)->isDefault);
}

TEST_F(MessageBoxTest, TheBoxIsCentredOnItsOwnerAndStaysOnTheScreen) {
    VEXOMessageBox box(L"A", L"T", 0, owner());
    ASSERT_EQ(box.CreateControls(), 1);
    CRect place, around;
    box.GetWindowRect(place);
    owner()->GetWindowRect(around);
    EXPECT_EQ(place.CenterPoint().x, around.CenterPoint().x);
    EXPECT_NEAR(place.CenterPoint().y, around.CenterPoint().y, 1);
    EXPECT_EQ(box.GetStyle() & ~WS_VISIBLE, 0x80C80000u);
    EXPECT_EQ(box.GetExStyle(), 65536u);
    EXPECT_EQ(box.CreateControls(), 0) << "there is one already";
    EXPECT_EQ(box.DoModal(), 1) << "a window that stands is not made again";

    owner()->MoveWindow(-500, 1000, 100, 50);
    VEXOMessageBox other(L"A", L"T", 0, owner());
    ASSERT_EQ(other.CreateControls(), 1);
    other.GetWindowRect(place);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.bottom, 1080);
}

// Characters of exactly 11 pixels, on a screen so narrow that 30 of them are the limit: each break is told by
// hand.
TEST_F(MessageBoxTest, LongLinesBreakAtTheBestPlace) {
    port.metrics[SM_CXSCREEN] = 2 * (30 * 11 + 20);
    const std::wstring ten(10, L'漢'), five(5, L'漢');
    struct {
        std::wstring text;
        std::vector<std::wstring> lines;
    } const cases[] = {
        // The end of a sentence in the last two thirds goes before a later blank.
        {ten + five + L". " + five + L" " + ten + ten, {ten + five + L".", five + L" " + ten + ten}},
        // One in the first third does not count; the last blank does.
        {L"mm. " + ten + L" " + ten + L" " + ten, {L"mm. " + ten + L" " + ten, ten}},
        // A colon in the first third does.
        {L"mm: " + ten + L" " + ten + L" " + ten + five, {L"mm:", ten + L" " + ten, ten + five}},
        {ten + ten + L": " + five + five + five, {ten + ten + L":", five + five + five}},
        {ten + L"\\" + ten + L"\\" + ten + ten, {ten + L"\\" + ten + L"\\", ten + ten}},
        {ten + L"/" + ten + L"/" + ten + ten, {ten + L"/" + ten + L"/", ten + ten}},
        {ten + L"/" + ten + L"\\" + ten + ten, {ten + L"/" + ten + L"\\", ten + ten}},
        // Without any break it is cut at the estimated length.
        {ten + ten + ten + five, {ten + ten + ten, five}},
        // Each part is measured in its turn, and keeps what line feeds it had.
        {ten + ten + ten + ten + ten + ten + five + L"\n\nmm",
         {ten + ten + ten, ten + ten + ten, five, L"", L"mm"}},
        {ten + ten + ten, {ten + ten + ten}},
    };
    for (const auto& each : cases) {
        const ShownWindow window = shown(each.text.c_str());
        EXPECT_EQ(linesOf(window), each.lines) << std::string(each.text.begin(), each.text.end());
        expectReadable(window, "break");
    }
}

TEST_F(MessageBoxTest, AnyTextIsReadableOnAnyScreen) {
    const wchar_t* const words[] = {L"béton", L"a",    L"Ferraillage", L"C:\\Plans\\",
                                    L"R&D",   L"&",    L"fin. ",       L"Nota : ",
                                    L"\n",    L"  ",   L"100%s",       L"WWWWWWWWWWWWWWWWWWWWWWWW",
                                    L"\r\n",  L"漢字", L"\t"};
    std::mt19937 random(20240229);
    for (int round = 0; round < 120; ++round) {
        CString text;
        const int count = 1 + static_cast<int>(random() % 120);
        for (int i = 0; i < count; ++i) {
            text += words[random() % std::size(words)];
            if (random() % 3) text += L" ";
        }
        port.metrics[SM_CXSCREEN] = 320 + static_cast<int>(random() % 1600);
        const unsigned icons[] = {0, 14019, IDI_WARNING};
        const unsigned long styles[] = {0, 1, 4};
        const ShownWindow window = shown(L"x" + text, styles[random() % 3], icons[random() % 3]);
        expectReadable(window, "round " + std::to_string(round));
        EXPECT_TRUE(window.control(1));
    }
}

TEST_F(MessageBoxTest, TheMessageIsShownWholeWithItsAmpersands) {
    const ShownWindow window = shown(L"R&D && Cie: 100%s\nfin");
    EXPECT_EQ(linesOf(window), (std::vector<std::wstring>{L"R&D && Cie: 100%s", L"fin"}));
    CString many;
    for (int i = 0; i < 400; ++i) many += L"mot" + CString(L'a' + i % 26, i % 7) + L" ";
    std::wstring joined;
    for (const std::wstring& line : linesOf(shown(many))) joined += line + L" ";
    EXPECT_EQ(joined, std::wstring(many.view()) + L" ") << "nothing is lost between the lines";
}

TEST_F(MessageBoxTest, CaptionsComeFromTheTextsThatAreNamed) {
    struct {
        unsigned id;
        const wchar_t* project;
        const wchar_t* caption;
    } const cases[] = {{0, nullptr, L"Ordane Dalle"},
                       {0, L"NOSUCH", L"Ordane Dalle"},
                       {14012, nullptr, L"Eléments des contours de coffrage"},
                       {14012, L"VEXOTOOLS", L"Eléments des contours de coffrage"},
                       {14012, L"NOSUCH", L""}};
    for (const auto& each : cases) {
        VEXOMessageBox box(14000, L"VEXOTOOLS", each.id, each.project, 0, owner(), nullptr);
        box.DoModal();
        EXPECT_EQ(port.windows.back().caption, each.caption) << each.id;
    }
}

} // namespace
