// The program's own malloc: the C library's, but for a thread that lives on the reserve of a rescue. All that
// the program loads finds these first.
#include "reservememory.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier)
void* __libc_malloc(std::size_t size);
void __libc_free(void* block);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t size) {
    if (reservememory::isUsed) [[unlikely]]
        return reservememory::allocate(size);
    return __libc_malloc(size);
}

void free(void* block) {
    if (reservememory::isUsed) [[unlikely]]
        return reservememory::release(block);
    __libc_free(block);
}

void* calloc(std::size_t count, std::size_t size) {
    if (!reservememory::isUsed) [[likely]]
        return __libc_calloc(count, size);
    const bool isTooMuch = size > 0 && count > SIZE_MAX / size;
    void* const block = isTooMuch ? nullptr : reservememory::allocate(count * size);
    return block ? std::memset(block, 0, count * size) : nullptr;
}

void* realloc(void* block, std::size_t size) {
    if (reservememory::isUsed) [[unlikely]]
        return reservememory::reallocate(block, size);
    return __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
    if (reservememory::isUsed) [[unlikely]]
        return reservememory::allocate(size, alignment);
    return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }

int posix_memalign(void** place, std::size_t alignment, std::size_t size) {
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0) return EINVAL;
    void* const block = memalign(alignment, size);
    if (!block) return ENOMEM;
    *place = block;
    return 0;
}

} // extern "C"
