#include "dbdictionary.h"

#include "assignfield.h"
#include "changelog.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "ownederasure.h"

#include "adsdef.h"

#include <algorithm>

HOSTKIT_KIT_CLASS(AcDbDictionary, AcDbObject, L"DICTIONARY")

using hostkit::DatabaseAccess;
using hostkit::NameIndex;

namespace {

bool isValidKey(std::wstring_view name) {
    if (name.empty()) return false;
    return std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' ' || c == L'|'; });
}

} // namespace

std::size_t AcDbDictionary::placeOf(std::wstring_view name) const {
    return m_index.find(name,
                        [this](std::size_t place) -> const std::wstring& { return m_entries[place].name; });
}

const AcDbDictionary::Entry* AcDbDictionary::find(std::wstring_view name) const {
    const std::size_t place = placeOf(name);
    return place == NameIndex::none || m_entries[place].id.isErased() ? nullptr : &m_entries[place];
}

Acad::ErrorStatus AcDbDictionary::getAt(const wchar_t* name, AcDbObjectId& id) const {
    const Entry* entry = name ? find(name) : nullptr;
    if (!entry) return Acad::eKeyNotFound;
    id = entry->id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const wchar_t* name, AcDbObject*& object, AcDb::OpenMode mode) const {
    object = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(name, id);
    return status == Acad::eOk ? statusOfEntry(acdbOpenAcDbObject(object, id, mode)) : status;
}

// Callers tell a busy entry from a missing one by one number, whoever holds it and how.
Acad::ErrorStatus AcDbDictionary::statusOfEntry(Acad::ErrorStatus opened) {
    const bool isBusy =
        opened == Acad::eWasOpenForRead || opened == Acad::eWasOpenForNotify || opened == Acad::eAtMaxReaders;
    return isBusy ? Acad::eWasOpenForWrite : opened;
}

bool AcDbDictionary::has(const wchar_t* name) const { return name && find(name); }

const AcDbDictionary::Entry* AcDbDictionary::find(AcDbObjectId id) const {
    if (id.isNull() || id.isErased()) return nullptr;
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.id == id; });
    return found == m_entries.end() ? nullptr : &*found;
}

bool AcDbDictionary::has(AcDbObjectId id) const { return find(id) != nullptr; }

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, wchar_t*& name) const {
    const Entry* entry = find(id);
    if (!entry) return Acad::eKeyNotFound;
    name = acutNewString(entry->name.c_str());
    return Acad::eOk;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    return static_cast<Adesk::UInt32>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [](const Entry& entry) { return !entry.id.isNull() && !entry.id.isErased(); }));
}

AcDbDictionary& AcDbDictionary::operator=(const AcDbDictionary& other) {
    AcDbObject::operator=(other);
    m_treatElementsAsHard = other.m_treatElementsAsHard;
    m_mergeStyle = other.m_mergeStyle;
    m_lastNumber = other.m_lastNumber;
    return *this;
}

void AcDbDictionary::slotChanging(std::size_t index) {
    if (database()) hostkit::ChangeLog::of(*this).entryChanging(*this, index);
}

bool AcDbDictionary::putSlotBack(std::size_t index, const std::optional<Entry>& earlier) {
    const bool isNamed = earlier && !earlier->name.empty();
    const std::size_t other = isNamed ? placeOf(earlier->name) : NameIndex::none;
    if (other != NameIndex::none && other != index) {
        if (!m_entries[other].id.isErased()) return false;
        m_index.erase(earlier->name, other);
        m_entries[other] = Entry();
    }
    if (index == m_entries.size()) m_entries.emplace_back(); // one that was new comes again
    m_index.erase(m_entries[index].name, index);
    m_entries[index] = earlier.value_or(Entry());
    if (isNamed) m_index.insert(earlier->name, index);
    if (!earlier && index + 1 == m_entries.size()) m_entries.pop_back();
    return true;
}

void AcDbDictionary::put(std::wstring_view name, AcDbObjectId id) {
    const std::size_t place = placeOf(name);
    if (place != NameIndex::none) {
        m_entries[place] = {std::wstring(name), id};
        return;
    }
    m_entries.push_back({std::wstring(name), id});
    try {
        m_index.insert(name, m_entries.size() - 1);
    } catch (...) {
        m_entries.pop_back();
        throw;
    }
}

// The numbers grow fast: a damaged record may hold one name, and names like these, many thousand times.
std::wstring AcDbDictionary::nameBeside(std::wstring_view name) const {
    for (std::size_t number = m_entries.size() + 1;; number = 2 * number + 1) {
        std::wstring beside = std::wstring(name) + L"-" + std::to_wstring(number);
        if (placeOf(beside) == NameIndex::none) return beside;
    }
}

std::wstring AcDbDictionary::freeName() {
    assertWriteEnabled();
    std::wstring name;
    do name = L"*A" + std::to_wstring(++m_lastNumber);
    while (find(name));
    return name;
}

Acad::ErrorStatus AcDbDictionary::setAt(const wchar_t* name, AcDbObject* object, AcDbObjectId& id) {
    if (!object) return Acad::eNullObjectPointer;
    if (!name || !isValidKey(name)) return Acad::eInvalidKey;
    if (!database()) return Acad::eNoDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (object->database() && object->database() != database()) return Acad::eInvalidInput;
    if (!object->database() && !database()->mayWrite()) return Acad::eLockViolation;
    const std::wstring key = name[0] == L'*' ? freeName() : name;
    const Entry* old = find(key);
    if (old && old->id != object->objectId()) return Acad::eDuplicateKey;
    assertWriteEnabled();
    const bool comesIn = object->objectId().isNull();
    if (comesIn)
        DatabaseAccess::addOpen(*database(), object, objectId());
    else if (object->ownerId().isNull() && object->isWriteEnabled())
        object->setOwnerId(objectId());
    try {
        const std::size_t place = placeOf(key);
        slotChanging(place == NameIndex::none ? m_entries.size() : place);
        put(key, object->objectId());
    } catch (...) {
        if (comesIn) DatabaseAccess::withdraw(*database(), *object);
        throw;
    }
    id = object->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::takeOut(const Entry* entry) {
    if (!entry) return Acad::eKeyNotFound;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const auto place = static_cast<std::size_t>(entry - m_entries.data());
    AcDbObject* object = DatabaseAccess::object(entry->id);
    const bool isOwn = object && object->ownerId() == objectId();
    if (isOwn) hostkit::ChangeLog::of(*object).changing(*object);
    slotChanging(place);
    if (isOwn) {
        DatabaseAccess::setOwner(*object, AcDbObjectId());
        DatabaseAccess::markChanged(*object);
    }
    m_index.erase(m_entries[place].name, place);
    m_entries[place] = Entry();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const wchar_t* name, AcDbObjectId& id) {
    const Entry* entry = name ? find(name) : nullptr;
    const AcDbObjectId found = entry ? entry->id : AcDbObjectId();
    const Acad::ErrorStatus status = takeOut(entry);
    if (status == Acad::eOk) id = found;
    return status;
}

Acad::ErrorStatus AcDbDictionary::remove(const wchar_t* name) {
    AcDbObjectId id;
    return remove(name, id);
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id) { return takeOut(find(id)); }

Acad::ErrorStatus AcDbDictionary::setName(const wchar_t* oldName, const wchar_t* newName) {
    const Entry* entry = oldName ? find(oldName) : nullptr;
    if (!entry) return Acad::eKeyNotFound;
    if (!newName || !isValidKey(newName)) return Acad::eInvalidKey;
    const Entry* holder = find(newName);
    if (holder && holder != entry) return Acad::eDuplicateKey;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const std::size_t place = static_cast<std::size_t>(entry - m_entries.data());
    if (const std::size_t erased = placeOf(newName); erased != NameIndex::none && erased != place) {
        slotChanging(erased);
        m_index.erase(newName, erased);
        m_entries[erased] = Entry();
    }
    slotChanging(place);
    m_index.erase(m_entries[place].name, place);
    m_entries[place].name = newName;
    m_index.insert(newName, place);
    return Acad::eOk;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const { return new AcDbDictionaryIterator(*this); }

Acad::ErrorStatus AcDbDictionary::setTreatElementsAsHard(bool hard) {
    return hostkit::assignField(*this, m_treatElementsAsHard, hard);
}

Acad::ErrorStatus AcDbDictionary::setMergeStyle(AcDb::DuplicateRecordCloning style) {
    return hostkit::assignIf(style >= AcDb::kDrcNotApplicable && style <= AcDb::kDrcUnmangleName, *this,
                             m_mergeStyle, static_cast<Adesk::Int16>(style));
}

Acad::ErrorStatus AcDbDictionary::subErase(Adesk::Boolean erasing) {
    if (erasing && database()->namedObjectsDictionaryId() == objectId()) return Acad::eCannotBeErasedByCaller;
    for (const Entry& entry : m_entries) {
        const AcDbObject* object = DatabaseAccess::object(entry.id);
        if (object && object->ownerId() == objectId()) hostkit::eraseWithOwner(entry.id, erasing);
    }
    return Acad::eOk;
}

// The iterator.

void AcDbDictionaryIterator::skip() {
    const auto isAbsent = [](AcDbObjectId id) { return id.isNull() || id.isErased(); };
    while (!done() && isAbsent(m_dictionary.m_entries[m_index].id)) ++m_index;
}

bool AcDbDictionaryIterator::next() {
    if (done()) return false;
    ++m_index;
    skip();
    return !done();
}

const wchar_t* AcDbDictionaryIterator::name() const {
    return done() ? L"" : m_dictionary.m_entries[m_index].name.c_str();
}

AcDbObjectId AcDbDictionaryIterator::objectId() const {
    return done() ? AcDbObjectId() : m_dictionary.m_entries[m_index].id;
}

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) const {
    if (!done()) return acdbOpenAcDbObject(object, objectId(), mode);
    object = nullptr;
    return Acad::eInvalidIndex;
}

bool AcDbDictionaryIterator::setPosition(AcDbObjectId id) {
    const AcDbDictionary::Entry* entry = m_dictionary.find(id);
    if (!entry) return false;
    m_index = static_cast<std::size_t>(entry - m_dictionary.m_entries.data());
    return true;
}

void AcDbDictionary::listOwned(std::vector<AcDbObjectId>& owned) const {
    for (const Entry& entry : m_entries) owned.push_back(entry.id);
}
