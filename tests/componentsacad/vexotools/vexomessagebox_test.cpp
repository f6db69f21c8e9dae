#include "vexomessagebox.h"

#include "desktop.h"
#include "windowcheck.h"

#include <array>
#include <random>

namespace {

using hostkit::ShownWindow;

constexpr LONG captionHeight = 19;
constexpr LONG frame = 3;

class MessageBoxTest : public WindowTest {
protected:
    // A parent that lives on the test's desktop.
    CWnd* owner() {
        if (!m_owner.GetSafeHwnd())
            m_owner.CreateEx(0, L"#32770", L"Parent", WS_POPUP | WS_VISIBLE, 100, 100, 600, 400, nullptr, 0);
        return &m_owner;
    }

    int answer(unsigned long style, std::deque<Do> actions) {
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

private:
    CWnd m_owner;
};

TEST_F(MessageBoxTest, EveryStyleGivesItsResultForButtonsKeysAndClosing) {
    const Do tab = Do::press(VK_TAB), enter = Do::press(VK_RETURN), space = Do::press(VK_SPACE);
    const unsigned long styles[] = {0, 1, 4};
    const std::pair<std::deque<Do>, std::array<int, 3>> cases[] = {{{Do::click(1)}, {1, 1, 6}},
                                                                   {{enter}, {1, 1, 6}},
                                                                   {{space}, {1, 1, 6}},
                                                                   {{Do::type(L"o")}, {1, 1, 6}},
                                                                   {{Do::press(0x70), enter}, {1, 1, 6}},
                                                                   {{tab, tab, enter}, {1, 1, 6}},
                                                                   {{tab, enter}, {1, 2, 7}},
                                                                   {{tab, space}, {1, 2, 7}},
                                                                   {{Do::type(L"n")}, {1, 2, 7}},
                                                                   {{Do::press(VK_ESCAPE)}, {1, 2, 7}},
                                                                   {{Do::refuse()}, {1, 2, 7}}};
    int number = 0;
    for (const auto& [actions, results] : cases) {
        for (int i = 0; i < 3; ++i) EXPECT_EQ(answer(styles[i], actions), results[i]) << number << ", " << i;
        ++number;
    }
    EXPECT_EQ(answer(1, {Do::click(2)}), 2);
    EXPECT_EQ(answer(3, {tab, enter}), 2) << "an unknown style counts as 1";
    EXPECT_TRUE(port.problems.empty());
}

TEST_F(MessageBoxTest, OwnerIsDisabledMeanwhileAndActiveAfterwards) {
    ASSERT_TRUE(owner()->IsWindowEnabled());
    struct WatchingPort : hostkit::ScriptedPort {
        HWND owner = nullptr;
        bool wasEnabled = true;
        bool askWindow(const ShownWindow& window, Do& action) override {
            wasEnabled = ::IsWindowEnabled(owner);
            EXPECT_EQ(::GetActiveWindow(), window.window);
            return ScriptedPort::askWindow(window, action);
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
    EXPECT_EQ(std::pair(brief.cx, brief.cy), std::pair(300, 13 + 22 + 18 + 2 * 2 + 33));
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
        EXPECT_EQ(std::pair(at.left, at.right), std::pair(left, right));
        EXPECT_EQ(std::pair(at.top, at.bottom), std::pair(client.cy - 33, client.cy - 11));
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
    const std::pair<std::wstring, std::vector<std::wstring>> cases[] = {
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
    for (const auto& [text, lines] : cases) {
        const ShownWindow window = shown(text.c_str());
        EXPECT_EQ(window.lines, lines) << std::string(text.begin(), text.end());
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
    EXPECT_EQ(window.lines, (std::vector<std::wstring>{L"R&D && Cie: 100%s", L"fin"}));
    const auto joined = [&](const CString& text, const wchar_t* between) {
        CString whole;
        for (const std::wstring& line : shown(text).lines) whole += line.c_str() + CString(between);
        return whole;
    };
    CString many;
    for (int i = 0; i < 400; ++i) many += L"mot" + CString(L'a' + i % 26, i % 7) + L" ";
    EXPECT_EQ(joined(many, L" "), many + L" ") << "nothing is lost between the lines";
    const CString endless(L'a', 200000); // so long that a time that grows with its square would be told
    EXPECT_TRUE(joined(endless, L"") == endless);
}

TEST_F(MessageBoxTest, CaptionsComeFromTheTextsThatAreNamed) {
    const std::tuple<unsigned, const wchar_t*, const wchar_t*> cases[] = {
        {0, nullptr, L"Ordane Dalle"},
        {0, L"NOSUCH", L"Ordane Dalle"},
        {14012, nullptr, L"Eléments des contours de coffrage"},
        {14012, L"VEXOTOOLS", L"Eléments des contours de coffrage"},
        {14012, L"NOSUCH", L""}};
    for (const auto& [id, project, caption] : cases) {
        VEXOMessageBox box(14000, L"VEXOTOOLS", id, project, 0, owner(), nullptr);
        box.DoModal();
        EXPECT_EQ(port.windows.back().caption, caption) << id;
    }
}

} // namespace
