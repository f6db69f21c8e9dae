#include "selectionset.h"

#include "dbid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

// The set against a plain list, with repeats and removals in any order.
TEST(SelectionSetModel, keepsOrderMembershipAndWays) {
    std::mt19937 random(7);
    std::vector<AcDbStub> stubs(40);
    for (int round = 0; round < 200; ++round) {
        hostkit::SelectionSet set;
        std::vector<std::pair<AcDbObjectId, const hostkit::SelectionWay*>> model;
        for (int step = 0; step < 60; ++step) {
            const AcDbObjectId id(&stubs[random() % stubs.size()]);
            const bool isIn =
                std::any_of(model.begin(), model.end(), [&](auto& each) { return each.first == id; });
            const auto way = random() % 3 ? nullptr : std::make_shared<hostkit::SelectionWay>();
            switch (random() % 6) {
            case 5: {
                const std::size_t size =
                    model.size() - (model.empty() ? 0 : random() % std::min<std::size_t>(3, model.size()));
                set.shrinkTo(size);
                model.resize(size);
                break;
            }
            case 0:
                set.addAgain(id, way);
                model.emplace_back(id, way.get());
                break;
            case 1:
            case 2:
                EXPECT_EQ(set.add(id, way), !isIn);
                if (!isIn) model.emplace_back(id, way.get());
                break;
            case 3:
                EXPECT_EQ(set.remove(id), isIn);
                std::erase_if(model, [&](auto& each) { return each.first == id; });
                break;
            default:
                EXPECT_EQ(set.contains(id), isIn);
            }
            ASSERT_EQ(set.size(), model.size());
            if (model.empty()) continue;
            const std::size_t index = random() % model.size();
            ASSERT_EQ(set.at(index), model[index].first);
            ASSERT_EQ(set.wayAt(index), model[index].second);
        }
    }
}
