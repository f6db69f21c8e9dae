#pragma once

#include "amodeler.h"

#include <vector>

/// What is known of a body. Areas count by where a face looks: up or down where it leans less than half a
/// right angle, else to the side.
struct BodyMeasures {
    double volume = 0.0;
    double above = 0.0; ///< faces that look up
    double below = 0.0; ///< faces that look down: formwork of the underside
    double sides = 0.0; ///< formwork at the side
    AcGePoint3d centre;
    AcGePoint3d low, high;
    int faces = 0, loops = 0, edges = 0, vertices = 0;
    int pieces = 0; ///< shells: parts that share no edge, and cavities
    int genus = 0;  ///< holes through all pieces together
    bool isValid = false;
};

BodyMeasures measuresOf(const AModeler::Body& body);
/// The loops of a face, the outer one and those of its holes, as points.
std::vector<std::vector<AcGePoint3d>> loopsOf(const AModeler::Face& face);
/// With its holes taken off.
double areaOf(const AModeler::Face& face);
