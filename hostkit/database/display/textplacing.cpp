#include "textplacing.h"

#include "acgitextstyle.h"
#include "casefold.h"
#include "dbcolor.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbtext.h"
#include "dbtextstyletablerecord.h"
#include "markupreader.h"
#include "paragraphlayout.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace hostkit {

namespace {

constexpr double descent = 0.3; // of the text's height, below the base line

// The face that a browser has for a font of a drawing; empty where the default will do.
std::wstring familyOf(std::wstring_view font) {
    const std::wstring name = foldCase(font);
    const auto has = [&](const wchar_t* part) { return name.find(part) != std::wstring::npos; };
    if (has(L"times") || has(L"romant") || has(L"garamond") || has(L"georgia"))
        return L"Times New Roman, serif";
    if (has(L"cour") || has(L"consol") || has(L"mono")) return L"Courier New, monospace";
    return {};
}

std::wstring familyOfStyle(AcDbObjectId style) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead);
    return record.object() ? familyOf(record->fileName()) : std::wstring();
}

// None: the text's own.
std::optional<std::uint32_t> colorOf(const ParagraphLook& look) {
    if (look.rgb) return look.rgb;
    const int index = look.colorIndex.value_or(0);
    if (index == AcCmEntityColor::kACIforeground) return 0;
    const bool isIndex = index > 0 && index < AcCmEntityColor::kACIbyLayer;
    if (!isIndex) return std::nullopt;
    return AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt16>(index));
}

TextRun runOf(const ParagraphLook& look, std::wstring_view letters, const std::wstring& family) {
    TextRun run;
    std::copy_if(letters.begin(), letters.end(), std::back_inserter(run.text),
                 [](wchar_t each) { return each >= L' '; });
    const std::optional<std::uint32_t> color = colorOf(look);
    run.hasOwnColor = color.has_value();
    run.rgb = color.value_or(0);
    run.isBold = look.isBold;
    run.isItalic = look.isItalic;
    run.isUnderlined = look.isUnderlined;
    run.isOverlined = look.isOverlined;
    run.isStruckOut = look.isStruckOut;
    run.family = look.font.empty() ? family : familyOf(look.font);
    return run;
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

std::vector<TextRun> runsOfText(std::wstring_view text, const std::wstring& family) {
    std::vector<TextRun> runs;
    ParagraphLook look;
    std::wstring letters;
    const auto endRun = [&] {
        if (!letters.empty()) runs.push_back(runOf(look, letters, family));
        letters.clear();
    };
    MarkupReader reader(text, MarkupReader::Extent::line);
    while (const auto piece = reader.next()) {
        if (piece->kind == MarkupPiece::Kind::letters) {
            letters += piece->text;
        } else {
            endRun();
            look.take(*piece, 0.0);
        }
    }
    endRun();
    return runs;
}

PlacedText placedText(const AcDbText& text, const std::wstring& wording) {
    PlacedText placed;
    placed.runs = runsOfText(wording, familyOfStyle(text.textStyle()));
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

PlacedText placedText(const AcDbText& text) { return placedText(text, text.text()); }

namespace {

// Pieces of a line that make one text.
using Segment = std::vector<ParagraphPiece>;

bool makeOneText(const ParagraphPiece& piece, const ParagraphPiece& next) {
    const auto widthOf = [](const ParagraphLook& look) { return look.widthFactor * look.tracking; };
    return !piece.isStacked() && !next.isStacked() && piece.look.oblique == next.look.oblique &&
           widthOf(piece.look) == widthOf(next.look);
}

std::vector<Segment> segmentsOf(const ParagraphLine& line) {
    std::vector<Segment> segments;
    for (const ParagraphPiece& piece : line.pieces) {
        if (piece.kind != ParagraphPiece::Kind::letters || piece.text.empty()) continue;
        if (segments.empty() || !makeOneText(segments.back().back(), piece)) segments.emplace_back();
        segments.back().push_back(piece);
    }
    return segments;
}

void dropBlanksAround(std::vector<TextRun>& runs) {
    const auto isBlank = [](const TextRun& run) { return run.text.find_first_not_of(L' ') == run.text.npos; };
    runs.erase(runs.begin(), std::find_if_not(runs.begin(), runs.end(), isBlank));
    if (runs.empty()) return;
    while (isBlank(runs.back())) runs.pop_back();
    runs.front().text.erase(0, runs.front().text.find_first_not_of(L' '));
    runs.back().text.erase(runs.back().text.find_last_not_of(L' ') + 1);
}

class ParagraphPlacer {
public:
    explicit ParagraphPlacer(const AcDbMText& text)
        : m_text(text)
        , m_family(familyOfStyle(text.textStyle()))
        , m_along(text.direction())
        , m_up(text.normal().crossProduct(m_along)) {}

    PlacedParagraph placed() {
        const ParagraphLayout layout = m_text.layout();
        const double top = m_text.topOf(layout);
        placeGround();
        for (const ParagraphLine& line : layout.lines)
            if (!line.isBlank()) place(line, top + line.base);
        return std::move(m_placed);
    }

private:
    AcGePoint3d at(double x, double y) const { return m_text.location() + m_along * x + m_up * y; }

    void place(const ParagraphLine& line, double base) {
        for (const ParagraphPiece& piece : line.pieces)
            if (piece.kind != ParagraphPiece::Kind::letters) placeBar(piece, base);
        const std::vector<Segment> segments = segmentsOf(line);
        for (const Segment& segment : segments) {
            PlacedText text = textOf(segment, base);
            if (segments.size() == 1)
                align(text, line, base + segment.front().rise);
            else
                for (const ParagraphPiece& piece : segment) text.fitLength += piece.width;
            if (!text.runs.empty()) m_placed.texts.push_back(std::move(text));
        }
    }

    void placeGround() {
        constexpr std::uint32_t paper = 0xFFFFFF;
        AcGePoint3d corners[4];
        if (!m_text.groundBox(corners)) return;
        m_placed.ground.assign(std::begin(corners), std::end(corners));
        const AcCmColor color = m_text.backgroundFillColor();
        const bool isOwn = color.isByColor() || color.isByACI();
        if (m_text.useBackgroundColorOn())
            m_placed.groundRgb = paper;
        else if (isOwn)
            m_placed.groundRgb = color.rgb();
    }

    PlacedText textOf(const Segment& segment, double base) const {
        const ParagraphPiece& first = segment.front();
        const ParagraphLook& look = first.look;
        PlacedText text;
        for (const ParagraphPiece& piece : segment) {
            text.runs.push_back(runOf(piece.look, piece.text, m_family));
            text.runs.back().heightFactor = piece.look.height / look.height;
            text.runs.back().rise = (piece.rise - first.rise) / look.height;
        }
        text.origin = at(first.x, base + first.rise);
        text.along = m_along * look.advanceScale();
        text.up = (m_up + m_along * std::tan(look.oblique)) * look.height;
        return text;
    }

    void align(PlacedText& text, const ParagraphLine& line, double height) const {
        constexpr PlacedText::Anchor anchors[] = {PlacedText::Anchor::start, PlacedText::Anchor::middle,
                                                  PlacedText::Anchor::end};
        dropBlanksAround(text.runs);
        text.anchor = anchors[line.column];
        text.origin = at(line.anchor(), height);
    }

    void placeBar(const ParagraphPiece& bar, double base) {
        const double from = base + bar.rise;
        const double up = bar.kind == ParagraphPiece::Kind::slash ? bar.look.height : 0.0;
        const std::optional<std::uint32_t> color = colorOf(bar.look);
        m_placed.bars.push_back(
            {at(bar.x, from), at(bar.x + bar.width, from + up), color.value_or(0), color.has_value()});
    }

    const AcDbMText& m_text;
    std::wstring m_family;
    AcGeVector3d m_along;
    AcGeVector3d m_up;
    PlacedParagraph m_placed;
};

} // namespace

PlacedParagraph placedParagraph(const AcDbMText& text) { return ParagraphPlacer(text).placed(); }

void takeForm(TextRun& run, const AcGiTextStyle& style) {
    std::wstring typeface;
    Adesk::Boolean isBold = false, isItalic = false;
    int characterSet = 0, pitch = 0;
    style.font(typeface, isBold, isItalic, characterSet, pitch);
    run.family = familyOf(typeface.empty() ? style.fileName() : typeface);
    run.isBold |= isBold;
    run.isItalic |= isItalic;
    run.isUnderlined |= style.isUnderlined();
    run.isOverlined |= style.isOverlined();
    run.isStruckOut |= style.isStrikethrough();
}

AcGiTextStyle styleOf(const TextRun& run, AcDbObjectId textStyle, double height, double widthFactor,
                      double oblique) {
    AcGiTextStyle style;
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(textStyle, AcDb::kForRead);
    if (record.object()) {
        style.setFileName(record->fileName().c_str());
        style.setBigFontFileName(record->bigFontFileName().c_str());
    }
    if (run.isBold || run.isItalic || !run.family.empty())
        (void)style.setFont(run.family.c_str(), run.isBold, run.isItalic, 0, 0);
    style.setTextSize(height * run.heightFactor);
    style.setXScale(widthFactor);
    style.setObliquingAngle(oblique);
    style.setUnderlined(run.isUnderlined);
    style.setOverlined(run.isOverlined);
    style.setStrikethrough(run.isStruckOut);
    return style;
}

} // namespace hostkit
