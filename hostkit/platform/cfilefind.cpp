#include "cfilefind.h"

#include "casefold.h"
#include "systempath.h"
#include "winbase.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isDots(std::wstring_view name) { return name == L"." || name == L".."; }

} // namespace

bool CFileFind::appendEntry(const std::string& directory, const std::string& name) {
    const std::string path = directory + name;
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return false;
    DWORD attributes = S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    if (access(path.c_str(), W_OK) != 0) attributes |= FILE_ATTRIBUTE_READONLY;
    const std::wstring wide = hostkit::pathFromSystem(name);
    if (wide.size() > 1 && wide[0] == L'.' && !isDots(wide)) attributes |= FILE_ATTRIBUTE_HIDDEN;
    const ULONGLONG length = S_ISDIR(status.st_mode) ? 0 : static_cast<ULONGLONG>(status.st_size);
    m_entries.push_back({wide, attributes, length, status.st_mtim.tv_sec});
    return true;
}

BOOL CFileFind::FindFile(const wchar_t* pattern, DWORD) {
    Close();
    const std::wstring_view whole =
        pattern && *pattern ? std::wstring_view(pattern) : std::wstring_view(L"*");
    std::wstring_view name = hostkit::fileNameOfPath(whole);
    std::wstring_view directory = whole.substr(0, whole.size() - name.size());
    // Without a separator, a drive letter is the directory.
    if (directory.empty() && name.size() >= 2 && name[1] == L':') {
        directory = name.substr(0, 2);
        name.remove_prefix(2);
    }
    std::string place = hostkit::platformPath(directory.empty() ? L"." : directory);
    if (!place.empty() && place.back() != '/') place += '/';
    m_directory = CString(directory);
    m_directory.TrimRight(L"\\/");

    if (name.find_first_of(L"*?") == std::wstring_view::npos)
        return !name.empty() && appendEntry(place, hostkit::mapPath(name)) ? TRUE : FALSE;
    if (name == L"*.*") name = L"*";
    DIR* entries = opendir(place.c_str());
    if (!entries) return FALSE;
    while (const dirent* entry = readdir(entries))
        if (hostkit::matchesWildcard(name, hostkit::pathFromSystem(entry->d_name)))
            appendEntry(place, entry->d_name);
    closedir(entries);
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) {
        if (isDots(a.name) != isDots(b.name)) return isDots(a.name);
        const int order = hostkit::compareFolded(a.name, b.name);
        return order != 0 ? order < 0 : a.name < b.name;
    });
    return m_entries.empty() ? FALSE : TRUE;
}

BOOL CFileFind::FindNextFile() {
    if (m_next >= m_entries.size()) return FALSE;
    ++m_next;
    return m_next < m_entries.size() ? TRUE : FALSE;
}

void CFileFind::Close() {
    m_directory.Empty();
    m_entries.clear();
    m_next = 0;
}

const CFileFind::Entry* CFileFind::current() const { return m_next == 0 ? nullptr : &m_entries[m_next - 1]; }

CString CFileFind::GetFileName() const {
    return current() ? CString(std::wstring_view(current()->name)) : CString();
}

CString CFileFind::GetFilePath() const {
    if (!current()) return {};
    if (m_directory.IsEmpty()) return GetFileName();
    return m_directory + L"\\" + GetFileName();
}

CString CFileFind::GetFileTitle() const {
    const CString name = GetFileName();
    const int point = name.ReverseFind(L'.');
    return point > 0 ? name.Left(point) : name;
}

ULONGLONG CFileFind::GetLength() const { return current() ? current()->length : 0; }
std::int64_t CFileFind::GetLastWriteSeconds() const { return current() ? current()->written : 0; }
BOOL CFileFind::MatchesMask(DWORD mask) const {
    return current() && (current()->attributes & mask) ? TRUE : FALSE;
}
BOOL CFileFind::IsDots() const { return current() && isDots(current()->name) ? TRUE : FALSE; }
BOOL CFileFind::IsDirectory() const { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
BOOL CFileFind::IsReadOnly() const { return MatchesMask(FILE_ATTRIBUTE_READONLY); }
BOOL CFileFind::IsHidden() const { return MatchesMask(FILE_ATTRIBUTE_HIDDEN); }
