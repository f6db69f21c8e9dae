// Writing of all vertices of an old-style polyline: those in a drawing and out of one; leaves out control
// points' meaning.
#pragma once

#include "dbopen.h"
#include "extendeddatamotion.h"
#include "subentitylist.h"

namespace hostkit {

/// Opens every vertex of a polyline in a drawing for writing, all or none, and closes them again; hands out
/// the vertices of a non-resident one as they are.
template <typename Vertex>
class WritableVertices {
public:
    explicit WritableVertices(const SubentityList& vertices) {
        for (std::size_t i = 0; i < vertices.count() && m_status == Acad::eOk; ++i) {
            if (vertices.isErasedAt(i)) continue;
            AcDbObject* part = vertices.at(i);
            if (vertices.isResident()) m_status = openPart(part, vertices.idAt(i));
            Vertex* vertex = Vertex::cast(part);
            if (m_status == Acad::eOk && !vertex && vertices.isResident()) {
                part->close();
                m_status = Acad::eNotThatKindOfClass;
            }
            if (m_status != Acad::eOk || !vertex) continue;
            m_vertices.push_back(vertex);
            m_mustClose = vertices.isResident();
        }
    }
    ~WritableVertices() {
        for (Vertex* vertex : m_vertices)
            if (m_mustClose) vertex->close();
    }
    WritableVertices(const WritableVertices&) = delete;
    WritableVertices& operator=(const WritableVertices&) = delete;

    /// What the vertices' extended data becomes, for the motion to apply once nothing can fail any more.
    Acad::ErrorStatus addTo(ExtendedDataMotion& motion) const {
        for (Vertex* vertex : m_vertices)
            if (const Acad::ErrorStatus status = motion.add(*vertex); status != Acad::eOk) return status;
        return Acad::eOk;
    }

    Acad::ErrorStatus status() const { return m_status; }
    const std::vector<Vertex*>& all() const { return m_vertices; }

private:
    Acad::ErrorStatus m_status = Acad::eOk;
    bool m_mustClose = false;
    std::vector<Vertex*> m_vertices;
};

} // namespace hostkit
