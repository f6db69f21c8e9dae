#include "r12viewport.h"

#include "dbaccess.h"
#include "groupcodes.h"
#include "symbolnames.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int textCode = 1000;
constexpr int braceCode = 1002;
constexpr int pointCode = 1010;
constexpr int realCode = 1040;
constexpr int integerCode = 1070;

constexpr int statusCode = 90;
constexpr int frozenLayerCode = 331;
constexpr int hardFrozenLayerCode = 341;

constexpr std::string_view viewMark = "MVIEW";
constexpr std::int64_t modeBits = 0x1F;

/// One value of the data: from that group, or from these bits of the status.
struct Value {
    int code;     ///< in the data
    int group;    ///< 0: from the status
    double other; ///< where the group is missing
    std::int64_t bits = 0;
};

// The first value is the version of this list.
constexpr Value values[] = {{integerCode, -1, 16},
                            {pointCode, 17, 0},
                            {pointCode, 16, 1},
                            {realCode, 51, 0},
                            {realCode, 45, 1},
                            {realCode, 12, 0},
                            {realCode, 22, 0},
                            {realCode, 42, 50},
                            {realCode, 43, 0},
                            {realCode, 44, 0},
                            {integerCode, 0, 0, modeBits},
                            {integerCode, 72, 100},
                            {integerCode, 0, 1, 128},
                            {integerCode, 0, 1, 32},
                            {integerCode, 0, 0, 256},
                            {integerCode, 0, 0, 512},
                            {integerCode, 0, 0, 1024},
                            {integerCode, 0, 0, 4096},
                            {realCode, 50, 0},
                            {realCode, 13, 0},
                            {realCode, 23, 0},
                            {realCode, 14, 10},
                            {realCode, 24, 10},
                            {realCode, 15, 10},
                            {realCode, 25, 10},
                            {integerCode, 0, 0, 2048}};

double realOf(const DrawingRecord& record, int code, double other) {
    const RecordGroup* const group = record.find(code);
    return group ? realFromText(group->value).value_or(other) : other;
}

void appendValue(const DrawingRecord& record, const Value& value, const DrawingStyle& style,
                 std::string& bytes) {
    if (value.code == pointCode) { // a missing direction is that of the plan
        for (int axis = 0; axis < 3; ++axis)
            appendReal(pointCode + axis * 10,
                       realOf(record, value.group + axis * 10, axis == 2 ? value.other : 0.0), style, bytes);
    } else if (value.code == realCode) {
        appendReal(realCode, realOf(record, value.group, value.other), style, bytes);
    } else if (value.group != 0) {
        const RecordGroup* const group = record.find(value.group);
        appendInteger(integerCode,
                      group ? integerFromText(group->value).value_or(0)
                            : static_cast<std::int64_t>(value.other),
                      style, bytes);
    } else {
        const RecordGroup* const status = record.find(statusCode);
        const std::int64_t bits = status ? integerFromText(status->value).value_or(0) & value.bits
                                         : static_cast<std::int64_t>(value.other);
        // The modes of the view are bits of one value, the others yes or no.
        const bool isMode = value.bits == modeBits;
        appendInteger(integerCode, isMode ? bits : bits != 0, style, bytes);
    }
}

} // namespace

void appendViewOfR12(const DrawingRecord& viewport, const AcDbDatabase& database, const DrawingStyle& style,
                     std::string& bytes) {
    if (std::any_of(viewport.groups.begin(), viewport.groups.end(), [&](const RecordGroup& group) {
            return group.code == textCode && withoutBlanks(group.value) == viewMark;
        }))
        return;
    appendGroup(applicationCode, "ACAD", style, bytes);
    appendGroup(textCode, viewMark, style, bytes);
    appendGroup(braceCode, "{", style, bytes);
    for (const Value& value : values) appendValue(viewport, value, style, bytes);
    appendGroup(braceCode, "{", style, bytes);
    for (const RecordGroup& group : viewport.groups) {
        if (group.code != frozenLayerCode && group.code != hardFrozenLayerCode) continue;
        const AcDbObjectId layer = DatabaseAccess::find(database, handleFromText(group.value).value_or(0));
        const std::wstring_view name = symbolName(layer, L"");
        if (!name.empty()) appendText(extendedLayerCode, name, style, bytes);
    }
    appendGroup(braceCode, "}", style, bytes);
    appendGroup(braceCode, "}", style, bytes);
}

void appendViewFromR12(const DrawingRecord& viewport, const DrawingStyle& style, std::string& bytes) {
    const auto end = viewport.groups.end();
    auto group = std::find_if(viewport.groups.begin(), end, [](const RecordGroup& candidate) {
        return candidate.code == textCode && withoutBlanks(candidate.value) == viewMark;
    });
    if (group == end) return;
    ++group;
    std::int64_t status = 0;
    for (const Value& value : values) {
        while (group != end && group->code == braceCode) ++group;
        if (group == end || group->code != value.code) return;
        const std::int64_t integer = integerFromText(group->value).value_or(0);
        if (value.group == 0)
            status |= value.bits == modeBits ? integer & modeBits : (integer != 0 ? value.bits : 0);
        for (int axis = 0; value.code == pointCode && axis < 3 && group != end; ++axis, ++group)
            appendReal(value.group + axis * 10, realFromText(group->value).value_or(0.0), style, bytes);
        if (value.code == pointCode) continue;
        if (value.code == realCode)
            appendReal(value.group, realFromText(group->value).value_or(0.0), style, bytes);
        else if (value.group > 0)
            appendInteger(value.group, integer, style, bytes);
        ++group;
    }
    appendInteger(statusCode, status, style, bytes);
}

} // namespace hostkit
