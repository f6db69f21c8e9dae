#include "recordpictures.h"

#include "acgi.h"
#include "dbopaque.h"

#include <algorithm>

namespace hostkit {

namespace {

struct KindRow {
    std::wstring_view name;
    RecordDrawer drawer;
};
// In the order of their names.
constexpr KindRow kindRows[] = {
    {L"ACAD_TABLE", drawTable},
    {L"ARC_DIMENSION", drawDimensionBlock},
    {L"DGNUNDERLAY", drawUnderlayFrame},
    {L"DWFUNDERLAY", drawUnderlayFrame},
    {L"HELIX", drawHelix},
    {L"IMAGE", drawImageFrame},
    {L"LARGE_RADIAL_DIMENSION", drawDimensionBlock},
    {L"LEADER", drawLeader},
    {L"MESH", drawSubdivisionMesh},
    {L"MLEADER", drawMultileader},
    {L"MLINE", drawMline},
    {L"MULTILEADER", drawMultileader},
    {L"OLE2FRAME", drawEmbeddedFrame},
    {L"PDFUNDERLAY", drawUnderlayFrame},
    {L"POLYLINE", drawPolylineMesh},
    {L"SHAPE", drawShapeMark},
    {L"TOLERANCE", drawTolerance},
    {L"WIPEOUT", drawWipeout},
};

} // namespace

RecordDrawer recordDrawer(std::wstring_view recordName) {
    const auto* const row =
        std::lower_bound(std::begin(kindRows), std::end(kindRows), recordName,
                         [](const KindRow& each, std::wstring_view wanted) { return each.name < wanted; });
    return row == std::end(kindRows) || row->name != recordName ? nullptr : row->drawer;
}

} // namespace hostkit

Adesk::Boolean AcDbOpaqueEntity::worldDraw(AcGiWorldDraw* draw) {
    if (const hostkit::RecordDrawer drawer = hostkit::recordDrawer(dxfName())) drawer(*draw, *this);
    return Adesk::kTrue;
}
