#include "host.h"

#include "aced.h"
#include "actrans.h"
#include "applicationobject.h"
#include "caughtresult.h"
#include "classadoption.h"
#include "commandscope.h"
#include "completedimensions.h"
#include "dbapserv.h"
#include "dbmain.h"
#include "drawingreader.h"
#include "drawingwriter.h"
#include "hostwindows.h"
#include "menucommands.h"
#include "menugroup.h"
#include "outputfiles.h"
#include "selectionsets.h"
#include "spacecommands.h"
#include "statusbarprogress.h"
#include "textencoding.h"

#include <exception>
#include <new>

namespace hostkit {
namespace {

Host* g_current = nullptr;

CommandResult resultWithReason() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return {Acad::eOutOfMemory, L"there is not enough memory"};
    } catch (const std::exception& fault) {
        return {Acad::eCommandFailed, wideFromUtf8(fault.what())};
    } catch (...) {
        return {Acad::eCommandFailed, L"the command threw what is no exception"};
    }
}

// A command among those that run.
class Running {
public:
    Running(std::vector<RunningCommand*>& all, RunningCommand& command)
        : m_all(all) {
        m_all.push_back(&command);
    }
    ~Running() { m_all.pop_back(); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    std::vector<RunningCommand*>& m_all;
};

} // namespace

CommandResult resultOfException() noexcept {
    try {
        return resultWithReason();
    } catch (const std::bad_alloc&) {
        return {Acad::eOutOfMemory};
    }
}

struct Host::Parts {
    Parts(Host& host, HostPort& hostPort)
        : port(hostPort)
        , portScope(hostPort)
        , runtime(std::make_unique<RuntimeServices>())
        , runtimeScope(*runtime)
        , databaseScope(databaseServices)
        , application(host) {}

    HostPort& port;
    ScopedPort portScope;
    AcEdCommandStack commands;
    std::unique_ptr<RuntimeServices> runtime;
    ScopedRuntimeServices runtimeScope;
    AcDbHostApplicationServices databaseServices;
    ScopedDatabaseServices databaseScope;
    AcApDocManager documents;
    std::vector<RunningCommand*> running;
    CommandWatch* watch = nullptr;
    StatusBarMeter meter;
    SystemVariables variables;
    DeferredInput deferred;
    bool isRunningDeferred = false;
    bool hasThrown = false;
    HostWindows windows;
    MenuGroups menuGroups;
    SelectionSets selections;
    HostApplication application;
    Host* earlier = nullptr;
};

Host::Host(HostPort& port)
    : m_parts(std::make_unique<Parts>(*this, port)) {
    m_parts->runtime->systemRegistry().atPut(L"ACAD_REGISTERED_COMMANDS", &m_parts->commands);
    m_parts->runtime->linker().setAfterLoading([this] {
        for (int i = 0; i < documents().documentCount(); ++i)
            adoptApplicationClasses(*documents().documentAt(i)->database());
    });
    registerSpaceCommands(m_parts->commands);
    registerMenuCommands(m_parts->commands);
    m_parts->earlier = g_current;
    g_current = this;
}

Host::~Host() {
    // Objects of a module's classes go before the code of the classes does; a module that leaves finds its
    // host.
    m_parts->documents.closeAll();
    m_parts->runtime.reset();
    g_current = m_parts->earlier;
}

Host* Host::current() { return g_current; }
HostPort& Host::port() { return m_parts->port; }
RuntimeServices& Host::runtime() { return *m_parts->runtime; }
AcEdCommandStack& Host::commands() { return m_parts->commands; }
AcApDocManager& Host::documents() { return m_parts->documents; }
SystemVariables& Host::variables() { return m_parts->variables; }
DeferredInput& Host::deferred() { return m_parts->deferred; }
HostWindows& Host::windows() { return m_parts->windows; }
HostApplication& Host::application() { return m_parts->application; }
MenuGroups& Host::menuGroups() { return m_parts->menuGroups; }
SelectionSets& Host::selections() { return m_parts->selections; }
StatusBarMeter& Host::meter() { return m_parts->meter; }

Acad::ErrorStatus Host::openDocument(std::wstring_view file) {
    ReadReport report;
    m_parts->port.outputs().protect(file, OutputFiles::Role::drawing, L"the drawing that was opened");
    StatusBarProgress progress(*this, L"Opening", file);
    ReadOptions options;
    options.progress = &progress;
    std::unique_ptr<AcDbDatabase> database = openDrawing(file, &report, options);
    if (!database) return report.status == Acad::eOk ? Acad::eOutOfMemory : report.status;
    m_parts->documents.adopt(std::move(database), std::wstring(file));
    return Acad::eOk;
}

Acad::ErrorStatus Host::newDocument() {
    m_parts->documents.adopt(std::make_unique<AcDbDatabase>(true, false), L"");
    return Acad::eOk;
}

Acad::ErrorStatus Host::saveDocument(AcApDocument& document, std::wstring_view file,
                                     const WriteOptions& options) {
    StatusBarProgress progress(*this, L"Saving", file);
    WriteOptions withProgress = options;
    if (!withProgress.progress) withProgress.progress = &progress;
    completeDimensions(*document.database());
    return writeDrawing(*document.database(), file, withProgress);
}

// Leaves what the command did not read in the input.
CommandResult Host::runCommand(CommandInput& input) {
    std::wstring name;
    if (!input.nextWord(name)) return {};
    if (input.isUnclosed()) return {Acad::eInvalidInput, unclosedMark(name)};
    const AcEdCommand* command = m_parts->commands.lookupTyped(name.c_str());
    if (!command) return {Acad::eUnknownCommand, L"there is no command \"" + name + L"\""};

    // The command may take itself out of the stack, so nothing of it is used once it runs.
    const AcRxFunctionPtr function = command->functionAddr();
    RunningCommand running{command->globalName(), std::move(input), command->commandFlags()};
    CommandScope scope(m_parts->documents, *command);
    CommandWatch* const watch = m_parts->watch;
    CommandResult thrown;
    {
        const Running among(m_parts->running, running);
        thrown = caught([&]() -> CommandResult {
            if (watch) watch->starts(*command);
            function();
            return {};
        });
    }
    const bool hasThrown = thrown.status != Acad::eOk;
    m_parts->hasThrown = m_parts->hasThrown || hasThrown;
    if (running.result.status == Acad::eOk) running.result = std::move(thrown);
    input = std::move(running.input);
    const bool hasAborted = scope.abortTransactions();
    if (hasThrown) scope.closeObjects();
    if (hasAborted && running.result.status == Acad::eOk)
        running.result = {Acad::eTransactionOpenWhileCommandEnded,
                          L"it left a transaction open; what was done in it is taken back"};
    if (watch) watch->ended(running.globalName);
    return running.result;
}

CommandResult Host::runWholeLine(std::wstring_view line, MoreInput more) {
    return caught([&] {
        CommandInput input(line, more);
        CommandInput words(line, MoreInput::none);
        std::wstring name;
        words.nextWord(name);
        CommandResult result = runCommand(input);
        if (result.status == Acad::eOk && !input.rest().empty() && !port().interruptRequested())
            port().reportProblem(name + L": \"" + std::wstring(input.rest()) + L"\" was not asked for");
        return result;
    });
}

CommandResult Host::run(std::wstring_view line, MoreInput more) {
    if (m_parts->running.empty()) m_parts->hasThrown = false;
    CommandResult result = runWholeLine(line, more);
    CommandResult queued = runDeferred(more);
    return std::move(result.status == Acad::eOk ? queued : result);
}

CommandResult Host::runAll(std::wstring_view line) {
    return caught([&]() -> CommandResult {
        CommandInput input(line, MoreInput::none);
        while (!input.rest().empty()) {
            CommandResult result = runCommand(input);
            if (result.status != Acad::eOk) return result;
        }
        return {};
    });
}

void Host::watchCommands(CommandWatch* watch) { m_parts->watch = watch; }

RunningCommand* Host::runningCommand() {
    return m_parts->running.empty() ? nullptr : m_parts->running.back();
}

std::vector<std::wstring> Host::runningNames() const {
    std::vector<std::wstring> names;
    for (const RunningCommand* each : m_parts->running) names.push_back(each->globalName);
    return names;
}

bool Host::hasThrown() const { return m_parts->hasThrown; }

int Host::runningState() const {
    int state = m_parts->running.empty() ? 0 : 1;
    for (std::size_t i = 1; i < m_parts->running.size(); ++i)
        if (m_parts->running[i]->flags & ACRX_CMD_TRANSPARENT) state = 3;
    return state;
}

bool Host::isRunningDeferred() const { return m_parts->isRunningDeferred; }
void Host::setRunningDeferred(bool isRunning) { m_parts->isRunningDeferred = isRunning; }

} // namespace hostkit

AcEdCommandStack* acedCommandStackOfHost() {
    hostkit::Host* host = hostkit::Host::current();
    return host ? &host->commands() : nullptr;
}

AcApDocManager* acDocManagerPtr() {
    hostkit::Host* host = hostkit::Host::current();
    return host ? &host->documents() : nullptr;
}
