#include "vexoacadprogressbar.h"

#include "aced.h"
#include "cvxlogentry.h"

VEXOAcadProgressBar::VEXOAcadProgressBar()
    : VEXOAcadProgressBar(L"", 0, 100) {}

VEXOAcadProgressBar::VEXOAcadProgressBar(const wchar_t* caption, int minimum, int maximum)
    : m_minimum(minimum)
    , m_maximum(maximum)
    , m_caption(caption) {
    CVxLogEntry entry(L"VEXOAcadProgressBar::VEXOAcadProgressBar");
    acedSetStatusBarProgressMeter(m_caption, m_minimum, m_maximum);
}

VEXOAcadProgressBar::~VEXOAcadProgressBar() {
    CVxLogEntry entry(L"VEXOAcadProgressBar::~VEXOAcadProgressBar");
    acedRestoreStatusBar();
}

int VEXOAcadProgressBar::moveToPos(int position) {
    CVxLogEntry entry(L"VEXOAcadProgressBar::moveToPos");
    return acedSetStatusBarProgressMeterPos(position);
}

int VEXOAcadProgressBar::moveToPercent(int percent) {
    CVxLogEntry entry(L"VEXOAcadProgressBar::moveToPercent");
    if (percent < 0 || percent > 100) return -1;
    const double range = static_cast<double>(m_maximum) - m_minimum;
    return acedSetStatusBarProgressMeterPos(static_cast<int>((m_minimum + range * percent) / 100.0));
}
