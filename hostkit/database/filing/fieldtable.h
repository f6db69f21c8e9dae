// Field tables: one table of groups a class, shared by reading and writing; leaves out groups that repeat.
#pragma once

#include "dbfiler.h"
#include "entitycoordinates.h"
#include "groupblock.h"
#include "groupcodes.h"

#include <cstddef>
#include <span>
#include <string>
#include <type_traits>

class AcDbObject;

namespace hostkit {

/// One group of a class: its code, and how its value gets into an object and out of it.
template <class T>
struct GroupField {
    short code = 0;
    bool hasStandard = false; ///< a reader takes `standard` where the group is missing
    double standard = 0.0;
    /// False when the value has no place in the object: the group is then kept as one that the class does not
    /// know.
    bool (*read)(T& object, const AcDbDxfGroup& group, AcDbDxfFiler& filer) = nullptr;
    void (*write)(const T& object, const GroupField& field, AcDbDxfFiler& filer) = nullptr;
};

/// A vector whose length is as near to 1 as this counts as a unit vector: files hold 16 digits at best.
constexpr double unitRounding = 1e-12;

double radiansFromDegrees(double degrees);
/// The shortest decimal degrees that come back to the same radians, so that 30 degrees stay "30.0".
double degreesFromRadians(double radians);

template <auto Member>
struct MemberOf;
template <class T, class V, V T::*Member>
struct MemberOf<Member> {
    using Class = T;
    using Value = V;
};
template <auto Member>
using ClassOf = typename MemberOf<Member>::Class;
template <auto Member>
using ValueOf = typename MemberOf<Member>::Value;

/// The field, with the value that a file need not tell.
template <class T>
constexpr GroupField<T> withStandard(GroupField<T> field, double standard) {
    field.hasStandard = true;
    field.standard = standard;
    return field;
}

// The kinds of fields. Those with a `standard` are optional in a file. T is the class of the table, where the
// member is one of its base class.

template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> realField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler&) {
                object.*Member = group.real;
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                if (field.hasStandard && object.*Member == field.standard) filer.markDefault();
                filer.writeReal(field.code, object.*Member);
            }};
}

template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> realField(short code, double standard) {
    return withStandard(realField<Member, T>(code), standard);
}

/// Degrees in the file, radians in the object.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> angleField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
                object.*Member = filer.angleOf(group);
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                if (field.hasStandard && object.*Member == field.standard) filer.markDefault();
                filer.writeAngle(field.code, object.*Member);
            }};
}

template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> angleField(short code, double standard) {
    return withStandard(angleField<Member, T>(code), standard);
}

/// Integers, truth values and enumerations. A value that the member cannot hold is not taken.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> integerField(short code) {
    using V = ValueOf<Member>;
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler&) {
                const V value = static_cast<V>(group.integer);
                if (static_cast<Adesk::Int64>(value) != group.integer) return false;
                object.*Member = value;
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                const auto value = static_cast<Adesk::Int64>(object.*Member);
                if (field.hasStandard && static_cast<double>(value) == field.standard) filer.markDefault();
                filer.writeInteger(field.code, value);
            }};
}

template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> integerField(short code, int standard) {
    return withStandard(integerField<Member, T>(code), standard);
}

template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> textField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler&) {
                object.*Member = group.text;
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                if (field.hasStandard && (object.*Member).empty()) filer.markDefault();
                filer.writeText(field.code, object.*Member);
            }};
}

/// Missing in a file where it is empty.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> optionalTextField(short code) {
    GroupField<T> field = textField<Member, T>(code);
    field.hasStandard = true;
    return field;
}

/// Points and vectors of space or plane.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> pointField(short code) {
    using V = ValueOf<Member>;
    constexpr bool isSpatial = requires(V value) { value.z; };
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler&) {
                if constexpr (isSpatial)
                    object.*Member = V(group.point[0], group.point[1], group.point[2]);
                else
                    object.*Member = V(group.point[0], group.point[1]);
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                const V& value = object.*Member;
                bool isStandard = value.x == field.standard && value.y == field.standard;
                if constexpr (isSpatial) isStandard = isStandard && value.z == field.standard;
                if (field.hasStandard && isStandard) filer.markDefault();
                filer.writePoint(field.code, &value.x, isSpatial ? 3 : 2);
            }};
}

/// Missing in a file where all its coordinates are `standard`.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> pointField(short code, double standard) {
    return withStandard(pointField<Member, T>(code), standard);
}

/// A vector that the object holds with length 1. A zero one is not taken; a filed unit vector is kept to the
/// bit.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> directionField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler&) {
                const AcGeVector3d direction(group.point[0], group.point[1], group.point[2]);
                const double length = direction.length();
                if (!(length > 0.0)) return false;
                object.*Member = std::abs(length - 1.0) <= unitRounding ? direction : direction / length;
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                if (field.hasStandard && isZAxis(object.*Member)) filer.markDefault();
                filer.writePoint(field.code, &(object.*Member).x, 3);
            }};
}

/// The normal of an entity: missing where it is that of the world.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> normalField(short code = 210) {
    GroupField<T> field = directionField<Member, T>(code);
    field.hasStandard = true;
    return field;
}

/// An id, filed as the handle of its object; a null id is missing.
template <auto Member, class T = ClassOf<Member>>
constexpr GroupField<T> idField(short code) {
    return {code, false, 0.0,
            [](T& object, const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
                object.*Member = filer.objectIdOf(group);
                return true;
            },
            [](const T& object, const GroupField<T>& field, AcDbDxfFiler& filer) {
                if ((object.*Member).isNull()) filer.markDefault();
                filer.writeItem(field.code, object.*Member);
            }};
}

/// Whether a GroupBlock gives the value back as it stands: a published code, an integer that fits the width
/// of its code, hexadecimal digits in pairs.
bool isStorable(const AcDbDxfGroup& group);
/// The groups came with the form `since`.
void writeBlock(AcDbDxfFiler& filer, const GroupBlock& block, AcDb::AcDbDwgVersion since = AcDb::kDHL_1009);

/// Marks the groups from there to the record's end as those of another object, whose codes have their own
/// meaning.

/// Keeps the group with the objects that file such ones again (writeEmbedded): paragraphs, attributes and
/// their definitions. Of an attribute of several lines some groups before the mark belong to its paragraph
/// too. False for others.
bool readEmbedded(AcDbObject& object, const AcDbDxfGroup& group);
/// In an attribute's own part: the kind, the count and the place of its paragraph.
constexpr bool isOfParagraph(short code) { return code == 71 || code == 72 || code == 11; }
/// The embedded object at the end of the object's last part; nothing where there is none.
void writeEmbedded(AcDbDxfFiler& filer, const AcDbObject& object);
template <class T>
bool readEmbedded(T&, const AcDbDxfGroup&) requires(!std::is_base_of_v<AcDbObject, T>) {
    return false;
}

/// Reads the groups up to the end of the present subclass. A group that is not in the table goes to `other`,
/// and is rejected where that gives false. Of two groups of one code in the table the later one counts, as
/// other programs have it.
template <class T, std::size_t count, class Other>
Acad::ErrorStatus readFields(AcDbDxfFiler& filer, const GroupField<T> (&fields)[count], T& object,
                             Other&& other) {
    std::size_t expected = 0;
    bool isEmbedded = false;
    AcDbDxfGroup group;
    for (;;) {
        const Acad::ErrorStatus status = filer.readItem(group);
        if (status == Acad::eEndOfObject) return Acad::eOk;
        if (status != Acad::eOk) return status;
        isEmbedded |= group.code == embeddedObjectCode;
        if (isEmbedded) {
            if (!readEmbedded(object, group)) filer.rejectItem();
            continue;
        }
        std::size_t tried = 0;
        std::size_t place = expected;
        for (; tried < count && fields[place].code != group.code; ++tried)
            place = place + 1 == count ? 0 : place + 1;
        if (tried == count) {
            if (!other(group)) filer.rejectItem();
            continue;
        }
        expected = place + 1 == count ? 0 : place + 1;
        if (!fields[place].read(object, group, filer)) filer.rejectItem();
    }
}

template <class T, std::size_t count>
Acad::ErrorStatus readFields(AcDbDxfFiler& filer, const GroupField<T> (&fields)[count], T& object) {
    return readFields(filer, fields, object, [](const AcDbDxfGroup&) { return false; });
}

template <class T, std::size_t count>
void writeFields(AcDbDxfFiler& filer, const GroupField<T> (&fields)[count], const T& object) {
    for (const GroupField<T>& field : fields) field.write(object, field, filer);
}

// The whole of dxfInFields and dxfOutFields of a class whose groups are those of its base and one subclass
// more.

template <class Base, class T, std::size_t count>
Acad::ErrorStatus readSubclass(AcDbDxfFiler* filer, T& object, const wchar_t* mark,
                               const GroupField<T> (&fields)[count]) {
    const Acad::ErrorStatus status = object.Base::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(mark)) return status;
    return readFields(*filer, fields, object);
}

template <class Base, class T, std::size_t count>
Acad::ErrorStatus writeSubclass(AcDbDxfFiler* filer, const T& object, const wchar_t* mark,
                                const GroupField<T> (&fields)[count]) {
    const Acad::ErrorStatus status = object.Base::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(mark);
    writeFields(*filer, fields, object);
    return filer->filerStatus();
}

} // namespace hostkit
