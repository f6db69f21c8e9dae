#include "dbfiler.h"

#include "fieldtable.h"
#include "groupcodes.h"
#include "hexadecimal.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <vector>

namespace {

// wprintf tells no length in advance, so the buffer grows until the text fits; a text longer than the last
// size is cut.
std::wstring formatted(const wchar_t* format, va_list arguments) {
    constexpr std::size_t largest = std::size_t{1} << 16;
    for (std::size_t size = 256; size <= largest; size *= 4) {
        std::vector<wchar_t> buffer(size);
        va_list copy;
        va_copy(copy, arguments);
        const int length = std::vswprintf(buffer.data(), size, format, copy);
        va_end(copy);
        if (length >= 0) return {buffer.data(), static_cast<std::size_t>(length)};
    }
    return format;
}

wchar_t* textOf(std::wstring_view text) { return acutNewString(std::wstring(text).c_str()); }

} // namespace

void AcDbDxfFiler::resetFilerStatus() {
    m_status = Acad::eOk;
    m_message.clear();
}

void AcDbDxfFiler::setError(Acad::ErrorStatus status) {
    if (m_status == Acad::eOk) m_status = status;
}

void AcDbDxfFiler::setError(Acad::ErrorStatus status, const wchar_t* format, ...) {
    if (m_status != Acad::eOk || status == Acad::eOk) return;
    m_status = status;
    va_list arguments;
    va_start(arguments, format);
    m_message = formatted(format, arguments);
    va_end(arguments);
}

Acad::ErrorStatus AcDbDxfFiler::readItem(AcDbDxfGroup&) { return Acad::eNotApplicable; }

bool AcDbDxfFiler::atSubclassData(const wchar_t* name) {
    if (isR12Form()) return true;
    AcDbDxfGroup group;
    if (readItem(group) != Acad::eOk) return false;
    if (group.isText(100, name)) return true;
    pushBackItem();
    return false;
}

AcDbObjectId AcDbDxfFiler::objectIdOf(const AcDbDxfGroup&) { return AcDbObjectId::kNull; }

Acad::ErrorStatus AcDbDxfFiler::readResBuf(resbuf* record) {
    if (!record) return Acad::eNullPtr;
    AcDbDxfGroup group;
    const Acad::ErrorStatus status = readItem(group);
    if (status != Acad::eOk) return status;
    record->restype = group.code;
    switch (group.kind) {
    case AcDb::GroupKind::kPoint:
        for (int i = 0; i < 3; ++i) record->resval.rpoint[i] = group.point[i];
        break;
    case AcDb::GroupKind::kReal:
        record->resval.rreal = group.real;
        break;
    case AcDb::GroupKind::kInt16:
    case AcDb::GroupKind::kBool:
        record->resval.rint = static_cast<short>(group.integer);
        break;
    case AcDb::GroupKind::kInt32:
        record->resval.rlong = static_cast<Adesk::Int32>(group.integer);
        break;
    case AcDb::GroupKind::kInt64:
        record->resval.mnInt64 = group.integer;
        break;
    case AcDb::GroupKind::kBinary:
        record->resval.rbinary = hostkit::binaryOfHexadecimal(group.text);
        break;
    default:
        record->resval.rstring = textOf(group.text);
        break;
    }
    return Acad::eOk;
}

bool AcDbDxfFiler::readExpected(short code, AcDbDxfGroup& group) {
    if (readItem(group) != Acad::eOk) return false;
    if (group.code == code) return true;
    pushBackItem();
    setError(Acad::eBadDxfSequence);
    return false;
}

void AcDbDxfFiler::writeText(short, std::wstring_view) { setError(Acad::eNotApplicable); }
void AcDbDxfFiler::writeReal(short, double) { setError(Acad::eNotApplicable); }
void AcDbDxfFiler::writePoint(short, const double*, int) { setError(Acad::eNotApplicable); }
void AcDbDxfFiler::writeInteger(short, Adesk::Int64) { setError(Acad::eNotApplicable); }
void AcDbDxfFiler::writeHandle(short, Adesk::UInt64) { setError(Acad::eNotApplicable); }
void AcDbDxfFiler::writeBinary(short, const void*, std::size_t) { setError(Acad::eNotApplicable); }

void AcDbDxfFiler::writeSubclassMark(const wchar_t* name) {
    if (!isR12Form()) writeText(hostkit::subclassMarkCode, name);
}

Acad::ErrorStatus AcDbDxfFiler::writeResBuf(const resbuf& record) {
    const short code = record.restype;
    const auto& value = record.resval;
    switch (AcDb::groupKind(code)) {
    case AcDb::GroupKind::kPoint:
        writePoint(code, value.rpoint, 3);
        break;
    case AcDb::GroupKind::kReal:
        writeReal(code, value.rreal);
        break;
    case AcDb::GroupKind::kInt16:
    case AcDb::GroupKind::kBool:
        writeInteger(code, value.rint);
        break;
    case AcDb::GroupKind::kInt32:
        writeInteger(code, value.rlong);
        break;
    case AcDb::GroupKind::kInt64:
        writeInteger(code, value.mnInt64);
        break;
    case AcDb::GroupKind::kHandle:
        writeHandle(code, AcDbHandle(value.rstring ? value.rstring : L"").value());
        break;
    case AcDb::GroupKind::kBinary:
        writeBinary(code, value.rbinary.buf,
                    value.rbinary.clen > 0 ? static_cast<std::size_t>(value.rbinary.clen) : 0);
        break;
    default:
        writeText(code, value.rstring ? std::wstring_view(value.rstring) : std::wstring_view());
        break;
    }
    return m_status;
}

// --- Filing ------------------------------------------------------------------------------------------------

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
