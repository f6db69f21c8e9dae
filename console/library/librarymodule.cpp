#include "librarywork.h"

#include "dbent.h"
#include "vexocrashhandler.h"
#include "vexodatabasetools.h"
#include "vexogiworlddraw.h"

namespace {

bool exportScaled(const AcArray<void*>& entities, const wchar_t* file, double scale) {
    return VEXODatabaseTools::ExportEntitiesInWMF(entities, file, scale, 1.0);
}

bool exportWithAspect(const AcArray<void*>& entities, const wchar_t* file, double aspect) {
    return VEXODatabaseTools::ExportEntitiesInWmfEx(entities, file, aspect);
}

// What the entity has drawn by handing on an entity of the drawing is copied: the drawing owns that one.
void capture(AcDbEntity& entity, AcArray<void*>& drawn) {
    VEXOGiWorldDraw draw(&entity);
    entity.worldDraw(&draw);
    AcArray<void*> recorded;
    draw.getAcDbEnts(recorded);
    for (void* each : recorded) {
        auto* const part = static_cast<AcDbEntity*>(each);
        drawn.append(part->objectId().isNull() ? part : AcDbEntity::cast(part->clone()));
    }
}

void rescue(wchar_t* text, int code) { const VEXOCrashHandler handler(text, code); }

constexpr LibraryWork work = {exportScaled, exportWithAspect, capture, rescue};

} // namespace

extern "C" const LibraryWork* getModuleLibraryWork();
extern "C" const LibraryWork* getModuleLibraryWork() { return &work; }
