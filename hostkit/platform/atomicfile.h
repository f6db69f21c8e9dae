// Safe save: replacing a file in one step, with its permissions kept; leaves out backup copies.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

/// Writes a file so that at every moment, crash included, either the old content or the whole new one stands
/// under its name. The bytes go to a hidden temporary file in the same directory; commit() flushes them to
/// the disk and renames. An object that is not committed leaves nothing behind; what a process leaves that is
/// killed meanwhile is removed by whoever next writes the same file, and files that others are writing stay.
/// A symbolic link is followed: the file that it names is replaced. A pipe, a terminal or another device of
/// characters, and an open stream by its name (/dev/stdout, /dev/fd/5), take the bytes as they come.
class AtomicFile {
public:
    /// keep: a file that came to stand there meanwhile is left alone, and commit() fails with EEXIST.
    enum class Existing { replace, keep };

    /// path in the bytes of the file system (mapPath).
    explicit AtomicFile(std::string path, Existing existing = Existing::replace);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// False when the temporary file could not be made or an earlier write failed; errorText() says why.
    bool isGood() const { return m_error == 0; }
    /// Buffered. Does nothing after a failure, which commit() then tells.
    void write(std::string_view bytes);
    /// True when the new content stands. On false the old file is as it was and the temporary file is gone.
    [[nodiscard]] bool commit();
    /// The system's number for the failure (errno), 0 for none.
    int error() const { return m_error; }
    /// The system's text for the failure, in the bytes it comes in; empty when there is none.
    std::string errorText() const;

private:
    bool openTemporary();
    bool openStream();
    bool giveName();
    void flushBuffer();
    void takeOverPermissions();
    void fail();
    void drop();

    std::string m_path;
    std::string m_temporary;
    std::string m_buffer;
    Existing m_existing;
    bool m_isStream = false;
    int m_descriptor = -1;
    int m_error = 0;
};

/// What a symbolic link names in the end, also where that does not exist yet; any other path as it stands.
/// The name of an open stream is an end.
std::string targetOfLinks(std::string path);
/// The descriptor that the path is the name of (/dev/fd/5 and /proc/self/fd/5, not their links); -1 for
/// others.
int streamNumber(const std::string& path);

/// Reads a whole file. False, with content untouched and errno set, when it cannot be read or is larger than
/// limit bytes.
[[nodiscard]] bool readWholeFile(const std::string& path, std::string& content, std::size_t limit = SIZE_MAX);

/// Makes the directory and its parents. True when it stands.
bool makeDirectories(const std::string& path);

} // namespace hostkit
