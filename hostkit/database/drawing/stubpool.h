// Stubs of a drawing: making them and walking them in order; leaves out giving them back before the drawing
// goes.
#pragma once

#include "dbid.h"

#include <cstddef>
#include <vector>

namespace hostkit {

/// Chunks of stubs, each aligned to its size and headed by the drawing.
class StubPool {
public:
    static constexpr std::size_t stubsPerChunk = (stubChunkSize - sizeof(StubChunkHeader)) / sizeof(AcDbStub);

    explicit StubPool(AcDbDatabase* database)
        : m_database(database) {}
    ~StubPool();
    StubPool(const StubPool&) = delete;
    StubPool& operator=(const StubPool&) = delete;

    /// A zeroed stub; throws std::bad_alloc.
    AcDbStub* make();
    std::size_t count() const { return m_count; }
    AcDbStub* at(std::size_t index) const {
        return stubsOf(m_chunks[index / stubsPerChunk]) + index % stubsPerChunk;
    }

    /// The index at which a stub of any drawing stands in its own one.
    static std::size_t indexOf(const AcDbStub* stub) {
        StubChunkHeader* const chunk = chunkOf(stub);
        return chunk->ordinal * stubsPerChunk + static_cast<std::size_t>(stub - stubsOf(chunk));
    }

private:
    static AcDbStub* stubsOf(StubChunkHeader* chunk) { return reinterpret_cast<AcDbStub*>(chunk + 1); }

    AcDbDatabase* m_database;
    std::vector<StubChunkHeader*> m_chunks;
    std::size_t m_count = 0;
};

} // namespace hostkit
