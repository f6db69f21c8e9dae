#pragma once

#include "amodeler.h"

namespace vexo {

/// What `work` gives, or `otherwise` where the modeller, or the memory, gives out.
template <class T, class F>
T guarded(T otherwise, F&& work) {
    try {
        return work();
    } catch (...) {
        return otherwise;
    }
}

/// Calls visit(edge) for each edge of the loop from its head on, until one gives true: that one, or null.
template <class F>
AModeler::Edge* findEdge(const AModeler::Face& face, F&& visit) {
    AModeler::Edge* edge = face.edgeLoop();
    for (int left = face.edgeCount(); edge && left > 0; --left, edge = edge->next())
        if (visit(*edge)) return edge;
    return nullptr;
}

/// Calls visit(face) for each face of the body until one gives true: that one, or null.
template <class F>
AModeler::Face* findFace(const AModeler::Body& body, F&& visit) {
    for (AModeler::Face* face = body.faceList(); face; face = face->next())
        if (visit(*face)) return face;
    return nullptr;
}

} // namespace vexo
