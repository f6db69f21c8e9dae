#include "dbfiler.h"

#include "fieldtable.h"

void AcDbDxfFiler::writeGroup(const AcDbDxfGroup& group) {
    switch (group.kind) {
    case AcDb::GroupKind::kText:
        return writeText(group.code, group.text);
    case AcDb::GroupKind::kReal:
        return writeReal(group.code, group.real);
    case AcDb::GroupKind::kPoint:
        return writePoint(group.code, group.point, group.dimension);
    case AcDb::GroupKind::kHandle:
        return writeHandle(group.code, group.handle());
    case AcDb::GroupKind::kBinary:
        return writeText(group.code, group.text); // its hexadecimal text
    default:
        return writeInteger(group.code, group.integer);
    }
}

double AcDbDxfFiler::angleOf(const AcDbDxfGroup& group) const {
    return hostkit::radiansFromDegrees(group.real);
}

void AcDbDxfFiler::writeAngle(short code, double radians) {
    writeReal(code, hostkit::degreesFromRadians(radians));
}

void AcDbDxfFiler::writeId(short code, AcDbObjectId id) { writeHandle(code, id.handle().value()); }

void AcDbDxfFiler::writeRecordName(short code, AcDbObjectId, std::wstring_view name) {
    if (!name.empty()) writeText(code, name);
}
