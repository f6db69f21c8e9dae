#include "paragraphstack.h"

#include "markupreader.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr double kGap = 0.4;              // between the parts, of their height; a bar stands in its middle
constexpr double kBarWidth = 0.93;        // of the wider part
constexpr double kSlashWidth = 1.0 / 3.0; // what a slash keeps free between the parts, of their height
constexpr wchar_t kTolerance = L'^';
constexpr wchar_t kDiagonal = L'#';

struct StackParts {
    std::wstring upper;
    std::wstring lower;
    wchar_t divider = 0;

    explicit StackParts(std::wstring_view stack) {
        while (!stack.empty()) {
            const auto [character, isDivider] = takeStackCharacter(stack);
            if (isDivider && divider == 0)
                divider = character;
            else
                (divider == 0 ? upper : lower) += character;
        }
    }
};

using Role = ParagraphPiece::StackRole;

ParagraphPiece part(const ParagraphLook& look, Role role, const std::wstring& text, double x, double rise) {
    return {.role = role, .look = look, .text = text, .x = x, .rise = rise, .width = advanceOf(text, look)};
}

ParagraphPiece dividingLine(const ParagraphLook& look, ParagraphPiece::Kind kind, double x, double rise,
                            double width) {
    return {.kind = kind, .role = Role::divider, .look = look, .x = x, .rise = rise, .width = width};
}

StackPieces diagonalStack(const StackParts& parts, const ParagraphLook& look) {
    StackPieces stack;
    ParagraphPiece upper = part(look, Role::upper, parts.upper, 0.0, look.height);
    const double room = kSlashWidth * look.height * look.widthFactor;
    ParagraphPiece lower = part(look, Role::lower, parts.lower, upper.width + room, 0.0);
    stack.width = upper.width + room + lower.width;
    stack.height = 2.0 * look.height;
    const double run = std::min(look.height, stack.width);
    ParagraphPiece slash = dividingLine(look, ParagraphPiece::Kind::slash, upper.width + (room - run) / 2.0,
                                        look.height / 2.0, run);
    stack.pieces = {std::move(upper), std::move(slash), std::move(lower)};
    return stack;
}

StackPieces uprightStack(const StackParts& parts, const ParagraphLook& look) {
    StackPieces stack;
    ParagraphPiece upper = part(look, Role::upper, parts.upper, 0.0, (1.0 + kGap) * look.height);
    ParagraphPiece lower = part(look, Role::lower, parts.lower, 0.0, 0.0);
    const bool isBarred = parts.divider != 0 && parts.divider != kTolerance;
    const double widest = std::max(upper.width, lower.width);
    stack.width = isBarred ? kBarWidth * widest : widest;
    stack.height = (2.0 + kGap) * look.height;
    if (isBarred)
        for (ParagraphPiece* each : {&upper, &lower}) each->x = (stack.width - each->width) / 2.0;
    stack.pieces.push_back(std::move(upper));
    if (isBarred)
        stack.pieces.push_back(dividingLine(look, ParagraphPiece::Kind::bar, 0.0,
                                            (1.0 + kGap / 2.0) * look.height, stack.width));
    stack.pieces.push_back(std::move(lower));
    return stack;
}

} // namespace

double advanceOf(std::wstring_view letters, const ParagraphLook& look) {
    double width = 0.0;
    for (const wchar_t each : letters)
        if (each >= L' ') width += look.face->letter(each).advance;
    return width * look.advanceScale();
}

StackPieces stackPieces(std::wstring_view text, const ParagraphLook& look) {
    const StackParts parts(text);
    StackPieces stack = parts.divider == kDiagonal ? diagonalStack(parts, look) : uprightStack(parts, look);
    for (ParagraphPiece& piece : stack.pieces) piece.fullHeight = stack.height;
    return stack;
}

} // namespace hostkit
