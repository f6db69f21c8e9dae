#include "systembox.h"

#include "afxwin.h"
#include "desktop.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace hostkit {

const int* buttonsOfBox(unsigned flags) {
    static constexpr int buttons[6][4] = {
        {IDOK},        {IDOK, IDCANCEL},    {IDABORT, IDRETRY, IDIGNORE}, {IDYES, IDNO, IDCANCEL},
        {IDYES, IDNO}, {IDRETRY, IDCANCEL},
    };
    const unsigned type = flags & MB_TYPEMASK;
    return buttons[type > MB_RETRYCANCEL ? MB_OK : type];
}

int defaultButton(unsigned flags) {
    const int* const buttons = buttonsOfBox(flags);
    unsigned count = 0;
    while (buttons[count]) ++count;
    const unsigned wanted = (flags & MB_DEFMASK) >> 8;
    return buttons[wanted < count ? wanted : 0];
}

int refusingButton(unsigned flags) {
    const int* const buttons = buttonsOfBox(flags);
    for (const int wanted : {IDCANCEL, IDNO, IDABORT})
        for (const int* each = buttons; *each; ++each)
            if (*each == wanted) return wanted;
    return buttons[0];
}

const wchar_t* textOfButton(int id) {
    switch (id) {
    case IDCANCEL:
        return L"A&nnuler";
    case IDABORT:
        return L"A&bandonner";
    case IDRETRY:
        return L"&Recommencer";
    case IDIGNORE:
        return L"&Ignorer";
    case IDYES:
        return L"&Oui";
    case IDNO:
        return L"&Non";
    default:
        return L"&Ok";
    }
}

namespace {

constexpr LONG margin = 12;
constexpr LONG buttonWidth = 88;
constexpr LONG buttonHeight = 24;
constexpr LONG buttonGap = 8;
constexpr LONG smallestWidth = 180;
constexpr int messageId = 0xFFFF;

HICON iconOfBox(unsigned flags) {
    unsigned icon = 0;
    if ((flags & MB_ICONMASK) == MB_ICONERROR) icon = IDI_ERROR;
    if ((flags & MB_ICONMASK) == MB_ICONQUESTION) icon = IDI_QUESTION;
    if ((flags & MB_ICONMASK) == MB_ICONWARNING) icon = IDI_WARNING;
    if ((flags & MB_ICONMASK) == MB_ICONINFORMATION) icon = IDI_INFORMATION;
    return icon ? LoadIconW(nullptr, MAKEINTRESOURCEW(icon)) : nullptr;
}

class SystemBox : public CDialog {
public:
    SystemBox(std::wstring_view text, std::wstring_view caption, unsigned flags)
        : m_text(text)
        , m_caption(caption)
        , m_flags(flags) {}

    int DoModal() override;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

private:
    bool makeWindow(HWND owner) override;
    bool makeButtons(CSize client);
    int numberOfButtons() const;
    CSize sizeOfText() const;

    CString m_text;
    CString m_caption;
    unsigned m_flags;
    CStatic m_icon;
    CStatic m_message;
    std::vector<std::unique_ptr<CButton>> m_buttons;
};

int SystemBox::numberOfButtons() const {
    const int* const buttons = buttonsOfBox(m_flags);
    int count = 0;
    while (buttons[count]) ++count;
    return count;
}

// Lines are broken at half the screen; a word that is longer makes the box wider.
CSize SystemBox::sizeOfText() const {
    CClientDC dc(nullptr);
    CRect rect(0, 0, std::max(GetSystemMetrics(SM_CXSCREEN) / 2, 1), 0);
    dc.DrawTextW(m_text, rect, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return rect.Size();
}

bool SystemBox::makeButtons(CSize client) {
    const int count = numberOfButtons();
    const LONG width = count * buttonWidth + (count - 1) * buttonGap;
    LONG left = (client.cx - width) / 2;
    const LONG top = client.cy - margin - buttonHeight;
    const int first = defaultButton(m_flags);
    for (const int* id = buttonsOfBox(m_flags); *id; ++id, left += buttonWidth + buttonGap) {
        auto& button = m_buttons.emplace_back(std::make_unique<CButton>());
        const DWORD style = WS_VISIBLE | WS_TABSTOP | (*id == first ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
        if (!button->Create(textOfButton(*id), style,
                            CRect(left, top, left + buttonWidth, top + buttonHeight), this, *id))
            return false;
        if (*id == first) button->SetFocus();
    }
    return true;
}

bool SystemBox::makeWindow(HWND owner) {
    const HICON icon = iconOfBox(m_flags);
    const CSize text = sizeOfText();
    const LONG iconRoom = icon ? icon->width + margin : 0;
    const LONG textHeight = std::max<LONG>(text.cy, icon ? icon->height : 0);
    const int count = numberOfButtons();
    const LONG buttons = count * buttonWidth + (count - 1) * buttonGap;
    const CSize client(std::max({text.cx + iconRoom, buttons, smallestWidth}) + 2 * margin,
                       textHeight + buttonHeight + 3 * margin);
    constexpr DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    CRect window(0, 0, client.cx, client.cy);
    AdjustWindowRectEx(window, style, FALSE, 0);
    if (!CreateEx(WS_EX_CONTROLPARENT, L"#32770", m_caption, style, 0, 0, window.Width(), window.Height(),
                  owner, 0))
        return false;
    Desktop::current().find(m_hWnd)->box = ShownBox{m_text.GetString(), m_flags};
    CRect place(margin, margin, margin + iconRoom, margin + textHeight);
    if (icon && !m_icon.Create(L"", WS_VISIBLE | SS_ICON, place, this)) return false;
    m_icon.SetIcon(icon);
    place.SetRect(margin + iconRoom, margin, margin + iconRoom + text.cx, margin + text.cy);
    return m_message.Create(m_text, WS_VISIBLE | SS_NOPREFIX, place, this, messageId) && makeButtons(client);
}

int SystemBox::DoModal() {
    Desktop& desktop = Desktop::current();
    const HWND owner = desktop.modalWindow() ? desktop.modalWindow() : desktop.mainWindow();
    const HWND focus = ::GetFocus();
    const bool disablesOwner = ::IsWindowEnabled(owner);
    if (disablesOwner) ::EnableWindow(owner, FALSE);
    int result = refusingButton(m_flags);
    if (makeWindow(owner)) {
        CenterWindow();
        ShowWindow(SW_SHOW);
        result = RunModalLoop();
    }
    if (disablesOwner) ::EnableWindow(owner, TRUE);
    ::SetActiveWindow(owner);
    ::SetFocus(focus);
    DestroyWindow();
    return result;
}

BOOL SystemBox::OnCommand(WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam);
    for (const int* each = buttonsOfBox(m_flags); *each; ++each)
        if (*each == id && lParam) {
            EndModalLoop(id);
            return TRUE;
        }
    // Escape and closing come without a control.
    if (id == IDCANCEL) EndModalLoop(refusingButton(m_flags));
    return TRUE;
}

} // namespace

} // namespace hostkit

int MessageBoxW(HWND, const wchar_t* text, const wchar_t* caption, UINT flags) {
    return hostkit::SystemBox(text ? text : L"", caption ? caption : L"", flags).DoModal();
}
