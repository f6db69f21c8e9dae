#include "changingboxtree.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

namespace {

using hostkit::ChangingBoxTree;
using hostkit::CoarseBox;
using hostkit::SearchBox;

// Single precision has steps of 1/16 at a million from the origin: every corner of every box must lie in it
// all the same.
TEST(ChangingBoxTree, FindsABoxAtEachOfItsCorners) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-1e6, 1e6), size(0.0, 1e-3);
    const auto newBox = [&] {
        SearchBox box{};
        for (int axis = 0; axis < 3; ++axis) {
            box.low[axis] = 7e6 + place(random);
            box.high[axis] = box.low[axis] + size(random);
        }
        return box;
    };
    std::map<ChangingBoxTree::Item, SearchBox> boxes;
    constexpr ChangingBoxTree::Item count = 500;
    for (ChangingBoxTree::Item item = 0; item < count; ++item) boxes[item] = newBox();
    ChangingBoxTree tree;
    tree.build(count, [&](ChangingBoxTree::Item item) { return boxes[item]; });
    for (int round = 0; round < 3; ++round) {
        for (const auto& [item, box] : boxes)
            for (int corner = 0; corner < 8; ++corner) {
                SearchBox at{};
                for (int axis = 0; axis < 3; ++axis)
                    at.low[axis] = at.high[axis] = (corner >> axis & 1) != 0 ? box.high[axis] : box.low[axis];
                std::set<ChangingBoxTree::Item> found;
                tree.forEach([&](const CoarseBox& each) { return tree.exact(each).meets(at); },
                             [&](ChangingBoxTree::Item each) { found.insert(each); });
                ASSERT_TRUE(found.contains(item)) << item << " at corner " << corner;
            }
        for (int change = 0; change < 200; ++change) {
            const ChangingBoxTree::Item item = random() % (count + 50);
            if (change % 3 == 0) {
                tree.remove(item);
                boxes.erase(item);
            } else {
                tree.set(item, boxes[item] = newBox());
            }
            ASSERT_EQ(tree.has(item), boxes.contains(item));
        }
    }
}

} // namespace
