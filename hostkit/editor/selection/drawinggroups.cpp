#include "drawinggroups.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dbopaque.h"
#include "groupscanner.h"

namespace hostkit {

bool groupMembers(const AcDbDatabase& database, std::wstring_view name, std::vector<AcDbObjectId>& members) {
    const auto* groups = DatabaseAccess::objectOf<AcDbDictionary>(database.groupDictionaryId());
    AcDbObjectId id;
    if (!groups || groups->getAt(std::wstring(name).c_str(), id) != Acad::eOk || id.isErased()) return false;
    const auto* group = DatabaseAccess::objectOf<AcDbOpaqueObject>(id);
    const auto source = database.source();
    if (!group || !source || std::wstring_view(group->dxfName()) != L"GROUP") return false;
    const SourceSpan span = group->sourceSpan();
    constexpr int memberCode = 340;
    members.clear();
    GroupScanner scanner(std::string_view(source->bytes).substr(span.offset, span.length));
    for (RawGroup raw; scanner.next(raw) == ScanResult::kGroup;) {
        if (raw.code != memberCode) continue;
        const AcDbObjectId member = DatabaseAccess::find(database, handleFromText(raw.value).value_or(0));
        if (!member.isNull() && !member.isErased()) members.push_back(member);
    }
    return true;
}

} // namespace hostkit
