// Last look at what an undo put back: names that two records would have and owners that list an object no
// more; leaves out putting back itself.
#pragma once

#include "changememory.h"

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace hostkit {

/// Going back can meet what did not go back: changes that undo recording did not see, an open that was
/// cancelled beyond the start of a transaction. So everything goes back first, and then each record whose
/// earlier name another one bears gets again what it had before: its name, or its mark of erasure. No drawing
/// has two records of one name afterwards, unless it had before.
struct ChangeLog::Settling {
    /// Before the entry is put back.
    void note(const Entry& entry);
    /// The records that did not go back.
    std::vector<const AcDbStub*> settle();
    /// After that: a header variable that went back names the record that it meant, by the name that this has
    /// now; so do those of the variables that stayed whose record went back.
    void nameCurrent(const std::unordered_set<std::wstring>& kept = {}) const;
    /// An object that its dictionary does not list has no owner.
    static void dropUnlisted(AcDbObject& object);

private:
    struct Before {
        AcDbStub* stub;
        std::wstring name;
        bool wasErased;
        bool wasCurrent; ///< the header named it
    };
    bool isAtOdds(const Before& before) const;
    static void keep(const Before& before);
    static void eraseWithOwned(AcDbStub& stub);

    std::vector<Before> m_records;
    std::map<const AcDbSymbolTable*, AcDbObjectId> m_variables; ///< what each named at the first change
    std::unordered_set<const AcDbStub*> m_noted;
};

} // namespace hostkit
