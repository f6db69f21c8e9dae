// Whole save: a drawing that no file describes, or that goes from or to R12; leaves out which groups the form
// has.
#pragma once

#include "formchanges.h"
#include "objectwriting.h"
#include "r12entities.h"

#include <optional>
#include <string>

namespace hostkit {

/// Writes a whole drawing from the fields of its objects, all sections in the format's order, with the groups
/// of their records that no class knows. In the R12 form newer kinds are turned into older ones
/// (r12entities.h); what else R12 lacks is for the transfer to leave out (formtransfer.h).
class CompleteWriting {
public:
    /// What was turned into something else, or left out, is told to `changes`.
    CompleteWriting(const AcDbDatabase& database, ObjectWriting& objects, FormChanges& changes)
        : m_database(database)
        , m_objects(objects)
        , m_changes(changes) {}

    /// False, with status and message, where a value cannot be written.
    bool run(std::string& bytes);
    Acad::ErrorStatus status() const { return m_status; }
    const std::wstring& message() const { return m_message; }

private:
    void writeHeader(std::string& bytes);
    bool writeTables(std::string& bytes);
    bool writeBlocks(std::string& bytes);
    bool writeEntities(std::string& bytes);
    bool writeEntitiesOf(const AcDbBlockTableRecord& block, std::string& bytes);
    bool writeEntity(const AcDbEntity& entity, std::string& bytes);
    bool writeOlder(const AcDbEntity& entity, std::string& bytes);
    bool writeOwnedParts(const AcDbEntity& entity, std::string& bytes);
    bool writeObjects(std::string& bytes);
    void tellOtherSheet(const AcDbBlockTableRecord& block);
    void tellObjects();
    bool isR12() const { return !hasSubclassMarkers(m_objects.style().version); }
    bool fail(Acad::ErrorStatus status, std::wstring message);
    bool failWriting() { return fail(m_objects.status(), m_objects.message()); }

    const AcDbDatabase& m_database;
    ObjectWriting& m_objects;
    FormChanges& m_changes;
    std::optional<R12Entities> m_older;
    const AcDbEntity* m_open = nullptr; // the last entity written, where its sequence has no end
    Acad::ErrorStatus m_status = Acad::eOk;
    std::wstring m_message;
};

} // namespace hostkit
