#pragma once

#include "afxwin.h"

namespace vexo {

/// Makes a dialog as much larger as the text of its label needs: the label grows, what stands below it moves
/// down, buttons at the right edge move right, and the dialog is centred again. A text that fits changes
/// nothing.
void growForText(CWnd& dialog, int label);

} // namespace vexo
