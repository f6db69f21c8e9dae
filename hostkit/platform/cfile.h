// Stand-in for the host's file classes. Covers CFile and CStdioFile with their open flags, share modes, text lines and exceptions; leaves out what other programs have open.
#pragma once

#include "cstring.h"
#include "filesharing.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

/// What a file operation throws, by pointer; the catcher calls Delete.
class CFileException {
public:
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        accessDenied = 5,
        sharingViolation = 11,
        diskFull = 13,
        endOfFile = 14
    };

    CFileException(int cause, CString fileName)
        : m_cause(cause)
        , m_strFileName(std::move(fileName)) {}
    void Delete() { delete this; }

    int m_cause;
    CString m_strFileName;
};

/// A file by wide name, in bytes. Paths are mapped (systempath.h). Closed by the destructor.
class CFile {
public:
    enum OpenFlags : UINT {
        modeRead = 0x0,
        modeWrite = 0x1,
        modeReadWrite = 0x2,
        shareCompat = 0x0,
        shareExclusive = 0x10,
        shareDenyWrite = 0x20,
        shareDenyRead = 0x30,
        shareDenyNone = 0x40,
        modeNoInherit = 0x80,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000,
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile();
    /// Throws CFileException* when the file cannot be opened.
    CFile(const wchar_t* path, UINT flags);
    virtual ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// FALSE when it cannot be opened; *error, when given, then says why. With modeCreate an old file is
    /// emptied, unless modeNoTruncate keeps its content; without modeCreate the file has to be there. A file
    /// that this host has open is refused (sharingViolation, with its content as it was) where one of the two
    /// denies what the other does; without a share flag a file is exclusive.
    virtual BOOL Open(const wchar_t* path, UINT flags, CFileException* error = nullptr);
    /// Throws CFileException* (diskFull) when what was written does not all get there, also where Write has
    /// thrown that before; it is closed then too.
    /// The destructor closes in silence.
    virtual void Close();
    /// How many bytes were read; fewer than count only at the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    /// Throws CFileException* (diskFull) when not all can be written.
    virtual void Write(const void* buffer, UINT count);
    virtual void Flush();
    ULONGLONG Seek(LONGLONG offset, UINT from);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    ULONGLONG GetPosition() const;
    ULONGLONG GetLength() const;
    bool IsOpen() const { return m_stream != nullptr; }
    /// The path as it was given, and its last part.
    CString GetFilePath() const { return m_path; }
    CString GetFileName() const;

    static void Remove(const wchar_t* path);

protected:
    std::FILE* stream() const { return m_stream.get(); }

private:
    struct CloseStream {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };
    std::unique_ptr<std::FILE, CloseStream> m_stream;
    hostkit::FileShare m_share;
    CString m_path;
};

/// A file of lines in the ANSI code page. In text mode (no typeBinary) a line feed is written as carriage
/// return and line feed, and read back as a line feed; a carriage return by itself stays, and a Ctrl-Z (1A)
/// ends what is read.
class CStdioFile : public CFile {
public:
    CStdioFile() = default;
    CStdioFile(const wchar_t* path, UINT flags);

    BOOL Open(const wchar_t* path, UINT flags, CFileException* error = nullptr) override;
    /// One line of any length without its end; NULs stay. FALSE, with an empty text, at the end of the file.
    BOOL ReadString(CString& line);
    /// Writes the text as it stands: characters up to U+00FF as the byte of that number, others through the
    /// ANSI code page, with '?' for what has no place in it. Text that was turned into code-page bytes before
    /// goes through unchanged.
    void WriteString(const wchar_t* text);

private:
    struct FreeBytes {
        void operator()(char* bytes) const { std::free(bytes); }
    };
    bool m_textMode = true;
    std::unique_ptr<char, FreeBytes> m_line; ///< of the last line read, kept for the next
    std::size_t m_lineRoom = 0;
};
