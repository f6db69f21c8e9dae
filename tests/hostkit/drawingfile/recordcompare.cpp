#include "recordcompare.h"

#include "adscodes.h"
#include "drawingtext.h"
#include "groupscanner.h"

#include "casefold.h"

#include <algorithm>
#include <cmath>

using namespace hostkit;

namespace drawingtest {

namespace {

bool isRecordStart(const RawGroup& group, std::string_view section) {
    return group.code == 0 || (group.code == 9 && section == "HEADER");
}

bool isNear(double left, double right) {
    return left == right ||
           std::fabs(left - right) <= 1e-12 * std::max({1.0, std::fabs(left), std::fabs(right)});
}

bool equalText(const std::string& left, const std::string& right, Strictness strictness) {
    if (withoutBlanks(left) == withoutBlanks(right)) return true;
    if (strictness == Strictness::kSame) return false;
    const DrawingText text(CodePage::utf8);
    return equalFolded(text.decode(left), text.decode(right));
}

bool equalValue(const Pair& left, const Pair& right, Strictness strictness) {
    switch (AcDb::groupKind(left.code)) {
    case AcDb::GroupKind::kText:
    case AcDb::GroupKind::kBinary:
        return equalText(left.value, right.value, strictness);
    case AcDb::GroupKind::kHandle:
        return handleFromText(left.value).value_or(0) == handleFromText(right.value).value_or(0);
    case AcDb::GroupKind::kReal:
    case AcDb::GroupKind::kPoint: {
        const auto one = realFromText(left.value);
        const auto other = realFromText(right.value);
        if (!one || !other) return left.value == right.value;
        return strictness == Strictness::kSame ? *one == *other : isNear(*one, *other);
    }
    default:
        return integerFromText(left.value) == integerFromText(right.value);
    }
}

// The allowed differences of records that were written from their fields.
bool isAllowed(const std::vector<Pair>& record, const Pair& left, const Pair& right) {
    const std::string& name = record.front().value;
    if (left.code == 62) // the index beside a true colour
        return std::any_of(record.begin(), record.end(), [](const Pair& pair) { return pair.code == 420; });
    if (name == "ARC" && (left.code == 50 || left.code == 51)) {
        const double turns =
            (realFromText(left.value).value_or(0.1) - realFromText(right.value).value_or(0.2)) / 360.0;
        return isNear(turns, std::round(turns)); // angles within one turn
    }
    return false;
}

using Parts = std::map<std::pair<int, int>, std::vector<const Pair*>>;

// By part of the record (a subclass, or the extended data) and code, each in its order.
Parts partsOf(const std::vector<Pair>& record) {
    Parts parts;
    int part = 0;
    for (const Pair& pair : record) {
        if (pair.code == 100 || (pair.code == 1001 && part < 1000)) part += pair.code == 100 ? 1 : 1000;
        parts[{part, pair.code}].push_back(&pair);
    }
    return parts;
}

std::string fieldDifference(const std::vector<Pair>& original, const std::vector<Pair>& written) {
    Parts left = partsOf(original);
    Parts right = partsOf(written);
    for (const auto& [key, pairs] : right) left[key]; // the keys of both
    for (const auto& [key, mine] : left) {
        const auto& its = right[key];
        // What stood twice by mistake stands once, as the later one has it.
        const bool isDouble = mine.size() == 2 && its.size() == 1 && key.second == 70 &&
                              original.front().value == "DIMSTYLE" &&
                              equalValue(*mine[1], *its[0], Strictness::kFields);
        if (isDouble) continue;
        if (mine.size() != its.size()) return "number of groups " + std::to_string(key.second);
        for (std::size_t place = 0; place < mine.size(); ++place)
            if (!equalValue(*mine[place], *its[place], Strictness::kFields) &&
                !isAllowed(original, *mine[place], *its[place]))
                return "group " + std::to_string(key.second) + ": " + mine[place]->value + " became " +
                       its[place]->value;
    }
    return {};
}

std::string orderedDifference(const std::vector<Pair>& original, const std::vector<Pair>& written) {
    if (original.size() != written.size()) return "number of groups";
    for (std::size_t place = 0; place < original.size(); ++place)
        if (original[place].code != written[place].code ||
            !equalValue(original[place], written[place], Strictness::kSame))
            return "group " + std::to_string(original[place].code) + " in place " + std::to_string(place);
    return {};
}

} // namespace

Records recordsOf(std::string_view bytes) {
    Records records;
    std::map<std::string, int> numbers;
    std::string section;
    std::vector<Pair> record;
    const auto finish = [&] {
        if (record.empty()) return;
        const std::string name = section + " " + record.front().value;
        const int handleCode = record.front().value == "DIMSTYLE" ? 105 : 5;
        const auto handle = std::find_if(record.begin() + 1, record.end(),
                                         [handleCode](const Pair& pair) { return pair.code == handleCode; });
        const bool hasHandle = handle != record.end() && record.front().code == 0;
        records[name + " " + (hasHandle ? handle->value : "#" + std::to_string(numbers[name]++))] = record;
        record.clear();
    };
    GroupScanner scanner(bytes);
    RawGroup group;
    bool awaitsSection = false;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (isRecordStart(group, section)) finish();
        if (awaitsSection && group.code == 2) section = withoutBlanks(group.value);
        awaitsSection = group.is(0, "SECTION") || (awaitsSection && group.code != 2);
        record.push_back({group.code, std::string(group.value)});
    }
    finish();
    return records;
}

std::vector<std::string> differences(const Records& original, const Records& written, Strictness strictness) {
    std::vector<std::string> found;
    for (const auto& [key, record] : original) {
        const auto other = written.find(key);
        if (other == written.end()) {
            found.push_back(key + ": missing");
            continue;
        }
        const std::string reason = strictness == Strictness::kSame ? orderedDifference(record, other->second)
                                                                   : fieldDifference(record, other->second);
        if (!reason.empty()) found.push_back(key + ": " + reason);
    }
    for (const auto& [key, record] : written)
        if (!original.count(key)) found.push_back(key + ": added");
    return found;
}

} // namespace drawingtest
