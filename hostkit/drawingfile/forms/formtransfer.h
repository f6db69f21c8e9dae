// Passing of records from form to form: leaving out what a form has no place for and the code page; leaves
// out turning entities into older kinds.
#pragma once

#include "formchanges.h"
#include "groupformat.h"
#include "groupscanner.h"
#include "handlelists.h"
#include "r12names.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace hostkit {

/// Carries the text of a whole drawing over into another form, record by record and by the tables of
/// formtables.h. Handles, owners and the order of records stay.
///
/// - A record of a kind that is newer than the target is left out, with what it owns; so is a class
///   description, and a body whose data stands in a section that the target lacks. A record that the source
///   holds although its kind is newer than the source's form goes to every later form.
/// - A group that is newer than the target is left out; groups of unknown meaning stay.
/// - What referred to a record that is left out is made sound: dictionary entries, reactors and extension
///   dictionaries go, other references become the null handle.
/// - Texts are encoded anew where the two forms encode them differently.
/// - For R12: records of table and space that R12 lacks are left out, names become names of R12
///   (r12names.h), and true colours leave their nearest index.
class FormTransfer {
public:
    /// `source` says how the text is spelt and in which form its records are; `target` what is to come.
    /// `unheld` are records, by handle, whose content is not in the text: they are left out too.
    FormTransfer(std::string_view text, const DrawingStyle& source, const DrawingStyle& target,
                 FormChanges& changes, std::unordered_set<std::uint64_t> unheld = {});
    std::string run();

private:
    using Groups = std::span<const RawGroup>;

    struct Record {
        std::size_t begin = 0; ///< of its text
        std::size_t end = 0;
        std::string_view section;
        std::string_view kind;
        std::uint64_t handle = 0;
        std::uint64_t owner = 0;
        bool isLeftOut = false;
    };
    enum class NameKind : unsigned char {
        kLayer,
        kLinetype,
        kStyle,
        kBlock,
        kDimStyle,
        kView,
        kUcs,
        kViewport,
        kApplication,
        kNone
    };

    using NameMap = std::unordered_map<std::wstring, std::wstring>;

    /// Groups ahead of the first mark tell handle and owner, but for those of applications.
    struct Head {
        bool isOver = false, isInGroup = false;
    };

    void gather();
    void readHead(Record& record, Head& head, const RawGroup& group) const;
    Groups groupsOf(const Record& record) const;
    std::string_view textOf(const Record& record) const {
        return m_text.substr(record.begin, record.end - record.begin);
    }
    void chooseRecords();
    bool hasNoPlace(const Record& record) const;
    bool isOlderThan(const Record& record) const;
    bool isHolder(const Record& record) const;
    void leaveOutOwned();
    void gatherNames();
    void giveName(const Record& record, const std::wstring& old, NameMap& names, R12Names& given);

    bool isVerbatim(const Record& record) const;
    bool isVerbatim(const RawGroup& group) const;
    void writeRecord(const Record& record, std::string& bytes);
    void writeVerbatim(std::string_view text, std::string& bytes) const;
    void writeGroups(const Record& record, Groups groups, std::string& bytes);
    bool writeChanged(const Record& record, Groups groups, std::size_t& place, std::string_view subclass,
                      std::string& bytes);
    void writeHeader(const Record& record, std::string& bytes);
    std::size_t writeApplicationGroup(Groups groups, std::size_t first, std::string& bytes);
    void writeGroup(const Record& record, const RawGroup& group, std::string& bytes);
    bool staysInRecord(const Record& record, std::string_view subclass, const RawGroup& group) const;
    bool losesGroups(std::string_view subclass) const;
    bool isGone(const RawGroup& group) const;
    bool goesWithNext(const Record& record, Groups groups, std::size_t place) const;
    std::optional<std::int64_t> countLeft(const Record& record, Groups groups, int countCode) const;
    void tellLeftOut(const Record& record);
    NameKind nameKindOf(const Record& record, const RawGroup& group) const;

    std::optional<RawGroup> find(const Record& record, int code) const;
    DrawingVersion needed(DrawingVersion first) const { return std::min(first, m_source.version); }
    bool isToR12() const { return !hasSubclassMarkers(m_target.version); }
    /// Whatever the source has, the target has too.
    bool isToLater() const { return m_target.version >= m_source.version; }

    std::string_view m_text;
    DrawingStyle m_source;
    DrawingStyle m_target;
    FormChanges& m_changes;
    bool m_encodesAnew;
    mutable std::vector<RawGroup> m_groups;                                    ///< of the record at hand
    mutable std::unordered_map<std::string_view, DrawingVersion> m_firstForms; ///< of kinds
    std::vector<Record> m_records;
    std::unordered_set<std::uint64_t> m_unheld;
    std::unordered_set<std::uint64_t> m_gone;
    std::array<NameMap, 9> m_names; ///< folded name to name of R12
};

} // namespace hostkit
