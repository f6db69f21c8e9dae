// Pictures of multilines.

#include "acgi.h"
#include "dbaccess.h"
#include "dbopaque.h"
#include "pathgeometry.h"
#include "recordcursor.h"
#include "recordpictures.h"

#include <algorithm>
#include <numbers>

namespace hostkit {

namespace {

enum StyleFlags {
    filled = 1,
    jointed = 2,
    startSquare = 16,
    startRound = 64,
    endSquare = 256,
    endRound = 1024
};
enum LineFlags { closed = 2, noStartCaps = 4, noEndCaps = 8 };

struct MlineElement {
    double offset = 0.0;
    Adesk::UInt16 color = AcCmEntityColor::kACIbyLayer;
};

struct MlineStyle {
    std::vector<MlineElement> elements;
    Adesk::UInt16 fillColor = AcCmEntityColor::kACIbyLayer;
    unsigned flags = 0;
};

struct MlineVertex {
    AcGePoint3d point;
    AcGeVector3d direction;
    AcGeVector3d miter;
    /// For each element its distance along the miter, and then along the direction where its line begins,
    /// ends, begins again and so on.
    std::vector<std::vector<double>> elements;
};

struct MlineRecord {
    std::vector<MlineVertex> vertices;
    AcDbObjectId style;
    double scale = 1.0;
    int justification = 1; ///< 0 top, 1 at zero, 2 bottom
    unsigned flags = 0;
};

MlineStyle readStyle(AcDbObjectId id) {
    MlineStyle style;
    const AcDbObject* const object = DatabaseAccess::object(id);
    if (!object) return style;
    for (RecordCursor group(*object); group.next();) {
        if (group.code() == 70) style.flags = static_cast<unsigned>(group.integer());
        if (group.code() == 49) style.elements.push_back({group.real()});
        if (group.code() != 62) continue;
        const auto color = static_cast<Adesk::UInt16>(group.integer());
        (style.elements.empty() ? style.fillColor : style.elements.back().color) = color;
    }
    return style;
}

MlineRecord readMline(const AcDbOpaqueEntity& entity) {
    MlineRecord line;
    for (RecordCursor group(entity); group.next();) {
        MlineVertex* const last = line.vertices.empty() ? nullptr : &line.vertices.back();
        switch (group.code()) {
        case 340:
            line.style = group.id();
            break;
        case 40:
            line.scale = group.real(1.0);
            break;
        case 70:
            line.justification = static_cast<int>(group.integer(1));
            break;
        case 71:
            line.flags = static_cast<unsigned>(group.integer());
            break;
        case 11:
            line.vertices.push_back({group.point(), {}, {}, {}});
            break;
        case 12:
            if (last) last->direction = group.vector();
            break;
        case 13:
            if (last) last->miter = group.vector();
            break;
        case 74:
            if (last) last->elements.emplace_back();
            break;
        case 41:
            if (last && !last->elements.empty()) last->elements.back().push_back(group.real());
            break;
        }
    }
    return line;
}

// Records of careless programs have no distances: they follow from the offsets of the style, which count at
// right angles to the segments.
void completeDistances(MlineRecord& line, const MlineStyle& style) {
    if (style.elements.empty()) return;
    const auto less = [](const MlineElement& a, const MlineElement& b) { return a.offset < b.offset; };
    const auto [least, most] = std::minmax_element(style.elements.begin(), style.elements.end(), less);
    const double shift = line.justification == 0   ? most->offset
                         : line.justification == 2 ? least->offset
                                                   : 0.0;
    for (MlineVertex& vertex : line.vertices) {
        if (!vertex.elements.empty()) continue;
        const double slant = vertex.direction.normal().crossProduct(vertex.miter.normal()).length();
        for (const MlineElement& element : style.elements)
            vertex.elements.push_back(
                {slant > 0.0 ? (element.offset - shift) * line.scale / slant : 0.0, 0.0});
    }
}

class MlineDrawer {
public:
    MlineDrawer(AcGiWorldDraw& draw, const MlineRecord& line, const MlineStyle& style)
        : m_draw(draw)
        , m_line(line)
        , m_style(style) {
        for (const MlineVertex& vertex : line.vertices) m_count = std::max(m_count, vertex.elements.size());
    }

    void drawAll() {
        if (m_line.vertices.size() < 2 || m_count == 0) return;
        if ((m_style.flags & filled) != 0) drawFill();
        for (std::size_t element = 0; element < m_count; ++element) drawElement(element);
        setColor(0);
        if ((m_style.flags & jointed) != 0)
            for (std::size_t i = isClosed() ? 0 : 1; i + (isClosed() ? 0 : 1) < m_line.vertices.size(); ++i)
                drawAcross(i);
        if (isClosed()) return;
        if ((m_line.flags & noStartCaps) == 0) drawCap(0, startSquare, startRound, -1.0);
        if ((m_line.flags & noEndCaps) == 0) drawCap(m_line.vertices.size() - 1, endSquare, endRound, 1.0);
    }

private:
    bool isClosed() const { return (m_line.flags & closed) != 0; }

    AcGePoint3d at(std::size_t vertex, std::size_t element) const {
        const MlineVertex& from = m_line.vertices[vertex];
        const bool isThere = element < from.elements.size() && !from.elements[element].empty();
        return from.point + from.miter * (isThere ? from.elements[element].front() : 0.0);
    }

    // The outermost elements, whatever their order.
    std::pair<std::size_t, std::size_t> outermost(std::size_t vertex) const {
        std::size_t least = 0, most = 0;
        const auto distance = [&](std::size_t element) {
            return (at(vertex, element) - m_line.vertices[vertex].point)
                .dotProduct(m_line.vertices[vertex].miter);
        };
        for (std::size_t element = 1; element < m_count; ++element) {
            if (distance(element) < distance(least)) least = element;
            if (distance(element) > distance(most)) most = element;
        }
        return {least, most};
    }

    void setColor(std::size_t element) const {
        if (element < m_style.elements.size())
            m_draw.subEntityTraits().setColor(m_style.elements[element].color);
    }

    void drawElement(std::size_t element) const {
        PicturePath path;
        const std::size_t count = m_line.vertices.size();
        for (std::size_t i = 0; i + (isClosed() ? 0 : 1) < count; ++i)
            appendSegment(path, i, (i + 1) % count, element);
        setColor(element);
        drawPath(m_draw, path);
    }

    // From break to break; the last line runs to the next vertex unless it ends before.
    void appendSegment(PicturePath& path, std::size_t from, std::size_t to, std::size_t element) const {
        const MlineVertex& vertex = m_line.vertices[from];
        const AcGePoint3d begin = at(from, element);
        const AcGePoint3d end = at(to, element);
        static const std::vector<double> whole = {0.0, 0.0};
        const bool isThere = element < vertex.elements.size() && vertex.elements[element].size() > 1;
        const std::vector<double>& told = isThere ? vertex.elements[element] : whole;
        for (std::size_t i = 1; i < told.size(); i += 2) {
            const bool isFirst = i == 1 && told[1] == 0.0;
            const bool hasEnd = i + 1 < told.size();
            path.moveTo(isFirst ? begin : begin + vertex.direction * told[i]);
            path.lineTo(hasEnd ? begin + vertex.direction * told[i + 1] : end);
        }
    }

    void drawAcross(std::size_t vertex) const {
        const auto [least, most] = outermost(vertex);
        const AcGePoint3d ends[] = {at(vertex, least), at(vertex, most)};
        m_draw.geometry().polyline(2, ends);
    }

    void drawCap(std::size_t vertex, StyleFlags square, StyleFlags round, double outwards) const {
        if ((m_style.flags & square) != 0) drawAcross(vertex);
        if ((m_style.flags & round) == 0) return;
        const auto [least, most] = outermost(vertex);
        const AcGeVector3d across = (at(vertex, most) - at(vertex, least)) / 2.0;
        const AcGeVector3d along = m_line.vertices[vertex].direction.normal() * (across.length() * outwards);
        PicturePath path;
        path.arc(at(vertex, least) + across, -across, along, 0.0, std::numbers::pi);
        drawPath(m_draw, path);
    }

    void drawFill() const {
        PicturePath path;
        const auto side = [&](bool isMost) {
            const std::size_t count = m_line.vertices.size();
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t vertex = isMost && !isClosed() ? count - 1 - i : i;
                const auto [least, most] = outermost(vertex);
                const AcGePoint3d point = at(vertex, isMost ? most : least);
                i == 0 && (!isMost || isClosed()) ? path.moveTo(point) : path.lineTo(point);
            }
            if (isMost || isClosed()) path.close();
        };
        side(false);
        side(true);
        m_draw.subEntityTraits().setColor(m_style.fillColor);
        drawArea(m_draw, path);
    }

    AcGiWorldDraw& m_draw;
    const MlineRecord& m_line;
    const MlineStyle& m_style;
    std::size_t m_count = 0;
};

} // namespace

void drawMline(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    MlineRecord line = readMline(entity);
    const MlineStyle style = readStyle(line.style);
    completeDistances(line, style);
    MlineDrawer(draw, line, style).drawAll();
}

} // namespace hostkit
