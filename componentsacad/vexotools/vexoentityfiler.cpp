#include "vexoentityfiler.h"

#include "binaryentityitems.h"
#include "entityfields.h"
#include "textentityitems.h"

#include "cvxlogentry.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbelipse.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbpl.h"
#include "dbspline.h"
#include "debuglogoption.h"
#include "rxdict.h"

namespace {

using vexo::EntityItems;

constexpr Adesk::Int32 wrapperVersion = 1;
constexpr Adesk::Int32 kindVersion = 2;
constexpr Adesk::Int32 firstVersionWithColor = 2;

Acad::ErrorStatus refuseNull() {
    const Acad::ErrorStatus status = Acad::eNullEntityPointer;
    if (DebugLogOption & 1) return status; // where a diagnostic build reports
    return status;
}

// One kind.

template <class Kind>
Acad::ErrorStatus writeKind(EntityItems& items, const Kind& entity) {
    Adesk::Int32 version = kindVersion;
    Adesk::Int32 color = entity.colorIndex();
    auto fields = vexo::fieldsOf(entity);
    file(items, version, fields, color);
    return items.status();
}

template <class Kind>
Acad::ErrorStatus readKind(EntityItems& items, Kind& entity) {
    Adesk::Int32 version = 0;
    items.item(version);
    if (version > kindVersion) return Acad::eMakeMeProxy;
    decltype(vexo::fieldsOf(entity)) fields;
    if (items.isGood()) file(items, fields);
    if (!items.isGood()) return items.status();
    setFields(entity, std::move(fields));
    if (version < firstVersionWithColor) return items.status();
    Adesk::Int32 color = 0;
    items.item(color);
    if (items.isGood()) (void)entity.setColorIndex(static_cast<Adesk::UInt16>(color & 0xFFFF), true);
    return items.status();
}

// Any class.

/// Calls the function with the entity as one of the kinds, the first that fits; false where none does.
template <class Kind, class... Others, class Entity, class Function>
bool asKind(Entity& entity, const Function& function) {
    if (entity.isA()->isDerivedFrom(Kind::desc())) {
        using Wanted = std::conditional_t<std::is_const_v<Entity>, const Kind, Kind>;
        function(static_cast<Wanted&>(entity));
        return true;
    }
    if constexpr (sizeof...(Others) > 0) return asKind<Others...>(entity, function);
    return false;
}

template <class Entity, class Function>
void asItsKind(Entity& entity, const Function& function) {
    asKind<AcDbLine, AcDbArc, AcDbPolyline, AcDbCircle, AcDbEllipse, AcDbSpline, AcDbHatch>(entity, function);
}

Acad::ErrorStatus writeEntity(EntityItems& items, const AcDbEntity* entity) {
    Adesk::Int32 version = wrapperVersion;
    CString name(entity ? entity->isA()->name() : L"");
    file(items, version, name);
    if (entity) asItsKind(*entity, [&items](const auto& kind) { (void)writeKind(items, kind); });
    return items.status();
}

Acad::ErrorStatus makeEntity(const wchar_t* className, AcDbEntity*& entity) {
    AcRxDictionary* const registry = acrxSysRegistry();
    const AcRxDictionary* const classes =
        registry ? AcRxDictionary::cast(registry->at(L"ClassDictionary")) : nullptr;
    const AcRxClass* const found = classes ? AcRxClass::cast(classes->at(className)) : nullptr;
    if (!found) return Acad::eInvalidSymbolTableName;
    AcRxObject* const made = found->isDerivedFrom(AcDbEntity::desc()) ? found->create() : nullptr;
    entity = static_cast<AcDbEntity*>(made);
    return entity ? Acad::eOk : Acad::eNullEntityPointer;
}

Acad::ErrorStatus readEntity(EntityItems& items, AcDbEntity*& entity) {
    Adesk::Int32 version = 0;
    items.item(version);
    if (version > wrapperVersion) return Acad::eMakeMeProxy;
    CString name;
    items.item(name);
    if (!items.isGood() || name.IsEmpty()) return items.status();
    Acad::ErrorStatus status = makeEntity(name, entity);
    if (status == Acad::eOk) asItsKind(*entity, [&](auto& kind) { status = readKind(items, kind); });
    return status == Acad::eOk ? items.status() : status;
}

} // namespace

Acad::ErrorStatus VEXOEntityFiler::dwgOutFieldsEntity(AcDbDwgFiler* filer, AcDbEntity const* entity) {
    CVxLogEntry entry(L"VEXOEntityFiler::dwgOutFieldsEntity");
    if (!filer) return refuseNull();
    vexo::BinaryItemWriter items(*filer);
    return writeEntity(items, entity);
}

Acad::ErrorStatus VEXOEntityFiler::dxfOutFieldsEntity(AcDbDxfFiler* filer, AcDbEntity const* entity) {
    CVxLogEntry entry(L"VEXOEntityFiler::dxfOutFieldsEntity");
    if (!filer) return refuseNull();
    vexo::TextItemWriter items(*filer);
    return writeEntity(items, entity);
}

Acad::ErrorStatus VEXOEntityFiler::dwgInFieldsEntity(AcDbDwgFiler* filer, AcDbEntity*& entity) {
    CVxLogEntry entry(L"VEXOEntityFiler::dwgInFieldsEntity");
    entity = nullptr;
    if (!filer) return refuseNull();
    vexo::BinaryItemReader items(*filer);
    return readEntity(items, entity);
}

Acad::ErrorStatus VEXOEntityFiler::dxfInFieldsEntity(AcDbDxfFiler* filer, AcDbEntity*& entity) {
    CVxLogEntry entry(L"VEXOEntityFiler::dxfInFieldsEntity");
    entity = nullptr;
    if (!filer) return refuseNull();
    vexo::TextItemReader items(*filer);
    return readEntity(items, entity);
}

// The four operations of one kind.
#define VEXO_FILED_KIND(Kind)                                                                                \
    Acad::ErrorStatus VEXOEntityFiler::dwgOutFields##Kind(AcDbDwgFiler* filer, AcDb##Kind const* entity) {   \
        CVxLogEntry entry(L"VEXOEntityFiler::dwgOutFields" #Kind);                                           \
        if (!filer || !entity) return refuseNull();                                                          \
        vexo::BinaryItemWriter items(*filer);                                                                \
        return writeKind(items, *entity);                                                                    \
    }                                                                                                        \
    Acad::ErrorStatus VEXOEntityFiler::dwgInFields##Kind(AcDbDwgFiler* filer, AcDb##Kind* entity) {          \
        CVxLogEntry entry(L"VEXOEntityFiler::dwgInFields" #Kind);                                            \
        if (!filer || !entity) return refuseNull();                                                          \
        vexo::BinaryItemReader items(*filer);                                                                \
        return readKind(items, *entity);                                                                     \
    }                                                                                                        \
    Acad::ErrorStatus VEXOEntityFiler::dxfOutFields##Kind(AcDbDxfFiler* filer, AcDb##Kind const* entity) {   \
        CVxLogEntry entry(L"VEXOEntityFiler::dxfOutFields" #Kind);                                           \
        if (!filer || !entity) return refuseNull();                                                          \
        vexo::TextItemWriter items(*filer);                                                                  \
        return writeKind(items, *entity);                                                                    \
    }                                                                                                        \
    Acad::ErrorStatus VEXOEntityFiler::dxfInFields##Kind(AcDbDxfFiler* filer, AcDb##Kind* entity) {          \
        CVxLogEntry entry(L"VEXOEntityFiler::dxfInFields" #Kind);                                            \
        if (!filer || !entity) return refuseNull();                                                          \
        vexo::TextItemReader items(*filer);                                                                  \
        return readKind(items, *entity);                                                                     \
    }

VEXO_FILED_KIND(Line)
VEXO_FILED_KIND(Arc)
VEXO_FILED_KIND(Polyline)
VEXO_FILED_KIND(Circle)
VEXO_FILED_KIND(Ellipse)
VEXO_FILED_KIND(Spline)
VEXO_FILED_KIND(Hatch)
