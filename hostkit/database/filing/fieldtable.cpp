#include "fieldtable.h"

#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbmtext.h"
#include "groupkinds.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace hostkit {

double radiansFromDegrees(double degrees) { return degrees * (std::numbers::pi / 180.0); }

double degreesFromRadians(double radians) {
    const double degrees = radians * (180.0 / std::numbers::pi);
    for (const int digits : {15, 16}) {
        char text[40];
        const auto end =
            std::to_chars(text, text + sizeof text, degrees, std::chars_format::general, digits).ptr;
        double rounded = 0.0;
        std::from_chars(text, end, rounded);
        if (radiansFromDegrees(rounded) == radians) return rounded;
    }
    return degrees;
}

bool isStorable(const AcDbDxfGroup& group) {
    if (group.code < 0 || group.code > lastGroupCode || group.kind != AcDb::groupKind(group.code))
        return false;
    const auto fits = [&group](int bits) {
        return group.integer >= -(Adesk::Int64(1) << (bits - 1)) && group.integer < Adesk::Int64(1)
                                                                                        << (bits - 1);
    };
    switch (group.kind) {
    case AcDb::GroupKind::kInt16:
        return fits(16);
    case AcDb::GroupKind::kInt32:
        return fits(32);
    case AcDb::GroupKind::kBool:
        return group.integer == 0 || group.integer == 1;
    case AcDb::GroupKind::kPoint:
        return group.dimension > 1;
    case AcDb::GroupKind::kBinary:
        return group.text.size() % 2 == 0 &&
               group.text.find_first_not_of(L"0123456789ABCDEFabcdef") == std::wstring_view::npos;
    default:
        return true;
    }
}

void writeBlock(AcDbDxfFiler& filer, const GroupBlock& block, AcDb::AcDbDwgVersion since) {
    GroupWalker walker(block);
    AcDbDxfGroup group;
    while (walker.next(group)) {
        filer.markSince(since);
        filer.writeGroup(group);
    }
}

bool readEmbedded(AcDbObject& object, const AcDbDxfGroup& group) {
    const bool isAttribute =
        object.isKindOf(AcDbAttribute::desc()) || object.isKindOf(AcDbAttributeDefinition::desc());
    const bool begins = group.code == embeddedObjectCode || (isAttribute && isOfParagraph(group.code));
    const bool files = isAttribute || object.isKindOf(AcDbMText::desc());
    if (!files || !isStorable(group) || (!begins && !DatabaseAccess::embedded(object))) return false;
    DatabaseAccess::madeEmbedded(object).append(group);
    return true;
}

void writeEmbedded(AcDbDxfFiler& filer, const AcDbObject& object) {
    if (const GroupBlock* const block = DatabaseAccess::embedded(object))
        writeBlock(filer, *block, AcDb::kDHL_1032);
}

} // namespace hostkit
