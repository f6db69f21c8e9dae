// Paragraph within a record: that it follows the motions of its text; leaves out its columns' meaning.
#pragma once

#include "gemat3d.h"

class AcDbEntity;

namespace hostkit {

/// A paragraph's record of the 2018 form has its place, direction and widths a second time, behind the mark
/// of an embedded object; so has an attribute of several lines. Other programs show these. Moves
/// them along; an entity without such a paragraph stays as it is.
void moveEmbeddedParagraph(AcDbEntity& entity, const AcGeMatrix3d& matrix);

} // namespace hostkit
