#include "plottext.h"

#include "casefold.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbtext.h"
#include "dbtextstyletablerecord.h"
#include "textcodes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double lineStep = 5.0 / 3.0; // of the text's height, between base lines
constexpr double descent = 0.3;        // of the text's height, below the base line

std::wstring familyOfStyle(AcDbObjectId style) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead);
    if (!record.object()) return {};
    const std::wstring file = hostkit::foldCase(record->fileName());
    const auto has = [&](const wchar_t* part) { return file.find(part) != std::wstring::npos; };
    if (has(L"times") || has(L"romant") || has(L"garamond")) return L"Times New Roman, serif";
    if (has(L"cour") || has(L"consol") || has(L"mono")) return L"Courier New, monospace";
    return {};
}

TextDefaults defaultsOf(AcDbObjectId style, double height, std::uint32_t rgb) {
    TextDefaults defaults;
    defaults.rgb = rgb;
    defaults.height = height;
    defaults.family = familyOfStyle(style);
    return defaults;
}

// How far the base line lies under the alignment point, in heights of capitals.
double dropOf(const AcDbText& text) {
    if (text.horizontalMode() == AcDb::kTextMid) return 0.5;
    switch (text.verticalMode()) {
    case AcDb::kTextBottom:
        return -descent;
    case AcDb::kTextVertMid:
        return 0.5;
    case AcDb::kTextTop:
        return 1.0;
    default:
        return 0.0;
    }
}

PlacedText::Anchor anchorOf(AcDb::TextHorzMode mode) {
    if (mode == AcDb::kTextCenter || mode == AcDb::kTextMid) return PlacedText::Anchor::middle;
    return mode == AcDb::kTextRight ? PlacedText::Anchor::end : PlacedText::Anchor::start;
}

bool isBetweenPoints(const AcDbText& text) {
    const bool isFitted =
        text.horizontalMode() == AcDb::kTextAlign || text.horizontalMode() == AcDb::kTextFit;
    return isFitted && !text.position().isEqualTo(text.alignmentPoint());
}

} // namespace

PlacedText placedText(const AcDbText& text, const std::wstring& wording, std::uint32_t rgb) {
    PlacedText placed;
    placed.runs = runsOfText(wording, defaultsOf(text.textStyle(), text.height(), rgb));
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(text.normal(), x, y);
    AcGeVector3d along = x * std::cos(text.rotation()) + y * std::sin(text.rotation());
    if (isBetweenPoints(text)) {
        const AcGeVector3d run = text.alignmentPoint() - text.position();
        placed.fitLength = run.length();
        along = run.normal();
        placed.origin = text.position();
    } else {
        placed.anchor = anchorOf(text.horizontalMode());
        placed.origin = text.isDefaultAlignment() ? text.position() : text.alignmentPoint();
    }
    const AcGeVector3d up = text.normal().crossProduct(along);
    placed.along = along * (text.height() * text.widthFactor() * (text.isMirroredInX() ? -1.0 : 1.0));
    placed.up =
        (up + along * std::tan(text.oblique())) * (text.height() * (text.isMirroredInY() ? -1.0 : 1.0));
    if (!isBetweenPoints(text)) placed.origin -= placed.up * dropOf(text);
    return placed;
}

PlacedText placedText(const AcDbText& text, std::uint32_t rgb) { return placedText(text, text.text(), rgb); }

namespace {

using Anchor = PlacedText::Anchor;

struct TextLine {
    std::vector<TextRun> runs;
    std::optional<Anchor> alignment;
    double factor = 1.0; ///< the tallest run's height
};

std::vector<TextLine> linesOf(const AcDbMText& text, const TextDefaults& defaults) {
    std::vector<TextLine> lines;
    const double width = text.width() / text.textHeight();
    for (const Paragraph& paragraph : paragraphsOfText(text.rawContents(), defaults))
        for (std::vector<TextRun>& runs : brokenLines(paragraph, width)) {
            TextLine line{std::move(runs), paragraph.alignment};
            if (!line.runs.empty()) line.factor = 0.0;
            for (const TextRun& run : line.runs) line.factor = std::max(line.factor, run.heightFactor);
            lines.push_back(std::move(line));
        }
    return lines;
}

// 0 left, 1 middle, 2 right; and 0 top, 1 middle, 2 bottom.
int columnOf(const AcDbMText& text) { return (std::clamp<int>(text.attachment(), 1, 9) - 1) % 3; }
int rowOf(const AcDbMText& text) { return (std::clamp<int>(text.attachment(), 1, 9) - 1) / 3; }

} // namespace

std::vector<PlacedText> placedLines(const AcDbMText& text, std::uint32_t rgb) {
    std::vector<PlacedText> placed;
    const double height = text.textHeight();
    if (!(height > 0.0)) return placed;
    const std::vector<TextLine> lines = linesOf(text, defaultsOf(text.textStyle(), height, rgb));
    const double step = lineStep * (text.lineSpacingFactor() > 0.0 ? text.lineSpacingFactor() : 1.0);

    // Base lines in text heights below the top of the first line's capitals.
    std::vector<double> depths;
    depths.reserve(lines.size());
    double depth = 0.0;
    for (const TextLine& line : lines)
        depths.push_back(depth += depths.empty() ? line.factor : step * line.factor);
    const double shift = depth * rowOf(text) / 2.0;

    const AcGeVector3d along = text.direction();
    const AcGeVector3d up = text.normal().crossProduct(along);
    constexpr Anchor anchors[] = {Anchor::start, Anchor::middle, Anchor::end};
    const int column = columnOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].runs.empty()) continue;
        PlacedText line;
        line.runs = lines[i].runs;
        line.anchor = anchors[column];
        line.origin = text.location() + up * ((shift - depths[i]) * height);
        // A paragraph with an alignment of its own is aligned within the box, where there is one.
        if (lines[i].alignment && text.width() > 0.0) {
            line.anchor = *lines[i].alignment;
            line.origin += along * (text.width() * (static_cast<int>(line.anchor) - column) / 2.0);
        }
        line.along = along * height;
        line.up = up * height;
        placed.push_back(std::move(line));
    }
    return placed;
}
