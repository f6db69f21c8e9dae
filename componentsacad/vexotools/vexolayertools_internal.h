#pragma once

#include "dbdatabase.h"
#include "dbid.h"
#include "dbmaindefs.h"
#include "dbsymtb.h"
#include "moduledatabase.h"
#include "vexosmartopen.h"
#include "vexosmartpointer.h"

#include "acarray.h"

#include <unordered_set>

namespace vexo {

/// A layer open for reading or writing for a scope.
using OpenLayer = VEXOSmartOpen<AcDbLayerTableRecord>;

/// Layers of a list, to be asked for often.
class LayerList {
public:
    explicit LayerList(const AcDbObjectIdArray& layers) {
        for (const AcDbObjectId layer : layers) m_layers.insert(layer);
    }
    bool has(AcDbObjectId layer) const { return m_layers.contains(layer); }

private:
    std::unordered_set<AcDbObjectId> m_layers;
};

/// Calls use(id, layer) for each layer that is not erased, open for reading, in the table's order. Nothing
/// for null.
template <class Use>
void forEachLayer(AcDbDatabase* database, Use use) {
    if (!database) return;
    AcDbLayerTableIterator* opened = nullptr;
    {
        const VEXOSmartOpen<AcDbLayerTable> table(database->layerTableId(), AcDb::kForRead, false);
        if (table.status() != Acad::eOk || table->newIterator(opened) != Acad::eOk) return;
    }
    const VEXOSmartPointer<AcDbLayerTableIterator> iterator(opened);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) != Acad::eOk) continue;
        const OpenLayer layer(id, AcDb::kForRead, false);
        if (layer.status() == Acad::eOk) use(id, *layer);
    }
}

} // namespace vexo
