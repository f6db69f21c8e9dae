#pragma once

class VEXOProgressBar;

/// Owner of the one global meter, for the length of a scope: a tool deep down ticks it without being handed
/// an object. The static members do nothing while no meter is up. Main thread only.
class VEXOProgressBarSmart {
public:
    /// Puts up a VEXOProgressBar of 100 ticks. One that is up already is overwritten, not deleted: its object
    /// is lost, so scopes are not nested.
    explicit VEXOProgressBarSmart(const wchar_t* caption);
    /// Takes the meter that is up then away.
    virtual ~VEXOProgressBarSmart();
    VEXOProgressBarSmart(const VEXOProgressBarSmart&) = delete;
    VEXOProgressBarSmart& operator=(const VEXOProgressBarSmart&) = delete;

    static void setPhasePercent(const double& percent);
    static void nextIteration();
    /// VEXOProgressBar::setPhaseIterations.
    static void newIteration(const int& count);
    /// VEXOProgressBar::setSuspended.
    static void Suspend(const bool& suspended);
    static void setCurrentRatio(const double& ratio);

    /// Null when none is up.
    static VEXOProgressBar* m_pProgressBar;
};
