#include "itemlist.h"

#include "casefold.h"
#include "tchar.h"

#include <algorithm>

namespace hostkit {
namespace {

std::wstring textAt(LPARAM text) { return text ? reinterpret_cast<const wchar_t*>(text) : L""; }

} // namespace

int ItemList::add(std::wstring text, bool isSorted) {
    if (!isSorted) return insert(-1, std::move(text));
    const auto place =
        std::upper_bound(items.begin(), items.end(), text, [](const std::wstring& a, const ListItem& b) {
            return compareFolded(a, b.text) < 0;
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
        if (equalFolded(start, text)) return index;
    }
    return -1;
}

ListItem* ItemList::at(LPARAM index) {
    return index >= 0 && index < count() ? &items[static_cast<std::size_t>(index)] : nullptr;
}

template <const ItemMessages& messages>
bool ItemList::handle(bool isSorted, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) {
    const auto index = static_cast<int>(static_cast<LPARAM>(wParam));
    ListItem* const item = at(index);
    switch (message) {
    case messages.add:
        answer = add(textAt(lParam), isSorted);
        return true;
    case messages.insert:
        answer = insert(index, textAt(lParam));
        return true;
    case messages.remove:
        answer = remove(index);
        return true;
    case messages.clear:
        clear();
        answer = 0;
        return true;
    case messages.count:
        answer = count();
        return true;
    case messages.select:
        answer = select(index);
        return true;
    case messages.selected:
        answer = selected;
        return true;
    case messages.selectText:
        answer = find(index, textAt(lParam), false);
        if (answer >= 0) select(static_cast<int>(answer));
        return true;
    case messages.find:
    case messages.findWhole:
        answer = find(index, textAt(lParam), message == messages.findWhole);
        return true;
    case messages.textLength:
        answer = item ? static_cast<LRESULT>(item->text.size()) : -1;
        return true;
    case messages.text:
        answer = item && lParam ? static_cast<LRESULT>(item->text.size()) : -1;
        if (answer >= 0) lstrcpyW(reinterpret_cast<wchar_t*>(lParam), item->text.c_str());
        return true;
    case messages.setData:
        answer = item ? 0 : -1;
        if (item) item->data = lParam;
        return true;
    case messages.data:
        answer = item ? item->data : -1;
        return true;
    default:
        return false;
    }
}

template bool ItemList::handle<listMessages>(bool, UINT, WPARAM, LPARAM, LRESULT&);
template bool ItemList::handle<comboMessages>(bool, UINT, WPARAM, LPARAM, LRESULT&);

} // namespace hostkit
