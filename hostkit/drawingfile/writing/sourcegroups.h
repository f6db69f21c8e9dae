// Records of unknown meaning in a new file: the groups that no class reads, added to records written anew;
// leaves out which of them the new form has.
#pragma once

#include "drawingrecord.h"
#include "groupformat.h"
#include "recordhead.h"
#include "recordreader.h"

#include <memory>
#include <string>
#include <string_view>

class AcDbDatabase;
class AcDbObject;
class AcDbViewport;

namespace hostkit {

/// Completes records that were written from fields with what else stood in the records they were read from.
class SourceGroups {
public:
    SourceGroups(const AcDbDatabase& database, const DrawingStyle& target);
    /// `text` with these groups at the end of each record, before its extended data. For R12 only tables'
    /// records, viewports and kinds without a class get them: the others' groups are all known. Records of
    /// kinds without a class that come from R12 get the marks of their subclasses.
    std::string complete(std::string_view text);

private:
    void appendGroups(const AcDbObject& object, std::string& bytes);
    void appendMarks(std::string& bytes) const;
    void appendView(const AcDbViewport& viewport, std::string_view extended, std::size_t begin,
                    std::string& bytes);
    bool isWanted(const AcDbObject& object) const;

    const AcDbDatabase& m_database;
    DrawingStyle m_target;
    RecordReader m_reader;
    DrawingRecord m_original;
    RecordHead m_head;
};

} // namespace hostkit
