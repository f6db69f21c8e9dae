// Spatial index that follows changes: boxes by number, put in, moved and taken out one by one; leaves out
// exact boxes, which its users look at.
#pragma once

#include "boxtree.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace hostkit {

/// A box in single precision from the tree's origin on, rounded outwards.
struct CoarseBox {
    float low[3];
    float high[3];

    void extend(const CoarseBox& other);
    bool holds(const CoarseBox& other) const;
};

/// An R-tree: nodes of up to sixteen boxes. Built at once, its nodes are filled along a curve through space
/// on which neighbours stay near each other. Items are numbers from 0 on; what is empty or endless is not the
/// tree's to keep. Some 35 bytes an item.
class ChangingBoxTree {
public:
    using Item = std::uint32_t;

    /// Of all items whose box is not empty; `at(item)` gives it.
    template <typename BoxAt>
    void build(Item count, const BoxAt& at) {
        std::vector<Entry> entries;
        entries.reserve(count);
        chooseOrigin(count, at);
        for (Item item = 0; item < count; ++item)
            if (const SearchBox box = at(item); isKept(box)) entries.push_back({coarse(box), item});
        m_leafOf.assign(count, none);
        pack(entries);
    }
    /// In its new place, or out of the tree where the box is empty or endless.
    void set(Item item, const SearchBox& box);
    void remove(Item item);
    bool has(Item item) const { return item < m_leafOf.size() && m_leafOf[item] != none; }

    /// Calls visit(item) for each item whose box, and all boxes around it, pass `meets(box)`.
    template <typename Meets, typename Visit>
    void forEach(const Meets& meets, const Visit& visit) const {
        if (m_root != none) descend(m_root, meets, visit);
    }
    /// As coarse boxes have it.
    SearchBox exact(const CoarseBox& box) const;
    /// Of all items; low above high where there are none.
    SearchBox bounds() const;
    std::size_t bytes() const;

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    static constexpr std::uint32_t capacity = 16;
    static constexpr std::size_t nodesPerChunk = 16;

    struct Entry {
        CoarseBox box;
        std::uint32_t child; ///< an item in a leaf, else a node
    };
    struct Node {
        std::uint32_t parent = none;
        std::uint16_t count = 0;
        bool isLeaf = true;
        std::array<Entry, capacity> entries;

        CoarseBox box() const;
    };

    static bool isKept(const SearchBox& box);
    template <typename BoxAt>
    void chooseOrigin(Item count, const BoxAt& at) {
        m_origin = {};
        for (Item item = 0; item < count; ++item)
            if (const SearchBox box = at(item); isKept(box)) {
                for (std::size_t axis = 0; axis < 3; ++axis) m_origin[axis] = box.low[axis];
                return;
            }
    }
    CoarseBox coarse(const SearchBox& box) const;
    Node& node(std::uint32_t index) { return m_chunks[index / nodesPerChunk][index % nodesPerChunk]; }
    const Node& node(std::uint32_t index) const {
        return m_chunks[index / nodesPerChunk][index % nodesPerChunk];
    }
    std::uint32_t makeNode(bool isLeaf);
    void pack(std::vector<Entry>& entries);
    std::vector<Entry> packLevel(const std::vector<Entry>& entries, bool isLeaf);
    void adopt(std::uint32_t parent, const Entry& entry);
    void insert(const Entry& entry);
    std::uint32_t bestLeaf(const CoarseBox& box) const;
    void add(std::uint32_t index, const Entry& entry);
    void split(std::uint32_t index, const Entry& extra);
    void tighten(std::uint32_t index);
    void drop(std::uint32_t index);
    Entry& entryOf(std::uint32_t index);

    template <typename Meets, typename Visit>
    void descend(std::uint32_t index, const Meets& meets, const Visit& visit) const {
        const Node& here = node(index);
        for (std::uint32_t i = 0; i < here.count; ++i) {
            const Entry& entry = here.entries[i];
            if (!meets(entry.box)) continue;
            if (here.isLeaf)
                visit(entry.child);
            else
                descend(entry.child, meets, visit);
        }
    }

    std::array<double, 3> m_origin{};
    std::vector<std::unique_ptr<Node[]>> m_chunks;
    std::uint32_t m_nodeCount = 0;
    std::vector<std::uint32_t> m_free;
    std::uint32_t m_root = none;
    std::vector<std::uint32_t> m_leafOf; ///< by item
};

} // namespace hostkit
