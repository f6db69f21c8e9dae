#include "failingallocator.h"

#include <cstdlib>
#include <new>

namespace {

bool isCounting = false;
bool isForGood = false;
bool hasThrown = false;
std::size_t allocations = 0;
std::size_t failing = static_cast<std::size_t>(-1);

void* allocate(std::size_t size, std::size_t alignment) {
    if (isCounting) {
        const std::size_t number = allocations++;
        if (number == failing || (isForGood && number > failing)) {
            hasThrown = true;
            throw std::bad_alloc();
        }
    }
    if (size == 0) size = 1;
    void* const memory = alignment <= alignof(std::max_align_t)
                             ? std::malloc(size)
                             : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (!memory) throw std::bad_alloc();
    return memory;
}

void* allocateOrNull(std::size_t size, std::size_t alignment) noexcept {
    try {
        return allocate(size, alignment);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void start(std::size_t number, bool forGood) {
    allocations = 0;
    failing = number;
    isForGood = forGood;
    hasThrown = false;
    isCounting = true;
}

} // namespace

void* operator new(std::size_t size) { return allocate(size, 0); }
void* operator new[](std::size_t size) { return allocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size, 0); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size, 0); }
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocateOrNull(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }

namespace drawingtest {

void FailingAllocator::count() { start(static_cast<std::size_t>(-1), false); }
void FailingAllocator::failAt(std::size_t number, bool forGood) { start(number, forGood); }
std::size_t FailingAllocator::stop() {
    isCounting = false;
    return allocations;
}
bool FailingAllocator::hasFailed() { return hasThrown; }

} // namespace drawingtest
