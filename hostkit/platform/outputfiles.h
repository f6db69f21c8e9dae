// Files that a run writes, and the question before one is replaced: what a run reads, writes and finds there
// already, by what a file is; leaves out locks between programs. written over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

class HostPort;

/// A file to write, as the user named it.
struct OutputFile {
    std::wstring name{};
    bool mayReplace = false; ///< the user said of this very file that what stands there is replaced
};

/// What the user does to have a file replaced, for the message of a refusal.
inline constexpr std::wstring_view overwriteWord = L"OVERWRITE behind its name replaces it";

/// Knows the files of one run and says which of them an output may not take. Files are compared by what they
/// are, not by spelling: symbolic and hard links, "./" and ".." lead to the same file; one that is not there
/// yet is known by its folder and name. Pipes, devices and the names of open streams (/dev/stdout) hold
/// nothing that could be lost and are never refused, unless the stream is a file that the run reads.
class OutputFiles {
public:
    /// input: nothing is ever written there. drawing: a saving that was told to (mayReplace) alone.
    /// output: something else comes there in this run.
    enum class Role { input, drawing, output };
    enum class Kind { file, drawing };
    using Protection = std::size_t;

    /// The port is sent on what it holds back before something goes to its stream; it outlives this.
    explicit OutputFiles(HostPort& port)
        : m_port(port) {}

    /// From now on the file is refused as its role asks, with "this is <what>". It need not be there yet.
    Protection protect(std::wstring_view file, Role role, std::wstring what);
    void release(Protection protection);
    /// Files that stood there before the run may be replaced without mayReplace. Those that the run itself
    /// has written, and those that are protected, may not.
    void replaceExisting(bool may) { m_mayReplaceExisting = may; }

    /// "file: reason", as a sentence that a user can act on, where nothing may be written; else empty.
    std::wstring refusal(const OutputFile& file, Kind kind = Kind::file,
                         std::wstring_view howToReplace = overwriteWord) const;
    /// True where mayReplace alone is missing.
    bool asksForReplacing(const std::wstring& name) const;
    /// Writes the file in one step, where it is not refused. "file: reason" on failure, and what stood there
    /// is as it was; else empty.
    [[nodiscard]] std::wstring write(const OutputFile& file, std::string_view bytes,
                                     std::wstring_view howToReplace = overwriteWord);
    /// For what was written by other ways behind a refusal() that was empty.
    void noteWritten(std::wstring_view file);

private:
    struct Known {
        std::string path;   // absolute, links followed
        std::string folder; // its real path
        std::string name;   // in the folder
        Role role = Role::input;
        std::wstring what{};
        bool isActive = true;
    };
    static Known locate(std::wstring_view file);
    static bool isSame(const Known& one, const Known& other);
    const Known* findProtection(const Known& file, bool isStream) const;
    bool isWrittenAlready(const Known& file) const;

    HostPort& m_port;
    std::vector<Known> m_protected;
    std::vector<Known> m_written;
    bool m_mayReplaceExisting = false;
};

/// True for a name of the stream that the command line is printed to; what else is printed there would stand
/// in the midst of the file.
bool isStandardOutput(std::wstring_view file);

} // namespace hostkit
