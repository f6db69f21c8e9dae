// Stand-in for the host's application services. Covers the working database; leaves out progress, fonts, file search and passwords.
#pragma once

class AcDbDatabase;

/// One host's database side.
class AcDbHostApplicationServices {
public:
    AcDbHostApplicationServices() = default;
    virtual ~AcDbHostApplicationServices() = default;
    AcDbHostApplicationServices(const AcDbHostApplicationServices&) = delete;
    AcDbHostApplicationServices& operator=(const AcDbHostApplicationServices&) = delete;

    /// The drawing that a null database argument stands for; null when there is none. Not owned.
    AcDbDatabase* workingDatabase() const { return m_workingDatabase; }
    void setWorkingDatabase(AcDbDatabase* database) { m_workingDatabase = database; }

private:
    AcDbDatabase* m_workingDatabase = nullptr;
};

/// The current host's services; null when there is no host.
AcDbHostApplicationServices* acdbHostApplicationServices();

namespace hostkit {

/// The database, or the host's working database for null; null when there is neither.
AcDbDatabase* orWorkingDatabase(AcDbDatabase* database);

/// Makes services the current ones for a scope; the earlier ones come back at its end. A drawing that goes
/// while it is the working one of the current services is forgotten by them.
class ScopedDatabaseServices {
public:
    explicit ScopedDatabaseServices(AcDbHostApplicationServices& services);
    ~ScopedDatabaseServices();
    ScopedDatabaseServices(const ScopedDatabaseServices&) = delete;
    ScopedDatabaseServices& operator=(const ScopedDatabaseServices&) = delete;

private:
    AcDbHostApplicationServices* m_earlier;
};

} // namespace hostkit
