#pragma once

#include "acarray.h"
#include "slabplan.h"
#include "slabproof.h"

/// Cuts a slab around one opening after the other and keeps of each cut only what its areas prove: an opening
/// whose cut does not come off is named and left uncut.
class CarefulCut {
public:
    CarefulCut(const Slab& slab, const CuttingFrame& frame);

    void cutAround(const PlanContour& opening);
    void mergePieces();
    Outlines takePieces() { return std::move(m_pieces); }
    std::vector<Finding> findings;

private:
    bool cutPiece(const AcDbPolyline& piece, const PlanContour& opening, AcDbCurve* clipped,
                  Outlines& parts) const;

    const Slab& m_slab;
    const CuttingFrame& m_frame;
    double m_allowed;
    Outlines m_pieces;
};

/// What comes back from the library belongs to the caller.
Outlines takeOutlines(const AcArray<void*>& curves);
