#include "fielditemwriter.h"

#include "dbaccess.h"
#include "hexadecimal.h"

#include <limits>
#include <vector>

namespace hostkit {

namespace {

template <class Integer>
bool fits(Adesk::Int64 value) {
    return value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
}

} // namespace

ReferenceKind referenceKind(int code) {
    if (code >= 330 && code <= 339) return ReferenceKind::kSoftPointer;
    if (code >= 340 && code <= 349) return ReferenceKind::kHardPointer;
    if (code >= 350 && code <= 359) return ReferenceKind::kSoftOwner;
    if (code >= 360 && code <= 369) return ReferenceKind::kHardOwner;
    const bool isHardPointer = (code >= 390 && code <= 399) || code == 480 || code == 481;
    return isHardPointer ? ReferenceKind::kHardPointer : ReferenceKind::kNone;
}

bool FieldItemWriter::head(short code, ItemForm form) {
    if (m_status == Acad::eOk) setError(m_items.writeInt32(itemHead(code, form)));
    return m_status == Acad::eOk;
}

Acad::ErrorStatus FieldItemWriter::finish() {
    (void)head(0, ItemForm::kEnd);
    return m_status;
}

void FieldItemWriter::writeText(short code, std::wstring_view text) {
    if (AcDb::groupKind(code) == AcDb::GroupKind::kBinary) {
        const std::vector<unsigned char> bytes = bytesOfHexadecimal(text);
        return writeBinary(code, bytes.data(), bytes.size());
    }
    if (head(code)) setError(m_items.writeString(std::wstring(text).c_str()));
}

void FieldItemWriter::writeReal(short code, double value) {
    if (head(code)) setError(m_items.writeDouble(value));
}

void FieldItemWriter::writeAngle(short code, double radians) {
    if (head(code, ItemForm::kRadians)) setError(m_items.writeDouble(radians));
}

void FieldItemWriter::writePoint(short code, const double* coordinates, int dimension) {
    if (dimension > 2) {
        if (head(code))
            setError(m_items.writePoint3d(AcGePoint3d(coordinates[0], coordinates[1], coordinates[2])));
    } else if (head(code, ItemForm::kFlatPoint)) {
        setError(m_items.writePoint2d(AcGePoint2d(coordinates[0], dimension > 1 ? coordinates[1] : 0.0)));
    }
}

void FieldItemWriter::writeInteger(short code, Adesk::Int64 value) {
    switch (AcDb::groupKind(code)) {
    case AcDb::GroupKind::kInt16:
        if (!fits<Adesk::Int16>(value)) break;
        if (head(code)) setError(m_items.writeInt16(static_cast<Adesk::Int16>(value)));
        return;
    case AcDb::GroupKind::kInt32:
        if (!fits<Adesk::Int32>(value)) break;
        if (head(code)) setError(m_items.writeInt32(static_cast<Adesk::Int32>(value)));
        return;
    case AcDb::GroupKind::kInt64:
        if (head(code)) setError(m_items.writeInt64(value));
        return;
    case AcDb::GroupKind::kBool:
        if (value != 0 && value != 1) break;
        if (head(code)) setError(m_items.writeBool(value == 1));
        return;
    default:
        break;
    }
    if (head(code, ItemForm::kWideInteger)) setError(m_items.writeInt64(value));
}

void FieldItemWriter::writeHandle(short code, Adesk::UInt64 handle) {
    if (m_database && handle != 0 && referenceKind(code) != ReferenceKind::kNone) {
        const AcDbObjectId id = DatabaseAccess::find(*m_database, handle);
        if (!id.isNull()) return writeId(code, id);
    }
    if (head(code, ItemForm::kPlainHandle)) setError(m_items.writeInt64(static_cast<Adesk::Int64>(handle)));
}

void FieldItemWriter::writeId(short code, AcDbObjectId id) {
    switch (referenceKind(code)) {
    case ReferenceKind::kSoftPointer:
        if (head(code)) setError(m_items.writeSoftPointerId(id));
        return;
    case ReferenceKind::kHardPointer:
        if (head(code)) setError(m_items.writeHardPointerId(id));
        return;
    case ReferenceKind::kSoftOwner:
        if (head(code)) setError(m_items.writeSoftOwnershipId(id));
        return;
    case ReferenceKind::kHardOwner:
        if (head(code)) setError(m_items.writeHardOwnershipId(id));
        return;
    case ReferenceKind::kNone:
        return writeHandle(code, id.handle().value());
    }
}

void FieldItemWriter::writeRecordName(short code, AcDbObjectId record, std::wstring_view) {
    if (head(code, ItemForm::kRecord)) setError(m_items.writeHardPointerId(record));
}

void FieldItemWriter::writeBinary(short code, const void* bytes, std::size_t size) {
    if (!head(code)) return;
    setError(m_items.writeInt32(static_cast<Adesk::Int32>(size)));
    if (m_status == Acad::eOk) setError(m_items.writeBytes(bytes, static_cast<Adesk::UInt32>(size)));
}

void FieldItemWriter::writeSubclassMark(const wchar_t* name) {
    if (head(100, ItemForm::kSubclassMark)) setError(m_items.writeString(name));
}

} // namespace hostkit
