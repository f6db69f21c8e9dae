// Setters of an entity's plain fields: numbers, positive numbers, flags, ids and directions; leaves out rules
// of one field.
#pragma once

#include "assignfield.h"
#include "entitycoordinates.h"

#include <cmath>

namespace hostkit {

inline bool isFinite(double value) { return std::isfinite(value); }

/// For coordinates, lengths and angles: eInvalidInput for what is no number.
template <typename Field>
Acad::ErrorStatus setFiniteField(AcDbObject& object, Field& field, const Field& value) {
    return assignIf(isFinite(value), object, field, value);
}

/// eInvalidInput unless above 0.
inline Acad::ErrorStatus setPositiveField(AcDbObject& object, double& field, double value) {
    return assignIf(std::isfinite(value) && value > 0.0, object, field, value);
}

/// eInvalidInput below 0 and for what is no number.
inline Acad::ErrorStatus setNonNegativeField(AcDbObject& object, double& field, double value) {
    return assignIf(std::isfinite(value) && value >= 0.0, object, field, value);
}

/// Sets or clears bits of a field of flags.
template <typename Field>
Acad::ErrorStatus setFlag(AcDbObject& object, Field& flags, int bits, bool on) {
    return assignField(object, flags, static_cast<Field>(on ? flags | bits : flags & ~bits));
}

/// The id of a record that the object uses, or null. eNotThatKindOfClass: an object of another class;
/// eInvalidInput: one of another drawing.
template <typename Record>
Acad::ErrorStatus setRecordField(AcDbObject& object, AcDbObjectId& field, AcDbObjectId id) {
    const AcRxClass* found = id.objectClass();
    if (!id.isNull() && !(found && found->isDerivedFrom(Record::desc()))) return Acad::eNotThatKindOfClass;
    if (!id.isNull() && object.database() && id.database() != object.database()) return Acad::eInvalidInput;
    return assignField(object, field, id);
}

/// A direction that a normal can be made of.
inline bool isDirection(const AcGeVector3d& vector) { return isFinite(vector) && !vector.isZeroLength(); }

/// The unit vector along the given one; eInvalidInput unless that is a direction.
inline Acad::ErrorStatus setDirectionField(AcDbObject& object, AcGeVector3d& field,
                                           const AcGeVector3d& vector) {
    if (!isDirection(vector)) return Acad::eInvalidInput;
    return assignField(object, field, AcGe::unitOf(vector));
}

} // namespace hostkit
