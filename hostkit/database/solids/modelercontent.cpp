#include "modelercontent.h"

#include "amerror.h"
#include "bodydata.h"
#include "dbmodelergeometry.h"

#include <charconv>

namespace hostkit {

using modeler::BodyForm;

namespace {

constexpr int kBinaryVersion = 21800;

/// What the forms of drawings take, and what is written for them anew.
struct DataVersions {
    AcDb::AcDbDwgVersion form;
    int newest, written;
};
constexpr DataVersions kTextVersions[] = {
    {AcDb::kDHL_1014, 106, 106},   {AcDb::kDHL_1015, 400, 400},   {AcDb::kDHL_1018, 20800, 700},
    {AcDb::kDHL_1021, 21200, 700}, {AcDb::kDHL_1024, 21500, 700},
};

const DataVersions& textVersionsOf(AcDb::AcDbDwgVersion form) {
    for (const DataVersions& each : kTextVersions)
        if (form <= each.form) return each;
    return kTextVersions[std::size(kTextVersions) - 1];
}

bool looksBinary(std::string_view data) {
    return data.starts_with("ACIS BinaryFile") || data.starts_with("ASM BinaryFile");
}

int versionOf(std::string_view data) {
    constexpr std::size_t signature = 15;
    int version = 0;
    if (looksBinary(data)) {
        for (std::size_t byte = 4; byte-- > 0 && data.size() >= signature + 4;)
            version = version << 8 | static_cast<unsigned char>(data[signature + byte]);
        return version;
    }
    const std::size_t begin = std::min(data.find_first_not_of(' '), data.size());
    std::from_chars(data.data() + begin, data.data() + data.size(), version);
    return version;
}

} // namespace

ModelerContent::ModelerContent(std::string data)
    : m_data(std::move(data))
    , m_version(versionOf(m_data)) {}

ModelerContent::ModelerContent(modeler::Shape shape)
    : m_data(writeShape(shape, BodyForm::binary, kBinaryVersion))
    , m_version(kBinaryVersion) {
    std::call_once(m_shapeOnce, [&] { m_shape = std::move(shape); });
}

ModelerContent::ModelerContent(const AModeler::Body& body)
    : ModelerContent(modeler::shapeOf(body.toPolyhedron())) {
    m_facetsShareSurfaces = true;
    std::call_once(m_bodyOnce, [&] {
        m_body = body;
        m_hasBody = true;
    });
    std::call_once(m_facetsOnce, [&] {
        m_facets.polyhedron = m_body.toPolyhedron();
        m_facets.volume = m_body.volume();
        m_facets.area = m_body.surfaceArea();
    });
}

bool ModelerContent::isBinary() const { return looksBinary(m_data); }

std::string ModelerContent::dataFor(AcDb::AcDbDwgVersion version) const {
    const bool wantsBinary = version >= AcDb::kDHL_1027;
    const DataVersions& text = textVersionsOf(version);
    // A binary body that is not understood is better newer than its drawing than not there.
    if (isBinary() == wantsBinary &&
        (wantsBinary ? m_version <= kBinaryVersion || version > AcDb::kDHL_1027 || !shape()
                     : m_version <= text.newest))
        return m_data;
    if (!shape()) return {};
    return wantsBinary ? writeShape(*m_shape, BodyForm::binary, kBinaryVersion)
                       : writeShape(*m_shape, BodyForm::text, text.written);
}

void ModelerContent::makeShape() const {
    std::call_once(m_shapeOnce, [this] {
        modeler::ShapeReading reading = modeler::readShape(m_data);
        m_shape = std::move(reading.shape);
        m_fault = std::move(reading.fault);
    });
}

const modeler::Shape* ModelerContent::shape() const {
    makeShape();
    return m_shape ? &*m_shape : nullptr;
}

const std::string& ModelerContent::fault() const {
    (void)facets();
    return m_fault;
}

void ModelerContent::makeFacets() const {
    makeShape();
    std::call_once(m_facetsOnce, [this] {
        if (!m_shape) return;
        m_facets = modeler::facetsOf(
            *m_shape, {}, [this](const AcGePoint3d& point, const AcGeVector3d& axis, double radius) {
                return m_surfaces.newSurface(AModeler::Line3d(point, axis), radius);
            });
        if (!m_facets.polyhedron) m_fault = m_facets.fault;
    });
}

const modeler::Polyhedron* ModelerContent::facets() const {
    makeFacets();
    return m_facets.polyhedron ? &*m_facets.polyhedron : nullptr;
}

void ModelerContent::makeBody() const {
    makeFacets();
    std::call_once(m_bodyOnce, [this] {
        if (!m_facets.polyhedron) return;
        try {
            const AModeler::Body* const source = &m_surfaces;
            m_body = AModeler::Body::fromPolyhedron(*m_facets.polyhedron, {&source, 1});
            m_hasBody = true;
        } catch (const AModeler::Error&) {
            m_hasBody = false; // a sheet
        }
    });
}

const AModeler::Body* ModelerContent::body() const {
    makeBody();
    return m_hasBody ? &m_body : nullptr;
}

double ModelerContent::volume() const {
    makeFacets();
    return m_facets.volume;
}

double ModelerContent::area() const {
    makeFacets();
    return m_facets.area;
}

AcDbExtents ModelerContent::extents() const {
    AcDbExtents box;
    const modeler::Polyhedron* const polyhedron = facets();
    if (!polyhedron) return box;
    for (const modeler::Polyhedron::Index corner : polyhedron->corners)
        box.addPoint(polyhedron->points[corner]);
    return box;
}

const ModelerContentPtr& ModelerFiling::content(const AcDbModelerGeometry& entity) {
    return entity.m_content;
}
void ModelerFiling::setContent(AcDbModelerGeometry& entity, ModelerContentPtr content) {
    entity.m_content = std::move(content);
}

} // namespace hostkit
