// The variables of dimensions as groups of a style's record; leaves out its name and flags.
#pragma once

#include "dimensionvariabletable.h"

#include "dbfiler.h"

#include <bitset>

class AcDbObject;

namespace hostkit {

/// A group of a variable into the style's variables. False where the group is none, or its value has no place
/// there. Where older forms and some programs name a block or text style instead of giving its handle, the
/// name may be one that no record has yet (findNamedBlocks).
bool readVariable(AcDbDxfFiler& filer, const AcDbDxfGroup& group, AcDbObject& style,
                  DimensionVariables& variables);
/// Every variable: those that were not read (`given`, by place in the table) and have the value which a
/// missing group means are marked so. The background's colour, whose code is also that of the flags, is left
/// out then. Forms before 2000 have arrow blocks by their names.
void writeVariables(AcDbDxfFiler& filer, const AcDbObject& style, const DimensionVariables& variables,
                    const std::bitset<variableLimit>& given);
/// Arrow blocks that were read by name before there was a block: found now.
void findNamedBlocks(const AcDbObject& style, DimensionVariables& variables);
/// The same for good, of a drawing that was read in a form before 2000: a name that is spelled as its block's
/// is the block from now on, and follows it when that is renamed. Other spellings stay names.
void bindNamedBlocks(AcDbObject& style, DimensionVariables& variables);

/// The variable of the code was set anew: a name that was read for it holds no more.
void forgetNamedBlock(AcDbObject& style, short code);

} // namespace hostkit
