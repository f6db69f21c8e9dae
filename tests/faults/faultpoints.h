// Faults on demand, in a program of its own: the host's calls between its layers, modules and the console,
// allocations and operations on files, each of which can be made to fail by its number.
#pragma once

#include <cstddef>
#include <cstdint>

namespace faults {

enum class Sort : unsigned char { kHostCall, kAllocation, kFileOperation };
constexpr std::size_t sortCount = 3;
constexpr const char* sortNames[sortCount] = {"host call", "allocation", "file operation"};

constexpr std::size_t never = SIZE_MAX;

/// Counts from here on; the one of that number, from 0, fails.
void arm(Sort sort, std::size_t number);
/// All is well again.
void disarm();
/// From now on the callers of what fails are printed.
void tellCallers();
/// How many there were since arm().
std::size_t count(Sort sort);
/// What failed, such as the name of the call; null when nothing has.
const char* failed();
/// Blocks that operator new has given since the program began and that were not given back.
std::int64_t liveBlocks();

} // namespace faults
