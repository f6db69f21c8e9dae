#include "dbdimension.h"

#include "dbaccess.h"
#include "dbapserv.h"
#include "dbblocktablerecord.h"
#include "dbdimstyletable.h"
#include "dimensionoverrides.h"
#include "dimensionrecords.h"

using namespace hostkit;

// The variables as they act in a dimension, and its overrides.

#define HOSTKIT_DEFINE_OF_DIMENSION(name, Name, code, kind, least, greatest)                                 \
    variabletypes::kind AcDbDimension::name() const {                                                        \
        return shownOf<variabletypes::kind>(variables().name, m_givenText);                                  \
    }                                                                                                        \
    Acad::ErrorStatus AcDbDimension::set##Name(variabletypes::kind shown) {                                  \
        return setOverride(code, storedVariable<decltype(DimensionVariables::name)>(shown));                 \
    }

namespace {

constexpr std::size_t longestText = 255;

bool isFileable(const std::wstring& text) { return text.size() <= longestText; }
template <typename Value>
bool isFileable(const Value&) {
    return true;
}

template <typename Shown, typename Stored>
Shown shownOf(const Stored& stored, std::wstring&) {
    return shownVariable<Shown>(stored);
}
template <typename Shown>
Shown shownOf(const std::wstring& stored, std::wstring& given) {
    given = stored;
    return given.c_str();
}

/// The number of a style's child for each type; no other type has one.
std::wstring childSuffix(AcDbDimension::Type type) {
    switch (type) {
    case AcDbDimension::kRotated:
    case AcDbDimension::kAligned:
        return L"$0";
    case AcDbDimension::kTwoLineAngular:
    case AcDbDimension::kThreePointAngular:
        return L"$2";
    case AcDbDimension::kDiametric:
        return L"$3";
    case AcDbDimension::kRadial:
        return L"$4";
    case AcDbDimension::kOrdinate:
        return L"$6";
    default:
        return {};
    }
}

AcDbObjectId familyStyle(AcDbObjectId style, AcDbDimension::Type type) {
    const auto* record = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(style);
    const std::wstring suffix = childSuffix(type);
    if (!record || !record->database() || suffix.empty()) return style;
    const auto* table = DatabaseAccess::objectOf<AcDbDimStyleTable>(record->database()->dimStyleTableId());
    const AcDbObjectId child = table ? table->find(record->name() + suffix) : AcDbObjectId();
    return child.isNull() ? style : child;
}

} // namespace

template <typename Value>
Acad::ErrorStatus AcDbDimension::setOverride(short code, const Value& value) {
    Acad::ErrorStatus status = checkVariable(*dimensionVariable(code), value);
    if (status == Acad::eOk && !isFileable(value)) status = Acad::eInvalidInput;
    if (status != Acad::eOk) return status;
    return setOverrides(withOverride(extendedData(), code, overrideGroup(value)));
}

HOSTKIT_DIMENSION_VARIABLES(HOSTKIT_DEFINE_OF_DIMENSION)
#undef HOSTKIT_DEFINE_OF_DIMENSION

// The same data again are no change.
Acad::ErrorStatus AcDbDimension::setOverrides(GroupBlock&& data) {
    const GroupBlock* const before = extendedData();
    if (before ? *before == data : data.isEmpty()) return assertWriteEnabled();
    if (data.size() > GroupBlock::maxExtendedDataSize) return Acad::eXdataSizeExceeded;
    const Acad::ErrorStatus status = setExtendedData(std::move(data));
    if (status == Acad::eOk) dropBlock();
    return status;
}

DimensionVariables AcDbDimension::styleVariables() const {
    AcDbObjectId style = m_styleId;
    if (style.isNull() && database()) style = database()->dimStyleStandard();
    const auto* record = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(style);
    return record ? record->variables() : DimensionVariables();
}

DimensionVariables AcDbDimension::variables() const {
    DimensionVariables variables = styleVariables();
    const AcDbDatabase* const drawing = database() ? database() : m_styleId.database();
    if (const GroupBlock* const data = extendedData()) applyOverrides(*data, drawing, variables);
    return variables;
}

Acad::ErrorStatus AcDbDimension::setDimensionStyle(AcDbObjectId style) {
    const AcRxClass* kind = style.objectClass();
    if (!kind || !kind->isDerivedFrom(AcDbDimStyleTableRecord::desc())) return Acad::eNotThatKindOfClass;
    return assignSeen(m_styleId, familyStyle(style, dimensionType()));
}

Acad::ErrorStatus AcDbDimension::getDimstyleData(AcDbDimStyleTableRecord*& record) const {
    auto made = std::make_unique<AcDbDimStyleTableRecord>();
    // What a drawing holds beyond what a setter takes comes along as it is.
    made->putVariables(variables());
    record = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::setDimstyleData(const AcDbDimStyleTableRecord* record) {
    if (!record) return Acad::eNullObjectPointer;
    DimensionVariables wanted = record->variables();
    Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk && database()) status = takeIntoDrawing(*database(), wanted);
    if (status != Acad::eOk) return status;
    const DimensionVariables own = styleVariables();
    GroupBlock data;
    if (const GroupBlock* const before = extendedData()) data = withoutOverrides(*before);
    for (const DimensionVariable& variable : dimensionVariableTable()) {
        const bool isFiled = std::visit(
            [&](auto member) {
                if (wanted.*member == own.*member) return true;
                data = withOverride(&data, variable.code, overrideGroup(wanted.*member));
                return isFileable(wanted.*member);
            },
            variable.member);
        if (!isFiled) return Acad::eInvalidInput;
    }
    return setOverrides(std::move(data));
}

Acad::ErrorStatus AcDbDimension::setDimstyleData(AcDbObjectId record) {
    const auto* style = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(record);
    return style ? setDimstyleData(style) : Acad::eNotThatKindOfClass;
}

Acad::ErrorStatus AcDbDimension::removeOverrides() {
    const GroupBlock* const data = extendedData();
    return data ? setOverrides(withoutOverrides(*data)) : assertWriteEnabled();
}
