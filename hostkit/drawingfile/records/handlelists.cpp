#include "handlelists.h"

#include <algorithm>
#include <iterator>

namespace hostkit {

namespace {

constexpr HandleList lists[] = {
    {"DICTIONARY", "AcDbDictionary", 350, 3, 0, 0},
    {"DICTIONARY", "AcDbDictionary", 360, 3, 0, 0},
    {"ACDBDICTIONARYWDFLT", "AcDbDictionary", 350, 3, 0, 0},
    {"ACDBDICTIONARYWDFLT", "AcDbDictionary", 360, 3, 0, 0},
    {"GROUP", "AcDbGroup", 340, 0, 0, 0},
    {"SORTENTSTABLE", "AcDbSortentsTable", 331, 0, 5, 0},
    {"FIELDLIST", "AcDbIdSet", 330, 0, 0, 90},
    {"IDBUFFER", "AcDbIdBuffer", 330, 0, 0, 0},
    {"BLOCK_RECORD", "{BLKREFS", 331, 0, 0, 0},
    {"TABLE", "AcDbDimStyleTable", 340, 0, 0, 71},
};

template <class IsIt>
const HandleList* find(IsIt&& isIt) {
    const auto found = std::find_if(std::begin(lists), std::end(lists), isIt);
    return found == std::end(lists) ? nullptr : &*found;
}

} // namespace

const HandleList* handleListOf(std::string_view record, int code) {
    return find([&](const HandleList& list) { return list.code == code && list.record == record; });
}

const HandleList* countedListOf(std::string_view record, int countCode) {
    return find([&](const HandleList& list) {
        return list.countCode != 0 && list.countCode == countCode && list.record == record;
    });
}

} // namespace hostkit
