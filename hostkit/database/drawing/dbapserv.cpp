#include "dbapserv.h"

namespace {
AcDbHostApplicationServices* currentServices = nullptr;
}

AcDbHostApplicationServices* acdbHostApplicationServices() { return currentServices; }

namespace hostkit {

AcDbDatabase* orWorkingDatabase(AcDbDatabase* database) {
    return database || !currentServices ? database : currentServices->workingDatabase();
}

ScopedDatabaseServices::ScopedDatabaseServices(AcDbHostApplicationServices& services)
    : m_earlier(currentServices) {
    currentServices = &services;
}

ScopedDatabaseServices::~ScopedDatabaseServices() { currentServices = m_earlier; }

} // namespace hostkit
