// A small drawing with every kind that has fields, made in memory.
#pragma once

#include "dbdatabase.h"

#include <memory>

namespace drawingtest {

enum class Kinds { kAll, kOfR12 };
std::unique_ptr<AcDbDatabase> sampleDrawing(Kinds kinds = Kinds::kAll);

} // namespace drawingtest
