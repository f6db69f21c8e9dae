#include "failingallocator.h"

#include "replacednew.h"

namespace {

bool isCounting = false;
bool isForGood = false;
bool hasThrown = false;
std::size_t allocations = 0;
std::size_t failing = static_cast<std::size_t>(-1);

void start(std::size_t number, bool forGood) {
    allocations = 0;
    failing = number;
    isForGood = forGood;
    hasThrown = false;
    isCounting = true;
}

} // namespace

void replacednew::beforeAllocation() {
    if (!isCounting) return;
    const std::size_t number = allocations++;
    if (number != failing && !(isForGood && number > failing)) return;
    hasThrown = true;
    throw std::bad_alloc();
}
void replacednew::afterAllocation() {}
void replacednew::beforeRelease() {}

namespace drawingtest {

void FailingAllocator::count() { start(static_cast<std::size_t>(-1), false); }
void FailingAllocator::failAt(std::size_t number, bool forGood) { start(number, forGood); }
std::size_t FailingAllocator::stop() {
    isCounting = false;
    return allocations;
}
bool FailingAllocator::hasFailed() { return hasThrown; }

} // namespace drawingtest
