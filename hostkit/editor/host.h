// The application: putting the layers' parts together, opening and saving documents, running commands and
// what waits behind them; leaves out the user interface.
#pragma once

#include "acadstrc.h"
#include "accmd.h"
#include "acdocman.h"
#include "commandinput.h"
#include "deferredinput.h"
#include "drawingwriter.h"
#include "hostport.h"
#include "modulecommand.h"
#include "runtimeservices.h"
#include "systemvariables.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

class HostApplication;
class HostWindows;
class MenuGroups;
class SelectionSets;

/// How a command ended. The reason is a sentence for a person; empty where the status says it all.
struct CommandResult {
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring reason{};
};

/// A command that is running: its global name, what it reads, and how it fares.
struct RunningCommand {
    std::wstring globalName;
    CommandInput input;
    Adesk::Int32 flags = 0;
    CommandResult result{};
    int inputFlags = 0;         ///< of acedInitGet, for the next answer
    std::wstring keywords{};    ///< likewise
    std::wstring lastKeyword{}; ///< behind the last RTKWORD
};

/// The meter in the status bar.
struct StatusBarMeter {
    bool isShown = false;
    int minimum = 0;
    int maximum = 0;
};

/// Told of each command that the host runs, those that run within others too.
class CommandWatch {
public:
    virtual ~CommandWatch() = default;
    /// Before the command's function is called.
    virtual void starts(const AcEdCommand& command) = 0;
    /// When it has returned and its transactions are ended; the command may be gone from the stack.
    virtual void ended(const std::wstring& globalName) = 0;
};

/// A host, from its making to its end the current one: its port, run-time services, database services,
/// commands and documents are what the functions of the kit find. Hosts nest; the earlier one comes back when
/// the newer goes. At its end documents are closed first, without saving, then modules leave, while all the
/// rest still stands.
class Host {
public:
    /// The port outlives the host.
    explicit Host(HostPort& port);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Null when there is none.
    static Host* current();

    HostPort& port();
    RuntimeServices& runtime();
    AcEdCommandStack& commands();
    AcApDocManager& documents();

    SystemVariables& variables();
    DeferredInput& deferred();
    HostWindows& windows();
    HostApplication& application();
    MenuGroups& menuGroups();
    SelectionSets& selections();

    /// What acedSetStatusBarProgressMeter and its companions go by.
    StatusBarMeter& meter();

    /// Reads a drawing into a new document, which becomes the current one. Problems go to the port with file,
    /// line and reason. On failure nothing of it stays. No output of the run replaces the file, but for a
    /// saving that was told to (outputfiles.h). The meter shows how far it has come, unless one is
    /// shown already; so does it for a save.
    Acad::ErrorStatus openDocument(std::wstring_view file);
    /// A new empty drawing without a file.
    Acad::ErrorStatus newDocument();
    /// Writes the document in one step; problems go to the port. The document's own file name stays.
    Acad::ErrorStatus saveDocument(AcApDocument& document, std::wstring_view file,
                                   const WriteOptions& options = {});

    /// Runs the command that the first word of the line names; the other words are its answers. An empty line
    /// does nothing. eUnknownCommand when there is none of that name. What the command throws, or what stands
    /// around it where memory is short, ends it as a failure. Words that it did not ask for are told as a
    /// problem, and it counts as done.
    ///
    /// The current document is locked for it as its flags ask: for writing, reading, exclusively, or not at
    /// all. What the outermost command changes there is one step for undo. A transaction that a command
    /// leaves open is aborted, and the command fails with eTransactionOpenWhileCommandEnded.
    ///
    /// When the outermost command has returned, all that it queued runs (runDeferred); where the command
    /// itself went well, the result is then that of what was queued.
    CommandResult run(std::wstring_view line, MoreInput more = MoreInput::none);
    /// Whether a command has thrown since `run` was last called for an outermost one.
    bool hasThrown() const;
    /// Runs the commands of a line that a program gives: where the words behind a command are more than it
    /// reads, the next one is a command again. Stops at the first that fails.
    CommandResult runAll(std::wstring_view line);
    /// Takes what was queued and posted, in order, until nothing is left; new items come behind. Does nothing
    /// while a command runs or while it runs already. A failure stops nothing but its own line or expression:
    /// the first one is the result, with what failed in its reason, and the others are told as problems. The
    /// user's wish to stop drops the rest, and says so.
    CommandResult runDeferred(MoreInput more = MoreInput::none);
    /// For the end of a script: a line that was begun and never ended is told as a problem and forgotten.
    /// False when there was one.
    bool endInput();
    /// At most one; null for none. It outlives the commands that it is told of.
    void watchCommands(CommandWatch* watch);
    /// The innermost running command, or null.
    RunningCommand* runningCommand();
    /// Global names of the running commands, the outermost first.
    std::vector<std::wstring> runningNames() const;
    /// 0 when no command runs, 1 when one does, 3 with a transparent one within it.
    int runningState() const;

private:
    CommandResult runCommand(CommandInput& input);
    CommandResult runWholeLine(std::wstring_view line, MoreInput more);
    CommandResult runItem(DeferredItem item, MoreInput more);
    CommandResult runQueue(MoreInput more);
    CommandResult runText(DeferredItem item, MoreInput more);
    bool isRunningDeferred() const;
    void setRunningDeferred(bool isRunning);
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace hostkit
