#include "paragraphlayout.h"

#include "markupreader.h"
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

double startOf(const ParagraphLine& line, double frameWidth, int column) {
    const double width = line.right - line.left;
    const double frameStart = column == 0 ? 0.0 : column == 1 ? -frameWidth / 2.0 : -frameWidth;
    const double room = frameWidth - width;
    switch (line.alignment) {
    case L'l':
        return frameStart;
    case L'c':
        return frameStart + room / 2.0;
    case L'r':
        return frameStart + room;
    default:
        return column == 0 ? 0.0 : column == 1 ? -width / 2.0 : -width;
    }
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

} // namespace

ParagraphLayout laidOut(std::wstring_view contents, const ParagraphFrame& frame) {
    ParagraphLineMaker maker(frame);
    MarkupReader reader(contents, MarkupReader::Extent::paragraphs);
    while (const auto piece = reader.next()) maker.take(*piece);
    ParagraphLayout layout;
    std::vector<double> heights;
    maker.finish(layout.lines, heights);
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
