#pragma once

#include "windowaction.h"

#include <string>

/// The window as text in a frame, at most 76 columns wide: its caption, the lines it paints, its controls row
/// by row. Buttons stand in square brackets, the one with the focus between '>' and '<'; marks are [x] and [
/// ]; items of lists, and of the open list of a combo box, are numbered from 1.
std::wstring boxAsText(const hostkit::ShownWindow& window);

/// The button that refuses: Cancel, else No, else Abort, else the only one; null where there is none of
/// these.
const hostkit::ShownControl* refusingControl(const hostkit::ShownWindow& window);
