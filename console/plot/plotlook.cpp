#include "plotlook.h"

#include "casefold.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dblayertablerecord.h"
#include "dblinetypetablerecord.h"
#include "dbobjptr.h"
#include "dimensionpicture.h"

#include <algorithm>

namespace {

constexpr std::uint32_t white = 0xFFFFFF;

} // namespace

bool Paper::isDark() const {
    return (ground >> 16 & 0xFF) * 299 + (ground >> 8 & 0xFF) * 587 + (ground & 0xFF) * 114 < 128 * 1000;
}

LookTable::LookTable(AcDbDatabase& database, const Paper& paper)
    : m_database(database)
    , m_paper(paper)
    , m_linetypeScale(database.ltscale()) {
    if (!(m_linetypeScale > 0.0)) m_linetypeScale = 1.0;
}

std::uint32_t LookTable::paperColor(const AcCmEntityColor& color) const {
    if (!color.isByColor() && !color.isByACI()) return m_paper.ink();
    const std::uint32_t rgb = color.rgb() & white;
    return rgb == white || rgb == 0 ? m_paper.ink() : rgb;
}

const LookTable::Layer& LookTable::layerOf(AcDbObjectId id) {
    const auto [place, isNew] = m_layers.try_emplace(id);
    if (!isNew) return place->second;
    Layer& layer = place->second;
    const AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForRead);
    if (!record.object()) return layer;
    layer.isFrozen = record->isFrozen();
    layer.isHidden = record->isFrozen() || record->isOff() || !record->isPlottable() ||
                     hostkit::equalFolded(record->name(), hostkit::definitionLayerName) ||
                     (m_shown && !m_shown->matches(record->name()));
    layer.rgb = paperColor(record->color());
    layer.linetype = record->linetypeObjectId();
    layer.lineweight = record->lineWeight();
    return layer;
}

bool LookTable::isHidden(AcDbObjectId layer) { return layerOf(layer).isHidden || isHiddenHere(layer); }
bool LookTable::isFrozen(AcDbObjectId layer) { return layerOf(layer).isFrozen || isHiddenHere(layer); }

bool LookTable::isHiddenHere(AcDbObjectId layer) const {
    return std::find(m_hiddenToo.begin(), m_hiddenToo.end(), layer) != m_hiddenToo.end();
}

const std::vector<double>& LookTable::dashesOf(AcDbObjectId linetype) {
    const auto [place, isNew] = m_linetypes.try_emplace(linetype);
    if (!isNew) return place->second;
    const AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype, AcDb::kForRead);
    for (int i = 0; record.object() && i < record->numDashes(); ++i)
        place->second.push_back(record->dashLengthAt(i));
    return place->second;
}

Look LookTable::lookOf(const AcDbEntity& entity, const Look* around) {
    return lookOf(WantedLook{entity.layerId(), entity.entityColor(), entity.linetypeId(),
                             entity.linetypeScale(), entity.lineWeight()},
                  around);
}

Look LookTable::lookOf(const WantedLook& wanted, const Look* around) {
    Look look;
    look.layer = wanted.layer;
    if (around && look.layer == m_database.layerZero()) look.layer = around->layer;
    const Layer& layer = layerOf(look.layer);

    const AcCmEntityColor color = wanted.color;
    if (color.isByLayer())
        look.rgb = layer.rgb;
    else if (color.isByBlock())
        look.rgb = around ? around->rgb : m_paper.ink();
    else
        look.rgb = paperColor(color);

    AcDbObjectId linetype = wanted.linetype;
    if (linetype == m_database.byBlockLinetype() && !linetype.isNull()) {
        if (around) look.dashes = around->dashes;
    } else {
        if (linetype.isNull() || linetype == m_database.byLayerLinetype()) linetype = layer.linetype;
        if (!linetype.isNull()) look.dashes = dashesOf(linetype);
        for (double& dash : look.dashes) dash *= m_linetypeScale * wanted.linetypeScale;
    }

    int weight = wanted.lineweight;
    if (weight == AcDb::kLnWtByLayer) weight = layer.lineweight;
    if (weight == AcDb::kLnWtByBlock)
        look.lineweight = around ? around->lineweight : 0.0;
    else
        look.lineweight = weight > 0 ? weight / 100.0 : 0.0;
    return look;
}
