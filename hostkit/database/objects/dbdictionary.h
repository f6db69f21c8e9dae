// Stand-in for the host's AcDbDictionary. Covers named entries, their order, "*" names and iterators; leaves out filtering by xref.
#pragma once

#include "dbobject.h"
#include "dbopen.h"
#include "nameindex.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class AcDbDictionaryIterator;

/// Objects by name, in the order in which they came. Names are compared without regard to case; an entry
/// whose object is erased counts as absent, and comes back with it unless the name was taken meanwhile.
class AcDbDictionary : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbDictionary)

public:
    AcDbDictionary() = default;
    AcDbDictionary(const AcDbDictionary&) = delete;

    /// eKeyNotFound; the id stays as it was.
    Acad::ErrorStatus getAt(const wchar_t* name, AcDbObjectId& id) const;
    /// Opens the entry for the caller: eKeyNotFound, eWasOpenForWrite for an entry that another open holds
    /// (whatever that open is), or the other statuses of an open.
    Acad::ErrorStatus getAt(const wchar_t* name, AcDbObject*& object, AcDb::OpenMode mode) const;
    template <typename T>
    Acad::ErrorStatus getAt(const wchar_t* name, T*& object, AcDb::OpenMode mode) const {
        object = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus status = getAt(name, id);
        return status == Acad::eOk ? statusOfEntry(acdbOpenObject(object, id, mode)) : status;
    }
    bool has(const wchar_t* name) const;
    bool has(AcDbObjectId id) const;
    /// The name of an entry: a copy from acutNewString; eKeyNotFound.
    Acad::ErrorStatus nameAt(AcDbObjectId id, wchar_t*& name) const;
    Adesk::UInt32 numEntries() const;

    /// Makes the object an entry. A new object enters the drawing and stays open for write; one that is in
    /// the drawing already stays as it is. "*" (or a name that begins with it) makes a name of its own, "*A1"
    /// and on. A refused object is not touched: eDuplicateKey for a name that another object has (remove or
    /// erase that one first); eInvalidKey for an empty name or one with | or characters below the space;
    /// eNullObjectPointer; eNoDatabase for a dictionary of no drawing.
    Acad::ErrorStatus setAt(const wchar_t* name, AcDbObject* object, AcDbObjectId& id);
    /// Takes the entry out; the object stays in the drawing, without an owner, if it was this dictionary's
    /// own.
    Acad::ErrorStatus remove(const wchar_t* name);
    Acad::ErrorStatus remove(const wchar_t* name, AcDbObjectId& id);
    Acad::ErrorStatus remove(AcDbObjectId id);
    /// eKeyNotFound, eDuplicateKey.
    Acad::ErrorStatus setName(const wchar_t* oldName, const wchar_t* newName);

    /// The caller deletes the iterator.
    AcDbDictionaryIterator* newIterator() const;

    bool isTreatElementsAsHard() const { return m_treatElementsAsHard; }
    Acad::ErrorStatus setTreatElementsAsHard(bool hard);
    AcDb::DuplicateRecordCloning mergeStyle() const {
        return static_cast<AcDb::DuplicateRecordCloning>(m_mergeStyle);
    }
    Acad::ErrorStatus setMergeStyle(AcDb::DuplicateRecordCloning style);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// All but the entries, which come and go one by one.
    AcDbDictionary& operator=(const AcDbDictionary& other);
    /// The root stays. What the dictionary owns is erased with it.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend class hostkit::ChangeLog;
    friend class hostkit::DatabaseAccess;
    friend class AcDbDictionaryIterator;
    void listOwned(std::vector<AcDbObjectId>& owned) const override;
    struct Filing;
    struct Entry {
        std::wstring name;
        AcDbObjectId id; ///< null: taken out
    };
    /// Of the entry of that name, erased or not; NameIndex::none.
    std::size_t placeOf(std::wstring_view name) const;
    const Entry* find(std::wstring_view name) const;
    const Entry* find(AcDbObjectId id) const;
    std::wstring freeName();
    /// A name like this one that no entry has.
    std::wstring nameBeside(std::wstring_view name) const;
    static Acad::ErrorStatus statusOfEntry(Acad::ErrorStatus opened);
    Acad::ErrorStatus takeOut(const Entry* entry);
    /// Replaces an entry of that name, whatever it holds.
    void put(std::wstring_view name, AcDbObjectId id);
    /// Tells the drawing's memory of changes that this entry, or a new one behind the last, will be another.
    void slotChanging(std::size_t index);
    /// False, and nothing is done, where another entry has the name now.
    bool putSlotBack(std::size_t index, const std::optional<Entry>& earlier);

    std::vector<Entry> m_entries;
    hostkit::NameIndex m_index;
    bool m_treatElementsAsHard = false;
    Adesk::Int16 m_mergeStyle = AcDb::kDrcIgnore;
    Adesk::UInt32 m_lastNumber = 0; ///< of the "*" names
};

/// Walks a dictionary's entries, erased ones left out. Entries may be added, replaced and taken out during
/// the walk; the dictionary must live.
class AcDbDictionaryIterator {
public:
    explicit AcDbDictionaryIterator(const AcDbDictionary& dictionary)
        : m_dictionary(dictionary) {
        skip();
    }
    virtual ~AcDbDictionaryIterator() = default;

    bool done() const { return m_index >= m_dictionary.m_entries.size(); }
    /// False when no further entry follows.
    bool next();
    /// Empty, null, eInvalidIndex when done.
    const wchar_t* name() const;
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) const;
    /// False, and no move, for an object that is no entry.
    bool setPosition(AcDbObjectId id);

private:
    void skip();

    const AcDbDictionary& m_dictionary;
    std::size_t m_index = 0;
};
