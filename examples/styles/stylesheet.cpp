#include "stylesheet.h"

#include "atltypes.h"

namespace {
constexpr LONG margin = 8;
} // namespace

StyleSheet::StyleSheet(const wchar_t* caption, const Settings& settings)
    : CPropertySheet(caption)
    , m_page(settings)
    , m_bar(this) {
    AddPage(&m_page);
    m_style.setMainPropertySheet(this);
    m_style.setMainPropertyPage(&m_page);
    VEXOORStyleData* style = &m_style;
    m_bar.SetEntityType(repartitionType);
    m_bar.SetORStyleData(style);
}

// The buttons move down, and the sheet grows as much.
void StyleSheet::makeRoom(LONG height) {
    CRect window;
    GetWindowRect(window);
    MoveWindow(window.left, window.top, window.Width(), window.Height() + height);
    for (const int id : {IDOK, IDCANCEL}) {
        CRect button;
        GetDlgItem(id)->GetWindowRect(button);
        ScreenToClient(button);
        GetDlgItem(id)->MoveWindow(button.left, button.top + height, button.Width(), button.Height());
    }
}

BOOL StyleSheet::OnInitDialog() {
    const BOOL choosesFocus = CPropertySheet::OnInitDialog();
    if (!m_bar.Create(this)) return choosesFocus;
    CRect bar, button;
    m_bar.GetWindowRect(bar);
    GetDlgItem(IDOK)->GetWindowRect(button);
    ScreenToClient(button);
    m_bar.MoveWindow(margin, button.top, bar.Width(), bar.Height());
    makeRoom(bar.Height() + margin);
    return choosesFocus;
}
