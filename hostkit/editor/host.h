// Stand-in for the host's application. Covers putting the layers' parts together, opening and saving documents, and running commands; leaves out system variables.
#pragma once

#include "acadstrc.h"
#include "accmd.h"
#include "acdocman.h"
#include "commandinput.h"
#include "drawingwriter.h"
#include "hostport.h"
#include "runtimeservices.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// How a command ended. The reason is a sentence for a person; empty where the status says it all.
struct CommandResult {
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring reason{};
};

/// A command that is running: its global name, what it reads, and how it fares.
struct RunningCommand {
    std::wstring globalName;
    CommandInput input;
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

    /// What acedSetStatusBarProgressMeter and its companions go by.
    StatusBarMeter& meter();

    /// Reads a drawing into a new document, which becomes the current one. Problems go to the port with file,
    /// line and reason. On failure nothing of it stays.
    Acad::ErrorStatus openDocument(std::wstring_view file);
    /// A new empty drawing without a file.
    Acad::ErrorStatus newDocument();
    /// Writes the document in one step; problems go to the port. The document's own file name stays.
    Acad::ErrorStatus saveDocument(AcApDocument& document, std::wstring_view file,
                                   const WriteOptions& options = {});

    /// Runs the command that the first word of the line names; the other words are its answers. An empty line
    /// does nothing. eUnknownCommand when there is none of that name. What the command throws ends it as a
    /// failure.
    ///
    /// The current document is locked for it as its flags ask: for writing, reading, exclusively, or not at
    /// all. What the outermost command changes there is one step for undo. A transaction that a command
    /// leaves open is aborted, and the command fails with eTransactionOpenWhileCommandEnded.
    CommandResult run(std::wstring_view line, MoreInput more = MoreInput::none);
    /// The innermost running command, or null.
    RunningCommand* runningCommand();
    /// Global names of the running commands, the outermost first.
    std::vector<std::wstring> runningNames() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// For a command that cannot do its work: it counts as failed, with that status and a sentence for the user.
/// The first call of a run counts. Does nothing when no command runs.
void failCommand(Acad::ErrorStatus status, std::wstring_view reason);

} // namespace hostkit
