// Stand-in for the host's filing of fields in the binary form. Covers a class' groups as items of a binary filer; leaves out the binary drawing's own layout.
#pragma once

#include "dbfiler.h"

class AcDbObject;

namespace hostkit {

/// dxfOutFields or dxfInFields of one class, called as that class' own and not as the object's.
using FieldsOut = Acad::ErrorStatus (*)(const AcDbObject& object, AcDbDxfFiler* filer);
using FieldsIn = Acad::ErrorStatus (*)(AcDbObject& object, AcDbDxfFiler* filer);

/// One class' table of groups serves both forms. Each group becomes an integer (its code, and how the value
/// stands) and the value as the item of its kind: ids as soft or hard pointers or owners by their code,
/// references by name as hard pointers, angles in radians. An end mark closes them. eNullObjectPointer
/// without a filer, eNotOpenForRead.
Acad::ErrorStatus writeFieldItems(AcDbDwgFiler* filer, const AcDbObject& object, FieldsOut fields);
/// The reverse. The stream stands behind the end mark afterwards, also where the class left groups unread.
/// eNotOpenForWrite, and nothing is read.
Acad::ErrorStatus readFieldItems(AcDbDwgFiler* filer, AcDbObject& object, FieldsIn fields);

} // namespace hostkit

/// The binary form of a class that has its groups in dxfInFields and dxfOutFields.
#define HOSTKIT_FILE_FIELDS_AS_ITEMS(CLASS)                                                                  \
    Acad::ErrorStatus CLASS::dwgInFields(AcDbDwgFiler* filer) {                                              \
        return hostkit::readFieldItems(filer, *this, [](AcDbObject& object, AcDbDxfFiler* groups) {          \
            return static_cast<CLASS&>(object).CLASS::dxfInFields(groups);                                   \
        });                                                                                                  \
    }                                                                                                        \
    Acad::ErrorStatus CLASS::dwgOutFields(AcDbDwgFiler* filer) const {                                       \
        return hostkit::writeFieldItems(filer, *this, [](const AcDbObject& object, AcDbDxfFiler* groups) {   \
            return static_cast<const CLASS&>(object).CLASS::dxfOutFields(groups);                            \
        });                                                                                                  \
    }
