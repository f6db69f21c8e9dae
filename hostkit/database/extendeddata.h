// Stand-in for the host's extended data of an object. Covers its division by application, replacing and checking; leaves out the object.
#pragma once

#include "groupblock.h"

#include <string_view>

class AcDbDatabase;

namespace hostkit {

/// Where the data of one application stands in a block: from its 1001 group to the next or the end.
struct ApplicationSpan {
    std::size_t from = 0;
    std::size_t behindName = 0;
    std::size_t to = 0;
    bool isEmpty() const { return behindName == to; }
};

/// Finds an application, without regard to case; false when the block has none of it.
bool findApplication(const GroupBlock& data, std::wstring_view name, ApplicationSpan& span);

/// A list that setXData may file, in packed form. eInvalidResBuf: it does not begin with 1001, has other
/// codes than 1000 to 1071, or names an application twice. eRegappIdNotFound: values of an application that
/// the drawing (null: any) has not registered.
Acad::ErrorStatus packExtendedData(const resbuf* list, const AcDbDatabase* database, GroupBlock& data);

/// The old data with that of the new one's applications in the place of theirs, further ones at the end. An
/// application without values goes. Empty `before`: what is new.
GroupBlock replacedExtendedData(const GroupBlock& before, const GroupBlock& now);

} // namespace hostkit
