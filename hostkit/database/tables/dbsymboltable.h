// Stand-in for the host's symbol tables. Covers records by name, their order and iterators; leaves out dependent (external) records.
#pragma once

#include "dbopen.h"
#include "dbsymboltablerecord.h"

#include "casefold.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class AcDbSymbolTableIterator;

/// Records of one kind by name. Names are compared without regard to case; a record that is erased frees its
/// name. Records stay in the order in which they came.
class AcDbSymbolTable : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable)

public:
    AcDbSymbolTable() = default;

    /// The record of that name that is not erased; of several (a faulty drawing, viewports) the first in the
    /// table. With openErased, where there is none, the last erased one; else eWasErased. eKeyNotFound.
    Acad::ErrorStatus getAt(const wchar_t* name, AcDbObjectId& id, bool openErased = false) const;
    /// Opens the record for the caller; otherwise as above, and the statuses of an open.
    Acad::ErrorStatus getAt(const wchar_t* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErased = false) const;
    bool has(const wchar_t* name) const;
    /// True for a record of this table that is not erased.
    bool has(AcDbObjectId id) const;
    /// The table takes the record, which stays open for write until the caller closes it. A record of the
    /// wrong kind gives eNotThatKindOfClass, a name in use eDuplicateKey, an empty or invalid one
    /// eInvalidSymbolTableName, one that is in a drawing already eAlreadyInDb, a table of no drawing
    /// eNoDatabase; the record then stays the caller's.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
    /// The caller deletes the iterator, which is usable as long as the drawing lives.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    std::size_t numRecords() const { return m_records.size(); }
    /// Every record in order, erased ones too.
    const std::vector<AcDbObjectId>& records() const { return m_records; }
    /// The record of that name by id, without opening anything; null when there is none, or only an erased
    /// one.
    AcDbObjectId find(std::wstring_view name) const;
    /// The class that records must have.
    virtual AcRxClass* recordClass() const { return AcDbSymbolTableRecord::desc(); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// Several records may bear one name (viewport configurations).
    virtual bool allowsDuplicateNames() const { return false; }
    /// The last word on a new record's name (numbers of unnamed blocks).
    virtual void completeName(AcDbSymbolTableRecord&) {}
    /// The header variable that names a record of this table; null where none does. It follows a new name.
    virtual const wchar_t* currentVariable() const { return nullptr; }
    /// All but the records, which come and go one by one.
    AcDbSymbolTable& operator=(const AcDbSymbolTable& other);
    /// Tables stay.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    /// Whether no record that is not erased has the name, but for that one; always so where names may repeat.
    bool isNameFree(std::wstring_view name, AcDbObjectId except) const;

private:
    friend class hostkit::ChangeLog;
    friend class hostkit::DatabaseAccess;
    friend class AcDbSymbolTableRecord;
    struct Filing;
    void enter(AcDbSymbolTableRecord& record);
    std::size_t takeBack(AcDbObjectId record) override;
    void giveBack(AcDbObjectId record, std::size_t place) override;
    /// The record has another name than before, however it came by it.
    void renamed(AcDbSymbolTableRecord& record, std::wstring_view oldName);
    /// Whether the header names the record as the current one.
    bool isCurrent(const AcDbSymbolTableRecord& record) const;
    /// The header names the current record so.
    void nameCurrent(const std::wstring& name) const;
    const std::vector<AcDbObjectId>* bearersOf(std::wstring_view name) const;
    void enterName(AcDbObjectId record, const std::wstring& name);
    bool dropName(AcDbObjectId record, std::wstring_view name);

    std::vector<AcDbObjectId> m_records;
    /// Every record by its name, erased ones too, in the order of the table. Which of them a name finds is
    /// read from their marks of erasure at each look-up, so that nobody who erases, restores or takes back
    /// has to keep this true.
    std::unordered_map<std::wstring, std::vector<AcDbObjectId>, hostkit::FoldedHash, hostkit::FoldedEqual>
        m_names;
};

/// Walks a table's records. A record that is added or erased during the walk is met or passed over as its
/// turn comes.
class AcDbSymbolTableIterator {
public:
    AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted)
        : m_table(table) {
        start(atBeginning, skipDeleted);
    }
    virtual ~AcDbSymbolTableIterator() = default;

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const { return m_index >= m_table.numRecords(); }
    void step(bool forward = true, bool skipDeleted = true);
    /// eInvalidIndex when done; the argument stays.
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    /// eKeyNotFound, and no move, when the record is not of this table.
    Acad::ErrorStatus seek(AcDbObjectId id);
    Acad::ErrorStatus seek(const AcDbSymbolTableRecord* record);

private:
    void skipErased(bool forward);

    const AcDbSymbolTable& m_table;
    std::size_t m_index = 0;
};

namespace hostkit {

/// The forms of a table's members that know its kind of record.
template <typename Record>
class SymbolTableIteratorOf : public AcDbSymbolTableIterator {
public:
    using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
    using AcDbSymbolTableIterator::getRecord;
    Acad::ErrorStatus getRecord(Record*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const {
        record = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus status = getRecordId(id);
        return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
    }
};

template <typename Record, typename Iterator>
class SymbolTableOf : public AcDbSymbolTable {
public:
    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const wchar_t* name, Record*& record, AcDb::OpenMode mode,
                            bool openErased = false) const {
        AcDbSymbolTableRecord* opened = nullptr;
        const Acad::ErrorStatus status = AcDbSymbolTable::getAt(name, opened, mode, openErased);
        record = static_cast<Record*>(opened);
        return status;
    }
    using AcDbSymbolTable::newIterator;
    Acad::ErrorStatus newIterator(Iterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const {
        iterator = new Iterator(*this, atBeginning, skipDeleted);
        return Acad::eOk;
    }
    AcRxClass* recordClass() const override { return Record::desc(); }
};

} // namespace hostkit
