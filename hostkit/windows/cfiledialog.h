// Stand-in for the host's file dialog. Covers opening and saving one file, filters, the default extension and their questions; leaves out several files at once and places.
#pragma once

#include "ccontrols.h"
#include "cdialog.h"

#include <string>
#include <vector>

inline constexpr DWORD OFN_OVERWRITEPROMPT = 0x2;
inline constexpr DWORD OFN_HIDEREADONLY = 0x4;
inline constexpr DWORD OFN_NOCHANGEDIR = 0x8;
inline constexpr DWORD OFN_PATHMUSTEXIST = 0x800;
inline constexpr DWORD OFN_FILEMUSTEXIST = 0x1000;

/// What a file dialog starts with; set before DoModal.
struct OPENFILENAMEW {
    const wchar_t* lpstrInitialDir = nullptr; ///< null: the current directory
    const wchar_t* lpstrTitle = nullptr;      ///< null: the dialog's own
    DWORD Flags = 0;
};

/// Asks for a file to open or to save. The user writes a name, which stands below the folder shown, or a
/// whole path; the name of a folder goes there. A file of the list is taken over into the field. Accepting
/// makes the file's folder the current directory, unless OFN_NOCHANGEDIR. The texts are French.
class CFileDialog : public CDialog {
public:
    enum { listId = 0x460, nameId = 0x480 };

    /// The filter is "text|pattern;pattern|...||"; the first pair counts. The extension, with or without its
    /// point, is put behind a name that has none.
    explicit CFileDialog(BOOL opens, const wchar_t* extension = nullptr, const wchar_t* fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                         const wchar_t* filter = nullptr, CWnd* parent = nullptr);

    /// As it was accepted; empty before. With its folder; without; without its ending; the ending alone.
    CString GetPathName() const { return m_path; }
    CString GetFileName() const;
    CString GetFileTitle() const;
    CString GetFileExt() const;

    OPENFILENAMEW m_ofn;

protected:
    bool makeWindow(HWND owner) override;
    BOOL OnInitDialog() override;
    /// With OFN_FILEMUSTEXIST a file to open has to be there. A folder to save in has to be there and to be
    /// writable, and so has the file; what the run reads or keeps is refused; with OFN_OVERWRITEPROMPT the
    /// user is asked before a file is replaced. The dialog says so and stays.
    void OnOK() override;
    void OnSelectFile();
    DECLARE_MESSAGE_MAP()

private:
    bool makeControls();
    void showFolder(const std::wstring& folder);
    std::wstring wantedPath() const;
    bool maySave(const std::wstring& path);
    bool mayOpen(const std::wstring& path);
    bool refuse(const std::wstring& reason);

    bool m_opens;
    std::wstring m_extension;
    std::vector<std::wstring> m_patterns;
    CString m_name;
    CString m_path;
    std::wstring m_folder;
    CStatic m_folderLabel;
    CStatic m_nameLabel;
    CListBox m_list;
    CEdit m_edit;
    CButton m_okButton;
    CButton m_cancelButton;
};
