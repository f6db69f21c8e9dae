#include "vexogiworlddraw.h"

#include "cvxlogentry.h"

VEXOGiWorldDraw::VEXOGiWorldDraw(AcDbEntity* source)
    : m_geometry(std::make_unique<VEXOGiWorldGeometry>(source))
    , m_context(std::make_unique<VEXOGiContext>()) {
    CVxLogEntry entry(L"VEXOGiWorldDraw::VEXOGiWorldDraw");
}

VEXOGiWorldDraw::~VEXOGiWorldDraw() { CVxLogEntry entry(L"VEXOGiWorldDraw::~VEXOGiWorldDraw"); }

void VEXOGiWorldDraw::getAcDbEnts(AcArray<void*>& entities) const {
    CVxLogEntry entry(L"VEXOGiWorldDraw::getAcDbEnts");
    m_geometry->getAcDbEnts(entities);
}

void VEXOGiWorldDraw::appendAcDbEnts(AcDbEntity* entity) {
    CVxLogEntry logEntry(L"VEXOGiWorldDraw::appendAcDbEnts");
    m_geometry->appendAcDbEnts(entity);
}

// Strokes of curves lie that close to them.
double VEXOGiWorldDraw::deviation(const AcGiDeviationType /*type*/, const AcGePoint3d& /*point*/) const {
    return 0.0001;
}
