#include "hatchfiling.h"

#include "fieldtable.h"

#include <algorithm>

namespace hostkit {

namespace {

// Groups of a loop.
constexpr short loopTypeCode = 92;
constexpr short hasBulgesCode = 72;
constexpr short isClosedCode = 73;
constexpr short countCode = 93;
constexpr short vertexCode = 10;
constexpr short bulgeCode = 42;
constexpr short sourceCountCode = 97;
constexpr short sourceCode = 330;
constexpr Adesk::Int64 polylineFlag = 2;

// Groups of a pattern line.
constexpr short lineAngleCode = 53;
constexpr short lineBaseXCode = 43;
constexpr short lineBaseYCode = 44;
constexpr short lineOffsetXCode = 45;
constexpr short lineOffsetYCode = 46;
constexpr short dashCountCode = 79;
constexpr short dashCode = 49;

bool readPolyline(AcDbDxfFiler& filer, HatchLoop& loop) {
    GroupSequence groups(filer);
    loop.hasBulges = groups.integerOr(hasBulgesCode, 0) != 0;
    loop.isClosed = groups.integerOr(isClosedCode, 1) != 0;
    Adesk::Int64 count = 0;
    if (!groups.needInteger(countCode, count)) return false;
    for (Adesk::Int64 vertex = 0; vertex < count; ++vertex) {
        AcGePoint2d point;
        if (!groups.needPoint(vertexCode, point.x, point.y)) return false;
        loop.vertices.push_back(point);
        const double bulge = groups.take(bulgeCode) ? groups.group().real : 0.0;
        if (bulge != 0.0) loop.hasBulges = true;
        loop.bulges.push_back(bulge);
    }
    if (!loop.hasBulges) loop.bulges = {};
    return true;
}

bool readSources(AcDbDxfFiler& filer, HatchLoop& loop) {
    GroupSequence groups(filer);
    const Adesk::Int64 count = groups.integerOr(sourceCountCode, 0);
    for (Adesk::Int64 source = 0; source < count; ++source) {
        if (!groups.need(sourceCode)) return false;
        loop.sources.push_back(filer.objectIdOf(groups.group()));
    }
    return true;
}

bool readLoop(AcDbDxfFiler& filer, HatchLoop& loop) {
    GroupSequence groups(filer);
    Adesk::Int64 type = 0;
    if (!groups.needInteger(loopTypeCode, type)) return false;
    loop.type = static_cast<int>(type);
    if ((type & polylineFlag) != 0) return readPolyline(filer, loop) && readSources(filer, loop);
    Adesk::Int64 count = 0;
    return groups.needInteger(countCode, count) && readHatchEdges(filer, count, loop.edges) &&
           readSources(filer, loop);
}

void writePolyline(AcDbDxfFiler& filer, const HatchLoop& loop) {
    filer.writeInteger(hasBulgesCode, loop.hasBulges);
    filer.writeInteger(isClosedCode, loop.isClosed);
    filer.writeInteger(countCode, static_cast<Adesk::Int64>(loop.vertices.size()));
    for (std::size_t vertex = 0; vertex < loop.vertices.size(); ++vertex) {
        filer.writeItem(vertexCode, loop.vertices[vertex]);
        if (!loop.hasBulges) filer.markDefault();
        filer.writeReal(bulgeCode, loop.hasBulges ? loop.bulges[vertex] : 0.0);
    }
}

} // namespace

bool GroupSequence::need(short code) {
    if (m_filer.readExpected(code, m_group)) return true;
    m_filer.setError(Acad::eBadDxfSequence, L"group %d is missing", static_cast<int>(code));
    return false;
}

bool GroupSequence::take(short code) {
    if (m_filer.readItem(m_group) != Acad::eOk) return false;
    if (m_group.code == code) return true;
    m_filer.pushBackItem();
    return false;
}

bool GroupSequence::needReal(short code, double& value) {
    if (!need(code)) return false;
    value = m_group.real;
    return true;
}

bool GroupSequence::needAngle(short code, double& value) {
    if (!need(code)) return false;
    value = m_filer.angleOf(m_group);
    return true;
}

bool GroupSequence::needPoint(short code, double& x, double& y) {
    if (!need(code)) return false;
    x = m_group.point[0];
    y = m_group.point[1];
    return true;
}

bool GroupSequence::needInteger(short code, Adesk::Int64& value) {
    if (!need(code)) return false;
    value = m_group.integer;
    return true;
}

Adesk::Int64 GroupSequence::integerOr(short code, Adesk::Int64 otherwise) {
    return take(code) ? m_group.integer : otherwise;
}

bool GroupSequence::needReals(short code, Adesk::Int64 count, std::vector<double>& values) {
    for (Adesk::Int64 place = 0; place < count; ++place) {
        double value = 0.0;
        if (!needReal(code, value)) return false;
        values.push_back(value);
    }
    return true;
}

void readHatchLoops(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<HatchLoop>& loops) {
    for (Adesk::Int64 place = 0; place < count; ++place)
        if (!readLoop(filer, loops.emplace_back())) return;
}

void writeHatchLoops(AcDbDxfFiler& filer, const std::vector<HatchLoop>& loops) {
    for (const HatchLoop& loop : loops) {
        filer.writeInteger(loopTypeCode, loop.type);
        if ((loop.type & polylineFlag) != 0) {
            writePolyline(filer, loop);
        } else {
            filer.writeInteger(countCode, static_cast<Adesk::Int64>(loop.edges.size()));
            writeHatchEdges(filer, loop.edges);
        }
        const auto isThere = [](const AcDbObjectId& source) { return !source.isErased(); };
        const auto count = std::count_if(loop.sources.begin(), loop.sources.end(), isThere);
        if (count == 0) filer.markOptional();
        filer.writeInteger(sourceCountCode, count);
        for (const AcDbObjectId& source : loop.sources)
            if (isThere(source)) filer.writeItem(sourceCode, source);
    }
}

void readPatternLines(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<HatchPatternLine>& lines) {
    GroupSequence groups(filer);
    for (Adesk::Int64 place = 0; place < count; ++place) {
        HatchPatternLine line;
        Adesk::Int64 dashes = 0;
        if (!groups.needAngle(lineAngleCode, line.angle) || !groups.needReal(lineBaseXCode, line.base.x) ||
            !groups.needReal(lineBaseYCode, line.base.y) ||
            !groups.needReal(lineOffsetXCode, line.offset.x) ||
            !groups.needReal(lineOffsetYCode, line.offset.y) || !groups.needInteger(dashCountCode, dashes) ||
            !groups.needReals(dashCode, dashes, line.dashes))
            return;
        lines.push_back(std::move(line));
    }
}

void writePatternLines(AcDbDxfFiler& filer, const std::vector<HatchPatternLine>& lines) {
    for (const HatchPatternLine& line : lines) {
        filer.writeAngle(lineAngleCode, line.angle);
        filer.writeReal(lineBaseXCode, line.base.x);
        filer.writeReal(lineBaseYCode, line.base.y);
        filer.writeReal(lineOffsetXCode, line.offset.x);
        filer.writeReal(lineOffsetYCode, line.offset.y);
        filer.writeInteger(dashCountCode, static_cast<Adesk::Int64>(line.dashes.size()));
        for (const double dash : line.dashes) filer.writeReal(dashCode, dash);
    }
}

void readSeedPoints(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<AcGePoint2d>& points) {
    GroupSequence groups(filer);
    for (Adesk::Int64 place = 0; place < count; ++place) {
        AcGePoint2d point;
        if (!groups.needPoint(vertexCode, point.x, point.y)) return;
        points.push_back(point);
    }
}

} // namespace hostkit
