#include "modulewatch.h"

#include "builtincommands.h"
#include "modulefile.h"
#include "openobjects.h"
#include "textencoding.h"

namespace {

// More are counted.
constexpr std::size_t mostNamed = 10;

std::vector<hostkit::OpenObject> allOpen(hostkit::Host& host) {
    std::vector<hostkit::OpenObject> all;
    for (int i = 0; i < host.documents().documentCount(); ++i)
        for (hostkit::OpenObject& each : hostkit::openObjects(*host.documents().documentAt(i)->database()))
            all.push_back(std::move(each));
    return all;
}

} // namespace

ModuleWatch::ModuleWatch(hostkit::Host& host)
    : m_host(host) {
    m_host.watchCommands(this);
}

ModuleWatch::~ModuleWatch() { m_host.watchCommands(nullptr); }

void ModuleWatch::acceptWhatIsOpen() {
    m_known.clear();
    for (const hostkit::OpenObject& each : allOpen(m_host)) m_known.insert(each.id);
}

void ModuleWatch::starts(const AcEdCommand& command) {
    const bool isOfModule = !isOwnCommand(command);
    std::string who = "the command " + hostkit::utf8FromWide(command.globalName());
    if (isOfModule) who += " of " + hostkit::utf8FromWide(moduleFileOf(command.functionAddr()));
    m_running.push_back({std::make_unique<crashreport::Scope>(who), isOfModule});
}

// The host's own commands leave nothing open; those of modules are looked at when the outermost one ends.
void ModuleWatch::ended(const std::wstring& globalName) {
    const bool isOfModule = m_running.back().isOfModule;
    m_running.pop_back();
    if (m_running.empty() && isOfModule) tellLeftOpen(globalName);
}

void ModuleWatch::tellLeftOpen(const std::wstring& name) {
    std::unordered_set<AcDbObjectId> open;
    std::size_t count = 0;
    for (const hostkit::OpenObject& each : allOpen(m_host)) {
        open.insert(each.id);
        if (m_known.contains(each.id) || ++count > mostNamed) continue;
        m_host.port().reportProblem(name + L": it left " + each.name + L" open for " + each.mode);
    }
    if (count > mostNamed)
        m_host.port().reportProblem(name + L": it left " + std::to_wstring(count - mostNamed) +
                                    L" more objects open");
    m_known = std::move(open);
}
