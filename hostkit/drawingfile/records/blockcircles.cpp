#include "blockcircles.h"

#include "dbaccess.h"
#include "dbblockreference.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace hostkit {

namespace {

const AcDbBlockTableRecord* insertedBy(AcDbObjectId entity) {
    if (entity.isErased()) return nullptr;
    const auto* const reference = DatabaseAccess::objectOf<AcDbBlockReference>(entity);
    return reference ? DatabaseAccess::objectOf<AcDbBlockTableRecord>(reference->blockTableRecord())
                     : nullptr;
}

/// Walks the blocks that blocks refer to, without recursion.
class BlockWalk {
public:
    const AcDbBlockTableRecord* findCircleFrom(const AcDbBlockTableRecord& first) {
        if (!enter(first)) return nullptr;
        while (!m_path.empty()) {
            auto& [block, place] = m_path.back();
            if (place == block->entities().size()) {
                m_states[block] = State::kDone;
                m_path.pop_back();
                continue;
            }
            const AcDbBlockTableRecord* const inner = insertedBy(block->entities()[place++]);
            if (inner && !enter(*inner) && m_states[inner] == State::kOpen) return inner;
        }
        return nullptr;
    }

private:
    enum class State : unsigned char { kOpen, kDone };

    // False for a block that was met before.
    bool enter(const AcDbBlockTableRecord& block) {
        if (!m_states.emplace(&block, State::kOpen).second) return false;
        m_path.push_back({&block, 0});
        return true;
    }

    std::unordered_map<const AcDbBlockTableRecord*, State> m_states;
    std::vector<std::pair<const AcDbBlockTableRecord*, std::size_t>> m_path;
};

} // namespace

const AcDbBlockTableRecord* findBlockInItself(const AcDbDatabase& database) {
    const auto* const table =
        DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(database, TableKind::kBlock));
    if (!table) return nullptr;
    BlockWalk walk;
    for (const AcDbObjectId id : table->records()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (!block || block->isErased()) continue;
        if (const AcDbBlockTableRecord* const circle = walk.findCircleFrom(*block)) return circle;
    }
    return nullptr;
}

} // namespace hostkit
