// Plain setters: one field; leaves out checks of the value.
#pragma once

#include "dbobject.h"

#include <utility>

namespace hostkit {

/// Sets the field if the object may be written, and marks the object as changed; else the status says why and
/// nothing changes.
template <typename Field, typename Value>
Acad::ErrorStatus assignField(AcDbObject& object, Field& field, Value&& value) {
    const Acad::ErrorStatus status = object.assertWriteEnabled();
    if (status == Acad::eOk) field = std::forward<Value>(value);
    return status;
}

/// The same where the value has been found wanting: eInvalidInput unless it is acceptable.
template <typename Field, typename Value>
Acad::ErrorStatus assignIf(bool isAcceptable, AcDbObject& object, Field& field, Value&& value) {
    return isAcceptable ? assignField(object, field, std::forward<Value>(value)) : Acad::eInvalidInput;
}

} // namespace hostkit
