// The links between the half-edges of a body that is being made.
#pragma once

#include "bodystorage.h"
#include "loopbridges.h"
#include "planarpoints.h"

#include <span>

namespace hostkit::modeler {

inline void linkEdges(AModeler::Edge& from, AModeler::Edge& to) {
    from.setNext(&to);
    to.setPrev(&from);
}

/// Makes one loop of a face's loops by pairs of edges along the bridges. `edges` are those that begin at the
/// corners that the bridges name. A bridge between corners of one vertex takes no edges: the hole's loop is
/// led through there.
void joinLoops(std::span<AModeler::Edge* const> edges, std::span<const LoopBridge> bridges,
               const FaceView& view, PartPool<AModeler::Edge>& pool, AModeler::Face& face);

} // namespace hostkit::modeler
