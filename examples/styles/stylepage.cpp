#include "stylepage.h"

#include "tchar.h"
#include "vxprompts.h"

namespace {

void fillList(CComboBox& list, const wchar_t* table) {
    list.ResetContent();
    for (const AcDbObjectId record : recordsOf(table)) list.AddString(nameOf(record));
}

void exchangeChoice(const CDataExchange& exchange, CComboBox& list, CString& name) {
    if (!exchange.m_bSaveAndValidate)
        list.SetCurSel(list.FindStringExact(-1, name));
    else if (list.GetCurSel() >= 0)
        list.GetLBText(list.GetCurSel(), name);
}

double numberOf(const CWnd& page, int edit) {
    CString text;
    page.GetDlgItemTextW(edit, text);
    return _wtof(text);
}

} // namespace

const Settings& StylePage::settings() {
    UpdateData(TRUE);
    return m_settings;
}

void StylePage::showNumber(int edit, double value) {
    CString text;
    text.Format(L"%g", value);
    SetDlgItemTextW(edit, text);
}

BOOL StylePage::OnInitDialog() {
    CPropertyPage::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, pageTemplate, promptsProject);
    fillList(m_textStyles, L"STYLE");
    fillList(m_lineTypes, L"LTYPE");
    fillList(m_dimensionStyles, L"DIMSTYLE");
    return UpdateData(FALSE);
}

void StylePage::DoDataExchange(CDataExchange* exchange) {
    CPropertyPage::DoDataExchange(exchange);
    DDX_Control(exchange, comboTextStyle, m_textStyles);
    DDX_Control(exchange, comboLineType, m_lineTypes);
    DDX_Control(exchange, comboDimensionStyle, m_dimensionStyles);
    exchangeChoice(*exchange, m_textStyles, m_settings.textStyle);
    exchangeChoice(*exchange, m_lineTypes, m_settings.lineType);
    exchangeChoice(*exchange, m_dimensionStyles, m_settings.dimensionStyle);
    if (!exchange->m_bSaveAndValidate) {
        showNumber(editCover, m_settings.cover);
        showNumber(editWidth, m_settings.width);
        showNumber(editJustification, m_settings.justification);
        return;
    }
    m_settings.cover = numberOf(*this, editCover);
    m_settings.width = numberOf(*this, editWidth);
    m_settings.justification = static_cast<int>(numberOf(*this, editJustification));
}
