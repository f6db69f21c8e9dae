#include "fielditemreader.h"

#include "dbaccess.h"
#include "fielditemwriter.h"

#include <vector>

namespace hostkit {

namespace {

constexpr int formNumber(ItemForm form) { return static_cast<int>(form); }

} // namespace

template <class Value, class Read>
Value FieldItemReader::valueOf(Read read) {
    Value value{};
    setError((m_items.*read)(&value));
    return value;
}

bool FieldItemReader::fetch() {
    if (m_status != Acad::eOk) return false;
    if (m_isWaiting) return true;
    Adesk::Int32 head = 0;
    setError(m_items.readInt32(&head));
    if (m_status != Acad::eOk) return false;
    m_group = AcDbDxfGroup();
    m_group.code = codeOfHead(head);
    m_group.kind = AcDb::groupKind(m_group.code);
    m_form = formOfHead(head);
    m_id.setNull();
    readValue(m_form);
    m_isWaiting = m_status == Acad::eOk;
    return m_isWaiting;
}

void FieldItemReader::readValue(int form) {
    switch (static_cast<ItemForm>(form)) {
    case ItemForm::kByCode:
        return readByCode();
    case ItemForm::kFlatPoint: {
        const auto point = valueOf<AcGePoint2d>(&AcDbDwgFiler::readPoint2d);
        m_group.point[0] = point.x;
        m_group.point[1] = point.y;
        m_group.point[2] = 0.0;
        m_group.dimension = 2;
        return;
    }
    case ItemForm::kWideInteger:
        m_group.integer = valueOf<Adesk::Int64>(&AcDbDwgFiler::readInt64);
        return;
    case ItemForm::kRadians:
        m_group.real = valueOf<double>(&AcDbDwgFiler::readDouble);
        return;
    case ItemForm::kRecord:
        m_id = valueOf<AcDbObjectId>(&AcDbDwgFiler::readHardPointerId);
        if (const auto* record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(m_id))
            m_group.text = record->name();
        return;
    case ItemForm::kPlainHandle:
        return setHandle(static_cast<AcDbHandleValue>(valueOf<Adesk::Int64>(&AcDbDwgFiler::readInt64)));
    case ItemForm::kSubclassMark:
        return readText();
    case ItemForm::kEnd:
        return;
    }
    setError(Acad::eDwgObjectImproperlyRead);
}

void FieldItemReader::readByCode() {
    switch (m_group.kind) {
    case AcDb::GroupKind::kText:
        return readText();
    case AcDb::GroupKind::kBinary:
        return readChunk();
    case AcDb::GroupKind::kHandle:
        return readReference();
    case AcDb::GroupKind::kPoint: {
        const auto point = valueOf<AcGePoint3d>(&AcDbDwgFiler::readPoint3d);
        m_group.point[0] = point.x;
        m_group.point[1] = point.y;
        m_group.point[2] = point.z;
        m_group.dimension = 3;
        return;
    }
    case AcDb::GroupKind::kReal:
        m_group.real = valueOf<double>(&AcDbDwgFiler::readDouble);
        return;
    case AcDb::GroupKind::kInt64:
        m_group.integer = valueOf<Adesk::Int64>(&AcDbDwgFiler::readInt64);
        return;
    case AcDb::GroupKind::kInt32:
        m_group.integer = valueOf<Adesk::Int32>(&AcDbDwgFiler::readInt32);
        return;
    case AcDb::GroupKind::kInt16:
        m_group.integer = valueOf<Adesk::Int16>(&AcDbDwgFiler::readInt16);
        return;
    case AcDb::GroupKind::kBool:
        m_group.integer = valueOf<bool>(&AcDbDwgFiler::readBool);
        return;
    }
}

void FieldItemReader::readText() {
    auto* text = valueOf<wchar_t*>(&AcDbDwgFiler::readString);
    m_text = text ? text : L"";
    acutDelString(text);
    m_group.text = m_text;
}

void FieldItemReader::readChunk() {
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    const auto size = valueOf<Adesk::Int32>(&AcDbDwgFiler::readInt32);
    if (m_status != Acad::eOk) return;
    if (size < 0) return setError(Acad::eDwgObjectImproperlyRead);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    setError(m_items.readBytes(bytes.data(), static_cast<Adesk::UInt32>(size)));
    m_text.clear();
    for (const unsigned char byte : bytes) {
        m_text.push_back(digits[byte >> 4]);
        m_text.push_back(digits[byte & 15]);
    }
    m_group.text = m_text;
}

void FieldItemReader::readReference() {
    switch (referenceKind(m_group.code)) {
    case ReferenceKind::kSoftPointer:
        m_id = valueOf<AcDbObjectId>(&AcDbDwgFiler::readSoftPointerId);
        break;
    case ReferenceKind::kHardPointer:
        m_id = valueOf<AcDbObjectId>(&AcDbDwgFiler::readHardPointerId);
        break;
    case ReferenceKind::kSoftOwner:
        m_id = valueOf<AcDbObjectId>(&AcDbDwgFiler::readSoftOwnershipId);
        break;
    case ReferenceKind::kHardOwner:
        m_id = valueOf<AcDbObjectId>(&AcDbDwgFiler::readHardOwnershipId);
        break;
    case ReferenceKind::kNone:
        return setError(Acad::eDwgObjectImproperlyRead);
    }
    setHandle(m_id.handle().value());
}

void FieldItemReader::setHandle(AcDbHandleValue handle) {
    wchar_t buffer[17];
    AcDbHandle(handle).getIntoAsciiBuffer(buffer);
    m_text = buffer;
    m_group.text = m_text;
    m_group.integer = static_cast<Adesk::Int64>(handle);
}

Acad::ErrorStatus FieldItemReader::readItem(AcDbDxfGroup& group) {
    m_hasLast = false;
    if (!fetch()) return m_status;
    if (m_form == formNumber(ItemForm::kEnd) || m_form == formNumber(ItemForm::kSubclassMark))
        return Acad::eEndOfObject;
    group = m_group;
    m_isWaiting = false;
    m_hasLast = true;
    return Acad::eOk;
}

bool FieldItemReader::atSubclassData(const wchar_t* name) {
    AcDbDxfGroup ignored;
    while (readItem(ignored) == Acad::eOk) {
    }
    if (!fetch() || m_form != formNumber(ItemForm::kSubclassMark) || m_text != name) return false;
    m_isWaiting = false;
    return true;
}

bool FieldItemReader::atEndOfObject() {
    return !fetch() || m_form == formNumber(ItemForm::kEnd) || m_form == formNumber(ItemForm::kSubclassMark);
}

AcDbObjectId FieldItemReader::objectIdOf(const AcDbDxfGroup& group) {
    if (!m_id.isNull() && m_group.code == group.code) return m_id;
    return m_database && group.handle() != 0 ? DatabaseAccess::find(*m_database, group.handle())
                                             : AcDbObjectId();
}

bool FieldItemReader::recordOf(const AcDbDxfGroup& group, AcDbObjectId& record) const {
    if (m_form != formNumber(ItemForm::kRecord) || m_group.code != group.code) return false;
    record = m_id;
    return true;
}

Acad::ErrorStatus FieldItemReader::finish() {
    while (fetch()) {
        m_isWaiting = false;
        if (m_form == formNumber(ItemForm::kEnd)) break;
    }
    return m_status;
}

} // namespace hostkit
