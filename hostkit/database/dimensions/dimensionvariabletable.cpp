#include "dimensionvariabletable.h"

#include "dbblocktablerecord.h"
#include "dblinetypetablerecord.h"
#include "dbtextstyletablerecord.h"

#include <array>

namespace hostkit {

namespace {

using variabletypes::most;

#define HOSTKIT_TABLE_ROW(name, Name, code, kind, least, greatest)                                           \
    DimensionVariable{code, VariableKind::kind, &DimensionVariables::name, least, greatest},
const DimensionVariable table[] = {HOSTKIT_DIMENSION_VARIABLES(HOSTKIT_TABLE_ROW)};
#undef HOSTKIT_TABLE_ROW
static_assert(std::size(table) <= variableLimit);

constexpr short codeLimit = 400;

// One more than the place in the table; 0 for codes that are no variable's.
std::array<unsigned char, codeLimit> placesByCode() {
    std::array<unsigned char, codeLimit> places{};
    for (std::size_t place = 0; place < std::size(table); ++place)
        places[static_cast<std::size_t>(table[place].code)] = static_cast<unsigned char>(place + 1);
    return places;
}

const AcRxClass* classOf(VariableKind kind) {
    switch (kind) {
    case VariableKind::block:
        return AcDbBlockTableRecord::desc();
    case VariableKind::textStyle:
        return AcDbTextStyleTableRecord::desc();
    default:
        return AcDbLinetypeTableRecord::desc();
    }
}

} // namespace

std::span<const DimensionVariable> dimensionVariableTable() { return table; }

const DimensionVariable* dimensionVariable(short code) {
    static const std::array<unsigned char, codeLimit> places = placesByCode();
    const std::size_t place = code >= 0 && code < codeLimit ? places[static_cast<std::size_t>(code)] : 0;
    return place == 0 ? nullptr : &table[place - 1];
}

Acad::ErrorStatus checkVariable(const DimensionVariable& variable, double value) {
    if (!std::isfinite(value)) return Acad::eInvalidInput;
    return value >= variable.least && value <= variable.most ? Acad::eOk : Acad::eOutOfRange;
}

Acad::ErrorStatus checkVariable(const DimensionVariable& variable, AcDbObjectId value) {
    if (value.isNull()) return Acad::eOk;
    const AcRxClass* const found = value.objectClass();
    return found && found->isDerivedFrom(classOf(variable.kind)) ? Acad::eOk : Acad::eNotThatKindOfClass;
}

} // namespace hostkit
