// Selection sets of a host, by name; leaves out how they are filled.
#pragma once

#include "selectionset.h"

#include "adesk.h"
#include "recordlist.h"

#include <map>
#include <memory>

namespace hostkit {

/// The sets that callers hold. A name is a number that is not given twice, beside a mark that no entity's
/// name has.
class SelectionSets {
public:
    void make(SelectionSet set, ads_name name);
    /// Null for what names no set.
    SelectionSet* find(const ads_name name);
    bool free(const ads_name name);
    /// Sets that nobody has freed.
    std::size_t count() const { return m_sets.size(); }

private:
    static constexpr std::intptr_t mark = -0x5E7;
    std::map<std::intptr_t, std::unique_ptr<SelectionSet>> m_sets{};
    std::intptr_t m_last = 0;
};

// Names of entities, which those of sets are told from.

/// False for the null id.
bool nameEntity(AcDbObjectId id, std::intptr_t* name);
/// RTENAME of each.
void addEntities(RecordListMaker& list, const std::vector<AcDbObjectId>& ids);

} // namespace hostkit
