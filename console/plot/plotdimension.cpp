#include "plotdimension.h"

#include "adsdef.h"
#include "dbdatabase.h"
#include "dbdim.h"
#include "headervariables.h"
#include "textcodes.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

std::wstring measuredText(const AcDbDimension& dimension, int decimals) {
    double value = 0.0;
    if (dimension.measurement(value) != Acad::eOk || !std::isfinite(value)) return {};
    char text[400];
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    std::wstring number(text, result.ptr);
    if (number.find(L'.') != std::wstring::npos) {
        number.erase(number.find_last_not_of(L'0') + 1);
        if (number.ends_with(L'.')) number.pop_back();
    }
    if (dimension.dimensionType() == AcDbDimension::kRadial) return L"R" + number;
    if (dimension.dimensionType() == AcDbDimension::kDiametric) return L"\u2300" + number;
    return number;
}

// The dimension's own text, in which "<>" stands for what was measured; a blank alone hides it.
std::wstring wordingOf(const AcDbDimension& dimension, int decimals) {
    wchar_t* owned = dimension.dimensionText();
    std::wstring text = owned ? owned : L"";
    acutDelString(owned);
    if (text.empty()) return measuredText(dimension, decimals);
    const std::size_t place = text.find(L"<>");
    if (place != std::wstring::npos) text.replace(place, 2, measuredText(dimension, decimals));
    std::wstring line;
    for (const Paragraph& paragraph : paragraphsOfText(text, {}))
        line += (line.empty() ? L"" : L" ") + plainText(paragraph.runs);
    return line;
}

void addTick(PicturePath& lines, const AcGePoint3d& at, const AcGeVector3d& along, double size) {
    const AcGeVector3d slant = (along + AcGeVector3d(-along.y, along.x, 0.0)) * (size / 3.0);
    lines.moveTo(at - slant);
    lines.lineTo(at + slant);
}

// The two measured points, their feet on the dimension line, and the line.
AcGeVector3d addLinear(PicturePath& lines, const AcDbDimension& dimension, double textHeight,
                       AcGePoint3d& middle) {
    const AcGePoint3d first = dimension.pointOf(13);
    const AcGePoint3d second = dimension.pointOf(14);
    const AcGePoint3d line = dimension.pointOf(10);
    AcGeVector3d along(std::cos(dimension.rotation()), std::sin(dimension.rotation()), 0.0);
    if (dimension.dimensionType() == AcDbDimension::kAligned && !first.isEqualTo(second))
        along = (second - first).normal();
    const AcGePoint3d feet[] = {line + along * (first - line).dotProduct(along),
                                line + along * (second - line).dotProduct(along)};
    lines.moveTo(first);
    lines.lineTo(feet[0]);
    lines.lineTo(feet[1]);
    lines.lineTo(second);
    for (const AcGePoint3d& foot : feet) addTick(lines, foot, along, textHeight);
    middle = feet[0] + (feet[1] - feet[0]) * 0.5;
    return along;
}

AcGeVector3d addRadial(PicturePath& lines, const AcDbDimension& dimension, double textHeight,
                       AcGePoint3d& middle) {
    const AcGePoint3d from = dimension.pointOf(10);
    const AcGePoint3d to = dimension.pointOf(15);
    const AcGeVector3d along = (to - from).normal();
    lines.moveTo(from);
    lines.lineTo(to);
    addTick(lines, to, along, textHeight);
    if (dimension.dimensionType() == AcDbDimension::kDiametric) addTick(lines, from, along, textHeight);
    middle = from + (to - from) * 0.5;
    return along;
}

} // namespace

DimensionText dimensionTextOf(AcDbDatabase& database) {
    DimensionText form;
    const double height = database.header().real(L"DIMTXT", form.height);
    const double scale = database.header().real(L"DIMSCALE", 1.0);
    if (height > 0.0) form.height = height * (scale > 0.0 ? scale : 1.0);
    form.decimals = static_cast<int>(std::clamp<Adesk::Int64>(database.header().integer(L"DIMDEC", 2), 0, 8));
    return form;
}

bool plainDimension(const AcDbDimension& dimension, const DimensionText& form, std::uint32_t rgb,
                    PicturePath& lines, PlacedText& text) {
    AcGePoint3d middle;
    AcGeVector3d along;
    switch (dimension.dimensionType()) {
    case AcDbDimension::kRotated:
    case AcDbDimension::kAligned:
        along = addLinear(lines, dimension, form.height, middle);
        break;
    case AcDbDimension::kRadial:
    case AcDbDimension::kDiametric:
        along = addRadial(lines, dimension, form.height, middle);
        break;
    default:
        return false;
    }
    // Text is read from below or from the right.
    if (along.x < -1e-6 || (std::abs(along.x) <= 1e-6 && along.y < 0.0)) along.negate();
    const AcGeVector3d up(-along.y, along.x, 0.0);
    TextDefaults defaults;
    defaults.rgb = rgb;
    text.runs = runsOfText(wordingOf(dimension, form.decimals), defaults);
    text.anchor = PlacedText::Anchor::middle;
    text.origin = middle + up * (form.height * 0.3);
    text.along = along * form.height;
    text.up = up * form.height;
    return true;
}
