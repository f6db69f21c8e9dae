#include "hostport.h"

#include "outputfiles.h"
#include "registrystore.h"
#include "textencoding.h"

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

void HostPort::flush() {}

Input HostPort::readLine(std::wstring_view, std::wstring&) { return Input::end; }

bool HostPort::interruptRequested() const { return false; }

void HostPort::meterStart(std::wstring_view, int, int) {}
void HostPort::meterStep(int) {}
void HostPort::meterStop() {}

bool HostPort::askWindow(const ShownWindow&, WindowAction&) { return false; }

std::optional<int> HostPort::systemMetric(int) const { return {}; }
ScreenSize HostPort::screenSize() const { return {}; }

bool HostPort::watchesDisplay() const { return false; }
void HostPort::displayChanged(const DisplayChange&) {}
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
    const auto found = m_environment.find(name);
    if (found != m_environment.end()) {
        value = found->second;
        return true;
    }
    const char* inherited = std::getenv(utf8FromWide(name).c_str());
    if (inherited) value = wideFromUtf8(inherited);
    return inherited != nullptr;
}

void HostPort::setEnvironment(std::wstring_view name, std::wstring_view value) {
    m_environment[std::wstring(name)] = value;
}

RegistryStore& HostPort::registry() {
    if (!m_registry) m_registry = std::make_unique<MemoryRegistryStore>();
    return *m_registry;
}

void HostPort::setRegistry(std::unique_ptr<RegistryStore> store) { m_registry = std::move(store); }

OutputFiles& HostPort::outputs() {
    if (!m_outputs) m_outputs = std::make_unique<OutputFiles>(*this);
    return *m_outputs;
}

std::string HostPort::driveRoot(wchar_t) const { return {}; }

HostPort* currentPort() {
    static HostPort headless;
    return setPort ? setPort : &headless;
}

ScopedPort::ScopedPort(HostPort& port)
    : m_previous(setPort) {
    setPort = &port;
}
ScopedPort::~ScopedPort() { setPort = m_previous; }

} // namespace hostkit
