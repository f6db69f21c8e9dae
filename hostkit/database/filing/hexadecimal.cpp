#include "hexadecimal.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace hostkit {

namespace {

unsigned digitOf(wchar_t c) {
    if (c >= L'0' && c <= L'9') return static_cast<unsigned>(c - L'0');
    if (c >= L'A' && c <= L'F') return static_cast<unsigned>(c - L'A' + 10);
    return c >= L'a' && c <= L'f' ? static_cast<unsigned>(c - L'a' + 10) : 0;
}

} // namespace

std::vector<unsigned char> bytesOfHexadecimal(std::wstring_view digits) {
    std::vector<unsigned char> bytes(digits.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(digitOf(digits[2 * i]) << 4 | digitOf(digits[2 * i + 1]));
    return bytes;
}

ads_binary binaryOfHexadecimal(std::wstring_view digits) {
    const std::vector<unsigned char> bytes = bytesOfHexadecimal(digits);
    const std::size_t size = std::min<std::size_t>(bytes.size(), std::numeric_limits<short>::max());
    auto* const copy = static_cast<char*>(std::malloc(size ? size : 1));
    if (!copy) return {0, nullptr};
    if (size) std::memcpy(copy, bytes.data(), size);
    return {static_cast<short>(size), copy};
}

} // namespace hostkit
