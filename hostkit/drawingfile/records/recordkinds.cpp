#include "recordkinds.h"

#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "db3dpolyline.h"
#include "db3dvertex.h"
#include "dbarc.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbblockreference.h"
#include "dbbody.h"
#include "dbcircle.h"
#include "dbdictdflt.h"
#include "dbdictionary.h"
#include "dbdim.h"
#include "dbellipse.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dblayout.h"
#include "dbline.h"
#include "dbminsert.h"
#include "dbmtext.h"
#include "dbopaque.h"
#include "dbplhldr.h"
#include "dbpoint.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbregion.h"
#include "dbsequenceend.h"
#include "dbsol3d.h"
#include "dbsolid.h"
#include "dbspline.h"
#include "dbsymtb.h"
#include "dbtext.h"
#include "dbtrace.h"
#include "dbviewport.h"
#include "dbxline.h"
#include "dbxrecrd.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

template <class Base>
struct Kind {
    std::string_view name;
    std::unique_ptr<Base> (*make)();
};

template <class Base, class Object>
constexpr Kind<Base> kindOf(std::string_view name) {
    return {name, []() -> std::unique_ptr<Base> { return std::make_unique<Object>(); }};
}

// Sorted by name. Polylines, block references and dimensions are of several classes: makeEntity looks closer
// at them.
constexpr std::array entityKinds = {
    kindOf<AcDbEntity, AcDbFace>("3DFACE"),
    kindOf<AcDbEntity, AcDb3dSolid>("3DSOLID"),
    kindOf<AcDbEntity, AcDbArc>("ARC"),
    kindOf<AcDbEntity, AcDbArcDimension>("ARC_DIMENSION"),
    kindOf<AcDbEntity, AcDbAttributeDefinition>("ATTDEF"),
    kindOf<AcDbEntity, AcDbBlockBegin>("BLOCK"),
    kindOf<AcDbEntity, AcDbBody>("BODY"),
    kindOf<AcDbEntity, AcDbCircle>("CIRCLE"),
    kindOf<AcDbEntity, AcDbEllipse>("ELLIPSE"),
    kindOf<AcDbEntity, AcDbBlockEnd>("ENDBLK"),
    kindOf<AcDbEntity, AcDbHatch>("HATCH"),
    kindOf<AcDbEntity, AcDbLine>("LINE"),
    kindOf<AcDbEntity, AcDbPolyline>("LWPOLYLINE"),
    kindOf<AcDbEntity, AcDbMText>("MTEXT"),
    kindOf<AcDbEntity, AcDbPoint>("POINT"),
    kindOf<AcDbEntity, AcDbRay>("RAY"),
    kindOf<AcDbEntity, AcDbRegion>("REGION"),
    kindOf<AcDbEntity, AcDbSolid>("SOLID"),
    kindOf<AcDbEntity, AcDbSpline>("SPLINE"),
    kindOf<AcDbEntity, AcDbText>("TEXT"),
    kindOf<AcDbEntity, AcDbTrace>("TRACE"),
    kindOf<AcDbEntity, AcDbViewport>("VIEWPORT"),
    kindOf<AcDbEntity, AcDbXline>("XLINE"),
};

constexpr std::array objectKinds = {
    kindOf<AcDbObject, AcDbDictionaryWithDefault>("ACDBDICTIONARYWDFLT"),
    kindOf<AcDbObject, AcDbPlaceHolder>("ACDBPLACEHOLDER"),
    kindOf<AcDbObject, AcDbDictionary>("DICTIONARY"),
    kindOf<AcDbObject, AcDbLayout>("LAYOUT"),
    kindOf<AcDbObject, AcDbXrecord>("XRECORD"),
};

template <class Base, std::size_t count>
std::unique_ptr<Base> makeKind(const std::array<Kind<Base>, count>& kinds, std::string_view name) {
    const auto found =
        std::lower_bound(kinds.begin(), kinds.end(), name,
                         [](const Kind<Base>& kind, std::string_view wanted) { return kind.name < wanted; });
    return found == kinds.end() || found->name != name ? nullptr : found->make();
}

std::wstring wideName(std::string_view name) { return {name.begin(), name.end()}; }

std::int64_t integerOf(const DrawingRecord& record, int code, std::int64_t otherwise) {
    const RecordGroup* const group = record.find(code);
    return group ? integerFromText(group->value).value_or(otherwise) : otherwise;
}

// Meshes of both kinds are known by their bytes only.
std::unique_ptr<AcDbEntity> makePolyline(const DrawingRecord& record) {
    constexpr int flagsCode = 70;
    constexpr std::int64_t spatialFlag = 8;
    constexpr std::int64_t meshFlags = 16 | 64;
    const std::int64_t flags = integerOf(record, flagsCode, 0);
    if ((flags & meshFlags) != 0) return std::make_unique<AcDbOpaqueEntity>(L"POLYLINE");
    if ((flags & spatialFlag) != 0) return std::make_unique<AcDb3dPolyline>();
    return std::make_unique<AcDb2dPolyline>();
}

std::unique_ptr<AcDbEntity> makeReference(const DrawingRecord& record) {
    constexpr int columnsCode = 70;
    constexpr int rowsCode = 71;
    if (integerOf(record, columnsCode, 1) > 1 || integerOf(record, rowsCode, 1) > 1)
        return std::make_unique<AcDbMInsertBlock>();
    return std::make_unique<AcDbBlockReference>();
}

// The types that have no class of their own are known by their points all the same.
std::unique_ptr<AcDbEntity> makeDimension(const DrawingRecord& record) {
    constexpr int typeCode = 70;
    constexpr std::int64_t typeBits = 15;
    switch (integerOf(record, typeCode, 0) & typeBits) {
    case AcDbDimension::kRotated:
        return std::make_unique<AcDbRotatedDimension>();
    case AcDbDimension::kAligned:
        return std::make_unique<AcDbAlignedDimension>();
    case AcDbDimension::kTwoLineAngular:
        return std::make_unique<AcDb2LineAngularDimension>();
    case AcDbDimension::kDiametric:
        return std::make_unique<AcDbDiametricDimension>();
    case AcDbDimension::kRadial:
        return std::make_unique<AcDbRadialDimension>();
    case AcDbDimension::kThreePointAngular:
        return std::make_unique<AcDb3PointAngularDimension>();
    case AcDbDimension::kOrdinate:
        return std::make_unique<AcDbOrdinateDimension>();
    default:
        return std::make_unique<AcDbDimension>();
    }
}

template <class Table>
constexpr Kind<AcDbSymbolTable> tableOfKind() {
    return kindOf<AcDbSymbolTable, Table>({});
}
template <class Record>
constexpr Kind<AcDbSymbolTableRecord> recordOfKind() {
    return kindOf<AcDbSymbolTableRecord, Record>({});
}

// In the order of TableKind.
constexpr std::array<std::string_view, tableCount> tableNames = {
    "BLOCK_RECORD", "LAYER", "STYLE", "LTYPE", "VIEW", "UCS", "VPORT", "APPID", "DIMSTYLE"};
constexpr std::array tableMakers = {
    tableOfKind<AcDbBlockTable>(),    tableOfKind<AcDbLayerTable>(),  tableOfKind<AcDbTextStyleTable>(),
    tableOfKind<AcDbLinetypeTable>(), tableOfKind<AcDbViewTable>(),   tableOfKind<AcDbUCSTable>(),
    tableOfKind<AcDbViewportTable>(), tableOfKind<AcDbRegAppTable>(), tableOfKind<AcDbDimStyleTable>()};
constexpr std::array recordMakers = {
    recordOfKind<AcDbBlockTableRecord>(),     recordOfKind<AcDbLayerTableRecord>(),
    recordOfKind<AcDbTextStyleTableRecord>(), recordOfKind<AcDbLinetypeTableRecord>(),
    recordOfKind<AcDbViewTableRecord>(),      recordOfKind<AcDbUCSTableRecord>(),
    recordOfKind<AcDbViewportTableRecord>(),  recordOfKind<AcDbRegAppTableRecord>(),
    recordOfKind<AcDbDimStyleTableRecord>()};

} // namespace

std::unique_ptr<AcDbEntity> makeEntity(const DrawingRecord& record, const ApplicationClasses& applications) {
    const std::string_view name = record.name();
    if (name == "INSERT") return makeReference(record);
    if (name == "POLYLINE") return makePolyline(record);
    if (name == "DIMENSION") return makeDimension(record);
    std::unique_ptr<AcDbEntity> entity = makeKind(entityKinds, name);
    if (entity) return entity;
    std::unique_ptr<AcDbObject> own = applications.make(name, ApplicationClasses::Kind::entity);
    if (own) return std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(own.release()));
    return std::make_unique<AcDbOpaqueEntity>(wideName(name));
}

std::unique_ptr<AcDbEntity> makePart(const DrawingRecord& record, const AcDbEntity& owner) {
    const std::string_view name = record.name();
    if (name == "VERTEX" && owner.isKindOf(AcDb2dPolyline::desc())) return std::make_unique<AcDb2dVertex>();
    if (name == "VERTEX" && owner.isKindOf(AcDb3dPolyline::desc()))
        return std::make_unique<AcDb3dPolylineVertex>();
    if (name == "ATTRIB") return std::make_unique<AcDbAttribute>();
    if (name == "SEQEND") return std::make_unique<AcDbSequenceEnd>();
    return std::make_unique<AcDbOpaqueEntity>(wideName(name));
}

std::unique_ptr<AcDbObject> makeObject(const DrawingRecord& record, const ApplicationClasses& applications) {
    std::unique_ptr<AcDbObject> object = makeKind(objectKinds, record.name());
    if (!object) object = applications.make(record.name(), ApplicationClasses::Kind::object);
    return object ? std::move(object) : std::make_unique<AcDbOpaqueObject>(wideName(record.name()));
}

std::unique_ptr<AcDbSymbolTableRecord> makeTableRecord(TableKind kind) {
    return recordMakers[static_cast<std::size_t>(kind)].make();
}

std::unique_ptr<AcDbSymbolTable> makeTable(TableKind kind) {
    return tableMakers[static_cast<std::size_t>(kind)].make();
}

std::optional<TableKind> tableKindOf(std::string_view name) {
    const auto found = std::find(tableNames.begin(), tableNames.end(), name);
    if (found == tableNames.end()) return {};
    return static_cast<TableKind>(found - tableNames.begin());
}

std::string_view tableName(TableKind kind) { return tableNames[static_cast<std::size_t>(kind)]; }

std::unique_ptr<AcDbObject> makeBlank(const AcDbObject& object, const DrawingRecord& record) {
    if (object.isKindOf(AcDbOpaqueEntity::desc()))
        return std::make_unique<AcDbOpaqueEntity>(wideName(record.name()));
    if (object.isKindOf(AcDbOpaqueObject::desc()))
        return std::make_unique<AcDbOpaqueObject>(wideName(record.name()));
    return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(object.isA()->create()));
}

} // namespace hostkit
