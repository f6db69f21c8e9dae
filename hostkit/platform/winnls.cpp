#include "winnls.h"

#include "textencoding.h"
#include "winbase.h"

#include <string>

namespace {

int failWith(LONG error) {
    SetLastError(static_cast<DWORD>(error));
    return 0;
}

// One target character a source character, the NUL at the end counting where the length is told by it.
template <class Source, class Target, class Convert>
int convert(UINT codePage, DWORD flags, const Source* source, int length, Target* target, int room,
            Convert convertOne) {
    if (codePage != CP_ACP || flags != 0 || !source || length < -1 || room < 0 || (room > 0 && !target))
        return failWith(ERROR_INVALID_PARAMETER);
    const std::size_t count =
        length >= 0 ? static_cast<std::size_t>(length) : std::char_traits<Source>::length(source) + 1;
    if (room == 0) return static_cast<int>(count);
    if (count > static_cast<std::size_t>(room)) return failWith(ERROR_INSUFFICIENT_BUFFER);
    for (std::size_t i = 0; i < count; ++i) target[i] = convertOne(source[i]);
    return static_cast<int>(count);
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteLength, wchar_t* text,
                        int textRoom) {
    return convert(codePage, flags, bytes, byteLength, text, textRoom,
                   [](char byte) { return hostkit::wideFromAnsi(static_cast<unsigned char>(byte)); });
}

int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int textLength, char* bytes,
                        int byteRoom, const char* replacement, BOOL* wasReplaced) {
    bool isReplaced = false;
    const int count = convert(codePage, flags, text, textLength, bytes, byteRoom, [&](wchar_t character) {
        const auto byte = hostkit::ansiFromWide(character);
        if (!byte) isReplaced = true;
        return byte ? static_cast<char>(*byte) : replacement ? *replacement : '?';
    });
    if (wasReplaced) *wasReplaced = isReplaced ? TRUE : FALSE;
    return count;
}
