#include "changingboxtree.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hostkit {

namespace {

constexpr float endless = std::numeric_limits<float>::infinity();

float below(double value) {
    const auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded) <= value ? rounded : std::nextafter(rounded, -endless);
}

float above(double value) {
    const auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded) >= value ? rounded : std::nextafter(rounded, endless);
}

/// What grows where a box grows, also for flat boxes.
float size(const CoarseBox& box) {
    return (box.high[0] - box.low[0]) + (box.high[1] - box.low[1]) + (box.high[2] - box.low[2]);
}

float growth(const CoarseBox& box, const CoarseBox& other) {
    CoarseBox both = box;
    both.extend(other);
    return size(both) - size(box);
}

float middle(const CoarseBox& box, std::size_t axis) { return box.low[axis] / 2 + box.high[axis] / 2; }

/// The place of a cell on the curve that goes through every cell of a square of 65536 x 65536 cells and
/// never leaps.
std::uint32_t placeOnCurve(std::uint32_t x, std::uint32_t y) {
    std::uint32_t place = 0;
    for (std::uint32_t half = 1U << 15; half > 0; half /= 2) {
        const bool right = (x & half) != 0;
        const bool upper = (y & half) != 0;
        place = place * 4 + (right ? 3U : 0U) - (right && upper ? 1U : 0U) + (!right && upper ? 1U : 0U);
        if (upper) continue;
        if (right) {
            x = ~x;
            y = ~y;
        }
        std::swap(x, y);
    }
    return place;
}

} // namespace

void CoarseBox::extend(const CoarseBox& other) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], other.low[axis]);
        high[axis] = std::max(high[axis], other.high[axis]);
    }
}

bool CoarseBox::holds(const CoarseBox& other) const {
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (!(low[axis] <= other.low[axis] && other.high[axis] <= high[axis])) return false;
    return true;
}

CoarseBox ChangingBoxTree::Node::box() const {
    CoarseBox all = entries[0].box;
    for (std::uint32_t i = 1; i < count; ++i) all.extend(entries[i].box);
    return all;
}

bool ChangingBoxTree::isKept(const SearchBox& box) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (!(box.low[axis] <= box.high[axis] && std::isfinite(box.low[axis]) &&
              std::isfinite(box.high[axis])))
            return false;
    return true;
}

CoarseBox ChangingBoxTree::coarse(const SearchBox& box) const {
    CoarseBox result{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        result.low[axis] = below(box.low[axis] - m_origin[axis]);
        result.high[axis] = above(box.high[axis] - m_origin[axis]);
    }
    return result;
}

SearchBox ChangingBoxTree::exact(const CoarseBox& box) const {
    SearchBox result{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        result.low[axis] = m_origin[axis] + static_cast<double>(box.low[axis]);
        result.high[axis] = m_origin[axis] + static_cast<double>(box.high[axis]);
    }
    return result;
}

SearchBox ChangingBoxTree::bounds() const {
    constexpr double far = std::numeric_limits<double>::infinity();
    return m_root == none ? SearchBox{{far, far, far}, {-far, -far, -far}} : exact(node(m_root).box());
}

std::size_t ChangingBoxTree::bytes() const {
    return m_chunks.size() * nodesPerChunk * sizeof(Node) + m_leafOf.capacity() * sizeof(std::uint32_t) +
           m_free.capacity() * sizeof(std::uint32_t);
}

// --- Building ----------------------------------------------------------------------------------------------

std::uint32_t ChangingBoxTree::makeNode(bool isLeaf) {
    std::uint32_t index = m_nodeCount;
    if (!m_free.empty()) {
        index = m_free.back();
        m_free.pop_back();
    } else if (m_nodeCount++ == m_chunks.size() * nodesPerChunk) {
        m_chunks.push_back(std::make_unique<Node[]>(nodesPerChunk));
    }
    Node& made = node(index);
    made.parent = none;
    made.count = 0;
    made.isLeaf = isLeaf;
    return index;
}

void ChangingBoxTree::adopt(std::uint32_t parent, const Entry& entry) {
    Node& into = node(parent);
    into.entries[into.count++] = entry;
    (into.isLeaf ? m_leafOf[entry.child] : node(entry.child).parent) = parent;
}

std::vector<ChangingBoxTree::Entry> ChangingBoxTree::packLevel(const std::vector<Entry>& entries,
                                                               bool isLeaf) {
    // A little room: the first changes need no splits.
    constexpr std::size_t filled = capacity - 1;
    std::vector<Entry> above;
    above.reserve(entries.size() / filled + 1);
    for (std::size_t from = 0; from < entries.size(); from += filled) {
        const std::uint32_t index = makeNode(isLeaf);
        const std::size_t to = std::min(entries.size(), from + filled);
        for (std::size_t i = from; i < to; ++i) adopt(index, entries[i]);
        above.push_back({node(index).box(), index});
    }
    return above;
}

void ChangingBoxTree::pack(std::vector<Entry>& entries) {
    m_chunks.clear();
    m_free.clear();
    m_nodeCount = 0;
    m_root = none;
    if (entries.empty()) return;
    CoarseBox all = entries.front().box;
    for (const Entry& entry : entries) all.extend(entry.box);
    const auto cell = [&](const CoarseBox& box, std::size_t axis) {
        constexpr float cells = 65535.0F;
        const float width = all.high[axis] - all.low[axis];
        const float share = width > 0.0F ? (middle(box, axis) - all.low[axis]) / width : 0.0F;
        return static_cast<std::uint32_t>(std::clamp(share, 0.0F, 1.0F) * cells);
    };
    std::vector<std::pair<std::uint32_t, std::uint32_t>> order;
    order.reserve(entries.size());
    for (std::uint32_t i = 0; i < entries.size(); ++i)
        order.emplace_back(placeOnCurve(cell(entries[i].box, 0), cell(entries[i].box, 1)), i);
    std::sort(order.begin(), order.end());
    std::vector<Entry> level;
    level.reserve(entries.size());
    for (const auto& [place, index] : order) level.push_back(entries[index]);
    for (bool isLeaf = true; isLeaf || level.size() > 1; isLeaf = false) level = packLevel(level, isLeaf);
    m_root = level.front().child;
}

// --- Changes -----------------------------------------------------------------------------------------------

ChangingBoxTree::Entry& ChangingBoxTree::entryOf(std::uint32_t index) {
    Node& parent = node(node(index).parent);
    return *std::find_if(parent.entries.begin(), parent.entries.begin() + parent.count,
                         [&](const Entry& entry) { return entry.child == index; });
}

// The boxes around a node that has changed.
void ChangingBoxTree::tighten(std::uint32_t index) {
    for (; node(index).parent != none; index = node(index).parent) entryOf(index).box = node(index).box();
}

std::uint32_t ChangingBoxTree::bestLeaf(const CoarseBox& box) const {
    std::uint32_t index = m_root;
    while (!node(index).isLeaf) {
        const Node& here = node(index);
        float best = endless;
        float bestSize = endless;
        for (std::uint32_t i = 0; i < here.count; ++i) {
            const float grown = growth(here.entries[i].box, box);
            const float whole = size(here.entries[i].box);
            if (i > 0 && !(grown < best || (grown == best && whole < bestSize))) continue;
            best = grown;
            bestSize = whole;
            index = here.entries[i].child;
        }
    }
    return index;
}

void ChangingBoxTree::insert(const Entry& entry) {
    if (m_root == none) m_root = makeNode(true);
    add(bestLeaf(entry.box), entry);
}

void ChangingBoxTree::add(std::uint32_t index, const Entry& entry) {
    if (node(index).count == capacity) return split(index, entry);
    adopt(index, entry);
    tighten(index);
}

// The half with the higher middles along the longer axis goes to a new node beside this one.
void ChangingBoxTree::split(std::uint32_t index, const Entry& extra) {
    std::vector<Entry> all(node(index).entries.begin(), node(index).entries.end());
    all.push_back(extra);
    std::size_t axis = 0;
    float widest = -1.0F;
    for (std::size_t each = 0; each < 3; ++each) {
        const auto [low, high] =
            std::minmax_element(all.begin(), all.end(), [&](const Entry& a, const Entry& b) {
                return middle(a.box, each) < middle(b.box, each);
            });
        const float width = middle(high->box, each) - middle(low->box, each);
        if (width > widest) axis = each;
        widest = std::max(widest, width);
    }
    std::sort(all.begin(), all.end(),
              [&](const Entry& a, const Entry& b) { return middle(a.box, axis) < middle(b.box, axis); });
    const std::uint32_t beside = makeNode(node(index).isLeaf);
    if (node(index).parent == none) {
        m_root = makeNode(false);
        adopt(m_root, {node(index).box(), index});
    }
    node(index).count = 0;
    for (std::size_t i = 0; i < all.size(); ++i) adopt(i < all.size() / 2 ? index : beside, all[i]);
    tighten(index);
    add(node(index).parent, {node(beside).box(), beside});
}

void ChangingBoxTree::set(Item item, const SearchBox& box) {
    if (!isKept(box)) return remove(item);
    if (item >= m_leafOf.size()) m_leafOf.resize(item + std::size_t{1}, none);
    const Entry entry{coarse(box), item};
    if (const std::uint32_t leaf = m_leafOf[item]; leaf != none) {
        Node& here = node(leaf);
        if (here.box().holds(entry.box)) {
            for (std::uint32_t i = 0; i < here.count; ++i)
                if (here.entries[i].child == item) here.entries[i] = entry;
            return tighten(leaf);
        }
        remove(item);
    }
    insert(entry);
}

void ChangingBoxTree::remove(Item item) {
    if (!has(item)) return;
    const std::uint32_t leaf = m_leafOf[item];
    m_leafOf[item] = none;
    Node& here = node(leaf);
    for (std::uint32_t i = 0; i < here.count; ++i)
        if (here.entries[i].child == item) {
            here.entries[i] = here.entries[--here.count];
            break;
        }
    if (here.count == 0)
        drop(leaf);
    else
        tighten(leaf);
}

// An empty node goes, and with it those around it that had nothing else.
void ChangingBoxTree::drop(std::uint32_t index) {
    for (;;) {
        const std::uint32_t parent = node(index).parent;
        if (parent == none) {
            m_root = none;
            m_free.push_back(index);
            return;
        }
        Node& around = node(parent);
        Entry& entry = entryOf(index);
        entry = around.entries[--around.count];
        m_free.push_back(index);
        if (around.count > 0) return tighten(parent);
        index = parent;
    }
}

} // namespace hostkit
