#include "dimensionrecords.h"

#include "arrowblocks.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbdimstyletablerecord.h"
#include "dbsymboltable.h"
#include "dimensionvariablefiling.h"
#include "headervariables.h"

#include <algorithm>
#include <cwctype>
#include <memory>

using namespace hostkit;

namespace {

using Record = AcDbObjectId DimensionVariables::*;

const AcDbSymbolTable* tableOf(const AcDbDatabase& drawing, VariableKind kind) {
    const AcDbObjectId id = kind == VariableKind::block       ? drawing.blockTableId()
                            : kind == VariableKind::textStyle ? drawing.textStyleTableId()
                                                              : drawing.linetypeTableId();
    return DatabaseAccess::objectOf<AcDbSymbolTable>(id);
}

std::wstring nameOf(AcDbObjectId record) {
    const auto* const found = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(record);
    return found ? found->name() : std::wstring();
}

// --- In the header -----------------------------------------------------------------------------------------

constexpr short textCode = 1;
constexpr short textStyleCode = 7;
constexpr short linetypeCode = 6;

/// In the order of the table of variables.
#define HOSTKIT_NAME_OF_VARIABLE(name, Name, code, kind, least, greatest) L"" #name,
constexpr const wchar_t* variableNames[] = {HOSTKIT_DIMENSION_VARIABLES(HOSTKIT_NAME_OF_VARIABLE)};
#undef HOSTKIT_NAME_OF_VARIABLE

std::wstring headerName(const DimensionVariable& variable) {
    const auto place = static_cast<std::size_t>(&variable - dimensionVariableTable().data());
    std::wstring name = variableNames[place];
    for (wchar_t& letter : name) letter = static_cast<wchar_t>(std::towupper(letter));
    // Two are shorter there.
    if (name.starts_with(L"DIMFXLEN")) name.erase(name.find(L"EN"), 2);
    return name;
}

/// Reads the variables that the header has and that can be.
class HeaderReader {
public:
    explicit HeaderReader(const AcDbDatabase& drawing)
        : m_drawing(drawing)
        , m_header(drawing.header()) {}

    void read(const DimensionVariable& variable, DimensionVariables& variables) const {
        const std::wstring name = headerName(variable);
        if (!m_header.find(name)) return;
        std::visit(
            [&](auto member) {
                auto value = variables.*member;
                take(variable, name, value);
                if (checkVariable(variable, value) == Acad::eOk) variables.*member = value;
            },
            variable.member);
    }

private:
    void take(const DimensionVariable&, const std::wstring& name, std::wstring& value) const {
        value = m_header.text(name, value);
    }
    void take(const DimensionVariable&, const std::wstring& name, double& value) const {
        value = m_header.real(name, value);
    }
    void take(const DimensionVariable& variable, const std::wstring& name, AcDbObjectId& value) const {
        const std::wstring record = m_header.text(name);
        const AcDbSymbolTable* const table = tableOf(m_drawing, variable.kind);
        value = table && !record.empty() ? table->find(record) : AcDbObjectId();
        // A standing arrow is named with its underscore or without.
        if (value.isNull() && table && variable.kind == VariableKind::block)
            value = table->find(L"_" + record);
    }
    template <typename Integer>
    void take(const DimensionVariable&, const std::wstring& name, Integer& value) const {
        const Adesk::Int64 given = m_header.integer(name, value);
        if (given == static_cast<Adesk::Int64>(static_cast<Integer>(given)))
            value = static_cast<Integer>(given);
    }

    const AcDbDatabase& m_drawing;
    const HeaderVariables& m_header;
};

struct HeaderWriter {
    HeaderVariables& header;

    void write(const DimensionVariable& variable, const std::wstring& value) const {
        header.setText(headerName(variable), value, textCode);
    }
    void write(const DimensionVariable& variable, double value) const {
        header.setReal(headerName(variable), value);
    }
    void write(const DimensionVariable& variable, AcDbObjectId value) const {
        const short code = variable.kind == VariableKind::block       ? textCode
                           : variable.kind == VariableKind::textStyle ? textStyleCode
                                                                      : linetypeCode;
        std::wstring name = nameOf(value);
        if (variable.kind == VariableKind::block && name.starts_with(L'_')) name.erase(0, 1);
        header.setText(headerName(variable), name, code);
    }
    template <typename Integer>
    void write(const DimensionVariable& variable, Integer value) const {
        header.setInteger(headerName(variable), value);
    }
};

DimensionVariables headerVariables(const AcDbDatabase& drawing) {
    const auto* const style = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(drawing.dimstyle());
    DimensionVariables variables = style ? style->variables() : DimensionVariables();
    const HeaderReader reader(drawing);
    for (const DimensionVariable& variable : dimensionVariableTable()) reader.read(variable, variables);
    return variables;
}

Acad::ErrorStatus styleOf(const DimensionVariables& variables, AcDbDimStyleTableRecord*& record) {
    auto made = std::make_unique<AcDbDimStyleTableRecord>();
    made->putVariables(variables);
    record = made.release();
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus hostkit::takeIntoDrawing(AcDbDatabase& drawing, DimensionVariables& variables) {
    DimensionVariables taken = variables;
    for (const DimensionVariable& variable : dimensionVariableTable()) {
        const Record* const member = std::get_if<Record>(&variable.member);
        if (!member) continue;
        AcDbObjectId& record = taken.*(*member);
        if (record.isNull() || record.database() == &drawing) continue;
        const std::wstring name = nameOf(record);
        AcDbObjectId own;
        if (variable.kind == VariableKind::block)
            (void)arrowBlock(&drawing, name.c_str(), own);
        else if (const AcDbSymbolTable* const table = tableOf(drawing, variable.kind))
            own = table->find(name);
        if (own.isNull()) return Acad::eKeyNotFound;
        record = own;
    }
    variables = taken;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getDimstyleData(AcDbDimStyleTableRecord*& record) const {
    return styleOf(headerVariables(*this), record);
}

Acad::ErrorStatus AcDbDatabase::setDimstyleData(const AcDbDimStyleTableRecord* record) {
    if (!record) return Acad::eNullObjectPointer;
    DimensionVariables wanted = record->variables();
    const Acad::ErrorStatus status = takeIntoDrawing(*this, wanted);
    if (status != Acad::eOk) return status;
    const DimensionVariables earlier = headerVariables(*this);
    const HeaderWriter writer{header()};
    for (const DimensionVariable& variable : dimensionVariableTable())
        std::visit(
            [&](auto member) {
                if (wanted.*member != earlier.*member) writer.write(variable, wanted.*member);
            },
            variable.member);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setDimstyleData(AcDbObjectId record) {
    const auto* const style = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(record);
    return style ? setDimstyleData(style) : Acad::eNotThatKindOfClass;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::getDimstyleData(AcDbDimStyleTableRecord*& record) const {
    return styleOf(variables(), record);
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setDimstyleData(const AcDbDimStyleTableRecord* record) {
    if (!record) return Acad::eNullObjectPointer;
    DimensionVariables wanted = record->variables();
    AcDbDatabase* const drawing = database();
    Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk && drawing) status = takeIntoDrawing(*drawing, wanted);
    if (status != Acad::eOk) return status;
    m_variables = wanted;
    for (const DimensionVariable& variable : dimensionVariableTable()) forgetNamedBlock(*this, variable.code);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setDimstyleData(AcDbObjectId record) {
    const auto* const style = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(record);
    return style ? setDimstyleData(style) : Acad::eNotThatKindOfClass;
}
