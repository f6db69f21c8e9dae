#include "librarywork.h"

#include "vexodatabasetools.h"

namespace {

bool exportScaled(const AcArray<void*>& entities, const wchar_t* file, double scale) {
    return VEXODatabaseTools::ExportEntitiesInWMF(entities, file, scale, 1.0);
}

bool exportWithAspect(const AcArray<void*>& entities, const wchar_t* file, double aspect) {
    return VEXODatabaseTools::ExportEntitiesInWmfEx(entities, file, aspect);
}

constexpr LibraryWork work = {exportScaled, exportWithAspect};

} // namespace

extern "C" const LibraryWork* getModuleLibraryWork();
extern "C" const LibraryWork* getModuleLibraryWork() { return &work; }
