// Incremental save: the records that stand in the file: which are written again, and that on all cores;
// leaves out new records.
#pragma once

#include "byteedits.h"
#include "objectwriting.h"

#include "dbsource.h"

#include <unordered_set>

namespace hostkit {

/// Which records are written again at least.
enum class RewritingScope : unsigned char {
    kChanged,
    kOtherForm, ///< and those whose groups are others from form to form
    kEverything ///< as if each object had been changed
};

/// What decides which records of a file are written again.
struct RewritingRules {
    const AcDbDatabase& database;
    const DrawingSource& source;
    RewritingScope scope = RewritingScope::kChanged;
    const ReferenceChanges& changes;
    /// Unchanged objects whose records name others that come into the file.
    const std::unordered_set<const AcDbObject*>& holders;
};

/// Of a save of that scope, whether the object's record is written again even where nothing was changed.
bool isWrittenAgain(RewritingScope scope, const AcDbObject& object);

/// Rewrites records of objects that the file has, one after another, into edits of its bytes.
class RecordRewriting {
public:
    RecordRewriting(const RewritingRules& rules, ObjectWriting& objects)
        : m_rules(rules)
        , m_objects(objects)
        , m_edits(rules.source.bytes) {}

    /// Replaces the object's record, removes it, or leaves it as it stands. False where it cannot be written:
    /// the ObjectWriting tells why.
    bool rewrite(const AcDbObject& object);
    void reserve(std::size_t edits, std::size_t textSize) { m_edits.reserve(edits, textSize); }

    ByteEdits& edits() { return m_edits; }
    std::size_t recordsCopied() const { return m_recordsCopied; }

private:
    bool mustBeWritten(const AcDbObject& object) const;

    const RewritingRules& m_rules;
    ObjectWriting& m_objects;
    ByteEdits m_edits;
    std::string m_text; // of the record at work
    std::size_t m_recordsCopied = 0;
};

/// How many threads share the writing of the drawing where `wanted` are asked for; 0 takes as many as the
/// machine has and the work is worth.
std::size_t threadsFor(const AcDbDatabase& database, unsigned wanted);

/// Rewrites all records that the file has. `threads` share the work evenly, by the objects' order. Objects of
/// applications' classes are asked on the calling thread alone, after the others: their code need not know of
/// threads. The bytes are the same whatever the number. False where a record cannot be written; `objects`
/// tells of the first that failed.
bool rewriteRecords(const RewritingRules& rules, ObjectWriting& objects, std::size_t threads,
                    ByteEdits& edits, std::size_t& recordsCopied);

} // namespace hostkit
