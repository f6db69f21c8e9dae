#include "contourwalk.h"

#include "aced.h"
#include "db2dpolyline.h"
#include "dbblockreference.h"
#include "dbcircle.h"
#include "dbmain.h"
#include "dbminsert.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "reporttext.h"
#include "vexogeometrytools.h"

namespace {

// Blocks within blocks may stand for any number of contours; a walk ends at these.
constexpr int deepestNesting = 50;
constexpr std::size_t mostEntities = 5'000'000;

struct Place {
    AcGeMatrix3d toWorld;
    std::wstring path;
    std::wstring layer; ///< of the block reference; what stands on layer 0 in a block is on this one
    int depth = 0;
};

std::wstring layerName(const AcDbEntity& entity, const Place& place) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    const std::wstring name = layer.object() ? layer->name() : L"0";
    return name == L"0" && place.depth > 0 ? place.layer : name;
}

// A contour closed by a flag, or by a last vertex that repeats the first one.
bool isClosed(const AcDbPolyline& polyline) {
    return polyline.isClosed() || (polyline.numVerts() > 3 && endsMeet(polyline));
}

double elevationOf(const AcDbCircle& circle) {
    return circle.center().asVector().dotProduct(circle.normal());
}

class Walk {
public:
    explicit Walk(const std::function<void(Contour&&)>& visit)
        : m_visit(visit) {}

    void walkBlock(AcDbObjectId block, const Place& place) {
        if (place.depth > deepestNesting) {
            result.isCut = true;
            return;
        }
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
        if (!record.object()) return;
        AcDbBlockTableRecordIterator* opened = nullptr;
        if (record->newIterator(opened) != Acad::eOk) return;
        for (const std::unique_ptr<AcDbBlockTableRecordIterator> each(opened); !each->done(); each->step()) {
            if (mustStop()) return;
            AcDbObjectId id;
            each->getEntityId(id);
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            if (entity.object()) visitEntity(*entity.object(), place);
        }
    }

    /// Those that stand in the space itself.
    void walkThese(const AcDbObjectIdArray& ids, AcDbObjectId space) {
        for (const AcDbObjectId id : ids) {
            if (mustStop()) return;
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            if (entity.object() && entity->ownerId() == space) visitEntity(*entity.object(), Place());
        }
    }

    ContourWalk result;

private:
    bool mustStop() {
        if (++m_entities > mostEntities || acedUsrBrk()) result.isCut = true;
        return result.isCut;
    }

    void visitEntity(const AcDbEntity& entity, const Place& place) {
        if (const auto* reference = AcDbBlockReference::cast(&entity))
            return walkReference(*reference, place);
        const auto* light = AcDbPolyline::cast(&entity);
        const auto* old = AcDb2dPolyline::cast(&entity);
        const auto* circle = AcDbCircle::cast(&entity);
        if (!light && !old && !circle) return;

        std::unique_ptr<AcDbPolyline> polyline(VEXOGeometryTools::ConvertToPolyline(&entity));
        if (!polyline) return;
        // The conversion leaves out how high the contour stands in its plane.
        polyline->setNormal(light ? light->normal() : old ? old->normal() : circle->normal());
        polyline->setElevation(light ? light->elevation() : old ? old->elevation() : elevationOf(*circle));
        if (!isClosed(*polyline)) {
            result.openCurves.push_back({layerName(entity, place), place.path + handleText(entity.handle())});
            return;
        }
        Contour contour;
        contour.layer = layerName(entity, place);
        contour.path = place.path + handleText(entity.handle());
        contour.kind = light ? L"polyline" : old ? L"old polyline" : L"circle";
        contour.polyline = std::move(polyline);
        contour.toWorld = place.toWorld;
        m_visit(std::move(contour));
    }

    void walkReference(const AcDbBlockReference& reference, const Place& place) {
        const auto* array = AcDbMInsertBlock::cast(&reference);
        const int rows = array ? array->rows() : 1;
        const int columns = array ? array->columns() : 1;
        // Rows and columns step along the turned axes of the reference, whatever its scales are.
        AcGeMatrix3d axes = AcGeMatrix3d::planeToWorld(reference.normal());
        axes.postMultBy(AcGeMatrix3d::rotation(reference.rotation(), AcGeVector3d::kZAxis));
        for (int row = 0; row < rows && !result.isCut; ++row)
            for (int column = 0; column < columns && !result.isCut; ++column) {
                const AcGeVector3d step = array ? axes * AcGeVector3d(column * array->columnSpacing(),
                                                                      row * array->rowSpacing(), 0.0)
                                                : AcGeVector3d();
                Place inside;
                inside.toWorld = place.toWorld * AcGeMatrix3d::translation(step) * reference.blockTransform();
                inside.path = place.path + handleText(reference.handle());
                if (rows * columns > 1)
                    inside.path +=
                        L"[" + std::to_wstring(row + 1) + L"," + std::to_wstring(column + 1) + L"]";
                inside.path += L"/";
                inside.layer = layerName(reference, place);
                inside.depth = place.depth + 1;
                walkBlock(reference.blockTableRecord(), inside);
            }
    }

    const std::function<void(Contour&&)>& m_visit;
    std::size_t m_entities = 0;
};

} // namespace

ContourWalk forEachContour(AcDbDatabase& database, const std::function<void(Contour&&)>& visit,
                           const PlanSelection& selected) {
    Walk walk(visit);
    if (selected)
        walk.walkThese(*selected, database.modelSpaceId());
    else
        walk.walkBlock(database.modelSpaceId(), Place());
    return walk.result;
}
