#include "meshtext.h"

#include <array>
#include <charconv>
#include <map>
#include <set>

using AModeler::Body;
using AModeler::Vertex;

namespace {

std::string number(double value) {
    char text[40];
    return {text, std::to_chars(text, text + sizeof text, value == 0.0 ? 0.0 : value).ptr};
}

std::string pointText(const AcGePoint3d& point) {
    return number(point.x) + " " + number(point.y) + " " + number(point.z);
}

/// ASCII without blanks: what all readers take as a name.
std::string plainName(const std::wstring& name) {
    std::string plain;
    for (const wchar_t c : name) {
        const bool isPlain = (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') ||
                             (c >= L'a' && c <= L'z') || c == L'_' || c == L'-' || c == L'$';
        plain += isPlain ? static_cast<char>(c) : '_';
    }
    return plain.empty() ? "solid" : plain;
}

std::string stlText(const NamedSolid& solid, const std::vector<Body::Triangle>& triangles) {
    std::string text = "solid " + plainName(solid.name) + "\n";
    for (const Body::Triangle& triangle : triangles) {
        const AcGeVector3d normal = triangle.face->plane().normal();
        text += "facet normal " + pointText({normal.x, normal.y, normal.z}) + "\nouter loop\n";
        for (const Vertex* corner : triangle.corners) text += "vertex " + pointText(corner->point()) + "\n";
        text += "endloop\nendfacet\n";
    }
    return text + "endsolid " + plainName(solid.name) + "\n";
}

std::string objText(const NamedSolid& solid, const std::vector<Body::Triangle>& triangles,
                    std::size_t& firstCorner) {
    std::string corners, faces;
    std::map<const Vertex*, std::size_t> numbers;
    for (const Body::Triangle& triangle : triangles) {
        faces += "f";
        for (const Vertex* corner : triangle.corners) {
            const auto [place, isNew] = numbers.emplace(corner, firstCorner + numbers.size());
            if (isNew) corners += "v " + pointText(corner->point()) + "\n";
            (faces += ' ') += std::to_string(place->second);
        }
        faces += "\n";
    }
    firstCorner += numbers.size();
    return "g " + plainName(solid.name) + "\n" + corners + faces;
}

using Run = std::pair<const Vertex*, const Vertex*>;

/// The edges of all faces: those of a triangle that are none lie within a face.
std::set<Run> edgesOf(const Body& body) {
    std::set<Run> edges;
    for (const AModeler::Face* face = body.faceList(); face; face = face->next()) {
        const AModeler::Edge* edge = face->edgeLoop();
        for (int left = face->edgeCount(); left > 0; --left, edge = edge->next())
            if (!edge->isBridge()) edges.emplace(edge->vertex(), edge->next()->vertex());
    }
    return edges;
}

void addGroup(std::string& text, int code, const std::string& value) {
    text += std::to_string(code) + "\n" + value + "\n";
}

std::string dxfText(const NamedSolid& solid, const std::vector<Body::Triangle>& triangles) {
    std::string text;
    const std::set<Run> edges = edgesOf(solid.body);
    for (const Body::Triangle& triangle : triangles) {
        addGroup(text, 0, "3DFACE");
        addGroup(text, 8, plainName(solid.layer));
        const std::array<const Vertex*, 4> corners{triangle.corners[0], triangle.corners[1],
                                                   triangle.corners[2], triangle.corners[2]};
        for (int i = 0; i < 4; ++i) {
            const AcGePoint3d& point = corners[static_cast<std::size_t>(i)]->point();
            addGroup(text, 10 + i, number(point.x));
            addGroup(text, 20 + i, number(point.y));
            addGroup(text, 30 + i, number(point.z));
        }
        // The third corner stands twice: the edge between the two is hidden, the fourth one runs back to the
        // first.
        int hidden = 4;
        if (!edges.count({corners[0], corners[1]})) hidden |= 1;
        if (!edges.count({corners[1], corners[2]})) hidden |= 2;
        if (!edges.count({corners[2], corners[0]})) hidden |= 8;
        addGroup(text, 70, std::to_string(hidden));
    }
    return text;
}

} // namespace

std::string meshText(const std::vector<NamedSolid>& solids, MeshForm form, std::size_t& count) {
    std::string text;
    std::size_t firstCorner = 1;
    count = 0;
    if (form == MeshForm::dxf) text = "0\nSECTION\n2\nENTITIES\n";
    for (const NamedSolid& solid : solids) {
        const std::vector<Body::Triangle> triangles = solid.body.triangles();
        count += triangles.size();
        text += form == MeshForm::stl   ? stlText(solid, triangles)
                : form == MeshForm::obj ? objText(solid, triangles, firstCorner)
                                        : dxfText(solid, triangles);
    }
    if (form == MeshForm::dxf) text += "0\nENDSEC\n0\nEOF\n";
    return text;
}
