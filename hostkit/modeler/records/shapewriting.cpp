#include "binarytokens.h"
#include "bodydata.h"
#include "shape.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace hostkit::modeler {

namespace {

using Index = Shape::Index;
using Words = std::string_view;
constexpr Index kNone = ~Index{0};

/// What differs between the versions.
struct Layout {
    BodyForm form;
    int version;
    [[nodiscard]] bool hasWords() const { return version >= 200; }
    [[nodiscard]] bool hasIds() const { return version >= 700; }
    [[nodiscard]] bool hasParameters() const { return version >= 500; }
    [[nodiscard]] bool hasHeadRecord() const { return version >= 20800; }
    [[nodiscard]] bool hasEndIndex() const { return version >= 21200; }
    [[nodiscard]] bool hasCoedgeNumber() const { return version >= 21800; }
};

/// Records out, in one form or the other.
class RecordOut {
public:
    explicit RecordOut(const Layout& layout)
        : m_layout(layout) {}

    std::string bytes;

    void text(std::string_view words) { bytes += words; }
    void raw32(std::int32_t value) { little(static_cast<std::uint32_t>(value), 4); }

    void begin(std::string_view name, bool hasPattern) {
        if (isBinary())
            nameParts(name);
        else
            bytes += name;
        pointer(kNone);
        if (!m_layout.hasIds()) return;
        integer(-1);
        if (hasPattern) pointer(kNone);
    }
    void end() {
        if (isBinary())
            tag(BinaryTag::recordEnd);
        else
            bytes += " #\n";
    }
    void nameParts(std::string_view name) {
        for (std::size_t dash; (dash = name.find('-')) != std::string_view::npos;
             name.remove_prefix(dash + 1))
            counted(BinaryTag::namePart, name.substr(0, dash));
        counted(BinaryTag::nameEnd, name);
    }

    void pointer(Index to) {
        if (isBinary()) {
            tag(BinaryTag::pointer);
            return raw32(static_cast<std::int32_t>(to));
        }
        bytes += " $";
        append(static_cast<std::int32_t>(to));
    }
    void integer(std::int32_t value) {
        if (isBinary()) {
            tag(BinaryTag::integer);
            return raw32(value);
        }
        bytes += ' ';
        append(value);
    }
    void real(double value) {
        if (isBinary()) tag(BinaryTag::real);
        number(value);
    }
    void point(const AcGePoint3d& p) { triple(BinaryTag::position, p.x, p.y, p.z); }
    void vector(const AcGeVector3d& v) { triple(BinaryTag::direction, v.x, v.y, v.z); }
    void logical(bool value, Words no, Words yes) {
        if (isBinary()) return tag(value ? BinaryTag::isTrue : BinaryTag::isFalse);
        bytes += ' ';
        bytes += m_layout.hasWords() ? (value ? yes : no) : Words(value ? "1" : "0");
    }
    void infinite(int ends) {
        for (; ends > 0; --ends) logical(false, "I", "F");
    }
    void string(std::string_view text) {
        if (isBinary()) return counted(BinaryTag::string, text);
        bytes += m_layout.hasIds() ? " @" : " ";
        append(static_cast<std::int32_t>(text.size()));
        (bytes += ' ') += text;
    }
    void counted(BinaryTag kind, std::string_view text) {
        tag(kind);
        bytes += static_cast<char>(text.size());
        bytes += text;
    }

private:
    [[nodiscard]] bool isBinary() const { return m_layout.form == BodyForm::binary; }
    void tag(BinaryTag tag) { bytes += static_cast<char>(tag); }
    void little(std::uint64_t bits, int size) {
        for (; size > 0; --size, bits >>= 8) bytes += static_cast<char>(bits & 0xFF);
    }
    template <class T>
    void append(T value) {
        char buffer[24];
        const char* const end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
        bytes += std::string_view(buffer, static_cast<std::size_t>(end - buffer));
    }
    // Seventeen digits come back to the same double.
    void number(double value) {
        if (value == 0.0) value = 0.0; // not -0
        if (isBinary()) {
            std::uint64_t bits;
            std::memcpy(&bits, &value, sizeof bits);
            return little(bits, 8);
        }
        char buffer[32];
        bytes += ' ';
        bytes.append(
            buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17).ptr);
    }
    void triple(BinaryTag kind, double x, double y, double z) {
        if (isBinary()) tag(kind);
        for (const double value : {x, y, z}) number(value);
    }

    Layout m_layout;
};

/// The records' numbers: one after the other, kind by kind, an edge and its curve together.
class ShapeWriter {
public:
    ShapeWriter(const Shape& shape, const Layout& layout)
        : m_shape(shape)
        , m_layout(layout)
        , m_out(layout) {
        numberRecords();
        linkRecords();
    }

    std::string run(const BodyDates& dates) {
        writeHeader(dates);
        if (m_layout.hasHeadRecord()) {
            m_out.begin("asmheader", false);
            m_out.string(kernel());
            m_out.end();
        }
        writeBody();
        for (Index face = 0; face < m_shape.faces.size(); ++face) writeFace(face);
        for (const Shape::Face& face : m_shape.faces) writeSurface(face.surface);
        for (Index face = 0; face < m_shape.faces.size(); ++face) writeLoops(face);
        for (Index loop = 0; loop + 1 < m_shape.loopStarts.size(); ++loop) writeCoedges(loop);
        writeVertices();
        for (Index edge = 0; edge < m_shape.edges.size(); ++edge) writeEdge(edge);
        if (m_layout.form == BodyForm::binary)
            m_out.nameParts("End-of-ASM-data");
        else
            m_out.text("End-of-ACIS-data\n");
        return std::move(m_out.bytes);
    }

private:
    [[nodiscard]] std::string kernel() const {
        const int minor = m_layout.version % 100;
        return std::to_string(m_layout.version / 100) + (minor < 10 ? ".0" : ".") + std::to_string(minor);
    }

    void numberRecords() {
        const auto size = [](const auto& list) { return static_cast<Index>(list.size()); };
        m_lumpCount = m_shape.shellLumps.empty()
                          ? 0
                          : *std::max_element(m_shape.shellLumps.begin(), m_shape.shellLumps.end()) + 1;
        m_body = m_layout.hasHeadRecord() ? 1 : 0;
        m_lumps = m_body + 1;
        m_shells = m_lumps + m_lumpCount;
        m_faces = m_shells + size(m_shape.shellLumps);
        m_surfaces = m_faces + size(m_shape.faces);
        m_loops = m_surfaces + size(m_shape.faces);
        m_coedges = m_loops + size(m_shape.loopStarts) - 1;
        m_vertices = m_coedges + size(m_shape.coedges);
        m_usedVertices.assign(m_shape.vertices.size(), kNone);
        m_vertexEdges.assign(m_shape.vertices.size(), kNone);
        Index used = 0;
        for (Index edge = 0; edge < m_shape.edges.size(); ++edge) {
            m_edgeRecords.push_back(m_edgeSpan);
            m_edgeSpan += m_shape.edges[edge].curve.kind == ShapeCurve::Kind::none ? 1 : 2;
            for (const Index vertex : {m_shape.edges[edge].start, m_shape.edges[edge].end})
                if (m_vertexEdges[vertex] == kNone) m_vertexEdges[vertex] = edge;
        }
        for (Index vertex = 0; vertex < m_shape.vertices.size(); ++vertex)
            if (m_vertexEdges[vertex] != kNone) m_usedVertices[vertex] = used++;
        m_points = m_vertices + used;
        m_edges = m_points + used;
    }

    // Coedges of one edge are a ring of partners.
    void linkRecords() {
        m_firstCoedges.assign(m_shape.edges.size(), kNone);
        m_partners.assign(m_shape.coedges.size(), kNone);
        std::vector<Index> last(m_shape.edges.size(), kNone);
        for (Index place = 0; place < m_shape.coedges.size(); ++place) {
            const Index edge = m_shape.coedges[place].edge;
            if (last[edge] == kNone)
                m_firstCoedges[edge] = place;
            else
                m_partners[last[edge]] = place;
            last[edge] = place;
        }
        for (Index edge = 0; edge < m_shape.edges.size(); ++edge)
            if (last[edge] != m_firstCoedges[edge]) m_partners[last[edge]] = m_firstCoedges[edge];
    }

    void writeHeader(const BodyDates& dates) {
        const int entities = m_layout.hasHeadRecord() ? 2 : 1;
        if (m_layout.form == BodyForm::binary) {
            m_out.text("ACIS BinaryFile");
            for (const int value : {m_layout.version, 0, entities, 12}) m_out.raw32(value);
            const std::string version = kernel();
            for (const std::string_view text : {dates.maker, std::string_view(version), dates.date})
                m_out.counted(BinaryTag::string, text);
            for (const double value : {1.0, 1e-6, 1e-10}) m_out.real(value);
            return;
        }
        m_out.text(std::to_string(m_layout.version) + " 0 " + std::to_string(entities) + " 0\n");
        if (!m_layout.hasWords()) return;
        const std::string name = "kernel " + kernel();
        const char* between = "";
        for (const std::string_view text : {dates.maker, std::string_view(name), dates.date}) {
            m_out.text(between);
            m_out.text(std::to_string(text.size()));
            m_out.text(" ");
            m_out.text(text);
            between = " ";
        }
        m_out.text("\n1 9.9999999999999995e-007 1e-010\n");
    }

    void writeBody() {
        m_out.begin("body", true);
        m_out.pointer(m_lumpCount > 0 ? m_lumps : kNone);
        m_out.pointer(kNone);
        m_out.pointer(kNone);
        m_out.end();
        for (Index lump = 0; lump < m_lumpCount; ++lump) {
            m_out.begin("lump", true);
            m_out.pointer(lump + 1 < m_lumpCount ? m_lumps + lump + 1 : kNone);
            m_out.pointer(nextShell(0, lump));
            m_out.pointer(m_body);
            m_out.end();
        }
        for (Index shell = 0; shell < m_shape.shellLumps.size(); ++shell) writeShell(shell);
    }

    // The record of the first shell of the lump from there on.
    [[nodiscard]] Index nextShell(Index from, Index lump) const {
        for (Index shell = from; shell < m_shape.shellLumps.size(); ++shell)
            if (m_shape.shellLumps[shell] == lump) return m_shells + shell;
        return kNone;
    }

    void writeShell(Index shell) {
        const auto first = std::find_if(m_shape.faces.begin(), m_shape.faces.end(),
                                        [&](const Shape::Face& face) { return face.shell == shell; });
        m_out.begin("shell", true);
        m_out.pointer(nextShell(shell + 1, m_shape.shellLumps[shell]));
        m_out.pointer(kNone);
        m_out.pointer(first == m_shape.faces.end()
                          ? kNone
                          : m_faces + static_cast<Index>(first - m_shape.faces.begin()));
        if (m_layout.hasWords()) m_out.pointer(kNone); // a wire
        m_out.pointer(m_lumps + m_shape.shellLumps[shell]);
        m_out.end();
    }

    void writeFace(Index number) {
        const Shape::Face& face = m_shape.faces[number];
        const bool isLast =
            number + 1 == m_shape.faces.size() || m_shape.faces[number + 1].shell != face.shell;
        m_out.begin("face", true);
        m_out.pointer(isLast ? kNone : m_faces + number + 1);
        m_out.pointer(face.loopCount == 0 ? kNone : m_loops + face.firstLoop);
        m_out.pointer(m_shells + face.shell);
        m_out.pointer(kNone);
        m_out.pointer(m_surfaces + number);
        m_out.logical(face.isReversed, "forward", "reversed");
        m_out.logical(face.isDouble, "single", "double");
        if (face.isDouble) m_out.logical(false, "out", "in");
        m_out.end();
    }

    void writeSurface(const ShapeSurface& surface) {
        using enum ShapeSurface::Kind;
        constexpr std::string_view names[] = {"plane-surface", "cone-surface", "sphere-surface",
                                              "torus-surface"};
        m_out.begin(names[static_cast<std::size_t>(surface.kind)], true);
        m_out.point(surface.origin);
        if (surface.kind == plane || surface.kind == torus || surface.kind == cone)
            m_out.vector(surface.axis);
        if (surface.kind == sphere || surface.kind == torus) m_out.real(surface.radius);
        if (surface.kind == torus) m_out.real(surface.minorRadius);
        m_out.vector(surface.major);
        if (surface.kind == sphere) m_out.vector(surface.axis);
        if (surface.kind == cone) {
            m_out.real(surface.ratio);
            m_out.infinite(2);
            m_out.real(surface.sine);
            m_out.real(surface.cosine);
            if (m_layout.hasWords()) m_out.real(surface.major.length());
            m_out.logical(false, "forward", "reversed");
        } else {
            m_out.logical(false, "forward_v", "reverse_v");
        }
        m_out.infinite(4);
        m_out.end();
    }

    void writeLoops(Index number) {
        const Shape::Face& face = m_shape.faces[number];
        for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop)
            m_loopFaces.push_back({loop, number});
        if (number + 1 < m_shape.faces.size()) return;
        std::sort(m_loopFaces.begin(), m_loopFaces.end());
        for (const auto& [loop, owner] : m_loopFaces) {
            const Shape::Face& its = m_shape.faces[owner];
            m_out.begin("loop", true);
            m_out.pointer(loop + 1 < its.firstLoop + its.loopCount ? m_loops + loop + 1 : kNone);
            m_out.pointer(m_coedges + m_shape.loopStarts[loop]);
            m_out.pointer(m_faces + owner);
            m_out.end();
        }
    }

    void writeCoedges(Index loop) {
        const Index begin = m_shape.loopStarts[loop];
        const Index end = m_shape.loopStarts[loop + 1];
        for (Index place = begin; place < end; ++place) {
            const Shape::Coedge& coedge = m_shape.coedges[place];
            m_out.begin("coedge", true);
            m_out.pointer(m_coedges + (place + 1 == end ? begin : place + 1));
            m_out.pointer(m_coedges + (place == begin ? end : place) - 1);
            m_out.pointer(m_partners[place] == kNone ? kNone : m_coedges + m_partners[place]);
            m_out.pointer(m_edges + m_edgeRecords[coedge.edge]);
            m_out.logical(coedge.isReversed, "forward", "reversed");
            m_out.pointer(m_loops + loop);
            if (m_layout.hasCoedgeNumber()) m_out.integer(0);
            m_out.pointer(kNone);
            m_out.end();
        }
    }

    void writeVertices() {
        for (Index vertex = 0; vertex < m_shape.vertices.size(); ++vertex) {
            if (m_usedVertices[vertex] == kNone) continue;
            const Index edge = m_vertexEdges[vertex];
            m_out.begin("vertex", true);
            m_out.pointer(m_edges + m_edgeRecords[edge]);
            if (m_layout.hasEndIndex()) m_out.integer(m_shape.edges[edge].start == vertex ? 0 : 1);
            m_out.pointer(m_points + m_usedVertices[vertex]);
            m_out.end();
        }
        for (Index vertex = 0; vertex < m_shape.vertices.size(); ++vertex) {
            if (m_usedVertices[vertex] == kNone) continue;
            m_out.begin("point", true);
            m_out.point(m_shape.vertices[vertex]);
            m_out.end();
        }
    }

    void writeEdge(Index number) {
        const Shape::Edge& edge = m_shape.edges[number];
        const bool hasCurve = edge.curve.kind != ShapeCurve::Kind::none;
        const Index record = m_edges + m_edgeRecords[number];
        m_out.begin("edge", true);
        m_out.pointer(m_vertices + m_usedVertices[edge.start]);
        if (m_layout.hasParameters()) m_out.real(edge.from);
        m_out.pointer(m_vertices + m_usedVertices[edge.end]);
        if (m_layout.hasParameters()) m_out.real(edge.to);
        m_out.pointer(m_firstCoedges[number] == kNone ? kNone : m_coedges + m_firstCoedges[number]);
        m_out.pointer(hasCurve ? record + 1 : kNone);
        m_out.logical(false, "forward", "reversed");
        if (m_layout.hasParameters()) m_out.string("unknown");
        m_out.end();
        if (!hasCurve) return;
        const bool isLine = edge.curve.kind == ShapeCurve::Kind::line;
        m_out.begin(isLine ? "straight-curve" : "ellipse-curve", true);
        m_out.point(edge.curve.origin);
        m_out.vector(edge.curve.direction);
        if (!isLine) m_out.vector(edge.curve.major);
        if (!isLine) m_out.real(edge.curve.ratio);
        m_out.infinite(2);
        m_out.end();
    }

    const Shape& m_shape;
    Layout m_layout;
    RecordOut m_out;
    Index m_lumpCount = 0, m_body = 0, m_lumps = 0, m_shells = 0, m_faces = 0, m_surfaces = 0, m_loops = 0,
          m_coedges = 0, m_vertices = 0, m_points = 0, m_edges = 0, m_edgeSpan = 0;
    std::vector<Index> m_usedVertices, m_vertexEdges, m_edgeRecords, m_firstCoedges, m_partners;
    std::vector<std::pair<Index, Index>> m_loopFaces;
};

} // namespace

std::string writeShape(const Shape& shape, BodyForm form, int version, const BodyDates& dates) {
    return ShapeWriter(shape, Layout{form, version}).run(dates);
}

} // namespace hostkit::modeler
