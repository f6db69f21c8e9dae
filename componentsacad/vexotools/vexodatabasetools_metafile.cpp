#include "vexodatabasetools.h"

#include "cdc.h"
#include "cvxlogentry.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "vexoacad2metafile.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr double pictureDiagonal = 100.0;
constexpr double marginShare = 0.05;

/// A metafile on its way, with the context that answers for attributes.
class MetafilePicture {
public:
    explicit MetafilePicture(const CString& file) {
        if (!m_dc.CreateEnhanced(nullptr, file, nullptr, nullptr)) return;
        const HDC screen = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
        m_attributes = CreateCompatibleDC(screen);
        DeleteDC(screen);
        m_dc.SetAttribDC(m_attributes);
    }
    ~MetafilePicture() { DeleteDC(m_attributes); }
    MetafilePicture(const MetafilePicture&) = delete;
    MetafilePicture& operator=(const MetafilePicture&) = delete;

    bool isGood() const { return m_dc.GetSafeHdc() != nullptr; }
    CMetaFileDC& dc() { return m_dc; }
    /// False where the file could not be written.
    bool close() { return DeleteEnhMetaFile(m_dc.CloseEnhanced()) != FALSE; }

private:
    CMetaFileDC m_dc{};
    HDC m_attributes = nullptr;
};

/// Draws a list, and what its patterned hatches are made of behind it.
class ListDrawer {
public:
    explicit ListDrawer(CMetaFileDC& dc)
        : m_dc(dc) {}

    void draw(const AcArray<void*>& entities) {
        std::vector<AcDbEntity*> work;
        for (void* entity : entities) work.push_back(static_cast<AcDbEntity*>(entity));
        for (std::size_t i = 0; i < work.size(); ++i)
            if (work[i]) drawOne(*work[i], work);
    }

private:
    void drawOne(AcDbEntity& entity, std::vector<AcDbEntity*>& work) {
        if (entity.isKindOf(AcDbLine::desc()))
            m_drawing.DrawLine(m_dc, static_cast<AcDbLine*>(&entity));
        else if (entity.isKindOf(AcDbArc::desc()))
            m_drawing.DrawArc(m_dc, static_cast<AcDbArc*>(&entity));
        else if (entity.isKindOf(AcDbPolyline::desc()))
            m_drawing.DrawPoly(m_dc, static_cast<AcDbPolyline*>(&entity));
        else if (entity.isKindOf(AcDbCurve::desc()))
            m_drawing.DrawCurve(m_dc, static_cast<AcDbCurve*>(&entity));
        else if (entity.isKindOf(AcDbMText::desc()) || entity.isKindOf(AcDbText::desc()))
            m_drawing.DrawTextW(m_dc, &entity);
        else if (entity.isKindOf(AcDbHatch::desc()))
            drawHatch(static_cast<AcDbHatch&>(entity), work);
    }

    void drawHatch(AcDbHatch& hatch, std::vector<AcDbEntity*>& work) {
        if (hatch.isSolidFill()) return m_drawing.DrawHatch(m_dc, &hatch);
        AcDbVoidPtrArray parts;
        hatch.explode(parts);
        m_parts.reserve(m_parts.size() + static_cast<std::size_t>(parts.length()));
        for (void* part : parts) m_parts.emplace_back(static_cast<AcDbEntity*>(part));
        for (void* part : parts) work.push_back(static_cast<AcDbEntity*>(part));
    }

    CMetaFileDC& m_dc;
    VEXOAcad2MetaFile m_drawing;
    std::vector<std::unique_ptr<AcDbEntity>> m_parts;
};

AcGePoint3d centerOf(const AcDbExtents& extents) {
    return extents.minPoint() + (extents.maxPoint() - extents.minPoint()) / 2.0;
}

void scaleAll(const AcArray<void*>& entities, double scale, const AcDbExtents& extents) {
    const AcGeMatrix3d scaling = AcGeMatrix3d().setToScaling(scale, centerOf(extents));
    for (void* each : entities)
        if (auto* const entity = static_cast<AcDbEntity*>(each)) (void)entity->transformBy(scaling);
}

struct FlatSize {
    double width = 0.0;
    double height = 0.0;

    explicit FlatSize(const AcDbExtents& extents)
        : width(extents.maxPoint().x - extents.minPoint().x)
        , height(extents.maxPoint().y - extents.minPoint().y) {}
};

bool isNothing(double length) { return !(length * length > vexo::kSquaredTolerance); }

// A box without width or height becomes as wide as it is high.
void widen(AcDbExtents& extents) {
    FlatSize size(extents);
    const auto grow = [&extents](double x, double y) {
        const AcGePoint3d least = extents.minPoint(), most = extents.maxPoint();
        extents.addPoint({least.x - x, least.y - y, 0.0});
        extents.addPoint({most.x + x, most.y + y, 0.0});
    };
    if (isNothing(size.width)) {
        grow(size.height / 2.0, 0.0);
        size.width = size.height;
    }
    if (isNothing(size.height)) grow(0.0, size.width / 2.0);
}

double diagonalOf(const AcDbExtents& extents) {
    const FlatSize size(extents);
    return std::sqrt(size.width * size.width + size.height * size.height);
}

struct Margins {
    double x;
    double y;
};

Margins byHeight(const FlatSize& size, double aspect) {
    const double y = marginShare * size.height;
    return {((size.height + 2.0 * y) * aspect - size.width) / 2.0, y};
}

Margins byWidth(const FlatSize& size, double aspect) {
    const double x = marginShare * size.width;
    return {x, ((size.width + 2.0 * x) / aspect - size.height) / 2.0};
}

// The picture's proportion is the aspect; the longer direction has a margin of a share of itself.
Margins marginsOf(const FlatSize& size, double aspect) {
    const double slack = std::abs(size.height) * vexo::kComparisonTolerance + vexo::kComparisonTolerance;
    if (size.width + slack < size.height) {
        const Margins margins = byHeight(size, aspect);
        return margins.x > vexo::kComparisonTolerance ? margins : byWidth(size, aspect);
    }
    const Margins margins = byWidth(size, aspect);
    return margins.y > vexo::kComparisonTolerance ? margins : byHeight(size, aspect);
}

void drawDot(CMetaFileDC& dc, double x, double y) {
    AcDbLine dot({x, y, 0.0}, {x, y, 0.0});
    VEXOAcad2MetaFile().DrawLine(dc, &dot);
}

} // namespace

bool VEXODatabaseTools::ExportEntitiesInWMF(const AcArray<void*>& entities, const CString& file, double scale,
                                            double /*secondFactor*/) {
    CVxLogEntry entry(L"VEXODatabaseTools::ExportEntitiesInWMF");
    AcDbExtents extents;
    if (entities.isEmpty() || !VEXOGeometryTools::getEntitiesExtents(entities, extents)) return false;
    scaleAll(entities, scale, extents);
    MetafilePicture picture(file);
    if (!picture.isGood()) return false;
    ListDrawer(picture.dc()).draw(entities);
    return picture.close();
}

bool VEXODatabaseTools::ExportEntitiesInWmfEx(const AcArray<void*>& entities, const CString& file,
                                              double aspect) {
    CVxLogEntry entry(L"VEXODatabaseTools::ExportEntitiesInWmfEx");
    AcDbExtents extents;
    if (entities.isEmpty() || isNothing(aspect) || !VEXOGeometryTools::getEntitiesExtents(entities, extents))
        return false;
    widen(extents);
    scaleAll(entities, pictureDiagonal / diagonalOf(extents), extents);
    if (!VEXOGeometryTools::getEntitiesExtents(entities, extents)) return false;
    const Margins margins = marginsOf(FlatSize(extents), aspect);
    MetafilePicture picture(file);
    if (!picture.isGood()) return false;
    ListDrawer(picture.dc()).draw(entities);
    drawDot(picture.dc(), extents.minPoint().x - margins.x, extents.minPoint().y - margins.y);
    drawDot(picture.dc(), extents.maxPoint().x + margins.x, extents.maxPoint().y + margins.y);
    return picture.close();
}
