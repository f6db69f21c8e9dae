// Filing of hatch boundaries: loops, pattern lines and seed points as a drawing file has them; leaves out the
// rest of a hatch.
#pragma once

#include "dbfiler.h"
#include "hatchloop.h"

#include <vector>

namespace hostkit {

// The groups of a hatch have their meaning by their place. The counts of a file are believed only as far as
// groups follow; a group that is not the one that its place asks for gives eBadDxfSequence as the filer's
// status, with a text.

void readHatchLoops(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<HatchLoop>& loops);
void writeHatchLoops(AcDbDxfFiler& filer, const std::vector<HatchLoop>& loops);
void readPatternLines(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<HatchPatternLine>& lines);
void writePatternLines(AcDbDxfFiler& filer, const std::vector<HatchPatternLine>& lines);
void readSeedPoints(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<AcGePoint2d>& points);

/// Reads the edges of a loop that is a chain of them; by their kind.
bool readHatchEdges(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<HatchEdge>& edges);
void writeHatchEdges(AcDbDxfFiler& filer, const std::vector<HatchEdge>& edges);

/// Takes groups where their place asks for them.
class GroupSequence {
public:
    explicit GroupSequence(AcDbDxfFiler& filer)
        : m_filer(filer) {}

    /// The group of that code must come next.
    bool need(short code);
    /// The group of that code is taken where it comes next; else nothing is.
    bool take(short code);
    bool needReal(short code, double& value);
    /// In radians.
    bool needAngle(short code, double& value);
    bool needPoint(short code, double& x, double& y);
    bool needInteger(short code, Adesk::Int64& value);
    /// An integer that may be missing.
    Adesk::Int64 integerOr(short code, Adesk::Int64 otherwise);
    /// Reals of one code; as many as the count says.
    bool needReals(short code, Adesk::Int64 count, std::vector<double>& values);
    const AcDbDxfGroup& group() const { return m_group; }

private:
    AcDbDxfFiler& m_filer;
    AcDbDxfGroup m_group;
};

} // namespace hostkit
