#include "paragraphlayout.h"

#include "markupreader.h"
#include "numbertext.h"
#include "paragraphlines.h"

#include <algorithm>
#include <limits>

namespace hostkit {
namespace {

constexpr double kLinePitch = 5.0 / 3.0; // text heights

// Lines get their places along and down when all of them are known.
void placeDown(std::vector<ParagraphLine>& lines, const std::vector<double>& heights,
               const ParagraphFrame& frame) {
    double base = 0.0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double gap = (kLinePitch * frame.lineSpacingFactor - 1.0) * heights[i];
        if (i == 0)
            base -= lines[i].top;
        else if (frame.isSpacingExact)
            base -= kLinePitch * frame.lineSpacingFactor * frame.height;
        else
            base -= gap + lines[i].top;
        lines[i].base = base;
    }
}

int columnOf(wchar_t alignment, int paragraphColumn) {
    switch (alignment) {
    case L'l':
        return 0;
    case L'c':
        return 1;
    case L'r':
        return 2;
    default:
        return paragraphColumn;
    }
}

// One with an alignment of its own stands within the frame's width.
double startOf(const ParagraphLine& line, double frameWidth, int column) {
    const double width = line.right - line.left;
    const double room = line.alignment == 0 ? 0.0 : frameWidth - width;
    const double around = width + room;
    return (line.column * room - column * around) / 2.0;
}

void placeAlong(ParagraphLayout& layout, const ParagraphFrame& frame) {
    double widest = frame.width;
    for (const ParagraphLine& line : layout.lines) widest = std::max(widest, line.right - line.left);
    layout.left = std::numeric_limits<double>::infinity();
    layout.right = -layout.left;
    for (ParagraphLine& line : layout.lines) {
        if (line.isBlank()) continue;
        const double shift = startOf(line, widest, frame.column) - line.left;
        for (ParagraphPiece& piece : line.pieces) piece.x += shift;
        line.left += shift;
        line.right += shift;
        layout.left = std::min(layout.left, line.left);
        layout.right = std::max(layout.right, line.right);
    }
}

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

} // namespace

std::wstring ParagraphLine::text() const {
    using Role = ParagraphPiece::StackRole;
    std::wstring seen;
    Role last = Role::none;
    for (const ParagraphPiece& piece : pieces) {
        const bool isOnNumber =
            !seen.empty() && isDigit(seen.back()) && !piece.text.empty() && isDigit(piece.text.front());
        if (piece.role == Role::upper && isOnNumber) seen += L' ';
        if (piece.role == Role::lower && last == Role::upper && !piece.text.empty()) seen += L' ';
        if (piece.role == Role::divider) seen += L'/';
        seen += piece.text;
        last = piece.role;
    }
    return std::wstring(withoutBlanksAround(seen));
}

ParagraphLayout laidOut(std::wstring_view contents, const ParagraphFrame& frame) {
    ParagraphLineMaker maker(frame);
    MarkupReader reader(contents, MarkupReader::Extent::paragraphs);
    while (const auto piece = reader.next()) maker.take(*piece);
    ParagraphLayout layout;
    std::vector<double> heights;
    maker.finish(layout.lines, heights);
    for (ParagraphLine& line : layout.lines) line.column = columnOf(line.alignment, frame.column);
    const bool isBlank = std::all_of(layout.lines.begin(), layout.lines.end(),
                                     [](const ParagraphLine& line) { return line.isBlank(); });
    placeDown(layout.lines, heights, frame);
    if (isBlank) return layout;
    placeAlong(layout, frame);
    layout.height = -(layout.lines.back().base + layout.lines.back().bottom);
    return layout;
}

InkSize paragraphInk(std::wstring_view contents, double height, AcDbObjectId textStyle) {
    const ParagraphLayout layout = laidOut(contents, {.textStyle = textStyle, .height = height});
    return {layout.width(), layout.height};
}

} // namespace hostkit
