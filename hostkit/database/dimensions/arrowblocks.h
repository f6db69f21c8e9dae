// Standing arrows of dimensions: their blocks, and how a dimension line meets them.
#pragma once

#include "acadstrc.h"
#include "dbid.h"

class AcDbDatabase;

namespace hostkit {

/// How an arrow shares the line with what stands beside it.
struct ArrowTraits {
    bool endsLine = true; ///< the dimension line ends at the arrow's base; else it runs to the tip
    bool isTick = false;  ///< the dimension line may run on beyond the extension line (dimdle)
    double room = 1.0;    ///< what is free beside a text between two arrows, in arrow sizes
};

/// Of the block of an arrow; null is the filled closed one. A block that is none of the standing ones ends
/// the line.
ArrowTraits arrowTraits(AcDbObjectId block);

/// The block of that name, with or without its underscore, in any case: one of the drawing, else a standing
/// one, which is made there in units of 1 with the tip at the origin and the line from the left. Null for an
/// empty name, "." and the names of the filled closed arrow. eNoDatabase for no drawing, eKeyNotFound for a
/// name that is neither, eNullPtr; the block then stays as it was.
Acad::ErrorStatus arrowBlock(AcDbDatabase* database, const wchar_t* name, AcDbObjectId& block);

} // namespace hostkit
