#include "dbaccess.h"
#include "dbdictionary.h"
#include "dblayout.h"
#include "dbsymtb.h"
#include "headervariables.h"

#include "casefold.h"

#include <memory>
#include <utility>

// What every drawing has, and makes of an empty database a drawing.

namespace hostkit {
namespace {

AcDbObjectId added(AcDbDatabase& database, std::unique_ptr<AcDbObject> object, AcDbObjectId owner = {}) {
    const AcDbObjectId id = DatabaseAccess::add(database, object.get(), 0, owner);
    (void)object.release(); // the drawing's from here on
    return id;
}

template <typename Table>
void addTable(AcDbDatabase& database, TableKind kind) {
    if (DatabaseAccess::table(database, kind).isResident()) return;
    DatabaseAccess::setTable(database, kind, added(database, std::make_unique<Table>()));
}

void addTables(AcDbDatabase& database) {
    addTable<AcDbViewportTable>(database, TableKind::kViewport);
    addTable<AcDbLinetypeTable>(database, TableKind::kLinetype);
    addTable<AcDbLayerTable>(database, TableKind::kLayer);
    addTable<AcDbTextStyleTable>(database, TableKind::kTextStyle);
    addTable<AcDbViewTable>(database, TableKind::kView);
    addTable<AcDbUCSTable>(database, TableKind::kUcs);
    addTable<AcDbRegAppTable>(database, TableKind::kRegApp);
    addTable<AcDbDimStyleTable>(database, TableKind::kDimStyle);
    addTable<AcDbBlockTable>(database, TableKind::kBlock);
}

/// The new record, not in its drawing yet for `prepare`; null when the table has one of that name.
template <typename Record, typename Prepare>
void addRecord(AcDbDatabase& database, TableKind kind, const wchar_t* name, Prepare&& prepare) {
    auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(database, kind));
    if (!table || table->has(name)) return;
    auto made = std::make_unique<Record>();
    Record& record = *made;
    DatabaseAccess::setRecordName(record, name);
    prepare(record);
    added(database, std::move(made), table->objectId());
    DatabaseAccess::enterRecord(*table, record);
}

template <typename Record>
void addRecord(AcDbDatabase& database, TableKind kind, const wchar_t* name) {
    addRecord<Record>(database, kind, name, [](Record&) {});
}

// One view of the whole plan, a sheet of 297 units high and 420 wide.
GroupBlock activeView() {
    struct Group {
        short code;
        short dimension;
        double x, y, z;
    };
    constexpr Group points[] = {
        {10, 2, 0, 0, 0},   {11, 2, 1, 1, 0}, {12, 2, 210, 148.5, 0}, {13, 2, 0, 0, 0},   {14, 2, 10, 10, 0},
        {15, 2, 10, 10, 0}, {16, 3, 0, 0, 1}, {17, 3, 0, 0, 0},       {40, 1, 297, 0, 0}, {41, 1, 1.5, 0, 0},
        {42, 1, 50, 0, 0},  {43, 1, 0, 0, 0}, {44, 1, 0, 0, 0},       {50, 1, 0, 0, 0},   {51, 1, 0, 0, 0}};
    constexpr std::pair<short, int> integers[] = {{71, 0}, {72, 1000}, {73, 1}, {74, 3},
                                                  {75, 0}, {76, 0},    {77, 0}, {78, 0}};
    GroupBlock groups;
    for (const Group& group : points) {
        const double coordinates[] = {group.x, group.y, group.z};
        if (group.dimension == 1)
            groups.appendReal(group.code, group.x);
        else
            groups.appendPoint(group.code, coordinates, group.dimension);
    }
    for (const auto& [code, value] : integers) groups.appendInteger(code, value);
    return groups;
}

void addStandingRecords(AcDbDatabase& database) {
    addRecord<AcDbRegAppTableRecord>(database, TableKind::kRegApp, L"ACAD");
    addRecord<AcDbLinetypeTableRecord>(database, TableKind::kLinetype, L"ByBlock");
    addRecord<AcDbLinetypeTableRecord>(database, TableKind::kLinetype, L"ByLayer");
    addRecord<AcDbLinetypeTableRecord>(database, TableKind::kLinetype, L"Continuous",
                                       [](auto& record) { record.setComments(L"Solid line"); });
    addRecord<AcDbLayerTableRecord>(database, TableKind::kLayer, L"0", [&](auto& record) {
        record.setLinetypeObjectId(database.continuousLinetype());
    });
    addRecord<AcDbTextStyleTableRecord>(database, TableKind::kTextStyle, L"Standard",
                                        [](auto& record) { record.setFileName(L"txt"); });
    addRecord<AcDbDimStyleTableRecord>(database, TableKind::kDimStyle, L"Standard");
    addRecord<AcDbViewportTableRecord>(database, TableKind::kViewport, L"*Active",
                                       [](auto& record) { record.setGroups(activeView()); });
    addRecord<AcDbBlockTableRecord>(database, TableKind::kBlock, L"*Model_Space");
    addRecord<AcDbBlockTableRecord>(database, TableKind::kBlock, L"*Paper_Space");
}

AcDbDictionary* rootDictionary(AcDbDatabase& database) {
    auto* root = DatabaseAccess::objectOf<AcDbDictionary>(database.namedObjectsDictionaryId());
    if (root) return root;
    auto made = std::make_unique<AcDbDictionary>();
    root = made.get();
    DatabaseAccess::setNamedObjectsDictionary(database, added(database, std::move(made)));
    return root;
}

AcDbDictionary* subDictionary(AcDbDatabase& database, const wchar_t* name) {
    AcDbDictionary* root = rootDictionary(database);
    AcDbObjectId id;
    if (root->getAt(name, id) == Acad::eOk && id.isResident())
        return DatabaseAccess::objectOf<AcDbDictionary>(id);
    auto made = std::make_unique<AcDbDictionary>();
    AcDbDictionary* const dictionary = made.get();
    DatabaseAccess::putEntry(*root, name, added(database, std::move(made), root->objectId()));
    return dictionary;
}

void addLayout(AcDbDatabase& database, AcDbObjectId space, const wchar_t* name, int tabOrder) {
    auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(space);
    AcDbDictionary* layouts = subDictionary(database, L"ACAD_LAYOUT");
    if (!block || !layouts || block->getLayoutId().isResident() || layouts->has(name)) return;
    auto layout = std::make_unique<AcDbLayout>();
    layout->setLayoutName(name);
    layout->setTabOrder(tabOrder);
    layout->setBlockTableRecordId(space);
    const AcDbObjectId id = added(database, std::move(layout), layouts->objectId());
    DatabaseAccess::putEntry(*layouts, name, id);
    DatabaseAccess::setLayout(*block, id);
}

void addHeader(AcDbDatabase& database) {
    constexpr struct {
        const wchar_t* name;
        short code;
        double value;
    } numbers[] = {
        {L"ATTMODE", 70, 1},     {L"AUNITS", 70, 0},    {L"AUPREC", 70, 0},      {L"ANGBASE", 50, 0},
        {L"ANGDIR", 70, 0},      {L"CECOLOR", 62, 256}, {L"CELTSCALE", 40, 1},   {L"FILLMODE", 70, 1},
        {L"ELEVATION", 40, 0},   {L"LTSCALE", 40, 1},   {L"LUNITS", 70, 2},      {L"LUPREC", 70, 4},
        {L"MIRRTEXT", 70, 0},    {L"ORTHOMODE", 70, 0}, {L"PDMODE", 70, 0},      {L"PDSIZE", 40, 0},
        {L"PLINEWID", 40, 0},    {L"PSLTSCALE", 70, 1}, {L"TEXTSIZE", 40, 2.5},  {L"THICKNESS", 40, 0},
        {L"TILEMODE", 70, 1},    {L"TRACEWID", 40, 1},  {L"MEASUREMENT", 70, 1}, {L"INSUNITS", 70, 4},
        {L"CELWEIGHT", 370, -1}, {L"PELEVATION", 40, 0}};
    constexpr struct {
        const wchar_t* name;
        double x, y;
        int dimension;
    } points[] = {{L"INSBASE", 0, 0, 3},
                  {L"EXTMIN", 0, 0, 3},
                  {L"EXTMAX", 0, 0, 3},
                  {L"LIMMIN", 0, 0, 2},
                  {L"LIMMAX", 420, 297, 2}};
    constexpr struct {
        const wchar_t* name;
        short code;
        const wchar_t* value;
    } texts[] = {{L"CLAYER", 8, L"0"},
                 {L"CELTYPE", 6, L"ByLayer"},
                 {L"TEXTSTYLE", 7, L"Standard"},
                 {L"DIMSTYLE", 2, L"Standard"}};
    HeaderVariables& header = database.header();
    for (const auto& point : points) {
        const double coordinates[] = {point.x, point.y, 0.0};
        if (!header.find(point.name))
            header.put(point.name).groups.appendPoint(10, coordinates, point.dimension);
    }
    for (const auto& [name, code, value] : texts)
        if (!header.find(name)) header.put(name).groups.appendText(code, value);
    for (const auto& [name, code, value] : numbers) {
        if (header.find(name)) continue;
        if (AcDb::groupKind(code) == AcDb::GroupKind::kReal)
            header.put(name).groups.appendReal(code, value);
        else
            header.put(name).groups.appendInteger(code, static_cast<Adesk::Int64>(value));
    }
}

} // namespace

void DatabaseAccess::completeDrawing(AcDbDatabase& database) {
    if (!database.source()) addHeader(database);
    addTables(database);
    addStandingRecords(database);
    subDictionary(database, L"ACAD_GROUP");
    addLayout(database, database.modelSpaceId(), L"Model", 0);
    addLayout(database, database.paperSpaceId(), L"Layout1", 1);
}

} // namespace hostkit
