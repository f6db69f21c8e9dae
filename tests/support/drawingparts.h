// How tests put things into drawings, change them and take them out.
#pragma once

#include "dbdict.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "gepnt3d.h"
#include "recordlist.h"

#include "acarray.h"
#include "adsdef.h"

#include <gtest/gtest.h>

#include <charconv>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace drawingtest {

template <class T>
AcArray<T> arrayOf(std::initializer_list<T> values) {
    AcArray<T> array;
    for (const T& value : values) array.append(value);
    return array;
}
template <class T>
AcArray<T> arrayOf(const std::vector<T>& values) {
    AcArray<T> array;
    for (const T& value : values) array.append(value);
    return array;
}
template <class T>
std::vector<T> listOf(const AcArray<T>& array) {
    return {array.begin(), array.end()};
}
inline AcGePoint3dArray pointsOf(std::initializer_list<AcGePoint3d> points) { return arrayOf(points); }
inline AcGeDoubleArray numbersOf(std::initializer_list<double> numbers) { return arrayOf(numbers); }

/// Characters that are no ASCII as their numbers.
inline std::string narrow(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t c : text)
        bytes += c < 128 ? std::string(1, static_cast<char>(c)) : '<' + std::to_string(long{c}) + '>';
    return bytes;
}

using List = hostkit::RecordList;

/// The shortest text that reads back to the same bits.
inline std::string textOf(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, std::end(digits), value).ptr};
}

inline std::string valueOf(const resbuf& record) {
    const ads_u_val& value = record.resval;
    std::string text;
    switch (AcDb::groupKind(record.restype)) {
    case AcDb::GroupKind::kReal:
        return textOf(value.rreal);
    case AcDb::GroupKind::kPoint:
        return textOf(value.rpoint[0]) + '/' + textOf(value.rpoint[1]) + '/' + textOf(value.rpoint[2]);
    case AcDb::GroupKind::kInt64:
        return std::to_string(value.mnInt64);
    case AcDb::GroupKind::kInt32:
        return std::to_string(value.rlong);
    case AcDb::GroupKind::kInt16:
    case AcDb::GroupKind::kBool:
        return std::to_string(value.rint);
    case AcDb::GroupKind::kBinary:
        for (short i = 0; i < value.rbinary.clen; ++i) text += std::to_string(value.rbinary.buf[i]) + ' ';
        return text;
    default:
        return value.rstring ? narrow(value.rstring) : text;
    }
}

/// "1001 ORDANE, 1000 key, 1070 5", all values to the bit; empty for no list.
inline std::string textOf(const List& list) {
    std::string text;
    for (const resbuf* record = list.get(); record; record = record->rbnext)
        text += (text.empty() ? "" : ", ") + std::to_string(record->restype) + ' ' + valueOf(*record);
    return text;
}

/// The entity is the block's afterwards, and closed.
inline AcDbObjectId append(AcDbObjectId block, AcDbEntity* entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> opened(block, AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(opened->appendAcDbEntity(id, entity), Acad::eOk);
    EXPECT_EQ(entity->close(), Acad::eOk);
    return id;
}
inline AcDbObjectId appendToModelSpace(const AcDbDatabase& database, AcDbEntity* entity) {
    return append(database.modelSpaceId(), entity);
}

template <class Record, class Iterator>
Record recordOf(const hostkit::SymbolTableOf<Record, Iterator>&);

/// A new record, closed: addRecord<AcDbLayerTable>(database, L"Walls").
template <class Table>
AcDbObjectId addRecord(AcDbDatabase& database, const std::wstring& name) {
    AcDbSymbolTablePointer<Table> table(&database, AcDb::kForWrite);
    auto* const record = new decltype(recordOf(std::declval<Table>()));
    EXPECT_EQ(record->setName(name.c_str()), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, record), Acad::eOk);
    EXPECT_EQ(record->close(), Acad::eOk);
    return id;
}

/// A new entry of the dictionary, closed.
inline AcDbObjectId enter(AcDbObjectId dictionary, const wchar_t* name, AcDbObject* entry = new AcDbXrecord) {
    AcDbObjectPointer<AcDbDictionary> opened(dictionary, AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(opened->setAt(name, entry, id), Acad::eOk);
    EXPECT_EQ(entry->ownerId(), dictionary);
    EXPECT_TRUE(entry->isWriteEnabled());
    EXPECT_EQ(entry->close(), Acad::eOk);
    return id;
}

/// For the caller to close.
template <class T>
T* opened(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForWrite) {
    T* object = nullptr;
    if (acdbOpenObject(object, id, mode) != Acad::eOk) throw std::runtime_error("it cannot be opened");
    return object;
}

/// Opens the object for write and closes it again.
template <class T, class Change>
void change(AcDbObjectId id, Change&& apply, bool openErased = false) {
    AcDbObjectPointer<T> opened(id, AcDb::kForWrite, openErased);
    ASSERT_EQ(opened.openStatus(), Acad::eOk);
    apply(*opened);
}

inline Acad::ErrorStatus erase(AcDbObjectId id, bool erasing = true) {
    const AcDbObjectPointer<AcDbObject> opened(id, AcDb::kForWrite, true);
    return opened.object() ? opened->erase(erasing) : opened.openStatus();
}

} // namespace drawingtest
