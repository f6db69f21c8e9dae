// A small drawing with every kind that has fields, made in memory.
#pragma once

#include "dbdatabase.h"
#include "dbent.h"

#include <memory>

namespace drawingtest {

enum class Kinds { kAll, kOfR12 };
std::unique_ptr<AcDbDatabase> sampleDrawing(Kinds kinds = Kinds::kAll);

/// Appends the entity to model space and closes it.
AcDbObjectId addToModelSpace(AcDbDatabase& database, AcDbEntity* entity);
/// Registers an application for extended data.
void registerApplication(AcDbDatabase& database, const wchar_t* name);

} // namespace drawingtest
