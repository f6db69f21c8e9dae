// Stand-in for the host's message box window. Covers text, icon, and buttons of all types; leaves out help and sounds.
#pragma once

#include "afxwin.h"

#include <string_view>

namespace hostkit {

/// A message box as a window of this desktop, over the window that is active: its port is asked like for any
/// other (HostPort::askWindow). Flags and result are those of MessageBoxW; closing it is the refusing button.
/// Texts of buttons are French.
int runMessageBox(std::wstring_view text, std::wstring_view caption, unsigned flags);

} // namespace hostkit
