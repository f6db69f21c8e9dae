#include "oleauto.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace {

// The length stands before the text, in room that keeps the text aligned.
constexpr std::size_t headSize = alignof(std::max_align_t);

} // namespace

BSTR SysAllocString(const wchar_t* text) {
    if (!text) return nullptr;
    const std::size_t length = std::wcslen(text);
    auto* const head = static_cast<unsigned char*>(std::malloc(headSize + (length + 1) * sizeof(wchar_t)));
    if (!head) return nullptr;
    const UINT stored = static_cast<UINT>(length);
    std::memcpy(head, &stored, sizeof stored);
    std::memcpy(head + headSize, text, (length + 1) * sizeof(wchar_t));
    return reinterpret_cast<BSTR>(head + headSize);
}

void SysFreeString(BSTR text) {
    if (text) std::free(reinterpret_cast<unsigned char*>(text) - headSize);
}

UINT SysStringLen(BSTR text) {
    if (!text) return 0;
    UINT length = 0;
    std::memcpy(&length, reinterpret_cast<const unsigned char*>(text) - headSize, sizeof length);
    return length;
}
