// Uses between the objects of a drawing: which of some candidates anything refers to, and by way of which
// others; leaves out what may be erased.
#pragma once

#include "namesinrecords.h"

#include "recordhead.h"

#include "casefold.h"
#include "dbaccess.h"
#include "dbid.h"
#include "drawingtext.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

class ObjectWriting;

/// One of the objects whose uses are asked for.
struct UseCandidate {
    AcDbObjectId id;
    NamedKind kind;      ///< what the candidate's name stands for
    std::wstring name;   ///< by which records and the header may refer to it
    bool isUsed = false; ///< whatever refers to it: also true where it counts as used for what it holds
};

/// Looks at every object of the drawing as the record that a save would write of it, and at the header. What
/// an object of a candidate refers to (an entity of a block, an extension dictionary of a layer), the
/// candidate refers to. References are handles and names, in fields and in what no class reads; owners,
/// reactors and the entries of the dictionary that owns a candidate are none. Time and memory are linear in
/// the drawing.
class UseGraph {
public:
    using Index = std::uint32_t;

    /// The candidates must be distinct and not erased. Nothing of the drawing may be open for write.
    UseGraph(const AcDbDatabase& database, std::vector<UseCandidate> candidates);
    /// False where a record cannot be written; the graph is then of no use.
    bool isWhole() const { return m_isWhole; }
    const std::vector<UseCandidate>& candidates() const { return m_candidates; }
    void markUsed(std::size_t candidate) { m_candidates[candidate].isUsed = true; }
    /// By candidate, whether anything but itself refers to it, other candidates among that.
    std::vector<bool> referredTo() const;
    /// By candidate, whether something outside of the candidates refers to it, also by way of others.
    std::vector<bool> reached() const;

private:
    static constexpr Index outside = 0xFFFFFFFF;
    using Users = std::unordered_map<std::wstring, std::vector<Index>, FoldedHash, FoldedEqual>;

    void enterNames();
    void enterName(Index candidate, std::wstring_view name);
    void look(const AcDbObject& object, ObjectWriting& writing);
    void lookAtRecord(const AcDbObject& object, std::string_view bytes, SourceSpan span);
    void lookAtGroup(const AcDbObject& object, const RecordGroup& group, std::string_view application);
    void lookAtHeader();
    Index candidateOf(const AcDbObject& object) const;
    Index candidateOf(AcDbObjectId id) const;
    void useHandle(const AcDbObject& object, std::uint64_t handle);
    void useNames(NamedKinds kinds, std::string_view value);
    void useNames(NamedKinds kinds, std::wstring_view name);
    void use(Index candidate);

    const AcDbDatabase& m_database;
    std::vector<UseCandidate> m_candidates;
    std::unordered_map<const AcDbStub*, Index> m_places;
    std::array<Users, namedKindCount> m_byName;
    /// By the bytes of names that were met, for each kind; null where no candidate has the name.
    std::array<std::unordered_map<std::string, const std::vector<Index>*>, namedKindCount> m_known;
    std::vector<std::vector<Index>> m_uses; ///< of a candidate
    Index m_user = outside;                 ///< what the record at work belongs to
    DrawingText m_text;
    DrawingRecord m_record;
    RecordHead m_head;
    std::string m_written;
    bool m_isWhole = true;
};

} // namespace hostkit
