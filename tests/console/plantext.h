#pragma once

#include "dbpolyline.h"

#include <memory>
#include <string>
#include <vector>

// Contours, and drawings with them as text: millimetres with three decimals.

struct Vertex {
    double x, y, bulge;
};

/// Closed, and in no drawing.
inline std::unique_ptr<AcDbPolyline> outlineOf(const std::vector<Vertex>& vertices) {
    auto polyline = std::make_unique<AcDbPolyline>();
    for (const Vertex& vertex : vertices)
        polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(vertex.x, vertex.y), vertex.bulge);
    polyline->setClosed(true);
    return polyline;
}

inline std::string number(double value) { return std::to_string(value); }

inline std::string light(const std::string& layer, const std::vector<Vertex>& vertices,
                         double elevation = 0.0, double normalZ = 1.0, bool isClosed = true) {
    std::string text = "0\nLWPOLYLINE\n8\n" + layer + "\n90\n" + std::to_string(vertices.size()) + "\n70\n" +
                       (isClosed ? "1" : "0") + "\n38\n" + number(elevation) + "\n";
    for (const Vertex& vertex : vertices)
        text +=
            "10\n" + number(vertex.x) + "\n20\n" + number(vertex.y) + "\n42\n" + number(vertex.bulge) + "\n";
    return text + "210\n0.0\n220\n0.0\n230\n" + number(normalZ) + "\n";
}

inline std::vector<Vertex> box(double x, double y, double width, double height) {
    return {{x, y, 0}, {x + width, y, 0}, {x + width, y + height, 0}, {x, y + height, 0}};
}

inline std::string rectangle(const std::string& layer, double x, double y, double width, double height,
                             double elevation = 0.0) {
    return light(layer, box(x, y, width, height), elevation);
}

inline std::string circle(const std::string& layer, double x, double y, double radius, double z = 0.0) {
    return "0\nCIRCLE\n8\n" + layer + "\n10\n" + number(x) + "\n20\n" + number(y) + "\n30\n" + number(z) +
           "\n40\n" + number(radius) + "\n";
}

inline std::string insert(const std::string& block, double x, double y, double scaleX, double scaleY,
                          double turn, const std::string& more = "", const std::string& layer = "REFS") {
    return "0\nINSERT\n8\n" + layer + "\n2\n" + block + "\n10\n" + number(x) + "\n20\n" + number(y) +
           "\n41\n" + number(scaleX) + "\n42\n" + number(scaleY) + "\n50\n" + number(turn) + "\n" + more;
}

inline std::string block(const std::string& name, const std::string& entities) {
    return "0\nBLOCK\n8\n0\n2\n" + name + "\n70\n0\n10\n0.0\n20\n0.0\n3\n" + name + "\n" + entities +
           "0\nENDBLK\n8\n0\n";
}

inline std::string drawingOf(const std::string& blocks, const std::string& entities) {
    return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n9\n$INSUNITS\n70\n4\n9\n$"
           "LUPREC\n70\n3\n0\nENDSEC\n"
           "0\nSECTION\n2\nBLOCKS\n" +
           blocks + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" + entities + "0\nENDSEC\n0\nEOF\n";
}
