#include "dimensionvariablefiling.h"

#include "dbblocktable.h"
#include "symbolnames.h"

namespace hostkit {

namespace {

constexpr short fillColorCode = 70;

struct NamedArrow {
    short nameCode; ///< in forms before 2000
    short handleCode;
    AcDbObjectId DimensionVariables::*member;
};
constexpr NamedArrow namedArrows[] = {{5, 342, &DimensionVariables::dimblk},
                                      {6, 343, &DimensionVariables::dimblk1},
                                      {7, 344, &DimensionVariables::dimblk2}};

// Some programs name them in later forms too.
bool mayNameArrows(const AcDbDxfFiler& filer) { return filer.filerType() == AcDb::kFileFiler; }

bool hasNamedArrows(const AcDbDxfFiler& filer) {
    return mayNameArrows(filer) && filer.dwgVersion() < AcDb::kDHL_1015;
}

bool take(AcDbDxfFiler&, const AcDbDxfGroup& group, const DimensionVariable&, AcDbObject&,
          std::wstring& value) {
    value = group.text;
    return true;
}

bool take(AcDbDxfFiler& filer, const AcDbDxfGroup& group, const DimensionVariable& variable, AcDbObject&,
          double& value) {
    value = variable.kind == VariableKind::angle ? filer.angleOf(group) : group.real;
    return true;
}

bool take(AcDbDxfFiler& filer, const AcDbDxfGroup& group, const DimensionVariable& variable,
          AcDbObject& style, AcDbObjectId& value) {
    if (group.kind == AcDb::GroupKind::kHandle) {
        value = filer.objectIdOf(group);
        return true;
    }
    readRecord(filer, variable.kind == VariableKind::textStyle ? TableKind::kTextStyle : TableKind::kBlock,
               group, style, value);
    return true;
}

template <typename Integer>
bool take(AcDbDxfFiler&, const AcDbDxfGroup& group, const DimensionVariable&, AcDbObject&, Integer& value) {
    const auto given = static_cast<Integer>(group.integer);
    if (static_cast<Adesk::Int64>(given) != group.integer) return false;
    value = given;
    return true;
}

void put(AcDbDxfFiler& filer, const DimensionVariable& variable, const AcDbObject&, double value) {
    if (variable.kind == VariableKind::angle)
        filer.writeAngle(variable.code, value);
    else
        filer.writeReal(variable.code, value);
}

void put(AcDbDxfFiler& filer, const DimensionVariable& variable, const AcDbObject& style,
         AcDbObjectId value) {
    if (value.isNull() && DatabaseAccess::unknownName(style, variable.code))
        writeRecord(filer, variable.code, style, value, L"");
    else
        filer.writeId(variable.code, value);
}

void put(AcDbDxfFiler& filer, const DimensionVariable& variable, const AcDbObject&,
         const std::wstring& value) {
    filer.writeText(variable.code, value);
}

template <typename Integer>
void put(AcDbDxfFiler& filer, const DimensionVariable& variable, const AcDbObject&, Integer value) {
    filer.writeInteger(variable.code, static_cast<Adesk::Int64>(value));
}

bool isNamedArrow(short code) {
    for (const NamedArrow& arrow : namedArrows)
        if (code == arrow.handleCode) return true;
    return false;
}

void writeNamedArrows(AcDbDxfFiler& filer, const AcDbObject& style, const DimensionVariables& variables,
                      bool areAllNamed) {
    for (const NamedArrow& arrow : namedArrows) {
        const AcDbObjectId block = variables.*arrow.member;
        const bool isNamed = block.isNull() && DatabaseAccess::unknownName(style, arrow.nameCode);
        if (isNamed || (areAllNamed && !block.isNull()))
            writeRecord(filer, arrow.nameCode, style, block, L"");
    }
}

} // namespace

bool readVariable(AcDbDxfFiler& filer, const AcDbDxfGroup& group, AcDbObject& style,
                  DimensionVariables& variables) {
    for (const NamedArrow& arrow : namedArrows) {
        if (arrow.nameCode != group.code) continue;
        if (!mayNameArrows(filer)) return false;
        readRecord(filer, TableKind::kBlock, group, style, variables.*arrow.member);
        return true;
    }
    const DimensionVariable* const variable = dimensionVariable(group.code);
    if (!variable) return false;
    return std::visit([&](auto member) { return take(filer, group, *variable, style, variables.*member); },
                      variable->member);
}

void writeVariables(AcDbDxfFiler& filer, const AcDbObject& style, const DimensionVariables& filed,
                    const std::bitset<variableLimit>& given) {
    static const DimensionVariables standard;
    const bool namesArrows = hasNamedArrows(filer);
    DimensionVariables variables = filed;
    // A drawing of an older form has names where a later one has handles.
    const AcDbDatabase* const database = style.database();
    if (!namesArrows && database && database->originalFileVersion() < AcDb::kDHL_1015)
        findNamedBlocks(style, variables);
    writeNamedArrows(filer, style, variables, namesArrows);
    std::size_t place = 0;
    for (const DimensionVariable& variable : dimensionVariableTable()) {
        const bool isGiven = given[place++];
        if (namesArrows && isNamedArrow(variable.code)) continue;
        std::visit(
            [&](auto member) {
                const bool isTold = isGiven || variables.*member != standard.*member ||
                                    DatabaseAccess::unknownName(style, variable.code);
                if (!isTold && variable.code == fillColorCode) return;
                if (!isTold) filer.markDefault();
                put(filer, variable, style, variables.*member);
            },
            variable.member);
    }
}

void forgetNamedBlock(AcDbObject& style, short code) {
    for (const NamedArrow& arrow : namedArrows) {
        if (arrow.handleCode != code) continue;
        DatabaseAccess::forgetUnknownName(style, arrow.nameCode);
        DatabaseAccess::forgetUnknownName(style, code);
    }
}

void findNamedBlocks(const AcDbObject& style, DimensionVariables& variables) {
    const AcDbDatabase* const database = style.database();
    const auto* blocks =
        database ? DatabaseAccess::objectOf<AcDbBlockTable>(database->blockTableId()) : nullptr;
    if (!blocks) return;
    for (const NamedArrow& arrow : namedArrows)
        for (const short code : {arrow.nameCode, arrow.handleCode}) {
            AcDbObjectId& block = variables.*arrow.member;
            const std::wstring* const name =
                block.isNull() ? DatabaseAccess::unknownName(style, code) : nullptr;
            if (!name || name->empty()) continue;
            block = blocks->find(*name);
            // Standing arrows are named without the underscore of their blocks.
            if (block.isNull()) block = blocks->find(L"_" + *name);
        }
}

} // namespace hostkit
