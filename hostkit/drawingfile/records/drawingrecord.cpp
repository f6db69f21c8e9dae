#include "drawingrecord.h"

#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

namespace {

void addGroup(const RawGroup& group, const GroupScanner& scanner, DrawingRecord& record) {
    record.groups.push_back({group.value, group.start, scanner.position(), static_cast<short>(group.code)});
}

// Some programs have it in the middle; a class' groups that stand behind it are a class' groups all the same.
void putExtendedDataLast(DrawingRecord& record) {
    const auto begin = record.groups.begin() + static_cast<std::ptrdiff_t>(record.extendedDataBegin);
    const auto isOfClass = [](const RecordGroup& group) { return group.code < commentCode; };
    if (std::none_of(begin, record.groups.end(), isOfClass)) return;
    record.isRearranged = true;
    const auto moved = std::stable_partition(begin, record.groups.end(), isOfClass);
    record.extendedDataBegin = static_cast<std::size_t>(moved - record.groups.begin());
    record.hasMarks = std::any_of(record.groups.begin(), moved,
                                  [](const RecordGroup& group) { return group.code == subclassMarkCode; });
}

} // namespace

const RecordGroup* DrawingRecord::find(int code) const {
    const auto end = groups.begin() + static_cast<std::ptrdiff_t>(extendedDataBegin);
    const auto found =
        std::find_if(groups.begin(), end, [code](const RecordGroup& group) { return group.code == code; });
    return found == end ? nullptr : &*found;
}

ScanResult scanRecord(GroupScanner& scanner, const RawGroup& first, DrawingRecord& record) {
    record.groups.clear();
    record.extendedDataBegin = 0;
    record.hasMarks = record.isRearranged = false;
    addGroup(first, scanner, record);
    RawGroup group;
    ScanResult result = scanner.next(group);
    for (; result == ScanResult::kGroup && group.code != 0; result = scanner.next(group)) {
        if (group.code == subclassMarkCode && record.extendedDataBegin == 0) record.hasMarks = true;
        if (group.code == applicationCode && record.extendedDataBegin == 0)
            record.extendedDataBegin = record.groups.size();
        addGroup(group, scanner, record);
    }
    if (result == ScanResult::kGroup) scanner.returnTo(group);
    record.last = record.groups.back().end;
    if (record.extendedDataBegin == 0)
        record.extendedDataBegin = record.groups.size();
    else
        putExtendedDataLast(record);
    return result;
}

void scanRecordAt(std::string_view bytes, std::size_t offset, std::size_t length, DrawingRecord& record) {
    GroupScanner scanner(bytes.substr(0, offset + length), offset);
    RawGroup first;
    (void)scanner.next(first);
    (void)scanRecord(scanner, first, record);
}

} // namespace hostkit
