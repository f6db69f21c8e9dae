#include "headeraccess.h"

#include "adscodes.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "headervariables.h"

#include <algorithm>
#include <limits>

using AcDb::GroupKind;

namespace hostkit {
namespace {

bool firstGroup(const AcDbDatabase& database, std::wstring_view name, AcDbDxfGroup& group,
                std::wstring& text) {
    const HeaderVariables::Variable* variable = database.header().find(name);
    if (!variable) return false;
    GroupWalker walker(variable->groups);
    if (!walker.next(group)) return false;
    text = group.text;
    group.text = {};
    return true;
}

int cutToInteger(Adesk::Int64 value) {
    return static_cast<int>(
        std::clamp<Adesk::Int64>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

using Setter = Acad::ErrorStatus (AcDbDatabase::*)(AcDbObjectId);
struct RecordVariable {
    std::wstring_view name;
    const wchar_t* kind;
    AcDbObjectId (AcDbDatabase::*table)() const;
    Setter set;
};
constexpr RecordVariable recordVariables[] = {
    {L"CLAYER", L"layer", &AcDbDatabase::layerTableId, &AcDbDatabase::setClayer},
    {L"CELTYPE", L"linetype", &AcDbDatabase::linetypeTableId, &AcDbDatabase::setCeltype},
    {L"TEXTSTYLE", L"text style", &AcDbDatabase::textStyleTableId, &AcDbDatabase::setTextstyle},
    {L"DIMSTYLE", L"dimension style", &AcDbDatabase::dimStyleTableId, &AcDbDatabase::setDimstyle},
};

VariableResult setRecord(AcDbDatabase& database, const RecordVariable& variable, const std::wstring& name) {
    const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>((database.*variable.table)());
    AcDbObjectId record;
    const bool isThere = table && table->getAt(name.c_str(), record) == Acad::eOk &&
                         (database.*variable.set)(record) == Acad::eOk;
    return isThere ? VariableResult::ok : VariableResult::outOfRange;
}

} // namespace

const wchar_t* namedRecord(std::wstring_view variable) {
    for (const RecordVariable& each : recordVariables)
        if (each.name == variable) return each.kind;
    return nullptr;
}

bool readHeader(const AcDbDatabase& database, std::wstring_view name, SystemValue& value) {
    AcDbDxfGroup group;
    SystemValue read;
    if (!firstGroup(database, name, group, read.text)) return false;
    switch (group.kind) {
    case GroupKind::kReal:
        read.type = RTREAL;
        read.reals[0] = group.real;
        break;
    case GroupKind::kInt16:
    case GroupKind::kBool:
        read.type = RTSHORT;
        read.integer = cutToInteger(group.integer);
        break;
    case GroupKind::kInt32:
    case GroupKind::kInt64:
        read.type = RTLONG;
        read.integer = cutToInteger(group.integer);
        break;
    case GroupKind::kPoint:
        read.type = group.dimension == 2 ? RTPOINT : RT3DPOINT;
        for (int i = 0; i < group.dimension && i < 3; ++i) read.reals[i] = group.point[i];
        break;
    case GroupKind::kText:
    case GroupKind::kHandle:
    case GroupKind::kBinary:
        read.type = RTSTR;
        break;
    }
    value = std::move(read);
    return true;
}

VariableResult writeHeader(AcDbDatabase& database, std::wstring_view name, const SystemValue& value,
                           short code) {
    for (const RecordVariable& each : recordVariables)
        if (each.name == name) return setRecord(database, each, value.text);
    HeaderVariables& header = database.header();
    switch (value.type) {
    case RTREAL:
        header.setReal(name, value.reals[0], code);
        return VariableResult::ok;
    case RTSHORT:
    case RTLONG:
        header.setInteger(name, value.integer, code);
        return VariableResult::ok;
    case RTPOINT:
    case RT3DPOINT:
        header.setPoint(name, value.reals, value.type == RTPOINT ? 2 : 3, code);
        return VariableResult::ok;
    default:
        header.setText(name, value.text, code);
        return VariableResult::ok;
    }
}

bool isHandleVariable(const AcDbDatabase& database, std::wstring_view name) {
    AcDbDxfGroup group;
    std::wstring text;
    return firstGroup(database, name, group, text) &&
           (group.kind == GroupKind::kHandle || group.kind == GroupKind::kBinary);
}

} // namespace hostkit
