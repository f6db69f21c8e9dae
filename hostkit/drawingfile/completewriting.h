// Stand-in for the host's whole save. Covers a drawing that no file describes, or that is saved in another form; leaves out what only a file knew.
#pragma once

#include "objectwriting.h"

#include <string>

namespace hostkit {

/// Writes a whole drawing from the fields of its objects, all sections in the format's order.
class CompleteWriting {
public:
    CompleteWriting(const AcDbDatabase& database, ObjectWriting& objects)
        : m_database(database)
        , m_objects(objects) {}

    /// False, with status and message, where the form cannot hold the drawing or a value cannot be written.
    bool run(std::string& bytes);
    Acad::ErrorStatus status() const { return m_status; }
    const std::wstring& message() const { return m_message; }

private:
    bool checkContents();
    void writeHeader(std::string& bytes);
    bool writeTables(std::string& bytes);
    bool writeBlocks(std::string& bytes);
    bool writeEntities(std::string& bytes);
    bool writeEntitiesOf(const AcDbBlockTableRecord& block, std::string& bytes);
    bool writeObjects(std::string& bytes);
    bool isR12() const { return !hasSubclassMarkers(m_objects.style().version); }
    bool fail(Acad::ErrorStatus status, std::wstring message);
    bool failWriting() { return fail(m_objects.status(), m_objects.message()); }

    const AcDbDatabase& m_database;
    ObjectWriting& m_objects;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::wstring m_message;
};

} // namespace hostkit
