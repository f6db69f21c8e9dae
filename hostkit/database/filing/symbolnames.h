// References by name: symbol records as fields name them in a drawing file; leaves out references by handle.
#pragma once

#include "dbaccess.h"
#include "dbfiler.h"
#include "fieldtable.h"

#include <string_view>

namespace hostkit {

/// Reads the record that the group names in the filer's drawing, or that it refers to by id, which may be
/// null. A name that no record has stays with the object as the name of that field
/// (DatabaseAccess::unknownName): the id is then null, and the name is filed again.
void readRecord(const AcDbDxfFiler& filer, TableKind kind, const AcDbDxfGroup& group, AcDbObject& object,
                AcDbObjectId& record);
/// What a record without such a group means: the record of that name, where the drawing has one and nothing
/// was read.
void takeStandardRecord(const AcDbDxfFiler& filer, TableKind kind, short code, const AcDbObject& object,
                        AcDbObjectId& record);
/// Files what readRecord reads: the record's name, the one that no record has, or the other text for a null
/// or erased record. Nothing where that is empty.
void writeRecord(AcDbDxfFiler& filer, short code, const AcDbObject& object, AcDbObjectId record,
                 std::wstring_view otherwise);
/// The record's name, or the other text for a null or erased one. Good until the record changes.
std::wstring_view symbolName(AcDbObjectId id, std::wstring_view otherwise);

/// A reference by name; a null id is not filed.
template <auto Member, TableKind kind, class T = ClassOf<Member>>
constexpr GroupField<T> nameField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
                readRecord(filer, kind, group, object, object.*Member);
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                writeRecord(filer, field.code, object, object.*Member, L"");
            }};
}

/// As above; missing in a new record, and taken by a reader, where it is the record that stands for none.
template <auto Member, TableKind kind, class T = ClassOf<Member>>
constexpr GroupField<T> standardNameField(short code) {
    GroupField<T> field = nameField<Member, kind, T>(code);
    field.write = [](const T& object, const GroupField<T>& own, AcDbDxfFiler& filer) {
        constexpr std::wstring_view standard = L"STANDARD";
        const bool isUnknown = DatabaseAccess::unknownName(object, own.code) != nullptr;
        if (!isUnknown && equalFolded(symbolName(object.*Member, standard), standard)) filer.markDefault();
        writeRecord(filer, own.code, object, object.*Member, standard);
    };
    return field;
}

} // namespace hostkit
