// Stand-in for the host's property sheets. Covers modal sheets of pages with tabs; leaves out wizards, modeless sheets and Apply.
#pragma once

#include "ccontrols.h"
#include "cdialog.h"

#include <memory>
#include <vector>

/// A page of a sheet, from a template with WS_CHILD. Its caption is the text of its tab.
class CPropertyPage : public CDialog {
public:
    explicit CPropertyPage(UINT templateId)
        : CDialog(templateId) {}

    /// The page is to be seen: the base fills its controls from the members.
    virtual BOOL OnSetActive();
    /// It is to be left: the base takes the values of its controls. FALSE: it stays.
    virtual BOOL OnKillActive();
    /// The sheet was accepted. FALSE: it stays, with this page.
    virtual BOOL OnApply();
    void OnOK() override {}
    void OnCancel() override {}
};

/// A dialog of pages, one of which is seen at a time, with Ok and Cancel below. The pages are the caller's
/// and are all made with the sheet, so that each has its controls from OnInitDialog on.
class CPropertySheet : public CDialog {
public:
    explicit CPropertySheet(const wchar_t* caption, CWnd* parent = nullptr, UINT selectPage = 0);

    /// Before DoModal.
    void AddPage(CPropertyPage* page);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    /// Null where there is none.
    CPropertyPage* GetPage(int index) const;
    int GetActiveIndex() const { return m_active; }
    CPropertyPage* GetActivePage() const { return GetPage(m_active); }
    /// FALSE where there is no such page, or the one that is seen does not let go.
    BOOL SetActivePage(int index);

protected:
    bool makeWindow(HWND owner) override;
    /// FALSE: the first control of the page has the focus.
    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;
    void OnCancel() override;

private:
    bool makePages(SIZE& largest);
    bool makeTabs();
    void placeTabs();
    bool makeButtons(POINT corner);

    CString m_caption;
    std::vector<CPropertyPage*> m_pages;
    std::vector<std::unique_ptr<CButton>> m_tabs;
    CButton m_okButton;
    CButton m_cancelButton;
    int m_active;
};
