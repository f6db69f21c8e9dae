// Repair of blocks, their records and their layouts.

#include "drawingrepairing.h"
#include "salvagedgroups.h"

#include "auditnames.h"
#include "auditvalues.h"

#include <algorithm>

namespace hostkit {

using namespace salvaged;

namespace {

using Group = SalvagedGroup;
using Groups = SalvagedGroups;

// The group of a layout that leads to its space.
std::size_t spaceIn(const Groups& groups) {
    bool isBehind = false;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == markCode) isBehind = groups[i].value == "AcDbLayout";
        if (isBehind && groups[i].code == ownerCode) return i;
    }
    return nowhere;
}

} // namespace

// A block without a name has that of its record, by its owner, or its second one.
void DrawingRepairing::completeBlocks() {
    for (SalvagedBlock& each : m_text.blocks) {
        if (nameOf(each.begin).empty()) {
            const std::uint64_t owner = ownerOf(each.begin);
            std::string name = recoveredName(newHandle());
            for (const Group& group : SalvagedText::groupsOf(each.begin))
                if (group.code == 3 && !group.value.empty()) name = group.value;
            for (const SalvagedRecord& record : m_text.table("BLOCK_RECORD").records)
                if (owner != 0 && handleOf(record) == owner) name = nameOf(record);
            setName(each.begin, name);
            note(RepairOutcome::kRepaired, &each.begin, L"the block has no name");
        }
        if (!each.end.bytes.empty()) continue;
        Groups groups;
        if (m_form.hasHandles) groups = {{5, newHandle()}};
        if (m_form.hasOwners) groups.push_back({ownerCode, handleText(ownerOf(each.begin))});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbEntity"});
        groups.push_back({8, "0"});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbBlockEnd"});
        each.end = m_text.made("ENDBLK", SalvagedPlace::kBlock, groups);
        note(RepairOutcome::kRepaired, &each.begin, L"its ENDBLK is missing");
    }
}

// Each block has a record, and each record a block.
void DrawingRepairing::repairBlocks() {
    for (SalvagedRecord& each : m_text.table("BLOCK_RECORD").records)
        if (!each.isGone && nameOf(each).empty()) nameAnew(each, recoveredName(handleText(handleOf(each))));
    completeBlocks();
    std::unordered_set<std::wstring> names;
    auto records = blockRecords();
    for (SalvagedBlock& each : m_text.blocks) {
        std::wstring name = foldedName(nameOf(each.begin));
        if (!names.insert(name).second) {
            // The record that it names as its owner tells its name, where no other block has that.
            std::string other = std::string(nameOf(each.begin)) + "_" + std::string(newHandle());
            for (const SalvagedRecord& record : m_text.table("BLOCK_RECORD").records)
                if (!record.isGone && handleOf(record) == ownerOf(each.begin) && !hasBlock(nameOf(record)))
                    other = nameOf(record);
            nameAnew(each.begin, other);
            name = foldedName(other);
            names.insert(name);
        }
        if (!m_form.hasMarks || records.contains(name)) continue;
        SalvagedTable& table = m_text.table("BLOCK_RECORD");
        addRecord(table, "AcDbBlockTableRecord", {{nameCode, nameOf(each.begin)}, {340, "0"}});
        note(RepairOutcome::kRepaired, &each.begin, L"the block has no record");
        records = blockRecords();
    }
    if (!m_form.hasMarks) return;
    for (const SalvagedRecord& each : m_text.table("BLOCK_RECORD").records)
        if (!each.isGone && names.insert(foldedName(nameOf(each))).second) {
            note(RepairOutcome::kRepaired, &each, L"its block is missing; it is empty now");
            addBlock(nameOf(each), handleOf(each));
        }
}

bool DrawingRepairing::hasBlock(std::string_view name) const {
    return std::any_of(m_text.blocks.begin(), m_text.blocks.end(), [&](const SalvagedBlock& each) {
        return foldedName(nameOf(each.begin)) == foldedName(name);
    });
}

// An empty one.
void DrawingRepairing::addBlock(std::string_view name, std::uint64_t owner) {
    m_text.hasBlocks = true;
    const auto make = [&](std::string_view type, std::string_view mark, Groups own) {
        Groups groups;
        if (m_form.hasHandles) groups = {{5, newHandle()}};
        if (m_form.hasOwners) groups.push_back({ownerCode, handleText(owner)});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbEntity"});
        groups.push_back({8, "0"});
        if (m_form.hasMarks) groups.push_back({markCode, mark});
        groups.insert(groups.end(), own.begin(), own.end());
        return m_text.made(type, SalvagedPlace::kBlock, groups);
    };
    SalvagedBlock block;
    block.begin =
        make("BLOCK", "AcDbBlockBegin",
             {{nameCode, name}, {70, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, name}, {1, ""}});
    block.end = make("ENDBLK", "AcDbBlockEnd", {});
    m_text.blocks.push_back(std::move(block));
}

void DrawingRepairing::addMissingBlock(std::string_view missing) {
    if (hasBlock(missing)) return;
    const std::string_view name = m_text.kept(std::string(missing));
    std::uint64_t owner = 0;
    if (m_form.hasMarks) {
        SalvagedTable& table = m_text.table("BLOCK_RECORD");
        addRecord(table, "AcDbBlockTableRecord", {{nameCode, name}, {340, "0"}});
        owner = handleOf(table.records.back());
    }
    addBlock(name, owner);
    note(RepairOutcome::kRepaired, nullptr,
         L"the block " + AuditNames::charactersOf(name) + L" is there, empty");
}

std::unordered_map<std::wstring, SalvagedRecord*> DrawingRepairing::blockRecords() {
    std::unordered_map<std::wstring, SalvagedRecord*> records;
    for (SalvagedRecord& each : m_text.table("BLOCK_RECORD").records)
        if (!each.isGone) records.emplace(foldedName(nameOf(each)), &each);
    return records;
}

// A space leads to the layout that leads to it. A layout of a space that is missing takes the one that leads
// to it, or goes: some programs do not read a drawing with such a one.
void DrawingRepairing::repairLayouts() {
    std::unordered_map<std::uint64_t, std::uint64_t> spaces; // with the layout that each leads to
    for (const SalvagedRecord& each : m_text.table("BLOCK_RECORD").records) {
        if (each.isGone) continue;
        std::uint64_t& layout = spaces[handleOf(each)];
        for (const Group& group : SalvagedText::groupsOf(each))
            if (group.code == 340) layout = auditHandle(group.value).value_or(0);
    }
    std::unordered_map<std::uint64_t, std::uint64_t> layoutOf;
    for (SalvagedRecord& each : m_text.objects) {
        if (each.isGone || each.type != "LAYOUT") continue;
        const std::uint64_t own = handleOf(each);
        Groups groups = SalvagedText::groupsOf(each);
        const std::size_t at = spaceIn(groups);
        if (at == nowhere) continue;
        std::uint64_t space = auditHandle(groups[at].value).value_or(0);
        if (!spaces.contains(space)) {
            const auto other = std::find_if(spaces.begin(), spaces.end(),
                                            [&](const auto& one) { return one.second == own; });
            if (other == spaces.end()) {
                each.isGone = true;
                note(RepairOutcome::kLost, &each, L"its space is missing");
                continue;
            }
            space = other->first;
            groups[at].value = handleText(space);
            m_text.setGroups(each, groups);
        }
        layoutOf.emplace(space, own);
    }
    for (SalvagedRecord& each : m_text.table("BLOCK_RECORD").records) {
        const auto layout = layoutOf.find(handleOf(each));
        Groups groups = SalvagedText::groupsOf(each);
        const auto group =
            std::find_if(groups.begin(), groups.end(), [](const Group& one) { return one.code == 340; });
        const std::uint64_t wanted = layout == layoutOf.end() ? 0 : layout->second;
        if (each.isGone || group == groups.end() || auditHandle(group->value) == wanted) continue;
        group->value = handleText(wanted);
        m_text.setGroups(each, groups);
    }
}

} // namespace hostkit
