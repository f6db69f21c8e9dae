// Stand-in for the host's references by name. Covers symbol records as fields name them in a drawing file; leaves out references by handle.
#pragma once

#include "dbaccess.h"
#include "dbfiler.h"
#include "fieldtable.h"

#include <string_view>

namespace hostkit {

/// The record that the group names in the filer's drawing, or that it refers to by id, which may be null.
/// False when the drawing has no record of the name.
bool readRecord(const AcDbDxfFiler& filer, TableKind kind, const AcDbDxfGroup& group, AcDbObjectId& record);
/// The record's name, or the other text for a null or erased one. Good until the record changes.
std::wstring_view symbolName(AcDbObjectId id, std::wstring_view otherwise);

/// A reference by name. Where the record is missing the group is not taken, so that a drawing that names what
/// it lacks stays as it is; a null id is not filed.
template <auto Member, TableKind kind, class T = ClassOf<Member>>
constexpr GroupField<T> nameField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
                return readRecord(filer, kind, group, object.*Member);
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                filer.writeRecordName(field.code, object.*Member, symbolName(object.*Member, L""));
            }};
}

/// As above; missing in a new record, and taken by a reader, where it is the record that stands for none.
template <auto Member, TableKind kind, class T = ClassOf<Member>>
constexpr GroupField<T> standardNameField(short code) {
    GroupField<T> field = nameField<Member, kind, T>(code);
    field.write = [](const T& object, const GroupField<T>& own, AcDbDxfFiler& filer) {
        const std::wstring_view name = symbolName(object.*Member, L"STANDARD");
        if (equalFolded(name, L"STANDARD")) filer.markDefault();
        filer.writeRecordName(own.code, object.*Member, name);
    };
    return field;
}

} // namespace hostkit
