#include "hostport.h"

#include "desktop.h"
#include "outputfiles.h"
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

void HostPort::flush() {}

Input HostPort::readLine(std::wstring_view, std::wstring&) { return Input::end; }

bool HostPort::interruptRequested() const { return false; }

void HostPort::meterStart(std::wstring_view, int, int) {}
void HostPort::meterStep(int) {}
void HostPort::meterStop() {}

int HostPort::messageBox(std::wstring_view, std::wstring_view, unsigned flags) {
    return refusingButton(flags);
}

WindowAction HostPort::askWindow(const ShownWindow&) { return WindowAction::refuse(); }

int HostPort::systemMetric(int number) const {
    static constexpr int metrics[][2] = {
        {SM_CXSCREEN, 1920},  {SM_CYSCREEN, 1080},  {SM_CYCAPTION, 19}, {SM_CXBORDER, 1},  {SM_CYBORDER, 1},
        {SM_CXFIXEDFRAME, 3}, {SM_CYFIXEDFRAME, 3}, {SM_CXICON, 32},    {SM_CYICON, 32},   {SM_CXSIZE, 18},
        {SM_CYSIZE, 18},      {SM_CXEDGE, 2},       {SM_CYEDGE, 2},     {SM_CXSMICON, 16}, {SM_CYSMICON, 16},
    };
    for (const auto& each : metrics)
        if (each[0] == number) return each[1];
    return 0;
}

Desktop& HostPort::desktop() {
    if (!desktop_) desktop_ = std::make_unique<Desktop>();
    return *desktop_;
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

OutputFiles& HostPort::outputs() {
    if (!outputs_) outputs_ = std::make_unique<OutputFiles>(*this);
    return *outputs_;
}

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

const int* buttonsOfBox(unsigned flags) {
    static constexpr int buttons[6][4] = {
        {IDOK},        {IDOK, IDCANCEL},    {IDABORT, IDRETRY, IDIGNORE}, {IDYES, IDNO, IDCANCEL},
        {IDYES, IDNO}, {IDRETRY, IDCANCEL},
    };
    const unsigned type = flags & MB_TYPEMASK;
    return buttons[type > MB_RETRYCANCEL ? MB_OK : type];
}

int defaultButton(unsigned flags) {
    const int* const buttons = buttonsOfBox(flags);
    unsigned count = 0;
    while (buttons[count]) ++count;
    const unsigned wanted = (flags & MB_DEFMASK) >> 8;
    return buttons[wanted < count ? wanted : 0];
}

int refusingButton(unsigned flags) {
    const int* const buttons = buttonsOfBox(flags);
    for (const int wanted : {IDCANCEL, IDNO, IDABORT})
        for (const int* each = buttons; *each; ++each)
            if (*each == wanted) return wanted;
    return buttons[0];
}

} // namespace hostkit
