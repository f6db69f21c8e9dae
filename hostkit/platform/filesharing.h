// Files that are open: what their share modes let others do with the same file; leaves out other programs.
#pragma once

#include "windowstypes.h"

#include <memory>
#include <sys/types.h>

namespace hostkit {

/// Holds a place among the open files of the host; given back with the last copy.
using FileShare = std::shared_ptr<const void>;

/// Opens the file, told by device and number, for what the flags of CFile say. Null where another open file
/// of this host denies that, or does already what these flags deny. Without a share flag nobody else may
/// read or write.
FileShare shareFile(dev_t device, ino_t number, UINT flags);

} // namespace hostkit
