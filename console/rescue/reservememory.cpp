#include "reservememory.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <malloc.h>
#include <sys/mman.h>
#include <utility>

namespace reservememory {

constinit thread_local bool isUsed = false;

namespace {

// Stands before each block.
struct Head {
    std::size_t capacity;
    std::uintptr_t mark;
};
static_assert(sizeof(Head) == 16);

constexpr std::uintptr_t ofReserve = 0x52455343'55455331U;     ///< combined with the address, to know our own
constexpr std::uintptr_t ofReserveOnce = 0x52455343'55455332U; ///< not to be used again
constexpr std::uintptr_t ofSystem = 0x52455343'55455333U;
constexpr std::size_t large = std::size_t{1} << 20;
constexpr std::size_t moreAtATime = std::size_t{8} << 20;
constexpr std::size_t granularity = 16;
constexpr std::size_t fineClasses = 64; ///< of 16 bytes each
constexpr int stepsOfDoubling = 4;

// Blocks that were given back, by their class of size; the next one stands in the block.
constexpr std::size_t classCount = fineClasses + stepsOfDoubling * 54;
void* g_free[classCount];
char* g_begin = nullptr; ///< what is set aside
char* g_next = nullptr;  ///< what is left of it
char* g_end = nullptr;

void* map(std::size_t bytes) {
    void* const place =
        mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return place == MAP_FAILED ? nullptr : place;
}

std::size_t roundedUp(std::size_t bytes, std::size_t to) { return (bytes + to - 1) & ~(to - 1); }

struct SizeClass {
    std::size_t number;
    std::size_t capacity;
};

// Steps of 16 bytes up to 1024, then four to each doubling.
SizeClass classOf(std::size_t bytes) {
    const std::size_t fine = std::max<std::size_t>((bytes + granularity - 1) / granularity, 1);
    if (fine <= fineClasses) return {fine - 1, fine * granularity};
    const int doubling = std::bit_width(bytes - 1) - 1; // 2^doubling <= bytes - 1
    const std::size_t step = std::size_t{1} << (doubling - 2);
    const std::size_t capacity = roundedUp(bytes, step);
    const std::size_t steps = (capacity - (std::size_t{1} << doubling)) / step; // 1 to 4
    const std::size_t number =
        fineClasses + static_cast<std::size_t>(doubling - 10) * stepsOfDoubling + steps - 1;
    return {number, capacity};
}

Head* headOf(void* block) { return static_cast<Head*>(block) - 1; }
std::uintptr_t markOf(const void* block, std::uintptr_t kind) {
    return std::bit_cast<std::uintptr_t>(block) ^ kind;
}
bool isOf(void* block, std::uintptr_t kind) { return headOf(block)->mark == markOf(block, kind); }

void* marked(void* block, std::size_t capacity, std::uintptr_t kind) {
    *headOf(block) = {capacity, markOf(block, kind)};
    return block;
}

// Null where neither the reserve nor the system has so much.
char* cut(std::size_t bytes) {
    if (static_cast<std::size_t>(g_end - g_next) < bytes) {
        const std::size_t more = std::max(roundedUp(bytes, 4096), moreAtATime);
        auto* const place = static_cast<char*>(map(more));
        if (!place) return nullptr;
        g_next = place;
        g_end = place + more;
    }
    return std::exchange(g_next, g_next + bytes);
}

void* allocateFromSystem(std::size_t bytes) {
    const std::size_t whole = roundedUp(bytes + sizeof(Head), 4096);
    auto* const place = static_cast<char*>(map(whole));
    return place ? marked(place + sizeof(Head), whole - sizeof(Head), ofSystem) : nullptr;
}

void* fail() {
    errno = ENOMEM;
    return nullptr;
}

// One that needs more than 16 bytes' alignment is rare, and not used again.
void* allocateAligned(std::size_t bytes, std::size_t alignment) {
    char* const place = cut(roundedUp(bytes, granularity) + alignment + sizeof(Head));
    if (!place) return fail();
    const std::uintptr_t least = std::bit_cast<std::uintptr_t>(place) + sizeof(Head);
    char* const block = place + (roundedUp(least, alignment) - std::bit_cast<std::uintptr_t>(place));
    return marked(block, bytes, ofReserveOnce);
}

} // namespace

bool setAside(std::size_t bytes) {
    const std::size_t whole = roundedUp(bytes, 4096);
    if (static_cast<std::size_t>(g_end - g_begin) >= whole) return true;
    auto* const place = static_cast<char*>(map(whole));
    if (!place) return false;
    giveBack();
    g_begin = g_next = place;
    g_end = place + whole;
    return true;
}

void giveBack() {
    if (g_begin) munmap(g_begin, static_cast<std::size_t>(g_end - g_begin));
    g_begin = g_next = g_end = nullptr;
}

void use() { isUsed = true; }

void* allocate(std::size_t bytes, std::size_t alignment) {
    constexpr std::size_t most = std::size_t{1} << 46;
    if (bytes > most || alignment > most) return fail();
    if (alignment > granularity) return allocateAligned(bytes, alignment);
    if (bytes >= large)
        if (void* const block = allocateFromSystem(bytes)) return block;
    const SizeClass size = classOf(bytes);
    if (void* const again = g_free[size.number]) {
        std::memcpy(&g_free[size.number], again, sizeof(void*));
        return again;
    }
    char* const place = cut(size.capacity + sizeof(Head));
    return place ? marked(place + sizeof(Head), size.capacity, ofReserve) : fail();
}

void release(void* block) {
    if (!block) return;
    if (isOf(block, ofSystem)) {
        munmap(headOf(block), headOf(block)->capacity + sizeof(Head));
    } else if (isOf(block, ofReserve)) {
        void*& first = g_free[classOf(headOf(block)->capacity).number];
        std::memcpy(block, &first, sizeof(void*));
        first = block;
    }
}

void* reallocate(void* block, std::size_t bytes) {
    if (!block) return allocate(bytes);
    const bool isOurs = isOf(block, ofReserve) || isOf(block, ofReserveOnce) || isOf(block, ofSystem);
    const std::size_t had = isOurs ? headOf(block)->capacity : malloc_usable_size(block);
    if (isOurs && had >= bytes) return block;
    if (isOf(block, ofSystem)) {
        const std::size_t whole = roundedUp(bytes + sizeof(Head), 4096);
        void* const moved = mremap(headOf(block), had + sizeof(Head), whole, MREMAP_MAYMOVE);
        if (moved != MAP_FAILED) return marked(static_cast<Head*>(moved) + 1, whole - sizeof(Head), ofSystem);
    }
    void* const other = allocate(bytes);
    if (!other) return nullptr;
    std::memcpy(other, block, std::min(had, bytes));
    release(block);
    return other;
}

} // namespace reservememory
