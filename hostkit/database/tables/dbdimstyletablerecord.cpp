#include "dbdimstyletablerecord.h"

#include "arrowblocks.h"
#include "assignfield.h"
#include "dbapserv.h"
#include "dimensionvariablefiling.h"
#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, L"DIMSTYLE")

#define HOSTKIT_DEFINE_OF_STYLE(name, Name, code, kind, least, greatest)                                     \
    variabletypes::kind AcDbDimStyleTableRecord::name() const {                                              \
        return shownVariable<variabletypes::kind>(m_variables.name);                                         \
    }                                                                                                        \
    Acad::ErrorStatus AcDbDimStyleTableRecord::set##Name(variabletypes::kind shown) {                        \
        const auto value = storedVariable<decltype(m_variables.name)>(shown);                                \
        const Acad::ErrorStatus status = checkVariable(*dimensionVariable(code), value);                     \
        if (status != Acad::eOk) return status;                                                              \
        const Acad::ErrorStatus assigned = assignField(*this, m_variables.name, value);                      \
        if (assigned == Acad::eOk) forgetNamedBlock(*this, code);                                            \
        return assigned;                                                                                     \
    }
HOSTKIT_DIMENSION_VARIABLES(HOSTKIT_DEFINE_OF_STYLE)
#undef HOSTKIT_DEFINE_OF_STYLE

#define HOSTKIT_DEFINE_BY_NAME(Name)                                                                         \
    Acad::ErrorStatus AcDbDimStyleTableRecord::set##Name(const wchar_t* name) {                              \
        AcDbObjectId block;                                                                                  \
        const Acad::ErrorStatus status = arrowBlock(orWorkingDatabase(database()), name, block);             \
        return status == Acad::eOk ? set##Name(block) : status;                                              \
    }
HOSTKIT_DEFINE_BY_NAME(Dimblk)
HOSTKIT_DEFINE_BY_NAME(Dimblk1)
HOSTKIT_DEFINE_BY_NAME(Dimblk2)
HOSTKIT_DEFINE_BY_NAME(Dimldrblk)
#undef HOSTKIT_DEFINE_BY_NAME

DimensionVariables AcDbDimStyleTableRecord::variables() const {
    DimensionVariables variables = m_variables;
    findNamedBlocks(*this, variables);
    return variables;
}

void AcDbDimStyleTableRecord::bindNamedBlocks() { hostkit::bindNamedBlocks(*this, m_variables); }

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbDimStyleTableRecord::Filing {
    static constexpr short nameCode = 2;
    /// First the record's flags; a second group of that code is the text's background.
    static constexpr short flagsCode = 70;

    static bool takeFlags(AcDbDimStyleTableRecord& style, const AcDbDxfGroup& group) {
        const auto flags = static_cast<Adesk::Int16>(group.integer);
        if (flags == group.integer) style.m_dxfFlags = flags;
        return flags == group.integer;
    }
};

Acad::ErrorStatus AcDbDimStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbDimStyleTableRecord")) return status;
    m_variables = {};
    m_given.reset();
    bool hasFlags = false;
    AcDbDxfGroup group;
    while ((status = filer->readItem(group)) == Acad::eOk) {
        bool isTaken = true;
        if (group.code == Filing::nameCode) {
            m_name = group.text;
        } else if (group.code == Filing::flagsCode && !hasFlags) {
            isTaken = hasFlags = Filing::takeFlags(*this, group);
        } else {
            isTaken = readVariable(*filer, group, *this, m_variables);
            if (const DimensionVariable* const variable = dimensionVariable(group.code); variable && isTaken)
                m_given.set(static_cast<std::size_t>(variable - dimensionVariableTable().data()));
        }
        if (!isTaken) filer->rejectItem();
    }
    return status == Acad::eEndOfObject ? Acad::eOk : status;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbDimStyleTableRecord");
    filer->writeText(Filing::nameCode, m_name);
    filer->writeInteger(Filing::flagsCode, m_dxfFlags);
    writeVariables(*filer, *this, m_variables, m_given);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbDimStyleTableRecord)
