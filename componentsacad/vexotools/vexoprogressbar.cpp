#include "vexoprogressbar.h"

#include "aced.h"
#include "cvxlogentry.h"

#include <algorithm>
#include <limits>

namespace {

/// The whole number towards 0. What no int holds stands at the nearest one, what is no number at 0.
int wholeTicks(double position) {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return position == position ? static_cast<int>(std::clamp(position, least, most)) : 0;
}

} // namespace

VEXOProgressBar::VEXOProgressBar(const CString& caption, int total)
    : m_total(total)
    , m_phaseLength(total) {
    CVxLogEntry entry(L"VEXOProgressBar::VEXOProgressBar");
    acedSetStatusBarProgressMeter(caption, 0, m_total);
}

VEXOProgressBar::~VEXOProgressBar() {
    CVxLogEntry entry(L"VEXOProgressBar::~VEXOProgressBar");
    acedRestoreStatusBar();
}

void VEXOProgressBar::setPhasePercent(const double& percent) {
    CVxLogEntry entry(L"VEXOProgressBar::setPhasePercent");
    m_phaseLength = percent / 100 * m_total;
}

void VEXOProgressBar::setPhaseLength(const double& length) { m_phaseLength = length; }

void VEXOProgressBar::setPhaseIterations(const int& count) {
    CVxLogEntry entry(L"VEXOProgressBar::setPhaseIterations");
    if (count == 0) return;
    m_remaining.append(count);
    m_iterationCounts.append(count);
    m_started.append(0);
}

void VEXOProgressBar::nextIteration() {
    CVxLogEntry entry(L"VEXOProgressBar::nextIteration");
    if (m_isSuspended || m_remaining.isEmpty()) return;
    if (m_started.last() == 0) {
        m_started.last() = 1;
    } else {
        double product = 1.0;
        for (const int count : m_iterationCounts) product *= count;
        increaseProgressBar(m_phaseLength / product * m_currentRatio);
    }
    if (--m_remaining.last() == 0) closeLevel();
}

void VEXOProgressBar::closeLevel() {
    m_remaining.removeLast();
    m_iterationCounts.removeLast();
    m_started.removeLast();
    if (!m_started.isEmpty()) m_started.last() = 0;
}

void VEXOProgressBar::increaseProgressBar(const double& ticks) {
    CVxLogEntry entry(L"VEXOProgressBar::increaseProgressBar");
    const int before = wholeTicks(m_position);
    m_position += ticks;
    const int after = wholeTicks(m_position);
    if (after != before) acedSetStatusBarProgressMeterPos(after);
}

void VEXOProgressBar::setSuspended(const bool& suspended) { m_isSuspended = suspended; }

void VEXOProgressBar::setCurrentRatio(const double& ratio) { m_currentRatio = ratio; }
