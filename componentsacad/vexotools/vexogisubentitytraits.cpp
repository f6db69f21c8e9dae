#include "vexogisubentitytraits.h"

#include "cvxlogentry.h"
#include "dbent.h"

VEXOGiSubEntityTraits::VEXOGiSubEntityTraits(AcDbEntity* source)
    : m_source(source) {
    CVxLogEntry entry(L"VEXOGiSubEntityTraits::VEXOGiSubEntityTraits");
    if (!source) return;
    m_color = source->colorIndex();
    m_lineType = source->linetypeId();
    m_lineWeight = source->lineWeight();
    m_lineTypeScale = source->linetypeScale();
}

void VEXOGiSubEntityTraits::setPropToEntity(AcDbEntity* entity) const {
    CVxLogEntry logEntry(L"VEXOGiSubEntityTraits::setPropToEntity");
    if (!entity) return;
    if (m_source) (void)entity->setPropertiesFrom(m_source, true);
    (void)entity->setColorIndex(m_color, true);
    (void)entity->setLineWeight(m_lineWeight, true);
    (void)entity->setLinetype(m_lineType, true);
    (void)entity->setLinetypeScale(m_lineTypeScale, true);
}
