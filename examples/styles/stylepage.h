#pragma once

#include "afxdlgs.h"
#include "resources.h"
#include "settings.h"

/// The page of a repartition's settings. Its lists show what the drawing has.
class StylePage : public CPropertyPage {
public:
    explicit StylePage(Settings settings)
        : CPropertyPage(pageTemplate)
        , m_settings(std::move(settings)) {}

    /// As the controls show them now, or as they were accepted.
    const Settings& settings();
    CComboBox& textStyles() { return m_textStyles; }
    CComboBox& lineTypes() { return m_lineTypes; }
    CComboBox& dimensionStyles() { return m_dimensionStyles; }
    void showNumber(int edit, double value);

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

private:
    Settings m_settings;
    CComboBox m_textStyles;
    CComboBox m_lineTypes;
    CComboBox m_dimensionStyles;
};
