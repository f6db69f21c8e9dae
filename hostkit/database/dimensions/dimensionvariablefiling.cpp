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

/// A form before 2000 has names, but for what its record was read with.
bool isInOldForm(const AcDbDxfFiler& filer) {
    return filer.filerType() == AcDb::kFileFiler && filer.dwgVersion() < AcDb::kDHL_1015;
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

const NamedArrow* namedArrow(short handleCode) {
    for (const NamedArrow& arrow : namedArrows)
        if (handleCode == arrow.handleCode) return &arrow;
    return nullptr;
}

/// How an arrow's block is written in this record.
bool isWrittenByName(const AcDbDxfFiler& filer, const AcDbObject& style, const NamedArrow& arrow,
                     AcDbObjectId block, bool isGiven) {
    if (filer.filerType() != AcDb::kFileFiler) return false;
    if (block.isNull()) return DatabaseAccess::unknownName(style, arrow.nameCode) != nullptr;
    const AcDbDatabase* const database = style.database();
    const bool isOwnForm = database && database->originalFileVersion() == filer.dwgVersion();
    return isInOldForm(filer) && !(isGiven && isOwnForm);
}

void writeVariable(AcDbDxfFiler& filer, const AcDbObject& style, const DimensionVariable& variable,
                   const DimensionVariables& variables, bool isGiven) {
    static const DimensionVariables standard;
    if (const NamedArrow* const arrow = namedArrow(variable.code)) {
        const AcDbObjectId block = variables.*arrow->member;
        if (isWrittenByName(filer, style, *arrow, block, isGiven))
            return writeRecord(filer, arrow->nameCode, style, block, L"");
    }
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

} // namespace

bool readVariable(AcDbDxfFiler& filer, const AcDbDxfGroup& group, AcDbObject& style,
                  DimensionVariables& variables) {
    for (const NamedArrow& arrow : namedArrows) {
        if (arrow.nameCode != group.code) continue;
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
    DimensionVariables variables = filed;
    // A drawing of an older form has names where a later one, and whoever serves one process, has ids.
    const AcDbDatabase* const database = style.database();
    const bool isForFile = filer.filerType() == AcDb::kFileFiler;
    const bool isFromOldForm = database && database->originalFileVersion() < AcDb::kDHL_1015;
    if (!isForFile || (isFromOldForm && !isInOldForm(filer))) findNamedBlocks(style, variables);
    std::size_t place = 0;
    for (const DimensionVariable& variable : dimensionVariableTable())
        writeVariable(filer, style, variable, variables, given[place++]);
}

void forgetNamedBlock(AcDbObject& style, short code) {
    for (const NamedArrow& arrow : namedArrows) {
        if (arrow.handleCode != code) continue;
        DatabaseAccess::forgetUnknownName(style, arrow.nameCode);
        DatabaseAccess::forgetUnknownName(style, code);
    }
}

void bindNamedBlocks(AcDbObject& style, DimensionVariables& variables) {
    const AcDbDatabase* const database = style.database();
    if (!database || database->originalFileVersion() >= AcDb::kDHL_1015) return;
    const auto* const blocks = DatabaseAccess::objectOf<AcDbBlockTable>(database->blockTableId());
    if (!blocks) return;
    for (const NamedArrow& arrow : namedArrows) {
        const std::wstring* const name = DatabaseAccess::unknownName(style, arrow.nameCode);
        const AcDbObjectId block = name && !name->empty() ? blocks->find(*name) : AcDbObjectId();
        if (block.isNull() || symbolName(block, L"") != *name) continue;
        variables.*arrow.member = block;
        DatabaseAccess::forgetUnknownName(style, arrow.nameCode);
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
