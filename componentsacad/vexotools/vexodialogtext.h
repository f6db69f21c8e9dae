#pragma once

#include "afxwin.h"

/// Makes a dialog as much larger as the text of its label needs: the label grows, what stands below it moves
/// down, buttons at the right edge move right, and the dialog is centred again. A text that fits changes
/// nothing.
void growForText(CWnd& dialog, int label);
