#pragma once

#include "dbapserv.h"

class AcDbDatabase;

namespace vexo {

/// Null without a host, or when it has no working database.
inline AcDbDatabase* workingDatabase() {
    AcDbHostApplicationServices* const services = acdbHostApplicationServices();
    return services ? services->workingDatabase() : nullptr;
}
/// What a null database of a tool means.
inline AcDbDatabase* workingDatabaseOr(AcDbDatabase* database) {
    return database ? database : workingDatabase();
}

} // namespace vexo
