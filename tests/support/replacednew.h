// operator new and delete of a whole test program, for one that watches its memory: one source of it includes
// this behind what it does at each allocation and release. They stand in for those of all libraries too.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace replacednew {

// What the program defines.
void beforeAllocation(); ///< may throw std::bad_alloc
void afterAllocation();
void beforeRelease();

inline void* allocate(std::size_t size, std::size_t alignment) {
    beforeAllocation();
    if (size == 0) size = 1;
    void* const memory = alignment <= alignof(std::max_align_t)
                             ? std::malloc(size)
                             : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (!memory) throw std::bad_alloc();
    afterAllocation();
    return memory;
}

inline void* allocateOrNull(std::size_t size, std::size_t alignment) noexcept {
    try {
        return allocate(size, alignment);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

inline void release(void* memory) noexcept {
    if (!memory) return;
    beforeRelease();
    std::free(memory);
}

} // namespace replacednew

void* operator new(std::size_t size) { return replacednew::allocate(size, 0); }
void* operator new[](std::size_t size) { return replacednew::allocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return replacednew::allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return replacednew::allocateOrNull(size, 0);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return replacednew::allocateOrNull(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return replacednew::allocateOrNull(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept { replacednew::release(memory); }
void operator delete[](void* memory) noexcept { replacednew::release(memory); }
void operator delete(void* memory, std::size_t) noexcept { replacednew::release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { replacednew::release(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { replacednew::release(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { replacednew::release(memory); }
