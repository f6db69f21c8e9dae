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
        m_descriptor = open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (m_descriptor < 0) {
            m_error = errno;
            return;
        }
        for (int attempt = 0; flock(m_descriptor, LOCK_EX | LOCK_NB) != 0; ++attempt) {
            m_error = errno;
            if ((errno != EWOULDBLOCK && errno != EINTR) || attempt == lockAttempts) return;
            usleep(lockPause);
        }
        m_error = 0;
    }
    ~ChangeLock() {
        if (m_descriptor >= 0) close(m_descriptor);
    }
    ChangeLock(const ChangeLock&) = delete;
    ChangeLock& operator=(const ChangeLock&) = delete;

    int error() const { return m_error; }
    bool isBusy() const { return m_error == EWOULDBLOCK; }

private:
    int m_descriptor = -1;
    int m_error = 0;
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
    : m_path(std::move(path))
    , m_problems(std::move(problems))
    , m_tree(std::make_unique<RegistryTree>()) {}

FileRegistryStore::~FileRegistryStore() = default;

std::wstring FileRegistryStore::name() const { return pathFromSystem(m_path); }

// A fault that lasts is not told again at each access.
void FileRegistryStore::tell(const std::wstring& text) {
    if (text == m_lastTold) return;
    m_lastTold = text;
    if (m_problems) m_problems(text);
}

FileRegistryStore::Stamp FileRegistryStore::stampOfFile() const {
    struct stat status;
    if (stat(m_path.c_str(), &status) != 0) return {};
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
    if (stampOfFile() != m_stamp) load();
    return *m_tree;
}

void FileRegistryStore::load() {
    const Stamp stamp =
        stampOfFile(); // taken before the content, so that a change in between is seen next time
    const bool isNews = stamp != m_stamp;
    auto tree = std::make_unique<RegistryTree>();
    std::string content;
    m_state = State::good;
    if (!readWholeFile(m_path, content, largestFile)) {
        const int error = errno;
        if (error != ENOENT && error != ENOTDIR) {
            m_state = State::unreadable;
            if (isNews) tell(name() + L": the registry cannot be read: " + systemText(error));
        }
    }
    const std::vector<RegistryTextProblem> problems = readRegistryText(content, *tree);
    if (!problems.empty()) m_state = State::damaged;
    if (isNews) tellAll(problems);
    m_tree = std::move(tree);
    m_stamp = stamp;
}

bool FileRegistryStore::keepAside() {
    for (int number = 1; number < 10000; ++number) {
        const std::string aside = m_path + ".damaged-" + std::to_string(number);
        struct stat status;
        if (lstat(aside.c_str(), &status) == 0) {
            // Kept by an earlier change that could not be written in the end.
            if (status.st_dev == m_stamp.device && status.st_ino == m_stamp.inode) return true;
            continue;
        }
        // A second name for the same file: at no moment is there neither. Some file systems have no second
        // names.
        if (link(m_path.c_str(), aside.c_str()) != 0) {
            if (errno == EEXIST) continue;
            if (!copyFile(m_path, aside)) break;
        }
        tell(name() + L": the damaged file is kept as " + pathFromSystem(aside) +
             L"; what can be read of it stays in use");
        return true;
    }
    tell(name() + L": the damaged file cannot be kept aside, so nothing is changed: " + systemText(errno));
    return false;
}

LONG FileRegistryStore::apply(const RegistryChange& change) {
    const ChangeLock lock(m_path);
    if (lock.error() != 0) {
        tell(name() + L": the registry cannot be locked: " + systemText(lock.error()));
        return lock.isBusy() ? ERROR_LOCK_VIOLATION : statusOf(lock.error());
    }
    // The stamp may miss a change within one tick of the file system's clock; under the lock the content
    // counts.
    load();
    const LONG result = applyToTree(*m_tree, change);
    if (result != ERROR_SUCCESS) return result;
    const bool mayReplace = m_state == State::good || (m_state == State::damaged && keepAside());
    const LONG saved = mayReplace ? save(*m_tree) : ERROR_ACCESS_DENIED;
    if (saved == ERROR_SUCCESS)
        m_state = State::good;
    else
        load(); // the change is not to be seen
    return saved;
}

LONG FileRegistryStore::save(const RegistryTree& tree) {
    AtomicFile file(m_path);
    file.write(writeRegistryText(tree));
    if (!file.commit()) {
        const int error = file.error();
        tell(name() + L": the registry cannot be written: " + systemText(error));
        return statusOf(error);
    }
    m_stamp = stampOfFile();
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
