// Segments of one plane are split where they cross or lie on each other, and all planes of a segment see the
// same splits.
#include "arrangement.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

class Noder {
public:
    explicit Noder(Arrangement& all)
        : m_all(all) {}

    bool run() {
        constexpr int mostRounds = 24;
        for (int round = 0; round < mostRounds; ++round) {
            for (PlaneClass& plane : m_all.planeClasses) {
                if (!plane.cut && !plane.severalBodies) continue;
                if (round == 0 ? begin(plane) : renew(plane)) meetAll(plane, round == 0);
            }
            if (m_splits.empty()) return true;
            if (!split()) return false;
        }
        return false;
    }

private:
    struct Split {
        Index segment;
        double place;
        Index point;
    };
    struct Item {
        Index segment;
        Index body; ///< all of whose uses in the plane are edges of this body: none for others
        bool asks;  ///< is tried against the others
    };

    // Edges of one body meet at their ends alone: only those of the body with the most are not asked.
    bool begin(PlaneClass& plane) {
        std::sort(plane.uses.begin(), plane.uses.end(), [](const Use& a, const Use& b) {
            return a.segment != b.segment ? a.segment < b.segment : a.face < b.face;
        });
        m_items.clear();
        for (const Use& use : plane.uses) {
            const Index body = use.face == none ? none : m_all.faceBodies[use.face];
            if (m_items.empty() || m_items.back().segment != use.segment)
                m_items.push_back({use.segment, body, true});
            else if (m_items.back().body != body)
                m_items.back().body = none;
        }
        plane.leaves.clear();
        for (const Item& item : m_items) plane.leaves.push_back(item.segment);
        const Index quiet = mostFrequentBody();
        for (Item& item : m_items) item.asks = item.body == none || item.body != quiet;
        return true;
    }

    Index mostFrequentBody() {
        m_counts.assign(m_all.bodies.size(), 0);
        for (const Item& item : m_items)
            if (item.body != none) ++m_counts[item.body];
        return static_cast<Index>(std::max_element(m_counts.begin(), m_counts.end()) - m_counts.begin());
    }

    // Whether segments of the plane were split: their pieces are to be tried.
    bool renew(PlaneClass& plane) {
        m_items.clear();
        bool changed = false;
        for (const Index leaf : plane.leaves) {
            const bool whole = m_all.segments[leaf].childCount == 0;
            changed = changed || !whole;
            m_all.forLeaves(leaf, true, [&](Index piece, bool) { m_items.push_back({piece, none, !whole}); });
        }
        if (!changed) return false;
        // A piece that stood in the plane before is known already.
        std::sort(m_items.begin(), m_items.end(), [](const Item& a, const Item& b) {
            return a.segment != b.segment ? a.segment < b.segment : a.asks < b.asks;
        });
        m_items.erase(std::unique(m_items.begin(), m_items.end(),
                                  [](const Item& a, const Item& b) { return a.segment == b.segment; }),
                      m_items.end());
        plane.leaves.clear();
        for (const Item& item : m_items) plane.leaves.push_back(item.segment);
        return true;
    }

    Box boxOf(const PlaneClass& plane, Index segment) const {
        Box box;
        for (const Index end : {m_all.segments[segment].low, m_all.segments[segment].high}) {
            const Planar p = m_all.planar(plane, end);
            box.add(AcGePoint3d(p.x, p.y, 0));
        }
        box.inflate(m_all.tolerance);
        return box;
    }

    void meetAll(const PlaneClass& plane, bool first) {
        constexpr std::size_t cheap = 8192;
        m_boxes.clear();
        std::size_t asking = 0;
        for (const Item& item : m_items) {
            m_boxes.push_back(boxOf(plane, item.segment));
            asking += item.asks ? 1 : 0;
        }
        const auto meetPair = [&](std::size_t i, std::size_t j) {
            if (i == j || (m_items[j].asks && j < i)) return;
            if (first && m_items[i].body != none && m_items[i].body == m_items[j].body) return;
            meet(plane, m_items[i].segment, m_items[j].segment);
        };
        if (asking * m_items.size() <= cheap) {
            for (std::size_t i = 0; i < m_items.size(); ++i)
                for (std::size_t j = 0; m_items[i].asks && j < m_items.size(); ++j)
                    if (m_boxes[i].meets(m_boxes[j])) meetPair(i, j);
            return;
        }
        const SpaceTree tree(m_boxes);
        for (std::size_t i = 0; i < m_items.size(); ++i)
            if (m_items[i].asks) tree.query(m_boxes[i], [&](Index j) { meetPair(i, j); });
    }

    double placeOn(const Segment& s, Index point) const {
        const AcGePoint3d& from = m_all.points[s.low];
        return (m_all.points[s.high] - from).dotProduct(m_all.points[point] - from);
    }

    // Within the tolerance of the segment, and such that both pieces are shorter than the whole: splitting
    // comes to an end.
    bool splitAt(Index number, Index point) {
        const Segment& s = m_all.segments[number];
        if (point == s.low || point == s.high) return true;
        const AcGePoint3d& from = m_all.points[s.low];
        const AcGeVector3d run = m_all.points[s.high] - from;
        const AcGeVector3d to = m_all.points[point] - from;
        const double length = run.lengthSqrd();
        const double along = run.dotProduct(to);
        if (!(along > 0 && along < length)) return false;
        if (run.crossProduct(to).lengthSqrd() > m_all.tolerance * m_all.tolerance * length) return false;
        if (to.lengthSqrd() >= length || (to - run).lengthSqrd() >= length) return false;
        m_splits.push_back({number, along, point});
        return true;
    }

    void meet(const PlaneClass& plane, Index first, Index second) {
        const Segment a = m_all.segments[first];
        const Segment b = m_all.segments[second];
        bool touching = false;
        for (const Index end : {b.low, b.high}) touching = splitAt(first, end) || touching;
        for (const Index end : {a.low, a.high}) touching = splitAt(second, end) || touching;
        if (touching) return;
        const Planar from = m_all.planar(plane, a.low);
        const Planar to = m_all.planar(plane, a.high);
        const Planar low = m_all.planar(plane, b.low);
        const Planar high = m_all.planar(plane, b.high);
        if (orientation(from, to, low) * orientation(from, to, high) >= 0) return;
        if (orientation(low, high, from) * orientation(low, high, to) >= 0) return;
        const auto area = [&](const Planar& p) {
            return (high.x - low.x) * (p.y - low.y) - (high.y - low.y) * (p.x - low.x);
        };
        const double before = area(from);
        const double part = before / (before - area(to));
        const AcGePoint3d& start = m_all.points[a.low];
        const Index point = m_all.weld(start + (m_all.points[a.high] - start) * part);
        splitAt(first, point);
        splitAt(second, point);
    }

    // Each piece is shorter than the whole: no segment is ever a piece of itself. Points beside both ends may
    // not allow that.
    bool split() {
        std::sort(m_splits.begin(), m_splits.end(), [](const Split& a, const Split& b) {
            if (a.segment != b.segment) return a.segment < b.segment;
            return a.place != b.place ? a.place < b.place : a.point < b.point;
        });
        for (std::size_t i = 0; i < m_splits.size();) {
            const Index number = m_splits[i].segment;
            const auto first = static_cast<Index>(m_all.children.size());
            const Segment whole = m_all.segments[number];
            Index from = whole.low;
            for (; i < m_splits.size() && m_splits[i].segment == number; ++i) {
                if (m_splits[i].point == from) continue;
                m_all.children.push_back(m_all.segment(from, m_splits[i].point));
                from = m_splits[i].point;
            }
            m_all.children.push_back(m_all.segment(from, whole.high));
            const auto isShorter = [&](Index child) { return lengthSquared(child) < lengthSquared(number); };
            if (!std::all_of(m_all.children.begin() + first, m_all.children.end(), isShorter)) return false;
            m_all.segments[number].firstChild = first;
            m_all.segments[number].childCount = static_cast<Index>(m_all.children.size()) - first;
        }
        m_splits.clear();
        return true;
    }

    double lengthSquared(Index segment) const {
        return (m_all.points[m_all.segments[segment].high] - m_all.points[m_all.segments[segment].low])
            .lengthSqrd();
    }

    Arrangement& m_all;
    std::vector<Item> m_items;
    std::vector<Box> m_boxes;
    std::vector<Index> m_counts;
    std::vector<Split> m_splits;
};

} // namespace

bool nodeSegments(Arrangement& all) { return Noder(all).run(); }

} // namespace hostkit::modeler
