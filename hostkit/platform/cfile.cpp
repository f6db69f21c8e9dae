#include "cfile.h"

#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int causeOf(int systemError) {
    switch (systemError) {
    case ENOENT:
        return CFileException::fileNotFound;
    case ENOTDIR:
        return CFileException::badPath;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return CFileException::accessDenied;
    case ENOSPC:
    case EDQUOT:
        return CFileException::diskFull;
    default:
        return CFileException::genericException;
    }
}

int systemFlags(UINT flags) {
    int result = O_CLOEXEC;
    switch (flags & 3u) {
    case CFile::modeRead:
        result |= flags & CFile::modeCreate ? O_RDWR : O_RDONLY;
        break;
    case CFile::modeWrite:
        result |= O_WRONLY;
        break;
    default:
        result |= O_RDWR;
        break;
    }
    if (flags & CFile::modeCreate) result |= O_CREAT;
    return result;
}

// What stood in the file goes only when nobody else holds it.
bool admit(int descriptor, UINT flags, hostkit::FileShare& share, int& cause) {
    struct stat status;
    if (fstat(descriptor, &status) != 0) return false;
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return false;
    }
    if (!S_ISREG(status.st_mode)) return true;
    share = hostkit::shareFile(status.st_dev, status.st_ino, flags);
    if (!share) {
        cause = CFileException::sharingViolation;
        return false;
    }
    const bool empties = (flags & CFile::modeCreate) && !(flags & CFile::modeNoTruncate);
    return !empties || ftruncate(descriptor, 0) == 0;
}

std::FILE* openStream(const std::string& path, UINT flags, hostkit::FileShare& share, int& cause) {
    errno = 0;
    const int descriptor = open(path.c_str(), systemFlags(flags), 0666);
    if (descriptor >= 0 && admit(descriptor, flags, share, cause)) {
        const int way = systemFlags(flags) & O_ACCMODE;
        if (std::FILE* stream = fdopen(descriptor, way == O_RDONLY ? "r" : way == O_WRONLY ? "w" : "r+"))
            return stream;
    }
    if (cause == CFileException::none) cause = causeOf(errno);
    if (descriptor >= 0) close(descriptor);
    share.reset();
    return nullptr;
}

constexpr char endOfText = '\x1A';

int systemOrigin(UINT from) {
    return from == CFile::begin ? SEEK_SET : from == CFile::current ? SEEK_CUR : SEEK_END;
}

} // namespace

CFile::CFile() = default;

CFile::CFile(const wchar_t* path, UINT flags) {
    CFileException error(CFileException::none, {});
    if (!CFile::Open(path, flags, &error)) throw new CFileException(error);
}

CFile::~CFile() = default;

BOOL CFile::Open(const wchar_t* path, UINT flags, CFileException* error) {
    m_stream.reset();
    m_share.reset();
    const CString name(path);
    int cause = CFileException::none;
    m_stream.reset(openStream(hostkit::platformPath(name.view()), flags, m_share, cause));
    if (m_stream) m_path = name;
    if (!m_stream && error) *error = CFileException(cause, name);
    return m_stream ? TRUE : FALSE;
}

// A write that failed leaves the stream empty: closing it then succeeds.
void CFile::Close() {
    std::FILE* const stream = m_stream.release();
    const bool wasLost = stream && __fwritable(stream) && std::ferror(stream);
    const bool isLost = (stream && std::fclose(stream) != 0) || wasLost;
    m_share.reset();
    if (isLost) throw new CFileException(CFileException::diskFull, m_path);
}

UINT CFile::Read(void* buffer, UINT count) {
    return m_stream && buffer ? static_cast<UINT>(std::fread(buffer, 1, count, stream())) : 0;
}

void CFile::Write(const void* buffer, UINT count) {
    if (count == 0) return;
    if (!m_stream || !buffer || std::fwrite(buffer, 1, count, stream()) != count)
        throw new CFileException(CFileException::diskFull, m_path);
}

void CFile::Flush() {
    if (m_stream && std::fflush(stream()) != 0) throw new CFileException(CFileException::diskFull, m_path);
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    if (m_stream) fseeko(stream(), offset, systemOrigin(from));
    return GetPosition();
}

ULONGLONG CFile::GetPosition() const {
    const off_t position = m_stream ? ftello(stream()) : 0;
    return position < 0 ? 0 : static_cast<ULONGLONG>(position);
}

ULONGLONG CFile::GetLength() const {
    if (!m_stream) return 0;
    std::fflush(stream());
    struct stat status;
    return fstat(fileno(stream()), &status) == 0 ? static_cast<ULONGLONG>(status.st_size) : 0;
}

CString CFile::GetFileName() const { return CString(hostkit::fileNameOfPath(m_path.view())); }

void CFile::Remove(const wchar_t* path) {
    const CString name(path);
    if (unlink(hostkit::platformPath(name.view()).c_str()) != 0)
        throw new CFileException(causeOf(errno), name);
}

CStdioFile::CStdioFile(const wchar_t* path, UINT flags) {
    CFileException error(CFileException::none, {});
    if (!CStdioFile::Open(path, flags, &error)) throw new CFileException(error);
}

BOOL CStdioFile::Open(const wchar_t* path, UINT flags, CFileException* error) {
    m_textMode = (flags & typeBinary) == 0;
    return CFile::Open(path, flags, error);
}

BOOL CStdioFile::ReadString(CString& line) {
    line.Empty();
    if (!IsOpen()) return FALSE;
    char* bytes = m_line.release();
    const ssize_t count = getline(&bytes, &m_lineRoom, stream());
    m_line.reset(bytes);
    if (count <= 0) return FALSE;
    std::string_view text(bytes, static_cast<std::size_t>(count));
    const std::size_t last = m_textMode ? text.find(endOfText) : std::string_view::npos;
    if (last != std::string_view::npos) {
        SeekToEnd();
        text = text.substr(0, last);
        if (text.empty()) return FALSE;
    } else if (text.back() == '\n') {
        text.remove_suffix(1);
        if (m_textMode && !text.empty() && text.back() == '\r') text.remove_suffix(1);
    }
    line = CString(hostkit::wideFromAnsi(text));
    return TRUE;
}

void CStdioFile::WriteString(const wchar_t* text) {
    std::string bytes;
    for (const wchar_t character : std::wstring_view(text ? text : L"")) {
        if (m_textMode && character == L'\n') bytes += '\r';
        const char32_t code = static_cast<char32_t>(character);
        bytes += static_cast<char>(code < 0x100 ? static_cast<unsigned char>(code)
                                                : hostkit::ansiFromWide(character).value_or('?'));
    }
    Write(bytes.data(), static_cast<UINT>(bytes.size()));
}
