// Stand-in for the host's safe save. Covers replacing a file in one step, with its permissions kept; leaves out backup copies.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

/// Writes a file so that at every moment, crash included, either the old content or the whole new one stands
/// under its name. The bytes go to a hidden temporary file in the same directory; commit() flushes them to
/// the disk and renames. An object that is not committed leaves nothing behind; what a process leaves that is
/// killed meanwhile is removed by whoever next writes the same file, and files that others are writing stay.
/// A symbolic link is followed: the file that it names is replaced.
class AtomicFile {
public:
    /// path in the bytes of the file system (mapPath).
    explicit AtomicFile(std::string path);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// False when the temporary file could not be made or an earlier write failed; errorText() says why.
    bool isGood() const { return error_ == 0; }
    /// Buffered. Does nothing after a failure, which commit() then tells.
    void write(std::string_view bytes);
    /// True when the new content stands. On false the old file is as it was and the temporary file is gone.
    [[nodiscard]] bool commit();
    /// The system's number for the failure (errno), 0 for none.
    int error() const { return error_; }
    /// The system's text for the failure, in the bytes it comes in; empty when there is none.
    std::string errorText() const;

private:
    bool openTemporary();
    void flushBuffer();
    void takeOverPermissions();
    void fail();
    void drop();

    std::string path_;
    std::string temporary_;
    std::string buffer_;
    int descriptor_ = -1;
    int error_ = 0;
};

/// Reads a whole file. False, with content untouched and errno set, when it cannot be read or is larger than
/// limit bytes.
[[nodiscard]] bool readWholeFile(const std::string& path, std::string& content, std::size_t limit = SIZE_MAX);

/// Makes the directory and its parents. True when it stands.
bool makeDirectories(const std::string& path);

} // namespace hostkit
