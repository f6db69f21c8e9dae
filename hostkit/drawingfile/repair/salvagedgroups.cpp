#include "salvagedgroups.h"

#include "auditnames.h"
#include "casefold.h"

#include <algorithm>

namespace hostkit {

using namespace salvaged;

namespace {

/// Walks the groups before the first class mark that are not in an application's.
template <class Look>
void forHead(const SalvagedGroups& groups, Look&& look) {
    bool isInControl = false;
    for (std::size_t i = 0; i < groups.size() && groups[i].code != markCode && groups[i].code < firstExtended;
         ++i) {
        if (groups[i].code == controlCode) isInControl = groups[i].value.starts_with('{');
        if (!isInControl && groups[i].code != controlCode && !look(i)) return;
    }
}

} // namespace

int handleCodeOfType(std::string_view type) { return type == "DIMSTYLE" ? 105 : 5; }

bool isDictionaryType(std::string_view type) { return type == "DICTIONARY" || type == "ACDBDICTIONARYWDFLT"; }

std::size_t placeInHead(const SalvagedGroups& groups, int code) {
    std::size_t found = nowhere;
    forHead(groups, [&](std::size_t at) {
        if (groups[at].code != code) return true;
        found = at;
        return false;
    });
    return found;
}

std::size_t headEnd(const SalvagedGroups& groups) {
    const auto mark = std::find_if(groups.begin(), groups.end(),
                                   [](const SalvagedGroup& each) { return each.code == markCode; });
    return static_cast<std::size_t>(mark - groups.begin());
}

std::wstring foldedName(std::string_view name) {
    std::wstring folded = AuditNames::charactersOf(name);
    for (wchar_t& each : folded) each = foldCase(each);
    return folded;
}

std::string recoveredName(std::string_view handle) { return "RECOVERED_" + std::string(handle); }

} // namespace hostkit
