#include "vexomessagebox.h"

#include "aced.h"
#include "cvxlogentry.h"
#include "moduleinstance.h"
#include "vexotools.h"
#include "vxprompts.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr unsigned int productName = 14026;
constexpr unsigned int windowIcon = 14019;
constexpr unsigned int promptYes = 14058;
constexpr unsigned int promptNo = 14059;
constexpr unsigned int promptOk = 14060;
constexpr unsigned int promptCancel = 14061;

constexpr unsigned long styleOk = 0;
constexpr unsigned long styleYesNo = 4;
constexpr int firstButtonId = 1;
constexpr int secondButtonId = 2;

constexpr DWORD windowExStyle = 65536;
constexpr DWORD windowStyle = 0x80C80000;
constexpr DWORD firstButtonStyle = 0x50010001;
constexpr DWORD secondButtonStyle = 0x40010000;
// The platform reads the number as centred text; only the width of the line is looked at.
constexpr UINT measureLine = 1029;
constexpr UINT measureWhole = 1024;

constexpr int mostMeasured = 4096;

constexpr int margin = 10;
constexpr int besideText = 20;
constexpr int besideTextAndButtons = 22;
constexpr int buttonRow = 33;
constexpr int buttonTop = 33;
constexpr int buttonBottom = 11;
constexpr int smallestWidth = 300;
constexpr int sideIconWidth = 30;
constexpr int sideIconLeft = 5;
constexpr int loneButtonHalf = 37;
constexpr int buttonFar = 80;
constexpr int buttonNear = 5;

CString prompt(unsigned int id, const wchar_t* project) {
    CString text;
    VxPrompts::getPrompt(text, id, project ? project : getModulePromptsProjectName(), 0);
    return text;
}

HICON iconOf(unsigned int id) {
    if (id == 0) return nullptr;
    const HICON own = LoadIconW(vexo::moduleInstance(), MAKEINTRESOURCEW(id));
    return own ? own : LoadIconW(nullptr, MAKEINTRESOURCEW(id));
}

CSize sizeOf(HICON icon) {
    ICONINFO info;
    if (!GetIconInfo(icon, &info)) return {};
    return {static_cast<LONG>(2 * info.xHotspot), static_cast<LONG>(2 * info.yHotspot)};
}

// An '&' of the message is a character, no mark.
CString withLiteralAmpersands(const CString& text) {
    CString literal(text);
    literal.Replace(L"&", L"&&");
    return literal;
}

CSize measured(CDC& dc, const CString& text, UINT flags) {
    CRect rect;
    dc.DrawTextW(withLiteralAmpersands(text), rect, flags);
    return rect.Size();
}

// Each line keeps its line feed.
std::vector<CString> splitAtLineFeeds(const CString& text) {
    std::vector<CString> lines;
    for (int first = 0; first < text.GetLength();) {
        const int feed = text.Find(L'\n', first);
        const int end = feed < 0 ? text.GetLength() : feed + 1;
        lines.push_back(text.Mid(first, end - first));
        first = end;
    }
    return lines;
}

// Just behind the best place to break at, or -1: the end of a sentence in the last two thirds, a colon in the
// first third, then the last blank, backslash or slash.
int behindBreak(const CString& cut) {
    const int length = cut.GetLength();
    const int sentence = cut.Find(L". ", (length + 2) / 3);
    if (sentence >= 0) return sentence + 2;
    const int colon = cut.Find(L": ");
    if (colon >= 0 && 3 * colon < length) return colon + 2;
    for (const wchar_t character : {L' ', L'\\', L'/'}) {
        const int at = cut.ReverseFind(character);
        if (at >= 0) return at + 1;
    }
    return -1;
}

int lengthWithoutFeed(const CString& line) {
    const int length = line.GetLength();
    return length > 0 && line.GetAt(length - 1) == L'\n' ? length - 1 : length;
}

// A line as lines that are not too wide. Each rest is cut by the average width of its characters, which the
// start of a very long one tells well enough, so that a text without end costs no more than its length.
void appendBroken(CString& whole, CDC& dc, const CString& line, int widest) {
    const int end = line.GetLength();
    for (int first = 0; first < end;) {
        const CString rest = line.Mid(first, mostMeasured);
        const int length = lengthWithoutFeed(rest);
        const std::int64_t width = measured(dc, rest, measureLine).cx;
        if (first + rest.GetLength() == end && (width <= widest || length <= 1)) {
            whole += rest;
            return;
        }
        const std::int64_t estimate = length * std::int64_t{widest} / std::max<std::int64_t>(width, 1);
        const int fitting = static_cast<int>(std::clamp<std::int64_t>(estimate, 1, length));
        const int found = behindBreak(rest.Left(fitting));
        const int behind = found < 0 ? fitting : found;
        whole += rest.Left(behind).TrimRight() + L"\n";
        first += behind;
        while (first < end && CString(line[first]).Trim().IsEmpty()) ++first;
    }
}

} // namespace

BEGIN_MESSAGE_MAP(VEXOMessageBox, CDialog)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_CLOSE()
END_MESSAGE_MAP()

VEXOMessageBox::VEXOMessageBox(unsigned int textId, const wchar_t* project, unsigned int captionId,
                               const wchar_t* captionProject, unsigned int iconId, CWnd* owner,
                               HICON sideIcon)
    : m_sideIcon(sideIcon)
    , m_owner(owner ? owner->GetSafeHwnd() : adsw_acadMainWnd())
    , m_titleIcon(iconOf(iconId)) {
    CVxLogEntry entry(L"VEXOMessageBox::VEXOMessageBox");
    VxPrompts::getPrompt(m_text, textId, project, 0);
    m_caption = captionId ? prompt(captionId, captionProject) : prompt(productName, nullptr);
}

VEXOMessageBox::VEXOMessageBox(CString text, CString caption, unsigned int iconId, CWnd* owner)
    : m_owner(owner ? owner->GetSafeHwnd() : adsw_acadMainWnd())
    , m_text(std::move(text))
    , m_caption(std::move(caption))
    , m_titleIcon(iconOf(iconId)) {
    CVxLogEntry entry(L"VEXOMessageBox::VEXOMessageBox");
}

void VEXOMessageBox::SetStyle(unsigned long style) {
    CVxLogEntry entry(L"VEXOMessageBox::SetStyle");
    m_style = style;
}

int VEXOMessageBox::DoModal() {
    CVxLogEntry entry(L"VEXOMessageBox::DoModal");
    m_result = -1;
    const bool disablesOwner = ::IsWindowEnabled(m_owner);
    if (disablesOwner) ::EnableWindow(m_owner, FALSE);
    if (m_hWnd || CreateControls()) RunModalLoop();
    if (disablesOwner) ::EnableWindow(m_owner, TRUE);
    if (m_hWnd && ::GetActiveWindow() == m_hWnd) ::SetActiveWindow(m_owner);
    DestroyWindow();
    return m_result;
}

// --- Layout ------------------------------------------------------------------------------------------------

CSize VEXOMessageBox::iconArea() const {
    if (!m_titleIcon) return {};
    const CSize icon = sizeOf(m_titleIcon);
    return {2 * icon.cx + margin, 2 * icon.cy};
}

CString VEXOMessageBox::brokenText(CDC& dc, int widest) const {
    CString whole;
    for (const CString& line : splitAtLineFeeds(m_text)) appendBroken(whole, dc, line, widest);
    return whole.TrimRight(L'\n');
}

CSize VEXOMessageBox::clientSize(CSize text) const {
    const CSize icon = iconArea();
    const LONG textHeight = std::max(text.cy, icon.cy);
    LONG width = icon.cx + besideText + text.cx + 4 * GetSystemMetrics(SM_CXEDGE);
    width = std::max<LONG>(width, smallestWidth);
    if (m_sideIcon) width += sideIconWidth;
    const LONG height = textHeight + besideTextAndButtons + GetSystemMetrics(SM_CYSIZE) +
                        2 * GetSystemMetrics(SM_CYEDGE) + buttonRow;
    return {width, height};
}

void VEXOMessageBox::resize(CSize client) {
    CRect window(0, 0, client.cx, client.cy);
    AdjustWindowRectEx(window, windowStyle, FALSE, windowExStyle);
    MoveWindow(window, FALSE);
    CenterWindow(CWnd::FromHandle(m_owner));
}

VEXOMessageBox::ButtonPlaces VEXOMessageBox::buttonPlaces() const {
    CRect client;
    GetClientRect(client);
    const LONG middle = client.Width() / 2;
    const LONG top = client.bottom - buttonTop, bottom = client.bottom - buttonBottom;
    if (!hasTwoButtons()) return {{middle - loneButtonHalf, top, middle + loneButtonHalf, bottom}, {}};
    return {{middle - buttonFar, top, middle - buttonNear, bottom},
            {middle + buttonNear, top, middle + buttonFar, bottom}};
}

bool VEXOMessageBox::createButtons() {
    const bool asksYesNo = m_style == styleYesNo;
    m_firstText = prompt(asksYesNo ? promptYes : promptOk, nullptr);
    m_secondText = hasTwoButtons() ? prompt(asksYesNo ? promptNo : promptCancel, nullptr) : CString();
    const ButtonPlaces places = buttonPlaces();
    if (!m_firstButton.Create(m_firstText, firstButtonStyle, places.first, this, firstButtonId)) return false;
    if (!m_secondButton.Create(m_secondText, secondButtonStyle, places.second, this, secondButtonId))
        return false;
    CFont font;
    font.CreateStockObject(DEFAULT_GUI_FONT);
    m_firstButton.SetFont(&font);
    m_secondButton.SetFont(&font);
    m_firstButton.SetFocus();
    if (hasTwoButtons()) m_secondButton.ShowWindow(SW_SHOW);
    return true;
}

int VEXOMessageBox::CreateControls() {
    CVxLogEntry entry(L"VEXOMessageBox::CreateControls");
    const wchar_t* windowClass = AfxRegisterWndClass(0, LoadCursorW(nullptr, MAKEINTRESOURCEW(IDC_ARROW)),
                                                     GetSysColorBrush(COLOR_BTNFACE), iconOf(windowIcon));
    if (!windowClass || !CreateEx(windowExStyle, windowClass, m_caption, windowStyle, 0, 0, 0, 0, m_owner, 0))
        return 0;
    {
        CClientDC dc(this);
        dc.SelectStockObject(DEFAULT_GUI_FONT);
        const int widest = GetSystemMetrics(SM_CXSCREEN) / 2 - static_cast<int>(iconArea().cx) - besideText;
        m_shownText = brokenText(dc, std::max(widest, 1));
        resize(clientSize(measured(dc, m_shownText, measureWhole)));
    }
    if (!createButtons()) return 0;
    ShowWindow(SW_SHOW);
    return 1;
}

// --- Painting ----------------------------------------------------------------------------------------------

void VEXOMessageBox::OnPaint() {
    CVxLogEntry entry(L"VEXOMessageBox::OnPaint");
    CPaintDC dc(this);
    ::SelectObject(dc.GetSafeHdc(), reinterpret_cast<HFONT>(m_firstButton.SendMessageW(WM_GETFONT)));
    CRect place;
    GetClientRect(place);
    place.DeflateRect(margin, margin);
    if (m_titleIcon) {
        const CSize icon = sizeOf(m_titleIcon);
        const CSize twice(2 * icon.cx, 2 * icon.cy);
        dc.DrawState(CPoint(margin, margin), twice, m_titleIcon, DSS_NORMAL);
        place.left += twice.cx + margin;
    }
    if (m_sideIcon) {
        dc.DrawIcon(sideIconLeft, margin, m_sideIcon);
        place.left += sideIconWidth;
    }
    dc.SetBkMode(TRANSPARENT);
    dc.DrawTextW(withLiteralAmpersands(m_shownText), place, DT_LEFT);
}

int VEXOMessageBox::OnEraseBkgnd(CDC* dc) {
    CVxLogEntry entry(L"VEXOMessageBox::OnEraseBkgnd");
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, GetSysColor(COLOR_BTNFACE));
    return 1;
}

// --- Answers -----------------------------------------------------------------------------------------------

void VEXOMessageBox::end(int result) {
    m_result = result;
    EndModalLoop(result);
}

void VEXOMessageBox::OnOK() {
    CVxLogEntry entry(L"VEXOMessageBox::OnOK");
    end(m_style == styleYesNo ? IDYES : IDOK);
}

void VEXOMessageBox::OnCancel() {
    CVxLogEntry entry(L"VEXOMessageBox::OnCancel");
    end(m_style == styleOk ? IDOK : m_style == styleYesNo ? IDNO : IDCANCEL);
}

void VEXOMessageBox::OnClose() {
    CVxLogEntry entry(L"VEXOMessageBox::OnClose");
    OnCancel();
}

int VEXOMessageBox::PreTranslateMessage(MSG* message) {
    CVxLogEntry entry(L"VEXOMessageBox::PreTranslateMessage");
    if (!message || message->message != WM_KEYDOWN) return CDialog::PreTranslateMessage(message);
    const bool isAtFirst = ::GetFocus() == m_firstButton.GetSafeHwnd();
    switch (message->wParam) {
    case VK_TAB:
        // A button that does not show takes no focus.
        if (hasTwoButtons()) (isAtFirst ? m_secondButton : m_firstButton).SetFocus();
        return 1;
    case VK_RETURN:
        isAtFirst ? OnOK() : OnCancel();
        return 1;
    case VK_ESCAPE:
        OnCancel();
        return 1;
    default:
        return CDialog::PreTranslateMessage(message);
    }
}
