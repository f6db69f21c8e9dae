#include "nameindex.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using hostkit::NameIndex;

// Names that differ in case alone are one; some are long, some empty.
std::wstring nameOf(unsigned number, bool upper) {
    if (number == 0) return {};
    std::wstring name = (upper ? L"ÉTAGE " : L"étage ") + std::to_wstring(number);
    if (number % 7 == 0) name += std::wstring(40, upper ? L'X' : L'x');
    return name;
}

} // namespace

// Against a map, while names come and go: closing up behind a name that goes must lose no other.
TEST(NameIndex, agreesWithAMap) {
    std::mt19937 random(20240229);
    for (const unsigned kinds : {5u, 60u, 3000u}) {
        NameIndex index;
        std::vector<std::wstring> names; // by place
        std::map<std::wstring, std::size_t, hostkit::FoldedLess> expected;
        const auto nameAt = [&](std::size_t place) -> const std::wstring& { return names[place]; };
        for (int step = 0; step < 20000; ++step) {
            const std::wstring name = nameOf(random() % kinds, random() % 2 == 0);
            const std::size_t found = index.find(name, nameAt);
            const auto known = expected.find(name);
            ASSERT_EQ(found, known == expected.end() ? NameIndex::none : known->second)
                << kinds << " " << step;
            const unsigned action = random() % 3;
            if (action == 0 && found == NameIndex::none) {
                names.push_back(name);
                index.insert(name, names.size() - 1);
                expected.emplace(name, names.size() - 1);
            } else if (action == 1 && found != NameIndex::none) {
                index.erase(name, found);
                expected.erase(known);
            } else if (action == 2) {
                index.erase(name, names.size() + 5); // another place: nothing happens
            }
        }
        for (const auto& [name, place] : expected) ASSERT_EQ(index.find(name, nameAt), place);
    }
}
