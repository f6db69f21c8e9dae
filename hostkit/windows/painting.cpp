#include "painting.h"

#include "escaping.h"

#include <cstdio>

namespace hostkit {
namespace {

std::string numberText(double value) {
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%.2f", value);
    std::string text(buffer, static_cast<std::size_t>(length));
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string colorText(COLORREF color) {
    if (color == noColor) return "none";
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", color & 0xFF, color >> 8 & 0xFF,
                  color >> 16 & 0xFF);
    return buffer;
}

std::string attribute(const char* name, double value) {
    return std::string(" ") + name + "=\"" + numberText(value) + "\"";
}

std::string rectangle(const RECT& rect, const std::string& rest) {
    return "<rect" + attribute("x", rect.left) + attribute("y", rect.top) +
           attribute("width", widthOf(rect)) + attribute("height", heightOf(rect)) + rest + "/>\n";
}

std::string frame(const RECT& rect, COLORREF color) {
    return "<rect" + attribute("x", rect.left + 0.5) + attribute("y", rect.top + 0.5) +
           attribute("width", widthOf(rect) - 1.0) + attribute("height", heightOf(rect) - 1.0) +
           " fill=\"none\" stroke=\"" + colorText(color) + "\"/>\n";
}

std::string line(const PaintedItem& item) {
    const RECT& ends = item.bounds;
    return "<line" + attribute("x1", ends.left + 0.5) + attribute("y1", ends.top + 0.5) +
           attribute("x2", ends.right + 0.5) + attribute("y2", ends.bottom + 0.5) + " stroke=\"" +
           colorText(item.color) + "\"/>\n";
}

std::string textRun(const PaintedItem& item) {
    if (item.text.empty()) return {};
    std::string out = "<text" + attribute("x", item.bounds.left) +
                      attribute("y", item.bounds.top + item.face.ascent()) +
                      attribute("font-size", item.face.em) + attribute("textLength", widthOf(item.bounds)) +
                      " lengthAdjust=\"spacingAndGlyphs\" fill=\"" + colorText(item.color) + "\"";
    if (item.face.isBold) out += " font-weight=\"bold\"";
    if (item.face.isUnderlined) out += " text-decoration=\"underline\"";
    out += " xml:space=\"preserve\">";
    const std::wstring_view text = item.text;
    const auto mark = static_cast<std::size_t>(item.underlined);
    if (item.underlined < 0 || mark >= text.size()) {
        appendXmlText(text, out);
    } else {
        appendXmlText(text.substr(0, mark), out);
        out += "<tspan text-decoration=\"underline\">";
        appendXmlText(text.substr(mark, 1), out);
        out += "</tspan>";
        appendXmlText(text.substr(mark + 1), out);
    }
    return out + "</text>\n";
}

std::string iconShape(const IconShape& shape) {
    const std::string look = " fill=\"" + colorText(shape.fill) + "\" stroke=\"" + colorText(shape.stroke) +
                             "\"" + attribute("stroke-width", shape.strokeWidth) + "/>";
    const float* at = shape.coordinates;
    switch (shape.kind) {
    case IconShape::Kind::rectangle:
        return "<rect" + attribute("x", at[0]) + attribute("y", at[1]) + attribute("width", at[2] - at[0]) +
               attribute("height", at[3] - at[1]) + look;
    case IconShape::Kind::ellipse:
        return "<ellipse" + attribute("cx", (at[0] + at[2]) / 2) + attribute("cy", (at[1] + at[3]) / 2) +
               attribute("rx", (at[2] - at[0]) / 2) + attribute("ry", (at[3] - at[1]) / 2) + look;
    default:
        break;
    }
    std::string points;
    for (std::size_t i = 0; i < static_cast<std::size_t>(shape.points); ++i)
        points.append(i ? " " : "")
            .append(numberText(at[2 * i]))
            .append(1, ',')
            .append(numberText(at[2 * i + 1]));
    return (shape.kind == IconShape::Kind::polygon ? "<polygon points=\"" : "<polyline points=\"") + points +
           "\"" + look;
}

std::string icon(const PaintedItem& item) {
    if (item.iconWidth <= 0 || item.iconHeight <= 0) return {};
    const RECT& place = item.bounds;
    std::string out = "<g transform=\"translate(" + numberText(place.left) + "," + numberText(place.top) +
                      ") scale(" + numberText(static_cast<double>(widthOf(place)) / item.iconWidth) + "," +
                      numberText(static_cast<double>(heightOf(place)) / item.iconHeight) + ")\"" +
                      (item.isDisabled ? " opacity=\"0.4\"" : "") + ">";
    for (const IconShape& shape : item.shapes) out += iconShape(shape);
    return out + "</g>\n";
}

std::string bodyOf(const PaintedItem& item) {
    switch (item.kind) {
    case PaintKind::fill:
        return rectangle(item.bounds, " fill=\"" + colorText(item.color) + "\"");
    case PaintKind::frame:
        return frame(item.bounds, item.color);
    case PaintKind::line:
        return line(item);
    case PaintKind::text:
        return textRun(item);
    case PaintKind::icon:
        return icon(item);
    }
    return {};
}

} // namespace

bool isClipped(const PaintedItem& item) { return !contains(item.clip, item.bounds); }

std::string paintingAsSvg(const Painting& painting) {
    const std::string width = numberText(painting.size.cx), height = numberText(painting.size.cy);
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
        width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height +
        "\" font-family=\"Liberation Sans, Arial, Helvetica, DejaVu Sans, sans-serif\">\n";
    int clips = 0;
    for (const PaintedItem& item : painting.items) {
        if (isEmpty(item.clip) || !isClipped(item)) {
            if (!isEmpty(item.clip)) out += bodyOf(item);
            continue;
        }
        const std::string name = std::to_string(++clips).insert(0, 1, 'c');
        out.append("<clipPath id=\"").append(name).append("\">").append(rectangle(item.clip, ""));
        out.append("</clipPath><g clip-path=\"url(#").append(name).append(")\">");
        out.append(bodyOf(item)).append("</g>\n");
    }
    return out + "</svg>\n";
}

} // namespace hostkit
