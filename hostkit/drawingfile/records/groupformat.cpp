#include "groupformat.h"

#include "groupblock.h"

#include <charconv>

namespace hostkit {

void appendReal(double value, std::string& bytes) {
    char digits[32];
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const std::string_view text(digits, static_cast<std::size_t>(end - digits));
    if (text.find('.') != std::string_view::npos) {
        bytes += text;
        return;
    }
    const std::size_t exponent = text.find('e');
    bytes += text.substr(0, exponent);
    bytes += ".0";
    if (exponent != std::string_view::npos) bytes += text.substr(exponent);
}

void appendInteger(std::int64_t value, std::string& bytes) {
    char digits[24];
    bytes.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendHandle(std::uint64_t handle, std::string& bytes) {
    char digits[16] = {};
    char* const end = std::to_chars(digits, digits + sizeof digits, handle, 16).ptr;
    for (char* digit = digits; digit != end; ++digit)
        if (*digit >= 'a') *digit = static_cast<char>(*digit - 'a' + 'A');
    bytes.append(digits, end);
}

void appendCode(int code, const DrawingStyle& style, std::string& bytes) {
    if (code >= 0 && code < 100) bytes.append(code < 10 ? 2 : 1, ' ');
    appendInteger(code, bytes);
    bytes += style.newline;
}

void appendGroup(int code, std::string_view value, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    bytes += value;
    bytes += style.newline;
}

void appendText(int code, std::wstring_view value, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    style.text.encode(value, bytes);
    bytes += style.newline;
}

void appendReal(int code, double value, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    appendReal(value, bytes);
    bytes += style.newline;
}

void appendInteger(int code, std::int64_t value, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    appendInteger(value, bytes);
    bytes += style.newline;
}

void appendHandle(int code, std::uint64_t handle, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    appendHandle(handle, bytes);
    bytes += style.newline;
}

void appendBlock(const GroupBlock& block, const DrawingStyle& style, std::string& bytes) {
    GroupWalker walker(block);
    AcDbDxfGroup group;
    while (walker.next(group)) {
        switch (group.kind) {
        case AcDb::GroupKind::kPoint:
            for (int axis = 0; axis < group.dimension; ++axis)
                appendReal(group.code + axis * 10, group.point[axis], style, bytes);
            break;
        case AcDb::GroupKind::kReal:
            appendReal(group.code, group.real, style, bytes);
            break;
        case AcDb::GroupKind::kHandle:
            appendHandle(group.code, group.handle(), style, bytes);
            break;
        case AcDb::GroupKind::kText:
        case AcDb::GroupKind::kBinary:
            appendText(group.code, group.text, style, bytes);
            break;
        default:
            appendInteger(group.code, group.integer, style, bytes);
        }
    }
}

} // namespace hostkit
