#include "classrecords.h"

#include "applicationclasses.h"
#include "groupscanner.h"
#include "textencoding.h"

#include "dbaccess.h"
#include "dbarcdimension.h"

#include <map>
#include <set>

namespace hostkit {
namespace {

// Later forms have no fixed number for these of the kit's own: programs find the class by its record.
bool isAnnounced(const AcRxClass& each) { return isOfApplication(each) || &each == AcDbArcDimension::desc(); }

// In the order of their names, so that a save does not depend on where classes lie in memory.
using CountedClasses = std::map<std::string, std::pair<const AcRxClass*, int>>;

CountedClasses classesInUse(const AcDbDatabase& database) {
    std::map<const AcRxClass*, int> counts;
    DatabaseAccess::forEachObject(database, [&](const AcDbObject& object) {
        const AcRxClass* const own = object.isA();
        if (isAnnounced(*own) && own->dxfName() && !object.isErased()) ++counts[own];
    });
    CountedClasses classes;
    for (const auto& [each, count] : counts) classes[utf8FromWide(each->dxfName())] = {each, count};
    return classes;
}

std::set<std::string, std::less<>> namesIn(std::string_view section) {
    std::set<std::string, std::less<>> names;
    GroupScanner scanner(section);
    constexpr int recordNameCode = 1;
    for (RawGroup group; scanner.next(group) == ScanResult::kGroup;)
        if (group.code == recordNameCode) names.emplace(group.value);
    return names;
}

void appendRecord(const AcRxClass& each, const std::string& recordName, int count, const DrawingStyle& style,
                  std::string& bytes) {
    const bool isEntity = each.isDerivedFrom(AcDbEntity::desc());
    constexpr int mayBeErased = 1 + 1024; // by programs without the class, of R13 as well
    // Of an application's, others may do nothing with them but keep them.
    const int allowed = isOfApplication(each) ? 0 : mayBeErased;
    appendGroup(0, "CLASS", style, bytes);
    appendGroup(1, recordName, style, bytes);
    appendGroup(2, utf8FromWide(each.name()), style, bytes);
    appendText(3, isOfApplication(each) ? each.appName() : L"AcDb", style, bytes);
    appendInteger(90, allowed, style, bytes);
    if (style.version >= DrawingVersion::k2004) appendInteger(91, count, style, bytes);
    appendInteger(280, 0, style, bytes);
    appendInteger(281, isEntity ? 1 : 0, style, bytes);
}

} // namespace

std::string missingClassRecords(const AcDbDatabase& database, const DrawingStyle& style,
                                std::string_view present) {
    std::string bytes;
    if (!hasSubclassMarkers(style.version)) return bytes;
    const CountedClasses classes = classesInUse(database);
    if (classes.empty()) return bytes;
    const auto names = namesIn(present);
    for (const auto& [recordName, counted] : classes)
        if (!names.contains(recordName))
            appendRecord(*counted.first, recordName, counted.second, style, bytes);
    return bytes;
}

} // namespace hostkit
