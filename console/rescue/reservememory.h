#pragma once

#include <cstddef>

/// Memory that is set aside for a rescue. While a thread lives on it, all that the thread asks for comes from
/// here, without a lock, and what the program had before is neither trusted nor given back: its heap may be
/// torn, or locked by the very call that failed. The program's malloc asks here (allocation.cpp).
namespace reservememory {

/// True on a thread that lives on the reserve.
extern constinit thread_local bool isUsed;

/// Sets at least so much address space aside, in place of what was so far where that is less; the system
/// gives memory for it when it is touched. False where there is not so much: what was set aside stays.
bool setAside(std::size_t bytes);
/// Gives the reserve to everybody: for a rescue in a program whose heap is whole.
void giveBack();
/// From now on, and for good, the calling thread lives on the reserve.
void use();

// For the allocator, on a thread that lives on the reserve.

/// Null where nothing is left. Beyond the reserve, and for large blocks, the system is asked, as long as it
/// has some. `alignment` is a power of two.
void* allocate(std::size_t bytes, std::size_t alignment = alignof(std::max_align_t));
/// A block of the program's heap is left as it is.
void release(void* block);
/// A block of the program's heap is copied.
void* reallocate(void* block, std::size_t bytes);

} // namespace reservememory
