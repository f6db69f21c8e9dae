#include "jsontext.h"

#include "textencoding.h"

#include <charconv>
#include <cmath>

namespace hostkit {

namespace {

void appendValue(const AcDbDxfGroup& group, std::string& json) {
    switch (group.kind) {
    case AcDb::GroupKind::kPoint:
        for (int axis = 0; axis < 3; ++axis) {
            json += axis == 0 ? '[' : ',';
            appendJsonNumber(group.point[axis], json);
        }
        json += ']';
        return;
    case AcDb::GroupKind::kReal:
        return appendJsonNumber(group.real, json);
    case AcDb::GroupKind::kInt16:
    case AcDb::GroupKind::kInt32:
    case AcDb::GroupKind::kInt64:
    case AcDb::GroupKind::kBool:
        json += std::to_string(group.integer);
        return;
    default:
        return appendJsonText(group.text, json);
    }
}

} // namespace

void appendJsonText(std::wstring_view text, std::string& json) {
    json += '"';
    for (const wchar_t character : text) {
        if (character == L'"' || character == L'\\') {
            json += '\\';
            json += static_cast<char>(character);
        } else if (character >= 0 && character < 0x20) {
            constexpr char digits[] = "0123456789abcdef";
            json += "\\u00";
            json += digits[character >> 4];
            json += digits[character & 15];
        } else {
            appendUtf8(json, character);
        }
    }
    json += '"';
}

void appendJsonNumber(double value, std::string& json) {
    if (!std::isfinite(value)) {
        json += "null";
        return;
    }
    char digits[32];
    json.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendJsonGroups(const GroupBlock& groups, std::string& json) {
    json += '[';
    GroupWalker walker(groups);
    AcDbDxfGroup group;
    for (std::string_view separator; walker.next(group); separator = ",") {
        ((json += separator) += "[") += std::to_string(group.code) + ",";
        appendValue(group, json);
        json += ']';
    }
    json += ']';
}

} // namespace hostkit
