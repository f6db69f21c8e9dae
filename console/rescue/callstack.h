#pragma once

#include <cstddef>
#include <cstdint>

/// Which code ran, for the report of a failure. Nothing here takes a lock or memory of the heap.
namespace callstack {

/// The addresses of the running calls from the innermost on, at most so many; their number. Where `from` is
/// not null, those before it are left out, if it is among them: what a signal handler itself has called.
std::size_t capture(const void** calls, std::size_t room, const void* from);

/// What an address lies in.
struct Place {
    static constexpr std::size_t longest = 512;
    char module[longest] = "";   ///< the file
    char function[longest] = ""; ///< as the linker names it; empty where the file does not tell
    std::uintptr_t offset = 0;   ///< within the function, else within the file's image
};

/// False where no file is mapped there.
bool find(const void* address, Place& place);

} // namespace callstack
