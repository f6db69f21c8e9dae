// Extended data of an object: its division by application, replacing and checking; leaves out the object.
#pragma once

#include "dbid.h"
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

/// The record that registers an application in the drawing; null where there is none.
AcDbObjectId registeredApplication(const AcDbDatabase& database, std::wstring_view name);

/// Finds an application, without regard to case; false when the block has none of it.
bool findApplication(const GroupBlock& data, std::wstring_view name, ApplicationSpan& span);

/// What setXData makes of an object's data: the applications of the list in the place of their old data,
/// further ones at the end; one without values goes.
///
/// eInvalidResBuf: the list does not begin with 1001, has other codes than 1000 to 1071 or reals that are no
/// numbers, or names an application twice. eRegappIdNotFound: values of an application that the drawing
/// (null: any) has not registered. eXdataSizeExceeded: the whole would be larger than an object may have.
/// `result` is only given with eOk.
Acad::ErrorStatus replaceExtendedData(const GroupBlock& before, const resbuf* list,
                                      const AcDbDatabase* database, GroupBlock& result);

} // namespace hostkit
