// Stand-in for the host's list contents. Covers what lists and combo boxes keep of their items; leaves out painting.
#pragma once

#include "winuser.h"

#include <string>
#include <vector>

namespace hostkit {

struct ListItem {
    std::wstring text{};
    LPARAM data = 0;
    bool isMarked = false;
};

/// Items counted from 0, and the selected one (-1: none). Indices that are not there give -1 and change
/// nothing.
class ItemList {
public:
    /// At the place that its order gives where it is sorted (without regard to case), else at the end.
    int add(std::wstring text, bool isSorted);
    /// Before that item; -1 puts it at the end.
    int insert(int index, std::wstring text);
    /// What is left. The selection moves with its item, and goes with it.
    int remove(int index);
    void clear();
    int select(int index);
    /// The first behind `after`, round at the end, whose text begins with (or, with `isWhole`, is) that text,
    /// without regard to case.
    int find(int after, const std::wstring& text, bool isWhole) const;
    ListItem* at(LPARAM index);
    const ListItem* at(LPARAM index) const { return const_cast<ItemList*>(this)->at(index); }
    int count() const { return static_cast<int>(items.size()); }

    std::vector<ListItem> items;
    int selected = -1;
};

} // namespace hostkit
