#include "itemlist.h"

#include "casefolding.h"

#include <algorithm>

namespace hostkit {

int ItemList::add(std::wstring text, bool isSorted) {
    if (!isSorted) return insert(-1, std::move(text));
    const auto place =
        std::upper_bound(items.begin(), items.end(), text, [](const std::wstring& a, const ListItem& b) {
            return compareNoCase(a, b.text) < 0;
        });
    return insert(static_cast<int>(place - items.begin()), std::move(text));
}

int ItemList::insert(int index, std::wstring text) {
    if (index < -1 || index > count()) return -1;
    const int place = index < 0 ? count() : index;
    items.insert(items.begin() + place, {std::move(text)});
    if (selected >= place) ++selected;
    return place;
}

int ItemList::remove(int index) {
    if (!at(index)) return -1;
    items.erase(items.begin() + index);
    if (selected == index)
        selected = -1;
    else if (selected > index)
        --selected;
    return count();
}

void ItemList::clear() {
    items.clear();
    selected = -1;
}

int ItemList::select(int index) {
    if (index != -1 && !at(index)) return -1;
    selected = index;
    return index;
}

int ItemList::find(int after, const std::wstring& text, bool isWhole) const {
    const int first = after < -1 || after >= count() ? 0 : after + 1;
    for (int i = 0; i < count(); ++i) {
        const int index = (first + i) % count();
        const std::wstring& candidate = items[static_cast<std::size_t>(index)].text;
        const std::wstring_view start =
            std::wstring_view(candidate).substr(0, isWhole ? candidate.size() : text.size());
        if (equalNoCase(start, text)) return index;
    }
    return -1;
}

ListItem* ItemList::at(LPARAM index) {
    return index >= 0 && index < count() ? &items[static_cast<std::size_t>(index)] : nullptr;
}

} // namespace hostkit
