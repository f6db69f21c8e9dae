#pragma once

#include "afx.h"

/// The meter of the host's status bar with a position, shown from the object's making to its end. There is
/// one status bar: the latest meter replaces an earlier one, and the first of them to go takes it away.
class VEXOAcadProgressBar {
public:
    /// No caption, 0 to 100.
    VEXOAcadProgressBar();
    VEXOAcadProgressBar(const wchar_t* caption, int minimum, int maximum);
    virtual ~VEXOAcadProgressBar();
    VEXOAcadProgressBar(const VEXOAcadProgressBar&) = delete;
    VEXOAcadProgressBar& operator=(const VEXOAcadProgressBar&) = delete;

    /// The host's answer: 0, or another number when there is no meter.
    int moveToPos(int position);
    /// Moves to (minimum + (maximum - minimum) * percent) / 100, cut to a whole number; -1, and no move, for
    /// a percent below 0 or above 100. The minimum is divided too, so that only ranges from 0 land where the
    /// percent says; callers use no others.
    int moveToPercent(int percent);

private:
    int m_minimum;
    int m_maximum;
    CString m_caption;
};
