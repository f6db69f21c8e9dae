#pragma once

#include "vexogisubentitytraits.h"
#include "vexogiworldgeometry.h"

#include "acgi.h"

#include <memory>

/// Answers neutrally: neither plotting nor clipping, and no drawing behind.
class VEXOGiContext : public AcGiContext {
public:
    Adesk::Boolean isPsOut() const override { return Adesk::kFalse; }
    Adesk::Boolean isPlotGeneration() const override { return Adesk::kFalse; }
    AcDbDatabase* database() const override { return nullptr; }
    bool isBoundaryClipping() const override { return false; }
};

/// Captures what an entity draws, as simple entities: an explode for kinds that have none.
///
///     VEXOGiWorldDraw draw(&entity);
///     entity.worldDraw(&draw);
///     draw.getAcDbEnts(entities); // from here on the caller's
///
/// Entities are told that they are drawn to be exploded.
class VEXOGiWorldDraw : public AcGiWorldDraw {
public:
    explicit VEXOGiWorldDraw(AcDbEntity* source);
    ~VEXOGiWorldDraw() override;

    /// As those of the geometry.
    void getAcDbEnts(AcArray<void*>& entities) const;
    void appendAcDbEnts(AcDbEntity* entity);

    AcGiRegenType regenType() const override { return kAcGiForExplode; }
    Adesk::Boolean regenAbort() const override { return Adesk::kFalse; }
    AcGiSubEntityTraits& subEntityTraits() const override { return *m_geometry->traits(); }
    AcGiGeometry* rawGeometry() const override { return m_geometry.get(); }
    Adesk::Boolean isDragging() const override { return Adesk::kFalse; }
    double deviation(const AcGiDeviationType type, const AcGePoint3d& point) const override;
    Adesk::UInt32 numberOfIsolines() const override { return 0; }
    AcGiContext* context() override { return m_context.get(); }
    AcGiWorldGeometry& geometry() const override { return *m_geometry; }

private:
    std::unique_ptr<VEXOGiWorldGeometry> m_geometry;
    std::unique_ptr<VEXOGiContext> m_context;
};
