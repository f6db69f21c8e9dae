#pragma once

#include "acarray.h"
#include "afx.h"

/// A meter in the host's status bar that nested loops drive: each level knows only how often it will turn.
/// Shown from the object's making to its end; a copy has the same state, and the first of the two to go takes
/// the meter away.
///
///     VEXOProgressBar bar(L"Strips", 100);
///     bar.setPhasePercent(40);
///     bar.setPhaseIterations(slabs);
///     for (int i = 0; i < slabs; ++i) {
///         bar.nextIteration();
///         ...
///     }
class VEXOProgressBar {
public:
    /// Shows the meter on 0 to total. The whole of it is the first phase.
    VEXOProgressBar(const CString& caption, int total);
    virtual ~VEXOProgressBar();
    VEXOProgressBar(const VEXOProgressBar&) = default;
    VEXOProgressBar& operator=(const VEXOProgressBar&) = default;

    /// The next stage of the work may use that part of the total, counted from where the meter stands.
    void setPhasePercent(const double& percent);
    /// The same in ticks.
    void setPhaseLength(const double& length);

    /// Opens a loop level of so many iterations, inside the levels that are open. 0 opens none: what follows
    /// counts for the level outside.
    void setPhaseIterations(const int& count);
    /// To be called once at the top of each iteration of the innermost loop. The first call of a level only
    /// marks its start: work done is counted, not work begun, so that a loop of four leaves the meter at
    /// three quarters of its phase. The others move by the phase over the product of all open levels' counts.
    /// The last call closes the level, and the next one of the level outside marks again. Without a level,
    /// nothing.
    void nextIteration();

    /// The host hears of it only when the whole number changes.
    void increaseProgressBar(const double& ticks);

    /// While suspended, nextIteration does nothing; what it was called for is lost, and levels stay open.
    void setSuspended(const bool& suspended);
    /// Later steps are multiplied by it.
    void setCurrentRatio(const double& ratio);

private:
    void closeLevel();

    int m_total;
    double m_position = 0.0;
    double m_phaseLength;
    AcArray<int> m_iterationCounts; ///< a level each, the innermost last; so the two below
    AcArray<int> m_remaining;
    AcArray<int> m_started; ///< 0 or 1
    bool m_isSuspended = false;
    double m_currentRatio = 1.0;
};
