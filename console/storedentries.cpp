#include "storedentries.h"

#include "consoletext.h"
#include "groupcodes.h"

namespace {

constexpr short textCode = 1000;
constexpr short longCode = 1071;

bool isText(const resbuf* record) { return record && record->restype == textCode; }

const wchar_t* kindOf(const resbuf& value) {
    switch (value.restype) {
    case 1010:
        return L"point";
    case 1040:
        return L"double";
    case 1070:
        return L"int";
    case longCode:
        return L"long";
    default:
        return L"other";
    }
}

/// How many 1071 stand from here on.
int longsFrom(const resbuf* record) {
    int count = 0;
    for (; record && record->restype == longCode; record = record->rbnext) ++count;
    return count;
}

// Takes what belongs to the key; the record behind it.
resbuf* takeValue(resbuf* record, StoredEntry& entry) {
    if (!record || (isText(record) && record->rbnext && !isText(record->rbnext))) {
        entry.kind = L"flag"; // and what follows is a key
        return record;
    }
    entry.kind = isText(record) ? L"string" : kindOf(*record);
    entry.values.push_back(record);
    record = record->rbnext;
    if (entry.values[0]->restype != longCode) return record;
    const int count = longsFrom(record);
    if (count == 0 || count != entry.values[0]->resval.rlong) return record;
    entry.kind = L"long array";
    entry.values.clear();
    for (int i = 0; i < count; ++i, record = record->rbnext) entry.values.push_back(record);
    return record;
}

} // namespace

std::vector<StoredEntry> storedEntries(resbuf* list) {
    std::vector<StoredEntry> entries;
    resbuf* record = list && list->restype == hostkit::applicationCode ? list->rbnext : list;
    while (record) {
        StoredEntry& entry = entries.emplace_back();
        if (isText(record)) {
            entry.key = record->resval.rstring ? record->resval.rstring : L"";
            record = takeValue(record->rbnext, entry);
        } else {
            entry.kind = L"other";
            entry.values.push_back(record);
            record = record->rbnext;
        }
    }
    return entries;
}

std::wstring valueText(const resbuf& record) {
    const ads_u_val& value = record.resval;
    switch (AcDb::groupKind(record.restype)) {
    case AcDb::GroupKind::kReal:
        return numberText(value.rreal);
    case AcDb::GroupKind::kPoint:
        return L"(" + numberText(value.rpoint[0]) + L", " + numberText(value.rpoint[1]) + L", " +
               numberText(value.rpoint[2]) + L")";
    case AcDb::GroupKind::kInt16:
        return std::to_wstring(value.rint);
    case AcDb::GroupKind::kInt32:
        return std::to_wstring(value.rlong);
    case AcDb::GroupKind::kBinary:
        return std::to_wstring(value.rbinary.clen) + L" bytes";
    default:
        return value.rstring ? value.rstring : L"";
    }
}
