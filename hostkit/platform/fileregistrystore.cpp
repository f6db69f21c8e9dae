#include "fileregistrystore.h"

#include "atomicfile.h"
#include "registrytext.h"
#include "systempath.h"
#include "textencoding.h"
#include "winreg.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace hostkit {

namespace {

constexpr std::size_t largestFile = 256u << 20;
constexpr int lockAttempts = 3000; // thirty seconds
constexpr useconds_t lockPause = 10'000;
constexpr std::size_t mostProblemsTold = 20;

std::wstring systemText(int error) { return wideFromUtf8(std::strerror(error)); }

std::string directoryOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos) return ".";
    return separator == 0 ? "/" : path.substr(0, separator);
}

// The lock that all processes share: a file of its own beside the registry, since the registry itself is
// replaced at each change. It ends with its holder, however that ends.
class ChangeLock {
public:
    explicit ChangeLock(const std::string& path) {
        makeDirectories(directoryOf(path));
        descriptor_ = open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (descriptor_ < 0) {
            error_ = errno;
            return;
        }
        for (int attempt = 0; flock(descriptor_, LOCK_EX | LOCK_NB) != 0; ++attempt) {
            error_ = errno;
            if ((errno != EWOULDBLOCK && errno != EINTR) || attempt == lockAttempts) return;
            usleep(lockPause);
        }
        error_ = 0;
    }
    ~ChangeLock() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    ChangeLock(const ChangeLock&) = delete;
    ChangeLock& operator=(const ChangeLock&) = delete;

    int error() const { return error_; }
    bool isBusy() const { return error_ == EWOULDBLOCK; }

private:
    int descriptor_ = -1;
    int error_ = 0;
};

LONG statusOf(int error) {
    return error == EACCES || error == EPERM || error == EROFS ? ERROR_ACCESS_DENIED : ERROR_WRITE_FAULT;
}

bool copyFile(const std::string& from, const std::string& to) {
    std::string content;
    if (!readWholeFile(from, content)) return false;
    AtomicFile copy(to);
    copy.write(content);
    return copy.commit();
}

} // namespace

FileRegistryStore::FileRegistryStore(std::string path, ProblemSink problems)
    : path_(std::move(path))
    , problems_(std::move(problems))
    , tree_(std::make_unique<RegistryTree>()) {}

FileRegistryStore::~FileRegistryStore() = default;

std::wstring FileRegistryStore::name() const { return pathFromSystem(path_); }

// A fault that lasts is not told again at each access.
void FileRegistryStore::tell(const std::wstring& text) {
    if (text == lastTold_) return;
    lastTold_ = text;
    if (problems_) problems_(text);
}

FileRegistryStore::Stamp FileRegistryStore::stampOfFile() const {
    struct stat status;
    if (stat(path_.c_str(), &status) != 0) return {};
    const std::int64_t modified =
        std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
    return {true, status.st_dev, status.st_ino, status.st_size, modified};
}

void FileRegistryStore::tellAll(const std::vector<RegistryTextProblem>& problems) {
    const std::size_t told = std::min(problems.size(), mostProblemsTold);
    for (std::size_t i = 0; i < told; ++i)
        tell(name() + L":" + std::to_wstring(problems[i].line) + L": " + problems[i].reason);
    if (told < problems.size())
        tell(name() + L": " + std::to_wstring(problems.size() - told) + L" more lines cannot be read");
}

const RegistryTree& FileRegistryStore::read() {
    if (stampOfFile() != stamp_) load();
    return *tree_;
}

void FileRegistryStore::load() {
    const Stamp stamp =
        stampOfFile(); // taken before the content, so that a change in between is seen next time
    const bool isNews = stamp != stamp_;
    auto tree = std::make_unique<RegistryTree>();
    std::string content;
    state_ = State::good;
    if (!readWholeFile(path_, content, largestFile)) {
        const int error = errno;
        if (error != ENOENT && error != ENOTDIR) {
            state_ = State::unreadable;
            if (isNews) tell(name() + L": the registry cannot be read: " + systemText(error));
        }
    }
    const std::vector<RegistryTextProblem> problems = readRegistryText(content, *tree);
    if (!problems.empty()) state_ = State::damaged;
    if (isNews) tellAll(problems);
    tree_ = std::move(tree);
    stamp_ = stamp;
}

bool FileRegistryStore::keepAside() {
    for (int number = 1; number < 10000; ++number) {
        const std::string aside = path_ + ".damaged-" + std::to_string(number);
        struct stat status;
        if (lstat(aside.c_str(), &status) == 0) {
            // Kept by an earlier change that could not be written in the end.
            if (status.st_dev == stamp_.device && status.st_ino == stamp_.inode) return true;
            continue;
        }
        // A second name for the same file: at no moment is there neither. Some file systems have no second
        // names.
        if (link(path_.c_str(), aside.c_str()) != 0) {
            if (errno == EEXIST) continue;
            if (!copyFile(path_, aside)) break;
        }
        tell(name() + L": the damaged file is kept as " + pathFromSystem(aside) +
             L"; what can be read of it stays in use");
        return true;
    }
    tell(name() + L": the damaged file cannot be kept aside, so nothing is changed: " + systemText(errno));
    return false;
}

LONG FileRegistryStore::apply(const RegistryChange& change) {
    const ChangeLock lock(path_);
    if (lock.error() != 0) {
        tell(name() + L": the registry cannot be locked: " + systemText(lock.error()));
        return lock.isBusy() ? ERROR_LOCK_VIOLATION : statusOf(lock.error());
    }
    // The stamp may miss a change within one tick of the file system's clock; under the lock the content
    // counts.
    load();
    const LONG result = applyToTree(*tree_, change);
    if (result != ERROR_SUCCESS) return result;
    const bool mayReplace = state_ == State::good || (state_ == State::damaged && keepAside());
    const LONG saved = mayReplace ? save(*tree_) : ERROR_ACCESS_DENIED;
    if (saved == ERROR_SUCCESS)
        state_ = State::good;
    else
        load(); // the change is not to be seen
    return saved;
}

LONG FileRegistryStore::save(const RegistryTree& tree) {
    AtomicFile file(path_);
    file.write(writeRegistryText(tree));
    if (!file.commit()) {
        const int error = file.error();
        tell(name() + L": the registry cannot be written: " + systemText(error));
        return statusOf(error);
    }
    stamp_ = stampOfFile();
    return ERROR_SUCCESS;
}

std::optional<std::string> FileRegistryStore::defaultPath() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration && configuration[0] == '/')
        return std::string(configuration) + "/vexotools/registry.txt";
    const char* home = std::getenv("HOME");
    if (home && home[0] == '/') return std::string(home) + "/.config/vexotools/registry.txt";
    return std::nullopt;
}

std::unique_ptr<RegistryStore> openUserRegistry(const FileRegistryStore::ProblemSink& problems) {
    const auto path = FileRegistryStore::defaultPath();
    if (path && makeDirectories(directoryOf(*path)))
        return std::make_unique<FileRegistryStore>(*path, problems);
    const std::wstring place =
        path ? pathFromSystem(directoryOf(*path)) + L" cannot be made" : L"there is no home directory";
    if (problems) problems(L"The registry is kept in memory only: " + place + L".");
    return std::make_unique<MemoryRegistryStore>();
}

} // namespace hostkit
