#include "acarray.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

// A model: the same random edits on AcArray and on std::vector end alike.
TEST(AcArray, FollowsAVectorThroughRandomEdits) {
    std::mt19937 random(7);
    AcArray<std::wstring> array(0, 1);
    std::vector<std::wstring> model;
    for (int step = 0; step < 20000; ++step) {
        const std::wstring value = std::to_wstring(random() % 50) + std::wstring(random() % 40, L'x');
        const int length = array.length();
        const int at = length ? static_cast<int>(random() % static_cast<unsigned>(length)) : 0;
        switch (random() % 8) {
        case 0:
        case 1:
        case 2:
            EXPECT_EQ(array.append(value), length);
            model.push_back(value);
            break;
        case 3:
            array.insertAt(at, value);
            model.insert(model.begin() + at, value);
            break;
        case 4:
            if (!length) break;
            array.append(array[at]); // an element of its own
            model.push_back(std::wstring(model[static_cast<std::size_t>(at)]));
            break;
        case 5:
            if (!length) break;
            array.removeAt(at);
            model.erase(model.begin() + at);
            break;
        case 6: {
            const auto known = std::find(model.begin(), model.end(), value);
            EXPECT_EQ(array.find(value), known == model.end() ? -1 : known - model.begin());
            EXPECT_EQ(array.remove(value), known != model.end());
            if (known != model.end()) model.erase(known);
            break;
        }
        default:
            if (random() % 50) break;
            array.setLogicalLength(length / 2 + 3);
            model.resize(static_cast<std::size_t>(length / 2 + 3));
        }
        ASSERT_EQ(array.length(), static_cast<int>(model.size()));
    }
    EXPECT_TRUE(std::equal(array.begin(), array.end(), model.begin(), model.end()));
}

TEST(AcArray, CopiesAreIndependentAndMovesLeaveAnEmptyOrOtherArray) {
    AcArray<int> first;
    for (int i = 0; i < 5; ++i) first.append(i);
    AcArray<int> second(first);
    second[0] = 9;
    second.removeSubArray(1, 3);
    EXPECT_EQ(first.length(), 5);
    EXPECT_EQ(first[0], 0);
    ASSERT_EQ(second.length(), 2);
    EXPECT_EQ(second[1], 4);
    first = first;
    EXPECT_EQ(first.length(), 5);
    AcArray<int> third(std::move(first));
    EXPECT_EQ(third.length(), 5);
    third.append(third);
    EXPECT_EQ(third.length(), 10);
    EXPECT_EQ(third[9], 4);
    third.setPhysicalLength(2);
    EXPECT_EQ(third.length(), 2);
    EXPECT_EQ(third[1], 1);
}

} // namespace
