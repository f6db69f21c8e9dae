#include "cfile.h"

#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <fcntl.h>
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
    if (flags & CFile::modeCreate) result |= O_CREAT | (flags & CFile::modeNoTruncate ? 0 : O_TRUNC);
    return result;
}

std::FILE* openStream(const std::string& path, UINT flags) {
    const int descriptor = open(path.c_str(), systemFlags(flags), 0666);
    if (descriptor < 0) return nullptr;
    struct stat status;
    if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        close(descriptor);
        errno = EISDIR;
        return nullptr;
    }
    const int way = systemFlags(flags) & O_ACCMODE;
    std::FILE* stream = fdopen(descriptor, way == O_RDONLY ? "r" : way == O_WRONLY ? "w" : "r+");
    if (!stream) close(descriptor);
    return stream;
}

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
    const CString name(path);
    errno = 0;
    m_stream.reset(openStream(hostkit::mapPath(name.view()), flags));
    if (m_stream) m_path = name;
    if (!m_stream && error) *error = CFileException(causeOf(errno), name);
    return m_stream ? TRUE : FALSE;
}

void CFile::Close() { m_stream.reset(); }

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
    if (unlink(hostkit::mapPath(name.view()).c_str()) != 0) throw new CFileException(causeOf(errno), name);
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
    std::string bytes;
    int byte = std::fgetc(stream());
    const bool isEnd = byte == EOF;
    for (; byte != EOF && byte != '\n'; byte = std::fgetc(stream())) bytes += static_cast<char>(byte);
    if (m_textMode && byte == '\n' && !bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    line = CString(hostkit::wideFromAnsi(bytes));
    return isEnd ? FALSE : TRUE;
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
