#include "testhost.h"

#include "actrans.h"
#include "applicationobject.h"
#include "openobjects.h"
#include "selectionsets.h"
#include "tlhelp32.h"

#include <algorithm>

namespace hostkit {

namespace {

void tellOpenObjects(const AcDbDatabase& database, const std::wstring& name,
                     std::vector<std::wstring>& problems) {
    for (const OpenObject& each : openObjects(database))
        problems.push_back(name + L": " + each.name + L" is open for " + each.mode);
}

} // namespace

TestHost::TestHost()
    : m_host(m_port)
    , m_openSnapshots(openSnapshotCount()) {
    (void)m_host.newDocument();
}

TestHost::~TestHost() = default;

void TestHost::watch(AcDbDatabase& database) { m_watched.push_back({&database, database.undoRecording()}); }

void TestHost::forget(AcDbDatabase& database) {
    std::erase_if(m_watched, [&](const Watched& each) { return each.database == &database; });
}

void TestHost::lookAt(AcDbDatabase& database, bool wasRecording, const std::wstring& name,
                      std::vector<std::wstring>& problems) const {
    tellOpenObjects(database, name, problems);
    if (const int count = database.transactionManager()->numActiveTransactions(); count > 0)
        problems.push_back(name + L": " + std::to_wstring(count) + L" transactions were not ended");
    if (database.undoRecording() != wasRecording)
        problems.push_back(name + L": undo recording was left " + (wasRecording ? L"off" : L"on"));
}

std::vector<std::wstring> TestHost::leftovers() {
    std::vector<std::wstring> problems;
    AcApDocManager& documents = m_host.documents();
    for (int i = 0; i < documents.documentCount(); ++i) {
        const AcApDocument& document = *documents.documentAt(i);
        const std::wstring name = L"document " + std::to_wstring(i + 1);
        lookAt(*document.database(), true, name, problems);
        if (document.lockMode(true) != AcAp::kNotLocked) problems.push_back(name + L" is locked");
        if (const int count = document.undoMarkCount(); count > 0)
            problems.push_back(name + L": " + std::to_wstring(count) + L" undo marks were not ended");
    }
    for (const Watched& each : m_watched)
        lookAt(*each.database, each.wasRecording, L"watched drawing", problems);
    for (const std::wstring& command : m_host.runningNames())
        problems.push_back(L"the command " + command + L" still runs");
    if (const int count = m_host.application().referencesHeld(); count != 0)
        problems.push_back(std::to_wstring(count) + L" interfaces of the application were not released");
    if (const std::size_t count = m_host.selections().count(); count > 0)
        problems.push_back(std::to_wstring(count) + L" selection sets were not freed");
    if (const int count = openSnapshotCount() - m_openSnapshots; count != 0)
        problems.push_back(std::to_wstring(count) + L" snapshots of the system were not closed");
    return problems;
}

} // namespace hostkit
