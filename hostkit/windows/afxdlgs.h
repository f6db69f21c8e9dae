// Stand-in for the host's application framework, dialogs. Covers file dialogs and property sheets; leaves out the dialogs of printing, fonts and colours.
#pragma once

#include "afxwin.h"
#include "cfiledialog.h"
#include "cpropertysheet.h"
