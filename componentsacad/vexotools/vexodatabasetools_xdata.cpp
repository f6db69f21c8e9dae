#include "vexodatabasetools.h"

#include "acdbads.h"
#include "adscodes.h"
#include "adsdef.h"
#include "cvxlogentry.h"
#include "dbent.h"
#include "dbopen.h"
#include "gepnt3d.h"

#include <cstring>
#include <memory>

namespace {

// Codes of the records.
constexpr short applicationCode = 1001;
constexpr short textCode = 1000;
constexpr short handleCode = 1005;
constexpr short pointCode = 1010;
constexpr short realCode = 1040;
constexpr short shortCode = 1070;
constexpr short longCode = 1071;

struct ListDeleter {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
/// A record list that is freed with its scope.
using RecordList = std::unique_ptr<resbuf, ListDeleter>;

bool holdsText(const resbuf& record) {
    const AcDb::GroupKind kind = AcDb::groupKind(record.restype);
    return kind == AcDb::GroupKind::kText || kind == AcDb::GroupKind::kHandle;
}

bool holdsNumber(const resbuf& record) {
    return !holdsText(record) && AcDb::groupKind(record.restype) != AcDb::GroupKind::kBinary;
}

/// The key's record, and the one in front of it; both null when the key is not there. A block begins with its
/// application, so a key always has a record in front.
struct Place {
    resbuf* before = nullptr;
    resbuf* key = nullptr;
    resbuf* value() const { return key ? key->rbnext : nullptr; }
};

Place findKey(resbuf* list, const wchar_t* key) {
    resbuf* before = nullptr;
    for (resbuf* record = list; record; before = record, record = record->rbnext)
        if (record->restype == textCode && record->resval.rstring &&
            std::wcscmp(record->resval.rstring, key) == 0)
            return {before, record};
    return {};
}

resbuf* lastOf(resbuf* list) {
    while (list->rbnext) list = list->rbnext;
    return list;
}

/// The application's block, or the beginning of one, for which the application is registered where it is not.
RecordList blockForWriting(const AcDbObject& object, const wchar_t* application) {
    RecordList block(object.xData(application));
    if (block) return block;
    if (const RecordList found{acdbTblSearch(L"APPID", application, 0)}; !found)
        (void)acdbRegApp(application);
    return RecordList(acutBuildList(applicationCode, application, 0));
}

/// Whether a setter may go on.
bool canWrite(const AcDbObject* object, const wchar_t* application, const wchar_t* key) {
    return object && application && key && object->isWriteEnabled();
}

/// The record behind the key goes to `read`.
template <class Read>
bool readValue(const AcDbObject* object, const wchar_t* application, const wchar_t* key, Read&& read) {
    if (!object || !application || !key) return false;
    const RecordList block(object->xData(application));
    const resbuf* const record = block ? findKey(block.get(), key).value() : nullptr;
    if (!record) return false;
    read(*record);
    return true;
}

/// `build` makes a new entry; `replace` changes the value of one that is there, or refuses it.
template <class Build, class Replace>
bool writeValue(AcDbObject* object, const wchar_t* application, const wchar_t* key, Build&& build,
                Replace&& replace) {
    if (!canWrite(object, application, key)) return false;
    const RecordList block = blockForWriting(*object, application);
    if (!block) return false;
    const Place place = findKey(block.get(), key);
    if (!place.key)
        lastOf(block.get())->rbnext = build();
    else if (!place.value() || !replace(*place.value()))
        return false;
    (void)object->setXData(block.get()); // what it says is not looked at
    return true;
}

/// A number over what holds a number, in the width of the setter.
template <class Number>
bool putNumber(resbuf& record, Number ads_u_val::*field, Number value) {
    if (!holdsNumber(record)) return false;
    record.resval.*field = value;
    return true;
}

// Arrays: a count, then the elements.

/// The number of elements that are there: at most the count, and none from where a text begins.
int elementsOf(const resbuf& count, const resbuf*& last) {
    int found = 0;
    last = &count;
    for (const resbuf* record = count.rbnext; record && holdsNumber(*record) && found < count.resval.rlong;
         record = record->rbnext, ++found)
        last = record;
    return found;
}

resbuf* lastElement(resbuf& count) {
    const resbuf* last = nullptr;
    (void)elementsOf(count, last);
    return const_cast<resbuf*>(last);
}

/// The count behind a key; null for a key that has no number behind it.
resbuf* countOf(const Place& place) {
    resbuf* const count = place.value();
    return count && holdsNumber(*count) ? count : nullptr;
}

resbuf* elementRecord(long value) { return acutBuildList(longCode, static_cast<Adesk::Int32>(value), 0); }

resbuf* arrayChain(const AcArray<long>& values) {
    resbuf* const chain = elementRecord(values.length());
    resbuf* last = chain;
    for (int i = 0; last && i < values.length(); ++i) last = last->rbnext = elementRecord(values[i]);
    return chain;
}

template <class Value, class Field>
bool appendElements(const AcDbObject* object, const wchar_t* application, const wchar_t* key,
                    AcArray<Value>& values, Field&& field) {
    if (!object || !application || !key || !object->isReadEnabled()) return false;
    const RecordList block(object->xData(application));
    const resbuf* const count = block ? countOf(findKey(block.get(), key)) : nullptr;
    if (!count) return false;
    const resbuf* last = nullptr;
    const int found = elementsOf(*count, last);
    const resbuf* record = count->rbnext;
    for (int i = 0; i < found; ++i, record = record->rbnext) values.append(field(*record));
    return true;
}

} // namespace

bool VEXODatabaseTools::getIntValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                 const wchar_t* key, int& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getIntValueInEntityXData");
    value = -1;
    return readValue(object, application, key, [&](const resbuf& record) { value = record.resval.rint; });
}

bool VEXODatabaseTools::getIntValueInEntityXData(AcDbObjectId id, const wchar_t* application,
                                                 const wchar_t* key, int& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getIntValueInEntityXData");
    value = -1;
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
    const bool found = getIntValueInEntityXData(entity, application, key, value);
    entity->close();
    return found;
}

bool VEXODatabaseTools::setIntValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                 const wchar_t* key, int value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setIntValueInEntityXData");
    return writeValue(
        object, application, key, [&] { return acutBuildList(textCode, key, shortCode, value, 0); },
        [&](resbuf& record) { return putNumber(record, &ads_u_val::rint, static_cast<short>(value)); });
}

bool VEXODatabaseTools::setIntValueInEntityXData(AcDbObjectId id, const wchar_t* application,
                                                 const wchar_t* key, int value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setIntValueInEntityXData");
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
    const bool isSet = setIntValueInEntityXData(entity, application, key, value);
    entity->close();
    return isSet;
}

bool VEXODatabaseTools::getLongValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                  const wchar_t* key, long& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getLongValueInEntityXData");
    value = -1;
    return readValue(object, application, key, [&](const resbuf& record) { value = record.resval.rlong; });
}

bool VEXODatabaseTools::setLongValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                  const wchar_t* key, long value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setLongValueInEntityXData");
    const auto stored = static_cast<Adesk::Int32>(value);
    return writeValue(
        object, application, key, [&] { return acutBuildList(textCode, key, longCode, stored, 0); },
        [&](resbuf& record) { return putNumber(record, &ads_u_val::rlong, stored); });
}

bool VEXODatabaseTools::getLongPtrValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                     const wchar_t* key, Adesk::Int64& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getLongPtrValueInEntityXData");
    value = -1;
    return readValue(object, application, key,
                     [&](const resbuf& record) { value = record.resval.mnLongPtr; });
}

bool VEXODatabaseTools::setLongPtrValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                     const wchar_t* key, Adesk::Int64 value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setLongPtrValueInEntityXData");
    return writeValue(
        object, application, key,
        [&] { return acutBuildList(textCode, key, longCode, static_cast<Adesk::Int32>(value), 0); },
        [&](resbuf& record) {
            return putNumber(record, &ads_u_val::mnLongPtr, static_cast<Adesk::IntPtr>(value));
        });
}

bool VEXODatabaseTools::getDoubleValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                    const wchar_t* key, double& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getDoubleValueInEntityXData");
    value = -1.0;
    return readValue(object, application, key, [&](const resbuf& record) { value = record.resval.rreal; });
}

bool VEXODatabaseTools::setDoubleValueInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                    const wchar_t* key, double value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setDoubleValueInEntityXData");
    return writeValue(
        entity, application, key, [&] { return acutBuildList(textCode, key, realCode, value, 0); },
        [&](resbuf& record) { return putNumber(record, &ads_u_val::rreal, value); });
}

bool VEXODatabaseTools::getPointValueInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                   const wchar_t* key, AcGePoint3d& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getPointValueInEntityXData");
    value.set(0.0, 0.0, 0.0);
    return readValue(entity, application, key, [&](const resbuf& record) {
        const ads_point& point = record.resval.rpoint;
        value.set(point[0], point[1], point[2]);
    });
}

bool VEXODatabaseTools::setPointValueInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                   const wchar_t* key, const AcGePoint3d& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setPointValueInEntityXData");
    const ads_point point = {value.x, value.y, value.z};
    return writeValue(
        entity, application, key,
        [&] { return acutBuildList(textCode, key, pointCode, static_cast<const double*>(point), 0); },
        [&](resbuf& record) {
            if (!holdsNumber(record)) return false;
            std::memcpy(record.resval.rpoint, point, sizeof point);
            return true;
        });
}

bool VEXODatabaseTools::getStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                    const wchar_t* key, CString& value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getStringValueInEntityXData");
    value.Empty();
    return readValue(object, application, key, [&](const resbuf& record) {
        if (record.restype == textCode && record.resval.rstring)
            value = record.resval.rstring;
        else if (record.restype == realCode)
            value.Format(L"%f", record.resval.rreal);
    });
}

bool VEXODatabaseTools::setStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                    const wchar_t* key, const wchar_t* value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setStringValueInEntityXData");
    const wchar_t* const text = value ? value : L"";
    return writeValue(
        object, application, key, [&] { return acutBuildList(textCode, key, textCode, text, 0); },
        [&](resbuf& record) {
            if (!holdsText(record)) return false;
            acutDelBuffer(record.resval.rstring);
            record.resval.rstring = acutNewString(text);
            return true;
        });
}

bool VEXODatabaseTools::setSimpleStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                          const wchar_t* key) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setSimpleStringValueInEntityXData");
    if (!canWrite(object, application, key)) return false;
    const RecordList block = blockForWriting(*object, application);
    if (!block) return false;
    if (findKey(block.get(), key).key) return true;
    lastOf(block.get())->rbnext = acutBuildList(textCode, key, 0);
    (void)object->setXData(block.get());
    return true;
}

bool VEXODatabaseTools::hasSimpleStringValueInEntityXData(const AcDbObject* object,
                                                          const wchar_t* application, const wchar_t* key) {
    if (!object || !application || !key) return false;
    const RecordList block(object->xData(application));
    return block && findKey(block.get(), key).key;
}

bool VEXODatabaseTools::removeSimpleStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                             const wchar_t* key) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::removeSimpleStringValueInEntityXData");
    if (!canWrite(object, application, key)) return false;
    const RecordList block(object->xData(application));
    const Place place = block ? findKey(block.get(), key) : Place();
    if (!place.value() || !place.before) return false;
    const RecordList removed(place.key);
    place.before->rbnext = place.value()->rbnext;
    place.value()->rbnext = nullptr;
    (void)object->setXData(block.get());
    return true;
}

bool VEXODatabaseTools::setLongArrayInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                  const wchar_t* key, const AcArray<long>& values) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setLongArrayInEntityXData");
    if (!canWrite(entity, application, key)) return false;
    const RecordList block = blockForWriting(*entity, application);
    if (!block) return false;
    Place place = findKey(block.get(), key);
    if (!place.key) {
        place.key = lastOf(block.get())->rbnext = acutBuildList(textCode, key, 0);
        place.key->rbnext = arrayChain(values);
    } else {
        resbuf* const count = countOf(place);
        if (!count) return false;
        resbuf* const last = lastElement(*count);
        resbuf* const behind = last->rbnext;
        last->rbnext = nullptr;
        acutRelRb(count);
        place.key->rbnext = arrayChain(values);
        lastOf(place.key)->rbnext = behind;
    }
    (void)entity->setXData(block.get());
    return true;
}

bool VEXODatabaseTools::getLongArrayFromEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                    const wchar_t* key, AcArray<long>& values) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getLongArrayFromEntityXData");
    return appendElements(entity, application, key, values,
                          [](const resbuf& record) { return static_cast<long>(record.resval.rlong); });
}

bool VEXODatabaseTools::addLongValueToArrayInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                         const wchar_t* key, long value) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::addLongValueToArrayInEntityXData");
    if (!canWrite(entity, application, key)) return false;
    const RecordList block(entity->xData(application));
    if (!block) {
        AcArray<long> single;
        single.append(value);
        return setLongArrayInEntityXData(entity, application, key, single);
    }
    const Place place = findKey(block.get(), key);
    if (!place.key) {
        lastOf(block.get())->rbnext =
            acutBuildList(textCode, key, longCode, 1, longCode, static_cast<Adesk::Int32>(value), 0);
        return entity->setXData(block.get()) == Acad::eOk;
    }
    resbuf* const count = countOf(place);
    if (!count) return false;
    resbuf* const last = lastElement(*count);
    resbuf* const added = elementRecord(value);
    if (!added) return false;
    count->resval.rlong = static_cast<Adesk::Int32>(static_cast<Adesk::UInt32>(count->resval.rlong) + 1);
    added->rbnext = last->rbnext;
    last->rbnext = added;
    return entity->setXData(block.get()) == Acad::eOk;
}

bool VEXODatabaseTools::removeLongArrayFromEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                       const wchar_t* key) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::removeLongArrayFromEntityXData");
    if (!canWrite(entity, application, key)) return false;
    const RecordList block(entity->xData(application));
    const Place place = block ? findKey(block.get(), key) : Place();
    if (!place.key) return true;
    resbuf* const count = countOf(place);
    if (!count || !place.before) return false;
    resbuf* const last = lastElement(*count);
    place.before->rbnext = last->rbnext;
    last->rbnext = nullptr;
    const RecordList removed(place.key);
    return entity->setXData(block.get()) == Acad::eOk;
}

bool VEXODatabaseTools::setLongPtrArrayInEntityXData(AcDbEntity*, const wchar_t*, const wchar_t*,
                                                     const AcArray<Adesk::Int64>&) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::setLongPtrArrayInEntityXData");
    return false;
}

bool VEXODatabaseTools::getLongPtrArrayFromEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                       const wchar_t* key, AcArray<Adesk::Int64>& values) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::getLongPtrArrayFromEntityXData");
    return appendElements(entity, application, key, values, [](const resbuf& record) {
        return static_cast<Adesk::Int64>(record.resval.mnLongPtr);
    });
}

bool VEXODatabaseTools::addLongPtrValueToArrayInEntityXData(AcDbEntity*, const wchar_t*, const wchar_t*,
                                                            Adesk::Int64) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::addLongPtrValueToArrayInEntityXData");
    return false;
}

namespace {

/// A list that is the application's name alone removes its data.
Acad::ErrorStatus removeFirstApplication(AcDbObject& object, resbuf& head) {
    const RecordList rest(head.rbnext);
    head.rbnext = nullptr;
    return object.setXData(&head);
}

} // namespace

Acad::ErrorStatus VEXODatabaseTools::clearXData(AcDbObject* object) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::clearXData");
    if (!object || !object->isWriteEnabled()) return Acad::eInvalidInput;
    const RecordList blocks(object->xData(nullptr));
    if (blocks && blocks->restype == applicationCode) (void)removeFirstApplication(*object, *blocks);
    return Acad::eOk;
}

Acad::ErrorStatus VEXODatabaseTools::clearXDataWithHandle(AcDbObject* object) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::clearXDataWithHandle");
    if (!object || !object->isWriteEnabled()) return Acad::eInvalidInput;
    const RecordList blocks(object->xData(nullptr));
    for (const resbuf* record = blocks.get(); record; record = record->rbnext) {
        if (record->restype != handleCode) continue;
        if (!holdsText(*blocks)) return Acad::eInvalidResBuf;
        blocks->restype = applicationCode;
        return removeFirstApplication(*object, *blocks);
    }
    return Acad::eOk;
}
