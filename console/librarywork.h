#pragma once

#include "acarray.h"

class AcDbEntity;

/// What the console's own commands have the library do. The console reaches the library by the kit's loader
/// alone, so that --library may name any file: what calls its classes stands in a module beside it
/// (vexohosttools.so), which is loaded when a command asks for it first.
struct LibraryWork {
    /// VEXODatabaseTools::ExportEntitiesInWMF and ExportEntitiesInWmfEx: the entities are scaled in place.
    /// The file is a path from the root.
    bool (*exportScaled)(const AcArray<void*>& entities, const wchar_t* file, double scale);
    bool (*exportWithAspect)(const AcArray<void*>& entities, const wchar_t* file, double aspect);
    /// Appends what the entity draws as new entities that belong to the caller (VEXOGiWorldDraw).
    void (*capture)(AcDbEntity& entity, AcArray<void*>& drawn);
    /// Makes a VEXOCrashHandler and lets it go.
    void (*rescue)(wchar_t* text, int code);
};

/// The name of the module's one function, and its type.
inline constexpr const char* libraryWorkFunction = "getModuleLibraryWork";
using LibraryWorkFunction = const LibraryWork* (*)();

/// Null where the module is not there.
const LibraryWork* findLibraryWork();
/// Null, and the running command has failed, where the module is not there.
const LibraryWork* libraryWorkOrFail();
