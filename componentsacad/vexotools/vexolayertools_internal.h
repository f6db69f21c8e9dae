#pragma once

#include "afx.h"
#include "dbapserv.h"
#include "dbid.h"
#include "dbmaindefs.h"
#include "dbsymtb.h"
#include "vexosmartopen.h"

#include "acarray.h"

#include <unordered_set>

class AcDbDatabase;

namespace vexo {

inline AcDbDatabase* workingDatabaseOr(AcDbDatabase* database) {
    if (database || !acdbHostApplicationServices()) return database;
    return acdbHostApplicationServices()->workingDatabase();
}

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

} // namespace vexo
