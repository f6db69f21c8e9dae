#include "stubpool.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace hostkit {

StubPool::~StubPool() {
    for (StubChunkHeader* chunk : m_chunks) std::free(chunk);
}

AcDbStub* StubPool::make() {
    if (m_count == m_chunks.size() * stubsPerChunk) {
        m_chunks.reserve(m_chunks.size() + 1);
        auto* chunk = static_cast<StubChunkHeader*>(std::aligned_alloc(stubChunkSize, stubChunkSize));
        if (!chunk) throw std::bad_alloc();
        *chunk = {m_database, m_chunks.size()};
        m_chunks.push_back(chunk);
    }
    AcDbStub* stub = at(m_count++);
    std::memset(stub, 0, sizeof *stub);
    return stub;
}

} // namespace hostkit
