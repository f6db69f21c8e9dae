// Registry on disk: one readable text file, shared by processes; leaves out a cache between them.
#pragma once

#include "registrystore.h"
#include "registrytext.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>

namespace hostkit {

/// A registry in a text file (the form is told in registrytext.h). Every change is written before it is
/// answered: under a lock shared by all processes (the file's name with ".lock"), the file is read again, the
/// one change made, and the whole replaced in one step. A crash leaves the old state or the new one, and no
/// process undoes another's change.
///
/// A damaged file is told to the problem sink once, line by line, and what can be read of it is used. Reading
/// changes nothing; at the first change the file is kept aside, whole, as NAME.damaged-1 (-2, ...), and the
/// readable rest goes on under the old name. Where it cannot be kept aside every change is refused.
class FileRegistryStore final : public RegistryStore {
public:
    using ProblemSink = std::function<void(const std::wstring&)>;

    /// path in the bytes of the file system. The file and its directory are made at the first change.
    FileRegistryStore(std::string path, ProblemSink problems);
    ~FileRegistryStore() override;

    const RegistryTree& read() override;
    bool isLasting() const override { return true; }
    /// Besides the reasons of a tree: ERROR_ACCESS_DENIED or ERROR_WRITE_FAULT when the file cannot be
    /// replaced (told to the sink once), ERROR_LOCK_VIOLATION when another process holds the lock for more
    /// than thirty seconds.
    LONG apply(const RegistryChange& change) override;

    const std::string& path() const { return m_path; }
    /// $XDG_CONFIG_HOME/vexotools/registry.txt, or the same below $HOME/.config; nothing without either.
    static std::optional<std::string> defaultPath();

private:
    struct Stamp {
        bool exists = false;
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        std::int64_t modified = 0; // nanoseconds
        bool operator==(const Stamp&) const = default;
    };
    enum class State {
        good,       // the tree is what the file says
        damaged,    // the file holds lines that could not be read
        unreadable, // the file is there and its content could not be had
    };

    Stamp stampOfFile() const;
    void load();
    bool keepAside();
    LONG save(const RegistryTree& tree);
    void tell(const std::wstring& text);
    void tellAll(const std::vector<RegistryTextProblem>& problems);
    std::wstring name() const;

    std::string m_path;
    ProblemSink m_problems;
    std::unique_ptr<RegistryTree> m_tree;
    Stamp m_stamp;
    State m_state = State::good;
    std::wstring m_lastTold;
};

/// The registry of the user who runs the process: the file at the default path, or, where there is no home
/// directory to hold it, one in memory, which the sink is told.
std::unique_ptr<RegistryStore> openUserRegistry(const FileRegistryStore::ProblemSink& problems);

} // namespace hostkit
