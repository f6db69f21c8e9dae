// Stand-in for the host's message maps. Covers commands, notifications and the window messages that dialogs take; leaves out updating of menus.
#pragma once

#include "winuser.h"

class CWnd;

namespace hostkit {

/// Calls the member that a map names. False in `isHandled` hands the message on.
using MessageThunk = LRESULT (*)(CWnd& window, WPARAM wParam, LPARAM lParam, bool& isHandled);

} // namespace hostkit

struct AFX_MSGMAP_ENTRY {
    UINT message;
    UINT code; ///< of WM_COMMAND: the notification
    int firstId;
    int lastId;
    hostkit::MessageThunk thunk; ///< null ends the map
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*baseMap)(); ///< null for the root
    const AFX_MSGMAP_ENTRY* entries;
};

// The macros keep the framework's names. Handlers may be protected members: the map stands within the class.
// NOLINTBEGIN(cppcoreguidelines-macro-usage, bugprone-macro-parentheses)
#define afx_msg
#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP* GetThisMessageMap();                                                            \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); }                        \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                                        \
        using ThisClass = theClass;                                                                          \
        using TheBaseClass = baseClass;                                                                      \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    { 0, 0, 0, 0, nullptr }                                                                                  \
    }                                                                                                        \
    ;                                                                                                        \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                               \
    return &map;                                                                                             \
    }

#define HOSTKIT_ON_CONTROL(code, id, member)                                                                 \
    {WM_COMMAND, code, id, id, [](CWnd& window, WPARAM, LPARAM, bool&) -> LRESULT {                          \
         (static_cast<ThisClass&>(window).*(member))();                                                      \
         return 0;                                                                                           \
     }},
#define ON_CONTROL(code, id, member) HOSTKIT_ON_CONTROL(code, id, member)
#define ON_COMMAND(id, member) HOSTKIT_ON_CONTROL(0, id, member)
#define ON_BN_CLICKED(id, member) HOSTKIT_ON_CONTROL(BN_CLICKED, id, member)
#define ON_EN_CHANGE(id, member) HOSTKIT_ON_CONTROL(EN_CHANGE, id, member)
#define ON_LBN_SELCHANGE(id, member) HOSTKIT_ON_CONTROL(LBN_SELCHANGE, id, member)
#define ON_CLBN_CHKCHANGE(id, member) HOSTKIT_ON_CONTROL(CLBN_CHKCHANGE, id, member)
#define ON_CBN_SELCHANGE(id, member) HOSTKIT_ON_CONTROL(CBN_SELCHANGE, id, member)
#define ON_CBN_DROPDOWN(id, member) HOSTKIT_ON_CONTROL(CBN_DROPDOWN, id, member)
#define ON_CBN_CLOSEUP(id, member) HOSTKIT_ON_CONTROL(CBN_CLOSEUP, id, member)

#define HOSTKIT_ON_MESSAGE(number, call)                                                                     \
    {number, 0, 0, 0,                                                                                        \
     []([[maybe_unused]] CWnd& window, [[maybe_unused]] WPARAM wParam, [[maybe_unused]] LPARAM lParam,       \
        bool&) -> LRESULT { call }},
#define ON_WM_PAINT() HOSTKIT_ON_MESSAGE(WM_PAINT, static_cast<ThisClass&>(window).OnPaint(); return 0;)
#define ON_WM_CLOSE() HOSTKIT_ON_MESSAGE(WM_CLOSE, static_cast<ThisClass&>(window).OnClose(); return 0;)
#define ON_WM_DESTROY() HOSTKIT_ON_MESSAGE(WM_DESTROY, static_cast<ThisClass&>(window).OnDestroy(); return 0;)
#define ON_WM_HELPINFO()                                                                                     \
    HOSTKIT_ON_MESSAGE(                                                                                      \
        WM_HELP, return static_cast<ThisClass&>(window).OnHelpInfo(reinterpret_cast<HELPINFO*>(lParam));)
#define ON_WM_ERASEBKGND()                                                                                   \
    HOSTKIT_ON_MESSAGE(WM_ERASEBKGND, return static_cast<ThisClass&>(window).OnEraseBkgnd(                   \
                                          CDC::FromHandle(reinterpret_cast<HDC>(wParam)).get());)
#define ON_WM_SETCURSOR()                                                                                    \
    HOSTKIT_ON_MESSAGE(WM_SETCURSOR, return static_cast<ThisClass&>(window).OnSetCursor(                     \
                                         CWnd::FromHandle(reinterpret_cast<HWND>(wParam)),                   \
                                         LOWORD(static_cast<std::uintptr_t>(lParam)),                        \
                                         HIWORD(static_cast<std::uintptr_t>(lParam)));)
#define ON_MESSAGE(number, member)                                                                           \
    HOSTKIT_ON_MESSAGE(number, return (static_cast<ThisClass&>(window).*(member))(wParam, lParam);)
// NOLINTEND(cppcoreguidelines-macro-usage, bugprone-macro-parentheses)
