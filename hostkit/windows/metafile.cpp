#include "casefold.h"
#include "desktop.h"
#include "metafilerecorder.h"
#include "systempath.h"
#include "winbase.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <utility>

/// A metafile that is closed; one in a file is its name alone.
struct HostMetafile {
    std::string bytes{};
};

namespace {

using hostkit::MetafileDevice;
using hostkit::MetafileRecorder;

// Up to the second of the closing zeros.
std::wstring_view descriptionOf(const wchar_t* text) {
    if (!text) return {};
    const std::wstring_view maker(text);
    const std::wstring_view picture(text + maker.size() + 1);
    return {text, maker.size() + 1 + picture.size()};
}

void failWithFile(int systemError) {
    const bool isMissing = systemError == ENOENT || systemError == ENOTDIR;
    SetLastError(isMissing ? ERROR_PATH_NOT_FOUND : ERROR_ACCESS_DENIED);
}

// What may not be written is not replaced either.
bool isProtected(const std::string& path) {
    return access(path.c_str(), F_OK) == 0 && access(path.c_str(), W_OK) != 0;
}

HDC plainContext() {
    const HDC dc = hostkit::Desktop::current().makeContext(nullptr, false);
    dc->font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    return dc;
}

} // namespace

HDC CreateDCW(const wchar_t* driver, const wchar_t*, const wchar_t*, const void*) {
    if (!driver || hostkit::compareFolded(driver, L"DISPLAY") != 0) return nullptr;
    return plainContext();
}

HDC CreateCompatibleDC(HDC) { return plainContext(); }

BOOL DeleteDC(HDC dc) { return dc ? hostkit::Desktop::current().releaseContext(dc) : FALSE; }

int GetDeviceCaps(HDC dc, int index) {
    if (!dc) return 0;
    const MetafileDevice screen = MetafileDevice::screen();
    switch (index) {
    case HORZSIZE:
        return screen.widthMillimetres();
    case VERTSIZE:
        return screen.heightMillimetres();
    case HORZRES:
        return screen.widthPixels;
    case VERTRES:
        return screen.heightPixels;
    default:
        return 0;
    }
}

HDC CreateEnhMetaFileW(HDC, const wchar_t* file, const RECT* frame, const wchar_t* description) {
    auto recorder = std::make_shared<MetafileRecorder>(
        MetafileDevice::screen(), frame ? std::optional(*frame) : std::nullopt, descriptionOf(description));
    if (file) {
        const std::string path = hostkit::platformPath(file);
        errno = ENOENT;
        if (path.empty() || isProtected(path) || !recorder->writeToFile(path)) {
            failWithFile(errno);
            return nullptr;
        }
    }
    const HDC dc = plainContext();
    dc->recorder = std::move(recorder);
    return dc;
}

HENHMETAFILE CloseEnhMetaFile(HDC dc) {
    if (!dc || !dc->recorder) return nullptr;
    const std::shared_ptr<MetafileRecorder> recorder = std::move(dc->recorder);
    DeleteDC(dc);
    auto metafile = std::make_unique<HostMetafile>();
    if (recorder->finish(metafile->bytes)) return metafile.release();
    SetLastError(ERROR_WRITE_FAULT);
    return nullptr;
}

BOOL DeleteEnhMetaFile(HENHMETAFILE metafile) {
    delete metafile;
    return metafile ? TRUE : FALSE;
}

UINT GetEnhMetaFileBits(HENHMETAFILE metafile, UINT size, BYTE* buffer) {
    if (!metafile) return 0;
    const std::string& bytes = metafile->bytes;
    if (buffer && size < bytes.size()) return 0;
    if (buffer) std::memcpy(buffer, bytes.data(), bytes.size());
    return static_cast<UINT>(bytes.size());
}
