#include "cpropertysheet.h"

#include "afxwin.h"
#include "systembox.h"

#include <algorithm>

namespace {

constexpr int firstTabId = 0x3020;
constexpr LONG margin = 8;
constexpr LONG tabHeight = 22;
constexpr LONG tabRoom = 26; ///< beside a tab's text
constexpr LONG buttonWidth = 88;
constexpr LONG buttonHeight = 24;

} // namespace

BOOL CPropertyPage::OnSetActive() { return UpdateData(FALSE); }
BOOL CPropertyPage::OnKillActive() { return UpdateData(TRUE); }

BOOL CPropertyPage::OnApply() {
    OnOK();
    return TRUE;
}

CPropertySheet::CPropertySheet(const wchar_t* caption, CWnd* parent, UINT selectPage)
    : CDialog(0, parent)
    , m_caption(caption)
    , m_active(static_cast<int>(selectPage)) {}

void CPropertySheet::AddPage(CPropertyPage* page) {
    if (page) m_pages.push_back(page);
}

CPropertyPage* CPropertySheet::GetPage(int index) const {
    return index >= 0 && index < GetPageCount() ? m_pages[static_cast<std::size_t>(index)] : nullptr;
}

bool CPropertySheet::makePages(SIZE& largest) {
    for (CPropertyPage* page : m_pages) {
        if (!page->Create(page->templateId(), this)) return false;
        CRect place;
        page->GetWindowRect(place);
        page->ShowWindow(SW_HIDE);
        page->MoveWindow(margin, margin + tabHeight, place.Width(), place.Height());
        largest = {std::max<LONG>(largest.cx, place.Width()), std::max<LONG>(largest.cy, place.Height())};
    }
    return true;
}

// Before the pages, so that Tab leads from them into a page; their texts come with these.
bool CPropertySheet::makeTabs() {
    for (int i = 0; i < GetPageCount(); ++i) {
        auto& tab = m_tabs.emplace_back(std::make_unique<CButton>());
        if (!tab->Create(L"", WS_VISIBLE | WS_TABSTOP | BS_AUTORADIOBUTTON, {}, this, firstTabId + i))
            return false;
    }
    return true;
}

void CPropertySheet::placeTabs() {
    CClientDC dc(this);
    LONG left = margin;
    for (int i = 0; i < GetPageCount(); ++i) {
        CString text;
        GetPage(i)->GetWindowTextW(text);
        CRect room;
        dc.DrawTextW(text, room, DT_CALCRECT | DT_SINGLELINE);
        CButton& tab = *m_tabs[static_cast<std::size_t>(i)];
        tab.SetWindowTextW(text);
        tab.MoveWindow(left, margin, room.Width() + tabRoom, tabHeight);
        left += room.Width() + tabRoom;
    }
}

bool CPropertySheet::makeButtons(POINT corner) {
    const auto make = [&](CButton& button, int id, DWORD style) {
        const CRect place(corner.x, corner.y, corner.x + buttonWidth, corner.y + buttonHeight);
        corner.x += buttonWidth + margin;
        return button.Create(hostkit::textOfButton(id), WS_VISIBLE | WS_TABSTOP | style, place, this, id);
    };
    return make(m_okButton, IDOK, BS_DEFPUSHBUTTON) && make(m_cancelButton, IDCANCEL, BS_PUSHBUTTON);
}

bool CPropertySheet::makeWindow(HWND owner) {
    constexpr DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    m_tabs.clear();
    if (!CreateEx(WS_EX_CONTROLPARENT, L"#32770", m_caption, style, 0, 0, 0, 0, owner, 0)) return false;
    constexpr LONG buttons = 2 * buttonWidth + margin;
    SIZE page{buttons, 0};
    if (!makeTabs() || !makePages(page)) {
        DestroyWindow();
        return false;
    }
    CRect client(0, 0, page.cx + 2 * margin, page.cy + tabHeight + buttonHeight + 3 * margin);
    const POINT corner{client.right - margin - buttons, client.bottom - margin - buttonHeight};
    AdjustWindowRectEx(client, style, FALSE, 0);
    MoveWindow(0, 0, client.Width(), client.Height());
    if (!makeButtons(corner)) {
        DestroyWindow();
        return false;
    }
    placeTabs();
    CenterWindow();
    return startWindow();
}

BOOL CPropertySheet::OnInitDialog() {
    const int first = GetPage(m_active) ? m_active : 0;
    m_active = -1;
    SetActivePage(first);
    CDialog::OnInitDialog();
    const CPropertyPage* const page = GetActivePage();
    const HWND control = page ? ::GetNextDlgTabItem(page->GetSafeHwnd(), nullptr, FALSE) : nullptr;
    if (control) ::SetFocus(control);
    return control == nullptr;
}

BOOL CPropertySheet::SetActivePage(int index) {
    CPropertyPage* const page = GetPage(index);
    CPropertyPage* const before = GetActivePage();
    const bool leaves = page && (page == before || !before || before->OnKillActive());
    if (leaves && page != before) {
        if (before) before->ShowWindow(SW_HIDE);
        m_active = index;
        page->OnSetActive();
        page->ShowWindow(SW_SHOW);
    }
    for (int i = 0; i < static_cast<int>(m_tabs.size()); ++i)
        m_tabs[static_cast<std::size_t>(i)]->SetCheck(i == m_active);
    return leaves;
}

BOOL CPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam) {
    const int tab = LOWORD(wParam) - firstTabId;
    if (HIWORD(wParam) != BN_CLICKED || !GetPage(tab)) return CDialog::OnCommand(wParam, lParam);
    SetActivePage(tab);
    return TRUE;
}

void CPropertySheet::OnOK() {
    if (GetActivePage() && !GetActivePage()->OnKillActive()) return;
    for (int i = 0; i < GetPageCount(); ++i)
        if (!GetPage(i)->OnApply()) {
            SetActivePage(i);
            return;
        }
    EndDialog(IDOK);
}

void CPropertySheet::OnCancel() {
    for (CPropertyPage* page : m_pages) page->OnCancel();
    EndDialog(IDCANCEL);
}
