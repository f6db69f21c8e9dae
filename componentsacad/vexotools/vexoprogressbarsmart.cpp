#include "vexoprogressbarsmart.h"

#include "cvxlogentry.h"
#include "vexoprogressbar.h"

VEXOProgressBar* VEXOProgressBarSmart::m_pProgressBar = nullptr;

VEXOProgressBarSmart::VEXOProgressBarSmart(const wchar_t* caption) {
    CVxLogEntry entry(L"VEXOProgressBarSmart::VEXOProgressBarSmart");
    m_pProgressBar = new VEXOProgressBar(caption, 100);
}

VEXOProgressBarSmart::~VEXOProgressBarSmart() {
    CVxLogEntry entry(L"VEXOProgressBarSmart::~VEXOProgressBarSmart");
    delete m_pProgressBar;
    m_pProgressBar = nullptr;
}

void VEXOProgressBarSmart::setPhasePercent(const double& percent) {
    if (m_pProgressBar) m_pProgressBar->setPhasePercent(percent);
}

void VEXOProgressBarSmart::nextIteration() {
    if (m_pProgressBar) m_pProgressBar->nextIteration();
}

void VEXOProgressBarSmart::newIteration(const int& count) {
    if (m_pProgressBar) m_pProgressBar->setPhaseIterations(count);
}

void VEXOProgressBarSmart::Suspend(const bool& suspended) {
    if (m_pProgressBar) m_pProgressBar->setSuspended(suspended);
}

void VEXOProgressBarSmart::setCurrentRatio(const double& ratio) {
    if (m_pProgressBar) m_pProgressBar->setCurrentRatio(ratio);
}
