// Incremental save: a drawing that was read and changed: its bytes with the changed records replaced; leaves
// out other forms of the format.
#pragma once

#include "byteedits.h"
#include "drawingstructure.h"
#include "objectwriting.h"
#include "recordrewriting.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace hostkit {

/// One save of a drawing in the form that it was read in. What was not changed keeps its bytes; new records
/// go to the end of their table, block, section or sequence.
class DrawingEdits {
public:
    /// `threads` as for threadsFor.
    DrawingEdits(const AcDbDatabase& database, const DrawingSource& source, ObjectWriting& objects,
                 RewritingScope scope, unsigned threads);
    /// Whether anything was changed; else the source bytes are the drawing.
    bool isNeeded() const;
    /// False, with status and message, where something cannot be written; `bytes` is then as it was.
    bool run(std::string& bytes);

    Acad::ErrorStatus status() const { return m_status; }
    const std::wstring& message() const { return m_message; }
    std::size_t recordsCopied() const { return m_recordsCopied; }

private:
    const std::vector<AcDbObjectId>& blockRecords() const;
    void findReferenceChanges();
    void findNewName(const AcDbSymbolTableRecord& record);
    std::wstring nameInFile(const AcDbSymbolTableRecord& record) const;
    bool hasRecord(AcDbObjectId id) const;
    bool comesIntoFile(const AcDbSymbolTable& table) const;
    void findComing();
    void take(const AcDbObject& object);
    bool isOfTheDrawing(const AcDbObject& object) const;
    bool isAsGiven(const AcDbObject& object) const;
    bool comesIntoFile(const AcDbObject& object) const { return m_coming.contains(&object); }

    void addClasses();
    bool addTableRecords();
    bool addNewTable(TableKind kind, const AcDbSymbolTable& table, std::string& newTables);
    bool updateTable(TableKind kind, const AcDbSymbolTable& table);
    void dropGoneFromHead(const AcDbSymbolTable& table);
    bool writeEntitiesOf(const AcDbBlockTableRecord& block, std::string& text);
    bool addBlocks();
    bool addEntities();
    bool addEntitiesOf(const AcDbBlockTableRecord& block);
    bool addParts(const AcDbEntity& owner);
    bool addObjects();
    void editStore();
    void renameInHeader();
    void editHeader();
    void setHeaderVariable(std::string_view name, std::string_view groups);

    std::size_t sectionEnd(std::string_view name) const;
    const NamedSpan* sectionFrom(std::string_view name) const;
    void insertIntoSection(std::string_view section, std::string_view before, std::string_view text);
    bool fail(Acad::ErrorStatus status, std::wstring message);
    bool failWriting() { return fail(m_objects.status(), m_objects.message()); }

    const AcDbDatabase& m_database;
    const DrawingSource& m_source;
    ObjectWriting& m_objects;
    RewritingScope m_scope;
    std::size_t m_threads;
    ReferenceChanges m_changes;
    std::unordered_set<const AcDbObject*> m_coming;  // without a record in the file, and getting one
    std::unordered_set<const AcDbObject*> m_holders; // with a record, which names one of those
    DrawingStructure m_structure;
    ByteEdits m_edits;
    std::string m_text; // of the record at work
    bool m_hasStrayParts = false;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::wstring m_message;
    std::size_t m_recordsCopied = 0;
};

/// The entity's record, then those of its parts and their end, all new.
bool writeNewEntity(const AcDbEntity& entity, ObjectWriting& objects, std::string& bytes);
/// BLOCK, what `entities` holds already, and ENDBLK.
bool writeNewBlock(const AcDbBlockTableRecord& block, std::string_view entities, ObjectWriting& objects,
                   std::string& bytes);
/// TABLE, the records that are not erased, ENDTAB.
bool writeNewTable(TableKind kind, const AcDbSymbolTable& table, ObjectWriting& objects, std::string& bytes);
/// The group by which a table's record tells how many follow; empty where it does not.
inline constexpr int tableCountCode = 70;
SourceSpan tableCountIn(std::string_view bytes, SourceSpan record);
/// Whether the object was made or changed since the drawing was read, or was never in a file.
bool isNewRecord(const AcDbObject& object);
/// An object that has no record by itself where others are listed: it is in no table, block or sequence.
bool isListedObject(const AcDbObject& object);
void appendSectionStart(std::string_view name, const DrawingStyle& style, std::string& bytes);

} // namespace hostkit
