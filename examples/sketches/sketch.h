#pragma once

#include "dbent.h"
#include "dbobject.h"

#include <memory>
#include <vector>

/// Entities that stand in no block: an object of a dictionary owns them. Its record in a drawing is
/// VEXOSKETCH, with their number (90) and each one as VEXOEntityFiler files it.
class ExampleSketch : public AcDbObject {
    ACRX_DECLARE_MEMBERS(ExampleSketch)

public:
    using Entities = std::vector<std::unique_ptr<AcDbEntity>>;

    ExampleSketch() = default;

    const Entities& entities() const { return m_entities; }
    /// Behind those that are there. The entities are in no drawing.
    Acad::ErrorStatus append(Entities entities);
    /// Nothing moves unless all can be.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    /// What undo keeps of a sketch.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Entities m_entities;
};
