// Which layout the groups of a record are written by.
#pragma once

#include "recordlayout.h"

#include <string_view>

namespace hostkit {

/// Of the kind that `record`, its groups, begins with; a part of a sequence is told by the groups of its
/// `owner`. Null for kinds that have no layout, or none that can be written from groups.
[[nodiscard]] const RecordLayout* layoutForGroups(const RecordLayouts& layouts, std::string_view record,
                                                  std::string_view owner = {});

/// The groups tell enough for a record of that layout where no binary one is changed.
[[nodiscard]] bool canBeNew(const RecordLayout& layout, std::string_view record);

/// What a new record that cannot be of its own kind is written as: a table of several cells keeps its picture
/// as a block reference. Null where nothing can stand for it.
[[nodiscard]] const RecordLayout* replacementOf(const RecordLayouts& layouts, const RecordLayout& layout);

} // namespace hostkit
