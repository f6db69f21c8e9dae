// Extended data that follows its entity: what a motion makes of each value; leaves out the entity's own
// geometry.
#pragma once

#include "groupblock.h"

#include "acadstrc.h"
#include "gemat3d.h"

#include <utility>
#include <vector>

class AcDbObject;

namespace hostkit {

/// The extended data of things that a matrix moves. All of it is reckoned before any of it is changed, so
/// that a motion which some value cannot follow changes nothing.
///
/// By the code of the value:
/// - 1011, a position in the world, moves as the entity's points do.
/// - 1012, a displacement, turns, scales and mirrors; it does not shift.
/// - 1013, a direction, turns and mirrors and keeps its length. Stretched or skewed it points where a line
///   along it points afterwards.
/// - 1041, a distance, and 1042, a factor, are multiplied by the factor of lengths, which is positive for a
///   mirror too. Where lengths do not all scale alike there is no such factor, and they stay.
/// - 1010, 1040 and all others stay.
///
/// A shift changes positions alone, and the others to no bit.
class ExtendedDataMotion {
public:
    explicit ExtendedDataMotion(const AcGeMatrix3d& matrix);

    /// Reckons what the object's data becomes. eInvalidInput, and the object is left out: a value would pass
    /// what a real holds.
    Acad::ErrorStatus add(AcDbObject& object);
    /// Gives every object that was added its data; one that has nothing that moves is not touched. They are
    /// open for write.
    void apply();

private:
    /// False where the group stays.
    bool move(AcDbDxfGroup& group) const;
    AcGeVector3d moved(const AcGeVector3d& vector, short code) const;

    AcGeMatrix3d m_matrix;
    bool m_isShift;
    double m_scale = 1.0;
    std::vector<std::pair<AcDbObject*, GroupBlock>> m_moved;
};

} // namespace hostkit
