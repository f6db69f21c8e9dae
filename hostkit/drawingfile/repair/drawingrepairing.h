// Repair of a drawing's text, inside: one repair with its state; leaves out what callers see, which is
// drawingrepair.h.
#pragma once

#include "drawingrepair.h"
#include "recordrepair.h"
#include "salvagedtext.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace hostkit {

/// Rounds of checking the text and repairing what is found, until nothing is.
class DrawingRepairing {
public:
    DrawingRepairing(std::string_view bytes, RepairReport& report, const RepairOptions& options);
    std::string run();

private:
    using Groups = SalvagedGroups;
    using Stands = std::vector<SalvagedText::Stand>;
    using Findings = std::vector<const AuditFinding*>;

    // What frames the records: done once, before the first check.
    void tellOfLosses();
    void findForm();
    void completeHeads();
    void completeBlocks();
    void dropSecondClasses();
    void completeSequences();
    void completeSequences(SalvagedRecords& records);
    void endSequence(SalvagedRecords& records, std::size_t owner);

    // Rounds.
    bool repairRound(const AuditReport& found, const Stands& stands);
    void repairRecord(SalvagedRecord& record, std::uint32_t line, const Findings& findings);
    bool repairGroup(SalvagedRecord& record, Groups& groups, std::size_t place, const AuditFinding& finding);
    void repairReference(const SalvagedRecord& record, Groups& groups, std::size_t place);
    static void repairHandle(const SalvagedRecord& record, Groups& groups, std::size_t place);
    void repairEntry(const SalvagedRecord& record, Groups& groups, std::size_t place,
                     const AuditFinding& finding);
    bool takeRemedy(Groups& groups, std::size_t place, const AuditFinding& finding);
    void drop(SalvagedRecord& record, const AuditFinding& reason);
    static bool mayGo(const SalvagedRecord& record);

    // Between records.
    void repairHandles();
    void repairHeader(bool hasFaults);
    bool repairVariable(Groups& variable);
    void repairNames();
    void repairOwners();
    using ByHandle = std::unordered_map<std::uint64_t, SalvagedRecord*>;
    ByHandle byHandle();
    void repairOwnersIn(SalvagedRecords& records, std::uint64_t owner, bool isOfLayouts);
    void repairObjectOwners();
    void nameAnew(SalvagedRecord& record, std::string_view name);
    void repairBlocks();
    void repairLayouts();
    void repairRoot();
    void addStanding(SalvagedTable& table, const std::unordered_set<std::wstring>& names);
    void addRecord(SalvagedTable& table, std::string_view mark, const Groups& own);
    bool hasBlock(std::string_view name) const;
    void addBlock(std::string_view name, std::uint64_t owner);
    void addMissingBlock(std::string_view name);
    void addApplication(std::string_view name);
    void adopt(SalvagedRecord& object, const ByHandle& byHandle);

    std::uint64_t handleOf(const SalvagedRecord& record) const;
    std::uint64_t ownerOf(const SalvagedRecord& record) const;
    void setHandle(SalvagedRecord& record, std::uint64_t handle);
    void setOwner(SalvagedRecord& record, std::uint64_t owner);
    std::string_view handleText(std::uint64_t handle);
    std::string_view newHandle();
    std::string_view nameOf(const SalvagedRecord& record) const;
    void setName(SalvagedRecord& record, std::string_view name);
    SalvagedRecord* root();
    std::unordered_map<std::wstring, SalvagedRecord*> blockRecords();
    void note(RepairOutcome outcome, const SalvagedRecord* record, std::wstring_view text);
    void note(RepairOutcome outcome, const SalvagedRecord* record, const AuditFinding& finding);

    SalvagedText m_text;
    RepairReport& m_report;
    const RepairOptions& m_options;
    RepairForm m_form;
    std::vector<std::string> m_applications;     ///< to be registered
    std::vector<std::string> m_missingBlocks;    ///< to be made, empty
    std::unordered_set<std::uint64_t> m_handles; ///< those of the round's beginning
    std::uint64_t m_nextHandle;
};

} // namespace hostkit
