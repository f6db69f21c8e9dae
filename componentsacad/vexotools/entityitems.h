#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "afx.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <vector>

namespace vexo {

/// The items of one record of a filed entity, in their order: into an owner's stream or out of it. The type
/// of a value is the kind of its item, so that one list of values is the layout for both directions and both
/// filers. After the first failure nothing more is filed, and values stay as they are.
class EntityItems {
public:
    EntityItems() = default;
    EntityItems(const EntityItems&) = delete;
    EntityItems& operator=(const EntityItems&) = delete;
    virtual ~EntityItems() = default;

    virtual bool isReading() const = 0;
    /// Whether all went well until here.
    virtual bool isGood() const = 0;
    /// What the caller of the tool is told: the filer's status.
    virtual Acad::ErrorStatus status() const = 0;
    /// A number that was read has no meaning; `format` has one %d for it. The filer fails by it.
    virtual void refuse(const wchar_t* format, int value) = 0;

    virtual void item(Adesk::Int32& value) = 0;
    virtual void item(Adesk::Int16& value) = 0;
    virtual void item(double& value) = 0;
    virtual void item(AcGePoint2d& value) = 0;
    virtual void item(AcGePoint3d& value) = 0;
    virtual void item(AcGeVector2d& value) = 0;
    virtual void item(AcGeVector3d& value) = 0;
    virtual void item(CString& value) = 0;
};

/// A single value is an item; what is made of several has a `file` of its own beside its type.
template <class Value>
requires requires(EntityItems& items, Value& value) { items.item(value); }
void file(EntityItems& items, Value& value) { items.item(value); }

/// Some values, one after the other.
template <class... Values>
requires(sizeof...(Values) > 1) void file(EntityItems& items, Values&... values) {
    (file(items, values), ...);
}

inline void add(AcGeDoubleArray& list, double value) { list.append(value); }
inline void add(AcGePoint2dArray& list, const AcGePoint2d& value) { list.append(value); }
inline void add(AcGePoint3dArray& list, const AcGePoint3d& value) { list.append(value); }
template <class Value>
void add(std::vector<Value>& list, Value value) {
    list.push_back(std::move(value));
}

/// The elements alone, as many as the count says. A count that was read is believed only as far as elements
/// follow.
template <class Value, class List>
void fileElements(EntityItems& items, List& list, Adesk::Int32 count) {
    if (!items.isReading()) {
        for (Value& each : list) file(items, each);
        return;
    }
    if (count < 0) return items.refuse(L"\nError: %d is no count", count);
    for (; count > 0 && items.isGood(); --count) {
        Value value{};
        file(items, value);
        add(list, std::move(value));
    }
}

/// A list: its count, then its elements.
template <class Value>
void file(EntityItems& items, AcArray<Value>& list) {
    Adesk::Int32 count = list.length();
    items.item(count);
    if (items.isGood()) fileElements<Value>(items, list, count);
}
template <class Value>
void file(EntityItems& items, std::vector<Value>& list) {
    auto count = static_cast<Adesk::Int32>(list.size());
    items.item(count);
    if (items.isGood()) fileElements<Value>(items, list, count);
}

} // namespace vexo
