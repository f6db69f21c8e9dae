#include "arrowblocks.h"

#include "dbaccess.h"
#include "dbarc.h"
#include "dbblocktable.h"
#include "dbcircle.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbsolid.h"
#include "newblock.h"

#include "casefold.h"

#include <numbers>
#include <string>

namespace hostkit {

namespace {

enum class Figure : unsigned char {
    line,     ///< from, to
    triangle, ///< three corners
    square,   ///< half side
    circle,   ///< radius
    disc,     ///< path radius, width: a closed path of two half circles
    stroke,   ///< from, to, width
    arc       ///< centre, radius, angles in degrees
};

struct Part {
    const wchar_t* arrow; ///< without its underscore
    Figure figure;
    double at[6];
};

constexpr Part parts[] = {
    {L"ClosedBlank", Figure::line, {-1.0, 1.0 / 6.0, 0.0, 0.0}},
    {L"ClosedBlank", Figure::line, {0.0, 0.0, -1.0, -1.0 / 6.0}},
    {L"ClosedBlank", Figure::line, {-1.0, 1.0 / 6.0, -1.0, -1.0 / 6.0}},
    {L"Closed", Figure::line, {-1.0, 1.0 / 6.0, 0.0, 0.0}},
    {L"Closed", Figure::line, {0.0, 0.0, -1.0, -1.0 / 6.0}},
    {L"Closed", Figure::line, {-1.0, 1.0 / 6.0, -1.0, -1.0 / 6.0}},
    {L"Closed", Figure::line, {0.0, 0.0, -1.0, 0.0}},
    {L"Dot", Figure::disc, {0.25, 0.5}},
    {L"Dot", Figure::line, {-0.5, 0.0, -1.0, 0.0}},
    {L"DotSmall", Figure::disc, {0.0625, 0.5}},
    {L"DotBlank", Figure::circle, {0.5}},
    {L"DotBlank", Figure::line, {-0.5, 0.0, -1.0, 0.0}},
    {L"Origin", Figure::circle, {0.5}},
    {L"Origin", Figure::line, {0.0, 0.0, -1.0, 0.0}},
    {L"Origin2", Figure::circle, {0.5}},
    {L"Origin2", Figure::circle, {0.25}},
    {L"Origin2", Figure::line, {-0.5, 0.0, -1.0, 0.0}},
    {L"Open", Figure::line, {-1.0, 1.0 / 6.0, 0.0, 0.0}},
    {L"Open", Figure::line, {0.0, 0.0, -1.0, -1.0 / 6.0}},
    {L"Open", Figure::line, {0.0, 0.0, -1.0, 0.0}},
    {L"Open90", Figure::line, {-0.5, 0.5, 0.0, 0.0}},
    {L"Open90", Figure::line, {0.0, 0.0, -0.5, -0.5}},
    {L"Open90", Figure::line, {0.0, 0.0, -1.0, 0.0}},
    {L"Open30", Figure::line, {-1.0, 0.26794919243112, 0.0, 0.0}},
    {L"Open30", Figure::line, {0.0, 0.0, -1.0, -0.26794919243112}},
    {L"Open30", Figure::line, {0.0, 0.0, -1.0, 0.0}},
    {L"Small", Figure::circle, {0.25}},
    {L"Oblique", Figure::line, {-0.5, -0.5, 0.5, 0.5}},
    {L"ArchTick", Figure::stroke, {-0.5, -0.5, 0.5, 0.5, 0.15}},
    {L"Integral", Figure::arc, {0.44489, -0.09133, 0.45417, 102.0, 168.0}},
    {L"Integral", Figure::arc, {-0.44489, 0.09133, 0.45417, 282.0, 348.0}},
    {L"BoxFilled", Figure::square, {0.5}},
    {L"BoxFilled", Figure::line, {-0.5, 0.0, -1.0, 0.0}},
    {L"BoxBlank", Figure::line, {-0.5, -0.5, 0.5, -0.5}},
    {L"BoxBlank", Figure::line, {0.5, -0.5, 0.5, 0.5}},
    {L"BoxBlank", Figure::line, {0.5, 0.5, -0.5, 0.5}},
    {L"BoxBlank", Figure::line, {-0.5, 0.5, -0.5, -0.5}},
    {L"BoxBlank", Figure::line, {-0.5, 0.0, -1.0, 0.0}},
    {L"DatumFilled", Figure::triangle, {0.0, 0.57735026918963, -1.0, 0.0, 0.0, -0.57735026918963}},
    {L"DatumBlank", Figure::line, {0.0, 0.57735026918963, -1.0, 0.0}},
    {L"DatumBlank", Figure::line, {-1.0, 0.0, 0.0, -0.57735026918963}},
    {L"DatumBlank", Figure::line, {0.0, -0.57735026918963, 0.0, 0.57735026918963}},
};
constexpr std::wstring_view emptyArrow = L"None";
constexpr std::wstring_view filledArrow = L"ClosedFilled";

// Those that are not as the filled arrow is.
struct TraitsRow {
    std::wstring_view arrow;
    ArrowTraits traits;
};
constexpr TraitsRow traitsTable[] = {
    {L"DotSmall", {false, false, 1.0}}, {L"Small", {false, true, 1.0}},    {L"None", {false, true, 1.0}},
    {L"Oblique", {false, true, 1.0}},   {L"Integral", {false, true, 1.0}}, {L"ArchTick", {false, true, 0.6}},
};

std::wstring_view bareName(std::wstring_view name) { return name.starts_with(L'_') ? name.substr(1) : name; }

std::unique_ptr<AcDbEntity> path(const double (&ends)[4], double bulge, double width) {
    auto polyline = std::make_unique<AcDbPolyline>();
    for (unsigned int i = 0; i < 2; ++i)
        polyline->addVertexAt(i, {ends[2 * i], ends[2 * i + 1]}, bulge, width, width);
    polyline->setClosed(bulge != 0.0);
    return polyline;
}

std::unique_ptr<AcDbEntity> madePart(const Part& part) {
    const double(&at)[6] = part.at;
    const AcGePoint3d first(at[0], at[1], 0.0);
    const AcGePoint3d second(at[2], at[3], 0.0);
    constexpr double degree = std::numbers::pi / 180.0;
    switch (part.figure) {
    case Figure::line:
        return std::make_unique<AcDbLine>(first, second);
    case Figure::triangle: {
        const AcGePoint3d third(at[4], at[5], 0.0);
        return std::make_unique<AcDbSolid>(first, second, third, third);
    }
    case Figure::square:
        return std::make_unique<AcDbSolid>(AcGePoint3d(-at[0], -at[0], 0.0), AcGePoint3d(at[0], -at[0], 0.0),
                                           AcGePoint3d(-at[0], at[0], 0.0), AcGePoint3d(at[0], at[0], 0.0));
    case Figure::circle:
        return std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d(0.0, 0.0, 1.0), at[0]);
    case Figure::disc:
        return path({-at[0], 0.0, at[0], 0.0}, 1.0, at[1]);
    case Figure::stroke:
        return path({at[0], at[1], at[2], at[3]}, 0.0, at[4]);
    case Figure::arc:
        return std::make_unique<AcDbArc>(first, at[2], at[3] * degree, at[4] * degree);
    }
    return nullptr;
}

// The name as the standing arrow has it; empty for none.
std::wstring_view standingName(std::wstring_view bare) {
    if (equalFolded(bare, emptyArrow)) return emptyArrow;
    for (const Part& part : parts)
        if (equalFolded(bare, part.arrow)) return part.arrow;
    return {};
}

AcDbObjectId madeBlock(AcDbDatabase& database, AcDbBlockTable& table, std::wstring_view arrow) {
    BlockContents contents;
    for (const Part& part : parts) {
        if (arrow != part.arrow) continue;
        std::unique_ptr<AcDbEntity> entity = madePart(part);
        (void)entity->setLayer(database.layerZero());
        (void)entity->setColorIndex(AcCmEntityColor::kACIbyBlock);
        (void)entity->setLinetype(database.byBlockLinetype());
        (void)entity->setLineWeight(AcDb::kLnWtByBlock);
        contents.push_back(std::move(entity));
    }
    return addBlock(table, std::make_unique<AcDbBlockTableRecord>(), L"_" + std::wstring(arrow),
                    std::move(contents));
}

} // namespace

ArrowTraits arrowTraits(AcDbObjectId block) {
    const auto* const record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
    if (!record) return {};
    const std::wstring_view name = bareName(record->name());
    for (const TraitsRow& row : traitsTable)
        if (equalFolded(name, row.arrow)) return row.traits;
    return {};
}

Acad::ErrorStatus arrowBlock(AcDbDatabase* database, const wchar_t* name, AcDbObjectId& block) {
    if (!name) return Acad::eNullPtr;
    const std::wstring_view bare = bareName(name);
    if (bare.empty() || bare == L"." || equalFolded(bare, filledArrow)) {
        block.setNull();
        return Acad::eOk;
    }
    if (!database) return Acad::eNoDatabase;
    auto* const table = DatabaseAccess::objectOf<AcDbBlockTable>(database->blockTableId());
    if (!table) return Acad::eNoDatabase;
    const std::wstring_view standing = standingName(bare);
    AcDbObjectId found = table->find(name);
    if (found.isNull() && !standing.empty()) found = table->find(L"_" + std::wstring(standing));
    if (found.isNull() && !standing.empty()) found = madeBlock(*database, *table, standing);
    if (found.isNull()) return Acad::eKeyNotFound;
    block = found;
    return Acad::eOk;
}

} // namespace hostkit
