#include "dimensionlayout.h"

#include "markupreader.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr std::wstring_view partingCode = L"\\X";
constexpr std::wstring_view lineEndCode = L"\\P";

/// Contents with the place of the first parting code.
struct PartedContents {
    bool isParted = false;
    std::size_t linesAbove = 0;

    explicit PartedContents(std::wstring_view contents);
};

PartedContents::PartedContents(std::wstring_view contents) {
    if (contents.find(partingCode) == contents.npos) return;
    MarkupReader reader(contents, MarkupReader::Extent::paragraphs);
    while (const auto piece = reader.next()) {
        if (piece->kind != MarkupPiece::Kind::lineEnd) continue;
        ++linesAbove;
        if (piece->source == partingCode) {
            isParted = true;
            return;
        }
    }
}

// With the parts that are kept. Codes of the other one stay: forms go on behind it.
std::wstring joined(std::wstring_view contents, bool keepsUpper, bool keepsLower) {
    using Kind = MarkupPiece::Kind;
    std::wstring text;
    bool isAbove = true;
    MarkupReader reader(contents, MarkupReader::Extent::paragraphs);
    while (const auto piece = reader.next()) {
        const bool isParting = piece->source == partingCode;
        const bool isKept = isParting && isAbove ? keepsUpper && keepsLower
                            : isAbove            ? keepsUpper
                                                 : keepsLower;
        const bool isSeen =
            piece->kind == Kind::letters || piece->kind == Kind::lineEnd || piece->kind == Kind::stack;
        if (isKept || !isSeen) text += isParting ? lineEndCode : piece->source;
        isAbove = isAbove && !isParting;
    }
    return text;
}

bool isBlank(const std::vector<ParagraphLine>& lines, std::size_t from, std::size_t to) {
    return std::all_of(lines.begin() + static_cast<std::ptrdiff_t>(from),
                       lines.begin() + static_cast<std::ptrdiff_t>(to),
                       [](const ParagraphLine& line) { return line.isBlank(); });
}

/// The paragraph of both parts: the space between them, from the paragraph's top on.
struct Parting {
    double above = 0.0;
    double below = 0.0;
    InkSize ink;

    Parting(const DimensionWording& wording, AcDbObjectId textStyle, std::size_t linesAbove, double spacing) {
        const ParagraphLayout layout = laidOut(
            wording.contents,
            {.textStyle = textStyle, .height = wording.height, .lineSpacingFactor = spacing, .column = 1});
        const ParagraphLine& last = layout.lines[linesAbove - 1];
        const ParagraphLine& first = layout.lines[linesAbove];
        above = last.base + last.bottom;
        below = first.base + first.top;
        ink = {layout.width(), layout.height};
    }
    double space() const { return above - below; }
};

// The space grows evenly with the lines' distance.
void spread(DimensionWording& wording, AcDbObjectId textStyle, std::size_t linesAbove, double gap) {
    constexpr double least = 0.25;
    constexpr double most = 4.0;
    const double usual = Parting(wording, textStyle, linesAbove, 1.0).space();
    const double growth = Parting(wording, textStyle, linesAbove, 2.0).space() - usual;
    const double wanted = growth > 0.0 ? 1.0 + (2.0 * gap - usual) / growth : 1.0;
    wording.lineSpacing = std::isfinite(wanted) ? std::clamp(wanted, least, most) : 1.0;
    const Parting parting(wording, textStyle, linesAbove, wording.lineSpacing);
    wording.ink = parting.ink;
    wording.offset = -0.5 * parting.ink.height - 0.5 * (parting.above + parting.below);
}

} // namespace

void measureWording(DimensionWording& wording, AcDbObjectId textStyle, double gap) {
    const PartedContents parts(wording.contents);
    wording.isParted = parts.isParted;
    if (!parts.isParted) {
        wording.ink = paragraphInk(wording.contents, wording.height, textStyle);
        return;
    }
    const std::vector<ParagraphLine> lines =
        laidOut(wording.contents, {.textStyle = textStyle, .height = wording.height}).lines;
    const bool hasUpper = !isBlank(lines, 0, parts.linesAbove);
    const bool hasLower = !isBlank(lines, parts.linesAbove, lines.size());
    wording.contents = hasUpper || hasLower ? joined(wording.contents, hasUpper, hasLower) : L"";
    wording.isParted = hasUpper || hasLower;
    if (hasUpper && hasLower) return spread(wording, textStyle, parts.linesAbove, gap);
    wording.ink = paragraphInk(wording.contents, wording.height, textStyle);
    const double aside = gap + 0.5 * wording.ink.height;
    wording.offset = hasLower ? -aside : aside;
}

} // namespace hostkit
