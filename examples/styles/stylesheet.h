#pragma once

#include "slabstyle.h"
#include "stylepage.h"
#include "vexodlgorstyle.h"

/// The sheet of a repartition: its page, and the bar of styles below it.
class StyleSheet : public CPropertySheet {
public:
    StyleSheet(const wchar_t* caption, const Settings& settings);

    const Settings& settings() { return m_page.settings(); }

protected:
    BOOL OnInitDialog() override;

private:
    void makeRoom(LONG height);

    StylePage m_page;
    SlabStyle m_style;
    VEXODlgORStyle m_bar;
};
