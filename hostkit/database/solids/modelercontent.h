// What a solid or region consists of: its data as drawings hold them, and the body made of them when it is
// asked for.
#pragma once

#include "amodeler.h"
#include "shape.h"

#include "dbextents.h"
#include "dbmaindefs.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

class AcDbModelerGeometry;

namespace hostkit {

/// Never changed once it is made; entities and their copies share it. All questions may be asked from several
/// threads.
///
/// Exact are the data, the shape, volume and area; facets and the body stand in for curved faces with 72
/// sides for a full turn, their corners on the surface. Volume and area are good to 1e-9 of themselves where
/// curved faces end along lines of their own (circles about the axis, lines of a cylinder), else to about the
/// square of a facet's angle.
class ModelerContent {
public:
    explicit ModelerContent(std::string data);
    explicit ModelerContent(modeler::Shape shape);
    /// Not a null body. Facets keep the surfaces that they share as long as this content lives; its data have
    /// them as flat faces.
    explicit ModelerContent(const AModeler::Body& body);
    ModelerContent(const ModelerContent&) = delete;
    ModelerContent& operator=(const ModelerContent&) = delete;

    /// Text with a line feed behind each line, not scrambled, or the binary twin.
    const std::string& data() const { return m_data; }
    bool isBinary() const;
    int version() const { return m_version; }
    /// The data as that form of a drawing files them: text before 2013, binary from then on. Empty where a
    /// body that is not understood would have to be rewritten.
    std::string dataFor(AcDb::AcDbDwgVersion version) const;

    /// Null for what is not made of planes, cones, spheres, tori, lines and ellipses; `fault` says why.
    const modeler::Shape* shape() const;
    const std::string& fault() const;
    /// Null as the shape is, and for curved faces with bounds that are not facetted.
    const modeler::Polyhedron* facets() const;
    /// Null as the facets are, and for a sheet.
    const AModeler::Body* body() const;
    /// It was made of a body whose facets share surfaces, which the data do not tell.
    bool facetsShareSurfaces() const { return m_facetsShareSurfaces; }
    double volume() const;
    double area() const;
    /// Of the facets.
    AcDbExtents extents() const;

private:
    void makeShape() const;
    void makeFacets() const;
    void makeBody() const;

    std::string m_data;
    int m_version = 0;
    mutable std::once_flag m_shapeOnce, m_facetsOnce, m_bodyOnce;
    mutable std::optional<modeler::Shape> m_shape;
    mutable std::string m_fault;
    mutable modeler::Facets m_facets;
    mutable AModeler::Body m_surfaces; ///< owns what the facets share
    mutable AModeler::Body m_body;
    mutable bool m_hasBody = false;
    bool m_facetsShareSurfaces = false;
};

using ModelerContentPtr = std::shared_ptr<const ModelerContent>;

/// The way to the data for who reads and writes drawings.
struct ModelerFiling {
    /// Null for one without data. The entity is not marked as changed.
    static const ModelerContentPtr& content(const AcDbModelerGeometry& entity);
    static void setContent(AcDbModelerGeometry& entity, ModelerContentPtr content);
};

} // namespace hostkit
