// A record list with its owner; leaves out what stands in it.
#pragma once

#include "adsdef.h"

#include <memory>

namespace hostkit {

struct RecordListDeleter {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
/// Frees the whole list with its texts.
using RecordList = std::unique_ptr<resbuf, RecordListDeleter>;

} // namespace hostkit
