#include "paragraphlook.h"

#include "dbaccess.h"
#include "dbtextstyletablerecord.h"
#include "groupblock.h"
#include "groupcodes.h"
#include "markupreader.h"
#include "numbertext.h"

#include <cmath>
#include <numbers>

namespace hostkit {
namespace {

constexpr double kHeightRange = 1e4;
constexpr double kFactorRange = 100.0;
constexpr double kSteepestOblique = 85.0;

// Replaces what is there by a positive number within a range around the usual value.
void setWithin(double& field, double value, double usual, double range) {
    if (value >= usual / range && value <= usual * range) field = value;
}

bool ParagraphLook::*lineMarkOf(wchar_t code) {
    return code == L'L' || code == L'l'   ? &ParagraphLook::isUnderlined
           : code == L'O' || code == L'o' ? &ParagraphLook::isOverlined
                                          : &ParagraphLook::isStruckOut;
}

// The host keeps the name of a typeface in its own extended data; there may be no file then.
bool hasTypeface(const AcDbTextStyleTableRecord& style) {
    if (!style.extendedData()) return false;
    GroupWalker walker(*style.extendedData());
    AcDbDxfGroup group;
    bool isHosts = false;
    while (walker.next(group)) {
        if (group.code == applicationCode) isHosts = group.text == L"ACAD";
        if (isHosts && group.code == firstExtendedCode && !group.text.empty()) return true;
    }
    return false;
}

} // namespace

const LetterFace& faceOfStyle(AcDbObjectId textStyle) {
    const auto* const style = DatabaseAccess::objectOf<AcDbTextStyleTableRecord>(textStyle);
    if (!style) return LetterFace::strokes();
    if (style->fileName().empty() && hasTypeface(*style)) return LetterFace::sans();
    return LetterFace::ofFile(style->fileName());
}

ParagraphLook ParagraphLook::ofStyle(AcDbObjectId textStyle, double height) {
    ParagraphLook look;
    look.height = std::isfinite(height) && height > 0.0 ? height : 0.0;
    look.face = &faceOfStyle(textStyle);
    const auto* const style = DatabaseAccess::objectOf<AcDbTextStyleTableRecord>(textStyle);
    if (!style) return look;
    look.widthFactor = style->xScale();
    look.oblique = style->obliquingAngle();
    return look;
}

void ParagraphLook::take(const MarkupPiece& code, double paragraphHeight) {
    if (code.kind == MarkupPiece::Kind::toggle) {
        bool& isMarked = this->*lineMarkOf(code.code);
        isMarked = !isMarked;
        return;
    }
    double number = 0.0;
    int integer = 0;
    long long wide = 0;
    switch (code.code) {
    case L'H':
        return setHeight(code.text, paragraphHeight);
    case L'W':
        if (parseReal(code.text, number)) setWithin(widthFactor, number, 1.0, kFactorRange);
        return;
    case L'T':
        if (parseReal(code.text, number)) setWithin(tracking, number, 1.0, kFactorRange);
        return;
    case L'Q':
        if (parseReal(code.text, number) && std::abs(number) < kSteepestOblique)
            oblique = number * std::numbers::pi / 180.0;
        return;
    case L'A':
        if (parseInteger(code.text, integer) && integer >= 0 && integer <= 2) verticalPlace = integer;
        return;
    case L'C':
        if (!parseInteger(code.text, integer)) return;
        colorIndex = integer;
        rgb.reset();
        return;
    case L'c': // blue stands highest
        if (!parseInteger(code.text, wide)) return;
        rgb = static_cast<std::uint32_t>((wide & 0xFF) << 16 | (wide & 0xFF00) | (wide >> 16 & 0xFF));
        colorIndex.reset();
        return;
    case L'f':
    case L'F':
        return setFont(code.code, code.text);
    case L'p':
        return;
    default:
        this->*lineMarkOf(code.code) = code.code < L'a';
    }
}

void ParagraphLook::setHeight(std::wstring_view value, double paragraphHeight) {
    const bool isRelative = value.ends_with(L'x') || value.ends_with(L'X');
    double number = 0.0;
    if (parseReal(isRelative ? value.substr(0, value.size() - 1) : value, number))
        setWithin(height, isRelative ? height * number : number, paragraphHeight, kHeightRange);
}

void ParagraphLook::setFont(wchar_t code, std::wstring_view argument) {
    font = argument.substr(0, argument.find(L'|'));
    isBold = argument.find(L"|b1") != argument.npos;
    isItalic = argument.find(L"|i1") != argument.npos;
    const bool isFile = code == L'F' || font.ends_with(L".shx");
    face = isFile ? &LetterFace::ofFile(font) : &LetterFace::sans();
}

} // namespace hostkit
