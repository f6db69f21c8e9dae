// The buttons of the system's message boxes.
#pragma once

namespace hostkit {

/// The ids of the type's buttons in order, ended by 0. `flags` here and below are those of MessageBoxW.
[[nodiscard]] const int* buttonsOfBox(unsigned flags);
/// The button that a person gets by pressing Enter: the one that the MB_DEFBUTTON flag names among those of
/// the type.
[[nodiscard]] int defaultButton(unsigned flags);
/// The button that changes least, which is taken where nobody is there: Cancel, else No, else Abort, else the
/// only one.
[[nodiscard]] int refusingButton(unsigned flags);

/// The text of a button of that id, with its mark: French, as all texts of the system's own windows here.
[[nodiscard]] const wchar_t* textOfButton(int id);

} // namespace hostkit
