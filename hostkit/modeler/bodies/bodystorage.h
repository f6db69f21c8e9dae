// Where a body keeps its parts: in blocks, so that they never move and go all at once.
#pragma once

#include "ambody.h"

#include <algorithm>

namespace hostkit::modeler {

/// Grows by blocks, each as large as all before it; frees everything with itself.
template <class T>
class PartPool {
public:
    void reserve(std::size_t count) {
        if (count > m_free) addBlock(count);
    }
    [[nodiscard]] T* make() {
        if (m_free == 0) addBlock(std::max<std::size_t>(m_made, 8));
        ++m_made;
        return m_end - m_free--;
    }

private:
    void addBlock(std::size_t count) {
        m_blocks.push_back(std::make_unique<T[]>(count));
        m_free = count;
        m_end = m_blocks.back().get() + count;
    }

    std::vector<std::unique_ptr<T[]>> m_blocks;
    T* m_end = nullptr;
    std::size_t m_free = 0, m_made = 0;
};

struct BodyParts {
    PartPool<AModeler::Vertex> vertices;
    PartPool<AModeler::Edge> edges;
    PartPool<AModeler::Face> faces;
    std::vector<std::shared_ptr<AModeler::Surface>> surfaces;
};

/// Calls f(edge) for each half-edge of the face's loop.
template <class F>
void forEachEdge(const AModeler::Face& face, F&& f) {
    AModeler::Edge* edge = face.edgeLoop();
    if (!edge) return;
    do {
        AModeler::Edge* next = edge->next();
        f(*edge);
        edge = next;
    } while (edge != face.edgeLoop());
}

template <class F>
void forEachFace(const AModeler::Body& body, F&& f) {
    for (AModeler::Face* face = body.faceList(); face;) {
        AModeler::Face* next = face->next();
        f(*face);
        face = next;
    }
}

} // namespace hostkit::modeler
