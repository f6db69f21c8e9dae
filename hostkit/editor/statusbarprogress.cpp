#include "statusbarprogress.h"

#include "aced.h"
#include "host.h"

namespace hostkit {

namespace {
constexpr int fullLength = 1000;
}

StatusBarProgress::StatusBarProgress(Host& host, std::wstring_view verb, std::wstring_view file)
    : m_isOurs(!host.meter().isShown) {
    if (!m_isOurs) return;
    const std::size_t separator = file.find_last_of(L"/\\");
    const std::wstring name(separator == std::wstring_view::npos ? file : file.substr(separator + 1));
    acedSetStatusBarProgressMeter((std::wstring(verb) + L" " + name).c_str(), 0, fullLength);
}

StatusBarProgress::~StatusBarProgress() {
    if (m_isOurs) acedRestoreStatusBar();
}

void StatusBarProgress::reach(double share) {
    if (m_isOurs) acedSetStatusBarProgressMeterPos(static_cast<int>(share * fullLength));
}

} // namespace hostkit
