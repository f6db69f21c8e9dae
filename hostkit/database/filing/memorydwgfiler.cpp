#include "memorydwgfiler.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace hostkit {

Acad::ErrorStatus MemoryDwgFiler::seek(Adesk::Int64 offset, int method) {
    const auto size = static_cast<Adesk::Int64>(m_bytes.size());
    if (method < 0 || method > 2) return Acad::eInvalidInput;
    const Adesk::Int64 from = method == 0 ? 0 : method == 1 ? tell() : size;
    if (offset < -from || offset > size - from) return Acad::eInvalidInput;
    m_place = static_cast<std::size_t>(from + offset);
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::refuse() {
    setFilerStatus(Acad::eDwgObjectImproperlyRead);
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::put(Item item, const void* bytes, std::size_t count) {
    if (m_status != Acad::eOk) return m_status;
    m_bytes.resize(m_place);
    m_bytes.push_back(static_cast<unsigned char>(item));
    const auto* first = static_cast<const unsigned char*>(bytes);
    if (count) m_bytes.insert(m_bytes.end(), first, first + count);
    m_place = m_bytes.size();
    return Acad::eOk;
}

bool MemoryDwgFiler::isNext(Item item, std::size_t count) const {
    return m_place < m_bytes.size() && m_bytes[m_place] == static_cast<unsigned char>(item) &&
           m_bytes.size() - m_place - 1 >= count;
}

Acad::ErrorStatus MemoryDwgFiler::take(Item item, void* bytes, std::size_t count) {
    if (m_status != Acad::eOk) return m_status;
    if (!bytes || !isNext(item, count)) return refuse();
    std::memcpy(bytes, m_bytes.data() + m_place + 1, count);
    m_place += 1 + count;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::putId(Item item, AcDbObjectId id) {
    const auto place = reinterpret_cast<std::uintptr_t>(id.stub());
    return put(item, &place, sizeof place);
}

Acad::ErrorStatus MemoryDwgFiler::takeId(Item item, AcDbObjectId* id) {
    if (!id) return refuse();
    std::uintptr_t place = 0;
    const Acad::ErrorStatus status = take(item, &place, sizeof place);
    if (status == Acad::eOk) *id = AcDbObjectId(reinterpret_cast<AcDbStub*>(place));
    return status;
}

Acad::ErrorStatus MemoryDwgFiler::writeInt16(Adesk::Int16 value) {
    return put(Item::kInt16, &value, sizeof value);
}
Acad::ErrorStatus MemoryDwgFiler::writeInt32(Adesk::Int32 value) {
    return put(Item::kInt32, &value, sizeof value);
}
Acad::ErrorStatus MemoryDwgFiler::writeInt64(Adesk::Int64 value) {
    return put(Item::kInt64, &value, sizeof value);
}
Acad::ErrorStatus MemoryDwgFiler::writeBool(bool value) { return put(Item::kBool, &value, sizeof value); }
Acad::ErrorStatus MemoryDwgFiler::writeDouble(double value) { return put(Item::kReal, &value, sizeof value); }
Acad::ErrorStatus MemoryDwgFiler::writePoint2d(const AcGePoint2d& value) {
    return put(Item::kPair, &value.x, 2 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::writePoint3d(const AcGePoint3d& value) {
    return put(Item::kTriple, &value.x, 3 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::writeVector2d(const AcGeVector2d& value) {
    return put(Item::kPair, &value.x, 2 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::writeVector3d(const AcGeVector3d& value) {
    return put(Item::kTriple, &value.x, 3 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::writeScale3d(const AcGeScale3d& value) {
    return put(Item::kTriple, &value.sx, 3 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::writeBytes(const void* bytes, Adesk::UInt32 count) {
    const Acad::ErrorStatus status = put(Item::kBytes, &count, sizeof count);
    if (status != Acad::eOk || count == 0) return status;
    const auto* first = static_cast<const unsigned char*>(bytes);
    m_bytes.insert(m_bytes.end(), first, first + count);
    m_place = m_bytes.size();
    return Acad::eOk;
}
Acad::ErrorStatus MemoryDwgFiler::writeSoftPointerId(AcDbObjectId id) {
    return putId(Item::kSoftPointer, id);
}
Acad::ErrorStatus MemoryDwgFiler::writeHardPointerId(AcDbObjectId id) {
    return putId(Item::kHardPointer, id);
}
Acad::ErrorStatus MemoryDwgFiler::writeSoftOwnershipId(AcDbObjectId id) {
    return putId(Item::kSoftOwner, id);
}
Acad::ErrorStatus MemoryDwgFiler::writeHardOwnershipId(AcDbObjectId id) {
    return putId(Item::kHardOwner, id);
}

// The number of characters stands before them; a null text is an empty one.
Acad::ErrorStatus MemoryDwgFiler::writeString(const wchar_t* text) {
    const std::size_t length = text ? std::wcslen(text) : 0;
    const Acad::ErrorStatus status = put(Item::kText, &length, sizeof length);
    if (status != Acad::eOk || length == 0) return status;
    const auto* first = reinterpret_cast<const unsigned char*>(text);
    m_bytes.insert(m_bytes.end(), first, first + length * sizeof(wchar_t));
    m_place = m_bytes.size();
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::readString(wchar_t** text) {
    if (m_status != Acad::eOk) return m_status;
    std::size_t length = 0;
    if (!text || !isNext(Item::kText, sizeof length)) return refuse();
    std::memcpy(&length, m_bytes.data() + m_place + 1, sizeof length);
    const std::size_t begin = m_place + 1 + sizeof length;
    if (length > (m_bytes.size() - begin) / sizeof(wchar_t)) return refuse();
    auto* copy = static_cast<wchar_t*>(std::malloc((length + 1) * sizeof(wchar_t)));
    if (!copy) {
        setFilerStatus(Acad::eOutOfMemory);
        return m_status;
    }
    if (length) std::memcpy(copy, m_bytes.data() + begin, length * sizeof(wchar_t));
    copy[length] = 0;
    *text = copy;
    m_place = begin + length * sizeof(wchar_t);
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDwgFiler::readInt16(Adesk::Int16* value) {
    return take(Item::kInt16, value, sizeof *value);
}
Acad::ErrorStatus MemoryDwgFiler::readInt32(Adesk::Int32* value) {
    return take(Item::kInt32, value, sizeof *value);
}
Acad::ErrorStatus MemoryDwgFiler::readInt64(Adesk::Int64* value) {
    return take(Item::kInt64, value, sizeof *value);
}
Acad::ErrorStatus MemoryDwgFiler::readBool(bool* value) { return take(Item::kBool, value, sizeof *value); }
Acad::ErrorStatus MemoryDwgFiler::readDouble(double* value) {
    return take(Item::kReal, value, sizeof *value);
}
Acad::ErrorStatus MemoryDwgFiler::readPoint2d(AcGePoint2d* value) {
    return take(Item::kPair, value ? &value->x : nullptr, 2 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::readPoint3d(AcGePoint3d* value) {
    return take(Item::kTriple, value ? &value->x : nullptr, 3 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::readVector2d(AcGeVector2d* value) {
    return take(Item::kPair, value ? &value->x : nullptr, 2 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::readVector3d(AcGeVector3d* value) {
    return take(Item::kTriple, value ? &value->x : nullptr, 3 * sizeof(double));
}
Acad::ErrorStatus MemoryDwgFiler::readScale3d(AcGeScale3d* value) {
    return take(Item::kTriple, value ? &value->sx : nullptr, 3 * sizeof(double));
}
// As many bytes as were written at once, no more and no fewer.
Acad::ErrorStatus MemoryDwgFiler::readBytes(void* bytes, Adesk::UInt32 count) {
    if (m_status != Acad::eOk) return m_status;
    Adesk::UInt32 written = 0;
    if (!isNext(Item::kBytes, sizeof written)) return refuse();
    std::memcpy(&written, m_bytes.data() + m_place + 1, sizeof written);
    const std::size_t begin = m_place + 1 + sizeof written;
    if (written != count || m_bytes.size() - begin < count || (count && !bytes)) return refuse();
    if (count) std::memcpy(bytes, m_bytes.data() + begin, count);
    m_place = begin + count;
    return Acad::eOk;
}
Acad::ErrorStatus MemoryDwgFiler::readSoftPointerId(AcDbObjectId* id) {
    return takeId(Item::kSoftPointer, id);
}
Acad::ErrorStatus MemoryDwgFiler::readHardPointerId(AcDbObjectId* id) {
    return takeId(Item::kHardPointer, id);
}
Acad::ErrorStatus MemoryDwgFiler::readSoftOwnershipId(AcDbObjectId* id) {
    return takeId(Item::kSoftOwner, id);
}
Acad::ErrorStatus MemoryDwgFiler::readHardOwnershipId(AcDbObjectId* id) {
    return takeId(Item::kHardOwner, id);
}

} // namespace hostkit
