// Binary filers that keep their items in memory: every item, seeking and the kinds of filers that copies
// need; leaves out paging.
#pragma once

#include "dbfiler.h"

#include <vector>

namespace hostkit {

/// Items in memory, written and then read back after seek(0, 0). Ids stay ids of this process. Every item
/// carries its kind: reading another kind than was written, or past the end, gives eDwgObjectImproperlyRead
/// and leaves the value as it was. Writing after a seek drops what stood from there on.
class MemoryDwgFiler : public AcDbDwgFiler {
public:
    explicit MemoryDwgFiler(AcDb::FilerType type, AcDbDatabase* database = nullptr)
        : m_type(type)
        , m_database(database) {}

    AcDb::FilerType filerType() const override { return m_type; }
    AcDbDatabase* database() const override { return m_database; }
    Acad::ErrorStatus filerStatus() const override { return m_status; }
    void resetFilerStatus() override { m_status = Acad::eOk; }
    /// Keeps the first failure.
    void setFilerStatus(Acad::ErrorStatus status) override {
        if (m_status == Acad::eOk) m_status = status;
    }

    Acad::ErrorStatus seek(Adesk::Int64 offset, int method) override;
    Adesk::Int64 tell() const override { return static_cast<Adesk::Int64>(m_place); }
    std::size_t size() const { return m_bytes.size(); }
    /// The same items in the same order, to the bit.
    bool holdsTheSame(const MemoryDwgFiler& other) const { return m_bytes == other.m_bytes; }

    Acad::ErrorStatus readInt16(Adesk::Int16* value) override;
    Acad::ErrorStatus readInt32(Adesk::Int32* value) override;
    Acad::ErrorStatus readInt64(Adesk::Int64* value) override;
    Acad::ErrorStatus readBool(bool* value) override;
    Acad::ErrorStatus readDouble(double* value) override;
    Acad::ErrorStatus readString(wchar_t** text) override;
    Acad::ErrorStatus readPoint2d(AcGePoint2d* value) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d* value) override;
    Acad::ErrorStatus readVector2d(AcGeVector2d* value) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d* value) override;
    Acad::ErrorStatus readScale3d(AcGeScale3d* value) override;
    Acad::ErrorStatus readBytes(void* bytes, Adesk::UInt32 count) override;
    Acad::ErrorStatus readSoftPointerId(AcDbObjectId* id) override;
    Acad::ErrorStatus readHardPointerId(AcDbObjectId* id) override;
    Acad::ErrorStatus readSoftOwnershipId(AcDbObjectId* id) override;
    Acad::ErrorStatus readHardOwnershipId(AcDbObjectId* id) override;

    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override;
    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override;
    Acad::ErrorStatus writeInt64(Adesk::Int64 value) override;
    Acad::ErrorStatus writeBool(bool value) override;
    Acad::ErrorStatus writeDouble(double value) override;
    Acad::ErrorStatus writeString(const wchar_t* text) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override;
    Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override;
    Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) override;
    Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UInt32 count) override;
    Acad::ErrorStatus writeSoftPointerId(AcDbObjectId id) override;
    Acad::ErrorStatus writeHardPointerId(AcDbObjectId id) override;
    Acad::ErrorStatus writeSoftOwnershipId(AcDbObjectId id) override;
    Acad::ErrorStatus writeHardOwnershipId(AcDbObjectId id) override;

private:
    enum class Item : unsigned char {
        kInt16,
        kInt32,
        kInt64,
        kBool,
        kReal,
        kText,
        kPair,
        kTriple,
        kBytes,
        kSoftPointer,
        kHardPointer,
        kSoftOwner,
        kHardOwner
    };
    Acad::ErrorStatus put(Item item, const void* bytes, std::size_t count);
    Acad::ErrorStatus take(Item item, void* bytes, std::size_t count);
    Acad::ErrorStatus putId(Item item, AcDbObjectId id);
    Acad::ErrorStatus takeId(Item item, AcDbObjectId* id);
    bool isNext(Item item, std::size_t count) const;
    Acad::ErrorStatus refuse();

    AcDb::FilerType m_type;
    AcDbDatabase* m_database;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::vector<unsigned char> m_bytes;
    std::size_t m_place = 0;
};

} // namespace hostkit
