// Overrides: the variables that one dimension has otherwise than its style, in its extended data; leaves out
// what they mean.
#pragma once

#include "dimensionvariabletable.h"
#include "groupblock.h"

class AcDbDatabase;

namespace hostkit {

/// Puts the overrides of extended data over the variables. Values that have no place there, of unknown codes,
/// or handles of other records than wanted are passed over. `database` is that of the handles; without one
/// they are passed over too.
void applyOverrides(const GroupBlock& data, const AcDbDatabase* database, DimensionVariables& variables);

/// A value as an override's group of extended data.
AcDbDxfGroup overrideGroup(double value);
AcDbDxfGroup overrideGroup(const std::wstring& value);
AcDbDxfGroup overrideGroup(AcDbObjectId value);
template <typename Integer>
AcDbDxfGroup overrideGroup(Integer value) requires(std::is_integral_v<Integer>) {
    AcDbDxfGroup group;
    group.code = 1070;
    group.kind = AcDb::GroupKind::kInt16;
    group.integer = static_cast<Adesk::Int16>(value);
    return group;
}

/// The data with that value for the variable of the code, in the place of the earlier one or behind the
/// others; the rest of the data stays as it is. Null data are none.
GroupBlock withOverride(const GroupBlock* data, short code, const AcDbDxfGroup& value);
/// Without any override.
GroupBlock withoutOverrides(const GroupBlock& data);

} // namespace hostkit
