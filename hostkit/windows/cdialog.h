// Stand-in for the host's dialog class. Covers modal and modeless dialogs from templates, dialogs within windows, default buttons and keys; leaves out help files.
#pragma once

#include "cwnd.h"
#include "dialogtemplate.h"

/// A dialog from a template of a module (hostkit::DialogTemplate), or, without one, a base for windows that
/// build themselves. Enter presses the default button, Escape is OnCancel, Tab goes round the controls, a
/// mnemonic presses its button. A template with WS_CHILD makes a dialog within its parent, at the corner of
/// its client area: MoveWindow puts it elsewhere. Tab, the mnemonics and Enter of the dialog around it reach
/// its controls too, and Enter and Escape are answered there.
class CDialog : public CWnd {
public:
    CDialog() = default;
    /// The template is looked up when the window is made. Without a parent the host's main window owns it.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    /// Makes the window, runs it and destroys it. The value of EndDialog; -1 when it cannot be made. Its
    /// owner is disabled meanwhile.
    virtual int DoModal();
    /// Modeless; stays until DestroyWindow.
    BOOL Create(UINT templateId, CWnd* parent = nullptr);
    void EndDialog(int result);
    UINT templateId() const { return m_templateId; }
    void GotoDlgCtrl(CWnd* control) { control->SetFocus(); }

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    /// The controls are there. The base fills them from the members. FALSE: the focus has been set.
    virtual BOOL OnInitDialog();
    /// Takes the values and ends with IDOK; ends with IDCANCEL.
    virtual void OnOK();
    virtual void OnCancel();
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

    /// Makes window and controls, and shows them; from the template. A class that builds itself overrides it.
    virtual bool makeWindow(HWND owner);
    /// Sends WM_INITDIALOG and shows the window; false where it is gone by then.
    bool startWindow();

    UINT m_templateId = 0;
    CWnd* m_parent = nullptr;

private:
    bool makeControls(const hostkit::DialogTemplate& description);
    BOOL translateKey(const MSG& message);
    void pressDefault();
    BOOL pressMnemonic(wchar_t character);

    bool m_isRunning = false;
};
