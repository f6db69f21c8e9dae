#include "atomicfile.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
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

// What a symbolic link names, also where that does not exist yet; the path itself for anything else.
std::string followLinks(std::string path) {
    for (int depth = 0; depth < 40; ++depth) {
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length <= 0) break;
        const std::string next(target, static_cast<std::size_t>(length));
        path = next[0] == '/' ? next : directoryOf(path).append(1, '/').append(next);
    }
    return path;
}

// The rename is on the disk only once its directory is.
void flushDirectory(const std::string& directory) {
    const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

std::string AtomicFile::temporaryPrefix(std::string_view fileName) {
    return '.' + std::string(fileName) + ".new-";
}

AtomicFile::AtomicFile(std::string path)
    : path_(followLinks(std::move(path))) {
    if (openTemporary())
        takeOverPermissions();
    else
        fail();
}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

bool AtomicFile::openTemporary() {
    const std::string start =
        directoryOf(path_) + '/' + temporaryPrefix(nameOf(path_)) + std::to_string(getpid()) + '-';
    for (int number = 0; number < 10000; ++number) {
        std::string name = start + std::to_string(number);
        descriptor_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ >= 0) {
            temporary_ = std::move(name); // nothing may fail between the file and its name here
            return true;
        }
        if (errno != EEXIST) return false;
    }
    return false;
}

void AtomicFile::takeOverPermissions() {
    struct stat old;
    if (stat(path_.c_str(), &old) != 0) return;
    // A directory or a device is never replaced by a file.
    if (!S_ISREG(old.st_mode)) {
        errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
        return fail();
    }
    // The owner first: giving a file away clears its special bits. Only root can, and others need not.
    if (fchown(descriptor_, old.st_uid, old.st_gid) != 0) errno = 0;
    if (fchmod(descriptor_, old.st_mode & 07777) != 0) fail();
}

void AtomicFile::fail() {
    if (error_ == 0) error_ = errno ? errno : EIO;
}

void AtomicFile::write(std::string_view bytes) {
    if (error_) return;
    if (buffer_.size() + bytes.size() > bufferSize) flushBuffer();
    buffer_.append(bytes);
    if (buffer_.size() >= bufferSize) flushBuffer();
}

void AtomicFile::flushBuffer() {
    for (std::size_t done = 0; done < buffer_.size() && !error_;) {
        const ssize_t written = ::write(descriptor_, buffer_.data() + done, buffer_.size() - done);
        if (written > 0)
            done += static_cast<std::size_t>(written);
        else if (written < 0 && errno != EINTR)
            fail();
    }
    buffer_.clear();
}

bool AtomicFile::commit() {
    const std::string directory = directoryOf(path_); // while a shortage of memory can still stop the save
    if (descriptor_ < 0 && !error_) error_ = EBADF;
    if (!error_) flushBuffer();
    if (!error_ && fsync(descriptor_) != 0) fail();
    if (descriptor_ >= 0 && close(descriptor_) != 0) fail();
    descriptor_ = -1;
    if (!error_ && rename(temporary_.c_str(), path_.c_str()) != 0) fail();
    if (error_) {
        if (!temporary_.empty()) unlink(temporary_.c_str());
        temporary_.clear();
        return false;
    }
    temporary_.clear();
    flushDirectory(directory);
    return true;
}

std::string AtomicFile::errorText() const { return error_ ? std::strerror(error_) : std::string(); }

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
