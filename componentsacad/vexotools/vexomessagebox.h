#pragma once

#include "afxwin.h"

#include <vector>

/// The library's own message box: it bears the application's caption and icon, breaks its text into lines and
/// sizes itself. One or two buttons, by the style's platform value:
///
///   0  "&Ok"                gives 1, however it ends
///   1  "&Ok", "A&nnuler"    gives 1 or 2
///   4  "&Oui", "&Non"       gives 6 or 7
///
/// Any other style counts as 1. Enter takes the button with the focus, Escape and closing the window the
/// second one. Sizes are in pixels.
class VEXOMessageBox : public CDialog {
public:
    /// Text and caption are prompts. With captionId 0 the caption is the product's name; with a captionId and
    /// a null captionProject, that text of this module; with both, that text of that project. An unknown id
    /// gives an empty text. The icon is this module's, or the platform's own of that number; 0 is none. The
    /// owner is the given window or, with none, the host's main window. The side icon stays the caller's.
    VEXOMessageBox(unsigned int textId, const wchar_t* project, unsigned int captionId,
                   const wchar_t* captionProject, unsigned int iconId, CWnd* owner, HICON sideIcon);
    /// With texts of the caller's own; an empty caption stays empty.
    VEXOMessageBox(CString text, CString caption, unsigned int iconId, CWnd* owner);

    /// Before the window is made.
    void SetStyle(unsigned long style);

    /// Disables the owner, makes the window unless it stands, and waits for the user; then the owner is as it
    /// was and the window gone. The result as tabled; -1 when the window could not be made, or was closed by
    /// other means than its buttons and keys.
    int DoModal() override;
    /// Makes the window and its buttons, and shows it; 1, or 0 when one of them could not be made.
    virtual int CreateControls();

    void OnPaint();
    int OnEraseBkgnd(CDC* dc);
    void OnOK() override;
    void OnCancel() override;
    void OnClose();
    int PreTranslateMessage(MSG* message) override;

    DECLARE_MESSAGE_MAP()

private:
    struct ButtonPlaces {
        CRect first;
        CRect second;
    };
    CSize iconArea() const;
    CString brokenText(CDC& dc, int widest) const;
    CSize clientSize(CSize text) const;
    void resize(CSize client);
    ButtonPlaces buttonPlaces() const;
    bool createButtons();
    void end(int result);
    bool hasTwoButtons() const { return m_style != 0; }

    CButton m_firstButton;
    CButton m_secondButton;
    HICON m_sideIcon = nullptr;
    HWND m_owner = nullptr;
    CString m_text;
    CString m_caption;
    CString m_firstText;
    CString m_secondText;
    HICON m_titleIcon = nullptr;
    int m_result = -1;
    unsigned long m_style = 0;
    CString m_shownText; ///< broken into lines
};
