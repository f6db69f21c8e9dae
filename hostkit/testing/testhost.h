// Session of a test: a fresh host with a scripted user and an empty drawing, and what a test left behind;
// leaves out loading modules, which is the host's own.
#pragma once

#include "dbdatabase.h"
#include "host.h"
#include "scriptedport.h"

#include <string>
#include <vector>

namespace hostkit {

/// A host of its own with one new drawing as the current document. Whatever a test does in it, nothing of it
/// leaks into the next.
class TestHost {
public:
    TestHost();
    ~TestHost();
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    /// What was shown, and what will be answered.
    ScriptedPort& port() { return m_port; }
    Host& host() { return m_host; }
    /// The current document and its drawing; there is one unless the test has closed it.
    AcApDocument& document() { return *m_host.documents().curDocument(); }
    AcDbDatabase& database() { return *document().database(); }

    /// A drawing of no document is looked at too, from now on until forget(). It is expected to record undo,
    /// or not, as it does now.
    void watch(AcDbDatabase& database);
    void forget(AcDbDatabase& database);

    /// A sentence for each thing that was left behind: an object that is open, with its class and handle; a
    /// document that is locked; a transaction that was not ended; undo recording that is not as it was (a
    /// document's is on) or an undo mark that was not ended; a command that still runs; a selection set that
    /// was not freed; an interface of the application that was not released, a snapshot of the system that
    /// was not closed. Empty after a clean test.
    std::vector<std::wstring> leftovers();

private:
    struct Watched {
        AcDbDatabase* database;
        bool wasRecording;
    };
    void lookAt(AcDbDatabase& database, bool wasRecording, const std::wstring& name,
                std::vector<std::wstring>& problems) const;

    ScriptedPort m_port;
    Host m_host;
    int m_openSnapshots; ///< when the session began
    std::vector<Watched> m_watched;
};

} // namespace hostkit
