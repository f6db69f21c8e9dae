#include "atomicfile.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace hostkit {

namespace {

constexpr std::size_t bufferSize = std::size_t{256} * 1024;

std::string directoryOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos) return ".";
    return separator == 0 ? "/" : path.substr(0, separator);
}

std::string nameOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

// The rename is on the disk only once its directory is.
void flushDirectory(const std::string& directory) {
    const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

// The start of the names of all temporary files for this path; the process and a number follow.
std::string temporaryPrefix(const std::string& path) { return '.' + nameOf(path) + ".new-"; }

bool lock(int descriptor, int operation) {
    int result;
    do result = flock(descriptor, operation);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

// Nothing where the system does not tell.
std::optional<bool> isStillNamed(int descriptor, const std::string& path) {
    struct stat held;
    struct stat named;
    if (fstat(descriptor, &held) != 0) return std::nullopt;
    return lstat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

// A process holds the lock of its temporary file for as long as the file has that name: who can have the lock
// sees what a process left behind that was ended while it wrote. No number of a process is asked, which
// another computer with the same directory may have given too.
void removeIfAbandoned(const std::string& temporary) {
    const int descriptor = open(temporary.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return;
    if (lock(descriptor, LOCK_EX | LOCK_NB) && isStillNamed(descriptor, temporary).value_or(false))
        unlink(temporary.c_str());
    close(descriptor);
}

void removeAbandonedTemporaries(const std::string& path) {
    const std::string directory = directoryOf(path);
    const std::string prefix = temporaryPrefix(path);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(directory.c_str()), closedir);
    while (const dirent* const entry = entries ? readdir(entries.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        const bool isTemporary =
            name.starts_with(prefix) &&
            name.find_first_not_of("0123456789-", prefix.size()) == std::string_view::npos;
        if (isTemporary) removeIfAbandoned(std::string(directory).append(1, '/').append(name));
    }
}

// Where the file system cannot refuse to replace a file, it is looked for first.
bool renameToFreeName(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno != EINVAL && errno != ENOSYS) return false;
    struct stat status;
    if (lstat(to.c_str(), &status) != 0) return rename(from.c_str(), to.c_str()) == 0;
    errno = EEXIST;
    return false;
}

} // namespace

int streamNumber(const std::string& path) {
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder)) continue;
        int number = -1;
        const char* const last = path.data() + path.size();
        const auto [end, error] = std::from_chars(path.data() + folder.size(), last, number);
        return error == std::errc() && end == last ? number : -1;
    }
    return -1;
}

std::string targetOfLinks(std::string path) {
    for (int depth = 0; depth < 40 && streamNumber(path) < 0; ++depth) {
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length <= 0) break;
        const std::string next(target, static_cast<std::size_t>(length));
        path = next[0] == '/' ? next : directoryOf(path).append(1, '/').append(next);
    }
    return path;
}

AtomicFile::AtomicFile(std::string path, Existing existing)
    : m_path(targetOfLinks(std::move(path)))
    , m_existing(existing) {
    if (openStream() || m_error) return;
    removeAbandonedTemporaries(m_path);
    if (openTemporary())
        takeOverPermissions();
    else
        fail();
}

AtomicFile::~AtomicFile() { drop(); }

// The name goes first: with the file the lock goes.
void AtomicFile::drop() {
    if (!m_temporary.empty()) unlink(m_temporary.c_str());
    m_temporary.clear();
    if (m_descriptor >= 0) close(m_descriptor);
    m_descriptor = -1;
}

// False, without a failure, for what is no stream.
bool AtomicFile::openStream() {
    const int number = streamNumber(m_path);
    struct stat status;
    const bool isDevice =
        stat(m_path.c_str(), &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode));
    if (number < 0 && !isDevice) return false;
    m_isStream = true;
    m_descriptor = number >= 0 ? fcntl(number, F_DUPFD_CLOEXEC, 0)
                               : open(m_path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (m_descriptor < 0) fail();
    return true;
}

bool AtomicFile::openTemporary() {
    const std::string start =
        directoryOf(m_path) + '/' + temporaryPrefix(m_path) + std::to_string(getpid()) + '-';
    for (int number = 0; number < 10000; ++number) {
        std::string name = start + std::to_string(number);
        m_descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_descriptor < 0 && errno == EEXIST) continue;
        if (m_descriptor < 0) return false;
        // Another may be faster with the lock, and removes the file. A file system without locks refuses all.
        const bool isRemoved = !lock(m_descriptor, LOCK_EX | LOCK_NB) && errno == EWOULDBLOCK;
        const std::optional<bool> isNamed = isRemoved ? false : isStillNamed(m_descriptor, name);
        if (isNamed.value_or(false)) {
            m_temporary = std::move(name); // nothing may fail between the file and its name here
            return true;
        }
        if (!isNamed) unlink(name.c_str()); // it was made here a moment ago
        close(m_descriptor);
        m_descriptor = -1;
        if (!isNamed) return false;
    }
    return false;
}

void AtomicFile::takeOverPermissions() {
    struct stat old;
    if (stat(m_path.c_str(), &old) != 0) return;
    // A directory or a device is never replaced by a file.
    if (!S_ISREG(old.st_mode)) {
        errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
        return fail();
    }
    // The owner first: giving a file away clears its special bits. Only root can, and others need not.
    if (fchown(m_descriptor, old.st_uid, old.st_gid) != 0) errno = 0;
    if (fchmod(m_descriptor, old.st_mode & 07777) != 0) fail();
}

void AtomicFile::fail() {
    if (m_error == 0) m_error = errno ? errno : EIO;
}

void AtomicFile::write(std::string_view bytes) {
    if (m_error) return;
    if (m_buffer.size() + bytes.size() > bufferSize) flushBuffer();
    m_buffer.append(bytes);
    if (m_buffer.size() >= bufferSize) flushBuffer();
}

void AtomicFile::flushBuffer() {
    for (std::size_t done = 0; done < m_buffer.size() && !m_error;) {
        const ssize_t written = ::write(m_descriptor, m_buffer.data() + done, m_buffer.size() - done);
        if (written > 0)
            done += static_cast<std::size_t>(written);
        else if (written < 0 && errno != EINTR)
            fail();
    }
    m_buffer.clear();
}

bool AtomicFile::giveName() {
    if (m_existing == Existing::keep) return renameToFreeName(m_temporary, m_path);
    return rename(m_temporary.c_str(), m_path.c_str()) == 0;
}

bool AtomicFile::commit() {
    const std::string directory = directoryOf(m_path); // while a shortage of memory can still stop the save
    if (m_descriptor < 0 && !m_error) m_error = EBADF;
    if (!m_error) flushBuffer();
    if (m_isStream) {
        drop();
        return m_error == 0;
    }
    if (!m_error && fsync(m_descriptor) != 0) fail();
    if (!m_error && !giveName()) fail();
    if (!m_error) m_temporary.clear();
    drop();
    if (m_error) return false;
    flushDirectory(directory);
    return true;
}

std::string AtomicFile::errorText() const { return m_error ? std::strerror(m_error) : std::string(); }

bool readWholeFile(const std::string& path, std::string& content, std::size_t limit) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    std::string bytes;
    int error = 0;
    struct stat status = {};
    // One byte more than the file has, so that its end is seen without growing.
    const bool hasSize = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
    const std::size_t firstSize =
        hasSize ? static_cast<std::size_t>(status.st_size) + 1 : std::size_t{64} * 1024;
    for (std::size_t used = 0;;) {
        if (used == bytes.size()) bytes.resize(used == 0 ? firstSize : used * 2);
        const ssize_t count = read(descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) error = errno;
        if (count > 0) used += static_cast<std::size_t>(count);
        if (used > limit) error = EFBIG;
        if (count > 0 && !error) continue;
        bytes.resize(used);
        break;
    }
    close(descriptor);
    errno = error;
    if (error == 0) content = std::move(bytes);
    return error == 0;
}

bool makeDirectories(const std::string& path) {
    if (path.empty()) return true;
    for (std::size_t at = path.find('/', 1);; at = path.find('/', at + 1)) {
        const std::string part = path.substr(0, at);
        if (mkdir(part.c_str(), 0777) != 0 && errno != EEXIST && errno != EISDIR && at == std::string::npos)
            return false;
        if (at == std::string::npos) break;
    }
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace hostkit
