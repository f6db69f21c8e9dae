#include "svgpicture.h"

#include "escaping.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

using hostkit::PicturePath;
using hostkit::PlacedText;
using hostkit::TextReach;
using hostkit::TextRun;

namespace {

constexpr double margin = 10.0;       // millimetres of paper around the drawing
constexpr double thinnestLine = 0.13; // millimetres
constexpr double heaviestLine =
    0.5; // millimetres; the page is smaller than the sheet that weights are meant for
constexpr double usualWeight = 0.25;    // of lines that ask for no weight of their own
constexpr double dotRadius = 0.35;      // millimetres
constexpr double shortestPattern = 0.6; // a dash pattern shorter than this on paper reads as a grey line
constexpr double largestCoordinate = 1e15;
constexpr double pagesAround = 4.0; // how far off the page a coordinate may lie before it is cut
constexpr double typeSizeOfCapitals = 1.0 / 0.72;

bool isUsable(double x, double y) {
    return std::abs(x) < largestCoordinate && std::abs(y) < largestCoordinate; // false for NaN too
}

bool isUsable(const PicturePath& path) {
    return std::all_of(path.points().begin(), path.points().end(),
                       [](const AcGePoint3d& point) { return isUsable(point.x, point.y); });
}

void appendDecimal(std::string& bytes, double value, int decimals) {
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    std::string_view number(text, static_cast<std::size_t>(written.ptr - text));
    if (number.find('.') != std::string_view::npos) {
        while (number.back() == '0') number.remove_suffix(1);
        if (number.back() == '.') number.remove_suffix(1);
    }
    bytes += number == "-0" ? "0" : number;
}

void appendThousandths(std::string& bytes, long long value) {
    char text[24];
    char* place = text + sizeof text;
    const bool isNegative = value < 0;
    auto rest = static_cast<unsigned long long>(isNegative ? -value : value);
    unsigned decimals = static_cast<unsigned>(rest % 1000);
    rest /= 1000;
    if (decimals != 0) {
        for (int i = 0; i < 3; ++i, decimals /= 10)
            if (decimals % 10 != 0 || place != text + sizeof text)
                *--place = static_cast<char>('0' + decimals % 10);
        *--place = '.';
    }
    do *--place = static_cast<char>('0' + rest % 10);
    while ((rest /= 10) != 0);
    if (isNegative) *--place = '-';
    bytes.append(place, text + sizeof text);
}

// A line or a text in a light colour cannot be read on white: its luminance (ITU-R BT.709, linear light) is
// brought down to a limit, its hue stays.
constexpr double brightestLuminance = 0.4;

std::uint32_t darkened(std::uint32_t rgb) {
    const auto linear = [rgb](int shift) { return std::pow((rgb >> shift & 0xFF) / 255.0, 2.2); };
    const double luminance = 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
    if (luminance <= brightestLuminance) return rgb;
    const double factor = std::pow(brightestLuminance / luminance, 1.0 / 2.2);
    std::uint32_t result = 0;
    for (const int shift : {16, 8, 0})
        result |= static_cast<std::uint32_t>(std::lround((rgb >> shift & 0xFF) * factor)) << shift;
    return result;
}

std::string colorText(std::uint32_t rgb) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06x", rgb & 0xFFFFFF);
    return text;
}

} // namespace

// --- Extents
// ----------------------------------------------------------------------------------------------------

void PictureExtents::add(double x, double y, double around) {
    if (!isUsable(x, y)) return;
    if (!m_clips.empty()) {
        const Box& clip = m_clips.back();
        if (clip.isEmpty()) return;
        x = std::clamp(x, clip.minX, clip.maxX);
        y = std::clamp(y, clip.minY, clip.maxY);
    }
    if (isEmpty()) m_box = {x, y, x, y};
    m_box.minX = std::min(m_box.minX, x - around);
    m_box.minY = std::min(m_box.minY, y - around);
    m_box.maxX = std::max(m_box.maxX, x + around);
    m_box.maxY = std::max(m_box.maxY, y + around);
}

void PictureExtents::beginClip(const PicturePath& path) {
    PictureExtents outline;
    outline.m_clips = m_clips;
    outline.stroke(path, StrokeStyle());
    m_clips.push_back(outline.m_box);
}

void PictureExtents::endClip() {
    if (!m_clips.empty()) m_clips.pop_back();
}

void PictureExtents::stroke(const PicturePath& path, const StrokeStyle& style) {
    if (!isUsable(path)) return;
    for (const AcGePoint3d& point : path.points()) add(point.x, point.y, style.width / 2);
}

void PictureExtents::fill(const PicturePath& path, std::uint32_t, double) { stroke(path, StrokeStyle()); }

void PictureExtents::text(const PlacedText& text) {
    const TextReach reach = hostkit::reachOf(text);
    for (const double across : {reach.start, reach.end})
        for (const double height : {-0.25, 1.0}) {
            const AcGePoint3d corner = text.origin + text.along * across + text.up * height;
            add(corner.x, corner.y);
        }
}

void PictureExtents::dot(const AcGePoint3d& point, std::uint32_t) { add(point.x, point.y); }

// --- The page
// ---------------------------------------------------------------------------------------------------

PictureFrame PictureFrame::fitted(const PictureExtents& extents, double width, double height,
                                  bool isExactSize) {
    PictureFrame frame;
    const double wide = extents.isEmpty() ? 0.0 : extents.maxX() - extents.minX();
    const double high = extents.isEmpty() ? 0.0 : extents.maxY() - extents.minY();
    const double roomX = std::max(width - 2 * margin, width / 2);
    const double roomY = std::max(height - 2 * margin, height / 2);
    // A page without a fixed size lies or stands as the drawing does.
    const bool isTurned = !isExactSize && (wide < high) != (roomX < roomY);
    const double across = isTurned ? roomY : roomX;
    const double upwards = isTurned ? roomX : roomY;
    const double byWidth = wide > 0.0 ? across / wide : HUGE_VAL;
    const double byHeight = high > 0.0 ? upwards / high : HUGE_VAL;
    const double scale = std::min(byWidth, byHeight);
    frame.scale = std::isfinite(scale) ? scale : 1.0;
    frame.width = isExactSize ? width : std::max(wide * frame.scale + 2 * margin, 4 * margin);
    frame.height = isExactSize ? height : std::max(high * frame.scale + 2 * margin, 4 * margin);
    const double centerX = extents.isEmpty() ? 0.0 : extents.minX() + wide / 2;
    const double centerY = extents.isEmpty() ? 0.0 : extents.minY() + high / 2;
    frame.originX = centerX - frame.width / 2 / frame.scale;
    frame.originY = centerY - frame.height / 2 / frame.scale;
    return frame;
}

PictureFrame PictureFrame::scaled(const PictureExtents& extents, double scale) {
    PictureFrame frame;
    const double wide = extents.isEmpty() ? 0.0 : extents.maxX() - extents.minX();
    const double high = extents.isEmpty() ? 0.0 : extents.maxY() - extents.minY();
    frame.scale = scale;
    frame.width = std::max(wide * scale + 2 * margin, 4 * margin);
    frame.height = std::max(high * scale + 2 * margin, 4 * margin);
    frame.originX = (extents.isEmpty() ? 0.0 : extents.minX() + wide / 2) - frame.width / 2 / scale;
    frame.originY = (extents.isEmpty() ? 0.0 : extents.minY() + high / 2) - frame.height / 2 / scale;
    return frame;
}

// --- The document
// -----------------------------------------------------------------------------------------------

SvgPicture::SvgPicture(const PictureFrame& frame, const std::wstring& title, const Paper& paper,
                       bool hasWeights)
    : m_frame(frame)
    , m_paper(paper)
    , m_hasWeights(hasWeights) {
    m_body = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"";
    appendNumber(frame.width);
    m_body += "mm\" height=\"";
    appendNumber(frame.height);
    m_body += "mm\" viewBox=\"0 0 ";
    appendNumber(frame.width);
    m_body += ' ';
    appendNumber(frame.height);
    m_body += "\">\n<title>";
    hostkit::appendXmlText(title, m_body);
    m_body += "</title>\n";
    if (m_paper.isShown)
        m_body += "<rect width=\"100%\" height=\"100%\" fill=\"" + colorText(m_paper.ground) + "\"/>\n";
}

void SvgPicture::appendNumber(double value) { appendDecimal(m_body, value, 3); }

SvgPicture::PagePoint SvgPicture::onPage(const AcGePoint3d& point) const {
    // What shows the picture may count in single precision: far off the page a coordinate is cut.
    const double reach = pagesAround * (m_frame.width + m_frame.height);
    const auto thousandths = [reach](double value) {
        return std::llround(std::clamp(value, -reach, reach) * 1000.0);
    };
    return {thousandths(pageX(point.x)), thousandths(pageY(point.y))};
}

void SvgPicture::appendPoint(const PagePoint& point) {
    appendThousandths(m_body, point.x);
    m_body += ' ';
    appendThousandths(m_body, point.y);
}

void SvgPicture::appendLine(const PagePoint& from, const PagePoint& to) {
    const long long across = to.x - from.x;
    const long long down = to.y - from.y;
    if (down == 0) {
        m_body += 'h';
        appendThousandths(m_body, across);
    } else if (across == 0) {
        m_body += 'v';
        appendThousandths(m_body, down);
    } else {
        m_body += 'l';
        appendThousandths(m_body, across);
        if (down > 0) m_body += ' ';
        appendThousandths(m_body, down);
    }
}

bool SvgPicture::appendPath(const PicturePath& path) {
    if (path.isEmpty() || !isUsable(path)) return false;
    m_body += "<path d=\"";
    auto point = path.points().begin();
    PagePoint last;
    PagePoint start;
    for (const PicturePath::Step step : path.steps()) {
        if (step == PicturePath::Step::close) {
            m_body += 'Z';
            last = start;
            continue;
        }
        if (step == PicturePath::Step::line) {
            const PagePoint to = onPage(*point++);
            appendLine(last, to);
            last = to;
            continue;
        }
        m_body += step == PicturePath::Step::move ? 'M' : 'C';
        const int count = step == PicturePath::Step::curve ? 3 : 1;
        for (int i = 0; i < count; ++i) {
            if (i) m_body += ' ';
            last = onPage(*point++);
            appendPoint(last);
        }
        if (step == PicturePath::Step::move) start = last;
    }
    m_body += '"';
    return true;
}

void SvgPicture::openGroup(const std::string& attributes) {
    if (m_group == attributes) return;
    closeGroup();
    m_body += "<g " + attributes + ">\n";
    m_group = attributes;
}

void SvgPicture::closeGroup() {
    if (!m_group.empty()) m_body += "</g>\n";
    m_group.clear();
}

std::uint32_t SvgPicture::readable(std::uint32_t rgb) const { return m_paper.isDark() ? rgb : darkened(rgb); }

std::string SvgPicture::strokeAttributes(const StrokeStyle& style) const {
    const double weight = !m_hasWeights          ? std::min(style.lineweight, heaviestLine)
                          : style.lineweight > 0 ? style.lineweight
                                                 : usualWeight;
    const double width = std::max({thinnestLine, weight, style.width * m_frame.scale});
    std::string text = "fill=\"none\" stroke=\"" + colorText(readable(style.rgb)) + "\" stroke-width=\"";
    appendDecimal(text, width, 3);
    // A wide polyline ends at its end points; a thin line may show its round end.
    text += style.width > 0.0 ? "\" stroke-linejoin=\"miter\""
                              : "\" stroke-linecap=\"round\" stroke-linejoin=\"round\"";
    double pattern = 0.0;
    for (const double dash : style.dashes) pattern += dash * m_frame.scale;
    if (style.dashes.empty() || !(pattern >= shortestPattern)) return text;
    text += " stroke-dasharray=\"";
    for (std::size_t i = 0; i < style.dashes.size(); ++i) {
        if (i) text += ' ';
        appendDecimal(text, style.dashes[i] * m_frame.scale, 3);
    }
    text += '"';
    return text;
}

void SvgPicture::stroke(const PicturePath& path, const StrokeStyle& style) {
    openGroup(strokeAttributes(style));
    if (!appendPath(path)) return;
    if (style.dashStart != 0.0 && !style.dashes.empty()) {
        m_body += " stroke-dashoffset=\"";
        appendNumber(style.dashStart * m_frame.scale);
        m_body += '"';
    }
    m_body += "/>\n";
}

void SvgPicture::fill(const PicturePath& path, std::uint32_t rgb, double opacity) {
    std::string attributes = "fill=\"" + colorText(rgb) + "\" fill-rule=\"evenodd\" stroke=\"none\"";
    if (opacity < 1.0) {
        attributes += " fill-opacity=\"";
        appendDecimal(attributes, opacity, 2);
        attributes += '"';
    }
    openGroup(attributes);
    if (appendPath(path)) m_body += "/>\n";
}

void SvgPicture::dot(const AcGePoint3d& point, std::uint32_t rgb) {
    if (!isUsable(point.x, point.y)) return;
    openGroup("fill=\"" + colorText(readable(rgb)) + "\" stroke=\"none\"");
    m_body += "<circle cx=\"";
    appendNumber(pageX(point.x));
    m_body += "\" cy=\"";
    appendNumber(pageY(point.y));
    m_body += "\" r=\"";
    appendNumber(dotRadius);
    m_body += "\"/>\n";
}

void SvgPicture::endlessLine(const AcGePoint3d& point, const AcGeVector3d& direction, bool isBothWays,
                             const StrokeStyle& style) {
    const AcGeVector3d flat(direction.x, direction.y, 0.0);
    const double length = flat.length();
    const AcGePoint3d center(m_frame.originX + m_frame.width / 2 / m_frame.scale,
                             m_frame.originY + m_frame.height / 2 / m_frame.scale, 0.0);
    if (!(length > 0.0) || !isUsable(point.x, point.y)) return;
    const AcGeVector3d unit = flat / length;
    const double nearest = AcGeVector3d(center.x - point.x, center.y - point.y, 0.0).dotProduct(unit);
    const double reach = (m_frame.width + m_frame.height) / m_frame.scale;
    const double from = isBothWays ? nearest - reach : std::max(0.0, nearest - reach);
    const double to = nearest + reach;
    if (to <= from) return;
    PicturePath path;
    path.moveTo(point + unit * from);
    path.lineTo(point + unit * to);
    stroke(path, style);
}

void SvgPicture::beginClip(const PicturePath& path) {
    closeGroup();
    ++m_clips;
    ++m_openClips;
    const std::string name = "clip" + std::to_string(m_clips);
    m_body += "<clipPath id=\"" + name + "\">";
    if (appendPath(path)) m_body += " clip-rule=\"evenodd\"/>";
    m_body += "</clipPath>\n<g clip-path=\"url(#" + name + ")\">\n";
}

void SvgPicture::endClip() {
    if (m_openClips == 0) return;
    closeGroup();
    m_body += "</g>\n";
    --m_openClips;
}

void SvgPicture::appendRun(const TextRun& run, double size, double& rise) {
    m_body += "<tspan fill=\"" + colorText(readable(run.rgb)) + '"';
    if (run.heightFactor != 1.0) {
        m_body += " font-size=\"";
        appendNumber(size * run.heightFactor);
        m_body += '"';
    }
    if (run.rise != rise) {
        m_body += " dy=\"";
        appendNumber(-(run.rise - rise) * size / typeSizeOfCapitals);
        m_body += '"';
        rise = run.rise;
    }
    if (run.isBold) m_body += " font-weight=\"bold\"";
    if (run.isItalic) m_body += " font-style=\"italic\"";
    if (!run.family.empty()) {
        m_body += " font-family=\"";
        hostkit::appendXmlText(run.family, m_body);
        m_body += '"';
    }
    if (run.isUnderlined || run.isOverlined || run.isStruckOut) {
        m_body += " text-decoration=\"";
        if (run.isUnderlined) m_body += "underline ";
        if (run.isOverlined) m_body += "overline ";
        if (run.isStruckOut) m_body += "line-through ";
        m_body.back() = '"';
    }
    m_body += '>';
    hostkit::appendXmlText(run.text, m_body);
    m_body += "</tspan>";
}

void SvgPicture::text(const PlacedText& text) {
    const double height = std::hypot(text.up.x, text.up.y) * m_frame.scale;
    const double flatness = std::abs(text.along.x * text.up.y - text.along.y * text.up.x);
    if (!isUsable(text.origin.x, text.origin.y) || !(height > 1e-3) || !(flatness > 0.0)) return;
    closeGroup();
    const double size = height * typeSizeOfCapitals;
    // Page millimetres for one unit of the text's own axes, whose y points down.
    const double unit = m_frame.scale / height;
    m_body += "<text xml:space=\"preserve\" font-family=\"Arial, Liberation Sans, DejaVu Sans, sans-serif\" "
              "font-size=\"";
    appendNumber(size);
    m_body += "\" transform=\"matrix(";
    for (const double entry :
         {text.along.x * unit, -text.along.y * unit, -text.up.x * unit, text.up.y * unit}) {
        appendDecimal(m_body, entry, 6);
        m_body += ' ';
    }
    appendPoint(onPage(text.origin));
    m_body += ")\"";
    if (text.anchor == PlacedText::Anchor::middle) m_body += " text-anchor=\"middle\"";
    if (text.anchor == PlacedText::Anchor::end) m_body += " text-anchor=\"end\"";
    if (text.fitLength > 0.0) {
        m_body += " textLength=\"";
        appendNumber(text.fitLength / std::hypot(text.along.x, text.along.y) * height);
        m_body += "\" lengthAdjust=\"spacingAndGlyphs\"";
    }
    m_body += '>';
    double rise = 0.0;
    for (const TextRun& run : text.runs) appendRun(run, size, rise);
    m_body += "</text>\n";
}

std::string SvgPicture::finish() {
    while (m_openClips > 0) endClip();
    closeGroup();
    m_body += "</svg>\n";
    return std::move(m_body);
}
