#include "session.h"

#include "atomicfile.h"
#include "builtincommands.h"
#include "commandloop.h"
#include "consoleport.h"
#include "consolestate.h"
#include "dbdatabase.h"
#include "drawingcommands.h"
#include "exitcodes.h"
#include "fileregistrystore.h"
#include "host.h"
#include "installation.h"
#include "interrupt.h"
#include "librarylocation.h"
#include "modulewatch.h"
#include "outputfiles.h"
#include "registrytext.h"
#include "rescue.h"
#include "runrecord.h"
#include "saveforms.h"
#include "script.h"
#include "systempath.h"
#include "textencoding.h"
#include "timelimit.h"
#include "tracefile.h"

#include <exception>
#include <functional>
#include <new>
#include <optional>

namespace {

ConsoleState* g_state = nullptr;
constexpr unsigned french = 0x40C; // of France

std::wstring statusName(Acad::ErrorStatus status) { return acadErrorStatusText(status); }

class Session {
public:
    explicit Session(const Options& options)
        : m_options(options) {
        g_state = &m_state;
        m_state.savesAtEnd = options.output.has_value();
        m_state.keepsGoing = options.keepsGoing;
        if (!options.record) return;
        m_state.record = &m_record;
        m_port.recordProblemsIn(&m_record);
    }
    ~Session() { g_state = nullptr; }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    int run();

private:
    int openRegistry();
    int readAnswers();
    void protectInputs();
    int claimOutputs();
    int finishRecord(int code);
    int runTraced();
    int finishTrace(hostkit::TraceFile& trace, int code);
    int runRescued(hostkit::Host& host);
    int runInHost(hostkit::Host& host);
    int install();
    int loadModule(hostkit::Host& host, const std::wstring& file);
    int openDrawing(hostkit::Host& host);
    int runCommands(hostkit::Host& host);
    int save(hostkit::Host& host);
    CommandLoop loopOf(hostkit::Host& host) { return CommandLoop(host, m_port, m_options.isQuiet); }
    int fail(int code, const std::wstring& problem);
    void tell(const std::wstring& text);

    const Options& m_options;
    ConsolePort m_port;
    ConsoleState m_state;
    RunRecord m_record;
    ModuleWatch* m_watch = nullptr; ///< while a host runs
    hostkit::OutputFiles::Protection m_outputClaim = 0;
    hostkit::OutputFiles::Protection m_traceClaim = 0;
    hostkit::OutputFiles::Protection m_recordClaim = 0;
};

int Session::fail(int code, const std::wstring& problem) {
    m_port.reportProblem(L"vexohost: " + problem);
    return code;
}

void Session::tell(const std::wstring& text) {
    if (!m_options.isQuiet) m_port.print(text);
}

// Before anything is opened: what the run reads is not written over, by no command and no option.
void Session::protectInputs() {
    using Role = hostkit::OutputFiles::Role;
    hostkit::OutputFiles& outputs = m_port.outputs();
    outputs.replaceExisting(m_options.mayOverwrite);
    outputs.protect(L"/dev/stdin", Role::input, L"the standard input of this run");
    outputs.protect(L"/dev/stdout", Role::output, L"where standard output goes");
    outputs.protect(L"/dev/stderr", Role::output, L"where standard error goes");
    outputs.protect(m_options.library.value_or(libraryLocation()), Role::input, L"the library of this run");
    for (const std::wstring& module : m_options.modules)
        outputs.protect(module, Role::input, L"a module of this run");
    if (m_options.script) outputs.protect(*m_options.script, Role::input, L"the script of this run");
    if (m_options.answers)
        outputs.protect(*m_options.answers, Role::input, L"the file of answers of this run");
    if (!m_options.drawing.empty())
        outputs.protect(m_options.drawing, Role::drawing, L"the drawing that was opened");
}

// The registry is written at once where the library leaves settings in it; a file that is none is left alone.
int Session::openRegistry() {
    const auto problems = [this](const std::wstring& text) { m_port.reportProblem(text); };
    std::wstring file = m_options.registry.value_or(L"");
    if (file.empty()) m_port.getEnvironment(L"VEXO_REGISTRY", file);
    const bool isNamed = !file.empty();
    if (isNamed) {
        const std::wstring refusal = m_port.outputs().refusal({file, true});
        if (!refusal.empty()) return fail(exitcode::scriptUnreadable, refusal);
        std::string content;
        if (hostkit::readWholeFile(hostkit::mapPath(file), content) && !hostkit::isRegistryText(content))
            return fail(exitcode::scriptUnreadable,
                        file + L": this is no registry, none of its lines is one of a registry; it stays as "
                               L"it is, name another file");
        m_port.setRegistry(std::make_unique<hostkit::FileRegistryStore>(hostkit::mapPath(file), problems));
    } else {
        m_port.setRegistry(hostkit::openUserRegistry(problems));
        file = hostkit::pathFromSystem(hostkit::FileRegistryStore::defaultPath().value_or(""));
    }
    if (!file.empty())
        m_port.outputs().protect(file, hostkit::OutputFiles::Role::input, L"the registry of this run");
    return exitcode::ok;
}

// What the options name is looked at before the work, so that none is done in vain.
int Session::claimOutputs() {
    using hostkit::OutputFiles;
    OutputFiles& outputs = m_port.outputs();
    if (m_options.trace) {
        const std::wstring refusal =
            outputs.refusal({*m_options.trace}, OutputFiles::Kind::file, overwriteOption);
        if (!refusal.empty()) return fail(exitcode::notWritten, refusal);
        m_traceClaim =
            outputs.protect(*m_options.trace, OutputFiles::Role::output, L"the timeline of this run");
    }
    if (m_options.output) {
        const std::wstring refusal = outputs.refusal({*m_options.output, m_options.mayOverwrite},
                                                     OutputFiles::Kind::drawing, overwriteOption);
        if (!refusal.empty()) return fail(exitcode::notWritten, refusal);
        m_outputClaim =
            outputs.protect(*m_options.output, OutputFiles::Role::output, L"the file that --output saves to");
    }
    if (m_options.record) {
        const std::wstring refusal =
            outputs.refusal({*m_options.record}, OutputFiles::Kind::file, overwriteOption);
        if (!refusal.empty()) return fail(exitcode::notWritten, refusal);
        m_recordClaim =
            outputs.protect(*m_options.record, OutputFiles::Role::output, L"the record of this run");
    }
    return exitcode::ok;
}

// The form is a script's: comments, empty lines, one answer a line.
int Session::readAnswers() {
    if (!m_options.answers) return exitcode::ok;
    std::wstring reason;
    auto lines = readScript(*m_options.answers, reason);
    if (!lines) return fail(exitcode::scriptUnreadable, *m_options.answers + L": " + reason);
    m_port.boxes().setAnswers(*m_options.answers, std::move(*lines));
    return exitcode::ok;
}

// However the work ended, its record says so.
int Session::finishRecord(int code) {
    if (!m_options.record) return code;
    m_port.outputs().release(m_recordClaim);
    const std::wstring problem =
        m_port.outputs().write({*m_options.record}, m_record.json(m_options.drawing, code), overwriteOption);
    return problem.empty() ? code : fail(exitcode::notWritten, problem);
}

int Session::run() {
    protectInputs();
    if (const int code = openRegistry()) return code;
    if (const int code = readAnswers()) return code;
    if (const int code = claimOutputs()) return code;
    return finishRecord(runTraced());
}

int Session::runTraced() {
    std::optional<hostkit::TraceFile> trace;
    if (m_options.trace) {
        trace.emplace(hostkit::mapPath(*m_options.trace));
        if (!trace->isOpen())
            return fail(exitcode::notWritten, *m_options.trace + L": the timeline cannot be written");
    }
    int code = exitcode::ok;
    {
        std::optional<hostkit::Host> host(std::in_place, m_port);
        code = runRescued(*host);
        if (interrupt::isRequested() && code != exitcode::rescued && code != exitcode::notRescued)
            code = fail(exitcode::interrupted, L"stopped; nothing was saved");
        rescue::endDrawings();
        const crashreport::Scope scope("the closing of the drawing, or a module as it left,");
        host.reset();
    }
    if (const std::size_t unused = m_port.boxes().unusedAnswers())
        m_port.reportProblem(L"vexohost: " + *m_options.answers + L": no box asked for the last " +
                             std::to_wstring(unused) + L" of the answers");
    if (m_port.boxes().hasLostPicture() && code == exitcode::ok) code = exitcode::notWritten;
    m_port.flush();
    if (m_port.hasLostOutput() && code == exitcode::ok)
        code = fail(exitcode::notWritten, L"what was printed could not be written to standard output");
    return trace ? finishTrace(*trace, code) : code;
}

// A file that the run has read since the beginning, such as a menu, is not replaced either.
int Session::finishTrace(hostkit::TraceFile& trace, int code) {
    m_port.traceDisplayChanges();
    m_port.outputs().release(m_traceClaim);
    const std::wstring refusal =
        m_port.outputs().refusal({*m_options.trace}, hostkit::OutputFiles::Kind::file, overwriteOption);
    if (!refusal.empty()) {
        trace.discard();
        return fail(exitcode::notWritten, refusal);
    }
    if (!trace.close())
        return fail(exitcode::notWritten, *m_options.trace + L": the timeline could not be written");
    return code;
}

// What a command threw has ended it, and the drawing is whole; so is it where an exception came from
// elsewhere. Where nothing saves the drawing any more, the rescue does.
int Session::runRescued(hostkit::Host& host) {
    if (!m_options.isRescued) return runInHost(host);
    try {
        const int code = runInHost(host);
        if (timelimit::isOver()) return rescue::afterFailure(" took too long (--timeout)");
        if (code != exitcode::commandFailed || !m_state.hasThrown) return code;
        return rescue::afterFailure(" threw an exception");
    } catch (const std::bad_alloc&) {
        return rescue::afterFailure(" ran out of memory");
    } catch (const std::exception& fault) {
        return rescue::afterFailure(std::string(" threw an exception: ") + fault.what());
    } catch (...) {
        return rescue::afterFailure(" threw what is no exception");
    }
}

int Session::runInHost(hostkit::Host& host) {
    ModuleWatch watch(host);
    m_watch = &watch;
    if (m_options.installRoot) return install();
    registerBuiltinCommands(host.commands());
    if (const int code = loadModule(host, m_options.library.value_or(libraryLocation()))) return code;
    rescue::prepare();
    if (m_options.wantsCommandList && m_options.drawing.empty()) {
        for (const std::wstring& module : m_options.modules)
            if (const int code = loadModule(host, module)) return code;
        return loopOf(host).runLine(L"", L"COMMANDS", hostkit::MoreInput::none) ? exitcode::ok
                                                                                : exitcode::commandFailed;
    }
    if (const int code = openDrawing(host)) return code;
    if (interrupt::isRequested()) return exitcode::interrupted;
    for (const std::wstring& module : m_options.modules) {
        if (interrupt::isRequested()) return exitcode::interrupted;
        if (const int code = loadModule(host, module)) return code;
    }
    if (const int code = runCommands(host)) return code;
    if (interrupt::isRequested()) return exitcode::interrupted;
    return m_options.output ? save(host) : exitcode::ok;
}

int Session::install() {
    std::wstring problem;
    if (!writeInstallation(*m_options.installRoot, m_options.language.value_or(french), problem))
        return fail(exitcode::notWritten, problem);
    tell(L"Installed in " + *m_options.installRoot + L"\n");
    return exitcode::ok;
}

int Session::loadModule(hostkit::Host& host, const std::wstring& file) {
    const crashreport::Scope scope("the loading of " + hostkit::utf8FromWide(file));
    const Acad::ErrorStatus status = host.runtime().linker().loadModule(file.c_str());
    m_watch->acceptWhatIsOpen();
    // What the module queued as it was loaded runs now.
    if (status == Acad::eOk) {
        const hostkit::CommandResult queued = host.runDeferred();
        if (queued.status == Acad::eOk) return exitcode::ok;
        return fail(exitcode::commandFailed,
                    file + L": " + queued.reason + L" (" + statusName(queued.status) + L")");
    }
    return fail(exitcode::moduleNotLoaded,
                host.runtime().linker().lastProblem() + L" (" + statusName(status) + L")");
}

int Session::openDrawing(hostkit::Host& host) {
    const crashreport::Scope scope("the opening of " + hostkit::utf8FromWide(m_options.drawing));
    const Acad::ErrorStatus status =
        m_options.isNewDrawing ? host.newDocument() : host.openDocument(m_options.drawing);
    // The reader has told file, line and reason already.
    if (status != Acad::eOk)
        return fail(exitcode::drawingUnreadable, m_options.drawing + L": the drawing cannot be read" +
                                                     hintOfRecovery(status) + L" (" + statusName(status) +
                                                     L")");
    const auto source = host.documents().curDocument()->database()->source();
    rescue::expect(source ? source->bytes.size() : 0);
    return exitcode::ok;
}

int Session::runCommands(hostkit::Host& host) {
    if (m_options.wantsCommandList) return loopOf(host).runLines(L"--list-commands", {{0, L"COMMANDS"}});
    if (m_options.script) {
        std::wstring reason;
        const auto lines = readScript(*m_options.script, reason);
        if (!lines) return fail(exitcode::scriptUnreadable, *m_options.script + L": " + reason);
        return loopOf(host).runLines(*m_options.script, *lines);
    }
    if (m_options.commands.empty()) return loopOf(host).runPrompt();
    std::vector<ScriptLine> lines;
    for (const std::wstring& command : m_options.commands) lines.push_back({0, command});
    return loopOf(host).runLines(L"--command", lines);
}

int Session::save(hostkit::Host& host) {
    AcApDocument* document = host.documents().curDocument();
    if (!document) return fail(exitcode::notWritten, *m_options.output + L": no drawing is open");
    m_port.outputs().release(m_outputClaim);
    const std::wstring refusal = m_port.outputs().refusal(
        {*m_options.output, m_options.mayOverwrite}, hostkit::OutputFiles::Kind::drawing, overwriteOption);
    if (!refusal.empty()) return fail(exitcode::notWritten, refusal);
    m_port.flush();
    hostkit::WriteOptions writing;
    hostkit::FormChanges changes;
    writing.changes = &changes;
    for (const std::wstring& word : m_options.forms) (void)applyFormWord(word, writing);
    const crashreport::Scope scope("the saving of " + hostkit::utf8FromWide(*m_options.output));
    const Acad::ErrorStatus status = host.saveDocument(*document, *m_options.output, writing);
    if (status != Acad::eOk)
        return fail(exitcode::notWritten,
                    *m_options.output + L": the drawing could not be saved (" + statusName(status) + L")");
    if (hostkit::isStandardOutput(*m_options.output)) return exitcode::ok;
    if (!m_options.isQuiet) printFormChanges(changes);
    tell(L"Saved " + *m_options.output + L"\n");
    return exitcode::ok;
}

} // namespace

ConsoleState& consoleState() { return *g_state; }

int runSession(const Options& options) {
    Session session(options);
    return session.run();
}
