// A window that waits for its user.
#include "cwnd.h"

#include "desktop.h"
#include "hostport.h"
#include "windows.h"

namespace {

using hostkit::Desktop;

class ModalScope {
public:
    ModalScope(Desktop& desktop, HWND window)
        : m_desktop(desktop) {
        m_desktop.pushModal(window);
    }
    ~ModalScope() { m_desktop.popModal(); }
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

private:
    Desktop& m_desktop;
};

std::wstring nameOf(HWND window) {
    const CWnd* object = CWnd::FromHandle(window);
    CString caption;
    if (object) object->GetWindowTextW(caption);
    return caption.IsEmpty() ? L"a box" : L"the box \"" + std::wstring(caption.view()) + L"\"";
}

// The window itself first, then what stands around it.
bool isTranslated(MSG& message) {
    for (HWND at = message.hwnd; at;
         at = GetWindowLongW(at, GWL_STYLE) & WS_CHILD ? GetParent(at) : nullptr) {
        CWnd* object = CWnd::FromHandlePermanent(at);
        if (object && object->PreTranslateMessage(&message)) return true;
    }
    return false;
}

} // namespace

int CWnd::RunModalLoop(DWORD) {
    Desktop& desktop = Desktop::current();
    hostkit::HostPort& port = *hostkit::currentPort();
    const HWND window = m_hWnd;
    if (!desktop.find(window)) return -1;
    if (!::GetParent(window)) port.reportProblem(nameOf(window) + L" has no owner; it stands alone");
    const ModalScope scope(desktop, window);
    m_isModal = true;
    m_modalResult = -1;
    int refusals = 0;
    while (m_isModal && desktop.find(window)) {
        MSG message;
        if (desktop.take(message)) {
            if (!isTranslated(message)) desktop.dispatch(message);
            continue;
        }
        if (refusals == 2) {
            port.reportProblem(nameOf(window) + L" stayed when it was refused; it is closed");
            EndModalLoop(IDCANCEL);
            break;
        }
        hostkit::WindowAction action;
        if (!port.askWindow(desktop.show(window), action)) action = hostkit::WindowAction::refuse();
        refusals = action.kind == hostkit::WindowAction::Kind::refuse ? refusals + 1 : 0;
        std::wstring reason;
        if (!desktop.perform(window, action, reason)) port.reportProblem(nameOf(window) + L": " + reason);
    }
    m_isModal = false;
    return m_modalResult;
}

void CWnd::EndModalLoop(int result) {
    m_modalResult = result;
    m_isModal = false;
}
