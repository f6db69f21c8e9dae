#include "givenrecords.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbsource.h"

namespace hostkit {

bool takeGiven(AcDbDatabase& database) {
    const std::shared_ptr<const DrawingSource> source = database.source();
    if (!source || source->given.empty() || source->version <= AcDb::kDHL_1009) return false;
    auto whole = std::make_shared<DrawingSource>(*source);
    for (const auto& [handle, record] : source->given)
        if (AcDbObject* const object = DatabaseAccess::object(DatabaseAccess::find(database, handle)))
            DatabaseAccess::markChanged(*object);
    whole->given.clear();
    DatabaseAccess::setSource(database, whole, database.originalFileName());
    return true;
}

} // namespace hostkit
