// The host's own windows: the main window, the docked and the text command line and the drawing's view, and
// input that comes to them; leaves out what they show.
#pragma once

#include "cwnd.h"

namespace hostkit {

/// The windows of one host, made when they are first asked for and gone with the host. Input that comes to
/// them by messages is typed input: it waits in the host's DeferredInput.
class HostWindows {
public:
    /// Takes WM_COPYDATA: its bytes are wide text, up to a terminator or their end; the answer is TRUE then.
    CWnd* mainWindow();
    /// Each has one child that takes WM_CHAR, with carriage return and line feed for the end of a line.
    CWnd* dockedCommandLine();
    CWnd* textCommandLine();
    CWnd* drawingView();

private:
    class MainWindow final : public CWnd {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    };
    class InputLine final : public CWnd {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    };
    struct CommandLine {
        CWnd frame;
        InputLine line; ///< goes before its frame
    };
    CWnd* commandLine(CommandLine& made, const wchar_t* text, DWORD style);

    MainWindow m_main;
    CommandLine m_docked;
    CommandLine m_text;
    CWnd m_view;
};

} // namespace hostkit
