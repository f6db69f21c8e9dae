// What a command's exception becomes: its result. Leaves out rescue from what is no exception.
#pragma once

#include "host.h"

namespace hostkit {

/// Of the exception that is being handled. Where there is no room for the reason, the status stands alone.
CommandResult resultOfException() noexcept;

/// The result of the work, or of what it throws.
template <class Work>
CommandResult caught(Work&& work) noexcept {
    try {
        return work();
    } catch (...) {
        return resultOfException();
    }
}

} // namespace hostkit
