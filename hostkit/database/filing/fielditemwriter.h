// Text filer over a binary one, writing: every kind of group; leaves out presence marks.
#pragma once

#include "dbfiler.h"

namespace hostkit {

/// How a group's value stands behind its code.
enum class ItemForm : unsigned char {
    kByCode,       ///< as the item of the code's kind
    kFlatPoint,    ///< a point without z
    kWideInteger,  ///< an integer that the code's kind is too narrow for
    kRadians,      ///< an angle
    kRecord,       ///< the id of a record that the text form names
    kPlainHandle,  ///< a handle that is no reference, or that no object of the drawing has
    kSubclassMark, ///< a class' name
    kEnd           ///< no group: the last one was before
};

/// The integer that an item's value stands behind.
constexpr Adesk::Int32 itemHead(short code, ItemForm form) {
    return static_cast<Adesk::Int32>(form) << 16 | static_cast<Adesk::UInt16>(code);
}
constexpr short codeOfHead(Adesk::Int32 head) { return static_cast<short>(head & 0xFFFF); }
constexpr int formOfHead(Adesk::Int32 head) { return head >> 16; }

/// The kind of reference that a code's handles are.
enum class ReferenceKind : unsigned char { kNone, kSoftPointer, kHardPointer, kSoftOwner, kHardOwner };
ReferenceKind referenceKind(int code);

/// Files what a class writes into a binary filer. Its status is that of the filer.
class FieldItemWriter final : public AcDbDxfFiler {
public:
    FieldItemWriter(AcDbDwgFiler& items, AcDbDatabase* database)
        : m_items(items)
        , m_database(database) {}
    /// The end mark; the status of the whole.
    Acad::ErrorStatus finish();

    AcDb::FilerType filerType() const override { return m_items.filerType(); }
    AcDbDatabase* database() const override { return m_database; }

    void writeText(short code, std::wstring_view text) override;
    void writeReal(short code, double value) override;
    void writeAngle(short code, double radians) override;
    void writePoint(short code, const double* coordinates, int dimension) override;
    void writeInteger(short code, Adesk::Int64 value) override;
    void writeHandle(short code, Adesk::UInt64 handle) override;
    void writeId(short code, AcDbObjectId id) override;
    void writeRecordName(short code, AcDbObjectId record, std::wstring_view name) override;
    void writeBinary(short code, const void* bytes, std::size_t size) override;
    void writeSubclassMark(const wchar_t* name) override;

private:
    bool head(short code, ItemForm form = ItemForm::kByCode);

    AcDbDwgFiler& m_items;
    AcDbDatabase* m_database;
};

} // namespace hostkit
