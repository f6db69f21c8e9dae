// The lists by which tables, blocks and sequences hold other records, which the exchange form tells by their
// order.
#pragma once

#include "encodingjob.h"
#include "recordvalues.h"

#include <string>
#include <vector>

namespace hostkit {

/// Into the values of a job's record. `texts` receives what these refer to, and must outlive them.
void addHeldLists(const EncodingContext& context, const EncodingJob& job, const RecordLayout& layout,
                  RecordScope& values, std::vector<std::string>& texts);

} // namespace hostkit
