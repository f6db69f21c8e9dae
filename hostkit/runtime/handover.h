// Handing what one owns to a list of a caller that owns what stands in it.
#pragma once

#include <memory>

namespace hostkit {

/// Appends to the list, whose owner frees it from then on; where there is no room, all stays as it was.
template <class List, class Made>
void handOver(List& list, std::unique_ptr<Made>& made) {
    list.append(made.get());
    (void)made.release();
}

} // namespace hostkit
