// List of selected entities: order, membership and how each was selected; leaves out names of sets.
#pragma once

#include "dbid.h"
#include "gemat3d.h"
#include "gepnt3d.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// How an entity came into a set.
struct SelectionWay {
    enum Method : short { other = 0, pick = 1, window = 2, crossing = 3, fence = 4 };
    Method method = other;
    AcGePoint3d point{};                    ///< of a pick, in the world
    std::vector<AcDbObjectId> containers{}; ///< of a pick into references, innermost first
    AcGeMatrix3d toWorld{};                 ///< likewise
};
using SharedWay = std::shared_ptr<const SelectionWay>;

/// Entities in the order in which they came. A place is found in constant time, also between removals from
/// the front; membership too, after one pass that is made at its first use.
class SelectionSet {
public:
    SelectionSet() = default;
    /// Of entities that are each named once.
    explicit SelectionSet(std::vector<AcDbObjectId> distinct, const SharedWay& way = nullptr);

    std::size_t size() const { return m_liveCount; }
    bool isEmpty() const { return m_liveCount == 0; }
    AcDbObjectId at(std::size_t index) const;
    /// Null for one that came by other means than picking.
    const SelectionWay* wayAt(std::size_t index) const;
    bool contains(AcDbObjectId id) const;

    /// False, and nothing is done, for an entity that is in it.
    bool add(AcDbObjectId id, const SharedWay& way = nullptr);
    /// Once more, whether it is in it or not.
    void addAgain(AcDbObjectId id, const SharedWay& way = nullptr);
    /// Takes the last ones out again, so that so many are left.
    void shrinkTo(std::size_t size);
    /// All places of it; false for one that is not in it.
    bool remove(AcDbObjectId id);
    std::vector<AcDbObjectId> ids() const;

private:
    void learnPlaces() const;
    void closeGaps() const;

    // Removed ones are null until the next look behind them closes the gaps.
    mutable std::vector<AcDbObjectId> m_ids{};
    mutable std::vector<SharedWay> m_ways{};                          ///< empty while nobody was picked
    mutable std::unordered_map<AcDbObjectId, std::size_t> m_places{}; ///< of the first one of each
    mutable bool m_knowsPlaces = false;
    mutable std::size_t m_front = 0; ///< all before it are removed
    mutable bool m_hasGaps = false;
    bool m_hasRepeats = false;
    std::size_t m_liveCount = 0;
};

} // namespace hostkit
