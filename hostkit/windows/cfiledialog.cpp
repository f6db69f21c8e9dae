#include "cfiledialog.h"

#include "afxwin.h"
#include "casefold.h"
#include "hostport.h"
#include "outputfiles.h"
#include "systembox.h"
#include "systempath.h"

#include <climits>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr LONG margin = 8;
constexpr LONG width = 360;
constexpr LONG lineHeight = 16;
constexpr LONG editHeight = 21;
constexpr LONG listHeight = 134;
constexpr LONG labelWidth = 100;
constexpr LONG buttonWidth = 88;
constexpr LONG buttonHeight = 24;
constexpr int labelId = 0xFFFF;

std::vector<std::wstring> patternsOf(const wchar_t* filter) {
    std::vector<std::wstring> patterns;
    const CString text(filter);
    int start = text.Find(L'|');
    if (start < 0) return {L"*"};
    const CString list = text.Mid(start + 1).SpanExcluding(L"|");
    start = 0;
    for (CString each = list.Tokenize(L"; ", start); start != -1; each = list.Tokenize(L"; ", start))
        patterns.emplace_back(each.view());
    return patterns.empty() ? std::vector<std::wstring>{L"*"} : patterns;
}

bool isWhole(std::wstring_view path) {
    const bool hasDrive = path.size() > 1 && path[1] == L':';
    return hasDrive || (!path.empty() && (path[0] == L'/' || path[0] == L'\\'));
}

bool isFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool isThere(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool isWritable(const std::wstring& path) { return access(hostkit::platformPath(path).c_str(), W_OK) == 0; }

std::wstring folderOf(const std::wstring& path) {
    return path.substr(0, path.size() - hostkit::fileNameOfPath(path).size());
}

// Without "." and ".." and links, as far as it is there.
std::wstring cleanFolder(const std::wstring& folder) {
    char resolved[PATH_MAX];
    return realpath(hostkit::platformPath(folder).c_str(), resolved) ? hostkit::pathFromSystem(resolved)
                                                                     : folder;
}

bool matchesAny(const std::vector<std::wstring>& patterns, const CString& name) {
    for (const std::wstring& each : patterns)
        if (each == L"*.*" || hostkit::matchesWildcard(each, name.view())) return true;
    return false;
}

} // namespace

BEGIN_MESSAGE_MAP(CFileDialog, CDialog)
ON_LBN_SELCHANGE(listId, &CFileDialog::OnSelectFile)
END_MESSAGE_MAP()

CFileDialog::CFileDialog(BOOL opens, const wchar_t* extension, const wchar_t* fileName, DWORD flags,
                         const wchar_t* filter, CWnd* parent)
    : CDialog(0, parent)
    , m_opens(opens != FALSE)
    , m_extension(CString(extension).TrimLeft(L'.').view())
    , m_patterns(patternsOf(filter))
    , m_name(fileName) {
    m_ofn.Flags = flags;
}

CString CFileDialog::GetFileName() const { return CString(hostkit::fileNameOfPath(m_path.view())); }

CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const int point = name.ReverseFind(L'.');
    return point > 0 ? name.Left(point) : name;
}

CString CFileDialog::GetFileExt() const {
    const CString name = GetFileName();
    const int point = name.ReverseFind(L'.');
    return point > 0 ? name.Mid(point + 1) : CString();
}

bool CFileDialog::makeWindow(HWND owner) {
    constexpr DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    constexpr LONG height = lineHeight + listHeight + editHeight + buttonHeight + 4 * margin;
    CRect window(0, 0, width, height);
    AdjustWindowRectEx(window, style, FALSE, 0);
    const wchar_t* const caption = m_ofn.lpstrTitle ? m_ofn.lpstrTitle
                                   : m_opens        ? L"Ouvrir"
                                                    : L"Enregistrer sous";
    if (!CreateEx(WS_EX_CONTROLPARENT, L"#32770", caption, style, 0, 0, window.Width(), window.Height(),
                  owner, 0))
        return false;
    if (!makeControls()) {
        DestroyWindow();
        return false;
    }
    CenterWindow();
    return startWindow();
}

bool CFileDialog::makeControls() {
    const CRect line(margin, margin, width - margin, margin + lineHeight);
    const CRect list(margin, line.bottom, line.right, line.bottom + listHeight);
    const CRect label(margin, list.bottom + margin + 3, margin + labelWidth,
                      list.bottom + margin + editHeight);
    const CRect edit(label.right, list.bottom + margin, line.right, label.bottom);
    const CRect cancel(line.right - buttonWidth, edit.bottom + margin, line.right,
                       edit.bottom + margin + buttonHeight);
    const CRect accept(cancel.left - margin - buttonWidth, cancel.top, cancel.left - margin, cancel.bottom);
    constexpr DWORD field = WS_VISIBLE | WS_BORDER | WS_TABSTOP;
    constexpr DWORD button = WS_VISIBLE | WS_TABSTOP;
    return m_folderLabel.Create(L"", WS_VISIBLE | SS_NOPREFIX, line, this, labelId) &&
           m_nameLabel.Create(L"No&m du fichier :", WS_VISIBLE, label, this, labelId) &&
           m_edit.Create(field | ES_AUTOHSCROLL, edit, this, nameId) &&
           m_list.Create(field | LBS_NOTIFY, list, this, listId) &&
           m_okButton.Create(m_opens ? L"&Ouvrir" : L"&Enregistrer", button | BS_DEFPUSHBUTTON, accept, this,
                             IDOK) &&
           m_cancelButton.Create(hostkit::textOfButton(IDCANCEL), button, cancel, this, IDCANCEL);
}

BOOL CFileDialog::OnInitDialog() {
    CString start(m_ofn.lpstrInitialDir);
    showFolder(start.IsEmpty() ? L"." : std::wstring(start.view()));
    m_edit.SetWindowTextW(m_name);
    return CDialog::OnInitDialog();
}

void CFileDialog::showFolder(const std::wstring& folder) {
    m_folder = cleanFolder(folder);
    m_folderLabel.SetWindowTextW((L"Dans : " + std::wstring(hostkit::fileNameOfPath(m_folder))).c_str());
    m_list.ResetContent();
    std::vector<CString> files;
    CFileFind finder;
    BOOL isMore = finder.FindFile((m_folder + L"\\*").c_str());
    while (isMore) {
        isMore = finder.FindNextFileW();
        if (finder.IsDots() || finder.IsHidden()) continue;
        if (finder.IsDirectory())
            m_list.AddString(finder.GetFileName() + L"\\");
        else if (matchesAny(m_patterns, finder.GetFileName()))
            files.push_back(finder.GetFileName());
    }
    for (const CString& each : files) m_list.AddString(each);
}

void CFileDialog::OnSelectFile() {
    CString name;
    m_list.GetText(m_list.GetCurSel(), name);
    m_edit.SetWindowTextW(name);
}

std::wstring CFileDialog::wantedPath() const {
    CString text;
    m_edit.GetWindowTextW(text);
    text.Trim();
    if (text.IsEmpty()) return {};
    const std::wstring name(text.view());
    return isWhole(name) ? name : m_folder + L"\\" + name;
}

bool CFileDialog::refuse(const std::wstring& reason) {
    CString caption;
    GetWindowTextW(caption);
    MessageBoxW(reason.c_str(), caption, MB_OK | MB_ICONEXCLAMATION);
    m_edit.SetFocus();
    return false;
}

bool CFileDialog::mayOpen(const std::wstring& path) {
    if (!(m_ofn.Flags & OFN_FILEMUSTEXIST) || isThere(path)) return true;
    return refuse(path + L"\nCe fichier est introuvable.");
}

bool CFileDialog::maySave(const std::wstring& path) {
    const std::wstring folder = folderOf(path);
    const bool replaces = isThere(path);
    if (!isFolder(folder)) return refuse(folder + L"\nCe dossier est introuvable.");
    if (!isWritable(replaces ? path : folder))
        return refuse(path + L"\nVous n'avez pas le droit d'écrire ce fichier.");
    const std::wstring refusal = hostkit::currentPort()->outputs().refusal({path, true});
    if (!refusal.empty()) return refuse(refusal);
    if (!replaces || !(m_ofn.Flags & OFN_OVERWRITEPROMPT)) return true;
    CString caption;
    GetWindowTextW(caption);
    const std::wstring question =
        std::wstring(hostkit::fileNameOfPath(path)) + L" existe déjà.\nVoulez-vous le remplacer ?";
    return MessageBoxW(question.c_str(), caption, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
}

void CFileDialog::OnOK() {
    std::wstring path = wantedPath();
    if (path.empty()) return;
    if (isFolder(path)) {
        showFolder(path);
        m_edit.SetWindowTextW(L"");
        return;
    }
    const bool hasExtension = hostkit::fileNameOfPath(path).find(L'.') != std::wstring_view::npos;
    if (!hasExtension && !m_extension.empty()) path += L"." + m_extension;
    if (!(m_opens ? mayOpen(path) : maySave(path))) return;
    m_path = CString(std::wstring_view(path));
    if (!(m_ofn.Flags & OFN_NOCHANGEDIR)) SetCurrentDirectoryW(folderOf(path).c_str());
    EndDialog(IDOK);
}
