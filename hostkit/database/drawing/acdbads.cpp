#include "acdbads.h"

#include "dbaccess.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "displaychanges.h"
#include "groupgatherer.h"

#include "casefold.h"

#include <memory>

namespace {

using hostkit::TableKind;

struct TableWord {
    const wchar_t* word;
    TableKind kind;
};
constexpr TableWord tableWords[] = {
    {L"APPID", TableKind::kRegApp}, {L"BLOCK", TableKind::kBlock},    {L"DIMSTYLE", TableKind::kDimStyle},
    {L"LAYER", TableKind::kLayer},  {L"LTYPE", TableKind::kLinetype}, {L"STYLE", TableKind::kTextStyle},
    {L"UCS", TableKind::kUcs},      {L"VIEW", TableKind::kView},      {L"VPORT", TableKind::kViewport},
};

const AcDbSymbolTable* tableOf(const AcDbDatabase& database, const wchar_t* word) {
    for (const TableWord& each : tableWords)
        if (hostkit::equalFolded(each.word, word))
            return hostkit::DatabaseAccess::objectOf<AcDbSymbolTable>(
                hostkit::DatabaseAccess::table(database, each.kind));
    return nullptr;
}

} // namespace

resbuf* acdbTblSearch(const wchar_t* tableName, const wchar_t* name, int) {
    AcDbDatabase* const database = hostkit::orWorkingDatabase(nullptr);
    if (!database || !tableName || !name) return nullptr;
    const AcDbSymbolTable* const table = tableOf(*database, tableName);
    const auto* const record =
        table ? hostkit::DatabaseAccess::objectOf<AcDbSymbolTableRecord>(table->find(name)) : nullptr;
    if (!record) return nullptr;
    hostkit::GroupGatherer gatherer(database);
    gatherer.writeText(0, tableName);
    return record->dxfOutFields(&gatherer) == Acad::eOk ? gatherer.groups().toList() : nullptr;
}

int acdbRegApp(const wchar_t* application) {
    AcDbDatabase* const database = hostkit::orWorkingDatabase(nullptr);
    if (!database || !application) return RTERROR;
    const AcDbSymbolTablePointer<AcDbRegAppTable> table(database, AcDb::kForWrite);
    if (!table.object()) return RTERROR;
    auto record = std::make_unique<AcDbRegAppTableRecord>();
    if (record->setName(application) != Acad::eOk || table->add(record.get()) != Acad::eOk) return RTERROR;
    record.release()->close();
    return RTNORM;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
    if (id.isNull()) return Acad::eNullObjectId;
    name[0] = id.asOldId();
    name[1] = 0;
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    if (!name || name[0] == 0) return Acad::eNullObjectId;
    if (name[1] != 0) return Acad::eInvalidInput;
    id.setFromOldId(name[0]);
    return Acad::eOk;
}

int acdbEntUpd(const ads_name name) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk || id.isErased()) return RTERROR;
    const auto* entity = hostkit::DatabaseAccess::objectOf<AcDbEntity>(id);
    if (!entity) return RTERROR;
    hostkit::DatabaseAccess::display(*id.database()).redrawAsked(*entity);
    return RTNORM;
}
