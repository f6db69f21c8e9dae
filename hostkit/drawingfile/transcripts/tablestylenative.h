// Styles of tables in the forms from 2010 on, which hold a style of cells for each kind of row.
#pragma once

namespace hostkit {

class NativeInput;

/// Makes the cell styles of a new record from the groups of the exchange form, which tells rows alone: data,
/// title, header, each from its group 7 on.
void readTableStyle(NativeInput& input);

} // namespace hostkit
