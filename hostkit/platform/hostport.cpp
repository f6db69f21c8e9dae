#include "hostport.h"

#include "registrystore.h"
#include "textencoding.h"
#include "windows.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace hostkit {

namespace {

HostPort* setPort = nullptr;

} // namespace

HostPort::HostPort() = default;
HostPort::~HostPort() = default;

void HostPort::print(std::wstring_view) {}

Input HostPort::readLine(std::wstring_view, std::wstring&) { return Input::end; }

bool HostPort::interruptRequested() const { return false; }

void HostPort::meterStart(std::wstring_view, int, int) {}
void HostPort::meterStep(int) {}
void HostPort::meterStop() {}

int HostPort::messageBox(std::wstring_view, std::wstring_view, unsigned flags) {
    return defaultButton(flags);
}

void HostPort::debugOutput(std::wstring_view) {}

void HostPort::reportProblem(std::wstring_view text) {
    const std::string line = utf8FromWide(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

std::int64_t HostPort::now() const {
    using namespace std::chrono;
    return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

std::int64_t HostPort::monotonicNanoseconds() const {
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}

bool HostPort::getEnvironment(std::wstring_view name, std::wstring& value) const {
    const auto found = environment_.find(name);
    if (found != environment_.end()) {
        value = found->second;
        return true;
    }
    const char* inherited = std::getenv(utf8FromWide(name).c_str());
    if (inherited) value = wideFromUtf8(inherited);
    return inherited != nullptr;
}

void HostPort::setEnvironment(std::wstring_view name, std::wstring_view value) {
    environment_[std::wstring(name)] = value;
}

RegistryStore& HostPort::registry() {
    if (!registry_) registry_ = std::make_unique<MemoryRegistryStore>();
    return *registry_;
}

void HostPort::setRegistry(std::unique_ptr<RegistryStore> store) { registry_ = std::move(store); }

std::string HostPort::driveRoot(wchar_t) const { return {}; }

HostPort* currentPort() {
    static HostPort headless;
    return setPort ? setPort : &headless;
}

ScopedPort::ScopedPort(HostPort& port)
    : previous_(setPort) {
    setPort = &port;
}
ScopedPort::~ScopedPort() { setPort = previous_; }

int defaultButton(unsigned flags) {
    static constexpr int buttons[6][3] = {
        {IDOK, 0, 0},     {IDOK, IDCANCEL, 0},    {IDABORT, IDRETRY, IDIGNORE}, {IDYES, IDNO, IDCANCEL},
        {IDYES, IDNO, 0}, {IDRETRY, IDCANCEL, 0},
    };
    const unsigned type = flags & MB_TYPEMASK;
    if (type > MB_RETRYCANCEL) return IDOK;
    const unsigned wanted = (flags & MB_DEFMASK) >> 8;
    const int button = wanted < 3 ? buttons[type][wanted] : 0;
    return button ? button : buttons[type][0];
}

} // namespace hostkit
