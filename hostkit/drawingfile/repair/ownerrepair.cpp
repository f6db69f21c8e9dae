// Repair of owners and of the dictionaries that hold objects.

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

} // namespace

void DrawingRepairing::repairOwnersIn(SalvagedRecords& records, std::uint64_t owner, bool isOfLayouts) {
    std::unordered_set<std::uint64_t> layouts;
    std::uint64_t model = 0;
    std::uint64_t paper = 0;
    if (isOfLayouts)
        for (const auto& [name, record] : blockRecords()) {
            const std::uint64_t handle = handleOf(*record);
            if (name == foldedName("*Model_Space")) model = handle;
            if (name == foldedName("*Paper_Space")) paper = handle;
            if (name.starts_with(foldedName("*Paper_Space")) || handle == model) layouts.insert(handle);
        }
    std::uint64_t sequence = 0;
    for (SalvagedRecord& each : records) {
        if (each.isGone) continue;
        if (each.isPart()) {
            // Some programs name the block, which others have got used to.
            const bool isOfBlock = ownerOf(each) == owner || layouts.contains(ownerOf(each));
            if (!isOfBlock) setOwner(each, sequence);
            continue;
        }
        sequence = handleOf(each);
        if (!isOfLayouts) {
            setOwner(each, owner);
        } else if (!layouts.contains(ownerOf(each))) {
            const Groups groups = SalvagedText::groupsOf(each);
            const bool isOnPaper = std::any_of(groups.begin(), groups.end(), [](const Group& group) {
                return group.code == 67 && auditInteger(group.value) == 1;
            });
            setOwner(each, isOnPaper ? paper : model);
        }
    }
}

void DrawingRepairing::repairOwners() {
    if (!m_form.hasOwners) return;
    for (SalvagedTable& table : m_text.tables) {
        if (table.head.bytes.empty()) continue; // asked for, but not there
        setOwner(table.head, 0);
        const std::uint64_t owner = handleOf(table.head);
        for (SalvagedRecord& each : table.records)
            if (!each.isGone) setOwner(each, owner);
    }
    repairBlocks();
    const auto records = blockRecords();
    for (SalvagedBlock& each : m_text.blocks) {
        const auto record = records.find(foldedName(nameOf(each.begin)));
        if (record == records.end()) continue;
        const std::uint64_t owner = handleOf(*record->second);
        setOwner(each.begin, owner);
        repairOwnersIn(each.entities, owner, false);
        setOwner(each.end, owner);
    }
    repairOwnersIn(m_text.entities, 0, true);
    repairObjectOwners();
}

// Objects belong to who holds them.
void DrawingRepairing::repairObjectOwners() {
    repairRoot();
    if (!root()) return;
    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> holders;
    m_text.forEach([&](const SalvagedRecord& each) {
        const std::uint64_t handle = handleOf(each);
        for (const Group& group : SalvagedText::groupsOf(each))
            if ((group.code >= 360 && group.code <= 369) ||
                (group.code == 350 && isDictionaryType(each.type)))
                holders[auditHandle(group.value).value_or(0)].push_back(handle);
    });
    const ByHandle records = byHandle();
    const std::uint64_t rootHandle = handleOf(*root());
    const auto isInCircle = [&](std::uint64_t handle) {
        constexpr int deepest = 1000;
        for (int depth = 0; handle != 0; ++depth) {
            const auto found = records.find(handle);
            if (found == records.end()) return false;
            if (depth > deepest) return true;
            handle = ownerOf(*found->second);
        }
        return false;
    };
    for (SalvagedRecord& each : m_text.objects) {
        const std::uint64_t handle = handleOf(each);
        if (each.isGone || handle == rootHandle) continue;
        const auto owner = records.find(ownerOf(each));
        const auto& held = holders[handle];
        const bool isThere = owner != records.end() && owner->first != 0;
        const bool asksForHolder =
            isThere && (isDictionaryType(owner->second->type) || each.type == "DICTIONARY");
        const bool isHeld = isThere && std::find(held.begin(), held.end(), owner->first) != held.end();
        if (isThere && (isHeld || !asksForHolder) && !isInCircle(handle)) continue;
        if (!held.empty() && !(isThere && isHeld) && held.front() != handle) {
            setOwner(each, held.front());
            if (!isInCircle(handle)) continue;
        }
        adopt(each, records);
    }
}

// What nobody holds: the extension dictionary of its owner, or an entry of the root.
void DrawingRepairing::adopt(SalvagedRecord& object, const ByHandle& byHandle) {
    const auto owner = byHandle.find(ownerOf(object));
    if (owner != byHandle.end() && object.type == "DICTIONARY" && !isDictionaryType(owner->second->type)) {
        Groups groups = SalvagedText::groupsOf(*owner->second);
        const bool hasOne = std::any_of(groups.begin(), groups.end(), [](const Group& each) {
            return each.code == controlCode && each.value == "{ACAD_XDICTIONARY";
        });
        const std::size_t at = placeInHead(groups, handleCodeOfType(owner->second->type));
        if (!hasOne && at != nowhere) {
            const Groups own = {
                {controlCode, "{ACAD_XDICTIONARY"}, {360, handleText(handleOf(object))}, {controlCode, "}"}};
            groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at) + 1, own.begin(), own.end());
            return m_text.setGroups(*owner->second, groups);
        }
    }
    SalvagedRecord& above = *root();
    const std::string_view handle = handleText(handleOf(object));
    setOwner(object, handleOf(above));
    Groups groups = SalvagedText::groupsOf(above);
    const auto end = std::find_if(groups.begin(), groups.end(),
                                  [](const Group& each) { return each.code >= firstExtended; });
    const Groups entry = {{3, m_text.kept(recoveredName(handle))}, {350, handle}};
    groups.insert(end, entry.begin(), entry.end());
    m_text.setGroups(above, groups);
    note(RepairOutcome::kRepaired, &object, L"no dictionary holds it; the root does now");
}

SalvagedRecord* DrawingRepairing::root() {
    for (SalvagedRecord& each : m_text.objects)
        if (!each.isGone) return each.type == "DICTIONARY" ? &each : nullptr;
    return nullptr;
}

// The first object; where it is none, the dictionary that has no owner, or a new one.
void DrawingRepairing::repairRoot() {
    if (!m_form.hasMarks || !m_text.hasObjects) return;
    SalvagedRecords& objects = m_text.objects;
    std::erase_if(objects, [](const SalvagedRecord& each) { return each.isGone; });
    const auto found = std::find_if(objects.begin(), objects.end(), [&](const SalvagedRecord& each) {
        return each.type == "DICTIONARY" && ownerOf(each) == 0;
    });
    const bool isByName = found == objects.end();
    const auto named = std::find_if(objects.begin(), objects.end(), [&](const SalvagedRecord& each) {
        return each.type == "DICTIONARY" && each.bytes.find("ACAD_") != std::string_view::npos;
    });
    const auto chosen = isByName ? named : found;
    if (chosen != objects.end()) {
        std::rotate(objects.begin(), chosen, chosen + 1);
        setOwner(objects.front(), 0);
        return;
    }
    Groups groups = {{5, newHandle()}, {ownerCode, "0"}, {markCode, "AcDbDictionary"}, {281, "1"}};
    objects.insert(objects.begin(), m_text.made("DICTIONARY", SalvagedPlace::kObjects, groups));
    note(RepairOutcome::kRepaired, nullptr, L"the root dictionary is missing");
}

} // namespace hostkit
