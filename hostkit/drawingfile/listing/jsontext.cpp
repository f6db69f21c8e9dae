#include "jsontext.h"

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
