// Stand-in for the host's file finder. Covers wildcard search in one directory with attributes; leaves out short names and times of access.
#pragma once

#include "cstring.h"
#include "windowstypes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Finds the entries of one directory. The name behind the last separator may hold '*' and '?'; "*.*" means
/// all. With wildcards the letter case is not looked at; a name without any is looked up as the file system
/// compares names. The order is by name without regard to case, "." and ".." first where they match.
class CFileFind {
public:
    /// TRUE when there is at least one. A null or empty pattern means all of the current directory.
    BOOL FindFile(const wchar_t* pattern = nullptr, DWORD unused = 0);
    /// Goes to the next entry (the first call: to the first). FALSE when that is the last one, or there is
    /// none.
    BOOL FindNextFile();
    BOOL FindNextFileW() { return FindNextFile(); }
    void Close();

    /// Of the entry that FindNextFile went to; empty, 0 or false before that.
    CString GetFileName() const;
    /// The directory as it was given, a '\' and the name; the name alone where none was given.
    CString GetFilePath() const;
    /// The name without its last point and what follows.
    CString GetFileTitle() const;
    CString GetRoot() const { return m_directory; }
    ULONGLONG GetLength() const;
    /// Seconds since 1970-01-01 00:00 UTC.
    std::int64_t GetLastWriteSeconds() const;
    /// TRUE when the entry has any (MatchesMask) of the attributes.
    BOOL MatchesMask(DWORD mask) const;
    BOOL IsDots() const;
    BOOL IsDirectory() const;
    BOOL IsReadOnly() const;
    BOOL IsHidden() const;

private:
    struct Entry {
        std::wstring name;
        DWORD attributes;
        ULONGLONG length;
        std::int64_t written;
    };
    const Entry* current() const;
    bool appendEntry(const std::string& directory, const std::string& name);

    CString m_directory;
    std::vector<Entry> m_entries;
    std::size_t m_next = 0;
};
