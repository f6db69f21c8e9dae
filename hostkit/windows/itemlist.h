// List contents: what lists and combo boxes keep of their items, and their messages for it; leaves out
// painting.
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

/// What a list and a combo box are asked in the same way, by the numbers that each has for it.
struct ItemMessages {
    UINT add;
    UINT insert;
    UINT remove;
    UINT clear;
    UINT count;
    UINT select;
    UINT selected;
    UINT selectText;
    UINT find;
    UINT findWhole;
    UINT textLength;
    UINT text;
    UINT setData;
    UINT data;
};
inline constexpr ItemMessages listMessages{
    LB_ADDSTRING,  LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT, LB_GETCOUNT,
    LB_SETCURSEL,  LB_GETCURSEL,    LB_SELECTSTRING, LB_FINDSTRING,   LB_FINDSTRINGEXACT,
    LB_GETTEXTLEN, LB_GETTEXT,      LB_SETITEMDATA,  LB_GETITEMDATA};
inline constexpr ItemMessages comboMessages{
    CB_ADDSTRING,    CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT, CB_GETCOUNT,
    CB_SETCURSEL,    CB_GETCURSEL,    CB_SELECTSTRING, CB_FINDSTRING,   CB_FINDSTRINGEXACT,
    CB_GETLBTEXTLEN, CB_GETLBTEXT,    CB_SETITEMDATA,  CB_GETITEMDATA};
static_assert(LB_ERR == -1 && CB_ERR == -1, "what both answer where an item is not there");

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
    /// True, with the answer set, for one of the messages.
    template <const ItemMessages& messages>
    bool handle(bool isSorted, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer);
    int count() const { return static_cast<int>(items.size()); }

    std::vector<ListItem> items;
    int selected = -1;
};

} // namespace hostkit
